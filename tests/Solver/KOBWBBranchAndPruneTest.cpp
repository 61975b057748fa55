#include "AllSolutionsWorkloads.h"
#include "KOBWBBranchAndPrune.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBIntervalNewton.h"
#include "KOBWBLimits.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

KOBWBExpression* Real(KOBWBFactory& f, double value) { return f.CreateRealConstant(value); }

KOBWBVariable* Bounded(KOBWBFactory& f, double lower, double upper) {
    KOBWBVariable* v = f.CreateVariable();
    v->SetExprValue(KOBWBValue(KOBWBRealInterval{lower, upper}));
    return v;
}

KOBWBExpression* Circle(KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y, double cx, double cy) {
    return f.CreateSum(f.CreatePower(f.CreateSub(x, Real(f, cx)), 2), f.CreatePower(f.CreateSub(y, Real(f, cy)), 2));
}

// Every solution is proved and each known solution lies in exactly one proved box.
void ExpectSolutions(KOBWBBranchAndPrune& search, const std::vector<std::vector<double>>& known) {
    ASSERT_EQ(search.Run(), KOBWBSearchComplete);
    EXPECT_TRUE(search.GetUndecided().empty());
    ASSERT_EQ(search.GetSolutions().size(), known.size());
    for (const std::vector<double>& point : known) {
        int holding = 0;
        for (const KOBWBSearchBox& box : search.GetSolutions()) {
            EXPECT_TRUE(box.proved);
            for (const KOBWBRealInterval& x : box.box) EXPECT_LT(x.upper - x.lower, 1e-6);
            bool inside = true;
            for (std::size_t j = 0; j < point.size(); ++j)
                inside = inside && box.box[j].lower <= point[j] + 1e-9 && point[j] - 1e-9 <= box.box[j].upper;
            holding += inside;
        }
        EXPECT_EQ(holding, 1);
    }
}

} // namespace

// Two circles meet in two points, a circle and a line in two, one (tangent: left
// undecided, never proved twice) or none.
TEST(KOBWBBranchAndPrune, CirclesAndLines) {
    {
        KOBWBFactory f;
        KOBWBVariable* x = Bounded(f, -10, 10);
        KOBWBVariable* y = Bounded(f, -10, 10);
        f.AddEquation(Circle(f, x, y, 0, 0), KOBWBEqEqual, Real(f, 25));
        f.AddEquation(Circle(f, x, y, 6, 0), KOBWBEqEqual, Real(f, 25));
        KOBWBBranchAndPrune search(f);
        ExpectSolutions(search, {{3, 4}, {3, -4}});
        EXPECT_LE(search.GetNbOfBoxes(), 40);
        // The domains are given back.
        EXPECT_EQ(x->GetExprValue().GetAsRealInterval().upper, 10.0);
    }
    for (double height : {4.0, 5.0, 6.0}) {
        KOBWBFactory f;
        KOBWBVariable* x = Bounded(f, -10, 10);
        KOBWBVariable* y = Bounded(f, -10, 10);
        f.AddEquation(Circle(f, x, y, 0, 0), KOBWBEqEqual, Real(f, 25));
        f.AddEquation(y, KOBWBEqEqual, Real(f, height));
        KOBWBBranchAndPrune search(f);
        search.SetMinWidth(1e-6);
        if (height == 4.0) ExpectSolutions(search, {{3, 4}, {-3, 4}});
        if (height == 6.0) ExpectSolutions(search, {});
        if (height == 5.0) {
            ASSERT_EQ(search.Run(), KOBWBSearchComplete);
            EXPECT_TRUE(search.GetSolutions().empty());
            ASSERT_FALSE(search.GetUndecided().empty());
            for (const KOBWBSearchBox& box : search.GetUndecided()) {
                EXPECT_FALSE(box.proved);
                EXPECT_LE(box.box[0].lower, 1e-6);
                EXPECT_GE(box.box[0].upper, -1e-6);
            }
        }
    }
}

// Products of univariate factors mixed by an invertible linear change of variables
// have 16 solutions, each found in a few boxes.
TEST(KOBWBBranchAndPrune, SixteenSolutionsOfMixedProducts) {
    KOBWBFactory f;
    bench::BuildMixedProducts(f);
    std::vector<std::vector<double>> known;
    for (int a = 1; a <= 4; ++a)
        for (int b = 1; b <= 4; ++b) known.push_back({(2.0 * a + b) / 3.0, (a - b) / 3.0});
    KOBWBBranchAndPrune search(f);
    ExpectSolutions(search, known);
    EXPECT_LE(search.GetNbOfBoxes(), 20 * 16);
}

// A four-bar linkage with the crank given: the coupler point has two assembly modes.
TEST(KOBWBBranchAndPrune, FourBarLinkageHasTwoAssemblyModes) {
    KOBWBFactory f;
    KOBWBVariable* x = Bounded(f, -20, 20);
    KOBWBVariable* y = Bounded(f, -20, 20);
    // Crank end at (3, 4) (crank 5 from the origin at its given angle), ground pivot at
    // (10, 0), coupler 8, rocker 6.
    f.AddEquation(Circle(f, x, y, 3, 4), KOBWBEqEqual, Real(f, 64));
    f.AddEquation(Circle(f, x, y, 10, 0), KOBWBEqEqual, Real(f, 36));
    KOBWBBranchAndPrune search(f);
    ASSERT_EQ(search.Run(), KOBWBSearchComplete);
    ASSERT_EQ(search.GetSolutions().size(), 2u);
    for (const KOBWBSearchBox& box : search.GetSolutions()) {
        const double bx = box.box[0].lower / 2 + box.box[0].upper / 2;
        const double by = box.box[1].lower / 2 + box.box[1].upper / 2;
        EXPECT_NEAR((bx - 3) * (bx - 3) + (by - 4) * (by - 4), 64, 1e-6);
        EXPECT_NEAR((bx - 10) * (bx - 10) + by * by, 36, 1e-6);
    }
}

// The Broyden banded system in [-1, 1]^n has one solution.
TEST(KOBWBBranchAndPrune, BroydenBandedSystem) {
    for (int n : {5, 10}) {
        KOBWBFactory f;
        bench::BuildBroydenBanded(f, n);
        KOBWBBranchAndPrune search(f);
        ASSERT_EQ(search.Run(), KOBWBSearchComplete) << n;
        EXPECT_EQ(search.GetSolutions().size(), 1u) << n;
        EXPECT_TRUE(search.GetUndecided().empty()) << n;
    }
}

// Above 60 unknowns interval Newton is propagated one equation at a time: the Broyden
// banded system at n = 100 is solved in a few boxes, and a chain of 70 unknowns led by
// x_0^2 = 4 (x_i = x_(i-1) / 2) keeps both of its solutions across the split of x_0.
TEST(KOBWBBranchAndPrune, LargeSparseSystems) {
    {
        KOBWBFactory f;
        const std::vector<KOBWBVariable*> x = bench::BuildBroydenBanded(f, 100);
        KOBWBBranchAndPrune search(f);
        ASSERT_EQ(search.Run(), KOBWBSearchComplete);
        ASSERT_EQ(search.GetSolutions().size(), 1u);
        EXPECT_TRUE(search.GetUndecided().empty());
        EXPECT_LE(search.GetNbOfBoxes(), 10);
        const std::vector<KOBWBRealInterval>& box = search.GetSolutions().front().box;
        std::vector<double> mid;
        for (const KOBWBRealInterval& xi : box) mid.push_back(xi.lower / 2 + xi.upper / 2);
        for (int i = 0; i < 100; ++i) {
            double residual = mid[i] * (2 + 5 * mid[i] * mid[i]) + 1;
            for (int j = std::max(0, i - 5); j <= std::min(99, i + 1); ++j)
                if (j != i) residual -= mid[j] * (1 + mid[j]);
            EXPECT_NEAR(residual, 0.0, 1e-7) << i;
        }
    }
    KOBWBFactory f;
    std::vector<KOBWBVariable*> x{Bounded(f, -3, 3)};
    f.AddEquation(f.CreatePower(x[0], 2), KOBWBEqEqual, Real(f, 4));
    for (int i = 1; i < 70; ++i) {
        x.push_back(Bounded(f, -3, 3));
        f.AddEquation(f.CreateSub(x[i], f.CreateProduct(Real(f, 0.5), x[i - 1])), KOBWBEqEqual, Real(f, 0));
    }
    KOBWBBranchAndPrune search(f);
    std::vector<std::vector<double>> known(2);
    for (int i = 0; i < 70; ++i) {
        known[0].push_back(std::ldexp(2.0, -i));
        known[1].push_back(-std::ldexp(2.0, -i));
    }
    ExpectSolutions(search, known);
}

// Interval Newton one equation at a time never loses a solution: on random boxes around
// the 16 solutions of the mixed products (each equation narrows both unknowns through
// its linearisation) and around the proved solution of the Broyden banded system, the
// narrowed box still holds the solution and is not emptied; boxes away from every
// solution are emptied often.
TEST(KOBWBBranchAndPrune, RowwiseNewtonKeepsEverySolution) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const auto check = [&](KOBWBFactory& f, const std::vector<std::vector<KOBWBRealInterval>>& solutions,
                           double spread, int& emptied, int& away) {
        KOBWBBranchAndPrune search(f);
        search.Run();
        std::vector<KOBWBExpression*> roots;
        for (KOBWBEquation* e = f.GetFirstEquation(); e; e = f.GetNextEquation(e)) roots.push_back(e->GetRoot());
        const std::vector<KOBWBVariable*>& unknowns = search.GetUnknowns();
        KOBWBIntervalNewton newton;
        ASSERT_TRUE(newton.Make(static_cast<int>(roots.size()), roots.data(), unknowns.data()));
        std::vector<int> all(unknowns.size());
        for (std::size_t j = 0; j < all.size(); ++j) all[j] = static_cast<int>(j);
        for (int trial = 0; trial < 200; ++trial) {
            const std::vector<KOBWBRealInterval>& solution = solutions[static_cast<std::size_t>(trial) % solutions.size()];
            const bool around = trial % 2 == 0;
            std::vector<KOBWBRealInterval> box;
            for (const KOBWBRealInterval& s : solution) {
                const double below = spread * unit(random) + 1e-9;
                const double above = spread * unit(random) + 1e-9;
                box.push_back(around ? KOBWBRealInterval{s.lower - below, s.upper + above}
                                     : KOBWBRealInterval{s.upper + below, s.upper + below + above});
            }
            for (std::size_t j = 0; j < box.size(); ++j) unknowns[j]->SetExprValue(KOBWBValue(box[j]));
            std::vector<int> narrowed;
            const KOBWBNewtonOutcome outcome = newton.Propagate(box, all, 0.01, 100000, narrowed);
            if (!around) {
                ++away;
                emptied += outcome == KOBWBNewtonEmpty;
                continue;
            }
            ASSERT_EQ(outcome, KOBWBNewtonNarrowed) << trial;
            for (std::size_t j = 0; j < box.size(); ++j) {
                EXPECT_LE(box[j].lower, solution[j].upper) << trial;
                EXPECT_GE(box[j].upper, solution[j].lower) << trial;
                const KOBWBRealInterval value = unknowns[j]->GetExprValue().GetAsRealInterval();
                EXPECT_TRUE(value.lower == box[j].lower && value.upper == box[j].upper) << trial;
            }
        }
    };
    int emptied = 0;
    int away = 0;
    KOBWBFactory mixed;
    bench::BuildMixedProducts(mixed);
    std::vector<std::vector<KOBWBRealInterval>> sixteen;
    for (int a = 1; a <= 4; ++a)
        for (int b = 1; b <= 4; ++b) {
            const double x = (2.0 * a + b) / 3.0;
            const double y = (a - b) / 3.0;
            sixteen.push_back({{x - 1e-12, x + 1e-12}, {y - 1e-12, y + 1e-12}});
        }
    check(mixed, sixteen, 0.2, emptied, away);
    KOBWBFactory broyden;
    bench::BuildBroydenBanded(broyden, 12);
    KOBWBBranchAndPrune search(broyden);
    ASSERT_EQ(search.Run(), KOBWBSearchComplete);
    ASSERT_EQ(search.GetSolutions().size(), 1u);
    check(broyden, {search.GetSolutions().front().box}, 0.3, emptied, away);
    EXPECT_GT(emptied, away / 4);
}

// Brown's almost-linear system, n = 3: x_i + (x_1 + x_2 + x_3) = 4 for i < 3 and
// x_1 x_2 x_3 = 1. Its solutions have x_1 = x_2 = a with 3a^3 - 4a^2 + 1 = 0 and
// x_3 = 1/a^2: a = 1 and a = (1 +- sqrt(13))/6, three in [-10, 10]^3.
TEST(KOBWBBranchAndPrune, BrownsAlmostLinearSystem) {
    KOBWBFactory f;
    std::vector<KOBWBVariable*> x;
    for (int i = 0; i < 3; ++i) x.push_back(Bounded(f, -10, 10));
    KOBWBExpression* all[] = {x[0], x[1], x[2]};
    KOBWBExpression* sum = f.CreateSum(3, all);
    for (int i = 0; i < 2; ++i) f.AddEquation(f.CreateSum(x[i], sum), KOBWBEqEqual, Real(f, 4));
    f.AddEquation(f.CreateProduct(3, all), KOBWBEqEqual, Real(f, 1));
    std::vector<std::vector<double>> known;
    for (double a : {1.0, (1 + std::sqrt(13.0)) / 6, (1 - std::sqrt(13.0)) / 6}) known.push_back({a, a, 1 / (a * a)});
    KOBWBBranchAndPrune search(f);
    ExpectSolutions(search, known);
}

// More equations than unknowns are enclosed, never proved; unbounded domains, NaN
// widths and zero limits are refused with a status.
TEST(KOBWBBranchAndPrune, BadInput) {
    KOBWBFactory f;
    KOBWBVariable* x = Bounded(f, -10, 10);
    f.AddEquation(f.CreatePower(x, 2), KOBWBEqEqual, Real(f, 4));
    f.AddEquation(f.CreateProduct(x, Real(f, 3)), KOBWBEqEqual, Real(f, 6));
    KOBWBBranchAndPrune search(f);
    search.SetMinWidth(1e-6);
    ASSERT_EQ(search.Run(), KOBWBSearchComplete);
    EXPECT_TRUE(search.GetSolutions().empty());
    ASSERT_FALSE(search.GetUndecided().empty());
    for (const KOBWBSearchBox& box : search.GetUndecided()) EXPECT_NEAR(box.box[0].lower, 2.0, 1e-5);

    search.SetMinWidth(std::nan(""));
    EXPECT_EQ(search.Run(), KOBWBSearchBadArguments);
    search.SetMinWidth(1e-6);
    search.SetMaxBoxes(0);
    EXPECT_EQ(search.Run(), KOBWBSearchBadArguments);
    KOBWBFactory circles;
    KOBWBVariable* cx = Bounded(circles, -10, 10);
    KOBWBVariable* cy = Bounded(circles, -10, 10);
    circles.AddEquation(Circle(circles, cx, cy, 0, 0), KOBWBEqEqual, Real(circles, 25));
    circles.AddEquation(Circle(circles, cx, cy, 1, 0), KOBWBEqEqual, Real(circles, 25));
    KOBWBBranchAndPrune limited(circles);
    limited.SetMaxBoxes(1);
    EXPECT_EQ(limited.Run(), KOBWBSearchIncomplete);
    EXPECT_FALSE(limited.IsComplete());
    EXPECT_EQ(limited.GetUndecided().size(), 2u);
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{-KOBWBMaxReal, KOBWBMaxReal}));
    search.SetMaxBoxes(1000);
    EXPECT_EQ(search.Run(), KOBWBSearchNeedsBounds);
    KOBWBFactory empty;
    KOBWBBranchAndPrune nothing(empty);
    EXPECT_EQ(nothing.Run(), KOBWBSearchBadArguments);
    EXPECT_STREQ(KOBWBGetSearchStatusText(KOBWBSearchNeedsBounds), "needs bounds");

    KOBWBIntervalNewton newton;
    EXPECT_FALSE(newton.Make(0, nullptr, nullptr));
    KOBWBExpression* roots[] = {f.GetFirstEquation()->GetRoot()};
    KOBWBVariable* unknowns[] = {x};
    ASSERT_TRUE(newton.Make(1, roots, unknowns));
    std::vector<KOBWBRealInterval> wrongSize;
    EXPECT_EQ(newton.Step(wrongSize), KOBWBNewtonNarrowed);
    std::vector<KOBWBRealInterval> box{{1.5, 3.0}};
    EXPECT_EQ(newton.Step(box), KOBWBNewtonProved);
    EXPECT_LE(box[0].lower, 2.0);
    EXPECT_GE(box[0].upper, 2.0);
    std::vector<KOBWBRealInterval> far{{5.0, 6.0}};
    EXPECT_EQ(newton.Step(far), KOBWBNewtonEmpty);
}
