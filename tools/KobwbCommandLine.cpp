#include "KobwbCommandLine.h"

#include <iostream>
#include <sstream>

namespace kobwb_tool {

bool Invocation::Flag(const std::string& name) const {
    for (const std::string& flag : flags)
        if (flag == name) return true;
    return false;
}

std::vector<std::string> Invocation::Values(const std::string& name) const {
    std::vector<std::string> found;
    for (const auto& value : values)
        if (value.first == name) found.push_back(value.second);
    return found;
}

int Invocation::UsageError(const std::string& problem) const {
    std::cerr << "kobwb " << command->name << ": " << problem << '\n' << command->usage;
    return exitUsage;
}

namespace {

// Whether the row has the option; valued tells whether it takes a value.
bool FindOption(const CommandRow& command, const std::string& name, bool& valued) {
    std::istringstream options(command.options);
    std::string option;
    while (options >> option) {
        valued = option.back() == '=';
        if (valued) option.pop_back();
        if (option == name) return true;
    }
    return false;
}

} // namespace

int RunCommand(const CommandRow& command, const std::vector<std::string>& arguments) {
    for (const std::string& argument : arguments)
        if (argument == "--help" || argument == "-h") return std::cout << command.usage, exitClean;
    Invocation invocation;
    invocation.command = &command;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument.size() > 2 && argument.compare(0, 2, "--") == 0) {
            const size_t equals = argument.find('=');
            const std::string name = argument.substr(0, equals);
            bool valued = false;
            if (!FindOption(command, name, valued)) return invocation.UsageError("unknown option " + name);
            if (!valued) {
                if (equals != std::string::npos) return invocation.UsageError(name + " takes no value");
                invocation.flags.push_back(name);
            } else if (equals != std::string::npos) {
                invocation.values.emplace_back(name, argument.substr(equals + 1));
            } else if (i + 1 < arguments.size()) {
                invocation.values.emplace_back(name, arguments[++i]);
            } else {
                return invocation.UsageError(name + " needs a value");
            }
        } else if (invocation.files.empty() || command.files == Files::Many) {
            invocation.files.push_back(argument);
        } else {
            return invocation.UsageError(command.files == Files::AtMostOne ? "one file at most" : "one file only");
        }
    }
    if (invocation.files.empty() && command.files != Files::AtMostOne) return invocation.UsageError("no file given");
    return command.handler(invocation);
}

} // namespace kobwb_tool
