#ifndef KOBWBFunctionNames_h
#define KOBWBFunctionNames_h

#include "KOBWBExpressionType.h"
#include "KOBWBxExport.h"

// The functions of the model language by name: the one table that the scanner
// reads built-in function names from, that the printers write calls with, and that
// the model check counts arguments by.
struct KOBWBFunctionName {
    KOBWBExpressionType type;
    const char* name;
    // How many arguments the function takes, from minimum to maximum (-1: no upper
    // bound); minimum 0 for a function whose arguments are not counted (step).
    int minimum;
    int maximum;
    // Whether the scanner reads the name as the function ("int" is read, "Int"
    // written), and whether the printers write the function with it ("implies"
    // is written for an implication, which the language does not read).
    bool read;
    bool written;
};

// The rows, i from 0 to KOBWBGetNbOfFunctionNames() - 1; null outside.
KOBWBX_API int KOBWBGetNbOfFunctionNames();
KOBWBX_API const KOBWBFunctionName* KOBWBGetFunctionNameRow(int i);
// The row a code is written with; null for a code that is no function of the language.
KOBWBX_API const KOBWBFunctionName* KOBWBFindWrittenFunction(KOBWBExpressionType type);
// The row of a name the scanner reads as a built-in function (length characters
// of name, which need not end there); null for any other name.
KOBWBX_API const KOBWBFunctionName* KOBWBFindReadFunction(const char* name, int length);

#endif
