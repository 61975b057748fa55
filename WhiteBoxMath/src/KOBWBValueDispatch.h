#ifndef KOBWBValueDispatch_h
#define KOBWBValueDispatch_h

#include "KOBWBOperationTable.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// The value level of every forward function: one dispatch on the kinds of the
// arguments, driven by the function's row of the operation table.
//
// Undefined and Boolean arguments set bit 2 and give the RealInterval value
// KOBWBReal_Nil ("Contr" for comparisons). Integer kinds use the function's integer
// form when it has one. A single number that stands for any gives the interval of the
// function's range; other single numbers give a single number, or the interval when the
// image is wider than a point. Intervals give intervals. An enumeration held as a list
// is mapped element by element (all pairs for two lists, a single number counting as a
// one-element list), an image wider than a point turning the result into the interval of
// the hull; an enumeration not held as a list goes through its hull. Enumeration
// results are normalised with Correct.
namespace kobwb {

KOBWBValue ApplyUnary(const KOBWBEnvironment& environment, Unary code, const KOBWBValue& x,
                      const UnaryArguments& arguments = {});

// Two exact numbers of which one is a fraction are combined exactly first when the
// function has a fraction rule and the result fits.
KOBWBValue ApplyBinary(const KOBWBEnvironment& environment, Binary code, const KOBWBValue& a,
                       const KOBWBValue& b, const KOBWBRealInterval* hint = nullptr);

KOBWBValue ApplyComparison(const KOBWBEnvironment& environment, Comparison code,
                           const KOBWBValue& a, const KOBWBValue& b);

// A value as the interval forms read it: a RealInterval, a single Integer or Real read
// as the real interval the generic dispatch gives it, or another kind, which only a
// power's integral exponent lets through. Evaluation keeps the operands of nodes in
// this form, so that it can run the interval forms without whole values.
struct RealOperand {
    enum class Kind : unsigned char { Other, Interval, Single };

    KOBWBRealInterval interval = {0.0, 0.0};
    Kind kind = Kind::Other;
    // Whether the value is a single number with an integral value, which a power
    // takes as an integer exponent.
    bool integral = false;
    int exponent = 0;
};

// The operand of a value that is not a RealInterval.
void ReadOtherRealOperand(const KOBWBValue& v, RealOperand& operand);
// Writes every field of operand in place, which a caller storing operands side by
// side prefers to a copy.
inline void ReadRealOperand(const KOBWBValue& v, RealOperand& operand) {
    if (const KOBWBRealInterval* real = v.GetRealIntervalPayload()) {
        operand.interval = *real;
        operand.kind = RealOperand::Kind::Interval;
        operand.integral = false;
        operand.exponent = 0;
        return;
    }
    ReadOtherRealOperand(v, operand);
}
inline RealOperand ReadRealOperand(const KOBWBValue& v) {
    RealOperand operand;
    ReadRealOperand(v, operand);
    return operand;
}

// The interval forms of the dispatch, for callers that keep their results in place:
// when the value level would apply the function's real interval form to the operands
// read as real intervals and give that interval as a RealInterval value, they store
// the interval in image and answer true; otherwise they answer false and do nothing.
// A binary function takes this way when one operand is a RealInterval and the other a
// RealInterval or a single Integer or Real; a unary function when its operand is a
// RealInterval. ApplyBinary and ApplyUnary go through them first, so both ways give
// the same interval and the same error bits.
bool BinaryOnRealIntervals(const KOBWBEnvironment& environment, Binary code, const KOBWBValue& a,
                           const KOBWBValue& b, const KOBWBRealInterval* hint,
                           KOBWBRealInterval& image);
bool UnaryOnRealInterval(const KOBWBEnvironment& environment, Unary code, const KOBWBValue& x,
                         const UnaryArguments& arguments, KOBWBRealInterval& image);
// The same forms on operands already read, given the function's row. A RealInterval
// is neither an exact number nor of an integer kind nor an enumeration, so with one of
// them and a single number or a RealInterval the generic dispatch applies the real
// form to both operands read as intervals.
inline bool BinaryOnRealOperands(const KOBWBEnvironment& environment, const BinaryOperation& operation,
                                 const RealOperand& a, const RealOperand& b, const KOBWBRealInterval* hint,
                                 KOBWBRealInterval& image) {
    using Kind = RealOperand::Kind;
    if (a.kind == Kind::Other || b.kind == Kind::Other || (a.kind == Kind::Single && b.kind == Kind::Single))
        return false;
    image = operation.real(environment, a.interval, b.interval, hint);
    return true;
}
inline bool UnaryOnRealOperand(const KOBWBEnvironment& environment, const UnaryOperation& operation,
                               const RealOperand& x, const UnaryArguments& arguments, KOBWBRealInterval& image) {
    if (x.kind != RealOperand::Kind::Interval) return false;
    image = operation.real(environment, x.interval, arguments);
    return true;
}

// The interval forms of value functions that do more than one dispatch, with the
// same contract; each gives what the function of the same name gives.
bool PowOnRealIntervals(const KOBWBEnvironment& environment, const KOBWBValue& x,
                        const KOBWBValue& y, KOBWBRealInterval& image);
inline bool PowOnRealOperands(const KOBWBEnvironment& environment, const RealOperand& x, const RealOperand& y,
                              KOBWBRealInterval& image) {
    if (!y.integral) return BinaryOnRealOperands(environment, OperationOf(Binary::Pow), x, y, nullptr, image);
    UnaryArguments arguments;
    arguments.index = y.exponent;
    return UnaryOnRealOperand(environment, OperationOf(y.exponent >= 0 ? Unary::Power : Unary::RealPower), x,
                              arguments, image);
}

// A branch hint given as a value: its real interval, kept in storage, or null (no hint)
// for a null, Undefined or Boolean value.
const KOBWBRealInterval* HintOf(const KOBWBValue* hint, KOBWBRealInterval& storage);

} // namespace kobwb

#endif
