#ifndef KOBWBConstant_h
#define KOBWBConstant_h

#include "KOBWBExpression.h"

// A leaf holding a value.
class KOBWBX_API KOBWBConstant : public KOBWBExpression {
public:
    ~KOBWBConstant() override;

    unsigned char IsEqualTo(const KOBWBExpression* other) const override;
    int GetNbOfChildren() const override { return 0; }
    KOBWBExpression* GetChild(int) override { return nullptr; }
    const KOBWBExpression* GetChild(int) const override { return nullptr; }
    unsigned char ReplaceChild(int, KOBWBExpression*) override { return 0; }
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;
    KOBWBExpression* IntegrateTable(KOBWBVariable* v, unsigned char& integrable) override;
    unsigned char IsFree(KOBWBVariable*) const override { return 1; }
    void FillPresentVariables(unsigned char*) const override {}
    const KOBWBValue& GetExprValue() const override { return m_value; }

    // Stores the value, then resets the buffers of node's subgraph (all buffers
    // when node is null).
    void SetValue(const KOBWBValue& value, KOBWBExpression* node);
    // isZero when the value equals 0.0; otherwise isOne when it equals 1.0.
    void IsZeroOrOne(unsigned char& isZero, unsigned char& isOne) const;

protected:
    friend class KOBWBFactory;
    KOBWBConstant(KOBWBFactory& factory, const KOBWBValue& value,
                  KOBWBExpressionType type = KOBWBConstantType);

    void DoEval(KOBWBValue& result) override { result = m_value; }

private:
    KOBWBValue m_value;
};

#endif
