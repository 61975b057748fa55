#include "KOBWBTrigonometry.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBBranches.h"
#include "KOBWBDomain.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::Unary;

namespace {

constexpr double pi = 3.141592653589793;
constexpr double twoPi = 6.283185307179586;

// Indexed by the quadrant of the lower bound (row) and of the upper bound (column).
// Bit 1: the maximum 1 lies between the bounds; bit 2: the minimum -1 does.
constexpr unsigned char sineExtrema[4][4] = {
    {0, 1, 1, 3}, {2, 0, 0, 2}, {2, 3, 0, 2}, {0, 1, 1, 0}};
constexpr unsigned char cosineExtrema[4][4] = {
    {0, 0, 2, 2}, {3, 0, 2, 2}, {1, 1, 0, 0}, {1, 1, 3, 0}};
// 3: a pole of the tangent lies between the bounds.
constexpr unsigned char tangentPoles[4][4] = {
    {0, 3, 3, 3}, {3, 0, 0, 3}, {3, 3, 0, 3}, {0, 3, 3, 0}};
constexpr unsigned char pole = 3;

// floor(2 x / Pi) modulo 4, in long double so that arguments up to the trigonometric
// limit keep their quadrant.
int Quadrant(double x) {
    const long double turns = std::floor(static_cast<long double>(x) * (2 / kobwb::piLong));
    const long long quadrant = static_cast<long long>(turns) % 4;
    return static_cast<int>(quadrant < 0 ? quadrant + 4 : quadrant);
}

KOBWBRealInterval SineLike(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                           int code, double (*function)(double),
                           const unsigned char (&extrema)[4][4]) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, code, 0, r)) return r;
    const double width = r.upper - r.lower;
    if (width >= twoPi) return KOBWBReal_TrigInv;
    const int low = Quadrant(r.lower);
    const int high = Quadrant(r.upper);
    if (low == high && width > pi) return KOBWBReal_TrigInv;
    const double a = function(r.lower);
    const double b = function(r.upper);
    const unsigned char inside = extrema[low][high];
    return {(inside & 2) ? -1.0 : std::min(a, b), (inside & 1) ? 1.0 : std::max(a, b)};
}

} // namespace

KOBWBRealInterval KOBWBSin(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return SineLike(
        environment, x, kobwb::domainSin, [](double v) { return std::sin(v); }, sineExtrema);
}

KOBWBRealInterval KOBWBCos(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return SineLike(
        environment, x, kobwb::domainCos, [](double v) { return std::cos(v); }, cosineExtrema);
}

KOBWBRealInterval KOBWBTan(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainTan, 0, r)) return r;
    if (r.upper - r.lower > pi || tangentPoles[Quadrant(r.lower)][Quadrant(r.upper)] == pole)
        return KOBWBReal_Any;
    return kobwb::ClampOrdered(std::tan(r.lower), std::tan(r.upper));
}

KOBWBValue KOBWBSin(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Sin, x);
}

KOBWBValue KOBWBCos(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Cos, x);
}

KOBWBValue KOBWBTan(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, Unary::Tan, x);
}
