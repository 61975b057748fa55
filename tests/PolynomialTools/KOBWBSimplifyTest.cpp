#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBEquationPrinter.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBPolynomialTools.h"
#include "KOBWBRational.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

bool IsIntegerZero(const KOBWBExpression* e) {
    return e && e->GetType() == KOBWBConstantType && e->GetExprValue().GetType() == KOBWBIntegerValue &&
           e->GetExprValue().GetAsInteger() == 0;
}

struct Vars {
    KOBWBFactory factory;
    std::vector<KOBWBVariable*> v{factory.CreateVariable(), factory.CreateVariable(), factory.CreateVariable()};
    KOBWBExpression* I(int n) { return factory.CreateIntegerConstant(n); }
    void Set(const std::vector<double>& values) {
        for (size_t i = 0; i < v.size(); ++i) v[i]->SetExprValue(KOBWBValue(values[i]));
    }
};

int CountNodes(const KOBWBExpression* e) {
    int count = 1;
    for (int i = 0; i < e->GetNbOfChildren(); ++i) count += CountNodes(e->GetChild(i));
    return count;
}

// Random expression graphs over three variables, with every operator family the
// algebra reads as a polynomial, as a quotient or as an atom.
class Generator {
public:
    Generator(Vars& vars, unsigned seed) : m_vars(vars), m_random(seed) {}

    KOBWBExpression* Make(int depth) {
        KOBWBFactory& f = m_vars.factory;
        if (depth == 0 || Pick(5) == 0) return Leaf();
        switch (Pick(11)) {
        case 0:
        case 1: {
            KOBWBExpression* terms[] = {Make(depth - 1), Make(depth - 1), Make(depth - 1)};
            return f.CreateSum(2 + Pick(2), terms);
        }
        case 2:
        case 3: {
            KOBWBExpression* factors[] = {Make(depth - 1), Make(depth - 1), Make(depth - 1)};
            return f.CreateProduct(2 + Pick(2), factors);
        }
        case 4: return f.CreateSub(Make(depth - 1), Make(depth - 1));
        case 5: return f.CreatePower(Make(depth - 1), Pick(4));
        // Denominators kept away from zero: a constant, or a square plus one.
        case 6: return f.CreateQuotient(Make(depth - 1), Pick(2) ? m_vars.I(1 + Pick(5)) : SquarePlusOne(depth));
        case 7: return f.CreateSin(Make(depth - 1));
        case 8: return f.CreateSqrt(SquarePlusOne(depth));
        case 9: return f.CreatePower(SquarePlusOne(depth), -1 - Pick(2));
        default: return f.CreateMax(Make(depth - 1), Make(depth - 1));
        }
    }

    std::vector<double> Point() {
        std::uniform_real_distribution<double> uniform(-1.5, 1.5);
        return {uniform(m_random), uniform(m_random), uniform(m_random)};
    }

private:
    int Pick(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }

    KOBWBExpression* SquarePlusOne(int depth) {
        KOBWBExpression* base = Make(depth - 1);
        return m_vars.factory.CreateSum(m_vars.factory.CreateProduct(base, base), m_vars.I(1));
    }

    KOBWBExpression* Leaf() {
        KOBWBFactory& f = m_vars.factory;
        switch (Pick(6)) {
        case 0: return m_vars.I(Pick(7) - 3);
        case 1: return f.CreateConstant(KOBWBValue(KOBWBCreateFraction(Pick(5) + 1, Pick(3) + 2, Pick(2), 0)));
        case 2: return f.CreateRealConstant(Pick(2) ? 0.1 : 2.5);
        default: return m_vars.v[static_cast<size_t>(Pick(3))];
        }
    }

    Vars& m_vars;
    std::mt19937 m_random;
};

} // namespace

TEST(KOBWBSimplify, ExactIdentitiesGiveTheIntegerZero) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* x = s.v[0];
    KOBWBExpression* lhs = f.CreatePower(f.CreateSum(x, s.I(1)), 2);
    KOBWBExpression* rest[] = {f.CreateOpposite(f.CreatePower(x, 2)), f.CreateProduct(s.I(-2), x), s.I(-1)};
    KOBWBExpression* identity = f.CreateSum(lhs, f.CreateSum(3, rest));
    EXPECT_TRUE(IsIntegerZero(KOBWBPolynomialTools::Simplify(identity)));

    KOBWBExpression* thirds[] = {f.CreateConstant(KOBWBValue(KOBWBCreateFraction(1, 3, 0, 0))),
                                 f.CreateQuotient(s.I(1), s.I(6)), f.CreateQuotient(s.I(-1), s.I(2))};
    EXPECT_TRUE(IsIntegerZero(KOBWBPolynomialTools::Simplify(f.CreateSum(3, thirds))));

    // The same atom however its argument is written.
    KOBWBExpression* sines = f.CreateSub(f.CreateSin(f.CreateSum(x, s.I(1))), f.CreateSin(f.CreateSum(s.I(1), x)));
    EXPECT_TRUE(IsIntegerZero(KOBWBPolynomialTools::Simplify(sines)));
    // Reals are folded with real arithmetic: 0.1 x - 0.1 x is exactly zero, 0.1 + 0.2 - 0.3 is not.
    KOBWBExpression* tenth = f.CreateRealConstant(0.1);
    EXPECT_TRUE(IsIntegerZero(KOBWBPolynomialTools::Simplify(f.CreateSub(f.CreateProduct(tenth, x), f.CreateProduct(x, tenth)))));
    KOBWBExpression* decimals[] = {tenth, f.CreateRealConstant(0.2), f.CreateRealConstant(-0.3)};
    EXPECT_FALSE(IsIntegerZero(KOBWBPolynomialTools::Simplify(f.CreateSum(3, decimals))));
    // A quotient is not cancelled: x/x is undefined at 0.
    EXPECT_FALSE(IsIntegerZero(KOBWBPolynomialTools::Simplify(f.CreateSub(f.CreateQuotient(x, x), s.I(1)))));
    KOBWBExpression* sameDenominator = f.CreateSub(f.CreateQuotient(x, f.CreateProduct(s.I(2), s.v[1])),
                                                   f.CreateQuotient(f.CreateProduct(x, s.I(2)), f.CreateProduct(s.v[1], s.I(4))));
    EXPECT_TRUE(IsIntegerZero(KOBWBPolynomialTools::Simplify(sameDenominator)));
}

TEST(KOBWBSimplify, PiStaysExact) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* degree = f.CreateQuotient(f.CreateConstantPi(), s.I(180));
    KOBWBExpression* simplified = KOBWBPolynomialTools::Simplify(degree);
    ASSERT_EQ(simplified->GetType(), KOBWBConstantType);
    ASSERT_TRUE(simplified->GetExprValue().IsAFraction());
    const KOBWBFraction fraction = simplified->GetExprValue().GetAsFraction();
    EXPECT_EQ(fraction.numerator, 1);
    EXPECT_EQ(fraction.denominator, 180);
    EXPECT_EQ(fraction.powerOfPi, 1);
    KOBWBExpression* turn = f.CreateProduct(f.CreateProduct(degree, s.I(360)), f.CreateConstantRTOD());
    EXPECT_EQ(KOBWBPolynomialTools::Simplify(turn)->GetExprValue().GetAsInteger(), 360);
    // 30 deg + Pi/6 - Pi/3 in x: 0.
    KOBWBExpression* angles[] = {f.CreateProduct(s.I(30), f.CreateProduct(f.CreateConstantDTOR(), s.v[0])),
                                 f.CreateProduct(f.CreateQuotient(f.CreateConstantPi(), s.I(6)), s.v[0]),
                                 f.CreateOpposite(f.CreateProduct(s.v[0], f.CreateQuotient(f.CreateConstantPi(), s.I(3))))};
    EXPECT_TRUE(IsIntegerZero(KOBWBPolynomialTools::Simplify(f.CreateSum(3, angles))));
}

TEST(KOBWBSimplify, CanonicalFormIsIndependentOfHowTheExpressionIsWritten) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression *x = s.v[0], *y = s.v[1];
    KOBWBExpression* one = f.CreateProduct(f.CreateSum(x, y), f.CreateSum(y, s.I(2)));
    KOBWBExpression* terms[] = {f.CreateProduct(s.I(2), y), f.CreatePower(y, 2), f.CreateProduct(y, x), f.CreateProduct(x, s.I(2))};
    KOBWBExpression* other = f.CreateSum(4, terms);
    KOBWBExpression* a = KOBWBPolynomialTools::Simplify(one);
    KOBWBExpression* b = KOBWBPolynomialTools::Simplify(other);
    EXPECT_TRUE(a->IsEqualTo(b));
    // Descending degree, variables by index, the constant last.
    KOBWBPolynomialContext context(f);
    KOBWBExpression* square = context.Simplify(f.CreatePower(f.CreateSum(s.I(1), x), 2));
    ASSERT_EQ(square->GetType(), KOBWBSumType);
    ASSERT_EQ(square->GetNbOfChildren(), 3);
    EXPECT_EQ(square->GetChild(0)->GetType(), KOBWBPowerType);
    EXPECT_EQ(square->GetChild(1)->GetType(), KOBWBProductType);
    EXPECT_EQ(square->GetChild(2)->GetExprValue().GetAsInteger(), 1);
    // Variables and unchanged atoms are reused, not copied.
    KOBWBExpression* sine = f.CreateSin(x);
    KOBWBExpression* sum = context.Simplify(f.CreateSum(sine, x));
    EXPECT_EQ(sum->GetChild(0), x);
    EXPECT_EQ(sum->GetChild(1), sine);
}

TEST(KOBWBSimplify, RandomGraphsKeepTheirValues) {
    int compared = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        Vars s;
        Generator generator(s, seed);
        KOBWBExpression* original = generator.Make(4);
        KOBWBExpression* simplified = KOBWBPolynomialTools::Simplify(original);
        ASSERT_NE(simplified, nullptr) << "seed " << seed;
        for (int k = 0; k < 3; ++k) {
            s.Set(generator.Point());
            const double expected = original->Eval();
            const double actual = simplified->Eval();
            if (!std::isfinite(expected) || std::fabs(expected) > 1e12) continue;
            EXPECT_NEAR(actual, expected, 1e-7 * (1.0 + std::fabs(expected))) << "seed " << seed;
            ++compared;
        }
    }
    EXPECT_GT(compared, 800);
}

TEST(KOBWBSimplify, ExpansionStaysWithinItsBudget) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* terms[] = {s.v[0], s.v[1], s.v[2], s.I(1)};
    KOBWBExpression* sum = f.CreateSum(4, terms);
    KOBWBPolynomialContext context(f);
    KOBWBPolynomial expanded;
    ASSERT_TRUE(context.ToPolynomial(f.CreatePower(sum, 20), expanded));
    EXPECT_EQ(expanded.GetNbOfTerms(), 1771);
    EXPECT_FALSE(context.ExceededBudget());
    KOBWBExpression* sixtieth = f.CreatePower(sum, 60);
    ASSERT_TRUE(context.ToPolynomial(sixtieth, expanded));
    EXPECT_EQ(expanded.GetNbOfTerms(), 1);
    // The caller is told that the power stayed an atom, and the next reading starts afresh.
    EXPECT_TRUE(context.ExceededBudget());
    ASSERT_TRUE(context.ToPolynomial(sum, expanded));
    EXPECT_FALSE(context.ExceededBudget());
    bool complete = true;
    EXPECT_NE(KOBWBPolynomialTools::Simplify(f.CreateProduct(sixtieth, s.I(2)), complete), nullptr);
    EXPECT_FALSE(complete);
    EXPECT_NE(KOBWBPolynomialTools::Simplify(sum, complete), nullptr);
    EXPECT_TRUE(complete);
    // A product of many sums, under a smaller budget.
    context.SetMaxTerms(500);
    std::vector<KOBWBExpression*> sums;
    for (int i = 0; i < 120; ++i) sums.push_back(f.CreateSum(s.v[static_cast<size_t>(i % 3)], s.I(i + 1)));
    ASSERT_TRUE(context.ToPolynomial(f.CreateProduct(120, sums.data()), expanded));
    EXPECT_EQ(expanded.GetNbOfTerms(), 1);
    EXPECT_TRUE(context.ExceededBudget());
    // Products each within the budget, but together past what one reading may do
    // (32 x 100 products of two terms): the sum of 300 products of two 10-term sums
    // expands its first 33 products and keeps the other 267 as atoms.
    context.SetMaxTerms(100);
    const auto tenTerms = [&](KOBWBExpression* atom, int shift) {
        std::vector<KOBWBExpression*> powers;
        for (int k = 0; k < 10; ++k) powers.push_back(f.CreatePower(atom, k + shift));
        return f.CreateSum(10, powers.data());
    };
    std::vector<KOBWBExpression*> products;
    for (int i = 0; i < 300; ++i) products.push_back(f.CreateProduct(tenTerms(s.v[0], 10 * i), tenTerms(s.v[1], 0)));
    KOBWBExpression* manyProducts = f.CreateSum(300, products.data());
    ASSERT_TRUE(context.ToPolynomial(manyProducts, expanded));
    EXPECT_TRUE(context.ExceededBudget());
    EXPECT_EQ(expanded.GetNbOfTerms(), 33 * 100 + 267);
    context.SetMaxTerms(10000);
    ASSERT_TRUE(context.ToPolynomial(manyProducts, expanded));
    EXPECT_FALSE(context.ExceededBudget());
    EXPECT_EQ(expanded.GetNbOfTerms(), 300 * 100);
    // The atom keeps its meaning.
    s.Set({0.01, -0.02, 0.005});
    KOBWBExpression* written = context.Simplify(sixtieth);
    EXPECT_NEAR(written->Eval(), sixtieth->Eval(), 1e-9 * std::fabs(sixtieth->Eval()));
    // A huge integer power of a sum is refused at once.
    ASSERT_TRUE(context.ToPolynomial(f.CreatePower(f.CreateSum(s.v[0], s.I(1)), 2000000000), expanded));
    EXPECT_EQ(expanded.GetNbOfTerms(), 1);
}

// An exact coefficient below one raised to a huge power stays one atom, as its
// reciprocal's power would past the reals: expanded, its numerator and denominator
// would have billions of digits.
TEST(KOBWBSimplify, HugePowersOfSmallExactCoefficientsStayAtoms) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* twoThirds = f.CreateQuotient(s.I(2), s.I(3));
    KOBWBPolynomialContext context(f);
    KOBWBPolynomial polynomial;
    for (int exponent : {2000000000, -2000000000}) {
        ASSERT_TRUE(context.ToPolynomial(f.CreateProduct(f.CreatePower(twoThirds, exponent), s.v[0]), polynomial));
        ASSERT_EQ(polynomial.GetNbOfTerms(), 1);
        EXPECT_EQ(polynomial.GetTerm(0).coefficient.ToDouble(), 1.0) << exponent;
    }
    // Small powers are still exact.
    ASSERT_TRUE(context.ToPolynomial(f.CreatePower(twoThirds, 3), polynomial));
    EXPECT_EQ(polynomial.GetTerm(0).coefficient.GetExact().ToString(), "8/27");
}

TEST(KOBWBSimplify, CoefficientsPastMachineWordsStayExact) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* big = f.CreatePower(s.I(2), 40);
    KOBWBPolynomialContext context(f);
    KOBWBPolynomial polynomial;
    ASSERT_TRUE(context.ToPolynomial(f.CreateProduct(f.CreateProduct(big, big), s.v[0]), polynomial));
    ASSERT_EQ(polynomial.GetNbOfTerms(), 1);
    EXPECT_EQ(polynomial.GetTerm(0).coefficient.GetExact().ToString(), "1208925819614629174706176");
    // Minus 2^80 x: exactly nothing left.
    KOBWBExpression* back = f.CreateSub(f.CreateProduct(f.CreateProduct(big, big), s.v[0]),
                                        f.CreateProduct(f.CreatePower(s.I(2), 80), s.v[0]));
    EXPECT_TRUE(IsIntegerZero(context.Simplify(back)));
}

// Integer and fraction constants stand for "any" or "no" integer at the ends of their
// range (+-(2^31 - 1)), and -2^31 is past them: coefficients with such parts, alone or
// times Pi, are written as what they are, and those said to read back exactly do.
TEST(KOBWBSimplify, CoefficientsAtTheEndsOfTheIntegerConstantsKeepTheirValues) {
    const long long top = 2147483647;
    const KOBWBRational values[] = {KOBWBRational(top - 1), KOBWBRational(top), KOBWBRational(-top),
                                    KOBWBRational(-top - 1), KOBWBRational(-top - 1, 729), KOBWBRational(top, 3),
                                    KOBWBRational(-top, 1 << 20), KOBWBRational(3, top),
                                    // 2^53 (2^31 - 1): past the doubles, into integer constants.
                                    KOBWBRational(top) * KOBWBRational(1LL << 53)};
    for (const KOBWBRational& value : values) {
        for (int piPower = 0; piPower <= 1; ++piPower) {
            SCOPED_TRACE(value.ToString() + " Pi^" + std::to_string(piPower));
            Vars s;
            KOBWBPolynomialContext context(s.factory);
            KOBWBPolynomial polynomial =
                KOBWBPolynomial::Multiply(KOBWBPolynomial(KOBWBCoefficient(value)),
                                          KOBWBPolynomial::Atom(context.GetVariableAtom(s.v[0])));
            const KOBWBPolynomial pi = KOBWBPolynomial::Atom(KOBWBPolynomialContext::piAtom, 1);
            if (piPower) polynomial = KOBWBPolynomial::Multiply(polynomial, pi);
            KOBWBExpression* written = context.ToExpression(polynomial);
            ASSERT_NE(written, nullptr);
            s.Set({1.0, 0.0, 0.0});
            const double expected = value.ToDouble() * (piPower ? 3.141592653589793 : 1.0);
            EXPECT_NEAR(written->Eval(), expected, 1e-12 * std::fabs(expected));
            KOBWBPolynomial again;
            if (!context.ReadsBackExactly(polynomial)) continue;
            ASSERT_TRUE(context.ToPolynomial(written, again));
            EXPECT_TRUE(again == polynomial);
        }
    }
}

// Several variables put in at once: what is put in is not substituted into again,
// inside atoms too; foreign variables and null polynomials are left out.
TEST(KOBWBSimplify, VariablesAreSubstitutedTogether) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* x = s.v[0];
    KOBWBExpression* y = s.v[1];
    KOBWBPolynomialContext context(f);
    KOBWBPolynomial p, yPlusOne, two, expected;
    ASSERT_TRUE(context.ToPolynomial(f.CreateSum(f.CreateProduct(x, y), f.CreateSin(f.CreateSub(x, y))), p));
    ASSERT_TRUE(context.ToPolynomial(f.CreateSum(y, s.I(1)), yPlusOne));
    ASSERT_TRUE(context.ToPolynomial(s.I(2), two));
    // x := y + 1 and y := 2 together: (y + 1) 2 + sin(y + 1 - 2).
    ASSERT_TRUE(context.ToPolynomial(f.CreateSum(f.CreateProduct(f.CreateSum(y, s.I(1)), s.I(2)),
                                                 f.CreateSin(f.CreateSub(y, s.I(1)))),
                                     expected));
    KOBWBFactory other;
    const KOBWBPolynomial together = context.SubstituteVariables(
        p, {{s.v[0], &yPlusOne}, {s.v[1], &two}, {other.CreateVariable(), &two}, {s.v[2], nullptr}});
    EXPECT_EQ(together, expected);
    // One after the other, y is put in everywhere.
    const KOBWBPolynomial inTurn = context.SubstituteVariable(context.SubstituteVariable(p, s.v[0], yPlusOne), s.v[1], two);
    EXPECT_NE(inTurn, together);
    EXPECT_EQ(context.GetVariables(inTurn).size(), 0u);
    EXPECT_EQ(context.SubstituteVariables(p, {}), p);
    // The variables, inside atoms too, in index order; the vector filled in place
    // loses what it held.
    const std::vector<KOBWBVariable*> xAndY{s.v[0], s.v[1]};
    EXPECT_EQ(context.GetVariables(p), xAndY);
    std::vector<KOBWBVariable*> variables{s.v[2], s.v[2], s.v[2]};
    context.GetVariables(together, variables);
    EXPECT_EQ(variables, std::vector<KOBWBVariable*>{s.v[1]});
    context.GetVariables(inTurn, variables);
    EXPECT_TRUE(variables.empty());
}

TEST(KOBWBSimplify, BadInputIsRefused) {
    KOBWBFactory empty;
    EXPECT_EQ(KOBWBPolynomialTools::Simplify(nullptr), nullptr);
    KOBWBExpression* constant = empty.CreateRealConstant(2.5);
    EXPECT_EQ(KOBWBPolynomialTools::Simplify(constant)->GetExprValue().GetAsDouble(), 2.5);
    Vars s;
    KOBWBPolynomialContext context(s.factory);
    EXPECT_EQ(context.Simplify(constant), nullptr);
    EXPECT_EQ(context.Simplify(s.factory.CreateSum(s.v[0], s.I(1)))->GetNbOfChildren(), 2);
    KOBWBPolynomialContext invalid(s.factory, nullptr, s.I(1));
    EXPECT_FALSE(invalid.IsValid());
    EXPECT_EQ(invalid.Simplify(s.v[0]), nullptr);
    KOBLVRListPKOBWBExpression coefficients;
    EXPECT_FALSE(context.ExtractCoefficients(s.v[0], nullptr, coefficients));
    KOBWBFactory other;
    KOBWBVariable* foreign = other.CreateVariable();
    EXPECT_FALSE(context.ExtractCoefficients(s.v[0], foreign, coefficients));
    EXPECT_EQ(coefficients.Size(), 0);
    EXPECT_EQ(context.Substitute(s.v[0], foreign, s.I(1)), nullptr);
    KOBWBPolynomial unknownAtom = KOBWBPolynomial::Atom(1000);
    EXPECT_EQ(context.ToExpression(unknownAtom), nullptr);
    // A polynomial naming an atom the context does not have has no variables, takes
    // no substitution and is put in for none.
    KOBWBPolynomial x;
    ASSERT_TRUE(context.ToPolynomial(s.v[0], x));
    const KOBWBPolynomial mixed = x + unknownAtom;
    EXPECT_TRUE(context.GetVariables(mixed).empty());
    EXPECT_EQ(context.SubstituteVariable(mixed, s.v[0], KOBWBPolynomial(KOBWBCoefficient(2))), mixed);
    EXPECT_EQ(context.SubstituteVariable(x, s.v[0], unknownAtom), x);
    EXPECT_EQ(context.SubstituteVariables(x, {{s.v[0], &unknownAtom}}), x);
    EXPECT_EQ(context.SubstituteVariables(mixed, {{s.v[0], &x}}), mixed);
    // Intervals and other values that are not one number are atoms, each node its own.
    KOBWBExpression* interval = s.factory.CreateConstant(KOBWBValue(KOBWBCreateRealInterval(1.0, 2.0)));
    KOBWBExpression* scaled = s.factory.CreateProduct(s.v[0], interval);
    EXPECT_TRUE(IsIntegerZero(context.Simplify(s.factory.CreateSub(scaled, scaled))));
    EXPECT_FALSE(IsIntegerZero(context.Simplify(s.factory.CreateSub(interval, interval))));
}

namespace {

// sqrt(u^2 + v^2) of its two arguments.
class Hypotenuse : public KOBWBBlackBox {
public:
    void Eval(KOBWBValue& result) override { result = KOBWBValue(Eval()); }
    double Eval() override {
        const double u = GetOperator()->GetChild(0)->Eval();
        const double v = GetOperator()->GetChild(1)->Eval();
        return std::sqrt(u * u + v * v);
    }
};

} // namespace

TEST(KOBWBSimplify, EveryOperatorFamilyKeepsItsValue) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression *x = s.v[0], *y = s.v[1];
    // Arguments written so that simplification has work to do: (x + 1) - 1 + 0.25 y.
    const auto u = [&] {
        return f.CreateSub(f.CreateSum(f.CreateSum(x, s.I(1)), f.CreateProduct(f.CreateRealConstant(0.25), y)), s.I(1));
    };
    const auto positive = [&] { return f.CreateSum(f.CreateProduct(u(), u()), s.I(2)); };
    std::vector<KOBWBExpression*> formulas;
    for (KOBWBExpressionType type : {KOBWBSqrtType, KOBWBLogType, KOBWBLnType})
        formulas.push_back(f.CreateOperator(type, positive()));
    for (KOBWBExpressionType type : {KOBWBExpType, KOBWBAbsType, KOBWBCeilType, KOBWBFloorType, KOBWBRoundType, KOBWBTruncType,
                                     KOBWBSinType, KOBWBCosType, KOBWBTanType, KOBWBAtanType, KOBWBSinhType, KOBWBCoshType,
                                     KOBWBTanhType, KOBWBAsinhType})
        formulas.push_back(f.CreateOperator(type, u()));
    KOBWBExpression* small = f.CreateQuotient(u(), s.I(8));
    for (KOBWBExpressionType type : {KOBWBAsinType, KOBWBAcosType, KOBWBAtanhType}) formulas.push_back(f.CreateOperator(type, small));
    formulas.push_back(f.CreateOperator(KOBWBAcoshType, positive()));
    for (KOBWBExpressionType type : {KOBWBAtan2Type, KOBWBDimType, KOBWBSignType, KOBWBModType})
        formulas.push_back(f.CreateBinaryOperator(type, u(), f.CreateSum(y, s.I(3))));
    formulas.push_back(f.CreateMin(u(), f.CreateSum(y, s.I(-1))));
    formulas.push_back(f.CreateMax(u(), f.CreateSum(y, s.I(-1))));
    formulas.push_back(f.CreateRoot(positive(), 3));
    formulas.push_back(f.CreatePower(positive(), f.CreateRealConstant(0.3)));
    formulas.push_back(f.CreatePower(positive(), y));
    formulas.push_back(f.CreateIfThenElse(f.CreateLess(u(), y), f.CreateProduct(u(), s.I(3)), f.CreateOpposite(u())));
    KOBWBExpression* stepArguments[] = {u(), f.CreateRealConstant(0.0), f.CreateRealConstant(1.0), f.CreateRealConstant(-1.0),
                                        f.CreateRealConstant(2.0)};
    formulas.push_back(f.CreateOperator(KOBWBStepType, 5, stepArguments));
    Hypotenuse hypotenuse;
    KOBWBExpression* blackBoxArguments[] = {u(), f.CreateSum(y, y)};
    formulas.push_back(f.DeclareBlackBox(&hypotenuse, 2, blackBoxArguments, 0));

    KOBWBPolynomialContext context(f);
    for (size_t i = 0; i < formulas.size(); ++i) {
        ASSERT_NE(formulas[i], nullptr) << i;
        // Twice the formula less the formula written again: the atoms are found equal.
        KOBWBExpression* doubled = context.Simplify(f.CreateSub(f.CreateProduct(s.I(2), formulas[i]), formulas[i]));
        KOBWBExpression* simplified = context.Simplify(formulas[i]);
        ASSERT_NE(simplified, nullptr) << i;
        for (const std::vector<double>& point : {std::vector<double>{0.3, 0.7, 0.0}, std::vector<double>{-1.2, 2.5, 0.0}}) {
            s.Set(point);
            const double expected = formulas[i]->Eval();
            EXPECT_NEAR(simplified->Eval(), expected, 1e-9 * (1 + std::fabs(expected))) << "formula " << i;
            EXPECT_NEAR(doubled->Eval(), expected, 1e-9 * (1 + std::fabs(expected))) << "formula " << i;
        }
    }
}

TEST(KOBWBSimplify, ExpansionsBeyondTheRealsStayUnexpanded) {
    // (x (x + 10^13))^4 expands to coefficients up to 10^52, which no real constant holds:
    // written expanded, 0 at x = 0 turned into the empty interval.
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* x = s.v[0];
    KOBWBExpression* e = f.CreatePower(f.CreateProduct(x, f.CreateSum(x, f.CreateRealConstant(1e13))), 4);
    KOBWBExpression* simplified = KOBWBPolynomialTools::Simplify(e);
    s.Set({0.0, 0.0, 0.0});
    const KOBWBRealInterval value = simplified->GetValue().GetAsRealInterval();
    EXPECT_EQ(value.lower, 0.0);
    EXPECT_EQ(value.upper, 0.0);
    // A power whose coefficients would pass the reals is not even computed.
    KOBWBExpression* huge = f.CreatePower(f.CreateSum(x, s.I(1)), 100000);
    KOBWBPolynomialContext context(f);
    KOBWBPolynomial polynomial;
    ASSERT_TRUE(context.ToPolynomial(huge, polynomial));
    EXPECT_EQ(polynomial.GetNbOfTerms(), 1);
    KOBWBPolynomial small;
    ASSERT_TRUE(context.ToPolynomial(f.CreatePower(f.CreateSum(x, s.I(1)), 100), small));
    EXPECT_EQ(small.GetNbOfTerms(), 101);
    // The same holds for a constant put in for a variable of a power: 10^(3 10^7), whose
    // exact value would take seconds to form, stays a power; 10^30 becomes its value.
    for (int exponent : {30000000, -30000000, 30}) {
        ASSERT_TRUE(context.ToPolynomial(f.CreatePower(x, exponent), polynomial));
        const KOBWBPolynomial ten(KOBWBCoefficient(10));
        KOBWBCoefficient value;
        EXPECT_EQ(context.SubstituteVariable(polynomial, s.v[0], ten).IsConstant(value), exponent == 30) << exponent;
    }
}

// What the context says reads back exactly does: the expression written for the
// polynomial reads as the same polynomial, atom for atom. Real coefficients and
// powers of reciprocals are where reading back may not.
TEST(KOBWBSimplify, PolynomialsSaidToReadBackDo) {
    int exact = 0, inexact = 0;
    for (unsigned seed = 1; seed <= 600; ++seed) {
        Vars s;
        Generator generator(s, seed);
        KOBWBPolynomialContext context(s.factory);
        KOBWBPolynomial polynomial, again;
        ASSERT_TRUE(context.ToPolynomial(generator.Make(4), polynomial)) << "seed " << seed;
        KOBWBExpression* written = context.ToExpression(polynomial);
        ASSERT_NE(written, nullptr) << "seed " << seed;
        if (!context.ReadsBackExactly(polynomial)) {
            ++inexact;
            continue;
        }
        ++exact;
        ASSERT_TRUE(context.ToPolynomial(written, again)) << "seed " << seed;
        EXPECT_TRUE(again == polynomial) << "seed " << seed;
    }
    EXPECT_GT(exact, 100);
    EXPECT_GT(inexact, 100);

    Vars s;
    KOBWBPolynomialContext context(s.factory);
    KOBWBPolynomial polynomial;
    KOBWBExpression* x = s.v[0];
    // 0.1 x + 0.4 x is the real 0.5 x, which reads back as the exact x/2.
    ASSERT_TRUE(context.ToPolynomial(
        s.factory.CreateSum(s.factory.CreateProduct(s.factory.CreateRealConstant(0.1), x),
                            s.factory.CreateProduct(s.factory.CreateRealConstant(0.4), x)),
        polynomial));
    EXPECT_FALSE(context.ReadsBackExactly(polynomial));
    ASSERT_TRUE(context.ToPolynomial(s.factory.CreatePower(s.factory.CreateSum(x, s.I(1)), -2), polynomial));
    EXPECT_FALSE(context.ReadsBackExactly(polynomial));
    ASSERT_TRUE(context.ToPolynomial(s.factory.CreateSqrt(s.factory.CreateSum(x, s.I(1))), polynomial));
    EXPECT_TRUE(context.ReadsBackExactly(polynomial));
    EXPECT_FALSE(context.ReadsBackExactly(KOBWBPolynomial::Atom(context.GetNbOfAtoms())));
}

namespace {

// The nodes of the graph below root, each once.
std::vector<const KOBWBExpression*> Nodes(const KOBWBExpression* root) {
    std::unordered_set<const KOBWBExpression*> seen;
    std::vector<const KOBWBExpression*> nodes, pending{root};
    while (!pending.empty()) {
        const KOBWBExpression* node = pending.back();
        pending.pop_back();
        if (!seen.insert(node).second) continue;
        nodes.push_back(node);
        for (int i = 0; i < node->GetNbOfChildren(); ++i) pending.push_back(node->GetChild(i));
    }
    return nodes;
}

} // namespace

// Each reciprocal's denominator is written once and shared by every quotient by it:
// e(k+1) = 1/(e(k) + 1) + 1/(e(k) + 2) names e(k) in two denominators, and writing
// it anew in each would double the expression at every level.
TEST(KOBWBSimplify, NestedQuotientsAreWrittenOnce) {
    Vars s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* e = s.v[0];
    for (int k = 0; k < 20; ++k)
        e = f.CreateSum(f.CreateQuotient(s.I(1), f.CreateSum(e, s.I(1))), f.CreateQuotient(s.I(1), f.CreateSum(e, s.I(2))));
    KOBWBPolynomialContext context(f);
    KOBWBExpression* written = context.Simplify(e);
    ASSERT_NE(written, nullptr);
    EXPECT_LT(Nodes(written).size(), 400u);
    s.Set({0.7, 0.0, 0.0});
    EXPECT_NEAR(written->Eval(), e->Eval(), 1e-12);

    // So is each power of an atom or of a denominator: reading the written expression
    // back then expands (x + 1)^2 once, not once per quotient that holds it.
    KOBWBExpression *x = s.v[0], *y = s.v[1], *z = s.v[2];
    KOBWBExpression* xPlusOne = f.CreateSum(x, s.I(1));
    KOBWBExpression* squares = f.CreateSum(f.CreateProduct(y, f.CreatePower(f.CreateSin(x), 2)),
                                           f.CreateProduct(z, f.CreatePower(f.CreateSin(x), 2)));
    // y/(x + 1)^2 and z/((x + 1)^2 (y + 1)): two quotients with the square of one denominator.
    KOBWBExpression* quotients = f.CreateSum(
        f.CreateQuotient(f.CreateQuotient(y, xPlusOne), xPlusOne),
        f.CreateQuotient(f.CreateQuotient(f.CreateQuotient(z, xPlusOne), xPlusOne), f.CreateSum(y, s.I(1))));
    written = context.Simplify(f.CreateSum(squares, quotients));
    ASSERT_NE(written, nullptr);
    int powers = 0;
    for (const KOBWBExpression* node : Nodes(written)) powers += node->GetType() == KOBWBPowerType;
    EXPECT_EQ(powers, 2) << KOBWBEquationPrinter::ToText(written);
}
