#ifndef KOBWBNodeText_h
#define KOBWBNodeText_h

#include "KOBLVRString.h"

class KOBWBNode;

// The subtree written back as model text, fully bracketed, for traces and
// messages: "((a + 2 mm) * Pi)", "sin(x)", "if (a <= b) then (x) else (y)".
KOBLVRString KOBWBNodeText(const KOBWBNode* node);

#endif
