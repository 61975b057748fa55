#include "KOBWBOperatorTable.h"

#include "KOBWBArithmetic.h"
#include "KOBWBComparisons.h"
#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBHyperbolic.h"
#include "KOBWBLimits.h"
#include "KOBWBPowers.h"
#include "KOBWBRounding.h"
#include "KOBWBTrigonometry.h"
#include "KOBWBValueDispatch.h"

namespace kobwb {
namespace {

using F = OperatorFamily;

// Adapters for the value functions whose signatures carry more than the operands.
KOBWBValue Not(const KOBWBEnvironment&, const KOBWBValue& a) { return KOBWBNot(a); }
KOBWBValue Or(const KOBWBEnvironment&, const KOBWBValue& a, const KOBWBValue& b) { return KOBWBOr(a, b); }
KOBWBValue And(const KOBWBEnvironment&, const KOBWBValue& a, const KOBWBValue& b) { return KOBWBAnd(a, b); }
KOBWBValue Implication(const KOBWBEnvironment&, const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBImplication(a, b);
}
// The index of a root node is its right child; one that is not a single integer
// has no root and gives the empty real with bit 1.
KOBWBValue Root(const KOBWBEnvironment& env, const KOBWBValue& a, const KOBWBValue& b) {
    const int index = b.GetAsInteger();
    if (KOBWBIsNilInteger(index) || KOBWBIsAnyInteger(index)) {
        env.SetError(1);
        return KOBWBValue(KOBWBReal_Nil);
    }
    const KOBWBValue positive(KOBWBCreateRealInterval(KOBWBMinReal, KOBWBMaxReal));
    return KOBWBRoot(env, a, index, &positive);
}
KOBWBValue Atan2(const KOBWBEnvironment& env, const KOBWBValue& y, const KOBWBValue& x) {
    return KOBWBAtan2(env, y, x, nullptr);
}
KOBWBValue Asin(const KOBWBEnvironment& env, const KOBWBValue& x) { return KOBWBAsin(env, x, nullptr); }
KOBWBValue Acos(const KOBWBEnvironment& env, const KOBWBValue& x) { return KOBWBAcos(env, x, nullptr); }
KOBWBValue Atan(const KOBWBEnvironment& env, const KOBWBValue& x) { return KOBWBAtan(env, x, nullptr); }
KOBWBValue Sum(const KOBWBEnvironment& env, const KOBWBValue& a, const KOBWBValue& b) { return KOBWBSum(env, a, b); }
KOBWBValue Mul(const KOBWBEnvironment& env, const KOBWBValue& a, const KOBWBValue& b) { return KOBWBMul(env, a, b); }

// Interval forms of the value functions that are one dispatch of the arithmetic.
template <Binary code>
bool BinaryForm(const KOBWBEnvironment& env, const KOBWBValue& a, const KOBWBValue& b, KOBWBRealInterval& image) {
    return BinaryOnRealIntervals(env, code, a, b, nullptr, image);
}
template <Unary code>
bool UnaryForm(const KOBWBEnvironment& env, const KOBWBValue& x, KOBWBRealInterval& image) {
    return UnaryOnRealInterval(env, code, x, {}, image);
}

constexpr OperatorInfo unused = {static_cast<KOBWBExpressionType>(0), F::None, 0, "", nullptr, nullptr, nullptr, nullptr};

constexpr OperatorInfo table[] = {
    unused,
    {KOBWBVariableType, F::Leaf, 0, "variable", nullptr, nullptr, nullptr, nullptr},
    {KOBWBConstantType, F::Leaf, 0, "constant", nullptr, nullptr, nullptr, nullptr},
    {KOBWBNotType, F::Boolean, 1, "not", Not, nullptr, nullptr, nullptr},
    {KOBWBOrType, F::Boolean, 2, "or", nullptr, Or, nullptr, nullptr},
    {KOBWBAndType, F::Boolean, 2, "and", nullptr, And, nullptr, nullptr},
    {KOBWBEqualType, F::Boolean, 2, "==", nullptr, KOBWBEqual, nullptr, nullptr},
    {KOBWBNotEqualType, F::Boolean, 2, "!=", nullptr, KOBWBNotEqual, nullptr, nullptr},
    {KOBWBLessEqualType, F::Boolean, 2, "<=", nullptr, KOBWBLessEqual, nullptr, nullptr},
    {KOBWBImplicationType, F::Boolean, 2, "=>", nullptr, Implication, nullptr, nullptr},
    {KOBWBSumType, F::Algebraic, naryArity, "+", nullptr, Sum, nullptr, BinaryForm<Binary::Sum>},
    {KOBWBProductType, F::Algebraic, naryArity, "*", nullptr, Mul, nullptr, BinaryForm<Binary::Mul>},
    {KOBWBQuotientType, F::Binary, 2, "/", nullptr, KOBWBDiv, nullptr, BinaryForm<Binary::Div>},
    {KOBWBPowerType, F::Binary, 2, "^", nullptr, KOBWBPow, nullptr, PowOnRealIntervals},
    {KOBWBRootType, F::Binary, 2, "root", nullptr, Root, nullptr, nullptr},
    {KOBWBSqrtType, F::Unary, 1, "sqrt", KOBWBSqrt, nullptr, UnaryForm<Unary::Sqrt>, nullptr},
    {KOBWBLogType, F::Unary, 1, "log", KOBWBLog, nullptr, UnaryForm<Unary::Log>, nullptr},
    {KOBWBLnType, F::Unary, 1, "ln", KOBWBLn, nullptr, UnaryForm<Unary::Ln>, nullptr},
    {KOBWBExpType, F::Unary, 1, "exp", KOBWBExp, nullptr, UnaryForm<Unary::Exp>, nullptr},
    {KOBWBSinType, F::Trigonometric, 1, "sin", KOBWBSin, nullptr, UnaryForm<Unary::Sin>, nullptr},
    {KOBWBCosType, F::Trigonometric, 1, "cos", KOBWBCos, nullptr, UnaryForm<Unary::Cos>, nullptr},
    {KOBWBTanType, F::Trigonometric, 1, "tan", KOBWBTan, nullptr, nullptr, nullptr},
    {KOBWBAsinType, F::Trigonometric, 1, "asin", Asin, nullptr, nullptr, nullptr},
    {KOBWBAcosType, F::Trigonometric, 1, "acos", Acos, nullptr, nullptr, nullptr},
    {KOBWBAtanType, F::Trigonometric, 1, "atan", Atan, nullptr, nullptr, nullptr},
    {KOBWBAtan2Type, F::Binary, 2, "atan2", nullptr, Atan2, nullptr, BinaryForm<Binary::Atan2>},
    {KOBWBDimType, F::Binary, 2, "dim", nullptr, KOBWBDim, nullptr, BinaryForm<Binary::Dim>},
    {KOBWBSignType, F::Binary, 2, "sign", nullptr, KOBWBSign, nullptr, nullptr},
    {KOBWBStepType, F::Unary, 1, "step", nullptr, nullptr, nullptr, nullptr},
    {KOBWBSinhType, F::Trigonometric, 1, "sinh", KOBWBSinh, nullptr, nullptr, nullptr},
    {KOBWBCoshType, F::Trigonometric, 1, "cosh", KOBWBCosh, nullptr, nullptr, nullptr},
    {KOBWBTanhType, F::Trigonometric, 1, "tanh", KOBWBTanh, nullptr, nullptr, nullptr},
    {KOBWBAsinhType, F::Trigonometric, 1, "asinh", KOBWBAsinh, nullptr, nullptr, nullptr},
    {KOBWBAcoshType, F::Trigonometric, 1, "acosh", KOBWBAcosh, nullptr, nullptr, nullptr},
    {KOBWBAtanhType, F::Trigonometric, 1, "atanh", KOBWBAtanh, nullptr, nullptr, nullptr},
    {KOBWBAbsType, F::Unary, 1, "abs", KOBWBAbs, nullptr, nullptr, nullptr},
    {KOBWBCeilType, F::Unary, 1, "ceil", KOBWBCeil, nullptr, nullptr, nullptr},
    {KOBWBFloorType, F::Unary, 1, "floor", KOBWBFloor, nullptr, nullptr, nullptr},
    {KOBWBRoundType, F::Unary, 1, "round", KOBWBRound, nullptr, nullptr, nullptr},
    {KOBWBTruncType, F::Unary, 1, "trunc", KOBWBTrunc, nullptr, nullptr, nullptr},
    {KOBWBModType, F::Binary, 2, "mod", nullptr, KOBWBMod, nullptr, nullptr},
    {KOBWBMinType, F::Algebraic, naryArity, "min", nullptr, KOBWBMin, nullptr, nullptr},
    {KOBWBMaxType, F::Algebraic, naryArity, "max", nullptr, KOBWBMax, nullptr, nullptr},
    {KOBWBIfThenElseType, F::IfThenElse, 3, "if", nullptr, nullptr, nullptr, nullptr},
    {KOBWBBlackBoxType, F::BlackBox, naryArity, "blackbox", nullptr, nullptr, nullptr, nullptr},
    unused,
    unused,
    {KOBWBIntegrateType, F::Integrate, 2, "integrate", nullptr, nullptr, nullptr, nullptr},
};

constexpr int tableSize = static_cast<int>(sizeof table / sizeof table[0]);

constexpr bool RowsMatchCodes() {
    for (int code = 0; code < tableSize; ++code)
        if (table[code].family != F::None && table[code].code != code) return false;
    return true;
}
static_assert(RowsMatchCodes(), "every row of the operator table stands at its code");

} // namespace

const OperatorInfo& GetOperatorInfo(int code) {
    return code >= 0 && code < tableSize ? table[code] : unused;
}

} // namespace kobwb

const char* KOBWBGetExpressionTypeName(KOBWBExpressionType type) {
    return kobwb::GetOperatorInfo(type).name;
}
