#include "KOBWBComparisons.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBOutcomes.h"
#include "KOBWBValueDispatch.h"

#include <cmath>

using kobwb::Comparison;

namespace {

template <class Interval>
bool Inconsistent(const KOBWBEnvironment& environment, const Interval& a, const Interval& b) {
    return !kobwb::ConsistentPair(environment, a, b);
}

} // namespace

KOBWBBoolean KOBWBEqual(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                        const KOBWBRealInterval& b) {
    if (Inconsistent(environment, a, b)) return KOBWBContr;
    const double t = KOBWBAbsPrecision;
    if (a.upper - a.lower < t && b.upper - b.lower < t && std::fabs(a.lower - b.lower) < t &&
        std::fabs(a.upper - b.upper) < t)
        return KOBWBTrue;
    if (a.lower > b.upper + t || b.lower > a.upper + t) return KOBWBFalse;
    return KOBWBUndef;
}

KOBWBBoolean KOBWBEqual(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                        const KOBWBIntegerInterval& b) {
    if (Inconsistent(environment, a, b)) return KOBWBContr;
    if (a.lower == a.upper && b.lower == b.upper && a.lower == b.lower) return KOBWBTrue;
    if (a.lower > b.upper || b.lower > a.upper) return KOBWBFalse;
    return KOBWBUndef;
}

KOBWBBoolean KOBWBLessEqual(const KOBWBEnvironment& environment, const KOBWBRealInterval& x,
                            const KOBWBRealInterval& y) {
    if (Inconsistent(environment, x, y)) return KOBWBContr;
    if (y.lower >= x.upper) return KOBWBTrue;
    if (x.lower > y.upper + KOBWBAbsPrecision) return KOBWBFalse;
    return KOBWBUndef;
}

KOBWBBoolean KOBWBLessEqual(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& x,
                            const KOBWBIntegerInterval& y) {
    if (Inconsistent(environment, x, y)) return KOBWBContr;
    if (y.lower >= x.upper) return KOBWBTrue;
    if (x.lower > y.upper) return KOBWBFalse;
    return KOBWBUndef;
}

KOBWBBoolean KOBWBNotEqual(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                           const KOBWBRealInterval& b) {
    return kobwb::Negation(KOBWBEqual(environment, a, b));
}

KOBWBBoolean KOBWBNotEqual(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& a,
                           const KOBWBIntegerInterval& b) {
    return kobwb::Negation(KOBWBEqual(environment, a, b));
}

KOBWBValue KOBWBEqual(const KOBWBEnvironment& environment, const KOBWBValue& a,
                      const KOBWBValue& b) {
    return kobwb::ApplyComparison(environment, Comparison::Equal, a, b);
}

KOBWBValue KOBWBLessEqual(const KOBWBEnvironment& environment, const KOBWBValue& x,
                          const KOBWBValue& y) {
    return kobwb::ApplyComparison(environment, Comparison::LessEqual, x, y);
}

KOBWBValue KOBWBNotEqual(const KOBWBEnvironment& environment, const KOBWBValue& a,
                         const KOBWBValue& b) {
    return kobwb::ApplyComparison(environment, Comparison::NotEqual, a, b);
}

KOBWBBoolean KOBWBAnd(KOBWBBoolean a, KOBWBBoolean b) {
    return kobwb::CombineOutcomes(a, b, [](bool x, bool y) { return x && y; });
}

KOBWBBoolean KOBWBOr(KOBWBBoolean a, KOBWBBoolean b) {
    return kobwb::CombineOutcomes(a, b, [](bool x, bool y) { return x || y; });
}

KOBWBBoolean KOBWBNot(KOBWBBoolean a) {
    return kobwb::Negation(a);
}

KOBWBBoolean KOBWBImplication(KOBWBBoolean a, KOBWBBoolean b) {
    return kobwb::CombineOutcomes(a, b, [](bool x, bool y) { return !x || y; });
}

namespace {

// A value read as a boolean: booleans as they are, Undefined as "Undef", integer kinds
// by their own reading, real kinds by whether their domain holds 0.
KOBWBBoolean TruthOf(const KOBWBValue& v) {
    switch (v.GetType()) {
    case KOBWBRealValue:
    case KOBWBRealIntervalValue:
    case KOBWBRealEnumValue: {
        const KOBWBRealInterval domain = v.GetAsRealInterval();
        if (!kobwb::IsConsistentArgument(domain)) return KOBWBContr;
        if (domain.lower > 0 || domain.upper < 0) return KOBWBTrue;
        if (domain.lower == 0 && domain.upper == 0) return KOBWBFalse;
        return KOBWBUndef;
    }
    default:
        return v.GetAsBoolean();
    }
}

} // namespace

KOBWBValue KOBWBAnd(const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBValue(KOBWBAnd(TruthOf(a), TruthOf(b)));
}

KOBWBValue KOBWBOr(const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBValue(KOBWBOr(TruthOf(a), TruthOf(b)));
}

KOBWBValue KOBWBNot(const KOBWBValue& a) {
    return KOBWBValue(KOBWBNot(TruthOf(a)));
}

KOBWBValue KOBWBImplication(const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBValue(KOBWBImplication(TruthOf(a), TruthOf(b)));
}
