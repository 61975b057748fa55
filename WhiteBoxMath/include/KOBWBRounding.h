#ifndef KOBWBRounding_h
#define KOBWBRounding_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Rounding to integral values, applied to both bounds (every rounding is
// non-decreasing). The result stays real; at the value level integer kinds are
// returned unchanged. The levels and the error bits are those of KOBWBArithmetic.h.

KOBWBX_API KOBWBRealInterval KOBWBCeil(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBCeil(const KOBWBEnvironment& environment, const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBFloor(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBFloor(const KOBWBEnvironment& environment, const KOBWBValue& x);
// Halves are rounded away from zero: 2.5 gives 3 and -2.5 gives -3.
KOBWBX_API KOBWBRealInterval KOBWBRound(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBRound(const KOBWBEnvironment& environment, const KOBWBValue& x);
// Rounding towards zero.
KOBWBX_API KOBWBRealInterval KOBWBTrunc(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBTrunc(const KOBWBEnvironment& environment, const KOBWBValue& x);

#endif
