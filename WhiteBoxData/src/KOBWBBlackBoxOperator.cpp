#include "KOBWBBlackBoxOperator.h"

#include "KOBWBBlackBox.h"
#include "KOBWBDerivBlackBox.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <new>
#include <vector>

KOBWBBlackBoxOperator::KOBWBBlackBoxOperator(KOBWBFactory& factory, int n, KOBWBExpression** children,
                                             KOBWBBlackBox& blackBox, int id)
    : KOBWBOperator(factory, KOBWBBlackBoxType, n, children), m_blackBox(&blackBox), m_id(id) {}

KOBLVRString KOBWBBlackBoxOperator::GetBlackBoxName() const { return m_blackBox->GetName(); }

void KOBWBBlackBoxOperator::DoEval(KOBWBValue& result) { m_blackBox->Eval(result); }

double KOBWBBlackBoxOperator::DoEval() { return m_blackBox->Eval(); }

KOBWBExpression* KOBWBBlackBoxOperator::Differentiate(KOBWBVariable* v) {
    if (!v) return this;
    if (!GetChild(0) || m_children.Locate(v) < 0) return nullptr;
    KOBWBFactory& factory = GetFactory();
    if (KOBWBDerivBlackBox* known = factory.GetDerivBlackBox(m_blackBox, v)) return known->GetOperator();
    KOBWBDerivBlackBox* derivative = new (std::nothrow) KOBWBDerivBlackBox(m_blackBox, v);
    if (!derivative) return nullptr;
    std::vector<KOBWBExpression*> arguments(static_cast<size_t>(GetNbOfChildren()));
    for (size_t i = 0; i < arguments.size(); ++i) arguments[i] = GetChild(static_cast<int>(i));
    return factory.DeclareBlackBox(derivative, static_cast<int>(arguments.size()), arguments.data(), 1);
}
