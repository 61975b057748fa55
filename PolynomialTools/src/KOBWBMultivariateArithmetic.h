#ifndef KOBWBMultivariateArithmetic_h
#define KOBWBMultivariateArithmetic_h

#include "KOBWBPolynomial.h"

#include <vector>

// The working functions of the multivariate tools: a polynomial in several atoms
// read as a polynomial in one main atom whose coefficients are polynomials in the
// others.
namespace KOBWBMultivariateArithmetic {

// The lexicographic order of monomials, atoms of larger number first: a monomial
// order (compatible with products), in which exact division proceeds.
int CompareLex(const KOBWBMonomial& a, const KOBWBMonomial& b);
const KOBWBPolynomialTerm& LeadingTerm(const KOBWBPolynomial& p);
// a / b for monomials when b divides a.
bool DivideMonomial(const KOBWBMonomial& a, const KOBWBMonomial& b, KOBWBMonomial& quotient);
KOBWBPolynomial Term(const KOBWBMonomial& monomial, const KOBWBCoefficient& coefficient);
// The coefficient of atom^k in p, a polynomial in the other atoms.
KOBWBPolynomial CoefficientOf(const KOBWBPolynomial& p, int atom, long long k);
// -1 for the zero polynomial.
long long DegreeIn(const KOBWBPolynomial& p, int atom);
// The leading coefficient in atom.
KOBWBPolynomial Lead(const KOBWBPolynomial& p, int atom);
// p^n, the zero polynomial past the tools' limit of terms.
KOBWBPolynomial PowerOf(const KOBWBPolynomial& p, long long n);
bool TooLarge(const KOBWBPolynomial& p);
// lead(b)^(deg a - deg b + 1) a modulo b, in atom; false past the limit.
bool PseudoRemainder(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& remainder);
// The atoms of p, by number.
std::vector<int> AtomsOf(const KOBWBPolynomial& p);
// p divided by the coefficient of its leading term.
KOBWBPolynomial Normalised(const KOBWBPolynomial& p);
// The content of p in atom (the gcd of its coefficients) and its primitive part.
bool Content(const KOBWBPolynomial& p, int atom, KOBWBPolynomial& content, KOBWBPolynomial& primitive);
// The normalised gcd, by primitive remainder sequences; false past the limit.
bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd);

} // namespace KOBWBMultivariateArithmetic

#endif
