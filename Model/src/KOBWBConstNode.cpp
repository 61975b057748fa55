#include "KOBWBConstNode.h"

#include "KOBWBModelStatus.h"
#include "KOBWBUnitTable.h"
#include "KOBWBVisitor.h"

#include <new>

KOBWBConstNode::KOBWBConstNode(const KOBWBLocation& location, const KOBWBValue& value)
    : KOBWBNode(KOBWBConstNodeType, location) {
    m_number.integer = 0;
    if (value.IsAFraction()) {
        m_stored = Stored::Fraction;
        m_number.fraction = value.GetAsFraction();
    } else if (value.IsAKindOf(KOBWBIntegerValue)) {
        m_stored = Stored::Integer;
        m_number.integer = value.GetAsInteger();
    } else if (value.IsAKindOf(KOBWBRealValue)) {
        m_stored = Stored::Real;
        m_number.real = value.GetAsReal();
    } else {
        m_other.reset(new (std::nothrow) KOBWBValue(value));
    }
}

long KOBWBConstNode::New(const KOBWBLocation& location, const KOBWBValue& value,
                         KOBWBConstNode*& out, void* memory) {
    out = Place<KOBWBConstNode>(memory, location, value);
    if (out && out->m_stored == Stored::Other && !out->m_other) {
        Free(out);
        out = nullptr;
    }
    return out ? KOBWBModelOk : KOBWBModelFailure;
}

long KOBWBConstNode::New(const KOBWBLocation& location, const KOBWBValue& value,
                         const KOBWBLocation& unitLocation, const KOBLVRString& unit,
                         KOBWBConstNode*& out, void* memory) {
    return New(location, value, unitLocation, unit, out, memory, nullptr);
}

long KOBWBConstNode::New(const KOBWBLocation& location, const KOBWBValue& value,
                         const KOBWBLocation& unitLocation, const KOBLVRString& unit,
                         KOBWBConstNode*& out, void* memory, void* unitRoom) {
    if (New(location, value, out, memory) != KOBWBModelOk) return KOBWBModelFailure;
    out->SetUnitData(unitLocation, unit, unitRoom);
    out->m_dimensional = true;
    const KOBWBUnitKind kind = KOBWBClassifyUnit(out->GetUnit());
    if (kind != KOBWBUnitKind::Unknown) out->SetUnitClass(KOBWBUnitClassOf(kind));
    return KOBWBModelOk;
}

KOBWBValue KOBWBConstNode::GetValue() const {
    switch (m_stored) {
    case Stored::Integer:
        return KOBWBValue(m_number.integer);
    case Stored::Real:
        return KOBWBValue(m_number.real);
    case Stored::Fraction:
        return KOBWBValue(m_number.fraction);
    case Stored::Other:
        break;
    }
    return *m_other;
}

bool KOBWBConstNode::IsPi() const {
    return m_stored == Stored::Fraction && m_number.fraction.numerator == 1 &&
           m_number.fraction.denominator == 1 && m_number.fraction.powerOfPi == 1;
}

bool KOBWBConstNode::IsSameNode(const KOBWBNode& other) const {
    if (!KOBWBNode::IsSameNode(other)) return false;
    const KOBWBConstNode& constant = static_cast<const KOBWBConstNode&>(other);
    if (m_stored != constant.m_stored) return false;
    switch (m_stored) {
    case Stored::Integer:
        return m_number.integer == constant.m_number.integer;
    case Stored::Real:
        return m_number.real == constant.m_number.real;
    case Stored::Fraction:
        return m_number.fraction.numerator == constant.m_number.fraction.numerator &&
               m_number.fraction.denominator == constant.m_number.fraction.denominator &&
               m_number.fraction.powerOfPi == constant.m_number.fraction.powerOfPi;
    case Stored::Other:
        break;
    }
    // Other kinds compare by their real hulls.
    const KOBWBRealInterval a = m_other->GetAsRealInterval();
    const KOBWBRealInterval b = constant.m_other->GetAsRealInterval();
    return m_other->GetType() == constant.m_other->GetType() && a.lower == b.lower &&
           a.upper == b.upper;
}

long KOBWBConstNode::Accept(KOBWBVisitor& visitor) {
    return visitor.VisitConstant(*this);
}
