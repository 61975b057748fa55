#ifndef KOBWBLogicProjections_h
#define KOBWBLogicProjections_h

#include "KOBWBBoolean.h"
#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Projections of the comparisons and of the four-valued logic. Names and argument
// order are those of KOBWBArithmeticProjections.h: the result z comes first, then the
// arguments of the forward function.
//
// Comparisons. z is the truth of the comparison: "True" narrows x to the points that
// satisfy it with some point of y, "False" to those that violate it with some point
// of y, "Undef" leaves x as it is, and "Contr" (no outcome) leaves nothing: Nil and
// bit 1. Strict orders are closed on reals (x < y keeps x <= y.upper), and exact on
// integers (x < y keeps x <= y.upper - 1). Real equalities narrow with the tolerance of
// the real intersection; a real inequality x != y removes nothing, an integer one
// removes y from the ends of x when y is a single integer.
//
// Logic. Each boolean is the set of its possible outcomes ("Undef" both, "Contr" none);
// an argument keeps the outcomes that give an outcome of z with some outcome of the
// other argument. An argument left with none is "Contr". At the value level the
// arguments are read as booleans (a number is true when non-zero).

KOBWBX_API KOBWBRealInterval KOBWBInverseEqual1(const KOBWBEnvironment& environment, KOBWBBoolean z,
                                                const KOBWBRealInterval& x,
                                                const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseEqual2(const KOBWBEnvironment& environment, KOBWBBoolean z,
                                                const KOBWBRealInterval& x,
                                                const KOBWBRealInterval& y);
KOBWBX_API KOBWBIntegerInterval KOBWBInverseEqual1(const KOBWBEnvironment& environment,
                                                   KOBWBBoolean z, const KOBWBIntegerInterval& x,
                                                   const KOBWBIntegerInterval& y);
KOBWBX_API KOBWBIntegerInterval KOBWBInverseEqual2(const KOBWBEnvironment& environment,
                                                   KOBWBBoolean z, const KOBWBIntegerInterval& x,
                                                   const KOBWBIntegerInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseNotEqual1(const KOBWBEnvironment& environment,
                                                   KOBWBBoolean z, const KOBWBRealInterval& x,
                                                   const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseNotEqual2(const KOBWBEnvironment& environment,
                                                   KOBWBBoolean z, const KOBWBRealInterval& x,
                                                   const KOBWBRealInterval& y);
KOBWBX_API KOBWBIntegerInterval KOBWBInverseNotEqual1(const KOBWBEnvironment& environment,
                                                      KOBWBBoolean z, const KOBWBIntegerInterval& x,
                                                      const KOBWBIntegerInterval& y);
KOBWBX_API KOBWBIntegerInterval KOBWBInverseNotEqual2(const KOBWBEnvironment& environment,
                                                      KOBWBBoolean z, const KOBWBIntegerInterval& x,
                                                      const KOBWBIntegerInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseLessEqual1(const KOBWBEnvironment& environment,
                                                    KOBWBBoolean z, const KOBWBRealInterval& x,
                                                    const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseLessEqual2(const KOBWBEnvironment& environment,
                                                    KOBWBBoolean z, const KOBWBRealInterval& x,
                                                    const KOBWBRealInterval& y);
KOBWBX_API KOBWBIntegerInterval KOBWBInverseLessEqual1(const KOBWBEnvironment& environment,
                                                       KOBWBBoolean z,
                                                       const KOBWBIntegerInterval& x,
                                                       const KOBWBIntegerInterval& y);
KOBWBX_API KOBWBIntegerInterval KOBWBInverseLessEqual2(const KOBWBEnvironment& environment,
                                                       KOBWBBoolean z,
                                                       const KOBWBIntegerInterval& x,
                                                       const KOBWBIntegerInterval& y);
// The value level: z is read as a boolean; two integer kinds use the integer forms
// and keep their kinds, other numbers follow KOBWBArithmeticProjections.h.
KOBWBX_API KOBWBValue KOBWBInverseEqual1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                         const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseEqual2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                         const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseNotEqual1(const KOBWBEnvironment& environment,
                                            const KOBWBValue& z, const KOBWBValue& x,
                                            const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseNotEqual2(const KOBWBEnvironment& environment,
                                            const KOBWBValue& z, const KOBWBValue& x,
                                            const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseLessEqual1(const KOBWBEnvironment& environment,
                                             const KOBWBValue& z, const KOBWBValue& x,
                                             const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseLessEqual2(const KOBWBEnvironment& environment,
                                             const KOBWBValue& z, const KOBWBValue& x,
                                             const KOBWBValue& y);

KOBWBX_API KOBWBBoolean KOBWBInverseNot(KOBWBBoolean z, KOBWBBoolean a);
KOBWBX_API KOBWBBoolean KOBWBInverseAnd1(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBBoolean KOBWBInverseAnd2(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBBoolean KOBWBInverseOr1(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBBoolean KOBWBInverseOr2(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBBoolean KOBWBInverseImplication1(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBBoolean KOBWBInverseImplication2(KOBWBBoolean z, KOBWBBoolean a, KOBWBBoolean b);
KOBWBX_API KOBWBValue KOBWBInverseNot(const KOBWBValue& z, const KOBWBValue& a);
KOBWBX_API KOBWBValue KOBWBInverseAnd1(const KOBWBValue& z, const KOBWBValue& a,
                                       const KOBWBValue& b);
KOBWBX_API KOBWBValue KOBWBInverseAnd2(const KOBWBValue& z, const KOBWBValue& a,
                                       const KOBWBValue& b);
KOBWBX_API KOBWBValue KOBWBInverseOr1(const KOBWBValue& z, const KOBWBValue& a,
                                      const KOBWBValue& b);
KOBWBX_API KOBWBValue KOBWBInverseOr2(const KOBWBValue& z, const KOBWBValue& a,
                                      const KOBWBValue& b);
KOBWBX_API KOBWBValue KOBWBInverseImplication1(const KOBWBValue& z, const KOBWBValue& a,
                                               const KOBWBValue& b);
KOBWBX_API KOBWBValue KOBWBInverseImplication2(const KOBWBValue& z, const KOBWBValue& a,
                                               const KOBWBValue& b);

#endif
