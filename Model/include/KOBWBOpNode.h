#ifndef KOBWBOpNode_h
#define KOBWBOpNode_h

#include "KOBWBComparisonType.h"
#include "KOBWBExpressionType.h"
#include "KOBWBNode.h"

#include <memory>

// An operator or function of the model text with its children, numbered from 1.
// A comparison of a condition keeps its relation in the comparison type; a call
// of a black box keeps the black box, or only the called name when no black box
// of that name was known.
class KOBWBX_API KOBWBOpNode : public KOBWBNode {
public:
    // Fails on a code that is not an operator (below 3 or above 47) and on a null
    // child. Every child gets this node as parent and its 0-based index.
    // memory: room for the node from its owner, or null for the heap.
    static long New(const KOBWBLocation& location, KOBWBExpressionType type,
                    KOBWBComparisonType comparison, const KOBLVRListPKOBWBNode& children,
                    KOBWBOpNode*& out, void* memory = nullptr);
    // The same with the children given as an array of count nodes.
    static long New(const KOBWBLocation& location, KOBWBExpressionType type,
                    KOBWBComparisonType comparison, int count, KOBWBNode* const* children,
                    KOBWBOpNode*& out, void* memory = nullptr);
    // A call (code 44) of blackBox, or, when it is null, of the unknown name.
    static long NewCall(const KOBWBLocation& location, KOBWBBlackBox* blackBox,
                        const KOBLVRString& name, const KOBLVRListPKOBWBNode& arguments,
                        KOBWBOpNode*& out, void* memory = nullptr);

    // True when every child is constant; a call of a black box never is.
    bool IsConstant() const override { return m_constant; }
    long Accept(KOBWBVisitor& visitor) override;

    KOBWBExpressionType GetType() const { return m_type; }
    KOBWBComparisonType GetComparisonType() const { return m_comparison; }
    int GetNbOfChildren() const { return m_nbOfChildren; }
    // The i-th child, i from 1 to GetNbOfChildren(); null outside.
    KOBWBNode* GetChild(int i) const {
        if (i < 1 || i > m_nbOfChildren) return nullptr;
        return m_nbOfChildren <= nbOfInlineChildren ? m_inlineChildren[i - 1]
                                                    : m_manyChildren[i - 1];
    }
    KOBWBBlackBox* GetBlackBox() const { return m_blackBox; }
    // The name written in a call of a black box; empty for other operators.
    const KOBLVRString& GetCalledName() const;

protected:
    bool IsSameNode(const KOBWBNode& other) const override;
    KOBWBOpNode(const KOBWBLocation& location, KOBWBExpressionType type,
                KOBWBComparisonType comparison);

private:
    friend class KOBWBNode;

    // Copies count valid children, makes this node their parent and decides
    // IsConstant; false when they cannot be stored.
    bool AdoptChildren(int count, KOBWBNode* const* children);

    // Up to three children (every operator but a long call, min or max) are
    // kept in the node itself.
    static constexpr int nbOfInlineChildren = 3;

    KOBWBExpressionType m_type;
    KOBWBComparisonType m_comparison;
    int m_nbOfChildren = 0;
    bool m_constant = false;
    KOBWBNode* m_inlineChildren[nbOfInlineChildren] = {};
    std::unique_ptr<KOBWBNode*[]> m_manyChildren;
    KOBWBBlackBox* m_blackBox = nullptr;
    std::unique_ptr<KOBLVRString> m_calledName;
};

#endif
