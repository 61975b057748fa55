#ifndef KOBWBModelScannerSupport_h
#define KOBWBModelScannerSupport_h

#include "KOBWBModelGrammar.h"
#include "KOBWBTextStore.h"

class KOBWBLocation;
class KOBWBModel;
class KOBWBParserMessenger;

// What the scanner works for (its extra data): the model being read, the
// messenger that hears of invalid characters, and the copies of the
// identifiers, which stay until the scan ends.
struct KOBWBScanContext {
    KOBWBScanContext(const KOBWBModel& readModel, KOBWBParserMessenger& readMessenger)
        : model(readModel), messenger(readMessenger) {}
    const KOBWBModel& model;
    KOBWBParserMessenger& messenger;
    KOBWBTextStore identifiers;
};

// What the scanner's rules do with the text they match.

// A run of digits: an "integer" when it fits in an int, a "real" otherwise.
int KOBWBDigitsToken(KOBWBMODELLANGSTYPE* value, const char* text);
int KOBWBRealToken(KOBWBMODELLANGSTYPE* value, const char* text);
// A built-in function's name (as KOBWBFunctionNames reads it) with its code, or
// an "identifier" carrying a copy of its text kept in the scan context.
int KOBWBNameToken(KOBWBMODELLANGSTYPE* value, KOBWBScanContext& context, const char* text, int length);
// Notes the character at location with the messenger (not as an error) and,
// while the messenger echoes, writes "Invalid character\n" on standard output;
// the character is skipped.
void KOBWBInvalidCharacter(KOBWBScanContext& context, const KOBWBLocation& location);
// Gives the model the words of the statement that starts at text (up to the
// next ";", the end of the text or a few hundred characters), so that looking up
// its variables while the parser reads it finds them in cache. Keywords, units,
// function names and the words of comments are given as well: a hint costs
// little and changes nothing.
void KOBWBForeseeStatement(const KOBWBModel& model, const char* text);

#endif
