#include "KOBWBModelNumberCheck.h"

#include "KOBWBConstNode.h"
#include "KOBWBEqNode.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBFactoryConversion.h"
#include "KOBWBLimits.h"
#include "KOBWBModel.h"
#include "KOBWBOpNode.h"
#include "KOBWBVariable.h"

#include <cmath>
#include <cstdio>

namespace {

std::string Number(double x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", x);
    return text;
}

// The terms of one equation converted into a scratch factory whose variables range
// over the reals, to read the values of the model's constants and sub-terms.
class TermValues {
public:
    explicit TermValues(const KOBWBEqNode& equation)
        : m_factory(0), m_conversion(m_factory, m_nodes, m_variables) {
        m_conversion.BeginEquation(equation);
    }

    // The value of the term, or false when it has no factory counterpart.
    bool Value(KOBWBNode* term, KOBWBValue& value) {
        KOBWBExpression* expression = term ? m_conversion.ConvertTerm(term) : nullptr;
        if (!expression) return false;
        for (int i = 0; i < m_factory.GetNbOfVariables(); ++i)
            m_factory.GetVariable(i)->SetExprValue(KOBWBValue(KOBWBReal_Any));
        value = expression->GetValue();
        return true;
    }

private:
    KOBWBFactory m_factory;
    KOBLVRListPKOBWBVarNode m_nodes;
    KOBLVRListPKOBWBVariable m_variables;
    KOBWBFactoryConversion m_conversion;
};

void CheckConstant(KOBWBConstNode& constant, TermValues& values, std::vector<KOBWBNumberWarning>& out) {
    KOBWBValue value;
    if (!values.Value(&constant, value)) return;
    const KOBWBValueType type = value.GetType();
    if (type != KOBWBRealValue && type != KOBWBIntegerValue) return;
    if (!value.IsIndefinite() && std::fabs(value.GetAsDouble()) <= KOBWBMaxReal) return;
    out.push_back({constant.GetLocation(), "this constant is beyond the range of reals (magnitude up to " +
                                               Number(KOBWBMaxReal) + "): it stands for any real"});
}

// Whether the term's value is an integer constant.
bool IsIntegerConstant(KOBWBNode* term, TermValues& values) {
    KOBWBValue value;
    if (!values.Value(term, value) || value.IsIndefinite()) return false;
    if (value.GetType() == KOBWBIntegerValue) return true;
    if (value.GetType() != KOBWBRealValue) return false;
    const double x = value.GetAsDouble();
    return std::fabs(x) <= 2147483646.0 && x == std::floor(x);
}

// Whether the argument's values can lie below KOBWBMinReal.
bool ReachesBelowSmallestReal(KOBWBNode* argument, TermValues& values) {
    KOBWBValue value;
    if (!values.Value(argument, value)) return false;
    if (value.IsIndefinite()) return true;
    const KOBWBRealInterval hull = value.GetAsRealInterval();
    return hull.lower <= hull.upper && hull.lower < KOBWBMinReal;
}

void CheckOperator(KOBWBOpNode& op, TermValues& values, std::vector<KOBWBNumberWarning>& out) {
    const KOBWBExpressionType type = op.GetType();
    const std::string smallest = Number(KOBWBMinReal);
    if (type == KOBWBPowerType && op.GetNbOfChildren() == 2 && !IsIntegerConstant(op.GetChild(2), values) &&
        ReachesBelowSmallestReal(op.GetChild(1), values))
        out.push_back({op.GetLocation(), "a power with a non-integer exponent has no value for a base below " +
                                             smallest + ", and this base can reach below it: use sqrt, "
                                                        "root or an integer power for a base that reaches 0"});
    if ((type == KOBWBLnType || type == KOBWBLogType) && op.GetNbOfChildren() == 1 &&
        ReachesBelowSmallestReal(op.GetChild(1), values))
        out.push_back({op.GetLocation(), std::string(type == KOBWBLnType ? "ln" : "log") +
                                             " has no value for an argument below " + smallest +
                                             ", and this argument can reach below it"});
}

} // namespace

std::vector<KOBWBNumberWarning> KOBWBModelNumberCheck::Run(const KOBWBModel& model) {
    std::vector<KOBWBNumberWarning> warnings;
    std::vector<KOBWBNode*> pending;
    for (KOBWBEqNode* equation = model.GetFirstEquation(); equation; equation = model.GetNextEquation(equation)) {
        TermValues values(*equation);
        pending.assign({equation->GetRightTerm(), equation->GetLeftTerm()});
        while (!pending.empty()) {
            KOBWBNode* node = pending.back();
            pending.pop_back();
            if (!node) continue;
            if (node->GetNodeType() == KOBWBConstNodeType) {
                CheckConstant(*static_cast<KOBWBConstNode*>(node), values, warnings);
                continue;
            }
            if (node->GetNodeType() != KOBWBOpNodeType) continue;
            auto* op = static_cast<KOBWBOpNode*>(node);
            CheckOperator(*op, values, warnings);
            for (int i = op->GetNbOfChildren(); i >= 1; --i)
                pending.push_back(op->GetChild(i));
        }
    }
    return warnings;
}
