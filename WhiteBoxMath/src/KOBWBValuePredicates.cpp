#include "KOBWBValue.h"

#include "KOBWBEnvironment.h"
#include "KOBWBLimits.h"

#include <cmath>

bool KOBWBIsEmpty(const KOBWBEnvironment& environment, const KOBWBValue& v) {
    switch (v.GetType()) {
    case KOBWBIntegerValue: return KOBWBIsNilInteger(v.GetAsInteger());
    case KOBWBRealValue: return KOBWBIsNilReal(v.GetAsReal());
    case KOBWBIntegerIntervalValue:
    case KOBWBIntegerEnumValue: return KOBWBIsEmpty(v.GetAsIntegerInterval());
    case KOBWBRealIntervalValue:
    case KOBWBRealEnumValue: return KOBWBIsEmpty(v.GetAsRealInterval(), environment.GetTolerance());
    case KOBWBBooleanValue: return v.GetAsBoolean() == KOBWBContr;
    default: return true;
    }
}

bool KOBWBIsExact(const KOBWBValue& v, double tolerance) {
    switch (v.GetType()) {
    case KOBWBIntegerValue: {
        const int n = v.GetAsInteger();
        return !KOBWBIsNilInteger(n) && !KOBWBIsAnyInteger(n);
    }
    case KOBWBRealValue: {
        const double x = v.GetAsReal();
        return !KOBWBIsNilReal(x) && !KOBWBIsAnyReal(x);
    }
    case KOBWBIntegerIntervalValue:
    case KOBWBIntegerEnumValue: return KOBWBIsExact(v.GetAsIntegerInterval());
    case KOBWBRealIntervalValue:
    case KOBWBRealEnumValue: return KOBWBIsExact(v.GetAsRealInterval(), tolerance);
    case KOBWBBooleanValue: {
        const KOBWBBoolean b = v.GetAsBoolean();
        return b == KOBWBFalse || b == KOBWBTrue;
    }
    default: return true;
    }
}

bool KOBWBIsExact(const KOBWBEnvironment& environment, const KOBWBValue& v) {
    return KOBWBIsExact(v, environment.GetTolerance());
}

bool KOBWBIsConsistent(const KOBWBEnvironment& environment, const KOBWBValue& v) {
    return !KOBWBIsEmpty(environment, v);
}

bool KOBWBIsIndefinite(const KOBWBValue& v) {
    switch (v.GetType()) {
    case KOBWBIntegerValue: return KOBWBIsAnyInteger(v.GetAsInteger());
    case KOBWBRealValue: return KOBWBIsAnyReal(v.GetAsReal());
    case KOBWBIntegerIntervalValue: return KOBWBContains(v.GetAsIntegerInterval(), KOBWBInteger_Any);
    case KOBWBRealIntervalValue:
        return KOBWBContains(v.GetAsRealInterval(), KOBWBReal_Any, KOBWBAbsPrecision);
    case KOBWBIntegerEnumValue: return v.GetIntegerEnum().GetRepresentation() == KOBWBEnumAny;
    case KOBWBRealEnumValue: return v.GetRealEnum().GetRepresentation() == KOBWBEnumAny;
    case KOBWBBooleanValue: return v.GetAsBoolean() == KOBWBUndef;
    default: return true;
    }
}

namespace {

bool SameRealList(const KOBWBRealEnum& a, const KOBWBRealEnum& b, double tolerance) {
    if (a.GetRepresentation() != b.GetRepresentation() || a.GetSize() != b.GetSize()) return false;
    for (int i = 0; i < a.GetSize(); ++i)
        if (!(std::fabs(a.Get(i) - b.Get(i)) < tolerance)) return false;
    return true;
}

bool IsEnumKind(KOBWBValueType type) {
    return type == KOBWBIntegerEnumValue || type == KOBWBRealEnumValue;
}

} // namespace

bool KOBWBIsEqual(const KOBWBEnvironment& environment, const KOBWBValue& a, const KOBWBValue& b) {
    const KOBWBValueType typeA = a.GetType();
    const KOBWBValueType typeB = b.GetType();
    if (typeA == KOBWBUndefinedValue || typeB == KOBWBUndefinedValue) return typeA == typeB;
    if (typeA == KOBWBBooleanValue || typeB == KOBWBBooleanValue)
        return typeA == typeB && a.GetAsBoolean() == b.GetAsBoolean();
    const double tolerance = environment.GetTolerance();
    if (IsEnumKind(typeA) && IsEnumKind(typeB))
        return SameRealList(a.GetAsRealEnum(), b.GetAsRealEnum(), tolerance);
    return KOBWBIsEqual(a.GetAsRealInterval(), b.GetAsRealInterval(), tolerance);
}

bool KOBWBValue::IsEmpty(const KOBWBEnvironment& environment) const {
    return KOBWBIsEmpty(environment, *this);
}

bool KOBWBValue::IsExact(const KOBWBEnvironment& environment) const {
    return KOBWBIsExact(environment, *this);
}

bool KOBWBValue::IsConsistent(const KOBWBEnvironment& environment) const {
    return KOBWBIsConsistent(environment, *this);
}

bool KOBWBValue::IsEqualTo(const KOBWBEnvironment& environment, const KOBWBValue& other) const {
    return KOBWBIsEqual(environment, *this, other);
}

bool KOBWBValue::IsIndefinite() const { return KOBWBIsIndefinite(*this); }
