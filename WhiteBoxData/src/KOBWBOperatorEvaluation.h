#ifndef KOBWBOperatorEvaluation_h
#define KOBWBOperatorEvaluation_h

#include "KOBWBExpression.h"
#include "KOBWBOperatorTable.h"

// How the nodes of the algebraic, binary, unary and trigonometric families compute
// their value from their children, shared by the nodes' own evaluation and by
// evaluation plans. Children is anything indexable that gives the child nodes.
namespace kobwb {

// Keeps an interval result in the buffer. A buffer that already holds a real
// interval takes the new bounds in place, which leaves it as assigning the value
// would, without building and moving a whole value.
inline void StoreInterval(KOBWBValue& result, const KOBWBRealInterval& image) {
    if (result.GetRealIntervalPayload())
        result.Set(image);
    else
        result = KOBWBValue(image);
}

// A sum, product, minimum or maximum: the fold of the row's binary function over
// the children (null ones skipped). While the function's interval form applies, the
// fold runs on intervals kept in the buffer; the first step that it does not cover
// goes on with whole values.
template <class Children>
void ComputeFold(const OperatorInfo& info, const KOBWBEnvironment& environment, const Children& children, int count,
                 KOBWBValue& result) {
    if (info.family != OperatorFamily::Algebraic || count == 0 || !children[0]) return;
    const KOBWBValue* folded = &children[0]->GetValue();
    int i = 1;
    if (HasBinaryForm(info)) {
        RealOperand operand = ReadRealOperand(*folded);
        KOBWBRealInterval image;
        for (; i < count; ++i) {
            KOBWBExpression* child = children[i];
            if (!child) continue;
            if (!ApplyIntervalForm(info, environment, operand, ReadRealOperand(child->GetValue()), image)) break;
            StoreInterval(result, image);
            folded = &result;
            operand.interval = image;
            operand.kind = RealOperand::Kind::Interval;
            operand.integral = false;
        }
    }
    if (folded != &result) result = *folded;
    for (; i < count; ++i) {
        KOBWBExpression* child = children[i];
        if (child) result = info.binary(environment, result, child->GetValue());
    }
}

// A quotient, power or root of its two children.
template <class Children>
void ComputeBinary(const OperatorInfo& info, const KOBWBEnvironment& environment, const Children& children,
                   KOBWBValue& result) {
    KOBWBExpression* left = children[0];
    KOBWBExpression* right = children[1];
    if (info.family != OperatorFamily::Binary || !left || !right) return;
    const KOBWBValue& a = left->GetValue();
    const KOBWBValue& b = right->GetValue();
    KOBWBRealInterval image;
    if (ApplyIntervalForm(info, environment, ReadRealOperand(a), ReadRealOperand(b), image))
        StoreInterval(result, image);
    else
        result = info.binary(environment, a, b);
}

// A function of one child, given the family the node belongs to.
template <class Children>
void ComputeUnary(const OperatorInfo& info, OperatorFamily family, const KOBWBEnvironment& environment,
                  const Children& children, KOBWBValue& result) {
    KOBWBExpression* child = children[0];
    if (info.family != family || !info.unary || !child) return;
    const KOBWBValue& x = child->GetValue();
    KOBWBRealInterval image;
    if (ApplyIntervalForm(info, environment, ReadRealOperand(x), image))
        StoreInterval(result, image);
    else
        result = info.unary(environment, x);
}

} // namespace kobwb

#endif
