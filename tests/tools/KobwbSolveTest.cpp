// kobwb solve and dof: values in the model's units, equations named by line, every
// solution with --all, bad input answered with exit status 2.

#include "KobwbRun.h"

#include <gtest/gtest.h>

namespace {

using namespace kobwb_test;

// A triangle of sides 50 mm from the origin along the x axis, its apex at 60 deg.
const char* const triangle = "x1 = 0 mm;\\ny1 = 0 mm;\\ny2 = 0 mm;\\n"
                             "sqrt((x2 - x1)^2 + (y2 - y1)^2) = 50 mm;\\n"
                             "sqrt((x3 - x1)^2 + (y3 - y1)^2) = 50 mm;\\n"
                             "atan2(y3 - y1, x3 - x1) = angle;\\nangle = 60 deg;\\nx2 >= 0 mm;\\n";

TEST(KobwbSolve, SolvesFromTheStartInTheModelsUnits) {
    const Outcome solved = Kobwb("solve - --start x2=40 --start x3=20 --start y3=40 --start angle=50", triangle);
    EXPECT_EQ(solved.status, 0) << solved.output;
    EXPECT_TRUE(Has(solved, "status: solved\n")) << solved.output;
    EXPECT_TRUE(Has(solved, "x2 = 50 mm\n")) << solved.output;
    EXPECT_TRUE(Has(solved, "x3 = 25 mm\n")) << solved.output;
    EXPECT_TRUE(Has(solved, "angle = 60 deg\n")) << solved.output;
    EXPECT_TRUE(Has(solved, "dof: 0 (structural 0)\n")) << solved.output;

    const Outcome json = Kobwb("solve - --start x2=40 --start x3=20 --start y3=40 --json", triangle);
    EXPECT_EQ(json.status, 0);
    EXPECT_TRUE(Has(json, "{\"status\": \"solved\", \"iterations\": ")) << json.output;
    EXPECT_TRUE(Has(json, "\"x3\": 25, ")) << json.output;
    EXPECT_TRUE(Has(json, "\"angle\": 60}")) << json.output;
    EXPECT_TRUE(Has(json, "\"dof\": 0, \"free\": [], \"redundant\": [], \"conflicting\": []")) << json.output;

    // Without the angle the apex turns about the origin; a fixed variable stays put.
    const std::string loose = "x1 = 0 mm;\\ny1 = 0 mm;\\nsqrt((x3 - x1)^2 + (y3 - y1)^2) = 50 mm;\\n";
    const Outcome free = Kobwb("dof - --start x3=30 --start y3=30", loose);
    EXPECT_TRUE(Has(free, "dof: 1 (structural 1)\nfree: x3 y3\n")) << free.output;
    const Outcome fixed = Kobwb("solve - --start x3=30 --start y3=30 --fix x3", loose);
    EXPECT_TRUE(Has(fixed, "x3 = 30 mm\ny3 = 40 mm\n")) << fixed.output;
}

TEST(KobwbSolve, NamesConflictingAndRedundantEquationsByLine) {
    const std::string wrong = std::string(triangle) + "x3 = 30 mm;\\n";
    const Outcome conflict = Kobwb("solve - --start x2=40 --start x3=20 --start y3=40", wrong);
    EXPECT_EQ(conflict.status, 1);
    EXPECT_TRUE(Has(conflict, "status: inconsistent\n")) << conflict.output;
    EXPECT_TRUE(Has(conflict, "conflicting:\n")) << conflict.output;
    EXPECT_TRUE(Has(conflict, "  line 9: x3 = 30;\n")) << conflict.output;
    EXPECT_FALSE(Has(conflict, "line 4:")) << conflict.output;
    // The least-squares point leaves the pinned coordinates within 1e-20 of 0: they read 0.
    EXPECT_TRUE(Has(conflict, "y1 = 0 mm\ny2 = 0 mm\n")) << conflict.output;
    const Outcome json = Kobwb("solve - --start x2=40 --start x3=20 --start y3=40 --json", wrong);
    EXPECT_TRUE(Has(json, "{\"line\": 9, \"text\": \"x3 = 30;\"}")) << json.output;

    const std::string again = std::string(triangle) + "x3 = 25 mm;\\n";
    const Outcome redundant = Kobwb("dof - --start x2=40 --start x3=20 --start y3=40", again);
    EXPECT_EQ(redundant.status, 0);
    EXPECT_TRUE(Has(redundant, "redundant:\n")) << redundant.output;
    EXPECT_TRUE(Has(redundant, "  line 9: x3 = 25;\n")) << redundant.output;
}

TEST(KobwbSolve, AllSolutionsInTheDomains) {
    const std::string circleAndLine = "x^2 + y^2 = 25;\\ny - x = 1;\\n";
    const Outcome all = Kobwb("solve - --all --domain x=[-10,10] --domain y=[-10,10]", circleAndLine);
    EXPECT_EQ(all.status, 0) << all.output;
    EXPECT_TRUE(Has(all, "complete: yes\n")) << all.output;
    EXPECT_TRUE(Has(all, "solutions: 2\n")) << all.output;
    EXPECT_TRUE(Has(all, "undecided: 0\n")) << all.output;
    const Outcome json = Kobwb("solve - --all --domain x=[-10,10] --domain y=[-10,10] --json", circleAndLine);
    EXPECT_TRUE(Has(json, "{\"complete\": true, \"boxes\": ")) << json.output;
    EXPECT_TRUE(Has(json, "{\"proved\": true, \"box\": {\"x\": [")) << json.output;

    const Outcome tangent = Kobwb("solve - --all --domain x=[-10,10] --domain y=[-10,10] --width 1e-6",
                                  "x^2 + y^2 = 25;\\ny = 5;\\n");
    EXPECT_TRUE(Has(tangent, "solutions: 0\nundecided: ")) << tangent.output;
}

TEST(KobwbSolve, BadInput) {
    EXPECT_EQ(Kobwb("solve - --start x3=abc", triangle).status, 2);
    const Outcome unreadable = Kobwb("solve -", "sqrt(x^2 + y^2 = 5 mm;\\n");
    EXPECT_EQ(unreadable.status, 2);
    EXPECT_TRUE(Has(unreadable, "syntax error")) << unreadable.output;
    EXPECT_EQ(Kobwb("dof -", "x = ;\\n").status, 2);
    EXPECT_TRUE(Has(Kobwb("solve - --start q=1", triangle), "no variable q in the model"));
    EXPECT_TRUE(Has(Kobwb("solve - --fix q", triangle), "no variable q in the model"));
    EXPECT_TRUE(Has(Kobwb("solve - --start /nonexistent/start.txt", triangle), "cannot read start file"));
    const Outcome unbounded = Kobwb("solve - --all", triangle);
    EXPECT_EQ(unbounded.status, 2);
    EXPECT_TRUE(Has(unbounded, "needs bounds")) << unbounded.output;
    EXPECT_EQ(Kobwb("solve - --all --domain x=[0,1] --width -1", "x = 0.5;\\n").status, 2);
    const Outcome empty = Kobwb("solve -", "");
    EXPECT_EQ(empty.status, 1);
    EXPECT_TRUE(Has(empty, "status: no equations")) << empty.output;
    EXPECT_TRUE(Has(Kobwb("solve - --start x=1", "abs(x) = 2;\\n"), "status: no derivative"));
}

} // namespace
