#include "KOBWBEquation.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBPresentVariables.h"
#include "KOBWBVariable.h"

KOBWBEquation::KOBWBEquation(KOBWBFactory* factory, KOBWBExpression* root, KOBWBEquationType type,
                             int id)
    : m_factory(factory), m_root(root), m_type(type), m_id(id) {
    if (m_root) m_root->MarkAsEquationRoot();
}

void KOBWBEquation::SetRoot(KOBWBExpression* root) {
    m_root = root;
    if (m_factory) m_factory->NoteSystemChange();
    if (m_root) m_root->MarkAsEquationRoot();
}

KOBWBEquation::~KOBWBEquation() {
    if (m_factory) m_factory->NoteSystemChange();
    if (m_prev) m_prev->m_next = m_next;
    if (m_next) m_next->m_prev = m_prev;
    m_prev = nullptr;
    m_next = nullptr;
}

const KOBLVRString& KOBWBEquation::GetName() {
    if (m_name.IsEmpty()) {
        m_name = "eq";
        m_name += m_id;
    }
    return m_name;
}

void KOBWBEquation::SetName(const KOBLVRString& name) { m_name = name; }

void KOBWBEquation::GetTheoreticalVarList(KOBLVRIntArray* indices) const {
    if (!indices) return;
    indices->SetDimension(0);
    for (int i = 0; i < m_theoreticalVariables.Size(); ++i) indices->Append(m_theoreticalVariables[i]);
}

void KOBWBEquation::SetTheoreticalVarList(KOBLVRIntArray* indices) {
    if (!indices) return;
    m_theoreticalVariables.SetDimension(0);
    for (int i = 0; i < indices->Size(); ++i) m_theoreticalVariables.Append((*indices)[i]);
}

int KOBWBEquation::FindPresentVariables(KOBLVRListPKOBWBVariable& variables) const {
    if (!m_root) return 0;
    if (variables.Size() > 0) variables.RemoveAll();
    if (m_factory->GetNbOfVariables() == 0) return 0;
    for (KOBWBVariable* variable : kobwb::PresentVariables(*m_root)) variables.Append(variable);
    return 1;
}

unsigned char KOBWBEquation::AreVarConsistent() const {
    if (m_theoreticalVariables.Size() == 0) return 1;
    if (m_factory->GetNbOfVariables() == 0) return 0;
    if (!m_root) return 1;
    for (const KOBWBVariable* variable : kobwb::PresentVariables(*m_root))
        if (m_theoreticalVariables.Locate(variable->GetIdx(), 0) < 0) return 0;
    return 1;
}

void KOBWBEquation::DuplicateRoot() {
    if (m_root) SetRoot(m_factory->CloneExpression(m_root));
}
