#include "KOBWBMathMLWriter.h"

#include "KOBWBExpression.h"
#include "KOBWBValueMarkup.h"
#include "KOBWBVariable.h"

using namespace kobwb;

namespace {

LayoutItem NodeAt(const KOBWBExpression* node, int minimum) {
    return {LayoutItem::NodeItem, Mark::Zero, nullptr, node, minimum, Placing::Plain};
}

} // namespace

void KOBWBMathMLWriter::WriteExpression(const KOBWBExpression* root) {
    m_stack.push_back({nullptr, NodeAt(root, ConditionText)});
    Run();
}

void KOBWBMathMLWriter::WriteEquation(const KOBWBEquation* equation) {
    if (!equation) return;
    m_layouts.LayOutEquation(equation, m_layout);
    Add("<mrow>");
    for (const LayoutItem& item : m_layout.items) Add(item);
    Add("</mrow>");
    Flush(AtomText, ConditionText);
    Run();
}

void KOBWBMathMLWriter::Run() {
    while (!m_stack.empty()) {
        const Piece piece = m_stack.back();
        m_stack.pop_back();
        if (piece.markup)
            m_out += piece.markup;
        else
            WriteItem(piece.item);
    }
}

void KOBWBMathMLWriter::Add(const LayoutItem& item, int minimum) {
    LayoutItem placed = item;
    placed.minimum = minimum;
    Add(placed);
}

void KOBWBMathMLWriter::Flush(int precedence, int minimum) {
    const bool bracket = precedence < minimum;
    if (bracket) m_stack.push_back({"<mo>)</mo></mrow>", {}});
    for (auto it = m_sequence.rbegin(); it != m_sequence.rend(); ++it) m_stack.push_back(*it);
    if (bracket) m_stack.push_back({"<mrow><mo>(</mo>", {}});
    m_sequence.clear();
}

void KOBWBMathMLWriter::WriteItem(const LayoutItem& item) {
    switch (item.kind) {
    case LayoutItem::MarkItem: m_out += MarkMathML(item.mark); return;
    case LayoutItem::NameItem:
        m_out += "<mi>";
        AppendXmlText(item.name, std::char_traits<char>::length(item.name), m_out);
        m_out += "</mi><mo>&#x2061;</mo>";
        return;
    default: WriteNode(item);
    }
}

void KOBWBMathMLWriter::WriteLeaf(const LayoutItem& item) {
    const KOBWBExpression* node = item.node;
    if (!node) {
        m_out += "<merror><mtext>null</mtext></merror>";
        return;
    }
    if (node->GetType() == KOBWBVariableType) {
        auto* variable = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(node));
        const KOBLVRString& name = variable->GetName();
        m_out += "<mi>";
        if (name.Length() > 0)
            AppendXmlText(name.str(), static_cast<size_t>(name.Length()), m_out);
        else
            m_out += "v" + std::to_string(variable->GetIdx());
        m_out += "</mi>";
        return;
    }
    std::string value;
    const TextPrecedence precedence = AppendValueMathML(node->GetExprValue(), item.placing == Placing::Negated, value);
    const bool bracket = precedence < item.minimum;
    if (bracket) m_out += "<mrow><mo>(</mo>";
    m_out += value;
    if (bracket) m_out += "<mo>)</mo></mrow>";
}

void KOBWBMathMLWriter::WriteNode(const LayoutItem& item) {
    const KOBWBExpression* node = item.node;
    if (!node || node->GetType() == KOBWBConstantType || node->GetType() == KOBWBVariableType)
        return WriteLeaf(item);
    const int count = node->GetNbOfChildren();
    if (node->GetType() == KOBWBSqrtType && count == 1) {
        Add("<msqrt>");
        Add(NodeAt(node->GetChild(0), ConditionText));
        Add("</msqrt>");
        return Flush(AtomText, item.minimum);
    }
    if (node->GetType() == KOBWBRootType && count == 2) {
        // The radicand first, then the index.
        Add("<mroot>");
        Add(NodeAt(node->GetChild(0), ConditionText));
        Add(NodeAt(node->GetChild(1), ConditionText));
        Add("</mroot>");
        return Flush(AtomText, item.minimum);
    }
    m_layouts.LayOut(node, item.placing, item.minimum, m_layout);
    const std::vector<LayoutItem>& items = m_layout.items;
    switch (m_layout.shape) {
    case Shape::Single: Add(items[0]); return Flush(AtomText, item.minimum);
    case Shape::Quotient:
        Add("<mfrac>");
        Add(items[0], ConditionText);
        Add(items[2], ConditionText);
        Add("</mfrac>");
        return Flush(FractionBar, item.minimum);
    case Shape::Power:
        // The base keeps the precedence it needs; the raised exponent needs none.
        Add("<msup>");
        Add(items[0]);
        Add(items[2], ConditionText);
        Add("</msup>");
        return Flush(PowerText, item.minimum);
    default:
        Add("<mrow>");
        for (const LayoutItem& part : items) Add(part);
        Add("</mrow>");
        Flush(m_layout.precedence, item.minimum);
    }
}
