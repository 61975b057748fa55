#ifndef KOBWBExponentials_h
#define KOBWBExponentials_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Exponential and logarithms, monotone on their domains. The argument is first
// restricted to the domain (exp: [-KOBWBMaxReal, 2 KOBWBMaxExpReal], the logarithms:
// [KOBWBMinReal, KOBWBMaxReal]); nothing left sets bit 1 and gives KOBWBReal_Nil, so
// the logarithm of 0 or of exp(-100) (below KOBWBMinReal) has no value. The
// levels and the error bits are those of KOBWBArithmetic.h.

KOBWBX_API KOBWBRealInterval KOBWBExp(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBExp(const KOBWBEnvironment& environment, const KOBWBValue& x);

// The natural logarithm.
KOBWBX_API KOBWBRealInterval KOBWBLn(const KOBWBEnvironment& environment,
                                     const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBLn(const KOBWBEnvironment& environment, const KOBWBValue& x);

// The decimal logarithm.
KOBWBX_API KOBWBRealInterval KOBWBLog(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBLog(const KOBWBEnvironment& environment, const KOBWBValue& x);

#endif
