#ifndef KOBWBBlackBoxOperator_h
#define KOBWBBlackBoxOperator_h

#include "KOBLVRString.h"
#include "KOBWBOperator.h"

class KOBWBBlackBox;

// A node that calls a black box; its children are the black box's arguments.
// The black box is not owned by the node.
class KOBWBX_API KOBWBBlackBoxOperator : public KOBWBOperator {
public:
    KOBWBBlackBoxOperator(KOBWBFactory& factory, int n, KOBWBExpression** children,
                          KOBWBBlackBox& blackBox, int id);

    KOBWBBlackBox* GetBlackBox() const { return m_blackBox; }
    KOBLVRString GetBlackBoxName() const;
    int GetId() const { return m_id; }
    // Defined only by variables passed directly as arguments: a numeric derivative
    // black box, shared by every node of the same black box and variable.
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;

protected:
    void DoEval(KOBWBValue& result) override;
    double DoEval() override;

private:
    KOBWBBlackBox* m_blackBox;
    int m_id;
};

#endif
