#ifndef KOBWBTrigonometry_h
#define KOBWBTrigonometry_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Trigonometric functions and their inverses. The levels and the error bits are those
// of KOBWBArithmetic.h.

// Sine and cosine on an argument restricted to KOBWBReal_Trig: [-1, 1] for a width of
// 2 Pi or more; otherwise the values at the bounds, with -1 and 1 added when the
// quadrants of the bounds (floor(2 x / Pi) modulo 4) tell that a minimum or a maximum
// lies between them. A single real beyond KOBWBReal_Trig gives KOBWBSingleReal_Any
// without an error: the range is known, the phase is not.
KOBWBX_API KOBWBRealInterval KOBWBSin(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBSin(const KOBWBEnvironment& environment, const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBCos(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBCos(const KOBWBEnvironment& environment, const KOBWBValue& x);
// KOBWBReal_Any when the width exceeds Pi or a pole lies between the bounds.
KOBWBX_API KOBWBRealInterval KOBWBTan(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBTan(const KOBWBEnvironment& environment, const KOBWBValue& x);

// The inverses return angles of one branch or of several. Without a hint (a null
// pointer; at the value level also an Undefined or Boolean hint) the principal branch:
// asin in [-Pi/2, Pi/2], acos in [0, Pi], atan in [-Pi/2, Pi/2], atan2 in [-Pi, Pi].
// With a hint on the result, every branch whose image meets the hint is kept and the
// result is the hull of the kept images; a hint that meets none sets bit 1 and gives
// KOBWBReal_Nil. The branches are: asin(x) + 2k Pi and Pi - asin(x) + 2k Pi;
// acos(x) + 2k Pi and -acos(x) + 2k Pi; atan(x) + k Pi; atan2(y, x) + 2k Pi.
// asin and acos restrict their argument to KOBWBReal_TrigInv = [-1, 1].
KOBWBX_API KOBWBRealInterval KOBWBAsin(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x,
                                       const KOBWBRealInterval* hint = nullptr);
KOBWBX_API KOBWBValue KOBWBAsin(const KOBWBEnvironment& environment, const KOBWBValue& x,
                                const KOBWBValue* hint = nullptr);
KOBWBX_API KOBWBRealInterval KOBWBAcos(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x,
                                       const KOBWBRealInterval* hint = nullptr);
KOBWBX_API KOBWBValue KOBWBAcos(const KOBWBEnvironment& environment, const KOBWBValue& x,
                                const KOBWBValue* hint = nullptr);
KOBWBX_API KOBWBRealInterval KOBWBAtan(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x,
                                       const KOBWBRealInterval* hint = nullptr);
KOBWBX_API KOBWBValue KOBWBAtan(const KOBWBEnvironment& environment, const KOBWBValue& x,
                                const KOBWBValue* hint = nullptr);

// The angle of the point (x, y), ordinate first as in std::atan2, over the box y, x
// without the origin. A box with the origin strictly inside (or a segment through it)
// gives every angle; a segment that only ends at the origin gives the angle of its other
// points; the origin alone sets bit 1 and gives KOBWBReal_Nil. Otherwise
// the angles form one arc whose ends are angles of corners; on the principal branch,
// an arc that crosses the negative x axis gives [-Pi, Pi].
KOBWBX_API KOBWBRealInterval KOBWBAtan2(const KOBWBEnvironment& environment,
                                        const KOBWBRealInterval& y, const KOBWBRealInterval& x,
                                        const KOBWBRealInterval* hint = nullptr);
KOBWBX_API KOBWBValue KOBWBAtan2(const KOBWBEnvironment& environment, const KOBWBValue& y,
                                 const KOBWBValue& x, const KOBWBValue* hint = nullptr);

#endif
