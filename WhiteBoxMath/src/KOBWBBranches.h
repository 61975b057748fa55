#ifndef KOBWBBranches_h
#define KOBWBBranches_h

#include "KOBWBInterval.h"

#include <algorithm>

class KOBWBEnvironment;

// The choice of branches of the multivalued inverses (roots, inverse trigonometric
// functions) by a hint on the result: every branch whose image meets the hint is
// kept, and the result is the hull of the kept images.
namespace kobwb {

constexpr long double piLong = 3.141592653589793238462643383279502884L;

// Whether the image meets the hint, the hint widened by the environment's tolerance
// (relative to its bounds beyond 1) so that a branch touching it is not lost to
// rounding. Empty images and hints meet nothing.
bool MeetsHint(const KOBWBEnvironment& environment, const KOBWBRealInterval& image,
               const KOBWBRealInterval& hint);

// The hull of the copies image + k period (k an integer) that meet the hint, the
// shifts computed in long double; KOBWBReal_Nil when none does.
KOBWBRealInterval ShiftsMeetingHint(const KOBWBEnvironment& environment,
                                    const KOBWBRealInterval& image, long double period,
                                    const KOBWBRealInterval& hint);

// The hull of two intervals of which either may be empty.
inline KOBWBRealInterval HullOf(const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
    if (!(a.lower <= a.upper)) return b;
    if (!(b.lower <= b.upper)) return a;
    return {std::min(a.lower, b.lower), std::max(a.upper, b.upper)};
}

} // namespace kobwb

#endif
