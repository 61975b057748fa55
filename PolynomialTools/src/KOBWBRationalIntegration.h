#ifndef KOBWBRationalIntegration_h
#define KOBWBRationalIntegration_h

#include "KOBWBPolynomial.h"

class KOBWBPolynomialContext;
class KOBWBVariable;

// The antiderivative in x of numerator / denominator, both polynomials in x alone
// with exact coefficients, as a polynomial of the context (see KOBWBIntegration.h for
// the form); false when the denominator has a square-free factor of degree 3 or more
// without rational linear or quadratic factors that the remainder of the Hermite
// reduction needs.
bool KOBWBIntegrateRationalFunction(KOBWBPolynomialContext& context, KOBWBVariable* x,
                                    const KOBWBPolynomial& numerator, const KOBWBPolynomial& denominator,
                                    KOBWBPolynomial& integral);

#endif
