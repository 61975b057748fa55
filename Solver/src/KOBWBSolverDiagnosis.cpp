#include "KOBWBSolver.h"

#include "KOBWBFactory.h"
#include "KOBWBIncidence.h"
#include "KOBWBRankAnalysis.h"
#include "KOBWBSolverSystem.h"
#include "KOBWBValue.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cmath>

// Degrees of freedom and dependencies of the equalities at the variables' current
// values: the structure first, then the Jacobian's rank and null spaces.
void KOBWBSolver::Diagnose() {
    m_free.clear();
    m_redundant.clear();
    m_overDetermined.clear();
    const System& s = CurrentSystem();
    const int m = s.EqualityCount();
    const int n = static_cast<int>(s.unknowns.size());
    m_unknownCount = n;
    const kobwb::Incidence incidence(m, n, s.columnStarts, s.rows);
    m_structuralDof = n - incidence.matched;
    for (int i = 0; i < m; ++i)
        if (incidence.overDeterminedRows[static_cast<std::size_t>(i)])
            m_overDetermined.push_back(s.equalities[static_cast<std::size_t>(i)]);
    std::vector<int> freeColumns;
    for (int j = 0; j < n; ++j)
        if (incidence.underDeterminedColumns[static_cast<std::size_t>(j)]) freeColumns.push_back(j);
    m_rank = incidence.matched;
    m_numericDof = m_structuralDof;
    if (s.complete && m > 0 && n > 0) {
        std::vector<double> x(static_cast<std::size_t>(n));
        for (int j = 0; j < n; ++j) {
            const KOBWBValue& value = s.unknowns[static_cast<std::size_t>(j)]->GetExprValue();
            const KOBWBRealInterval box = value.GetAsRealInterval();
            const double point = box.lower / 2 + box.upper / 2;
            x[static_cast<std::size_t>(j)] = std::isfinite(point) && std::fabs(point) < 1e300 ? point : 0.0;
        }
        m_system->evaluator.Refresh();
        std::vector<double> values(static_cast<std::size_t>(m_system->evaluator.GetNbOfExpressions()));
        m_system->evaluator.Evaluate(x.data(), values.data());
        kobwb::RankAnalysis analysis;
        analysis.Run(m, n, s.columnStarts, s.rows, values.data() + s.JacobianOutput());
        m_rank = analysis.rank;
        m_numericDof = n - analysis.rank;
        if (analysis.complete) freeColumns = analysis.freeColumns;
        std::vector<double> scale(static_cast<std::size_t>(m), 1.0);
        for (int i = 0; i < m; ++i) {
            double magnitude = 0.0;
            for (int k = s.termStart[static_cast<std::size_t>(i)]; k < s.termStart[static_cast<std::size_t>(i) + 1]; ++k)
                magnitude += std::fabs(values[static_cast<std::size_t>(k)]);
            scale[static_cast<std::size_t>(i)] = std::isfinite(magnitude) ? std::max(1.0, magnitude) : 1.0;
        }
        if (m_conflicting.empty()) NameConflicts(values, scale);
        for (int i : analysis.dependentRows) {
            KOBWBEquation* equation = s.equalities[static_cast<std::size_t>(i)];
            if (std::find(m_conflicting.begin(), m_conflicting.end(), equation) == m_conflicting.end())
                m_redundant.push_back(equation);
        }
    }
    for (int j : freeColumns) m_free.push_back(s.unknowns[static_cast<std::size_t>(j)]);
}
