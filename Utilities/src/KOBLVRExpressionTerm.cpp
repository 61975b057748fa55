#include "KOBLVRExpressionTerm.h"

#include "KOBLVRStream.h"

#include <new>

KOBLVRExpressionTerm* KOBLVRExpressionTerm::Create(KOBLVRExpressionType type) {
    return new (std::nothrow) KOBLVRExpressionTerm(type);
}

KOBLVRExpressionTerm* KOBLVRExpressionTerm::Create(double number) {
    KOBLVRExpressionTerm* term = Create(KOBLVRTermNumber);
    if (term) term->m_number = number;
    return term;
}

KOBLVRExpressionTerm* KOBLVRExpressionTerm::Create(const KOBLVRString& name) {
    KOBLVRExpressionTerm* term = Create(KOBLVRTermName);
    if (term) term->m_name = name;
    return term;
}

void KOBLVRExpressionTerm::Destroy(KOBLVRExpressionTerm*& term) {
    delete term;
    term = nullptr;
}

KOBLVRExpressionTerm* KOBLVRExpressionTerm::GetChild(int i) const {
    return i >= 0 && i < GetNbOfChildren() ? m_children[i].get() : nullptr;
}

void KOBLVRExpressionTerm::AddChild(KOBLVRExpressionTerm* child) {
    if (child) m_children.emplace_back(child);
}

namespace {

const char* InfixSymbol(KOBLVRExpressionType type) {
    switch (type) {
    case KOBLVRTermSum: return " + ";
    case KOBLVRTermDifference: return " - ";
    case KOBLVRTermProduct: return " * ";
    case KOBLVRTermQuotient: return " / ";
    case KOBLVRTermPower: return "^";
    default: return nullptr;
    }
}

} // namespace

void KOBLVRExpressionTerm::Print(KOBLVRStream& stream, bool parenthesised) const {
    switch (m_type) {
    case KOBLVRTermNumber: stream << m_number; return;
    case KOBLVRTermName: stream << m_name; return;
    case KOBLVRTermOpposite:
        stream << "-(";
        if (!m_children.empty()) m_children[0]->Print(stream, parenthesised);
        stream << ")";
        return;
    case KOBLVRTermFunction:
        stream << m_name << "(";
        for (size_t i = 0; i < m_children.size(); ++i) {
            if (i > 0) stream << ", ";
            m_children[i]->Print(stream, parenthesised);
        }
        stream << ")";
        return;
    default: break;
    }
    if (parenthesised) stream << "(";
    for (size_t i = 0; i < m_children.size(); ++i) {
        if (i > 0) stream << InfixSymbol(m_type);
        m_children[i]->Print(stream, true);
    }
    if (parenthesised) stream << ")";
}
