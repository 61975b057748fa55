#ifndef KOBWBPowerProjections_h
#define KOBWBPowerProjections_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Projections of powers, roots, the exponential and the logarithms. Names, argument
// order, levels and error bits are those of KOBWBArithmeticProjections.h.

// z = x^n for an integer n: x narrowed to the real n-th roots of z (both signs for an
// even n, the signed root for an odd n; for n < 0 the roots of 1 / z). n = 0 leaves x
// whole when z holds 1 and empty otherwise.
KOBWBX_API KOBWBRealInterval KOBWBInversePow1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x, int n);
KOBWBX_API KOBWBValue KOBWBInversePow1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, int n);
// z = x^y = exp(y ln x) with a real exponent, on x > 0: the base narrowed to
// exp(ln z / y) and the exponent to ln z / ln x (each quotient taken as a set); the
// base inside [KOBWBMinReal, KOBWBMaxReal], as KOBWBPow restricts it.
KOBWBX_API KOBWBRealInterval KOBWBInversePow1(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
KOBWBX_API KOBWBRealInterval KOBWBInversePow2(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x,
                                              const KOBWBRealInterval& y);
// An exponent read as a single number with an integral value is taken as the integer
// power, as KOBWBPow does; the exponent is then left as it is by KOBWBInversePow2.
KOBWBX_API KOBWBValue KOBWBInversePow1(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);
KOBWBX_API KOBWBValue KOBWBInversePow2(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, const KOBWBValue& y);

// z = an n-th root of x, of any branch: x narrowed to z^n. Index 0 (the limit of
// x^(1/n)) gives [0, 1) where z holds 0 and 1 where it holds 1.
KOBWBX_API KOBWBRealInterval KOBWBInverseRoot(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x, int n);
KOBWBX_API KOBWBValue KOBWBInverseRoot(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x, int n);
// z = sqrt(x) >= 0: x narrowed to the squares of the non-negative part of z.
KOBWBX_API KOBWBRealInterval KOBWBInverseSqrt(const KOBWBEnvironment& environment,
                                              const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseSqrt(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                       const KOBWBValue& x);

// z = exp(x): x narrowed to ln z. z reaching below the smallest normal double leaves x
// unbounded below, and z below it keeps every x whose exponential is that small.
KOBWBX_API KOBWBRealInterval KOBWBInverseExp(const KOBWBEnvironment& environment,
                                             const KOBWBRealInterval& z,
                                             const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseExp(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                      const KOBWBValue& x);
// z = ln x and z = log10 x: x narrowed to exp z and to 10^z, inside the logarithms'
// domain [KOBWBMinReal, KOBWBMaxReal] as KOBWBLn and KOBWBLog restrict it.
KOBWBX_API KOBWBRealInterval KOBWBInverseLn(const KOBWBEnvironment& environment,
                                            const KOBWBRealInterval& z, const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseLn(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                     const KOBWBValue& x);
KOBWBX_API KOBWBRealInterval KOBWBInverseLog(const KOBWBEnvironment& environment,
                                             const KOBWBRealInterval& z,
                                             const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBInverseLog(const KOBWBEnvironment& environment, const KOBWBValue& z,
                                      const KOBWBValue& x);

#endif
