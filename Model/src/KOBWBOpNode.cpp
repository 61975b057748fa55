#include "KOBWBOpNode.h"

#include "KOBWBModelStatus.h"
#include "KOBWBVisitor.h"

#include <new>

namespace {

bool IsOperatorCode(KOBWBExpressionType type) {
    return type >= KOBWBNotType && type <= KOBWBIntegrateType;
}

} // namespace

KOBWBOpNode::KOBWBOpNode(const KOBWBLocation& location, KOBWBExpressionType type,
                         KOBWBComparisonType comparison)
    : KOBWBNode(KOBWBOpNodeType, location), m_type(type), m_comparison(comparison) {}

long KOBWBOpNode::New(const KOBWBLocation& location, KOBWBExpressionType type,
                      KOBWBComparisonType comparison, const KOBLVRListPKOBWBNode& children,
                      KOBWBOpNode*& out) {
    out = nullptr;
    if (!IsOperatorCode(type)) return KOBWBModelFailure;
    for (int i = 0; i < children.Size(); ++i)
        if (!children[i]) return KOBWBModelFailure;
    out = new (std::nothrow) KOBWBOpNode(location, type, comparison);
    if (!out) return KOBWBModelFailure;
    out->m_children = children;
    return AdoptChildren(out, children.Size());
}

long KOBWBOpNode::New(const KOBWBLocation& location, KOBWBExpressionType type,
                      KOBWBComparisonType comparison, int count, KOBWBNode* const* children,
                      KOBWBOpNode*& out) {
    out = nullptr;
    if (!IsOperatorCode(type) || count < 0 || (count > 0 && !children)) return KOBWBModelFailure;
    for (int i = 0; i < count; ++i)
        if (!children[i]) return KOBWBModelFailure;
    out = new (std::nothrow) KOBWBOpNode(location, type, comparison);
    if (!out) return KOBWBModelFailure;
    if (out->m_children.Size(count))
        for (int i = 0; i < count; ++i) out->m_children[i] = children[i];
    return AdoptChildren(out, count);
}

long KOBWBOpNode::NewCall(const KOBWBLocation& location, KOBWBBlackBox* blackBox,
                          const KOBLVRString& name, const KOBLVRListPKOBWBNode& arguments,
                          KOBWBOpNode*& out) {
    if (New(location, KOBWBBlackBoxType, KOBWBNoComparison, arguments, out) != KOBWBModelOk)
        return KOBWBModelFailure;
    out->m_blackBox = blackBox;
    out->m_calledName = name;
    return KOBWBModelOk;
}

long KOBWBOpNode::AdoptChildren(KOBWBOpNode*& node, int count) {
    // The copy of the children may have failed for want of memory.
    if (node->m_children.Size() != count) {
        delete node;
        node = nullptr;
        return KOBWBModelFailure;
    }
    node->AdoptChildren();
    return KOBWBModelOk;
}

void KOBWBOpNode::AdoptChildren() {
    const int count = m_children.Size();
    m_constant = m_type != KOBWBBlackBoxType && count > 0;
    for (int i = 0; i < count; ++i) {
        m_children[i]->SetParentNode(this);
        m_children[i]->SetItsIndexAsChild(i);
        m_constant = m_constant && m_children[i]->IsConstant();
    }
}

KOBWBNode* KOBWBOpNode::GetChild(int i) const {
    return i >= 1 && i <= m_children.Size() ? m_children[i - 1] : nullptr;
}

bool KOBWBOpNode::IsSameNode(const KOBWBNode& other) const {
    if (!KOBWBNode::IsSameNode(other)) return false;
    const KOBWBOpNode& op = static_cast<const KOBWBOpNode&>(other);
    return m_type == op.m_type && m_comparison == op.m_comparison &&
           m_blackBox == op.m_blackBox && m_calledName == op.m_calledName;
}

long KOBWBOpNode::Accept(KOBWBVisitor& visitor) { return visitor.VisitOperator(*this); }
