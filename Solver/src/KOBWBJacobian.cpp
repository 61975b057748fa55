#include "KOBWBJacobian.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <memory>

bool KOBWBJacobian::Make(int rowCount, KOBWBExpression* const* rows, int columnCount, KOBWBVariable* const* columns) {
    *this = KOBWBJacobian();
    if (rowCount < 0 || columnCount < 0 || (rowCount > 0 && !rows) || (columnCount > 0 && !columns)) return false;
    for (int i = 0; i < rowCount; ++i)
        if (!rows[i]) return false;
    for (int j = 0; j < columnCount; ++j)
        if (!columns[j]) return false;
    m_rowCount = rowCount;
    m_columnCount = columnCount;
    if (rowCount == 0 || columnCount == 0) {
        m_columnStarts.assign(static_cast<std::size_t>(columnCount) + 1, 0);
        return true;
    }
    // The column of each variable, by its index in the factory.
    KOBWBFactory& factory = rows[0]->GetFactory();
    std::vector<int> columnOf(static_cast<std::size_t>(factory.GetNbOfVariables()), -1);
    for (int j = columnCount; j-- > 0;) {
        const int index = columns[j]->GetIdx();
        if (index >= 0 && index < static_cast<int>(columnOf.size())) columnOf[static_cast<std::size_t>(index)] = j;
    }
    // The pattern, row by row, then sorted into columns.
    struct Entry {
        int column;
        int row;
        KOBWBVariable* variable;
    };
    std::vector<Entry> pattern;
    for (int i = 0; i < rowCount; ++i) {
        KOBWBVariable** present = nullptr;
        const int count = rows[i]->FindPresentVariables(present);
        const std::unique_ptr<KOBWBVariable*[]> owned(present);
        for (int k = 0; k < count; ++k) {
            const int index = present[k]->GetIdx();
            if (index < 0 || index >= static_cast<int>(columnOf.size())) continue;
            const int j = columnOf[static_cast<std::size_t>(index)];
            if (j >= 0) pattern.push_back({j, i, present[k]});
        }
    }
    std::sort(pattern.begin(), pattern.end(),
              [](const Entry& a, const Entry& b) { return a.column != b.column ? a.column < b.column : a.row < b.row; });
    m_columnStarts.assign(static_cast<std::size_t>(columnCount) + 1, 0);
    std::vector<bool> rowFailed(static_cast<std::size_t>(rowCount), false);
    for (const Entry& entry : pattern) {
        m_rows.push_back(entry.row);
        m_columns.push_back(entry.column);
        KOBWBVariable* variable = entry.variable;
        KOBWBExpression* derivative = factory.CreateDerivative(rows[entry.row], 1, &variable);
        m_entries.push_back(derivative);
        if (!derivative) rowFailed[static_cast<std::size_t>(entry.row)] = true;
        ++m_columnStarts[static_cast<std::size_t>(entry.column) + 1];
    }
    for (int j = 0; j < columnCount; ++j) m_columnStarts[j + 1] += m_columnStarts[j];
    for (int i = 0; i < rowCount; ++i)
        if (rowFailed[static_cast<std::size_t>(i)]) m_rowsWithoutDerivative.push_back(i);
    return true;
}
