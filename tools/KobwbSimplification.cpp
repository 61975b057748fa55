#include "KobwbSimplification.h"

#include <climits>
#include <memory>
#include <unordered_set>

namespace kobwb_tool {

namespace {

// Only fractions: their arithmetic is checked for overflow, while integer
// arithmetic past 32 bits saturates (a product of integer constants that the
// algebra wrote for a large integer must stay as written).
bool IsExact(const KOBWBValue& value) { return value.IsAFraction(); }

// A sum whose last term is a constant with that term first (5 - x/2 rather than
// -x/2 + 5), for an expression written alone.
KOBWBExpression* ConstantFirst(KOBWBExpression* node) {
    const int count = node->GetNbOfChildren();
    if (node->GetType() != KOBWBSumType || count < 2 || !node->GetChild(count - 1)->IsConstant()) return node;
    KOBWBExpression* constant = node->GetChild(count - 1);
    for (int i = count - 1; i > 0; --i) node->ReplaceChild(i, node->GetChild(i - 1));
    node->ReplaceChild(0, constant);
    return node;
}

struct TransformationsDeleter {
    void operator()(KOBWBSymbolicTransformations* transformations) const { KOBRemove(transformations); }
};

bool IsIntegerConstant(const KOBWBExpression* node, long long& value) {
    if (!node || node->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& constant = node->GetExprValue();
    if (constant.IsAFraction()) {
        const KOBWBFraction fraction = constant.GetAsFraction();
        if (fraction.powerOfPi != 0 || fraction.denominator != 1) return false;
        value = fraction.numerator;
        return true;
    }
    if (constant.GetType() != KOBWBIntegerValue) return false;
    value = constant.GetAsInteger();
    return true;
}

// p/q with q > 1 and no power of Pi, sign in the numerator: an exact fraction
// constant, or the quotient of two integer constants that the transformations
// write for one; false for other nodes.
bool IsPlainFraction(const KOBWBExpression* node, long long& numerator, long long& denominator) {
    if (!node) return false;
    if (node->GetType() == KOBWBQuotientType && node->GetNbOfChildren() == 2) {
        if (!IsIntegerConstant(node->GetChild(0), numerator) || !IsIntegerConstant(node->GetChild(1), denominator))
            return false;
    } else if (node->GetType() == KOBWBConstantType && node->GetExprValue().IsAFraction()) {
        const KOBWBFraction fraction = node->GetExprValue().GetAsFraction();
        if (fraction.powerOfPi != 0) return false;
        numerator = fraction.numerator;
        denominator = fraction.denominator;
    } else {
        return false;
    }
    if (denominator < 0) {
        numerator = -numerator;
        denominator = -denominator;
    }
    return denominator > 1 && numerator != 0 && numerator > INT_MIN && denominator <= INT_MAX;
}

// The product c*a*b... with c = p/q written as (p*a*b...)/q, or, after a plus
// sign (later), as -1 times (|p|*a*b...)/q when p < 0, so that it prints as
// -3*x/2 first and as "- 3*x/2" later; null for any other node.
KOBWBExpression* FractionAsQuotient(KOBWBFactory& factory, KOBWBExpression* node, bool later) {
    long long numerator = 0, denominator = 1;
    if (node->GetType() != KOBWBProductType || node->GetNbOfChildren() < 2 ||
        !IsPlainFraction(node->GetChild(0), numerator, denominator))
        return nullptr;
    const bool negated = later && numerator < 0;
    const long long above = negated ? -numerator : numerator;
    std::vector<KOBWBExpression*> factors;
    if (above != 1) factors.push_back(factory.CreateIntegerConstant(static_cast<int>(above)));
    for (int i = 1; i < node->GetNbOfChildren(); ++i) factors.push_back(node->GetChild(i));
    KOBWBExpression* product =
        factors.size() == 1 ? factors[0] : factory.CreateProduct(static_cast<int>(factors.size()), factors.data());
    KOBWBExpression* quotient = factory.CreateQuotient(product, factory.CreateIntegerConstant(static_cast<int>(denominator)));
    return negated ? factory.CreateProduct(factory.CreateIntegerConstant(-1), quotient) : quotient;
}

} // namespace

KOBWBExpression* WriteFractionsAsQuotients(KOBWBFactory& factory, KOBWBExpression* root) {
    if (!root) return root;
    if (KOBWBExpression* quotient = FractionAsQuotient(factory, root, false)) return quotient;
    std::vector<KOBWBExpression*> pending{root};
    std::unordered_set<const KOBWBExpression*> seen{root};
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (!child) continue;
            const bool later = node->GetType() == KOBWBSumType && i > 0;
            if (KOBWBExpression* quotient = FractionAsQuotient(factory, child, later)) {
                node->ReplaceChild(i, quotient);
                child = quotient;
            }
            if (seen.insert(child).second) pending.push_back(child);
        }
    }
    return root;
}

KOBWBExpression* FoldExactConstants(KOBWBFactory& factory, KOBWBExpression* root) {
    if (!root || root->GetType() == KOBWBConstantType || root->GetType() == KOBWBVariableType) return root;
    if (root->IsConstant()) {
        KOBWBValue value;
        root->Eval(value);
        KOBWBExpression* constant = IsExact(value) ? factory.CreateConstant(value) : nullptr;
        if (constant) return constant;
    }
    std::vector<KOBWBExpression*> pending{root};
    std::unordered_set<const KOBWBExpression*> seen{root};
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (!child || child->GetType() == KOBWBConstantType || child->GetType() == KOBWBVariableType) continue;
            if (child->IsConstant()) {
                KOBWBValue value;
                child->Eval(value);
                if (IsExact(value)) {
                    if (KOBWBExpression* constant = factory.CreateConstant(value)) node->ReplaceChild(i, constant);
                    continue;
                }
            }
            if (seen.insert(child).second) pending.push_back(child);
        }
    }
    return root;
}

bool RunSimplify(KOBWBFactory& factory, unsigned mode, SimplifyReport& report) {
    std::unique_ptr<KOBWBSymbolicTransformations, TransformationsDeleter> transformations(
        KOBCreateWBSymbolicTransformations(0, factory));
    if (!transformations) return false;
    transformations->SetMode(mode);
    transformations->Run();
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        KOBWBExpression* root = equation->GetRoot();
        KOBWBExpression* written = WriteFractionsAsQuotients(factory, FoldExactConstants(factory, root));
        if (written != root) equation->SetRoot(written);
    }
    report = SimplifyReport();
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        KOBWBExpression* expression = variable ? transformations->GetVariableExpression(i) : nullptr;
        if (!expression) continue;
        KOBWBExpression* written =
            WriteFractionsAsQuotients(factory, ConstantFirst(FoldExactConstants(factory, expression)));
        report.definitions.emplace_back(variable->GetName().str(), KOBWBEquationPrinter::ToText(written));
    }
    report.judged = (mode & 2) != 0 && (mode & 16) != 0;
    report.inconsistent = report.judged && transformations->AreInequalitiesInconsistent();
    return true;
}

void WriteSimplifyReport(const SimplifyReport& report, std::string& out) {
    for (const auto& definition : report.definitions) out += definition.first + " := " + definition.second + '\n';
    if (report.judged)
        out += report.inconsistent ? "inequalities: inconsistent (at least one cannot hold)\n"
                                   : "inequalities: consistent as far as the constant ones tell\n";
}

} // namespace kobwb_tool
