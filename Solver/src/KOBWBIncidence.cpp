#include "KOBWBIncidence.h"

#include <cstddef>

namespace kobwb {

Incidence::Incidence(int rows, int columns, const std::vector<int>& columnStarts, const std::vector<int>& rowIndices)
    : underDeterminedColumns(static_cast<std::size_t>(columns), false),
      overDeterminedRows(static_cast<std::size_t>(rows), false),
      m_columnsOfRow(static_cast<std::size_t>(rows)),
      m_rowsOfColumn(static_cast<std::size_t>(columns)),
      m_columnOfRow(static_cast<std::size_t>(rows), -1),
      m_rowOfColumn(static_cast<std::size_t>(columns), -1) {
    for (int j = 0; j < columns; ++j)
        for (int k = columnStarts[static_cast<std::size_t>(j)]; k < columnStarts[static_cast<std::size_t>(j) + 1]; ++k) {
            const int i = rowIndices[static_cast<std::size_t>(k)];
            m_columnsOfRow[static_cast<std::size_t>(i)].push_back(j);
            m_rowsOfColumn[static_cast<std::size_t>(j)].push_back(i);
        }
    // A cheap first matching, then an augmenting path from every row left unmatched.
    for (int i = 0; i < rows; ++i)
        for (int j : m_columnsOfRow[static_cast<std::size_t>(i)])
            if (m_rowOfColumn[static_cast<std::size_t>(j)] < 0) {
                m_rowOfColumn[static_cast<std::size_t>(j)] = i;
                m_columnOfRow[static_cast<std::size_t>(i)] = j;
                break;
            }
    std::vector<int> visitedBy(static_cast<std::size_t>(columns), -1);
    for (int i = 0; i < rows; ++i)
        if (m_columnOfRow[static_cast<std::size_t>(i)] < 0) Augment(i, visitedBy, i);
    for (int i = 0; i < rows; ++i) matched += m_columnOfRow[static_cast<std::size_t>(i)] >= 0;

    // Alternating paths: from unmatched columns through rows to their matched columns,
    // and from unmatched rows through columns to their matched rows.
    std::vector<int> pending;
    for (int j = 0; j < columns; ++j)
        if (m_rowOfColumn[static_cast<std::size_t>(j)] < 0) {
            underDeterminedColumns[static_cast<std::size_t>(j)] = true;
            pending.push_back(j);
        }
    while (!pending.empty()) {
        const int j = pending.back();
        pending.pop_back();
        for (int i : m_rowsOfColumn[static_cast<std::size_t>(j)]) {
            const int next = m_columnOfRow[static_cast<std::size_t>(i)];
            if (next >= 0 && !underDeterminedColumns[static_cast<std::size_t>(next)]) {
                underDeterminedColumns[static_cast<std::size_t>(next)] = true;
                pending.push_back(next);
            }
        }
    }
    for (int i = 0; i < rows; ++i)
        if (m_columnOfRow[static_cast<std::size_t>(i)] < 0) {
            overDeterminedRows[static_cast<std::size_t>(i)] = true;
            pending.push_back(i);
        }
    while (!pending.empty()) {
        const int i = pending.back();
        pending.pop_back();
        for (int j : m_columnsOfRow[static_cast<std::size_t>(i)]) {
            const int next = m_rowOfColumn[static_cast<std::size_t>(j)];
            if (next >= 0 && !overDeterminedRows[static_cast<std::size_t>(next)]) {
                overDeterminedRows[static_cast<std::size_t>(next)] = true;
                pending.push_back(next);
            }
        }
    }
}

// An augmenting path from an unmatched row, searched depth first with an explicit
// stack; the columns visited in this search are stamped with it.
bool Incidence::Augment(int start, std::vector<int>& visitedBy, int stamp) {
    struct Frame {
        int row;
        std::size_t next;
        int column;
    };
    std::vector<Frame> frames{{start, 0, -1}};
    while (!frames.empty()) {
        Frame& top = frames.back();
        const std::vector<int>& candidates = m_columnsOfRow[static_cast<std::size_t>(top.row)];
        if (top.next == candidates.size()) {
            frames.pop_back();
            continue;
        }
        const int j = candidates[top.next++];
        if (visitedBy[static_cast<std::size_t>(j)] == stamp) continue;
        visitedBy[static_cast<std::size_t>(j)] = stamp;
        top.column = j;
        const int owner = m_rowOfColumn[static_cast<std::size_t>(j)];
        if (owner >= 0) {
            frames.push_back({owner, 0, -1});
            continue;
        }
        // Free column: flip the matching along the path.
        for (const Frame& frame : frames) {
            m_rowOfColumn[static_cast<std::size_t>(frame.column)] = frame.row;
            m_columnOfRow[static_cast<std::size_t>(frame.row)] = frame.column;
        }
        return true;
    }
    return false;
}

} // namespace kobwb
