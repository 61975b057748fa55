#ifndef KOBWBArithmeticKernels_h
#define KOBWBArithmeticKernels_h

#include "KOBWBEnvironment.h"
#include "KOBWBIntervalKernels.h"
#include "KOBWBLimits.h"

#include <algorithm>

// The integer pieces the forward functions share, beside the public kernels.
namespace kobwb {

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
