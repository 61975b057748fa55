#ifndef KOBWBOperationTable_h
#define KOBWBOperationTable_h

#include "KOBWBBoolean.h"
#include "KOBWBFractionArithmetic.h"
#include "KOBWBInterval.h"

class KOBWBEnvironment;

// The forward functions as data: for each, its interval forms and how the value level
// treats the kinds of its arguments. The value-level dispatcher reads these rows, so
// every function shares one implementation of the dispatch.
namespace kobwb {

// The extra arguments of the unary functions: the index of a power or a root, the
// branch hint of a root or an inverse trigonometric function, the parameters of a step.
struct UnaryArguments {
    int index = 0;
    const KOBWBRealInterval* hint = nullptr;
    const double* parameters = nullptr;
};

using RealUnary = KOBWBRealInterval (*)(const KOBWBEnvironment&, const KOBWBRealInterval&,
                                        const UnaryArguments&);
using IntegerUnary = KOBWBIntegerInterval (*)(const KOBWBEnvironment&, const KOBWBIntegerInterval&,
                                              const UnaryArguments&);

// What a unary function makes of integer kinds: read them as reals, apply its own
// integer form, or return them unchanged (the roundings).
enum class IntegerUse { AsReal, Own, Unchanged };

struct UnaryOperation {
    RealUnary real;
    IntegerUnary integer; // null unless integerUse is Own
    IntegerUse integerUse;
    bool periodic; // a single real beyond KOBWBReal_Trig gives the any real
};

enum class Unary {
    Abs,
    Exp,
    Ln,
    Log,
    Sqrt,
    Sin,
    Cos,
    Tan,
    Asin,
    Acos,
    Atan,
    Sinh,
    Cosh,
    Tanh,
    Asinh,
    Acosh,
    Atanh,
    Ceil,
    Floor,
    Round,
    Trunc,
    Power,     // integer exponent >= 0: integers stay integers
    RealPower, // integer exponent < 0: always real
    Root,
    RootPositive,
    RootNegative,
    Step
};

using RealBinary = KOBWBRealInterval (*)(const KOBWBEnvironment&, const KOBWBRealInterval&,
                                         const KOBWBRealInterval&, const KOBWBRealInterval* hint);
using IntegerBinary = KOBWBIntegerInterval (*)(const KOBWBEnvironment&, const KOBWBIntegerInterval&,
                                               const KOBWBIntegerInterval&);

struct BinaryOperation {
    RealBinary real;
    IntegerBinary integer; // null: the result is real whatever the kinds
    FractionRule fraction; // exact arithmetic of fractions, or None
};

enum class Binary { Sum, Sub, Mul, Div, Mod, Min, Max, Pow, Atan2, Dim, Sign };

using RealComparison = KOBWBBoolean (*)(const KOBWBEnvironment&, const KOBWBRealInterval&,
                                        const KOBWBRealInterval&);
using IntegerComparison = KOBWBBoolean (*)(const KOBWBEnvironment&, const KOBWBIntegerInterval&,
                                           const KOBWBIntegerInterval&);

struct ComparisonOperation {
    RealComparison real;
    IntegerComparison integer;
    bool comparesBooleans; // two Booleans may be compared (equality)
    bool negated;          // the result is negated
};

enum class Comparison { Equal, LessEqual, NotEqual };

// The rows, in the order of the enumerations above.
extern const UnaryOperation unaryOperations[];
extern const BinaryOperation binaryOperations[];
extern const ComparisonOperation comparisonOperations[];

inline const UnaryOperation& OperationOf(Unary code) {
    return unaryOperations[static_cast<int>(code)];
}
inline const BinaryOperation& OperationOf(Binary code) {
    return binaryOperations[static_cast<int>(code)];
}
inline const ComparisonOperation& OperationOf(Comparison code) {
    return comparisonOperations[static_cast<int>(code)];
}

} // namespace kobwb

#endif
