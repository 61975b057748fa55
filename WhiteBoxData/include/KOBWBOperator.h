#ifndef KOBWBOperator_h
#define KOBWBOperator_h

#include "KOBWBDataLists.h"
#include "KOBWBExpression.h"

#include <initializer_list>

// An inner node: an ordered list of children, which the factory owns and which may
// be shared by several parents.
class KOBWBX_API KOBWBOperator : public KOBWBExpression {
public:
    ~KOBWBOperator() override;

    // Same code and children equal one by one; sums, products, minima and maxima
    // match their children in any order (greedily).
    unsigned char IsEqualTo(const KOBWBExpression* other) const override;
    int GetNbOfChildren() const override { return m_children.Size(); }
    KOBWBExpression* GetChild(int i) override;
    const KOBWBExpression* GetChild(int i) const override;
    // 0 and nothing changed for an index outside [0, count) or a null child.
    unsigned char ReplaceChild(int i, KOBWBExpression* child) override;
    KOBWBExpression* IntegrateTable(KOBWBVariable* v, unsigned char& integrable) override;
    unsigned char IsFree(KOBWBVariable* v) const override;
    void FillPresentVariables(unsigned char* mask) const override;
    void ResetBuffer(unsigned char recursive) override;

protected:
    KOBWBOperator(KOBWBFactory& factory, KOBWBExpressionType type, int n, KOBWBExpression** children);
    KOBWBOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                  std::initializer_list<KOBWBExpression*> children);

    KOBLVRListPKOBWBExpression m_children;
};

#endif
