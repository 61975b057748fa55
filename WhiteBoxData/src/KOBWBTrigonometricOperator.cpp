#include "KOBWBTrigonometricOperator.h"

#include "KOBWBOperatorTable.h"

KOBWBTrigonometricOperator::KOBWBTrigonometricOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                                       KOBWBExpression* child)
    : KOBWBOperator(factory, type, {child}) {}

void KOBWBTrigonometricOperator::DoEval(KOBWBValue& result) {
    const kobwb::OperatorInfo& info = kobwb::GetOperatorInfo(GetType());
    KOBWBExpression* child = m_children[0];
    if (info.family != kobwb::OperatorFamily::Trigonometric || !child) return;
    const KOBWBValue& x = child->GetValue();
    KOBWBRealInterval image;
    if (info.unaryInterval && info.unaryInterval(GetEnvironment(), x, image))
        StoreInterval(result, image);
    else
        result = info.unary(GetEnvironment(), x);
}
