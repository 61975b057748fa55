#include "KOBWBBinaryOperator.h"

#include "KOBWBOperatorEvaluation.h"

KOBWBBinaryOperator::KOBWBBinaryOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                         KOBWBExpression* left, KOBWBExpression* right)
    : KOBWBOperator(factory, type, {left, right}) {}

void KOBWBBinaryOperator::DoEval(KOBWBValue& result) {
    kobwb::ComputeBinary(kobwb::GetOperatorInfo(GetType()), GetEnvironment(), m_children, result);
}
