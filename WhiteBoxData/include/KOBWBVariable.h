#ifndef KOBWBVariable_h
#define KOBWBVariable_h

#include "KOBLVRString.h"
#include "KOBWBConstant.h"

// A variable: a leaf whose value is its current domain, with its index in the
// factory's variable list and an optional user name.
class KOBWBX_API KOBWBVariable : public KOBWBConstant {
public:
    ~KOBWBVariable() override;

    unsigned char IsEqualTo(const KOBWBExpression* other) const override;
    KOBWBExpression* Differentiate(KOBWBVariable* v) override;
    unsigned char IsFree(KOBWBVariable* v) const override { return v != this; }
    void FillPresentVariables(unsigned char* mask) const override;
    // Stores the value and resets every buffer of the factory.
    void SetExprValue(const KOBWBValue& value) override;

    int GetIdx() const { return m_index; }
    // The name; an unnamed variable is first named "va" followed by its index.
    const KOBLVRString& GetName();
    void SetName(const KOBLVRString& name);
    // Holds the variable at its value; a change of the flag resets every buffer.
    void Fix(unsigned char fixed);
    unsigned char IsFixed() const { return m_fixed; }
    void SetPreferedValue(double value);
    // 1 and the value when one was set, else 0 and value untouched.
    unsigned char GetPreferedValue(double& value) const;
    int GetDividedFlag() const { return m_dividedFlag; }
    void SetDividedFlag(int flag) { m_dividedFlag = flag; }

    // A stand-in that carries only a name, for searching the variables by name.
    KOBWBVariable(KOBWBFactory& factory, const KOBLVRString& name);

protected:
    friend class KOBWBFactory;
    KOBWBVariable(KOBWBFactory& factory, int index);

private:
    int m_index;
    double m_preferedValue = 0.0;
    unsigned char m_hasPreferedValue = 0;
    unsigned char m_fixed = 0;
    int m_dividedFlag = 1;
    KOBLVRString m_name;
};

#endif
