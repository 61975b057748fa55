#include "KobwbCommands.h"

#include "KobwbInput.h"

#include <cstdlib>
#include <iostream>

namespace kobwb_tool {

namespace {

struct Usage {
    const char* command;
    const char* text;
};

const Usage usages[] = {
    {"check", "usage: kobwb check FILE...\n"
              "Parses each model, checks its units and the homogeneity of its equations, and\n"
              "writes each problem as FILE:LINE:COL: error|warning: message (line and column\n"
              "from 1). Exit status 0 when clean, 1 when problems were found, 2 on a usage or\n"
              "input error. FILE - reads standard input.\n"},
    {"eval", "usage: kobwb eval FILE [--domain NAME=[LOW,HIGH] | --domain NAME=VALUE]...\n"
             "Evaluates every equation's root over the domains given (other variables range\n"
             "over everything) and tells whether the equation can still hold.\n"},
    {"print", "usage: kobwb print FILE [--format text|json|dot]\n"
              "Writes the model's equations, as converted into a factory: in the model language\n"
              "(text, the default), or their graph as JSON or Graphviz DOT, shared nodes once.\n"},
    {"diff", "usage: kobwb diff FILE --by NAME\n"
             "Writes the derivative of every equation's root by the variable NAME.\n"},
    {"simplify", "usage: kobwb simplify FILE [--mode N]\n"
                 "Runs the symbolic transformations with mode N (default 4: simplify each\n"
                 "equation) and writes the equations that result.\n"},
    {"classify", "usage: kobwb classify FILE\n"
                 "Tells for every equation whether its root is linear, quadratic or neither.\n"},
};

const char* UsageOf(const char* command) {
    for (const Usage& usage : usages)
        if (std::string(usage.command) == command) return usage.text;
    return "";
}

bool WantsHelp(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments)
        if (argument == "--help" || argument == "-h") return true;
    return false;
}

int UsageError(const char* command, const std::string& problem) {
    std::cerr << "kobwb " << command << ": " << problem << '\n' << UsageOf(command);
    return exitUsage;
}

// One file and the options NAME VALUE that the command allows, the values in
// the order given.
struct Options {
    std::string file;
    std::vector<std::pair<std::string, std::string>> values;
};

bool ReadOptions(const char* command, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& allowed, Options& options, int& status) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument.size() > 2 && argument.compare(0, 2, "--") == 0) {
            bool known = false;
            for (const std::string& name : allowed) known = known || name == argument;
            if (!known) return status = UsageError(command, "unknown option " + argument), false;
            if (i + 1 == arguments.size()) return status = UsageError(command, argument + " needs a value"), false;
            options.values.emplace_back(argument, arguments[++i]);
        } else if (options.file.empty()) {
            options.file = argument;
        } else {
            return status = UsageError(command, "one file only"), false;
        }
    }
    if (options.file.empty()) return status = UsageError(command, "no file given"), false;
    return true;
}

std::string EquationLabel(const KOBWBEquation* equation) { return "[" + std::to_string(equation->GetId()) + "] "; }

bool ParseNumber(const std::string& text, double& value) {
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return !text.empty() && end == text.c_str() + text.size();
}

// NAME=[LOW,HIGH] or NAME=VALUE.
bool ParseDomain(const std::string& text, std::string& name, KOBWBRealInterval& domain) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) return false;
    name = text.substr(0, equals);
    const std::string value = text.substr(equals + 1);
    if (value.size() >= 2 && value.front() == '[' && value.back() == ']') {
        const size_t comma = value.find(',');
        if (comma == std::string::npos) return false;
        return ParseNumber(value.substr(1, comma - 1), domain.lower) &&
               ParseNumber(value.substr(comma + 1, value.size() - comma - 2), domain.upper) &&
               domain.lower <= domain.upper;
    }
    if (!ParseNumber(value, domain.lower)) return false;
    domain.upper = domain.lower;
    return true;
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

} // namespace

int Check(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return std::cout << UsageOf("check"), exitClean;
    if (arguments.empty()) return UsageError("check", "no file given");
    int status = exitClean;
    for (const std::string& file : arguments) {
        LoadedModel loaded;
        if (!LoadModel(file, loaded)) {
            status = exitUsage;
            continue;
        }
        if ((loaded.errors > 0 || loaded.warnings > 0) && status == exitClean) status = exitProblems;
    }
    return status;
}

int Eval(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return std::cout << UsageOf("eval"), exitClean;
    Options options;
    int status = exitClean;
    if (!ReadOptions("eval", arguments, {"--domain"}, options, status)) return status;
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.file, factory)) return loaded;
    // A variable that neither the model nor a --domain gives a value ranges over
    // every real.
    KOBWBValue everything(KOBWBCreateRealInterval(0, 0));
    everything.SetIndefinite();
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        if (variable && variable->GetExprValue().GetType() == KOBWBUndefinedValue) variable->SetExprValue(everything);
    }
    for (const auto& option : options.values) {
        std::string name;
        KOBWBRealInterval domain{0, 0};
        if (!ParseDomain(option.second, name, domain)) return UsageError("eval", "bad domain " + option.second);
        KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
        if (!variable) return UsageError("eval", "no variable " + name + " in the model");
        variable->SetExprValue(KOBWBValue(domain));
    }
    std::string line;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        const KOBWBValue& value = equation->GetRoot()->GetValue();
        line = EquationLabel(equation);
        KOBWBEquationPrinter::PrintEquation(equation, line);
        line += "\n    root in ";
        KOBWBEquationPrinter::PrintValue(value, line);
        line += ", can hold: ";
        line += CanHold(equation->GetType(), value.GetAsRealInterval());
        std::cout << line << '\n';
    }
    return exitClean;
}

int Print(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return std::cout << UsageOf("print"), exitClean;
    Options options;
    int status = exitClean;
    if (!ReadOptions("print", arguments, {"--format"}, options, status)) return status;
    std::string format = "text";
    for (const auto& option : options.values) format = option.second;
    if (format != "text" && format != "json" && format != "dot") return UsageError("print", "unknown format " + format);
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.file, factory)) return loaded;
    std::string text;
    if (format == "json")
        KOBWBEquationMLPrinter::PrintJson(factory, text);
    else if (format == "dot")
        KOBWBGraphPrinter::PrintDot(factory, text);
    else
        KOBWBEquationPrinter::PrintFactory(factory, text);
    std::cout << text;
    return exitClean;
}

int Diff(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return std::cout << UsageOf("diff"), exitClean;
    Options options;
    int status = exitClean;
    if (!ReadOptions("diff", arguments, {"--by"}, options, status)) return status;
    if (options.values.size() != 1) return UsageError("diff", "give one --by NAME");
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.file, factory)) return loaded;
    const std::string& name = options.values.front().second;
    KOBWBVariable* variable = factory.GetVariable(KOBLVRString(name.c_str()));
    if (!variable) return UsageError("diff", "no variable " + name + " in the model");
    std::string line;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        line = EquationLabel(equation);
        KOBWBExpression* derivative = factory.CreateDerivative(equation->GetRoot(), 1, &variable);
        if (derivative)
            KOBWBEquationPrinter::PrintExpression(derivative, line);
        else
            line += "(no derivative)";
        std::cout << line << '\n';
    }
    return exitClean;
}

int Simplify(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return std::cout << UsageOf("simplify"), exitClean;
    Options options;
    int status = exitClean;
    if (!ReadOptions("simplify", arguments, {"--mode"}, options, status)) return status;
    unsigned mode = 4;
    for (const auto& option : options.values) {
        double value = 0;
        if (!ParseNumber(option.second, value) || value < 0 || value > 31 || value != static_cast<unsigned>(value))
            return UsageError("simplify", "bad mode " + option.second);
        mode = static_cast<unsigned>(value);
    }
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.file, factory)) return loaded;
    KOBWBSymbolicTransformations* transformations = KOBCreateWBSymbolicTransformations(0, factory);
    if (!transformations) return std::cerr << "kobwb simplify: out of memory\n", exitProblems;
    transformations->SetMode(mode);
    transformations->Run();
    KOBRemove(transformations);
    std::cout << KOBWBEquationPrinter::ToText(factory);
    return exitClean;
}

int Classify(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return std::cout << UsageOf("classify"), exitClean;
    Options options;
    int status = exitClean;
    if (!ReadOptions("classify", arguments, {}, options, status)) return status;
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.file, factory)) return loaded;
    std::string line;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        const KOBWBExpression* root = equation->GetRoot();
        line = EquationLabel(equation);
        line += root->IsLinear() ? "linear    " : root->IsQuadratic() ? "quadratic " : "nonlinear ";
        KOBWBEquationPrinter::PrintEquation(equation, line);
        std::cout << line << '\n';
    }
    return exitClean;
}

} // namespace kobwb_tool
