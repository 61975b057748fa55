#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

struct Outcome {
    int status = -1;
    std::string output;
};

// Runs the program with the arguments (shell words) and the standard input
// given, standard error merged into the output.
Outcome Kobwb(const std::string& arguments, const std::string& input = "") {
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

std::string Data(const char* name) { return std::string(KOBWBX_TEST_DATA) + "/" + name; }

bool Has(const Outcome& run, const std::string& text) { return run.output.find(text) != std::string::npos; }

TEST(KobwbTool, CheckReportsProblemsAsFileLineColumnLines) {
    const Outcome clean = Kobwb("check " + Data("sketch.model") + " " + Data("empty.model"));
    EXPECT_EQ(clean.status, 0) << clean.output;
    EXPECT_EQ(clean.output, "");

    const std::string errors = Data("errors.model");
    const Outcome broken = Kobwb("check " + errors);
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(Has(broken, errors + ":2:5: error: syntax error, unexpected semi-colon")) << broken.output;
    EXPECT_TRUE(Has(broken, errors + ":5:7: error: semantic error, unknown unit")) << broken.output;
    EXPECT_TRUE(Has(broken, errors + ":10:5: error: semantic error, unknown function unknownbox")) << broken.output;

    const std::string comment = Data("unterminated_comment.model");
    const Outcome open = Kobwb("check " + comment);
    EXPECT_EQ(open.status, 1);
    EXPECT_TRUE(Has(open, comment + ":2:12: warning: unterminated comment")) << open.output;

    const Outcome binary = Kobwb("check " + Data("binary.model"));
    EXPECT_EQ(binary.status, 1);
    EXPECT_TRUE(Has(binary, ": error: a NUL byte")) << binary.output;

    const Outcome mixed = Kobwb("check -", "a = 30 deg + 2 mm;\\nb = 1;\\n");
    EXPECT_EQ(mixed.status, 1);
    EXPECT_TRUE(Has(mixed, "<stdin>:1:1: warning: the two sides are not the same kind of quantity")) << mixed.output;
    // What the check cannot decide (a function of lengths) is not a problem.
    EXPECT_EQ(Kobwb("check -", "d = sqrt(x^2 + y^2);\\nx = 3 mm;\\n").status, 0);

    // A file that cannot be read outweighs problems in the others.
    EXPECT_EQ(Kobwb("check " + errors + " /nonexistent/model").status, 2);
    EXPECT_EQ(Kobwb("check").status, 2);
    EXPECT_EQ(Kobwb("frobnicate").status, 2);
    EXPECT_EQ(Kobwb("").status, 2);
}

TEST(KobwbTool, CommandsWorkOnTheEquationsOfAModel) {
    const Outcome printed = Kobwb("print - --format text", "x - 2*y = 10;\\ny = 30 deg;\\n");
    EXPECT_EQ(printed.status, 0);
    EXPECT_EQ(printed.output, "x - 2*y = 10;\ny = Pi/6;\n");
    EXPECT_EQ(Kobwb("print - --format yaml", "x = 1;").status, 2);
    const Outcome dot = Kobwb("print - --format dot", "x = 1;");
    EXPECT_EQ(dot.status, 0);
    EXPECT_TRUE(Has(dot, "digraph factory {")) << dot.output;
    EXPECT_TRUE(Has(Kobwb("print - --format json", "x = 1;"), "\"name\": \"x\""));

    const Outcome evaluated = Kobwb("eval - --domain x=[0,1] --domain y=3", "x + y = 10;\\nx <= 1;\\n");
    EXPECT_EQ(evaluated.status, 0);
    EXPECT_TRUE(Has(evaluated, "[0] x + y = 10;\n    root in [-7.0, -6.0], can hold: impossible")) << evaluated.output;
    EXPECT_TRUE(Has(evaluated, "[1] x <= 1;\n    root in [-1.0, 0.0], can hold: possible")) << evaluated.output;
    // A variable without a domain ranges over every real.
    const Outcome open = Kobwb("eval - --domain x=[0,1]", "x + y = 10;\\n");
    EXPECT_TRUE(Has(open, "can hold: possible")) << open.output;
    EXPECT_EQ(Kobwb("eval - --domain w=[0,1]", "x = 1;").status, 2);
    EXPECT_EQ(Kobwb("eval - --domain x=[2,1]", "x = 1;").status, 2);

    const Outcome derived = Kobwb("diff - --by x", "x^2 + 3*x*y = 0;\\n");
    EXPECT_EQ(derived.status, 0);
    EXPECT_TRUE(Has(derived, "[0] ")) << derived.output;
    EXPECT_EQ(Kobwb("diff - --by nope", "x = 1;").status, 2);

    const Outcome simplified = Kobwb("simplify - --mode 4", "(x + 1)^2 - x^2 - 2*x = 1;\\n");
    EXPECT_EQ(simplified.status, 0) << simplified.output;

    const Outcome classified = Kobwb("classify -", "x + 2*y = 1;\\nx*y = 2;\\nsin(x) = 0;\\n");
    EXPECT_EQ(classified.status, 0);
    EXPECT_TRUE(Has(classified, "[0] linear    x + 2*y = 1;")) << classified.output;
    EXPECT_TRUE(Has(classified, "[1] quadratic x*y = 2;")) << classified.output;
    EXPECT_TRUE(Has(classified, "[2] nonlinear sin(x) = 0;")) << classified.output;

    EXPECT_EQ(Kobwb("print -", "x = ;").status, 1);
    EXPECT_EQ(Kobwb("print /nonexistent/model").status, 2);
    for (const char* command : {"check", "eval", "print", "diff", "simplify", "classify"}) {
        const Outcome help = Kobwb(std::string(command) + " --help");
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_TRUE(Has(help, std::string("usage: kobwb ") + command)) << command;
    }
    EXPECT_EQ(Kobwb("--help").status, 0);
}

} // namespace
