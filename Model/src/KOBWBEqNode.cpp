#include "KOBWBEqNode.h"

#include "KOBWBModelStatus.h"
#include "KOBWBVisitor.h"

#include <new>

KOBWBEqNode::KOBWBEqNode(const KOBWBLocation& location, KOBWBNode* left, KOBWBEquationType type,
                         KOBWBNode* right, int id)
    : KOBWBNode(KOBWBEqNodeType, location), m_id(id), m_type(type), m_left(left), m_right(right) {}

long KOBWBEqNode::New(const KOBWBLocation& location, KOBWBNode* left, KOBWBEquationType type,
                      KOBWBNode* right, int id, KOBWBEqNode*& out, void* memory) {
    out = left ? Place<KOBWBEqNode>(memory, location, left, type, right, id) : nullptr;
    return out ? KOBWBModelOk : KOBWBModelFailure;
}

bool KOBWBEqNode::IsConstant() const {
    return m_left->IsConstant() && (!m_right || m_right->IsConstant());
}

bool KOBWBEqNode::IsSameNode(const KOBWBNode& other) const {
    return KOBWBNode::IsSameNode(other) && m_type == static_cast<const KOBWBEqNode&>(other).m_type;
}

long KOBWBEqNode::Accept(KOBWBVisitor& visitor) {
    return visitor.VisitEquation(*this);
}
