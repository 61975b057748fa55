#ifndef KOBWBArithmeticKernels_h
#define KOBWBArithmeticKernels_h

#include "KOBWBEnvironment.h"
#include "KOBWBIntervalClamp.h"
#include "KOBWBLimits.h"

#include <algorithm>

// The pieces every forward function shares, inline so that the sum and the product
// cost no more than the arithmetic itself on the library's hot paths.
namespace kobwb {

// Bit 1: an empty or inconsistent argument, or one wholly outside the function's
// domain. Bit 2: an argument of a kind the function does not take.
constexpr unsigned int errorEmptyArgument = 1;
constexpr unsigned int errorBadKind = 2;

// Bounds may cross by KOBWBAbsPrecision, the global precision rather than the
// environment's tolerance, so that every caller agrees on what is empty. NaN bounds
// are inconsistent.
inline bool IsConsistentArgument(const KOBWBRealInterval& a) {
    return a.lower - a.upper <= KOBWBAbsPrecision;
}

inline bool IsConsistentArgument(const KOBWBIntegerInterval& a) {
    return a.lower <= a.upper;
}

// A consistent argument whose bounds cross within the precision, put in order, so
// that the image of a near-point is that point and not an empty result.
inline KOBWBRealInterval Ordered(const KOBWBRealInterval& a) {
    return a.lower <= a.upper ? a : KOBWBRealInterval{a.upper, a.lower};
}

// The clamping of every real result, after ordering bounds that crossed only
// because their arguments did.
inline KOBWBRealInterval ClampOrdered(double lower, double upper) {
    return ClampReal(std::min(lower, upper), std::max(lower, upper));
}

// Both arguments consistent; otherwise bit 1. Tested without short-circuit, which
// saves a branch on the hot paths.
template <class Interval>
bool ConsistentPair(const KOBWBEnvironment& environment, const Interval& a, const Interval& b) {
    if (IsConsistentArgument(a) & IsConsistentArgument(b)) return true;
    environment.SetError(errorEmptyArgument);
    return false;
}

inline KOBWBRealInterval SumIntervals(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    return ClampOrdered(a.lower + b.lower, a.upper + b.upper);
}

inline KOBWBRealInterval SubIntervals(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    return ClampOrdered(a.lower - b.upper, a.upper - b.lower);
}

inline KOBWBRealInterval MulIntervals(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    const double p1 = a.lower * b.lower;
    const double p2 = a.lower * b.upper;
    const double p3 = a.upper * b.lower;
    const double p4 = a.upper * b.upper;
    return ClampReal(std::min(std::min(p1, p2), std::min(p3, p4)),
                     std::max(std::max(p1, p2), std::max(p3, p4)));
}

// An integer result computed exactly in 64 bits, saturated at plus or minus
// KOBWBMaxInteger. A lower bound saturating upwards or an upper bound saturating
// downwards leaves nothing: bit 1 and KOBWBInteger_Nil.
inline KOBWBIntegerInterval IntegerResult(const KOBWBEnvironment& environment, long long lower,
                                          long long upper) {
    const long long max = KOBWBMaxInteger;
    if (lower > max || upper < -max || lower > upper) {
        environment.SetError(errorEmptyArgument);
        return KOBWBInteger_Nil;
    }
    return {static_cast<int>(std::max(lower, -max)), static_cast<int>(std::min(upper, max))};
}

} // namespace kobwb

#endif
