#ifndef KOBWBLocation_h
#define KOBWBLocation_h

#include "KOBLVRString.h"

// Where a piece of model text lies: first line, first column, last line, last
// column. Lines count from 1 and columns from 0; the last column is one past the
// last character. The scanner moves it along the text token by token.
class KOBWBX_API KOBWBLocation {
public:
    KOBWBLocation() = default;
    KOBWBLocation(int firstLine, int firstColumn, int lastLine, int lastColumn)
        : m_firstLine(firstLine), m_firstColumn(firstColumn), m_lastLine(lastLine),
          m_lastColumn(lastColumn) {}

    // Line 1, column 0 for both ends.
    void Reset() { SetLocation(1, 0, 1, 0); }
    // The next piece of text starts where the previous one ended.
    void Step() {
        m_firstLine = m_lastLine;
        m_firstColumn = m_lastColumn;
    }
    void IncrementLastColumn(int n) { m_lastColumn += n; }
    void NextLine() {
        ++m_lastLine;
        m_lastColumn = 0;
    }

    void SetLocation(int firstLine, int firstColumn, int lastLine, int lastColumn) {
        m_firstLine = firstLine;
        m_firstColumn = firstColumn;
        m_lastLine = lastLine;
        m_lastColumn = lastColumn;
    }
    void GetLocation(int* firstLine, int* firstColumn, int* lastLine, int* lastColumn) const;

    int GetFirstLine() const { return m_firstLine; }
    int GetFirstColumn() const { return m_firstColumn; }
    int GetLastLine() const { return m_lastLine; }
    int GetLastColumn() const { return m_lastColumn; }
    void SetFirstLine(int line) { m_firstLine = line; }
    void SetFirstColumn(int column) { m_firstColumn = column; }
    void SetLastLine(int line) { m_lastLine = line; }
    void SetLastColumn(int column) { m_lastColumn = column; }

    // True when all four numbers are equal.
    bool Compare(const KOBWBLocation& other) const;
    // Whether a place (line from 1, column from 0, as the location counts them) is
    // within the location, its ends included.
    bool Contains(int line, int column) const {
        const bool afterStart = line > m_firstLine || (line == m_firstLine && column >= m_firstColumn);
        const bool beforeEnd = line < m_lastLine || (line == m_lastLine && column <= m_lastColumn);
        return afterStart && beforeEnd;
    }
    // "(first line,first column,last line,last column)", e.g. "(1,0,1,5)".
    KOBLVRString Write() const;

private:
    int m_firstLine = 1;
    int m_firstColumn = 0;
    int m_lastLine = 1;
    int m_lastColumn = 0;
};

#endif
