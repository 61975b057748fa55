#include "KOBWBAlgebraicOperator.h"

#include "KOBWBOperatorEvaluation.h"

KOBWBAlgebraicOperator::KOBWBAlgebraicOperator(KOBWBFactory& factory, KOBWBExpressionType type, int n,
                                               KOBWBExpression** children)
    : KOBWBOperator(factory, type, n, children) {}

unsigned char KOBWBAlgebraicOperator::AddChild(KOBWBExpression* child) {
    if (!child) return 1;
    m_children.Append(child);
    NoteStructureChange();
    return 1;
}

unsigned char KOBWBAlgebraicOperator::RemoveChild(int i) {
    if (i < 0 || i >= m_children.Size()) return 0;
    m_children.RemovePosition(i);
    NoteStructureChange();
    return 1;
}

void KOBWBAlgebraicOperator::DoEval(KOBWBValue& result) {
    kobwb::ComputeFold(kobwb::GetOperatorInfo(GetType()), GetEnvironment(), m_children, m_children.Size(), result);
}
