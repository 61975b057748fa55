#include "KOBWBEquation.h"
#include "KOBWBFactory.h"

#include <new>
#include <unordered_set>

KOBWBEquation* KOBWBFactory::AddEquation(KOBWBExpression* root, KOBWBEquationType type) {
    if (!root) return nullptr;
    KOBWBEquation* equation = new (std::nothrow) KOBWBEquation(this, root, type, m_nextEquationId);
    if (!equation) return nullptr;
    ++m_nextEquationId;
    NoteSystemChange();
    KOBWBEquation* last = GetLastEquation();
    equation->m_prev = last;
    if (last) last->m_next = equation;
    m_equations.Append(equation);
    return equation;
}

KOBWBEquation* KOBWBFactory::AddEquation(KOBWBExpression* left, KOBWBEquationType type,
                                         KOBWBExpression* right) {
    return AddEquation(right ? CreateSub(left, right) : left, type);
}

void KOBWBFactory::RemoveEquation(KOBWBEquation*& equation) {
    if (!equation) return;
    // Equations are listed in the order of their ids: the position is found by halving.
    const int position = EquationPosition(equation->GetId());
    if (position >= 0 && m_equations[position] == equation) {
        m_equations.RemovePosition(position);
        delete equation;
    }
    equation = nullptr;
}

void KOBWBFactory::RemoveEquations(int count, KOBWBEquation** equations) {
    if (count <= 0 || !equations) return;
    std::unordered_set<const KOBWBEquation*> removed;
    for (int i = 0; i < count; ++i) {
        KOBWBEquation* equation = equations[i];
        if (!equation) continue;
        const int position = EquationPosition(equation->GetId());
        if (position >= 0 && m_equations[position] == equation) removed.insert(equation);
        equations[i] = nullptr;
    }
    // One pass keeps the others in their order.
    int kept = 0;
    for (int i = 0; i < m_equations.Size(); ++i) {
        KOBWBEquation* equation = m_equations[i];
        if (removed.count(equation))
            delete equation;
        else
            m_equations[kept++] = equation;
    }
    m_equations.Size(kept);
}

int KOBWBFactory::EquationPosition(int id) const {
    int low = 0;
    int high = m_equations.Size() - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        const int middleId = m_equations[middle]->GetId();
        if (middleId == id) return middle;
        if (middleId < id)
            low = middle + 1;
        else
            high = middle - 1;
    }
    return -1;
}

KOBWBEquation* KOBWBFactory::GetEquationById(int id) const {
    const int position = EquationPosition(id);
    return position >= 0 ? m_equations[position] : nullptr;
}

KOBWBEquation* KOBWBFactory::GetEquationByName(const KOBLVRString& name) const {
    for (int i = 0; i < m_equations.Size(); ++i)
        if (m_equations[i]->GetName() == name) return m_equations[i];
    return nullptr;
}

KOBWBEquation* KOBWBFactory::GetFirstEquation() const {
    return m_equations.Size() > 0 ? m_equations[0] : nullptr;
}

KOBWBEquation* KOBWBFactory::GetLastEquation() const {
    return m_equations.Size() > 0 ? m_equations[m_equations.Size() - 1] : nullptr;
}

KOBWBEquation* KOBWBFactory::GetNextEquation(KOBWBEquation* equation) const {
    return equation ? equation->GetNext() : GetFirstEquation();
}

KOBWBEquation* KOBWBFactory::GetPrevEquation(KOBWBEquation* equation) const {
    return equation ? equation->GetPrev() : GetLastEquation();
}
