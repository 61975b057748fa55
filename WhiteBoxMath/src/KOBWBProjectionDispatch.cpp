#include "KOBWBProjectionDispatch.h"

#include "KOBWBEnvironment.h"
#include "KOBWBIntervalKernels.h"
#include "KOBWBLimits.h"

namespace kobwb {

namespace {

// Whether the single point can satisfy the relation; the environment of the caller
// is left untouched, since dropping a point is not an error.
bool Keeps(const KOBWBEnvironment& environment, const Narrowing& narrowing, double point) {
    const KOBWBEnvironment scratch = environment;
    const KOBWBRealInterval narrowed = narrowing(scratch, {point, point});
    return narrowed.lower <= narrowed.upper;
}

KOBWBValue NarrowIntegerInterval(const KOBWBEnvironment& environment, const KOBWBIntegerInterval& x,
                                 const Narrowing& narrowing) {
    const KOBWBRealInterval narrowed = narrowing(environment, KOBWBCreateRealInterval(x));
    if (!(narrowed.lower <= narrowed.upper)) return KOBWBValue(KOBWBInteger_Nil);
    const KOBWBIntegerInterval both = KOBWBIntersect(x, KOBWBCreateIntegerInterval(narrowed));
    if (KOBWBIsEmpty(both)) {
        environment.SetError(errorEmptyArgument);
        return KOBWBValue(KOBWBInteger_Nil);
    }
    return KOBWBValue(both);
}

KOBWBValue NarrowSingle(const KOBWBEnvironment& environment, const KOBWBValue& x,
                        const Narrowing& narrowing) {
    const bool integer = x.GetType() == KOBWBIntegerValue;
    if (x.IsIndefinite()) {
        if (integer) return NarrowIntegerInterval(environment, KOBWBInteger_Any, narrowing);
        return KOBWBValue(narrowing(environment, KOBWBReal_Any));
    }
    if (Keeps(environment, narrowing, x.GetAsDouble())) return x;
    environment.SetError(errorEmptyArgument);
    return integer ? KOBWBValue(KOBWBSingleInteger_Nil) : KOBWBValue(KOBWBSingleReal_Nil);
}

template <class Enum, class Element>
KOBWBValue NarrowList(const KOBWBEnvironment& environment, const Enum& x,
                      const Narrowing& narrowing) {
    Enum kept(KOBWBEnumList);
    for (int i = 0; i < x.GetSize(); ++i) {
        const Element element = x.Get(i);
        if (Keeps(environment, narrowing, element)) kept.Append(element);
    }
    if (kept.GetRepresentation() == KOBWBEnumNil) environment.SetError(errorEmptyArgument);
    return KOBWBValue(kept);
}

KOBWBValue NarrowIntegerEnum(const KOBWBEnvironment& environment, const KOBWBIntegerEnum& x,
                             const Narrowing& narrowing) {
    if (x.GetRepresentation() == KOBWBEnumList)
        return NarrowList<KOBWBIntegerEnum, int>(environment, x, narrowing);
    KOBWBIntegerEnum narrowed(KOBWBEnumNil);
    if (x.GetRepresentation() != KOBWBEnumNil) {
        const KOBWBValue hull =
            NarrowIntegerInterval(environment, x.GetAsIntegerInterval(), narrowing);
        if (!KOBWBIsEmpty(hull.GetAsIntegerInterval())) {
            narrowed.SetAsIntegerInterval(hull.GetAsIntegerInterval());
            narrowed.Correct(environment);
        }
    } else {
        environment.SetError(errorEmptyArgument);
    }
    return KOBWBValue(narrowed);
}

KOBWBValue NarrowRealEnum(const KOBWBEnvironment& environment, const KOBWBRealEnum& x,
                          const Narrowing& narrowing) {
    if (x.GetRepresentation() == KOBWBEnumList)
        return NarrowList<KOBWBRealEnum, double>(environment, x, narrowing);
    KOBWBRealEnum narrowed(KOBWBEnumNil);
    if (x.GetRepresentation() != KOBWBEnumNil) {
        const KOBWBRealInterval hull = narrowing(environment, x.GetAsRealInterval());
        if (hull.lower <= hull.upper) {
            narrowed.SetAsRealInterval(hull);
            narrowed.Correct(environment);
        }
    } else {
        environment.SetError(errorEmptyArgument);
    }
    return KOBWBValue(narrowed);
}

struct UnaryContext {
    UnaryProjection projection;
    KOBWBRealInterval z;
};

struct BinaryContext {
    BinaryProjection projection;
    KOBWBRealInterval z;
    KOBWBRealInterval other;
};

} // namespace

bool ReadDomain(const KOBWBEnvironment& environment, const KOBWBValue& v,
                KOBWBRealInterval& domain) {
    const KOBWBValueType type = v.GetType();
    if (type == KOBWBUndefinedValue || type == KOBWBBooleanValue) {
        environment.SetError(errorBadKind);
        return false;
    }
    domain = v.GetAsRealInterval();
    return true;
}

KOBWBValue NarrowValue(const KOBWBEnvironment& environment, const KOBWBValue& x,
                       const Narrowing& narrowing) {
    switch (x.GetType()) {
    case KOBWBRealIntervalValue:
        return KOBWBValue(narrowing(environment, *x.GetRealIntervalPayload()));
    case KOBWBIntegerIntervalValue:
        return NarrowIntegerInterval(environment, x.GetAsIntegerInterval(), narrowing);
    case KOBWBIntegerValue:
    case KOBWBRealValue:
        if (KOBWBIsEmpty(environment, x)) {
            environment.SetError(errorEmptyArgument);
            return x;
        }
        return NarrowSingle(environment, x, narrowing);
    case KOBWBIntegerEnumValue:
        return NarrowIntegerEnum(environment, x.GetIntegerEnum(), narrowing);
    case KOBWBRealEnumValue:
        return NarrowRealEnum(environment, x.GetRealEnum(), narrowing);
    default:
        environment.SetError(errorBadKind);
        return KOBWBValue(KOBWBReal_Nil);
    }
}

KOBWBValue ProjectUnary(const KOBWBEnvironment& environment, UnaryProjection projection,
                        const KOBWBValue& z, const KOBWBValue& x) {
    UnaryContext context{projection, KOBWBReal_Nil};
    if (!ReadDomain(environment, z, context.z)) return KOBWBValue(KOBWBReal_Nil);
    return NarrowValueWith(environment, x,
                           [&context](const KOBWBEnvironment& e, const KOBWBRealInterval& a) {
                               return context.projection(e, context.z, a);
                           });
}

KOBWBValue ProjectFirst(const KOBWBEnvironment& environment, BinaryProjection projection,
                        const KOBWBValue& z, const KOBWBValue& x, const KOBWBValue& y) {
    BinaryContext context{projection, KOBWBReal_Nil, KOBWBReal_Nil};
    if (!ReadDomain(environment, z, context.z) || !ReadDomain(environment, y, context.other))
        return KOBWBValue(KOBWBReal_Nil);
    return NarrowValueWith(environment, x,
                           [&context](const KOBWBEnvironment& e, const KOBWBRealInterval& a) {
                               return context.projection(e, context.z, a, context.other);
                           });
}

KOBWBValue ProjectSecond(const KOBWBEnvironment& environment, BinaryProjection projection,
                         const KOBWBValue& z, const KOBWBValue& x, const KOBWBValue& y) {
    BinaryContext context{projection, KOBWBReal_Nil, KOBWBReal_Nil};
    if (!ReadDomain(environment, z, context.z) || !ReadDomain(environment, x, context.other))
        return KOBWBValue(KOBWBReal_Nil);
    return NarrowValueWith(environment, y,
                           [&context](const KOBWBEnvironment& e, const KOBWBRealInterval& a) {
                               return context.projection(e, context.z, context.other, a);
                           });
}

} // namespace kobwb
