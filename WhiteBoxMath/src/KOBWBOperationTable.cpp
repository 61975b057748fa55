#include "KOBWBOperationTable.h"

#include "KOBWBArithmetic.h"
#include "KOBWBArithmeticKernels.h"
#include "KOBWBComparisons.h"
#include "KOBWBExponentials.h"
#include "KOBWBHyperbolic.h"
#include "KOBWBIntegerForms.h"
#include "KOBWBPowers.h"
#include "KOBWBRounding.h"
#include "KOBWBStep.h"
#include "KOBWBTrigonometry.h"

namespace kobwb {

namespace {

using Environment = KOBWBEnvironment;
using Real = KOBWBRealInterval;
using Integer = KOBWBIntegerInterval;
using Arguments = UnaryArguments;

} // namespace

const UnaryOperation unaryOperations[] = {
    // Abs
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBAbs(e, x); },
     [](const Environment& e, const Integer& x, const Arguments&) { return KOBWBAbs(e, x); },
     IntegerUse::Own, false},
    // Exp, Ln, Log, Sqrt
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBExp(e, x); }, nullptr,
     IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBLn(e, x); }, nullptr,
     IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBLog(e, x); }, nullptr,
     IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBSqrt(e, x); }, nullptr,
     IntegerUse::AsReal, false},
    // Sin, Cos, Tan
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBSin(e, x); }, nullptr,
     IntegerUse::AsReal, true},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBCos(e, x); }, nullptr,
     IntegerUse::AsReal, true},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBTan(e, x); }, nullptr,
     IntegerUse::AsReal, true},
    // Asin, Acos, Atan
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBAsin(e, x, a.hint);
     },
     nullptr, IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBAcos(e, x, a.hint);
     },
     nullptr, IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBAtan(e, x, a.hint);
     },
     nullptr, IntegerUse::AsReal, false},
    // Sinh, Cosh, Tanh, Asinh, Acosh, Atanh
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBSinh(e, x); }, nullptr,
     IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBCosh(e, x); }, nullptr,
     IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBTanh(e, x); }, nullptr,
     IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBAsinh(e, x); },
     nullptr, IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBAcosh(e, x); },
     nullptr, IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBAtanh(e, x); },
     nullptr, IntegerUse::AsReal, false},
    // Ceil, Floor, Round, Trunc
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBCeil(e, x); }, nullptr,
     IntegerUse::Unchanged, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBFloor(e, x); },
     nullptr, IntegerUse::Unchanged, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBRound(e, x); },
     nullptr, IntegerUse::Unchanged, false},
    {[](const Environment& e, const Real& x, const Arguments&) { return KOBWBTrunc(e, x); },
     nullptr, IntegerUse::Unchanged, false},
    // Power, RealPower
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBPow(e, x, a.index);
     },
     [](const Environment& e, const Integer& x, const Arguments& a) {
         return KOBWBPow(e, x, a.index);
     },
     IntegerUse::Own, false},
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBPow(e, x, a.index);
     },
     nullptr, IntegerUse::AsReal, false},
    // Root, RootPositive, RootNegative
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBRoot(e, x, a.index, a.hint);
     },
     nullptr, IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBRootPositive(e, x, a.index);
     },
     nullptr, IntegerUse::AsReal, false},
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBRootNegative(e, x, a.index);
     },
     nullptr, IntegerUse::AsReal, false},
    // Step
    {[](const Environment& e, const Real& x, const Arguments& a) {
         return KOBWBStep(e, x, a.parameters);
     },
     nullptr, IntegerUse::AsReal, false},
};

const BinaryOperation binaryOperations[] = {
    // Sum, Sub, Mul: the sum and the product inline, as on every hot path.
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return SumIntervals(e, a, b);
     },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBSum(e, a, b); },
     FractionRule::Sum},
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return SubIntervals(e, a, b);
     },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBSub(e, a, b); },
     FractionRule::Sub},
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return MulIntervals(e, a, b);
     },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBMul(e, a, b); },
     FractionRule::Mul},
    // Div
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return KOBWBDiv(e, a, b);
     },
     nullptr, FractionRule::Div},
    // Mod, Min, Max
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return KOBWBMod(e, a, b);
     },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBMod(e, a, b); },
     FractionRule::None},
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return KOBWBMin(e, a, b);
     },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBMin(e, a, b); },
     FractionRule::None},
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return KOBWBMax(e, a, b);
     },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBMax(e, a, b); },
     FractionRule::None},
    // Pow with an interval exponent, Atan2
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return KOBWBPow(e, a, b);
     },
     nullptr, FractionRule::None},
    {[](const Environment& e, const Real& a, const Real& b, const Real* hint) {
         return KOBWBAtan2(e, a, b, hint);
     },
     nullptr, FractionRule::None},
    // Dim, Sign
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return KOBWBDim(e, a, b);
     },
     IntegerDim, FractionRule::None},
    {[](const Environment& e, const Real& a, const Real& b, const Real*) {
         return KOBWBSign(e, a, b);
     },
     IntegerSign, FractionRule::None},
};

const ComparisonOperation comparisonOperations[] = {
    // Equal, LessEqual, NotEqual
    {[](const Environment& e, const Real& a, const Real& b) { return KOBWBEqual(e, a, b); },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBEqual(e, a, b); },
     true, false},
    {[](const Environment& e, const Real& a, const Real& b) { return KOBWBLessEqual(e, a, b); },
     [](const Environment& e, const Integer& a, const Integer& b) {
         return KOBWBLessEqual(e, a, b);
     },
     false, false},
    {[](const Environment& e, const Real& a, const Real& b) { return KOBWBEqual(e, a, b); },
     [](const Environment& e, const Integer& a, const Integer& b) { return KOBWBEqual(e, a, b); },
     true, true},
};

namespace {

constexpr int unaryCount = static_cast<int>(Unary::Step) + 1;
constexpr int binaryCount = static_cast<int>(Binary::Sign) + 1;
constexpr int comparisonCount = static_cast<int>(Comparison::NotEqual) + 1;
static_assert(sizeof(unaryOperations) / sizeof(unaryOperations[0]) == unaryCount,
              "one row a unary function");
static_assert(sizeof(binaryOperations) / sizeof(binaryOperations[0]) == binaryCount,
              "one row a binary function");
static_assert(sizeof(comparisonOperations) / sizeof(comparisonOperations[0]) == comparisonCount,
              "one row a comparison");

} // namespace

} // namespace kobwb
