#ifndef KOBWBFraction_h
#define KOBWBFraction_h

#include "KOBWBxExport.h"

// numerator / denominator x Pi^powerOfPi, exact. An integer n is {n, 1, 0, 1}.
struct KOBWBFraction {
    int numerator;
    int denominator;
    int powerOfPi;
    int reserved;
};

// The fraction of the four arguments; a reserved field of 0 becomes 1.
KOBWBX_API KOBWBFraction KOBWBCreateFraction(int numerator, int denominator, int powerOfPi,
                                             int reserved);

#endif
