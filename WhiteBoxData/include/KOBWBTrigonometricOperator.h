#ifndef KOBWBTrigonometricOperator_h
#define KOBWBTrigonometricOperator_h

#include "KOBWBOperator.h"

// The circular and hyperbolic functions and their inverses, of one child.
class KOBWBX_API KOBWBTrigonometricOperator : public KOBWBOperator {
public:
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;

protected:
    friend class KOBWBFactory;
    KOBWBTrigonometricOperator(KOBWBFactory& factory, KOBWBExpressionType type, KOBWBExpression* child);

    void DoEval(KOBWBValue& result) override;
};

#endif
