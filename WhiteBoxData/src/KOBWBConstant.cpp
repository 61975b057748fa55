#include "KOBWBConstant.h"

#include "KOBWBFactory.h"

KOBWBConstant::KOBWBConstant(KOBWBFactory& factory, const KOBWBValue& value, KOBWBExpressionType type)
    : KOBWBExpression(factory, type), m_value(value) {}

KOBWBConstant::~KOBWBConstant() = default;

unsigned char KOBWBConstant::IsEqualTo(const KOBWBExpression* other) const {
    if (other == this) return 1;
    if (!other || other->GetType() != GetType()) return 0;
    return m_value.IsEqualTo(GetEnvironment(), other->GetExprValue());
}

KOBWBExpression* KOBWBConstant::Differentiate(KOBWBVariable* v) {
    return v ? GetFactory().CreateRealConstant(0.0) : nullptr;
}

void KOBWBConstant::SetValue(const KOBWBValue& value, KOBWBExpression* node) {
    // A buffer left valid by the reset below keeps the value it had: one that a plan
    // has not written yet receives it now, before the value changes.
    if (node && HasPendingValue()) WritePendingValue();
    m_value = value;
    LeafValueChanged();
    if (GetType() == KOBWBConstantType) GetFactory().NoteSystemChange();
    GetFactory().ResetBuffer(node);
}

void KOBWBConstant::IsZeroOrOne(unsigned char& isZero, unsigned char& isOne) const {
    isZero = 0;
    isOne = 0;
    const KOBWBEnvironment& environment = GetEnvironment();
    if (m_value.IsEqualTo(environment, KOBWBValue(0.0)))
        isZero = 1;
    else if (m_value.IsEqualTo(environment, KOBWBValue(1.0)))
        isOne = 1;
}
