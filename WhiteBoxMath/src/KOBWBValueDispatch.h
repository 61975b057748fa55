#ifndef KOBWBValueDispatch_h
#define KOBWBValueDispatch_h

#include "KOBWBOperationTable.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// The value level of every forward function: one dispatch on the kinds of the
// arguments, driven by the function's row of the operation table.
//
// Undefined and Boolean arguments set bit 2 and give the RealInterval value
// KOBWBReal_Nil ("Contr" for comparisons). Integer kinds use the function's integer
// form when it has one. A single number that stands for any gives the interval of the
// function's range; other single numbers give a single number, or the interval when the
// image is wider than a point. Intervals give intervals. An enumeration held as a list
// is mapped element by element (all pairs for two lists, a single number counting as a
// one-element list), an image wider than a point turning the result into the interval of
// the hull; an enumeration not held as a list goes through its hull. Enumeration
// results are normalised with Correct.
namespace kobwb {

KOBWBValue ApplyUnary(const KOBWBEnvironment& environment, Unary code, const KOBWBValue& x,
                      const UnaryArguments& arguments = {});

// Two exact numbers of which one is a fraction are combined exactly first when the
// function has a fraction rule and the result fits.
KOBWBValue ApplyBinary(const KOBWBEnvironment& environment, Binary code, const KOBWBValue& a,
                       const KOBWBValue& b, const KOBWBRealInterval* hint = nullptr);

KOBWBValue ApplyComparison(const KOBWBEnvironment& environment, Comparison code,
                           const KOBWBValue& a, const KOBWBValue& b);

// A branch hint given as a value: its real interval, kept in storage, or null (no hint)
// for a null, Undefined or Boolean value.
const KOBWBRealInterval* HintOf(const KOBWBValue* hint, KOBWBRealInterval& storage);

} // namespace kobwb

#endif
