#include "KOBWBBlackBox.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBValue.h"

KOBWBBlackBox::~KOBWBBlackBox() {
    m_name.clear();
    m_operator = nullptr;
}

KOBLVRString KOBWBBlackBox::GetName() const {
    if (m_name.IsEmpty()) {
        m_name = "BBx";
        if (m_operator) m_name += m_operator->GetId();
    }
    return m_name;
}

void KOBWBBBx::Eval(KOBWBValue& result) { result = KOBWBValue(0.0); }
