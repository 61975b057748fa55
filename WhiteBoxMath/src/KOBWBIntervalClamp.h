#ifndef KOBWBIntervalClamp_h
#define KOBWBIntervalClamp_h

#include "KOBWBLimits.h"

namespace kobwb {

// The clamping rule of every real result, inline for the arithmetic's hot paths.
inline KOBWBRealInterval ClampReal(double lower, double upper) {
    const double max = KOBWBMaxReal;
    if (!(lower <= upper) || lower > max || upper < -max) return {max, -max};
    return {lower < -max ? -max : lower, upper > max ? max : upper};
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
