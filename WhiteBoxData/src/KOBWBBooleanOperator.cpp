#include "KOBWBBooleanOperator.h"

#include "KOBLVRAssert.h"
#include "KOBWBOperatorTable.h"

namespace {
constexpr unsigned nullChildLine = 41;
}

KOBWBBooleanOperator::KOBWBBooleanOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                           KOBWBExpression* child)
    : KOBWBOperator(factory, type, {child}) {}

KOBWBBooleanOperator::KOBWBBooleanOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                                           KOBWBExpression* first, KOBWBExpression* second)
    : KOBWBOperator(factory, type, 0, nullptr) {
    if (!first || !second)
        KOBLVRAssertError("ipChild1 && ipChild2", "WhiteBoxData/src/KOBWBBooleanOperator", nullChildLine);
    m_children.Append(first);
    m_children.Append(second);
}

void KOBWBBooleanOperator::DoEval(KOBWBValue& result) {
    const kobwb::OperatorInfo& info = kobwb::GetOperatorInfo(GetType());
    if (info.family != kobwb::OperatorFamily::Boolean) return;
    const int count = m_children.Size();
    if (count == 1 && info.unary && m_children[0]) {
        result = info.unary(GetEnvironment(), m_children[0]->GetValue());
    } else if (count == 2 && info.binary && m_children[0] && m_children[1]) {
        result = info.binary(GetEnvironment(), m_children[0]->GetValue(), m_children[1]->GetValue());
    }
}
