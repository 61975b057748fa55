#include "KOBWBHyperbolic.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBDomain.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::IncreasingImage;
using kobwb::Unary;

KOBWBRealInterval KOBWBSinh(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainSinh,
                           [](double v) { return std::sinh(v); });
}

KOBWBRealInterval KOBWBCosh(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainCosh, 0, r)) return r;
    const double magnitude = std::max(std::fabs(r.lower), std::fabs(r.upper));
    const double least = r.lower >= 0 ? r.lower : (r.upper <= 0 ? -r.upper : 0.0);
    return kobwb::ClampOrdered(std::cosh(least), std::cosh(magnitude));
}

KOBWBRealInterval KOBWBTanh(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainTanh,
                           [](double v) { return std::tanh(v); });
}

KOBWBRealInterval KOBWBAsinh(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainAsinh,
                           [](double v) { return std::asinh(v); });
}

KOBWBRealInterval KOBWBAcosh(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainAcosh,
                           [](double v) { return std::acosh(v); });
}

KOBWBRealInterval KOBWBAtanh(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainAtanh,
                           [](double v) { return std::atanh(v); });
}

KOBWBValue KOBWBSinh(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Sinh, x);
}

KOBWBValue KOBWBCosh(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Cosh, x);
}

KOBWBValue KOBWBTanh(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Tanh, x);
}

KOBWBValue KOBWBAsinh(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Asinh, x);
}

KOBWBValue KOBWBAcosh(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Acosh, x);
}

KOBWBValue KOBWBAtanh(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Atanh, x);
}
