#ifndef KOBWBTextPlaces_h
#define KOBWBTextPlaces_h

#include <string>
#include <vector>

namespace kobwb {

// Lines and columns of a model text as the scanner counts them (a line break is
// "\n", "\r", "\r\n" or "\n\r"; inside a comment a run of line breaks counts one
// line at most; columns from 0, one per byte), mapped to byte offsets and back.
class TextPlaces {
public:
    explicit TextPlaces(const std::string& text);

    // The offset of a line and column, the text's size when past its end.
    size_t Offset(int line, int column) const;
    // The line and column of an offset.
    void Place(size_t offset, int& line, int& column) const;
    // Whether the offset is inside a comment (the "/*" and "*/" included).
    bool InComment(size_t offset) const;
    const std::string& Text() const { return m_text; }

private:
    const std::string& m_text;
    // The offset each line starts at, line 1 first.
    std::vector<size_t> m_lineStarts;
    // [start, end) of each comment.
    std::vector<std::pair<size_t, size_t>> m_comments;
};

} // namespace kobwb

#endif
