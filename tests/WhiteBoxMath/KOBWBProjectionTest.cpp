#include "KOBWBArithmeticProjections.h"
#include "KOBWBEnvironment.h"
#include "KOBWBLimits.h"
#include "KOBWBLogicProjections.h"
#include "KOBWBPowerProjections.h"
#include "KOBWBRoundingProjections.h"
#include "KOBWBTrigonometryProjections.h"

#include <gtest/gtest.h>

#include <cmath>

// The cases where a projection is easy to get wrong: divisors and bases around 0,
// several periods, integers and enumerations, exact fractions, empty results.

namespace {

using RI = KOBWBRealInterval;
using II = KOBWBIntegerInterval;
using Env = KOBWBEnvironment;
using Value = KOBWBValue;

constexpr double pi = 3.141592653589793;

bool IsNil(const RI& a) {
    return a.lower > a.upper;
}

void ExpectNear(const RI& actual, double lower, double upper, double tolerance = 1e-12) {
    EXPECT_NEAR(actual.lower, lower, tolerance * std::max(1.0, std::fabs(lower)));
    EXPECT_NEAR(actual.upper, upper, tolerance * std::max(1.0, std::fabs(upper)));
}

TEST(KOBWBProjectionTest, DivisorsAndBasesAroundZero) {
    const Env e;
    // x * y = z with y holding 0: x lies in two unbounded pieces cut by x's box.
    ExpectNear(KOBWBInverseMul1(e, {1, 2}, {-10, 10}, {-1, 2}), -10, 10);
    ExpectNear(KOBWBInverseMul1(e, {1, 2}, {-10, 10}, {0, 2}), 0.5, 10);
    EXPECT_TRUE(IsNil(KOBWBInverseMul1(e, {1, 2}, {-0.5, 0.4}, {-1, 2})))
        << "x <= -1 or x >= 1/2 is needed";
    // Both holding 0 leave x whole; y = 0 alone leaves nothing for z != 0.
    ExpectNear(KOBWBInverseMul1(e, {-1, 2}, {-3, 3}, {-1, 1}), -3, 3);
    EXPECT_TRUE(IsNil(KOBWBInverseMul1(e, {1, 2}, {-3, 3}, {0, 0})));
    EXPECT_EQ(e.GetError() & 1u, 1u);
    // x / y = z: y = x / z with z holding 0.
    const Env f;
    ExpectNear(KOBWBInverseDiv2(f, {-1, 1}, {2, 3}, {-10, 10}), -10, 10);
    ExpectNear(KOBWBInverseDiv2(f, {0.5, 1}, {2, 3}, {-10, 10}), 2, 6);
    EXPECT_TRUE(IsNil(KOBWBInverseDiv2(f, {0, 0}, {2, 3}, {-10, 10})));
    // Even powers and roots of negative intervals.
    ExpectNear(KOBWBInversePow1(f, {4, 9}, {-10, 10}, 2), -3, 3);
    ExpectNear(KOBWBInversePow1(f, {4, 9}, {-10, -1}, 2), -3, -2);
    EXPECT_TRUE(IsNil(KOBWBInversePow1(f, {-9, -4}, {-10, 10}, 2)));
    ExpectNear(KOBWBInversePow1(f, {-27, -8}, {-10, 10}, 3), -3, -2);
    ExpectNear(KOBWBInversePow1(f, {0.25, 1}, {0, 10}, -2), 1, 2);
    EXPECT_TRUE(IsNil(KOBWBInverseSqrt(f, {-2, -1}, {0, 10})));
    ExpectNear(KOBWBInverseSqrt(f, {-2, 3}, {-5, 100}), 0, 9);
    ExpectNear(KOBWBInverseRoot(f, {-3, -2}, {0, 100}, 2), 4, 9);
    ExpectNear(KOBWBInverseAbs(f, {2, 3}, {-10, 2.5}), -3, 2.5);
}

TEST(KOBWBProjectionTest, PeriodicFunctionsOverSeveralPeriods) {
    const Env e;
    // sin x = 1 over [0, 20]: the maxima Pi/2 + 2k Pi, the first and the last inside,
    // widened by the x around a maximum whose sine rounds to 1.
    ExpectNear(KOBWBInverseSin(e, {1, 1}, {0, 20}), pi / 2, pi / 2 + 4 * pi, 1e-7);
    // Bounds move to the next branch when they lie in a gap.
    ExpectNear(KOBWBInverseSin(e, {0.5, 1}, {3, 9}), pi / 6 + 2 * pi, 5 * pi / 6 + 2 * pi);
    ExpectNear(KOBWBInverseCos(e, {1, 1}, {-1, 30}), 0, 8 * pi, 1e-7);
    // cos x <= -1/2 around x = -32 Pi.
    ExpectNear(KOBWBInverseCos(e, {-1, -0.5}, {-100, -95}), 2 * pi / 3 - 32 * pi,
               4 * pi / 3 - 32 * pi);
    ExpectNear(KOBWBInverseTan(e, {0, 0}, {1, 10}), pi, 3 * pi);
    EXPECT_TRUE(IsNil(KOBWBInverseSin(e, {0.9, 1}, {-1.5, 0.5})));
    EXPECT_TRUE(IsNil(KOBWBInverseCos(e, {1.5, 2}, {-1, 1})));
    // The angle of a point: on the diagonal y = x, in the second quadrant x <= 0 and
    // y >= 0; beyond the principal branch nothing is narrowed.
    ExpectNear(KOBWBInverseAtan21(e, {pi / 4, pi / 4}, {-10, 10}, {2, 3}), 2, 3, 1e-9);
    ExpectNear(KOBWBInverseAtan22(e, {pi / 2, pi}, {-1, 5}, {-4, 4}), -4, 0, 1e-9);
    ExpectNear(KOBWBInverseAtan21(e, {pi / 2, pi}, {-1, 5}, {-4, 4}), 0, 5, 1e-9);
    EXPECT_TRUE(IsNil(KOBWBInverseAtan21(e, {0.1, 0.2}, {-5, -1}, {1, 2})));
    ExpectNear(KOBWBInverseAtan21(e, {3, 4}, {-5, -1}, {1, 2}), -5, -1);
    // The inverses narrow through the forward function, whatever the branch.
    ExpectNear(KOBWBInverseAsin(e, {pi / 6 + 2 * pi, pi / 2 + 2 * pi}, {-1, 1}), 0.5, 1);
    ExpectNear(KOBWBInverseAcos(e, {0, pi / 3}, {-1, 1}), 0.5, 1);
}

TEST(KOBWBProjectionTest, IntegersEnumerationsAndFractionsKeepTheirKinds) {
    const Env e;
    // x + y = 10 with y in [3, 4] over the integers [0, 6.5]: x in {6, 7} cut to 6.
    const Value sumX = KOBWBInverseSum1(e, Value(10.0), Value(II{0, 6}), Value(RI{3.5, 4}));
    ASSERT_EQ(sumX.GetType(), KOBWBIntegerIntervalValue);
    EXPECT_EQ(sumX.GetAsIntegerInterval().lower, 6);
    EXPECT_EQ(sumX.GetAsIntegerInterval().upper, 6);
    // 2 x = z in [3, 5] keeps only the integer 2 of [-10, 10].
    const Value half = KOBWBInverseMul1(e, Value(RI{3, 5}), Value(II{-10, 10}), Value(2));
    EXPECT_EQ(half.GetAsIntegerInterval().lower, 2);
    EXPECT_EQ(half.GetAsIntegerInterval().upper, 2);
    // floor(x) in [1.5, 3.2] on integers keeps 2 and 3 exactly.
    const Value floored = KOBWBInverseFloor(e, Value(RI{1.5, 3.2}), Value(II{0, 10}));
    EXPECT_EQ(floored.GetAsIntegerInterval().lower, 2);
    EXPECT_EQ(floored.GetAsIntegerInterval().upper, 3);
    // An enumeration keeps the elements that can satisfy the relation, holes included.
    Value squares(KOBWBIntegerEnumValue);
    const int elements[] = {-3, -2, -1, 0, 1, 2, 3};
    squares.Set(7, elements);
    const Value roots = KOBWBInversePow1(e, Value(RI{3, 5}), squares, 2);
    ASSERT_EQ(roots.GetType(), KOBWBIntegerEnumValue);
    ASSERT_EQ(roots.GetIntegerEnum().GetSize(), 2);
    EXPECT_EQ(roots.GetIntegerEnum().Get(0), -2);
    EXPECT_EQ(roots.GetIntegerEnum().Get(1), 2);
    const Value none = KOBWBInversePow1(e, Value(RI{5, 6}), squares, 2);
    EXPECT_EQ(none.GetIntegerEnum().GetRepresentation(), KOBWBEnumNil);
    // An exact fraction that satisfies the relation stays that fraction.
    const KOBWBFraction third = {1, 3, 1, 1};
    const Value angle = KOBWBInverseSin(e, Value(RI{0.8, 0.9}), Value(third));
    EXPECT_TRUE(angle.IsAFraction());
    EXPECT_EQ(angle.GetAsFraction().denominator, 3);
    const Value away = KOBWBInverseSin(e, Value(RI{-0.9, -0.8}), Value(third));
    EXPECT_TRUE(KOBWBIsEmpty(e, away));
    // A Boolean where a number is expected is a bad kind.
    const Env f;
    KOBWBInverseExp(f, Value(KOBWBTrue), Value(RI{0, 1}));
    EXPECT_EQ(f.GetError() & 2u, 2u);
}

TEST(KOBWBProjectionTest, EmptyIntersectionsAndNearMisses) {
    const Env e;
    EXPECT_TRUE(IsNil(KOBWBInverseSum1(e, {0, 1}, {5, 6}, {0, 1})));
    EXPECT_EQ(e.GetError() & 1u, 1u);
    // A miss within the tolerance closes to the nearer bound of x.
    const RI touching = KOBWBInverseSum1(e, {1 + 4e-15, 2}, {0, 1}, {0, 0});
    EXPECT_EQ(touching.lower, 1);
    EXPECT_EQ(touching.upper, 1);
    // An inconsistent argument gives Nil and bit 1, as for forward functions.
    const Env f;
    EXPECT_TRUE(IsNil(KOBWBInverseExp(f, {2, 1}, {0, 1})));
    EXPECT_EQ(f.GetError(), 1u);
    // min(x, y) = z with y wholly above z pins x to z.
    ExpectNear(KOBWBInverseMin1(e, {1, 2}, {-5, 5}, {3, 4}), 1, 2);
    ExpectNear(KOBWBInverseMin1(e, {1, 2}, {-5, 5}, {0, 4}), 1, 5);
    ExpectNear(KOBWBInverseMax2(e, {1, 2}, {-5, 0}, {-5, 5}), 1, 2);
    ExpectNear(KOBWBInverseExp(e, {-1, 1}, {-10, 10}), -10, 0);
    ExpectNear(KOBWBInverseLn(e, {0, 1}, {-10, 10}), 1, std::exp(1.0));
    ExpectNear(KOBWBInverseTanh(e, {0.5, 2}, {-100, 100}), std::atanh(0.5), 100);
}

TEST(KOBWBProjectionTest, ComparisonsAndLogic) {
    const Env e;
    ExpectNear(KOBWBInverseLessEqual1(e, KOBWBTrue, RI{0, 10}, RI{2, 4}), 0, 4);
    ExpectNear(KOBWBInverseLessEqual1(e, KOBWBFalse, RI{0, 10}, RI{2, 4}), 2, 10);
    ExpectNear(KOBWBInverseLessEqual2(e, KOBWBTrue, RI{3, 10}, RI{0, 5}), 3, 5);
    ExpectNear(KOBWBInverseEqual1(e, KOBWBTrue, RI{0, 10}, RI{2, 4}), 2, 4);
    ExpectNear(KOBWBInverseNotEqual1(e, KOBWBTrue, RI{0, 10}, RI{2, 4}), 0, 10);
    EXPECT_TRUE(IsNil(KOBWBInverseEqual1(e, KOBWBContr, RI{0, 10}, RI{2, 4})));
    // Integers: strict orders and inequality with a single integer are exact.
    const II above = KOBWBInverseLessEqual1(e, KOBWBFalse, II{0, 10}, II{2, 4});
    EXPECT_EQ(above.lower, 3);
    const II below = KOBWBInverseLessEqual2(e, KOBWBFalse, II{0, 3}, II{-5, 9});
    EXPECT_EQ(below.upper, 2);
    const II different = KOBWBInverseNotEqual1(e, KOBWBTrue, II{4, 9}, II{4, 4});
    EXPECT_EQ(different.lower, 5);
    const Value integer =
        KOBWBInverseLessEqual1(e, Value(KOBWBFalse), Value(II{0, 10}), Value(II{2, 4}));
    EXPECT_EQ(integer.GetAsIntegerInterval().lower, 3);
    // Four-valued logic: a true conjunction makes both sides true; a false one with a
    // true side makes the other false; an implication that holds with a true premise
    // makes its conclusion true.
    EXPECT_EQ(KOBWBInverseAnd1(KOBWBTrue, KOBWBUndef, KOBWBUndef), KOBWBTrue);
    EXPECT_EQ(KOBWBInverseAnd2(KOBWBFalse, KOBWBTrue, KOBWBUndef), KOBWBFalse);
    EXPECT_EQ(KOBWBInverseOr1(KOBWBFalse, KOBWBUndef, KOBWBUndef), KOBWBFalse);
    EXPECT_EQ(KOBWBInverseOr2(KOBWBTrue, KOBWBFalse, KOBWBUndef), KOBWBTrue);
    EXPECT_EQ(KOBWBInverseImplication2(KOBWBTrue, KOBWBTrue, KOBWBUndef), KOBWBTrue);
    EXPECT_EQ(KOBWBInverseImplication1(KOBWBFalse, KOBWBUndef, KOBWBUndef), KOBWBTrue);
    EXPECT_EQ(KOBWBInverseAnd1(KOBWBTrue, KOBWBFalse, KOBWBUndef), KOBWBContr);
    EXPECT_EQ(KOBWBInverseNot(KOBWBTrue, KOBWBUndef), KOBWBFalse);
    EXPECT_EQ(KOBWBInverseNot(Value(KOBWBFalse), Value(KOBWBUndef)).GetAsBoolean(), KOBWBTrue);
}

} // namespace
