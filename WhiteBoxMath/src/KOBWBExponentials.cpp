#include "KOBWBExponentials.h"

#include "KOBWBDomain.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::IncreasingImage;

KOBWBRealInterval KOBWBExp(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainExp, [](double v) { return std::exp(v); });
}

KOBWBRealInterval KOBWBLn(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainLog, [](double v) { return std::log(v); });
}

KOBWBRealInterval KOBWBLog(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return IncreasingImage(environment, x, kobwb::domainLog,
                           [](double v) { return std::log10(v); });
}

KOBWBValue KOBWBExp(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, kobwb::Unary::Exp, x);
}

KOBWBValue KOBWBLn(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, kobwb::Unary::Ln, x);
}

KOBWBValue KOBWBLog(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, kobwb::Unary::Log, x);
}
