#ifndef KOBWBValueReading_h
#define KOBWBValueReading_h

#include "KOBWBFraction.h"
#include "KOBWBLimits.h"

namespace kobwb {

// An integer interval read as one integer: nil when empty, its bound when exact,
// any otherwise.
inline int SingleInteger(const KOBWBIntegerInterval& interval) {
    if (interval.lower > interval.upper) return KOBWBSingleInteger_Nil;
    if (interval.lower == interval.upper) return interval.lower;
    return KOBWBSingleInteger_Any;
}

// A real interval read as one real: nil when its width is negative, its lower bound
// when the width is at most KOBWBAbsPrecision, any otherwise.
inline double SingleReal(const KOBWBRealInterval& interval) {
    const double width = interval.upper - interval.lower;
    if (width < 0) return KOBWBSingleReal_Nil;
    if (width <= KOBWBAbsPrecision) return interval.lower;
    return KOBWBSingleReal_Any;
}

// numerator x Pi^power / denominator in double precision.
double FractionToReal(const KOBWBFraction& fraction);

} // namespace kobwb

#endif
