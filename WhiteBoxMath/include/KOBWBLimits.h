#ifndef KOBWBLimits_h
#define KOBWBLimits_h

#include "KOBWBInterval.h"

// The library's limits. Every real bound is clamped to [-KOBWBMaxReal, KOBWBMaxReal];
// integer arithmetic saturates at plus or minus KOBWBMaxInteger. The single values
// "any" and "nil" stand for every and for no number of their kind.
extern KOBWBX_API double KOBWBMaxReal;
extern KOBWBX_API double KOBWBMinReal;
extern KOBWBX_API int KOBWBMaxInteger;
extern KOBWBX_API double KOBWBMaxExpReal;
extern KOBWBX_API double KOBWBMaxHypReal;
extern KOBWBX_API int KOBWBMaxPowExpReal;
extern KOBWBX_API double KOBWBAbsPrecision;
extern KOBWBX_API double KOBWBOnePlusEps;
extern KOBWBX_API KOBWBRealInterval KOBWBReal_Trig;
extern KOBWBX_API KOBWBRealInterval KOBWBReal_TrigInv;
extern KOBWBX_API KOBWBRealInterval KOBWBReal_Any;
extern KOBWBX_API KOBWBRealInterval KOBWBReal_Nil;
extern KOBWBX_API KOBWBRealInterval KOBWBReal_Pos;
extern KOBWBX_API KOBWBIntegerInterval KOBWBInteger_Any;
extern KOBWBX_API KOBWBIntegerInterval KOBWBInteger_Nil;
extern KOBWBX_API double KOBWBSingleReal_Any;
extern KOBWBX_API double KOBWBSingleReal_Nil;
extern KOBWBX_API int KOBWBSingleInteger_Any;
extern KOBWBX_API int KOBWBSingleInteger_Nil;

// A single real is any above KOBWBMaxReal and nil below -KOBWBMaxReal; a single
// integer is any or nil only when it equals the corresponding constant.
inline bool KOBWBIsAnyReal(double x) { return x > KOBWBMaxReal; }
inline bool KOBWBIsNilReal(double x) { return x < -KOBWBMaxReal; }
inline bool KOBWBIsAnyInteger(int n) { return n == KOBWBSingleInteger_Any; }
inline bool KOBWBIsNilInteger(int n) { return n == KOBWBSingleInteger_Nil; }

#endif
