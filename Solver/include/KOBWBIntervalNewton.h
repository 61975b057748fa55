#ifndef KOBWBIntervalNewton_h
#define KOBWBIntervalNewton_h

#include "KOBWBJacobian.h"
#include "KOBWBValue.h"
#include "KOBWBxExport.h"

#include <vector>

class KOBWBExpression;
class KOBWBFactory;
class KOBWBVariable;

// What one interval Newton step found in a box.
enum KOBWBNewtonOutcome {
    // No point of the box solves the equations.
    KOBWBNewtonEmpty = 0,
    // The box was narrowed (or left as it was); nothing is proved.
    KOBWBNewtonNarrowed = 1,
    // The box holds exactly one solution, which lies in the narrowed box.
    KOBWBNewtonProved = 2
};

// The interval Newton operator of a square system F(x) = 0 (as many equalities as
// unknowns), in the Hansen-Sengupta form: with c the box's midpoint, J(X) the
// Jacobian over the box and a real preconditioner Y, each unknown i is narrowed to
//   c_i - (Y F(c) + sum over j != i of (Y J(X))_ij (X_j - c_j)) / (Y J(X))_ii
// one after the other (Gauss-Seidel, using the unknowns already narrowed). When every
// image lies strictly inside the box, the box holds exactly one solution. Y is the
// inverse of the midpoint Jacobian for systems of up to denseLimit unknowns, and the
// inverse of its diagonal above (linear in the size; enough for diagonally dominant
// systems).
//
// J(X) is the factory's own derivative graphs evaluated over the box and F(c) its
// equations evaluated at the midpoint, with the library's interval evaluation; both
// are widened outward by one unit in the last place per bound, and every operation
// of the step rounds outward, so that a proof holds for the real solution, not only
// within rounding. Evaluating sets the unknowns' values (SetExprValue); the caller
// sets them back.
class KOBWBX_API KOBWBIntervalNewton {
public:
    static constexpr int denseLimit = 60;

    // The equalities' roots and the unknowns, as many of each; false when they are not
    // square, null, or an equality has no derivative.
    bool Make(int count, KOBWBExpression* const* roots, KOBWBVariable* const* unknowns);
    int GetNbOfUnknowns() const { return static_cast<int>(m_unknowns.size()); }

    // Narrows box (one interval per unknown, in order) by one step.
    KOBWBNewtonOutcome Step(std::vector<KOBWBRealInterval>& box);

    // The same operator one equation at a time, for large sparse systems where a step
    // over the whole system costs too much to be made after every change of a box. An
    // equation i of the unknowns X, linearised around the midpoint c of their
    // intervals (mean value form),
    //   F_i(c) + sum over j of J_ij(X) (X_j - c_j) contains 0,
    // narrows each of its unknowns j whose derivative J_ij(X) does not hold 0 to
    //   c_j - (F_i(c) + sum over l != j of J_il(X) (X_l - c_l)) / J_ij(X).
    // The revisions start from the equations of the unknowns listed in from and go on
    // through the equations of every unknown narrowed by more than ratio of its width,
    // at most budget revisions. The unknowns' values must be the box's intervals; the
    // narrowed ones are written there too. Those narrowed are added to narrowed (each
    // once); Empty when an image misses its interval (no solution in the box),
    // Narrowed otherwise: nothing is proved.
    KOBWBNewtonOutcome Propagate(std::vector<KOBWBRealInterval>& box, const std::vector<int>& from, double ratio,
                                 long budget, std::vector<int>& narrowed);
    // Equation revisions made by the last Propagate.
    long GetNbOfRevisions() const { return m_revisions; }

private:
    // Revises equation i, adding the unknowns it narrows to narrowed; false when an
    // unknown's interval became empty.
    bool ReviseRow(int i, std::vector<KOBWBRealInterval>& box, double ratio, std::vector<int>& narrowed);
    void QueueRowsOf(int unknown);

    std::vector<KOBWBExpression*> m_roots;
    std::vector<KOBWBVariable*> m_unknowns;
    KOBWBJacobian m_jacobian;
    // The Jacobian's entries of each row (equation), made on the first Propagate.
    std::vector<std::vector<int>> m_rowEntries;
    std::vector<int> m_queue;
    std::vector<char> m_queued;
    // The unknowns listed in the narrowed list of the running Propagate.
    std::vector<char> m_marked;
    long m_revisions = 0;
};

#endif
