#include "KOBWBIntervalNewton.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBLimits.h"
#include "KOBWBOutwardInterval.h"
#include "KOBWBVariable.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using kobwb::OutwardInterval;

namespace {

// The value of an expression as an interval widened by one unit in the last place per
// bound; empty when the value is Nil.
OutwardInterval WidenedValue(KOBWBExpression* expression) {
    const KOBWBRealInterval value = expression->GetValue().GetAsRealInterval();
    if (!(value.lower <= value.upper)) return {1.0, 0.0};
    const double lower = value.lower <= -KOBWBMaxReal ? -std::numeric_limits<double>::infinity() : value.lower;
    const double upper = value.upper >= KOBWBMaxReal ? std::numeric_limits<double>::infinity() : value.upper;
    return OutwardInterval::Widened(lower, upper);
}

using Row = std::vector<std::pair<int, OutwardInterval>>;

// At most this many unknowns of one equation are narrowed by it one equation at a
// time; an equation with more is left as it is there.
constexpr std::size_t rowLimit = 64;

} // namespace

bool KOBWBIntervalNewton::Make(int count, KOBWBExpression* const* roots, KOBWBVariable* const* unknowns) {
    *this = KOBWBIntervalNewton();
    if (count <= 0 || !roots || !unknowns) return false;
    for (int i = 0; i < count; ++i)
        if (!roots[i] || !unknowns[i]) return false;
    if (!m_jacobian.Make(count, roots, count, unknowns) || !m_jacobian.GetRowsWithoutDerivative().empty()) {
        *this = KOBWBIntervalNewton();
        return false;
    }
    m_roots.assign(roots, roots + count);
    m_unknowns.assign(unknowns, unknowns + count);
    return true;
}

KOBWBNewtonOutcome KOBWBIntervalNewton::Step(std::vector<KOBWBRealInterval>& box) {
    const int n = GetNbOfUnknowns();
    if (n == 0 || static_cast<int>(box.size()) != n) return KOBWBNewtonNarrowed;
    KOBWBFactory& factory = m_roots.front()->GetFactory();
    std::vector<double> c(static_cast<std::size_t>(n));
    for (int j = 0; j < n; ++j) {
        const KOBWBRealInterval& x = box[static_cast<std::size_t>(j)];
        if (!(x.lower <= x.upper)) return KOBWBNewtonEmpty;
        if (!std::isfinite(x.lower) || !std::isfinite(x.upper)) return KOBWBNewtonNarrowed;
        c[static_cast<std::size_t>(j)] = x.lower / 2 + x.upper / 2;
    }
    // F at the midpoint, J over the box.
    for (int j = 0; j < n; ++j) m_unknowns[static_cast<std::size_t>(j)]->SetExprValue(KOBWBValue(c[static_cast<std::size_t>(j)]));
    factory.ResetBuffer();
    factory.EvaluateExpressions(n, m_roots.data());
    std::vector<OutwardInterval> f(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        f[static_cast<std::size_t>(i)] = WidenedValue(m_roots[static_cast<std::size_t>(i)]);
        if (f[static_cast<std::size_t>(i)].IsEmpty()) return KOBWBNewtonNarrowed;
    }
    for (int j = 0; j < n; ++j) m_unknowns[static_cast<std::size_t>(j)]->SetExprValue(KOBWBValue(box[static_cast<std::size_t>(j)]));
    factory.ResetBuffer();
    const std::vector<KOBWBExpression*>& entries = m_jacobian.GetEntries();
    factory.EvaluateExpressions(static_cast<int>(entries.size()), entries.data());
    std::vector<Row> jacobianRows(static_cast<std::size_t>(n));
    const std::vector<int>& starts = m_jacobian.GetColumnStarts();
    for (int j = 0; j < n; ++j)
        for (int k = starts[static_cast<std::size_t>(j)]; k < starts[static_cast<std::size_t>(j) + 1]; ++k) {
            const OutwardInterval value = WidenedValue(entries[static_cast<std::size_t>(k)]);
            if (value.IsEmpty()) return KOBWBNewtonNarrowed;
            jacobianRows[static_cast<std::size_t>(m_jacobian.GetRow(k))].emplace_back(j, value);
        }

    // The preconditioned system M = Y J(X), b = Y F(c).
    std::vector<Row> rows(static_cast<std::size_t>(n));
    std::vector<OutwardInterval> b(static_cast<std::size_t>(n));
    if (n <= denseLimit) {
        Eigen::MatrixXd middle = Eigen::MatrixXd::Zero(n, n);
        for (int i = 0; i < n; ++i)
            for (const auto& entry : jacobianRows[static_cast<std::size_t>(i)]) {
                const double mid = entry.second.Mid();
                middle(i, entry.first) = std::isfinite(mid) ? mid : 0.0;
            }
        const Eigen::FullPivLU<Eigen::MatrixXd> lu(middle);
        const Eigen::MatrixXd y = lu.isInvertible() ? Eigen::MatrixXd(lu.inverse()) : Eigen::MatrixXd::Identity(n, n);
        for (int i = 0; i < n; ++i) {
            std::vector<OutwardInterval> sum(static_cast<std::size_t>(n), OutwardInterval::Point(0.0));
            OutwardInterval bi = OutwardInterval::Point(0.0);
            for (int k = 0; k < n; ++k) {
                const double yik = y(i, k);
                if (yik == 0.0) continue;
                const OutwardInterval factor = OutwardInterval::Point(yik);
                bi = bi + factor * f[static_cast<std::size_t>(k)];
                for (const auto& entry : jacobianRows[static_cast<std::size_t>(k)])
                    sum[static_cast<std::size_t>(entry.first)] = sum[static_cast<std::size_t>(entry.first)] + factor * entry.second;
            }
            b[static_cast<std::size_t>(i)] = bi;
            for (int j = 0; j < n; ++j) rows[static_cast<std::size_t>(i)].emplace_back(j, sum[static_cast<std::size_t>(j)]);
        }
    } else {
        for (int i = 0; i < n; ++i) {
            double diagonal = 0.0;
            for (const auto& entry : jacobianRows[static_cast<std::size_t>(i)])
                if (entry.first == i) diagonal = entry.second.Mid();
            const OutwardInterval factor = OutwardInterval::Point(diagonal != 0.0 && std::isfinite(diagonal) ? 1.0 / diagonal : 1.0);
            b[static_cast<std::size_t>(i)] = factor * f[static_cast<std::size_t>(i)];
            for (const auto& entry : jacobianRows[static_cast<std::size_t>(i)])
                rows[static_cast<std::size_t>(i)].emplace_back(entry.first, factor * entry.second);
        }
    }

    // Gauss-Seidel over the unknowns, each using those already narrowed.
    std::vector<OutwardInterval> x(static_cast<std::size_t>(n));
    for (int j = 0; j < n; ++j) x[static_cast<std::size_t>(j)] = {box[static_cast<std::size_t>(j)].lower, box[static_cast<std::size_t>(j)].upper};
    const std::vector<OutwardInterval> original(x);
    bool proved = true;
    for (int i = 0; i < n; ++i) {
        OutwardInterval sum = b[static_cast<std::size_t>(i)];
        OutwardInterval diagonal{1.0, 0.0};
        for (const auto& entry : rows[static_cast<std::size_t>(i)]) {
            if (entry.first == i) {
                diagonal = entry.second;
                continue;
            }
            const double cj = c[static_cast<std::size_t>(entry.first)];
            sum = sum + entry.second * (x[static_cast<std::size_t>(entry.first)] - OutwardInterval::Point(cj));
        }
        if (diagonal.IsEmpty() || diagonal.Contains(0.0)) {
            proved = false;
            continue;
        }
        const OutwardInterval image = OutwardInterval::Point(c[static_cast<std::size_t>(i)]) - sum / diagonal;
        if (!image.StrictlyInside(original[static_cast<std::size_t>(i)])) proved = false;
        const OutwardInterval narrowed = Intersect(image, x[static_cast<std::size_t>(i)]);
        if (narrowed.IsEmpty()) return KOBWBNewtonEmpty;
        x[static_cast<std::size_t>(i)] = narrowed;
    }
    for (int j = 0; j < n; ++j) box[static_cast<std::size_t>(j)] = {x[static_cast<std::size_t>(j)].lower, x[static_cast<std::size_t>(j)].upper};
    return proved ? KOBWBNewtonProved : KOBWBNewtonNarrowed;
}

KOBWBNewtonOutcome KOBWBIntervalNewton::Propagate(std::vector<KOBWBRealInterval>& box, const std::vector<int>& from,
                                                  double ratio, long budget, std::vector<int>& narrowed) {
    m_revisions = 0;
    const int n = GetNbOfUnknowns();
    if (n == 0 || static_cast<int>(box.size()) != n) return KOBWBNewtonNarrowed;
    if (m_rowEntries.empty()) {
        m_rowEntries.resize(static_cast<std::size_t>(n));
        for (int k = 0; k < m_jacobian.GetNbOfEntries(); ++k)
            m_rowEntries[static_cast<std::size_t>(m_jacobian.GetRow(k))].push_back(k);
        m_queued.assign(static_cast<std::size_t>(n), 0);
        m_marked.assign(static_cast<std::size_t>(n), 0);
    }
    for (const int j : narrowed)
        if (j >= 0 && j < n) m_marked[static_cast<std::size_t>(j)] = 1;
    for (const int j : from)
        if (j >= 0 && j < n) QueueRowsOf(j);
    bool consistent = true;
    // The queue is read in order; it is cleared when empty.
    for (std::size_t next = 0; next < m_queue.size() && consistent; ++next) {
        const int row = m_queue[next];
        m_queued[static_cast<std::size_t>(row)] = 0;
        if (m_revisions >= budget) continue;
        ++m_revisions;
        consistent = ReviseRow(row, box, ratio, narrowed);
    }
    for (const int row : m_queue) m_queued[static_cast<std::size_t>(row)] = 0;
    m_queue.clear();
    for (const int j : narrowed)
        if (j >= 0 && j < n) m_marked[static_cast<std::size_t>(j)] = 0;
    return consistent ? KOBWBNewtonNarrowed : KOBWBNewtonEmpty;
}

void KOBWBIntervalNewton::QueueRowsOf(int unknown) {
    const std::vector<int>& starts = m_jacobian.GetColumnStarts();
    for (int k = starts[static_cast<std::size_t>(unknown)]; k < starts[static_cast<std::size_t>(unknown) + 1]; ++k) {
        const int row = m_jacobian.GetRow(k);
        if (m_queued[static_cast<std::size_t>(row)]) continue;
        m_queued[static_cast<std::size_t>(row)] = 1;
        m_queue.push_back(row);
    }
}

bool KOBWBIntervalNewton::ReviseRow(int i, std::vector<KOBWBRealInterval>& box, double ratio,
                                    std::vector<int>& narrowed) {
    const std::vector<int>& entries = m_rowEntries[static_cast<std::size_t>(i)];
    const std::size_t count = entries.size();
    if (count == 0 || count > rowLimit) return true;
    KOBWBFactory& factory = m_roots.front()->GetFactory();
    std::size_t column[rowLimit];
    double c[rowLimit];
    OutwardInterval x[rowLimit];
    OutwardInterval derivative[rowLimit];
    for (std::size_t e = 0; e < count; ++e) {
        column[e] = static_cast<std::size_t>(m_jacobian.GetColumn(entries[e]));
        const KOBWBRealInterval& xj = box[column[e]];
        if (!std::isfinite(xj.lower) || !std::isfinite(xj.upper)) return true;
        x[e] = {xj.lower, xj.upper};
        c[e] = xj.lower / 2 + xj.upper / 2;
    }
    // F_i at the midpoint, then its derivatives over the box. The equation holds within
    // the tolerance, as the contractor takes it: a box is emptied only when no point of
    // it satisfies the equation within the tolerance, which also covers the rounding
    // of the evaluation at the midpoint.
    for (std::size_t e = 0; e < count; ++e) m_unknowns[column[e]]->SetExprValue(KOBWBValue(c[e]));
    factory.ResetBuffer();
    const double tolerance = std::max(factory.GetEnvironment().GetTolerance(), 0.0);
    const OutwardInterval f = WidenedValue(m_roots[static_cast<std::size_t>(i)]) + OutwardInterval{-tolerance, tolerance};
    for (std::size_t e = 0; e < count; ++e) m_unknowns[column[e]]->SetExprValue(KOBWBValue(box[column[e]]));
    if (f.IsEmpty()) return true;
    factory.ResetBuffer();
    for (std::size_t e = 0; e < count; ++e) {
        derivative[e] = WidenedValue(m_jacobian.GetEntry(entries[e]));
        if (derivative[e].IsEmpty()) return true;
    }
    for (std::size_t e = 0; e < count; ++e) {
        if (derivative[e].Contains(0.0)) continue;
        OutwardInterval sum = f;
        for (std::size_t l = 0; l < count; ++l)
            if (l != e) sum = sum + derivative[l] * (x[l] - OutwardInterval::Point(c[l]));
        const OutwardInterval image = Intersect(OutwardInterval::Point(c[e]) - sum / derivative[e], x[e]);
        if (image.IsEmpty()) return false;
        if (image.lower == x[e].lower && image.upper == x[e].upper) continue;
        const double removed = x[e].Width() - image.Width();
        x[e] = image;
        box[column[e]] = {image.lower, image.upper};
        m_unknowns[column[e]]->SetExprValue(KOBWBValue(box[column[e]]));
        if (!m_marked[column[e]]) {
            m_marked[column[e]] = 1;
            narrowed.push_back(static_cast<int>(column[e]));
        }
        if (removed > ratio * (image.Width() + removed)) QueueRowsOf(static_cast<int>(column[e]));
    }
    return true;
}
