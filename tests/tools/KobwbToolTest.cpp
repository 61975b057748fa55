#include <gtest/gtest.h>

#include "KobwbRun.h"

#include <cstdio>
#include <string>

namespace {

using namespace kobwb_test;

TEST(KobwbTool, CheckReportsProblemsAsFileLineColumnLines) {
    const Outcome clean = Kobwb("check " + Data("sketch.model"));
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

    const Outcome mixed = Kobwb("check -", "a = 30 deg;\\nb = 2 mm;\\na = b;\\n");
    EXPECT_EQ(mixed.status, 1);
    EXPECT_EQ(mixed.output, "<stdin>:3:1: error: semantic error, inconsistent unit: a (deg on line 1) is an angle but "
                            "b (mm on line 2) is a length\n");
    // What the check cannot decide (a function of lengths) is not a problem.
    EXPECT_EQ(Kobwb("check -", "d = sqrt(x^2 + y^2);\\nx = 3 mm;\\n").status, 0);

    // A file that cannot be read outweighs problems in the others.
    EXPECT_EQ(Kobwb("check " + errors + " /nonexistent/model").status, 2);
    EXPECT_EQ(Kobwb("check").status, 2);
    EXPECT_EQ(Kobwb("frobnicate").status, 2);
    EXPECT_EQ(Kobwb("").status, 2);
}

TEST(KobwbTool, CheckSurvivesHugeAndDeepInput) {
    const std::string file = testing::TempDir() + "kobwb-huge.model";
    {
        std::FILE* out = std::fopen(file.c_str(), "w");
        ASSERT_NE(out, nullptr);
        for (int i = 0; i < 20000; ++i) std::fprintf(out, "x%d - x%d = 10 mm;\n", i + 1, i);
        // Brackets nested past the parser's stack: an error on that line, not a crash.
        std::fprintf(out, "y = %sz%s;\n", std::string(50000, '(').c_str(), std::string(50000, ')').c_str());
        std::fclose(out);
    }
    const Outcome run = Kobwb("check " + file);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(Has(run, file + ":20001:")) << run.output.substr(0, 500);
    EXPECT_EQ(run.output.find(file + ":1:"), std::string::npos) << run.output.substr(0, 500);
    std::remove(file.c_str());
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
    EXPECT_TRUE(Has(Kobwb("print - --format mathml", "x = 1;"), "<mi>x</mi><mo>=</mo><mn>1</mn>"));

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
    for (const char* command : {"check", "eval", "print", "diff", "simplify", "classify", "contract", "edit"}) {
        const Outcome help = Kobwb(std::string(command) + " --help");
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_TRUE(Has(help, std::string("usage: kobwb ") + command)) << command;
    }
    EXPECT_EQ(Kobwb("--help").status, 0);
}

TEST(KobwbTool, ContractsAndAnswersInJson) {
    const std::string system = "x + y = 10;\\nx - y = 2;\\n";
    const Outcome narrowed = Kobwb("contract - --domain x=[0,100] --domain y=[0,100]", system);
    EXPECT_EQ(narrowed.status, 0) << narrowed.output;
    EXPECT_TRUE(Has(narrowed, "fixed point after ")) << narrowed.output;
    EXPECT_TRUE(Has(narrowed, "y in [0.0, 8.0")) << narrowed.output;
    const Outcome none = Kobwb("contract - --domain x=[0,1] --domain y=[0,1] --json", system);
    EXPECT_EQ(none.status, 1) << none.output;
    EXPECT_TRUE(Has(none, "{\"status\": \"no solution\", \"revisions\": ")) << none.output;

    const Outcome checked = Kobwb("check - --json", "x = 1 $ 2;\\ny = (3;\\n");
    EXPECT_EQ(checked.status, 1);
    EXPECT_EQ(checked.output,
              "[{\"file\": \"<stdin>\", \"errors\": 2, \"warnings\": 1, \"problems\": ["
              "{\"line\": 1, \"column\": 7, \"severity\": \"warning\", \"message\": \"invalid character '$', skipped\"}, "
              "{\"line\": 1, \"column\": 9, \"severity\": \"error\", \"message\": \"syntax error, unexpected integer\"}, "
              "{\"line\": 2, \"column\": 7, \"severity\": \"error\", \"message\": \"syntax error, unexpected semi-colon\"}]}]\n");
    // The scanner's own line for the character does not mix into the tool's output.
    EXPECT_FALSE(Has(Kobwb("check -", "x = 1 $ 2;"), "Invalid character"));

    EXPECT_TRUE(Has(Kobwb("eval - --json --domain x=1", "x = 1;"),
                    "[{\"id\": 0, \"equation\": \"x = 1;\", \"root\": \"0.0\", \"lower\": 0, \"upper\": 0, "
                    "\"canHold\": \"possible\"}]\n"));
    EXPECT_TRUE(Has(Kobwb("classify - --json", "x*y = 2;"), "\"class\": \"quadratic\""));
    EXPECT_TRUE(Has(Kobwb("diff - --by x --json", "x^2 = 2;"), "[{\"id\": 0, \"derivative\": "));
    EXPECT_EQ(Kobwb("print - --json", "x = 1;").status, 2);
}

TEST(KobwbTool, EditorRunsAScript) {
    const std::string saved = testing::TempDir() + "kobwb-edit-saved.model";
    const std::string script = "# a comment, then a blank line\\n\\n"
                               "add x + y = 10; x - y = 2;\\n"
                               "domain x=[0,100]\\n"
                               "domain y=[0,100]\\n"
                               "contract\\n"
                               "add z = x*y;\\n"
                               "remove 1\\n"
                               "show\\n"
                               "json on\\n"
                               "classify\\n"
                               "save " + saved + "\\n"
                               "quit\\n"
                               "show\\n";
    const Outcome run = Kobwb("edit", script);
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_TRUE(Has(run, "added [0] x + y = 10;\nadded [1] x - y = 2;\n")) << run.output;
    EXPECT_TRUE(Has(run, "x in [1.99")) << run.output;
    EXPECT_TRUE(Has(run, "added [2] z - x*y = 0;\nremoved [1]\n[0] x + y = 10;\n[2] z - x*y = 0;\n[{")) << run.output;
    EXPECT_TRUE(Has(run, "\"class\": \"quadratic\"")) << run.output;
    // Nothing runs after quit: the last show would list the equations again.
    EXPECT_EQ(run.output.find("[0] x + y = 10;", run.output.find("saved 2 equations")), std::string::npos)
        << run.output;
    const Outcome reread = Kobwb("print " + saved);
    EXPECT_EQ(reread.output, "x + y = 10;\nz - x*y = 0;\n");

    // A session over a file; a failed command is answered and makes the status 1.
    const Outcome broken = Kobwb("edit " + saved, "bogus\\nadd x = ;\\nremove 7\\ndomain w=1\\nsimplify 99\\nshow\\n");
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(Has(broken, "error: unknown command bogus")) << broken.output;
    EXPECT_TRUE(Has(broken, "error: column 5: syntax error, unexpected semi-colon")) << broken.output;
    EXPECT_TRUE(Has(broken, "error: no equation of id 7")) << broken.output;
    EXPECT_TRUE(Has(broken, "error: no variable w in the model")) << broken.output;
    EXPECT_TRUE(Has(broken, "error: bad mode 99")) << broken.output;
    EXPECT_TRUE(Has(broken, "[1] z - x*y = 0;")) << broken.output;
    EXPECT_EQ(Kobwb("edit /nonexistent/model", "show\\n").status, 2);
    EXPECT_EQ(Kobwb("edit a b").status, 2);
    std::remove(saved.c_str());
}

} // namespace
