#ifndef KOBWBRealEnum_h
#define KOBWBRealEnum_h

#include "KOBWBEnumRepresentation.h"
#include "KOBWBEnumStorage.h"
#include "KOBWBInterval.h"

class KOBWBEnvironment;
class KOBWBIntegerEnum;

// A finite set of reals: an ascending list (no two elements within the tolerance
// used to insert them), a real interval, any, or nothing. The searching operations
// take the tolerance within which two reals are the same element.
class KOBWBX_API KOBWBRealEnum {
public:
    // A requested list becomes nil and a requested interval becomes any.
    explicit KOBWBRealEnum(KOBWBEnumRepresentation representation = KOBWBEnumAny) {
        m_domain.representation = kobwb::WithoutElements(representation);
    }
    KOBWBRealEnum(const KOBWBRealEnum& other) = default;
    KOBWBRealEnum(KOBWBRealEnum&& other) noexcept = default;
    KOBWBRealEnum& operator=(const KOBWBRealEnum& other) = default;
    KOBWBRealEnum& operator=(KOBWBRealEnum&& other) noexcept = default;
    // The same representation with the elements converted to reals.
    KOBWBRealEnum& operator=(const KOBWBIntegerEnum& other);

    KOBWBEnumRepresentation GetRepresentation() const { return m_domain.representation; }
    void SetAny() { m_domain.SetState(KOBWBEnumAny); }
    void SetNil() { m_domain.SetState(KOBWBEnumNil); }
    void SetSize(int n) { m_domain.MakeList(n); }
    int GetSize() const { return m_domain.count; }
    int GetCapacity() const { return m_domain.capacity; }
    double Get(int i) const { return m_domain.elements[i]; }
    void Set(int i, double value) { m_domain.elements[i] = value; }

    void Append(double value) { m_domain.Append(value); }
    void Insert(double value, double tolerance);
    // Removes a list element within tolerance of the value; an interval loses the
    // value only when it is that single point.
    void Remove(double value, double tolerance);
    void RemovePosition(int position, int count) { m_domain.RemovePosition(position, count); }
    bool Find(double value, int& position, double tolerance) const;
    int FindGT(double value) const { return m_domain.FindGT(value); }
    int FindLT(double value) const { return m_domain.FindLT(value); }

    KOBWBRealInterval GetAsRealInterval() const;
    void SetAsRealInterval(const KOBWBRealInterval& interval);
    // Sorts a list and merges elements within the environment's tolerance; a list
    // over the maximum size becomes its hull; an interval narrower than the
    // tolerance becomes the one-element list of its lower bound.
    void Correct(const KOBWBEnvironment& environment);

private:
    kobwb::EnumStorage<double> m_domain;
};

#endif
