#ifndef KOBWBOpNode_h
#define KOBWBOpNode_h

#include "KOBWBComparisonType.h"
#include "KOBWBExpressionType.h"
#include "KOBWBNode.h"

// An operator or function of the model text with its children, numbered from 1.
// A comparison of a condition keeps its relation in the comparison type; a call
// of a black box keeps the black box, or only the called name when no black box
// of that name was known.
class KOBWBX_API KOBWBOpNode : public KOBWBNode {
public:
    // Fails on a code that is not an operator (below 3 or above 47) and on a null
    // child. Every child gets this node as parent and its 0-based index.
    static long New(const KOBWBLocation& location, KOBWBExpressionType type,
                    KOBWBComparisonType comparison, const KOBLVRListPKOBWBNode& children,
                    KOBWBOpNode*& out);
    // A call (code 44) of blackBox, or, when it is null, of the unknown name.
    // The same with the children given as an array of count nodes.
    static long New(const KOBWBLocation& location, KOBWBExpressionType type,
                    KOBWBComparisonType comparison, int count, KOBWBNode* const* children,
                    KOBWBOpNode*& out);
    static long NewCall(const KOBWBLocation& location, KOBWBBlackBox* blackBox,
                        const KOBLVRString& name, const KOBLVRListPKOBWBNode& arguments,
                        KOBWBOpNode*& out);

    // True when every child is constant; a call of a black box never is.
    bool IsConstant() const override { return m_constant; }
    long Accept(KOBWBVisitor& visitor) override;

    KOBWBExpressionType GetType() const { return m_type; }
    KOBWBComparisonType GetComparisonType() const { return m_comparison; }
    int GetNbOfChildren() const { return m_children.Size(); }
    // The i-th child, i from 1 to GetNbOfChildren(); null outside.
    KOBWBNode* GetChild(int i) const;
    KOBWBBlackBox* GetBlackBox() const { return m_blackBox; }
    // The name written in a call of a black box.
    const KOBLVRString& GetCalledName() const { return m_calledName; }

protected:
    bool IsSameNode(const KOBWBNode& other) const override;
    KOBWBOpNode(const KOBWBLocation& location, KOBWBExpressionType type,
                KOBWBComparisonType comparison);

private:
    // Ends a New: frees the node when its children could not all be stored,
    // otherwise makes it their parent.
    static long AdoptChildren(KOBWBOpNode*& node, int count);
    // Makes this node the parent of its children and decides IsConstant.
    void AdoptChildren();

    KOBWBExpressionType m_type;
    KOBWBComparisonType m_comparison;
    KOBLVRListPKOBWBNode m_children;
    KOBWBBlackBox* m_blackBox = nullptr;
    KOBLVRString m_calledName;
    bool m_constant = false;
};

#endif
