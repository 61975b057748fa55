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

constexpr IntervalForm noForm = {IntervalForm::Kind::None, 0};
constexpr IntervalForm UnaryForm(Unary code) { return {IntervalForm::Kind::Unary, static_cast<int>(code)}; }
constexpr IntervalForm BinaryForm(Binary code) { return {IntervalForm::Kind::Binary, static_cast<int>(code)}; }
constexpr IntervalForm powerForm = {IntervalForm::Kind::Power, 0};

constexpr OperatorInfo unused = {static_cast<KOBWBExpressionType>(0), F::None, 0, "", nullptr, nullptr, noForm};

constexpr OperatorInfo table[] = {
    unused,
    {KOBWBVariableType, F::Leaf, 0, "variable", nullptr, nullptr, noForm},
    {KOBWBConstantType, F::Leaf, 0, "constant", nullptr, nullptr, noForm},
    {KOBWBNotType, F::Boolean, 1, "not", Not, nullptr, noForm},
    {KOBWBOrType, F::Boolean, 2, "or", nullptr, Or, noForm},
    {KOBWBAndType, F::Boolean, 2, "and", nullptr, And, noForm},
    {KOBWBEqualType, F::Boolean, 2, "==", nullptr, KOBWBEqual, noForm},
    {KOBWBNotEqualType, F::Boolean, 2, "!=", nullptr, KOBWBNotEqual, noForm},
    {KOBWBLessEqualType, F::Boolean, 2, "<=", nullptr, KOBWBLessEqual, noForm},
    {KOBWBImplicationType, F::Boolean, 2, "=>", nullptr, Implication, noForm},
    {KOBWBSumType, F::Algebraic, naryArity, "+", nullptr, Sum, BinaryForm(Binary::Sum)},
    {KOBWBProductType, F::Algebraic, naryArity, "*", nullptr, Mul, BinaryForm(Binary::Mul)},
    {KOBWBQuotientType, F::Binary, 2, "/", nullptr, KOBWBDiv, BinaryForm(Binary::Div)},
    {KOBWBPowerType, F::Binary, 2, "^", nullptr, KOBWBPow, powerForm},
    {KOBWBRootType, F::Binary, 2, "root", nullptr, Root, noForm},
    {KOBWBSqrtType, F::Unary, 1, "sqrt", KOBWBSqrt, nullptr, UnaryForm(Unary::Sqrt)},
    {KOBWBLogType, F::Unary, 1, "log", KOBWBLog, nullptr, UnaryForm(Unary::Log)},
    {KOBWBLnType, F::Unary, 1, "ln", KOBWBLn, nullptr, UnaryForm(Unary::Ln)},
    {KOBWBExpType, F::Unary, 1, "exp", KOBWBExp, nullptr, UnaryForm(Unary::Exp)},
    {KOBWBSinType, F::Trigonometric, 1, "sin", KOBWBSin, nullptr, UnaryForm(Unary::Sin)},
    {KOBWBCosType, F::Trigonometric, 1, "cos", KOBWBCos, nullptr, UnaryForm(Unary::Cos)},
    {KOBWBTanType, F::Trigonometric, 1, "tan", KOBWBTan, nullptr, noForm},
    {KOBWBAsinType, F::Trigonometric, 1, "asin", Asin, nullptr, noForm},
    {KOBWBAcosType, F::Trigonometric, 1, "acos", Acos, nullptr, noForm},
    {KOBWBAtanType, F::Trigonometric, 1, "atan", Atan, nullptr, noForm},
    {KOBWBAtan2Type, F::Binary, 2, "atan2", nullptr, Atan2, BinaryForm(Binary::Atan2)},
    {KOBWBDimType, F::Binary, 2, "dim", nullptr, KOBWBDim, BinaryForm(Binary::Dim)},
    {KOBWBSignType, F::Binary, 2, "sign", nullptr, KOBWBSign, noForm},
    {KOBWBStepType, F::Unary, 1, "step", nullptr, nullptr, noForm},
    {KOBWBSinhType, F::Trigonometric, 1, "sinh", KOBWBSinh, nullptr, noForm},
    {KOBWBCoshType, F::Trigonometric, 1, "cosh", KOBWBCosh, nullptr, noForm},
    {KOBWBTanhType, F::Trigonometric, 1, "tanh", KOBWBTanh, nullptr, noForm},
    {KOBWBAsinhType, F::Trigonometric, 1, "asinh", KOBWBAsinh, nullptr, noForm},
    {KOBWBAcoshType, F::Trigonometric, 1, "acosh", KOBWBAcosh, nullptr, noForm},
    {KOBWBAtanhType, F::Trigonometric, 1, "atanh", KOBWBAtanh, nullptr, noForm},
    {KOBWBAbsType, F::Unary, 1, "abs", KOBWBAbs, nullptr, noForm},
    {KOBWBCeilType, F::Unary, 1, "ceil", KOBWBCeil, nullptr, noForm},
    {KOBWBFloorType, F::Unary, 1, "floor", KOBWBFloor, nullptr, noForm},
    {KOBWBRoundType, F::Unary, 1, "round", KOBWBRound, nullptr, noForm},
    {KOBWBTruncType, F::Unary, 1, "trunc", KOBWBTrunc, nullptr, noForm},
    {KOBWBModType, F::Binary, 2, "mod", nullptr, KOBWBMod, noForm},
    {KOBWBMinType, F::Algebraic, naryArity, "min", nullptr, KOBWBMin, noForm},
    {KOBWBMaxType, F::Algebraic, naryArity, "max", nullptr, KOBWBMax, noForm},
    {KOBWBIfThenElseType, F::IfThenElse, 3, "if", nullptr, nullptr, noForm},
    {KOBWBBlackBoxType, F::BlackBox, naryArity, "blackbox", nullptr, nullptr, noForm},
    unused,
    unused,
    {KOBWBIntegrateType, F::Integrate, 2, "integrate", nullptr, nullptr, noForm},
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
