#ifndef KOBWBFlintMultivariate_h
#define KOBWBFlintMultivariate_h

#include "KOBWBPolynomial.h"

#include <cstdint>

// Large sparse products and powers of polynomials over atoms on FLINT's sparse
// integer polynomials: the atoms become FLINT's variables, negative exponents are
// shifted to start at 0, rational coefficients are brought over a common
// denominator, and the result comes back in storage order. False, result untouched,
// when a coefficient is real (those stay with the hand-written arithmetic).
namespace KOBWBFlintMultivariate {

// Whether a product of polynomials of these sizes is worth converting.
inline bool WorthConverting(size_t termsA, size_t termsB) { return termsA * termsB >= 512; }

// a * b into product, whose storage is reused; product is neither a nor b. A
// product of more than maxTerms terms is not converted back: false, product
// untouched, and tooLarge set when given.
bool Multiply(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& product,
              size_t maxTerms = SIZE_MAX, bool* tooLarge = nullptr);
// p^exponent when it has at most maxTerms terms; false also when that cannot be
// shown before computing it, and for powers small enough (a bound of a few hundred
// terms) that the hand-written squarings cost less.
bool Power(const KOBWBPolynomial& p, unsigned long exponent, int maxTerms, KOBWBPolynomial& result);

// The exact tools on polynomials with exact coefficients and exponents that are not
// negative; false when FLINT gives up (an exponent past its words).
// quotient = a / b when b (not zero) divides a; false when it does not.
bool DivideExactly(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& quotient);
// The gcd up to a constant factor (the zero polynomial when both are zero).
bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd);
// The resultant in atom of a and b, both of positive degree in it.
bool Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& resultant);

} // namespace KOBWBFlintMultivariate

#endif
