#include "KOBWBTrigonometricOperator.h"

#include "KOBWBOperatorTable.h"

KOBWBTrigonometricOperator::KOBWBTrigonometricOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                                       KOBWBExpression* child)
    : KOBWBOperator(factory, type, {child}) {}

void KOBWBTrigonometricOperator::DoEval(KOBWBValue& result) {
    const kobwb::OperatorInfo& info = kobwb::GetOperatorInfo(GetType());
    KOBWBExpression* child = m_children[0];
    if (info.family == kobwb::OperatorFamily::Trigonometric && child)
        result = info.unary(GetEnvironment(), child->GetValue());
}
