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

void KOBWBPointEvaluator::Run(const double* inputs, std::size_t stepCount) {
    double* v = m_values.data();
    std::copy(inputs, inputs + m_inputs.size(), v);
    if (m_usesNodes)
        for (std::size_t i = 0; i < m_inputs.size(); ++i) m_inputs[i]->SetExprValue(KOBWBValue(inputs[i]));
    const int* arguments = m_arguments.data();
    for (std::size_t s = 0; s < stepCount; ++s) {
        const Step& step = m_steps[s];
        const double a = step.a >= 0 ? v[step.a] : 0.0;
        const double b = step.b >= 0 ? v[step.b] : 0.0;
        double r = 0.0;
        switch (step.code) {
        case KOBWBSumType:
            for (int i = 0; i < step.count; ++i) r += v[arguments[step.first + i]];
            break;
        case KOBWBProductType:
            r = 1.0;
            for (int i = 0; i < step.count; ++i) r *= v[arguments[step.first + i]];
            break;
        case KOBWBMinType:
            r = v[arguments[step.first]];
            for (int i = 1; i < step.count; ++i) r = std::min(r, v[arguments[step.first + i]]);
            break;
        case KOBWBMaxType:
            r = v[arguments[step.first]];
            for (int i = 1; i < step.count; ++i) r = std::max(r, v[arguments[step.first + i]]);
            break;
        case kobwb::Square: r = a * a; break;
        case kobwb::IntegerPower: r = std::pow(a, static_cast<double>(step.b)); break;
        case KOBWBQuotientType: r = a / b; break;
        case KOBWBPowerType: r = std::pow(a, b); break;
        case KOBWBRootType: r = std::pow(a, 1.0 / b); break;
        case KOBWBAtan2Type: r = std::atan2(a, b); break;
        case KOBWBSqrtType: r = std::sqrt(a); break;
        case KOBWBLogType: r = std::log10(a); break;
        case KOBWBLnType: r = std::log(a); break;
        case KOBWBExpType: r = std::exp(a); break;
        case KOBWBSinType: r = std::sin(a); break;
        case KOBWBCosType: r = std::cos(a); break;
        case KOBWBTanType: r = std::tan(a); break;
        case KOBWBAsinType: r = std::asin(a); break;
        case KOBWBAcosType: r = std::acos(a); break;
        case KOBWBAtanType: r = std::atan(a); break;
        case KOBWBSinhType: r = std::sinh(a); break;
        case KOBWBCoshType: r = std::cosh(a); break;
        case KOBWBTanhType: r = std::tanh(a); break;
        case KOBWBAsinhType: r = std::asinh(a); break;
        case KOBWBAcoshType: r = std::acosh(a); break;
        case KOBWBAtanhType: r = std::atanh(a); break;
        case KOBWBAbsType: r = std::fabs(a); break;
        case KOBWBCeilType: r = std::ceil(a); break;
        case KOBWBFloorType: r = std::floor(a); break;
        case KOBWBRoundType: r = std::round(a); break;
        case KOBWBTruncType: r = std::trunc(a); break;
        default: r = PointOf(step.node->GetValue()); break;
        }
        v[step.out] = r;
    }
}
