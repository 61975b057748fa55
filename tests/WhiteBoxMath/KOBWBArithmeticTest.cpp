#include "KOBWBArithmetic.h"
#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBLimits.h"
#include "KOBWBPowers.h"
#include "KOBWBRounding.h"
#include "KOBWBTrigonometry.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

using RI = KOBWBRealInterval;
using II = KOBWBIntegerInterval;

void ExpectInterval(const RI& actual, double lower, double upper) {
    EXPECT_DOUBLE_EQ(actual.lower, lower);
    EXPECT_DOUBLE_EQ(actual.upper, upper);
}

bool IsNil(const RI& r) {
    return r.lower == KOBWBMaxReal && r.upper == -KOBWBMaxReal;
}
bool IsNil(const II& r) {
    return r.lower == KOBWBMaxInteger && r.upper == -KOBWBMaxInteger;
}

KOBWBValue Fraction(int numerator, int denominator, int power) {
    return KOBWBValue(KOBWBCreateFraction(numerator, denominator, power, 1));
}

KOBWBValue IntegerList(std::initializer_list<int> elements) {
    KOBWBValue v(KOBWBIntegerEnumValue);
    v.Set(static_cast<int>(elements.size()), elements.begin());
    return v;
}

KOBWBValue RealList(std::initializer_list<double> elements) {
    KOBWBValue v(KOBWBRealEnumValue);
    v.Set(static_cast<int>(elements.size()), elements.begin());
    return v;
}

} // namespace

TEST(KOBWBArithmetic, DivisionConsistencyAndClamping) {
    KOBWBEnvironment env;
    EXPECT_TRUE(KOBWBIsInfinite(KOBWBDiv(env, RI{1, 2}, RI{-1, 3})));
    EXPECT_TRUE(KOBWBIsInfinite(KOBWBDiv(env, RI{1, 2}, RI{0, 3})));
    EXPECT_EQ(env.GetError(), 0u);
    ExpectInterval(KOBWBDiv(env, RI{1, 2}, RI{-4, -2}), -1, -0.25);

    EXPECT_TRUE(IsNil(KOBWBSum(env, RI{2, 1}, RI{0, 0})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    // Bounds crossing within KOBWBAbsPrecision are a point, not an empty argument.
    const RI nearPoint = KOBWBSum(env, RI{1 + 4e-15, 1}, RI{1, 1});
    EXPECT_NEAR(nearPoint.lower, 2, 1e-14);
    EXPECT_LE(nearPoint.lower, nearPoint.upper);
    EXPECT_LE(KOBWBExp(env, RI{4e-15, 0}).lower, KOBWBExp(env, RI{4e-15, 0}).upper);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBMul(env, RI{0, std::nan("")}, RI{1, 2})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();

    ExpectInterval(KOBWBMul(env, RI{1e30, 1e30}, RI{-1e30, 1}), -KOBWBMaxReal, 1e30);
    EXPECT_TRUE(IsNil(KOBWBMul(env, RI{1e30, 2e30}, RI{1e30, 1e30})));
}

TEST(KOBWBArithmetic, ModDimSign) {
    KOBWBEnvironment env;
    ExpectInterval(KOBWBMod(env, RI{7, 7.5}, RI{3, 3}), 1, 1.5);
    ExpectInterval(KOBWBMod(env, RI{-7, -7}, RI{3, 3}), 2, 2);
    ExpectInterval(KOBWBMod(env, RI{7, 7}, RI{-3, -3}), -2, -2);
    ExpectInterval(KOBWBMod(env, RI{5, 7}, RI{3, 3}), 0, 3);
    ExpectInterval(KOBWBMod(env, RI{5, 7}, RI{-3, 2}), -3, 2);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBMod(env, RI{5, 7}, RI{0, 0})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();

    EXPECT_TRUE(KOBWBIsEqual(KOBWBMod(env, II{-7, -7}, II{3, 3}), II{2, 2}));
    EXPECT_TRUE(KOBWBIsEqual(KOBWBMod(env, II{5, 7}, II{3, 3}), II{0, 2}));
    EXPECT_TRUE(KOBWBIsEqual(KOBWBMod(env, II{5, 7}, II{-3, 4}), II{-2, 3}));
    EXPECT_TRUE(KOBWBIsEqual(KOBWBMod(env, II{INT_MIN + 1, INT_MIN + 1}, II{-1, -1}), II{0, 0}));

    ExpectInterval(KOBWBDim(env, RI{1, 5}, RI{2, 3}), 0, 3);
    ExpectInterval(KOBWBSign(env, RI{-3, 2}, RI{-2, -1}), -3, 0);
    ExpectInterval(KOBWBSign(env, RI{2, 3}, RI{-1, 1}), -3, 3);
    ExpectInterval(KOBWBSign(env, RI{2, 3}, RI{0, 0}), 2, 3);
    EXPECT_EQ(KOBWBDim(env, KOBWBValue(2), KOBWBValue(5)).GetAsInteger(), 0);
    EXPECT_EQ(KOBWBSign(env, KOBWBValue(4), KOBWBValue(-1)).GetAsInteger(), -4);
    EXPECT_EQ(env.GetError(), 0u);
}

TEST(KOBWBArithmetic, IntegerSaturation) {
    KOBWBEnvironment env;
    const int max = KOBWBMaxInteger;
    EXPECT_TRUE(KOBWBIsEqual(KOBWBSum(env, II{0, max - 1}, II{0, 5}), II{0, max}));
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBSum(env, II{max - 1, max}, II{5, 5})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    EXPECT_TRUE(IsNil(KOBWBSub(env, II{-max, -max + 1}, II{5, 9})));
    EXPECT_TRUE(KOBWBIsEqual(KOBWBMul(env, II{-70000, 3}, II{70000, 70000}), II{-max, 210000}));
    EXPECT_TRUE(IsNil(KOBWBMul(env, II{70000, 80000}, II{70000, 70000})));
    EXPECT_TRUE(KOBWBIsEqual(KOBWBAbs(env, II{INT_MIN, 0}), II{0, max}));
    EXPECT_TRUE(IsNil(KOBWBSum(env, II{3, 2}, II{0, 0})));

    EXPECT_TRUE(KOBWBIsEqual(KOBWBPow(env, II{-2, -1}, 31), II{-max, -1}));
    EXPECT_TRUE(KOBWBIsEqual(KOBWBPow(env, II{0, 0}, 0), II{1, 1}));
    EXPECT_TRUE(KOBWBIsEqual(KOBWBPow(env, II{-1, -1}, 1000000001), II{-1, -1}));
    EXPECT_TRUE(IsNil(KOBWBPow(env, II{50000, 60000}, 2)));
    env.ClearError();
    // A negative power keeps only the integer powers, those of 1 and -1.
    EXPECT_TRUE(KOBWBIsEqual(KOBWBPow(env, II{1, 3}, -1), II{1, 1}));
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBPow(env, II{2, 3}, -1)));
    EXPECT_EQ(env.GetError(), 1u);
}

TEST(KOBWBArithmetic, ValueKindsFollowTheArguments) {
    KOBWBEnvironment env;
    EXPECT_EQ(KOBWBSum(env, KOBWBValue(2), KOBWBValue(0.5)).GetType(), KOBWBRealValue);
    EXPECT_EQ(KOBWBDiv(env, KOBWBValue(6), KOBWBValue(3)).GetType(), KOBWBRealValue);
    EXPECT_EQ(KOBWBMul(env, KOBWBValue(2.0), KOBWBValue(II{1, 3})).GetType(),
              KOBWBRealIntervalValue);
    EXPECT_EQ(KOBWBRound(env, KOBWBValue(II{1, 4})).GetType(), KOBWBIntegerIntervalValue);

    // An argument standing for any gives the function's range as an interval.
    const KOBWBValue anyExp = KOBWBExp(env, KOBWBValue(KOBWBSingleReal_Any));
    EXPECT_EQ(anyExp.GetType(), KOBWBRealIntervalValue);
    ExpectInterval(anyExp.GetAsRealInterval(), 0, KOBWBMaxReal);
    ExpectInterval(KOBWBSin(env, KOBWBValue(KOBWBSingleInteger_Any)).GetAsRealInterval(), -1, 1);
    EXPECT_EQ(KOBWBSum(env, KOBWBValue(1.0), KOBWBValue(KOBWBSingleReal_Any)).GetType(),
              KOBWBRealIntervalValue);
    EXPECT_EQ(env.GetError(), 0u);

    // A trigonometric function of a single real beyond the limit knows only its range.
    EXPECT_TRUE(KOBWBIsAnyReal(KOBWBSin(env, KOBWBValue(2e9)).GetAsReal()));
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(KOBWBIsNilReal(KOBWBLn(env, KOBWBValue(-1.0)).GetAsReal()));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    EXPECT_TRUE(KOBWBIsNilInteger(
        KOBWBSum(env, KOBWBValue(KOBWBMaxInteger), KOBWBValue(1)).GetAsInteger()));
    EXPECT_EQ(env.GetError(), 1u);
}

TEST(KOBWBArithmetic, ExactFractions) {
    KOBWBEnvironment env;
    const KOBWBValue fiveSixthsPi = KOBWBSum(env, Fraction(1, 2, 1), Fraction(1, 3, 1));
    ASSERT_TRUE(fiveSixthsPi.IsAFraction());
    EXPECT_EQ(fiveSixthsPi.GetAsFraction().numerator, 5);
    EXPECT_EQ(fiveSixthsPi.GetAsFraction().denominator, 6);
    EXPECT_EQ(fiveSixthsPi.GetAsFraction().powerOfPi, 1);

    const KOBWBValue piSquared = KOBWBMul(env, Fraction(1, 2, 1), Fraction(2, 1, 1));
    ASSERT_TRUE(piSquared.IsAFraction());
    EXPECT_EQ(piSquared.GetAsFraction().numerator, 1);
    EXPECT_EQ(piSquared.GetAsFraction().powerOfPi, 2);

    const KOBWBValue two = KOBWBDiv(env, Fraction(2, 3, 1), Fraction(1, 3, 1));
    EXPECT_FALSE(two.IsAFraction());
    EXPECT_EQ(two.GetType(), KOBWBIntegerValue);
    EXPECT_EQ(two.GetAsInteger(), 2);
    const KOBWBValue halfPiMinusOne = KOBWBSub(env, Fraction(1, 2, 0), KOBWBValue(1));
    ASSERT_TRUE(halfPiMinusOne.IsAFraction());
    EXPECT_EQ(halfPiMinusOne.GetAsFraction().numerator, -1);
    const KOBWBValue zeroPlusPi = KOBWBSum(env, KOBWBValue(0), Fraction(3, 4, 1));
    EXPECT_TRUE(zeroPlusPi.IsAFraction());

    // Different powers of Pi do not add exactly: real arithmetic, no error.
    const KOBWBValue mixed = KOBWBSum(env, Fraction(1, 2, 1), Fraction(1, 2, 0));
    EXPECT_FALSE(mixed.IsAFraction());
    EXPECT_DOUBLE_EQ(mixed.GetAsReal(), 3.141592653589793 / 2 + 0.5);
    // A product that overflows 32 bits falls back to reals without an error.
    const KOBWBValue big = KOBWBMul(env, Fraction(1, 99991, 1), Fraction(1, 99989, 1));
    EXPECT_FALSE(big.IsAFraction());
    EXPECT_NEAR(big.GetAsReal(), 3.141592653589793 * 3.141592653589793 / 99991.0 / 99989.0, 1e-20);
    const KOBWBValue byZero = KOBWBDiv(env, Fraction(1, 2, 1), KOBWBValue(0));
    EXPECT_TRUE(KOBWBIsAnyReal(byZero.GetAsReal()));
    EXPECT_EQ(env.GetError(), 0u);
    // Real operands are not exact: the sum is real.
    EXPECT_FALSE(KOBWBSum(env, Fraction(1, 2, 1), KOBWBValue(0.5)).IsAFraction());
    // Functions without a fraction rule read fractions as reals.
    EXPECT_DOUBLE_EQ(KOBWBSin(env, Fraction(1, 2, 1)).GetAsReal(), 1.0);
}

// Pi^2/180, printed from an exact constant, reads back as a power: its value must be
// the exact fraction that Pi*Pi gives.
TEST(KOBWBArithmetic, IntegralPowersOfExactFractionsStayExact) {
    KOBWBEnvironment env;
    const KOBWBValue piSquared = KOBWBPow(env, Fraction(1, 1, 1), 2);
    ASSERT_TRUE(piSquared.IsAFraction());
    EXPECT_EQ(piSquared.GetAsFraction().powerOfPi, 2);
    EXPECT_EQ(piSquared.GetAsFraction().numerator, 1);
    const KOBWBValue inverse = KOBWBPow(env, Fraction(1, 2, 1), KOBWBValue(-3));
    ASSERT_TRUE(inverse.IsAFraction());
    EXPECT_EQ(inverse.GetAsFraction().numerator, 8);
    EXPECT_EQ(inverse.GetAsFraction().denominator, 1);
    EXPECT_EQ(inverse.GetAsFraction().powerOfPi, -3);
    EXPECT_EQ(KOBWBPow(env, Fraction(2, 3, 0), 0).GetAsInteger(), 1);
    // Past the fractions' range, or 0 to a negative power: the real result as before.
    EXPECT_FALSE(KOBWBPow(env, Fraction(3, 2, 1), 40).IsAFraction());
    EXPECT_NEAR(KOBWBPow(env, Fraction(3, 2, 1), 40).GetAsReal(), std::pow(1.5 * M_PI, 40), 1e-6 * std::pow(1.5 * M_PI, 40));
    EXPECT_FALSE(KOBWBPow(env, Fraction(0, 1, 1), -1).IsAFraction());
}

TEST(KOBWBArithmetic, EnumerationsMappedElementByElement) {
    KOBWBEnvironment env;
    const KOBWBValue squares = KOBWBPow(env, IntegerList({-2, 1, 2}), 2);
    ASSERT_EQ(squares.GetType(), KOBWBIntegerEnumValue);
    EXPECT_EQ(squares.GetIntegerEnum().GetSize(), 2);

    const KOBWBValue logs = KOBWBLn(env, RealList({-1.0, 1.0, 2.0}));
    ASSERT_EQ(logs.GetType(), KOBWBRealEnumValue);
    EXPECT_EQ(logs.GetRealEnum().GetRepresentation(), KOBWBEnumList);
    ASSERT_EQ(logs.GetRealEnum().GetSize(), 2);
    EXPECT_DOUBLE_EQ(logs.GetRealEnum().Get(1), std::log(2.0));
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_EQ(KOBWBLn(env, RealList({-1.0, -2.0})).GetRealEnum().GetRepresentation(), KOBWBEnumNil);
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();

    // More images than the maximum size: the hull, as an interval.
    env.SetMaxEnumSize(4);
    const KOBWBValue many = KOBWBMul(env, IntegerList({1, 2, 3}), IntegerList({5, 7}));
    EXPECT_EQ(many.GetIntegerEnum().GetRepresentation(), KOBWBEnumInterval);
    EXPECT_TRUE(KOBWBIsEqual(many.GetAsIntegerInterval(), II{5, 21}));
    env.SetMaxEnumSize(50);

    // An image wider than a point turns the result into the hull of the images.
    const KOBWBValue quotients = KOBWBDiv(env, RealList({1.0, 2.0}), RealList({-1.0, 0.0}));
    EXPECT_TRUE(KOBWBIsIndefinite(quotients));
    // An interval operand goes through the hull of the enumeration.
    const KOBWBValue shifted = KOBWBSum(env, IntegerList({1, 3}), KOBWBValue(II{0, 1}));
    EXPECT_EQ(shifted.GetType(), KOBWBIntegerEnumValue);
    EXPECT_TRUE(KOBWBIsEqual(shifted.GetAsIntegerInterval(), II{1, 4}));
    EXPECT_EQ(shifted.GetIntegerEnum().GetSize(), 4);
    EXPECT_EQ(env.GetError(), 0u);
}
