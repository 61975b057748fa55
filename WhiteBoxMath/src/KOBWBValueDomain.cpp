#include "KOBWBValue.h"

#include "KOBWBEnvironment.h"
#include "KOBWBLimits.h"
#include "KOBWBValueReading.h"

#include <climits>

// Intersect, Unite, Exclude and Assign: set operations that keep the kind of the
// value they act on.

namespace {

// A boolean as the set of its possible outcomes: bit 0 false, bit 1 true.
unsigned Outcomes(KOBWBBoolean b) {
    switch (b) {
    case KOBWBFalse: return 1;
    case KOBWBTrue: return 2;
    case KOBWBUndef: return 3;
    default: return 0;
    }
}

KOBWBBoolean FromOutcomes(unsigned outcomes) {
    static const KOBWBBoolean booleans[] = {KOBWBContr, KOBWBFalse, KOBWBTrue, KOBWBUndef};
    return booleans[outcomes & 3];
}

// The part of a that b does not cover at either end; all of a stays when b lies
// strictly inside it.
KOBWBIntegerInterval TrimIntegerEnds(KOBWBIntegerInterval a, const KOBWBIntegerInterval& b) {
    if (KOBWBIsEmpty(b)) return a;
    if (b.lower <= a.lower && a.lower <= b.upper) a.lower = b.upper == INT_MAX ? b.upper : b.upper + 1;
    if (b.lower <= a.upper && a.upper <= b.upper) a.upper = b.lower == INT_MIN ? b.lower : b.lower - 1;
    return a.lower > a.upper ? KOBWBInteger_Nil : a;
}

KOBWBRealInterval TrimRealEnds(KOBWBRealInterval a, const KOBWBRealInterval& b, double tolerance) {
    if (KOBWBIsEmpty(b, tolerance)) return a;
    if (KOBWBContains(b, a, tolerance)) return KOBWBReal_Nil;
    if (b.lower - tolerance <= a.lower && a.lower <= b.upper) a.lower = b.upper;
    if (b.lower <= a.upper && a.upper <= b.upper + tolerance) a.upper = b.lower;
    return a;
}

void KeepIntegers(KOBWBIntegerEnum& domain, const KOBWBValue& other, bool inside) {
    const bool otherIsList = other.GetType() == KOBWBIntegerEnumValue &&
                             other.GetIntegerEnum().GetRepresentation() == KOBWBEnumList;
    const KOBWBIntegerInterval hull = other.GetAsIntegerInterval();
    for (int i = domain.GetSize() - 1; i >= 0; --i) {
        const int element = domain.Get(i);
        int position = 0;
        const bool inOther = otherIsList ? other.GetIntegerEnum().Find(element, position)
                                         : KOBWBContains(hull, KOBWBCreateIntegerInterval(element));
        if (inOther != inside) domain.RemovePosition(i, 1);
    }
}

void KeepReals(KOBWBRealEnum& domain, const KOBWBValue& other, bool inside, double tolerance) {
    const bool otherIsList = other.GetType() == KOBWBRealEnumValue &&
                             other.GetRealEnum().GetRepresentation() == KOBWBEnumList;
    const KOBWBRealEnum otherDomain = otherIsList ? other.GetRealEnum() : KOBWBRealEnum();
    const KOBWBRealInterval hull = other.GetAsRealInterval();
    for (int i = domain.GetSize() - 1; i >= 0; --i) {
        const double element = domain.Get(i);
        int position = 0;
        const bool inOther = otherIsList
                                 ? otherDomain.Find(element, position, tolerance)
                                 : KOBWBContains(hull, KOBWBCreateRealInterval(element), tolerance);
        if (inOther != inside) domain.RemovePosition(i, 1);
    }
}

} // namespace

bool KOBWBValue::Intersect(const KOBWBEnvironment& environment, const KOBWBValue& other) {
    const double tolerance = environment.GetTolerance();
    if (m_type == KOBWBUndefinedValue) {
        *this = other;
        return !IsEmpty(environment);
    }
    if (other.GetType() == KOBWBUndefinedValue) return !IsEmpty(environment);
    switch (m_type) {
    case KOBWBBooleanValue:
        if (other.IsConvertible(KOBWBBooleanValue))
            m_payload.boolean = FromOutcomes(Outcomes(m_payload.boolean) & Outcomes(other.GetAsBoolean()));
        break;
    case KOBWBIntegerValue:
        m_payload.integer.lower = m_payload.integer.upper = kobwb::SingleInteger(
            KOBWBIntersect(GetAsIntegerInterval(), other.GetAsIntegerInterval()));
        break;
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval both = KOBWBIntersect(m_payload.integer, other.GetAsIntegerInterval());
        m_payload.integer = KOBWBIsEmpty(both) ? KOBWBInteger_Nil : both;
        break;
    }
    case KOBWBRealValue: {
        const double x = kobwb::SingleReal(
            KOBWBIntersect(GetAsRealInterval(), other.GetAsRealInterval(), tolerance));
        m_payload.real = {x, x};
        break;
    }
    case KOBWBRealIntervalValue:
        m_payload.real = KOBWBIntersect(m_payload.real, other.GetAsRealInterval(), tolerance);
        break;
    case KOBWBIntegerEnumValue:
        if (m_integerEnum.GetRepresentation() == KOBWBEnumList) {
            KeepIntegers(m_integerEnum, other, true);
        } else if (m_integerEnum.GetRepresentation() != KOBWBEnumNil) {
            m_integerEnum = other.GetAsIntegerEnum();
            if (other.GetType() != KOBWBIntegerEnumValue) {
                const KOBWBIntegerInterval both =
                    KOBWBIntersect(GetAsIntegerInterval(), m_integerEnum.GetAsIntegerInterval());
                m_integerEnum.SetAsIntegerInterval(both);
            }
        }
        m_integerEnum.Correct(environment);
        break;
    case KOBWBRealEnumValue:
        if (m_realEnum.GetRepresentation() == KOBWBEnumList) {
            KeepReals(m_realEnum, other, true, tolerance);
        } else if (m_realEnum.GetRepresentation() != KOBWBEnumNil) {
            const KOBWBRealInterval own = m_realEnum.GetAsRealInterval();
            m_realEnum = other.GetAsRealEnum();
            if (m_realEnum.GetRepresentation() == KOBWBEnumList)
                KeepReals(m_realEnum, KOBWBValue(own), true, tolerance);
            else
                m_realEnum.SetAsRealInterval(KOBWBIntersect(own, m_realEnum.GetAsRealInterval(), tolerance));
        }
        m_realEnum.Correct(environment);
        break;
    case KOBWBFractionValue:
        if (KOBWBIsEmpty(KOBWBIntersect(GetAsRealInterval(), other.GetAsRealInterval(), tolerance),
                         tolerance))
            *this = KOBWBValue(KOBWBSingleInteger_Nil);
        break;
    default: break;
    }
    return !IsEmpty(environment);
}

void KOBWBValue::Unite(const KOBWBEnvironment& environment, const KOBWBValue& other) {
    const double tolerance = environment.GetTolerance();
    if (m_type == KOBWBUndefinedValue) {
        *this = other;
        return;
    }
    if (other.GetType() == KOBWBUndefinedValue) return;
    switch (m_type) {
    case KOBWBBooleanValue:
        if (other.IsConvertible(KOBWBBooleanValue))
            m_payload.boolean = FromOutcomes(Outcomes(m_payload.boolean) | Outcomes(other.GetAsBoolean()));
        break;
    case KOBWBIntegerValue:
        m_payload.integer.lower = m_payload.integer.upper =
            kobwb::SingleInteger(KOBWBUnite(GetAsIntegerInterval(), other.GetAsIntegerInterval()));
        break;
    case KOBWBIntegerIntervalValue:
        m_payload.integer = KOBWBUnite(m_payload.integer, other.GetAsIntegerInterval());
        break;
    case KOBWBRealValue: {
        const double x = kobwb::SingleReal(
            KOBWBUnite(GetAsRealInterval(), other.GetAsRealInterval(), tolerance));
        m_payload.real = {x, x};
        break;
    }
    case KOBWBRealIntervalValue:
        m_payload.real = KOBWBUnite(m_payload.real, other.GetAsRealInterval(), tolerance);
        break;
    case KOBWBIntegerEnumValue: {
        KOBWBIntegerEnum added = other.GetAsIntegerEnum();
        added.Correct(environment);
        if (added.GetRepresentation() == KOBWBEnumList)
            for (int i = 0; i < added.GetSize(); ++i) m_integerEnum.Insert(added.Get(i));
        else if (added.GetRepresentation() == KOBWBEnumAny)
            m_integerEnum.SetAny();
        else if (added.GetRepresentation() == KOBWBEnumInterval)
            m_integerEnum.SetAsIntegerInterval(
                KOBWBUnite(m_integerEnum.GetAsIntegerInterval(), added.GetAsIntegerInterval()));
        m_integerEnum.Correct(environment);
        break;
    }
    case KOBWBRealEnumValue: {
        KOBWBRealEnum added = other.GetAsRealEnum();
        added.Correct(environment);
        if (added.GetRepresentation() == KOBWBEnumList)
            for (int i = 0; i < added.GetSize(); ++i) m_realEnum.Insert(added.Get(i), tolerance);
        else if (added.GetRepresentation() == KOBWBEnumAny)
            m_realEnum.SetAny();
        else if (added.GetRepresentation() == KOBWBEnumInterval)
            m_realEnum.SetAsRealInterval(KOBWBUnite(m_realEnum.GetAsRealInterval(),
                                                    added.GetAsRealInterval(), tolerance));
        m_realEnum.Correct(environment);
        break;
    }
    case KOBWBFractionValue:
        if (!IsEqualTo(environment, other))
            *this = KOBWBValue(kobwb::SingleReal(
                KOBWBUnite(GetAsRealInterval(), other.GetAsRealInterval(), tolerance)));
        break;
    default: break;
    }
}

bool KOBWBValue::Exclude(const KOBWBEnvironment& environment, const KOBWBValue& other) {
    const double tolerance = environment.GetTolerance();
    if (m_type == KOBWBUndefinedValue || other.GetType() == KOBWBUndefinedValue)
        return !IsEmpty(environment);
    switch (m_type) {
    case KOBWBBooleanValue:
        if (other.IsConvertible(KOBWBBooleanValue))
            m_payload.boolean = FromOutcomes(Outcomes(m_payload.boolean) & ~Outcomes(other.GetAsBoolean()));
        break;
    case KOBWBIntegerValue:
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval left = TrimIntegerEnds(GetAsIntegerInterval(), other.GetAsIntegerInterval());
        if (m_type == KOBWBIntegerIntervalValue)
            m_payload.integer = left;
        else if (KOBWBIsEmpty(left))
            m_payload.integer = {KOBWBSingleInteger_Nil, KOBWBSingleInteger_Nil};
        break;
    }
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval left = TrimRealEnds(GetAsRealInterval(), other.GetAsRealInterval(), tolerance);
        if (m_type == KOBWBRealIntervalValue)
            m_payload.real = left;
        else if (KOBWBIsEmpty(left, tolerance))
            m_payload.real = {KOBWBSingleReal_Nil, KOBWBSingleReal_Nil};
        break;
    }
    case KOBWBIntegerEnumValue:
        if (m_integerEnum.GetRepresentation() == KOBWBEnumList)
            KeepIntegers(m_integerEnum, other, false);
        else if (m_integerEnum.GetRepresentation() == KOBWBEnumInterval)
            m_integerEnum.SetAsIntegerInterval(
                TrimIntegerEnds(m_integerEnum.GetAsIntegerInterval(), other.GetAsIntegerInterval()));
        m_integerEnum.Correct(environment);
        break;
    case KOBWBRealEnumValue:
        if (m_realEnum.GetRepresentation() == KOBWBEnumList)
            KeepReals(m_realEnum, other, false, tolerance);
        else if (m_realEnum.GetRepresentation() == KOBWBEnumInterval)
            m_realEnum.SetAsRealInterval(
                TrimRealEnds(m_realEnum.GetAsRealInterval(), other.GetAsRealInterval(), tolerance));
        m_realEnum.Correct(environment);
        break;
    case KOBWBFractionValue:
        if (KOBWBContains(other.GetAsRealInterval(), GetAsRealInterval(), tolerance))
            *this = KOBWBValue(KOBWBSingleInteger_Nil);
        break;
    default: break;
    }
    return !IsEmpty(environment);
}

void KOBWBValue::Assign(const KOBWBEnvironment& environment, const KOBWBValue& other) {
    switch (m_type) {
    case KOBWBIntegerValue: {
        const int n = other.GetAsInteger();
        m_payload.integer = {n, n};
        m_fraction = {n, 1, 0, 1};
        break;
    }
    case KOBWBRealValue: {
        const double x = other.GetAsReal();
        m_payload.real = {x, x};
        break;
    }
    case KOBWBIntegerIntervalValue: m_payload.integer = other.GetAsIntegerInterval(); break;
    case KOBWBRealIntervalValue: m_payload.real = other.GetAsRealInterval(); break;
    case KOBWBIntegerEnumValue:
        m_integerEnum = other.GetAsIntegerEnum();
        m_integerEnum.Correct(environment);
        break;
    case KOBWBRealEnumValue:
        m_realEnum = other.GetAsRealEnum();
        m_realEnum.Correct(environment);
        break;
    case KOBWBBooleanValue:
        m_payload.boolean = other.IsConvertible(KOBWBBooleanValue) ? other.GetAsBoolean() : KOBWBUndef;
        break;
    default: *this = other; break;
    }
}
