#ifndef KOBWBGraphPrinter_h
#define KOBWBGraphPrinter_h

#include "KOBWBxExport.h"

#include <string>

class KOBWBFactory;

// Writes the graph of a factory's equations, every node once however many
// parents share it, children before their parents.
//
// Graphviz DOT: one box per operator (its operator name), per variable (its
// name) and per constant (its value as model text), a second line with the
// node's value when its buffer holds a valid one; edges from a parent to its
// children, numbered from 0 when a node has several; one ellipse per equation
// ("[id] relation 0") with an edge to its root.
//
// JSON, one object:
//   {"nodes": [NODE, ...], "equations": [EQUATION, ...]}
//   NODE:     {"id": N, "type": CODE, "op": "+", "name": "x", "value": "Pi/4",
//              "children": [ID, ...]}
//             id counts from 0 in the order of the list; type is the node's
//             expression type code; op is the code's name; name only for
//             variables; value (model text) for constants, and for other nodes
//             whose buffer holds a valid value; children only for operators,
//             as ids of nodes listed earlier.
//   EQUATION: {"id": N, "relation": "=", "root": ID, "text": "x + y = 10;"}
//             relation is the equation type's text, text the equation as
//             KOBWBEquationPrinter writes it.
// Both walk with their own stack, so graphs of any depth print.
class KOBWBX_API KOBWBGraphPrinter {
public:
    static void PrintDot(const KOBWBFactory& factory, std::string& out);
    static void PrintJson(const KOBWBFactory& factory, std::string& out);
};

#endif
