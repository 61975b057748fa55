#include "KOBWBValue.h"

#include "KOBLVRAssert.h"
#include "KOBWBLimits.h"
#include "KOBWBValueReading.h"

#include <cstdlib>
#include <new>

using kobwb::SingleInteger;
using kobwb::SingleReal;

KOBWBValue::KOBWBValue(int n) : m_type(KOBWBIntegerValue), m_fraction{n, 1, 0, 1} {
    m_payload.integer = {n, n};
}

KOBWBValue::KOBWBValue(double x) : m_type(KOBWBRealValue) { m_payload.real = {x, x}; }

KOBWBValue::KOBWBValue(KOBWBBoolean b) : m_type(KOBWBBooleanValue) {
    m_payload.real = {0.0, 0.0};
    m_payload.boolean = b;
}

KOBWBValue::KOBWBValue(const KOBWBIntegerInterval& interval) : m_type(KOBWBIntegerIntervalValue) {
    m_payload.integer = interval;
}

KOBWBValue::KOBWBValue(const KOBWBIntegerEnum& domain)
    : m_type(KOBWBIntegerEnumValue), m_integerEnum(domain) {
    m_payload.real = {0.0, 0.0};
}

KOBWBValue::KOBWBValue(const KOBWBRealEnum& domain)
    : m_type(KOBWBRealEnumValue), m_realEnum(domain) {
    m_payload.real = {0.0, 0.0};
}

KOBWBValue::KOBWBValue(const KOBWBFraction& fraction)
    : m_type(KOBWBFractionValue), m_fraction(fraction) {
    m_payload.real = {0.0, 0.0};
    SimplifyFraction(false);
}

KOBWBValue::KOBWBValue(KOBWBValueType type) : m_type(type) {
    m_payload.real = {0.0, 0.0};
    switch (type) {
    case KOBWBIntegerValue:
    case KOBWBIntegerIntervalValue: m_payload.integer = {0, 0}; break;
    case KOBWBBooleanValue: m_payload.boolean = KOBWBFalse; break;
    case KOBWBFractionValue:
        m_type = KOBWBIntegerValue;
        m_payload.integer = {0, 0};
        break;
    default: break;
    }
}

KOBWBValue* KOBWBValue::Clone() const { return new (std::nothrow) KOBWBValue(*this); }

void KOBWBValue::Set(int n) {
    switch (m_type) {
    case KOBWBUndefinedValue:
    case KOBWBFractionValue: *this = KOBWBValue(n); break;
    case KOBWBIntegerValue:
    case KOBWBIntegerIntervalValue: m_payload.integer = {n, n}; break;
    case KOBWBIntegerEnumValue:
        m_integerEnum.SetSize(1);
        if (m_integerEnum.GetSize() == 1) m_integerEnum.Set(0, n);
        break;
    case KOBWBBooleanValue: m_payload.boolean = n != 0 ? KOBWBTrue : KOBWBFalse; break;
    default: break;
    }
}

void KOBWBValue::Set(double x) {
    switch (m_type) {
    case KOBWBUndefinedValue:
    case KOBWBFractionValue: *this = KOBWBValue(x); break;
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: m_payload.real = {x, x}; break;
    case KOBWBRealEnumValue:
        m_realEnum.SetSize(1);
        if (m_realEnum.GetSize() == 1) m_realEnum.Set(0, x);
        break;
    default: break;
    }
}

void KOBWBValue::Set(KOBWBBoolean b) {
    if (m_type == KOBWBUndefinedValue || m_type == KOBWBBooleanValue) {
        m_type = KOBWBBooleanValue;
        m_payload.boolean = b;
    }
}

void KOBWBValue::Set(const KOBWBIntegerInterval& interval) {
    if (m_type == KOBWBUndefinedValue || m_type == KOBWBIntegerIntervalValue ||
        m_type == KOBWBFractionValue) {
        m_type = KOBWBIntegerIntervalValue;
        m_payload.integer = interval;
    }
}

void KOBWBValue::Set(const KOBWBIntegerEnum& domain) {
    if (m_type == KOBWBUndefinedValue || m_type == KOBWBIntegerEnumValue ||
        m_type == KOBWBFractionValue) {
        m_type = KOBWBIntegerEnumValue;
        m_integerEnum = domain;
    }
}

void KOBWBValue::Set(const KOBWBRealEnum& domain) {
    if (m_type == KOBWBUndefinedValue || m_type == KOBWBRealEnumValue ||
        m_type == KOBWBFractionValue) {
        m_type = KOBWBRealEnumValue;
        m_realEnum = domain;
    }
}

void KOBWBValue::Set(const KOBWBFraction& fraction) {
    if (m_type == KOBWBBooleanValue) return;
    m_type = KOBWBFractionValue;
    m_fraction = fraction;
    SimplifyFraction(false);
}

void KOBWBValue::Set(int count, const int* elements) {
    if (count < 0 || (count > 0 && !elements)) return;
    if (m_type == KOBWBIntegerEnumValue) {
        m_integerEnum.SetNil();
        for (int i = 0; i < count; ++i) m_integerEnum.Insert(elements[i]);
    } else if (m_type == KOBWBRealEnumValue) {
        m_realEnum.SetNil();
        for (int i = 0; i < count; ++i) m_realEnum.Insert(elements[i], KOBWBAbsPrecision);
    }
}

void KOBWBValue::Set(int count, const double* elements) {
    if (count < 0 || (count > 0 && !elements)) return;
    if (m_type == KOBWBRealEnumValue) {
        m_realEnum.SetNil();
        for (int i = 0; i < count; ++i) m_realEnum.Insert(elements[i], KOBWBAbsPrecision);
    } else if (m_type == KOBWBIntegerEnumValue) {
        m_integerEnum.SetNil();
        for (int i = 0; i < count; ++i) {
            const KOBWBIntegerInterval snapped = KOBWBCreateIntegerInterval(
                KOBWBCreateRealInterval(elements[i]));
            if (KOBWBIsExact(snapped)) m_integerEnum.Insert(snapped.lower);
        }
    }
}

void KOBWBValue::SetIndefinite() {
    switch (m_type) {
    case KOBWBIntegerValue:
    case KOBWBFractionValue: *this = KOBWBValue(KOBWBSingleInteger_Any); break;
    case KOBWBRealValue: m_payload.real = {KOBWBSingleReal_Any, KOBWBSingleReal_Any}; break;
    case KOBWBIntegerIntervalValue: m_payload.integer = KOBWBInteger_Any; break;
    case KOBWBRealIntervalValue: m_payload.real = KOBWBReal_Any; break;
    case KOBWBIntegerEnumValue: m_integerEnum.SetAny(); break;
    case KOBWBRealEnumValue: m_realEnum.SetAny(); break;
    case KOBWBBooleanValue: m_payload.boolean = KOBWBUndef; break;
    default: break;
    }
}

KOBWBValueType KOBWBValue::FractionType() const {
    const long long numerator = m_fraction.numerator;
    const long long denominator = m_fraction.denominator;
    const bool divides = denominator == 0 || numerator % denominator == 0;
    return divides && m_fraction.powerOfPi == 0 ? KOBWBIntegerValue : KOBWBRealValue;
}

bool KOBWBValue::IsConvertible(KOBWBValueType type) const {
    const KOBWBValueType own = GetType();
    if (own == KOBWBUndefinedValue || type == KOBWBUndefinedValue) return true;
    const bool integerKind = own == KOBWBIntegerValue || own == KOBWBIntegerIntervalValue ||
                             own == KOBWBIntegerEnumValue;
    if (own == KOBWBBooleanValue)
        return type == KOBWBBooleanValue || type == KOBWBIntegerValue ||
               type == KOBWBIntegerIntervalValue || type == KOBWBIntegerEnumValue;
    if (type == KOBWBBooleanValue) return integerKind;
    return type != KOBWBFractionValue || integerKind;
}

void KOBWBValue::SimplifyFraction(bool toReal) {
    if (m_type != KOBWBFractionValue) return;
    const int nil = KOBWBSingleInteger_Nil;
    const int any = KOBWBSingleInteger_Any;
    int numerator = m_fraction.numerator;
    int denominator = m_fraction.denominator;
    const int power = m_fraction.powerOfPi;
    if (numerator != 0 && denominator == 0) {
        *this = KOBWBValue(nil);
    } else if (numerator == 0 && denominator == 0) {
        *this = KOBWBValue(any);
    } else if (denominator == nil || numerator == nil || power == nil) {
        *this = KOBWBValue(nil);
    } else if (numerator == 0) {
        *this = KOBWBValue(0);
    } else if (denominator == any || numerator == any || power == any) {
        *this = KOBWBValue(KOBWBSingleReal_Any);
    } else if (power == 0 && numerator % denominator == 0) {
        *this = KOBWBValue(numerator / denominator);
    } else if (!toReal) {
        if (denominator < 0) {
            numerator = -numerator;
            denominator = -denominator;
        }
        int a = std::abs(numerator);
        int b = denominator;
        while (b != 0) {
            const int r = a % b;
            a = b;
            b = r;
        }
        m_fraction.numerator = numerator / a;
        m_fraction.denominator = denominator / a;
    } else {
        *this = KOBWBValue(kobwb::FractionToReal(m_fraction));
    }
}

int KOBWBValue::GetAsInteger() const {
    switch (m_type) {
    case KOBWBUndefinedValue: return KOBWBSingleInteger_Any;
    case KOBWBIntegerValue: return m_payload.integer.lower;
    case KOBWBBooleanValue:
        switch (m_payload.boolean) {
        case KOBWBFalse: return 0;
        case KOBWBTrue: return 1;
        case KOBWBContr: return KOBWBSingleInteger_Nil;
        default: return KOBWBSingleInteger_Any;
        }
    default: return SingleInteger(GetAsIntegerInterval());
    }
}

double KOBWBValue::GetAsReal() const {
    if (m_type == KOBWBRealValue) {
        const double x = m_payload.real.lower;
        if (KOBWBIsAnyReal(x)) return KOBWBSingleReal_Any;
        if (KOBWBIsNilReal(x)) return KOBWBSingleReal_Nil;
        return x;
    }
    return SingleReal(GetAsRealInterval());
}

double KOBWBValue::GetAsDouble() const { return GetAsReal(); }

namespace {

KOBWBValue Simplified(const KOBWBValue& fraction, bool toReal) {
    KOBWBValue copy(fraction);
    copy.SimplifyFraction(false);
    if (toReal) copy.SimplifyFraction(true);
    return copy;
}

KOBWBIntegerInterval BooleanAsIntegerInterval(KOBWBBoolean b) {
    switch (b) {
    case KOBWBFalse: return {0, 0};
    case KOBWBTrue: return {1, 1};
    case KOBWBUndef: return {0, 1};
    default: return KOBWBInteger_Nil;
    }
}

} // namespace

KOBWBIntegerInterval KOBWBValue::GetAsIntegerInterval() const {
    switch (m_type) {
    case KOBWBUndefinedValue: return KOBWBInteger_Any;
    case KOBWBIntegerValue: {
        const int n = m_payload.integer.lower;
        if (KOBWBIsNilInteger(n)) return KOBWBInteger_Nil;
        if (KOBWBIsAnyInteger(n)) return KOBWBInteger_Any;
        return {n, n};
    }
    case KOBWBIntegerIntervalValue: return m_payload.integer;
    case KOBWBIntegerEnumValue: return m_integerEnum.GetAsIntegerInterval();
    case KOBWBBooleanValue: return BooleanAsIntegerInterval(m_payload.boolean);
    // A fraction that does not reduce to an integer is read through its real value.
    case KOBWBFractionValue: return Simplified(*this, true).GetAsIntegerInterval();
    default: return KOBWBCreateIntegerInterval(GetAsRealInterval());
    }
}

KOBWBRealInterval KOBWBValue::GetAsRealInterval() const {
    switch (m_type) {
    case KOBWBUndefinedValue: return KOBWBReal_Any;
    case KOBWBRealValue: {
        const double x = m_payload.real.lower;
        if (KOBWBIsNilReal(x)) return KOBWBReal_Nil;
        if (KOBWBIsAnyReal(x)) return KOBWBReal_Any;
        return {x, x};
    }
    case KOBWBIntegerValue: {
        const int n = m_payload.integer.lower;
        if (KOBWBIsNilInteger(n)) return KOBWBReal_Nil;
        if (KOBWBIsAnyInteger(n)) return KOBWBReal_Any;
        return {static_cast<double>(n), static_cast<double>(n)};
    }
    case KOBWBRealIntervalValue: return m_payload.real;
    case KOBWBRealEnumValue: return m_realEnum.GetAsRealInterval();
    case KOBWBFractionValue: return Simplified(*this, true).GetAsRealInterval();
    default: return KOBWBCreateRealInterval(GetAsIntegerInterval());
    }
}

KOBWBIntegerEnum KOBWBValue::GetAsIntegerEnum() const {
    if (m_type == KOBWBIntegerEnumValue) return m_integerEnum;
    KOBWBIntegerEnum domain(KOBWBEnumAny);
    const KOBWBIntegerInterval interval = GetAsIntegerInterval();
    if (KOBWBIsEmpty(interval)) {
        domain.SetNil();
    } else if (KOBWBIsExact(interval)) {
        domain.SetSize(1);
        if (domain.GetSize() == 1) domain.Set(0, interval.lower);
    } else if (!KOBWBContains(interval, KOBWBInteger_Any)) {
        domain.SetAsIntegerInterval(interval);
    }
    return domain;
}

KOBWBRealEnum KOBWBValue::GetAsRealEnum() const {
    KOBWBRealEnum domain(KOBWBEnumAny);
    if (m_type == KOBWBRealEnumValue) return m_realEnum;
    if (m_type == KOBWBIntegerEnumValue) {
        domain = m_integerEnum;
        return domain;
    }
    const KOBWBRealInterval interval = GetAsRealInterval();
    const double tolerance = KOBWBAbsPrecision;
    if (KOBWBIsEmpty(interval, tolerance)) {
        domain.SetNil();
    } else if (KOBWBIsExact(interval, tolerance)) {
        domain.SetSize(1);
        if (domain.GetSize() == 1) domain.Set(0, interval.lower);
    } else if (!KOBWBContains(interval, KOBWBReal_Any, tolerance)) {
        domain.SetAsRealInterval(interval);
    }
    return domain;
}

namespace {

// The line that names the failed boolean reading of a real kind in reports.
constexpr unsigned realAsBooleanLine = 778;

KOBWBBoolean IntervalAsBoolean(const KOBWBIntegerInterval& interval) {
    if (KOBWBIsEmpty(interval)) return KOBWBContr;
    if (interval.lower == 0 && interval.upper == 0) return KOBWBFalse;
    if (interval.lower > 0 || interval.upper < 0) return KOBWBTrue;
    return KOBWBUndef;
}

} // namespace

KOBWBBoolean KOBWBValue::GetAsBoolean() const {
    switch (m_type) {
    case KOBWBUndefinedValue: return KOBWBUndef;
    case KOBWBIntegerValue: return m_payload.integer.lower != 0 ? KOBWBTrue : KOBWBFalse;
    case KOBWBBooleanValue: return m_payload.boolean;
    case KOBWBIntegerIntervalValue: return IntervalAsBoolean(m_payload.integer);
    case KOBWBIntegerEnumValue: return IntervalAsBoolean(m_integerEnum.GetAsIntegerInterval());
    case KOBWBFractionValue: {
        // A fraction left after reduction is not a whole number, so it is not 0.
        const KOBWBValue reduced = Simplified(*this, false);
        return reduced.m_type == KOBWBFractionValue ? KOBWBTrue : reduced.GetAsBoolean();
    }
    default:
        KOBLVRAssertError("0", "WhiteBoxMath/src/KOBWBValue", realAsBooleanLine);
        return m_payload.boolean;
    }
}

KOBWBFraction KOBWBValue::GetAsFraction() const {
    if (m_type == KOBWBFractionValue) return m_fraction;
    const KOBWBValueType type = GetType();
    if (type == KOBWBRealValue || type == KOBWBRealIntervalValue || type == KOBWBRealEnumValue)
        return {0, 0, 0, 1};
    const int n = GetAsInteger();
    if (KOBWBIsNilInteger(n)) return {1, 0, 0, 1};
    if (KOBWBIsAnyInteger(n)) return {0, 0, 0, 1};
    return {n, 1, 0, 1};
}

double KOBWBValue::GetMiddle() const { return KOBWBMiddle(GetAsRealInterval()); }

double KOBWBValue::GetWidth() const { return KOBWBWidth(GetAsRealInterval()); }

double KOBWBValue::GetMAG() const { return KOBWBMAG(GetAsRealInterval()); }
