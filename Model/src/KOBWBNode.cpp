#include "KOBWBNode.h"

#include "KOBWBNodeWalk.h"
#include "KOBWBVarNode.h"

#include <string_view>
#include <unordered_set>
#include <utility>

namespace {

const KOBLVRString& NoneText() {
    static const KOBLVRString none("None");
    return none;
}

} // namespace

KOBWBNode::KOBWBNode(KOBWBNodeType type, const KOBWBLocation& location)
    : m_nodeType(type), m_location(location) {}

KOBWBNode::~KOBWBNode() = default;

void KOBWBNode::Free(KOBWBNode* node) { delete node; }

const KOBLVRString& KOBWBNode::GetUnit() const {
    return m_unit.IsEmpty() ? NoneText() : m_unit;
}

const KOBLVRString& KOBWBNode::GetUnitType() const {
    return m_unitClass.IsEmpty() ? NoneText() : m_unitClass;
}

void KOBWBNode::SetUnitData(const KOBWBLocation& unitLocation, const KOBLVRString& unit) {
    m_unitLocation = unitLocation;
    m_unit = unit;
}

void KOBWBNode::SetUnitClass(const KOBLVRString& unitClass) { m_unitClass = unitClass; }

void KOBWBNode::FillPresentVariables(KOBLVRListPKOBLVRString& names) {
    std::unordered_set<std::string_view> present;
    for (int i = 0; i < names.Size(); ++i)
        if (names[i]) present.insert(names[i]->str());
    KOBWBWalkSubtree(this, [&](KOBWBNode* node) {
        if (node->GetNodeType() != KOBWBVarNodeType) return;
        const KOBLVRString& name = static_cast<KOBWBVarNode*>(node)->GetName();
        if (present.insert(name.str()).second) names.Append(const_cast<KOBLVRString*>(&name));
    });
}

bool KOBWBNode::IsSameNode(const KOBWBNode& other) const {
    return m_nodeType == other.m_nodeType && m_unit == other.m_unit;
}

bool KOBWBNode::IsEqual(KOBWBNode* other) {
    if (!other) return false;
    // Pairs still to compare; iterative for the same reason as KOBWBWalkSubtree.
    std::vector<std::pair<KOBWBNode*, KOBWBNode*>> pending(1, {this, other});
    std::vector<KOBWBNode*> children;
    std::vector<KOBWBNode*> otherChildren;
    while (!pending.empty()) {
        const std::pair<KOBWBNode*, KOBWBNode*> pair = pending.back();
        pending.pop_back();
        if (pair.first == pair.second) continue;
        if (!pair.first->IsSameNode(*pair.second)) return false;
        children.clear();
        otherChildren.clear();
        KOBWBAppendChildren(pair.first, children);
        KOBWBAppendChildren(pair.second, otherChildren);
        if (children.size() != otherChildren.size()) return false;
        for (size_t i = 0; i < children.size(); ++i)
            pending.emplace_back(children[i], otherChildren[i]);
    }
    return true;
}
