#include "KOBWBIntegrateOperator.h"

#include "KOBWBFactory.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

KOBWBIntegrateOperator::KOBWBIntegrateOperator(KOBWBFactory& factory, KOBWBExpression* integrand,
                                               KOBWBVariable* variable)
    : KOBWBOperator(factory, KOBWBIntegrateType, {integrand, variable}) {}

KOBWBExpression* KOBWBIntegrateOperator::GetAntiderivative() {
    if (m_made) return m_antiderivative;
    KOBWBExpression* integrand = m_children[0];
    KOBWBExpression* variable = m_children[1];
    if (!integrand || !variable || variable->GetType() != KOBWBVariableType) return nullptr;
    unsigned char integrable = 0;
    KOBWBExpression* antiderivative = integrand->IntegrateTable(static_cast<KOBWBVariable*>(variable), integrable);
    if (!integrable) antiderivative = nullptr;
    if (!GetFactory().IsUsingTemporaryStorage()) {
        m_antiderivative = antiderivative;
        m_made = true;
    }
    return antiderivative;
}

unsigned char KOBWBIntegrateOperator::ReplaceChild(int i, KOBWBExpression* child) {
    const unsigned char replaced = KOBWBOperator::ReplaceChild(i, child);
    if (replaced) {
        m_antiderivative = nullptr;
        m_made = false;
    }
    return replaced;
}

void KOBWBIntegrateOperator::DoEval(KOBWBValue& result) {
    KOBWBExpression* antiderivative = GetAntiderivative();
    if (!antiderivative) {
        result.SetIndefinite();
        return;
    }
    antiderivative->Eval(result);
}

KOBWBExpression* KOBWBIntegrateOperator::Differentiate(KOBWBVariable* v) {
    if (!v) return nullptr;
    if (v == m_children[1]) return m_children[0];
    KOBWBExpression* antiderivative = GetAntiderivative();
    if (!antiderivative) return nullptr;
    KOBWBVariable* variables[] = {v};
    return GetFactory().CreateDerivative(antiderivative, 1, variables);
}
