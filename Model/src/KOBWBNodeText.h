#ifndef KOBWBNodeText_h
#define KOBWBNodeText_h

#include "KOBLVRString.h"

class KOBWBNode;

// The subtree written back as model text, fully bracketed, for traces and
// messages: "((a + 2 mm) * Pi)", "sin(x)", "if (a <= b) then (x) else (y)".
KOBLVRString KOBWBNodeText(const KOBWBNode* node);

// The node alone, without its children or unit: a variable's name, a
// constant's value ("3", "2.5", "1/4 Pi"), an operator's sign or function name
// ("+", "<", "sin", a black box's called name; "-" for a negation, "!" for a
// negated condition, "if" for a conditional), an equation's relation.
KOBLVRString KOBWBNodeLabel(const KOBWBNode* node);

#endif
