// kobwb: the library's models from the shell. Every command has --help.

#include "KobwbCommandLine.h"

#include <iostream>
#include <string>
#include <vector>

namespace {

void Help(std::ostream& out) {
    out << "usage: kobwb COMMAND [ARGUMENTS]\n"
           "FILE - reads standard input; kobwb COMMAND --help describes a command;\n"
           "kobwb --version tells the version.\n"
           "Commands:\n";
    for (const kobwb_tool::CommandRow& command : kobwb_tool::Commands()) {
        std::string name = command.name;
        name.resize(name.size() < 10 ? 10 : name.size() + 1, ' ');
        out << "  " << name << command.summary << '\n';
    }
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
    if (name == "--version") {
        std::cout << "kobwb " << KOBWB_VERSION << '\n';
        return kobwb_tool::exitClean;
    }
    const std::vector<std::string> arguments(argv + 2, argv + argc);
    for (const kobwb_tool::CommandRow& command : kobwb_tool::Commands())
        if (name == command.name) return kobwb_tool::RunCommand(command, arguments);
    std::cerr << "kobwb: unknown command " << name << '\n';
    Help(std::cerr);
    return kobwb_tool::exitUsage;
}
