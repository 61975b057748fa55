#include "KOBWBTrigonometry.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBBranches.h"
#include "KOBWBDomain.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::piLong;

namespace {

constexpr double pi = 3.141592653589793;

// The hull of the branches that meet the hint: each base image repeated with the period.
KOBWBRealInterval Branches(const KOBWBEnvironment& environment, const KOBWBRealInterval* images,
                           int count, long double period, const KOBWBRealInterval& hint) {
    KOBWBRealInterval kept = KOBWBReal_Nil;
    for (int i = 0; i < count; ++i)
        kept = kobwb::HullOf(kept, kobwb::ShiftsMeetingHint(environment, images[i], period, hint));
    if (!(kept.lower <= kept.upper)) environment.SetError(kobwb::errorEmptyArgument);
    return kept;
}

// pi - the image, in long double.
KOBWBRealInterval Supplement(const KOBWBRealInterval& a) {
    return {static_cast<double>(piLong - a.upper), static_cast<double>(piLong - a.lower)};
}

} // namespace

KOBWBRealInterval KOBWBAsin(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                            const KOBWBRealInterval* hint) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainAsin, 0, r)) return r;
    const KOBWBRealInterval principal = {std::asin(r.lower), std::asin(r.upper)};
    if (!hint) return principal;
    const KOBWBRealInterval images[] = {principal, Supplement(principal)};
    return Branches(environment, images, 2, 2 * piLong, *hint);
}

KOBWBRealInterval KOBWBAcos(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                            const KOBWBRealInterval* hint) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainAcos, 0, r)) return r;
    const KOBWBRealInterval principal = {std::acos(r.upper), std::acos(r.lower)};
    if (!hint) return principal;
    const KOBWBRealInterval images[] = {principal, {-principal.upper, -principal.lower}};
    return Branches(environment, images, 2, 2 * piLong, *hint);
}

KOBWBRealInterval KOBWBAtan(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                            const KOBWBRealInterval* hint) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainAtan, 0, r)) return r;
    const KOBWBRealInterval principal = {std::atan(r.lower), std::atan(r.upper)};
    if (!hint) return principal;
    return Branches(environment, &principal, 1, piLong, *hint);
}

namespace {

// The angles of a box without the origin, as a continuous arc: the angles of the
// corners measured from the direction of the box's centre, which lies inside the arc.
// The caller has excluded boxes whose centre is the origin.
KOBWBRealInterval CornerArc(const KOBWBRealInterval& y, const KOBWBRealInterval& x) {
    const long double centre = std::atan2(static_cast<long double>(y.lower) + y.upper,
                                          static_cast<long double>(x.lower) + x.upper);
    long double least = 0;
    long double most = 0;
    bool first = true;
    for (const double cy : {y.lower, y.upper}) {
        for (const double cx : {x.lower, x.upper}) {
            if (cy == 0 && cx == 0) continue;
            long double angle =
                std::atan2(static_cast<long double>(cy), static_cast<long double>(cx)) - centre;
            if (angle > piLong) angle -= 2 * piLong;
            if (angle < -piLong) angle += 2 * piLong;
            least = first ? angle : std::min(least, angle);
            most = first ? angle : std::max(most, angle);
            first = false;
        }
    }
    return {static_cast<double>(centre + least), static_cast<double>(centre + most)};
}

// The principal angles of the corners other than the origin.
KOBWBRealInterval CornerAngles(const KOBWBRealInterval& y, const KOBWBRealInterval& x) {
    KOBWBRealInterval angles = KOBWBReal_Nil;
    for (const double cy : {y.lower, y.upper}) {
        for (const double cx : {x.lower, x.upper}) {
            if (cy == 0 && cx == 0) continue;
            const double angle = std::atan2(cy, cx);
            angles = kobwb::HullOf(angles, {angle, angle});
        }
    }
    return angles;
}

// A consistent argument in order, with -0 bounds made +0 so that atan2 reads them
// on the upper side of the negative x axis.
KOBWBRealInterval Normalised(const KOBWBRealInterval& a) {
    const KOBWBRealInterval ordered = kobwb::Ordered(a);
    return {ordered.lower + 0.0, ordered.upper + 0.0};
}

} // namespace

KOBWBRealInterval KOBWBAtan2(const KOBWBEnvironment& environment, const KOBWBRealInterval& y,
                             const KOBWBRealInterval& x, const KOBWBRealInterval* hint) {
    if (!kobwb::ConsistentPair(environment, y, x)) return KOBWBReal_Nil;
    const KOBWBRealInterval ys = Normalised(y);
    const KOBWBRealInterval xs = Normalised(x);
    const bool holdsOrigin = ys.lower <= 0 && ys.upper >= 0 && xs.lower <= 0 && xs.upper >= 0;
    if (holdsOrigin && ys.lower == ys.upper && xs.lower == xs.upper) {
        environment.SetError(kobwb::errorEmptyArgument);
        return KOBWBReal_Nil;
    }
    const bool interior = ys.lower < 0 && ys.upper > 0 && xs.lower < 0 && xs.upper > 0;
    // A segment on an axis goes through the origin when the origin lies strictly between
    // its ends; one that ends at the origin has the single angle of its other points.
    const bool throughOrigin = (ys.lower == 0 && ys.upper == 0 && xs.lower < 0 && xs.upper > 0) ||
                               (xs.lower == 0 && xs.upper == 0 && ys.lower < 0 && ys.upper > 0);
    const KOBWBRealInterval circle = {-pi, pi};
    if (interior || throughOrigin)
        return hint ? Branches(environment, &circle, 1, 2 * piLong, *hint) : circle;
    if (hint) {
        const KOBWBRealInterval arc = CornerArc(ys, xs);
        return Branches(environment, &arc, 1, 2 * piLong, *hint);
    }
    const bool crossesNegativeAxis = xs.lower < 0 && ys.lower < 0 && ys.upper >= 0;
    return crossesNegativeAxis ? circle : CornerAngles(ys, xs);
}

namespace {

KOBWBValue ApplyInverse(const KOBWBEnvironment& environment, kobwb::Unary code, const KOBWBValue& x,
                        const KOBWBValue* hint) {
    KOBWBRealInterval storage;
    kobwb::UnaryArguments arguments;
    arguments.hint = kobwb::HintOf(hint, storage);
    return kobwb::ApplyUnary(environment, code, x, arguments);
}

} // namespace

KOBWBValue KOBWBAsin(const KOBWBEnvironment& environment, const KOBWBValue& x,
                     const KOBWBValue* hint) {
    return ApplyInverse(environment, kobwb::Unary::Asin, x, hint);
}

KOBWBValue KOBWBAcos(const KOBWBEnvironment& environment, const KOBWBValue& x,
                     const KOBWBValue* hint) {
    return ApplyInverse(environment, kobwb::Unary::Acos, x, hint);
}

KOBWBValue KOBWBAtan(const KOBWBEnvironment& environment, const KOBWBValue& x,
                     const KOBWBValue* hint) {
    return ApplyInverse(environment, kobwb::Unary::Atan, x, hint);
}

KOBWBValue KOBWBAtan2(const KOBWBEnvironment& environment, const KOBWBValue& y, const KOBWBValue& x,
                      const KOBWBValue* hint) {
    KOBWBRealInterval storage;
    return kobwb::ApplyBinary(environment, kobwb::Binary::Atan2, y, x,
                              kobwb::HintOf(hint, storage));
}
