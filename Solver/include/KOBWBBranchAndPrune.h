#ifndef KOBWBBranchAndPrune_h
#define KOBWBBranchAndPrune_h

#include "KOBWBValue.h"
#include "KOBWBxExport.h"

#include <vector>

class KOBWBFactory;
class KOBWBIntervalNewton;
class KOBWBVariable;

// How a search for every solution ended.
enum KOBWBSearchStatus {
    // Every box was decided: the solutions and undecided boxes listed are all there is.
    KOBWBSearchComplete = 0,
    // The box or time limit stopped the search; boxes still to search are listed
    // with the undecided ones.
    KOBWBSearchIncomplete = 1,
    // An unknown's domain is unbounded: the search needs bounds.
    KOBWBSearchNeedsBounds = 2,
    // Nothing to search: no equality, or a width, limit or domain that is NaN or not
    // positive.
    KOBWBSearchBadArguments = 3
};

// A short text of the status: "complete", "incomplete", "needs bounds", "bad
// arguments"; "" for other codes.
KOBWBX_API const char* KOBWBGetSearchStatusText(KOBWBSearchStatus status);

// A box of the search: an interval per unknown, in the order of GetUnknowns.
struct KOBWBSearchBox {
    std::vector<KOBWBRealInterval> box;
    // Holds exactly one solution (interval Newton); false for a box left undecided.
    bool proved = false;
};

// Finds every solution of a factory's equalities in the unknowns' domains, each
// enclosed in a small box, by branch and prune.
//
// The unknowns are the variables of the equalities that are not fixed; each needs a
// bounded domain (its value). A work list of boxes starts with the domains. Each box
// is contracted by the factory's contractor (HC4, every equation and inequality) and,
// when there are as many equalities as unknowns, by interval Newton steps
// (KOBWBIntervalNewton) while they narrow it. A box costs what changed in it: a half
// of a split box is propagated from the unknown cut, above 60 unknowns interval Newton
// is also propagated one equation at a time, and its step over the whole system is
// made once the revisions of equations on the box's path pay for it (as many as there
// are equations). A box is dropped only when one of them
// proves that no point of it satisfies the equations, it is a solution when interval
// Newton proves it holds exactly one, and it is undecided when narrower than the
// width; otherwise it is split across its widest unknown, a little off the middle so
// that a solution on a symmetric split is not cut in two. A system with more or fewer
// equalities than unknowns is enclosed as far as the splits go and never proved. A
// tangent or double root, where the Jacobian is singular, stays undecided.
//
// The search sets the variables' values while it works and gives them back their
// domains at the end.
class KOBWBX_API KOBWBBranchAndPrune {
public:
    explicit KOBWBBranchAndPrune(KOBWBFactory& factory) : m_factory(factory) {}

    // Boxes narrower than this in every unknown are undecided (default 1e-8).
    void SetMinWidth(double width) { m_minWidth = width; }
    // Limits of one search: boxes processed (default 100,000) and seconds (default 60).
    void SetMaxBoxes(long boxes) { m_maxBoxes = boxes; }
    void SetMaxSeconds(double seconds) { m_maxSeconds = seconds; }

    KOBWBSearchStatus Run();

    const std::vector<KOBWBVariable*>& GetUnknowns() const { return m_unknowns; }
    const std::vector<KOBWBSearchBox>& GetSolutions() const { return m_solutions; }
    const std::vector<KOBWBSearchBox>& GetUndecided() const { return m_undecided; }
    long GetNbOfBoxes() const { return m_boxes; }
    bool IsComplete() const { return m_status == KOBWBSearchComplete; }

private:
    // Whether interval Newton proves a solution in the box widened by the width; the
    // solution is then kept.
    bool ProvedInflated(KOBWBIntervalNewton& newton, const std::vector<KOBWBRealInterval>& box);
    void AddSolution(const std::vector<KOBWBRealInterval>& box);

    KOBWBFactory& m_factory;
    double m_minWidth = 1e-8;
    long m_maxBoxes = 100000;
    double m_maxSeconds = 60.0;
    KOBWBSearchStatus m_status = KOBWBSearchBadArguments;
    std::vector<KOBWBVariable*> m_unknowns;
    std::vector<KOBWBSearchBox> m_solutions;
    std::vector<KOBWBSearchBox> m_undecided;
    long m_boxes = 0;
};

#endif
