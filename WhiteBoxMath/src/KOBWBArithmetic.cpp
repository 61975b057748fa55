#include "KOBWBArithmetic.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::Binary;
using kobwb::ClampReal;
using kobwb::ConsistentPair;
using kobwb::Ordered;

KOBWBRealInterval KOBWBDiv(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                           const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    const KOBWBRealInterval x = Ordered(a);
    const KOBWBRealInterval y = Ordered(b);
    if (y.lower <= 0 && y.upper >= 0) return KOBWBReal_Any;
    const double q1 = x.lower / y.lower;
    const double q2 = x.lower / y.upper;
    const double q3 = x.upper / y.lower;
    const double q4 = x.upper / y.upper;
    return ClampReal(std::min(std::min(q1, q2), std::min(q3, q4)),
                     std::max(std::max(q1, q2), std::max(q3, q4)));
}

KOBWBRealInterval KOBWBMod(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                           const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    const KOBWBRealInterval x = Ordered(a);
    const KOBWBRealInterval y = Ordered(b);
    if (y.lower == 0 && y.upper == 0) {
        environment.SetError(kobwb::errorEmptyArgument);
        return KOBWBReal_Nil;
    }
    if (y.lower <= 0 && y.upper >= 0) return ClampReal(y.lower, y.upper);
    const KOBWBRealInterval quotient = KOBWBDiv(environment, x, y);
    const double k = std::floor(quotient.lower);
    if (quotient.lower <= quotient.upper && k == std::floor(quotient.upper))
        return kobwb::SubIntervals(environment, x, kobwb::MulIntervals(environment, {k, k}, y));
    return y.lower > 0 ? ClampReal(0.0, y.upper) : ClampReal(y.lower, 0.0);
}

KOBWBRealInterval KOBWBMin(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                           const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    const KOBWBRealInterval x = Ordered(a);
    const KOBWBRealInterval y = Ordered(b);
    return ClampReal(std::min(x.lower, y.lower), std::min(x.upper, y.upper));
}

KOBWBRealInterval KOBWBMax(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                           const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    const KOBWBRealInterval x = Ordered(a);
    const KOBWBRealInterval y = Ordered(b);
    return ClampReal(std::max(x.lower, y.lower), std::max(x.upper, y.upper));
}

KOBWBRealInterval KOBWBAbs(const KOBWBEnvironment& environment, const KOBWBRealInterval& a) {
    if (!kobwb::IsConsistentArgument(a)) {
        environment.SetError(kobwb::errorEmptyArgument);
        return KOBWBReal_Nil;
    }
    const KOBWBRealInterval x = Ordered(a);
    if (x.lower >= 0) return ClampReal(x.lower, x.upper);
    if (x.upper <= 0) return ClampReal(-x.upper, -x.lower);
    return ClampReal(0.0, std::max(-x.lower, x.upper));
}

KOBWBRealInterval KOBWBDim(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                           const KOBWBRealInterval& b) {
    const KOBWBRealInterval difference = kobwb::SubIntervals(environment, a, b);
    if (!(difference.lower <= difference.upper)) return difference;
    return {std::max(difference.lower, 0.0), std::max(difference.upper, 0.0)};
}

KOBWBRealInterval KOBWBSign(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                            const KOBWBRealInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBReal_Nil;
    const KOBWBRealInterval magnitude = KOBWBAbs(environment, a);
    const KOBWBRealInterval sign = Ordered(b);
    if (sign.lower >= 0) return magnitude;
    if (sign.upper < 0) return {-magnitude.upper, -magnitude.lower};
    return {-magnitude.upper, magnitude.upper};
}

namespace {

// Two real intervals, the commonest operands, take the inline kernel straight away,
// without the dispatch's call through the operation table; anything else goes through
// the dispatch, which gives the same interval and the same error bits for them.
template <class Kernel>
KOBWBValue OnRealIntervals(const KOBWBEnvironment& environment, Binary code, const KOBWBValue& a,
                           const KOBWBValue& b, Kernel kernel) {
    const KOBWBRealInterval* x = a.GetRealIntervalPayload();
    const KOBWBRealInterval* y = b.GetRealIntervalPayload();
    if (x && y) return KOBWBValue(kernel(environment, *x, *y));
    return kobwb::ApplyBinary(environment, code, a, b);
}

} // namespace

KOBWBValue KOBWBSum(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return OnRealIntervals(environment, Binary::Sum, a, b, kobwb::SumIntervals);
}

KOBWBValue KOBWBSub(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return OnRealIntervals(environment, Binary::Sub, a, b, kobwb::SubIntervals);
}

KOBWBValue KOBWBMul(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return OnRealIntervals(environment, Binary::Mul, a, b, kobwb::MulIntervals);
}

KOBWBValue KOBWBDiv(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return kobwb::ApplyBinary(environment, Binary::Div, a, b);
}

KOBWBValue KOBWBMod(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return kobwb::ApplyBinary(environment, Binary::Mod, a, b);
}

KOBWBValue KOBWBMin(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return kobwb::ApplyBinary(environment, Binary::Min, a, b);
}

KOBWBValue KOBWBMax(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return kobwb::ApplyBinary(environment, Binary::Max, a, b);
}

KOBWBValue KOBWBAbs(const KOBWBEnvironment& environment, const KOBWBValue& a) {
    return kobwb::ApplyUnary(environment, kobwb::Unary::Abs, a);
}

KOBWBValue KOBWBDim(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    return kobwb::ApplyBinary(environment, Binary::Dim, a, b);
}

KOBWBValue KOBWBSign(const KOBWBEnvironment& environment, const KOBWBValue& a,
                     const KOBWBValue& b) {
    return kobwb::ApplyBinary(environment, Binary::Sign, a, b);
}
