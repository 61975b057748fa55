#include "KOBWBReplayText.h"

#include <charconv>
#include <cstring>
#include <vector>

namespace kobwb {
namespace replay {

namespace {

constexpr const char* hexDigits = "0123456789abcdef";

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

void AppendNumber(std::string& text, int value) { AppendInteger(text, value); }
void AppendNumber(std::string& text, double value) { AppendReal(text, value); }

// An enumeration: any, nil, [lower,upper] (hull holds the bounds) or {element,...}.
template <class Enum, class Interval>
void AppendEnum(std::string& text, const Enum& domain, const Interval& hull) {
    switch (domain.GetRepresentation()) {
    case KOBWBEnumAny: text += "any"; return;
    case KOBWBEnumNil: text += "nil"; return;
    case KOBWBEnumInterval:
        text += '[';
        AppendNumber(text, hull.lower);
        text += ',';
        AppendNumber(text, hull.upper);
        text += ']';
        return;
    case KOBWBEnumList:
        text += '{';
        for (int i = 0; i < domain.GetSize(); ++i) {
            if (i > 0) text += ',';
            AppendNumber(text, domain.Get(i));
        }
        text += '}';
        return;
    }
}

} // namespace

void AppendQuoted(std::string& text, const char* name) {
    text += '"';
    for (const char* c = name; *c; ++c) {
        const unsigned char byte = static_cast<unsigned char>(*c);
        switch (*c) {
        case '\\': text += "\\\\"; break;
        case '"': text += "\\\""; break;
        case '\n': text += "\\n"; break;
        case '\r': text += "\\r"; break;
        case '\t': text += "\\t"; break;
        default:
            if (byte < 0x20 || byte == 0x7f) {
                text += "\\x";
                text += hexDigits[byte >> 4];
                text += hexDigits[byte & 0xf];
            } else {
                text += *c;
            }
        }
    }
    text += '"';
}

void AppendInteger(std::string& text, int value) {
    char buffer[16];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
    text.append(buffer, result.ptr);
}

void AppendReal(std::string& text, double value) {
    char buffer[32];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
    text.append(buffer, result.ptr);
}

void AppendValue(std::string& text, const KOBWBValue& value) {
    if (value.IsAFraction()) {
        const KOBWBFraction fraction = value.GetAsFraction();
        text += 'F';
        AppendInteger(text, fraction.numerator);
        text += '/';
        AppendInteger(text, fraction.denominator);
        text += "pi";
        AppendInteger(text, fraction.powerOfPi);
        text += ':';
        AppendInteger(text, fraction.reserved);
        return;
    }
    switch (value.GetType()) {
    case KOBWBIntegerValue:
        text += 'I';
        AppendInteger(text, value.GetAsInteger());
        return;
    case KOBWBRealValue:
        text += 'R';
        AppendReal(text, value.GetAsReal());
        return;
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval interval = value.GetAsIntegerInterval();
        text += "II[";
        AppendInteger(text, interval.lower);
        text += ',';
        AppendInteger(text, interval.upper);
        text += ']';
        return;
    }
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = *value.GetRealIntervalPayload();
        text += "RI[";
        AppendReal(text, interval.lower);
        text += ',';
        AppendReal(text, interval.upper);
        text += ']';
        return;
    }
    case KOBWBIntegerEnumValue:
        text += "IE";
        AppendEnum(text, value.GetIntegerEnum(), value.GetIntegerEnum().GetAsIntegerInterval());
        return;
    case KOBWBRealEnumValue:
        text += "RE";
        AppendEnum(text, value.GetRealEnum(), value.GetRealEnum().GetAsRealInterval());
        return;
    case KOBWBBooleanValue:
        text += 'B';
        text += KOBWBGetBooleanName(value.GetAsBoolean());
        return;
    default: text += 'U'; return;
    }
}

void TextCursor::SkipBlanks() {
    while (m_position < m_end && (*m_position == ' ' || *m_position == '\t')) ++m_position;
}

bool TextCursor::AtEnd() {
    SkipBlanks();
    return m_position == m_end;
}

char TextCursor::Peek() {
    SkipBlanks();
    return m_position < m_end ? *m_position : '\0';
}

bool TextCursor::Accept(char c) {
    if (Peek() != c || c == '\0') return false;
    ++m_position;
    return true;
}

bool TextCursor::AcceptWord(const char* word) {
    SkipBlanks();
    const size_t length = std::strlen(word);
    if (static_cast<size_t>(m_end - m_position) < length || std::strncmp(m_position, word, length) != 0) return false;
    m_position += length;
    return true;
}

bool TextCursor::ReadWord(std::string& word) { return ReadUntil(" \t", word); }

bool TextCursor::ReadUntil(const char* stops, std::string& word) {
    SkipBlanks();
    const char* start = m_position;
    while (m_position < m_end && !std::strchr(stops, *m_position)) ++m_position;
    word.assign(start, m_position);
    return !word.empty();
}

bool TextCursor::ReadInteger(int& value) {
    SkipBlanks();
    const std::from_chars_result result = std::from_chars(m_position, m_end, value);
    if (result.ec != std::errc()) return false;
    m_position = result.ptr;
    return true;
}

bool TextCursor::ReadReal(double& value) {
    SkipBlanks();
    const std::from_chars_result result = std::from_chars(m_position, m_end, value);
    if (result.ec != std::errc()) return false;
    m_position = result.ptr;
    return true;
}

bool TextCursor::ReadQuoted(std::string& name) {
    if (!Accept('"')) return false;
    name.clear();
    while (m_position < m_end) {
        const char c = *m_position++;
        if (c == '"') return true;
        if (c != '\\') {
            name += c;
            continue;
        }
        if (m_position == m_end) return false;
        switch (*m_position++) {
        case '\\': name += '\\'; break;
        case '"': name += '"'; break;
        case 'n': name += '\n'; break;
        case 'r': name += '\r'; break;
        case 't': name += '\t'; break;
        case 'x': {
            if (m_end - m_position < 2) return false;
            const int high = HexDigit(m_position[0]);
            const int low = HexDigit(m_position[1]);
            // A name is a C string: it holds no NUL.
            if (high < 0 || low < 0 || (high == 0 && low == 0)) return false;
            name += static_cast<char>(high * 16 + low);
            m_position += 2;
            break;
        }
        default: return false;
        }
    }
    return false;
}

namespace {

bool ReadNumber(TextCursor& in, int& value) { return in.ReadInteger(value); }
bool ReadNumber(TextCursor& in, double& value) { return in.ReadReal(value); }
void SetInterval(KOBWBIntegerEnum& domain, int lower, int upper) { domain.SetAsIntegerInterval({lower, upper}); }
void SetInterval(KOBWBRealEnum& domain, double lower, double upper) { domain.SetAsRealInterval({lower, upper}); }

// An enumeration of Element: any, nil, [lower,upper] or {element,...}.
template <class Enum, class Element>
bool ReadEnum(TextCursor& in, KOBWBValue& value) {
    Enum domain;
    if (in.AcceptWord("nil")) {
        domain.SetNil();
    } else if (in.Accept('[')) {
        Element lower{};
        Element upper{};
        if (!ReadNumber(in, lower) || !in.Accept(',') || !ReadNumber(in, upper) || !in.Accept(']')) return false;
        SetInterval(domain, lower, upper);
    } else if (in.Accept('{')) {
        std::vector<Element> elements;
        for (Element element{}; !in.Accept('}');) {
            if ((!elements.empty() && !in.Accept(',')) || !ReadNumber(in, element)) return false;
            elements.push_back(element);
        }
        domain.SetSize(static_cast<int>(elements.size()));
        if (domain.GetSize() != static_cast<int>(elements.size())) return false;
        for (size_t i = 0; i < elements.size(); ++i) domain.Set(static_cast<int>(i), elements[i]);
    } else if (!in.AcceptWord("any")) {
        return false;
    }
    value = KOBWBValue(domain);
    return true;
}

} // namespace

bool TextCursor::ReadValue(KOBWBValue& value) {
    if (AcceptWord("U")) {
        value = KOBWBValue();
        return true;
    }
    if (AcceptWord("II[")) {
        KOBWBIntegerInterval interval;
        if (!ReadInteger(interval.lower) || !Accept(',') || !ReadInteger(interval.upper) || !Accept(']'))
            return false;
        value = KOBWBValue(interval);
        return true;
    }
    if (AcceptWord("RI[")) {
        KOBWBRealInterval interval;
        if (!ReadReal(interval.lower) || !Accept(',') || !ReadReal(interval.upper) || !Accept(']')) return false;
        value = KOBWBValue(interval);
        return true;
    }
    if (AcceptWord("IE")) return ReadEnum<KOBWBIntegerEnum, int>(*this, value);
    if (AcceptWord("RE")) return ReadEnum<KOBWBRealEnum, double>(*this, value);
    if (AcceptWord("I")) {
        int n = 0;
        if (!ReadInteger(n)) return false;
        value = KOBWBValue(n);
        return true;
    }
    if (AcceptWord("R")) {
        double x = 0.0;
        if (!ReadReal(x)) return false;
        value = KOBWBValue(x);
        return true;
    }
    if (AcceptWord("B")) {
        for (int b = KOBWBFalse; b <= KOBWBContr; ++b)
            if (AcceptWord(KOBWBGetBooleanName(b))) {
                value = KOBWBValue(static_cast<KOBWBBoolean>(b));
                return true;
            }
        return false;
    }
    if (AcceptWord("F")) {
        KOBWBFraction fraction;
        if (!ReadInteger(fraction.numerator) || !Accept('/') || !ReadInteger(fraction.denominator) ||
            !AcceptWord("pi") || !ReadInteger(fraction.powerOfPi) || !Accept(':') || !ReadInteger(fraction.reserved))
            return false;
        value = KOBWBValue(fraction);
        return true;
    }
    return false;
}

} // namespace replay
} // namespace kobwb
