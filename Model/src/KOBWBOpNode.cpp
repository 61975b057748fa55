#include "KOBWBOpNode.h"

#include "KOBWBModelStatus.h"
#include "KOBWBVisitor.h"

#include <new>
#include <vector>

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
                      KOBWBOpNode*& out, void* memory) {
    // Most operators have few children: a list of them costs no allocation.
    KOBWBNode* few[8];
    std::vector<KOBWBNode*> many;
    KOBWBNode** array = few;
    if (children.Size() > 8) {
        many.resize(static_cast<size_t>(children.Size()));
        array = many.data();
    }
    for (int i = 0; i < children.Size(); ++i)
        array[i] = children[i];
    return New(location, type, comparison, children.Size(), array, out, memory);
}

long KOBWBOpNode::New(const KOBWBLocation& location, KOBWBExpressionType type,
                      KOBWBComparisonType comparison, int count, KOBWBNode* const* children,
                      KOBWBOpNode*& out, void* memory) {
    out = nullptr;
    if (!IsOperatorCode(type) || count < 0 || (count > 0 && !children)) return KOBWBModelFailure;
    for (int i = 0; i < count; ++i)
        if (!children[i]) return KOBWBModelFailure;
    out = Place<KOBWBOpNode>(memory, location, type, comparison);
    if (out && !out->AdoptChildren(count, children)) {
        Free(out);
        out = nullptr;
    }
    return out ? KOBWBModelOk : KOBWBModelFailure;
}

long KOBWBOpNode::NewCall(const KOBWBLocation& location, KOBWBBlackBox* blackBox,
                          const KOBLVRString& name, const KOBLVRListPKOBWBNode& arguments,
                          KOBWBOpNode*& out, void* memory) {
    if (New(location, KOBWBBlackBoxType, KOBWBNoComparison, arguments, out, memory) != KOBWBModelOk)
        return KOBWBModelFailure;
    out->m_blackBox = blackBox;
    out->m_calledName.reset(new (std::nothrow) KOBLVRString(name));
    return KOBWBModelOk;
}

bool KOBWBOpNode::AdoptChildren(int count, KOBWBNode* const* children) {
    KOBWBNode** stored = m_inlineChildren;
    if (count > nbOfInlineChildren) {
        m_manyChildren.reset(new (std::nothrow) KOBWBNode*[count]);
        if (!m_manyChildren) return false;
        stored = m_manyChildren.get();
    }
    m_nbOfChildren = count;
    m_constant = m_type != KOBWBBlackBoxType && count > 0;
    for (int i = 0; i < count; ++i) {
        stored[i] = children[i];
        children[i]->SetParentNode(this);
        children[i]->SetItsIndexAsChild(i);
        m_constant = m_constant && children[i]->IsConstant();
    }
    return true;
}

const KOBLVRString& KOBWBOpNode::GetCalledName() const {
    static const KOBLVRString none;
    return m_calledName ? *m_calledName : none;
}

bool KOBWBOpNode::IsSameNode(const KOBWBNode& other) const {
    if (!KOBWBNode::IsSameNode(other)) return false;
    const KOBWBOpNode& op = static_cast<const KOBWBOpNode&>(other);
    return m_type == op.m_type && m_comparison == op.m_comparison && m_blackBox == op.m_blackBox &&
           GetCalledName() == op.GetCalledName();
}

long KOBWBOpNode::Accept(KOBWBVisitor& visitor) {
    return visitor.VisitOperator(*this);
}
