#ifndef KOBWBModelCheck_h
#define KOBWBModelCheck_h

#include "KOBWBxExport.h"

class KOBWBModel;
class KOBWBParserMessenger;

// The semantic check run after parsing. It infers the unit class of every
// variable from the equations (a variable equated to, added to or compared with
// a length is a length, likewise for angles, through any chain of such
// relations), sets it on each occurrence, and reports to the messenger, in text
// order:
// - a unit it does not know: "semantic error, unknown unit" (22);
// - variables that the equations make both a length and an angle:
//   "semantic error, inconsistent unit" (23), once where lengths and angles meet;
// - a unit where it cannot apply (a dimensioned argument of ln, log, exp, of a
//   hyperbolic or inverse trigonometric function or of an exponent, a length in
//   sin, cos or tan): "semantic error, invalid operation with unit" (24);
// - Pi carrying a length unit: "semantic error, ambiguous Pi" (25);
// - a call of a function that is neither built in nor a known black box, and a
//   built-in function given a wrong number of arguments (code -1).
// The README describes the rules in full.
class KOBWBX_API KOBWBModelCheck {
public:
    KOBWBModelCheck(KOBWBModel& model, KOBWBParserMessenger& messenger);
    // Returns the number of errors reported.
    int Run();

private:
    KOBWBModel& m_model;
    KOBWBParserMessenger& m_messenger;
};

#endif
