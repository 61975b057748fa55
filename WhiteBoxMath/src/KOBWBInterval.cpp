#include "KOBWBInterval.h"

#include "KOBWBIntervalKernels.h"
#include "KOBWBLimits.h"

#include <climits>
#include <cmath>

using kobwb::ClampReal;

KOBWBRealInterval KOBWBCreateRealInterval(double x) { return {x, x}; }

KOBWBRealInterval KOBWBCreateRealInterval(double lower, double upper) {
    return ClampReal(lower, upper);
}

KOBWBRealInterval KOBWBCreateRealInterval(const KOBWBIntegerInterval& interval) {
    return ClampReal(interval.lower, interval.upper);
}

KOBWBIntegerInterval KOBWBCreateIntegerInterval(int n) { return {n, n}; }

KOBWBIntegerInterval KOBWBCreateIntegerInterval(int lower, int upper) { return {lower, upper}; }

namespace {

// Smallest integer not below x - e, by truncation and one corrective step.
double SnapLower(double x, double e) {
    const double t = std::trunc(x);
    if (x >= 0) return x - t > e ? t + 1 : t;
    return t - x > 1 - e ? t - 1 : t;
}

// Largest integer not above x + e, by truncation and one corrective step.
double SnapUpper(double x, double e) {
    const double t = std::trunc(x);
    if (x >= 0) return x - t > 1 - e ? t + 1 : t;
    return t - x > e ? t - 1 : t;
}

} // namespace

KOBWBIntegerInterval KOBWBCreateIntegerInterval(const KOBWBRealInterval& interval) {
    const double max = KOBWBMaxInteger;
    double lower = interval.lower;
    double upper = interval.upper;
    if (lower < -max) lower = -max;
    if (lower > max) lower = max;
    if (upper < -max) upper = -max;
    if (upper > max) upper = max;
    if (!(lower <= upper)) return KOBWBInteger_Nil;
    const double e = KOBWBAbsPrecision;
    const double snappedLower = SnapLower(lower, e);
    const double snappedUpper = SnapUpper(upper, e);
    if (snappedLower > snappedUpper) return KOBWBInteger_Nil;
    return {static_cast<int>(snappedLower), static_cast<int>(snappedUpper)};
}

int KOBWBSaturatedAdd(int a, int b, bool& overflow) { return kobwb::SaturatedAdd(a, b, overflow); }

bool KOBWBIsEmpty(const KOBWBIntegerInterval& a) { return a.lower > a.upper; }

bool KOBWBIsEmpty(const KOBWBRealInterval& a, double tolerance) {
    return a.lower - a.upper > tolerance;
}

bool KOBWBIsConsistent(const KOBWBIntegerInterval& a) { return a.lower <= a.upper; }

bool KOBWBIsConsistent(const KOBWBRealInterval& a, double tolerance) {
    return !(a.lower - a.upper > tolerance);
}

bool KOBWBIsExact(const KOBWBIntegerInterval& a) { return KOBWBWidth(a) == 0; }

bool KOBWBIsExact(const KOBWBRealInterval& a, double tolerance) {
    return std::fabs(a.upper - a.lower) < tolerance;
}

bool KOBWBIsFinite(const KOBWBIntegerInterval& a) {
    return a.lower > -KOBWBMaxInteger || a.upper < KOBWBMaxInteger;
}

bool KOBWBIsFinite(const KOBWBRealInterval& a) {
    return a.lower > -KOBWBMaxReal || a.upper < KOBWBMaxReal;
}

bool KOBWBIsInfinite(const KOBWBIntegerInterval& a) {
    return a.lower <= -KOBWBMaxInteger && a.upper >= KOBWBMaxInteger;
}

bool KOBWBIsInfinite(const KOBWBRealInterval& a) {
    return a.lower <= -KOBWBMaxReal && a.upper >= KOBWBMaxReal;
}

int KOBWBWidth(const KOBWBIntegerInterval& a) {
    bool overflow = false;
    // -lower is safe: bounds are at least -KOBWBSingleInteger_Any.
    return kobwb::SaturatedAdd(a.upper, a.lower == INT_MIN ? KOBWBMaxInteger : -a.lower, overflow);
}

double KOBWBWidth(const KOBWBRealInterval& a) { return a.upper - a.lower; }

double KOBWBMiddle(const KOBWBRealInterval& a) { return (a.upper + a.lower) * 0.5; }

int KOBWBSignum(const KOBWBRealInterval& a) {
    if (a.lower > 0) return 1;
    if (a.upper < 0) return -1;
    return 0;
}

bool KOBWBIsEqual(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b) {
    return a.lower == b.lower && a.upper == b.upper;
}

bool KOBWBIsEqual(const KOBWBRealInterval& a, const KOBWBRealInterval& b, double tolerance) {
    return std::fabs(a.lower - b.lower) < tolerance && std::fabs(a.upper - b.upper) < tolerance;
}

bool KOBWBContains(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b) {
    return a.lower <= b.lower && a.upper >= b.upper;
}

bool KOBWBContains(const KOBWBRealInterval& a, const KOBWBRealInterval& b, double tolerance) {
    return a.lower - b.lower < tolerance && b.upper - a.upper < tolerance;
}

int KOBWBMAG(const KOBWBIntegerInterval& a) {
    const long long lower = a.lower < 0 ? -static_cast<long long>(a.lower) : a.lower;
    const long long upper = a.upper < 0 ? -static_cast<long long>(a.upper) : a.upper;
    const long long mag = lower > upper ? lower : upper;
    return mag > INT_MAX ? INT_MAX : static_cast<int>(mag);
}

double KOBWBMAG(const KOBWBRealInterval& a) {
    const double lower = std::fabs(a.lower);
    const double upper = std::fabs(a.upper);
    return lower > upper ? lower : upper;
}

KOBWBIntegerInterval KOBWBUnite(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b) {
    return {a.lower < b.lower ? a.lower : b.lower, a.upper > b.upper ? a.upper : b.upper};
}

KOBWBRealInterval KOBWBUnite(const KOBWBRealInterval& a, const KOBWBRealInterval& b, double) {
    return ClampReal(a.lower < b.lower ? a.lower : b.lower, a.upper > b.upper ? a.upper : b.upper);
}

KOBWBIntegerInterval KOBWBIntersect(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b) {
    return {a.lower > b.lower ? a.lower : b.lower, a.upper < b.upper ? a.upper : b.upper};
}

namespace {

// The width within which a bound of b counts as lying on the bound x of a.
double SnapWidth(double x, double tolerance) {
    const double y = x / 10;
    const double width = std::fabs(y) > 1 ? std::fabs(y) * tolerance : tolerance;
    return width < 0.05 ? width : 0.05;
}

} // namespace

KOBWBRealInterval KOBWBIntersect(const KOBWBRealInterval& a, const KOBWBRealInterval& b,
                                 double tolerance) {
    const double dLow = SnapWidth(a.lower, tolerance);
    const double dHigh = SnapWidth(a.upper, tolerance);
    double lower = b.lower;
    if (b.lower <= a.lower + dLow)
        lower = a.lower;
    else if (b.lower > a.upper && b.lower <= a.upper + dHigh)
        lower = a.upper;
    double upper = b.upper;
    if (b.upper >= a.upper - dHigh)
        upper = a.upper;
    else if (b.upper < a.lower && b.upper >= a.lower - dLow)
        upper = a.lower;
    return ClampReal(lower, upper);
}
