#include "KOBWBCoefficient.h"
#include "KOBWBPolynomial.h"
#include "KOBWBRational.h"

#include <gtest/gtest.h>

#include <climits>

TEST(KOBWBRational, ReducesAndCompares) {
    EXPECT_EQ(KOBWBRational(6, -4).ToString(), "-3/2");
    EXPECT_EQ(KOBWBRational(1, 3) + KOBWBRational(1, 6) - KOBWBRational(1, 2), KOBWBRational(0));
    EXPECT_TRUE((KOBWBRational(1, 3) + KOBWBRational(1, 6) - KOBWBRational(1, 2)).IsZero());
    EXPECT_LT(KOBWBRational(-1, 3), KOBWBRational(-1, 4));
    EXPECT_EQ(KOBWBRational(5, 0), KOBWBRational(0));
    EXPECT_EQ(KOBWBRational(3, 4) / KOBWBRational(0), KOBWBRational(0));
    EXPECT_EQ(KOBWBRational(2, 3).Power(-3), KOBWBRational(27, 8));
    KOBWBRational half;
    ASSERT_TRUE(KOBWBRational::FromDouble(0.375, half));
    EXPECT_EQ(half, KOBWBRational(3, 8));
    EXPECT_FALSE(KOBWBRational::FromDouble(1.0 / 0.0, half));
}

TEST(KOBWBRational, OverflowMovesToBigNumbersAndBack) {
    const KOBWBRational large(LLONG_MAX);
    KOBWBRational square = large * large;
    EXPECT_FALSE(square.IsSmall());
    EXPECT_EQ(square.ToString(), "85070591730234615847396907784232501249");
    KOBWBRational back = square / large;
    EXPECT_TRUE(back.IsSmall());
    EXPECT_EQ(back, large);
    EXPECT_EQ(-KOBWBRational(LLONG_MIN) - KOBWBRational(1), large);
    const KOBWBRational sum = large + large;
    EXPECT_EQ(sum.ToString(), "18446744073709551614");
    EXPECT_EQ(sum - large, large);
    EXPECT_EQ(KOBWBRational(1, LLONG_MAX) + KOBWBRational(1, LLONG_MAX - 1) - KOBWBRational(1, LLONG_MAX - 1),
              KOBWBRational(1, LLONG_MAX));
    KOBWBRational parsed;
    ASSERT_TRUE(KOBWBRational::FromString("-123456789012345678901234567890", parsed));
    EXPECT_EQ(parsed.ToString(), "-123456789012345678901234567890");
    EXPECT_LT(parsed, KOBWBRational(LLONG_MIN));
    EXPECT_FALSE(KOBWBRational::FromString("12x", parsed));
    EXPECT_EQ(KOBWBRational(2).Power(100).ToString(), "1267650600228229401496703205376");
    EXPECT_NEAR(KOBWBRational(2).Power(100).ToDouble(), 1.2676506002282294e30, 1e15);
    // Floor rounds toward minus infinity, in machine words and beyond.
    EXPECT_EQ(KOBWBRational(-7, 2).Floor(), KOBWBRational(-4));
    EXPECT_EQ(KOBWBRational(7, 2).Floor(), KOBWBRational(3));
    EXPECT_EQ(KOBWBRational(-6).Floor(), KOBWBRational(-6));
    const KOBWBRational big = -(KOBWBRational(2).Power(100) + KOBWBRational(1, 3));
    EXPECT_EQ(big.Floor(), -KOBWBRational(2).Power(100) - KOBWBRational(1));
    EXPECT_EQ((KOBWBRational(2).Power(100) / KOBWBRational(3)).Floor().ToString(), "422550200076076467165567735125");
    // Numerator and denominator of the reduced value.
    EXPECT_EQ(KOBWBRational(-6, 4).Numerator(), KOBWBRational(-3));
    EXPECT_EQ(KOBWBRational(-6, 4).Denominator(), KOBWBRational(2));
    const KOBWBRational third = KOBWBRational(2).Power(100) / KOBWBRational(3).Power(50);
    EXPECT_EQ(third.Numerator(), KOBWBRational(2).Power(100));
    EXPECT_EQ(third.Denominator(), KOBWBRational(3).Power(50));
}

TEST(KOBWBCoefficient, RealsFoldWithRealArithmeticAndNeverEqualExactOnes) {
    const KOBWBCoefficient exact = KOBWBRational(1, 2);
    const KOBWBCoefficient real = KOBWBCoefficient::Real(0.5);
    EXPECT_NE(exact, real);
    EXPECT_TRUE((exact + real).IsReal());
    EXPECT_DOUBLE_EQ((exact * real).ToDouble(), 0.25);
    EXPECT_TRUE((exact * exact).IsExact());
}

TEST(KOBWBPolynomial, ArithmeticCollectsLikeTerms) {
    const KOBWBPolynomial x = KOBWBPolynomial::Atom(1), y = KOBWBPolynomial::Atom(2);
    const KOBWBPolynomial one(KOBWBCoefficient(1));
    KOBWBPolynomial square;
    ASSERT_TRUE((x + one).Power(2, 100, square));
    EXPECT_TRUE((square - x * x - x * KOBWBPolynomial(KOBWBCoefficient(2)) - one).IsZero());
    EXPECT_EQ((x + y) * (x - y), x * x - y * y);
    KOBWBPolynomial big;
    ASSERT_TRUE((x + y + one).Power(10, 1000, big));
    EXPECT_EQ(big.GetNbOfTerms(), 66);
    EXPECT_EQ(big.GetTotalDegree(), 10);
    EXPECT_FALSE((x + y + one).Power(40, 100, big));
    EXPECT_EQ(big.GetNbOfTerms(), 66);
    KOBWBPolynomial huge;
    ASSERT_TRUE((x + one).Power(70, 1000, huge));
    KOBWBCoefficient middle;
    for (const KOBWBPolynomialTerm& term : huge.GetTerms())
        if (term.monomial.size() == 1 && term.monomial[0].exponent == 35) middle = term.coefficient;
    EXPECT_EQ(middle.GetExact().ToString(), "112186277816662845432");
}
