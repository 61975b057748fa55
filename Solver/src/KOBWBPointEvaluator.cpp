#include "KOBWBPointEvaluator.h"

#include "KOBWBExpression.h"
#include "KOBWBTapeBuilder.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using kobwb::PointOf;

bool KOBWBPointEvaluator::Compile(int expressionCount, KOBWBExpression* const* expressions, int variableCount,
                                  KOBWBVariable* const* variables) {
    *this = KOBWBPointEvaluator();
    if (expressionCount < 0 || variableCount < 0 || (expressionCount > 0 && !expressions) ||
        (variableCount > 0 && !variables))
        return false;
    for (int i = 0; i < variableCount; ++i)
        if (!variables[i]) return false;
    for (int i = 0; i < expressionCount; ++i)
        if (!expressions[i]) return false;
    kobwb::TapeBuilder tape(*this, variableCount, variables);
    for (int e = 0; e < expressionCount; ++e) {
        const int slot = tape.Graph(expressions[e]);
        if (slot < 0) {
            *this = KOBWBPointEvaluator();
            return false;
        }
        tape.Output(slot);
    }
    tape.Finish();
    return true;
}

void KOBWBPointEvaluator::Refresh() {
    for (const Leaf& leaf : m_leaves) m_values[static_cast<std::size_t>(leaf.slot)] = PointOf(leaf.node->GetExprValue());
    m_stepsRun = -1;
}

void KOBWBPointEvaluator::Evaluate(const double* inputs, double* values) {
    Evaluate(inputs, values, GetNbOfExpressions());
}

void KOBWBPointEvaluator::Evaluate(const double* inputs, double* values, int count) {
    if (!values || count <= 0) return;
    count = std::min(count, GetNbOfExpressions());
    if (!m_inputs.empty() && !inputs) return;
    Run(inputs, m_stepsUpTo[static_cast<std::size_t>(count - 1)]);
    for (int i = 0; i < count; ++i) values[i] = m_values[static_cast<std::size_t>(m_outputs[static_cast<std::size_t>(i)])];
}

namespace {

// The value of a unary or binary step of that code.
double PointFunction(std::uint8_t code, double a, double b) {
    switch (code) {
    case KOBWBQuotientType: return a / b;
    case KOBWBPowerType: return std::pow(a, b);
    case KOBWBRootType: return std::pow(a, 1.0 / b);
    case KOBWBAtan2Type: return std::atan2(a, b);
    case KOBWBSqrtType: return std::sqrt(a);
    case KOBWBLogType: return std::log10(a);
    case KOBWBLnType: return std::log(a);
    case KOBWBExpType: return std::exp(a);
    case KOBWBSinType: return std::sin(a);
    case KOBWBCosType: return std::cos(a);
    case KOBWBTanType: return std::tan(a);
    case KOBWBAsinType: return std::asin(a);
    case KOBWBAcosType: return std::acos(a);
    case KOBWBAtanType: return std::atan(a);
    case KOBWBSinhType: return std::sinh(a);
    case KOBWBCoshType: return std::cosh(a);
    case KOBWBTanhType: return std::tanh(a);
    case KOBWBAsinhType: return std::asinh(a);
    case KOBWBAcoshType: return std::acosh(a);
    case KOBWBAtanhType: return std::atanh(a);
    case KOBWBAbsType: return std::fabs(a);
    case KOBWBCeilType: return std::ceil(a);
    case KOBWBFloorType: return std::floor(a);
    case KOBWBRoundType: return std::round(a);
    case KOBWBTruncType: return std::trunc(a);
    default: return std::nan("");
    }
}

} // namespace

void KOBWBPointEvaluator::EvaluateRest(double* values) {
    if (!values || m_stepsRun < 0) return;
    RunSteps(static_cast<std::size_t>(m_stepsRun), m_steps.size());
    m_stepsRun = static_cast<long long>(m_steps.size());
    for (std::size_t i = 0; i < m_outputs.size(); ++i) values[i] = m_values[static_cast<std::size_t>(m_outputs[i])];
}

void KOBWBPointEvaluator::Run(const double* inputs, std::size_t stepCount) {
    std::copy(inputs, inputs + m_inputs.size(), m_values.data());
    if (m_usesNodes)
        for (std::size_t i = 0; i < m_inputs.size(); ++i) m_inputs[i]->SetExprValue(KOBWBValue(inputs[i]));
    RunSteps(0, stepCount);
    m_stepsRun = static_cast<long long>(stepCount);
}

void KOBWBPointEvaluator::RunSteps(std::size_t first, std::size_t last) {
    double* v = m_values.data();
    const int* arguments = m_arguments.data();
    for (std::size_t s = first; s < last; ++s) {
        const Step& step = m_steps[s];
        const int* listed = arguments + step.a;
        double r = 0.0;
        switch (step.code) {
        case KOBWBSumType:
            for (int i = 0; i < step.b; ++i) r += v[listed[i]];
            break;
        case KOBWBProductType:
            r = 1.0;
            for (int i = 0; i < step.b; ++i) r *= v[listed[i]];
            break;
        case KOBWBMinType:
            r = v[listed[0]];
            for (int i = 1; i < step.b; ++i) r = std::min(r, v[listed[i]]);
            break;
        case KOBWBMaxType:
            r = v[listed[0]];
            for (int i = 1; i < step.b; ++i) r = std::max(r, v[listed[i]]);
            break;
        case kobwb::Square: r = v[step.a] * v[step.a]; break;
        case kobwb::IntegerPower: r = std::pow(v[step.a], static_cast<double>(step.b)); break;
        case kobwb::ByNode: r = PointOf(m_nodes[static_cast<std::size_t>(step.a)]->GetValue()); break;
        default: r = PointFunction(step.code, v[step.a], step.b >= 0 ? v[step.b] : 0.0); break;
        }
        v[step.out] = r;
    }
}
