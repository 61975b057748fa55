#ifndef KOBWBProjectionDispatch_h
#define KOBWBProjectionDispatch_h

#include "KOBWBInterval.h"
#include "KOBWBValue.h"

class KOBWBEnvironment;

// The value level of every projection: one dispatch on the kind of the narrowed
// argument, given the interval-level projection (the rules are those of
// KOBWBArithmeticProjections.h).
namespace kobwb {

using UnaryProjection = KOBWBRealInterval (*)(const KOBWBEnvironment&, const KOBWBRealInterval& z,
                                              const KOBWBRealInterval& x);
using BinaryProjection = KOBWBRealInterval (*)(const KOBWBEnvironment&, const KOBWBRealInterval& z,
                                               const KOBWBRealInterval& x,
                                               const KOBWBRealInterval& y);

// A result domain or an other argument read as a real interval; Undefined and Boolean
// values set bit 2 and answer false.
bool ReadDomain(const KOBWBEnvironment& environment, const KOBWBValue& v,
                KOBWBRealInterval& domain);

// A narrowing of real intervals with its context: an interval-level projection with
// its other operands bound.
struct Narrowing {
    KOBWBRealInterval (*narrow)(const KOBWBEnvironment&, const void* context,
                                const KOBWBRealInterval& x);
    const void* context;

    KOBWBRealInterval operator()(const KOBWBEnvironment& environment,
                                 const KOBWBRealInterval& x) const {
        return narrow(environment, context, x);
    }
};

// x narrowed by the narrowing, keeping its kind.
KOBWBValue NarrowValue(const KOBWBEnvironment& environment, const KOBWBValue& x,
                       const Narrowing& narrowing);

template <class F>
KOBWBValue NarrowValueWith(const KOBWBEnvironment& environment, const KOBWBValue& x, const F& f) {
    const Narrowing narrowing{
        [](const KOBWBEnvironment& e, const void* context, const KOBWBRealInterval& a) {
            return (*static_cast<const F*>(context))(e, a);
        },
        &f};
    return NarrowValue(environment, x, narrowing);
}

KOBWBValue ProjectUnary(const KOBWBEnvironment& environment, UnaryProjection projection,
                        const KOBWBValue& z, const KOBWBValue& x);
// The first argument, x, of z = f(x, y).
KOBWBValue ProjectFirst(const KOBWBEnvironment& environment, BinaryProjection projection,
                        const KOBWBValue& z, const KOBWBValue& x, const KOBWBValue& y);
// The second argument, y, of z = f(x, y).
KOBWBValue ProjectSecond(const KOBWBEnvironment& environment, BinaryProjection projection,
                         const KOBWBValue& z, const KOBWBValue& x, const KOBWBValue& y);

} // namespace kobwb

#endif
