#ifndef KOBWBValue_h
#define KOBWBValue_h

#include "KOBWBBoolean.h"
#include "KOBWBFraction.h"
#include "KOBWBIntegerEnum.h"
#include "KOBWBInterval.h"
#include "KOBWBRealEnum.h"
#include "KOBWBValueType.h"

class KOBWBEnvironment;

// A tagged value: integer, real, integer or real interval, integer or real
// enumeration, four-valued boolean, or an exact fraction times a power of Pi.
// Scalars and intervals live in the payload and never touch the heap.
class KOBWBX_API KOBWBValue {
public:
    KOBWBValue() { m_payload.real = {0.0, 0.0}; }
    KOBWBValue(int n);
    KOBWBValue(double x);
    KOBWBValue(KOBWBBoolean b);
    KOBWBValue(const KOBWBIntegerInterval& interval);
    KOBWBValue(const KOBWBRealInterval& interval) : m_type(KOBWBRealIntervalValue) { m_payload.real = interval; }
    KOBWBValue(const KOBWBIntegerEnum& domain);
    KOBWBValue(const KOBWBRealEnum& domain);
    KOBWBValue(const KOBWBFraction& fraction);
    // The kind alone, with a zero payload; the fraction kind gives Integer 0.
    KOBWBValue(KOBWBValueType type);
    KOBWBValue(const KOBWBValue& other) = default;
    KOBWBValue(KOBWBValue&& other) noexcept = default;
    KOBWBValue& operator=(const KOBWBValue& other) = default;
    KOBWBValue& operator=(KOBWBValue&& other) noexcept = default;

    // A heap copy that the caller deletes.
    KOBWBValue* Clone() const;

    // A value keeps its kind once it has one: each Set acts only on the kinds it
    // accepts and is otherwise ignored.
    void Set(int n);
    void Set(double x);
    void Set(KOBWBBoolean b);
    void Set(const KOBWBIntegerInterval& interval);
    void Set(const KOBWBRealInterval& interval) {
        if (m_type == KOBWBUndefinedValue || m_type == KOBWBRealIntervalValue ||
            m_type == KOBWBFractionValue) {
            m_type = KOBWBRealIntervalValue;
            m_payload.real = interval;
        }
    }
    void Set(const KOBWBIntegerEnum& domain);
    void Set(const KOBWBRealEnum& domain);
    void Set(const KOBWBFraction& fraction);
    // Fills the enumeration of an enumeration-tagged value with the listed
    // elements, sorted and without duplicates.
    void Set(int count, const int* elements);
    void Set(int count, const double* elements);
    // The "any" of the value's kind.
    void SetIndefinite();

    KOBWBValueType GetType() const { return m_type != KOBWBFractionValue ? m_type : FractionType(); }
    bool IsAKindOf(KOBWBValueType type) const { return GetType() == type; }
    bool IsAFraction() const { return m_type == KOBWBFractionValue; }
    // Whether the value can be read as the given kind: numbers as numbers,
    // integers and booleans as booleans, and Undefined as anything.
    bool IsConvertible(KOBWBValueType type) const;

    int GetAsInteger() const;
    double GetAsReal() const;
    double GetAsDouble() const;
    KOBWBIntegerInterval GetAsIntegerInterval() const;
    KOBWBRealInterval GetAsRealInterval() const;
    KOBWBIntegerEnum GetAsIntegerEnum() const;
    KOBWBRealEnum GetAsRealEnum() const;
    KOBWBBoolean GetAsBoolean() const;
    KOBWBFraction GetAsFraction() const;
    // The interval of a RealInterval value as stored, without conversion; null for
    // every other kind. The arithmetic's fast path reads it.
    const KOBWBRealInterval* GetRealIntervalPayload() const {
        return m_type == KOBWBRealIntervalValue ? &m_payload.real : nullptr;
    }
    KOBWBIntegerEnum& GetIntegerEnum() { return m_integerEnum; }
    const KOBWBIntegerEnum& GetIntegerEnum() const { return m_integerEnum; }
    KOBWBRealEnum& GetRealEnum() { return m_realEnum; }
    const KOBWBRealEnum& GetRealEnum() const { return m_realEnum; }
    double GetMiddle() const;
    double GetWidth() const;
    double GetMAG() const;

    // On a fraction-tagged value: reduces it, or with toReal makes it a Real.
    void SimplifyFraction(bool toReal);

    bool IsEmpty(const KOBWBEnvironment& environment) const;
    bool IsExact(const KOBWBEnvironment& environment) const;
    bool IsConsistent(const KOBWBEnvironment& environment) const;
    bool IsEqualTo(const KOBWBEnvironment& environment, const KOBWBValue& other) const;
    bool IsIndefinite() const;
    // Narrows this value by other, keeping this value's kind; true when something
    // is left.
    bool Intersect(const KOBWBEnvironment& environment, const KOBWBValue& other);
    // Widens this value to hold other too, keeping this value's kind.
    void Unite(const KOBWBEnvironment& environment, const KOBWBValue& other);
    // Removes from this value what other holds, as far as this value's kind can
    // express it (the ends of an interval, elements of an enumeration, a boolean
    // outcome); true when something is left.
    bool Exclude(const KOBWBEnvironment& environment, const KOBWBValue& other);
    // Gives this value other's content read in this value's kind; an Undefined
    // value becomes a copy of other.
    void Assign(const KOBWBEnvironment& environment, const KOBWBValue& other);

private:
    // What a fraction-tagged value reports: Integer or Real.
    KOBWBValueType FractionType() const;

    KOBWBValueType m_type = KOBWBUndefinedValue;
    union Payload {
        KOBWBIntegerInterval integer;
        KOBWBRealInterval real;
        KOBWBBoolean boolean;
    } m_payload;
    KOBWBFraction m_fraction = {0, 1, 0, 1};
    KOBWBIntegerEnum m_integerEnum;
    KOBWBRealEnum m_realEnum;
};

// Value-level predicates; the real tolerance is the environment's.
KOBWBX_API bool KOBWBIsEmpty(const KOBWBEnvironment& environment, const KOBWBValue& v);
KOBWBX_API bool KOBWBIsExact(const KOBWBEnvironment& environment, const KOBWBValue& v);
KOBWBX_API bool KOBWBIsExact(const KOBWBValue& v, double tolerance);
KOBWBX_API bool KOBWBIsConsistent(const KOBWBEnvironment& environment, const KOBWBValue& v);
KOBWBX_API bool KOBWBIsEqual(const KOBWBEnvironment& environment, const KOBWBValue& a,
                             const KOBWBValue& b);
KOBWBX_API bool KOBWBIsIndefinite(const KOBWBValue& v);

#endif
