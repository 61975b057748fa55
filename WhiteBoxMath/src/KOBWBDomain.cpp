#include "KOBWBDomain.h"

#include "KOBWBArithmeticKernels.h"

#include <cmath>

namespace kobwb {

Domain DomainOf(int code, int n) {
    const double max = KOBWBMaxReal;
    const KOBWBRealInterval whole = KOBWBReal_Any;
    const bool even = n % 2 == 0;
    switch (code) {
    case domainPower:
        if (n > 1) {
            // Squares are the common case; their radius is computed once.
            static const double squareRadius = std::pow(max, 1.0 / 2);
            const double radius = n == 2 ? squareRadius : std::pow(max, 1.0 / n);
            return {{-radius, radius}, 0.0};
        }
        if (n < 0) return {whole, std::pow(KOBWBMinReal, 1.0 / -static_cast<double>(n))};
        return {whole, 0.0};
    case domainRoot:
        if (n == 0) return {{0.0, 1.0}, 0.0};
        return {even ? KOBWBReal_Pos : whole, n < 0 ? KOBWBMinReal : 0.0};
    case domainSin:
    case domainCos:
    case domainTan:
        return {KOBWBReal_Trig, 0.0};
    case domainAsin:
    case domainAcos:
        return {KOBWBReal_TrigInv, 0.0};
    case domainSinh:
    case domainCosh:
        return {{-2 * KOBWBMaxHypReal, 2 * KOBWBMaxHypReal}, 0.0};
    case domainAcosh:
        return {{1.0, max}, 0.0};
    case domainAtanh:
        return {{KOBWBAbsPrecision - 1, 1 - KOBWBAbsPrecision}, 0.0};
    case domainSqrt:
        return {KOBWBReal_Pos, 0.0};
    case domainLog:
        return {{KOBWBMinReal, max}, 0.0, true};
    case domainExp:
        return {{-max, 2 * KOBWBMaxExpReal}, 0.0};
    default:
        return {whole, 0.0};
    }
}

bool CheckArgument(const KOBWBEnvironment& environment, const KOBWBRealInterval& argument,
                   KOBWBRealInterval& checked) {
    if (!IsConsistentArgument(argument)) {
        environment.SetError(errorEmptyArgument);
        checked = KOBWBReal_Nil;
        return false;
    }
    checked = Ordered(argument);
    return true;
}

namespace {

double Clamp(double x, const KOBWBRealInterval& range) {
    return x < range.lower ? range.lower : (x > range.upper ? range.upper : x);
}

bool Nothing(const KOBWBEnvironment& environment, KOBWBRealInterval& restricted) {
    environment.SetError(errorEmptyArgument);
    restricted = KOBWBReal_Nil;
    return false;
}

} // namespace

bool RestrictToDomain(const KOBWBEnvironment& environment, const KOBWBRealInterval& argument,
                      int code, int n, KOBWBRealInterval& restricted) {
    if (!CheckArgument(environment, argument, restricted)) return false;
    const Domain domain = DomainOf(code, n);
    // An ordered argument inside the domain is what the intersection and the clamping
    // would leave of it, as long as bounds snap onto nearby ones and not away.
    if (domain.firmLower && restricted.upper < domain.range.lower)
        return Nothing(environment, restricted);
    const double tolerance = environment.GetTolerance();
    const bool inside = domain.range.lower <= restricted.lower && restricted.upper <= domain.range.upper;
    if (!inside || !(tolerance >= 0)) {
        restricted = KOBWBIntersect(restricted, domain.range, tolerance);
        if (!(restricted.lower <= restricted.upper)) return Nothing(environment, restricted);
        restricted = {Clamp(restricted.lower, domain.range), Clamp(restricted.upper, domain.range)};
    }
    const double hole = domain.hole;
    if (hole > 0) {
        const bool lowerInHole = restricted.lower > -hole;
        const bool upperInHole = restricted.upper < hole;
        if (lowerInHole && upperInHole) return Nothing(environment, restricted);
        if (lowerInHole) restricted.lower = std::max(restricted.lower, hole);
        if (upperInHole) restricted.upper = std::min(restricted.upper, -hole);
    }
    return true;
}

KOBWBRealInterval IncreasingImage(const KOBWBEnvironment& environment,
                                  const KOBWBRealInterval& argument, int code,
                                  double (*function)(double)) {
    KOBWBRealInterval x;
    if (!RestrictToDomain(environment, argument, code, 0, x)) return x;
    return ClampOrdered(function(x.lower), function(x.upper));
}

} // namespace kobwb
