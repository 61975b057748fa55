#ifndef KOBWBValueType_h
#define KOBWBValueType_h

#include "KOBWBxExport.h"

// The kind of a value. A fraction-tagged value reports Integer or Real.
enum KOBWBValueType {
    KOBWBUndefinedValue = 0,
    KOBWBIntegerValue,
    KOBWBRealValue,
    KOBWBIntegerIntervalValue,
    KOBWBRealIntervalValue,
    KOBWBIntegerEnumValue,
    KOBWBRealEnumValue,
    KOBWBBooleanValue,
    KOBWBFractionValue = 8
};

// "Undefined", "Integer", "Real", "IntegerInterval", "RealInterval", "IntegerEnum",
// "RealEnum", "Boolean"; an empty text for the fraction tag and unknown codes.
KOBWBX_API const char* KOBWBGetValueTypeName(KOBWBValueType type);

// "False", "True", "Undef", "Contr".
KOBWBX_API const char* KOBWBGetBooleanName(int boolean);

#endif
