#include "KOBWBInfixLayout.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFunctionNames.h"

namespace kobwb {

namespace {

struct MarkForms {
    const char* text;
    const char* mathML;
};

// Indexed by Mark.
constexpr MarkForms markForms[] = {
    {" + ", "<mo>+</mo>"},
    {" - ", "<mo>&#x2212;</mo>"},
    {"*", "<mo>&#x22C5;</mo>"},
    {"/", "<mo>/</mo>"},
    {"^", "<mo>^</mo>"},
    {"-", "<mo>&#x2212;</mo>"},
    {"(", "<mo>(</mo>"},
    {")", "<mo>)</mo>"},
    {", ", "<mo>,</mo>"},
    {" = ", "<mo>=</mo>"},
    {" != ", "<mo>&#x2260;</mo>"},
    {" <= ", "<mo>&#x2264;</mo>"},
    {" < ", "<mo>&lt;</mo>"},
    {" >= ", "<mo>&#x2265;</mo>"},
    {" > ", "<mo>&gt;</mo>"},
    {" == ", "<mo>=</mo>"},
    {" and ", "<mo>&#x2227;</mo>"},
    {" or ", "<mo>&#x2228;</mo>"},
    {"!(", "<mo>&#xAC;</mo><mo>(</mo>"},
    {"if (", "<mtext>if</mtext><mo>(</mo>"},
    {") then (", "<mo>)</mo><mtext>then</mtext><mo>(</mo>"},
    {") else (", "<mo>)</mo><mtext>else</mtext><mo>(</mo>"},
    {"0", "<mn>0</mn>"},
};
static_assert(sizeof markForms / sizeof markForms[0] == static_cast<size_t>(Mark::Zero) + 1,
              "one row per mark");

LayoutItem MarkAt(Mark mark) { return {LayoutItem::MarkItem, mark, nullptr, nullptr, 0, Placing::Plain}; }

LayoutItem NodeAt(const KOBWBExpression* node, int minimum, Placing placing = Placing::Plain) {
    return {LayoutItem::NodeItem, Mark::Zero, nullptr, node, minimum, placing};
}

bool IsNegativeConstant(const KOBWBExpression* node) {
    return node && node->GetType() == KOBWBConstantType &&
           IsNegativeNumber(static_cast<const KOBWBConstant*>(node)->GetExprValue());
}

bool IsMinusOne(const KOBWBExpression* node) {
    if (!IsNegativeConstant(node)) return false;
    const KOBWBValue& value = node->GetExprValue();
    return !value.IsAFraction() && value.GetType() == KOBWBIntegerValue && value.GetAsInteger() == -1;
}

// How the reader takes a minus sign before a node's text: CreateOpposite of what the
// text reads as, which folds the sign into a constant, and into the leading constant of
// a product or quotient, instead of making the product of -1 and the node. Where it
// folds, -1*x cannot be written -x (nor x after " - "): the -1 would not come back.

// The parts of an exact fraction's text (see KOBWBValueText.cpp): a head, the number or
// Pi with its power or their product, then "/..." when there is a denominator.
struct FractionText {
    bool constantHead; // a number, Pi or -Pi
    bool chainHead;    // n*Pi^k, a product that further factors join
    bool productHead;  // n*Pi^k, or -Pi^k read as -1 times Pi^k
    bool division;
};

FractionText ReadFraction(const KOBWBFraction& fraction) {
    long long numerator = fraction.numerator;
    long long denominator = fraction.denominator;
    if (denominator < 0) {
        numerator = -numerator;
        denominator = -denominator;
    }
    const int above = fraction.powerOfPi > 0 ? fraction.powerOfPi : 0;
    const bool unit = numerator == 1 || numerator == -1;
    FractionText text;
    text.constantHead = numerator == 0 || above == 0 || (unit && above == 1);
    text.chainHead = !text.constantHead && !unit;
    text.productHead = text.chainHead || (!text.constantHead && numerator < 0);
    text.division = numerator != 0 && (denominator != 1 || fraction.powerOfPi < 0);
    return text;
}

bool IsSignOnly(const KOBWBExpression* node, bool negated);

// Whether the text of a constant reads as a constant, or as a product or quotient led
// by one.
bool ConstantTakesSign(const KOBWBExpression* node) {
    const KOBWBValue& value = node->GetExprValue();
    if (!value.IsAFraction()) return true;
    const FractionText text = ReadFraction(value.GetAsFraction());
    return text.constantHead || (text.productHead && !text.division);
}

// Whether a node written as the first factor of a product (its own factors then join
// the product's) makes the product read back led by a constant.
bool LeadsWithConstant(const KOBWBExpression* node) {
    while (node && node->GetType() == KOBWBProductType) {
        if (node->GetNbOfChildren() >= 2 && IsSignOnly(node, false)) return false;
        node = node->GetNbOfChildren() > 0 ? node->GetChild(0) : nullptr;
    }
    if (!node || node->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = node->GetExprValue();
    if (!value.IsAFraction()) return true;
    const FractionText text = ReadFraction(value.GetAsFraction());
    return !text.division && (text.constantHead || text.chainHead);
}

// Whether the reader folds a minus sign before the node's text into the node.
bool TakesSign(const KOBWBExpression* node) {
    if (!node) return false;
    switch (node->GetType()) {
    case KOBWBConstantType: return ConstantTakesSign(node);
    case KOBWBProductType:
        if (node->GetNbOfChildren() == 1) return TakesSign(node->GetChild(0));
        if (node->GetNbOfChildren() < 2) return false;
        // Written "-a": read back as the product of -1 and a, led by a constant.
        if (IsSignOnly(node, false)) return node->GetNbOfChildren() == 2;
        return LeadsWithConstant(node->GetChild(0));
    case KOBWBQuotientType: {
        if (node->GetNbOfChildren() != 2) return false;
        const KOBWBExpression* numerator = node->GetChild(0);
        if (!numerator || numerator->GetType() != KOBWBConstantType) return false;
        const KOBWBValue& value = numerator->GetExprValue();
        if (!value.IsAFraction()) return true;
        const FractionText text = ReadFraction(value.GetAsFraction());
        return text.constantHead && !text.division;
    }
    default: return false;
    }
}

// Whether the product -1*x*... is written with its -1 as a sign: "-x*..." in its place,
// "x*..." after " - " (negated). After " - " the factors join one product, so with more
// than one left the first factor's own first factor counts.
bool IsSignOnly(const KOBWBExpression* node, bool negated) {
    if (node->GetNbOfChildren() < 2 || !IsMinusOne(node->GetChild(0))) return false;
    const KOBWBExpression* next = node->GetChild(1);
    if (negated && node->GetNbOfChildren() > 2) return !LeadsWithConstant(next);
    return !TakesSign(next);
}

// A constant of one number: an integer, a single real or an exact fraction.
bool IsNumberConstant(const KOBWBExpression* node) {
    if (!node || node->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = node->GetExprValue();
    if (value.IsAFraction()) return true;
    switch (value.GetType()) {
    case KOBWBIntegerValue: return true;
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        return interval.lower == interval.upper;
    }
    default: return false;
    }
}

// A constant whose opposite is written as one token: a number, or Pi with either
// sign. Reading "- c/x" back negates the numerator, which gives the quotient back
// only when c is such a token: "- Pi/3/x" would read as the product of -1 and a
// quotient.
bool HasTokenOpposite(const KOBWBExpression* node) {
    if (!IsNumberConstant(node)) return false;
    const KOBWBValue& value = node->GetExprValue();
    if (value.IsAFraction()) {
        const KOBWBFraction fraction = value.GetAsFraction();
        const bool whole = fraction.denominator == 1 || fraction.denominator == -1;
        const bool unit = fraction.numerator == 1 || fraction.numerator == -1;
        return whole && (fraction.powerOfPi == 0 || (fraction.powerOfPi == 1 && unit));
    }
    return true;
}

// The first operand of a product or quotient; for a product, looking into the nested
// products written first, whose factors join the product when read back.
const KOBWBExpression* LeadingOperand(const KOBWBExpression* node) {
    while (node->GetType() == KOBWBProductType && node->GetChild(0)->GetType() == KOBWBProductType &&
           node->GetChild(0)->GetNbOfChildren() >= 2)
        node = node->GetChild(0);
    return node->GetChild(0);
}

// A product led by a number, or a quotient whose numerator is a constant written as
// one token: the reader makes it, or for a product one that reads and prints the same
// once nested products are opened, of the text of its opposite after a minus sign.
bool HasFoldedSign(const KOBWBExpression* node) {
    const KOBWBExpressionType type = node->GetType();
    if (type == KOBWBProductType) return node->GetNbOfChildren() >= 2 && IsNumberConstant(LeadingOperand(node));
    return type == KOBWBQuotientType && node->GetNbOfChildren() == 2 && HasTokenOpposite(node->GetChild(0));
}

// A term that a sum writes after " - ": a negative constant, or a product or
// quotient of a folded sign whose leading operand is negative.
bool IsNegativeTerm(const KOBWBExpression* node) {
    if (!node) return false;
    if (node->GetType() == KOBWBConstantType) return IsNegativeConstant(node);
    return HasFoldedSign(node) && IsNegativeConstant(LeadingOperand(node));
}

// The last term of an equation's root that is written, negated, as the right side:
// a constant, or a constant sub-expression that the reader makes of the text of a
// negated constant (-Pi/6 of "x = Pi/6", -3*Pi of "x = 3*Pi"), so that the text of
// a system read back prints the same.
bool IsRightSide(const KOBWBExpression* node) {
    return node->GetType() == KOBWBConstantType || (node->IsConstant() && HasFoldedSign(node));
}

bool IsConnective(const KOBWBExpression* node) {
    return node && (node->GetType() == KOBWBAndType || node->GetType() == KOBWBOrType);
}

// Factors from the first-th on, joined by Times; the first of them is a left
// operand, the others right operands.
void AppendFactors(const KOBWBExpression* node, int first, std::vector<LayoutItem>& items) {
    for (int i = first; i < node->GetNbOfChildren(); ++i) {
        if (i > first) items.push_back(MarkAt(Mark::Times));
        items.push_back(NodeAt(node->GetChild(i), i == first ? ProductText : UnaryText));
    }
}

// The operand alone stands in the node's place.
void SetSingle(const KOBWBExpression* operand, int minimum, Layout& layout) {
    layout.shape = Shape::Single;
    layout.precedence = AtomText;
    layout.items.push_back(NodeAt(operand, minimum));
}

} // namespace

const char* MarkText(Mark mark) { return markForms[static_cast<size_t>(mark)].text; }

const char* MarkMathML(Mark mark) { return markForms[static_cast<size_t>(mark)].mathML; }

bool KOBWBInfixLayout::RelationMark(KOBWBEquationType type, Mark& mark) {
    switch (type) {
    case KOBWBEqEqual: mark = Mark::Equal; return true;
    case KOBWBEqNotEqual: mark = Mark::NotEqual; return true;
    case KOBWBEqLessEqual: mark = Mark::LessEqual; return true;
    case KOBWBEqLess: mark = Mark::Less; return true;
    case KOBWBEqGreaterEqual: mark = Mark::GreaterEqual; return true;
    case KOBWBEqGreater: mark = Mark::Greater; return true;
    default: return false;
    }
}

// The first count terms, the later ones after a plus or minus sign.
void KOBWBInfixLayout::LayOutSum(const KOBWBExpression* node, int count, Layout& layout) const {
    layout.shape = Shape::Infix;
    layout.precedence = SumText;
    for (int i = 0; i < count; ++i) {
        const KOBWBExpression* term = node->GetChild(i);
        if (i == 0) {
            layout.items.push_back(NodeAt(term, SumText));
        } else if (IsNegativeTerm(term)) {
            layout.items.push_back(MarkAt(Mark::Minus));
            layout.items.push_back(NodeAt(term, ProductText, Placing::Negated));
        } else {
            layout.items.push_back(MarkAt(Mark::Plus));
            layout.items.push_back(NodeAt(term, ProductText));
        }
    }
}

void KOBWBInfixLayout::LayOutProduct(const KOBWBExpression* node, Placing placing, int minimum,
                                     Layout& layout) const {
    std::vector<LayoutItem>& items = layout.items;
    layout.shape = Shape::Infix;
    layout.precedence = ProductText;
    const int count = node->GetNbOfChildren();
    if (placing == Placing::Negated && HasFoldedSign(node)) {
        // The opposite: the first factor negated, or -1 left out.
        if (IsSignOnly(node, true)) {
            if (count == 2) return SetSingle(node->GetChild(1), minimum, layout);
            AppendFactors(node, 1, items);
        } else {
            items.push_back(NodeAt(node->GetChild(0), ProductText, Placing::Negated));
            items.push_back(MarkAt(Mark::Times));
            AppendFactors(node, 1, items);
            items[2].minimum = UnaryText;
        }
        return;
    }
    if (IsSignOnly(node, false)) {
        items.push_back(MarkAt(Mark::Negate));
        AppendFactors(node, 1, items);
        items[1].minimum = UnaryText;
        layout.precedence = count == 2 ? UnaryText : ProductText;
        return;
    }
    AppendFactors(node, 0, items);
}

void KOBWBInfixLayout::LayOutCall(const KOBWBExpression* node, Layout& layout) {
    const char* name = nullptr;
    if (node->GetType() == KOBWBBlackBoxType) {
        m_names.emplace_back(static_cast<const KOBWBBlackBoxOperator*>(node)->GetBlackBoxName().str());
        if (m_names.back().empty()) m_names.back() = "blackbox";
        name = m_names.back().c_str();
    } else if (const KOBWBFunctionName* function = KOBWBFindWrittenFunction(node->GetType())) {
        name = function->name;
    } else {
        name = KOBWBGetExpressionTypeName(node->GetType());
    }
    layout.shape = Shape::Call;
    layout.precedence = AtomText;
    layout.items.push_back({LayoutItem::NameItem, Mark::Zero, name, nullptr, 0, Placing::Plain});
    layout.items.push_back(MarkAt(Mark::Open));
    for (int i = 0; i < node->GetNbOfChildren(); ++i) {
        if (i > 0) layout.items.push_back(MarkAt(Mark::Comma));
        layout.items.push_back(NodeAt(node->GetChild(i), ConditionText));
    }
    layout.items.push_back(MarkAt(Mark::Close));
}

void KOBWBInfixLayout::LayOutComparison(const KOBWBExpression* node, Mark relation, Layout& layout) const {
    layout.shape = Shape::Infix;
    layout.precedence = ConditionText;
    layout.items.push_back(NodeAt(node->GetChild(0), SumText));
    layout.items.push_back(MarkAt(relation));
    layout.items.push_back(NodeAt(node->GetChild(1), SumText));
}

void KOBWBInfixLayout::LayOutBoolean(const KOBWBExpression* node, Placing placing, Layout& layout) const {
    const KOBWBExpression* first = node->GetChild(0);
    switch (node->GetType()) {
    case KOBWBEqualType:
        return LayOutComparison(node, placing == Placing::Branch ? Mark::Equal : Mark::TestEqual, layout);
    case KOBWBNotEqualType: return LayOutComparison(node, Mark::NotEqual, layout);
    case KOBWBLessEqualType: return LayOutComparison(node, Mark::LessEqual, layout);
    case KOBWBNotType:
        if (first && first->GetType() == KOBWBLessEqualType && first->GetNbOfChildren() == 2)
            return LayOutComparison(first, Mark::Greater, layout);
        layout.shape = Shape::Infix;
        layout.precedence = AtomText;
        layout.items.push_back(MarkAt(Mark::NotOpen));
        layout.items.push_back(NodeAt(first, ConditionText));
        layout.items.push_back(MarkAt(Mark::Close));
        return;
    default:
        // and, or: the language groups conditions to the left only.
        layout.shape = Shape::Infix;
        layout.precedence = ConditionText;
        layout.items.push_back(NodeAt(first, ConditionText));
        layout.items.push_back(MarkAt(node->GetType() == KOBWBAndType ? Mark::And : Mark::Or));
        layout.items.push_back(
            NodeAt(node->GetChild(1), IsConnective(node->GetChild(1)) ? ConditionText + 1 : ConditionText));
    }
}

void KOBWBInfixLayout::LayOutIfThenElse(const KOBWBExpression* node, Placing placing, Layout& layout) const {
    const Placing branches = placing == Placing::Branch ? Placing::Branch : Placing::Plain;
    layout.shape = Shape::Infix;
    layout.precedence = AtomText;
    layout.items.push_back(MarkAt(Mark::IfOpen));
    layout.items.push_back(NodeAt(node->GetChild(0), ConditionText));
    layout.items.push_back(MarkAt(Mark::ThenOpen));
    layout.items.push_back(NodeAt(node->GetChild(1), ConditionText, branches));
    layout.items.push_back(MarkAt(Mark::ElseOpen));
    layout.items.push_back(NodeAt(node->GetChild(2), ConditionText, branches));
    layout.items.push_back(MarkAt(Mark::Close));
}

void KOBWBInfixLayout::LayOut(const KOBWBExpression* node, Placing placing, int minimum, Layout& layout) {
    layout.shape = Shape::Leaf;
    layout.precedence = AtomText;
    layout.items.clear();
    if (!node || node->GetType() == KOBWBConstantType || node->GetType() == KOBWBVariableType) return;
    const KOBWBExpressionType type = node->GetType();
    const int count = node->GetNbOfChildren();
    switch (type) {
    case KOBWBSumType:
        if (count == 1) return SetSingle(node->GetChild(0), minimum, layout);
        if (count > 0) return LayOutSum(node, count, layout);
        break;
    case KOBWBProductType:
        if (count == 1) return SetSingle(node->GetChild(0), minimum, layout);
        if (count > 0) return LayOutProduct(node, placing, minimum, layout);
        break;
    case KOBWBQuotientType:
    case KOBWBPowerType: {
        if (count != 2) break;
        const bool power = type == KOBWBPowerType;
        layout.shape = power ? Shape::Power : Shape::Quotient;
        layout.precedence = power ? PowerText : ProductText;
        // A quotient written after a minus sign has its numerator's sign dropped.
        layout.items.push_back(NodeAt(node->GetChild(0), power ? AtomText : ProductText,
                                      placing == Placing::Negated ? Placing::Negated : Placing::Plain));
        layout.items.push_back(MarkAt(power ? Mark::Power : Mark::Divide));
        layout.items.push_back(NodeAt(node->GetChild(1), power ? PowerText : UnaryText));
        return;
    }
    case KOBWBIfThenElseType:
        if (count == 3) return LayOutIfThenElse(node, placing, layout);
        break;
    case KOBWBEqualType:
    case KOBWBNotEqualType:
    case KOBWBLessEqualType:
    case KOBWBAndType:
    case KOBWBOrType:
        if (count == 2) return LayOutBoolean(node, placing, layout);
        break;
    case KOBWBNotType:
        if (count == 1) return LayOutBoolean(node, placing, layout);
        break;
    default: break;
    }
    LayOutCall(node, layout);
}

void KOBWBInfixLayout::LayOutEquation(const KOBWBEquation* equation, Layout& layout) {
    layout.shape = Shape::Infix;
    layout.precedence = AtomText;
    layout.items.clear();
    if (!equation) return;
    const KOBWBExpression* root = equation->GetRoot();
    Mark relation = Mark::Zero;
    if (!RelationMark(equation->GetType(), relation) || !root) {
        const bool conditional = root && root->GetType() == KOBWBIfThenElseType;
        layout.items.push_back(NodeAt(root, ConditionText, conditional ? Placing::Branch : Placing::Plain));
        return;
    }
    // left - right was stored as the sum left + (-right): a sum ending with a
    // constant term gives that term back, negated, to the right side.
    const int count = root->GetNbOfChildren();
    if (root->GetType() == KOBWBSumType && count >= 2 && IsRightSide(root->GetChild(count - 1))) {
        if (count == 2) {
            layout.items.push_back(NodeAt(root->GetChild(0), ConditionText));
        } else {
            // The other terms, written as a sum of one term fewer.
            LayOutSum(root, count - 1, layout);
            layout.shape = Shape::Infix;
            layout.precedence = AtomText;
        }
        layout.items.push_back(MarkAt(relation));
        layout.items.push_back(NodeAt(root->GetChild(count - 1), ConditionText, Placing::Negated));
        return;
    }
    layout.items.push_back(NodeAt(root, ConditionText));
    layout.items.push_back(MarkAt(relation));
    layout.items.push_back(MarkAt(Mark::Zero));
}

} // namespace kobwb
