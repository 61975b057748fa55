#ifndef KOBWBDomain_h
#define KOBWBDomain_h

#include "KOBWBInterval.h"

class KOBWBEnvironment;

// The domains of the unary real functions, by code, and the restriction of an
// argument to them.
namespace kobwb {

enum DomainCode {
    domainPower = 0, // x^n: |x| up to KOBWBMaxReal^(1/n); n < 0: a hole around 0
    domainRoot = 1,  // n-th root: n even: x >= 0; n < 0: a hole around 0; n = 0: [0, 1]
    domainSin = 2,
    domainCos = 3,
    domainTan = 4,
    domainAsin = 5,
    domainAcos = 6,
    domainAtan = 7,
    domainSinh = 8,
    domainCosh = 9,
    domainTanh = 10,
    domainAsinh = 11,
    domainAcosh = 12,
    domainAtanh = 13,
    domainSqrt = 14,
    domainLog = 15, // ln, log and the base of a power with an interval exponent
    domainExp = 16
};

// A domain is an interval from which, for some codes, the open hole (-hole, hole)
// around 0 is cut out (hole 0: none). A firm lower bound is one below which the
// function has no value the library can represent (the logarithms and the powers with
// a real exponent stop at KOBWBMinReal, where the function itself goes on towards 0):
// an argument wholly below it is not snapped up onto it, since the value there would
// be far from the function's value at the argument.
struct Domain {
    KOBWBRealInterval range;
    double hole;
    bool firmLower = false;
};

// n is the index of a power or a root; the other codes ignore it.
Domain DomainOf(int code, int n);

// Narrows the argument to the domain of the code. An inconsistent argument, or one
// of which nothing is left, sets bit 1 and gives false with KOBWBReal_Nil. The
// narrowing is KOBWBIntersect with the environment's tolerance, so that an argument
// within the tolerance of the domain keeps a point of it; bounds left outside by
// that snapping are then moved onto the domain, so the function is never applied
// outside it. A firm lower bound does not snap: an argument wholly below it has
// nothing left.
bool RestrictToDomain(const KOBWBEnvironment& environment, const KOBWBRealInterval& argument,
                      int code, int n, KOBWBRealInterval& restricted);

// The consistency check alone, for the functions defined everywhere: false (bit 1,
// KOBWBReal_Nil) for an inconsistent argument, else the argument in order.
bool CheckArgument(const KOBWBEnvironment& environment, const KOBWBRealInterval& argument,
                   KOBWBRealInterval& checked);

// The image of an increasing function over its restricted argument, clamped.
KOBWBRealInterval IncreasingImage(const KOBWBEnvironment& environment,
                                  const KOBWBRealInterval& argument, int code,
                                  double (*function)(double));

} // namespace kobwb

#endif
