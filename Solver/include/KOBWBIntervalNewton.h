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

private:
    std::vector<KOBWBExpression*> m_roots;
    std::vector<KOBWBVariable*> m_unknowns;
    KOBWBJacobian m_jacobian;
};

#endif
