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

// The non-negative n-th root of v >= 0 for n != 0 (v^(1/n), so that a negative n gives
// the root of the reciprocal without overflowing it), in long double so that the
// rounding of 1/n costs less than a unit of the result.
double Root(double v, int n) {
    // The root of -0 is that of 0: its sign would make 0^(1/n) minus infinity for n < 0.
    const double magnitude = std::fabs(v);
    if (n == 1) return magnitude;
    if (n == 2) return std::sqrt(magnitude);
    return static_cast<double>(std::pow(static_cast<long double>(magnitude), 1.0L / n));
}

// The r >= 0 with r^n in w, w already widened; unclamped.
Real PositiveRoots(const Real& w, int n) {
    const Real positive = Meet(w, nonNegative);
    if (IsEmptyInterval(positive)) return KOBWBReal_Nil;
    if (n > 0) return Widened(Root(positive.lower, n), Root(positive.upper, n));
    return Widened(Root(positive.upper, n), Root(positive.lower, n));
}

// The pieces of x with x^n in w, n != 0: both signs for an even n, each sign from its
// side of w for an odd n.
Pieces PowerPreimage(const Real& w, int n) {
    const Real positive = PositiveRoots(w, n);
    if (n % 2 == 0) return Symmetric(positive);
    Pieces pieces;
    pieces.Add(positive);
    const Real negative = PositiveRoots({-w.upper, -w.lower}, n);
    pieces.Add({-negative.upper, -negative.lower});
    return pieces;
}

// The logarithms of the points of z, z possibly reaching down to 0 or below.
Real LogarithmsOf(const Real& z) {
    const Real positive = Meet(ResultDomain(z), nonNegative);
    if (IsEmptyInterval(positive)) return KOBWBReal_Nil;
    // Below the smallest normal double exp loses its relative precision and then
    // underflows to 0: such results tell only that the argument lies below ln of it.
    return Outward(positive.lower >= DBL_MIN ? std::log(positive.lower) : -KOBWBMaxReal,
                   std::log(std::max(positive.upper, DBL_MIN)));
}

Real Exponentials(const Real& a) {
    return Outward(std::exp(a.lower), std::exp(a.upper));
}

// The argument of a logarithm narrowed to the image, inside the logarithms' domain
// [KOBWBMinReal, KOBWBMaxReal]. An image wholly below KOBWBMinReal leaves nothing: a
// near miss there is not closed onto KOBWBMinReal, whose logarithm is far from z.
Real NarrowLogarithmArgument(const Environment& e, const Real& x, const Real& image) {
    const Real argument = Meet(Ordered(x), {KOBWBMinReal, KOBWBMaxReal});
    if (IsEmptyInterval(argument) || IsEmptyInterval(image) || image.upper < KOBWBMinReal)
        return KOBWBReal_Nil;
    return Narrow(e, argument, image);
}

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
    const Real wide = ResultDomain(z);
    if (n == 0) return Reported(e, wide.lower <= 1 && wide.upper >= 1 ? Ordered(x) : KOBWBReal_Nil);
    return Reported(e, NarrowToPieces(e, x, PowerPreimage(wide, n)));
}

Real KOBWBInversePow1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real logarithms = LogarithmsOf(z);
    if (IsEmptyInterval(logarithms)) return Reported(e, KOBWBReal_Nil);
    const Pieces pieces = DividePieces(logarithms, Operand(y));
    // The power is exp(y ln x): its bases lie in the domain of the logarithm.
    Real result = KOBWBReal_Nil;
    for (int i = 0; i < pieces.count; ++i)
        result = Hull(result, NarrowLogarithmArgument(e, x, Exponentials(pieces.piece[i])));
    return Reported(e, result);
}

Real KOBWBInversePow2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real logarithms = LogarithmsOf(z);
    const Real baseLogarithms = LogarithmsOf(Meet(Operand(x), {KOBWBMinReal, HUGE_VAL}));
    if (IsEmptyInterval(logarithms) || IsEmptyInterval(baseLogarithms))
        return Reported(e, KOBWBReal_Nil);
    return Reported(e, NarrowToPieces(e, y, DividePieces(logarithms, baseLogarithms)));
}

Real KOBWBInverseRoot(const Environment& e, const Real& z, const Real& x, int n) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real wide = ResultDomain(z);
    if (n == 0) {
        Real image = KOBWBReal_Nil;
        if (wide.lower <= 0 && wide.upper >= 0) image = {0.0, 1.0};
        if (wide.lower <= 1 && wide.upper >= 1) image = Hull(image, {1.0, 1.0});
        return Reported(e, Narrow(e, x, image));
    }
    const Real powers = ForwardImage(
        e, [n](const Environment& s, const Real& a) { return KOBWBPow(s, a, n); }, wide);
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
    return Reported(e, NarrowLogarithmArgument(e, x, Exponentials(ResultDomain(z))));
}

Real KOBWBInverseLog(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real wide = ResultDomain(z);
    return Reported(e, NarrowLogarithmArgument(e, x, Outward(std::pow(10.0, wide.lower),
                                                             std::pow(10.0, wide.upper))));
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
