#include "KOBWBSolver.h"

#include "KOBWBContractor.h"
#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBLimits.h"
#include "KOBWBSolverSystem.h"
#include "KOBWBSymbolicTransformations.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cmath>
#include <limits>

using kobwb::SolverSystem;

const char* KOBWBGetSolverStatusText(KOBWBSolverStatus status) {
    switch (status) {
    case KOBWBSolverSolved: return "solved";
    case KOBWBSolverNotConverged: return "not converged";
    case KOBWBSolverInconsistent: return "inconsistent";
    case KOBWBSolverNoEquations: return "no equations";
    case KOBWBSolverBadStart: return "bad start";
    case KOBWBSolverNoDerivative: return "no derivative";
    }
    return "";
}

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// The start of a variable and its bounds, read from its value: a number is the start
// without bounds; an interval bounds the variable and starts it at its midpoint, or
// at 0 moved into the interval when a side is unbounded. False for an empty domain
// or a NaN.
bool StartOf(KOBWBVariable& variable, double& start, double& lower, double& upper) {
    const KOBWBValue& value = variable.GetExprValue();
    lower = -infinity;
    upper = infinity;
    if (value.IsAKindOf(KOBWBRealValue) || value.IsAKindOf(KOBWBIntegerValue) || value.IsAFraction()) {
        start = value.GetAsDouble();
        if (KOBWBIsAnyReal(start)) start = 0.0;
        return std::isfinite(start) && !KOBWBIsNilReal(start);
    }
    const KOBWBRealInterval box = value.GetAsRealInterval();
    if (std::isnan(box.lower) || std::isnan(box.upper) || box.lower > box.upper) return false;
    if (box.lower > -KOBWBMaxReal) lower = box.lower;
    if (box.upper < KOBWBMaxReal) upper = box.upper;
    start = std::isfinite(lower) && std::isfinite(upper) ? lower / 2 + upper / 2 : std::clamp(0.0, lower, upper);
    return std::isfinite(start);
}

double SquaredNorm(const std::vector<double>& values, int count) {
    double sum = 0.0;
    for (int i = 0; i < count; ++i) sum += values[static_cast<std::size_t>(i)] * values[static_cast<std::size_t>(i)];
    return sum;
}

} // namespace

KOBWBSolver::KOBWBSolver(KOBWBFactory& factory) : m_factory(factory) {}

KOBWBSolver::~KOBWBSolver() = default;

void KOBWBSolver::Fix(KOBWBVariable* variable, bool fixed) {
    if (!variable) return;
    const auto known = std::find(m_fixed.begin(), m_fixed.end(), variable);
    if (fixed && known == m_fixed.end()) m_fixed.push_back(variable);
    if (!fixed && known != m_fixed.end()) m_fixed.erase(known);
    m_system.reset();
}

KOBWBSolver::System& KOBWBSolver::CurrentSystem() {
    if (!m_system || !m_system->IsCurrent()) m_system = std::make_unique<System>(m_factory, m_fixed);
    return *m_system;
}

void KOBWBSolver::SetTolerance(double tolerance) {
    if (std::isnan(tolerance)) return;
    m_tolerance = std::max(tolerance, KOBWBAbsPrecision);
}

KOBWBSolverStatus KOBWBSolver::Solve() {
    m_iterations = 0;
    m_residual = 0.0;
    m_violated.clear();
    m_conflicting.clear();
    KOBWBSymbolicTransformations* transformations = nullptr;
    if (m_presolve == KOBWBPresolveTransformations) {
        transformations = KOBCreateWBSymbolicTransformations(0, m_factory);
        if (transformations) {
            transformations->SetMode(2 | 4);
            transformations->Run();
        }
    }
    m_narrowed.clear();
    if (m_presolve == KOBWBPresolveContractor) NarrowWithContractor();
    m_status = Newton();
    m_narrowed.clear();
    if (transformations) {
        // The eliminated variables follow from those solved.
        if (m_status == KOBWBSolverSolved || m_status == KOBWBSolverNotConverged ||
            m_status == KOBWBSolverInconsistent || m_status == KOBWBSolverNoEquations) {
            for (int index = 0; index < m_factory.GetNbOfVariables(); ++index) {
                KOBWBExpression* expression = transformations->GetVariableExpression(index);
                KOBWBVariable* variable = m_factory.GetVariable(index);
                if (!expression || !variable || variable->IsFixed()) continue;
                m_factory.ResetBuffer();
                const double value = expression->GetValue().GetAsDouble();
                if (std::isfinite(value)) variable->SetExprValue(KOBWBValue(value));
            }
        }
        KOBRemove(transformations);
    }
    return m_status;
}

void KOBWBSolver::NarrowWithContractor() {
    const System& s = CurrentSystem();
    // The contractor narrows the variables' values as domains: a start that is a
    // number is every real there, and every value is put back afterwards.
    std::vector<KOBWBValue> saved;
    for (int index = 0; index < m_factory.GetNbOfVariables(); ++index)
        saved.push_back(m_factory.GetVariable(index)->GetExprValue());
    for (KOBWBVariable* unknown : s.unknowns) {
        double start = 0.0, lower = 0.0, upper = 0.0;
        if (StartOf(*unknown, start, lower, upper) && !std::isfinite(lower) && !std::isfinite(upper))
            unknown->SetExprValue(KOBWBValue(KOBWBRealInterval{-KOBWBMaxReal, KOBWBMaxReal}));
    }
    KOBWBContractor contractor(m_factory);
    if (contractor.Run() != KOBWBContractionNoSolution)
        for (KOBWBVariable* unknown : s.unknowns) m_narrowed.push_back(unknown->GetExprValue().GetAsRealInterval());
    for (int index = 0; index < m_factory.GetNbOfVariables(); ++index)
        m_factory.GetVariable(index)->SetExprValue(saved[static_cast<std::size_t>(index)]);
}

KOBWBSolverStatus KOBWBSolver::Newton() {
    System& s = CurrentSystem();
    m_unknownCount = static_cast<int>(s.unknowns.size());
    if (s.equalities.empty()) return KOBWBSolverNoEquations;
    if (!s.complete) return KOBWBSolverNoDerivative;
    const std::size_t n = s.unknowns.size();
    const int m = s.EqualityCount();
    const int checked = s.JacobianOutput();
    std::vector<double> x(n), lower(n), upper(n);
    for (std::size_t j = 0; j < n; ++j)
        if (!StartOf(*s.unknowns[j], x[j], lower[j], upper[j])) return KOBWBSolverBadStart;
    if (m_narrowed.size() == n)
        for (std::size_t j = 0; j < n; ++j) {
            const KOBWBRealInterval& domain = m_narrowed[j];
            if (!(domain.lower <= domain.upper)) continue;
            if (domain.lower > -KOBWBMaxReal) lower[j] = std::max(lower[j], domain.lower);
            if (domain.upper < KOBWBMaxReal) upper[j] = std::min(upper[j], domain.upper);
            if (lower[j] > upper[j]) return KOBWBSolverBadStart;
            x[j] = std::clamp(x[j], lower[j], upper[j]);
        }
    s.evaluator.Refresh();
    std::vector<double> values(static_cast<std::size_t>(s.evaluator.GetNbOfExpressions()));
    std::vector<double> trialValues(static_cast<std::size_t>(checked));
    std::vector<double> trial(n), dx(n);
    std::vector<double> scale(static_cast<std::size_t>(m), 1.0);
    // Every output at x, the scale of each equality's rounding from its terms; after
    // a line search has evaluated the residuals at x, only the rest is evaluated.
    const auto evaluateAll = [&](bool residualsKnown) {
        if (residualsKnown)
            s.evaluator.EvaluateRest(values.data());
        else
            s.evaluator.Evaluate(x.data(), values.data());
        for (int i = 0; i < m; ++i) {
            double magnitude = 0.0;
            for (int k = s.termStart[static_cast<std::size_t>(i)]; k < s.termStart[static_cast<std::size_t>(i) + 1]; ++k)
                magnitude += std::fabs(values[static_cast<std::size_t>(k)]);
            scale[static_cast<std::size_t>(i)] = std::isfinite(magnitude) ? std::max(1.0, magnitude) : 1.0;
        }
    };
    const auto scaledResidual = [&](const std::vector<double>& f) {
        double worst = 0.0;
        for (int i = 0; i < m; ++i)
            worst = std::max(worst, std::fabs(f[static_cast<std::size_t>(i)]) / scale[static_cast<std::size_t>(i)]);
        return worst;
    };
    const auto finite = [m](const std::vector<double>& f) {
        for (int i = 0; i < m; ++i)
            if (!std::isfinite(f[static_cast<std::size_t>(i)])) return false;
        return true;
    };
    evaluateAll(false);
    if (!finite(values)) return KOBWBSolverBadStart;

    KOBWBSolverStatus status = KOBWBSolverNotConverged;
    // Square systems try the undamped Newton step first.
    const bool square = static_cast<std::size_t>(m) == n;
    const double firstLambda = square ? 0.0 : 1e-12;
    double lambda = firstLambda;
    double norm = SquaredNorm(values, m);
    // Once within the tolerance, one more step takes a Newton iteration's quadratic
    // convergence to the rounding of the equalities, when it reduces the residual.
    bool polished = false;
    bool restarted = false;
    for (;;) {
        m_residual = scaledResidual(values);
        if (m_residual <= m_tolerance) {
            status = KOBWBSolverSolved;
            // A residual within a few roundings of its terms is as small as a step
            // can make it.
            if (polished || m_residual <= 8 * std::numeric_limits<double>::epsilon()) break;
            polished = true;
        }
        if (m_iterations >= m_maxIterations) break;
        if (n == 0) {
            status = KOBWBSolverInconsistent;
            break;
        }
        ++m_iterations;
        s.step->SetJacobian(values.data() + checked);
        bool moved = false;
        double trialNorm = norm;
        // Damping grows until a step reduces the residual; past the last damping no
        // change of the variables does: the point is a least-squares point. The step
        // that polishes a solution is taken whole, undamped, or not at all.
        const bool polishing = status == KOBWBSolverSolved;
        const double lastLambda = polishing ? lambda : 1e8;
        for (; lambda <= lastLambda && lambda < 1e8 && !moved; lambda = lambda == 0.0 ? 1e-12 : lambda * 100) {
            const double normalScale = lambda == 0.0 ? 0.0 : s.step->NormalScale();
            const double mu = lambda * (normalScale > 0 ? normalScale : 1.0);
            if (!s.step->Step(values.data(), mu, dx.data())) continue;
            for (double alpha = 1.0; alpha > (polishing ? 0.75 : 1e-3) && !moved; alpha /= 2) {
                for (std::size_t j = 0; j < n; ++j) trial[j] = std::clamp(x[j] + alpha * dx[j], lower[j], upper[j]);
                s.evaluator.Evaluate(trial.data(), trialValues.data(), checked);
                trialNorm = SquaredNorm(trialValues, m);
                if (!finite(trialValues) || trialNorm >= norm) continue;
                bool keeps = true;
                for (int k = m; k < checked && keeps; ++k) {
                    const KOBWBEquationType type = s.inequalities[static_cast<std::size_t>(k - m)]->GetType();
                    keeps = !SolverSystem::Holds(type, values[static_cast<std::size_t>(k)], m_tolerance) ||
                            SolverSystem::Holds(type, trialValues[static_cast<std::size_t>(k)], m_tolerance);
                }
                moved = keeps;
            }
        }
        // A step that takes off less than a billionth of the residual's square norm
        // ends the solve at a least-squares point: Gauss-Newton converges there only
        // linearly, slowly where a long chain of constraints is nearly flexible, and
        // the residual's support, which names the conflict, is settled long before.
        const bool stalled = moved && !polishing && trialNorm > norm * (1 - 1e-9);
        if (moved) {
            lambda = square ? 0.0 : std::max(lambda / 1e4, 1e-14);
            x.swap(trial);
            evaluateAll(true);
            norm = SquaredNorm(values, m);
            if (!stalled) continue;
        }
        if (status == KOBWBSolverSolved) break;
        if (!restarted) {
            // A stop short of the equalities may be a saddle of the residual rather
            // than its least-squares point: an equality with no derivative there
            // (x^2 = 2 at x = 0), or a start on a line the steps cannot leave
            // (x^2 + y^2 = 25 and x - y = 1 from x = y = 0, where the two rows of
            // the Jacobian stay parallel). The solve goes on once from a point moved
            // a little off it, and ends where it stops again.
            restarted = true;
            for (std::size_t j = 0; j < n; ++j) {
                const double shift = 1e-4 * std::max(1.0, std::fabs(x[j])) * (j % 2 ? -1.0 : 1.0) * (1.0 + j % 7 / 7.0);
                x[j] = std::clamp(x[j] + shift, lower[j], upper[j]);
            }
            lambda = firstLambda;
            evaluateAll(false);
            if (!finite(values)) break;
            norm = SquaredNorm(values, m);
            continue;
        }
        status = KOBWBSolverInconsistent;
        break;
    }
    m_residual = scaledResidual(values);
    for (int k = m; k < checked; ++k) {
        KOBWBEquation* inequality = s.inequalities[static_cast<std::size_t>(k - m)];
        if (!SolverSystem::Holds(inequality->GetType(), values[static_cast<std::size_t>(k)], m_tolerance))
            m_violated.push_back(inequality);
    }
    if (status == KOBWBSolverSolved && !m_violated.empty()) status = KOBWBSolverInconsistent;
    if (status == KOBWBSolverInconsistent) NameConflicts(values, scale);
    for (std::size_t j = 0; j < n; ++j) s.unknowns[j]->SetExprValue(KOBWBValue(x[j]));
    return status;
}

void KOBWBSolver::NameConflicts(const std::vector<double>& values, const std::vector<double>& scale) {
    // At a least-squares point the residual is a dependency of the Jacobian's rows:
    // its support is the group of equalities that cannot hold together.
    const System& s = *m_system;
    double largest = 0.0;
    for (int i = 0; i < s.EqualityCount(); ++i) largest = std::max(largest, std::fabs(values[static_cast<std::size_t>(i)]));
    const double threshold = 1e-6 * largest;
    for (int i = 0; i < s.EqualityCount(); ++i) {
        const double r = std::fabs(values[static_cast<std::size_t>(i)]);
        if (r > threshold && r > m_tolerance * scale[static_cast<std::size_t>(i)])
            m_conflicting.push_back(s.equalities[static_cast<std::size_t>(i)]);
    }
}
