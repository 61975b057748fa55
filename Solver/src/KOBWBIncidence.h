#ifndef KOBWBIncidence_h
#define KOBWBIncidence_h

#include <vector>

namespace kobwb {

// The structure of a system: which unknowns (columns) occur in which equations (rows),
// a maximum matching of rows to columns, and the parts of the Dulmage-Mendelsohn
// decomposition that follow from it: the under-determined part (what an unmatched
// column reaches by alternating paths: columns that can move) and the over-determined
// part (what an unmatched row reaches: rows more than their columns can satisfy).
struct Incidence {
    // The pattern in compressed columns, as a Jacobian lists it.
    Incidence(int rows, int columns, const std::vector<int>& columnStarts, const std::vector<int>& rowIndices);

    int matched = 0;
    std::vector<bool> underDeterminedColumns;
    std::vector<bool> overDeterminedRows;

private:
    std::vector<std::vector<int>> m_columnsOfRow;
    std::vector<std::vector<int>> m_rowsOfColumn;
    std::vector<int> m_columnOfRow;
    std::vector<int> m_rowOfColumn;

    bool Augment(int row, std::vector<int>& visitedBy, int stamp);
};

} // namespace kobwb

#endif
