#ifndef KOBWBStep_h
#define KOBWBStep_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// The smooth step from h0 at x0 to h1 at x1, with the parameters in the order x0, h0,
// x1, h1: h0 for x <= x0, h1 for x >= x1, and h0 + (h1 - h0) t^2 (3 - 2t) with
// t = (x - x0) / (x1 - x0) between. With x1 <= x0 it is a jump at x0. The step is
// monotone, so the image of an interval is that of its bounds. Null parameters set
// bit 2 and give KOBWBReal_Nil. The levels and the error bits are those of
// KOBWBArithmetic.h.
KOBWBX_API KOBWBRealInterval KOBWBStep(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x, const double* parameters);
KOBWBX_API KOBWBValue KOBWBStep(const KOBWBEnvironment& environment, const KOBWBValue& x,
                                const double* parameters);

#endif
