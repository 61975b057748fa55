#include "KOBWBConstant.h"
#include "KOBWBContractor.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBLimits.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <vector>

// The contractor narrows variable domains from the equations of a factory: it finds
// what one equation at a time can tell, keeps every solution, and reports systems
// with none.

namespace {

using RI = KOBWBRealInterval;

RI Domain(KOBWBVariable* v) {
    return v->GetExprValue().GetAsRealInterval();
}

KOBWBVariable* Variable(KOBWBFactory& factory, const KOBWBValue& domain) {
    KOBWBVariable* v = factory.CreateVariable();
    v->SetExprValue(domain);
    return v;
}

void ExpectDomain(KOBWBVariable* v, double lower, double upper, double tolerance = 1e-9) {
    const RI d = Domain(v);
    EXPECT_NEAR(d.lower, lower, tolerance);
    EXPECT_NEAR(d.upper, upper, tolerance);
}

TEST(KOBWBContractorTest, NarrowsToTheSolutionOrToTheFixedPoint) {
    KOBWBFactory factory;
    KOBWBVariable* x = Variable(factory, KOBWBValue(RI{0, 100}));
    KOBWBVariable* y = Variable(factory, KOBWBValue(RI{0, 100}));
    factory.AddEquation(factory.CreateSum(x, y), KOBWBEqEqual, factory.CreateRealConstant(10));
    factory.AddEquation(factory.CreatePower(y, 2), KOBWBEqEqual, factory.CreateRealConstant(16));
    KOBWBContractor contractor(factory);
    EXPECT_EQ(contractor.Run(), KOBWBContractionFixedPoint);
    ExpectDomain(x, 6, 6);
    ExpectDomain(y, 4, 4);
    EXPECT_LE(contractor.GetNbOfRevisions(), 4);

    // One equation at a time cannot solve x + y = 10, x - y = 2: every bound of this
    // box is supported by each equation alone, and it is kept whole.
    KOBWBFactory linear;
    KOBWBVariable* u = Variable(linear, KOBWBValue(RI{-100, 100}));
    KOBWBVariable* v = Variable(linear, KOBWBValue(RI{-100, 100}));
    linear.AddEquation(linear.CreateSum(u, v), KOBWBEqEqual, linear.CreateRealConstant(10));
    linear.AddEquation(linear.CreateSub(u, v), KOBWBEqEqual, linear.CreateRealConstant(2));
    KOBWBContractor stalled(linear);
    EXPECT_EQ(stalled.Run(), KOBWBContractionFixedPoint);
    ExpectDomain(u, -88, 100);
    ExpectDomain(v, -90, 98);
    // Fixing one variable from outside lets propagation finish the job.
    v->SetExprValue(KOBWBValue(RI{4, 4}));
    KOBWBVariable* changed[] = {v};
    EXPECT_EQ(stalled.Propagate(1, changed), KOBWBContractionFixedPoint);
    ExpectDomain(u, 6, 6);
}

TEST(KOBWBContractorTest, EveryEquationType) {
    struct Case {
        KOBWBEquationType type;
        RI x;
    };
    // x - 3 in relation to 0 over x in [0, 10].
    const Case cases[] = {{KOBWBEqEqual, {3, 3}},         {KOBWBEqNotEqual, {0, 10}},
                          {KOBWBEqLessEqual, {0, 3}},     {KOBWBEqLess, {0, 3}},
                          {KOBWBEqGreaterEqual, {3, 10}}, {KOBWBEqGreater, {3, 10}},
                          {KOBWBEqMinimize, {0, 10}}};
    for (const Case& c : cases) {
        KOBWBFactory factory;
        KOBWBVariable* x = Variable(factory, KOBWBValue(RI{0, 10}));
        factory.AddEquation(x, c.type, factory.CreateRealConstant(3));
        KOBWBContractor contractor(factory);
        EXPECT_EQ(contractor.Run(), KOBWBContractionFixedPoint) << c.type;
        ExpectDomain(x, c.x.lower, c.x.upper);
    }
    // != empties only a root that is exactly 0; a strict order on integers is exact.
    KOBWBFactory factory;
    KOBWBVariable* x = Variable(factory, KOBWBValue(RI{3, 3}));
    factory.AddEquation(x, KOBWBEqNotEqual, factory.CreateRealConstant(3));
    EXPECT_EQ(KOBWBContractor(factory).Run(), KOBWBContractionNoSolution);
}

TEST(KOBWBContractorTest, ReportsSystemsWithoutSolution) {
    KOBWBFactory factory;
    KOBWBVariable* x = Variable(factory, KOBWBValue(RI{0, 4}));
    KOBWBVariable* y = Variable(factory, KOBWBValue(RI{0, 4}));
    KOBWBConstant* ten = factory.CreateRealConstant(-10);
    factory.AddEquation(factory.CreateSum(factory.CreateSum(x, y), ten), KOBWBEqEqual);
    KOBWBContractor contractor(factory);
    EXPECT_EQ(contractor.Run(), KOBWBContractionNoSolution);
    // A changed system is read again without being told: a new constant, then a new equation.
    x->SetExprValue(KOBWBValue(RI{0, 4}));
    y->SetExprValue(KOBWBValue(RI{0, 4}));
    ten->SetValue(KOBWBValue(-6.0), nullptr);
    EXPECT_EQ(contractor.Run(), KOBWBContractionFixedPoint);
    ExpectDomain(x, 2, 4);
    factory.AddEquation(x, KOBWBEqLess, factory.CreateRealConstant(1));
    EXPECT_EQ(contractor.Run(), KOBWBContractionNoSolution);
    // Bounded by the budget: a chain that keeps narrowing stops when it is spent.
    KOBWBFactory slow;
    KOBWBVariable* a = Variable(slow, KOBWBValue(RI{-100, 100}));
    KOBWBVariable* b = Variable(slow, KOBWBValue(RI{-100, 100}));
    slow.AddEquation(a, KOBWBEqEqual, slow.CreateProduct(slow.CreateRealConstant(0.5), b));
    slow.AddEquation(b, KOBWBEqEqual, slow.CreateProduct(slow.CreateRealConstant(0.5), a));
    KOBWBContractor budgeted(slow);
    budgeted.SetBudget(10);
    budgeted.SetRatio(0);
    EXPECT_EQ(budgeted.Run(), KOBWBContractionBudgetSpent);
    EXPECT_EQ(budgeted.GetNbOfRevisions(), 10);
    EXPECT_LT(Domain(a).upper, 1);
}

TEST(KOBWBContractorTest, IntegerAndEnumeratedDomainsKeepTheirKinds) {
    KOBWBFactory factory;
    KOBWBVariable* n = Variable(factory, KOBWBValue(KOBWBIntegerInterval{0, 10}));
    factory.AddEquation(factory.CreateProduct(factory.CreateIntegerConstant(3), n),
                        KOBWBEqLessEqual, factory.CreateRealConstant(13.5));
    factory.AddEquation(n, KOBWBEqGreater, factory.CreateRealConstant(3.2));
    KOBWBValue choices(KOBWBIntegerEnumValue);
    const int elements[] = {-3, -1, 1, 2, 3, 5};
    choices.Set(6, elements);
    KOBWBVariable* e = Variable(factory, choices);
    factory.AddEquation(factory.CreatePower(e, 2), KOBWBEqEqual, factory.CreateRealConstant(9));
    KOBWBContractor contractor(factory);
    EXPECT_EQ(contractor.Run(), KOBWBContractionFixedPoint);
    ASSERT_EQ(n->GetExprValue().GetType(), KOBWBIntegerIntervalValue);
    EXPECT_EQ(n->GetExprValue().GetAsIntegerInterval().lower, 4);
    EXPECT_EQ(n->GetExprValue().GetAsIntegerInterval().upper, 4);
    ASSERT_EQ(e->GetExprValue().GetType(), KOBWBIntegerEnumValue);
    ASSERT_EQ(e->GetExprValue().GetIntegerEnum().GetSize(), 2);
    EXPECT_EQ(e->GetExprValue().GetIntegerEnum().Get(0), -3);
    EXPECT_EQ(e->GetExprValue().GetIntegerEnum().Get(1), 3);
}

// Random small systems built around a known solution: every solution stays inside.
struct System {
    std::vector<KOBWBVariable*> variables;
    std::vector<double> solution;
};

using Builder = std::function<KOBWBExpression*(KOBWBFactory&, KOBWBExpression*, KOBWBExpression*)>;

KOBWBExpression* RandomExpression(KOBWBFactory& factory, std::mt19937_64& random,
                                  const System& system, int depth) {
    const int count = static_cast<int>(system.variables.size());
    if (depth == 0 || random() % 4 == 0) {
        if (random() % 5 == 0)
            return factory.CreateRealConstant(
                std::uniform_real_distribution<double>(-3, 3)(random));
        return system.variables[random() % count];
    }
    static const std::vector<Builder> builders = {
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateSum(a, b); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateSub(a, b); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) {
            return f.CreateProduct(a, b);
        },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateMax(a, b); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreatePower(a, 2); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreatePower(a, 3); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreateSin(a); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreateExp(a); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreateAbs(a); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreateAtan(a); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreateCosh(a); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) { return f.CreateAtan2(a, b); },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression* b) {
            return f.CreateQuotient(a, b);
        },
        [](KOBWBFactory& f, KOBWBExpression* a, KOBWBExpression*) { return f.CreateFloor(a); },
    };
    const Builder& build = builders[random() % builders.size()];
    KOBWBExpression* a = RandomExpression(factory, random, system, depth - 1);
    KOBWBExpression* b = RandomExpression(factory, random, system, depth - 1);
    return build(factory, a, b);
}

TEST(KOBWBContractorTest, RandomSystemsKeepTheirSolutions) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> unit(0, 1);
    int narrowedSystems = 0;
    for (int trial = 0; trial < 1000; ++trial) {
        KOBWBFactory factory;
        System system;
        for (int i = 0; i < 3; ++i) {
            system.solution.push_back(std::uniform_real_distribution<double>(-2, 2)(random));
            system.variables.push_back(factory.CreateVariable());
            system.variables.back()->SetExprValue(KOBWBValue(system.solution.back()));
        }
        // Each equation states the value its root takes at the solution, computed by the
        // library itself, or an order that the solution satisfies with some room.
        const int equations = 1 + static_cast<int>(random() % 3);
        for (int k = 0; k < equations; ++k) {
            KOBWBExpression* root = RandomExpression(factory, random, system, 3);
            const double value = root->GetValue().GetAsRealInterval().lower;
            if (!std::isfinite(value) || std::fabs(value) > 1e6) continue;
            const int kind = static_cast<int>(random() % 3);
            const double room = kind == 0 ? 0 : unit(random);
            const KOBWBEquationType type = kind == 0   ? KOBWBEqEqual
                                           : kind == 1 ? KOBWBEqLessEqual
                                                       : KOBWBEqGreater;
            factory.AddEquation(root, type,
                                factory.CreateRealConstant(kind == 0   ? value
                                                           : kind == 1 ? value + room
                                                                       : value - room - 1e-9));
        }
        std::vector<RI> boxes;
        for (int i = 0; i < 3; ++i) {
            const RI box = {system.solution[i] - 3 * unit(random),
                            system.solution[i] + 3 * unit(random)};
            boxes.push_back(box);
            system.variables[i]->SetExprValue(KOBWBValue(box));
        }
        KOBWBContractor contractor(factory);
        ASSERT_NE(contractor.Run(), KOBWBContractionNoSolution) << "trial " << trial;
        bool narrowed = false;
        for (int i = 0; i < 3; ++i) {
            const RI d = Domain(system.variables[i]);
            ASSERT_TRUE(d.lower <= system.solution[i] && system.solution[i] <= d.upper)
                << "trial " << trial << " lost " << system.solution[i] << " of variable " << i
                << ": [" << d.lower << ", " << d.upper << "]";
            ASSERT_TRUE(d.lower >= boxes[i].lower && d.upper <= boxes[i].upper)
                << "trial " << trial;
            narrowed = narrowed || d.lower > boxes[i].lower || d.upper < boxes[i].upper;
        }
        narrowedSystems += narrowed;
    }
    EXPECT_GT(narrowedSystems, 300);
}

} // namespace
