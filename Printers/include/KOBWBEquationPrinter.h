#ifndef KOBWBEquationPrinter_h
#define KOBWBEquationPrinter_h

#include "KOBWBxExport.h"

#include <string>

class KOBWBEquation;
class KOBWBExpression;
class KOBWBFactory;
class KOBWBValue;

// Writes expressions, equations and whole factories as text of the model
// language: infix, with only the brackets that the language's precedences need
// (`^` tightest and to the right, then unary minus, then `*` and `/`, then `+`
// and `-`, all binary ones but `^` to the left). Sums print their negative terms
// as subtractions, exact constants as fractions and multiples of Pi (`Pi/4`,
// `3*Pi/2`), reals as the shortest text that reads back to the same double.
//
// A factory's text parses back (KOBWBParser::Parse, then KOBWBModel::FillFactory)
// into a system of the same structure: the same equations in the same order, each
// with its relation, the same operators over the same variables, and constant
// sub-expressions of the same values. A node that several parents share is written
// at each of its places, since the language has no names for sub-expressions.
//
// Values that the language cannot write are still shown readably: intervals as
// `[a, b]` (the empty one as `[]`), enumerations as `{a, b, c}` (an interval enumeration as `{a .. b}`),
// booleans as True, False, Undef and Contr. Variables print by name, unnamed ones
// as `v` followed by their index; nodes without a model form (implication, black
// boxes of no name) print as calls named after their operator.
//
// Every function appends to out, and walks with its own stack, so graphs of any
// depth print.
class KOBWBX_API KOBWBEquationPrinter {
public:
    static void PrintExpression(const KOBWBExpression* expression, std::string& out);
    // "left relation right;" when the root is a sum ending with a constant (that
    // constant, negated, makes the right side) or with what the reader makes of a
    // negated constant's text (the quotient -Pi/6 of "x = Pi/6", the product -3*Pi
    // of "x = 3*Pi"), so that a system read back prints as it was printed;
    // "root relation 0;" otherwise; an
    // equation without a relation prints as its term alone ("root;"), and a
    // conditional one as "if (...) then (a = b) else (c = d);".
    static void PrintEquation(const KOBWBEquation* equation, std::string& out);
    // Every equation of the factory, one a line.
    static void PrintFactory(const KOBWBFactory& factory, std::string& out);
    static void PrintValue(const KOBWBValue& value, std::string& out);

    static std::string ToText(const KOBWBExpression* expression);
    static std::string ToText(const KOBWBEquation* equation);
    static std::string ToText(const KOBWBFactory& factory);
};

#endif
