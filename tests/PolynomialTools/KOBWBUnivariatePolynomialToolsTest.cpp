#include "KOBWBUnivariatePolynomialTools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

typedef KOBWBUnivariatePolynomialTools Tools;
const int x = 3;

KOBWBPolynomial Poly(const std::vector<KOBWBRational>& coefficients) {
    KOBWBPolynomial p;
    for (size_t i = 0; i < coefficients.size(); ++i)
        p += KOBWBPolynomial::Atom(x, static_cast<long long>(i)) * KOBWBPolynomial(KOBWBCoefficient(coefficients[i]));
    return p;
}

KOBWBPolynomial Linear(const KOBWBRational& root) { return Poly({-root, 1}); }

KOBWBPolynomial Pow(const KOBWBPolynomial& p, int n) {
    KOBWBPolynomial result(KOBWBCoefficient(1));
    for (int i = 0; i < n; ++i) result = result * p;
    return result;
}

long long Deg(const KOBWBPolynomial& p) { return p.IsZero() ? -1 : p.Degree(x); }

KOBWBRational Lead(const KOBWBPolynomial& p) {
    for (const KOBWBPolynomialTerm& term : p.GetTerms())
        if ((term.monomial.empty() ? 0 : term.monomial[0].exponent) == Deg(p)) return term.coefficient.GetExact();
    return KOBWBRational();
}

KOBWBPolynomial Derivative(const KOBWBPolynomial& p) {
    KOBWBPolynomial d;
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        if (term.monomial.empty()) continue;
        const long long e = term.monomial[0].exponent;
        d += KOBWBPolynomial::Atom(x, e - 1) * KOBWBPolynomial(term.coefficient * KOBWBCoefficient(e));
    }
    return d;
}

bool Divides(const KOBWBPolynomial& d, const KOBWBPolynomial& p) {
    KOBWBPolynomial q, r;
    return Tools::Divide(p, d, x, q, r) && r.IsZero();
}

KOBWBPolynomial Quotient(const KOBWBPolynomial& p, const KOBWBPolynomial& d) {
    KOBWBPolynomial q, r;
    Tools::Divide(p, d, x, q, r);
    return q;
}

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    KOBWBRational Coefficient() {
        const int numerator = Int(-9, 9);
        return Int(0, 3) == 0 ? KOBWBRational(numerator, Int(1, 5)) : KOBWBRational(numerator);
    }
    // A polynomial of exactly the given degree.
    KOBWBPolynomial Polynomial(int degree) {
        std::vector<KOBWBRational> c;
        for (int i = 0; i < degree; ++i) c.push_back(Coefficient());
        KOBWBRational lead;
        while (lead.IsZero()) lead = Coefficient();
        c.push_back(lead);
        return Poly(c);
    }

private:
    std::mt19937 m_engine;
};

TEST(UnivariatePolynomialTools, DivisionAndPseudoDivisionOnRandomPolynomials) {
    Random random(7);
    for (int trial = 0; trial < 200; ++trial) {
        const KOBWBPolynomial a = random.Polynomial(random.Int(0, 9));
        const KOBWBPolynomial b = random.Polynomial(random.Int(0, 6));
        KOBWBPolynomial q, r;
        ASSERT_TRUE(Tools::Divide(a, b, x, q, r));
        EXPECT_EQ(a, b * q + r);
        EXPECT_LT(Deg(r), Deg(b));
        ASSERT_TRUE(Tools::PseudoDivide(a, b, x, q, r));
        const long long e = std::max(Deg(a) - Deg(b) + 1, 0LL);
        EXPECT_EQ(a * KOBWBPolynomial(KOBWBCoefficient(Lead(b).Power(e))), b * q + r);
        EXPECT_LT(Deg(r), Deg(b));
    }
    // Integer inputs stay integer under pseudo-division.
    KOBWBPolynomial q, r;
    ASSERT_TRUE(Tools::PseudoDivide(Poly({1, 2, 3, 4, 5}), Poly({7, 0, 3}), x, q, r));
    const KOBWBPolynomial both = q + r;
    for (const KOBWBPolynomialTerm& term : both.GetTerms()) EXPECT_TRUE(term.coefficient.GetExact().IsInteger());

    // Arguments that are not univariate polynomials with exact coefficients.
    const KOBWBPolynomial good = Poly({1, 1});
    const KOBWBPolynomial other = KOBWBPolynomial::Atom(x + 1) + good;
    const KOBWBPolynomial inverse = KOBWBPolynomial::Atom(x, -1) + good;
    const KOBWBPolynomial real = KOBWBPolynomial(KOBWBCoefficient::Real(0.1)) + good;
    const KOBWBPolynomial pi = KOBWBPolynomial::Atom(0) + good;
    for (const KOBWBPolynomial* bad : {&other, &inverse, &real, &pi}) {
        EXPECT_FALSE(Tools::IsUnivariate(*bad, x));
        EXPECT_FALSE(Tools::Divide(*bad, good, x, q, r));
        EXPECT_FALSE(Tools::Divide(good, *bad, x, q, r));
    }
    EXPECT_TRUE(Tools::IsUnivariate(good, x));
    EXPECT_FALSE(Tools::Divide(good, KOBWBPolynomial(), x, q, r));
    EXPECT_FALSE(Tools::PseudoDivide(good, KOBWBPolynomial(), x, q, r));
}

TEST(UnivariatePolynomialTools, GcdOfPolynomialsWithACommonFactor) {
    Random random(11);
    for (int trial = 0; trial < 100; ++trial) {
        const KOBWBPolynomial common = random.Polynomial(random.Int(0, 5));
        const KOBWBPolynomial a = common * random.Polynomial(random.Int(0, 5));
        const KOBWBPolynomial b = common * random.Polynomial(random.Int(0, 5));
        KOBWBPolynomial gcd;
        ASSERT_TRUE(Tools::Gcd(a, b, x, gcd));
        EXPECT_TRUE(Lead(gcd).IsOne());
        EXPECT_TRUE(Divides(gcd, a));
        EXPECT_TRUE(Divides(gcd, b));
        EXPECT_TRUE(Divides(common, gcd));
        // The last member of the remainder sequence is a gcd too.
        std::vector<KOBWBPolynomial> sequence;
        ASSERT_TRUE(Tools::Subresultants(a, b, x, sequence));
        ASSERT_GE(sequence.size(), 2u);
        EXPECT_EQ(Deg(sequence.back()), Deg(gcd));
        EXPECT_TRUE(Divides(sequence.back(), a) && Divides(sequence.back(), b));
    }
    // Coprime polynomials, zeros and constants.
    KOBWBPolynomial gcd;
    ASSERT_TRUE(Tools::Gcd(Poly({1, 0, 1}), Poly({-1, 1}), x, gcd));
    EXPECT_EQ(gcd, Poly({1}));
    ASSERT_TRUE(Tools::Gcd(KOBWBPolynomial(), KOBWBPolynomial(), x, gcd));
    EXPECT_TRUE(gcd.IsZero());
    ASSERT_TRUE(Tools::Gcd(Poly({2, 4}), KOBWBPolynomial(), x, gcd));
    EXPECT_EQ(gcd, Poly({KOBWBRational(1, 2), 1}));
    std::vector<KOBWBPolynomial> sequence;
    ASSERT_TRUE(Tools::Subresultants(Poly({-5, 2, 8, -3, -3, 0, 1, 0, 1}), Poly({21, -9, -4, 0, 5, 0, 3}), x, sequence));
    // The classic example's subresultants, known up to sign from the determinants
    // that define them.
    ASSERT_EQ(sequence.size(), 6u);
    const std::vector<KOBWBPolynomial> known{Poly({9, 0, -3, 0, 15}), Poly({-245, 125, 65}), Poly({-12300, 9326}),
                                             Poly({260708})};
    for (size_t i = 0; i < known.size(); ++i)
        EXPECT_TRUE(sequence[i + 2] == known[i] || sequence[i + 2] == -known[i]) << i;
}

TEST(UnivariatePolynomialTools, ResultantsFromRootsAndFromTheBezoutMatrix) {
    Random random(5);
    for (int trial = 0; trial < 60; ++trial) {
        // Res(c prod (x - ai), d prod (x - bj)) = c^m d^n prod (ai - bj).
        const int n = random.Int(1, 5), m = random.Int(1, 5);
        const KOBWBRational c = random.Int(1, 4), d = -random.Int(1, 4);
        KOBWBPolynomial a(KOBWBCoefficient{c}), b(KOBWBCoefficient{d});
        std::vector<KOBWBRational> ra, rb;
        for (int i = 0; i < n; ++i) ra.push_back(random.Coefficient());
        for (int j = 0; j < m; ++j) rb.push_back(random.Coefficient());
        KOBWBRational expected = c.Power(m) * d.Power(n);
        for (const KOBWBRational& ai : ra) {
            a = a * Linear(ai);
            for (const KOBWBRational& bj : rb) expected *= ai - bj;
        }
        for (const KOBWBRational& bj : rb) b = b * Linear(bj);
        KOBWBRational resultant, bezout, swapped;
        ASSERT_TRUE(Tools::Resultant(a, b, x, resultant));
        ASSERT_TRUE(Tools::BezoutResultant(a, b, x, bezout));
        ASSERT_TRUE(Tools::Resultant(b, a, x, swapped));
        EXPECT_EQ(resultant, expected) << trial;
        EXPECT_EQ(bezout, expected) << trial;
        EXPECT_EQ(swapped, (n * m) % 2 ? -expected : expected);
        ASSERT_TRUE(Tools::BezoutResultant(b, a, x, bezout));
        EXPECT_EQ(bezout, swapped);
    }
    // The Bezout matrix of x^2 - 1 and x is the identity; it is symmetric in general.
    std::vector<std::vector<KOBWBRational>> matrix;
    ASSERT_TRUE(Tools::BezoutMatrix(Poly({-1, 0, 1}), Poly({0, 1}), x, matrix));
    EXPECT_EQ(matrix, (std::vector<std::vector<KOBWBRational>>{{1, 0}, {0, 1}}));
    ASSERT_TRUE(Tools::BezoutMatrix(random.Polynomial(6), random.Polynomial(4), x, matrix));
    for (size_t i = 0; i < matrix.size(); ++i)
        for (size_t j = 0; j < matrix.size(); ++j) EXPECT_EQ(matrix[i][j], matrix[j][i]);
    // Constants and zero.
    KOBWBRational resultant;
    ASSERT_TRUE(Tools::Resultant(Poly({3}), Poly({1, 2, 1}), x, resultant));
    EXPECT_EQ(resultant, KOBWBRational(9));
    ASSERT_TRUE(Tools::Resultant(KOBWBPolynomial(), Poly({1, 2, 1}), x, resultant));
    EXPECT_TRUE(resultant.IsZero());
    ASSERT_TRUE(Tools::Resultant(Poly({1, 2, 1}), Poly({1, 1}), x, resultant));
    EXPECT_TRUE(resultant.IsZero());
}

TEST(UnivariatePolynomialTools, SquareFreePartsMultiplyBack) {
    Random random(3);
    for (int trial = 0; trial < 60; ++trial) {
        KOBWBPolynomial p(KOBWBCoefficient(random.Coefficient() + KOBWBRational(10)));
        for (int k = 1; k <= 3; ++k) p = p * Pow(random.Polynomial(random.Int(0, 2)), k);
        KOBWBRational content;
        std::vector<KOBWBPolynomial> factors;
        ASSERT_TRUE(Tools::SquareFreeDecomposition(p, x, content, factors));
        KOBWBPolynomial product(KOBWBCoefficient{content});
        for (size_t i = 0; i < factors.size(); ++i) {
            product = product * Pow(factors[i], static_cast<int>(i) + 1);
            EXPECT_TRUE(Lead(factors[i]).IsOne());
            KOBWBPolynomial gcd;
            Tools::Gcd(factors[i], Derivative(factors[i]), x, gcd);
            EXPECT_LE(Deg(gcd), 0) << "square-free";
            for (size_t j = 0; j < i; ++j) {
                Tools::Gcd(factors[i], factors[j], x, gcd);
                EXPECT_EQ(Deg(gcd), 0) << "coprime";
            }
        }
        EXPECT_EQ(product, p);
        if (!factors.empty()) {
            EXPECT_GT(Deg(factors.back()), 0);
        }
    }
    KOBWBRational content;
    std::vector<KOBWBPolynomial> factors;
    ASSERT_TRUE(Tools::SquareFreeDecomposition(Poly({5}), x, content, factors));
    EXPECT_TRUE(factors.empty());
    EXPECT_EQ(content, KOBWBRational(5));
}

bool Contains(const KOBWBRealInterval& interval, double value) {
    return interval.lower <= value && value <= interval.upper;
}

double Evaluate(const KOBWBPolynomial& p, double value) {
    double sum = 0;
    for (const KOBWBPolynomialTerm& term : p.GetTerms())
        sum += term.coefficient.ToDouble() * std::pow(value, term.monomial.empty() ? 0 : term.monomial[0].exponent);
    return sum;
}

TEST(UnivariatePolynomialTools, RealRootsAreIsolatedAndRefined) {
    Random random(13);
    for (int trial = 0; trial < 40; ++trial) {
        // Known rational roots with multiplicities, times a factor without real roots.
        std::vector<KOBWBRational> roots;
        KOBWBPolynomial p = Poly({random.Int(1, 5), random.Int(-1, 1), 1});
        for (int i = random.Int(0, 6); i > 0; --i) {
            const KOBWBRational root(random.Int(-40, 40), random.Int(1, 8));
            bool known = false;
            for (const KOBWBRational& r : roots) known = known || r == root;
            if (!known) roots.push_back(root);
            p = p * Pow(Linear(root), random.Int(1, 3));
        }
        std::sort(roots.begin(), roots.end());
        std::vector<KOBWBRealInterval> intervals;
        ASSERT_TRUE(Tools::IsolateRealRoots(p, x, intervals));
        ASSERT_EQ(intervals.size(), roots.size());
        for (size_t i = 0; i < roots.size(); ++i) {
            const double root = roots[i].ToDouble();
            EXPECT_TRUE(Contains(intervals[i], root));
            if (i > 0) {
                EXPECT_LE(intervals[i - 1].upper, intervals[i].lower);
            }
            KOBWBRealInterval refined = intervals[i];
            ASSERT_TRUE(Tools::RefineRoot(p, x, refined, 1e-12));
            EXPECT_LE(refined.upper - refined.lower, 1e-12);
            EXPECT_TRUE(Contains(refined, root));
        }
    }
    // Irrational roots: the square-free part changes sign across each interval, and
    // refinement converges to the root.
    const KOBWBPolynomial cubic = Poly({-2, 0, 0, 1}) * Pow(Poly({-2, 0, 1}), 2) * Poly({-1, 0, 0, 0, 0, 1000});
    std::vector<KOBWBRealInterval> intervals;
    ASSERT_TRUE(Tools::IsolateRealRoots(cubic, x, intervals));
    const std::vector<double> expected{-std::sqrt(2.0), std::pow(1e-3, 0.2), std::cbrt(2.0), std::sqrt(2.0)};
    ASSERT_EQ(intervals.size(), expected.size());
    const KOBWBPolynomial squareFree = Poly({-2, 0, 0, 1}) * Poly({-2, 0, 1}) * Poly({-1, 0, 0, 0, 0, 1000});
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_LT(Evaluate(squareFree, intervals[i].lower) * Evaluate(squareFree, intervals[i].upper), 0);
        KOBWBRealInterval refined = intervals[i];
        ASSERT_TRUE(Tools::RefineRoot(cubic, x, refined, 0));
        EXPECT_NEAR(refined.lower, expected[i], 1e-15);
        EXPECT_LE(refined.upper - refined.lower, 4e-16);
    }
    // Roots close together, and a root met exactly by bisection.
    ASSERT_TRUE(Tools::IsolateRealRoots(Linear(KOBWBRational(1, 1000)) * Linear(KOBWBRational(1, 1001)) * Linear(0), x,
                                        intervals));
    ASSERT_EQ(intervals.size(), 3u);
    EXPECT_EQ(intervals[0].lower, 0.0);
    EXPECT_EQ(intervals[0].upper, 0.0);
    EXPECT_TRUE(Contains(intervals[1], 1.0 / 1001) && !Contains(intervals[1], 1.0 / 1000));
    // Bad arguments: the zero polynomial, an interval that is not isolating.
    EXPECT_FALSE(Tools::IsolateRealRoots(KOBWBPolynomial(), x, intervals));
    ASSERT_TRUE(Tools::IsolateRealRoots(Poly({4}), x, intervals));
    EXPECT_TRUE(intervals.empty());
    KOBWBRealInterval wrong{2.0, 3.0};
    EXPECT_FALSE(Tools::RefineRoot(Poly({-2, 0, 1}), x, wrong, 1e-6));
    EXPECT_EQ(wrong.lower, 2.0);
}

TEST(UnivariatePolynomialTools, RationalRootsAreFoundExactly) {
    Random random(37);
    for (int trial = 0; trial < 30; ++trial) {
        std::vector<KOBWBRational> roots;
        // A quadratic factor with two irrational roots or none.
        const int primes[] = {-2, -3, -7, 3};
        KOBWBPolynomial p = Poly({primes[trial % 4], 0, 1});
        for (int i = random.Int(0, 5); i > 0; --i) {
            const KOBWBRational root(random.Int(-100000, 100000), random.Int(1, 5000));
            if (std::find(roots.begin(), roots.end(), root) == roots.end()) roots.push_back(root);
            p = p * Pow(Linear(root), random.Int(1, 2));
        }
        std::sort(roots.begin(), roots.end());
        std::vector<KOBWBRational> found;
        ASSERT_TRUE(Tools::RationalRoots(p, x, found));
        EXPECT_EQ(found, roots) << trial;
    }
    std::vector<KOBWBRational> found;
    EXPECT_FALSE(Tools::RationalRoots(KOBWBPolynomial(), x, found));
}

// Rational roots of any magnitude and denominator, roots closer than doubles can
// separate, and roots past the largest double.
TEST(UnivariatePolynomialTools, RootsAtEveryMagnitudeAndSpacing) {
    std::mt19937_64 random(5);
    for (int trial = 0; trial < 100; ++trial) {
        // a x + b with a of 7 digits and b of 12: the root's denominator is about a.
        const long long a = 1000000 + static_cast<long long>(random() % 9000000);
        const long long b = (trial % 2 ? -1 : 1) * (100000000000LL + static_cast<long long>(random() % 900000000000LL));
        const KOBWBRational root = KOBWBRational(-b) / KOBWBRational(a);
        // Times an irrational pair, so that the rational root is not the only one.
        const KOBWBPolynomial p = Poly({KOBWBRational(b), KOBWBRational(a)}) * Poly({-2, 0, 1});
        std::vector<KOBWBRational> found;
        ASSERT_TRUE(Tools::RationalRoots(p, x, found));
        ASSERT_EQ(found.size(), 1u) << a << " x + " << b;
        EXPECT_EQ(found[0], root) << a << " x + " << b;
    }
    std::vector<KOBWBRational> found;
    ASSERT_TRUE(Tools::RationalRoots(Poly({KOBWBRational(621393040766LL), KOBWBRational(4962536)}), x, found));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0], KOBWBRational(-310696520383LL) / KOBWBRational(2481268));

    // (3x - 1)(3 2^60 x - (2^60 + 1)): two roots 1/(3 2^60) apart.
    const KOBWBRational big = KOBWBRational(2).Power(60);
    const KOBWBRational close = (big + KOBWBRational(1)) / (KOBWBRational(3) * big);
    const KOBWBPolynomial pair = Linear(KOBWBRational(1, 3)) * Linear(close);
    std::vector<KOBWBRationalInterval> exact;
    ASSERT_TRUE(Tools::IsolateRealRoots(pair, x, exact));
    ASSERT_EQ(exact.size(), 2u);
    EXPECT_TRUE(exact[0].upper < exact[1].lower || (exact[0].upper == exact[1].lower && exact[0].upper != close));
    EXPECT_FALSE(KOBWBRational(1, 3) < exact[0].lower || exact[0].upper < KOBWBRational(1, 3));
    EXPECT_FALSE(close < exact[1].lower || exact[1].upper < close);
    for (KOBWBRationalInterval& interval : exact) {
        const KOBWBRational before = interval.upper - interval.lower;
        ASSERT_TRUE(Tools::RefineRoot(pair, x, interval, KOBWBRational(1) / big / big));
        EXPECT_FALSE(KOBWBRational(1) / big / big < interval.upper - interval.lower);
        EXPECT_FALSE(before < interval.upper - interval.lower);
    }
    ASSERT_TRUE(Tools::RationalRoots(pair, x, found));
    EXPECT_EQ(found, (std::vector<KOBWBRational>{KOBWBRational(1, 3), close}));
    // A huge exponent is refused, not allocated.
    std::vector<KOBWBRealInterval> none;
    EXPECT_FALSE(Tools::IsolateRealRoots(KOBWBPolynomial::Atom(x, 2000000000) + Poly({-1}), x, none));
    EXPECT_FALSE(Tools::RationalRoots(KOBWBPolynomial::Atom(x, Tools::maxDegree + 1), x, found));
    KOBWBRationalInterval notIsolating{KOBWBRational(0), KOBWBRational(1)};
    EXPECT_FALSE(Tools::RefineRoot(pair, x, notIsolating, KOBWBRational(1, 8)));
    EXPECT_FALSE(Tools::RefineRoot(pair, x, exact[0], KOBWBRational(0)));

    // Roots of +-2^1100: doubles bound them by the largest double and infinity.
    const KOBWBRational huge = KOBWBRational(2).Power(1100);
    const KOBWBPolynomial far = Linear(huge) * Linear(-huge);
    std::vector<KOBWBRealInterval> rounded;
    ASSERT_TRUE(Tools::IsolateRealRoots(far, x, rounded));
    ASSERT_EQ(rounded.size(), 2u);
    EXPECT_EQ(rounded[0].lower, -HUGE_VAL);
    EXPECT_EQ(rounded[0].upper, -std::numeric_limits<double>::max());
    EXPECT_EQ(rounded[1].lower, std::numeric_limits<double>::max());
    EXPECT_EQ(rounded[1].upper, HUGE_VAL);
    ASSERT_TRUE(Tools::RationalRoots(far, x, found));
    EXPECT_EQ(found, (std::vector<KOBWBRational>{-huge, huge}));
}

// The exact sum of the partial fractions, over the common denominator.
TEST(UnivariatePolynomialTools, PartialFractionsSumToTheFunction) {
    Random random(17);
    for (int trial = 0; trial < 60; ++trial) {
        KOBWBPolynomial denominator(KOBWBCoefficient(random.Int(1, 3)));
        for (int k = 1; k <= 3; ++k) denominator = denominator * Pow(random.Polynomial(random.Int(0, 2)), k);
        const KOBWBPolynomial numerator = random.Polynomial(random.Int(0, 9));
        KOBWBPolynomial polynomialPart;
        std::vector<KOBWBPartialFraction> fractions;
        ASSERT_TRUE(Tools::PartialFractions(numerator, denominator, x, polynomialPart, fractions));
        KOBWBPolynomial sum = polynomialPart * denominator;
        for (const KOBWBPartialFraction& f : fractions) {
            EXPECT_LT(Deg(f.numerator), Deg(f.factor));
            EXPECT_GE(f.power, 1);
            sum += f.numerator * Quotient(denominator, Pow(f.factor, f.power));
        }
        EXPECT_EQ(sum, numerator) << trial;
    }
    KOBWBPolynomial polynomialPart;
    std::vector<KOBWBPartialFraction> fractions;
    EXPECT_FALSE(Tools::PartialFractions(Poly({1}), KOBWBPolynomial(), x, polynomialPart, fractions));
    // 1 / (x^2 (x + 1)) = -1/x + 1/x^2 + 1/(x + 1).
    ASSERT_TRUE(Tools::PartialFractions(Poly({1}), Poly({0, 0, 1, 1}), x, polynomialPart, fractions));
    EXPECT_TRUE(polynomialPart.IsZero());
    EXPECT_EQ(fractions.size(), 3u);
    // Rational linear factors are split apart; x^2 - 2 stays whole.
    ASSERT_TRUE(Tools::PartialFractions(Poly({0, 0, 0, 1}), Poly({-2, 0, 1}) * Poly({-1, 0, 1}), x, polynomialPart,
                                        fractions));
    EXPECT_EQ(polynomialPart, KOBWBPolynomial());
    ASSERT_EQ(fractions.size(), 3u);
    for (const KOBWBPartialFraction& f : fractions) EXPECT_EQ(Deg(f.factor), f.factor == Poly({-2, 0, 1}) ? 2 : 1);
}

TEST(UnivariatePolynomialTools, HermiteReductionLeavesASquareFreeDenominator) {
    Random random(19);
    for (int trial = 0; trial < 60; ++trial) {
        KOBWBPolynomial denominator(KOBWBCoefficient(random.Int(1, 3)));
        for (int k = 1; k <= 4; ++k) denominator = denominator * Pow(random.Polynomial(random.Int(0, 2)), k);
        const KOBWBPolynomial numerator = random.Polynomial(random.Int(0, 10));
        KOBWBRationalFunction g, h;
        ASSERT_TRUE(Tools::HermiteReduce(numerator, denominator, x, g, h));
        // numerator / denominator = (g.n / g.d)' + h.n / h.d, over the common denominator.
        const KOBWBPolynomial gd2 = g.denominator * g.denominator;
        const KOBWBPolynomial left = numerator * gd2 * h.denominator;
        const KOBWBPolynomial right =
            (Derivative(g.numerator) * g.denominator - g.numerator * Derivative(g.denominator)) * denominator *
                h.denominator +
            h.numerator * denominator * gd2;
        EXPECT_EQ(left, right) << trial;
        KOBWBPolynomial gcd;
        Tools::Gcd(h.denominator, Derivative(h.denominator), x, gcd);
        EXPECT_LE(Deg(gcd), 0);
        EXPECT_TRUE(Lead(g.denominator).IsOne() && Lead(h.denominator).IsOne());
    }
    KOBWBRationalFunction g, h;
    EXPECT_FALSE(Tools::HermiteReduce(Poly({1}), KOBWBPolynomial(), x, g, h));
}

}
