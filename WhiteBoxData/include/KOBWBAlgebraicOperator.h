#ifndef KOBWBAlgebraicOperator_h
#define KOBWBAlgebraicOperator_h

#include "KOBWBOperator.h"

// Sum, product, minimum and maximum of two or more children.
class KOBWBX_API KOBWBAlgebraicOperator : public KOBWBOperator {
public:
    // Appends the child; a null child is ignored (and still answers 1).
    unsigned char AddChild(KOBWBExpression* child) override;
    unsigned char RemoveChild(int i) override;
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;

protected:
    friend class KOBWBFactory;
    KOBWBAlgebraicOperator(KOBWBFactory& factory, KOBWBExpressionType type, int n,
                           KOBWBExpression** children);

    // Folds the children's values from the first with the code's function.
    void DoEval(KOBWBValue& result) override;
};

#endif
