#ifndef KOBWBModelFunctions_h
#define KOBWBModelFunctions_h

#include "KOBWBExpressionType.h"

// The built-in functions of the model language.

// The name a function is written with ("sqrt", "atan2", "Int", ...); null for a
// code that is no built-in function.
const char* KOBWBFunctionName(KOBWBExpressionType type);

// How many arguments a function takes, from minimum to maximum (-1: no upper
// bound); false for the codes whose arguments are not counted (step, whose
// parameters vary, and what is no built-in function).
bool KOBWBFunctionArity(KOBWBExpressionType type, int& minimum, int& maximum);

#endif
