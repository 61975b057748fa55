#include "KOBWBRounding.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBDomain.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::Unary;

namespace {

KOBWBRealInterval Rounded(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                          double (*round)(double)) {
    KOBWBRealInterval r;
    if (!kobwb::CheckArgument(environment, x, r)) return r;
    return kobwb::ClampOrdered(round(r.lower), round(r.upper));
}

} // namespace

KOBWBRealInterval KOBWBCeil(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return Rounded(environment, x, [](double v) { return std::ceil(v); });
}

KOBWBRealInterval KOBWBFloor(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return Rounded(environment, x, [](double v) { return std::floor(v); });
}

KOBWBRealInterval KOBWBRound(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return Rounded(environment, x, [](double v) { return std::round(v); });
}

KOBWBRealInterval KOBWBTrunc(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return Rounded(environment, x, [](double v) { return std::trunc(v); });
}

KOBWBValue KOBWBCeil(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Ceil, x);
}

KOBWBValue KOBWBFloor(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Floor, x);
}

KOBWBValue KOBWBRound(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Round, x);
}

KOBWBValue KOBWBTrunc(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Trunc, x);
}
