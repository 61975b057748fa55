#include "KOBWBValueDispatch.h"

#include "KOBWBArithmeticKernels.h"
#include "KOBWBEnumImages.h"
#include "KOBWBOutcomes.h"

#include <cmath>

namespace kobwb {

namespace {

enum class Shape { Bad, Scalar, Interval, Enumeration };

Shape ShapeOf(KOBWBValueType type) {
    switch (type) {
    case KOBWBIntegerValue:
    case KOBWBRealValue:
        return Shape::Scalar;
    case KOBWBIntegerIntervalValue:
    case KOBWBRealIntervalValue:
        return Shape::Interval;
    case KOBWBIntegerEnumValue:
    case KOBWBRealEnumValue:
        return Shape::Enumeration;
    default:
        return Shape::Bad;
    }
}

bool IsIntegerKind(KOBWBValueType type) {
    return type == KOBWBIntegerValue || type == KOBWBIntegerIntervalValue ||
           type == KOBWBIntegerEnumValue;
}

KOBWBValue BadKind(const KOBWBEnvironment& environment) {
    environment.SetError(errorBadKind);
    return KOBWBValue(KOBWBReal_Nil);
}

// The result of an operation on single numbers: a single number when the image is a
// point or the whole line (any) or empty (nil), else the image itself.
KOBWBValue ScalarResult(const KOBWBRealInterval& image) {
    if (!(image.lower <= image.upper)) return KOBWBValue(KOBWBSingleReal_Nil);
    if (KOBWBIsInfinite(image)) return KOBWBValue(KOBWBSingleReal_Any);
    double point = 0.0;
    if (IsPointImage(image, point)) return KOBWBValue(point);
    return KOBWBValue(image);
}

KOBWBValue ScalarResult(const KOBWBIntegerInterval& image) {
    if (image.lower > image.upper) return KOBWBValue(KOBWBSingleInteger_Nil);
    if (KOBWBIsInfinite(image)) return KOBWBValue(KOBWBSingleInteger_Any);
    if (image.lower == image.upper) return KOBWBValue(image.lower);
    return KOBWBValue(image);
}

// Whether an operand lists its elements: an enumeration held as a list, or a single
// number that is neither any nor nil.
bool IsList(const KOBWBValue& v, Shape shape) {
    if (shape == Shape::Scalar) return KOBWBIsExact(v, KOBWBAbsPrecision);
    if (shape != Shape::Enumeration) return false;
    if (v.GetType() == KOBWBIntegerEnumValue)
        return v.GetIntegerEnum().GetRepresentation() == KOBWBEnumList;
    return v.GetRealEnum().GetRepresentation() == KOBWBEnumList;
}

// The elements of an operand that lists them.
class Elements {
public:
    Elements(const KOBWBValue& v, Shape shape)
        : m_value(v), m_scalar(shape == Shape::Scalar),
          m_integer(v.GetType() == KOBWBIntegerEnumValue) {}

    int Count() const {
        if (m_scalar) return 1;
        return m_integer ? m_value.GetIntegerEnum().GetSize() : m_value.GetRealEnum().GetSize();
    }
    double Real(int i) const {
        if (m_scalar) return m_value.GetAsReal();
        return m_integer ? m_value.GetIntegerEnum().Get(i) : m_value.GetRealEnum().Get(i);
    }
    int Integer(int i) const {
        return m_scalar ? m_value.GetAsInteger() : m_value.GetIntegerEnum().Get(i);
    }

private:
    const KOBWBValue& m_value;
    bool m_scalar;
    bool m_integer;
};

// An environment that collects the errors of single elements, of which only a bad kind
// is passed on: an element outside the domain is just left out of the result.
class ElementEnvironment {
public:
    explicit ElementEnvironment(const KOBWBEnvironment& environment)
        : m_outer(environment), m_scratch(environment) {
        m_scratch.ClearError();
    }
    ~ElementEnvironment() { m_outer.SetError(m_scratch.GetError() & errorBadKind); }
    ElementEnvironment(const ElementEnvironment&) = delete;
    ElementEnvironment& operator=(const ElementEnvironment&) = delete;
    const KOBWBEnvironment& Get() const { return m_scratch; }

private:
    const KOBWBEnvironment& m_outer;
    KOBWBEnvironment m_scratch;
};

bool InTrigRange(double x) {
    return x >= KOBWBReal_Trig.lower && x <= KOBWBReal_Trig.upper;
}

KOBWBRealInterval PointImage(const KOBWBEnvironment& environment, const UnaryOperation& op,
                             double x, const UnaryArguments& arguments) {
    if (op.periodic && !InTrigRange(x)) return op.real(environment, KOBWBReal_Any, arguments);
    return op.real(environment, {x, x}, arguments);
}

KOBWBValue UnaryOnReals(const KOBWBEnvironment& environment, const UnaryOperation& op,
                        const KOBWBValue& x, Shape shape, const UnaryArguments& arguments) {
    if (shape == Shape::Scalar) {
        if (x.IsIndefinite()) return KOBWBValue(op.real(environment, KOBWBReal_Any, arguments));
        const double v = x.GetAsReal();
        if (op.periodic && !KOBWBIsNilReal(v) && !InTrigRange(v))
            return KOBWBValue(KOBWBSingleReal_Any);
        return ScalarResult(op.real(environment, x.GetAsRealInterval(), arguments));
    }
    if (shape == Shape::Interval)
        return KOBWBValue(op.real(environment, x.GetAsRealInterval(), arguments));
    if (!IsList(x, shape))
        return EnumerationOf(environment, op.real(environment, x.GetAsRealInterval(), arguments));
    const Elements elements(x, shape);
    EnumImages images(false);
    {
        const ElementEnvironment element(environment);
        for (int i = 0; i < elements.Count(); ++i)
            images.Add(PointImage(element.Get(), op, elements.Real(i), arguments));
    }
    return images.Finish(environment);
}

KOBWBValue UnaryOnIntegers(const KOBWBEnvironment& environment, const UnaryOperation& op,
                           const KOBWBValue& x, Shape shape, const UnaryArguments& arguments) {
    if (shape == Shape::Scalar) {
        if (x.IsIndefinite())
            return KOBWBValue(op.integer(environment, KOBWBInteger_Any, arguments));
        return ScalarResult(op.integer(environment, x.GetAsIntegerInterval(), arguments));
    }
    if (shape == Shape::Interval)
        return KOBWBValue(op.integer(environment, x.GetAsIntegerInterval(), arguments));
    if (!IsList(x, shape))
        return EnumerationOf(environment,
                             op.integer(environment, x.GetAsIntegerInterval(), arguments));
    const Elements elements(x, shape);
    EnumImages images(true);
    {
        const ElementEnvironment element(environment);
        for (int i = 0; i < elements.Count(); ++i) {
            const int n = elements.Integer(i);
            images.Add(op.integer(element.Get(), {n, n}, arguments));
        }
    }
    return images.Finish(environment);
}

KOBWBValue BinaryOnEnumerations(const KOBWBEnvironment& environment, const BinaryOperation& op,
                                bool integer, const KOBWBValue& a, Shape shapeA,
                                const KOBWBValue& b, Shape shapeB, const KOBWBRealInterval* hint) {
    if (!IsList(a, shapeA) || !IsList(b, shapeB)) {
        if (integer)
            return EnumerationOf(environment, op.integer(environment, a.GetAsIntegerInterval(),
                                                         b.GetAsIntegerInterval()));
        return EnumerationOf(
            environment, op.real(environment, a.GetAsRealInterval(), b.GetAsRealInterval(), hint));
    }
    const Elements left(a, shapeA);
    const Elements right(b, shapeB);
    EnumImages images(integer);
    {
        const ElementEnvironment element(environment);
        for (int i = 0; i < left.Count(); ++i) {
            for (int j = 0; j < right.Count(); ++j) {
                if (integer) {
                    const int x = left.Integer(i);
                    const int y = right.Integer(j);
                    images.Add(op.integer(element.Get(), {x, x}, {y, y}));
                } else {
                    const double x = left.Real(i);
                    const double y = right.Real(j);
                    images.Add(op.real(element.Get(), {x, x}, {y, y}, hint));
                }
            }
        }
    }
    return images.Finish(environment);
}

bool IsExactNumber(const KOBWBValue& v) {
    return v.IsAFraction() || (v.GetType() == KOBWBIntegerValue && KOBWBIsExact(v, 0.0));
}

KOBWBBoolean PairwiseComparison(const KOBWBEnvironment& environment, const ComparisonOperation& op,
                                bool integer, const KOBWBValue& a, Shape shapeA,
                                const KOBWBValue& b, Shape shapeB) {
    const Elements left(a, shapeA);
    const Elements right(b, shapeB);
    const ElementEnvironment element(environment);
    unsigned outcomes = 0;
    for (int i = 0; i < left.Count(); ++i) {
        for (int j = 0; j < right.Count(); ++j) {
            if (integer) {
                const int x = left.Integer(i);
                const int y = right.Integer(j);
                outcomes |= OutcomesOf(op.integer(element.Get(), {x, x}, {y, y}));
            } else {
                const double x = left.Real(i);
                const double y = right.Real(j);
                outcomes |= OutcomesOf(op.real(element.Get(), {x, x}, {y, y}));
            }
        }
    }
    return BooleanOf(outcomes);
}

KOBWBValue BinaryOnAnyKinds(const KOBWBEnvironment& environment, const BinaryOperation& op,
                            const KOBWBValue& a, const KOBWBValue& b,
                            const KOBWBRealInterval* hint) {
    const KOBWBValueType typeA = a.GetType();
    const KOBWBValueType typeB = b.GetType();
    const Shape shapeA = ShapeOf(typeA);
    const Shape shapeB = ShapeOf(typeB);
    if (shapeA == Shape::Bad || shapeB == Shape::Bad) return BadKind(environment);
    if (op.fraction != FractionRule::None && (a.IsAFraction() || b.IsAFraction()) &&
        IsExactNumber(a) && IsExactNumber(b)) {
        KOBWBFraction exact = {0, 1, 0, 1};
        if (CombineFractions(op.fraction, a.GetAsFraction(), b.GetAsFraction(), exact))
            return KOBWBValue(exact);
    }
    const bool integer = op.integer && IsIntegerKind(typeA) && IsIntegerKind(typeB);
    if (shapeA == Shape::Enumeration || shapeB == Shape::Enumeration)
        return BinaryOnEnumerations(environment, op, integer, a, shapeA, b, shapeB, hint);
    const bool scalars = shapeA == Shape::Scalar && shapeB == Shape::Scalar && !a.IsIndefinite() &&
                         !b.IsIndefinite();
    if (integer) {
        const KOBWBIntegerInterval image =
            op.integer(environment, a.GetAsIntegerInterval(), b.GetAsIntegerInterval());
        return scalars ? ScalarResult(image) : KOBWBValue(image);
    }
    const KOBWBRealInterval image =
        op.real(environment, a.GetAsRealInterval(), b.GetAsRealInterval(), hint);
    return scalars ? ScalarResult(image) : KOBWBValue(image);
}

} // namespace

namespace {

// An exponent that is a single number with an integral value.
bool IsIntegralExponent(const KOBWBValue& y, int& n) {
    const KOBWBValueType type = y.GetType();
    if (type != KOBWBIntegerValue && type != KOBWBRealValue) return false;
    if (!KOBWBIsExact(y, KOBWBAbsPrecision)) return false;
    const double v = y.GetAsReal();
    if (v != std::trunc(v) || std::fabs(v) > KOBWBMaxInteger) return false;
    n = static_cast<int>(v);
    return true;
}

} // namespace

// Fractions are left to the generic dispatch, except as integral exponents.
void ReadOtherRealOperand(const KOBWBValue& v, RealOperand& operand) {
    operand.exponent = 0;
    operand.integral = IsIntegralExponent(v, operand.exponent);
    const KOBWBValueType type = v.GetType();
    if (!v.IsAFraction() && (type == KOBWBRealValue || type == KOBWBIntegerValue)) {
        operand.interval = v.GetAsRealInterval();
        operand.kind = RealOperand::Kind::Single;
    } else {
        operand.interval = {0.0, 0.0};
        operand.kind = RealOperand::Kind::Other;
    }
}

bool BinaryOnRealIntervals(const KOBWBEnvironment& environment, Binary code, const KOBWBValue& a,
                           const KOBWBValue& b, const KOBWBRealInterval* hint,
                           KOBWBRealInterval& image) {
    const KOBWBRealInterval* realA = a.GetRealIntervalPayload();
    const KOBWBRealInterval* realB = b.GetRealIntervalPayload();
    if (realA && realB) {
        image = OperationOf(code).real(environment, *realA, *realB, hint);
        return true;
    }
    if (!realA && !realB) return false;
    return BinaryOnRealOperands(environment, OperationOf(code), ReadRealOperand(a), ReadRealOperand(b), hint,
                                image);
}

bool UnaryOnRealInterval(const KOBWBEnvironment& environment, Unary code, const KOBWBValue& x,
                         const UnaryArguments& arguments, KOBWBRealInterval& image) {
    const KOBWBRealInterval* real = x.GetRealIntervalPayload();
    if (!real) return false;
    image = OperationOf(code).real(environment, *real, arguments);
    return true;
}

bool PowOnRealIntervals(const KOBWBEnvironment& environment, const KOBWBValue& x, const KOBWBValue& y,
                        KOBWBRealInterval& image) {
    return PowOnRealOperands(environment, ReadRealOperand(x), ReadRealOperand(y), image);
}

KOBWBValue ApplyUnary(const KOBWBEnvironment& environment, Unary code, const KOBWBValue& x,
                      const UnaryArguments& arguments) {
    KOBWBRealInterval image;
    if (UnaryOnRealInterval(environment, code, x, arguments, image)) return KOBWBValue(image);
    const UnaryOperation& op = OperationOf(code);
    const KOBWBValueType type = x.GetType();
    const Shape shape = ShapeOf(type);
    if (shape == Shape::Bad) return BadKind(environment);
    if (IsIntegerKind(type) && op.integerUse == IntegerUse::Unchanged) return x;
    if (IsIntegerKind(type) && op.integerUse == IntegerUse::Own)
        return UnaryOnIntegers(environment, op, x, shape, arguments);
    return UnaryOnReals(environment, op, x, shape, arguments);
}

// Real intervals, the commonest case of evaluation, skip the dispatch.
KOBWBValue ApplyBinary(const KOBWBEnvironment& environment, Binary code, const KOBWBValue& a,
                       const KOBWBValue& b, const KOBWBRealInterval* hint) {
    KOBWBRealInterval image;
    if (BinaryOnRealIntervals(environment, code, a, b, hint, image)) return KOBWBValue(image);
    return BinaryOnAnyKinds(environment, OperationOf(code), a, b, hint);
}

KOBWBValue ApplyComparison(const KOBWBEnvironment& environment, Comparison code,
                           const KOBWBValue& a, const KOBWBValue& b) {
    const ComparisonOperation& op = OperationOf(code);
    const KOBWBValueType typeA = a.GetType();
    const KOBWBValueType typeB = b.GetType();
    const Shape shapeA = ShapeOf(typeA);
    const Shape shapeB = ShapeOf(typeB);
    KOBWBBoolean result = KOBWBContr;
    if (typeA == KOBWBBooleanValue && typeB == KOBWBBooleanValue && op.comparesBooleans) {
        result = CombineOutcomes(a.GetAsBoolean(), b.GetAsBoolean(),
                                 [](bool x, bool y) { return x == y; });
    } else if (shapeA == Shape::Bad || shapeB == Shape::Bad) {
        environment.SetError(errorBadKind);
        return KOBWBValue(KOBWBContr);
    } else {
        const bool integer = IsIntegerKind(typeA) && IsIntegerKind(typeB);
        const bool enumerations = shapeA == Shape::Enumeration || shapeB == Shape::Enumeration;
        if (enumerations && IsList(a, shapeA) && IsList(b, shapeB))
            result = PairwiseComparison(environment, op, integer, a, shapeA, b, shapeB);
        else if (integer)
            result = op.integer(environment, a.GetAsIntegerInterval(), b.GetAsIntegerInterval());
        else
            result = op.real(environment, a.GetAsRealInterval(), b.GetAsRealInterval());
    }
    return KOBWBValue(op.negated ? Negation(result) : result);
}

const KOBWBRealInterval* HintOf(const KOBWBValue* hint, KOBWBRealInterval& storage) {
    if (!hint) return nullptr;
    const KOBWBValueType type = hint->GetType();
    if (type == KOBWBUndefinedValue || type == KOBWBBooleanValue) return nullptr;
    storage = hint->GetAsRealInterval();
    return &storage;
}

} // namespace kobwb
