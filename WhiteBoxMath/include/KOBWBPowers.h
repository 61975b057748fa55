#ifndef KOBWBPowers_h
#define KOBWBPowers_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// Powers and roots. The levels and the error bits are those of KOBWBArithmetic.h.

// x^n for an integer n. The argument is first restricted to |x| <= KOBWBMaxReal^(1/n)
// for n > 1, and for n < 0 the hole |x| < KOBWBMinReal^(1/|n|), where the power
// would exceed KOBWBMaxReal, is cut out (an argument wholly inside it, 0 included,
// sets bit 1 and gives the Nil interval). x^0 is 1 everywhere, 0^0 included. Even
// powers are taken on |x|: [0, mag^n] when 0 is inside; odd powers are monotone. A
// negative power of an argument that still spans the hole gives [mag^n, KOBWBMaxReal]
// for an even n and KOBWBReal_Any for an odd n.
KOBWBX_API KOBWBRealInterval KOBWBPow(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& x, int n);
// The same with exact integers saturating at plus or minus KOBWBMaxInteger. For
// n < 0 the result holds the integers inside the real power (only bases 1 and -1
// have integer powers); none sets bit 1 and gives KOBWBInteger_Nil.
KOBWBX_API KOBWBIntegerInterval KOBWBPow(const KOBWBEnvironment& environment,
                                         const KOBWBIntegerInterval& x, int n);
// x^y = exp(y ln x) on the base restricted to [KOBWBMinReal, KOBWBMaxReal] (domain
// code 15: bit 1 and Nil when nothing is left, so a base of 0 or one wholly below
// KOBWBMinReal has no power; it is never moved up onto KOBWBMinReal). The exponent y ln x goes through the domain of exp, so
// a power wholly beyond twice its overflow point sets bit 1 and is empty. The bounds
// are those of pow at the four corners, since x^y is monotone in each argument.
KOBWBX_API KOBWBRealInterval KOBWBPow(const KOBWBEnvironment& environment,
                                      const KOBWBRealInterval& x, const KOBWBRealInterval& y);
// Integer kinds keep an integer power for n >= 0 and give the real power for n < 0; an
// exact fraction stays an exact fraction (Pi^2, 8/Pi^3) while its numbers fit.
KOBWBX_API KOBWBValue KOBWBPow(const KOBWBEnvironment& environment, const KOBWBValue& x, int n);
// An exponent given as a single number with an integral value is taken as an integer
// power, so that negative bases keep their integer powers; any other exponent goes
// through exp and ln.
KOBWBX_API KOBWBValue KOBWBPow(const KOBWBEnvironment& environment, const KOBWBValue& x,
                               const KOBWBValue& y);

// The n-th roots: numbers r with r^n in x, where r^n for n < 0 is 1 / r^|n|; the
// index 0 gives the limit of x^(1/n) as n tends to 0 from above (0 on [0, 1), 1 at 1). The
// argument is restricted first (domain code 1: x >= 0 for an even n, a hole
// |x| < KOBWBMinReal cut out for n < 0, [0, 1] for n = 0). Bounds are computed in long
// double and then widened outwards by the factor KOBWBOnePlusEps, so that the result
// holds the exact roots despite the rounding of 1/n.
// KOBWBRootPositive keeps the roots >= 0 and KOBWBRootNegative those <= 0; for an odd
// n these are the roots of the non-negative and of the non-positive points of x. Bit 1
// when there is none.
KOBWBX_API KOBWBRealInterval KOBWBRootPositive(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& x, int n);
KOBWBX_API KOBWBRealInterval KOBWBRootNegative(const KOBWBEnvironment& environment,
                                               const KOBWBRealInterval& x, int n);
// Without a hint, the principal root: the positive branch for an even n, the real
// root of every point of x for an odd n. With a hint on the result, the hull of the
// branches (positive, negative) whose image meets the hint; bit 1 when none does.
KOBWBX_API KOBWBRealInterval KOBWBRoot(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x, int n,
                                       const KOBWBRealInterval* hint = nullptr);
// A hint that is null, Undefined or Boolean selects the principal root.
KOBWBX_API KOBWBValue KOBWBRoot(const KOBWBEnvironment& environment, const KOBWBValue& x, int n,
                                const KOBWBValue* hint = nullptr);
KOBWBX_API KOBWBValue KOBWBRootPositive(const KOBWBEnvironment& environment, const KOBWBValue& x,
                                        int n);
KOBWBX_API KOBWBValue KOBWBRootNegative(const KOBWBEnvironment& environment, const KOBWBValue& x,
                                        int n);

// The square root on x >= 0 (domain code 14), exactly rounded: no widening.
KOBWBX_API KOBWBRealInterval KOBWBSqrt(const KOBWBEnvironment& environment,
                                       const KOBWBRealInterval& x);
KOBWBX_API KOBWBValue KOBWBSqrt(const KOBWBEnvironment& environment, const KOBWBValue& x);

#endif
