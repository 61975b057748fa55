#include "KOBWBDerivBlackBox.h"

#include "KOBWBFactory.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

KOBWBDerivBlackBox::KOBWBDerivBlackBox(KOBWBBlackBox* primitive, KOBWBVariable* variable)
    : m_primitive(primitive), m_variable(variable),
      m_step(variable ? variable->GetEnvironment().GetBBPrecision() : KOBWBEnvironment().GetBBPrecision()) {
    m_isDerivative = 1;
    if (primitive && variable) SetName("d" + variable->GetName() + primitive->GetName());
}

void KOBWBDerivBlackBox::Eval(KOBWBValue& result) { result = KOBWBValue(Eval()); }

double KOBWBDerivBlackBox::Eval() {
    if (!m_primitive || !m_variable) return 0.0;
    const double x0 = m_variable->Eval();
    const double h = m_step;
    m_variable->SetValue(KOBWBValue(x0 - h), nullptr);
    const double below = m_primitive->Eval();
    m_variable->SetValue(KOBWBValue(x0 + h), nullptr);
    const double above = m_primitive->Eval();
    const double slope = (above - below) / (h * 2.0);
    m_variable->SetValue(KOBWBValue(x0), nullptr);
    return slope;
}
