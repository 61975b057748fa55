#include "KOBWBx.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

typedef KOBWBMultivariatePolynomialTools Tools;
const int x = 1, y = 2, z = 3;

KOBWBPolynomial Number(long long n) { return KOBWBPolynomial(KOBWBCoefficient(n)); }

// A polynomial with small integer coefficients and degrees below 3 in x and y.
KOBWBPolynomial RandomPolynomial(std::mt19937& random, int atoms = 2) {
    std::uniform_int_distribution<int> coefficient(-4, 4), exponent(0, 2);
    KOBWBPolynomial p;
    for (int i = 0; i < 4; ++i) {
        KOBWBPolynomial term = Number(coefficient(random));
        for (int atom = x; atom < x + atoms; ++atom) term = term * KOBWBPolynomial::Atom(atom, exponent(random));
        p += term;
    }
    return p;
}

// p with x replaced by the integer value.
KOBWBPolynomial AtX(const KOBWBPolynomial& p, long long value) {
    KOBWBPolynomial result;
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        KOBWBPolynomial piece(term.coefficient);
        for (const KOBWBMonomialFactor& factor : term.monomial)
            piece = piece * (factor.atom == x ? Number(KOBWBRational(value).Power(factor.exponent).ToDouble())
                                              : KOBWBPolynomial::Atom(factor.atom, factor.exponent));
        result += piece;
    }
    return result;
}

} // namespace

TEST(MultivariatePolynomialTools, ExactDivision) {
    std::mt19937 random(3);
    for (int trial = 0; trial < 40; ++trial) {
        const KOBWBPolynomial a = RandomPolynomial(random, 3), b = RandomPolynomial(random, 3);
        if (b.IsZero()) continue;
        KOBWBPolynomial q;
        ASSERT_TRUE(Tools::DivideExactly(a * b, b, q));
        EXPECT_EQ(q, a);
    }
    const KOBWBPolynomial xPlusOne = KOBWBPolynomial::Atom(x) + Number(1);
    KOBWBPolynomial q;
    EXPECT_FALSE(Tools::DivideExactly(KOBWBPolynomial::Atom(x, 2) + Number(1), xPlusOne, q));
    EXPECT_FALSE(Tools::DivideExactly(xPlusOne, KOBWBPolynomial(), q));
    EXPECT_FALSE(Tools::DivideExactly(KOBWBPolynomial(KOBWBCoefficient::Real(0.1)), xPlusOne, q));
    EXPECT_FALSE(Tools::DivideExactly(KOBWBPolynomial::Atom(x, -1), xPlusOne, q));
}

// The resultant in y, evaluated at x = c, is the resultant of the polynomials
// evaluated at x = c when their leading coefficients in y stay.
TEST(MultivariatePolynomialTools, ResultantEliminatesAVariable) {
    std::mt19937 random(7);
    for (int trial = 0; trial < 60; ++trial) {
        // Leading coefficients in y that are constants, so that no value of x lowers a degree.
        const KOBWBPolynomial f = RandomPolynomial(random) + Number(trial % 3 + 1) * KOBWBPolynomial::Atom(y, 3);
        const KOBWBPolynomial g = RandomPolynomial(random) + Number(-(trial % 2) - 1) * KOBWBPolynomial::Atom(y, 3 + trial % 2);
        KOBWBPolynomial resultant;
        ASSERT_TRUE(Tools::Resultant(f, g, y, resultant));
        for (long long c : {-2, 0, 1, 3}) {
            KOBWBRational expected;
            ASSERT_TRUE(KOBWBUnivariatePolynomialTools::Resultant(AtX(f, c), AtX(g, c), y, expected));
            KOBWBCoefficient value;
            ASSERT_TRUE(AtX(resultant, c).IsConstant(value)) << trial;
            EXPECT_EQ(value.GetExact(), expected) << trial << " at x = " << c;
        }
    }
}

TEST(MultivariatePolynomialTools, GcdOfProductsHoldsTheCommonFactor) {
    std::mt19937 random(11);
    for (int trial = 0; trial < 40; ++trial) {
        // Common factors in three atoms, the cofactors in two: the remainder sequences
        // grow fast with the degrees.
        const KOBWBPolynomial a = RandomPolynomial(random), b = RandomPolynomial(random),
                              c = RandomPolynomial(random) + KOBWBPolynomial::Atom(z);
        if (a.IsZero() || b.IsZero()) continue;
        KOBWBPolynomial gcd, q;
        ASSERT_TRUE(Tools::Gcd(a * c, b * c, gcd)) << trial;
        EXPECT_TRUE(Tools::DivideExactly(gcd, c, q)) << trial;
        EXPECT_TRUE(Tools::DivideExactly(a * c, gcd, q)) << trial;
        EXPECT_TRUE(Tools::DivideExactly(b * c, gcd, q)) << trial;
    }
    KOBWBPolynomial gcd;
    ASSERT_TRUE(Tools::Gcd(KOBWBPolynomial(), Number(-3) * KOBWBPolynomial::Atom(x), gcd));
    EXPECT_EQ(gcd, KOBWBPolynomial::Atom(x));
    ASSERT_TRUE(Tools::Gcd(Number(6), Number(4), gcd));
    EXPECT_EQ(gcd, Number(1));
}

// A solver eliminates y from x^2 + y^2 = 25 and x + y = 7: x is 3 or 4.
TEST(MultivariatePolynomialTools, EliminationOnExpressions) {
    KOBWBFactory factory;
    KOBWBVariable* vx = factory.CreateVariable();
    KOBWBVariable* vy = factory.CreateVariable();
    KOBWBExpression* circle = factory.CreateSub(factory.CreateSum(factory.CreatePower(vx, 2), factory.CreatePower(vy, 2)),
                                                factory.CreateIntegerConstant(25));
    KOBWBExpression* line = factory.CreateSub(factory.CreateSum(vx, vy), factory.CreateIntegerConstant(7));
    KOBWBPolynomialContext context(factory);
    KOBWBExpression* eliminated = Tools::Resultant(context, circle, line, vy);
    ASSERT_NE(eliminated, nullptr);
    KOBWBPolynomial polynomial;
    ASSERT_TRUE(context.ToPolynomial(eliminated, polynomial));
    std::vector<KOBWBRational> roots;
    ASSERT_TRUE(KOBWBUnivariatePolynomialTools::RationalRoots(polynomial, context.GetVariableAtom(vx), roots));
    EXPECT_EQ(roots, (std::vector<KOBWBRational>{KOBWBRational(3), KOBWBRational(4)}));

    // gcd((x + y)(x - 1), (x + y)(y + 2)) = x + y.
    KOBWBExpression* sum = factory.CreateSum(vx, vy);
    KOBWBExpression* gcd = Tools::Gcd(context, factory.CreateProduct(sum, factory.CreateSub(vx, factory.CreateIntegerConstant(1))),
                                      factory.CreateProduct(sum, factory.CreateSum(vy, factory.CreateIntegerConstant(2))));
    ASSERT_NE(gcd, nullptr);
    EXPECT_TRUE(context.AreIdentical(gcd, sum));

    // Bad arguments: a real coefficient, a null expression, a foreign variable.
    EXPECT_EQ(Tools::Resultant(context, factory.CreateProduct(factory.CreateRealConstant(0.1), vx), line, vy), nullptr);
    EXPECT_EQ(Tools::Gcd(context, nullptr, line), nullptr);
    KOBWBFactory other;
    EXPECT_EQ(Tools::Resultant(context, circle, line, other.CreateVariable()), nullptr);
}

// Factors multiply back to the polynomial, with the multiplicities they were made with.
TEST(MultivariatePolynomialTools, FactorsMultiplyBackWithTheirMultiplicities) {
    const KOBWBPolynomial X = KOBWBPolynomial::Atom(x), Y = KOBWBPolynomial::Atom(y);
    const auto power = [](const KOBWBPolynomial& p, int n) {
        KOBWBPolynomial result(KOBWBCoefficient(1));
        for (int i = 0; i < n; ++i) result = result * p;
        return result;
    };
    struct Case {
        KOBWBPolynomial p;
        size_t factors;
    };
    const std::vector<Case> cases{
        // 3 (x - 1)^2 (x + 2) (x^2 + 1) (x^2 + 2)
        {Number(3) * power(X - Number(1), 2) * (X + Number(2)) * (X * X + Number(1)) * (X * X + Number(2)), 4},
        // x (x + y)^2 (y - 2): a content in y, a square, a factor in y alone
        {X * power(X + Y, 2) * (Y - Number(2)), 3},
        // (x^2 - y^2)^3 / 2 splits into (x - y)^3 (x + y)^3
        {power(X * X - Y * Y, 3) * KOBWBPolynomial(KOBWBCoefficient(KOBWBRational(1, 2))), 2},
    };
    for (size_t i = 0; i < cases.size(); ++i) {
        KOBWBRational constant;
        std::vector<KOBWBPolynomialFactor> factors;
        ASSERT_TRUE(Tools::Factor(cases[i].p, constant, factors)) << i;
        EXPECT_EQ(factors.size(), cases[i].factors) << i;
        KOBWBPolynomial product = Number(1) * KOBWBPolynomial(KOBWBCoefficient{constant});
        for (const KOBWBPolynomialFactor& factor : factors) product = product * power(factor.factor, factor.multiplicity);
        EXPECT_EQ(product, cases[i].p) << i;
    }
    KOBWBRational constant;
    std::vector<KOBWBPolynomialFactor> factors;
    ASSERT_TRUE(Tools::Factor(Number(-5), constant, factors));
    EXPECT_EQ(constant, KOBWBRational(-5));
    EXPECT_TRUE(factors.empty());
    EXPECT_FALSE(Tools::Factor(KOBWBPolynomial(KOBWBCoefficient::Real(0.1)) * X, constant, factors));

    // On expressions: 2 x^2 - 2 is 2 (x - 1) (x + 1).
    KOBWBFactory factory;
    KOBWBVariable* vx = factory.CreateVariable();
    KOBWBPolynomialContext context(factory);
    KOBWBExpression* number = nullptr;
    std::vector<std::pair<KOBWBExpression*, int>> written;
    ASSERT_TRUE(Tools::Factor(context,
                              factory.CreateSub(factory.CreateProduct(factory.CreateIntegerConstant(2), factory.CreatePower(vx, 2)),
                                                factory.CreateIntegerConstant(2)),
                              number, written));
    EXPECT_EQ(number->GetValue().GetAsInteger(), 2);
    ASSERT_EQ(written.size(), 2u);
    EXPECT_EQ(KOBWBEquationPrinter::ToText(written[0].first) + " " + KOBWBEquationPrinter::ToText(written[1].first),
              "va0 - 1 va0 + 1");
}

// Products of known irreducible factors in several atoms, expanded, split back into
// the same factors (up to order and constant) with the same multiplicities.
TEST(MultivariatePolynomialTools, FactorsAreTheIrreducibleOnes) {
    const KOBWBPolynomial X = KOBWBPolynomial::Atom(x), Y = KOBWBPolynomial::Atom(y), Z = KOBWBPolynomial::Atom(z);
    const KOBWBPolynomial half(KOBWBCoefficient(KOBWBRational(1, 2)));
    const std::vector<KOBWBPolynomial> irreducible{
        X - Y,
        X + Y + Number(1),
        X * X + Y * Y + Number(1),
        X * Y - Number(3) * Z,
        Number(2) * X + Number(3) * Y * Y * Z - Number(1),
        X * X * X - Number(2) * Y * Y + half * Z,
        Y * Y + Number(2),
        Z,
    };
    std::mt19937 random(11);
    for (int trial = 0; trial < 30; ++trial) {
        std::vector<int> multiplicities(irreducible.size(), 0);
        KOBWBPolynomial product = Number(trial % 2 ? -6 : 5) * half;
        for (int k = 0; k < 3; ++k) {
            const size_t chosen = random() % irreducible.size();
            ++multiplicities[chosen];
            product = product * irreducible[chosen];
        }
        KOBWBRational constant;
        std::vector<KOBWBPolynomialFactor> factors;
        ASSERT_TRUE(Tools::Factor(product, constant, factors)) << trial;
        size_t distinct = 0;
        for (size_t i = 0; i < irreducible.size(); ++i) {
            if (multiplicities[i] == 0) continue;
            ++distinct;
            // The factor found is the known one divided by its leading coefficient.
            bool found = false;
            for (const KOBWBPolynomialFactor& factor : factors) {
                KOBWBPolynomial quotient;
                KOBWBCoefficient ratio;
                if (Tools::DivideExactly(irreducible[i], factor.factor, quotient) && quotient.IsConstant(ratio)) {
                    found = true;
                    EXPECT_EQ(factor.multiplicity, multiplicities[i]) << trial << " factor " << i;
                }
            }
            EXPECT_TRUE(found) << trial << " factor " << i;
        }
        EXPECT_EQ(factors.size(), distinct) << trial;
        KOBWBPolynomial back = KOBWBPolynomial(KOBWBCoefficient(constant));
        for (const KOBWBPolynomialFactor& factor : factors)
            for (int m = 0; m < factor.multiplicity; ++m) back = back * factor.factor;
        EXPECT_EQ(back, product) << trial;
    }
    // A negative exponent does not qualify; the zero polynomial has the constant 0.
    KOBWBRational constant;
    std::vector<KOBWBPolynomialFactor> factors;
    EXPECT_FALSE(Tools::Factor(KOBWBPolynomial::Atom(x, -2) + Number(1), constant, factors));
    ASSERT_TRUE(Tools::Factor(KOBWBPolynomial(), constant, factors));
    EXPECT_TRUE(constant.IsZero());
    EXPECT_TRUE(factors.empty());
}

// Rational coefficients, constants and coefficients past 64 bits: the
// tools scale to integers and back.
TEST(MultivariatePolynomialTools, RationalCoefficientsAndConstants) {
    const KOBWBPolynomial X = KOBWBPolynomial::Atom(x), Y = KOBWBPolynomial::Atom(y);
    const auto rational = [](long long n, long long d) { return KOBWBPolynomial(KOBWBCoefficient(KOBWBRational(n, d))); };
    KOBWBPolynomial q;
    // (x/2 + y/3)(3x - 5/7 y^2) / (3x - 5/7 y^2) = x/2 + y/3
    const KOBWBPolynomial f = rational(1, 2) * X + rational(1, 3) * Y, g = Number(3) * X - rational(5, 7) * Y * Y;
    ASSERT_TRUE(Tools::DivideExactly(f * g, g, q));
    EXPECT_EQ(q, f);
    ASSERT_TRUE(Tools::DivideExactly(rational(1, 2) * X, Number(3) * X, q));
    EXPECT_EQ(q, rational(1, 6));
    EXPECT_FALSE(Tools::DivideExactly(X, Y, q));
    // The gcd of constants is 1; of multiples of f, f made monic in its leading term.
    KOBWBPolynomial gcd;
    ASSERT_TRUE(Tools::Gcd(Number(4), Number(6), gcd));
    EXPECT_EQ(gcd, Number(1));
    ASSERT_TRUE(Tools::Gcd(f * g * rational(-7, 4), f * (X + Number(1)), gcd));
    EXPECT_EQ(gcd, Number(3) * f);
    ASSERT_TRUE(Tools::Gcd(KOBWBPolynomial(), KOBWBPolynomial(), gcd));
    EXPECT_TRUE(gcd.IsZero());
    // Res_y(y/2 - x, y^2 - 2) = (1/2)^2 ((2x)^2 - 2) = x^2 - 1/2.
    KOBWBPolynomial resultant;
    ASSERT_TRUE(Tools::Resultant(rational(1, 2) * Y - X, Y * Y - Number(2), y, resultant));
    EXPECT_EQ(resultant, X * X - rational(1, 2));
    // Huge exponents and degrees are refused, not computed.
    const KOBWBPolynomial far = KOBWBPolynomial::Atom(x, 1LL << 50) + Y;
    KOBWBRational constant;
    std::vector<KOBWBPolynomialFactor> factors;
    EXPECT_FALSE(Tools::DivideExactly(far * far, far, q));
    EXPECT_FALSE(Tools::Gcd(far, far * Y, gcd));
    EXPECT_FALSE(Tools::Resultant(far, X - Y, y, resultant));
    EXPECT_FALSE(Tools::Factor(KOBWBPolynomial::Atom(x, 20000) - Number(1), constant, factors));
    // A coefficient of 2^100 survives the round trip.
    const KOBWBPolynomial huge(KOBWBCoefficient(KOBWBRational(2).Power(100)));
    ASSERT_TRUE(Tools::DivideExactly(huge * f * g, f, q));
    EXPECT_EQ(q, huge * g);
}
