#include "KOBWBIntegerEnum.h"

#include "KOBWBEnvironment.h"
#include "KOBWBLimits.h"

void KOBWBIntegerEnum::Insert(int value) { m_domain.Insert(value, 0); }

void KOBWBIntegerEnum::Remove(int value) {
    switch (m_domain.representation) {
    case KOBWBEnumList: m_domain.RemoveListElement(value, 0); return;
    case KOBWBEnumAny:
        if (value != KOBWBMaxInteger && value != -KOBWBMaxInteger) return;
        SetAsIntegerInterval(KOBWBInteger_Any);
        [[fallthrough]];
    case KOBWBEnumInterval:
        if (value == m_domain.elements[0]) ++m_domain.elements[0];
        if (value == m_domain.elements[1]) --m_domain.elements[1];
        return;
    case KOBWBEnumNil: return;
    }
}

bool KOBWBIntegerEnum::Find(int value, int& position) const {
    return m_domain.Find(value, position, 0);
}

KOBWBIntegerInterval KOBWBIntegerEnum::GetAsIntegerInterval() const {
    return m_domain.Hull(KOBWBInteger_Any, KOBWBInteger_Nil);
}

void KOBWBIntegerEnum::SetAsIntegerInterval(const KOBWBIntegerInterval& interval) {
    m_domain.MakeInterval(interval.lower, interval.upper);
}

void KOBWBIntegerEnum::Correct(const KOBWBEnvironment& environment) {
    const int maxSize = environment.GetMaxEnumSize();
    if (m_domain.representation == KOBWBEnumList && m_domain.CorrectList(0, maxSize)) return;
    if (m_domain.representation != KOBWBEnumInterval) return;
    const KOBWBIntegerInterval hull = GetAsIntegerInterval();
    if (KOBWBIsEmpty(hull)) {
        SetNil();
    } else if (KOBWBContains(hull, KOBWBInteger_Any)) {
        SetAny();
    } else {
        const int width = KOBWBWidth(hull);
        if (width < 0 || width >= maxSize) return;
        m_domain.MakeList(width + 1);
        if (m_domain.count != width + 1) return;
        for (int i = 0; i <= width; ++i) m_domain.elements[i] = hull.lower + i;
    }
}
