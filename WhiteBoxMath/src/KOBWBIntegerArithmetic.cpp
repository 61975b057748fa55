#include "KOBWBArithmetic.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBIntegerForms.h"

using kobwb::ConsistentPair;
using kobwb::IntegerResult;

// Integer intervals: the real formulas computed exactly in 64 bits and saturated.

KOBWBIntegerInterval KOBWBSum(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                              const KOBWBIntegerInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBInteger_Nil;
    return IntegerResult(environment, static_cast<long long>(a.lower) + b.lower,
                         static_cast<long long>(a.upper) + b.upper);
}

KOBWBIntegerInterval KOBWBSub(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                              const KOBWBIntegerInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBInteger_Nil;
    return IntegerResult(environment, static_cast<long long>(a.lower) - b.upper,
                         static_cast<long long>(a.upper) - b.lower);
}

KOBWBIntegerInterval KOBWBMul(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                              const KOBWBIntegerInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBInteger_Nil;
    const long long p1 = static_cast<long long>(a.lower) * b.lower;
    const long long p2 = static_cast<long long>(a.lower) * b.upper;
    const long long p3 = static_cast<long long>(a.upper) * b.lower;
    const long long p4 = static_cast<long long>(a.upper) * b.upper;
    return IntegerResult(environment, std::min(std::min(p1, p2), std::min(p3, p4)),
                         std::max(std::max(p1, p2), std::max(p3, p4)));
}

namespace {

long long FloorDivision(long long x, long long y) {
    long long q = x / y;
    if (x % y != 0 && (x < 0) != (y < 0)) --q;
    return q;
}

} // namespace

KOBWBIntegerInterval KOBWBMod(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                              const KOBWBIntegerInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBInteger_Nil;
    if (b.lower == 0 && b.upper == 0) {
        environment.SetError(kobwb::errorEmptyArgument);
        return KOBWBInteger_Nil;
    }
    const long long divisorLower = b.lower;
    const long long divisorUpper = b.upper;
    if (divisorLower <= 0 && divisorUpper >= 0)
        return IntegerResult(environment, std::min(divisorLower + 1, 0LL),
                             std::max(divisorUpper - 1, 0LL));
    const long long q1 = FloorDivision(a.lower, b.lower);
    const long long q2 = FloorDivision(a.lower, b.upper);
    const long long q3 = FloorDivision(a.upper, b.lower);
    const long long q4 = FloorDivision(a.upper, b.upper);
    const long long k = std::min(std::min(q1, q2), std::min(q3, q4));
    if (k == std::max(std::max(q1, q2), std::max(q3, q4))) {
        const long long low = k >= 0 ? a.lower - k * b.upper : a.lower - k * b.lower;
        const long long high = k >= 0 ? a.upper - k * b.lower : a.upper - k * b.upper;
        return IntegerResult(environment, low, high);
    }
    return divisorLower > 0 ? IntegerResult(environment, 0, divisorUpper - 1)
                            : IntegerResult(environment, divisorLower + 1, 0);
}

KOBWBIntegerInterval KOBWBMin(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                              const KOBWBIntegerInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBInteger_Nil;
    return IntegerResult(environment, std::min(a.lower, b.lower), std::min(a.upper, b.upper));
}

KOBWBIntegerInterval KOBWBMax(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                              const KOBWBIntegerInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBInteger_Nil;
    return IntegerResult(environment, std::max(a.lower, b.lower), std::max(a.upper, b.upper));
}

KOBWBIntegerInterval KOBWBAbs(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a) {
    if (!kobwb::IsConsistentArgument(a)) {
        environment.SetError(kobwb::errorEmptyArgument);
        return KOBWBInteger_Nil;
    }
    const long long lower = a.lower;
    const long long upper = a.upper;
    if (lower >= 0) return IntegerResult(environment, lower, upper);
    if (upper <= 0) return IntegerResult(environment, -upper, -lower);
    return IntegerResult(environment, 0, std::max(-lower, upper));
}

namespace kobwb {

KOBWBIntegerInterval IntegerDim(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                                const KOBWBIntegerInterval& b) {
    const KOBWBIntegerInterval difference = KOBWBSub(environment, a, b);
    if (difference.lower > difference.upper) return difference;
    return {std::max(difference.lower, 0), std::max(difference.upper, 0)};
}

KOBWBIntegerInterval IntegerSign(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                                 const KOBWBIntegerInterval& b) {
    if (!ConsistentPair(environment, a, b)) return KOBWBInteger_Nil;
    const KOBWBIntegerInterval magnitude = KOBWBAbs(environment, a);
    if (b.lower >= 0 || magnitude.lower > magnitude.upper) return magnitude;
    if (b.upper < 0) return {-magnitude.upper, -magnitude.lower};
    return {-magnitude.upper, magnitude.upper};
}

} // namespace kobwb
