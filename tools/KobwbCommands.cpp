#include "KobwbCommands.h"

#include "KobwbActions.h"
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
    {"check", "usage: kobwb check FILE... [--json]\n"
              "Parses each model, checks its units and the homogeneity of its equations, and\n"
              "writes each problem as FILE:LINE:COL: error|warning: message (line and column\n"
              "from 1) on standard error; with --json, one JSON list of the files and their\n"
              "problems on standard output. Exit status 0 when clean, 1 when problems were\n"
              "found, 2 on a usage or input error. FILE - reads standard input.\n"},
    {"eval", "usage: kobwb eval FILE [--domain NAME=[LOW,HIGH] | --domain NAME=VALUE]... [--json]\n"
             "Evaluates every equation's root over the domains given (other variables range\n"
             "over everything) and tells whether the equation can still hold.\n"},
    {"print", "usage: kobwb print FILE [--format text|mathml|json|dot]\n"
              "Writes the model's equations, as converted into a factory: in the model language\n"
              "(text, the default), as presentation MathML, or their graph as JSON or Graphviz\n"
              "DOT, shared nodes once.\n"},
    {"diff", "usage: kobwb diff FILE --by NAME [--json]\n"
             "Writes the derivative of every equation's root by the variable NAME.\n"},
    {"simplify", "usage: kobwb simplify FILE [--mode N]\n"
                 "Runs the symbolic transformations with mode N (default 4: simplify each\n"
                 "equation) and writes the equations that result.\n"},
    {"classify", "usage: kobwb classify FILE [--json]\n"
                 "Tells for every equation whether its root is linear, quadratic or neither.\n"},
    {"contract", "usage: kobwb contract FILE [--domain NAME=[LOW,HIGH] | --domain NAME=VALUE]... [--json]\n"
                 "Narrows the variables' domains with the equations (other variables start from\n"
                 "every real) and writes the outcome and every variable's domain. Exit status 1\n"
                 "when the system has no solution in the domains.\n"},
    {"edit", "usage: kobwb edit [FILE]\n"
             "A session over the equations of FILE (none when left out): commands are read\n"
             "one a line from standard input, answers written to standard output, errors as\n"
             "\"error: ...\" lines. Type help in the session for its commands. Exit status 1\n"
             "when a command failed, so that a script can tell.\n"},
};

bool WantsHelp(const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments)
        if (argument == "--help" || argument == "-h") return true;
    return false;
}

int UsageError(const char* command, const std::string& problem) {
    std::cerr << "kobwb " << command << ": " << problem << '\n' << UsageOf(command);
    return exitUsage;
}

// The files and the options of one command line. Options are "--NAME VALUE", in
// the order given, or flags without a value.
struct Options {
    std::vector<std::string> files;
    std::vector<std::pair<std::string, std::string>> values;
    bool json = false;
};

// What a command takes: the options with a value, whether --json, and how many files.
struct Accepts {
    std::vector<std::string> valued;
    bool json = false;
    bool manyFiles = false;
};

bool ReadOptions(const char* command, const std::vector<std::string>& arguments, const Accepts& accepts,
                 Options& options, int& status) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument.size() > 2 && argument.compare(0, 2, "--") == 0) {
            if (accepts.json && argument == "--json") {
                options.json = true;
                continue;
            }
            bool known = false;
            for (const std::string& name : accepts.valued) known = known || name == argument;
            if (!known) return status = UsageError(command, "unknown option " + argument), false;
            if (i + 1 == arguments.size()) return status = UsageError(command, argument + " needs a value"), false;
            options.values.emplace_back(argument, arguments[++i]);
        } else if (options.files.empty() || accepts.manyFiles) {
            options.files.push_back(argument);
        } else {
            return status = UsageError(command, "one file only"), false;
        }
    }
    if (options.files.empty()) return status = UsageError(command, "no file given"), false;
    return true;
}

// Reads the one file of the options into the factory and gives the domains of
// the --domain options, every other variable ranging over the reals.
int LoadWithDomains(const char* command, const Options& options, KOBWBFactory& factory) {
    if (const int loaded = LoadFactory(options.files.front(), factory)) return loaded;
    OpenUnsetVariables(factory);
    for (const auto& option : options.values) {
        const std::string problem = SetDomain(factory, option.second);
        if (!problem.empty()) return UsageError(command, problem);
    }
    return exitClean;
}

int Answer(const std::string& out, int status = exitClean) {
    std::cout << out;
    return status;
}

} // namespace

const char* UsageOf(const std::string& command) {
    for (const Usage& usage : usages)
        if (command == usage.command) return usage.text;
    return "";
}

int Check(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return Answer(UsageOf("check"));
    Options options;
    int status = exitClean;
    if (!ReadOptions("check", arguments, {{}, true, true}, options, status)) return status;
    std::string json = "[";
    for (const std::string& file : options.files) {
        LoadedModel loaded;
        if (!LoadModel(file, loaded)) {
            status = exitUsage;
            continue;
        }
        if (options.json) {
            if (json.size() > 1) json += ",\n ";
            AppendDiagnosticsJson(loaded, json);
        } else {
            WriteDiagnostics(loaded, std::cerr);
        }
        if ((loaded.errors > 0 || loaded.warnings > 0) && status == exitClean) status = exitProblems;
    }
    if (options.json) std::cout << json << "]\n";
    return status;
}

int Eval(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return Answer(UsageOf("eval"));
    Options options;
    int status = exitClean;
    if (!ReadOptions("eval", arguments, {{"--domain"}, true}, options, status)) return status;
    KOBWBFactory factory;
    if (const int loaded = LoadWithDomains("eval", options, factory)) return loaded;
    std::string out;
    WriteEvaluation(factory, options.json, out);
    return Answer(out);
}

int Contract(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return Answer(UsageOf("contract"));
    Options options;
    int status = exitClean;
    if (!ReadOptions("contract", arguments, {{"--domain"}, true}, options, status)) return status;
    KOBWBFactory factory;
    if (const int loaded = LoadWithDomains("contract", options, factory)) return loaded;
    std::string out;
    const bool solvable = RunContract(factory, options.json, out);
    return Answer(out, solvable ? exitClean : exitProblems);
}

int Print(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return Answer(UsageOf("print"));
    Options options;
    int status = exitClean;
    if (!ReadOptions("print", arguments, {{"--format"}}, options, status)) return status;
    std::string format = "text";
    for (const auto& option : options.values) format = option.second;
    if (!IsSystemFormat(format)) return UsageError("print", "unknown format " + format + " (" + SystemFormats() + ")");
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.files.front(), factory)) return loaded;
    std::string out;
    WriteSystem(factory, format, out);
    return Answer(out);
}

int Diff(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return Answer(UsageOf("diff"));
    Options options;
    int status = exitClean;
    if (!ReadOptions("diff", arguments, {{"--by"}, true}, options, status)) return status;
    if (options.values.size() != 1) return UsageError("diff", "give one --by NAME");
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.files.front(), factory)) return loaded;
    const std::string& name = options.values.front().second;
    std::string out;
    if (!WriteDerivatives(factory, name, options.json, out)) return UsageError("diff", "no variable " + name + " in the model");
    return Answer(out);
}

int Simplify(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return Answer(UsageOf("simplify"));
    Options options;
    int status = exitClean;
    if (!ReadOptions("simplify", arguments, {{"--mode"}}, options, status)) return status;
    unsigned mode = 4;
    for (const auto& option : options.values) {
        char* end = nullptr;
        const long value = std::strtol(option.second.c_str(), &end, 10);
        if (option.second.empty() || *end != '\0' || value < 0 || value > 31)
            return UsageError("simplify", "bad mode " + option.second);
        mode = static_cast<unsigned>(value);
    }
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.files.front(), factory)) return loaded;
    if (!RunSimplify(factory, mode)) return std::cerr << "kobwb simplify: out of memory\n", exitProblems;
    return Answer(KOBWBEquationPrinter::ToText(factory));
}

int Classify(const std::vector<std::string>& arguments) {
    if (WantsHelp(arguments)) return Answer(UsageOf("classify"));
    Options options;
    int status = exitClean;
    if (!ReadOptions("classify", arguments, {{}, true}, options, status)) return status;
    KOBWBFactory factory;
    if (const int loaded = LoadFactory(options.files.front(), factory)) return loaded;
    std::string out;
    WriteClassification(factory, options.json, out);
    return Answer(out);
}

} // namespace kobwb_tool
