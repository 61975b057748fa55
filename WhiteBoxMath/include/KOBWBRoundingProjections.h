#ifndef KOBWBRoundingProjections_h
#define KOBWBRoundingProjections_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Projections of the roundings. Names, argument order, levels and error bits are
// those of KOBWBArithmeticProjections.h. The result domain z is first narrowed to the
// integers it holds (snapped by KOBWBAbsPrecision); x is then narrowed to the points
// that round into them, the open ends of those half-open ranges replaced by the
// nearest double inside, so that an integer argument keeps exactly the integers that
// round into z.

// floor(x) = k for x in [k, k + 1).
KOBWBX_API KOBWBRealInterval KOBWBInverseFloor(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseFloor(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x);
// ceil(x) = k for x in (k - 1, k].
KOBWBX_API KOBWBRealInterval KOBWBInverseCeil(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseCeil(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);
// round(x) = k, halves away from zero: [k - 1/2, k + 1/2) for k > 0, (k - 1/2, k + 1/2]
// for k < 0, (-1/2, 1/2) for 0.
KOBWBX_API KOBWBRealInterval KOBWBInverseRound(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseRound(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x);
// trunc(x) = k: [k, k + 1) for k > 0, (k - 1, k] for k < 0, (-1, 1) for 0.
KOBWBX_API KOBWBRealInterval KOBWBInverseTrunc(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseTrunc(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x);

#endif
