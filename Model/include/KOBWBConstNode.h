#ifndef KOBWBConstNode_h
#define KOBWBConstNode_h

#include "KOBWBNode.h"
#include "KOBWBValue.h"

// A number of the model text (an integer, a real or a multiple of Pi), with or
// without a unit. A unit's class is decided from its text when the node is built.
class KOBWBX_API KOBWBConstNode : public KOBWBNode {
public:
    static long New(const KOBWBLocation& location, const KOBWBValue& value, KOBWBConstNode*& out);
    static long New(const KOBWBLocation& location, const KOBWBValue& value,
                    const KOBWBLocation& unitLocation, const KOBLVRString& unit,
                    KOBWBConstNode*& out);

    bool IsConstant() const override { return true; }
    long Accept(KOBWBVisitor& visitor) override;

    const KOBWBValue& GetValue() const { return m_value; }
    // True when the constant was written with a unit.
    bool IsADimensionalConstant() const { return m_dimensional; }
    // True for Pi alone: the fraction 1/1 of Pi.
    bool IsPi() const;

protected:
    bool IsSameNode(const KOBWBNode& other) const override;
    KOBWBConstNode(const KOBWBLocation& location, const KOBWBValue& value);

private:
    KOBWBValue m_value;
    bool m_dimensional = false;
};

#endif
