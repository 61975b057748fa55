#include "KOBWBValueMarkup.h"

#include "KOBWBBoolean.h"
#include "KOBWBIntegerEnum.h"
#include "KOBWBRealEnum.h"
#include "KOBWBValue.h"

#include <vector>

namespace kobwb {

namespace {

constexpr const char* minusSign = "<mo>&#x2212;</mo>";
constexpr const char* piSign = "<mi>&#x3C0;</mi>";
constexpr const char* replacement = "&#xFFFD;";

// The length of the well-formed UTF-8 sequence at text (at most the remaining
// bytes), with its code point; 0 when the bytes there are not one.
size_t DecodeUtf8(const unsigned char* text, size_t remaining, unsigned& code) {
    const unsigned lead = text[0];
    size_t length = 0;
    if (lead < 0x80) {
        code = lead;
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07;
    } else {
        return 0;
    }
    if (length > remaining) return 0;
    for (size_t i = 1; i < length; ++i) {
        if ((text[i] & 0xC0) != 0x80) return 0;
        code = (code << 6) | (text[i] & 0x3F);
    }
    const unsigned smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0;
    return length;
}

bool IsXmlCharacter(unsigned code) {
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || code >= 0x10000;
}

void AppendElement(const char* tag, const std::string& text, std::string& out) {
    out += '<';
    out += tag;
    out += '>';
    AppendXmlText(text, out);
    out += "</";
    out += tag;
    out += '>';
}

// A number from its model text: a leading minus sign apart, infinity as its sign.
TextPrecedence AppendNumber(const std::string& text, std::string& out) {
    const bool negative = !text.empty() && text[0] == '-';
    const std::string magnitude = negative ? text.substr(1) : text;
    if (negative) out += "<mrow>";
    if (negative) out += minusSign;
    if (magnitude == "inf")
        out += "<mi>&#x221E;</mi>";
    else if (magnitude == "nan")
        out += "<mi>NaN</mi>";
    else
        AppendElement("mn", magnitude, out);
    if (negative) out += "</mrow>";
    return negative ? UnaryText : AtomText;
}

TextPrecedence AppendIntegerNumber(long long value, std::string& out) {
    std::string text;
    AppendInteger(value, text);
    return AppendNumber(text, out);
}

TextPrecedence AppendRealNumber(double value, std::string& out) {
    std::string text;
    AppendReal(value, text);
    return AppendNumber(text, out);
}

// number * Pi^power with number > 0 left out when it is 1 and power is above 0.
TextPrecedence AppendPiMultiple(long long number, int power, std::string& out) {
    const bool withNumber = number != 1 || power == 0;
    const bool withPi = power > 0;
    if (withNumber && withPi) out += "<mrow>";
    if (withNumber) AppendIntegerNumber(number, out);
    if (withNumber && withPi) out += "<mo>&#x2062;</mo>";
    if (power == 1) out += piSign;
    if (power > 1) {
        out += "<msup>";
        out += piSign;
        AppendIntegerNumber(power, out);
        out += "</msup>";
    }
    if (withNumber && withPi) out += "</mrow>";
    if (withNumber && withPi) return ProductText;
    return power > 1 ? PowerText : AtomText;
}

TextPrecedence AppendFraction(const KOBWBFraction& fraction, bool negate, std::string& out) {
    const FractionParts parts = SplitFraction(fraction, negate);
    if (!parts.defined) return AppendNumber("nan", out);
    if (parts.zero) return AppendNumber("0", out);
    if (parts.negative) {
        out += "<mrow>";
        out += minusSign;
    }
    TextPrecedence precedence = FractionBar;
    if (parts.denominator == 1 && parts.piBelow == 0) {
        precedence = AppendPiMultiple(parts.numerator, parts.piAbove, out);
    } else {
        out += "<mfrac>";
        AppendPiMultiple(parts.numerator, parts.piAbove, out);
        AppendPiMultiple(parts.denominator, parts.piBelow, out);
        out += "</mfrac>";
    }
    if (!parts.negative) return precedence;
    out += "</mrow>";
    return precedence == ProductText ? ProductText : UnaryText;
}

const char* BooleanText(KOBWBBoolean b) {
    switch (b) {
    case KOBWBFalse: return "<mi>False</mi>";
    case KOBWBTrue: return "<mi>True</mi>";
    case KOBWBContr: return "<mi>Contr</mi>";
    default: return "<mi>Undef</mi>";
    }
}

// Bounds or elements between the two brackets, separated by the separator.
template <class Element, class Append>
void AppendBracketed(const char* open, const Element* elements, int count, const char* separator, Append append,
                     const char* close, std::string& out) {
    out += "<mrow><mo>";
    out += open;
    out += "</mo>";
    for (int i = 0; i < count; ++i) {
        if (i > 0) out += separator;
        append(elements[i], out);
    }
    out += "<mo>";
    out += close;
    out += "</mo></mrow>";
}

template <class Enumeration, class Element, class Append>
void AppendEnumeration(const Enumeration& enumeration, Append append, std::string& out) {
    switch (enumeration.GetRepresentation()) {
    case KOBWBEnumAny: out += "<mrow><mo>{</mo><mi>any</mi><mo>}</mo></mrow>"; return;
    case KOBWBEnumNil: out += "<mrow><mo>{</mo><mo>}</mo></mrow>"; return;
    case KOBWBEnumInterval: {
        const Element bounds[] = {enumeration.Get(0), enumeration.Get(enumeration.GetSize() - 1)};
        AppendBracketed("{", bounds, 2, "<mo>..</mo>", append, "}", out);
        return;
    }
    default: {
        std::vector<Element> all;
        for (int i = 0; i < enumeration.GetSize(); ++i) all.push_back(enumeration.Get(i));
        AppendBracketed("{", all.data(), static_cast<int>(all.size()), "<mo>,</mo>", append, "}", out);
    }
    }
}

void AppendIntegerElement(long long value, std::string& out) { AppendIntegerNumber(value, out); }
void AppendRealElement(double value, std::string& out) { AppendRealNumber(value, out); }

} // namespace

void AppendXmlText(const char* text, size_t length, std::string& out) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    for (size_t i = 0; i < length;) {
        unsigned code = 0;
        const size_t size = DecodeUtf8(bytes + i, length - i, code);
        if (size == 0 || !IsXmlCharacter(code)) {
            out += replacement;
            i += size == 0 ? 1 : size;
            continue;
        }
        switch (code) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&apos;"; break;
        default: out.append(text + i, size);
        }
        i += size;
    }
}

void AppendXmlText(const std::string& text, std::string& out) { AppendXmlText(text.data(), text.size(), out); }

TextPrecedence AppendValueMathML(const KOBWBValue& value, bool negate, std::string& out) {
    if (value.IsAFraction()) return AppendFraction(value.GetAsFraction(), negate, out);
    switch (value.GetType()) {
    case KOBWBIntegerValue: {
        const long long integer = value.GetAsInteger();
        return AppendIntegerNumber(negate ? -integer : integer, out);
    }
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        if (interval.lower == interval.upper) return AppendRealNumber(negate ? -interval.lower : interval.lower, out);
        if (interval.lower > interval.upper) {
            out += "<mi>&#x2205;</mi>";
            return AtomText;
        }
        const double bounds[] = {negate ? -interval.upper : interval.lower, negate ? -interval.lower : interval.upper};
        AppendBracketed("[", bounds, 2, "<mo>,</mo>", AppendRealElement, "]", out);
        return AtomText;
    }
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval interval = value.GetAsIntegerInterval();
        const long long bounds[] = {interval.lower, interval.upper};
        AppendBracketed("[", bounds, 2, "<mo>,</mo>", AppendIntegerElement, "]", out);
        return AtomText;
    }
    case KOBWBIntegerEnumValue:
        AppendEnumeration<KOBWBIntegerEnum, long long>(value.GetIntegerEnum(), AppendIntegerElement, out);
        return AtomText;
    case KOBWBRealEnumValue:
        AppendEnumeration<KOBWBRealEnum, double>(value.GetRealEnum(), AppendRealElement, out);
        return AtomText;
    case KOBWBBooleanValue: out += BooleanText(value.GetAsBoolean()); return AtomText;
    default: out += "<mi>undefined</mi>"; return AtomText;
    }
}

} // namespace kobwb
