#include "KOBWBInterval.h"
#include "KOBWBLimits.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(KOBWBLimits, ExactValuesAndDerivations) {
    EXPECT_EQ(KOBWBMaxReal, 3.4028234663852886e+38);
    EXPECT_EQ(KOBWBMaxReal, static_cast<double>(3.40282346638528859811704183484516925e+38F));
    EXPECT_DOUBLE_EQ(KOBWBMinReal, 1.0 / KOBWBMaxReal);
    EXPECT_DOUBLE_EQ(KOBWBMaxExpReal, std::log(KOBWBMaxReal));
    EXPECT_DOUBLE_EQ(KOBWBMaxHypReal, std::log(2 * KOBWBMaxReal));
    EXPECT_EQ(KOBWBMaxInteger, 2147483646);
    EXPECT_EQ(KOBWBSingleInteger_Any, 2147483647);
    EXPECT_EQ(KOBWBSingleInteger_Nil, -2147483647);
    EXPECT_EQ(KOBWBSingleReal_Any, 10 * KOBWBMaxReal);
    EXPECT_EQ(KOBWBOnePlusEps, 1.0 + std::ldexp(1.0, -52));
    EXPECT_EQ(KOBWBReal_Nil.lower, KOBWBMaxReal);
    EXPECT_EQ(KOBWBInteger_Nil.upper, -KOBWBMaxInteger);
}

TEST(KOBWBInterval, ConstructionClampsAndCanonicalisesEmptiness) {
    const KOBWBRealInterval crossed = KOBWBCreateRealInterval(2, 1);
    EXPECT_EQ(crossed.lower, KOBWBMaxReal);
    EXPECT_EQ(crossed.upper, -KOBWBMaxReal);
    const KOBWBRealInterval clamped = KOBWBCreateRealInterval(-1e40, 5);
    EXPECT_EQ(clamped.lower, -KOBWBMaxReal);
    EXPECT_EQ(clamped.upper, 5);
    EXPECT_EQ(KOBWBCreateRealInterval(1e39, 2e39).lower, KOBWBMaxReal);
    EXPECT_EQ(KOBWBCreateRealInterval(std::nan(""), 1.0).lower, KOBWBMaxReal);

    const KOBWBIntegerInterval half = KOBWBCreateIntegerInterval(KOBWBCreateRealInterval(2.5, 2.5));
    EXPECT_TRUE(KOBWBIsEqual(half, KOBWBInteger_Nil));
    const KOBWBIntegerInterval snapped =
        KOBWBCreateIntegerInterval(KOBWBCreateRealInterval(1.99999999999999999, 3.00000000000001));
    EXPECT_EQ(snapped.lower, 2);
    EXPECT_EQ(snapped.upper, 3);
    const KOBWBIntegerInterval negative = KOBWBCreateIntegerInterval(KOBWBCreateRealInterval(-2.5, -0.5));
    EXPECT_EQ(negative.lower, -2);
    EXPECT_EQ(negative.upper, -1);
    const KOBWBIntegerInterval nearNegative =
        KOBWBCreateIntegerInterval(KOBWBRealInterval{-3.000000000000001, -1.9999999999999996});
    EXPECT_EQ(nearNegative.lower, -3);
    EXPECT_EQ(nearNegative.upper, -2);
    const KOBWBIntegerInterval wide = KOBWBCreateIntegerInterval(KOBWBReal_Any);
    EXPECT_TRUE(KOBWBIsEqual(wide, KOBWBInteger_Any));
}

TEST(KOBWBInterval, PredicatesAndMeasures) {
    const double tol = 1e-14;
    EXPECT_FALSE(KOBWBIsEmpty(KOBWBRealInterval{1 + 1e-15, 1}, tol));
    EXPECT_TRUE(KOBWBIsEmpty(KOBWBRealInterval{1.1, 1}, tol));
    EXPECT_FALSE(KOBWBIsExact(KOBWBRealInterval{1, 1.00000000000002}, tol));
    EXPECT_FALSE(KOBWBIsExact(KOBWBRealInterval{2, 2}, 0));
    EXPECT_TRUE(KOBWBIsExact(KOBWBRealInterval{2, 2}, tol));
    EXPECT_TRUE(KOBWBIsFinite(KOBWBRealInterval{-KOBWBMaxReal, 0}));
    EXPECT_FALSE(KOBWBIsFinite(KOBWBReal_Any));
    EXPECT_TRUE(KOBWBIsInfinite(KOBWBReal_Any));
    EXPECT_EQ(KOBWBWidth(KOBWBInteger_Any), 2147483646);
    EXPECT_EQ(KOBWBWidth(KOBWBIntegerInterval{-3, 4}), 7);
    EXPECT_TRUE(KOBWBIsExact(KOBWBIntegerInterval{5, 5}));
    EXPECT_FALSE(KOBWBIsExact(KOBWBInteger_Any));
    EXPECT_EQ(KOBWBSignum(KOBWBRealInterval{0.5, 2}), 1);
    EXPECT_EQ(KOBWBSignum(KOBWBRealInterval{-2, -0.5}), -1);
    EXPECT_EQ(KOBWBSignum(KOBWBRealInterval{-2, 0.5}), 0);
    EXPECT_EQ(KOBWBMAG(KOBWBRealInterval{-7, 3}), 7);
    EXPECT_EQ(KOBWBMAG(KOBWBIntegerInterval{-2, 5}), 5);
    EXPECT_EQ(KOBWBMiddle(KOBWBRealInterval{1, 4}), 2.5);
    EXPECT_TRUE(KOBWBContains(KOBWBRealInterval{0, 1}, KOBWBRealInterval{1e-15, 1 + 1e-15}, tol));
    EXPECT_FALSE(KOBWBContains(KOBWBRealInterval{0, 1}, KOBWBRealInterval{0, 1.1}, tol));

    bool overflow = false;
    EXPECT_EQ(KOBWBSaturatedAdd(KOBWBMaxInteger, 1, overflow), KOBWBMaxInteger);
    EXPECT_TRUE(overflow);
    EXPECT_EQ(KOBWBSaturatedAdd(-KOBWBMaxInteger, -1, overflow), -KOBWBMaxInteger);
    EXPECT_TRUE(overflow);
    EXPECT_EQ(KOBWBSaturatedAdd(3, -5, overflow), -2);
    EXPECT_FALSE(overflow);
}

TEST(KOBWBInterval, SnappingIntersectionAndUnion) {
    const double tol = 1e-14;
    const KOBWBRealInterval a{0, 1};
    EXPECT_TRUE(KOBWBIsEmpty(KOBWBIntersect(a, KOBWBRealInterval{1.02, 5}, tol), tol));
    const KOBWBRealInterval touching = KOBWBIntersect(a, KOBWBRealInterval{1 + 5e-15, 5}, tol);
    EXPECT_EQ(touching.lower, 1);
    EXPECT_EQ(touching.upper, 1);
    const KOBWBRealInterval inner = KOBWBIntersect(a, KOBWBRealInterval{1e-15, 0.5}, tol);
    EXPECT_EQ(inner.lower, 0);
    EXPECT_EQ(inner.upper, 0.5);
    const KOBWBRealInterval large = KOBWBIntersect(KOBWBRealInterval{100, 200},
                                                   KOBWBRealInterval{100 + 5e-14, 300}, tol);
    EXPECT_EQ(large.lower, 100);

    const KOBWBRealInterval united = KOBWBUnite(KOBWBReal_Nil, KOBWBRealInterval{2, 3}, tol);
    EXPECT_EQ(united.lower, 2);
    EXPECT_EQ(united.upper, 3);
    const KOBWBIntegerInterval apart = KOBWBIntersect(KOBWBIntegerInterval{0, 2}, KOBWBIntegerInterval{5, 9});
    EXPECT_EQ(apart.lower, 5);
    EXPECT_EQ(apart.upper, 2);
}
