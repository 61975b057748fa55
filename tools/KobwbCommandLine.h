#ifndef KobwbCommandLine_h
#define KobwbCommandLine_h

#include <string>
#include <utility>
#include <vector>

namespace kobwb_tool {

// Exit statuses of every command.
constexpr int exitClean = 0;
constexpr int exitProblems = 1;
constexpr int exitUsage = 2;

struct CommandRow;

// One command line, read by the options of its command's row.
struct Invocation {
    const CommandRow* command = nullptr;
    std::vector<std::string> files;
    // The valued options in the order given ("--domain", "x=1").
    std::vector<std::pair<std::string, std::string>> values;
    std::vector<std::string> flags;

    bool Flag(const std::string& name) const;
    // Every value given to the option, in order.
    std::vector<std::string> Values(const std::string& name) const;
    // Writes "kobwb COMMAND: problem" and the command's usage on standard error;
    // returns exitUsage.
    int UsageError(const std::string& problem) const;
};

// How many files a command takes.
enum class Files { One, Many, AtMostOne };

// One command of the program: everything about it is in its row, so that a new
// command is one row of the table (KobwbCommandTable.cpp) and its handler.
struct CommandRow {
    const char* name;
    // The options, separated by blanks: "--NAME=" takes a value, "--NAME" is a flag.
    const char* options;
    Files files;
    const char* summary;
    // The text of COMMAND --help, from "usage:" on.
    const char* usage;
    int (*handler)(const Invocation& invocation);
};

// The rows, in the order the program lists them.
const std::vector<CommandRow>& Commands();

// Reads the arguments (after the command's name) by the row's options and runs
// the handler; --help or -h anywhere writes the usage instead.
int RunCommand(const CommandRow& command, const std::vector<std::string>& arguments);

} // namespace kobwb_tool

#endif
