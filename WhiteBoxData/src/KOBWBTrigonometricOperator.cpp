#include "KOBWBTrigonometricOperator.h"

#include "KOBWBOperatorEvaluation.h"

KOBWBTrigonometricOperator::KOBWBTrigonometricOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                                       KOBWBExpression* child)
    : KOBWBOperator(factory, type, {child}) {}

void KOBWBTrigonometricOperator::DoEval(KOBWBValue& result) {
    kobwb::ComputeUnary(kobwb::GetOperatorInfo(GetType()), kobwb::OperatorFamily::Trigonometric, GetEnvironment(),
                        m_children, result);
}
