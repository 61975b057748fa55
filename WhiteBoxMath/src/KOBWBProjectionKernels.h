#ifndef KOBWBProjectionKernels_h
#define KOBWBProjectionKernels_h

#include "KOBWBEnvironment.h"
#include "KOBWBInterval.h"
#include "KOBWBIntervalKernels.h"
#include "KOBWBLimits.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

// The shared core of the projections. A projection computes the set of arguments
// that an operation can map into a result domain, in plain double arithmetic like
// the forward functions, and then intersects the argument with it. Two things keep
// it from removing a point that truly satisfies the relation:
// - the result domain is widened outwards by a few units of rounding before it is
//   inverted, since a result computed in double carries the rounding of its operation;
// - every bound of the inverse image is widened outwards by as much again, for the
//   rounding of the inverse itself.
// The intersection closes a near miss (within the environment's tolerance, scaled like
// the snapping of KOBWBIntersect) to a point rather than reporting no point left.
namespace kobwb {

// Relative widening of one bound: eight units of rounding, and one more step to the
// next double, so that a bound at 0 or among the subnormals moves too.
constexpr double projectionSlack = 8 * DBL_EPSILON;

inline double Down(double v) {
    const double widened = v - projectionSlack * std::fabs(v);
    return std::isfinite(widened) ? NextBelow(widened) : widened;
}
inline double Up(double v) {
    const double widened = v + projectionSlack * std::fabs(v);
    return std::isfinite(widened) ? NextAbove(widened) : widened;
}

// The clamping of real results applied to bounds widened outwards.
inline KOBWBRealInterval Outward(double lower, double upper) {
    if (std::isnan(lower) || std::isnan(upper)) return KOBWBReal_Any;
    return ClampReal(Down(lower), Up(upper));
}
inline KOBWBRealInterval Outward(const KOBWBRealInterval& a) {
    return Outward(a.lower, a.upper);
}

// Plus and minus KOBWBMaxReal are the library's infinity: a forward result clamped there
// stands for every number beyond it, and so does an argument's bound there. Inversions
// read such bounds as true infinities, and their results are clamped back.
inline double Unbounded(double v) {
    if (v >= KOBWBMaxReal) return HUGE_VAL;
    if (v <= -KOBWBMaxReal) return -HUGE_VAL;
    return v;
}

// A result domain as the projections invert it: widened for rounding, unbounded at
// the infinity.
inline KOBWBRealInterval ResultDomain(const KOBWBRealInterval& z) {
    const KOBWBRealInterval wide = Outward(z);
    return {Unbounded(wide.lower), Unbounded(wide.upper)};
}

// An other argument of a projection: ordered, unbounded at the infinity.
inline KOBWBRealInterval Operand(const KOBWBRealInterval& a) {
    const KOBWBRealInterval ordered = Ordered(a);
    return {Unbounded(ordered.lower), Unbounded(ordered.upper)};
}

constexpr KOBWBRealInterval nonNegative = {0.0, HUGE_VAL};

inline bool IsEmptyInterval(const KOBWBRealInterval& a) {
    return !(a.lower <= a.upper);
}

// The plain intersection, empty when the bounds cross at all.
inline KOBWBRealInterval Meet(const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
    const double lower = std::max(a.lower, b.lower);
    const double upper = std::min(a.upper, b.upper);
    if (!(lower <= upper)) return KOBWBReal_Nil;
    return {lower, upper};
}

inline KOBWBRealInterval Hull(const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
    if (IsEmptyInterval(a)) return b;
    if (IsEmptyInterval(b)) return a;
    return {std::min(a.lower, b.lower), std::max(a.upper, b.upper)};
}

// How far a bound may miss and still be taken as touching.
inline double SnapWidth(const KOBWBEnvironment& environment, double bound) {
    const double tenth = std::fabs(bound) / 10;
    return std::min(tenth > 1 ? tenth * environment.GetTolerance() : environment.GetTolerance(),
                    0.05);
}

// x narrowed to the image: never wider than x, a near miss closed to x's nearer bound.
inline KOBWBRealInterval Narrow(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                                const KOBWBRealInterval& image) {
    if (IsEmptyInterval(image)) return KOBWBReal_Nil;
    const KOBWBRealInterval ordered = Ordered(x);
    // Finite points beyond the real infinity are the infinity itself; a true infinity
    // (the inverse image of a value no finite point reaches) is not.
    const double max = KOBWBMaxReal;
    const double lower = std::isinf(image.lower) ? image.lower : std::min(image.lower, max);
    const double upper = std::isinf(image.upper) ? image.upper : std::max(image.upper, -max);
    const KOBWBRealInterval both = Meet(ordered, {lower, upper});
    if (!IsEmptyInterval(both)) return both;
    if (image.upper < ordered.lower &&
        ordered.lower - image.upper <= SnapWidth(environment, ordered.lower))
        return {ordered.lower, ordered.lower};
    if (image.lower > ordered.upper &&
        image.lower - ordered.upper <= SnapWidth(environment, ordered.upper))
        return {ordered.upper, ordered.upper};
    return KOBWBReal_Nil;
}

// A set made of at most two intervals, which inverse images of non-monotone
// operations and of division by an interval holding 0 are.
struct Pieces {
    KOBWBRealInterval piece[2] = {KOBWBReal_Nil, KOBWBReal_Nil};
    int count = 0;

    void Add(const KOBWBRealInterval& a) {
        if (!IsEmptyInterval(a) && count < 2) piece[count++] = a;
    }
};

// The hull of x narrowed to each piece.
inline KOBWBRealInterval NarrowToPieces(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& x, const Pieces& pieces) {
    KOBWBRealInterval result = KOBWBReal_Nil;
    for (int i = 0; i < pieces.count; ++i)
        result = Hull(result, Narrow(environment, x, pieces.piece[i]));
    return result;
}

// a and -a, for the operations even in their argument.
inline Pieces Symmetric(const KOBWBRealInterval& a) {
    Pieces pieces;
    pieces.Add(a);
    pieces.Add({-a.upper, -a.lower});
    return pieces;
}

// Every argument consistent, else bit 1; the answer tells whether to go on.
inline bool ConsistentArguments(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                                const KOBWBRealInterval& b) {
    return ConsistentPair(environment, a, b);
}
inline bool ConsistentArguments(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                                const KOBWBRealInterval& b, const KOBWBRealInterval& c) {
    return ConsistentPair(environment, a, b) && ConsistentPair(environment, b, c);
}

// Bit 1 when no point is left, as the forward functions report an argument wholly
// outside their domain.
inline KOBWBRealInterval Reported(const KOBWBEnvironment& environment,
                                  const KOBWBRealInterval& result) {
    if (IsEmptyInterval(result)) {
        environment.SetError(errorEmptyArgument);
        return KOBWBReal_Nil;
    }
    return result;
}

// The image of an interval under a forward function, its error bits kept out of
// the caller's environment (a projection asks for images outside a domain on
// purpose), widened outwards.
template <class Forward>
KOBWBRealInterval ForwardImage(const KOBWBEnvironment& environment, Forward forward,
                               const KOBWBRealInterval& a) {
    const KOBWBEnvironment scratch = environment;
    const KOBWBRealInterval image = forward(scratch, a);
    if (IsEmptyInterval(image)) return KOBWBReal_Nil;
    return Outward(image);
}

// Bounds widened outwards without clamping; undefined bounds give every real.
KOBWBRealInterval Widened(double lower, double upper);
// The product a b, widened, of operands that may have infinite bounds.
KOBWBRealInterval Product(const KOBWBRealInterval& a, const KOBWBRealInterval& b);
// The quotient n / d as a set, widened: two unbounded pieces when d holds 0 and n does
// not, every real when both do, none when d is 0 alone and n is not.
Pieces DividePieces(const KOBWBRealInterval& n, const KOBWBRealInterval& d);

} // namespace kobwb

#endif
