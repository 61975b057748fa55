#include "KOBWBLogicProjections.h"

#include "KOBWBOutcomes.h"
#include "KOBWBProjectionDispatch.h"
#include "KOBWBProjectionKernels.h"

using namespace kobwb;

namespace {

using Real = KOBWBRealInterval;
using Integer = KOBWBIntegerInterval;
using Environment = KOBWBEnvironment;
using Value = KOBWBValue;

// The relation a comparison node states for each outcome of z: the constraint on x
// given y, or none.
enum class Relation { None, Nothing, Equal, Different, AtMost, Above };

Relation RelationOf(KOBWBBoolean z, Relation whenTrue, Relation whenFalse) {
    switch (z) {
    case KOBWBTrue:
        return whenTrue;
    case KOBWBFalse:
        return whenFalse;
    case KOBWBUndef:
        return Relation::None;
    default:
        return Relation::Nothing;
    }
}

// x narrowed by "x relation y". AtMost is x <= y, Above is x > y (closed on reals).
Real NarrowReal(const Environment& e, Relation relation, const Real& x, const Real& y) {
    if (!ConsistentArguments(e, x, y)) return KOBWBReal_Nil;
    switch (relation) {
    case Relation::Nothing:
        return Reported(e, KOBWBReal_Nil);
    case Relation::Equal:
        return Reported(e, Narrow(e, x, Ordered(y)));
    case Relation::AtMost:
        return Reported(e, Narrow(e, x, {-KOBWBMaxReal, y.upper}));
    case Relation::Above:
        return Reported(e, Narrow(e, x, {y.lower, KOBWBMaxReal}));
    default:
        return Ordered(x);
    }
}

Integer ReportedInteger(const Environment& e, const Integer& result) {
    if (result.lower <= result.upper) return result;
    e.SetError(errorEmptyArgument);
    return KOBWBInteger_Nil;
}

Integer NarrowInteger(const Environment& e, Relation relation, const Integer& x, const Integer& y) {
    if (!ConsistentPair(e, x, y)) return KOBWBInteger_Nil;
    bool overflow = false;
    switch (relation) {
    case Relation::Nothing:
        return ReportedInteger(e, KOBWBInteger_Nil);
    case Relation::Equal:
        return ReportedInteger(e, KOBWBIntersect(x, y));
    case Relation::AtMost:
        return ReportedInteger(e, KOBWBIntersect(x, {-KOBWBMaxInteger, y.upper}));
    case Relation::Above:
        return ReportedInteger(
            e, KOBWBIntersect(x, {SaturatedAdd(y.lower, 1, overflow), KOBWBMaxInteger}));
    case Relation::Different: {
        if (y.lower != y.upper) return x;
        Integer result = x;
        if (result.lower == y.lower) result.lower = SaturatedAdd(result.lower, 1, overflow);
        if (result.upper == y.lower) result.upper = SaturatedAdd(result.upper, -1, overflow);
        return ReportedInteger(e, result);
    }
    default:
        return x;
    }
}

// y of "x <= y" as "y >= x": True gives y >= x.lower, False y < x.upper.
Real NarrowRealSecondOfLessEqual(const Environment& e, KOBWBBoolean z, const Real& x,
                                 const Real& y) {
    const Relation relation = RelationOf(z, Relation::Above, Relation::AtMost);
    if (relation == Relation::Above) {
        if (!ConsistentArguments(e, x, y)) return KOBWBReal_Nil;
        return Reported(e, Narrow(e, y, {x.lower, KOBWBMaxReal}));
    }
    return NarrowReal(e, relation, y, x);
}

Integer NarrowIntegerSecondOfLessEqual(const Environment& e, KOBWBBoolean z, const Integer& x,
                                       const Integer& y) {
    const Relation relation = RelationOf(z, Relation::Above, Relation::AtMost);
    if (relation == Relation::Above) {
        if (!ConsistentPair(e, x, y)) return KOBWBInteger_Nil;
        return ReportedInteger(e, KOBWBIntersect(y, {x.lower, KOBWBMaxInteger}));
    }
    if (relation == Relation::AtMost) {
        if (!ConsistentPair(e, x, y)) return KOBWBInteger_Nil;
        bool overflow = false;
        return ReportedInteger(
            e, KOBWBIntersect(y, {-KOBWBMaxInteger, SaturatedAdd(x.upper, -1, overflow)}));
    }
    return NarrowInteger(e, relation, y, x);
}

bool IsIntegerKind(const Value& v) {
    const KOBWBValueType type = v.GetType();
    return type == KOBWBIntegerValue || type == KOBWBIntegerIntervalValue ||
           type == KOBWBIntegerEnumValue;
}

// The truth of a value: a Boolean as it is, a number true when non-zero.
KOBWBBoolean TruthOf(const Value& v) {
    const KOBWBValueType type = v.GetType();
    if (type == KOBWBBooleanValue || type == KOBWBUndefinedValue) return v.GetAsBoolean();
    const Real domain = v.GetAsRealInterval();
    if (!IsConsistentArgument(domain)) return KOBWBContr;
    if (domain.lower > 0 || domain.upper < 0) return KOBWBTrue;
    if (domain.lower == 0 && domain.upper == 0) return KOBWBFalse;
    return KOBWBUndef;
}

using RealForm = Real (*)(const Environment&, KOBWBBoolean, const Real&, const Real&);
using IntegerForm = Integer (*)(const Environment&, KOBWBBoolean, const Integer&, const Integer&);

// The narrowed value of the first (second false) or the second argument of a
// comparison, through the projection of that argument.
Value ProjectCompared(const Environment& e, RealForm real, IntegerForm integer, const Value& z,
                      const Value& x, const Value& y, bool second) {
    const KOBWBBoolean truth = TruthOf(z);
    const Value& narrowed = second ? y : x;
    const Value& other = second ? x : y;
    if (narrowed.GetType() == KOBWBIntegerIntervalValue && IsIntegerKind(other)) {
        const Integer a = narrowed.GetAsIntegerInterval();
        const Integer b = other.GetAsIntegerInterval();
        return Value(second ? integer(e, truth, b, a) : integer(e, truth, a, b));
    }
    Real b;
    if (!ReadDomain(e, other, b)) return Value(KOBWBReal_Nil);
    return NarrowValueWith(e, narrowed, [&](const Environment& s, const Real& a) {
        return second ? real(s, truth, b, a) : real(s, truth, a, b);
    });
}

// The outcomes of the first argument that give an outcome of z with some outcome of b.
template <class Operation>
KOBWBBoolean KeepOutcomes(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b, Operation op) {
    const unsigned wanted = OutcomesOf(z);
    unsigned kept = 0;
    for (unsigned x = 0; x < 2; ++x) {
        if (!(OutcomesOf(a) & (1u << x))) continue;
        for (unsigned y = 0; y < 2; ++y)
            if ((OutcomesOf(b) & (1u << y)) &&
                (wanted & (op(x != 0, y != 0) ? outcomeTrue : outcomeFalse)))
                kept |= 1u << x;
    }
    return BooleanOf(kept);
}

bool And(bool a, bool b) {
    return a && b;
}
bool Or(bool a, bool b) {
    return a || b;
}
bool Implies(bool a, bool b) {
    return !a || b;
}
bool AndSwapped(bool b, bool a) {
    return a && b;
}
bool OrSwapped(bool b, bool a) {
    return a || b;
}
bool ImpliesSwapped(bool b, bool a) {
    return !a || b;
}

// A boolean narrowed as a value: a Boolean takes the narrowed truth; a number keeps
// its domain unless it must be false (0) or can be nothing.
Value AsNarrowed(const Value& v, KOBWBBoolean truth) {
    const KOBWBValueType type = v.GetType();
    if (type == KOBWBBooleanValue || type == KOBWBUndefinedValue) return Value(truth);
    if (truth == KOBWBContr) return Value(KOBWBReal_Nil);
    if (truth != KOBWBFalse) return v;
    const KOBWBEnvironment scratch;
    return NarrowValueWith(scratch, v, [](const Environment& s, const Real& a) {
        return Narrow(s, a, Real{0.0, 0.0});
    });
}

} // namespace

Real KOBWBInverseEqual1(const Environment& e, KOBWBBoolean z, const Real& x, const Real& y) {
    return NarrowReal(e, RelationOf(z, Relation::Equal, Relation::None), x, y);
}
Real KOBWBInverseEqual2(const Environment& e, KOBWBBoolean z, const Real& x, const Real& y) {
    return KOBWBInverseEqual1(e, z, y, x);
}
Integer KOBWBInverseEqual1(const Environment& e, KOBWBBoolean z, const Integer& x,
                           const Integer& y) {
    return NarrowInteger(e, RelationOf(z, Relation::Equal, Relation::Different), x, y);
}
Integer KOBWBInverseEqual2(const Environment& e, KOBWBBoolean z, const Integer& x,
                           const Integer& y) {
    return KOBWBInverseEqual1(e, z, y, x);
}
Real KOBWBInverseNotEqual1(const Environment& e, KOBWBBoolean z, const Real& x, const Real& y) {
    return NarrowReal(e, RelationOf(z, Relation::None, Relation::Equal), x, y);
}
Real KOBWBInverseNotEqual2(const Environment& e, KOBWBBoolean z, const Real& x, const Real& y) {
    return KOBWBInverseNotEqual1(e, z, y, x);
}
Integer KOBWBInverseNotEqual1(const Environment& e, KOBWBBoolean z, const Integer& x,
                              const Integer& y) {
    return NarrowInteger(e, RelationOf(z, Relation::Different, Relation::Equal), x, y);
}
Integer KOBWBInverseNotEqual2(const Environment& e, KOBWBBoolean z, const Integer& x,
                              const Integer& y) {
    return KOBWBInverseNotEqual1(e, z, y, x);
}
Real KOBWBInverseLessEqual1(const Environment& e, KOBWBBoolean z, const Real& x, const Real& y) {
    return NarrowReal(e, RelationOf(z, Relation::AtMost, Relation::Above), x, y);
}
Real KOBWBInverseLessEqual2(const Environment& e, KOBWBBoolean z, const Real& x, const Real& y) {
    return NarrowRealSecondOfLessEqual(e, z, x, y);
}
Integer KOBWBInverseLessEqual1(const Environment& e, KOBWBBoolean z, const Integer& x,
                               const Integer& y) {
    return NarrowInteger(e, RelationOf(z, Relation::AtMost, Relation::Above), x, y);
}
Integer KOBWBInverseLessEqual2(const Environment& e, KOBWBBoolean z, const Integer& x,
                               const Integer& y) {
    return NarrowIntegerSecondOfLessEqual(e, z, x, y);
}

Value KOBWBInverseEqual1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectCompared(e, KOBWBInverseEqual1, KOBWBInverseEqual1, z, x, y, false);
}
Value KOBWBInverseEqual2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectCompared(e, KOBWBInverseEqual2, KOBWBInverseEqual2, z, x, y, true);
}
Value KOBWBInverseNotEqual1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectCompared(e, KOBWBInverseNotEqual1, KOBWBInverseNotEqual1, z, x, y, false);
}
Value KOBWBInverseNotEqual2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectCompared(e, KOBWBInverseNotEqual2, KOBWBInverseNotEqual2, z, x, y, true);
}
Value KOBWBInverseLessEqual1(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectCompared(e, KOBWBInverseLessEqual1, KOBWBInverseLessEqual1, z, x, y, false);
}
Value KOBWBInverseLessEqual2(const Environment& e, const Value& z, const Value& x, const Value& y) {
    return ProjectCompared(e, KOBWBInverseLessEqual2, KOBWBInverseLessEqual2, z, x, y, true);
}

KOBWBBoolean KOBWBInverseNot(KOBWBBoolean z, KOBWBBoolean a) {
    return BooleanOf(OutcomesOf(a) & OutcomesOf(Negation(z)));
}
KOBWBBoolean KOBWBInverseAnd1(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b) {
    return KeepOutcomes(z, a, b, And);
}
KOBWBBoolean KOBWBInverseAnd2(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b) {
    return KeepOutcomes(z, b, a, AndSwapped);
}
KOBWBBoolean KOBWBInverseOr1(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b) {
    return KeepOutcomes(z, a, b, Or);
}
KOBWBBoolean KOBWBInverseOr2(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b) {
    return KeepOutcomes(z, b, a, OrSwapped);
}
KOBWBBoolean KOBWBInverseImplication1(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b) {
    return KeepOutcomes(z, a, b, Implies);
}
KOBWBBoolean KOBWBInverseImplication2(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b) {
    return KeepOutcomes(z, b, a, ImpliesSwapped);
}

Value KOBWBInverseNot(const Value& z, const Value& a) {
    return AsNarrowed(a, KOBWBInverseNot(TruthOf(z), TruthOf(a)));
}
Value KOBWBInverseAnd1(const Value& z, const Value& a, const Value& b) {
    return AsNarrowed(a, KOBWBInverseAnd1(TruthOf(z), TruthOf(a), TruthOf(b)));
}
Value KOBWBInverseAnd2(const Value& z, const Value& a, const Value& b) {
    return AsNarrowed(b, KOBWBInverseAnd2(TruthOf(z), TruthOf(a), TruthOf(b)));
}
Value KOBWBInverseOr1(const Value& z, const Value& a, const Value& b) {
    return AsNarrowed(a, KOBWBInverseOr1(TruthOf(z), TruthOf(a), TruthOf(b)));
}
Value KOBWBInverseOr2(const Value& z, const Value& a, const Value& b) {
    return AsNarrowed(b, KOBWBInverseOr2(TruthOf(z), TruthOf(a), TruthOf(b)));
}
Value KOBWBInverseImplication1(const Value& z, const Value& a, const Value& b) {
    return AsNarrowed(a, KOBWBInverseImplication1(TruthOf(z), TruthOf(a), TruthOf(b)));
}
Value KOBWBInverseImplication2(const Value& z, const Value& a, const Value& b) {
    return AsNarrowed(b, KOBWBInverseImplication2(TruthOf(z), TruthOf(a), TruthOf(b)));
}
