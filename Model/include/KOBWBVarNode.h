#ifndef KOBWBVarNode_h
#define KOBWBVarNode_h

#include "KOBWBNode.h"

#include <memory>

// One occurrence of a variable name in the model text.
class KOBWBX_API KOBWBVarNode : public KOBWBNode {
public:
    // memory: room for the node from its owner, or null for the heap.
    static long New(const KOBWBLocation& location, const KOBLVRString& name, KOBWBVarNode*& out,
                    void* memory = nullptr);

    bool IsConstant() const override { return false; }
    long Accept(KOBWBVisitor& visitor) override;

    const KOBLVRString& GetName() const { return *m_name; }
    // The unit class of the occurrence ("Distance", "Angle", ...), set by the
    // model check from what the equations say about the variable.
    void SetUnitType(const KOBLVRString& unitClass) { SetUnitClass(unitClass); }
    // The number shared by the occurrences of this name in the owning model (0,
    // 1, ... in order of first appearance); -1 outside a model.
    int GetNameIndex() const { return m_nameIndex; }

protected:
    bool IsSameNode(const KOBWBNode& other) const override;
    KOBWBVarNode(const KOBWBLocation& location, const KOBLVRString& name);

private:
    friend class KOBWBNode;
    friend class KOBWBVariableIndex;

    // An occurrence whose name text is shared with the other occurrences.
    KOBWBVarNode(const KOBWBLocation& location, const KOBLVRString* sharedName, int nameIndex);

    // Points at the name text its model shares between the occurrences (one
    // copy a name, however many occurrences), or at m_ownName.
    const KOBLVRString* m_name;
    std::unique_ptr<KOBLVRString> m_ownName;
    int m_nameIndex = -1;
    // Position among the occurrences of its model, -1 outside a model.
    int m_occurrenceSlot = -1;
};

#endif
