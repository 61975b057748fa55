#ifndef KOBWBModelStatus_h
#define KOBWBModelStatus_h

// Status codes of the model tree: creation succeeded, a visitor goes on, or the
// general failure.
const long KOBWBModelOk = 0;
const long KOBWBVisitContinue = 1;
const long KOBWBModelFailure = 0x80004005L;

#endif
