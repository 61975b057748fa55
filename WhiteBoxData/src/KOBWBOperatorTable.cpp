#include "KOBWBOperatorTable.h"

#include "KOBWBArithmetic.h"
#include "KOBWBArithmeticProjections.h"
#include "KOBWBComparisons.h"
#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBHyperbolic.h"
#include "KOBWBLimits.h"
#include "KOBWBLogicProjections.h"
#include "KOBWBPowerProjections.h"
#include "KOBWBPowers.h"
#include "KOBWBRounding.h"
#include "KOBWBRoundingProjections.h"
#include "KOBWBTrigonometry.h"
#include "KOBWBTrigonometryProjections.h"
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

// Adapters for the projections whose signatures carry more or less than the operands.
KOBWBValue InverseNot(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& a) {
    return KOBWBInverseNot(z, a);
}
KOBWBValue InverseOr1(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBInverseOr1(z, a, b);
}
KOBWBValue InverseOr2(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBInverseOr2(z, a, b);
}
KOBWBValue InverseAnd1(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBInverseAnd1(z, a, b);
}
KOBWBValue InverseAnd2(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& a, const KOBWBValue& b) {
    return KOBWBInverseAnd2(z, a, b);
}
KOBWBValue InverseImplication1(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& a,
                               const KOBWBValue& b) {
    return KOBWBInverseImplication1(z, a, b);
}
KOBWBValue InverseImplication2(const KOBWBEnvironment&, const KOBWBValue& z, const KOBWBValue& a,
                               const KOBWBValue& b) {
    return KOBWBInverseImplication2(z, a, b);
}
// A root node's index is its right child, which is left as it is.
KOBWBValue InverseRoot(const KOBWBEnvironment& env, const KOBWBValue& z, const KOBWBValue& x, const KOBWBValue& n) {
    const int index = n.GetAsInteger();
    if (KOBWBIsNilInteger(index) || KOBWBIsAnyInteger(index)) return x;
    return KOBWBInverseRoot(env, z, x, index);
}

constexpr Projections noProjections = {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
constexpr Projections UnaryProjections(UnaryProjection projection, RealUnaryProjection real) {
    return {projection, nullptr, nullptr, real, nullptr, nullptr, nullptr};
}
constexpr Projections BinaryProjections(BinaryProjection first, BinaryProjection second,
                                        RealBinaryProjection realFirst, RealBinaryProjection realSecond) {
    return {nullptr, first, second, nullptr, realFirst, realSecond, nullptr};
}
constexpr Projections IndexedProjections(BinaryProjection first, BinaryProjection second,
                                         RealBinaryProjection realFirst, RealBinaryProjection realSecond,
                                         RealIndexedProjection indexed) {
    return {nullptr, first, second, nullptr, realFirst, realSecond, indexed};
}
// The logic has no real forms.
constexpr Projections LogicProjections(UnaryProjection projection) {
    return {projection, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
}
constexpr Projections LogicProjections(BinaryProjection first, BinaryProjection second) {
    return {nullptr, first, second, nullptr, nullptr, nullptr, nullptr};
}

constexpr IntervalForm noForm = {IntervalForm::Kind::None, 0};
constexpr IntervalForm UnaryForm(Unary code) { return {IntervalForm::Kind::Unary, static_cast<int>(code)}; }
constexpr IntervalForm BinaryForm(Binary code) { return {IntervalForm::Kind::Binary, static_cast<int>(code)}; }
constexpr IntervalForm powerForm = {IntervalForm::Kind::Power, 0};

constexpr OperatorInfo unused = {static_cast<KOBWBExpressionType>(0), F::None, 0, "", nullptr, nullptr, noForm,
                                 noProjections};

constexpr OperatorInfo table[] = {
    unused,
    {KOBWBVariableType, F::Leaf, 0, "variable", nullptr, nullptr, noForm, noProjections},
    {KOBWBConstantType, F::Leaf, 0, "constant", nullptr, nullptr, noForm, noProjections},
    {KOBWBNotType, F::Boolean, 1, "not", Not, nullptr, noForm, LogicProjections(InverseNot)},
    {KOBWBOrType, F::Boolean, 2, "or", nullptr, Or, noForm,
     LogicProjections(InverseOr1, InverseOr2)},
    {KOBWBAndType, F::Boolean, 2, "and", nullptr, And, noForm,
     LogicProjections(InverseAnd1, InverseAnd2)},
    {KOBWBEqualType, F::Boolean, 2, "==", nullptr, KOBWBEqual, noForm,
     LogicProjections(KOBWBInverseEqual1, KOBWBInverseEqual2)},
    {KOBWBNotEqualType, F::Boolean, 2, "!=", nullptr, KOBWBNotEqual, noForm,
     LogicProjections(KOBWBInverseNotEqual1, KOBWBInverseNotEqual2)},
    {KOBWBLessEqualType, F::Boolean, 2, "<=", nullptr, KOBWBLessEqual, noForm,
     LogicProjections(KOBWBInverseLessEqual1, KOBWBInverseLessEqual2)},
    {KOBWBImplicationType, F::Boolean, 2, "=>", nullptr, Implication, noForm,
     LogicProjections(InverseImplication1, InverseImplication2)},
    {KOBWBSumType, F::Algebraic, naryArity, "+", nullptr, Sum, BinaryForm(Binary::Sum),
     BinaryProjections(KOBWBInverseSum1, KOBWBInverseSum2, KOBWBInverseSum1, KOBWBInverseSum2)},
    {KOBWBProductType, F::Algebraic, naryArity, "*", nullptr, Mul, BinaryForm(Binary::Mul),
     BinaryProjections(KOBWBInverseMul1, KOBWBInverseMul2, KOBWBInverseMul1, KOBWBInverseMul2)},
    {KOBWBQuotientType, F::Binary, 2, "/", nullptr, KOBWBDiv, BinaryForm(Binary::Div),
     BinaryProjections(KOBWBInverseDiv1, KOBWBInverseDiv2, KOBWBInverseDiv1, KOBWBInverseDiv2)},
    {KOBWBPowerType, F::Binary, 2, "^", nullptr, KOBWBPow, powerForm,
     IndexedProjections(KOBWBInversePow1, KOBWBInversePow2, KOBWBInversePow1, KOBWBInversePow2, KOBWBInversePow1)},
    {KOBWBRootType, F::Binary, 2, "root", nullptr, Root, noForm,
     IndexedProjections(InverseRoot, nullptr, nullptr, nullptr, KOBWBInverseRoot)},
    {KOBWBSqrtType, F::Unary, 1, "sqrt", KOBWBSqrt, nullptr, UnaryForm(Unary::Sqrt),
     UnaryProjections(KOBWBInverseSqrt, KOBWBInverseSqrt)},
    {KOBWBLogType, F::Unary, 1, "log", KOBWBLog, nullptr, UnaryForm(Unary::Log),
     UnaryProjections(KOBWBInverseLog, KOBWBInverseLog)},
    {KOBWBLnType, F::Unary, 1, "ln", KOBWBLn, nullptr, UnaryForm(Unary::Ln),
     UnaryProjections(KOBWBInverseLn, KOBWBInverseLn)},
    {KOBWBExpType, F::Unary, 1, "exp", KOBWBExp, nullptr, UnaryForm(Unary::Exp),
     UnaryProjections(KOBWBInverseExp, KOBWBInverseExp)},
    {KOBWBSinType, F::Trigonometric, 1, "sin", KOBWBSin, nullptr, UnaryForm(Unary::Sin),
     UnaryProjections(KOBWBInverseSin, KOBWBInverseSin)},
    {KOBWBCosType, F::Trigonometric, 1, "cos", KOBWBCos, nullptr, UnaryForm(Unary::Cos),
     UnaryProjections(KOBWBInverseCos, KOBWBInverseCos)},
    {KOBWBTanType, F::Trigonometric, 1, "tan", KOBWBTan, nullptr, noForm,
     UnaryProjections(KOBWBInverseTan, KOBWBInverseTan)},
    {KOBWBAsinType, F::Trigonometric, 1, "asin", Asin, nullptr, noForm,
     UnaryProjections(KOBWBInverseAsin, KOBWBInverseAsin)},
    {KOBWBAcosType, F::Trigonometric, 1, "acos", Acos, nullptr, noForm,
     UnaryProjections(KOBWBInverseAcos, KOBWBInverseAcos)},
    {KOBWBAtanType, F::Trigonometric, 1, "atan", Atan, nullptr, noForm,
     UnaryProjections(KOBWBInverseAtan, KOBWBInverseAtan)},
    {KOBWBAtan2Type, F::Binary, 2, "atan2", nullptr, Atan2, BinaryForm(Binary::Atan2),
     BinaryProjections(KOBWBInverseAtan21, KOBWBInverseAtan22, KOBWBInverseAtan21, KOBWBInverseAtan22)},
    {KOBWBDimType, F::Binary, 2, "dim", nullptr, KOBWBDim, BinaryForm(Binary::Dim), noProjections},
    {KOBWBSignType, F::Binary, 2, "sign", nullptr, KOBWBSign, noForm,
     BinaryProjections(KOBWBInverseSign1, KOBWBInverseSign2, KOBWBInverseSign1, KOBWBInverseSign2)},
    {KOBWBStepType, F::Unary, 1, "step", nullptr, nullptr, noForm, noProjections},
    {KOBWBSinhType, F::Trigonometric, 1, "sinh", KOBWBSinh, nullptr, noForm,
     UnaryProjections(KOBWBInverseSinh, KOBWBInverseSinh)},
    {KOBWBCoshType, F::Trigonometric, 1, "cosh", KOBWBCosh, nullptr, noForm,
     UnaryProjections(KOBWBInverseCosh, KOBWBInverseCosh)},
    {KOBWBTanhType, F::Trigonometric, 1, "tanh", KOBWBTanh, nullptr, noForm,
     UnaryProjections(KOBWBInverseTanh, KOBWBInverseTanh)},
    {KOBWBAsinhType, F::Trigonometric, 1, "asinh", KOBWBAsinh, nullptr, noForm,
     UnaryProjections(KOBWBInverseAsinh, KOBWBInverseAsinh)},
    {KOBWBAcoshType, F::Trigonometric, 1, "acosh", KOBWBAcosh, nullptr, noForm,
     UnaryProjections(KOBWBInverseAcosh, KOBWBInverseAcosh)},
    {KOBWBAtanhType, F::Trigonometric, 1, "atanh", KOBWBAtanh, nullptr, noForm,
     UnaryProjections(KOBWBInverseAtanh, KOBWBInverseAtanh)},
    {KOBWBAbsType, F::Unary, 1, "abs", KOBWBAbs, nullptr, noForm,
     UnaryProjections(KOBWBInverseAbs, KOBWBInverseAbs)},
    {KOBWBCeilType, F::Unary, 1, "ceil", KOBWBCeil, nullptr, noForm,
     UnaryProjections(KOBWBInverseCeil, KOBWBInverseCeil)},
    {KOBWBFloorType, F::Unary, 1, "floor", KOBWBFloor, nullptr, noForm,
     UnaryProjections(KOBWBInverseFloor, KOBWBInverseFloor)},
    {KOBWBRoundType, F::Unary, 1, "round", KOBWBRound, nullptr, noForm,
     UnaryProjections(KOBWBInverseRound, KOBWBInverseRound)},
    {KOBWBTruncType, F::Unary, 1, "trunc", KOBWBTrunc, nullptr, noForm,
     UnaryProjections(KOBWBInverseTrunc, KOBWBInverseTrunc)},
    {KOBWBModType, F::Binary, 2, "mod", nullptr, KOBWBMod, noForm, noProjections},
    {KOBWBMinType, F::Algebraic, naryArity, "min", nullptr, KOBWBMin, noForm,
     BinaryProjections(KOBWBInverseMin1, KOBWBInverseMin2, KOBWBInverseMin1, KOBWBInverseMin2)},
    {KOBWBMaxType, F::Algebraic, naryArity, "max", nullptr, KOBWBMax, noForm,
     BinaryProjections(KOBWBInverseMax1, KOBWBInverseMax2, KOBWBInverseMax1, KOBWBInverseMax2)},
    {KOBWBIfThenElseType, F::IfThenElse, 3, "if", nullptr, nullptr, noForm, noProjections},
    {KOBWBBlackBoxType, F::BlackBox, naryArity, "blackbox", nullptr, nullptr, noForm,
     noProjections},
    unused,
    unused,
    {KOBWBIntegrateType, F::Integrate, 2, "integrate", nullptr, nullptr, noForm, noProjections},
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
