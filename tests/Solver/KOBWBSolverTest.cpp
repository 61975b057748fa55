#include "KOBWBBlackBox.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBJacobian.h"
#include "KOBWBSolver.h"
#include "KOBWBVariable.h"
#include "TriangleStrip.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

double ValueOf(KOBWBVariable* v) { return v->GetExprValue().GetAsDouble(); }

KOBWBExpression* Real(KOBWBFactory& f, double value) { return f.CreateRealConstant(value); }

// The circle x^2 + y^2 = 25 and the line line = 1, which meet in two points.
void CircleAndLine(KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y, KOBWBExpression* line) {
    f.AddEquation(f.CreateSum(f.CreatePower(x, 2), f.CreatePower(y, 2)), KOBWBEqEqual, Real(f, 25.0));
    f.AddEquation(line, KOBWBEqEqual, Real(f, 1.0));
}

bool Holds(const std::vector<KOBWBEquation*>& list, const KOBWBEquation* equation) {
    return std::find(list.begin(), list.end(), equation) != list.end();
}

} // namespace

// A circle meets a line in two points: the solve from near each one ends there.
// Under-determined systems end at the solution nearest the start; fixed variables
// stay where they are.
TEST(KOBWBSolver, SquareAndUnderDeterminedSystems) {
    for (double startX : {2.0, -2.5}) {
        KOBWBFactory f;
        KOBWBVariable* x = f.CreateVariable();
        KOBWBVariable* y = f.CreateVariable();
        CircleAndLine(f, x, y, f.CreateSub(y, x));
        x->SetExprValue(KOBWBValue(startX));
        y->SetExprValue(KOBWBValue(startX + 0.5));
        KOBWBSolver solver(f);
        ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
        EXPECT_NEAR(ValueOf(x), startX > 0 ? 3.0 : -4.0, 1e-12);
        EXPECT_NEAR(ValueOf(y), startX > 0 ? 4.0 : -3.0, 1e-12);
        EXPECT_LE(solver.GetNbOfIterations(), 8);
        EXPECT_LE(solver.GetResidual(), 1e-10);
    }

    // From (0, 0) the circle's row of the Jacobian is 0 and the line's is (-1, 1); the
    // steps follow y = -x, where the two rows stay parallel, to a stop that is a
    // saddle of the residual, not a conflict: the solve goes on from beside it.
    {
        KOBWBFactory f;
        KOBWBVariable* x = f.CreateVariable();
        KOBWBVariable* y = f.CreateVariable();
        CircleAndLine(f, x, y, f.CreateSub(x, y));
        x->SetExprValue(KOBWBValue(0.0));
        y->SetExprValue(KOBWBValue(0.0));
        KOBWBSolver solver(f);
        ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
        EXPECT_NEAR(ValueOf(x) * ValueOf(x) + ValueOf(y) * ValueOf(y), 25.0, 1e-10);
        EXPECT_NEAR(ValueOf(x) - ValueOf(y), 1.0, 1e-12);
        EXPECT_TRUE(solver.GetConflictingEquations().empty());
    }

    // x + y = 2 from (3, 0): the nearest point of the line is (2.5, -0.5).
    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    KOBWBVariable* y = f.CreateVariable();
    KOBWBVariable* z = f.CreateVariable();
    f.AddEquation(f.CreateSum(x, y), KOBWBEqEqual, Real(f, 2.0));
    x->SetExprValue(KOBWBValue(3.0));
    y->SetExprValue(KOBWBValue(0.0));
    z->SetExprValue(KOBWBValue(7.0));
    KOBWBSolver solver(f);
    ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_NEAR(ValueOf(x), 2.5, 1e-12);
    EXPECT_NEAR(ValueOf(y), -0.5, 1e-12);
    EXPECT_EQ(ValueOf(z), 7.0);

    // Dragging: with x held, y alone moves.
    x->SetExprValue(KOBWBValue(10.0));
    solver.Fix(x);
    ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_EQ(ValueOf(x), 10.0);
    EXPECT_NEAR(ValueOf(y), -8.0, 1e-12);
    solver.Diagnose();
    EXPECT_EQ(solver.GetNbOfUnknowns(), 1);
    EXPECT_EQ(solver.GetStructuralDof(), 0);
    EXPECT_EQ(solver.GetNumericDof(), 0);
    // The variable's own flag counts as well, set or released after the first solve.
    solver.Fix(x, false);
    y->Fix(1);
    x->SetExprValue(KOBWBValue(0.0));
    ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_NEAR(ValueOf(x), 10.0, 1e-12);
    EXPECT_EQ(ValueOf(y), -8.0);
}

// Equations of one shape share one compiled tape, copied over each equation's own
// variables: a copy must read its own constants, tell fixed variables from unknowns,
// keep a variable met twice as one, and read nodes shared with other equations. The
// answer is checked through the factory's own evaluation of every equation.
TEST(KOBWBSolver, EquationsOfOneShapeKeepTheirOwnVariablesAndConstants) {
    KOBWBFactory f;
    const auto point = [&](double x, double y, bool fixed) {
        KOBWBVariable* px = f.CreateVariable();
        KOBWBVariable* py = f.CreateVariable();
        px->SetExprValue(KOBWBValue(x));
        py->SetExprValue(KOBWBValue(y));
        px->Fix(fixed ? 1 : 0);
        py->Fix(fixed ? 1 : 0);
        return std::make_pair(px, py);
    };
    const auto a = point(0, 0, true);
    const auto b = point(6, 0, true);
    const auto c = point(3.2, 3.6, false);
    const auto d = point(2.7, -3.6, false);
    const auto h = point(5.3, 11.6, false);
    KOBWBVariable* e = f.CreateVariable();
    e->SetExprValue(KOBWBValue(4.0));
    KOBWBVariable* g = f.CreateVariable();
    g->SetExprValue(KOBWBValue(0.0));
    const auto distance = [&](std::pair<KOBWBVariable*, KOBWBVariable*> p, std::pair<KOBWBVariable*, KOBWBVariable*> q,
                              double length) {
        f.AddEquation(bench::Distance(f, p.first, p.second, q.first, q.second), KOBWBEqEqual, Real(f, length));
    };
    distance(a, c, 5.0); // C = (3, 4)
    distance(b, c, 5.0);
    distance(a, d, 5.0); // D = (3, -4), 8 from C
    distance(c, d, 8.0);
    distance(a, h, 13.0); // H = (5, 12): the shape of AC, other lengths
    distance(b, h, std::sqrt(145.0));
    // A variable met twice: (e - xc)^2 + (e - yc)^2 = 2.5, e = 4.5 from the start 4.
    f.AddEquation(f.CreateSum(f.CreatePower(f.CreateSub(e, c.first), 2), f.CreatePower(f.CreateSub(e, c.second), 2)),
                  KOBWBEqEqual, Real(f, 2.5));
    // A node shared by two equations, and an integer and a real constant of one value.
    KOBWBExpression* shared = f.CreateSub(d.first, e);
    f.AddEquation(f.CreateProduct(shared, f.CreateIntegerConstant(2)), KOBWBEqEqual, f.CreateProduct(g, Real(f, 2.0)));
    f.AddEquation(f.CreateSum(shared, g), KOBWBEqEqual, Real(f, -3.0));

    KOBWBSolver solver(f);
    ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
    // Newton's steps with the exact Jacobian.
    EXPECT_LE(solver.GetNbOfIterations(), 6);
    EXPECT_NEAR(ValueOf(c.first), 3.0, 1e-12);
    EXPECT_NEAR(ValueOf(c.second), 4.0, 1e-12);
    EXPECT_NEAR(ValueOf(d.first), 3.0, 1e-12);
    EXPECT_NEAR(ValueOf(d.second), -4.0, 1e-12);
    EXPECT_NEAR(ValueOf(h.first), 5.0, 1e-12);
    EXPECT_NEAR(ValueOf(h.second), 12.0, 1e-12);
    EXPECT_NEAR(ValueOf(e), 4.5, 1e-12);
    EXPECT_NEAR(ValueOf(g), -1.5, 1e-12);
    EXPECT_EQ(ValueOf(a.first), 0.0);
    EXPECT_EQ(ValueOf(b.first), 6.0);
    f.ResetBuffer();
    for (KOBWBEquation* equation = f.GetFirstEquation(); equation; equation = f.GetNextEquation(equation))
        EXPECT_NEAR(equation->GetRoot()->GetValue().GetAsDouble(), 0.0, 1e-12);
}

// One Newton step of the solver is the step the factory's own derivative expressions
// give (KOBWBJacobian, evaluated node by node, solved here by Gaussian elimination):
// equalities of one shape with a fixed or a free variable in the same place, a
// variable met twice and a linear row all get their own Jacobian rows.
TEST(KOBWBSolver, FirstStepIsTheNewtonStepOfTheFactorysDerivatives) {
    KOBWBFactory f;
    std::vector<KOBWBVariable*> v;
    for (double start : {0.0, 0.0, 3.05, 3.97, 6.04, -0.03, 1.05}) {
        v.push_back(f.CreateVariable());
        v.back()->SetExprValue(KOBWBValue(start));
    }
    v[0]->Fix(1);
    v[1]->Fix(1);
    // A = (0, 0) fixed, B = (3, 4), C = (6, 0), e = 1: AB and BC have one shape but for
    // A being fixed.
    f.AddEquation(bench::Distance(f, v[0], v[1], v[2], v[3]), KOBWBEqEqual, Real(f, 5.0));
    f.AddEquation(bench::Distance(f, v[2], v[3], v[4], v[5]), KOBWBEqEqual, Real(f, 5.0));
    f.AddEquation(bench::Distance(f, v[0], v[1], v[4], v[5]), KOBWBEqEqual, Real(f, 6.0));
    f.AddEquation(v[3], KOBWBEqEqual, Real(f, 4.0));
    f.AddEquation(f.CreateSum(f.CreatePower(f.CreateSub(v[6], v[4]), 2), f.CreatePower(f.CreateSub(v[6], v[5]), 2)),
                  KOBWBEqEqual, Real(f, 26.0));
    const std::vector<KOBWBVariable*> unknowns(v.begin() + 2, v.end());
    std::vector<KOBWBExpression*> roots;
    for (KOBWBEquation* e = f.GetFirstEquation(); e; e = f.GetNextEquation(e)) roots.push_back(e->GetRoot());
    const std::size_t n = unknowns.size();
    ASSERT_EQ(roots.size(), n);
    KOBWBJacobian jacobian;
    ASSERT_TRUE(jacobian.Make(static_cast<int>(n), roots.data(), static_cast<int>(n), unknowns.data()));
    // [J | -f] at the start, reduced by Gaussian elimination with partial pivoting.
    f.ResetBuffer();
    std::vector<std::vector<double>> a(n, std::vector<double>(n + 1, 0.0));
    for (int k = 0; k < jacobian.GetNbOfEntries(); ++k)
        a[static_cast<std::size_t>(jacobian.GetRow(k))][static_cast<std::size_t>(jacobian.GetColumn(k))] =
            jacobian.GetEntry(k)->GetValue().GetAsDouble();
    for (std::size_t i = 0; i < n; ++i) a[i][n] = -roots[i]->GetValue().GetAsDouble();
    for (std::size_t c = 0; c < n; ++c) {
        std::size_t pivot = c;
        for (std::size_t r = c + 1; r < n; ++r)
            if (std::fabs(a[r][c]) > std::fabs(a[pivot][c])) pivot = r;
        std::swap(a[c], a[pivot]);
        for (std::size_t r = 0; r < n; ++r)
            if (r != c) {
                const double factor = a[r][c] / a[c][c];
                for (std::size_t k = c; k <= n; ++k) a[r][k] -= factor * a[c][k];
            }
    }
    std::vector<double> expected(n);
    for (std::size_t j = 0; j < n; ++j) expected[j] = ValueOf(unknowns[j]) + a[j][n] / a[j][j];

    KOBWBSolver solver(f);
    solver.SetMaxIterations(1);
    solver.Solve();
    ASSERT_EQ(solver.GetNbOfIterations(), 1);
    for (std::size_t j = 0; j < n; ++j) EXPECT_NEAR(ValueOf(unknowns[j]), expected[j], 1e-12) << "unknown " << j;
    EXPECT_EQ(ValueOf(v[0]), 0.0);
}

// A step that would break an inequality that holds is shortened; a bounded variable
// stays in its interval; an inequality that cannot hold at the answer is reported.
TEST(KOBWBSolver, InequalitiesAndBounds) {
    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    KOBWBVariable* y = f.CreateVariable();
    f.AddEquation(f.CreateSum(f.CreatePower(x, 2), f.CreatePower(y, 2)), KOBWBEqEqual, Real(f, 25.0));
    KOBWBEquation* right = f.AddEquation(x, KOBWBEqGreaterEqual, Real(f, 0.0));
    x->SetExprValue(KOBWBValue(0.5));
    y->SetExprValue(KOBWBValue(KOBWBRealInterval{-1.0, 1.0}));
    KOBWBSolver solver(f);
    EXPECT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_GE(ValueOf(x), 0.0);
    EXPECT_LE(std::fabs(ValueOf(y)), 1.0);
    EXPECT_NEAR(ValueOf(x) * ValueOf(x) + ValueOf(y) * ValueOf(y), 25.0, 1e-9);
    EXPECT_TRUE(solver.GetViolatedInequalities().empty());

    KOBWBEquation* far = f.AddEquation(x, KOBWBEqGreaterEqual, Real(f, 6.0));
    x->SetExprValue(KOBWBValue(3.0));
    y->SetExprValue(KOBWBValue(4.0));
    EXPECT_EQ(solver.Solve(), KOBWBSolverInconsistent);
    EXPECT_TRUE(Holds(solver.GetViolatedInequalities(), far));
    EXPECT_FALSE(Holds(solver.GetViolatedInequalities(), right));
}

// The strip with one wrong extra distance names the smallest group that cannot
// hold: the extra distance and the five of the triangles it spans, not the strip.
// A redundant but consistent distance is named redundant, and the solve succeeds.
TEST(KOBWBSolver, ConflictingAndRedundantEquationsAreNamed) {
    for (bool wrong : {true, false}) {
        KOBWBFactory f;
        bench::TriangleStrip strip = bench::BuildTriangleStrip(f, 40);
        const double h = 5.0 * std::sqrt(3.0);
        const double across = std::sqrt(15.0 * 15.0 + h * h); // P20 to P17
        KOBWBEquation* extra = bench::AddDistance(f, strip, 20, 17, wrong ? across + 1.0 : across);
        KOBWBSolver solver(f);
        const KOBWBSolverStatus status = solver.Solve();
        solver.Diagnose();
        if (wrong) {
            ASSERT_EQ(status, KOBWBSolverInconsistent);
            const std::vector<KOBWBEquation*>& conflicting = solver.GetConflictingEquations();
            EXPECT_TRUE(Holds(conflicting, extra));
            EXPECT_EQ(conflicting.size(), 6u);
        } else {
            ASSERT_EQ(status, KOBWBSolverSolved);
            EXPECT_TRUE(solver.GetConflictingEquations().empty());
            EXPECT_TRUE(Holds(solver.GetRedundantEquations(), extra));
            EXPECT_EQ(solver.GetRedundantEquations().size(), 6u);
            for (std::size_t i = 2; i < strip.variables.size(); ++i)
                EXPECT_NEAR(ValueOf(strip.variables[i]), strip.answer[i], 1e-9);
        }
        EXPECT_EQ(solver.GetNumericDof(), 0);
        EXPECT_EQ(solver.GetStructuralDof(), 0);
        EXPECT_TRUE(solver.GetFreeVariables().empty());
        EXPECT_EQ(solver.GetRank(), solver.GetNbOfUnknowns());
    }
}

// Degrees of freedom: two points with one distance between them and the first one
// held have one free rotation (both coordinates of the second point move).
TEST(KOBWBSolver, DegreesOfFreedomAndFreeVariables) {
    KOBWBFactory f;
    bench::TriangleStrip strip = bench::BuildTriangleStrip(f, 1);
    KOBWBVariable* x = f.CreateVariable();
    KOBWBVariable* y = f.CreateVariable();
    KOBWBVariable* w = f.CreateVariable();
    strip.variables.push_back(x);
    strip.variables.push_back(y);
    x->SetExprValue(KOBWBValue(3.0));
    y->SetExprValue(KOBWBValue(4.0));
    w->SetExprValue(KOBWBValue(1.0));
    bench::AddDistance(f, strip, 0, 1, 10.0);
    f.AddEquation(f.CreateProduct(w, w), KOBWBEqEqual, Real(f, 4.0));
    KOBWBSolver solver(f);
    ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_NEAR(ValueOf(x), 6.0, 1e-12);
    EXPECT_NEAR(ValueOf(y), 8.0, 1e-12);
    solver.Diagnose();
    EXPECT_EQ(solver.GetNbOfUnknowns(), 3);
    EXPECT_EQ(solver.GetStructuralDof(), 1);
    EXPECT_EQ(solver.GetNumericDof(), 1);
    const std::vector<KOBWBVariable*>& free = solver.GetFreeVariables();
    EXPECT_EQ(free.size(), 2u);
    EXPECT_EQ(std::count(free.begin(), free.end(), w), 0);
}

// Nothing to solve, bad starts and equations without derivatives: a status, and the
// variables keep their values.
TEST(KOBWBSolver, BadInput) {
    KOBWBFactory empty;
    KOBWBSolver nothing(empty);
    EXPECT_EQ(nothing.Solve(), KOBWBSolverNoEquations);
    nothing.Diagnose();
    EXPECT_EQ(nothing.GetNbOfUnknowns(), 0);
    nothing.Fix(nullptr);
    nothing.SetTolerance(std::nan(""));
    EXPECT_EQ(nothing.GetTolerance(), 1e-10);

    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    KOBWBEquation* square = f.AddEquation(f.CreateProduct(x, x), KOBWBEqEqual, Real(f, 2.0));
    x->SetExprValue(KOBWBValue(std::numeric_limits<double>::quiet_NaN()));
    KOBWBSolver solver(f);
    EXPECT_EQ(solver.Solve(), KOBWBSolverBadStart);
    EXPECT_TRUE(std::isnan(ValueOf(x)));
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{3.0, 1.0}));
    EXPECT_EQ(solver.Solve(), KOBWBSolverBadStart);

    // A singular Jacobian at the start (x = 0) is damped, not a failure; an unbounded
    // variable starts at 0.
    x->SetExprValue(KOBWBValue(0.0));
    EXPECT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_NEAR(std::fabs(ValueOf(x)), std::sqrt(2.0), 1e-12);
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{-KOBWBMaxReal, KOBWBMaxReal}));
    EXPECT_EQ(solver.Solve(), KOBWBSolverSolved);

    f.RemoveEquation(square);
    f.AddEquation(f.CreateAbs(x), KOBWBEqEqual, Real(f, 2.0));
    x->SetExprValue(KOBWBValue(1.0));
    EXPECT_EQ(solver.Solve(), KOBWBSolverNoDerivative);
    EXPECT_EQ(ValueOf(x), 1.0);

    // Equations over constants only hold or conflict whatever the variables do.
    KOBWBFactory constants;
    KOBWBEquation* wrong = constants.AddEquation(Real(constants, 1.0), KOBWBEqEqual, Real(constants, 2.0));
    KOBWBSolver constantSolver(constants);
    EXPECT_EQ(constantSolver.Solve(), KOBWBSolverInconsistent);
    EXPECT_TRUE(Holds(constantSolver.GetConflictingEquations(), wrong));
    EXPECT_STREQ(KOBWBGetSolverStatusText(KOBWBSolverInconsistent), "inconsistent");
    EXPECT_STREQ(KOBWBGetSolverStatusText(static_cast<KOBWBSolverStatus>(42)), "");
}

// Eliminating the linear equalities first gives the same answer, and the eliminated
// variables get their values from the solved ones.
TEST(KOBWBSolver, TransformationsFirst) {
    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    KOBWBVariable* y = f.CreateVariable();
    CircleAndLine(f, x, y, f.CreateSub(y, x));
    x->SetExprValue(KOBWBValue(2.0));
    y->SetExprValue(KOBWBValue(2.5));
    KOBWBSolver solver(f);
    solver.SetPresolve(KOBWBPresolveTransformations);
    ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_NEAR(ValueOf(x), 3.0, 1e-12);
    EXPECT_NEAR(ValueOf(y), 4.0, 1e-12);
}

// The contractor narrows the domains first: x in [2.5, 10] leaves y in [-5, 2.5] of
// x + y = 5, so the solve starting from y = 4 (outside) ends at (3, 2), not (2, 3); a
// variable's own value is a start again after it. A system without solution in its
// domains is still solved as far as it goes and its conflict named.
TEST(KOBWBSolver, ContractorFirst) {
    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    KOBWBVariable* y = f.CreateVariable();
    KOBWBVariable* other = f.CreateVariable();
    f.AddEquation(f.CreateProduct(x, y), KOBWBEqEqual, Real(f, 6.0));
    f.AddEquation(f.CreateSum(x, y), KOBWBEqEqual, Real(f, 5.0));
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{2.5, 10.0}));
    y->SetExprValue(KOBWBValue(4.0));
    other->SetExprValue(KOBWBValue(KOBWBRealInterval{1.0, 2.0}));
    KOBWBSolver solver(f);
    solver.SetPresolve(KOBWBPresolveContractor);
    ASSERT_EQ(solver.Solve(), KOBWBSolverSolved);
    EXPECT_NEAR(ValueOf(x), 3.0, 1e-12);
    EXPECT_NEAR(ValueOf(y), 2.0, 1e-12);
    const KOBWBRealInterval kept = other->GetExprValue().GetAsRealInterval();
    EXPECT_EQ(kept.lower, 1.0);
    EXPECT_EQ(kept.upper, 2.0);

    KOBWBFactory g;
    KOBWBVariable* z = g.CreateVariable();
    KOBWBEquation* square = g.AddEquation(g.CreatePower(z, 2), KOBWBEqEqual, Real(g, -1.0));
    z->SetExprValue(KOBWBValue(0.5));
    KOBWBSolver none(g);
    none.SetPresolve(KOBWBPresolveContractor);
    EXPECT_EQ(none.Solve(), KOBWBSolverInconsistent);
    EXPECT_TRUE(Holds(none.GetConflictingEquations(), square));
}
