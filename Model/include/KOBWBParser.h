#ifndef KOBWBParser_h
#define KOBWBParser_h

#include "KOBWBModelLists.h"

#include <cstdio>

class KOBLVRIntArray;
class KOBWBModel;
class KOBWBParserMessenger;

// Reads model text into a model. Every equation built appends its id to ids, in
// source order; syntax errors go to the messenger and the parse goes on after
// the next ";". The model check then runs over the whole model whatever the
// syntax errors, so both kinds are reported in one pass. Returns the
// messenger's error count. Calls may name the given black boxes (null: none).
class KOBWBX_API KOBWBParser {
public:
    // Reads the file to its end; a null file reads as an empty text.
    static int Parse(FILE* file, KOBWBModel& model, KOBLVRIntArray& ids,
                     KOBWBParserMessenger& messenger, KOBLVRListPKOBWBBlackBox* blackBoxes);
    // Reads a NUL-terminated text; null reads as an empty text.
    static int Parse(const char* text, KOBWBModel& model, KOBLVRIntArray& ids,
                     KOBWBParserMessenger& messenger, KOBLVRListPKOBWBBlackBox* blackBoxes);
};

#endif
