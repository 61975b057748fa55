#include "KobwbActions.h"

#include "KobwbConflict.h"
#include "KobwbJson.h"
#include "KobwbSimplification.h"

#include <cmath>
#include <cstdlib>

namespace kobwb_tool {

std::string ParseNumber(const std::string& text, double& value) {
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    if (text.empty() || end != text.c_str() + text.size()) return "'" + text + "' is not a number";
    if (!std::isfinite(value)) return text + " is past the largest real";
    return "";
}

namespace {

// "[LOW,HIGH]" or "VALUE", LOW <= HIGH; what was wrong otherwise.
std::string ParseInterval(const std::string& text, KOBWBRealInterval& domain) {
    if (text.size() >= 2 && text.front() == '[' && text.back() == ']') {
        const size_t comma = text.find(',');
        if (comma == std::string::npos) return "no comma between the bounds";
        const std::string low = text.substr(1, comma - 1);
        const std::string high = text.substr(comma + 1, text.size() - comma - 2);
        std::string problem = ParseNumber(low, domain.lower);
        if (problem.empty()) problem = ParseNumber(high, domain.upper);
        if (problem.empty() && domain.lower > domain.upper)
            problem = "the lower bound " + low + " is above the upper bound " + high;
        return problem;
    }
    const std::string problem = ParseNumber(text, domain.lower);
    domain.upper = domain.lower;
    return problem;
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
    const std::string problem = value == "*" ? "" : ParseInterval(value, domain);
    if (!problem.empty()) return "bad domain " + assignment + ": " + problem;
    KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
    if (!variable) return "no variable " + name + " in the model";
    variable->SetExprValue(value == "*" ? Everything() : KOBWBValue(domain));
    return "";
}

void WriteVariables(KOBWBFactory& factory, const ModelSource& source, bool json, std::string& out) {
    ListWriter list(json, out);
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        if (!variable) continue;
        const KOBWBValue& value = variable->GetExprValue();
        const std::string name = variable->GetName().str();
        list.Item();
        if (!json) {
            out += name + " in " + source.ValueText(variable) + '\n';
            continue;
        }
        out += "{\"name\": ";
        AppendJsonString(out, name);
        out += ", \"domain\": ";
        AppendJsonString(out, ValueText(value));
        AppendBounds(out, value);
        const std::string unit = source.UnitOf(name);
        if (!unit.empty()) {
            out += ", \"shown\": ";
            AppendJsonString(out, source.ValueText(variable));
        }
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

bool WriteDerivatives(KOBWBFactory& factory, const std::string& name, bool raw, bool json, std::string& out) {
    KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
    if (!variable) return false;
    ListWriter list(json, out);
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        KOBWBExpression* derivative = factory.CreateDerivative(equation->GetRoot(), 1, &variable);
        if (derivative && !raw) {
            KOBWBExpression* simplified = KOBWBPolynomialTools::Simplify(derivative);
            derivative = WriteFractionsAsQuotients(factory, FoldExactConstants(factory, simplified ? simplified : derivative));
        }
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

bool RunContract(KOBWBFactory& factory, const ModelSource& source, bool json, std::string& out) {
    const std::vector<KOBWBValue> start = SaveDomains(factory);
    KOBWBContractionStatus status = KOBWBContractionFixedPoint;
    long revisions = 0;
    {
        KOBWBContractor contractor(factory);
        status = contractor.Run();
        revisions = contractor.GetNbOfRevisions();
    }
    const char* outcome = status == KOBWBContractionNoSolution  ? "no solution"
                          : status == KOBWBContractionFixedPoint ? "fixed point"
                                                                 : "budget spent";
    const std::string counted = std::to_string(revisions);
    if (status == KOBWBContractionNoSolution) {
        const std::vector<KOBWBEquation*> culprits = EquationsThatEmpty(factory, start);
        RestoreDomains(factory, start);
        if (json) {
            out += "{\"status\": \"no solution\", \"revisions\": " + counted + ", \"equations\": [";
            for (size_t i = 0; i < culprits.size(); ++i) {
                out += i > 0 ? ", " : "";
                out += "{\"id\": " + std::to_string(culprits[i]->GetId()) +
                       ", \"line\": " + std::to_string(source.LineOf(culprits[i])) + ", \"equation\": ";
                AppendJsonString(out, KOBWBEquationPrinter::ToText(culprits[i]));
                out += '}';
            }
            out += "]}\n";
        } else {
            out += "no solution after " + counted + " revisions: ";
            out += culprits.empty() ? std::string("the domains are empty\n")
                                    : culprits.size() == 1 ? "this equation cannot hold in the domains\n"
                                                           : "these equations cannot hold together in the domains\n";
            for (const KOBWBEquation* equation : culprits) out += "  " + source.NameEquation(equation) + '\n';
        }
        return false;
    }
    if (json) {
        out += "{\"status\": \"" + std::string(outcome) + "\", \"revisions\": " + counted + ", \"variables\": ";
        WriteVariables(factory, source, true, out);
        out.back() = '}';
        out += '\n';
    } else {
        out += std::string(outcome) + " after " + counted + " revisions\n";
        WriteVariables(factory, source, false, out);
    }
    return true;
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
