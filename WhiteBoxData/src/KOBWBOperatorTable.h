#ifndef KOBWBOperatorTable_h
#define KOBWBOperatorTable_h

#include "KOBWBExpressionType.h"
#include "KOBWBValue.h"
#include "KOBWBValueDispatch.h"

class KOBWBEnvironment;

// One row per expression code: its node family, its arity, its name and the value
// function that evaluates it. Creation, evaluation and printing all read this
// table, so a code is added by adding its row.
namespace kobwb {

enum class OperatorFamily {
    None,
    Leaf,
    Boolean,
    Algebraic,
    Binary,
    Unary,
    Trigonometric,
    IfThenElse,
    BlackBox,
    Integrate
};

// Arity of the families whose node count is not fixed.
constexpr int naryArity = -1;

typedef KOBWBValue (*UnaryFunction)(const KOBWBEnvironment&, const KOBWBValue&);
typedef KOBWBValue (*BinaryFunction)(const KOBWBEnvironment&, const KOBWBValue&, const KOBWBValue&);
// The interval form of a value function: the function of the arithmetic's operation
// table whose real interval form the value function applies to operands it can read
// as real intervals, or the power, which picks its function by its exponent.
struct IntervalForm {
    enum class Kind : unsigned char { None, Unary, Binary, Power };
    Kind kind;
    int code;
};

// The projections of a value function: for a node z = f(x) or z = f(x, y), the part of
// an argument that can still give the node's domain (KOBWBArithmeticProjections.h). An
// n-ary row narrows each child as the first argument, the fold of the others as the
// second. Null where the code has none: its children are left as they are.
// The real forms are the interval-level projections that the value-level ones apply
// when the narrowed argument is a real interval and the others real intervals or single
// numbers; the indexed form is the one of a power or root whose right child is a single
// integral number, which it takes as the index and leaves as it is.
typedef KOBWBValue (*UnaryProjection)(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& x);
typedef KOBWBValue (*BinaryProjection)(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& x,
                                       const KOBWBValue& y);
typedef KOBWBRealInterval (*RealUnaryProjection)(const KOBWBEnvironment&, const KOBWBRealInterval& z,
                                                 const KOBWBRealInterval& x);
typedef KOBWBRealInterval (*RealBinaryProjection)(const KOBWBEnvironment&, const KOBWBRealInterval& z,
                                                  const KOBWBRealInterval& x, const KOBWBRealInterval& y);
typedef KOBWBRealInterval (*RealIndexedProjection)(const KOBWBEnvironment&, const KOBWBRealInterval& z,
                                                   const KOBWBRealInterval& x, int index);
struct Projections {
    UnaryProjection unary;
    BinaryProjection first;
    BinaryProjection second;
    RealUnaryProjection realUnary;
    RealBinaryProjection realFirst;
    RealBinaryProjection realSecond;
    RealIndexedProjection indexed;
};

struct OperatorInfo {
    KOBWBExpressionType code;
    OperatorFamily family;
    int arity;
    const char* name;
    UnaryFunction unary;
    BinaryFunction binary;
    IntervalForm interval;
    Projections projections;
};

// The row of a code; a row of family None for codes no node may carry.
const OperatorInfo& GetOperatorInfo(int code);

inline OperatorFamily FamilyOf(int code) { return GetOperatorInfo(code).family; }

inline bool HasUnaryForm(const OperatorInfo& info) { return info.interval.kind == IntervalForm::Kind::Unary; }
inline bool HasBinaryForm(const OperatorInfo& info) {
    return info.interval.kind == IntervalForm::Kind::Binary || info.interval.kind == IntervalForm::Kind::Power;
}
inline const UnaryOperation& UnaryOperationOf(const OperatorInfo& info) {
    return OperationOf(static_cast<Unary>(info.interval.code));
}
inline const BinaryOperation& BinaryOperationOf(const OperatorInfo& info) {
    return OperationOf(static_cast<Binary>(info.interval.code));
}

// The interval form of a row applied to operands read with ReadRealOperand: when the
// value function gives a RealInterval that is its real interval form applied to the
// operands, the form stores that interval and answers true, so that a node can keep it
// in its buffer, or an evaluation plan beside the node, without building a value;
// otherwise, and for rows without such a form, it answers false and does nothing.
inline bool ApplyIntervalForm(const OperatorInfo& info, const KOBWBEnvironment& environment, const RealOperand& x,
                              KOBWBRealInterval& image) {
    return HasUnaryForm(info) && UnaryOnRealOperand(environment, UnaryOperationOf(info), x, {}, image);
}
inline bool ApplyIntervalForm(const OperatorInfo& info, const KOBWBEnvironment& environment, const RealOperand& a,
                              const RealOperand& b, KOBWBRealInterval& image) {
    if (info.interval.kind == IntervalForm::Kind::Power) return PowOnRealOperands(environment, a, b, image);
    return info.interval.kind == IntervalForm::Kind::Binary &&
           BinaryOnRealOperands(environment, BinaryOperationOf(info), a, b, nullptr, image);
}

} // namespace kobwb

#endif
