#ifndef KOBWBEquationMLPrinter_h
#define KOBWBEquationMLPrinter_h

#include "KOBWBxExport.h"

#include <string>

class KOBWBEquation;
class KOBWBExpression;
class KOBWBFactory;

// Writes expressions, equations and whole factories as presentation MathML, and
// their graphs as JSON. Every function appends to out and walks with its own
// stack, so graphs of any depth print.
//
// MathML: an expression or an equation is one
// <math xmlns="http://www.w3.org/1998/Math/MathML"> element; a factory is
// <equations count="N"> holding one such element per equation, in the factory's
// order, one a line. Variables and function names are <mi> (a call is the name,
// <mo>&#x2061;</mo> and the bracketed arguments), numbers <mn>, operators and
// relations <mo>; a quotient is an <mfrac>, a power an <msup>, sqrt and root
// <msqrt> and <mroot>, Pi <mi>&#x3C0;</mi>. Equations are split into their two
// sides, exact constants written as fractions and multiples of Pi, and brackets
// placed as KOBWBEquationPrinter places them, except that the parts of a
// fraction, an exponent and a root need none and that a fraction, drawn with its
// bar, needs them only as the base of a power. Intervals are [a, b], the empty
// one &#x2205;, enumerations {a, b, c} (an interval enumeration {a .. b}),
// booleans True, False, Undef and Contr; a missing node is an <merror>. Names are
// escaped for XML; bytes that are not UTF-8 become U+FFFD.
//
// JSON of a factory, one object:
//   {"nodes": [NODE, ...], "equations": [EQUATION, ...]}
//   NODE:     {"id": N, "type": CODE, "op": "+", "name": "x", "value": "Pi/4",
//              "children": [ID, ...]}
//             Every node under the equation roots once, however many parents
//             share it, children before parents. id counts from 0 in the order
//             of the list; type is the node's expression type code; op is the
//             code's name; name only for variables; value (model text) for
//             constants, and for other nodes whose buffer holds a valid value;
//             children only for operators, as ids of nodes listed earlier.
//   EQUATION: {"id": N, "relation": "=", "root": ID, "text": "x + y = 10;"}
//             relation is the equation type's text, root -1 for a missing
//             root, text the equation as KOBWBEquationPrinter writes it.
// JSON of an expression: {"nodes": [NODE, ...], "root": ID}, root -1 for null.
class KOBWBX_API KOBWBEquationMLPrinter {
public:
    static void PrintExpression(const KOBWBExpression* expression, std::string& out);
    // Nothing for a null equation.
    static void PrintEquation(const KOBWBEquation* equation, std::string& out);
    static void PrintFactory(const KOBWBFactory& factory, std::string& out);

    static void PrintJson(const KOBWBFactory& factory, std::string& out);
    static void PrintJson(const KOBWBExpression* expression, std::string& out);

    static std::string ToMathML(const KOBWBExpression* expression);
    static std::string ToMathML(const KOBWBEquation* equation);
    static std::string ToMathML(const KOBWBFactory& factory);
};

#endif
