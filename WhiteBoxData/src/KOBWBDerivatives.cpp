#include "KOBWBConstant.h"
#include "KOBWBFactory.h"
#include "KOBWBNodeMap.h"
#include "KOBWBOperatorFamilies.h"
#include "KOBWBOperatorTable.h"

#include <cmath>
#include <vector>

// Symbolic first derivatives of every operator family. Each rule builds new nodes
// in the node's factory and shares the unchanged subgraphs of the argument graph.
// Zero terms are dropped from sums and products, unit factors are left out, and
// integer powers keep integer exponents.

namespace {

// The children whose derivatives the rule of node asks for, as the rules below do.
bool RuleDifferentiates(const KOBWBExpression& node, int child) {
    switch (node.GetType()) {
    case KOBWBSumType:
    case KOBWBProductType:
    case KOBWBQuotientType:
    case KOBWBAtan2Type: return true;
    case KOBWBRootType:
    case KOBWBSqrtType:
    case KOBWBLogType:
    case KOBWBLnType:
    case KOBWBExpType: return child == 0;
    case KOBWBPowerType: {
        const KOBWBExpression* exponent = node.GetChild(1);
        return child == 0 || !exponent || exponent->GetType() != KOBWBConstantType ||
               !exponent->GetExprValue().IsAKindOf(KOBWBIntegerValue);
    }
    default: return kobwb::FamilyOf(node.GetType()) == kobwb::OperatorFamily::Trigonometric;
    }
}

} // namespace

// The derivatives of one graph by one variable, made bottom-up: every node whose
// derivative a rule asks for is differentiated before the rule runs, so a rule finds
// its children's derivatives here instead of making them by recursion. A chain of a
// million nodes is then differentiated without exhausting the call stack, and a node
// shared by several parents is differentiated once.
struct KOBWBFactory::DerivativePass {
    struct Entry {
        bool constant = false;
        bool listed = false;
        bool made = false;
        KOBWBExpression* derivative = nullptr;
    };

    KOBWBVariable* variable;
    kobwb::NodeMap<Entry> nodes;
    DerivativePass* outer;
};

KOBWBExpression* KOBWBFactory::CreateDerivative(KOBWBExpression* expr, int n, KOBWBVariable** variables) {
    if (!expr || !variables) return nullptr;
    if (n <= 0) return expr->IsConstant() ? CreateIntegerConstant(0) : expr;
    // A constant graph has the derivative 0 at once, whatever the count: the pass by
    // the first variable finds whether it is. The derivatives after the first are
    // asked of the graph's own top node.
    bool constant = false;
    KOBWBExpression* current = Derivative(expr, variables[0], &constant);
    for (int i = 1; i < n && current && !constant; ++i) current = Derivative(current, variables[i], nullptr);
    return current;
}

KOBWBExpression* KOBWBFactory::Derivative(KOBWBExpression* expr, KOBWBVariable* v, bool* constantGraph) {
    const bool zeroIfConstant = constantGraph != nullptr;
    for (DerivativePass* pass = m_derivativePass; pass; pass = pass->outer) {
        if (pass->variable != v) continue;
        const DerivativePass::Entry* known = pass->nodes.Find(expr);
        if (!known || !known->made) continue;
        if (constantGraph) *constantGraph = known->constant;
        return known->derivative;
    }
    if (!v) {
        if (!zeroIfConstant || !expr->IsConstant()) return expr->Differentiate(v);
        *constantGraph = true;
        return CreateIntegerConstant(0);
    }
    DerivativePass pass{v, {}, m_derivativePass};
    struct Frame {
        KOBWBExpression* node;
        int nextChild;
    };
    // Constancy of every node below, children first.
    std::vector<Frame> frames{{expr, 0}};
    pass.nodes.Insert(expr, {});
    while (!frames.empty()) {
        Frame& top = frames.back();
        KOBWBExpression* node = top.node;
        if (top.nextChild < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(top.nextChild++);
            if (child && pass.nodes.Insert(child, {}).second) frames.push_back({child, 0});
            continue;
        }
        frames.pop_back();
        bool constant = node->GetType() == KOBWBConstantType;
        if (node->GetType() != KOBWBVariableType && !constant) {
            constant = true;
            for (int i = 0; i < node->GetNbOfChildren() && constant; ++i) {
                const KOBWBExpression* child = node->GetChild(i);
                constant = child && pass.nodes.Find(child)->constant;
            }
        }
        pass.nodes.Find(node)->constant = constant && (zeroIfConstant || node != expr);
    }
    // The nodes to differentiate, children first, leaving out what lies below
    // constants, whose derivative is 0.
    m_derivativePass = &pass;
    pass.nodes.Find(expr)->listed = true;
    frames.assign(1, {expr, 0});
    while (!frames.empty()) {
        Frame& top = frames.back();
        KOBWBExpression* node = top.node;
        if (!pass.nodes.Find(node)->constant && top.nextChild < node->GetNbOfChildren()) {
            const int i = top.nextChild++;
            KOBWBExpression* child = node->GetChild(i);
            if (!child || !RuleDifferentiates(*node, i)) continue;
            DerivativePass::Entry* entry = pass.nodes.Find(child);
            if (entry->listed) continue;
            entry->listed = true;
            frames.push_back({child, 0});
            continue;
        }
        frames.pop_back();
        KOBWBExpression* derivative =
            pass.nodes.Find(node)->constant ? CreateIntegerConstant(0) : node->Differentiate(v);
        DerivativePass::Entry* entry = pass.nodes.Find(node);
        entry->derivative = derivative;
        entry->made = true;
    }
    m_derivativePass = pass.outer;
    const DerivativePass::Entry* root = pass.nodes.Find(expr);
    if (constantGraph) *constantGraph = root->constant;
    return root->derivative;
}

namespace {

KOBWBExpression* Derivative(KOBWBExpression* child, KOBWBVariable* v) {
    return child ? child->GetFactory().CreateDerivative(child, 1, &v) : nullptr;
}

// Whether node is a constant equal to 0, resp. to 1.
struct ConstantKind {
    bool zero = false;
    bool one = false;
};

ConstantKind Classify(const KOBWBExpression* node) {
    ConstantKind kind;
    if (!node || node->GetType() != KOBWBConstantType) return kind;
    unsigned char zero = 0;
    unsigned char one = 0;
    static_cast<const KOBWBConstant*>(node)->IsZeroOrOne(zero, one);
    kind.zero = zero != 0;
    kind.one = one != 0;
    return kind;
}

// No term: the integer 0; one term: itself; several: their sum.
KOBWBExpression* SumOfTerms(KOBWBFactory& factory, std::vector<KOBWBExpression*>& terms) {
    if (terms.empty()) return factory.CreateIntegerConstant(0);
    if (terms.size() == 1) return terms[0];
    return factory.CreateOperator(KOBWBSumType, static_cast<int>(terms.size()), terms.data());
}

// a * term + b, without the factor when a is 1 and without the constant when b is 0.
KOBWBExpression* Linear(KOBWBFactory& factory, double a, KOBWBExpression* term, double b) {
    KOBWBExpression* scaled = a == 1.0 ? term : factory.CreateProduct(factory.CreateRealConstant(a), term);
    return b == 0.0 ? scaled : factory.CreateSum(factory.CreateRealConstant(b), scaled);
}

KOBWBExpression* LinearOfSquare(KOBWBFactory& factory, double a, KOBWBExpression* x, double b) {
    return Linear(factory, a, factory.CreatePower(x, 2), b);
}

} // namespace

KOBWBExpression* KOBWBAlgebraicOperator::Differentiate(KOBWBVariable* v) {
    if (!v) return this;
    KOBWBFactory& factory = GetFactory();
    const int count = GetNbOfChildren();
    std::vector<KOBWBExpression*> terms;
    if (GetType() == KOBWBSumType) {
        for (int i = 0; i < count; ++i) {
            KOBWBExpression* d = Derivative(GetChild(i), v);
            if (d && !Classify(d).zero) terms.push_back(d);
        }
        return SumOfTerms(factory, terms);
    }
    if (GetType() != KOBWBProductType) return nullptr;
    for (int i = 0; i < count; ++i) {
        KOBWBExpression* d = Derivative(GetChild(i), v);
        if (!d) continue;
        const ConstantKind kind = Classify(d);
        if (kind.zero) continue;
        std::vector<KOBWBExpression*> factors;
        for (int j = 0; j < count; ++j) {
            if (j != i)
                factors.push_back(GetChild(j));
            else if (!kind.one)
                factors.push_back(d);
        }
        terms.push_back(factors.size() == 1
                            ? factors[0]
                            : factory.CreateProduct(static_cast<int>(factors.size()), factors.data()));
    }
    return SumOfTerms(factory, terms);
}

KOBWBExpression* KOBWBBinaryOperator::Differentiate(KOBWBVariable* v) {
    KOBWBExpression* a = GetChild(0);
    KOBWBExpression* b = GetChild(1);
    if (!a || !b) return nullptr;
    if (!v) return this;
    KOBWBFactory& f = GetFactory();
    switch (GetType()) {
    case KOBWBQuotientType: {
        KOBWBExpression* da = Derivative(a, v);
        KOBWBExpression* db = Derivative(b, v);
        return f.CreateQuotient(f.CreateSub(f.CreateProduct(da, b), f.CreateProduct(a, db)), f.CreatePower(b, 2));
    }
    case KOBWBPowerType: {
        KOBWBExpression* da = Derivative(a, v);
        const bool integerExponent =
            b->GetType() == KOBWBConstantType && b->GetExprValue().IsAKindOf(KOBWBIntegerValue);
        if (integerExponent) {
            const int k = b->GetExprValue().GetAsInteger();
            if (!Classify(da).one) return f.CreateProduct(b, f.CreateProduct(da, f.CreatePower(a, k - 1)));
            if (k == 2) return f.CreateProduct(b, a);
            if (k == 1) return b;
            return f.CreateProduct(b, f.CreatePower(a, k - 1));
        }
        KOBWBExpression* db = Derivative(b, v);
        KOBWBExpression* baseTerm = f.CreateQuotient(f.CreateProduct(b, da), a);
        if (Classify(db).zero) return f.CreateProduct(this, baseTerm);
        return f.CreateProduct(this, f.CreateSum(f.CreateProduct(db, f.CreateLn(a)), baseTerm));
    }
    case KOBWBRootType:
        return f.CreateProduct(this, f.CreateQuotient(Derivative(a, v), f.CreateProduct(a, b)));
    case KOBWBAtan2Type: {
        KOBWBExpression* da = Derivative(a, v);
        KOBWBExpression* db = Derivative(b, v);
        return f.CreateQuotient(f.CreateSub(f.CreateProduct(da, b), f.CreateProduct(a, db)),
                                f.CreateSum(f.CreatePower(a, 2), f.CreatePower(b, 2)));
    }
    default: return nullptr;
    }
}

KOBWBExpression* KOBWBUnaryOperator::Differentiate(KOBWBVariable* v) {
    if (!v) return this;
    KOBWBExpression* x = GetChild(0);
    KOBWBFactory& f = GetFactory();
    switch (GetType()) {
    case KOBWBSqrtType:
        return f.CreateQuotient(Derivative(x, v), f.CreateProduct(f.CreateIntegerConstant(2), f.CreateSqrt(x)));
    case KOBWBLogType: {
        static const double ln10 = std::log(10.0);
        return f.CreateQuotient(Derivative(x, v), f.CreateProduct(x, f.CreateRealConstant(ln10)));
    }
    case KOBWBLnType: return f.CreateQuotient(Derivative(x, v), x);
    case KOBWBExpType: return f.CreateProduct(Derivative(x, v), f.CreateExp(x));
    case KOBWBCeilType:
    case KOBWBFloorType:
    case KOBWBRoundType:
    case KOBWBTruncType: return f.CreateIntegerConstant(0);
    default: return nullptr;
    }
}

KOBWBExpression* KOBWBTrigonometricOperator::Differentiate(KOBWBVariable* v) {
    if (!v) return this;
    KOBWBExpression* x = GetChild(0);
    KOBWBFactory& f = GetFactory();
    KOBWBExpression* d = Derivative(x, v);
    switch (GetType()) {
    case KOBWBSinType: return f.CreateProduct(f.CreateCos(x), d);
    case KOBWBCosType: {
        KOBWBExpression* factors[] = {f.CreateRealConstant(-1.0), f.CreateSin(x), d};
        return f.CreateProduct(3, factors);
    }
    case KOBWBTanType: return f.CreateQuotient(d, f.CreatePower(f.CreateCos(x), 2));
    case KOBWBAsinType: return f.CreateQuotient(d, f.CreateSqrt(LinearOfSquare(f, -1.0, x, 1.0)));
    case KOBWBAcosType:
        return f.CreateQuotient(Linear(f, -1.0, d, 0.0), f.CreateSqrt(LinearOfSquare(f, -1.0, x, 1.0)));
    case KOBWBAtanType: return f.CreateQuotient(d, LinearOfSquare(f, 1.0, x, 1.0));
    case KOBWBSinhType: return f.CreateProduct(f.CreateCosh(x), d);
    case KOBWBCoshType: return f.CreateProduct(f.CreateSinh(x), d);
    case KOBWBTanhType: return f.CreateProduct(LinearOfSquare(f, -1.0, this, 1.0), d);
    case KOBWBAsinhType: return f.CreateQuotient(d, f.CreateSqrt(LinearOfSquare(f, 1.0, x, 1.0)));
    case KOBWBAcoshType: return f.CreateQuotient(d, f.CreateSqrt(LinearOfSquare(f, 1.0, x, -1.0)));
    case KOBWBAtanhType: return f.CreateQuotient(d, LinearOfSquare(f, -1.0, x, 1.0));
    default: return nullptr;
    }
}

KOBWBExpression* KOBWBIfThenElseOperator::Differentiate(KOBWBVariable* v) {
    KOBWBExpression* condition = GetChild(0);
    if (!condition) return nullptr;
    KOBWBValue test;
    condition->Eval(test);
    if (!test.IsAKindOf(KOBWBBooleanValue)) return nullptr;
    KOBWBExpression* branch = nullptr;
    switch (test.GetAsBoolean()) {
    case KOBWBFalse: branch = GetChild(2); break;
    case KOBWBTrue: branch = GetChild(1); break;
    default: return nullptr;
    }
    return branch ? branch->Differentiate(v) : nullptr;
}
