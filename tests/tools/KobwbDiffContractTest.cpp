// kobwb diff, eval and contract: simplified answers, named equations, checked domains.

#include "KobwbRun.h"

#include <gtest/gtest.h>

namespace {

using namespace kobwb_test;

TEST(KobwbDiff, WritesTheSimplifiedDerivative) {
    const std::string model = "x2 - r2*cos(theta2) - r3*cos(theta3) = 0;\\n(xc - xa)^2 + (yc - ya)^2 = 25;\\n";
    const Outcome simplified = Kobwb("diff - --by theta3", model);
    EXPECT_EQ(simplified.status, 0);
    EXPECT_EQ(simplified.output, "[0] r3*sin(theta3)\n[1] 0\n");
    EXPECT_EQ(Kobwb("diff - --by yc", model).output, "[0] 0\n[1] 2*yc - 2*ya\n");
    const Outcome raw = Kobwb("diff - --by theta2 --raw", model);
    EXPECT_TRUE(Has(raw, "[0] -(r2*(-1.0*sin(theta2)))")) << raw.output;
    EXPECT_TRUE(Has(Kobwb("diff - --by yc --json", model), "{\"id\": 1, \"derivative\": \"2*yc - 2*ya\"}"));
    // In the editor too, raw on request; a fraction as a quotient.
    const Outcome edited = Kobwb("edit", "add y = x^3/6;\\ndiff x\\ndiff x raw\\ndiff x bogus\\n");
    EXPECT_TRUE(Has(edited, "[0] -x^2/2\n[0] -(")) << edited.output;
    EXPECT_TRUE(Has(edited, "error: diff NAME or diff NAME raw")) << edited.output;
}

TEST(KobwbContract, NamesTheEquationsThatEmptyTheBox) {
    const std::string system = "z = 3;\\nx + y = 10;\\nx - y = 2;\\n";
    const Outcome none = Kobwb("contract - --domain x=[0,5] --domain y=[0,5]", system);
    EXPECT_EQ(none.status, 1);
    EXPECT_TRUE(Has(none, "no solution after ")) << none.output;
    EXPECT_TRUE(Has(none, "these equations cannot hold together in the domains\n  line 2: x + y = 10;\n"
                          "  line 3: x - y = 2;\n"))
        << none.output;
    EXPECT_FALSE(Has(none, " in [")) << none.output;
    const Outcome json = Kobwb("contract - --domain x=[0,1] --domain y=[0,1] --json", system);
    EXPECT_TRUE(Has(json, "\"equations\": [{\"id\": 1, \"line\": 2, \"equation\": \"x + y = 10;\"}]}")) << json.output;

    // A box is written in the model's units: lengths in mm, angles in deg, an
    // unbounded side as inf.
    const Outcome sketch = Kobwb("contract " + Data("sketch.model") + " --domain x3=[0,200] --domain y3=[0,200]");
    EXPECT_TRUE(Has(sketch, "fixed point after ")) << sketch.output;
    EXPECT_TRUE(Has(sketch, "\nL1 in 40 mm\n")) << sketch.output;
    EXPECT_TRUE(Has(sketch, "\nalpha in 30 deg\nbeta in 60 deg\nh in [-inf, 40] mm\n")) << sketch.output;
    EXPECT_TRUE(Has(Kobwb("contract - --json --domain x=[0,1]", "x = 2 mm - y;\\ny = 1 mm;"),
                    "\"upper\": 1.000000000000012, \"shown\": \"1 mm\"}]}"));
}

TEST(KobwbContract, DomainsAreCheckedWithAReason) {
    EXPECT_TRUE(Has(Kobwb("eval - --domain x=1e400", "x = 1;"), "bad domain x=1e400: 1e400 is past the largest real"));
    EXPECT_TRUE(Has(Kobwb("contract - --domain x=[5,1]", "x = 1;"),
                    "bad domain x=[5,1]: the lower bound 5 is above the upper bound 1"));
    EXPECT_TRUE(Has(Kobwb("eval - --domain x=[a,1]", "x = 1;"), "'a' is not a number"));
    EXPECT_EQ(Kobwb("eval - --domain=x=2", "x = 1;").status, 0);
}

} // namespace
