#include "KOBWBBoxContraction.h"

#include "KOBWBFactory.h"
#include "KOBWBIntervalNewton.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace kobwb {

namespace {

constexpr KOBWBRealInterval notKnown{std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN()};

bool Same(const KOBWBRealInterval& a, const KOBWBRealInterval& b) { return a.lower == b.lower && a.upper == b.upper; }

} // namespace

BoxContraction::BoxContraction(KOBWBFactory& factory, const std::vector<KOBWBVariable*>& unknowns,
                               KOBWBIntervalNewton* rows)
    : m_contractor(factory), m_unknowns(unknowns), m_rows(rows), m_current(unknowns.size(), notKnown) {}

void BoxContraction::Forget() { std::fill(m_current.begin(), m_current.end(), notKnown); }

void BoxContraction::Load(const std::vector<KOBWBRealInterval>& box) {
    for (std::size_t j = 0; j < box.size(); ++j)
        if (!Same(box[j], m_current[j])) {
            m_unknowns[j]->SetExprValue(KOBWBValue(box[j]));
            m_current[j] = box[j];
        }
}

void BoxContraction::ReadBack(std::vector<KOBWBRealInterval>& box) {
    for (std::size_t j = 0; j < box.size(); ++j) {
        const KOBWBRealInterval x = m_unknowns[j]->GetExprValue().GetAsRealInterval();
        if (!Same(x, box[j])) m_changed.push_back(static_cast<int>(j));
        box[j] = m_current[j] = x;
    }
}

bool BoxContraction::ContractFrom(const std::vector<int>& unknowns, std::vector<KOBWBRealInterval>& box,
                                  long& revisions) {
    m_from.clear();
    for (const int j : unknowns) m_from.push_back(m_unknowns[static_cast<std::size_t>(j)]);
    const KOBWBContractionStatus status = m_contractor.Propagate(static_cast<int>(m_from.size()), m_from.data());
    revisions += m_contractor.GetNbOfRevisions();
    ReadBack(box);
    return status != KOBWBContractionNoSolution;
}

bool BoxContraction::Contract(std::vector<KOBWBRealInterval>& box, int split, long& revisions) {
    Load(box);
    m_changed.clear();
    if (split >= 0) {
        m_changed.push_back(split);
        if (!ContractFrom(m_changed, box, revisions)) return false;
    } else {
        const KOBWBContractionStatus status = m_contractor.Run();
        revisions += m_contractor.GetNbOfRevisions();
        ReadBack(box);
        if (status == KOBWBContractionNoSolution) return false;
        m_changed.resize(box.size());
        std::iota(m_changed.begin(), m_changed.end(), 0);
    }
    if (!m_rows) return true;
    m_narrowed.clear();
    const long budget = 100L * static_cast<long>(box.size());
    const KOBWBNewtonOutcome outcome = m_rows->Propagate(box, m_changed, m_contractor.GetRatio(), budget, m_narrowed);
    revisions += m_rows->GetNbOfRevisions();
    // Interval Newton wrote the unknowns it narrowed.
    for (const int j : m_narrowed) m_current[static_cast<std::size_t>(j)] = box[static_cast<std::size_t>(j)];
    if (outcome == KOBWBNewtonEmpty) return false;
    if (m_narrowed.empty()) return true;
    m_changed.clear();
    return ContractFrom(m_narrowed, box, revisions);
}

} // namespace kobwb
