#include "KOBWBBranchAndPrune.h"

#include "KOBWBBoxContraction.h"
#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBIntervalNewton.h"
#include "KOBWBLimits.h"
#include "KOBWBUnknowns.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

const char* KOBWBGetSearchStatusText(KOBWBSearchStatus status) {
    switch (status) {
    case KOBWBSearchComplete: return "complete";
    case KOBWBSearchIncomplete: return "incomplete";
    case KOBWBSearchNeedsBounds: return "needs bounds";
    case KOBWBSearchBadArguments: return "bad arguments";
    }
    return "";
}

namespace {

using Box = std::vector<KOBWBRealInterval>;

// The unknown of the widest interval.
std::size_t Widest(const Box& box) {
    std::size_t widest = 0;
    for (std::size_t j = 1; j < box.size(); ++j)
        if (box[j].upper - box[j].lower > box[widest].upper - box[widest].lower) widest = j;
    return widest;
}

double Width(const Box& box) {
    const KOBWBRealInterval& widest = box[Widest(box)];
    return widest.upper - widest.lower;
}

// Where a box is split: a little off the middle, so that a solution at the centre of
// a symmetric domain does not fall on the cut.
constexpr double splitRatio = 0.4917;
// Interval Newton steps are repeated while they narrow a box by more than this part.
constexpr double newtonProgress = 0.1;
constexpr int newtonSteps = 10;

// A box of the work list: its intervals, the unknown whose split made it (-1 for the
// domains), and the equation revisions spent on its path since the last step of
// interval Newton over the whole system.
struct Pending {
    Box box;
    int split = -1;
    long credit = 0;
};

} // namespace

KOBWBSearchStatus KOBWBBranchAndPrune::Run() {
    m_unknowns.clear();
    m_solutions.clear();
    m_undecided.clear();
    m_boxes = 0;
    m_status = KOBWBSearchBadArguments;
    if (!(m_minWidth > 0) || m_maxBoxes <= 0 || !(m_maxSeconds > 0)) return m_status;

    std::vector<KOBWBExpression*> roots;
    for (KOBWBEquation* equation = m_factory.GetFirstEquation(); equation; equation = m_factory.GetNextEquation(equation))
        if (equation->GetType() == KOBWBEqEqual && equation->GetRoot()) roots.push_back(equation->GetRoot());
    m_unknowns = kobwb::EqualityUnknowns(m_factory, roots);
    if (roots.empty() || m_unknowns.empty()) return m_status;

    Box initial;
    std::vector<KOBWBValue> saved;
    for (KOBWBVariable* variable : m_unknowns) {
        saved.push_back(variable->GetExprValue());
        const KOBWBRealInterval domain = variable->GetExprValue().GetAsRealInterval();
        if (std::isnan(domain.lower) || std::isnan(domain.upper) || domain.lower > domain.upper) return m_status;
        if (!(domain.lower > -KOBWBMaxReal) || !(domain.upper < KOBWBMaxReal)) {
            m_status = KOBWBSearchNeedsBounds;
            return m_status;
        }
        initial.push_back(domain);
    }
    KOBWBIntervalNewton newton;
    const bool square = roots.size() == m_unknowns.size() &&
                        newton.Make(static_cast<int>(roots.size()), roots.data(), m_unknowns.data());
    // Above the size where interval Newton is preconditioned by the inverse of the
    // Jacobian's diagonal, its operator works on each equation alone and is propagated
    // one equation at a time, as the contractor is.
    const bool rowwise = square && newton.GetNbOfUnknowns() > KOBWBIntervalNewton::denseLimit;
    kobwb::BoxContraction contraction(m_factory, m_unknowns, rowwise ? &newton : nullptr);
    // A step of interval Newton over the whole system costs about a revision of every
    // equation: it is made once the revisions spent on a box's path since the last step
    // reach the number of equations, so that it never costs more than the contraction.
    const long newtonCost = static_cast<long>(roots.size());

    const auto start = std::chrono::steady_clock::now();
    std::vector<Pending> work{{initial, -1, newtonCost}};
    m_status = KOBWBSearchComplete;
    while (!work.empty()) {
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (m_boxes >= m_maxBoxes || seconds > m_maxSeconds) {
            m_status = KOBWBSearchIncomplete;
            for (Pending& left : work) m_undecided.push_back({std::move(left.box), false});
            break;
        }
        Pending item = std::move(work.back());
        work.pop_back();
        ++m_boxes;
        Box& box = item.box;
        if (!contraction.Contract(box, item.split, item.credit)) continue;

        // Below the width, a box may no longer hold its solution within the rounding
        // of the evaluation: it is left to the widened box below.
        KOBWBNewtonOutcome outcome = KOBWBNewtonNarrowed;
        if (square && item.credit >= newtonCost && Width(box) >= m_minWidth) {
            item.credit = 0;
            contraction.Forget();
            for (int step = 0; step < newtonSteps; ++step) {
                const double before = Width(box);
                outcome = newton.Step(box);
                if (outcome == KOBWBNewtonEmpty) break;
                // A proved box is narrowed on towards the width asked for.
                if (outcome == KOBWBNewtonProved && Width(box) < m_minWidth) break;
                if (Width(box) > (1 - newtonProgress) * before) break;
            }
        }
        if (outcome == KOBWBNewtonEmpty) continue;
        if (outcome == KOBWBNewtonProved) {
            // Newton steps keep the solution and narrow its box towards the width.
            for (int step = 0; step < 4 * newtonSteps && Width(box) >= m_minWidth; ++step) {
                const double before = Width(box);
                if (newton.Step(box) == KOBWBNewtonEmpty || Width(box) > (1 - newtonProgress / 10) * before) break;
            }
            AddSolution(box);
            continue;
        }
        const std::size_t widest = Widest(box);
        if (Width(box) < m_minWidth) {
            // A box narrowed to a point (an unknown pinned by a linear equation) or
            // below the width cannot hold its solution strictly inside: interval
            // Newton is tried once more on the box widened by the width.
            contraction.Forget();
            if (square && ProvedInflated(newton, box)) continue;
            m_undecided.push_back({box, false});
            continue;
        }
        const KOBWBRealInterval cut = box[widest];
        const double at = cut.lower + splitRatio * (cut.upper - cut.lower);
        Pending upper{box, static_cast<int>(widest), item.credit};
        upper.box[widest].lower = at;
        box[widest].upper = at;
        item.split = static_cast<int>(widest);
        work.push_back(std::move(upper));
        work.push_back(std::move(item));
    }
    for (std::size_t j = 0; j < m_unknowns.size(); ++j) m_unknowns[j]->SetExprValue(saved[j]);
    return m_status;
}

bool KOBWBBranchAndPrune::ProvedInflated(KOBWBIntervalNewton& newton, const std::vector<KOBWBRealInterval>& box) {
    std::vector<KOBWBRealInterval> inflated(box);
    for (KOBWBRealInterval& x : inflated) {
        const double margin = std::max(m_minWidth, 1e-12 * std::max(std::fabs(x.lower), std::fabs(x.upper)));
        x = {x.lower - margin, x.upper + margin};
    }
    for (int step = 0; step < newtonSteps; ++step) {
        const KOBWBNewtonOutcome outcome = newton.Step(inflated);
        if (outcome == KOBWBNewtonEmpty) return false;
        if (outcome == KOBWBNewtonProved) {
            AddSolution(inflated);
            return true;
        }
    }
    return false;
}

void KOBWBBranchAndPrune::AddSolution(const std::vector<KOBWBRealInterval>& box) {
    // Boxes proved to hold one solution each that meet hold the same one (a widened
    // box may reach into a neighbour's): the solution is kept once, in the smaller box.
    for (KOBWBSearchBox& known : m_solutions) {
        bool meet = true;
        for (std::size_t j = 0; j < box.size() && meet; ++j)
            meet = box[j].lower <= known.box[j].upper && known.box[j].lower <= box[j].upper;
        if (!meet) continue;
        if (Width(box) < Width(known.box)) known.box = box;
        return;
    }
    m_solutions.push_back({box, true});
}
