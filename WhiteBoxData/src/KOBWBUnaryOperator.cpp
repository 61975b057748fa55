#include "KOBWBUnaryOperator.h"

#include "KOBWBOperatorEvaluation.h"
#include "KOBWBStep.h"

#include <new>

namespace {
constexpr int stepParameters = 4;
}

KOBWBUnaryOperator::KOBWBUnaryOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                       KOBWBExpression* child)
    : KOBWBOperator(factory, type, {child}) {
    if (type == KOBWBStepType) m_parameters.reset(new (std::nothrow) double[stepParameters]());
}

KOBWBUnaryOperator::~KOBWBUnaryOperator() = default;

void KOBWBUnaryOperator::SetParameter(int i, double value) {
    if (m_parameters && i < GetNbOfParameters()) m_parameters[i] = value;
}

double KOBWBUnaryOperator::GetParameter(int i) {
    return m_parameters && i >= 0 && i < GetNbOfParameters() ? m_parameters[i] : 0.0;
}

int KOBWBUnaryOperator::GetNbOfParameters() const { return m_parameters ? stepParameters : 0; }

void KOBWBUnaryOperator::DoEval(KOBWBValue& result) {
    KOBWBExpression* child = m_children[0];
    if (!child) return;
    if (GetType() == KOBWBStepType) {
        if (m_parameters) result = KOBWBStep(GetEnvironment(), child->GetValue(), m_parameters.get());
        return;
    }
    kobwb::ComputeUnary(kobwb::GetOperatorInfo(GetType()), kobwb::OperatorFamily::Unary, GetEnvironment(), m_children,
                        result);
}
