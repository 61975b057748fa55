#ifndef KOBWBValueText_h
#define KOBWBValueText_h

#include <string>

class KOBWBValue;
struct KOBWBFraction;

namespace kobwb {

// How tightly a piece of model text binds, loosest first: a bracket is needed
// where a piece binds less tightly than its place requires. Comparisons and
// their connectives bind loosest of all; they stand only at the top of a
// condition or of a branch of a conditional equation.
enum TextPrecedence { ConditionText = 0, SumText = 1, ProductText = 2, UnaryText = 3, PowerText = 4, AtomText = 5 };

// The shortest decimal text that reads back to the same double, always with a
// point or an exponent so that the model language reads a real, never an integer.
void AppendReal(double value, std::string& out);
void AppendInteger(long long value, std::string& out);
// The value as model text (or readable text for what the language cannot write);
// returns how tightly that text binds.
TextPrecedence AppendValue(const KOBWBValue& value, std::string& out);
// The same for the value's opposite, which must be a negative number: `a - 3`
// prints the constant -3 of a sum this way.
TextPrecedence AppendNegatedValue(const KOBWBValue& value, std::string& out);
// An exact fraction sign * numerator * Pi^piAbove / (denominator * Pi^piBelow)
// with a positive numerator and denominator and at most one of the powers of Pi
// above 0; defined is false for a zero denominator, zero true for a zero
// numerator.
struct FractionParts {
    bool defined;
    bool zero;
    bool negative;
    long long numerator;
    long long denominator;
    int piAbove;
    int piBelow;
};
// The parts of the fraction, or of its opposite when negate is true.
FractionParts SplitFraction(const KOBWBFraction& fraction, bool negate);

// Whether the value is a number below 0, so that a sum writes it as a subtraction.
bool IsNegativeNumber(const KOBWBValue& value);

} // namespace kobwb

#endif
