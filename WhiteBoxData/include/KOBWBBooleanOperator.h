#ifndef KOBWBBooleanOperator_h
#define KOBWBBooleanOperator_h

#include "KOBWBOperator.h"

// Negation, or, and, implication and the comparisons equal, not equal and
// less-or-equal; a logical node has no derivative.
class KOBWBX_API KOBWBBooleanOperator : public KOBWBOperator {
public:
    KOBWBExpression* Differentiate(KOBWBVariable*) override { return nullptr; }

protected:
    friend class KOBWBFactory;
    KOBWBBooleanOperator(KOBWBFactory& factory, KOBWBExpressionType type, KOBWBExpression* child);
    KOBWBBooleanOperator(KOBWBFactory& factory, KOBWBExpressionType type, KOBWBExpression* first,
                         KOBWBExpression* second);

    void DoEval(KOBWBValue& result) override;
};

#endif
