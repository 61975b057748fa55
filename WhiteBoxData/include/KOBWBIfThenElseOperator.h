#ifndef KOBWBIfThenElseOperator_h
#define KOBWBIfThenElseOperator_h

#include "KOBWBOperator.h"

// Children: condition, then-branch, else-branch. Only the branch the condition
// chooses is evaluated; an undetermined or non-boolean condition gives the
// indefinite value.
class KOBWBX_API KOBWBIfThenElseOperator : public KOBWBOperator {
public:
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;

protected:
    friend class KOBWBFactory;
    KOBWBIfThenElseOperator(KOBWBFactory& factory, KOBWBExpression* condition,
                            KOBWBExpression* thenBranch, KOBWBExpression* elseBranch);

    void DoEval(KOBWBValue& result) override;
};

#endif
