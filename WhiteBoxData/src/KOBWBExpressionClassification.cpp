#include "KOBWBExpression.h"

#include "KOBWBVariable.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// The structural tests of algebraic shape. Each is computed bottom-up over the
// graph below the node, every shared node once and without recursion, from the
// answers of the children.

namespace {

struct Shape {
    bool present = false;
    bool constant = false;
    bool free = false;
    bool linear = false;
    bool polynomial = false;
    // The degree in all variables together: 0 for a constant, 1 for a linear
    // expression, 2 for a quadratic one, 3 for anything of a higher or no degree.
    int degree = 3;
};

bool IsFunction(KOBWBExpressionType type) {
    return (type >= KOBWBRootType && type <= KOBWBAtan2Type) || (type >= KOBWBSinhType && type <= KOBWBAtanhType) ||
           type == KOBWBIntegrateType;
}

// Whether a constant node holds an integer of 0, 1 or 2 (compared unsigned, so
// every negative integer fails).
bool IsSmallIntegerExponent(const KOBWBExpression& node) {
    if (node.GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = node.GetExprValue();
    return value.GetType() == KOBWBIntegerValue && static_cast<unsigned>(value.GetAsInteger()) <= 2u;
}

Shape ShapeOf(const KOBWBExpression& node, const std::vector<Shape>& children, const KOBWBVariable* x) {
    Shape shape;
    shape.present = true;
    const KOBWBExpressionType type = node.GetType();
    bool allPresent = true, allConstant = true, allFree = true, allLinear = true, allPolynomial = true;
    int highest = 0;
    for (const Shape& child : children) {
        allPresent = allPresent && child.present;
        allConstant = allConstant && child.constant;
        allFree = allFree && (child.free || !child.present);
        allLinear = allLinear && child.linear;
        highest = std::max(highest, child.degree);
        allPolynomial = allPolynomial && child.polynomial;
    }
    if (type == KOBWBVariableType) {
        shape.free = &node != x;
        shape.linear = shape.polynomial = true;
        shape.degree = 1;
        return shape;
    }
    if (type == KOBWBConstantType) {
        shape.constant = shape.free = shape.linear = shape.polynomial = true;
        shape.degree = 0;
        return shape;
    }
    shape.constant = allPresent && allConstant;
    shape.free = allFree;
    const size_t count = children.size();
    switch (type) {
    case KOBWBSumType:
        shape.linear = allLinear;
        shape.degree = highest;
        break;
    case KOBWBProductType: {
        int nonConstant = 0, degree = 0;
        for (const Shape& child : children) {
            nonConstant += child.constant ? 0 : 1;
            degree = std::min(3, degree + child.degree);
        }
        shape.linear = allLinear && nonConstant <= 1;
        shape.degree = degree;
        break;
    }
    case KOBWBQuotientType:
        shape.linear = count == 2 && children[0].linear && children[1].constant;
        if (count == 2 && children[1].constant) shape.degree = children[0].degree;
        break;
    case KOBWBPowerType:
        // A power counts with a linear base and an exponent 0, 1 or 2; a constant
        // power is a constant whatever its form.
        shape.linear = shape.constant;
        if (count == 2 && children[0].linear && children[1].present && IsSmallIntegerExponent(*node.GetChild(1)))
            shape.degree = (children[0].constant ? 0 : 1) * node.GetChild(1)->GetExprValue().GetAsInteger();
        break;
    default: shape.linear = shape.constant; break;
    }
    if (shape.constant) shape.degree = 0;
    if (shape.free) {
        shape.polynomial = true;
    } else if (type == KOBWBQuotientType && count == 2) {
        shape.polynomial = children[1].present && children[1].free && children[0].polynomial;
    } else if (type == KOBWBPowerType && count == 2 && children[1].constant) {
        shape.polynomial = children[0].polynomial;
    } else if (IsFunction(type)) {
        shape.polynomial = false;
    } else {
        shape.polynomial = allPresent && allPolynomial;
    }
    return shape;
}

// The shape of root, from the shapes of every node below it, children first.
Shape Classify(const KOBWBExpression* root, const KOBWBVariable* x) {
    std::unordered_map<const KOBWBExpression*, Shape> shapes;
    struct Frame {
        const KOBWBExpression* node;
        int next;
    };
    std::vector<Frame> frames{{root, 0}};
    std::vector<Shape> children;
    while (!frames.empty()) {
        Frame& frame = frames.back();
        const KOBWBExpression* node = frame.node;
        if (frame.next < node->GetNbOfChildren()) {
            const KOBWBExpression* child = node->GetChild(frame.next++);
            if (child && !shapes.count(child)) frames.push_back({child, 0});
            continue;
        }
        children.clear();
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            const KOBWBExpression* child = node->GetChild(i);
            const auto known = child ? shapes.find(child) : shapes.end();
            children.push_back(known == shapes.end() ? Shape() : known->second);
        }
        shapes[node] = ShapeOf(*node, children, x);
        frames.pop_back();
    }
    return shapes[root];
}

} // namespace

unsigned char KOBWBExpression::IsLinear() const { return Classify(this, nullptr).linear ? 1 : 0; }

unsigned char KOBWBExpression::IsQuadratic() const { return Classify(this, nullptr).degree <= 2 ? 1 : 0; }

unsigned char KOBWBExpression::IsPolynomial(KOBWBVariable* x) const { return Classify(this, x).polynomial ? 1 : 0; }

unsigned char KOBWBExpression::IsRationalFunction(KOBWBVariable* x) const {
    const Shape shape = Classify(this, x);
    if (shape.free) return 1;
    if (m_type != KOBWBQuotientType || GetNbOfChildren() != 2) return 0;
    const KOBWBExpression* numerator = GetChild(0);
    const KOBWBExpression* denominator = GetChild(1);
    return numerator && denominator && numerator->IsPolynomial(x) && denominator->IsPolynomial(x) ? 1 : 0;
}

void KOBWBExpression::Replace(KOBWBVariable* x, KOBWBExpression* by) {
    if (!x || !by) return;
    std::vector<KOBWBExpression*> pending{this};
    std::unordered_set<KOBWBExpression*> visited{this};
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (child == x)
                node->ReplaceChild(i, by);
            else if (child && visited.insert(child).second)
                pending.push_back(child);
        }
    }
}
