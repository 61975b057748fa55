#include "KOBWBArithmeticProjections.h"

#include "KOBWBProjectionDispatch.h"
#include "KOBWBProjectionKernels.h"

namespace kobwb {

namespace {

// The bounds of a product or a quotient of intervals with infinite bounds: a corner
// whose operation has no value (infinity times 0, infinity over infinity) stands for
// every value between 0 and the infinity of its sign, as the limits of the corner do.
struct Corners {
    double lower = HUGE_VAL;
    double upper = -HUGE_VAL;

    void Add(double a, double b, double value) {
        if (std::isnan(value)) {
            const double sign = (std::signbit(a) != std::signbit(b)) ? -1.0 : 1.0;
            Add(0.0);
            Add(sign * HUGE_VAL);
            return;
        }
        Add(value);
    }
    void Add(double value) {
        lower = std::min(lower, value);
        upper = std::max(upper, value);
    }
};

} // namespace

KOBWBRealInterval Widened(double lower, double upper) {
    if (std::isnan(lower) || std::isnan(upper)) return {-HUGE_VAL, HUGE_VAL};
    return {Down(lower), Up(upper)};
}

KOBWBRealInterval Product(const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
    Corners corners;
    for (const double u : {a.lower, a.upper})
        for (const double v : {b.lower, b.upper})
            corners.Add(u, v, u * v);
    return Widened(corners.lower, corners.upper);
}

Pieces DividePieces(const KOBWBRealInterval& n, const KOBWBRealInterval& d) {
    Pieces pieces;
    if (d.lower > 0 || d.upper < 0) {
        Corners corners;
        for (const double u : {n.lower, n.upper})
            for (const double v : {d.lower, d.upper})
                corners.Add(u, v, u / v);
        pieces.Add(Widened(corners.lower, corners.upper));
        return pieces;
    }
    if (n.lower <= 0 && n.upper >= 0) {
        pieces.Add({-HUGE_VAL, HUGE_VAL});
        return pieces;
    }
    if (d.lower == 0 && d.upper == 0) return pieces;
    // n lies on one side of 0 and d holds 0: the quotient runs off to infinity on
    // both sides of the divisor's 0.
    if (n.lower > 0) {
        if (d.lower < 0) pieces.Add(Widened(-HUGE_VAL, n.lower / d.lower));
        if (d.upper > 0) pieces.Add(Widened(n.lower / d.upper, HUGE_VAL));
    } else {
        if (d.upper > 0) pieces.Add(Widened(-HUGE_VAL, n.upper / d.upper));
        if (d.lower < 0) pieces.Add(Widened(n.upper / d.lower, HUGE_VAL));
    }
    return pieces;
}

} // namespace kobwb

using namespace kobwb;

namespace {

using Real = KOBWBRealInterval;
using Environment = KOBWBEnvironment;

// x narrowed to a - b, and to a + b.
Real NarrowToDifference(const Environment& e, const Real& x, const Real& a, const Real& b) {
    const Real wide = ResultDomain(a);
    const Real other = Operand(b);
    return Reported(e, Narrow(e, x, Outward(wide.lower - other.upper, wide.upper - other.lower)));
}

Real NarrowToSum(const Environment& e, const Real& x, const Real& a, const Real& b) {
    const Real wide = ResultDomain(a);
    const Real other = Operand(b);
    return Reported(e, Narrow(e, x, Outward(wide.lower + other.lower, wide.upper + other.upper)));
}

Real NarrowToProduct(const Environment& e, const Real& x, const Real& a, const Real& b) {
    return Reported(e, Narrow(e, x, Product(ResultDomain(a), Operand(b))));
}

Real NarrowToQuotient(const Environment& e, const Real& x, const Real& n, const Real& d) {
    return Reported(e, NarrowToPieces(e, x, DividePieces(n, d)));
}

} // namespace

Real KOBWBInverseSum1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToDifference(e, x, z, y);
}
Real KOBWBInverseSum2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToDifference(e, y, z, x);
}
Real KOBWBInverseSub1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToSum(e, x, z, y);
}
Real KOBWBInverseSub2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real wide = ResultDomain(z);
    const Real other = Operand(x);
    return Reported(e, Narrow(e, y, Outward(other.lower - wide.upper, other.upper - wide.lower)));
}
Real KOBWBInverseMul1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToQuotient(e, x, ResultDomain(z), Operand(y));
}
Real KOBWBInverseMul2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    return KOBWBInverseMul1(e, z, y, x);
}
Real KOBWBInverseDiv1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToProduct(e, x, z, y);
}
Real KOBWBInverseDiv2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToQuotient(e, y, Operand(x), ResultDomain(z));
}

Real KOBWBInverseMin1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real wide = ResultDomain(z);
    if (y.lower > wide.upper) return Reported(e, Narrow(e, x, wide));
    return Reported(e, Narrow(e, x, {wide.lower, KOBWBMaxReal}));
}
Real KOBWBInverseMin2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    return KOBWBInverseMin1(e, z, y, x);
}
Real KOBWBInverseMax1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real wide = ResultDomain(z);
    if (y.upper < wide.lower) return Reported(e, Narrow(e, x, wide));
    return Reported(e, Narrow(e, x, {-KOBWBMaxReal, wide.upper}));
}
Real KOBWBInverseMax2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    return KOBWBInverseMax1(e, z, y, x);
}

Real KOBWBInverseAbs(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real magnitude = Meet(ResultDomain(z), nonNegative);
    if (IsEmptyInterval(magnitude)) return Reported(e, KOBWBReal_Nil);
    return Reported(e, NarrowToPieces(e, x, Symmetric(magnitude)));
}

Real KOBWBInverseSign1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real wide = ResultDomain(z);
    Real magnitude = KOBWBReal_Nil;
    if (y.upper >= 0) magnitude = Hull(magnitude, Meet(wide, nonNegative));
    if (y.lower < 0) magnitude = Hull(magnitude, Meet({-wide.upper, -wide.lower}, nonNegative));
    if (IsEmptyInterval(magnitude)) return Reported(e, KOBWBReal_Nil);
    return Reported(e, NarrowToPieces(e, x, Symmetric(magnitude)));
}
Real KOBWBInverseSign2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    if (z.lower > 0) return Reported(e, Narrow(e, y, KOBWBReal_Pos));
    if (z.upper < 0) return Reported(e, Narrow(e, y, {-KOBWBMaxReal, 0.0}));
    return Ordered(y);
}

// The value level: one dispatch, given the interval projection.
using Value = KOBWBValue;

Value KOBWBInverseSum1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectFirst(e, KOBWBInverseSum1, z, x, y);
}
Value KOBWBInverseSum2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectSecond(e, KOBWBInverseSum2, z, x, y);
}
Value KOBWBInverseSub1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectFirst(e, KOBWBInverseSub1, z, x, y);
}
Value KOBWBInverseSub2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectSecond(e, KOBWBInverseSub2, z, x, y);
}
Value KOBWBInverseMul1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectFirst(e, KOBWBInverseMul1, z, x, y);
}
Value KOBWBInverseMul2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectSecond(e, KOBWBInverseMul2, z, x, y);
}
Value KOBWBInverseDiv1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectFirst(e, KOBWBInverseDiv1, z, x, y);
}
Value KOBWBInverseDiv2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectSecond(e, KOBWBInverseDiv2, z, x, y);
}
Value KOBWBInverseMin1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectFirst(e, KOBWBInverseMin1, z, x, y);
}
Value KOBWBInverseMin2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectSecond(e, KOBWBInverseMin2, z, x, y);
}
Value KOBWBInverseMax1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectFirst(e, KOBWBInverseMax1, z, x, y);
}
Value KOBWBInverseMax2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectSecond(e, KOBWBInverseMax2, z, x, y);
}
Value KOBWBInverseSign1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectFirst(e, KOBWBInverseSign1, z, x, y);
}
Value KOBWBInverseSign2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectSecond(e, KOBWBInverseSign2, z, x, y);
}
Value KOBWBInverseAbs(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseAbs, z, x);
}
