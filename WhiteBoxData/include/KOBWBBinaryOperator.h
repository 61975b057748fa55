#ifndef KOBWBBinaryOperator_h
#define KOBWBBinaryOperator_h

#include "KOBWBOperator.h"

// Quotient, power, root, atan2, dim, sign and mod of a left and a right child.
class KOBWBX_API KOBWBBinaryOperator : public KOBWBOperator {
public:
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;

protected:
    friend class KOBWBFactory;
    KOBWBBinaryOperator(KOBWBFactory& factory, KOBWBExpressionType type, KOBWBExpression* left,
                        KOBWBExpression* right);

    void DoEval(KOBWBValue& result) override;
};

#endif
