#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Sketch {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBExpression* I(int n) { return factory.CreateIntegerConstant(n); }
    void Set(double xv, double yv) {
        x->SetExprValue(KOBWBValue(xv));
        y->SetExprValue(KOBWBValue(yv));
    }
};

} // namespace

TEST(KOBWBCoefficients, RecombineToTheOriginal) {
    Sketch s;
    KOBWBFactory& f = s.factory;
    // (x + y)^3 / 4 + sin(y) x - 2: coefficients in x depend on y.
    KOBWBExpression* e = f.CreateSum(f.CreateSum(f.CreateQuotient(f.CreatePower(f.CreateSum(s.x, s.y), 3), s.I(4)),
                                                 f.CreateProduct(f.CreateSin(s.y), s.x)),
                                     s.I(-2));
    int degree = -1;
    KOBWBExpression** coefficients = new KOBWBExpression*[2];
    ASSERT_TRUE(e->IsPolynomial(s.x, degree, coefficients));
    ASSERT_EQ(degree, 3);
    for (double xv : {-1.25, 0.5, 2.0})
        for (double yv : {-0.75, 1.5}) {
            s.Set(xv, yv);
            double sum = 0.0;
            for (int k = 0; k <= degree; ++k) sum += coefficients[k]->Eval() * std::pow(xv, k);
            EXPECT_NEAR(sum, e->Eval(), 1e-12 * (1 + std::fabs(sum)));
        }
    EXPECT_EQ(coefficients[3]->GetExprValue().GetAsDouble(), 0.25);
    // x^0 over y in a denominator: still a polynomial in x.
    ASSERT_TRUE(f.CreateQuotient(f.CreateSum(s.x, s.I(1)), s.y)->IsPolynomial(s.x, degree, coefficients));
    EXPECT_EQ(degree, 1);
    s.Set(3.0, 4.0);
    EXPECT_DOUBLE_EQ(coefficients[0]->Eval(), 0.25);
    EXPECT_DOUBLE_EQ(coefficients[1]->Eval(), 0.25);
    // Not a polynomial in x: the array is freed and nothing else changes.
    EXPECT_FALSE(f.CreateQuotient(s.I(1), s.x)->IsPolynomial(s.x, degree, coefficients));
    EXPECT_EQ(coefficients, nullptr);
    EXPECT_EQ(degree, 1);
    EXPECT_FALSE(f.CreatePower(s.x, s.I(-1))->IsPolynomial(s.x, degree, coefficients));
    EXPECT_FALSE(f.CreateSin(s.x)->IsPolynomial(s.x, degree, coefficients));
    EXPECT_FALSE(s.x->IsPolynomial(nullptr, degree, coefficients));
    // A constant: degree 0.
    ASSERT_TRUE(f.CreateSin(s.y)->IsPolynomial(s.x, degree, coefficients));
    EXPECT_EQ(degree, 0);
    delete[] coefficients;
}

TEST(KOBWBPartialEval, SubstitutesByIdentityAndSimplifies) {
    Sketch s;
    KOBWBFactory& f = s.factory;
    const int equations = f.GetNbOfEquations();
    // (x + 0) counts as x: it is replaced as a whole.
    KOBWBExpression* e = f.CreateSum(f.CreateProduct(f.CreateSum(s.x, s.I(0)), s.y), f.CreateSin(s.x));
    KOBWBExpression* atTwo = e->PartialEval(s.x, s.I(2));
    ASSERT_NE(atTwo, nullptr);
    EXPECT_EQ(f.GetNbOfEquations(), equations + 1);
    for (double yv : {-1.0, 0.5, 3.0}) {
        s.Set(2.0, yv);
        const double expected = e->Eval();
        s.Set(-7.0, yv);
        EXPECT_NEAR(atTwo->Eval(), expected, 1e-12);
    }
    // The single pair takes a value that is not constant; the original is untouched.
    KOBWBExpression* shifted = e->PartialEval(s.x, f.CreateSum(s.y, s.I(1)));
    ASSERT_NE(shifted, nullptr);
    s.Set(0.0, 0.5);
    EXPECT_NEAR(shifted->Eval(), 1.5 * 0.5 + std::sin(1.5), 1e-12);
    EXPECT_NEAR(e->Eval(), 0.0, 1e-12);

    KOBWBVariable* variables[] = {s.x, s.y};
    KOBWBExpression* values[] = {s.I(3), f.CreateQuotient(s.I(1), s.I(2))};
    KOBWBExpression* both = e->PartialEval(variables, values, 2);
    ASSERT_NE(both, nullptr);
    EXPECT_TRUE(both->IsConstant());
    EXPECT_NEAR(both->Eval(), 1.5 + std::sin(3.0), 1e-12);
    KOBWBExpression* notConstant[] = {s.I(3), s.x};
    EXPECT_EQ(e->PartialEval(variables, notConstant, 2), nullptr);
    // The root itself is the variable: the value comes back at once.
    EXPECT_EQ(s.x->PartialEval(variables, values, 1), values[0]);
    // No pair: the simplified duplicate.
    KOBWBExpression* none = f.CreateSum(s.x, s.x)->PartialEval(variables, values, 0);
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(none->GetType(), KOBWBProductType);
    // Bad arguments.
    KOBWBFactory other;
    EXPECT_EQ(e->PartialEval(nullptr, s.I(1)), nullptr);
    EXPECT_EQ(e->PartialEval(s.x, nullptr), nullptr);
    EXPECT_EQ(e->PartialEval(other.CreateVariable(), s.I(1)), nullptr);
    EXPECT_EQ(e->PartialEval(nullptr, nullptr, 2), nullptr);
}
