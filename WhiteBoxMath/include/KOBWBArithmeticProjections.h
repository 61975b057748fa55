#ifndef KOBWBArithmeticProjections_h
#define KOBWBArithmeticProjections_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Projections of the basic arithmetic: for a relation z = f(x) or z = f(x, y), the
// part of one argument that can still satisfy it for the result domain z and the
// other argument.
//
// Names and arguments. KOBWBInverse<F> narrows the argument of a function of one
// argument; KOBWBInverse<F>1 narrows the first argument and KOBWBInverse<F>2 the
// second of a function of two. Every projection takes the environment first, then the
// result domain z, then the arguments in the order of the forward function, and
// returns the narrowed argument:
//     KOBWBInverseAbs(environment, z, x)         x narrowed by z = |x|
//     KOBWBInverseSum1(environment, z, x, y)     x narrowed by z = x + y
//     KOBWBInverseSum2(environment, z, x, y)     y narrowed by z = x + y
//
// Interval level. The result is never wider than the narrowed argument and holds every
// point of it that satisfies the relation with some points of the other domains (an
// over-approximation: holes inside are not cut out). The inversion runs in plain
// double arithmetic, the result domain and the image bounds widened outwards by a few
// units of rounding, so a point whose forward image computed in double lies in z is
// kept. A miss within the environment's tolerance closes to a point. No point left
// gives the Nil interval and sets bit 1; an inconsistent argument sets bit 1 and gives
// Nil, as for the forward functions. A bound at plus or minus KOBWBMaxReal, in the result
// domain or an other argument, is the real infinity and is inverted as one (a forward
// result clamped there stands for every number beyond); results are clamped to it.
//
// Value level. The result domain and the other arguments are read as real intervals
// (enumerations through their hull). The narrowed argument keeps its kind: an integer
// interval is narrowed to the integers inside the real projection; a single number,
// an exact fraction included, is returned unchanged when it can satisfy the relation
// and as the nil number of its kind when it cannot (a number that stands for any is
// narrowed as the whole line and becomes an interval); an enumeration held as a list
// keeps the elements that can satisfy the relation, one held as an interval is
// narrowed through its hull and normalised with Correct. Undefined and Boolean
// arguments set bit 2 and give the RealInterval value KOBWBReal_Nil.

KOBWBX_API KOBWBRealInterval KOBWBInverseSum1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseSum2(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBValue KOBWBInverseSum1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseSum2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);

// z = x - y.
KOBWBX_API KOBWBRealInterval KOBWBInverseSub1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseSub2(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBValue KOBWBInverseSub1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseSub2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);

// z = x y. x is narrowed to z / y as a set: when y holds 0 and z does not, the
// quotient is two unbounded pieces and the result the hull of x on each; when both
// hold 0 every x can satisfy the relation (with y = 0).
KOBWBX_API KOBWBRealInterval KOBWBInverseMul1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseMul2(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBValue KOBWBInverseMul1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseMul2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);

// z = x / y, for y != 0. x is narrowed to z y; y to x / z as a set (z = 0 leaves y
// free when x can be 0, and no y otherwise).
KOBWBX_API KOBWBRealInterval KOBWBInverseDiv1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseDiv2(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBValue KOBWBInverseDiv1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseDiv2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);

// z = min(x, y): x >= z everywhere, and x lies in z when y lies wholly above z.
KOBWBX_API KOBWBRealInterval KOBWBInverseMin1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseMin2(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBValue KOBWBInverseMin1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseMin2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);

// z = max(x, y): x <= z everywhere, and x lies in z when y lies wholly below z.
KOBWBX_API KOBWBRealInterval KOBWBInverseMax1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseMax2(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBValue KOBWBInverseMax1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseMax2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);

// z = |x|: x in z or in -z, for z >= 0.
KOBWBX_API KOBWBRealInterval KOBWBInverseAbs(const KOBWBEnvironment& environment,
                                             const KOBWBRealInterval& z,
                                             const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAbs(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                      const KOBWBValue& x);

// z = KOBWBSign(x, y), |x| with the sign of y: |x| lies in z where y >= 0 and in -z
// where y < 0; y >= 0 when z > 0 and y <= 0 when z < 0.
KOBWBX_API KOBWBRealInterval KOBWBInverseSign1(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x,
                                               const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInverseSign2(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x,
                                               const KOBWBRealInterval& y);
KOBWBX_API KOBWBValue KOBWBInverseSign1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInverseSign2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x, const KOBWBValue& y);

#endif
