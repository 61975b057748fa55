#include "KobwbInput.h"

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

namespace {

const char* ShownName(const std::string& name) { return name == "-" ? "<stdin>" : name.c_str(); }

void Report(const std::string& name, int line, int column, const char* kind, const char* message) {
    std::cerr << ShownName(name);
    if (line > 0) std::cerr << ':' << line << ':' << column;
    std::cerr << ": " << kind << ": " << message << '\n';
}

// Reports a problem at a byte of the text.
void ReportAt(const std::string& name, const std::string& text, size_t at, const char* kind, const char* message) {
    int line = 1;
    size_t lineStart = 0;
    for (size_t i = 0; i < at; ++i)
        if (text[i] == '\n') {
            ++line;
            lineStart = i + 1;
        }
    Report(name, line, static_cast<int>(at - lineStart) + 1, kind, message);
}

// Comments do not nest and the language has no quoted text, so a "/*" without
// a "*/" after it is the start of a comment that swallows the rest of the text.
void ReportUnterminatedComment(const std::string& name, const std::string& text, int& warnings) {
    size_t at = 0;
    while ((at = text.find("/*", at)) != std::string::npos) {
        const size_t end = text.find("*/", at + 2);
        if (end != std::string::npos) {
            at = end + 2;
            continue;
        }
        ReportAt(name, text, at, "warning", "unterminated comment: the rest of the text is not read");
        ++warnings;
        return;
    }
}

} // namespace

bool LoadModel(const std::string& name, LoadedModel& loaded) {
    std::string text;
    if (!ReadInput(name, text)) {
        std::cerr << "kobwb: cannot read " << ShownName(name) << ": " << std::strerror(errno) << '\n';
        return false;
    }
    loaded.messenger.SetEchoToStandardError(false);
    // The model language has no NUL character: the text from the first one on
    // is not read.
    const size_t nul = text.find('\0');
    if (nul != std::string::npos) {
        ReportAt(name, text, nul, "error", "a NUL byte: the input is not model text");
        ++loaded.errors;
        text.resize(nul);
    }
    ReportUnterminatedComment(name, text, loaded.warnings);
    KOBWBParser::Parse(text.c_str(), loaded.model, loaded.ids, loaded.messenger, nullptr);
    for (int i = 0; i < loaded.messenger.GetErrorNumber(); ++i) {
        int code = 0;
        KOBWBLocation location;
        loaded.messenger.GetError(i, code, location);
        Report(name, location.GetFirstLine(), location.GetFirstColumn() + 1, "error",
               loaded.messenger.GetErrorMessage(i).str());
        ++loaded.errors;
    }
    for (KOBWBEqNode* equation = loaded.model.GetFirstEquation(); equation;
         equation = loaded.model.GetNextEquation(equation)) {
        if (!equation->GetRightTerm() || KOBWBModelHomogeneity::CheckHomogeneity(*equation) != 1) continue;
        // The check also fails the equations whose kinds it cannot decide (any
        // function of a length or an angle): only a side that is decided to mix
        // kinds, or two decided sides that differ, is a problem.
        const KOBLVRString left = KOBWBModelHomogeneity::FillHomogeneity(equation->GetLeftTerm());
        const KOBLVRString right = KOBWBModelHomogeneity::FillHomogeneity(equation->GetRightTerm());
        if (left == KOBWBUnitClassUnsolved || right == KOBWBUnitClassUnsolved) continue;
        const std::string message = std::string("the two sides are not the same kind of quantity (") + left.str() +
                                    " and " + right.str() + ")";
        const KOBWBLocation& location = equation->GetLocation();
        Report(name, location.GetFirstLine(), location.GetFirstColumn() + 1, "warning", message.c_str());
        ++loaded.warnings;
    }
    return true;
}

int LoadFactory(const std::string& name, KOBWBFactory& factory) {
    LoadedModel loaded;
    if (!LoadModel(name, loaded)) return exitUsage;
    if (loaded.errors > 0) return exitProblems;
    KOBLVRListPKOBWBVarNode variableNodes;
    KOBLVRListPKOBWBVariable factoryVariables;
    const int parsed = loaded.ids.Size();
    if (loaded.model.FillFactory(factory, loaded.ids, -1, variableNodes, factoryVariables) != parsed) {
        std::cerr << ShownName(name) << ": error: some equations could not be converted\n";
        return exitProblems;
    }
    return exitClean;
}

} // namespace kobwb_tool
