#ifndef KOBWBOperatorTable_h
#define KOBWBOperatorTable_h

#include "KOBWBExpressionType.h"
#include "KOBWBValue.h"

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
// The interval form of a value function: when the function gives a RealInterval that
// is its real interval form applied to the operands, the form stores that interval and
// answers true, so that a node can keep it in its buffer without building a value;
// otherwise it answers false and does nothing.
typedef bool (*UnaryIntervalForm)(const KOBWBEnvironment&, const KOBWBValue&, KOBWBRealInterval&);
typedef bool (*BinaryIntervalForm)(const KOBWBEnvironment&, const KOBWBValue&, const KOBWBValue&,
                                   KOBWBRealInterval&);

struct OperatorInfo {
    KOBWBExpressionType code;
    OperatorFamily family;
    int arity;
    const char* name;
    UnaryFunction unary;
    BinaryFunction binary;
    // Null for the functions that have none.
    UnaryIntervalForm unaryInterval;
    BinaryIntervalForm binaryInterval;
};

// The row of a code; a row of family None for codes no node may carry.
const OperatorInfo& GetOperatorInfo(int code);

inline OperatorFamily FamilyOf(int code) { return GetOperatorInfo(code).family; }

} // namespace kobwb

#endif
