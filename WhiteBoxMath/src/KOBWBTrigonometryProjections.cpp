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

} // namespace

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
