#include "KOBWBFactory.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBDerivBlackBox.h"

#include <new>

KOBWBExpression* KOBWBFactory::DeclareBlackBox(KOBWBBlackBox* blackBox, int n, KOBWBExpression** arguments,
                                               unsigned char giveOwnership) {
    if (!blackBox) return nullptr;
    auto* node = new (*this) KOBWBBlackBoxOperator(*this, n, arguments, *blackBox, m_nextBlackBoxId);
    if (!node) return nullptr;
    ++m_nextBlackBoxId;
    AddExpression(node);
    blackBox->SetOperator(node);
    m_blackBoxes.Append(blackBox);
    if (giveOwnership) m_ownedBlackBoxes.Append(blackBox);
    return node;
}

KOBWBBlackBox* KOBWBFactory::GetBlackBoxByName(const KOBLVRString& name) {
    for (int i = 0; i < m_blackBoxes.Size(); ++i)
        if (m_blackBoxes[i]->GetName() == name) return m_blackBoxes[i];
    return nullptr;
}

int KOBWBFactory::GetBlackBoxIndex(const KOBWBBlackBox* blackBox) const {
    for (int i = 0; blackBox && i < m_blackBoxes.Size(); ++i)
        if (m_blackBoxes[i] == blackBox) return i;
    return -1;
}

KOBWBDerivBlackBox* KOBWBFactory::GetDerivBlackBox(KOBWBBlackBox* blackBox, KOBWBVariable* variable) {
    for (int i = 0; i < m_blackBoxes.Size(); ++i) {
        KOBWBBlackBox* candidate = m_blackBoxes[i];
        if (!candidate->IsADerivative()) continue;
        auto* derivative = static_cast<KOBWBDerivBlackBox*>(candidate);
        if (derivative->IsAPrimitive(blackBox) && derivative->IsTheDiffVariable(variable)) return derivative;
    }
    return nullptr;
}
