#include "KOBWBFactory.h"
#include "KOBWBJacobian.h"
#include "KOBWBPointEvaluator.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

// The tape gives what the nodes' own evaluation gives, for every operator with a
// point form and for those evaluated by their node; repeated operations share steps.
TEST(KOBWBPointEvaluator, AgreesWithTheNodes) {
    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    KOBWBVariable* y = f.CreateVariable();
    KOBWBVariable* held = f.CreateVariable();
    held->SetExprValue(KOBWBValue(2.0));
    KOBWBExpression* d = f.CreateSub(x, y);
    std::vector<KOBWBExpression*> expressions{
        f.CreateSqrt(f.CreateSum(f.CreatePower(d, 2), f.CreatePower(f.CreateSub(y, held), 2))),
        f.CreateAtan2(y, x),
        f.CreateQuotient(f.CreateExp(x), f.CreateLn(f.CreateSum(y, f.CreateIntegerConstant(3)))),
        f.CreatePower(x, f.CreateRealConstant(0.5)),
        f.CreateRoot(f.CreatePower(y, 3), f.CreateIntegerConstant(3)),
        f.CreateMin(f.CreateSin(x), f.CreateCos(y)),
        f.CreateProduct(f.CreateConstantPi(), f.CreateTanh(d)),
        f.CreateIfThenElse(f.CreateLessEqual(x, y), f.CreateAbs(d), f.CreateFloor(x)),
        f.CreateMod(x, f.CreateRealConstant(0.7)),
        held,
    };
    KOBWBVariable* inputs[] = {x, y};
    KOBWBPointEvaluator evaluator;
    ASSERT_TRUE(evaluator.Compile(static_cast<int>(expressions.size()), expressions.data(), 2, inputs));
    EXPECT_TRUE(evaluator.UsesNodes());
    std::vector<double> values(expressions.size());
    for (double at : {0.3, 1.7, 2.9}) {
        const double point[] = {at, at / 2 + 0.25};
        evaluator.Evaluate(point, values.data());
        x->SetExprValue(KOBWBValue(point[0]));
        y->SetExprValue(KOBWBValue(point[1]));
        for (std::size_t i = 0; i < expressions.size(); ++i)
            EXPECT_NEAR(values[i], expressions[i]->GetValue().GetAsDouble(), 1e-12) << "expression " << i << " at " << at;
    }
    // The first expressions at a point, then the rest: the same values as in one call.
    const double point2[] = {1.1, 0.4};
    std::vector<double> whole(expressions.size()), parts(expressions.size(), -1.0);
    evaluator.Evaluate(point2, whole.data());
    evaluator.Evaluate(point2, parts.data(), 2);
    evaluator.EvaluateRest(parts.data());
    EXPECT_EQ(parts, whole);
    // After a Refresh nothing is known to complete.
    std::vector<double> untouched(expressions.size(), -1.0);
    evaluator.Refresh();
    evaluator.EvaluateRest(untouched.data());
    EXPECT_EQ(untouched, std::vector<double>(expressions.size(), -1.0));

    // The entries of one distance's Jacobian repeat its root and differences.
    KOBWBJacobian jacobian;
    ASSERT_TRUE(jacobian.Make(1, expressions.data(), 2, inputs));
    ASSERT_EQ(jacobian.GetNbOfEntries(), 2);
    KOBWBPointEvaluator entries;
    ASSERT_TRUE(entries.Compile(2, jacobian.GetEntries().data(), 2, inputs));
    EXPECT_FALSE(entries.UsesNodes());
    EXPECT_LE(entries.GetNbOfSteps(), 16);
    const double point[] = {4.0, 1.0};
    double slopes[2];
    entries.Evaluate(point, slopes);
    const double length = std::sqrt(9.0 + (1.0 - 2.0) * (1.0 - 2.0));
    EXPECT_NEAR(slopes[0], 3.0 / length, 1e-15);
    EXPECT_NEAR(slopes[1], (-3.0 - 1.0) / length, 1e-15);

    KOBWBExpression* none[] = {nullptr};
    EXPECT_FALSE(evaluator.Compile(1, none, 2, inputs));
    EXPECT_EQ(evaluator.GetNbOfExpressions(), 0);
    EXPECT_FALSE(evaluator.Compile(-1, nullptr, 0, nullptr));
    evaluator.Evaluate(nullptr, nullptr);
    EXPECT_FALSE(jacobian.Make(1, none, 2, inputs));
}
