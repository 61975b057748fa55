// kobwb check: every message names what it is about and points at it.

#include "KobwbRun.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kobwb_test;

TEST(KobwbCheck, MessagesNameTheUnitTheCharacterAndTheMissingSemicolon) {
    EXPECT_EQ(Kobwb("check -", "y = 2 furlong;").output, "<stdin>:1:7: error: semantic error, unknown unit furlong\n");
    // x := 3 reads as x = 3: the skipped character is shown.
    const Outcome colon = Kobwb("check -", "x := 3;");
    EXPECT_EQ(colon.output, "<stdin>:1:3: warning: invalid character ':', skipped\n");
    EXPECT_EQ(colon.status, 1);
    EXPECT_EQ(Kobwb("check -", "x = 1 \\0001;").output, "<stdin>:1:7: warning: invalid character \\x01, skipped\n");

    // The parser stumbles on the next line; the ';' is missing at the end of the first.
    EXPECT_EQ(Kobwb("check -", "x = 1\\ny = 2;\\n").output,
              "<stdin>:1:6: error: syntax error, unexpected = (at 2:3): expected ';' at the end of line 1\n");
    EXPECT_EQ(Kobwb("check -", "a = 1;\\nx = sin(a) /* note */\\nb c = 2;\\n").output,
              "<stdin>:2:11: error: syntax error, unexpected identifier (at 3:1): expected ';' at the end of line 2\n");
    // Lines that end with \r\n count once, as the parser counts them.
    EXPECT_EQ(Kobwb("check -", "a = 1;\\r\\nb = 2\\r\\nc = 3;\\r\\n").output,
              "<stdin>:2:6: error: syntax error, unexpected = (at 3:3): expected ';' at the end of line 2\n");
    // A line that goes on with an operator is one equation: no ';' is suggested.
    EXPECT_EQ(Kobwb("check -", "x = a\\n  + ;\\n").output, "<stdin>:2:5: error: syntax error, unexpected semi-colon\n");
    // Blank lines inside a comment count once, as the parser counts them.
    EXPECT_EQ(Kobwb("check -", "/* a\\n\\n\\n */ y = 2 furlong;").output,
              "<stdin>:2:11: error: semantic error, unknown unit furlong\n");
}

TEST(KobwbCheck, UnitConflictsNameTheQuantitiesAndPointAtTheOperator) {
    EXPECT_EQ(Kobwb("check -", "x = 5 mm; x = 30 deg;").output,
              "<stdin>:1:11: error: semantic error, inconsistent unit: x (mm on line 1) is a length but 30 deg is an "
              "angle\n");
    EXPECT_EQ(Kobwb("check -", "w = 30 deg + 5 mm;").output,
              "<stdin>:1:12: error: semantic error, inconsistent unit: '+' joins 30 deg, an angle, and 5 mm, a length\n");
    EXPECT_EQ(Kobwb("check -", "w = 2*(1 mm) - atan2(1, 2);").output,
              "<stdin>:1:14: error: semantic error, inconsistent unit: '-' joins 2*(1 mm), a length, and atan2(1, 2), "
              "an angle\n");
}

TEST(KobwbCheck, NestingPastTheParserIsSaidWhereItIs) {
    const Outcome brackets = Kobwb("check -", "x = " + std::string(100000, '(') + ";");
    EXPECT_EQ(brackets.status, 1);
    EXPECT_TRUE(Has(brackets, "memory exhausted: nesting deeper than 999")) << brackets.output.substr(0, 300);
    std::string sines = "x = ";
    for (int i = 0; i < 30000; ++i) sines += "sin(";
    const Outcome calls = Kobwb("check -", sines + ";");
    // Each call takes two places on the parser's stack: half as deep.
    EXPECT_TRUE(Has(calls, "<stdin>:1:19996: error: memory exhausted: nesting deeper than 4997 brackets"))
        << calls.output.substr(0, 300);
}

TEST(KobwbCheck, EveryFileIsAccountedFor) {
    const Outcome missing = Kobwb("check --json - /nonexistent/model", "x = 1;");
    EXPECT_EQ(missing.status, 2);
    EXPECT_TRUE(Has(missing, "[{\"file\": \"<stdin>\", \"errors\": 0, \"warnings\": 0, \"problems\": []},\n"
                             " {\"file\": \"/nonexistent/model\", \"unreadable\": \"No such file or directory\"}]\n"))
        << missing.output;
    const Outcome empty = Kobwb("check " + Data("empty.model"));
    EXPECT_EQ(empty.status, 1);
    EXPECT_TRUE(Has(empty, "empty.model: warning: the model holds no equations")) << empty.output;

    const Outcome version = Kobwb("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output.compare(0, 6, "kobwb "), 0) << version.output;
}

} // namespace
