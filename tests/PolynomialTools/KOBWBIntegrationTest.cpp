#include "KOBWBConstant.h"
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
        f.CreateQuotient(s.I(1), f.CreatePower(f.CreateSum(x, s.I(1)), 3)),
        f.CreateQuotient(Poly({1, 2}), Poly({1, 0, 1})),
        f.CreateQuotient(Poly({3, 0, 0, 1}), Poly({-2, 0, 1})),
        f.CreateQuotient(Poly({1}), Poly({-1, 0, 1})),
        f.CreateQuotient(Poly({5, -1, 2, 0, 1}), f.CreateProduct(f.CreatePower(Poly({1, 0, 1}), 2), Poly({-1, 1}))),
        f.CreateQuotient(f.CreateProduct(s.y, Poly({0, 0, 1})), f.CreatePower(Poly({2, 1, 1}), 3)),
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
        f.CreateSum(x, f.CreateSqrt(x)),
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
