#include "KOBWBVarNode.h"

#include "KOBWBModelStatus.h"
#include "KOBWBVisitor.h"

#include <new>

KOBWBVarNode::KOBWBVarNode(const KOBWBLocation& location, const KOBLVRString& name)
    : KOBWBNode(KOBWBVarNodeType, location), m_name(name) {}

long KOBWBVarNode::New(const KOBWBLocation& location, const KOBLVRString& name,
                       KOBWBVarNode*& out) {
    out = name.IsEmpty() ? nullptr : new (std::nothrow) KOBWBVarNode(location, name);
    return out ? KOBWBModelOk : KOBWBModelFailure;
}

bool KOBWBVarNode::IsSameNode(const KOBWBNode& other) const {
    return KOBWBNode::IsSameNode(other) &&
           m_name == static_cast<const KOBWBVarNode&>(other).m_name;
}

long KOBWBVarNode::Accept(KOBWBVisitor& visitor) { return visitor.VisitVariable(*this); }
