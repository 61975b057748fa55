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
    const KOBWBEnvironment& environment = GetEnvironment();
    const KOBWBValue& a = left->GetValue();
    const KOBWBValue& b = right->GetValue();
    KOBWBRealInterval image;
    if (info.binaryInterval && info.binaryInterval(environment, a, b, image))
        StoreInterval(result, image);
    else
        result = info.binary(environment, a, b);
}
