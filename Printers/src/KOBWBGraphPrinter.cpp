#include "KOBWBGraphPrinter.h"

#include "KOBWBEquation.h"
#include "KOBWBEquationPrinter.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBValueText.h"
#include "KOBWBVariable.h"

#include <unordered_map>
#include <utility>
#include <vector>

using namespace kobwb;

namespace {

// The nodes under the factory's equation roots, each once, children first.
class NodeList {
public:
    explicit NodeList(const KOBWBFactory& factory) {
        std::vector<std::pair<const KOBWBExpression*, int>> stack;
        for (KOBWBEquation* equation = factory.GetFirstEquation(); equation;
             equation = factory.GetNextEquation(equation)) {
            const KOBWBExpression* root = equation->GetRoot();
            if (!root || m_ids.count(root)) continue;
            stack.emplace_back(root, 0);
            m_ids.emplace(root, -1);
            while (!stack.empty()) {
                auto& [node, next] = stack.back();
                if (next < node->GetNbOfChildren()) {
                    const KOBWBExpression* child = node->GetChild(next++);
                    if (child && m_ids.emplace(child, -1).second) stack.emplace_back(child, 0);
                    continue;
                }
                m_ids[node] = static_cast<int>(m_nodes.size());
                m_nodes.push_back(node);
                stack.pop_back();
            }
        }
    }

    const std::vector<const KOBWBExpression*>& Nodes() const { return m_nodes; }
    int Id(const KOBWBExpression* node) const {
        const auto found = m_ids.find(node);
        return found == m_ids.end() ? -1 : found->second;
    }

private:
    std::vector<const KOBWBExpression*> m_nodes;
    std::unordered_map<const KOBWBExpression*, int> m_ids;
};

// Text inside double quotes, for DOT and JSON alike.
void AppendQuoted(const std::string& text, std::string& out) {
    out += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (static_cast<unsigned char>(c) < 0x20) {
            out += ' ';
        } else {
            out += c;
        }
    }
    out += '"';
}

std::string NodeText(const KOBWBExpression* node) {
    if (node->GetType() == KOBWBVariableType) {
        auto* variable = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(node));
        const KOBLVRString& name = variable->GetName();
        return name.Length() > 0 ? std::string(name.str()) : "v" + std::to_string(variable->GetIdx());
    }
    if (node->GetType() == KOBWBConstantType) {
        std::string text;
        AppendValue(node->GetExprValue(), text);
        return text;
    }
    return KOBWBGetExpressionTypeName(node->GetType());
}

// The value of a node whose buffer holds a valid one; constants show theirs as
// their text already.
bool ValueText(const KOBWBExpression* node, std::string& text) {
    if (node->GetType() == KOBWBConstantType || !node->IsBufferValid()) return false;
    AppendValue(node->GetExprValue(), text);
    return true;
}

} // namespace

void KOBWBGraphPrinter::PrintDot(const KOBWBFactory& factory, std::string& out) {
    const NodeList list(factory);
    out += "digraph factory {\n  node [shape=box];\n";
    std::string label;
    for (const KOBWBExpression* node : list.Nodes()) {
        const std::string id = std::to_string(list.Id(node));
        label = NodeText(node);
        std::string value;
        if (ValueText(node, value)) label += "\n" + value;
        out += "  n" + id + " [label=";
        AppendQuoted(label, out);
        if (node->GetType() == KOBWBVariableType) out += ", shape=ellipse";
        out += "];\n";
        const int count = node->GetNbOfChildren();
        for (int i = 0; i < count; ++i) {
            const int child = list.Id(node->GetChild(i));
            if (child < 0) continue;
            out += "  n" + id + " -> n" + std::to_string(child);
            if (count > 1) out += " [label=\"" + std::to_string(i) + "\"]";
            out += ";\n";
        }
    }
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        const std::string id = std::to_string(equation->GetId());
        label = "[" + id + "] " + KOBWBGetEquationTypeText(equation->GetType()) + " 0";
        out += "  e" + id + " [shape=ellipse, style=bold, label=";
        AppendQuoted(label, out);
        out += "];\n";
        if (list.Id(equation->GetRoot()) >= 0)
            out += "  e" + id + " -> n" + std::to_string(list.Id(equation->GetRoot())) + ";\n";
    }
    out += "}\n";
}

void KOBWBGraphPrinter::PrintJson(const KOBWBFactory& factory, std::string& out) {
    const NodeList list(factory);
    out += "{\"nodes\": [";
    bool first = true;
    for (const KOBWBExpression* node : list.Nodes()) {
        out += first ? "\n  " : ",\n  ";
        first = false;
        out += "{\"id\": " + std::to_string(list.Id(node)) + ", \"type\": " + std::to_string(node->GetType());
        out += ", \"op\": ";
        AppendQuoted(KOBWBGetExpressionTypeName(node->GetType()), out);
        if (node->GetType() == KOBWBVariableType) {
            out += ", \"name\": ";
            AppendQuoted(NodeText(node), out);
        }
        std::string value;
        if (node->GetType() == KOBWBConstantType) value = NodeText(node);
        if (!value.empty() || ValueText(node, value)) {
            out += ", \"value\": ";
            AppendQuoted(value, out);
        }
        if (node->GetType() != KOBWBVariableType && node->GetType() != KOBWBConstantType) {
            out += ", \"children\": [";
            for (int i = 0; i < node->GetNbOfChildren(); ++i) {
                if (i > 0) out += ", ";
                out += std::to_string(list.Id(node->GetChild(i)));
            }
            out += ']';
        }
        out += '}';
    }
    out += "\n], \"equations\": [";
    first = true;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        out += first ? "\n  " : ",\n  ";
        first = false;
        out += "{\"id\": " + std::to_string(equation->GetId()) + ", \"relation\": ";
        AppendQuoted(KOBWBGetEquationTypeText(equation->GetType()), out);
        out += ", \"root\": " + std::to_string(list.Id(equation->GetRoot())) + ", \"text\": ";
        AppendQuoted(KOBWBEquationPrinter::ToText(equation), out);
        out += '}';
    }
    out += "\n]}\n";
}
