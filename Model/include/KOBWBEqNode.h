#ifndef KOBWBEqNode_h
#define KOBWBEqNode_h

#include "KOBWBEquationType.h"
#include "KOBWBNode.h"

// An equation of the model: a left term, a relation and a right term (absent for
// an equation written as a single expression), linked to the model's previous
// and next equations.
class KOBWBX_API KOBWBEqNode : public KOBWBNode {
public:
    // Fails without a left term. memory: room for the node from its owner, or
    // null for the heap.
    static long New(const KOBWBLocation& location, KOBWBNode* left, KOBWBEquationType type,
                    KOBWBNode* right, int id, KOBWBEqNode*& out, void* memory = nullptr);

    // True when both terms are constant (a missing term counts as constant).
    bool IsConstant() const override;
    long Accept(KOBWBVisitor& visitor) override;

    int GetId() const { return m_id; }
    KOBWBEquationType GetWBEqType() const { return m_type; }
    KOBWBNode* GetLeftTerm() const { return m_left; }
    KOBWBNode* GetRightTerm() const { return m_right; }
    KOBWBEqNode* GetNext() const { return m_next; }
    KOBWBEqNode* GetPrev() const { return m_prev; }
    void SetNext(KOBWBEqNode* next) { m_next = next; }
    void SetPrev(KOBWBEqNode* prev) { m_prev = prev; }

protected:
    bool IsSameNode(const KOBWBNode& other) const override;
    KOBWBEqNode(const KOBWBLocation& location, KOBWBNode* left, KOBWBEquationType type,
                KOBWBNode* right, int id);

private:
    friend class KOBWBNode;

    int m_id;
    KOBWBEquationType m_type;
    KOBWBNode* m_left;
    KOBWBNode* m_right;
    KOBWBEqNode* m_next = nullptr;
    KOBWBEqNode* m_prev = nullptr;
};

#endif
