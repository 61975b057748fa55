#ifndef KOBWBHyperbolic_h
#define KOBWBHyperbolic_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Hyperbolic functions and their inverses. The argument is first restricted to the
// domain (sinh, cosh: [-2 KOBWBMaxHypReal, 2 KOBWBMaxHypReal], acosh: [1, KOBWBMaxReal],
// atanh: [KOBWBAbsPrecision - 1, 1 - KOBWBAbsPrecision]); nothing left sets bit 1 and
// gives KOBWBReal_Nil. All are monotone but cosh, which is taken on |x|. The levels
// and the error bits are those of KOBWBArithmetic.h.

KOBWBX_API KOBWBRealInterval KOBWBSinh(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBSinh(const KOBWBEnvironment& environment, const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBCosh(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBCosh(const KOBWBEnvironment& environment, const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBTanh(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBTanh(const KOBWBEnvironment& environment, const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBAsinh(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBAsinh(const KOBWBEnvironment& environment, const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBAcosh(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBAcosh(const KOBWBEnvironment& environment, const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBAtanh(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBAtanh(const KOBWBEnvironment& environment, const KOBWBValue& x);

#endif
