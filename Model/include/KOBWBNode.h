#ifndef KOBWBNode_h
#define KOBWBNode_h

#include "KOBLVRListP.h"
#include "KOBLVRString.h"
#include "KOBWBLocation.h"
#include "KOBWBModelLists.h"
#include "KOBWBNodeType.h"

#include <new>

class KOBWBVisitor;
struct KOBWBNodeUnit;

// A node of the model tree: where it was written, the unit written after it and
// the class of that unit ("None" for both until set), and its place under its
// parent (no parent for a term of an equation). The model that creates a node
// owns it; nodes are never shared between equations.
//
// The New functions of the node classes build a node in the memory they are
// given (its owner's), or on the heap when given none; Free releases either.
class KOBWBX_API KOBWBNode {
public:
    virtual ~KOBWBNode();
    KOBWBNode(const KOBWBNode&) = delete;
    KOBWBNode& operator=(const KOBWBNode&) = delete;

    // Appends the name of every variable below this node (this one included),
    // each name once. The strings belong to the nodes' model (or to a node
    // built outside a model).
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
    bool HasUnit() const { return m_hasUnit; }
    const KOBLVRString& GetUnitType() const;
    const KOBWBLocation& GetUnitLocation() const;
    void SetUnitData(const KOBWBLocation& unitLocation, const KOBLVRString& unit);
    KOBWBNode* GetParentNode() const { return m_parent; }
    void SetParentNode(KOBWBNode* parent) { m_parent = parent; }
    int GetItsIndexAsChild() const { return m_indexAsChild; }
    void SetItsIndexAsChild(int index) { m_indexAsChild = index; }

    // Releases a node built by New outside a model (not its children): destroys
    // it, and frees its memory when New took it from the heap. A model releases
    // its own nodes; giving one here is refused with an assertion.
    static void Free(KOBWBNode* node);

protected:
    KOBWBNode(KOBWBNodeType type, const KOBWBLocation& location);
    void SetUnitClass(const char* unitClass);
    void SetUnitClass(const KOBLVRString& unitClass);
    // Equality of this node alone, children aside: the base compares the kind
    // and the unit text.
    virtual bool IsSameNode(const KOBWBNode& other) const;
    // SetUnitData with the unit's data built in room (from the node's owner, room
    // for a KOBWBNodeUnit) rather than on the heap when the node has none yet.
    void SetUnitData(const KOBWBLocation& unitLocation, const KOBLVRString& unit, void* room);
    // Builds T with the arguments in memory, or on the heap when memory is
    // null; null when the heap refuses.
    template <class T, class... Arguments> static T* Place(void* memory, Arguments&&... arguments);

private:
    friend class KOBWBNodeStore;

    // The unit data, built in room when given, else on the heap.
    KOBWBNodeUnit& GetOrMakeUnit(void* room = nullptr);
    // Destroys the node and frees its memory if it holds its own.
    static void Release(KOBWBNode* node);

    KOBWBNodeType m_nodeType;
    int m_indexAsChild = -1;
    // The unit class, null for "None"; known classes point at texts shared by
    // all nodes, so classifying a node allocates nothing. Near the start of the
    // node, which the model check's writes of variable classes ask for.
    const KOBLVRString* m_unitClass = nullptr;
    KOBWBLocation m_location;
    // The unit text and location, and texts the node holds itself; made only
    // for the few nodes that carry a unit or an unusual class, on the heap or
    // in room its owner gave.
    KOBWBNodeUnit* m_unit = nullptr;
    KOBWBNode* m_parent = nullptr;
    // Position in the owning model's node store, -1 when not owned by a model.
    int m_storeSlot = -1;
    bool m_onHeap = false;
    bool m_hasUnit = false;
    bool m_unitOnHeap = false;
};

template <class T, class... Arguments> T* KOBWBNode::Place(void* memory, Arguments&&... arguments) {
    void* room = memory ? memory : ::operator new(sizeof(T), std::nothrow);
    if (!room) return nullptr;
    T* node = new (room) T(static_cast<Arguments&&>(arguments)...);
    static_cast<KOBWBNode*>(node)->m_onHeap = memory == nullptr;
    return node;
}

#endif
