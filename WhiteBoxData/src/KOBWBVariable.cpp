#include "KOBWBVariable.h"

#include "KOBWBFactory.h"

KOBWBVariable::KOBWBVariable(KOBWBFactory& factory, int index)
    : KOBWBConstant(factory, KOBWBValue(), KOBWBVariableType), m_index(index) {}

KOBWBVariable::KOBWBVariable(KOBWBFactory& factory, const KOBLVRString& name)
    : KOBWBConstant(factory, KOBWBValue(), KOBWBVariableType), m_index(-1), m_name(name) {}

KOBWBVariable::~KOBWBVariable() { m_name.clear(); }

unsigned char KOBWBVariable::IsEqualTo(const KOBWBExpression* other) const {
    if (other == this) return 1;
    if (!other || other->GetType() != GetType()) return 0;
    return static_cast<const KOBWBVariable*>(other)->m_index == m_index;
}

KOBWBExpression* KOBWBVariable::Differentiate(KOBWBVariable* v) {
    if (!v) return this;
    return GetFactory().CreateRealConstant(v == this ? 1.0 : 0.0);
}

void KOBWBVariable::FillPresentVariables(unsigned char* mask) const {
    if (mask && m_index >= 0) mask[m_index] = 1;
}

void KOBWBVariable::SetExprValue(const KOBWBValue& value) { SetValue(value, nullptr); }

const KOBLVRString& KOBWBVariable::GetName() {
    if (m_name.IsEmpty()) {
        m_name = "va";
        m_name += m_index;
    }
    return m_name;
}

void KOBWBVariable::SetName(const KOBLVRString& name) {
    m_name = name;
    GetFactory().UpdateIsVariablesSorted(0);
}

void KOBWBVariable::Fix(unsigned char fixed) {
    if (fixed == m_fixed) return;
    GetFactory().ResetBuffer(nullptr);
    m_fixed = fixed;
}

void KOBWBVariable::SetPreferedValue(double value) {
    m_preferedValue = value;
    m_hasPreferedValue = 1;
}

unsigned char KOBWBVariable::GetPreferedValue(double& value) const {
    if (!m_hasPreferedValue) return 0;
    value = m_preferedValue;
    return 1;
}
