#ifndef KOBWBGraphPrinter_h
#define KOBWBGraphPrinter_h

#include "KOBWBxExport.h"

#include <string>

class KOBWBFactory;

// Writes the graph of a factory's equations as Graphviz DOT, every node once
// however many parents share it, children before their parents: one box per
// operator (its operator name), per variable (its name) and per constant (its
// value as model text), a second line with the node's value when its buffer
// holds a valid one; edges from a parent to its children, numbered from 0 when
// a node has several; one ellipse per equation ("[id] relation 0") with an edge
// to its root. The same graph as JSON is written by
// KOBWBEquationMLPrinter::PrintJson. Walks with its own stack, so graphs of any
// depth print.
class KOBWBX_API KOBWBGraphPrinter {
public:
    static void PrintDot(const KOBWBFactory& factory, std::string& out);
};

#endif
