#ifndef KOBWBComparisons_h
#define KOBWBComparisons_h

#include "KOBWBBoolean.h"
#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Comparisons of domains and four-valued logic. A comparison tells "True" when it
// holds for every pair of points, "False" when for none, and "Undef" otherwise; an
// inconsistent argument sets bit 1 and gives "Contr". Real comparisons use the
// tolerance t = KOBWBAbsPrecision.
//
// At the value level numbers of any kind are compared, enumerations element by
// element when both sides list their elements; two Booleans can be tested for
// (in)equality. Other kinds (Undefined, a Boolean against a number, Booleans ordered)
// set bit 2 and give "Contr", the empty boolean.

// "True" when both intervals are narrower than t and their bounds closer than t;
// "False" when one lies more than t above the other.
KOBWBX_API KOBWBBoolean KOBWBEqual(const KOBWBEnvironment& environment, const KOBWBRealInterval& a,
                                   const KOBWBRealInterval& b);
KOBWBX_API KOBWBBoolean KOBWBEqual(const KOBWBEnvironment& environment,
                                   const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBEqual(const KOBWBEnvironment& environment, const KOBWBValue& a,
                                 const KOBWBValue& b);

// "True" when the lower bound of y is at least the upper bound of x (no tolerance);
// "False" when the lower bound of x lies more than t above the upper bound of y.
KOBWBX_API KOBWBBoolean KOBWBLessEqual(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x, const KOBWBRealInterval& y);
KOBWBX_API KOBWBBoolean KOBWBLessEqual(const KOBWBEnvironment& environment,
                                       const KOBWBIntegerInterval& x,
                                       const KOBWBIntegerInterval& y);
KOBWBX_API KOBWBValue KOBWBLessEqual(const KOBWBEnvironment& environment, const KOBWBValue& x,
                                     const KOBWBValue& y);

// The negation of KOBWBEqual.
KOBWBX_API KOBWBBoolean KOBWBNotEqual(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& a, const KOBWBRealInterval& b);
KOBWBX_API KOBWBBoolean KOBWBNotEqual(const KOBWBEnvironment& environment,
                                      const KOBWBIntegerInterval& a, const KOBWBIntegerInterval& b);
KOBWBX_API KOBWBValue KOBWBNotEqual(const KOBWBEnvironment& environment, const KOBWBValue& a,
                                    const KOBWBValue& b);

// Four-valued logic: each boolean is the set of its possible outcomes ("Undef" both,
// "Contr" none) and the result is the set of outcomes of all combinations, so
// "Contr" absorbs and "Undef" results where either outcome is possible. A value is
// read as a boolean: Undefined is "Undef", a number is true when non-zero ("Undef"
// when its domain holds 0 and more, "Contr" when empty).
KOBWBX_API KOBWBBoolean KOBWBAnd(KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBBoolean KOBWBOr(KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBBoolean KOBWBNot(KOBWBBoolean a);
// a implies b: not a, or b.
KOBWBX_API KOBWBBoolean KOBWBImplication(KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBValue KOBWBAnd(const KOBWBValue& a, const KOBWBValue& b);
KOBWBX_API KOBWBValue KOBWBOr(const KOBWBValue& a, const KOBWBValue& b);
KOBWBX_API KOBWBValue KOBWBNot(const KOBWBValue& a);
KOBWBX_API KOBWBValue KOBWBImplication(const KOBWBValue& a, const KOBWBValue& b);

#endif
