#ifndef KobwbCommands_h
#define KobwbCommands_h

#include <string>
#include <vector>

namespace kobwb_tool {

// Each command takes its arguments (after the command's name) and returns the
// exit status.
int Check(const std::vector<std::string>& arguments);
int Eval(const std::vector<std::string>& arguments);
int Print(const std::vector<std::string>& arguments);
int Diff(const std::vector<std::string>& arguments);
int Simplify(const std::vector<std::string>& arguments);
int Classify(const std::vector<std::string>& arguments);
int Contract(const std::vector<std::string>& arguments);
int Edit(const std::vector<std::string>& arguments);

// The usage text of a command, empty for an unknown one.
const char* UsageOf(const std::string& command);

} // namespace kobwb_tool

#endif
