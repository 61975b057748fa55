#ifndef KOBWBUnitConversion_h
#define KOBWBUnitConversion_h

#include "KOBWBValue.h"

// The factory's internal units are millimetres and radians. The factor of a unit
// text is what a number written with that unit is multiplied by; angles that are
// exact multiples of Pi keep an exact fraction of Pi. The apostrophe and the
// double quote are feet and inches among lengths, minutes and seconds of arc among
// angles; the degree sign is always the degree.
// False for a text that is not a unit.
bool KOBWBGetUnitFactor(const char* unit, bool amongAngles, KOBWBValue& factor);
// True for the apostrophe and the double quote, which are lengths or angles.
bool KOBWBIsAmbiguousUnit(const char* unit);

#endif
