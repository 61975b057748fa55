#ifndef KOBWBIntervalClamp_h
#define KOBWBIntervalClamp_h

#include "KOBWBLimits.h"

namespace kobwb {

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

} // namespace kobwb

#endif
