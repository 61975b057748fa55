#ifndef KobwbRun_h
#define KobwbRun_h

#include <sys/wait.h>

#include <cstdio>
#include <string>

// Runs the kobwb program as a process, as a person or a script would.
namespace kobwb_test {

struct Outcome {
    int status = -1;
    std::string output;
};

// Runs the program with the arguments (shell words) and the standard input
// given (printf %b escapes: \\n for a line break), standard error merged into
// the output.
inline Outcome Kobwb(const std::string& arguments, const std::string& input = "") {
    const std::string command = "printf '%b' '" + input + "' | " KOBWB_PROGRAM " " + arguments + " 2>&1";
    Outcome run;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) run.output.append(buffer, got);
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

inline std::string Data(const char* name) { return std::string(KOBWBX_TEST_DATA) + "/" + name; }

inline bool Has(const Outcome& run, const std::string& text) { return run.output.find(text) != std::string::npos; }

inline std::string ReadFile(const std::string& name) {
    std::string text;
    if (FILE* file = std::fopen(name.c_str(), "rb")) {
        char buffer[4096];
        size_t got = 0;
        while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) text.append(buffer, got);
        std::fclose(file);
    }
    return text;
}

} // namespace kobwb_test

#endif
