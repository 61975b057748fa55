// kobwb edit: nothing a command did is lost on saving, and undo takes it back.

#include "KobwbRun.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

using namespace kobwb_test;

TEST(KobwbEditor, SaveKeepsTheEliminatedVariablesAndUndoRestores) {
    const std::string saved = testing::TempDir() + "kobwb-editor-eliminated.model";
    const Outcome run = Kobwb("edit", "add x + 2*y = 10; x*y = 12; theta = 45 deg;\\n"
                                      "simplify 6\\n"
                                      "save " + saved + "\\n"
                                      "undo\\n"
                                      "show\\n"
                                      "undo\\n"
                                      "show\\n"
                                      "undo\\n");
    EXPECT_EQ(run.status, 1) << run.output;
    EXPECT_TRUE(Has(run, "[1] -x^2/2 + 5*x = 12;\ny := 5 - x/2\ntheta := Pi/4\n")) << run.output;
    EXPECT_TRUE(Has(run, "saved 1 equations and 2 variables eliminated to ")) << run.output;
    EXPECT_TRUE(Has(run, "undone\n[0] x + 2*y = 10;\n[1] x*y = 12;\n[2] theta = Pi/4;\nundone\nerror: nothing to undo"))
        << run.output;
    EXPECT_EQ(ReadFile(saved), "-x^2/2 + 5*x = 12;\ny = 5 - x/2;\ntheta = Pi/4;\n");
    // The saved file reads back, every variable defined.
    EXPECT_EQ(Kobwb("check " + saved).status, 0);

    // Undo also takes back narrowed domains.
    const Outcome domains = Kobwb("edit", "add x + y = 10;\\ndomain x=[0,4]\\nvars\\nundo\\nvars\\n");
    EXPECT_TRUE(Has(domains, "x in [0.0, 4.0]\ny in ")) << domains.output;
    EXPECT_TRUE(Has(domains, "undone\nx in [-3.4028234663852886e+38, 3.4028234663852886e+38]")) << domains.output;
    std::remove(saved.c_str());
}

} // namespace
