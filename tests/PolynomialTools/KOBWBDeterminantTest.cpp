#include "KOBWBConstant.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

// The cofactor expansion along the first row, as an expression.
KOBWBExpression* Cofactors(KOBWBFactory& f, const std::vector<KOBWBExpression*>& m, int n) {
    if (n == 1) return m[0];
    std::vector<KOBWBExpression*> terms;
    for (int column = 0; column < n; ++column) {
        std::vector<KOBWBExpression*> minor;
        for (int i = 1; i < n; ++i)
            for (int j = 0; j < n; ++j)
                if (j != column) minor.push_back(m[static_cast<size_t>(i * n + j)]);
        KOBWBExpression* term = f.CreateProduct(m[static_cast<size_t>(column)], Cofactors(f, minor, n - 1));
        terms.push_back(column % 2 ? f.CreateProduct(f.CreateIntegerConstant(-1), term) : term);
    }
    return f.CreateSum(n, terms.data());
}

TEST(FactoryDeterminant, EqualsTheCofactorExpansion) {
    KOBWBFactory factory;
    KOBWBPolynomialContext context(factory);
    std::vector<KOBWBVariable*> v{factory.CreateVariable(), factory.CreateVariable(), factory.CreateVariable()};
    std::mt19937 random(29);
    std::uniform_int_distribution<int> pick(-9, 9);
    for (int trial = 0; trial < 40; ++trial) {
        const int n = 1 + trial % 5;
        // Integer matrices, and matrices mixing integers, variables and sums of them.
        std::vector<KOBWBExpression*> integers, symbols;
        for (int i = 0; i < n * n; ++i) {
            integers.push_back(factory.CreateIntegerConstant(pick(random) * 1000003));
            const int kind = pick(random);
            KOBWBExpression* variable = v[static_cast<size_t>((kind + 9) % 3)];
            symbols.push_back(kind < -3 ? factory.CreateIntegerConstant(pick(random))
                                        : kind < 3 ? variable
                                                   : factory.CreateSum(variable, factory.CreateIntegerConstant(kind)));
        }
        KOBWBExpression* exact = factory.CreateDeterminant(n, integers.data());
        ASSERT_NE(exact, nullptr);
        KOBWBExpression* expected = context.Simplify(Cofactors(factory, integers, n));
        EXPECT_TRUE(context.AreIdentical(exact, expected)) << trial;
        EXPECT_EQ(exact->GetType(), expected->GetType());
        KOBWBExpression* symbolic = factory.CreateDeterminant(n, symbols.data());
        ASSERT_NE(symbolic, nullptr);
        EXPECT_TRUE(context.AreIdentical(symbolic, Cofactors(factory, symbols, n))) << trial;
    }
    // A singular matrix, one that needs a row exchange, and bad arguments.
    KOBWBExpression* x = v[0];
    KOBWBExpression* zero = factory.CreateIntegerConstant(0);
    KOBWBExpression* one = factory.CreateIntegerConstant(1);
    KOBWBExpression* singular[] = {x, one, x, one};
    KOBWBExpression* exchange[] = {zero, one, x, zero};
    EXPECT_TRUE(context.AreIdentical(factory.CreateDeterminant(2, singular), zero));
    EXPECT_TRUE(context.AreIdentical(factory.CreateDeterminant(2, exchange),
                                     factory.CreateProduct(factory.CreateIntegerConstant(-1), x)));
    EXPECT_EQ(factory.CreateDeterminant(0, singular), nullptr);
    KOBWBExpression* withNull[] = {x, nullptr, x, one};
    EXPECT_EQ(factory.CreateDeterminant(2, withNull), nullptr);
    // Real entries: the value is the determinant's.
    KOBWBExpression* reals[] = {factory.CreateRealConstant(0.1), x, factory.CreateRealConstant(0.3), one};
    v[0]->SetExprValue(KOBWBValue(0.7));
    EXPECT_NEAR(factory.CreateDeterminant(2, reals)->Eval(), 0.1 - 0.7 * 0.3, 1e-12);
}

}
