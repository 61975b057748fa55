#include "KobwbCommands.h"

#include "KobwbActions.h"
#include "KobwbInput.h"
#include "KobwbJson.h"
#include "KobwbMode.h"
#include "KobwbSimplification.h"

#include <iostream>

namespace kobwb_tool {

namespace {

// Reads the invocation's one file into the factory and gives the domains of the
// --domain options, every other variable ranging over the reals.
int LoadWithDomains(const Invocation& invocation, KOBWBFactory& factory, ModelSource& source) {
    if (const int loaded = LoadFactory(invocation.files.front(), factory, source)) return loaded;
    OpenUnsetVariables(factory);
    for (const std::string& domain : invocation.Values("--domain")) {
        const std::string problem = SetDomain(factory, domain);
        if (!problem.empty()) return invocation.UsageError(problem);
    }
    return exitClean;
}

int Answer(const std::string& out, int status = exitClean) {
    std::cout << out;
    return status;
}

} // namespace

int Check(const Invocation& invocation) {
    const bool json = invocation.Flag("--json");
    int status = exitClean;
    std::string list = "[";
    for (const std::string& file : invocation.files) {
        if (list.size() > 1) list += ",\n ";
        LoadedModel loaded;
        if (!LoadModel(file, loaded)) {
            // Said on standard error; in JSON the file is listed with the reason.
            status = exitUsage;
            if (!json) continue;
            list += "{\"file\": ";
            AppendJsonString(list, ShownName(file));
            list += ", \"unreadable\": ";
            AppendJsonString(list, loaded.unreadable);
            list += "}";
            continue;
        }
        if (json)
            AppendDiagnosticsJson(loaded, list);
        else
            WriteDiagnostics(loaded, std::cerr);
        if ((loaded.errors > 0 || loaded.warnings > 0) && status == exitClean) status = exitProblems;
    }
    if (json) std::cout << list << "]\n";
    return status;
}

int Eval(const Invocation& invocation) {
    KOBWBFactory factory;
    ModelSource source;
    if (const int loaded = LoadWithDomains(invocation, factory, source)) return loaded;
    std::string out;
    WriteEvaluation(factory, invocation.Flag("--json"), out);
    return Answer(out);
}

int Contract(const Invocation& invocation) {
    KOBWBFactory factory;
    ModelSource source;
    if (const int loaded = LoadWithDomains(invocation, factory, source)) return loaded;
    std::string out;
    const bool solvable = RunContract(factory, source, invocation.Flag("--json"), out);
    return Answer(out, solvable ? exitClean : exitProblems);
}

int Print(const Invocation& invocation) {
    std::string format = "text";
    for (const std::string& value : invocation.Values("--format")) format = value;
    if (!IsSystemFormat(format)) return invocation.UsageError("unknown format " + format + " (" + SystemFormats() + ")");
    KOBWBFactory factory;
    ModelSource source;
    if (const int loaded = LoadFactory(invocation.files.front(), factory, source)) return loaded;
    std::string out;
    WriteSystem(factory, format, out);
    return Answer(out);
}

int Diff(const Invocation& invocation) {
    const std::vector<std::string> names = invocation.Values("--by");
    if (names.size() != 1) return invocation.UsageError("give one --by NAME");
    KOBWBFactory factory;
    ModelSource source;
    if (const int loaded = LoadFactory(invocation.files.front(), factory, source)) return loaded;
    std::string out;
    if (!WriteDerivatives(factory, names.front(), invocation.Flag("--raw"), invocation.Flag("--json"), out))
        return invocation.UsageError("no variable " + names.front() + " in the model");
    return Answer(out);
}

int Simplify(const Invocation& invocation) {
    unsigned mode = defaultMode;
    for (const std::string& value : invocation.Values("--mode")) {
        const std::string problem = ParseMode(value, mode);
        if (!problem.empty()) return invocation.UsageError(problem);
    }
    KOBWBFactory factory;
    ModelSource source;
    if (const int loaded = LoadFactory(invocation.files.front(), factory, source)) return loaded;
    SimplifyReport report;
    if (!RunSimplify(factory, mode, report)) return std::cerr << "kobwb simplify: out of memory\n", exitProblems;
    std::string out = KOBWBEquationPrinter::ToText(factory);
    WriteSimplifyReport(report, out);
    return Answer(out, report.inconsistent ? exitProblems : exitClean);
}

int Classify(const Invocation& invocation) {
    KOBWBFactory factory;
    ModelSource source;
    if (const int loaded = LoadFactory(invocation.files.front(), factory, source)) return loaded;
    std::string out;
    WriteClassification(factory, invocation.Flag("--json"), out);
    return Answer(out);
}

} // namespace kobwb_tool
