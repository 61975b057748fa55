#ifndef KOBWBMultivariatePolynomialTools_h
#define KOBWBMultivariatePolynomialTools_h

#include "KOBWBPolynomial.h"

#include <utility>
#include <vector>

class KOBWBExpression;
class KOBWBPolynomialContext;
class KOBWBVariable;

// Exact algebra of polynomials in several atoms of a KOBWBPolynomialContext, every
// atom taken as an independent variable, with exact rational coefficients: exact
// division, the resultant in one atom (to eliminate it from two equations), the
// greatest common divisor and the factorisation into irreducible factors, computed
// on FLINT's sparse polynomials.
//
// A polynomial qualifies when its coefficients are exact and its exponents are not
// negative (Pi counts as an atom like any other); every function answers false, its
// outputs untouched, for one that does not, as it does when a result has more than
// maxTerms terms, for exponents past 2^40 (their sums must stay in machine words),
// and for a resultant or a factorisation of degree above
// KOBWBUnivariatePolynomialTools::maxDegree.

// One factor of a factorisation and its multiplicity.
struct KOBWBPolynomialFactor {
    KOBWBPolynomial factor;
    int multiplicity = 1;
};

class KOBWBX_API KOBWBMultivariatePolynomialTools {
public:
    static constexpr int maxTerms = 100000;

    // Whether the polynomial qualifies.
    static bool IsExact(const KOBWBPolynomial& polynomial);

    // quotient = a / b when b divides a exactly; false when b is zero or does not
    // divide a.
    static bool DivideExactly(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& quotient);

    // The resultant of a and b in atom, a polynomial in the other atoms: it vanishes
    // where a and b, as polynomials in atom, have a common root (or both leading
    // coefficients vanish). 0 when a or b is zero; c^deg b when a is a constant c in
    // atom (and c^deg a when b is).
    static bool Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& resultant);

    // The greatest common divisor, normalised so that its leading term (the atoms of
    // larger number first) has coefficient 1; 0 when both are zero.
    static bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd);

    // p = constant x f1^m1 x ... x fk^mk with f1, ..., fk distinct and irreducible
    // over the rationals (x^2 - y^2 splits into x - y and x + y; x^2 + y^2 stays
    // whole), each with the coefficient 1 on its leading term, in a fixed order:
    // lower total degree first, then fewer terms, then by their terms. Empty factors
    // for a constant p (constant 0 for the zero polynomial).
    static bool Factor(const KOBWBPolynomial& p, KOBWBRational& constant, std::vector<KOBWBPolynomialFactor>& factors);

    // The same on expressions of the context's factory, read and written by the
    // context (canonical form); null for null or foreign arguments, expressions that
    // do not qualify, or past the limits above.
    static KOBWBExpression* Resultant(KOBWBPolynomialContext& context, KOBWBExpression* a, KOBWBExpression* b,
                                      KOBWBVariable* variable);
    static KOBWBExpression* Gcd(KOBWBPolynomialContext& context, KOBWBExpression* a, KOBWBExpression* b);
    // The factors as expressions with their multiplicities, and the constant; false
    // (outputs untouched) as above.
    static bool Factor(KOBWBPolynomialContext& context, KOBWBExpression* expression, KOBWBExpression*& constant,
                       std::vector<std::pair<KOBWBExpression*, int>>& factors);
};

#endif
