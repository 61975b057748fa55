#include "KOBWBExpressionType.h"
#include "KOBWBFactory.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

double At(KOBWBVariable* x, KOBWBExpression* e, double value) {
    x->SetExprValue(KOBWBValue(value));
    return e->Eval();
}

TEST(FactoryComposites, StepNodeFromItsParameters) {
    KOBWBFactory factory, other;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBExpression* step = factory.CreateStep(x, 0.0, 1.0, 2.0, 3.0);
    ASSERT_NE(step, nullptr);
    EXPECT_EQ(step->GetType(), KOBWBStepType);
    ASSERT_EQ(step->GetNbOfParameters(), 4);
    EXPECT_EQ(step->GetParameter(2), 2.0);
    EXPECT_EQ(At(x, step, -1.0), 1.0);
    EXPECT_EQ(At(x, step, 1.0), 2.0);
    EXPECT_EQ(At(x, step, 5.0), 3.0);
    EXPECT_EQ(factory.CreateStep(nullptr, 0, 1, 2, 3), nullptr);
    EXPECT_EQ(factory.CreateStep(other.CreateVariable(), 0, 1, 2, 3), nullptr);
}

TEST(FactoryComposites, PolynomialsFromCoefficients) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    const double c[] = {1.5, 0.0, -2.0, 1.0};
    KOBWBExpression* p = factory.CreatePolynomial(x, 4, c);
    KOBWBExpression* terms[] = {factory.CreateIntegerConstant(1), x, factory.CreateRealConstant(-0.5)};
    KOBWBExpression* q = factory.CreatePolynomial(x, 3, terms);
    ASSERT_TRUE(p && q);
    for (double v : {-2.0, -0.3, 0.0, 1.0, 3.5}) {
        EXPECT_DOUBLE_EQ(At(x, p, v), 1.5 - 2 * v * v + v * v * v);
        EXPECT_DOUBLE_EQ(At(x, q, v), 1 + v * v - 0.5 * v * v);
    }
    const double zeros[] = {0.0, 0.0};
    EXPECT_EQ(At(x, factory.CreatePolynomial(x, 2, zeros), 2.0), 0.0);
    EXPECT_EQ(factory.CreatePolynomial(x, 0, c), nullptr);
    EXPECT_EQ(factory.CreatePolynomial(nullptr, 4, c), nullptr);
    KOBWBExpression* withNull[] = {x, nullptr};
    EXPECT_EQ(factory.CreatePolynomial(x, 2, withNull), nullptr);
}

TEST(FactoryComposites, InterpolationsPassThroughThePoints) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    std::mt19937 random(23);
    std::uniform_real_distribution<double> step(0.2, 2.0), height(-5.0, 5.0);
    for (int trial = 0; trial < 20; ++trial) {
        const int n = 2 + trial % 7;
        std::vector<double> xs{height(random)}, ys;
        for (int i = 1; i < n; ++i) xs.push_back(xs.back() + step(random));
        for (int i = 0; i < n; ++i) ys.push_back(height(random));
        KOBWBExpression* linear = factory.CreatePiecewiseLinear(x, n, xs.data(), ys.data());
        KOBWBExpression* spline = factory.CreateCubicSpline(x, n, xs.data(), ys.data());
        ASSERT_TRUE(linear && spline);
        for (int i = 0; i < n; ++i) {
            EXPECT_NEAR(At(x, linear, xs[i]), ys[i], 1e-9);
            EXPECT_NEAR(At(x, spline, xs[i]), ys[i], 1e-9);
        }
        for (int i = 0; i + 1 < n; ++i) {
            const double middle = (xs[i] + xs[i + 1]) / 2;
            EXPECT_NEAR(At(x, linear, middle), (ys[i] + ys[i + 1]) / 2, 1e-9);
        }
        // The spline's first and second derivatives are continuous at the inner
        // points and the second vanishes at the ends (by central differences).
        const double h = 1e-4;
        auto second = [&](double at) {
            return (At(x, spline, at + h) - 2 * At(x, spline, at) + At(x, spline, at - h)) / (h * h);
        };
        EXPECT_NEAR(second(xs[0] + h), 0.0, 1e-2 * (1 + std::fabs(second(xs[0] + 0.1))));
        for (int i = 1; i + 1 < n; ++i) {
            const double left = (At(x, spline, xs[i]) - At(x, spline, xs[i] - h)) / h;
            const double right = (At(x, spline, xs[i] + h) - At(x, spline, xs[i])) / h;
            EXPECT_NEAR(left, right, 1e-2 * (1 + std::fabs(left)));
            EXPECT_NEAR(second(xs[i] - 2 * h), second(xs[i] + 2 * h), 1e-2 * (1 + std::fabs(second(xs[i] + 2 * h))));
        }
        // On an interval the value encloses every point value.
        x->SetExprValue(KOBWBValue(KOBWBRealInterval{xs[0], xs[n - 1]}));
        KOBWBValue range;
        spline->Eval(range);
        const KOBWBRealInterval enclosure = range.GetAsRealInterval();
        for (double at = xs[0]; at <= xs[n - 1]; at += 0.05) {
            const double value = At(x, spline, at);
            EXPECT_TRUE(enclosure.lower - 1e-9 <= value && value <= enclosure.upper + 1e-9);
            x->SetExprValue(KOBWBValue(KOBWBRealInterval{xs[0], xs[n - 1]}));
        }
    }
    // Two points give the straight line; a line stays a line under the spline.
    const double xs[] = {0.0, 1.0, 3.0, 4.0}, ys[] = {1.0, 3.0, 7.0, 9.0};
    KOBWBExpression* spline = factory.CreateCubicSpline(x, 4, xs, ys);
    for (double v : {-1.0, 0.5, 2.0, 3.7, 6.0}) EXPECT_NEAR(At(x, spline, v), 1 + 2 * v, 1e-12);
    const double unordered[] = {0.0, 2.0, 1.0, 4.0};
    EXPECT_EQ(factory.CreateCubicSpline(x, 4, unordered, ys), nullptr);
    EXPECT_EQ(factory.CreatePiecewiseLinear(x, 4, unordered, ys), nullptr);
    EXPECT_EQ(factory.CreatePiecewiseLinear(x, 1, xs, ys), nullptr);
    EXPECT_EQ(factory.CreateCubicSpline(nullptr, 4, xs, ys), nullptr);
}

}
