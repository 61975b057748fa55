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
    KOBWBVariable* z = factory.CreateVariable();
    KOBWBExpression* I(int n) { return factory.CreateIntegerConstant(n); }
    KOBWBExpression* R(double v) { return factory.CreateRealConstant(v); }
    KOBWBExpression* Mul(KOBWBExpression* a, KOBWBExpression* b) { return factory.CreateProduct(a, b); }
    KOBWBExpression* Add(KOBWBExpression* a, KOBWBExpression* b) { return factory.CreateSum(a, b); }
    KOBWBExpression* Div(KOBWBExpression* a, KOBWBExpression* b) { return factory.CreateQuotient(a, b); }
    KOBWBExpression* Pow(KOBWBExpression* a, KOBWBExpression* b) { return factory.CreatePower(a, b); }
};

} // namespace

TEST(KOBWBClassification, LinearAndQuadraticReadTheTreeAsBuilt) {
    Sketch s;
    KOBWBExpression* twoX = s.Mul(s.I(2), s.x);
    EXPECT_FALSE(s.Mul(twoX, s.y)->IsLinear());
    KOBWBExpression* factors[] = {s.I(2), s.I(3), s.x};
    EXPECT_TRUE(s.factory.CreateProduct(3, factors)->IsLinear());
    EXPECT_TRUE(s.Div(s.x, s.I(2))->IsLinear());
    EXPECT_FALSE(s.Div(s.I(2), s.x)->IsLinear());
    EXPECT_FALSE(s.Pow(s.x, s.I(1))->IsLinear());
    EXPECT_TRUE(s.Pow(s.I(2), s.I(3))->IsLinear());
    EXPECT_TRUE(s.Add(s.x, s.Mul(s.R(0.5), s.y))->IsLinear());
    // Mathematically linear but written as a product of two sums.
    EXPECT_FALSE(s.factory.CreateSub(s.Mul(s.Add(s.x, s.I(1)), s.Add(s.x, s.I(2))), s.Mul(s.x, s.x))->IsLinear());

    EXPECT_TRUE(s.Mul(s.x, s.y)->IsQuadratic());
    KOBWBExpression* xyz[] = {s.x, s.y, s.z};
    EXPECT_FALSE(s.factory.CreateProduct(3, xyz)->IsQuadratic());
    EXPECT_FALSE(s.Mul(s.Mul(s.x, s.y), s.z)->IsQuadratic());
    EXPECT_TRUE(s.Pow(s.x, s.I(2))->IsQuadratic());
    EXPECT_TRUE(s.Pow(s.Add(s.x, s.y), s.I(0))->IsQuadratic());
    EXPECT_FALSE(s.Pow(s.x, s.R(2.0))->IsQuadratic());
    EXPECT_FALSE(s.Pow(s.x, s.I(-1))->IsQuadratic());
    EXPECT_FALSE(s.Pow(s.Mul(s.x, s.y), s.I(2))->IsQuadratic());
    EXPECT_FALSE(s.factory.CreateSin(s.x)->IsQuadratic());
    EXPECT_TRUE(s.factory.CreateSin(s.I(2))->IsQuadratic());
    EXPECT_TRUE(s.Div(s.Mul(s.x, s.y), s.I(4))->IsQuadratic());
    // Constant powers are constants, and x^1 counts as degree 1.
    EXPECT_TRUE(s.Add(s.x, s.Pow(s.I(2), s.I(3)))->IsQuadratic());
    EXPECT_TRUE(s.Pow(s.factory.CreateConstantPi(), s.Div(s.I(1), s.I(2)))->IsQuadratic());
    EXPECT_TRUE(s.Mul(s.y, s.Pow(s.x, s.I(1)))->IsQuadratic());
    EXPECT_TRUE(s.Mul(s.Pow(s.y, s.I(1)), s.Pow(s.x, s.I(1)))->IsQuadratic());
    EXPECT_FALSE(s.Mul(s.y, s.Pow(s.x, s.I(2)))->IsQuadratic());
    EXPECT_FALSE(s.Pow(s.Pow(s.x, s.I(1)), s.I(2))->IsQuadratic());
    EXPECT_FALSE(s.Div(s.x, s.y)->IsQuadratic());
}

TEST(KOBWBClassification, PolynomialAndRationalInOneVariable) {
    Sketch s;
    EXPECT_TRUE(s.Div(s.Add(s.x, s.I(1)), s.y)->IsPolynomial(s.x));
    EXPECT_FALSE(s.Div(s.I(1), s.x)->IsPolynomial(s.x));
    EXPECT_TRUE(s.Pow(s.x, s.I(-1))->IsPolynomial(s.x));
    EXPECT_TRUE(s.Pow(s.x, s.R(0.5))->IsPolynomial(s.x));
    // A power whose exponent is not constant is judged by its children.
    EXPECT_TRUE(s.Pow(s.x, s.y)->IsPolynomial(s.x));
    EXPECT_FALSE(s.Pow(s.x, s.factory.CreateExp(s.x))->IsPolynomial(s.x));
    EXPECT_FALSE(s.factory.CreateSin(s.x)->IsPolynomial(s.x));
    EXPECT_TRUE(s.factory.CreateSin(s.y)->IsPolynomial(s.x));
    EXPECT_TRUE(s.Mul(s.factory.CreateSin(s.y), s.Pow(s.x, s.I(3)))->IsPolynomial(s.x));
    EXPECT_TRUE(s.factory.CreateAbs(s.x)->IsPolynomial(s.x));

    KOBWBExpression* squarePlusOne = s.Add(s.Pow(s.x, s.I(2)), s.I(1));
    EXPECT_FALSE(squarePlusOne->IsRationalFunction(s.x));
    EXPECT_TRUE(s.Div(squarePlusOne, s.factory.CreateSub(s.x, s.I(1)))->IsRationalFunction(s.x));
    EXPECT_TRUE(s.y->IsRationalFunction(s.x));
    EXPECT_FALSE(s.Div(s.factory.CreateSin(s.x), s.x)->IsRationalFunction(s.x));
}

namespace {

// Opens the protected Replace for the test.
struct Replacing : KOBWBExpression {
    static void Run(KOBWBExpression* root, KOBWBVariable* x, KOBWBExpression* by) {
        (root->*(&Replacing::Replace))(x, by);
    }
};

} // namespace

TEST(KOBWBClassification, ReplaceSwapsEveryOccurrenceBelowTheNode) {
    Sketch s;
    KOBWBExpression* shared = s.Mul(s.x, s.y);
    KOBWBExpression* root = s.Add(s.Add(shared, s.x), shared);
    KOBWBExpression* by = s.Add(s.z, s.x);
    Replacing::Run(root, s.x, by);
    s.x->SetExprValue(KOBWBValue(10.0));
    s.y->SetExprValue(KOBWBValue(2.0));
    s.z->SetExprValue(KOBWBValue(1.0));
    // (z + x) y + (z + x) + (z + x) y, with x itself kept inside by.
    EXPECT_DOUBLE_EQ(root->Eval(), 11.0 * 2 + 11.0 + 11.0 * 2);
    Replacing::Run(s.x, s.x, s.z);
    Replacing::Run(root, nullptr, s.z);
    Replacing::Run(root, s.y, nullptr);
    EXPECT_DOUBLE_EQ(root->Eval(), 55.0);
}

TEST(KOBWBClassification, DeepGraphsAreClassifiedWithoutRecursion) {
    Sketch s;
    KOBWBExpression* chain = s.x;
    for (int i = 0; i < 200000; ++i) chain = s.Add(chain, s.I(1));
    EXPECT_TRUE(chain->IsLinear());
    EXPECT_TRUE(chain->IsQuadratic());
    EXPECT_TRUE(chain->IsPolynomial(s.x));
    KOBWBExpression* doubling = s.x;
    for (int i = 0; i < 60; ++i) doubling = s.Add(doubling, doubling);
    EXPECT_TRUE(doubling->IsLinear());
    EXPECT_FALSE(s.Mul(doubling, doubling)->IsLinear());
}
