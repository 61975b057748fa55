#include "KOBWBEquationPrinter.h"

#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBInfixLayout.h"
#include "KOBWBValueText.h"
#include "KOBWBVariable.h"

#include <vector>

using namespace kobwb;

namespace {

class TextWriter {
public:
    explicit TextWriter(std::string& out) : m_out(out) {}

    // Writes the items in order, each node one after the other with its own
    // pieces pushed on one stack.
    void Write(const std::vector<LayoutItem>& items) {
        for (auto it = items.rbegin(); it != items.rend(); ++it) m_stack.push_back(*it);
        while (!m_stack.empty()) {
            const LayoutItem item = m_stack.back();
            m_stack.pop_back();
            switch (item.kind) {
            case LayoutItem::MarkItem: m_out += MarkText(item.mark); break;
            case LayoutItem::NameItem: m_out += item.name; break;
            default: WriteNode(item);
            }
        }
    }

    void WriteExpression(const KOBWBExpression* root) {
        Write({{LayoutItem::NodeItem, Mark::Zero, nullptr, root, ConditionText, Placing::Plain}});
    }

    KOBWBInfixLayout& Layouts() { return m_layouts; }

private:
    void PushMark(Mark mark) { m_stack.push_back({LayoutItem::MarkItem, mark, nullptr, nullptr, 0, Placing::Plain}); }

    void WriteConstant(const KOBWBExpression* node, const LayoutItem& item) {
        m_scratch.clear();
        const KOBWBValue& value = node->GetExprValue();
        const TextPrecedence precedence = item.placing == Placing::Negated ? AppendNegatedValue(value, m_scratch)
                                                                          : AppendValue(value, m_scratch);
        const bool bracket = precedence < item.minimum;
        if (bracket) m_out += '(';
        m_out += m_scratch;
        if (bracket) m_out += ')';
    }

    void WriteVariable(const KOBWBExpression* node) {
        auto* variable = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(node));
        const KOBLVRString& name = variable->GetName();
        if (name.Length() > 0) {
            m_out.append(name.str(), static_cast<size_t>(name.Length()));
            return;
        }
        m_out += 'v';
        AppendInteger(variable->GetIdx(), m_out);
    }

    // Pushes the node's pieces, bracketed when it binds less tightly than its
    // place requires.
    void WriteNode(const LayoutItem& item) {
        const KOBWBExpression* node = item.node;
        if (!node) {
            m_out += "null";
            return;
        }
        if (node->GetType() == KOBWBConstantType) return WriteConstant(node, item);
        if (node->GetType() == KOBWBVariableType) return WriteVariable(node);
        m_layouts.LayOut(node, item.placing, item.minimum, m_layout);
        const bool bracket = m_layout.precedence < item.minimum;
        if (bracket) PushMark(Mark::Close);
        for (auto it = m_layout.items.rbegin(); it != m_layout.items.rend(); ++it) m_stack.push_back(*it);
        if (bracket) PushMark(Mark::Open);
    }

    std::string& m_out;
    std::vector<LayoutItem> m_stack;
    KOBWBInfixLayout m_layouts;
    Layout m_layout;
    std::string m_scratch;
};

} // namespace

void KOBWBEquationPrinter::PrintExpression(const KOBWBExpression* expression, std::string& out) {
    TextWriter(out).WriteExpression(expression);
}

void KOBWBEquationPrinter::PrintEquation(const KOBWBEquation* equation, std::string& out) {
    if (!equation) return;
    TextWriter writer(out);
    Layout layout;
    writer.Layouts().LayOutEquation(equation, layout);
    writer.Write(layout.items);
    out += ';';
}

void KOBWBEquationPrinter::PrintFactory(const KOBWBFactory& factory, std::string& out) {
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        PrintEquation(equation, out);
        out += '\n';
    }
}

void KOBWBEquationPrinter::PrintValue(const KOBWBValue& value, std::string& out) { AppendValue(value, out); }

std::string KOBWBEquationPrinter::ToText(const KOBWBExpression* expression) {
    std::string text;
    PrintExpression(expression, text);
    return text;
}

std::string KOBWBEquationPrinter::ToText(const KOBWBEquation* equation) {
    std::string text;
    PrintEquation(equation, text);
    return text;
}

std::string KOBWBEquationPrinter::ToText(const KOBWBFactory& factory) {
    std::string text;
    PrintFactory(factory, text);
    return text;
}
