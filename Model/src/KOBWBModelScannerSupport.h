#ifndef KOBWBModelScannerSupport_h
#define KOBWBModelScannerSupport_h

#include "KOBWBModelGrammar.h"

// What the scanner's rules do with the text they match.

// A built-in function name: the token carries its expression type.
int KOBWBBuiltinToken(KOBWBMODELLANGSTYPE* value, KOBWBExpressionType type);
// A run of digits: an "integer" when it fits in an int, a "real" otherwise.
int KOBWBDigitsToken(KOBWBMODELLANGSTYPE* value, const char* text);
int KOBWBRealToken(KOBWBMODELLANGSTYPE* value, const char* text);
// An "identifier" carrying a heap copy of its text, which the parser frees.
int KOBWBIdentifierToken(KOBWBMODELLANGSTYPE* value, const char* text, int length);
// Writes "Invalid character\n" on standard output; the character is skipped.
void KOBWBInvalidCharacter();

#endif
