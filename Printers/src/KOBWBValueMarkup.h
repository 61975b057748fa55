#ifndef KOBWBValueMarkup_h
#define KOBWBValueMarkup_h

#include "KOBWBValueText.h"

#include <cstddef>
#include <string>

class KOBWBValue;

namespace kobwb {

// How tightly a fraction drawn with a bar binds: the bar groups its numerator
// and denominator, so it needs no bracket as a factor or after a sign, only as
// the base of a power, like a power itself.
constexpr TextPrecedence FractionBar = PowerText;

// The text as XML character data or attribute value: &, <, >, " and ' as
// entities; bytes that are not well-formed UTF-8, and characters that XML does
// not allow, as U+FFFD, so that any name gives a well-formed document.
void AppendXmlText(const char* text, size_t length, std::string& out);
void AppendXmlText(const std::string& text, std::string& out);

// The value as one element of presentation MathML, written as the model text
// writes it (exact fractions and multiples of Pi, intervals, enumerations,
// booleans); returns how tightly it binds. With negate, the value's opposite,
// which must be a negative number.
TextPrecedence AppendValueMathML(const KOBWBValue& value, bool negate, std::string& out);

} // namespace kobwb

#endif
