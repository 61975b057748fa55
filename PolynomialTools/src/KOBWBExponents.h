#ifndef KOBWBExponents_h
#define KOBWBExponents_h

#include <climits>
#include <cstdlib>

// Arithmetic on the exponents of monomials. Exponents are 64-bit integers between
// -LLONG_MAX and LLONG_MAX: a sum that would pass one of them stops there, so that
// multiplying monomials with huge exponents stays defined, and -LLONG_MAX - 1, which
// has no opposite, is never made.
namespace kobwb {

inline long long AddExponents(long long a, long long b) {
    long long sum;
    if (__builtin_add_overflow(a, b, &sum) || sum == LLONG_MIN)
        return a > 0 ? LLONG_MAX : -LLONG_MAX;
    return sum;
}

// |exponent|, LLONG_MAX for an exponent of -LLONG_MAX - 1 built by hand.
inline long long ExponentMagnitude(long long exponent) {
    return exponent == LLONG_MIN ? LLONG_MAX : std::llabs(exponent);
}

} // namespace kobwb

#endif
