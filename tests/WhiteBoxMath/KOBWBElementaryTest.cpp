#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBHyperbolic.h"
#include "KOBWBLimits.h"
#include "KOBWBPowers.h"
#include "KOBWBRounding.h"
#include "KOBWBStep.h"
#include "KOBWBTrigonometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using RI = KOBWBRealInterval;

constexpr double pi = 3.141592653589793;
constexpr long double piLong = 3.141592653589793238462643383279502884L;

void ExpectInterval(const RI& actual, double lower, double upper) {
    EXPECT_DOUBLE_EQ(actual.lower, lower);
    EXPECT_DOUBLE_EQ(actual.upper, upper);
}

bool IsNil(const RI& r) {
    return r.lower == KOBWBMaxReal && r.upper == -KOBWBMaxReal;
}

// Relative closeness of a bound to its long double reference.
bool Close(double bound, long double reference, long double relative) {
    return std::fabs(bound - reference) <= relative * std::max(1.0L, std::fabs(reference));
}

} // namespace

TEST(KOBWBElementary, SineCosineTangentQuadrants) {
    KOBWBEnvironment env;
    ExpectInterval(KOBWBSin(env, RI{0, 7}), -1, 1);
    ExpectInterval(KOBWBSin(env, RI{0.1, 0.2}), std::sin(0.1), std::sin(0.2));
    const RI oneTwo = KOBWBSin(env, RI{1, 2});
    EXPECT_EQ(oneTwo.upper, 1.0);
    EXPECT_DOUBLE_EQ(oneTwo.lower, std::sin(1.0));
    // Same quadrant after almost a full turn: everything.
    ExpectInterval(KOBWBSin(env, RI{0.1, 0.1 + 2 * pi - 0.01}), -1, 1);
    EXPECT_TRUE(KOBWBIsInfinite(KOBWBTan(env, RI{1.5, 1.7})));
    ExpectInterval(KOBWBTan(env, RI{3, 3.5}), std::tan(3.0), std::tan(3.5));
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBSin(env, RI{2e9, 3e9})));
    EXPECT_EQ(env.GetError(), 1u);
}

TEST(KOBWBElementary, ExponentialsAndHyperbolicDomains) {
    KOBWBEnvironment env;
    ExpectInterval(KOBWBExp(env, RI{0, 200}), 1, KOBWBMaxReal);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBExp(env, RI{178, 200})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    ExpectInterval(KOBWBLn(env, RI{-1, 1}), std::log(KOBWBMinReal), 0);
    ExpectInterval(KOBWBLog(env, RI{0.01, 1000}), -2, 3);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBLn(env, RI{-2, -1})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    // Within the tolerance of the domain a point is kept and taken on the domain.
    ExpectInterval(KOBWBAcos(env, RI{1 + 1e-15, 1 + 1e-15}), 0, 0);
    ExpectInterval(KOBWBSqrt(env, RI{-1e-16, 4}), 0, 2);
    EXPECT_EQ(env.GetError(), 0u);

    ExpectInterval(KOBWBCosh(env, RI{-1, 2}), 1, std::cosh(2.0));
    ExpectInterval(KOBWBSinh(env, RI{0, 1000}), 0, KOBWBMaxReal);
    ExpectInterval(KOBWBAcosh(env, RI{0, 1}), 0, 0);
    ExpectInterval(KOBWBAtanh(env, RI{-2, 0}), std::atanh(KOBWBAbsPrecision - 1), 0);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBAcosh(env, RI{-3, 0.5})));
    EXPECT_TRUE(IsNil(KOBWBSinh(env, RI{180, 190})));
    EXPECT_EQ(env.GetError(), 1u);
}

TEST(KOBWBElementary, SineAndCosineRangesAreTight) {
    std::mt19937_64 random(77);
    std::uniform_real_distribution<double> start(-100, 100);
    std::uniform_real_distribution<double> width(0, 7);
    KOBWBEnvironment env;
    for (int i = 0; i < 2000; ++i) {
        const double a = start(random);
        const double b = a + width(random);
        for (const bool sine : {true, false}) {
            // The exact range: the bounds and every extremum k Pi/2 between them.
            long double low = sine ? sinl(a) : cosl(a);
            long double high = low;
            const long double atB = sine ? sinl(b) : cosl(b);
            low = std::min(low, atB);
            high = std::max(high, atB);
            for (long double k = std::ceil(a / (piLong / 2)); k * (piLong / 2) <= b; k += 1) {
                const long double v = sine ? sinl(k * piLong / 2) : cosl(k * piLong / 2);
                low = std::min(low, v);
                high = std::max(high, v);
            }
            const RI r = sine ? KOBWBSin(env, RI{a, b}) : KOBWBCos(env, RI{a, b});
            EXPECT_TRUE(Close(r.lower, low, 1e-15L)) << sine << " " << a << " " << b;
            EXPECT_TRUE(Close(r.upper, high, 1e-15L)) << sine << " " << a << " " << b;
        }
    }
}

TEST(KOBWBElementary, IntegerPowers) {
    KOBWBEnvironment env;
    ExpectInterval(KOBWBPow(env, RI{-3, 2}, 2), 0, 9);
    ExpectInterval(KOBWBPow(env, RI{-3, 2}, 0), 1, 1);
    ExpectInterval(KOBWBPow(env, RI{-4, -2}, -1), -0.5, -0.25);
    // 0 inside the base of a negative power.
    ExpectInterval(KOBWBPow(env, RI{-1, 2}, -2), 0.25, KOBWBMaxReal);
    EXPECT_TRUE(KOBWBIsInfinite(KOBWBPow(env, RI{-1, 2}, -1)));
    ExpectInterval(KOBWBPow(env, RI{0, 2}, -1), 0.5, KOBWBMaxReal);
    ExpectInterval(KOBWBPow(env, RI{1e30, 1e30}, 1), 1e30, 1e30);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBPow(env, RI{0, 0}, -1)));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    // Beyond the radius KOBWBMaxReal^(1/n) nothing is left.
    EXPECT_TRUE(IsNil(KOBWBPow(env, RI{1e20, 1e21}, 2)));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    ExpectInterval(KOBWBPow(env, RI{0, 1e21}, 2), 0, KOBWBMaxReal);

    ExpectInterval(KOBWBPow(env, RI{2, 2}, RI{3, 3}), 8, 8);
    ExpectInterval(KOBWBPow(env, RI{-4, 4}, RI{0.5, 0.5}), std::sqrt(KOBWBMinReal), 2);
    ExpectInterval(KOBWBPow(env, RI{0.5, 2}, RI{-1, 2}), 0.25, 4);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBPow(env, RI{-4, -1}, RI{1, 2})));
    EXPECT_TRUE(IsNil(KOBWBPow(env, RI{10, 10}, RI{100, 100})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();

    // At the value level an integral exponent keeps negative bases.
    EXPECT_EQ(KOBWBPow(env, KOBWBValue(-2), KOBWBValue(3)).GetAsInteger(), -8);
    EXPECT_DOUBLE_EQ(KOBWBPow(env, KOBWBValue(-2.0), KOBWBValue(2.0)).GetAsReal(), 4);
    EXPECT_DOUBLE_EQ(KOBWBPow(env, KOBWBValue(2), -1).GetAsReal(), 0.5);
    EXPECT_DOUBLE_EQ(KOBWBPow(env, KOBWBValue(4.0), KOBWBValue(0.5)).GetAsReal(), 2);
    EXPECT_EQ(env.GetError(), 0u);
}

TEST(KOBWBElementary, RootsAndTheirBranches) {
    KOBWBEnvironment env;
    // The widening holds the exact root even where pow(x, 1/n) misses it.
    for (int n = 3; n <= 12; ++n) {
        for (double base = 2; base <= 11; ++base) {
            const double power = std::pow(base, n);
            const RI r = KOBWBRootPositive(env, RI{power, power}, n);
            EXPECT_LE(r.lower, base) << n << " " << base;
            EXPECT_GE(r.upper, base) << n << " " << base;
            EXPECT_LT(r.upper - r.lower, 1e-14 * base);
        }
    }
    ExpectInterval(KOBWBRootNegative(env, RI{-8, 1}, 3), -2, 0);
    ExpectInterval(KOBWBRoot(env, RI{4, 4}, -2), 0.5, 0.5);
    ExpectInterval(KOBWBRoot(env, RI{0.25, 1}, 0), 0, 1);
    ExpectInterval(KOBWBRoot(env, RI{0.25, 0.5}, 0), 0, 0);
    EXPECT_EQ(env.GetError(), 0u);

    const RI negativeHint = {-10, -1};
    const RI bothHint = {-10, 10};
    ExpectInterval(KOBWBRoot(env, RI{4, 9}, 2, &negativeHint), -3, -2);
    ExpectInterval(KOBWBRoot(env, RI{4, 9}, 2, &bothHint), -3, 3);
    ExpectInterval(KOBWBRoot(env, RI{-8, 27}, 3, &negativeHint), -2, 0);
    EXPECT_EQ(env.GetError(), 0u);
    const RI farHint = {5, 6};
    EXPECT_TRUE(IsNil(KOBWBRoot(env, RI{4, 9}, 2, &farHint)));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();
    EXPECT_TRUE(IsNil(KOBWBRoot(env, RI{-9, -4}, 2)));
    EXPECT_TRUE(IsNil(KOBWBRootPositive(env, RI{-9, -4}, 3)));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();

    const KOBWBValue hint(negativeHint);
    EXPECT_DOUBLE_EQ(KOBWBRoot(env, KOBWBValue(9.0), 2, &hint).GetAsReal(), -3);
    const KOBWBValue undefinedHint;
    EXPECT_DOUBLE_EQ(KOBWBRoot(env, KOBWBValue(9.0), 2, &undefinedHint).GetAsReal(), 3);
    // Two roots of a single number: the interval of both.
    const KOBWBValue wide(bothHint);
    const KOBWBValue both = KOBWBRoot(env, KOBWBValue(9.0), 2, &wide);
    EXPECT_EQ(both.GetType(), KOBWBRealIntervalValue);
    EXPECT_NEAR(both.GetAsRealInterval().lower, -3, 1e-15);
    EXPECT_EQ(env.GetError(), 0u);
}

TEST(KOBWBElementary, InverseTrigonometricBranches) {
    KOBWBEnvironment env;
    const RI half = {0.5, 0.5};
    ExpectInterval(KOBWBAsin(env, half), pi / 6, pi / 6);
    const RI second = {2, 3};
    ExpectInterval(KOBWBAsin(env, half, &second), 5 * pi / 6, 5 * pi / 6);
    const RI turn = {6, 7};
    ExpectInterval(KOBWBAsin(env, half, &turn), pi / 6 + 2 * pi, pi / 6 + 2 * pi);
    const RI both = {0, 3};
    ExpectInterval(KOBWBAsin(env, half, &both), pi / 6, 5 * pi / 6);
    ExpectInterval(KOBWBAcos(env, half), pi / 3, pi / 3);
    const RI negative = {-2, -0.5};
    ExpectInterval(KOBWBAcos(env, half, &negative), -pi / 3, -pi / 3);
    ExpectInterval(KOBWBAcos(env, RI{-1, 1}), 0, pi);
    ExpectInterval(KOBWBAtan(env, RI{1, 1}), pi / 4, pi / 4);
    const RI around = {-3, 0};
    ExpectInterval(KOBWBAtan(env, RI{1, 1}, &around), pi / 4 - pi, pi / 4 - pi);
    EXPECT_EQ(env.GetError(), 0u);
    const RI between = {1, 2};
    EXPECT_TRUE(IsNil(KOBWBAsin(env, half, &between)));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();

    const KOBWBValue valueHint(second);
    EXPECT_DOUBLE_EQ(KOBWBAsin(env, KOBWBValue(0.5), &valueHint).GetAsReal(), 5 * pi / 6);
    EXPECT_DOUBLE_EQ(KOBWBAsin(env, KOBWBValue(0.5), nullptr).GetAsReal(), pi / 6);
}

TEST(KOBWBElementary, Atan2OverBoxes) {
    KOBWBEnvironment env;
    ExpectInterval(KOBWBAtan2(env, RI{1, 2}, RI{1, 2}), std::atan2(1.0, 2.0), std::atan2(2.0, 1.0));
    ExpectInterval(KOBWBAtan2(env, RI{0, 1}, RI{0, 1}), 0, pi / 2);
    ExpectInterval(KOBWBAtan2(env, RI{-1, 1}, RI{0, 1}), -pi / 2, pi / 2);
    ExpectInterval(KOBWBAtan2(env, RI{-1, 1}, RI{-1, 1}), -pi, pi);
    // Across the negative x axis the principal angles jump: everything.
    ExpectInterval(KOBWBAtan2(env, RI{-1, 1}, RI{-2, -1}), -pi, pi);
    ExpectInterval(KOBWBAtan2(env, RI{-0.0, 1}, RI{-2, -1}), std::atan2(1.0, -1.0), pi);
    // A segment that ends at the origin keeps the one angle of its other points; one
    // through the origin gives everything.
    ExpectInterval(KOBWBAtan2(env, RI{0, 0}, RI{0, 1}), 0, 0);
    ExpectInterval(KOBWBAtan2(env, RI{-0.0, 0}, RI{-2, 0}), pi, pi);
    ExpectInterval(KOBWBAtan2(env, RI{-2, 0}, RI{0, 0}), -pi / 2, -pi / 2);
    ExpectInterval(KOBWBAtan2(env, RI{0, 0}, RI{-2, 1}), -pi, pi);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBAtan2(env, RI{0, 0}, RI{0, 0})));
    EXPECT_EQ(env.GetError(), 1u);
    env.ClearError();

    // With a hint the arc across the axis stays in one piece.
    const RI aroundPi = {2, 4};
    const RI arc = KOBWBAtan2(env, RI{-1, 1}, RI{-2, -1}, &aroundPi);
    EXPECT_NEAR(arc.lower, pi - std::atan(1.0), 1e-15);
    EXPECT_NEAR(arc.upper, pi + std::atan(1.0), 1e-15);
    const RI nextTurn = {6, 7.5};
    const RI shifted = KOBWBAtan2(env, RI{1, 1}, RI{1, 1}, &nextTurn);
    EXPECT_NEAR(shifted.lower, pi / 4 + 2 * pi, 1e-15);
    const RI originOnEdge = KOBWBAtan2(env, RI{-1, 0}, RI{-1, 1}, &aroundPi);
    EXPECT_NEAR(originOnEdge.lower, pi, 1e-15);
    EXPECT_NEAR(originOnEdge.upper, 2 * pi, 1e-15);
    EXPECT_EQ(env.GetError(), 0u);
}

TEST(KOBWBElementary, RoundingAndStep) {
    KOBWBEnvironment env;
    ExpectInterval(KOBWBRound(env, RI{-2.5, 2.5}), -3, 3);
    ExpectInterval(KOBWBTrunc(env, RI{-1.7, 1.7}), -1, 1);

    const double rising[] = {0, 1, 2, 3};
    ExpectInterval(KOBWBStep(env, RI{-5, 1}, rising), 1, 2);
    ExpectInterval(KOBWBStep(env, RI{-5, 9}, rising), 1, 3);
    const double falling[] = {0, 3, 2, 1};
    ExpectInterval(KOBWBStep(env, RI{0.5, 1.5}, falling), 1.3125, 2.6875);
    const double jump[] = {1, 5, 1, 7};
    ExpectInterval(KOBWBStep(env, RI{0, 2}, jump), 5, 7);
    ExpectInterval(KOBWBStep(env, RI{1, 1}, jump), 5, 5);
    EXPECT_DOUBLE_EQ(KOBWBStep(env, KOBWBValue(1.0), rising).GetAsReal(), 2);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_TRUE(IsNil(KOBWBStep(env, RI{0, 1}, nullptr)));
    EXPECT_EQ(env.GetError(), 2u);
}
