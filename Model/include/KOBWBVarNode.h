#ifndef KOBWBVarNode_h
#define KOBWBVarNode_h

#include "KOBWBNode.h"

// One occurrence of a variable name in the model text.
class KOBWBX_API KOBWBVarNode : public KOBWBNode {
public:
    static long New(const KOBWBLocation& location, const KOBLVRString& name, KOBWBVarNode*& out);

    bool IsConstant() const override { return false; }
    long Accept(KOBWBVisitor& visitor) override;

    const KOBLVRString& GetName() const { return m_name; }
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
    friend class KOBWBVariableIndex;

    KOBLVRString m_name;
    int m_nameIndex = -1;
};

#endif
