#ifndef KOBWBIntegerEnum_h
#define KOBWBIntegerEnum_h

#include "KOBWBEnumRepresentation.h"
#include "KOBWBEnumStorage.h"
#include "KOBWBInterval.h"

class KOBWBEnvironment;

// A finite set of integers: an ascending list, or an interval of every integer
// between two bounds, or any, or nothing. Correct switches between list and
// interval at the environment's maximum enumeration size.
class KOBWBX_API KOBWBIntegerEnum {
public:
    // A requested list becomes nil and a requested interval becomes any.
    explicit KOBWBIntegerEnum(KOBWBEnumRepresentation representation = KOBWBEnumAny) {
        m_domain.representation = kobwb::WithoutElements(representation);
    }

    KOBWBEnumRepresentation GetRepresentation() const { return m_domain.representation; }
    void SetAny() { m_domain.SetState(KOBWBEnumAny); }
    void SetNil() { m_domain.SetState(KOBWBEnumNil); }
    // Makes a list of n elements, to be written with Set; ignored for n < 0.
    void SetSize(int n) { m_domain.MakeList(n); }
    int GetSize() const { return m_domain.count; }
    int GetCapacity() const { return m_domain.capacity; }
    // Direct 0-based access, without bounds checks.
    int Get(int i) const { return m_domain.elements[i]; }
    void Set(int i, int value) { m_domain.elements[i] = value; }

    // Adds the value at the end of a list without sorting; widens an interval.
    void Append(int value) { m_domain.Append(value); }
    // Adds the value at its sorted place in a list; widens an interval.
    void Insert(int value);
    void Remove(int value);
    void RemovePosition(int position, int count) { m_domain.RemovePosition(position, count); }
    bool Find(int value, int& position) const;
    int FindGT(int value) const { return m_domain.FindGT(value); }
    int FindLT(int value) const { return m_domain.FindLT(value); }

    // The hull: [first element, last element]; any and nil give their intervals.
    KOBWBIntegerInterval GetAsIntegerInterval() const;
    void SetAsIntegerInterval(const KOBWBIntegerInterval& interval);
    // Sorts and deduplicates a list, then applies the list/interval size rules.
    void Correct(const KOBWBEnvironment& environment);

private:
    kobwb::EnumStorage<int> m_domain;
};

#endif
