#include "KobwbActions.h"

#include "KobwbJson.h"

#include <cstdlib>

namespace kobwb_tool {

namespace {

bool ParseNumber(const std::string& text, double& value) {
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return !text.empty() && end == text.c_str() + text.size();
}

// "[LOW,HIGH]" or "VALUE", LOW <= HIGH.
bool ParseInterval(const std::string& text, KOBWBRealInterval& domain) {
    if (text.size() >= 2 && text.front() == '[' && text.back() == ']') {
        const size_t comma = text.find(',');
        if (comma == std::string::npos) return false;
        return ParseNumber(text.substr(1, comma - 1), domain.lower) &&
               ParseNumber(text.substr(comma + 1, text.size() - comma - 2), domain.upper) &&
               domain.lower <= domain.upper;
    }
    if (!ParseNumber(text, domain.lower)) return false;
    domain.upper = domain.lower;
    return true;
}

KOBWBValue Everything() {
    KOBWBValue everything(KOBWBCreateRealInterval(0, 0));
    everything.SetIndefinite();
    return everything;
}

// Whether the relation of the equation can hold for a root in the interval.
const char* CanHold(KOBWBEquationType type, const KOBWBRealInterval& root) {
    if (root.lower != root.lower || root.upper != root.upper) return "unknown";
    bool possible = true;
    switch (type) {
    case KOBWBEqEqual: possible = root.lower <= 0 && 0 <= root.upper; break;
    case KOBWBEqNotEqual: possible = !(root.lower == 0 && root.upper == 0); break;
    case KOBWBEqLessEqual: possible = root.lower <= 0; break;
    case KOBWBEqLess: possible = root.lower < 0; break;
    case KOBWBEqGreaterEqual: possible = root.upper >= 0; break;
    case KOBWBEqGreater: possible = root.upper > 0; break;
    default: return "unknown";
    }
    return possible ? "possible" : "impossible";
}

std::string ValueText(const KOBWBValue& value) {
    std::string text;
    KOBWBEquationPrinter::PrintValue(value, text);
    return text;
}

// Opens a JSON list or the text lines of one answer, and separates its items.
struct ListWriter {
    ListWriter(bool asJson, std::string& text) : json(asJson), out(text) {
        if (json) out += '[';
    }
    // Starts an item: a separator in JSON.
    void Item() {
        if (json && items++ > 0) out += ", ";
    }
    void Close() {
        if (json) out += "]\n";
    }
    bool json;
    std::string& out;
    int items = 0;
};

void AppendBounds(std::string& out, const KOBWBValue& value) {
    const KOBWBRealInterval bounds = value.GetAsRealInterval();
    out += ", \"lower\": ";
    AppendJsonNumber(out, bounds.lower);
    out += ", \"upper\": ";
    AppendJsonNumber(out, bounds.upper);
}

} // namespace

void OpenUnsetVariables(KOBWBFactory& factory) {
    const KOBWBValue everything = Everything();
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        if (variable && variable->GetExprValue().GetType() == KOBWBUndefinedValue) variable->SetExprValue(everything);
    }
}

std::string SetDomain(KOBWBFactory& factory, const std::string& assignment) {
    const size_t equals = assignment.find('=');
    if (equals == std::string::npos || equals == 0) return "bad domain " + assignment + " (NAME=[LOW,HIGH] or NAME=VALUE)";
    const std::string name = assignment.substr(0, equals);
    const std::string value = assignment.substr(equals + 1);
    KOBWBRealInterval domain{0, 0};
    if (value != "*" && !ParseInterval(value, domain)) return "bad domain " + assignment;
    KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
    if (!variable) return "no variable " + name + " in the model";
    variable->SetExprValue(value == "*" ? Everything() : KOBWBValue(domain));
    return "";
}

void WriteVariables(KOBWBFactory& factory, bool json, std::string& out) {
    ListWriter list(json, out);
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        if (!variable) continue;
        const KOBWBValue& value = variable->GetExprValue();
        list.Item();
        if (!json) {
            out += std::string(variable->GetName().str()) + " in " + ValueText(value) + '\n';
            continue;
        }
        out += "{\"name\": ";
        AppendJsonString(out, std::string(variable->GetName().str()));
        out += ", \"domain\": ";
        AppendJsonString(out, ValueText(value));
        AppendBounds(out, value);
        out += '}';
    }
    list.Close();
}

void WriteEvaluation(KOBWBFactory& factory, bool json, std::string& out) {
    ListWriter list(json, out);
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        const KOBWBValue& value = equation->GetRoot()->GetValue();
        const char* canHold = CanHold(equation->GetType(), value.GetAsRealInterval());
        list.Item();
        if (!json) {
            out += '[' + std::to_string(equation->GetId()) + "] ";
            KOBWBEquationPrinter::PrintEquation(equation, out);
            out += "\n    root in " + ValueText(value) + ", can hold: " + canHold + '\n';
            continue;
        }
        out += "{\"id\": " + std::to_string(equation->GetId()) + ", \"equation\": ";
        AppendJsonString(out, KOBWBEquationPrinter::ToText(equation));
        out += ", \"root\": ";
        AppendJsonString(out, ValueText(value));
        AppendBounds(out, value);
        out += ", \"canHold\": \"" + std::string(canHold) + "\"}";
    }
    list.Close();
}

bool WriteDerivatives(KOBWBFactory& factory, const std::string& name, bool json, std::string& out) {
    KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
    if (!variable) return false;
    ListWriter list(json, out);
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        const KOBWBExpression* derivative = factory.CreateDerivative(equation->GetRoot(), 1, &variable);
        const std::string text = derivative ? KOBWBEquationPrinter::ToText(derivative) : "(no derivative)";
        list.Item();
        if (!json) {
            out += '[' + std::to_string(equation->GetId()) + "] " + text + '\n';
            continue;
        }
        out += "{\"id\": " + std::to_string(equation->GetId()) + ", \"derivative\": ";
        if (derivative)
            AppendJsonString(out, text);
        else
            out += "null";
        out += '}';
    }
    list.Close();
    return true;
}

bool RunSimplify(KOBWBFactory& factory, unsigned mode) {
    KOBWBSymbolicTransformations* transformations = KOBCreateWBSymbolicTransformations(0, factory);
    if (!transformations) return false;
    transformations->SetMode(mode);
    transformations->Run();
    KOBRemove(transformations);
    return true;
}

void WriteClassification(KOBWBFactory& factory, bool json, std::string& out) {
    ListWriter list(json, out);
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        const KOBWBExpression* root = equation->GetRoot();
        const char* shape = root->IsLinear() ? "linear" : root->IsQuadratic() ? "quadratic" : "nonlinear";
        list.Item();
        if (!json) {
            const std::string padded = std::string(shape) + "          ";
            out += '[' + std::to_string(equation->GetId()) + "] " + padded.substr(0, 10);
            KOBWBEquationPrinter::PrintEquation(equation, out);
            out += '\n';
            continue;
        }
        out += "{\"id\": " + std::to_string(equation->GetId()) + ", \"class\": \"" + shape + "\", \"equation\": ";
        AppendJsonString(out, KOBWBEquationPrinter::ToText(equation));
        out += '}';
    }
    list.Close();
}

bool RunContract(KOBWBFactory& factory, bool json, std::string& out) {
    KOBWBContractor contractor(factory);
    const KOBWBContractionStatus status = contractor.Run();
    const char* outcome = status == KOBWBContractionNoSolution  ? "no solution"
                          : status == KOBWBContractionFixedPoint ? "fixed point"
                                                                 : "budget spent";
    const std::string revisions = std::to_string(contractor.GetNbOfRevisions());
    if (json) {
        out += "{\"status\": \"" + std::string(outcome) + "\", \"revisions\": " + revisions + ", \"variables\": ";
        WriteVariables(factory, true, out);
        out.back() = '}';
        out += '\n';
    } else {
        out += std::string(outcome) + " after " + revisions + " revisions\n";
        WriteVariables(factory, false, out);
    }
    return status != KOBWBContractionNoSolution;
}

namespace {

struct SystemFormat {
    const char* name;
    void (*write)(const KOBWBFactory& factory, std::string& out);
};

const SystemFormat systemFormats[] = {
    {"text", KOBWBEquationPrinter::PrintFactory},
    {"mathml", KOBWBEquationMLPrinter::PrintFactory},
    {"json", KOBWBEquationMLPrinter::PrintJson},
    {"dot", KOBWBGraphPrinter::PrintDot},
};

const SystemFormat* FindFormat(const std::string& name) {
    for (const SystemFormat& format : systemFormats)
        if (name == format.name) return &format;
    return nullptr;
}

} // namespace

bool IsSystemFormat(const std::string& format) { return FindFormat(format) != nullptr; }

bool WriteSystem(const KOBWBFactory& factory, const std::string& format, std::string& out) {
    const SystemFormat* found = FindFormat(format);
    if (found) found->write(factory, out);
    return found != nullptr;
}

std::string SystemFormats() {
    std::string names;
    for (const SystemFormat& format : systemFormats) names += (names.empty() ? "" : "|") + std::string(format.name);
    return names;
}

} // namespace kobwb_tool
