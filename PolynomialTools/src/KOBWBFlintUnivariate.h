#ifndef KOBWBFlintUnivariate_h
#define KOBWBFlintUnivariate_h

#include "KOBWBUnivariateArithmetic.h"
#include "KOBWBUnivariatePolynomialTools.h"

#include <vector>

// The univariate tools' large cases on FLINT: coefficient rows go to FLINT's
// rational polynomials and back at the boundary. Small rows stay with the
// hand-written arithmetic, which costs less than the conversion there.
namespace KOBWBFlintUnivariate {

// The public gcd and resultant, straight from and to KOBWBPolynomial at every degree
// (FLINT's small cases cost less than the hand-written ones); false, outputs
// untouched, when an argument is not univariate in atom.
bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& gcd);
bool Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBRational& resultant);

// Whether a row of this degree is worth converting for a gcd, a resultant or a
// product.
inline bool WorthConverting(int degree) { return degree >= 12; }

KOBWBUnivariateArithmetic::Row Gcd(const KOBWBUnivariateArithmetic::Row& a, const KOBWBUnivariateArithmetic::Row& b);
KOBWBRational Resultant(const KOBWBUnivariateArithmetic::Row& a, const KOBWBUnivariateArithmetic::Row& b);
KOBWBUnivariateArithmetic::Row Multiply(const KOBWBUnivariateArithmetic::Row& a,
                                        const KOBWBUnivariateArithmetic::Row& b);
// a = b quotient + remainder; b is not zero.
void Divide(const KOBWBUnivariateArithmetic::Row& a, const KOBWBUnivariateArithmetic::Row& b,
            KOBWBUnivariateArithmetic::Row& quotient, KOBWBUnivariateArithmetic::Row& remainder);

// The real roots of a non-zero row in increasing order, isolated by certified
// complex root enclosures (ball arithmetic) on its square-free part; the real
// enclosures' ends, exact dyadic numbers, are then checked exactly: the square-free
// part changes sign across each interval and the intervals are disjoint. An end
// that is a root gives the interval of that root alone. False when a check fails,
// the caller then isolates otherwise.
bool IsolateRealRoots(const KOBWBUnivariateArithmetic::Row& row, std::vector<KOBWBRationalInterval>& roots);

} // namespace KOBWBFlintUnivariate

#endif
