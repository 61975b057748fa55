#include "KOBWBConstNode.h"

#include "KOBWBModelStatus.h"
#include "KOBWBUnitTable.h"
#include "KOBWBVisitor.h"

#include <new>

namespace {

// Exact equality of the constants the model language writes: integers, reals
// and fractions of Pi.
bool IsSameValue(const KOBWBValue& a, const KOBWBValue& b) {
    if (a.GetType() != b.GetType()) return false;
    if (a.IsAFraction()) {
        const KOBWBFraction x = a.GetAsFraction();
        const KOBWBFraction y = b.GetAsFraction();
        return x.numerator == y.numerator && x.denominator == y.denominator &&
               x.powerOfPi == y.powerOfPi;
    }
    const KOBWBRealInterval x = a.GetAsRealInterval();
    const KOBWBRealInterval y = b.GetAsRealInterval();
    return x.lower == y.lower && x.upper == y.upper;
}

} // namespace

KOBWBConstNode::KOBWBConstNode(const KOBWBLocation& location, const KOBWBValue& value)
    : KOBWBNode(KOBWBConstNodeType, location), m_value(value) {}

long KOBWBConstNode::New(const KOBWBLocation& location, const KOBWBValue& value,
                         KOBWBConstNode*& out) {
    out = new (std::nothrow) KOBWBConstNode(location, value);
    return out ? KOBWBModelOk : KOBWBModelFailure;
}

long KOBWBConstNode::New(const KOBWBLocation& location, const KOBWBValue& value,
                         const KOBWBLocation& unitLocation, const KOBLVRString& unit,
                         KOBWBConstNode*& out) {
    if (New(location, value, out) != KOBWBModelOk) return KOBWBModelFailure;
    out->SetUnitData(unitLocation, unit);
    out->m_dimensional = true;
    const KOBWBUnitKind kind = KOBWBClassifyUnit(unit.str());
    if (kind != KOBWBUnitKind::Unknown) out->SetUnitClass(KOBWBUnitClassOf(kind));
    return KOBWBModelOk;
}

bool KOBWBConstNode::IsPi() const {
    if (!m_value.IsAFraction()) return false;
    const KOBWBFraction fraction = m_value.GetAsFraction();
    return fraction.numerator == 1 && fraction.denominator == 1 && fraction.powerOfPi == 1;
}

bool KOBWBConstNode::IsSameNode(const KOBWBNode& other) const {
    return KOBWBNode::IsSameNode(other) &&
           IsSameValue(m_value, static_cast<const KOBWBConstNode&>(other).m_value);
}

long KOBWBConstNode::Accept(KOBWBVisitor& visitor) { return visitor.VisitConstant(*this); }
