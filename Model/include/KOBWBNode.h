#ifndef KOBWBNode_h
#define KOBWBNode_h

#include "KOBLVRListP.h"
#include "KOBLVRString.h"
#include "KOBWBLocation.h"
#include "KOBWBModelLists.h"
#include "KOBWBNodeType.h"

class KOBWBVisitor;

// A node of the model tree: where it was written, the unit written after it and
// the class of that unit ("None" for both until set), and its place under its
// parent (no parent for a term of an equation). The model that creates a node
// owns it; nodes are never shared between equations.
class KOBWBX_API KOBWBNode {
public:
    virtual ~KOBWBNode();
    KOBWBNode(const KOBWBNode&) = delete;
    KOBWBNode& operator=(const KOBWBNode&) = delete;

    // Appends the name of every variable below this node (this one included),
    // each name once. The strings belong to the variable nodes.
    virtual void FillPresentVariables(KOBLVRListPKOBLVRString& names);
    virtual bool IsConstant() const = 0;
    // Structural equality: same kinds, names, values, units and children.
    virtual bool IsEqual(KOBWBNode* other);
    // Calls the visitor's operation for the node's class and returns its result.
    virtual long Accept(KOBWBVisitor& visitor) = 0;

    KOBWBNodeType GetNodeType() const { return m_nodeType; }
    const KOBWBLocation& GetLocation() const { return m_location; }
    const KOBLVRString& GetUnit() const;
    // True once a unit has been set.
    bool HasUnit() const { return !m_unit.IsEmpty(); }
    const KOBLVRString& GetUnitType() const;
    const KOBWBLocation& GetUnitLocation() const { return m_unitLocation; }
    void SetUnitData(const KOBWBLocation& unitLocation, const KOBLVRString& unit);
    KOBWBNode* GetParentNode() const { return m_parent; }
    void SetParentNode(KOBWBNode* parent) { m_parent = parent; }
    int GetItsIndexAsChild() const { return m_indexAsChild; }
    void SetItsIndexAsChild(int index) { m_indexAsChild = index; }

    // Releases a node's storage (not that of its children).
    static void Free(KOBWBNode* node);

protected:
    KOBWBNode(KOBWBNodeType type, const KOBWBLocation& location);
    void SetUnitClass(const KOBLVRString& unitClass);
    // Equality of this node alone, children aside: the base compares the kind
    // and the unit text.
    virtual bool IsSameNode(const KOBWBNode& other) const;

private:
    friend class KOBWBNodeStore;

    KOBWBNodeType m_nodeType;
    KOBWBLocation m_location;
    // An empty text reads as "None": most nodes carry no unit, and this keeps
    // their construction free of string allocations.
    KOBLVRString m_unit;
    KOBLVRString m_unitClass;
    KOBWBLocation m_unitLocation;
    KOBWBNode* m_parent = nullptr;
    int m_indexAsChild = -1;
    // Position in the owning model's node store, -1 when not owned by a model.
    int m_storeSlot = -1;
};

#endif
