#include "KOBWBBranches.h"

#include "KOBWBArithmeticKernels.h"

#include <cmath>

namespace kobwb {

namespace {

long double Slack(const KOBWBEnvironment& environment, double bound) {
    return environment.GetTolerance() * std::max(1.0, std::fabs(bound));
}

} // namespace

bool MeetsHint(const KOBWBEnvironment& environment, const KOBWBRealInterval& image,
               const KOBWBRealInterval& hint) {
    if (!(image.lower <= image.upper) || !(hint.lower <= hint.upper)) return false;
    return image.lower <= hint.upper + Slack(environment, hint.upper) &&
           image.upper >= hint.lower - Slack(environment, hint.lower);
}

KOBWBRealInterval ShiftsMeetingHint(const KOBWBEnvironment& environment,
                                    const KOBWBRealInterval& image, long double period,
                                    const KOBWBRealInterval& hint) {
    if (!(image.lower <= image.upper) || !(hint.lower <= hint.upper)) return KOBWBReal_Nil;
    const long double low = hint.lower - Slack(environment, hint.lower);
    const long double high = hint.upper + Slack(environment, hint.upper);
    const long double first = std::ceil((low - image.upper) / period);
    const long double last = std::floor((high - image.lower) / period);
    if (first > last) return KOBWBReal_Nil;
    return ClampReal(static_cast<double>(image.lower + first * period),
                     static_cast<double>(image.upper + last * period));
}


} // namespace kobwb
