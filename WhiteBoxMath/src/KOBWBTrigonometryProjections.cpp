#include "KOBWBTrigonometryProjections.h"

#include "KOBWBHyperbolic.h"
#include "KOBWBProjectionDispatch.h"
#include "KOBWBProjectionKernels.h"
#include "KOBWBTrigonometry.h"

using namespace kobwb;

namespace {

using Real = KOBWBRealInterval;
using Environment = KOBWBEnvironment;
using Value = KOBWBValue;

constexpr double pi = 3.141592653589793;
// Beyond this magnitude a period is below the spacing of doubles.
constexpr double periodicLimit = 1e15;

// The branches of one period, each given on the period that starts at origin.
struct Branches {
    Pieces pieces;
    double origin;
    double period;
};

// A branch moved by k periods, widened for the rounding of the shift.
Real Shifted(const Real& branch, double k, double period) {
    return Outward(branch.lower + k * period, branch.upper + k * period);
}

// The smallest point >= bound of the union of the branches over every period.
double FirstPointFrom(const Branches& branches, double bound) {
    const double k0 = std::floor((bound - branches.origin) / branches.period);
    double best = KOBWBMaxReal;
    for (double k = k0 - 1; k <= k0 + 1; ++k)
        for (int i = 0; i < branches.pieces.count; ++i) {
            const Real shifted = Shifted(branches.pieces.piece[i], k, branches.period);
            if (shifted.upper >= bound) best = std::min(best, std::max(shifted.lower, bound));
        }
    return best;
}

// The largest point <= bound of the union.
double LastPointTo(const Branches& branches, double bound) {
    const double k0 = std::floor((bound - branches.origin) / branches.period);
    double best = -KOBWBMaxReal;
    for (double k = k0 - 1; k <= k0 + 1; ++k)
        for (int i = 0; i < branches.pieces.count; ++i) {
            const Real shifted = Shifted(branches.pieces.piece[i], k, branches.period);
            if (shifted.lower <= bound) best = std::max(best, std::min(shifted.upper, bound));
        }
    return best;
}

Real NarrowPeriodic(const Environment& e, const Real& x, const Branches& branches) {
    const Real ordered = Ordered(x);
    const double lower = std::fabs(ordered.lower) < periodicLimit
                             ? FirstPointFrom(branches, ordered.lower)
                             : ordered.lower;
    const double upper = std::fabs(ordered.upper) < periodicLimit
                             ? LastPointTo(branches, ordered.upper)
                             : ordered.upper;
    return Reported(e, Narrow(e, ordered, Real{lower, upper}));
}

// The part of the widened z inside the range [-1, 1] of sine and cosine.
Real InRange(const Real& z) {
    return Meet(ResultDomain(z), KOBWBReal_TrigInv);
}

template <class Forward>
Real NarrowToImage(const Environment& e, const Real& z, const Real& x, Forward forward) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    return Reported(e, Narrow(e, x, ForwardImage(e, forward, ResultDomain(z))));
}

// A box of the plane, ordinate first.
struct Box {
    Real y;
    Real x;
};

// The part of the box whose angles lie in the arc [a, b], an arc inside one quadrant
// (quadrant q from q Pi / 2 to (q + 1) Pi / 2, q in -2..1): inside the quadrant's signs,
// the angle is at least a where cos(a) y - sin(a) x >= 0 and at most b where
// sin(b) x - cos(b) y >= 0; each edge bounds y by the extreme of x and x by that of y.
Box NarrowToArc(const Box& box, double a, double b, int q) {
    const Real ySigns = q >= 0 ? nonNegative : Real{-HUGE_VAL, 0.0};
    const Real xSigns = (q == 0 || q == -1) ? nonNegative : Real{-HUGE_VAL, 0.0};
    Box arc = {Meet(box.y, ySigns), Meet(box.x, xSigns)};
    if (IsEmptyInterval(arc.y) || IsEmptyInterval(arc.x)) return {KOBWBReal_Nil, KOBWBReal_Nil};
    // cos(a) y >= sin(a) x, then cos(b) y <= sin(b) x.
    const double edges[2][2] = {{std::cos(a), std::sin(a)}, {std::cos(b), std::sin(b)}};
    for (int edge = 0; edge < 2; ++edge) {
        const double c = edges[edge][0];
        const double s = edges[edge][1];
        const bool atLeast = edge == 0;
        // c y >= s x (atLeast) or c y <= s x.
        const Real sx = Product(arc.x, {s, s});
        const Real cy = Product(arc.y, {c, c});
        if (c != 0) {
            const double bound = (atLeast ? sx.lower : sx.upper) / c;
            const bool below = atLeast == (c > 0); // y >= bound
            arc.y =
                below ? Meet(arc.y, {Down(bound), HUGE_VAL}) : Meet(arc.y, {-HUGE_VAL, Up(bound)});
        }
        if (s != 0) {
            const double bound = (atLeast ? cy.upper : cy.lower) / s;
            const bool above = atLeast == (s < 0); // x >= bound
            arc.x =
                above ? Meet(arc.x, {Down(bound), HUGE_VAL}) : Meet(arc.x, {-HUGE_VAL, Up(bound)});
        }
        if (IsEmptyInterval(arc.y) || IsEmptyInterval(arc.x)) return {KOBWBReal_Nil, KOBWBReal_Nil};
    }
    return arc;
}

// The part of the box whose angles lie in z, or the box itself when z reaches beyond the
// principal branch.
Box NarrowToSector(const Real& z, const Box& box) {
    const Real w = ResultDomain(z);
    const double slack = Up(pi) - pi;
    if (w.lower < -pi - slack || w.upper > pi + slack) return box;
    Box sector = {KOBWBReal_Nil, KOBWBReal_Nil};
    for (int q = -2; q <= 1; ++q) {
        const double a = std::max(w.lower, q * pi / 2);
        const double b = std::min(w.upper, (q + 1) * pi / 2);
        if (a > b) continue;
        const Box arc = NarrowToArc(box, a, b, q);
        sector.y = Hull(sector.y, arc.y);
        sector.x = Hull(sector.x, arc.x);
    }
    return sector;
}

} // namespace

Real KOBWBInverseAtan21(const Environment& e, const Real& z, const Real& y, const Real& x) {
    if (!ConsistentArguments(e, z, y, x)) return KOBWBReal_Nil;
    return Reported(e, Narrow(e, y, NarrowToSector(z, {Operand(y), Operand(x)}).y));
}

Real KOBWBInverseAtan22(const Environment& e, const Real& z, const Real& y, const Real& x) {
    if (!ConsistentArguments(e, z, y, x)) return KOBWBReal_Nil;
    return Reported(e, Narrow(e, x, NarrowToSector(z, {Operand(y), Operand(x)}).x));
}

Real KOBWBInverseSin(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real w = InRange(z);
    if (IsEmptyInterval(w)) return Reported(e, KOBWBReal_Nil);
    const double a = std::asin(w.lower);
    const double b = std::asin(w.upper);
    Branches branches{{}, -pi / 2, 2 * pi};
    branches.pieces.Add({a, b});
    branches.pieces.Add({pi - b, pi - a});
    return NarrowPeriodic(e, x, branches);
}

Real KOBWBInverseCos(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real w = InRange(z);
    if (IsEmptyInterval(w)) return Reported(e, KOBWBReal_Nil);
    const double a = std::acos(w.upper);
    const double b = std::acos(w.lower);
    Branches branches{{}, -pi, 2 * pi};
    branches.pieces.Add({a, b});
    branches.pieces.Add({-b, -a});
    return NarrowPeriodic(e, x, branches);
}

Real KOBWBInverseTan(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real w = ResultDomain(z);
    Branches branches{{}, -pi / 2, pi};
    branches.pieces.Add({std::atan(w.lower), std::atan(w.upper)});
    return NarrowPeriodic(e, x, branches);
}

Real KOBWBInverseAsin(const Environment& e, const Real& z, const Real& x) {
    return NarrowToImage(e, z, Meet(Ordered(x), KOBWBReal_TrigInv),
                         [](const Environment& s, const Real& a) { return KOBWBSin(s, a); });
}
Real KOBWBInverseAcos(const Environment& e, const Real& z, const Real& x) {
    return NarrowToImage(e, z, Meet(Ordered(x), KOBWBReal_TrigInv),
                         [](const Environment& s, const Real& a) { return KOBWBCos(s, a); });
}
Real KOBWBInverseAtan(const Environment& e, const Real& z, const Real& x) {
    return NarrowToImage(e, z, x,
                         [](const Environment& s, const Real& a) { return KOBWBTan(s, a); });
}

Real KOBWBInverseSinh(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real w = ResultDomain(z);
    return Reported(e, Narrow(e, x, Outward(std::asinh(w.lower), std::asinh(w.upper))));
}
Real KOBWBInverseCosh(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real w = Meet(ResultDomain(z), {1.0, HUGE_VAL});
    if (IsEmptyInterval(w)) return Reported(e, KOBWBReal_Nil);
    return Reported(
        e, NarrowToPieces(e, x, Symmetric(Outward(std::acosh(w.lower), std::acosh(w.upper)))));
}
Real KOBWBInverseTanh(const Environment& e, const Real& z, const Real& x) {
    if (!ConsistentArguments(e, z, x)) return KOBWBReal_Nil;
    const Real w = Meet(ResultDomain(z), {-1.0, 1.0});
    if (IsEmptyInterval(w)) return Reported(e, KOBWBReal_Nil);
    // tanh rounds to +-1 well before infinity, so a z reaching +-1 leaves x unbounded.
    const double lower = w.lower <= -1 ? -KOBWBMaxReal : std::atanh(w.lower);
    const double upper = w.upper >= 1 ? KOBWBMaxReal : std::atanh(w.upper);
    return Reported(e, Narrow(e, x, Outward(lower, upper)));
}
Real KOBWBInverseAsinh(const Environment& e, const Real& z, const Real& x) {
    return NarrowToImage(e, z, x,
                         [](const Environment& s, const Real& a) { return KOBWBSinh(s, a); });
}
Real KOBWBInverseAcosh(const Environment& e, const Real& z, const Real& x) {
    return NarrowToImage(e, Meet(Ordered(z), KOBWBReal_Pos), Meet(Ordered(x), {1.0, KOBWBMaxReal}),
                         [](const Environment& s, const Real& a) { return KOBWBCosh(s, a); });
}
Real KOBWBInverseAtanh(const Environment& e, const Real& z, const Real& x) {
    return NarrowToImage(e, z, x,
                         [](const Environment& s, const Real& a) { return KOBWBTanh(s, a); });
}

Value KOBWBInverseSin(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseSin, z, x);
}
Value KOBWBInverseCos(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseCos, z, x);
}
Value KOBWBInverseTan(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseTan, z, x);
}
Value KOBWBInverseAsin(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseAsin, z, x);
}
Value KOBWBInverseAcos(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseAcos, z, x);
}
Value KOBWBInverseAtan(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseAtan, z, x);
}
Value KOBWBInverseSinh(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseSinh, z, x);
}
Value KOBWBInverseCosh(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseCosh, z, x);
}
Value KOBWBInverseTanh(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseTanh, z, x);
}
Value KOBWBInverseAsinh(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseAsinh, z, x);
}
Value KOBWBInverseAcosh(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseAcosh, z, x);
}
Value KOBWBInverseAtanh(const Environment& e, const Value& z, const Value& x) {
    return ProjectUnary(e, KOBWBInverseAtanh, z, x);
}
Value KOBWBInverseAtan21(const Environment& e, const Value& z, const Value& y, const Value& x) {
    return ProjectFirst(e, KOBWBInverseAtan21, z, y, x);
}
Value KOBWBInverseAtan22(const Environment& e, const Value& z, const Value& y, const Value& x) {
    return ProjectSecond(e, KOBWBInverseAtan22, z, y, x);
}
