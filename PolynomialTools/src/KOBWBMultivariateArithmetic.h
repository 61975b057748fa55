#ifndef KOBWBMultivariateArithmetic_h
#define KOBWBMultivariateArithmetic_h

#include "KOBWBPolynomial.h"

// The working functions of the multivariate tools: the lexicographic order that
// names a polynomial's leading term, degrees in one atom, and the tools' limit.
namespace KOBWBMultivariateArithmetic {

// The lexicographic order of monomials, atoms of larger number first.
int CompareLex(const KOBWBMonomial& a, const KOBWBMonomial& b);
// The largest term in that order; p is not zero.
const KOBWBPolynomialTerm& LeadingTerm(const KOBWBPolynomial& p);
// -1 for the zero polynomial.
long long DegreeIn(const KOBWBPolynomial& p, int atom);
// Whether p has more terms than the tools' limit.
bool TooLarge(const KOBWBPolynomial& p);
// p divided by the coefficient of its leading term.
KOBWBPolynomial Normalised(const KOBWBPolynomial& p);

} // namespace KOBWBMultivariateArithmetic

#endif
