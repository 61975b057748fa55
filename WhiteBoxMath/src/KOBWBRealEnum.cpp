#include "KOBWBRealEnum.h"

#include "KOBWBEnvironment.h"
#include "KOBWBIntegerEnum.h"
#include "KOBWBLimits.h"

#include <cmath>

KOBWBRealEnum& KOBWBRealEnum::operator=(const KOBWBIntegerEnum& other) {
    m_domain.SetCount(other.GetSize());
    m_domain.representation = other.GetRepresentation();
    for (int i = 0; i < m_domain.count; ++i) m_domain.elements[i] = other.Get(i);
    return *this;
}

void KOBWBRealEnum::Insert(double value, double tolerance) { m_domain.Insert(value, tolerance); }

void KOBWBRealEnum::Remove(double value, double tolerance) {
    if (m_domain.representation == KOBWBEnumList) {
        m_domain.RemoveListElement(value, tolerance);
    } else if (m_domain.representation == KOBWBEnumInterval) {
        if (std::fabs(value - m_domain.elements[0]) <= tolerance &&
            std::fabs(value - m_domain.elements[1]) <= tolerance)
            SetNil();
    }
}

bool KOBWBRealEnum::Find(double value, int& position, double tolerance) const {
    return m_domain.Find(value, position, tolerance);
}

KOBWBRealInterval KOBWBRealEnum::GetAsRealInterval() const {
    return m_domain.Hull(KOBWBReal_Any, KOBWBReal_Nil);
}

void KOBWBRealEnum::SetAsRealInterval(const KOBWBRealInterval& interval) {
    m_domain.MakeInterval(interval.lower, interval.upper);
}

void KOBWBRealEnum::Correct(const KOBWBEnvironment& environment) {
    const double tolerance = environment.GetTolerance();
    if (m_domain.representation == KOBWBEnumList &&
        m_domain.CorrectList(tolerance, environment.GetMaxEnumSize()))
        return;
    if (m_domain.representation != KOBWBEnumInterval) return;
    const KOBWBRealInterval hull = GetAsRealInterval();
    if (KOBWBIsEmpty(hull, tolerance)) {
        SetNil();
    } else if (KOBWBContains(hull, KOBWBReal_Any, tolerance)) {
        SetAny();
    } else if (KOBWBIsExact(hull, tolerance)) {
        m_domain.count = 1;
        m_domain.representation = KOBWBEnumList;
    }
}
