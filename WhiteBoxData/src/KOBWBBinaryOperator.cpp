#include "KOBWBBinaryOperator.h"

#include "KOBWBOperatorTable.h"

KOBWBBinaryOperator::KOBWBBinaryOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                         KOBWBExpression* left, KOBWBExpression* right)
    : KOBWBOperator(factory, type, {left, right}) {}

void KOBWBBinaryOperator::DoEval(KOBWBValue& result) {
    const kobwb::OperatorInfo& info = kobwb::GetOperatorInfo(GetType());
    KOBWBExpression* left = m_children[0];
    KOBWBExpression* right = m_children[1];
    if (info.family != kobwb::OperatorFamily::Binary || !left || !right) return;
    result = info.binary(GetEnvironment(), left->GetValue(), right->GetValue());
}
