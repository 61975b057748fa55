// kobwb simplify: what the transformations did, written as one writes equations.

#include "KobwbRun.h"

#include <gtest/gtest.h>

namespace {

using namespace kobwb_test;

TEST(KobwbSimplify, WritesConstantsAsOneWritesThem) {
    const Outcome run = Kobwb("simplify -", "theta2 = Pi/4;\\natan2(yc, xc) = Pi/6;\\nx - 2*Pi = y;\\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "theta2 = Pi/4;\natan2(yc, xc) = Pi/6;\nx - y = 2*Pi;\n");
    // Fractional coefficients as quotients, a minus as a minus; the text reads back the same.
    const Outcome fractions = Kobwb("simplify -", "r = -3/2*u + 4 - 5/7*u*v;\\ns = x/3 - 2*w;\\n");
    EXPECT_EQ(fractions.output, "5*u*v/7 + r + 3*u/2 = 4;\ns - x/3 + 2*w = 0;\n");
    // Read back, the variables are met in another order, which orders the terms.
    EXPECT_EQ(Kobwb("simplify -", "5*u*v/7 + r + 3*u/2 = 4;\\ns - x/3 + 2*w = 0;\\n").output,
              "5*u*v/7 + 3*u/2 + r = 4;\ns - x/3 + 2*w = 0;\n");
    // The editor prints the simplified system as MathML with the fraction itself.
    const Outcome mathML = Kobwb("edit", "add atan2(yc, xc) = Pi/6;\\nsimplify\\nprint mathml\\n");
    EXPECT_TRUE(Has(mathML, "<mo>=</mo><mfrac><mi>&#x3C0;</mi><mn>6</mn></mfrac>")) << mathML.output;
    EXPECT_FALSE(Has(mathML, "&#x2212;</mo><mn>1</mn>")) << mathML.output;
}

TEST(KobwbSimplify, ShowsTheEliminatedVariablesAndTheVerdictOnInequalities) {
    const Outcome eliminated = Kobwb("simplify - --mode 6", "x + 2*y = 10;\\nx*y = 12;\\n");
    EXPECT_EQ(eliminated.status, 0);
    EXPECT_EQ(eliminated.output, "-x^2/2 + 5*x = 12;\ny := 5 - x/2\n");

    const Outcome consistent = Kobwb("simplify - --mode 22", "x + 2*y = 10;\\nx*y = 12;\\n30 deg <= x;\\n");
    EXPECT_EQ(consistent.status, 0);
    EXPECT_TRUE(Has(consistent, "inequalities: consistent")) << consistent.output;
    const Outcome inconsistent = Kobwb("simplify - --mode 2+16", "x + 2*y = 10;\\nx = 3;\\n1 >= x;\\n");
    EXPECT_EQ(inconsistent.status, 1);
    EXPECT_TRUE(Has(inconsistent, "x := 3\ny := 7/2\ninequalities: inconsistent")) << inconsistent.output;

    const Outcome help = Kobwb("simplify --help");
    EXPECT_TRUE(Has(help, "  16  with 2: judge the constant inequalities")) << help.output;
    EXPECT_TRUE(Has(Kobwb("simplify - --mode 40", "x = 1;"), "bad mode 40"));
    EXPECT_EQ(Kobwb("simplify - --mode 2+x", "x = 1;").status, 2);
    EXPECT_EQ(Kobwb("simplify - --mode=2\\|4", "x = 1;").status, 0);
}

TEST(KobwbSimplify, LargeIntegersStayExact) {
    const Outcome run = Kobwb("simplify -", "r = 3^40 + w;\\nq = 2^40*w;\\ns = 3000000000;\\nt = 7*2^60 + w;\\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "r - w = 3.0^40;\n-2.0^40*w + q = 0;\ns = 3000000000.0;\n-w + t = 7*2.0^60;\n");
    // What is written reads back as the same numbers, and evaluates in reals.
    const Outcome again = Kobwb("simplify -", "r - w = 3.0^40;\\nt - w = 7*2.0^60;\\n");
    EXPECT_EQ(again.output, "r - w = 3.0^40;\n-w + t = 7*2.0^60;\n");
    const Outcome evaluated = Kobwb("eval - --domain r=12157665459056928801 --domain w=0", "r - w = 3.0^40;");
    EXPECT_TRUE(Has(evaluated, "root in 0.0, can hold: possible")) << evaluated.output;
    // A large prime stays a real: where exactness ends.
    EXPECT_TRUE(Has(Kobwb("simplify -", "r = 2^61 - 1 + w;"), "r - w = 2305843009213693952.0;"));
}

} // namespace
