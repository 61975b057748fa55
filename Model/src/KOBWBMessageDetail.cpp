#include "KOBWBMessageDetail.h"

#include <cctype>
#include <cstdio>

namespace kobwb {

namespace {

const std::string unknownUnit = "semantic error, unknown unit";
const std::string syntaxError = "syntax error, unexpected ";
const std::string memoryExhausted = "memory exhausted";

bool IsNameCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) || c == '_' || c == '%' || c == '"' || c == '\'' || byte == 0xB0;
}

// A character that can end an expression: a name, a number, a closing bracket.
bool EndsExpression(char c) { return IsNameCharacter(c) || c == ')' || c == '.'; }

// For a syntax error at offset: the offset just after the expression that ends a
// line of the same equation without a ';', when an equation seems to go on past
// such a line.
bool MissingSemicolon(const TextPlaces& places, size_t offset, size_t& missing) {
    const std::string& text = places.Text();
    size_t at = offset;
    bool lineBreak = false;
    // The significant character seen last, which is the next one in the text.
    char next = offset < text.size() ? text[offset] : ';';
    char afterBreak = next;
    // Back from the token over the equation's text, to its start: a line that ends
    // an expression followed by a line that starts one is where the ';' was left out.
    while (at > 0) {
        --at;
        if (places.InComment(at)) continue;
        const char c = text[at];
        if (c == ';') return false;
        if (c == '\n' || c == '\r') {
            lineBreak = true;
            afterBreak = next;
            continue;
        }
        if (std::isspace(static_cast<unsigned char>(c))) continue;
        if (lineBreak && EndsExpression(c) && (IsNameCharacter(afterBreak) || afterBreak == '(')) {
            missing = at + 1;
            return true;
        }
        lineBreak = false;
        next = c;
    }
    return false;
}

// The brackets open at an offset, outside comments.
int OpenBrackets(const TextPlaces& places, size_t offset) {
    const std::string& text = places.Text();
    int open = 0;
    for (size_t i = 0; i < offset && i < text.size(); ++i) {
        if (text[i] == ';') open = 0;
        if (places.InComment(i)) continue;
        if (text[i] == '(') ++open;
        if (text[i] == ')' && open > 0) --open;
    }
    return open;
}

} // namespace

std::string InvalidCharacterMessage(const TextPlaces& places, int line, int column) {
    const size_t offset = places.Offset(line, column);
    if (offset >= places.Text().size()) return "invalid character, skipped";
    const auto byte = static_cast<unsigned char>(places.Text()[offset]);
    char shown[8];
    if (byte >= 0x21 && byte < 0x7F)
        std::snprintf(shown, sizeof shown, "'%c'", byte);
    else
        std::snprintf(shown, sizeof shown, "\\x%02X", byte);
    return std::string("invalid character ") + shown + ", skipped";
}

void DetailReport(const TextPlaces& places, KOBWBModelReport& report) {
    if (report.line <= 0) return;
    const std::string& text = places.Text();
    const size_t offset = places.Offset(report.line, report.column - 1);
    if (report.message == unknownUnit) {
        size_t end = offset;
        while (end < text.size() && (IsNameCharacter(text[end]) || (end == offset && text[end] == '"'))) ++end;
        if (end > offset) report.message += ' ' + text.substr(offset, end - offset);
        return;
    }
    if (report.message == memoryExhausted) {
        report.message += ": nesting deeper than " + std::to_string(OpenBrackets(places, offset)) +
                          " brackets, more than the parser takes";
        return;
    }
    size_t missing = 0;
    if (report.message.compare(0, syntaxError.size(), syntaxError) == 0 && MissingSemicolon(places, offset, missing)) {
        int line = 0;
        int column = 0;
        places.Place(missing, line, column);
        report.message += " (at " + std::to_string(report.line) + ":" + std::to_string(report.column) +
                          "): expected ';' at the end of line " + std::to_string(line);
        report.line = line;
        report.column = column + 1;
    }
}

} // namespace kobwb
