#include "KOBWBEquationMLPrinter.h"

#include "KOBWBEquation.h"
#include "KOBWBEquationPrinter.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBMathMLWriter.h"
#include "KOBWBNodeLabels.h"
#include "KOBWBPrintedNodes.h"

using namespace kobwb;

namespace {

constexpr const char* mathOpen = "<math xmlns=\"http://www.w3.org/1998/Math/MathML\">";
constexpr const char* mathClose = "</math>";

// "{"nodes": [...]" with every listed node; the caller closes the object.
void AppendJsonNodes(const KOBWBPrintedNodes& list, std::string& out) {
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
            AppendQuoted(NodeLabel(node), out);
        }
        std::string value;
        if (node->GetType() == KOBWBConstantType) value = NodeLabel(node);
        if (!value.empty() || AppendBufferedValue(node, value)) {
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
    out += "\n]";
}

} // namespace

void KOBWBEquationMLPrinter::PrintExpression(const KOBWBExpression* expression, std::string& out) {
    out += mathOpen;
    KOBWBMathMLWriter(out).WriteExpression(expression);
    out += mathClose;
}

void KOBWBEquationMLPrinter::PrintEquation(const KOBWBEquation* equation, std::string& out) {
    if (!equation) return;
    out += mathOpen;
    KOBWBMathMLWriter(out).WriteEquation(equation);
    out += mathClose;
}

void KOBWBEquationMLPrinter::PrintFactory(const KOBWBFactory& factory, std::string& out) {
    out += "<equations count=\"" + std::to_string(factory.GetNbOfEquations()) + "\">\n";
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        PrintEquation(equation, out);
        out += '\n';
    }
    out += "</equations>\n";
}

void KOBWBEquationMLPrinter::PrintJson(const KOBWBFactory& factory, std::string& out) {
    const KOBWBPrintedNodes list(factory);
    AppendJsonNodes(list, out);
    out += ", \"equations\": [";
    bool first = true;
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

void KOBWBEquationMLPrinter::PrintJson(const KOBWBExpression* expression, std::string& out) {
    const KOBWBPrintedNodes list(expression);
    AppendJsonNodes(list, out);
    out += ", \"root\": " + std::to_string(list.Id(expression)) + "}\n";
}

std::string KOBWBEquationMLPrinter::ToMathML(const KOBWBExpression* expression) {
    std::string text;
    PrintExpression(expression, text);
    return text;
}

std::string KOBWBEquationMLPrinter::ToMathML(const KOBWBEquation* equation) {
    std::string text;
    PrintEquation(equation, text);
    return text;
}

std::string KOBWBEquationMLPrinter::ToMathML(const KOBWBFactory& factory) {
    std::string text;
    PrintFactory(factory, text);
    return text;
}
