#include "KOBWBAlgebraicOperator.h"
#include "KOBWBBinaryOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBDerivativeRules.h"
#include "KOBWBFactory.h"
#include "KOBWBNodeMap.h"
#include "KOBWBOperatorTable.h"
#include "KOBWBTrigonometricOperator.h"
#include "KOBWBUnaryOperator.h"
#include "KOBWBVariable.h"

#include <cmath>
#include <typeinfo>
#include <vector>

// How the factory makes a derivative: the nodes of the graph differentiated bottom-up,
// each once, and the constants the rules use shared within one differentiation.

namespace {

using kobwb::Term;

// The constants that one differentiation shares: each is made at most once, or taken
// from the graph when it holds an equal one.
enum SharedConstant { IntegerZero, IntegerTwo, RealZero, RealOne, RealMinusOne, RealLn10, sharedConstants };

struct SharedValue {
    bool integer;
    double value;
};

const SharedValue sharedValues[sharedConstants] = {{true, 0.0},   {true, 2.0},   {false, 0.0},
                                                   {false, 1.0},  {false, -1.0}, {false, std::log(10.0)}};

// The shared constant of that kind and value; -1 when it is not one of them.
int SharedIndex(bool integer, double value) {
    for (int i = 0; i < sharedConstants; ++i)
        if (sharedValues[i].integer == integer && sharedValues[i].value == value) return i;
    return -1;
}

// The shared constant that node is equal to, a single integer or real that is not a
// fraction; -1 for any other node.
int SharedIndexOf(const KOBWBExpression& node) {
    if (typeid(node) != typeid(KOBWBConstant)) return -1;
    const KOBWBValue& value = static_cast<const KOBWBConstant&>(node).KOBWBConstant::GetExprValue();
    if (value.IsAFraction()) return -1;
    if (value.GetType() == KOBWBIntegerValue) {
        const KOBWBIntegerInterval n = value.GetAsIntegerInterval();
        return n.lower == n.upper ? SharedIndex(true, n.lower) : -1;
    }
    if (value.GetType() == KOBWBRealValue) {
        const KOBWBRealInterval x = value.GetAsRealInterval();
        return x.lower == x.upper ? SharedIndex(false, x.lower) : -1;
    }
    return -1;
}

// The children whose derivatives the rule of node asks for, as the family rules do.
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
        Term derivative;
    };

    KOBWBVariable* variable;
    kobwb::NodeMap<Entry> nodes;
    DerivativePass* outer;
    KOBWBExpression* constants[sharedConstants] = {};
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
        return kobwb::DerivativeRules::Node(*this, known->derivative);
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
    // Constancy of every node below, children first; the constants the rules share
    // are looked for on the way. The stack takes room for the depth of most graphs at
    // once, rather than growing step by step.
    constexpr std::size_t usualDepth = 16;
    std::vector<Frame> frames;
    frames.reserve(usualDepth);
    frames.push_back({expr, 0});
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
        // A node free of v (a constant, another variable, or a graph of them) has the
        // derivative 0 by v, and so have all its further derivatives.
        bool constant = node->GetType() == KOBWBConstantType || (node->GetType() == KOBWBVariableType && node != v);
        if (node->GetType() != KOBWBVariableType && !constant) {
            constant = true;
            for (int i = 0; i < node->GetNbOfChildren() && constant; ++i) {
                const KOBWBExpression* child = node->GetChild(i);
                constant = child && pass.nodes.Find(child)->constant;
            }
        }
        if (node->GetType() == KOBWBConstantType && node != expr) {
            const int shared = SharedIndexOf(*node);
            if (shared >= 0 && !pass.constants[shared]) pass.constants[shared] = node;
        }
        pass.nodes.Find(node)->constant = constant && (zeroIfConstant || node != expr);
    }
    const bool constantRoot = pass.nodes.Find(expr)->constant;
    if (constantGraph) *constantGraph = constantRoot;
    if (constantRoot) return CreateIntegerConstant(0);
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
        const Term derivative = pass.nodes.Find(node)->constant ? Term{Term::Kind::IntegerZero, nullptr}
                                                                 : kobwb::DerivativeRules::Rule(*node, v);
        DerivativePass::Entry* entry = pass.nodes.Find(node);
        entry->derivative = derivative;
        entry->made = true;
    }
    KOBWBExpression* derivative = kobwb::DerivativeRules::Node(*this, pass.nodes.Find(expr)->derivative);
    m_derivativePass = pass.outer;
    return derivative;
}

namespace kobwb {

namespace {

// Whether node is a constant equal to 0 (first) or to 1 (second).
std::pair<bool, bool> ZeroOrOne(const KOBWBExpression* node) {
    if (!node || node->GetType() != KOBWBConstantType) return {false, false};
    unsigned char zero = 0;
    unsigned char one = 0;
    static_cast<const KOBWBConstant*>(node)->IsZeroOrOne(zero, one);
    return {zero != 0, one != 0};
}

} // namespace

bool Term::IsZero() const {
    return kind == Kind::IntegerZero || kind == Kind::RealZero || (kind == Kind::Node && ZeroOrOne(node).first);
}

bool Term::IsOne() const { return kind == Kind::RealOne || (kind == Kind::Node && ZeroOrOne(node).second); }

Term DerivativeRules::Of(KOBWBExpression* child, KOBWBVariable* v) {
    if (!child) return {};
    KOBWBFactory& factory = child->GetFactory();
    for (KOBWBFactory::DerivativePass* pass = factory.m_derivativePass; pass; pass = pass->outer) {
        if (pass->variable != v) continue;
        const KOBWBFactory::DerivativePass::Entry* known = pass->nodes.Find(child);
        if (known && known->made) return known->derivative;
    }
    return {Term::Kind::Node, factory.CreateDerivative(child, 1, &v)};
}

KOBWBExpression* DerivativeRules::Node(KOBWBFactory& factory, const Term& term) {
    switch (term.kind) {
    case Term::Kind::IntegerZero: return Integer(factory, 0);
    case Term::Kind::RealZero: return Real(factory, 0.0);
    case Term::Kind::RealOne: return Real(factory, 1.0);
    case Term::Kind::Node: break;
    }
    return term.node;
}

KOBWBExpression* DerivativeRules::Shared(KOBWBFactory& factory, bool integer, double value) {
    KOBWBFactory::DerivativePass* pass = factory.m_derivativePass;
    const int index = SharedIndex(integer, value);
    if (!pass || index < 0)
        return integer ? factory.CreateIntegerConstant(static_cast<int>(value)) : factory.CreateRealConstant(value);
    KOBWBExpression*& constant = pass->constants[index];
    if (!constant)
        constant = integer ? factory.CreateIntegerConstant(static_cast<int>(value)) : factory.CreateRealConstant(value);
    return constant;
}

KOBWBExpression* DerivativeRules::Integer(KOBWBFactory& factory, int value) { return Shared(factory, true, value); }

KOBWBExpression* DerivativeRules::Real(KOBWBFactory& factory, double value) { return Shared(factory, false, value); }

Term DerivativeRules::Rule(KOBWBExpression& node, KOBWBVariable* v) {
    const std::type_info& type = typeid(node);
    if (type == typeid(KOBWBVariable)) return {&node == v ? Term::Kind::RealOne : Term::Kind::RealZero, nullptr};
    if (type == typeid(KOBWBConstant)) return {Term::Kind::RealZero, nullptr};
    if (type == typeid(KOBWBAlgebraicOperator)) return AlgebraicDerivative(static_cast<KOBWBAlgebraicOperator&>(node), v);
    if (type == typeid(KOBWBBinaryOperator)) return BinaryDerivative(static_cast<KOBWBBinaryOperator&>(node), v);
    if (type == typeid(KOBWBUnaryOperator)) return UnaryDerivative(static_cast<KOBWBUnaryOperator&>(node), v);
    if (type == typeid(KOBWBTrigonometricOperator))
        return TrigonometricDerivative(static_cast<KOBWBTrigonometricOperator&>(node), v);
    return {Term::Kind::Node, node.Differentiate(v)};
}

} // namespace kobwb
