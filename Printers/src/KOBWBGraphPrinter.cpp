#include "KOBWBGraphPrinter.h"

#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBNodeLabels.h"
#include "KOBWBPrintedNodes.h"

using namespace kobwb;

void KOBWBGraphPrinter::PrintDot(const KOBWBFactory& factory, std::string& out) {
    const KOBWBPrintedNodes list(factory);
    out += "digraph factory {\n  node [shape=box];\n";
    std::string label;
    for (const KOBWBExpression* node : list.Nodes()) {
        const std::string id = std::to_string(list.Id(node));
        label = NodeLabel(node);
        std::string value;
        if (AppendBufferedValue(node, value)) label += "\n" + value;
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
