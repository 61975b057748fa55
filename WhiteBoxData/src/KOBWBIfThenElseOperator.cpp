#include "KOBWBIfThenElseOperator.h"

KOBWBIfThenElseOperator::KOBWBIfThenElseOperator(KOBWBFactory& factory, KOBWBExpression* condition,
                                                 KOBWBExpression* thenBranch,
                                                 KOBWBExpression* elseBranch)
    : KOBWBOperator(factory, KOBWBIfThenElseType, {condition, thenBranch, elseBranch}) {}

void KOBWBIfThenElseOperator::DoEval(KOBWBValue& result) {
    KOBWBExpression* condition = m_children[0];
    if (!condition) return;
    KOBWBValue test;
    condition->Eval(test);
    if (!test.IsAKindOf(KOBWBBooleanValue)) {
        result.SetIndefinite();
        return;
    }
    KOBWBExpression* branch = nullptr;
    switch (test.GetAsBoolean()) {
    case KOBWBFalse: branch = m_children[2]; break;
    case KOBWBTrue: branch = m_children[1]; break;
    default: result.SetIndefinite(); return;
    }
    if (branch) branch->Eval(result);
}
