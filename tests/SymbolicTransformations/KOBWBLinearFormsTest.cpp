#include "KOBLVRGlobalParameters.h"
#include "KOBLVRStream.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBSymbolicTransformations.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>
#include <vector>

namespace {

// A system built around a known solution: linear equations with integer, fraction
// and degree coefficients, products, a sine, and inequalities that the solution meets.
struct KnownSystem {
    KOBWBFactory factory;
    std::vector<KOBWBVariable*> x;
    std::vector<double> solution;

    explicit KnownSystem(unsigned seed, int size = 8) {
        std::mt19937 random(seed);
        const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        for (int i = 0; i < size; ++i) {
            x.push_back(factory.CreateVariable());
            solution.push_back((pick(41) - 20) / 4.0);
        }
        for (int e = 0; e < size + 2; ++e) {
            const int kind = pick(4);
            const int a = pick(size), b = pick(size), c = pick(size);
            KOBWBExpression* root = nullptr;
            double value = 0.0;
            if (kind <= 1) {
                // 3 xa - 2 xb + xc / 3 + (Pi/180) xa
                KOBWBExpression* terms[] = {
                    factory.CreateProduct(factory.CreateIntegerConstant(3), x[a]),
                    factory.CreateProduct(factory.CreateIntegerConstant(-2), x[b]),
                    factory.CreateQuotient(x[c], factory.CreateIntegerConstant(3)),
                    factory.CreateProduct(factory.CreateConstantDTOR(), x[a])};
                root = factory.CreateSum(kind == 0 ? 3 : 4, terms);
                value = 3 * solution[a] - 2 * solution[b] + solution[c] / 3 +
                        (kind == 0 ? 0.0 : 3.14159265358979323846 / 180 * solution[a]);
            } else if (kind == 2) {
                root = factory.CreateProduct(x[a], factory.CreateSum(x[b], factory.CreateIntegerConstant(1)));
                value = solution[a] * (solution[b] + 1);
            } else {
                root = factory.CreateSum(factory.CreateSin(x[a]), x[b]);
                value = std::sin(solution[a]) + solution[b];
            }
            factory.AddEquation(root, KOBWBEqEqual, factory.CreateRealConstant(value));
            if (pick(3) == 0)
                factory.AddEquation(factory.CreateSum(x[a], x[c]), KOBWBEqLessEqual,
                                    factory.CreateRealConstant(solution[a] + solution[c] + 1));
        }
    }

    void SetSolution() {
        for (size_t i = 0; i < x.size(); ++i) x[i]->SetExprValue(KOBWBValue(solution[i]));
    }
};

} // namespace

TEST(KOBWBLinearForms, SolutionsSurviveEveryModeAndBothImplementations) {
    const unsigned modes[] = {1, 2, 4, 8, 16, 2 | 4, 2 | 8, 2 | 16, 4 | 8, 2 | 4 | 8 | 16, 31};
    int eliminated = 0;
    for (bool old : {false, true}) {
        for (unsigned mode : modes) {
            for (unsigned seed = 1; seed <= 12; ++seed) {
                KnownSystem system(seed);
                system.factory.GetEnvironment().SetUseOldSymbolicTransformations(old);
                KOBWBSymbolicTransformations* transformations = KOBCreateWBSymbolicTransformations(0, system.factory);
                transformations->SetMode(mode);
                ASSERT_EQ(transformations->Run(), 0);
                system.SetSolution();
                for (KOBWBEquation* e = system.factory.GetFirstEquation(); e; e = e->GetNext()) {
                    const double value = e->GetRoot()->Eval();
                    if (e->GetType() == KOBWBEqEqual) {
                        EXPECT_NEAR(value, 0.0, 1e-9) << "mode " << mode << " seed " << seed << " old " << old;
                    } else {
                        EXPECT_LE(value, 1e-9) << "mode " << mode << " seed " << seed << " old " << old;
                    }
                }
                for (size_t i = 0; i < system.x.size(); ++i) {
                    KOBWBExpression* form = transformations->GetVariableExpression(static_cast<int>(i));
                    if (!form) continue;
                    EXPECT_FALSE(old);
                    ++eliminated;
                    EXPECT_NEAR(form->Eval(), system.solution[i], 1e-9) << "mode " << mode << " seed " << seed;
                }
                if (mode & 16) {
                    EXPECT_FALSE(transformations->AreInequalitiesInconsistent());
                }
                KOBRemove(transformations);
            }
        }
    }
    EXPECT_GT(eliminated, 100);
}

TEST(KOBWBLinearForms, EliminatesAChainAndKeepsExpressionsAcrossTracedRuns) {
    KOBWBFactory factory;
    std::vector<KOBWBVariable*> x;
    for (int i = 0; i < 6; ++i) x.push_back(factory.CreateVariable());
    x[0]->Fix(1);
    // x[i+1] = x[i] + i + 1, and a product that keeps x[5] in a nonlinear equation.
    for (int i = 0; i + 1 < 6; ++i)
        factory.AddEquation(x[i + 1], KOBWBEqEqual, factory.CreateSum(x[i], factory.CreateIntegerConstant(i + 1)));
    factory.AddEquation(factory.CreateProduct(x[5], x[5]), KOBWBEqEqual, factory.CreateIntegerConstant(225));
    std::ostringstream out;
    KOBLVRStream trace(&out);
    KOBLVRGlobalParameters& parameters = GetGlobalParameters();
    parameters.SetTraceStream(&trace);
    KOBWBSymbolicTransformations* transformations = KOBCreateWBSymbolicTransformations(0, factory);
    parameters.SetTraceLevel(2);
    transformations->SetMode(2 | 4);
    transformations->Run();
    // The fixed x0 is never eliminated; every other x is, in terms of x0.
    EXPECT_EQ(transformations->GetVariableExpression(0), nullptr);
    x[0]->SetExprValue(KOBWBValue(0.0));
    for (int i = 1; i < 6; ++i) {
        ASSERT_NE(transformations->GetVariableExpression(i), nullptr) << i;
        EXPECT_DOUBLE_EQ(transformations->GetVariableExpression(i)->Eval(), i * (i + 1) / 2.0);
    }
    // What is left: (x0 + 15)^2 = 225.
    ASSERT_EQ(factory.GetNbOfEquations(), 1);
    EXPECT_DOUBLE_EQ(factory.GetFirstEquation()->GetRoot()->Eval(), 0.0);
    // Later runs trace the expressions the first one found before finding their own.
    for (int level : {1, 0, 2}) {
        parameters.SetTraceLevel(level);
        transformations->SetMode(2 | 4 | 8);
        transformations->Run();
    }
    parameters.SetTraceLevel(0);
    parameters.SetTraceStream(nullptr);
    const std::string text = out.str();
    for (const char* line : {"Eq[0] = ", "Var[1] = ", "  LinearForm[", "Factor = ", "Weight of ", "substitute variables at LinearForm[",
                             "after substitute", "Expressions for variables:", " := ", "Before: ", "After : "})
        EXPECT_NE(text.find(line), std::string::npos) << line;
    KOBRemove(transformations);
}
