#ifndef KobwbInput_h
#define KobwbInput_h

#include "KOBWBx.h"
#include "KobwbCommandLine.h"
#include "KobwbModelSource.h"

#include <memory>
#include <string>
#include <vector>

namespace kobwb_tool {

// The whole text of a file, or of standard input for "-"; false when it cannot be read.
bool ReadInput(const std::string& name, std::string& text);

// The name a file is shown under: "<stdin>" for "-".
std::string ShownName(const std::string& name);

// One problem found in a model text; line and column count from 1, line 0 when
// the problem has no place in the text.
struct Diagnostic {
    int line = 0;
    int column = 0;
    bool error = true;
    std::string message;
};

// A model text read, parsed and checked, with the problems found in text order:
// syntax and model-check errors, invalid characters, an unterminated comment, a
// NUL byte, equations whose two sides are decided to be different kinds of
// quantity.
struct LoadedModel {
    std::string file;
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    std::vector<Diagnostic> diagnostics;
    int errors = 0;
    int warnings = 0;
    // Why the file could not be read, when it could not.
    std::string unreadable;
};

// Parses and checks text as the model of the named file.
void LoadModelText(const std::string& name, std::string text, LoadedModel& loaded);
// Reads and parses the file; false (and a message on standard error) when it
// cannot be read.
bool LoadModel(const std::string& name, LoadedModel& loaded);

// Each diagnostic as "FILE:LINE:COL: error|warning: message" (the place left out
// when it has none).
void WriteDiagnostics(const LoadedModel& loaded, std::ostream& out);
// The file's diagnostics as one JSON object:
//   {"file": F, "errors": N, "warnings": N,
//    "problems": [{"line": L, "column": C, "severity": "error"|"warning", "message": M}]}
void AppendDiagnosticsJson(const LoadedModel& loaded, std::string& out);

// The equations of a loaded model without errors converted into the factory;
// the variables already given (name occurrences and factory variables at the same
// positions) are reused and the new ones appended. The equations' lines and the
// variables' kinds are noted in source. exitClean, or exitProblems (with a
// message) when the model holds errors or an equation does not convert.
int ConvertModel(LoadedModel& loaded, KOBWBFactory& factory, KOBLVRListPKOBWBVarNode& variableNodes,
                 KOBLVRListPKOBWBVariable& factoryVariables, ModelSource& source);

// A file read into a factory, for the commands that work on equations: exitClean,
// or (after the problems are written to standard error) exitUsage when the file
// cannot be read and exitProblems when it holds errors.
int LoadFactory(const std::string& name, KOBWBFactory& factory, ModelSource& source);

} // namespace kobwb_tool

#endif
