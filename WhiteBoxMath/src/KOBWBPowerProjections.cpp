#include "KOBWBPowerProjections.h"

#include "KOBWBExponentials.h"
#include "KOBWBPowers.h"
#include "KOBWBProjectionDispatch.h"
#include "KOBWBProjectionKernels.h"

using namespace kobwb;

namespace {

using Real = KOBWBRealInterval;
using Environment = KOBWBEnvironment;
using Value = KOBWBValue;

// The non-negative m-th root of v >= 0, in long double so that the rounding of 1/m
// costs less than a unit of the result.
double Root(double v, int m) {
    if (m == 1) return v;
    if (m == 2) return std::sqrt(v);
    return static_cast<double>(std::pow(static_cast<long double>(v), 1.0L / m));
}

// The roots r >= 0 with r^m in w, m > 0, w already widened.
Real PositiveRoots(const Real& w, int m) {
    const Real positive = Meet(w, KOBWBReal_Pos);
    if (IsEmptyInterval(positive)) return KOBWBReal_Nil;
    return Outward(Root(positive.lower, m), Root(positive.upper, m));
}

// The pieces of x with x^m in w, m > 0.
Pieces PowerPreimage(const Real& w, int m) {
    const Real positive = PositiveRoots(w, m);
    if (m % 2 == 0) return Symmetric(positive);
    Pieces pieces;
    pieces.Add(positive);
    const Real negative = PositiveRoots({-w.upper, -w.lower}, m);
    pieces.Add({-negative.upper, -negative.lower});
    return pieces;
}

Real NarrowToPowerPreimage(const Environment& e, const Real& x, const Real& w, int m) {
    return NarrowToPieces(e, x, PowerPreimage(w, m));
}

// The logarithms of the points of z, z possibly reaching down to 0 or below.
Real LogarithmsOf(const Real& z) {
    const Real positive = Meet(Outward(z), KOBWBReal_Pos);
    if (IsEmptyInterval(positive)) return KOBWBReal_Nil;
    // Below the smallest normal double exp loses its relative precision and then
    // underflows to 0: such results tell only that the argument lies below ln of it.
    return Outward(positive.lower >= DBL_MIN ? std::log(positive.lower) : -KOBWBMaxReal,
                   std::log(std::max(positive.upper, DBL_MIN)));
}

Real Exponentials(const Real& a) { return Outward(std::exp(a.lower), std::exp(a.upper)); }

// The single integral exponent of a value, which makes a power an integer power.
bool IntegralExponent(const Value& y, int& n) {
    const KOBWBValueType type = y.GetType();
    if (type != KOBWBIntegerValue && type != KOBWBRealValue) return false;
    const double exponent = y.GetAsDouble();
    if (!(std::fabs(exponent) <= 2147483646.0) || exponent != std::floor(exponent)) return false;
    n = static_cast<int>(exponent);
    return true;
}

} // namespace

Real KOBWBInversePow1(const Environment& e, const Real& z, const Real& x, int n) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real wide = Outward(z);
    if (n == 0) return Reported(e, wide.lower <= 1 && wide.upper >= 1 ? Ordered(x) : KOBWBReal_Nil);
    if (n > 0) return Reported(e, NarrowToPowerPreimage(e, x, wide, n));
    // x^n = z with n < 0: x^|n| = 1 / z.
    const Pieces reciprocals = DividePieces({1.0, 1.0}, wide);
    Real result = KOBWBReal_Nil;
    for (int i = 0; i < reciprocals.count; ++i)
        result = Hull(result, NarrowToPowerPreimage(e, x, reciprocals.piece[i], -n));
    return Reported(e, result);
}

Real KOBWBInversePow1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real logarithms = LogarithmsOf(z);
    if (IsEmptyInterval(logarithms)) return Reported(e, KOBWBReal_Nil);
    const Pieces pieces = DividePieces(logarithms, Ordered(y));
    Real result = KOBWBReal_Nil;
    for (int i = 0; i < pieces.count; ++i)
        result = Hull(result, Narrow(e, x, Meet(Exponentials(pieces.piece[i]), KOBWBReal_Pos)));
    return Reported(e, result);
}

Real KOBWBInversePow2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real logarithms = LogarithmsOf(z);
    const Real baseLogarithms = LogarithmsOf(Meet(Ordered(x), {KOBWBMinReal, KOBWBMaxReal}));
    if (IsEmptyInterval(logarithms) || IsEmptyInterval(baseLogarithms)) return Reported(e, KOBWBReal_Nil);
    return Reported(e, NarrowToPieces(e, y, DividePieces(logarithms, baseLogarithms)));
}

Real KOBWBInverseRoot(const Environment& e, const Real& z, const Real& x, int n) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real wide = Outward(z);
    if (n == 0) {
        Real image = KOBWBReal_Nil;
        if (wide.lower <= 0 && wide.upper >= 0) image = {0.0, 1.0};
        if (wide.lower <= 1 && wide.upper >= 1) image = Hull(image, {1.0, 1.0});
        return Reported(e, Narrow(e, x, image));
    }
    const Real powers =
        ForwardImage(e, [n](const Environment& s, const Real& a) { return KOBWBPow(s, a, n); }, wide);
    return Reported(e, Narrow(e, x, powers));
}

Real KOBWBInverseSqrt(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    return KOBWBInverseRoot(e, Meet(Ordered(z), KOBWBReal_Pos), x, 2);
}

Real KOBWBInverseExp(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    return Reported(e, Narrow(e, x, LogarithmsOf(z)));
}

Real KOBWBInverseLn(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    return Reported(e, Narrow(e, x, Exponentials(Outward(z))));
}

Real KOBWBInverseLog(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real wide = Outward(z);
    return Reported(e, Narrow(e, x, Outward(std::pow(10.0, wide.lower), std::pow(10.0, wide.upper))));
}

Value KOBWBInversePow1(const Environment& e, const Value& z, const Value& x, int n) {
    Real domain;
    if (!ReadDomain(e, z, domain)) return Value(KOBWBReal_Nil);
    return NarrowValueWith(e, x, [&domain, n](const Environment& s, const Real& a) {
        return KOBWBInversePow1(s, domain, a, n);
    });
}
Value KOBWBInversePow1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    int n = 0;
    if (IntegralExponent(y, n)) return KOBWBInversePow1(e, z, x, n);
    return ProjectFirst(e, KOBWBInversePow1, z, x, y);
}
Value KOBWBInversePow2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    int n = 0;
    if (IntegralExponent(y, n)) return y;
    return ProjectSecond(e, KOBWBInversePow2, z, x, y);
}
Value KOBWBInverseRoot(const Environment& e, const Value& z, const Value& x, int n) {
    Real domain;
    if (!ReadDomain(e, z, domain)) return Value(KOBWBReal_Nil);
    return NarrowValueWith(e, x, [&domain, n](const Environment& s, const Real& a) {
        return KOBWBInverseRoot(s, domain, a, n);
    });
}
Value KOBWBInverseSqrt(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseSqrt, z, x);
}
Value KOBWBInverseExp(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseExp, z, x);
}
Value KOBWBInverseLn(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseLn, z, x);
}
Value KOBWBInverseLog(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseLog, z, x);
}
