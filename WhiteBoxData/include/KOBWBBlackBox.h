#ifndef KOBWBBlackBox_h
#define KOBWBBlackBox_h

#include "KOBLVRString.h"
#include "KOBWBDataLists.h"

class KOBWBBlackBoxOperator;
class KOBWBValue;

// A function supplied by the caller that the library can evaluate but not inspect.
// It reads its arguments through the children of the operator node that calls it.
class KOBWBX_API KOBWBBlackBox {
public:
    explicit KOBWBBlackBox(const KOBLVRString& name = KOBLVRString()) : m_name(name) {}
    KOBWBBlackBox(const KOBWBBlackBox& other) = default;
    KOBWBBlackBox& operator=(const KOBWBBlackBox& other) = default;
    // Clears the name and the operator.
    virtual ~KOBWBBlackBox();

    virtual void Eval(KOBWBValue& result) = 0;
    virtual double Eval() = 0;

    // The name; an unnamed black box is first named "BBx" followed by its
    // operator's id (or "BBx" alone without an operator).
    KOBLVRString GetName() const;
    void SetName(const KOBLVRString& name) { m_name = name; }
    KOBWBBlackBoxOperator* GetOperator() const { return m_operator; }
    void SetOperator(KOBWBBlackBoxOperator* node) { m_operator = node; }
    unsigned char IsADerivative() const { return m_isDerivative; }

protected:
    unsigned char m_isDerivative = 0;

private:
    KOBWBBlackBoxOperator* m_operator = nullptr;
    // Named on first request when no name was given.
    mutable KOBLVRString m_name;
};

// The default black box: evaluates to the real 0.
class KOBWBX_API KOBWBBBx : public KOBWBBlackBox {
public:
    void Eval(KOBWBValue& result) override;
    double Eval() override { return 0.0; }
};

#endif
