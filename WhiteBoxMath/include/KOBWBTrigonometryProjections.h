#ifndef KOBWBTrigonometryProjections_h
#define KOBWBTrigonometryProjections_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Projections of the trigonometric and hyperbolic functions and of their inverses.
// Names, argument order, levels and error bits are those of
// KOBWBArithmeticProjections.h.
//
// The periodic functions narrow x to the union of the branches of the inverse over
// every period: sin(x) in z keeps asin(z) + 2k Pi and Pi - asin(z) + 2k Pi, cos(x) in z
// keeps acos(z) + 2k Pi and -acos(z) + 2k Pi, tan(x) in z keeps atan(z) + k Pi. Each
// bound of x moves to the nearest point of that union inside x, however many periods
// x spans; holes inside x stay. A bound beyond 1e15, where a period is below the
// spacing of doubles, is left as it is.
//
// The inverse functions are narrowed through the forward function of the result,
// which holds for every branch: asin(x) in z keeps sin(z), acos(x) in z keeps cos(z),
// atan(x) in z keeps tan(z) (everything when z spans a pole).

KOBWBX_API KOBWBRealInterval KOBWBInverseSin(const KOBWBEnvironment& environment,
                                             const KOBWBRealInterval& z,
                                             const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseSin(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                      const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseCos(const KOBWBEnvironment& environment,
                                             const KOBWBRealInterval& z,
                                             const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseCos(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                      const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseTan(const KOBWBEnvironment& environment,
                                             const KOBWBRealInterval& z,
                                             const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseTan(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                      const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseAsin(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAsin(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseAcos(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAcos(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseAtan(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAtan(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);

// z = atan2(y, x), the angle of the point (x, y), ordinate first as in KOBWBAtan2: the
// point lies in the sector of the angles of z. KOBWBInverseAtan21 narrows y and
// KOBWBInverseAtan22 narrows x (the digit after the function's own 2 names the argument).
// The sector is cut at the axes into arcs within a quadrant; on each, the signs of x and
// y are known and the two edges of the arc bound y against x and x against y, and the
// result is the hull over the arcs. A domain z reaching beyond [-Pi, Pi] (an other branch)
// narrows nothing.
KOBWBX_API KOBWBRealInterval KOBWBInverseAtan21(const KOBWBEnvironment& environment,
                                                const KOBWBRealInterval& z,
                                                const KOBWBRealInterval& y,
                                                const KOBWBRealInterval& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseAtan22(const KOBWBEnvironment& environment,
                                                const KOBWBRealInterval& z,
                                                const KOBWBRealInterval& y,
                                                const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAtan21(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                         const KOBWBValue& y, const KOBWBValue& x);
KOBWBX_API KOBWBValue KOBWBInverseAtan22(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                         const KOBWBValue& y, const KOBWBValue& x);

// Sinh, tanh and their inverses are monotone: x narrowed to the inverse image of z.
// cosh(x) in z keeps acosh(z) and -acosh(z); acosh(x) in z keeps cosh of the
// non-negative part of z.
KOBWBX_API KOBWBRealInterval KOBWBInverseSinh(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseSinh(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseCosh(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseCosh(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseTanh(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseTanh(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseAsinh(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAsinh(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseAcosh(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAcosh(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseAtanh(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseAtanh(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                        const KOBWBValue& x);

#endif
