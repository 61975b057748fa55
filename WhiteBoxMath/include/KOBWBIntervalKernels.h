#ifndef KOBWBIntervalKernels_h
#define KOBWBIntervalKernels_h

#include "KOBWBEnvironment.h"
#include "KOBWBInterval.h"
#include "KOBWBLimits.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

// The inline core of the interval arithmetic: argument checks, clamping, and the
// sum, difference and product of real intervals, so that these cost callers no
// more than the arithmetic itself.
namespace kobwb {

// Bit 1: an empty or inconsistent argument, or one wholly outside the function's
// domain. Bit 2: an argument of a kind the function does not take.
constexpr unsigned int errorEmptyArgument = 1;
constexpr unsigned int errorBadKind = 2;


// The next double above a finite v (0 and -0 step to the least subnormal), by its bits:
// as std::nextafter towards +infinity without its call, for the widening of bounds on
// hot paths.
inline double NextAbove(double v) {
    if (v == 0) return std::numeric_limits<double>::denorm_min();
    std::uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    bits = v > 0 ? bits + 1 : bits - 1;
    std::memcpy(&v, &bits, sizeof bits);
    return v;
}
// The next double below a finite v.
inline double NextBelow(double v) {
    return -NextAbove(-v);
}

// The clamping rule of every real result, inline for the arithmetic's hot paths.
// Clamping first and testing the order after gives the same results with one branch:
// a lower bound above max, or an upper bound below -max, ends up crossed.
inline KOBWBRealInterval ClampReal(double lower, double upper) {
    const double max = KOBWBMaxReal;
    const double clampedLower = lower < -max ? -max : lower;
    const double clampedUpper = upper > max ? max : upper;
    if (!(clampedLower <= clampedUpper)) return {max, -max};
    return {clampedLower, clampedUpper};
}

inline int SaturatedAdd(int a, int b, bool& overflow) {
    const int max = KOBWBMaxInteger;
    overflow = true;
    if (b > 0) {
        if (a > max - b) return max;
    } else if (a < -(max + b)) {
        return -max;
    }
    overflow = false;
    return a + b;
}

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
    const unsigned both = static_cast<unsigned>(IsConsistentArgument(a)) & static_cast<unsigned>(IsConsistentArgument(b));
    if (both != 0) return true;
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

} // namespace kobwb

#endif
