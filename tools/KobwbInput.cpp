#include "KobwbInput.h"

#include "KobwbJson.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <iostream>

namespace kobwb_tool {

bool ReadInput(const std::string& name, std::string& text) {
    const bool standardInput = name == "-";
    FILE* file = standardInput ? stdin : std::fopen(name.c_str(), "rb");
    if (!file) return false;
    char buffer[1 << 16];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) text.append(buffer, got);
    const bool failed = std::ferror(file) != 0;
    if (!standardInput) std::fclose(file);
    return !failed;
}

std::string ShownName(const std::string& name) { return name == "-" ? "<stdin>" : name; }

namespace {

// A binary file holds invalid characters by the thousand: the first few are
// shown, then how many more there were.
constexpr int shownInvalidCharacters = 10;

void Add(LoadedModel& loaded, int line, int column, bool error, std::string message) {
    loaded.diagnostics.push_back({line, column, error, std::move(message)});
    ++(error ? loaded.errors : loaded.warnings);
}

// A problem at a byte of the text.
void AddAt(LoadedModel& loaded, const std::string& text, size_t at, bool error, std::string message) {
    int line = 1;
    size_t lineStart = 0;
    for (size_t i = 0; i < at; ++i)
        if (text[i] == '\n') {
            ++line;
            lineStart = i + 1;
        }
    Add(loaded, line, static_cast<int>(at - lineStart) + 1, error, std::move(message));
}

// Comments do not nest and the language has no quoted text, so a "/*" without
// a "*/" after it is the start of a comment that swallows the rest of the text.
void CheckComments(const std::string& text, LoadedModel& loaded) {
    size_t at = 0;
    while ((at = text.find("/*", at)) != std::string::npos) {
        const size_t end = text.find("*/", at + 2);
        if (end == std::string::npos)
            return AddAt(loaded, text, at, false, "unterminated comment: the rest of the text is not read");
        at = end + 2;
    }
}

const std::string inconsistentUnit = "semantic error, inconsistent unit";

void CollectMessengerReports(const std::string& text, LoadedModel& loaded) {
    const KOBWBParserMessenger& messenger = loaded.messenger;
    for (KOBWBModelReport& report : KOBWBModelReports::Errors(text, loaded.model, messenger))
        Add(loaded, report.line, report.column, true, std::move(report.message));
    const int invalid = messenger.GetNbOfInvalidCharacters();
    for (int i = 0; i < invalid && i < shownInvalidCharacters; ++i) {
        int line = 0;
        int column = 0;
        messenger.GetInvalidCharacter(i, line, column);
        Add(loaded, line, column + 1, false, KOBWBModelReports::InvalidCharacter(text, line, column));
    }
    if (invalid > shownInvalidCharacters)
        Add(loaded, 0, 0, false, std::to_string(invalid - shownInvalidCharacters) + " more invalid characters");
}

// Homogeneity also fails the equations whose kinds it cannot decide (any function
// of a length or an angle): only a side that is decided to mix kinds, or two
// decided sides that differ, is a problem.
void CheckHomogeneity(LoadedModel& loaded) {
    bool unitsInconsistent = false;
    for (const Diagnostic& problem : loaded.diagnostics)
        unitsInconsistent = unitsInconsistent || problem.message.compare(0, inconsistentUnit.size(), inconsistentUnit) == 0;
    for (KOBWBEqNode* equation = loaded.model.GetFirstEquation(); equation;
         equation = loaded.model.GetNextEquation(equation)) {
        if (!equation->GetRightTerm() || KOBWBModelHomogeneity::CheckHomogeneity(*equation) != 1) continue;
        // An equation whose units the model check found inconsistent, or one on a
        // line with a syntax error, is reported once.
        bool reported = false;
        for (const Diagnostic& problem : loaded.diagnostics)
            reported = reported || (problem.error && (equation->GetLocation().Contains(problem.line, problem.column - 1) ||
                                                      problem.line == equation->GetLocation().GetFirstLine()));
        if (reported) continue;
        const KOBLVRString left = KOBWBModelHomogeneity::FillHomogeneity(equation->GetLeftTerm());
        const KOBLVRString right = KOBWBModelHomogeneity::FillHomogeneity(equation->GetRightTerm());
        if (left == KOBWBUnitClassUnsolved || right == KOBWBUnitClassUnsolved) continue;
        // A variable is of both kinds because the model check found a unit
        // inconsistent, which is reported where it is.
        if (unitsInconsistent && (left == KOBWBUnitClassInhomogeneous || right == KOBWBUnitClassInhomogeneous)) continue;
        const KOBWBLocation& location = equation->GetLocation();
        Add(loaded, location.GetFirstLine(), location.GetFirstColumn() + 1, false,
            std::string("the two sides are not the same kind of quantity (") + left.str() + " and " + right.str() +
                ")");
    }
}

} // namespace

void LoadModelText(const std::string& name, std::string text, LoadedModel& loaded) {
    loaded.file = name;
    loaded.messenger.SetEchoToStandardError(false);
    // The model language has no NUL character: the text from the first one on
    // is not read.
    const size_t nul = text.find('\0');
    if (nul != std::string::npos) {
        AddAt(loaded, text, nul, true, "a NUL byte: the input is not model text");
        text.resize(nul);
    }
    CheckComments(text, loaded);
    KOBWBParser::Parse(text.c_str(), loaded.model, loaded.ids, loaded.messenger, nullptr);
    CollectMessengerReports(text, loaded);
    CheckHomogeneity(loaded);
    if (loaded.messenger.GetErrorNumber() == 0)
        for (const KOBWBNumberWarning& warning : KOBWBModelNumberCheck::Run(loaded.model))
            Add(loaded, warning.location.GetFirstLine(), warning.location.GetFirstColumn() + 1, false, warning.message);
    if (loaded.ids.Size() == 0 && loaded.errors == 0) Add(loaded, 0, 0, false, "the model holds no equations");
    // In text order; what has no place comes last.
    std::stable_sort(loaded.diagnostics.begin(), loaded.diagnostics.end(),
                     [](const Diagnostic& a, const Diagnostic& b) {
                         const int lineA = a.line > 0 ? a.line : INT_MAX;
                         const int lineB = b.line > 0 ? b.line : INT_MAX;
                         return lineA != lineB ? lineA < lineB : a.column < b.column;
                     });
}

bool LoadModel(const std::string& name, LoadedModel& loaded) {
    std::string text;
    if (!ReadInput(name, text)) {
        loaded.file = name;
        loaded.unreadable = std::strerror(errno);
        std::cerr << "kobwb: cannot read " << ShownName(name) << ": " << loaded.unreadable << '\n';
        return false;
    }
    LoadModelText(name, std::move(text), loaded);
    return true;
}

void WriteDiagnostics(const LoadedModel& loaded, std::ostream& out) {
    const std::string shown = ShownName(loaded.file);
    for (const Diagnostic& problem : loaded.diagnostics) {
        out << shown;
        if (problem.line > 0) out << ':' << problem.line << ':' << problem.column;
        out << ": " << (problem.error ? "error" : "warning") << ": " << problem.message << '\n';
    }
}

void AppendDiagnosticsJson(const LoadedModel& loaded, std::string& out) {
    out += "{\"file\": ";
    AppendJsonString(out, ShownName(loaded.file));
    out += ", \"errors\": " + std::to_string(loaded.errors) + ", \"warnings\": " + std::to_string(loaded.warnings) +
           ", \"problems\": [";
    const char* separator = "";
    for (const Diagnostic& problem : loaded.diagnostics) {
        out += separator;
        out += "{\"line\": " + std::to_string(problem.line) + ", \"column\": " + std::to_string(problem.column) +
               ", \"severity\": ";
        out += problem.error ? "\"error\"" : "\"warning\"";
        out += ", \"message\": ";
        AppendJsonString(out, problem.message);
        out += '}';
        separator = ", ";
    }
    out += "]}";
}

int ConvertModel(LoadedModel& loaded, KOBWBFactory& factory, KOBLVRListPKOBWBVarNode& variableNodes,
                 KOBLVRListPKOBWBVariable& factoryVariables, ModelSource& source) {
    if (loaded.errors > 0) return exitProblems;
    const int parsed = loaded.ids.Size();
    // Conversion writes each factory equation's id over its model equation's.
    std::vector<int> lines;
    for (int i = 0; i < parsed; ++i) {
        const KOBWBEqNode* equation = loaded.model.GetEquationById(loaded.ids[i]);
        lines.push_back(equation ? equation->GetLocation().GetFirstLine() : 0);
    }
    const long converted = loaded.model.FillFactory(factory, loaded.ids, -1, variableNodes, factoryVariables);
    for (int i = 0; i < parsed; ++i)
        if (loaded.ids[i] >= 0 && lines[static_cast<size_t>(i)] > 0) source.SetLine(loaded.ids[i], lines[static_cast<size_t>(i)]);
    KOBLVRListPKOBWBVarNode occurrences;
    loaded.model.GetVariables(occurrences);
    for (int i = 0; i < occurrences.Size(); ++i)
        if (const KOBWBVarNode* variable = occurrences[i]) source.SetKind(variable->GetName().str(), variable->GetUnitType());
    if (converted != parsed) {
        std::cerr << ShownName(loaded.file) << ": error: some equations could not be converted\n";
        return exitProblems;
    }
    return exitClean;
}

int LoadFactory(const std::string& name, KOBWBFactory& factory, ModelSource& source) {
    LoadedModel loaded;
    if (!LoadModel(name, loaded)) return exitUsage;
    WriteDiagnostics(loaded, std::cerr);
    KOBLVRListPKOBWBVarNode variableNodes;
    KOBLVRListPKOBWBVariable factoryVariables;
    return ConvertModel(loaded, factory, variableNodes, factoryVariables, source);
}

} // namespace kobwb_tool
