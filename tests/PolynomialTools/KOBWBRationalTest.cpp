#include "KOBWBCoefficient.h"
#include "KOBWBPolynomial.h"
#include "KOBWBRational.h"

#include <gtest/gtest.h>

#include <gmp.h>

#include <climits>
#include <cmath>
#include <random>
#include <string>
#include <vector>

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

namespace {

// A GMP rational read from decimal text, and back.
struct Oracle {
    explicit Oracle(const std::string& text) {
        mpq_init(value);
        mpq_set_str(value, text.c_str(), 10);
        mpq_canonicalize(value);
    }
    Oracle() { mpq_init(value); }
    ~Oracle() { mpq_clear(value); }
    std::string Text() const {
        std::string text(mpz_sizeinbase(mpq_numref(value), 10) + mpz_sizeinbase(mpq_denref(value), 10) + 3, '\0');
        mpq_get_str(&text[0], 10, value);
        return text.c_str();
    }
    mpq_t value;
};

} // namespace

// Integers past one word but within two are held without GMP, and every result
// must come back in the one form its value has: checked against GMP on values
// around 2^63, 2^64 and 2^127, with fractions and large numbers mixed in.
TEST(KOBWBRational, ValuesAroundTheWordBoundariesAgreeWithGmp) {
    const std::vector<std::string> texts = {
        "0", "1", "-1", "3", "9223372036854775807", "-9223372036854775808", "9223372036854775808",
        "-9223372036854775809", "18446744073709551616", "-18446744073709551615",
        "170141183460469231731687303715884105727", "-170141183460469231731687303715884105727",
        "170141183460469231731687303715884105728", "-170141183460469231731687303715884105728",
        "85070591730234615865843651857942052864", "1/3", "-7/9223372036854775807",
        "340282366920938463463374607431768211457/2"};
    std::vector<KOBWBRational> values;
    for (const std::string& text : texts) {
        const Oracle oracle(text);
        KOBWBRational value;
        if (text.find('/') == std::string::npos) {
            ASSERT_TRUE(KOBWBRational::FromString(text.c_str(), value)) << text;
        } else {
            KOBWBRational n, d;
            ASSERT_TRUE(KOBWBRational::FromString(text.substr(0, text.find('/')).c_str(), n));
            ASSERT_TRUE(KOBWBRational::FromString(text.substr(text.find('/') + 1).c_str(), d));
            value = n / d;
        }
        ASSERT_EQ(value.ToString(), oracle.Text()) << text;
        values.push_back(value);
    }
    // The form a value must have: machine words exactly when both parts fit.
    const auto checkForm = [](const KOBWBRational& value, const std::string& text) {
        const Oracle oracle(text);
        const bool small = mpz_fits_slong_p(mpq_numref(oracle.value)) && mpz_fits_slong_p(mpq_denref(oracle.value));
        EXPECT_EQ(value.IsSmall(), small) << text;
        EXPECT_EQ(value.IsZero(), mpq_sgn(oracle.value) == 0) << text;
        EXPECT_EQ(value.Sign(), mpq_sgn(oracle.value)) << text;
        EXPECT_EQ(value.IsInteger(), mpz_cmp_ui(mpq_denref(oracle.value), 1) == 0) << text;
        KOBWBRational reread;
        if (value.IsInteger()) {
            ASSERT_TRUE(KOBWBRational::FromString(text.c_str(), reread)) << text;
            EXPECT_EQ(reread.Hash(), value.Hash()) << text;
        }
        EXPECT_EQ(value.Numerator() / value.Denominator(), value) << text;
        EXPECT_DOUBLE_EQ(value.ToDouble(), mpq_get_d(oracle.value)) << text;
    };
    for (size_t i = 0; i < values.size(); ++i) {
        checkForm(values[i], texts[i]);
        const Oracle a(texts[i]);
        Oracle negated;
        mpq_neg(negated.value, a.value);
        EXPECT_EQ((-values[i]).ToString(), negated.Text()) << texts[i];
        for (size_t j = 0; j < values.size(); ++j) {
            const Oracle b(texts[j]);
            Oracle sum, difference, product, quotient;
            mpq_add(sum.value, a.value, b.value);
            mpq_sub(difference.value, a.value, b.value);
            mpq_mul(product.value, a.value, b.value);
            const std::string where = texts[i] + " and " + texts[j];
            const KOBWBRational s = values[i] + values[j], d = values[i] - values[j], p = values[i] * values[j];
            ASSERT_EQ(s.ToString(), sum.Text()) << where;
            ASSERT_EQ(d.ToString(), difference.Text()) << where;
            ASSERT_EQ(p.ToString(), product.Text()) << where;
            checkForm(s, sum.Text());
            checkForm(d, difference.Text());
            checkForm(p, product.Text());
            if (mpq_sgn(b.value) != 0) {
                mpq_div(quotient.value, a.value, b.value);
                const KOBWBRational q = values[i] / values[j];
                ASSERT_EQ(q.ToString(), quotient.Text()) << where;
                checkForm(q, quotient.Text());
            }
            EXPECT_EQ(KOBWBRational::Compare(values[i], values[j]), mpq_cmp(a.value, b.value) < 0 ? -1 : (mpq_cmp(a.value, b.value) > 0 ? 1 : 0)) << where;
            // Accumulating in place keeps each form, and a copy is independent.
            KOBWBRational accumulated = values[i];
            const KOBWBRational copy = accumulated;
            accumulated *= values[j];
            accumulated += values[j];
            Oracle expected;
            mpq_add(expected.value, product.value, b.value);
            ASSERT_EQ(accumulated.ToString(), expected.Text()) << where;
            checkForm(accumulated, expected.Text());
            EXPECT_EQ(copy, values[i]) << where;
        }
    }
    // A moved-from rational is 0.
    KOBWBRational wide = values[6];
    const KOBWBRational taken = std::move(wide);
    EXPECT_TRUE(wide.IsZero());
    EXPECT_EQ(taken, values[6]);
}

TEST(KOBWBCoefficient, RealsFoldWithRealArithmeticAndNeverEqualExactOnes) {
    const KOBWBCoefficient exact = KOBWBRational(1, 2);
    const KOBWBCoefficient real = KOBWBCoefficient::Real(0.5);
    EXPECT_NE(exact, real);
    EXPECT_TRUE((exact + real).IsReal());
    EXPECT_DOUBLE_EQ((exact * real).ToDouble(), 0.25);
    EXPECT_TRUE((exact * exact).IsExact());
    // A real is kept whatever its bits: the zero word of a rational's denominator
    // marks it, not its value. A real reads as exact 0; an exact value past machine
    // words that becomes real lets its big value go.
    for (const double value : {0.0, -0.0, 1.0, -1.0, 5e-324, 1e308, 0.1}) {
        const KOBWBCoefficient c = KOBWBCoefficient::Real(value);
        EXPECT_TRUE(c.IsReal()) << value;
        EXPECT_EQ(std::signbit(c.ToDouble()), std::signbit(value));
        EXPECT_EQ(c.ToDouble(), value);
        EXPECT_TRUE(c.GetExact().IsZero());
        EXPECT_EQ((-c).ToDouble(), -value);
        EXPECT_EQ(KOBWBCoefficient::Compare(KOBWBCoefficient(KOBWBRational(1000000)), c), -1);
    }
    EXPECT_TRUE(std::isnan(KOBWBCoefficient::Real(std::nan("")).ToDouble()));
    // Integers between 2^63 and 2^64 stay exact in two words, one of them 0.
    for (const KOBWBRational& wide : {KOBWBRational(2).Power(63), -KOBWBRational(2).Power(63) - 1,
                                      KOBWBRational(2).Power(64) - 1}) {
        const KOBWBCoefficient c(wide);
        EXPECT_TRUE(c.IsExact()) << wide.ToString();
        EXPECT_EQ(c.GetExact(), wide);
    }
    KOBWBCoefficient big = KOBWBRational(2).Power(200);
    big += KOBWBCoefficient::Real(1.0);
    EXPECT_TRUE(big.IsReal());
    EXPECT_DOUBLE_EQ(big.ToDouble(), std::ldexp(1.0, 200));
    KOBWBCoefficient copy = big;
    copy *= copy;
    EXPECT_DOUBLE_EQ(copy.ToDouble(), std::ldexp(1.0, 400));
    EXPECT_EQ(sizeof(KOBWBCoefficient), sizeof(KOBWBRational));
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
    // A polynomial added to or taken from itself.
    KOBWBPolynomial twice = x + y;
    twice += twice;
    EXPECT_EQ(twice, (x + y) * KOBWBPolynomial(KOBWBCoefficient(2)));
    twice -= twice;
    EXPECT_TRUE(twice.IsZero());
}

// A product within a budget of terms is the product; past it, nothing is formed or
// changed, whether the product is one FLINT makes (large) or the hand-written one.
TEST(KOBWBPolynomial, ProductsWithinABudget) {
    const KOBWBPolynomial one(KOBWBCoefficient(KOBWBRational(1, 3)));
    KOBWBPolynomial a = one, b = one;
    for (int i = 1; i <= 40; ++i) {
        a += KOBWBPolynomial::Atom(1, i) * KOBWBPolynomial(KOBWBCoefficient(KOBWBRational(i, 7)));
        b += KOBWBPolynomial::Atom(2, i);
    }
    const KOBWBPolynomial* rights[] = {&b, &one};
    for (const KOBWBPolynomial* right : rights) {
        const KOBWBPolynomial product = KOBWBPolynomial::Multiply(a, *right);
        KOBWBPolynomial within = b;
        EXPECT_FALSE(KOBWBPolynomial::MultiplyWithin(a, *right, product.GetNbOfTerms() - 1, within));
        EXPECT_EQ(within, b);
        ASSERT_TRUE(KOBWBPolynomial::MultiplyWithin(a, *right, product.GetNbOfTerms(), within));
        EXPECT_EQ(within, product);
        // Into one of its factors.
        KOBWBPolynomial left = a;
        ASSERT_TRUE(KOBWBPolynomial::MultiplyWithin(left, *right, product.GetNbOfTerms(), left));
        EXPECT_EQ(left, product);
    }
}

// A sum of many summands is the running sum, coefficient by coefficient: the same
// rounding of reals, and a like term met after a sum reached zero starts afresh
// (1 - 1.0 + 1/3 is the exact 1/3).
TEST(KOBWBPolynomial, SumOfManyIsTheRunningSum) {
    const KOBWBCoefficient values[] = {KOBWBCoefficient(1), KOBWBCoefficient(-1), KOBWBCoefficient::Real(-1.0),
                                       KOBWBCoefficient(KOBWBRational(1, 3)), KOBWBCoefficient::Real(0.1),
                                       KOBWBCoefficient::Real(0.7)};
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        std::vector<KOBWBPolynomial> summands(2 + random() % 12);
        for (KOBWBPolynomial& summand : summands)
            for (int term = static_cast<int>(random() % 4); term > 0; --term)
                summand += KOBWBPolynomial(values[random() % 6]) *
                           KOBWBPolynomial::Atom(static_cast<int>(1 + random() % 2), static_cast<long long>(1 + random() % 2));
        std::vector<const KOBWBPolynomial*> pointers;
        KOBWBPolynomial running;
        for (const KOBWBPolynomial& summand : summands) {
            pointers.push_back(&summand);
            running += summand;
        }
        EXPECT_EQ(KOBWBPolynomial::Sum(pointers), running) << round;
    }
    const KOBWBPolynomial one(KOBWBCoefficient(1)), minusOne(KOBWBCoefficient::Real(-1.0)), zero;
    const KOBWBPolynomial third(KOBWBCoefficient(KOBWBRational(1, 3)));
    const KOBWBPolynomial sum = KOBWBPolynomial::Sum({&one, &zero, &zero, &zero, &minusOne, &third});
    ASSERT_EQ(sum.GetNbOfTerms(), 1);
    EXPECT_TRUE(sum.GetTerm(0).coefficient.IsExact());
}
