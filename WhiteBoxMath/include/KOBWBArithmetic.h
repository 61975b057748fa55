#ifndef KOBWBArithmetic_h
#define KOBWBArithmetic_h

#include "KOBWBInterval.h"
#include "KOBWBIntervalKernels.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Forward interval arithmetic: the image of the argument domains under an operation.
//
// Interval level. Each argument must be consistent (a real interval's bounds may
// cross by at most KOBWBAbsPrecision, an integer interval's not at all); otherwise
// error bit 1 is set and the Nil interval of the result type returned. Real results
// are clamped as KOBWBCreateRealInterval does; integer results saturate at plus or
// minus KOBWBMaxInteger, and a lower bound saturating upwards (or an upper bound
// downwards) gives bit 1 and KOBWBInteger_Nil. There is no outward rounding.
//
// Value level. The result follows the kinds of the arguments: integer kinds stay
// integer where the function has an integer form; a number that stands for any
// gives the interval of the function's range; single numbers give a single number
// (an interval when the image is wider than a point); intervals give an interval;
// enumerations are mapped element by element (all pairs of elements for two
// enumerations) and normalised with Correct, or go through their hull when an
// operand is not a list. Undefined and Boolean arguments set bit 2 and give the
// RealInterval value KOBWBReal_Nil. KOBWBSum, KOBWBSub, KOBWBMul and KOBWBDiv of two
// exact numbers of which one is a fraction stay exact fractions while the result
// fits in 32 bits, and otherwise fall back to real arithmetic without an error.
//
// The sum, difference and product of real intervals are defined inline, so that
// they cost no more than the arithmetic itself.

inline KOBWBRealInterval KOBWBSum(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                                  const KOBWBRealInterval& b) {
    return kobwb::SumIntervals(environment, a, b);
}
KOBWBX_API KOBWBIntegerInterval KOBWBSum(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& a,
                                         const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBSum(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

inline KOBWBRealInterval KOBWBSub(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                                  const KOBWBRealInterval& b) {
    return kobwb::SubIntervals(environment, a, b);
}
KOBWBX_API KOBWBIntegerInterval KOBWBSub(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& a,
                                         const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBSub(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

inline KOBWBRealInterval KOBWBMul(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                                  const KOBWBRealInterval& b) {
    return kobwb::MulIntervals(environment, a, b);
}
KOBWBX_API KOBWBIntegerInterval KOBWBMul(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& a,
                                         const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBMul(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

// A divisor containing 0 gives KOBWBReal_Any without an error: there is no
// division into two pieces. A quotient is always real.
KOBWBX_API KOBWBRealInterval KOBWBDiv(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b);
KOBWBX_API KOBWBValue KOBWBDiv(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

// a - b floor(a / b), with the sign of b. When floor(a / b) is the same integer k
// over the whole domain, the result is a - k b exactly; otherwise it is the range
// of the remainder, [0, b.upper] for b > 0 and [b.lower, 0] for b < 0 (for integers
// [0, b.upper - 1] and [b.lower + 1, 0]), and the hull of both when b contains 0.
// A divisor that is exactly 0 sets bit 1 and gives the Nil interval.
KOBWBX_API KOBWBRealInterval KOBWBMod(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b);
KOBWBX_API KOBWBIntegerInterval KOBWBMod(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& a,
                                         const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBMod(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

KOBWBX_API KOBWBRealInterval KOBWBMin(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b);
KOBWBX_API KOBWBIntegerInterval KOBWBMin(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& a,
                                         const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBMin(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

KOBWBX_API KOBWBRealInterval KOBWBMax(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b);
KOBWBX_API KOBWBIntegerInterval KOBWBMax(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& a,
                                         const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBMax(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

KOBWBX_API KOBWBRealInterval KOBWBAbs(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a);
KOBWBX_API KOBWBIntegerInterval KOBWBAbs(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& a);
KOBWBX_API KOBWBValue KOBWBAbs(const KOBWBEnvironment& environment, const KOBWBValue& a);

// The positive difference max(a - b, 0).
KOBWBX_API KOBWBRealInterval KOBWBDim(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b);
KOBWBX_API KOBWBValue KOBWBDim(const KOBWBEnvironment& environment, const KOBWBValue& a,
                               const KOBWBValue& b);

// |a| with the sign of b: |a| where b >= 0, -|a| where b < 0, the hull of both when
// b contains negative and non-negative numbers.
KOBWBX_API KOBWBRealInterval KOBWBSign(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& a, const KOBWBRealInterval& b);
KOBWBX_API KOBWBValue KOBWBSign(const KOBWBEnvironment& environment, const KOBWBValue& a,
                                const KOBWBValue& b);

#endif
