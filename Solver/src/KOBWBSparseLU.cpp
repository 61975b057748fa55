#include "KOBWBSparseLU.h"

namespace kobwb {

SparseLU::SparseLU() { klu_defaults(&m_common); }

SparseLU::~SparseLU() {
    FreeNumeric();
    if (m_symbolic) klu_free_symbolic(&m_symbolic, &m_common);
}

void SparseLU::FreeNumeric() {
    if (m_numeric) klu_free_numeric(&m_numeric, &m_common);
    m_numeric = nullptr;
}

bool SparseLU::Factor(int n, const int* columnStarts, const int* rows, const double* values) {
    // KLU reads through pointers to non-const data without writing them.
    int* starts = const_cast<int*>(columnStarts);
    int* indices = const_cast<int*>(rows);
    double* entries = const_cast<double*>(values);
    if (!m_symbolic) {
        m_size = n;
        m_symbolic = klu_analyze(n, starts, indices, &m_common);
        if (!m_symbolic) return false;
    }
    if (m_numeric && klu_refactor(starts, indices, entries, m_symbolic, m_numeric, &m_common) &&
        klu_rcond(m_symbolic, m_numeric, &m_common) && m_common.rcond >= 0.01 * m_pivotedCondition &&
        m_common.rcond > 0.0)
        return true;
    FreeNumeric();
    m_numeric = klu_factor(starts, indices, entries, m_symbolic, &m_common);
    if (!m_numeric || m_common.status != KLU_OK) {
        FreeNumeric();
        return false;
    }
    if (!klu_rcond(m_symbolic, m_numeric, &m_common) || !(m_common.rcond > 0.0)) {
        FreeNumeric();
        return false;
    }
    m_pivotedCondition = m_common.rcond;
    return true;
}

bool SparseLU::Solve(double* rightHandSide) {
    return m_numeric && klu_solve(m_symbolic, m_numeric, m_size, 1, rightHandSide, &m_common) != 0;
}

} // namespace kobwb
