#include "KOBWBContractor.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBLimits.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

// The contractor never removes a point that evaluation accepts: a point at which every
// equation's root holds 0 within the tolerance (or lies on the right side of it within
// the tolerance, for an order) stays in the variables' domains.

namespace {

using RI = KOBWBRealInterval;

RI Domain(KOBWBVariable* v) {
    return v->GetExprValue().GetAsRealInterval();
}

bool Holds(const RI& d, double x) {
    return d.lower <= x && x <= d.upper;
}

// Whether evaluation accepts the current values of the variables for the equation.
bool Accepts(KOBWBFactory& factory, KOBWBEquation* equation) {
    const KOBWBValue& value = equation->GetRoot()->GetValue();
    if (value.IsIndefinite()) return false;
    const RI root = value.GetAsRealInterval();
    if (!(root.lower <= root.upper)) return false;
    const double t = factory.GetEnvironment().GetTolerance();
    switch (equation->GetType()) {
    case KOBWBEqEqual:
        return root.lower >= -t && root.upper <= t;
    case KOBWBEqLessEqual:
        return root.upper <= t;
    case KOBWBEqGreaterEqual:
        return root.lower >= -t;
    default:
        return false;
    }
}

// One variable x with the equation f(x) = c over the box, and the status of a run.
struct OneVariable {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBEquation* equation = nullptr;

    bool AcceptsPoint(double point) {
        x->SetExprValue(KOBWBValue(point));
        return Accepts(factory, equation);
    }
    KOBWBContractionStatus Run(const RI& box) {
        x->SetExprValue(KOBWBValue(box));
        KOBWBContractor contractor(factory);
        return contractor.Run();
    }
};

} // namespace

TEST(KOBWBContractorSoundness, PowersAndLogarithmsNearTheSmallestReal) {
    // sqrt-like power: x^(1/2) = 0 is accepted for every x from KOBWBMinReal up to 1e-28.
    {
        OneVariable s;
        s.equation = s.factory.AddEquation(
            s.factory.CreatePower(s.x, s.factory.CreateRealConstant(0.5)), KOBWBEqEqual,
            s.factory.CreateRealConstant(0));
        EXPECT_FALSE(s.AcceptsPoint(0));
        for (const double accepted : {KOBWBMinReal, 1e-30, 1e-28})
            EXPECT_TRUE(s.AcceptsPoint(accepted)) << accepted;
        EXPECT_EQ(s.Run({0, 1}), KOBWBContractionFixedPoint);
        for (const double accepted : {KOBWBMinReal, 1e-30, 1e-28})
            EXPECT_TRUE(Holds(Domain(s.x), accepted)) << accepted;
        EXPECT_LT(Domain(s.x).upper, 1e-27);
    }
    // (3x/7)^(1/3) = 0: the cube root of KOBWBMinReal is already 1.4e-13, beyond the
    // tolerance, and 0 is outside the power's domain, so no point is accepted; a cube
    // root written as a root keeps 0.
    {
        OneVariable c;
        KOBWBExpression* scaled = c.factory.CreateQuotient(
            c.factory.CreateProduct(c.x, c.factory.CreateRealConstant(3)),
            c.factory.CreateRealConstant(7));
        c.equation = c.factory.AddEquation(
            c.factory.CreatePower(scaled, c.factory.CreateRealConstant(1.0 / 3)), KOBWBEqEqual,
            c.factory.CreateRealConstant(0));
        EXPECT_FALSE(c.AcceptsPoint(0));
        EXPECT_FALSE(c.AcceptsPoint(KOBWBMinReal * 7 / 3));
        EXPECT_EQ(c.Run({-0.3, 0.7}), KOBWBContractionNoSolution);

        OneVariable r;
        KOBWBExpression* rScaled = r.factory.CreateQuotient(
            r.factory.CreateProduct(r.x, r.factory.CreateRealConstant(3)),
            r.factory.CreateRealConstant(7));
        r.equation = r.factory.AddEquation(r.factory.CreateRoot(rScaled, 3), KOBWBEqEqual,
                                           r.factory.CreateRealConstant(0));
        EXPECT_TRUE(r.AcceptsPoint(0));
        EXPECT_NE(r.Run({-0.3, 0.7}), KOBWBContractionNoSolution);
        EXPECT_TRUE(Holds(Domain(r.x), 0));
    }
    // ln x = -115.13 needs x = 1e-50, below the logarithm's domain: nothing is accepted.
    // ln x = -80 keeps exp(-80).
    {
        OneVariable l;
        l.equation = l.factory.AddEquation(l.factory.CreateLn(l.x), KOBWBEqEqual,
                                           l.factory.CreateRealConstant(-115.13));
        EXPECT_FALSE(l.AcceptsPoint(std::exp(-115.13)));
        EXPECT_EQ(l.Run({0, 1}), KOBWBContractionNoSolution);

        OneVariable k;
        k.equation = k.factory.AddEquation(k.factory.CreateLn(k.x), KOBWBEqEqual,
                                           k.factory.CreateRealConstant(-80));
        const double solution = std::exp(-80.0);
        EXPECT_TRUE(k.AcceptsPoint(solution));
        EXPECT_EQ(k.Run({0, 1}), KOBWBContractionFixedPoint);
        EXPECT_TRUE(Holds(Domain(k.x), solution));
    }
}

TEST(KOBWBContractorSoundness, AnAngleOnTheCutOfAtan2KeepsItsPoint) {
    // Two points on a horizontal line, the second to the left of the first: the angle is
    // atan2(+0, -17) = Pi, on the cut where the principal branch jumps from -Pi to Pi.
    // The ordinate difference ranges over [-2.39, 0] and reaches the cut at its top.
    KOBWBFactory factory;
    KOBWBVariable* x0 = factory.CreateVariable();
    KOBWBVariable* y0 = factory.CreateVariable();
    KOBWBVariable* x1 = factory.CreateVariable();
    KOBWBVariable* y1 = factory.CreateVariable();
    KOBWBEquation* angle = factory.AddEquation(
        factory.CreateAtan2(factory.CreateSub(y1, y0), factory.CreateSub(x1, x0)), KOBWBEqEqual,
        factory.CreateRealConstant(3.141592653589793));
    const double solution[] = {14.125, -5.875, -2.875, -5.875};
    KOBWBVariable* variables[] = {x0, y0, x1, y1};
    for (int i = 0; i < 4; ++i)
        variables[i]->SetExprValue(KOBWBValue(solution[i]));
    ASSERT_TRUE(Accepts(factory, angle));
    const RI boxes[] = {{14.125, 14.125001}, {-5.875, -3.4854734991226661}, {-2.875001, -2.875},
                        {-5.875, -5.875}};
    for (int i = 0; i < 4; ++i)
        variables[i]->SetExprValue(KOBWBValue(boxes[i]));
    KOBWBContractor contractor(factory);
    EXPECT_EQ(contractor.Run(), KOBWBContractionFixedPoint);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(Holds(Domain(variables[i]), solution[i])) << i;
}

namespace {

// The number of random systems: KOBWBX_CONTRACTOR_CASES when set (the long run uses
// 100000 or more), else a count that keeps the suite quick.
int CaseCount() {
    const char* text = std::getenv("KOBWBX_CONTRACTOR_CASES");
    const int count = text ? std::atoi(text) : 0;
    return count > 0 ? count : 3000;
}

// A sketch-like system with a known solution: points in the plane, and equations on
// distances, squared distances, angles, linear combinations, products, quotients and
// elementary functions of their coordinates, each stating the value at the solution.
// Rational solutions (multiples of 1/8) compute most of those values exactly; others
// give values true only within rounding, and the stated value is then the exact one
// rounded once (computed in long double), not the one the evaluation computes.
class RandomSketch {
public:
    RandomSketch(std::mt19937_64& random, bool rational) : m_random(random), m_rational(rational) {}

    void Build(KOBWBFactory& factory) {
        const int points = 2 + static_cast<int>(m_random() % 3);
        for (int i = 0; i < 2 * points; ++i) {
            const double value = m_rational
                                     ? static_cast<double>(static_cast<int>(m_random() % 321) - 160) / 8
                                     : Uniform(-20, 20);
            m_solution.push_back(value);
            m_variables.push_back(factory.CreateVariable());
        }
        const int equations = points + static_cast<int>(m_random() % (points + 1));
        for (int k = 0; k < equations; ++k)
            AddEquation(factory, points);
    }

    const std::vector<double>& Solution() const { return m_solution; }
    const std::vector<KOBWBVariable*>& Variables() const { return m_variables; }
    const std::vector<KOBWBEquation*>& Equations() const { return m_equations; }

private:
    double Uniform(double a, double b) { return std::uniform_real_distribution<double>(a, b)(m_random); }

    void AddEquation(KOBWBFactory& f, int points) {
        const int i = static_cast<int>(m_random() % points);
        int j = static_cast<int>(m_random() % points);
        if (j == i) j = (i + 1) % points;
        KOBWBVariable* xi = m_variables[2 * i];
        KOBWBVariable* yi = m_variables[2 * i + 1];
        KOBWBVariable* xj = m_variables[2 * j];
        KOBWBVariable* yj = m_variables[2 * j + 1];
        const long double sxi = m_solution[2 * i], syi = m_solution[2 * i + 1];
        const long double sxj = m_solution[2 * j], syj = m_solution[2 * j + 1];
        const long double dx = sxj - sxi, dy = syj - syi;
        KOBWBExpression* left = nullptr;
        long double exact = 0;
        switch (m_random() % 9) {
        case 0:
            left = f.CreateSqrt(f.CreateSum(f.CreatePower(f.CreateSub(xj, xi), 2),
                                            f.CreatePower(f.CreateSub(yj, yi), 2)));
            exact = std::sqrt(dx * dx + dy * dy);
            break;
        case 1:
            left = f.CreateSum(f.CreatePower(f.CreateSub(xj, xi), 2),
                               f.CreatePower(f.CreateSub(yj, yi), 2));
            exact = dx * dx + dy * dy;
            break;
        case 2:
            if (dx == 0 && dy == 0) return;
            left = f.CreateAtan2(f.CreateSub(yj, yi), f.CreateSub(xj, xi));
            exact = std::atan2(dy, dx);
            break;
        case 3: {
            const double a = m_rational ? 3 : Uniform(-5, 5);
            const double b = m_rational ? -0.5 : Uniform(-5, 5);
            left = f.CreateSum(f.CreateProduct(f.CreateRealConstant(a), xi),
                               f.CreateProduct(f.CreateRealConstant(b), yj));
            exact = a * sxi + b * syj;
            break;
        }
        case 4:
            left = f.CreateProduct(xi, yj);
            exact = sxi * syj;
            break;
        case 5:
            left = f.CreateQuotient(xi, f.CreateSum(f.CreatePower(yj, 2), f.CreateRealConstant(1)));
            exact = sxi / (syj * syj + 1);
            break;
        case 6:
            left = f.CreatePower(f.CreateSum(f.CreatePower(xi, 2), f.CreateRealConstant(1)),
                                 f.CreateRealConstant(1.5));
            exact = std::pow(sxi * sxi + 1, 1.5L);
            break;
        case 7:
            left = f.CreateLn(f.CreateSum(f.CreatePower(yi, 2), f.CreateRealConstant(0.5)));
            exact = std::log(syi * syi + 0.5L);
            break;
        default:
            left = f.CreateSin(f.CreateQuotient(xj, f.CreateRealConstant(4)));
            exact = std::sin(sxj / 4);
            break;
        }
        // Mostly equalities; some orders that hold with equality at the solution.
        const int kind = static_cast<int>(m_random() % 6);
        const KOBWBEquationType type = kind == 4   ? KOBWBEqLessEqual
                                       : kind == 5 ? KOBWBEqGreaterEqual
                                                   : KOBWBEqEqual;
        m_equations.push_back(
            f.AddEquation(left, type, f.CreateRealConstant(static_cast<double>(exact))));
    }

    std::mt19937_64& m_random;
    bool m_rational;
    std::vector<double> m_solution;
    std::vector<KOBWBVariable*> m_variables;
    std::vector<KOBWBEquation*> m_equations;
};

// A box around the solution: each side a random width, from none to a few units.
RI BoxAround(std::mt19937_64& random, double x) {
    const auto width = [&random]() {
        switch (random() % 6) {
        case 0:
        case 1:
            return 0.0;
        case 2:
            return 1e-13;
        case 3:
            return 1e-6;
        default:
            return std::uniform_real_distribution<double>(0, 3)(random);
        }
    };
    return {x - width(), x + width()};
}

} // namespace

TEST(KOBWBContractorSoundness, RandomSketchesKeepTheirSolutions) {
    const int cases = CaseCount();
    std::mt19937_64 random(20261125);
    int checked = 0;
    int narrowed = 0;
    for (int trial = 0; trial < cases; ++trial) {
        KOBWBFactory factory;
        RandomSketch sketch(random, trial % 2 == 0);
        sketch.Build(factory);
        const std::vector<double>& solution = sketch.Solution();
        const std::vector<KOBWBVariable*>& variables = sketch.Variables();
        const int count = static_cast<int>(variables.size());
        for (int i = 0; i < count; ++i)
            variables[i]->SetExprValue(KOBWBValue(solution[i]));
        // Only equations that evaluation accepts at the solution are kept in the system.
        bool accepted = true;
        for (KOBWBEquation* equation : sketch.Equations())
            accepted = accepted && Accepts(factory, equation);
        if (!accepted) continue;
        ++checked;
        std::vector<RI> boxes;
        for (int i = 0; i < count; ++i) {
            boxes.push_back(BoxAround(random, solution[i]));
            variables[i]->SetExprValue(KOBWBValue(boxes.back()));
        }
        KOBWBContractor contractor(factory);
        ASSERT_NE(contractor.Run(), KOBWBContractionNoSolution) << "trial " << trial;
        bool any = false;
        for (int i = 0; i < count; ++i) {
            const RI d = Domain(variables[i]);
            ASSERT_TRUE(Holds(d, solution[i]))
                << "trial " << trial << " lost " << solution[i] << " of variable " << i << ": ["
                << d.lower << ", " << d.upper << "]";
            any = any || d.lower > boxes[i].lower || d.upper < boxes[i].upper;
        }
        narrowed += any;
    }
    // Most systems hold at their solution within the tolerance, and the contraction does
    // narrow many of them: the test is not vacuous.
    EXPECT_GT(checked, cases * 3 / 4);
    EXPECT_GT(narrowed, checked / 3);
}
