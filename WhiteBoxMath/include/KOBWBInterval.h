#ifndef KOBWBInterval_h
#define KOBWBInterval_h

#include "KOBWBxExport.h"

// Plain interval aggregates, lower bound first. Emptiness is lower > upper (for
// reals: lower - upper above the tolerance in force); there is no separate flag.
struct KOBWBRealInterval {
    double lower;
    double upper;
};

struct KOBWBIntegerInterval {
    int lower;
    int upper;
};

// [x, x], without validation.
KOBWBX_API KOBWBRealInterval KOBWBCreateRealInterval(double x);
// Crossed bounds or bounds wholly beyond the real infinity give KOBWBReal_Nil;
// otherwise each bound is clamped into [-KOBWBMaxReal, KOBWBMaxReal].
KOBWBX_API KOBWBRealInterval KOBWBCreateRealInterval(double lower, double upper);
KOBWBX_API KOBWBRealInterval KOBWBCreateRealInterval(const KOBWBIntegerInterval& interval);
KOBWBX_API KOBWBIntegerInterval KOBWBCreateIntegerInterval(int n);
KOBWBX_API KOBWBIntegerInterval KOBWBCreateIntegerInterval(int lower, int upper);
// The integers inside the real interval, each bound snapped by KOBWBAbsPrecision.
KOBWBX_API KOBWBIntegerInterval KOBWBCreateIntegerInterval(const KOBWBRealInterval& interval);

// a + b saturated at plus or minus KOBWBMaxInteger; overflow tells whether it saturated.
KOBWBX_API int KOBWBSaturatedAdd(int a, int b, bool& overflow);

KOBWBX_API bool KOBWBIsEmpty(const KOBWBIntegerInterval& a);
KOBWBX_API bool KOBWBIsEmpty(const KOBWBRealInterval& a, double tolerance);
KOBWBX_API bool KOBWBIsConsistent(const KOBWBIntegerInterval& a);
KOBWBX_API bool KOBWBIsConsistent(const KOBWBRealInterval& a, double tolerance);
KOBWBX_API bool KOBWBIsExact(const KOBWBIntegerInterval& a);
KOBWBX_API bool KOBWBIsExact(const KOBWBRealInterval& a, double tolerance);
// True as soon as one bound is finite: the interval is not the whole line.
KOBWBX_API bool KOBWBIsFinite(const KOBWBIntegerInterval& a);
KOBWBX_API bool KOBWBIsFinite(const KOBWBRealInterval& a);
KOBWBX_API bool KOBWBIsInfinite(const KOBWBIntegerInterval& a);
KOBWBX_API bool KOBWBIsInfinite(const KOBWBRealInterval& a);
KOBWBX_API int KOBWBWidth(const KOBWBIntegerInterval& a);
KOBWBX_API double KOBWBWidth(const KOBWBRealInterval& a);
KOBWBX_API double KOBWBMiddle(const KOBWBRealInterval& a);
KOBWBX_API int KOBWBSignum(const KOBWBRealInterval& a);
KOBWBX_API bool KOBWBIsEqual(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b);
KOBWBX_API bool KOBWBIsEqual(const KOBWBRealInterval& a, const KOBWBRealInterval& b, double tolerance);
KOBWBX_API bool KOBWBContains(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b);
KOBWBX_API bool KOBWBContains(const KOBWBRealInterval& a, const KOBWBRealInterval& b, double tolerance);
KOBWBX_API int KOBWBMAG(const KOBWBIntegerInterval& a);
KOBWBX_API double KOBWBMAG(const KOBWBRealInterval& a);
KOBWBX_API KOBWBIntegerInterval KOBWBUnite(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBRealInterval KOBWBUnite(const KOBWBRealInterval& a, const KOBWBRealInterval& b, double tolerance);
KOBWBX_API KOBWBIntegerInterval KOBWBIntersect(const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b);
// Narrows a by b. Bounds of b lying only marginally inside a keep a's bounds, and
// a near miss closes to a point instead of becoming empty; not symmetric.
KOBWBX_API KOBWBRealInterval KOBWBIntersect(const KOBWBRealInterval& a, const KOBWBRealInterval& b, double tolerance);

#endif
