#include "KOBWBx.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <thread>
#include <vector>

// Polynomials large enough for the exact tools to hand them to their arbitrary
// precision backend, checked against results found another way: products by
// summing products with one term, resultants by the Bezout determinant, gcds by
// their construction, isolating intervals by the roots they were built from.

namespace {

typedef KOBWBUnivariatePolynomialTools Tools;
const int x = 1;

KOBWBPolynomial Number(const KOBWBRational& n) { return KOBWBPolynomial(KOBWBCoefficient(n)); }

// The product as a sum of products with one term each, which stay small.
KOBWBPolynomial TermByTerm(const KOBWBPolynomial& a, const KOBWBPolynomial& b) {
    KOBWBPolynomial sum;
    for (const KOBWBPolynomialTerm& term : b.GetTerms()) sum += a * KOBWBPolynomial::FromTerms({term});
    return sum;
}

// Terms over the atoms given (-1, 3 and 17 by default) with exponents from -3 to 5
// and rational coefficients (or real ones when asked).
KOBWBPolynomial Sparse(std::mt19937& random, int terms, bool real = false,
                       const std::vector<int>& atoms = {-1, 3, 17}) {
    std::vector<KOBWBPolynomialTerm> list;
    for (int i = 0; i < terms; ++i) {
        KOBWBMonomial monomial;
        for (int atom : atoms) {
            const int exponent = static_cast<int>(random() % 9) - 3;
            if (exponent != 0) monomial.push_back({atom, exponent});
        }
        const KOBWBRational c(static_cast<long long>(random() % 2001) - 1000, static_cast<long long>(random() % 7) + 1);
        list.push_back({monomial, real ? KOBWBCoefficient::Real(c.ToDouble() + 0.25) : KOBWBCoefficient(c)});
    }
    return KOBWBPolynomial::FromTerms(list);
}

KOBWBPolynomial Dense(std::mt19937& random, int degree, long long range) {
    std::vector<KOBWBPolynomialTerm> terms;
    for (int i = 0; i <= degree; ++i) {
        KOBWBMonomial monomial;
        if (i > 0) monomial.push_back({x, i});
        long long c = static_cast<long long>(random() % static_cast<unsigned long long>(2 * range + 1)) - range;
        if (i == degree && c == 0) c = 1;
        terms.push_back({monomial, KOBWBCoefficient(c)});
    }
    return KOBWBPolynomial::FromTerms(terms);
}

KOBWBPolynomial RootFactor(const KOBWBRational& root) { return KOBWBPolynomial::Atom(x) - Number(root); }

} // namespace

TEST(LargePolynomials, ProductsAndPowersMatchTermByTermProducts) {
    std::mt19937 random(5);
    for (int trial = 0; trial < 6; ++trial) {
        const KOBWBPolynomial a = Sparse(random, 60), b = Sparse(random, 45);
        const KOBWBPolynomial product = a * b;
        EXPECT_EQ(product, TermByTerm(a, b)) << trial;
        // Storage order: strictly increasing monomials.
        for (int i = 1; i < product.GetNbOfTerms(); ++i)
            ASSERT_LT(KOBWBCompareMonomials(product.GetTerm(i - 1).monomial, product.GetTerm(i).monomial), 0);
    }
    // Real coefficients are multiplied in floating point (sums in another order).
    const KOBWBPolynomial real = Sparse(random, 40, true), exact = Sparse(random, 40);
    const KOBWBPolynomial mixed = real * exact, byTerm = TermByTerm(real, exact);
    ASSERT_EQ(mixed.GetNbOfTerms(), byTerm.GetNbOfTerms());
    for (int i = 0; i < mixed.GetNbOfTerms(); ++i) {
        EXPECT_EQ(mixed.GetTerm(i).monomial, byTerm.GetTerm(i).monomial);
        EXPECT_TRUE(mixed.GetTerm(i).coefficient.IsReal());
        EXPECT_NEAR(mixed.GetTerm(i).coefficient.ToDouble(), byTerm.GetTerm(i).coefficient.ToDouble(), 1e-6);
    }

    // Exponents of every width FLINT packs them in; past 2^40 they are multiplied by hand.
    // FLINT fills a word with the fields of all atoms, so the width also depends on
    // how many there are: 8 bits for eight atoms, 10 for six, 21 for three.
    const std::vector<int> six{1, 2, 3, 4, 5, 6}, eight{1, 2, 3, 4, 5, 6, 7, 8};
    for (const std::vector<int>* atoms : {&eight, &six}) {
        for (const long long shift : {0LL, 300LL}) {
            const KOBWBPolynomial far = Sparse(random, 40, false, *atoms) * KOBWBPolynomial::Atom(3, shift),
                                  other = Sparse(random, 30, false, *atoms);
            EXPECT_EQ(far * other, TermByTerm(far, other)) << atoms->size() << " atoms, shift " << shift;
        }
    }
    for (const long long shift : {300LL, 70000LL, 1LL << 35, 1LL << 50}) {
        const KOBWBPolynomial far = Sparse(random, 60) * KOBWBPolynomial::Atom(3, shift), other = Sparse(random, 45);
        EXPECT_EQ(far * other, TermByTerm(far, other)) << shift;
    }

    // Written over an earlier product: larger or smaller, over other atoms, with
    // coefficients past machine words; and over one of its own factors.
    const KOBWBPolynomial big(KOBWBCoefficient(KOBWBRational(2).Power(100)));
    KOBWBPolynomial into = Sparse(random, 80, false, eight) * Sparse(random, 60, false, eight) * big;
    for (int trial = 0; trial < 3; ++trial) {
        const KOBWBPolynomial a = Sparse(random, 30 + 20 * trial), b = Sparse(random, 25, false, trial == 1 ? six : std::vector<int>{-1, 3, 17});
        KOBWBPolynomial::Multiply(a, b, into);
        EXPECT_EQ(into, TermByTerm(a, b)) << trial;
        KOBWBPolynomial::Multiply(a * big, b, into);
        EXPECT_EQ(into, TermByTerm(a, b) * big) << trial;
        KOBWBPolynomial self = a;
        KOBWBPolynomial::Multiply(self, b, self);
        EXPECT_EQ(self, into * KOBWBPolynomial(KOBWBCoefficient(KOBWBRational(1) / KOBWBRational(2).Power(100))));
    }
    KOBWBPolynomial::Multiply(real, exact, into);
    EXPECT_EQ(into, mixed);

    // (x + y/2 + 1/z + 3)^12 against repeated products.
    const KOBWBPolynomial sum = KOBWBPolynomial::Atom(1) + Number(KOBWBRational(1, 2)) * KOBWBPolynomial::Atom(2) +
                                KOBWBPolynomial::Atom(3, -1) + Number(3);
    KOBWBPolynomial power, expected = Number(1);
    for (int i = 0; i < 12; ++i) expected = TermByTerm(expected, sum);
    ASSERT_TRUE(sum.Power(12, 100000, power));
    EXPECT_EQ(power, expected);
    EXPECT_EQ(power.GetNbOfTerms(), 455);
    // The budget holds: the power would pass 400 terms.
    EXPECT_FALSE(sum.Power(12, 400, power));
}

// Exponents near the bounds of their range (+-INT_MAX): products stop at a bound
// instead of overflowing, a power that would reach one is refused, and reading
// keeps a product that reaches one as an atom rather than writing it.
TEST(LargePolynomials, HugeExponentsStopAtTheirBounds) {
    const int bound = KOBWBMonomialFactor::maxExponent;
    const KOBWBPolynomial high = KOBWBPolynomial::Atom(x, bound - 1);
    const KOBWBPolynomial low = KOBWBPolynomial::Atom(x, -bound + 1);
    EXPECT_EQ(high * high, KOBWBPolynomial::Atom(x, bound));
    EXPECT_EQ(low * low, KOBWBPolynomial::Atom(x, -bound));
    EXPECT_EQ(high * low, KOBWBPolynomial(KOBWBCoefficient(1)));
    EXPECT_EQ(KOBWBPolynomial::Atom(x, 1LL << 40), KOBWBPolynomial::Atom(x, bound));
    EXPECT_EQ(KOBWBPolynomial::Atom(x, LLONG_MIN).GetMaxExponent(), bound);
    KOBWBPolynomial power;
    EXPECT_FALSE(high.Power(2, 100, power));
    EXPECT_FALSE(KOBWBPolynomial::Atom(x, -(1 << 30)).Power(2, 100, power));
    EXPECT_TRUE(KOBWBPolynomial::Atom(x, 1 << 15).Power(2, 100, power));
    EXPECT_EQ(power, KOBWBPolynomial::Atom(x, 1 << 16));
    // A sum with such terms multiplies term by term, FLINT not being asked.
    const KOBWBPolynomial sum = high + KOBWBPolynomial::Atom(2);
    EXPECT_EQ(sum * sum, TermByTerm(sum, sum));

    KOBWBFactory factory;
    KOBWBVariable* v = factory.CreateVariable();
    KOBWBPolynomialContext context(factory);
    KOBWBPolynomial read;
    ASSERT_TRUE(context.ToPolynomial(
        factory.CreateProduct(factory.CreatePower(v, bound - 1), factory.CreatePower(v, bound - 1)), read));
    EXPECT_TRUE(context.ExceededBudget());
    EXPECT_EQ(read.GetMaxExponent(), 1);
    ASSERT_TRUE(context.ToPolynomial(factory.CreatePower(factory.CreatePower(v, 1 << 16), 1 << 15), read));
    EXPECT_EQ(read.GetMaxExponent(), 1);
    ASSERT_TRUE(context.ToPolynomial(factory.CreatePower(factory.CreatePower(v, 1 << 15), 1 << 15), read));
    EXPECT_EQ(read, KOBWBPolynomial::Atom(context.GetVariableAtom(v), 1 << 30));
}

// Work in another thread, with coefficients past machine words: the backend's
// per-thread caches go with the thread (the leak checker of the sanitizer build
// fails the run otherwise).
TEST(LargePolynomials, WorkerThreadsLeaveNothingBehind) {
    const KOBWBPolynomial big(KOBWBCoefficient(KOBWBRational(2).Power(100)));
    const KOBWBPolynomial sum = KOBWBPolynomial::Atom(1) * big + KOBWBPolynomial::Atom(2) + KOBWBPolynomial::Atom(3) + big;
    KOBWBPolynomial power, product;
    std::vector<KOBWBRationalInterval> roots;
    std::thread worker([&] {
        sum.Power(10, 100000, power);
        // A large product leaves FLINT's form of it with the thread.
        std::mt19937 terms(8);
        product = Sparse(terms, 60) * Sparse(terms, 45) * big;
        std::mt19937 random(3);
        Tools::IsolateRealRoots(Dense(random, 20, 1000) * big, x, roots);
    });
    worker.join();
    EXPECT_EQ(power.GetNbOfTerms(), 286);
    EXPECT_GT(product.GetNbOfTerms(), 45);
    EXPECT_FALSE(roots.empty());
}

TEST(LargePolynomials, GcdsAndResultantsOfHighDegree) {
    std::mt19937 random(9);
    for (int trial = 0; trial < 4; ++trial) {
        const KOBWBPolynomial common = Dense(random, 15, 1000000);
        const KOBWBPolynomial f = Dense(random, 20, 1000), g = Dense(random, 18, 1000);
        KOBWBPolynomial gcd, quotient, remainder;
        ASSERT_TRUE(Tools::Gcd(common * f, common * g, x, gcd));
        // f and g of random coefficients are coprime: the gcd is the common factor, monic.
        ASSERT_EQ(gcd.Degree(x), 15);
        EXPECT_TRUE(gcd.GetTerms().back().coefficient.IsOne());
        ASSERT_TRUE(Tools::Divide(common, gcd, x, quotient, remainder));
        EXPECT_TRUE(remainder.IsZero());
        // Rational coefficients: the same gcd.
        KOBWBPolynomial scaledGcd;
        ASSERT_TRUE(Tools::Gcd(Number(KOBWBRational(2, 3)) * common * f, common * g * Number(KOBWBRational(-5, 7)), x,
                               scaledGcd));
        EXPECT_EQ(scaledGcd, gcd);

        KOBWBRational resultant, bezout;
        ASSERT_TRUE(Tools::Resultant(f, g * Number(KOBWBRational(1, 3)), x, resultant));
        ASSERT_TRUE(Tools::BezoutResultant(f, g * Number(KOBWBRational(1, 3)), x, bezout));
        EXPECT_EQ(resultant, bezout) << trial;
        EXPECT_FALSE(resultant.IsZero());
        ASSERT_TRUE(Tools::Resultant(common * f, common * g, x, resultant));
        EXPECT_TRUE(resultant.IsZero());
    }
}

TEST(LargePolynomials, CloseRootsOfHighDegreeAreIsolatedExactly) {
    // Twelve roots k/1000 with multiplicities, the pair 1/3 and 1/3 + 1/(3 2^60), a root
    // at 0, one of magnitude 2^1100, and a factor without real roots.
    std::vector<KOBWBRational> roots{KOBWBRational(0), KOBWBRational(1, 3),
                                     KOBWBRational(1, 3) + KOBWBRational(1) / (KOBWBRational(3) * KOBWBRational(2).Power(60)),
                                     -KOBWBRational(2).Power(1100)};
    KOBWBPolynomial p = KOBWBPolynomial::Atom(x, 2) + Number(1);
    for (int k = 1; k <= 12; ++k) {
        roots.push_back(KOBWBRational(k, 1000));
        p = p * RootFactor(KOBWBRational(k, 1000));
        if (k % 4 == 0) p = p * RootFactor(KOBWBRational(k, 1000));
    }
    for (size_t i = 0; i < 4; ++i) p = p * RootFactor(roots[i]);
    std::sort(roots.begin(), roots.end());

    std::vector<KOBWBRationalInterval> intervals;
    ASSERT_TRUE(Tools::IsolateRealRoots(p, x, intervals));
    ASSERT_EQ(intervals.size(), roots.size());
    for (size_t i = 0; i < roots.size(); ++i) {
        const KOBWBRationalInterval& interval = intervals[i];
        EXPECT_FALSE(roots[i] < interval.lower || interval.upper < roots[i]) << i;
        if (i > 0) {
            EXPECT_TRUE(intervals[i - 1].upper < interval.lower) << i;
        }
        if (interval.lower == interval.upper) continue;
        // Neither end is a root: refinement narrows towards the one inside.
        KOBWBRationalInterval refined = interval;
        ASSERT_TRUE(Tools::RefineRoot(p, x, refined, KOBWBRational(1) / KOBWBRational(2).Power(80))) << i;
        EXPECT_FALSE(roots[i] < refined.lower || refined.upper < roots[i]) << i;
    }
    std::vector<KOBWBRational> rational;
    ASSERT_TRUE(Tools::RationalRoots(p, x, rational));
    EXPECT_EQ(rational, roots);
}
