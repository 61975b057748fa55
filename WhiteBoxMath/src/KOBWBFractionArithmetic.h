#ifndef KOBWBFractionArithmetic_h
#define KOBWBFractionArithmetic_h

#include "KOBWBFraction.h"

// Exact arithmetic on fractions times powers of Pi, shared by the sum, the
// difference, the product and the quotient of values, so that multiples of Pi stay
// exact through the arithmetic of a model.
namespace kobwb {

enum class FractionRule { None, Sum, Sub, Mul, Div };

// Combines a and b by the rule, in 64-bit integers reduced by their greatest common
// divisor. Sums and differences are exact when the powers of Pi agree (or one side
// is 0); products add the powers and quotients subtract them. False, leaving result
// untouched, when there is no exact form (different powers in a sum, a zero
// divisor) or when a number of the reduced result does not fit in
// [-KOBWBMaxInteger, KOBWBMaxInteger]: the caller then falls back to real arithmetic.
bool CombineFractions(FractionRule rule, const KOBWBFraction& a, const KOBWBFraction& b,
                      KOBWBFraction& result);

} // namespace kobwb

#endif
