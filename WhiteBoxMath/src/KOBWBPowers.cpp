#include "KOBWBPowers.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBDomain.h"
#include "KOBWBFractionArithmetic.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::ClampOrdered;

KOBWBRealInterval KOBWBPow(const KOBWBEnvironment& environment, const KOBWBRealInterval& x, int n) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainPower, n, r)) return r;
    if (n == 0) return {1.0, 1.0};
    if (n == 1) return r;
    // A square is one correctly rounded product, the same as pow gives, at a
    // fraction of its cost; squares dominate distance constraints.
    const auto power = [n](double v) { return n == 2 ? v * v : std::pow(v, n); };
    if (n % 2 != 0) {
        if (n > 0) return ClampOrdered(power(r.lower), power(r.upper));
        if (r.lower < 0 && r.upper > 0) return KOBWBReal_Any;
        return ClampOrdered(power(r.upper), power(r.lower));
    }
    const double magnitude = std::max(std::fabs(r.lower), std::fabs(r.upper));
    const double least = r.lower >= 0 ? r.lower : (r.upper <= 0 ? -r.upper : 0.0);
    if (n > 0) return ClampOrdered(power(least), power(magnitude));
    if (least == 0) return kobwb::ClampReal(power(magnitude), KOBWBMaxReal);
    return ClampOrdered(power(magnitude), power(least));
}

namespace {

// base^n saturated: beyond KOBWBMaxInteger it gives KOBWBMaxInteger + 1 with the
// sign of the exact power, which the caller's saturation turns into a bound or an
// empty result.
long long SaturatedPower(long long base, int n) {
    const long long max = KOBWBMaxInteger;
    const bool negative = base < 0 && n % 2 != 0;
    if (base == 0 || base == 1) return base;
    if (base == -1) return negative ? -1 : 1;
    long long result = 1;
    for (int i = 0; i < n; ++i) {
        result *= base;
        if (result > max || result < -max) return negative ? -max - 1 : max + 1;
    }
    return result;
}

} // namespace

KOBWBIntegerInterval KOBWBPow(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& x,
                              int n) {
    if (!kobwb::IsConsistentArgument(x)) {
        environment.SetError(kobwb::errorEmptyArgument);
        return KOBWBInteger_Nil;
    }
    if (n < 0) {
        const KOBWBIntegerInterval integers =
            KOBWBCreateIntegerInterval(KOBWBPow(environment, KOBWBCreateRealInterval(x), n));
        if (integers.lower > integers.upper) environment.SetError(kobwb::errorEmptyArgument);
        return integers;
    }
    if (n == 0) return {1, 1};
    const long long lower = x.lower;
    const long long upper = x.upper;
    if (n % 2 != 0)
        return kobwb::IntegerResult(environment, SaturatedPower(lower, n),
                                    SaturatedPower(upper, n));
    const long long magnitude = std::max(std::llabs(lower), std::llabs(upper));
    const long long least = lower >= 0 ? lower : (upper <= 0 ? -upper : 0);
    return kobwb::IntegerResult(environment, SaturatedPower(least, n),
                                SaturatedPower(magnitude, n));
}

KOBWBRealInterval KOBWBPow(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                           const KOBWBRealInterval& y) {
    KOBWBRealInterval exponent;
    if (!kobwb::CheckArgument(environment, y, exponent)) return exponent;
    KOBWBRealInterval base;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainLog, 0, base)) return base;
    const KOBWBRealInterval logarithms = {std::log(base.lower), std::log(base.upper)};
    KOBWBRealInterval product;
    if (!kobwb::RestrictToDomain(environment,
                                 kobwb::MulIntervals(environment, logarithms, exponent),
                                 kobwb::domainExp, 0, product))
        return product;
    const double p1 = std::pow(base.lower, exponent.lower);
    const double p2 = std::pow(base.lower, exponent.upper);
    const double p3 = std::pow(base.upper, exponent.lower);
    const double p4 = std::pow(base.upper, exponent.upper);
    return ClampOrdered(std::min(std::min(p1, p2), std::min(p3, p4)),
                        std::max(std::max(p1, p2), std::max(p3, p4)));
}

KOBWBRealInterval KOBWBSqrt(const KOBWBEnvironment& environment, const KOBWBRealInterval& x) {
    return kobwb::IncreasingImage(environment, x, kobwb::domainSqrt,
                                  [](double v) { return std::sqrt(v); });
}

namespace {

// x^n of an exact fraction by squaring, exact as the products of fractions are (Pi^2 as
// Pi*Pi is); false when a number outgrows the fractions' range or x is 0 and n < 0.
bool ExactPower(const KOBWBFraction& x, int n, KOBWBFraction& result) {
    using kobwb::CombineFractions;
    using kobwb::FractionRule;
    KOBWBFraction power = {1, 1, 0, 1};
    KOBWBFraction square = x;
    for (long long m = n < 0 ? -static_cast<long long>(n) : n; m > 0; m /= 2) {
        if (m % 2 == 1 && !CombineFractions(FractionRule::Mul, power, square, power)) return false;
        if (m > 1 && !CombineFractions(FractionRule::Mul, square, square, square)) return false;
    }
    if (n >= 0) {
        result = power;
        return true;
    }
    return CombineFractions(FractionRule::Div, KOBWBFraction{1, 1, 0, 1}, power, result);
}

} // namespace

KOBWBValue KOBWBPow(const KOBWBEnvironment& environment, const KOBWBValue& x, int n) {
    KOBWBFraction exact = {0, 1, 0, 1};
    if (x.IsAFraction() && ExactPower(x.GetAsFraction(), n, exact)) return KOBWBValue(exact);
    kobwb::UnaryArguments arguments;
    arguments.index = n;
    return kobwb::ApplyUnary(environment, n >= 0 ? kobwb::Unary::Power : kobwb::Unary::RealPower, x,
                             arguments);
}

KOBWBValue KOBWBPow(const KOBWBEnvironment& environment, const KOBWBValue& x, const KOBWBValue& y) {
    const kobwb::RealOperand exponent = kobwb::ReadRealOperand(y);
    if (exponent.integral) return KOBWBPow(environment, x, exponent.exponent);
    return kobwb::ApplyBinary(environment, kobwb::Binary::Pow, x, y);
}

KOBWBValue KOBWBSqrt(const KOBWBEnvironment& environment, const KOBWBValue& x) {
    return kobwb::ApplyUnary(environment, kobwb::Unary::Sqrt, x);
}
