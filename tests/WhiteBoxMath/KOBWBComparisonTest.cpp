#include "KOBWBComparisons.h"
#include "KOBWBEnvironment.h"
#include "KOBWBLimits.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using RI = KOBWBRealInterval;
using II = KOBWBIntegerInterval;

const KOBWBBoolean booleans[] = {KOBWBFalse, KOBWBTrue, KOBWBUndef, KOBWBContr};

KOBWBValue IntegerList(std::initializer_list<int> elements) {
    KOBWBValue v(KOBWBIntegerEnumValue);
    v.Set(static_cast<int>(elements.size()), elements.begin());
    return v;
}

} // namespace

TEST(KOBWBComparison, RealToleranceIsAsymmetric) {
    KOBWBEnvironment env;
    const double t = KOBWBAbsPrecision;
    EXPECT_EQ(KOBWBLessEqual(env, RI{0, 1}, RI{1, 2}), KOBWBTrue);
    EXPECT_EQ(KOBWBLessEqual(env, RI{0, 1}, RI{0.5, 2}), KOBWBUndef);
    // True needs the bounds in order without tolerance; False needs a gap beyond it.
    EXPECT_EQ(KOBWBLessEqual(env, RI{0, 1}, RI{1 - t / 2, 2}), KOBWBUndef);
    EXPECT_EQ(KOBWBLessEqual(env, RI{1 + t / 2, 2}, RI{0, 1}), KOBWBUndef);
    EXPECT_EQ(KOBWBLessEqual(env, RI{1 + 2 * t, 2}, RI{0, 1}), KOBWBFalse);

    EXPECT_EQ(KOBWBEqual(env, RI{1, 1}, RI{1 + t / 2, 1 + t / 2}), KOBWBTrue);
    EXPECT_EQ(KOBWBEqual(env, RI{1, 1}, RI{1, 1 + 2 * t}), KOBWBUndef);
    EXPECT_EQ(KOBWBEqual(env, RI{0, 1}, RI{1 + t / 2, 2}), KOBWBUndef);
    EXPECT_EQ(KOBWBEqual(env, RI{0, 1}, RI{1 + 2 * t, 2}), KOBWBFalse);
    EXPECT_EQ(KOBWBEqual(env, RI{3, 4}, RI{0, 1}), KOBWBFalse);
    EXPECT_EQ(KOBWBNotEqual(env, RI{3, 4}, RI{0, 1}), KOBWBTrue);
    EXPECT_EQ(KOBWBNotEqual(env, RI{0, 4}, RI{0, 1}), KOBWBUndef);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_EQ(KOBWBEqual(env, RI{2, 1}, RI{0, 1}), KOBWBContr);
    EXPECT_EQ(KOBWBNotEqual(env, RI{0, 1}, RI{2, 1}), KOBWBContr);
    EXPECT_EQ(env.GetError(), 1u);
}

TEST(KOBWBComparison, IntegersAndValues) {
    KOBWBEnvironment env;
    EXPECT_EQ(KOBWBEqual(env, II{2, 2}, II{2, 2}), KOBWBTrue);
    EXPECT_EQ(KOBWBEqual(env, II{2, 3}, II{3, 5}), KOBWBUndef);
    EXPECT_EQ(KOBWBEqual(env, II{2, 3}, II{4, 5}), KOBWBFalse);
    EXPECT_EQ(KOBWBLessEqual(env, II{2, 3}, II{3, 5}), KOBWBTrue);
    EXPECT_EQ(KOBWBLessEqual(env, II{4, 5}, II{2, 3}), KOBWBFalse);
    EXPECT_EQ(KOBWBNotEqual(env, II{2, 2}, II{2, 2}), KOBWBFalse);

    EXPECT_EQ(KOBWBEqual(env, KOBWBValue(0), KOBWBValue(0.0)).GetAsBoolean(), KOBWBTrue);
    EXPECT_EQ(KOBWBLessEqual(env, KOBWBValue(2), KOBWBValue(II{1, 3})).GetAsBoolean(), KOBWBUndef);
    EXPECT_EQ(
        KOBWBEqual(env, KOBWBValue(KOBWBCreateFraction(1, 2, 1, 1)), KOBWBValue(1.5707963267948966))
            .GetAsBoolean(),
        KOBWBTrue);
    // Enumerations compare element by element: {1, 5} and {3} have no pair in common.
    EXPECT_EQ(KOBWBEqual(env, IntegerList({1, 5}), IntegerList({3})).GetAsBoolean(), KOBWBFalse);
    EXPECT_EQ(KOBWBEqual(env, IntegerList({1, 3}), KOBWBValue(3)).GetAsBoolean(), KOBWBUndef);
    EXPECT_EQ(KOBWBLessEqual(env, IntegerList({1, 3}), KOBWBValue(3.5)).GetAsBoolean(), KOBWBTrue);
    EXPECT_EQ(KOBWBNotEqual(env, IntegerList({1, 5}), IntegerList({3})).GetAsBoolean(), KOBWBTrue);
    // Two booleans can be tested for equality, not ordered.
    EXPECT_EQ(KOBWBEqual(env, KOBWBValue(KOBWBTrue), KOBWBValue(KOBWBTrue)).GetAsBoolean(),
              KOBWBTrue);
    EXPECT_EQ(KOBWBEqual(env, KOBWBValue(KOBWBTrue), KOBWBValue(KOBWBUndef)).GetAsBoolean(),
              KOBWBUndef);
    EXPECT_EQ(KOBWBNotEqual(env, KOBWBValue(KOBWBTrue), KOBWBValue(KOBWBFalse)).GetAsBoolean(),
              KOBWBTrue);
    EXPECT_EQ(env.GetError(), 0u);
    EXPECT_EQ(KOBWBLessEqual(env, KOBWBValue(KOBWBTrue), KOBWBValue(KOBWBTrue)).GetAsBoolean(),
              KOBWBContr);
    EXPECT_EQ(KOBWBEqual(env, KOBWBValue(), KOBWBValue(1)).GetAsBoolean(), KOBWBContr);
    EXPECT_EQ(KOBWBEqual(env, KOBWBValue(KOBWBTrue), KOBWBValue(1)).GetAsBoolean(), KOBWBContr);
    EXPECT_EQ(env.GetError(), 2u);
}

TEST(KOBWBComparison, ComparisonsAgreeWithThePointsTheyCover) {
    // "True" must hold for every pair of points and "False" for none.
    std::mt19937_64 random(5);
    std::uniform_int_distribution<int> small(-6, 6);
    KOBWBEnvironment env;
    for (int i = 0; i < 2000; ++i) {
        int a = small(random), b = small(random), c = small(random), d = small(random);
        if (a > b) std::swap(a, b);
        if (c > d) std::swap(c, d);
        const KOBWBBoolean equal = KOBWBEqual(env, II{a, b}, II{c, d});
        const KOBWBBoolean lessEqual =
            KOBWBLessEqual(env, RI{double(a), double(b)}, RI{double(c), double(d)});
        bool someEqual = false, allEqual = true, someLess = false, allLess = true;
        for (int x = a; x <= b; ++x) {
            for (int y = c; y <= d; ++y) {
                someEqual |= x == y;
                allEqual &= x == y;
                someLess |= x <= y;
                allLess &= x <= y;
            }
        }
        EXPECT_EQ(equal, allEqual ? KOBWBTrue : (someEqual ? KOBWBUndef : KOBWBFalse));
        EXPECT_EQ(lessEqual, allLess ? KOBWBTrue : (someLess ? KOBWBUndef : KOBWBFalse));
    }
}

TEST(KOBWBComparison, FourValuedLogic) {
    // Contr absorbs; Undef stays where either outcome is possible.
    for (const KOBWBBoolean b : booleans) {
        EXPECT_EQ(KOBWBAnd(KOBWBContr, b), KOBWBContr);
        EXPECT_EQ(KOBWBOr(b, KOBWBContr), KOBWBContr);
        EXPECT_EQ(KOBWBImplication(KOBWBContr, b), KOBWBContr);
        EXPECT_EQ(KOBWBNot(KOBWBNot(b)), b);
    }
    EXPECT_EQ(KOBWBAnd(KOBWBTrue, KOBWBTrue), KOBWBTrue);
    EXPECT_EQ(KOBWBAnd(KOBWBUndef, KOBWBFalse), KOBWBFalse);
    EXPECT_EQ(KOBWBAnd(KOBWBUndef, KOBWBTrue), KOBWBUndef);
    EXPECT_EQ(KOBWBOr(KOBWBUndef, KOBWBTrue), KOBWBTrue);
    EXPECT_EQ(KOBWBOr(KOBWBUndef, KOBWBFalse), KOBWBUndef);
    EXPECT_EQ(KOBWBOr(KOBWBFalse, KOBWBFalse), KOBWBFalse);
    EXPECT_EQ(KOBWBNot(KOBWBUndef), KOBWBUndef);
    EXPECT_EQ(KOBWBImplication(KOBWBFalse, KOBWBUndef), KOBWBTrue);
    EXPECT_EQ(KOBWBImplication(KOBWBTrue, KOBWBFalse), KOBWBFalse);
    EXPECT_EQ(KOBWBImplication(KOBWBUndef, KOBWBTrue), KOBWBTrue);
    EXPECT_EQ(KOBWBImplication(KOBWBTrue, KOBWBUndef), KOBWBUndef);

    // Values are read as booleans: numbers are true when non-zero.
    EXPECT_EQ(KOBWBAnd(KOBWBValue(KOBWBTrue), KOBWBValue(3)).GetAsBoolean(), KOBWBTrue);
    EXPECT_EQ(KOBWBAnd(KOBWBValue(KOBWBTrue), KOBWBValue(0.0)).GetAsBoolean(), KOBWBFalse);
    EXPECT_EQ(KOBWBOr(KOBWBValue(KOBWBFalse), KOBWBValue(RI{-1, 1})).GetAsBoolean(), KOBWBUndef);
    EXPECT_EQ(KOBWBOr(KOBWBValue(KOBWBTrue), KOBWBValue()).GetAsBoolean(), KOBWBTrue);
    EXPECT_EQ(KOBWBNot(KOBWBValue(RI{2, 1})).GetAsBoolean(), KOBWBContr);
    EXPECT_EQ(KOBWBImplication(KOBWBValue(II{1, 4}), KOBWBValue(KOBWBFalse)).GetAsBoolean(),
              KOBWBFalse);
}
