#include "KOBWBValueText.h"

#include "KOBWBBoolean.h"
#include "KOBWBIntegerEnum.h"
#include "KOBWBRealEnum.h"
#include "KOBWBValue.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace kobwb {

void AppendReal(double value, std::string& out) {
    if (std::isnan(value)) {
        out += "nan";
        return;
    }
    if (std::isinf(value)) {
        out += value < 0 ? "-inf" : "inf";
        return;
    }
    char buffer[32];
    // A whole number below 1e21 is written with all its digits (3000000000.0, not
    // 3e+09), as one writes it; the digits are those of the double, so it reads back.
    const bool whole = value == std::floor(value) && std::fabs(value) < 1e21;
    const auto result = whole ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
                              : std::to_chars(buffer, buffer + sizeof buffer, value);
    const std::string_view text(buffer, static_cast<size_t>(result.ptr - buffer));
    out.append(text);
    if (text.find_first_of(".e") == std::string_view::npos) out += ".0";
}

void AppendInteger(long long value, std::string& out) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, static_cast<size_t>(result.ptr - buffer));
}

namespace {

// numerator * Pi^power / denominator with a positive numerator and denominator:
// 1/3, Pi, 3*Pi, Pi/4, 3*Pi/2, Pi^2/4; a negative power of Pi goes below the line.
TextPrecedence AppendPositiveFraction(long long numerator, long long denominator, int power, std::string& out) {
    const int above = power > 0 ? power : 0;
    const int below = power < 0 ? -power : 0;
    TextPrecedence precedence = AtomText;
    if (numerator != 1 || above == 0) {
        AppendInteger(numerator, out);
        if (above > 0) {
            out += '*';
            precedence = ProductText;
        }
    }
    if (above > 0) {
        out += "Pi";
        if (above > 1) {
            out += '^';
            AppendInteger(above, out);
            if (precedence == AtomText) precedence = PowerText;
        }
    }
    if (denominator == 1 && below == 0) return precedence;
    out += '/';
    const bool bracket = below > 0 && (denominator != 1 || below > 1);
    if (bracket) out += '(';
    if (denominator != 1 || below == 0) AppendInteger(denominator, out);
    if (below > 0) {
        if (denominator != 1) out += '*';
        out += "Pi";
        if (below > 1) {
            out += '^';
            AppendInteger(below, out);
        }
    }
    if (bracket) out += ')';
    return ProductText;
}

TextPrecedence AppendFraction(const KOBWBFraction& fraction, bool negate, std::string& out) {
    const FractionParts parts = SplitFraction(fraction, negate);
    if (!parts.defined) {
        AppendReal(negate ? -std::nan("") : std::nan(""), out);
        return AtomText;
    }
    if (parts.zero) {
        out += '0';
        return AtomText;
    }
    const int power = parts.piAbove - parts.piBelow;
    if (!parts.negative) return AppendPositiveFraction(parts.numerator, parts.denominator, power, out);
    out += '-';
    const TextPrecedence positive = AppendPositiveFraction(parts.numerator, parts.denominator, power, out);
    return positive == AtomText || positive == PowerText ? UnaryText : positive;
}

// A number written with its sign binds as a unary minus.
TextPrecedence SignedNumber(bool negative) { return negative ? UnaryText : AtomText; }

const char* BooleanText(KOBWBBoolean b) {
    switch (b) {
    case KOBWBFalse: return "False";
    case KOBWBTrue: return "True";
    case KOBWBContr: return "Contr";
    default: return "Undef";
    }
}

template <class Enumeration, class Append>
void AppendEnumeration(const Enumeration& enumeration, Append append, std::string& out) {
    switch (enumeration.GetRepresentation()) {
    case KOBWBEnumAny: out += "{any}"; return;
    case KOBWBEnumNil: out += "{}"; return;
    case KOBWBEnumInterval:
        out += '{';
        append(enumeration.Get(0));
        out += " .. ";
        append(enumeration.Get(enumeration.GetSize() - 1));
        out += '}';
        return;
    default:
        out += '{';
        for (int i = 0; i < enumeration.GetSize(); ++i) {
            if (i > 0) out += ", ";
            append(enumeration.Get(i));
        }
        out += '}';
    }
}

TextPrecedence AppendRealInterval(const KOBWBRealInterval& interval, bool negate, std::string& out) {
    if (interval.lower == interval.upper) {
        const double value = negate ? -interval.lower : interval.lower;
        AppendReal(value, out);
        return SignedNumber(std::signbit(value));
    }
    if (interval.lower > interval.upper) {
        out += "[]";
        return AtomText;
    }
    out += '[';
    AppendReal(negate ? -interval.upper : interval.lower, out);
    out += ", ";
    AppendReal(negate ? -interval.lower : interval.upper, out);
    out += ']';
    return AtomText;
}

TextPrecedence Append(const KOBWBValue& value, bool negate, std::string& out) {
    if (value.IsAFraction()) return AppendFraction(value.GetAsFraction(), negate, out);
    switch (value.GetType()) {
    case KOBWBIntegerValue: {
        const long long integer = negate ? -static_cast<long long>(value.GetAsInteger()) : value.GetAsInteger();
        AppendInteger(integer, out);
        return SignedNumber(integer < 0);
    }
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: return AppendRealInterval(value.GetAsRealInterval(), negate, out);
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval interval = value.GetAsIntegerInterval();
        out += '[';
        AppendInteger(interval.lower, out);
        out += ", ";
        AppendInteger(interval.upper, out);
        out += ']';
        return AtomText;
    }
    case KOBWBIntegerEnumValue:
        AppendEnumeration(value.GetIntegerEnum(), [&out](int x) { AppendInteger(x, out); }, out);
        return AtomText;
    case KOBWBRealEnumValue:
        AppendEnumeration(value.GetRealEnum(), [&out](double x) { AppendReal(x, out); }, out);
        return AtomText;
    case KOBWBBooleanValue: out += BooleanText(value.GetAsBoolean()); return AtomText;
    default: out += "undefined"; return AtomText;
    }
}

} // namespace

FractionParts SplitFraction(const KOBWBFraction& fraction, bool negate) {
    FractionParts parts{true, false, false, fraction.numerator, fraction.denominator, 0, 0};
    if (parts.denominator == 0) {
        parts.defined = false;
        return parts;
    }
    if (parts.denominator < 0) {
        parts.numerator = -parts.numerator;
        parts.denominator = -parts.denominator;
    }
    if (negate) parts.numerator = -parts.numerator;
    parts.zero = parts.numerator == 0;
    parts.negative = parts.numerator < 0;
    if (parts.negative) parts.numerator = -parts.numerator;
    parts.piAbove = fraction.powerOfPi > 0 ? fraction.powerOfPi : 0;
    parts.piBelow = fraction.powerOfPi < 0 ? -fraction.powerOfPi : 0;
    return parts;
}

TextPrecedence AppendValue(const KOBWBValue& value, std::string& out) { return Append(value, false, out); }

TextPrecedence AppendNegatedValue(const KOBWBValue& value, std::string& out) { return Append(value, true, out); }

bool IsNegativeNumber(const KOBWBValue& value) {
    if (value.IsAFraction()) {
        const KOBWBFraction f = value.GetAsFraction();
        return f.denominator != 0 && (f.numerator < 0) != (f.denominator < 0) && f.numerator != 0;
    }
    switch (value.GetType()) {
    case KOBWBIntegerValue: return value.GetAsInteger() < 0;
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        return interval.lower == interval.upper && interval.lower < 0;
    }
    default: return false;
    }
}

} // namespace kobwb
