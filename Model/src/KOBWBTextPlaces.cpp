#include "KOBWBTextPlaces.h"

#include <algorithm>

namespace kobwb {

namespace {

bool IsBreak(char c) { return c == '\n' || c == '\r'; }

} // namespace

TextPlaces::TextPlaces(const std::string& text) : m_text(text), m_lineStarts{0} {
    size_t i = 0;
    while (i < text.size()) {
        if (text.compare(i, 2, "/*") == 0) {
            const size_t start = i;
            i += 2;
            while (i < text.size() && text.compare(i, 2, "*/") != 0) {
                if (!IsBreak(text[i])) {
                    ++i;
                    continue;
                }
                size_t end = i;
                bool newline = false;
                for (; end < text.size() && IsBreak(text[end]); ++end) newline = newline || text[end] == '\n';
                if (newline || end - i >= 2) m_lineStarts.push_back(end);
                i = end;
            }
            i = std::min(i + 2, text.size());
            m_comments.emplace_back(start, i);
            continue;
        }
        if (IsBreak(text[i])) {
            const char first = text[i++];
            if (i < text.size() && IsBreak(text[i]) && text[i] != first) ++i;
            m_lineStarts.push_back(i);
            continue;
        }
        ++i;
    }
}

size_t TextPlaces::Offset(int line, int column) const {
    if (line < 1) return 0;
    if (static_cast<size_t>(line) > m_lineStarts.size()) return m_text.size();
    return std::min(m_lineStarts[static_cast<size_t>(line) - 1] + static_cast<size_t>(std::max(column, 0)), m_text.size());
}

void TextPlaces::Place(size_t offset, int& line, int& column) const {
    const auto after = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    line = static_cast<int>(after - m_lineStarts.begin());
    column = static_cast<int>(offset - *(after - 1));
}

bool TextPlaces::InComment(size_t offset) const {
    for (const auto& comment : m_comments)
        if (offset >= comment.first && offset < comment.second) return true;
    return false;
}

} // namespace kobwb
