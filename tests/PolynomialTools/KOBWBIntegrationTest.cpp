#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBIntegration.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

struct Setting {
    KOBWBFactory factory;
    KOBWBPolynomialContext context{factory};
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    std::mt19937 random{31};

    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }
    KOBWBExpression* I(int n) { return factory.CreateIntegerConstant(n); }
    // a x + b with a not zero.
    KOBWBExpression* Linear() {
        int a = Pick(-3, 3);
        if (a == 0) a = 2;
        return factory.CreateSum(factory.CreateProduct(I(a), x), I(Pick(-3, 3)));
    }
    KOBWBExpression* Derivative(KOBWBExpression* e) {
        KOBWBVariable* variables[] = {x};
        return factory.CreateDerivative(e, 1, variables);
    }
    double At(KOBWBExpression* e, double value) {
        x->SetExprValue(KOBWBValue(value));
        y->SetExprValue(KOBWBValue(0.75));
        return e->Eval();
    }
};

// Integrands whose antiderivative differentiates back to them exactly in the algebra:
// sums of polynomial terms, exponentials, sines, cosines and hyperbolic functions of
// linear arguments and reciprocals of linear polynomials, with factors free of x.
TEST(Integration, DerivativeOfTheIntegralIsTheIntegrand) {
    Setting s;
    KOBWBFactory& f = s.factory;
    for (int trial = 0; trial < 60; ++trial) {
        std::vector<KOBWBExpression*> terms;
        for (int i = s.Pick(1, 4); i > 0; --i) {
            KOBWBExpression* term = nullptr;
            switch (s.Pick(0, 6)) {
            case 0: term = f.CreatePower(s.x, s.Pick(0, 5)); break;
            case 1: term = f.CreateExp(s.Linear()); break;
            case 2: term = f.CreateSin(s.Linear()); break;
            case 3: term = f.CreateCos(s.Linear()); break;
            case 4: term = f.CreateSinh(s.Linear()); break;
            case 5: term = f.CreateCosh(s.Linear()); break;
            default: term = f.CreateQuotient(s.I(1), s.Linear()); break;
            }
            KOBWBExpression* factor = s.Pick(0, 2) == 0 ? static_cast<KOBWBExpression*>(s.y) : s.I(s.Pick(-5, 5));
            terms.push_back(f.CreateProduct(factor, term));
        }
        KOBWBExpression* integrand =
            terms.size() == 1 ? terms[0] : f.CreateSum(static_cast<int>(terms.size()), terms.data());
        ASSERT_NE(integrand, nullptr);
        unsigned char integrable = 0;
        KOBWBExpression* integral = integrand->IntegrateTable(s.x, integrable);
        ASSERT_TRUE(integrable) << trial;
        ASSERT_NE(integral, nullptr);
        EXPECT_TRUE(s.context.AreIdentical(s.Derivative(integral), integrand)) << trial;
    }
    // A constant and a variable free of x.
    unsigned char integrable = 0;
    KOBWBExpression* three = s.I(3)->IntegrateTable(s.x, integrable);
    EXPECT_TRUE(integrable && s.context.AreIdentical(three, f.CreateProduct(s.I(3), s.x)));
    KOBWBExpression* ofY = s.y->IntegrateTable(s.x, integrable);
    EXPECT_TRUE(integrable && s.context.AreIdentical(ofY, f.CreateProduct(s.y, s.x)));
}

// Where the algebra keeps quotients apart (tan, tanh, ln, rational functions), the
// derivative is compared with the integrand at points where every logarithm is defined.
TEST(Integration, LogarithmicIntegralsDifferentiateBackAtSamplePoints) {
    Setting s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* x = s.x;
    auto Poly = [&](std::vector<int> c) {
        std::vector<KOBWBExpression*> coefficients;
        for (int v : c) coefficients.push_back(s.I(v));
        return f.CreatePolynomial(x, static_cast<int>(c.size()), coefficients.data());
    };
    std::vector<KOBWBExpression*> integrands{
        f.CreateTan(f.CreateProduct(s.I(2), x)),
        f.CreateTanh(f.CreateSum(x, s.I(1))),
        f.CreateLn(f.CreateSum(f.CreateProduct(s.I(3), x), s.I(2))),
        f.CreateSqrt(f.CreateSum(f.CreateProduct(s.I(2), x), s.I(1))),
        f.CreatePower(f.CreateSum(x, s.I(3)), f.CreateRealConstant(-2.5)),
        f.CreatePower(f.CreateSub(x, s.I(1)), f.CreateQuotient(s.I(1), s.I(3))),
        f.CreateQuotient(s.I(1), f.CreatePower(f.CreateSum(x, s.I(1)), 3)),
        f.CreateQuotient(Poly({1, 2}), Poly({1, 0, 1})),
        f.CreateQuotient(Poly({3, 0, 0, 1}), Poly({-2, 0, 1})),
        f.CreateQuotient(Poly({1}), Poly({-1, 0, 1})),
        f.CreateQuotient(Poly({5, -1, 2, 0, 1}), f.CreateProduct(f.CreatePower(Poly({1, 0, 1}), 2), Poly({-1, 1}))),
        f.CreateQuotient(f.CreateProduct(s.y, Poly({0, 0, 1})), f.CreatePower(Poly({2, 1, 1}), 3)),
        // Several irreducible quadratic factors, with complex and with real roots.
        f.CreateQuotient(Poly({1}), f.CreateProduct(Poly({1, 0, 1}), Poly({2, 0, 1}))),
        f.CreateQuotient(Poly({0, 1}), f.CreateProduct(Poly({1, 0, 1}), Poly({-2, 0, 1}))),
        f.CreateQuotient(Poly({1, 0, 0, 1}), f.CreateProduct(f.CreateProduct(Poly({1, 1, 1}), Poly({3, 0, 1})), Poly({-2, 0, 1}))),
        f.CreateQuotient(Poly({1, 2}), f.CreateProduct(f.CreatePower(Poly({1, 0, 1}), 2), Poly({7, 3, 2}))),
    };
    for (size_t i = 0; i < integrands.size(); ++i) {
        unsigned char integrable = 0;
        KOBWBExpression* integral = integrands[i]->IntegrateTable(s.x, integrable);
        ASSERT_TRUE(integrable) << i;
        KOBWBExpression* derivative = s.Derivative(integral);
        ASSERT_NE(derivative, nullptr);
        for (double at : {1.7, 2.3, 4.1, 0.13 + 1.5}) {
            const double expected = s.At(integrands[i], at);
            EXPECT_NEAR(s.At(derivative, at), expected, 1e-9 * (1 + std::fabs(expected))) << i << " at " << at;
        }
    }
}

TEST(Integration, ReportsWhatItCannotIntegrate) {
    Setting s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* x = s.x;
    KOBWBExpression* cubic = f.CreateSum(f.CreatePower(x, 3), f.CreateSum(x, s.I(1)));
    const std::vector<KOBWBExpression*> hard{
        f.CreateExp(f.CreatePower(x, 2)),
        f.CreateProduct(x, f.CreateExp(x)),
        f.CreateProduct(f.CreateSin(x), f.CreateCos(x)),
        f.CreateQuotient(s.I(1), cubic),
        // x^4 + 1 splits into quadratics only over the reals, with coefficients sqrt(2).
        f.CreateQuotient(s.I(1), f.CreateSum(f.CreatePower(x, 4), s.I(1))),
        f.CreateSum(x, f.CreateSqrt(f.CreateSum(f.CreatePower(x, 2), s.I(1)))),
        f.CreatePower(x, s.y),
        f.CreateQuotient(s.I(1), f.CreateSum(f.CreateProduct(s.y, f.CreatePower(x, 2)), s.I(1))),
    };
    for (size_t i = 0; i < hard.size(); ++i) {
        unsigned char integrable = 1;
        EXPECT_EQ(hard[i]->IntegrateTable(s.x, integrable), nullptr) << i;
        EXPECT_FALSE(integrable) << i;
    }
    KOBWBFactory other;
    unsigned char integrable = 1;
    EXPECT_EQ(KOBWBIntegration::Integrate(x, other.CreateVariable(), integrable), nullptr);
    EXPECT_FALSE(integrable);
    EXPECT_EQ(KOBWBIntegration::Integrate(nullptr, s.x, integrable), nullptr);
}

}

namespace {

TEST(Integration, TheIntegrateOperatorEvaluatesItsAntiderivative) {
    Setting s;
    KOBWBFactory& f = s.factory;
    KOBWBExpression* integrand = f.CreateSum(f.CreateProduct(s.I(3), f.CreatePower(s.x, 2)), f.CreateCos(s.x));
    KOBWBExpression* integral = f.CreateIntegrateOperator(integrand, s.x);
    ASSERT_NE(integral, nullptr);
    EXPECT_EQ(integral->GetType(), KOBWBIntegrateType);
    EXPECT_NEAR(s.At(integral, 2.0), 8.0 + std::sin(2.0), 1e-12);
    EXPECT_NEAR(s.At(integral, -1.0), -1.0 + std::sin(-1.0), 1e-12);
    // On an interval of the variable the value encloses the point values.
    s.x->SetExprValue(KOBWBValue(KOBWBRealInterval{1.0, 2.0}));
    KOBWBValue range;
    integral->Eval(range);
    const KOBWBRealInterval enclosure = range.GetAsRealInterval();
    EXPECT_LE(enclosure.lower, 1.0 + std::sin(1.0));
    EXPECT_GE(enclosure.upper, 8.0 + std::sin(2.0));
    // Derivatives: the integrand itself in x; through the antiderivative in y.
    KOBWBVariable* byX[] = {s.x};
    KOBWBVariable* byY[] = {s.y};
    EXPECT_EQ(f.CreateDerivative(integral, 1, byX), integrand);
    KOBWBExpression* ofXY = f.CreateIntegrateOperator(f.CreateProduct(s.x, s.y), s.x);
    EXPECT_TRUE(s.context.AreIdentical(f.CreateDerivative(ofXY, 1, byY),
                                       f.CreateProduct(f.CreateRealConstant(0.5), f.CreatePower(s.x, 2))));
    // Not integrable: the indefinite value.
    KOBWBExpression* hard = f.CreateIntegrateOperator(f.CreateExp(f.CreatePower(s.x, 2)), s.x);
    s.x->SetExprValue(KOBWBValue(1.0));
    KOBWBValue value;
    hard->Eval(value);
    EXPECT_TRUE(value.IsIndefinite());
    // The generic constructor, and bad arguments.
    KOBWBExpression* children[] = {integrand, s.x};
    KOBWBExpression* generic = f.CreateOperator(KOBWBIntegrateType, 2, children);
    ASSERT_NE(generic, nullptr);
    EXPECT_NEAR(s.At(generic, 2.0), 8.0 + std::sin(2.0), 1e-12);
    KOBWBExpression* notAVariable[] = {integrand, s.I(1)};
    EXPECT_EQ(f.CreateOperator(KOBWBIntegrateType, 2, notAVariable), nullptr);
    EXPECT_EQ(f.CreateIntegrateOperator(nullptr, s.x), nullptr);
    KOBWBFactory other;
    EXPECT_EQ(f.CreateIntegrateOperator(integrand, other.CreateVariable()), nullptr);
}

// Made in temporary storage, the node and what it evaluates survive the switch back.
TEST(Integration, TheIntegrateOperatorOutlivesTemporaryStorage) {
    Setting s;
    KOBWBFactory& f = s.factory;
    f.UseTemporaryStorage(1);
    KOBWBExpression* integral = f.CreateIntegrateOperator(f.CreateSin(f.CreateProduct(s.I(2), s.x)), s.x);
    KOBWBEquation* equation = f.AddEquation(integral, KOBWBEqEqual);
    ASSERT_NE(equation, nullptr);
    EXPECT_NEAR(s.At(integral, 0.5), -std::cos(1.0) / 2, 1e-12);
    EXPECT_NEAR(s.At(integral, 0.25), -std::cos(0.5) / 2, 1e-12);
    f.UseTemporaryStorage(0);
    EXPECT_NEAR(s.At(equation->GetRoot(), 0.5), -std::cos(1.0) / 2, 1e-12);
    EXPECT_NEAR(s.At(equation->GetRoot(), 1.0), -std::cos(2.0) / 2, 1e-12);
}

}
