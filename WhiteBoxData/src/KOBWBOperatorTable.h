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

struct OperatorInfo {
    KOBWBExpressionType code;
    OperatorFamily family;
    int arity;
    const char* name;
    UnaryFunction unary;
    BinaryFunction binary;
};

// The row of a code; a row of family None for codes no node may carry.
const OperatorInfo& GetOperatorInfo(int code);

inline OperatorFamily FamilyOf(int code) { return GetOperatorInfo(code).family; }

} // namespace kobwb

#endif
