// kobwb: the library's models from the shell. Every command has --help.

#include "KobwbCommands.h"
#include "KobwbInput.h"

#include <iostream>
#include <string>
#include <vector>

namespace {

using Command = int (*)(const std::vector<std::string>&);

struct Entry {
    const char* name;
    Command run;
    const char* summary;
};

const Entry commands[] = {
    {"check", kobwb_tool::Check, "parse and check models; problems as FILE:LINE:COL: lines"},
    {"eval", kobwb_tool::Eval, "evaluate every equation over variable domains"},
    {"print", kobwb_tool::Print, "write a model's equations in the model language"},
    {"diff", kobwb_tool::Diff, "differentiate every equation by a variable"},
    {"simplify", kobwb_tool::Simplify, "run the symbolic transformations"},
    {"classify", kobwb_tool::Classify, "tell linear, quadratic and other equations apart"},
    {"contract", kobwb_tool::Contract, "narrow the variables' domains with the equations"},
    {"edit", kobwb_tool::Edit, "a session over a model's equations, from a terminal or a script"},
};

void Help(std::ostream& out) {
    out << "usage: kobwb COMMAND [ARGUMENTS]\n"
           "FILE - reads standard input; kobwb COMMAND --help describes a command.\n"
           "Commands:\n";
    for (const Entry& entry : commands) out << "  " << entry.name << std::string(10 - std::string(entry.name).size(), ' ')
                                            << entry.summary << '\n';
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        Help(std::cerr);
        return kobwb_tool::exitUsage;
    }
    const std::string name = argv[1];
    if (name == "--help" || name == "-h" || name == "help") {
        Help(std::cout);
        return kobwb_tool::exitClean;
    }
    const std::vector<std::string> arguments(argv + 2, argv + argc);
    for (const Entry& entry : commands)
        if (name == entry.name) return entry.run(arguments);
    std::cerr << "kobwb: unknown command " << name << '\n';
    Help(std::cerr);
    return kobwb_tool::exitUsage;
}
