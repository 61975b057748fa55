#ifndef KobwbInput_h
#define KobwbInput_h

#include "KOBWBx.h"

#include <memory>
#include <string>

namespace kobwb_tool {

// Exit statuses of every command.
constexpr int exitClean = 0;
constexpr int exitProblems = 1;
constexpr int exitUsage = 2;

// The whole text of a file, or of standard input for "-"; false when it cannot be read.
bool ReadInput(const std::string& name, std::string& text);

// A model file read, parsed and checked, its problems written to standard error
// as "FILE:LINE:COL: error|warning: message" lines (line and column from 1).
struct LoadedModel {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    int errors = 0;
    int warnings = 0;
};

// Reads and parses the file; false (and a message) when it cannot be read.
bool LoadModel(const std::string& name, LoadedModel& loaded);

// A file read into a factory, for the commands that work on equations: exitClean,
// or (after the problems are written) exitUsage when the file cannot be read and
// exitProblems when it holds errors.
int LoadFactory(const std::string& name, KOBWBFactory& factory);

} // namespace kobwb_tool

#endif
