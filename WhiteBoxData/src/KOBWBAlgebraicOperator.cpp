#include "KOBWBAlgebraicOperator.h"

#include "KOBWBOperatorTable.h"

KOBWBAlgebraicOperator::KOBWBAlgebraicOperator(KOBWBFactory& factory, KOBWBExpressionType type, int n,
                                               KOBWBExpression** children)
    : KOBWBOperator(factory, type, n, children) {}

unsigned char KOBWBAlgebraicOperator::AddChild(KOBWBExpression* child) {
    if (child) m_children.Append(child);
    return 1;
}

unsigned char KOBWBAlgebraicOperator::RemoveChild(int i) {
    if (i < 0 || i >= m_children.Size()) return 0;
    m_children.RemovePosition(i);
    return 1;
}

void KOBWBAlgebraicOperator::DoEval(KOBWBValue& result) {
    const kobwb::OperatorInfo& info = kobwb::GetOperatorInfo(GetType());
    const int count = m_children.Size();
    if (info.family != kobwb::OperatorFamily::Algebraic || count == 0 || !m_children[0]) return;
    const KOBWBEnvironment& environment = GetEnvironment();
    // While the function's interval form applies, the fold runs on intervals kept in
    // the buffer; the first step that it does not cover goes on with whole values.
    const KOBWBValue* folded = &m_children[0]->GetValue();
    int i = 1;
    if (info.binaryInterval) {
        KOBWBRealInterval image;
        for (; i < count; ++i) {
            KOBWBExpression* child = m_children[i];
            if (!child) continue;
            if (!info.binaryInterval(environment, *folded, child->GetValue(), image)) break;
            StoreInterval(result, image);
            folded = &result;
        }
    }
    if (folded != &result) result = *folded;
    for (; i < count; ++i) {
        KOBWBExpression* child = m_children[i];
        if (child) result = info.binary(environment, result, child->GetValue());
    }
}
