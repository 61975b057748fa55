#ifndef KOBWBModelHomogeneity_h
#define KOBWBModelHomogeneity_h

#include "KOBLVRString.h"

class KOBWBEqNode;
class KOBWBModel;
class KOBWBNode;

// Checks that the two sides of the equations of a parsed model have compatible
// kinds of quantity (lengths, angles, dimensionless). Classes are the texts of
// KOBWBUnitClass.h. With a trace level of 1 or more, every step of the
// computation is written to the trace stream.
class KOBWBX_API KOBWBModelHomogeneity {
public:
    // The class of a subtree; "Inhomogeneous" for null.
    static KOBLVRString FillHomogeneity(KOBWBNode* node);
    // 0 homogeneous, 1 inhomogeneous, KOBWBModelFailure without either term.
    static long CheckHomogeneity(KOBWBEqNode& equation);
    // 1 at the first inhomogeneous equation, else 0.
    static long CheckHomogeneity(KOBWBModel& model);
};

#endif
