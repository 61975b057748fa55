#ifndef KOBWBIntegrateOperator_h
#define KOBWBIntegrateOperator_h

#include "KOBWBOperator.h"

class KOBWBVariable;

// An antiderivative (code 47). Children: the integrand, then the variable of
// integration. Its value is that of the antiderivative of the integrand in that
// variable (the integration slot of the integrand, constant of integration 0) at the
// current values, an interval when the variable holds one; the indefinite value
// when the integrand is not integrable. Its derivative in the variable of
// integration is the integrand itself.
//
// The antiderivative is made at the first evaluation and kept while the children
// stay; while the factory uses temporary storage it is made again at each
// evaluation and not kept, since the temporary nodes it is made of do not last.
class KOBWBX_API KOBWBIntegrateOperator : public KOBWBOperator {
public:
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;
    unsigned char ReplaceChild(int i, KOBWBExpression* child) override;
    // The antiderivative, or null when the integrand is not integrable.
    KOBWBExpression* GetAntiderivative();

protected:
    friend class KOBWBFactory;
    KOBWBIntegrateOperator(KOBWBFactory& factory, KOBWBExpression* integrand, KOBWBVariable* variable);

    void DoEval(KOBWBValue& result) override;

private:
    KOBWBExpression* m_antiderivative = nullptr;
    bool m_made = false;
};

#endif
