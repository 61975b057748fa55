#ifndef KOBWBSolver_h
#define KOBWBSolver_h

#include "KOBWBInterval.h"
#include "KOBWBxExport.h"

#include <memory>
#include <vector>

class KOBWBEquation;
class KOBWBFactory;
class KOBWBVariable;

// What a solve ended with.
enum KOBWBSolverStatus {
    // Every equality holds within the tolerance, and every inequality.
    KOBWBSolverSolved = 0,
    // The iterations ran out, or the steps stopped making progress away from a
    // least-squares point; the variables hold the best point found.
    KOBWBSolverNotConverged = 1,
    // The equalities cannot hold together near the start: the steps reached a point
    // where no change of the variables reduces the residual, and it is not 0. The
    // conflicting equations are named (GetConflictingEquations).
    KOBWBSolverInconsistent = 2,
    // The factory has no equality to solve; nothing changed.
    KOBWBSolverNoEquations = 3,
    // A start value is NaN or infinite; nothing changed.
    KOBWBSolverBadStart = 4,
    // An equality has no derivative by one of its variables (a black box without
    // derivative, abs, min, a condition); nothing changed.
    KOBWBSolverNoDerivative = 5
};

// A short text of the status: "solved", "not converged", "inconsistent", "no
// equations", "bad start", "no derivative"; "" for other codes.
KOBWBX_API const char* KOBWBGetSolverStatusText(KOBWBSolverStatus status);

// How a solve prepares the system before its Newton steps.
enum KOBWBSolverPresolve {
    KOBWBPresolveNone = 0,
    // The symbolic transformations first eliminate the variables of linear equalities
    // (mode 2|4): the factory's equations are rewritten in place, and the eliminated
    // variables get their values from their expressions after the solve.
    KOBWBPresolveTransformations = 1,
    // The contractor (KOBWBContractor) first narrows the unknowns' domains, a start
    // without bounds taken as every real: the narrowed domains bound the solve, and
    // each start is moved into its domain. Nothing of the factory changes.
    KOBWBPresolveContractor = 2
};

// Moves a factory's variables, from their current values, until its equalities hold;
// or says why that cannot be done.
//
// The unknowns are the variables that occur in the equalities (= 0), less those fixed
// (KOBWBVariable::Fix, or Fix here). A variable's start is its value: a number as it
// is, a bounded interval by its midpoint, and an interval also bounds the variable
// during the solve; a variable without bounds starts at 0 when its value is every real.
//
// Steps: Gauss-Newton on the equalities with the least change of the variables: each
// step is the shortest one that solves the linearised equalities, damped as in
// Levenberg-Marquardt where the Jacobian is singular or a full step does not reduce the
// residual. A system with fewer equalities than unknowns is so solved at the solution
// nearest the start (dragging one point moves as little else as possible). A step that
// would break an inequality that held, or leave a variable's bounds, is shortened. The
// Jacobian is made once per system from the factory's own derivatives and evaluated in
// doubles (KOBWBPointEvaluator), equalities of one shape (the distances of a sketch)
// differentiated and compiled once. A square system's Newton step is a sparse LU
// solve (KLU); damped and least-change steps a sparse Cholesky factorisation of the
// normal equations of the smaller side (CHOLMOD), both through Eigen.
//
// An equality holds when |r| <= tolerance * max(1, m), where r is its root's value and m
// the sum of the magnitudes of the root's terms (the scale of its rounding). Solved
// values are written back to the variables as single reals; when nothing was solved
// (NoEquations, BadStart, NoDerivative) the variables keep their values.
//
// Diagnosis (Diagnose, after a solve or at the current values): degrees of freedom,
// structural (a maximum matching of the equality-variable incidence, and its
// Dulmage-Mendelsohn parts) and numeric (rank of the Jacobian, by a rank-revealing
// sparse QR, SPQR); which variables are still free to move; which equalities are
// redundant (dependent on others, and consistent with them) and which conflict. A
// conflicting set is the support of the residual at the least-squares point: there the
// residual is a dependency of the Jacobian's rows, so it names the equalities of the
// smallest rigid group that cannot hold together, not every equation the group touches.
class KOBWBX_API KOBWBSolver {
public:
    explicit KOBWBSolver(KOBWBFactory& factory);
    ~KOBWBSolver();
    KOBWBSolver(const KOBWBSolver&) = delete;
    KOBWBSolver& operator=(const KOBWBSolver&) = delete;

    // Keeps a variable at its value in this solver's solves (or releases it); the
    // variable's own Fix flag is kept as well. Null is ignored.
    void Fix(KOBWBVariable* variable, bool fixed = true);
    // Relative tolerance of the equalities (default 1e-10); values below the library's
    // absolute precision are raised to it.
    double GetTolerance() const { return m_tolerance; }
    void SetTolerance(double tolerance);
    // Largest number of Newton steps of one solve (default 100; at least 1).
    int GetMaxIterations() const { return m_maxIterations; }
    void SetMaxIterations(int iterations) { m_maxIterations = iterations < 1 ? 1 : iterations; }
    KOBWBSolverPresolve GetPresolve() const { return m_presolve; }
    void SetPresolve(KOBWBSolverPresolve presolve) { m_presolve = presolve; }

    KOBWBSolverStatus Solve();

    // The last solve.
    KOBWBSolverStatus GetStatus() const { return m_status; }
    int GetNbOfIterations() const { return m_iterations; }
    // The largest scaled residual |r| / max(1, m) of the equalities at the end.
    double GetResidual() const { return m_residual; }
    // Inequalities that do not hold at the end.
    const std::vector<KOBWBEquation*>& GetViolatedInequalities() const { return m_violated; }
    // Equalities that cannot hold together (after an inconsistent solve, or Diagnose).
    const std::vector<KOBWBEquation*>& GetConflictingEquations() const { return m_conflicting; }

    // Degrees of freedom and dependencies at the variables' current values.
    void Diagnose();
    int GetNbOfUnknowns() const { return m_unknownCount; }
    // Unknowns less the size of a maximum matching of equalities to unknowns.
    int GetStructuralDof() const { return m_structuralDof; }
    // Unknowns less the rank of the Jacobian.
    int GetNumericDof() const { return m_numericDof; }
    int GetRank() const { return m_rank; }
    // Unknowns that can still move while every equality keeps its value (they have a
    // part in the Jacobian's null space).
    const std::vector<KOBWBVariable*>& GetFreeVariables() const { return m_free; }
    // Equalities that depend on others and hold with them.
    const std::vector<KOBWBEquation*>& GetRedundantEquations() const { return m_redundant; }
    // Equalities in a structurally over-determined part (more equalities than the
    // unknowns they hold).
    const std::vector<KOBWBEquation*>& GetOverDeterminedEquations() const { return m_overDetermined; }

private:
    struct System;

    // What is read of the factory, read again when its system or the variables' own
    // Fix flags changed.
    System& CurrentSystem();
    KOBWBSolverStatus Newton();
    // The unknowns' domains narrowed by the contractor, in m_narrowed; none when it
    // finds no point of them that satisfies the system.
    void NarrowWithContractor();
    void NameConflicts(const std::vector<double>& values, const std::vector<double>& scale);

    KOBWBFactory& m_factory;
    std::vector<KOBWBVariable*> m_fixed;
    double m_tolerance = 1e-10;
    int m_maxIterations = 100;
    KOBWBSolverPresolve m_presolve = KOBWBPresolveNone;
    std::unique_ptr<System> m_system;
    // Bounds of the unknowns from a presolve, by unknown; empty without one.
    std::vector<KOBWBRealInterval> m_narrowed;

    KOBWBSolverStatus m_status = KOBWBSolverNoEquations;
    int m_iterations = 0;
    double m_residual = 0.0;
    std::vector<KOBWBEquation*> m_violated;
    std::vector<KOBWBEquation*> m_conflicting;
    int m_unknownCount = 0;
    int m_structuralDof = 0;
    int m_numericDof = 0;
    int m_rank = 0;
    std::vector<KOBWBVariable*> m_free;
    std::vector<KOBWBEquation*> m_redundant;
    std::vector<KOBWBEquation*> m_overDetermined;
};

#endif
