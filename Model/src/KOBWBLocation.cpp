#include "KOBWBLocation.h"

#include <cstdio>

void KOBWBLocation::GetLocation(int* firstLine, int* firstColumn, int* lastLine,
                                int* lastColumn) const {
    if (firstLine) *firstLine = m_firstLine;
    if (firstColumn) *firstColumn = m_firstColumn;
    if (lastLine) *lastLine = m_lastLine;
    if (lastColumn) *lastColumn = m_lastColumn;
}

bool KOBWBLocation::Compare(const KOBWBLocation& other) const {
    return m_firstLine == other.m_firstLine && m_firstColumn == other.m_firstColumn &&
           m_lastLine == other.m_lastLine && m_lastColumn == other.m_lastColumn;
}

KOBLVRString KOBWBLocation::Write() const {
    char text[64];
    std::snprintf(text, sizeof text, "(%d,%d,%d,%d)", m_firstLine, m_firstColumn, m_lastLine,
                  m_lastColumn);
    return KOBLVRString(text);
}
