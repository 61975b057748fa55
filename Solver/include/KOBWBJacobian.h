#ifndef KOBWBJacobian_h
#define KOBWBJacobian_h

#include "KOBWBxExport.h"

#include <vector>

class KOBWBExpression;
class KOBWBVariable;

// The Jacobian of expressions with respect to variables, made in one call: its
// sparsity pattern (which variables occur in which expression) and one derivative
// expression per entry, made by the factory (CreateDerivative) and owned by it.
// Entries are listed column by column, rows ascending within a column: the order of
// a compressed-column sparse matrix, so that values computed in entry order fill one.
class KOBWBX_API KOBWBJacobian {
public:
    // Rows are the expressions, columns the variables. Variables that occur in no
    // expression make empty columns; a variable given twice counts once, in its first
    // column. False, with nothing made, for null arguments or negative counts.
    bool Make(int rowCount, KOBWBExpression* const* rows, int columnCount, KOBWBVariable* const* columns);

    int GetNbOfRows() const { return m_rowCount; }
    int GetNbOfColumns() const { return m_columnCount; }
    int GetNbOfEntries() const { return static_cast<int>(m_rows.size()); }
    int GetRow(int entry) const { return m_rows[static_cast<std::size_t>(entry)]; }
    int GetColumn(int entry) const { return m_columns[static_cast<std::size_t>(entry)]; }
    // The derivative of the entry; null where the factory has none (a black box
    // without derivative, abs, min, a condition over an interval).
    KOBWBExpression* GetEntry(int entry) const { return m_entries[static_cast<std::size_t>(entry)]; }
    const std::vector<KOBWBExpression*>& GetEntries() const { return m_entries; }
    // The first entry of each column, and the count of entries after the last column.
    const std::vector<int>& GetColumnStarts() const { return m_columnStarts; }
    const std::vector<int>& GetRows() const { return m_rows; }
    // The rows with an entry that has no derivative.
    const std::vector<int>& GetRowsWithoutDerivative() const { return m_rowsWithoutDerivative; }

private:
    int m_rowCount = 0;
    int m_columnCount = 0;
    std::vector<int> m_rows;
    std::vector<int> m_columns;
    std::vector<int> m_columnStarts;
    std::vector<KOBWBExpression*> m_entries;
    std::vector<int> m_rowsWithoutDerivative;
};

#endif
