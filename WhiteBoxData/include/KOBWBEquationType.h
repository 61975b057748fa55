#ifndef KOBWBEquationType_h
#define KOBWBEquationType_h

#include "KOBWBxExport.h"

// An equation states that its root stands in this relation to 0.
enum KOBWBEquationType {
    KOBWBEqUndefined = 0,
    KOBWBEqEqual = 1,
    KOBWBEqNotEqual = 2,
    KOBWBEqLessEqual = 3,
    KOBWBEqLess = 4,
    KOBWBEqGreaterEqual = 5,
    KOBWBEqGreater = 6,
    KOBWBEqMinimize = 7,
    KOBWBEqMaximize = 8
};

// "", "=", "!=", "<=", "<", ">=", ">", "<minimize>", "<maximize>"; "" for unknown codes.
KOBWBX_API const char* KOBWBGetEquationTypeText(KOBWBEquationType type);

#endif
