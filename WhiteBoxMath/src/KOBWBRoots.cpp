#include "KOBWBPowers.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBBranches.h"
#include "KOBWBDomain.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

namespace {

// The n-th root of v >= 0 (n not 0), in long double where 1/n is not exact.
double RootOf(double v, int n) {
    switch (n) {
    case 1:
        return v;
    case -1:
        return 1.0 / v;
    case 2:
        return std::sqrt(v);
    default:
        return static_cast<double>(std::pow(static_cast<long double>(v), 1.0L / n));
    }
}

// The bounds moved outwards by the factor KOBWBOnePlusEps, at least one unit in the
// last place, so that the exact roots lie inside despite the rounding.
KOBWBRealInterval Widened(double lower, double upper) {
    const double factor = KOBWBOnePlusEps;
    return kobwb::ClampOrdered(lower >= 0 ? lower / factor : lower * factor,
                               upper >= 0 ? upper * factor : upper / factor);
}

KOBWBRealInterval Reflected(const KOBWBRealInterval& a) {
    return {-a.upper, -a.lower};
}

// The roots >= 0 of the points >= 0 of an argument restricted to the root's domain;
// KOBWBReal_Nil when there are none.
KOBWBRealInterval PositiveBranch(const KOBWBRealInterval& r, int n) {
    const double lower = std::max(r.lower, n < 0 ? KOBWBMinReal : 0.0);
    if (!(lower <= r.upper)) return KOBWBReal_Nil;
    if (n == 0) return {lower < 1 ? 0.0 : 1.0, r.upper < 1 ? 0.0 : 1.0};
    if (n > 0) return Widened(RootOf(lower, n), RootOf(r.upper, n));
    return Widened(RootOf(r.upper, n), RootOf(lower, n));
}

// The roots <= 0: the opposites of the positive roots for an even n, the roots of
// the points <= 0 for an odd n.
KOBWBRealInterval NegativeBranch(const KOBWBRealInterval& r, int n) {
    if (n % 2 == 0) return Reflected(PositiveBranch(r, n));
    return Reflected(PositiveBranch(Reflected(r), n));
}

KOBWBRealInterval NonEmpty(const KOBWBEnvironment& environment, const KOBWBRealInterval& roots) {
    if (roots.lower <= roots.upper) return roots;
    environment.SetError(kobwb::errorEmptyArgument);
    return KOBWBReal_Nil;
}

} // namespace

KOBWBRealInterval KOBWBRootPositive(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                                    int n) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainRoot, n, r)) return r;
    return NonEmpty(environment, PositiveBranch(r, n));
}

KOBWBRealInterval KOBWBRootNegative(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                                    int n) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainRoot, n, r)) return r;
    return NonEmpty(environment, NegativeBranch(r, n));
}

KOBWBRealInterval KOBWBRoot(const KOBWBEnvironment& environment, const KOBWBRealInterval& x, int n,
                            const KOBWBRealInterval* hint) {
    KOBWBRealInterval r;
    if (!kobwb::RestrictToDomain(environment, x, kobwb::domainRoot, n, r)) return r;
    const KOBWBRealInterval positive = PositiveBranch(r, n);
    const KOBWBRealInterval negative = NegativeBranch(r, n);
    if (!hint)
        return NonEmpty(environment, n % 2 == 0 ? positive : kobwb::HullOf(negative, positive));
    const KOBWBRealInterval kept =
        kobwb::HullOf(kobwb::MeetsHint(environment, positive, *hint) ? positive : KOBWBReal_Nil,
                      kobwb::MeetsHint(environment, negative, *hint) ? negative : KOBWBReal_Nil);
    return NonEmpty(environment, kept);
}

namespace {

KOBWBValue ApplyRoot(const KOBWBEnvironment& environment, kobwb::Unary code, const KOBWBValue& x,
                     int n, const KOBWBValue* hint) {
    KOBWBRealInterval storage;
    kobwb::UnaryArguments arguments;
    arguments.index = n;
    arguments.hint = kobwb::HintOf(hint, storage);
    return kobwb::ApplyUnary(environment, code, x, arguments);
}

} // namespace

KOBWBValue KOBWBRoot(const KOBWBEnvironment& environment, const KOBWBValue& x, int n,
                     const KOBWBValue* hint) {
    return ApplyRoot(environment, kobwb::Unary::Root, x, n, hint);
}

KOBWBValue KOBWBRootPositive(const KOBWBEnvironment& environment, const KOBWBValue& x, int n) {
    return ApplyRoot(environment, kobwb::Unary::RootPositive, x, n, nullptr);
}

KOBWBValue KOBWBRootNegative(const KOBWBEnvironment& environment, const KOBWBValue& x, int n) {
    return ApplyRoot(environment, kobwb::Unary::RootNegative, x, n, nullptr);
}
