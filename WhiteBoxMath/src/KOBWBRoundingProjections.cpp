#include "KOBWBRoundingProjections.h"

#include "KOBWBProjectionDispatch.h"
#include "KOBWBProjectionKernels.h"

using namespace kobwb;

namespace {

using Real = KOBWBRealInterval;
using Environment = KOBWBEnvironment;
using Value = KOBWBValue;

// The integral values inside z, each bound snapped by the absolute precision scaled
// to its magnitude; Nil when there is none.
Real IntegersOf(const Real& z) {
    const Real ordered = Ordered(z);
    const double lower =
        std::ceil(ordered.lower - KOBWBAbsPrecision * std::max(1.0, std::fabs(ordered.lower)));
    const double upper =
        std::floor(ordered.upper + KOBWBAbsPrecision * std::max(1.0, std::fabs(ordered.upper)));
    return lower <= upper ? Real{lower, upper} : KOBWBReal_Nil;
}

// The double just inside an open end.
double Above(double v) {
    return std::nextafter(v, KOBWBMaxReal);
}
double Below(double v) {
    return std::nextafter(v, -KOBWBMaxReal);
}

// x narrowed to the points whose rounding lies in the integers k of z; first and last
// give the points that round to the lowest and the highest k.
template <class First, class Last>
Real NarrowToRounding(const Environment& e, const Real& z, const Real& x, First first, Last last) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real k = IntegersOf(z);
    if (IsEmptyInterval(k)) return Reported(e, KOBWBReal_Nil);
    // Beyond 2^52 every double is an integer and its own rounding.
    constexpr double integral = 4503599627370496.0;
    const double lower = std::fabs(k.lower) < integral ? first(k.lower) : k.lower;
    const double upper = std::fabs(k.upper) < integral ? last(k.upper) : k.upper;
    return Reported(e, Narrow(e, x, ClampReal(lower, upper)));
}

bool IsIntegerKind(const Value& x) {
    const KOBWBValueType type = x.GetType();
    return type == KOBWBIntegerValue || type == KOBWBIntegerIntervalValue ||
           type == KOBWBIntegerEnumValue;
}

// An integer is its own rounding: it is narrowed to the integers of z. Other kinds go
// through the projection.
Value ProjectRounding(const Environment& e, UnaryProjection projection, const Value& z,
                      const Value& x) {
    if (!IsIntegerKind(x)) return ProjectUnary(e, projection, z, x);
    Real domain;
    if (!ReadDomain(e, z, domain)) return Value(KOBWBReal_Nil);
    const Real k = IntegersOf(domain);
    return NarrowValueWith(
        e, x, [&k](const Environment& s, const Real& a) { return Reported(s, Narrow(s, a, k)); });
}

} // namespace

Real KOBWBInverseFloor(const Environment& e, const Real& z, const Real& x) {
    return NarrowToRounding(
        e, z, x, [](double k) { return k; }, [](double k) { return Below(k + 1); });
}
Real KOBWBInverseCeil(const Environment& e, const Real& z, const Real& x) {
    return NarrowToRounding(
        e, z, x, [](double k) { return Above(k - 1); }, [](double k) { return k; });
}
Real KOBWBInverseRound(const Environment& e, const Real& z, const Real& x) {
    return NarrowToRounding(
        e, z, x, [](double k) { return k > 0 ? k - 0.5 : Above(k - 0.5); },
        [](double k) { return k < 0 ? k + 0.5 : Below(k + 0.5); });
}
Real KOBWBInverseTrunc(const Environment& e, const Real& z, const Real& x) {
    return NarrowToRounding(
        e, z, x, [](double k) { return k > 0 ? k : Above(k - 1); },
        [](double k) { return k < 0 ? k : Below(k + 1); });
}

Value KOBWBInverseFloor(const Environment& e, const Value& z, const Value& x) {
    return ProjectRounding(e, KOBWBInverseFloor, z, x);
}
Value KOBWBInverseCeil(const Environment& e, const Value& z, const Value& x) {
    return ProjectRounding(e, KOBWBInverseCeil, z, x);
}
Value KOBWBInverseRound(const Environment& e, const Value& z, const Value& x) {
    return ProjectRounding(e, KOBWBInverseRound, z, x);
}
Value KOBWBInverseTrunc(const Environment& e, const Value& z, const Value& x) {
    return ProjectRounding(e, KOBWBInverseTrunc, z, x);
}
