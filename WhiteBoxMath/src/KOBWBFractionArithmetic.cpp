#include "KOBWBFractionArithmetic.h"

#include "KOBWBLimits.h"

#include <cstdlib>
#include <numeric>

namespace kobwb {

namespace {

bool Fits(long long n) {
    return n >= -KOBWBMaxInteger && n <= KOBWBMaxInteger;
}

bool Reduced(long long numerator, long long denominator, long long power, KOBWBFraction& result) {
    if (denominator == 0) return false;
    if (denominator < 0) {
        numerator = -numerator;
        denominator = -denominator;
    }
    if (numerator == 0) {
        result = {0, 1, 0, 1};
        return true;
    }
    const long long divisor = std::gcd(std::llabs(numerator), denominator);
    numerator /= divisor;
    denominator /= divisor;
    if (!Fits(numerator) || !Fits(denominator) || !Fits(power)) return false;
    result = {static_cast<int>(numerator), static_cast<int>(denominator), static_cast<int>(power),
              1};
    return true;
}

bool Sum(const KOBWBFraction& a, long long bNumerator, const KOBWBFraction& b,
         KOBWBFraction& result) {
    if (a.powerOfPi == b.powerOfPi) {
        return Reduced(static_cast<long long>(a.numerator) * b.denominator +
                           bNumerator * a.denominator,
                       static_cast<long long>(a.denominator) * b.denominator, a.powerOfPi, result);
    }
    if (a.numerator == 0) return Reduced(bNumerator, b.denominator, b.powerOfPi, result);
    if (bNumerator == 0) return Reduced(a.numerator, a.denominator, a.powerOfPi, result);
    return false;
}

} // namespace

bool CombineFractions(FractionRule rule, const KOBWBFraction& a, const KOBWBFraction& b,
                      KOBWBFraction& result) {
    if (a.denominator == 0 || b.denominator == 0) return false;
    const long long aPower = a.powerOfPi;
    const long long bPower = b.powerOfPi;
    switch (rule) {
    case FractionRule::Sum:
        return Sum(a, b.numerator, b, result);
    case FractionRule::Sub:
        return Sum(a, -static_cast<long long>(b.numerator), b, result);
    case FractionRule::Mul:
        return Reduced(static_cast<long long>(a.numerator) * b.numerator,
                       static_cast<long long>(a.denominator) * b.denominator, aPower + bPower,
                       result);
    case FractionRule::Div:
        if (b.numerator == 0) return false;
        return Reduced(static_cast<long long>(a.numerator) * b.denominator,
                       static_cast<long long>(a.denominator) * b.numerator, aPower - bPower,
                       result);
    default:
        return false;
    }
}

} // namespace kobwb
