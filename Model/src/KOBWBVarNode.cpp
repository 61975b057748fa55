#include "KOBWBVarNode.h"

#include "KOBWBModelStatus.h"
#include "KOBWBVisitor.h"

#include <new>

KOBWBVarNode::KOBWBVarNode(const KOBWBLocation& location, const KOBLVRString& name)
    : KOBWBNode(KOBWBVarNodeType, location), m_ownName(new (std::nothrow) KOBLVRString(name)) {
    m_name = m_ownName.get();
}

KOBWBVarNode::KOBWBVarNode(const KOBWBLocation& location, const KOBLVRString* sharedName,
                           int nameIndex)
    : KOBWBNode(KOBWBVarNodeType, location), m_name(sharedName), m_nameIndex(nameIndex) {}

long KOBWBVarNode::New(const KOBWBLocation& location, const KOBLVRString& name, KOBWBVarNode*& out,
                       void* memory) {
    out = name.IsEmpty() ? nullptr : Place<KOBWBVarNode>(memory, location, name);
    if (out && !out->m_name) {
        Free(out);
        out = nullptr;
    }
    return out ? KOBWBModelOk : KOBWBModelFailure;
}

bool KOBWBVarNode::IsSameNode(const KOBWBNode& other) const {
    return KOBWBNode::IsSameNode(other) &&
           *m_name == *static_cast<const KOBWBVarNode&>(other).m_name;
}

long KOBWBVarNode::Accept(KOBWBVisitor& visitor) {
    return visitor.VisitVariable(*this);
}
