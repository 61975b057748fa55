#ifndef KOBWBExponents_h
#define KOBWBExponents_h

#include "KOBWBPolynomial.h"

#include <algorithm>
#include <cstdlib>

// Arithmetic on the exponents of monomials, held within +-maxExponent (see
// KOBWBMonomialFactor): a result that would pass a bound stops there.
namespace kobwb {

constexpr long long maxExponent = KOBWBMonomialFactor::maxExponent;

inline int HeldExponent(long long exponent) {
    return static_cast<int>(exponent > maxExponent ? maxExponent : exponent < -maxExponent ? -maxExponent : exponent);
}

inline int AddExponents(int a, int b) { return HeldExponent(static_cast<long long>(a) + b); }

// |exponent|; a factor built by hand with INT_MIN counts as maxExponent.
inline long long ExponentMagnitude(int exponent) { return std::min(std::llabs(exponent), maxExponent); }

} // namespace kobwb

#endif
