#include "KOBWBNode.h"

#include "KOBLVRAssert.h"
#include "KOBWBNodeUnit.h"
#include "KOBWBNodeWalk.h"
#include "KOBWBUnitTable.h"
#include "KOBWBVarNode.h"

#include <memory>
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

KOBWBNode::~KOBWBNode() {
    if (m_unitOnHeap)
        delete m_unit;
    else if (m_unit)
        m_unit->~KOBWBNodeUnit();
}

void KOBWBNode::Free(KOBWBNode* node) {
    if (!node) return;
    if (node->m_storeSlot >= 0) {
        KOBLVRAssertError("node->m_storeSlot < 0", "Model/src/KOBWBNode", __LINE__);
        return;
    }
    Release(node);
}

void KOBWBNode::Release(KOBWBNode* node) {
    if (node->m_onHeap)
        delete node;
    else
        node->~KOBWBNode();
}

KOBWBNodeUnit& KOBWBNode::GetOrMakeUnit(void* room) {
    if (!m_unit) {
        m_unit = room ? new (room) KOBWBNodeUnit : new KOBWBNodeUnit;
        m_unitOnHeap = !room;
    }
    return *m_unit;
}

const KOBLVRString& KOBWBNode::GetUnit() const {
    return m_unit && m_unit->text ? *m_unit->text : NoneText();
}

const KOBLVRString& KOBWBNode::GetUnitType() const {
    return m_unitClass ? *m_unitClass : NoneText();
}

const KOBWBLocation& KOBWBNode::GetUnitLocation() const {
    static const KOBWBLocation nowhere;
    return m_unit ? m_unit->location : nowhere;
}

void KOBWBNode::SetUnitData(const KOBWBLocation& unitLocation, const KOBLVRString& unit) {
    SetUnitData(unitLocation, unit, nullptr);
}

void KOBWBNode::SetUnitData(const KOBWBLocation& unitLocation, const KOBLVRString& unit,
                            void* room) {
    KOBWBNodeUnit& data = GetOrMakeUnit(room);
    data.location = unitLocation;
    data.text = unit.IsEmpty() ? nullptr : KOBWBSharedUnitText(unit.str());
    if (!data.text && !unit.IsEmpty()) {
        if (data.ownText)
            *data.ownText = unit;
        else
            data.ownText = std::make_unique<KOBLVRString>(unit);
        data.text = data.ownText.get();
    }
    m_hasUnit = data.text != nullptr;
}

void KOBWBNode::SetUnitClass(const KOBLVRString& unitClass) {
    // The classes the model check gives are shared texts already.
    if (KOBWBIsSharedUnitText(&unitClass))
        m_unitClass = &unitClass;
    else
        SetUnitClass(unitClass.str());
}

void KOBWBNode::SetUnitClass(const char* unitClass) {
    const bool none = !unitClass || !unitClass[0];
    m_unitClass = none ? nullptr : KOBWBSharedUnitText(unitClass);
    if (!m_unitClass && !none) {
        KOBWBNodeUnit& data = GetOrMakeUnit();
        if (data.ownClass)
            *data.ownClass = unitClass;
        else
            data.ownClass = std::make_unique<KOBLVRString>(unitClass);
        m_unitClass = data.ownClass.get();
    }
}

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
    return m_nodeType == other.m_nodeType && GetUnit() == other.GetUnit();
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
