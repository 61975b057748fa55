#ifndef KOBWBConstNode_h
#define KOBWBConstNode_h

#include "KOBWBNode.h"
#include "KOBWBValue.h"

#include <memory>

// A number of the model text (an integer, a real or a multiple of Pi), with or
// without a unit. A unit's class is decided from its text when the node is built.
class KOBWBX_API KOBWBConstNode : public KOBWBNode {
public:
    // memory: room for the node from its owner, or null for the heap.
    static long New(const KOBWBLocation& location, const KOBWBValue& value, KOBWBConstNode*& out,
                    void* memory = nullptr);
    static long New(const KOBWBLocation& location, const KOBWBValue& value,
                    const KOBWBLocation& unitLocation, const KOBLVRString& unit,
                    KOBWBConstNode*& out, void* memory = nullptr);

    bool IsConstant() const override { return true; }
    long Accept(KOBWBVisitor& visitor) override;

    KOBWBValue GetValue() const;
    // True when the constant was written with a unit.
    bool IsADimensionalConstant() const { return m_dimensional; }
    // True for Pi alone: the fraction 1/1 of Pi.
    bool IsPi() const;

protected:
    bool IsSameNode(const KOBWBNode& other) const override;
    KOBWBConstNode(const KOBWBLocation& location, const KOBWBValue& value);

private:
    friend class KOBWBNode;
    friend class KOBWBModel;

    // New with a unit, its data built in unitRoom (room for a KOBWBNodeUnit from
    // the node's owner, next to the node) rather than on the heap.
    static long New(const KOBWBLocation& location, const KOBWBValue& value,
                    const KOBWBLocation& unitLocation, const KOBLVRString& unit,
                    KOBWBConstNode*& out, void* memory, void* unitRoom);

    // The kinds the model language writes are kept in the node; any other
    // value is held on the heap.
    enum class Stored : unsigned char { Integer, Real, Fraction, Other };

    Stored m_stored = Stored::Other;
    bool m_dimensional = false;
    union {
        int integer;
        double real;
        KOBWBFraction fraction;
    } m_number;
    std::unique_ptr<KOBWBValue> m_other;
};

#endif
