#include "KOBWBArithmeticProjections.h"

#include "KOBWBProjectionDispatch.h"
#include "KOBWBProjectionKernels.h"

namespace kobwb {

Pieces DividePieces(const KOBWBRealInterval& n, const KOBWBRealInterval& d) {
    Pieces pieces;
    const double max = KOBWBMaxReal;
    if (d.lower > 0 || d.upper < 0) {
        const double q[] = {n.lower / d.lower, n.lower / d.upper, n.upper / d.lower, n.upper / d.upper};
        pieces.Add(Outward(std::min(std::min(q[0], q[1]), std::min(q[2], q[3])),
                           std::max(std::max(q[0], q[1]), std::max(q[2], q[3]))));
        return pieces;
    }
    if (n.lower <= 0 && n.upper >= 0) {
        pieces.Add(KOBWBReal_Any);
        return pieces;
    }
    if (d.lower == 0 && d.upper == 0) return pieces;
    // n lies on one side of 0 and d holds 0: the quotient runs off to infinity on
    // both sides of the divisor's 0.
    if (n.lower > 0) {
        if (d.lower < 0) pieces.Add(Outward(-max, n.lower / d.lower));
        if (d.upper > 0) pieces.Add(Outward(n.lower / d.upper, max));
    } else {
        if (d.upper > 0) pieces.Add(Outward(-max, n.upper / d.upper));
        if (d.lower < 0) pieces.Add(Outward(n.upper / d.lower, max));
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
    const Real wide = Outward(a);
    return Reported(e, Narrow(e, x, Outward(wide.lower - b.upper, wide.upper - b.lower)));
}

Real NarrowToSum(const Environment& e, const Real& x, const Real& a, const Real& b) {
    const Real wide = Outward(a);
    return Reported(e, Narrow(e, x, Outward(wide.lower + b.lower, wide.upper + b.upper)));
}

Real NarrowToProduct(const Environment& e, const Real& x, const Real& a, const Real& b) {
    const Real wide = Outward(a);
    const double p[] = {wide.lower * b.lower, wide.lower * b.upper, wide.upper * b.lower, wide.upper * b.upper};
    return Reported(e, Narrow(e, x,
                              Outward(std::min(std::min(p[0], p[1]), std::min(p[2], p[3])),
                                      std::max(std::max(p[0], p[1]), std::max(p[2], p[3])))));
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
    const Real wide = Outward(z);
    return Reported(e, Narrow(e, y, Outward(x.lower - wide.upper, x.upper - wide.lower)));
}
Real KOBWBInverseMul1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToQuotient(e, x, Outward(z), Ordered(y));
}
Real KOBWBInverseMul2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    return KOBWBInverseMul1(e, z, y, x);
}
Real KOBWBInverseDiv1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToProduct(e, x, z, Ordered(y));
}
Real KOBWBInverseDiv2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    return NarrowToQuotient(e, y, Ordered(x), Outward(z));
}

Real KOBWBInverseMin1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real wide = Outward(z);
    if (y.lower > wide.upper) return Reported(e, Narrow(e, x, wide));
    return Reported(e, Narrow(e, x, {wide.lower, KOBWBMaxReal}));
}
Real KOBWBInverseMin2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    return KOBWBInverseMin1(e, z, y, x);
}
Real KOBWBInverseMax1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real wide = Outward(z);
    if (y.upper < wide.lower) return Reported(e, Narrow(e, x, wide));
    return Reported(e, Narrow(e, x, {-KOBWBMaxReal, wide.upper}));
}
Real KOBWBInverseMax2(const Environment& e, const Real& z, const Real& x, const Real& y) {
    return KOBWBInverseMax1(e, z, y, x);
}

Real KOBWBInverseAbs(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real magnitude = Meet(Outward(z), KOBWBReal_Pos);
    if (IsEmptyInterval(magnitude)) return Reported(e, KOBWBReal_Nil);
    return Reported(e, NarrowToPieces(e, x, Symmetric(magnitude)));
}

Real KOBWBInverseSign1(const Environment& e, const Real& z, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, z, x, y)) return KOBWBReal_Nil;
    const Real wide = Outward(z);
    Real magnitude = KOBWBReal_Nil;
    if (y.upper >= 0) magnitude = Hull(magnitude, Meet(wide, KOBWBReal_Pos));
    if (y.lower < 0) magnitude = Hull(magnitude, Meet({-wide.upper, -wide.lower}, KOBWBReal_Pos));
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
