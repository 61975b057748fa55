#include "PrinterTestSupport.h"

#include <string>

namespace {

TEST(KOBWBGraphPrinter, WritesSharedNodesOnceWithTheirValues) {
    KOBWBFactory f;
    BuildSharedSine(f);

    std::string dot;
    KOBWBGraphPrinter::PrintDot(f, dot);
    EXPECT_EQ(dot.rfind("digraph factory {\n", 0), 0u);
    EXPECT_EQ(Count(dot, "label=\"sin"), 1u) << dot;
    EXPECT_EQ(Count(dot, "label=\"x"), 1u) << dot;
    EXPECT_EQ(Count(dot, "label=\"Pi/4\""), 1u) << dot;
    // The evaluated nodes show their values; the product, never evaluated, does not.
    EXPECT_EQ(Count(dot, "label=\"sin\\n0.0\""), 1u) << dot;
    EXPECT_EQ(Count(dot, "label=\"*\"]"), 1u) << dot;
    // Five edges between the six nodes (the shared sine drawn once, reached
    // twice) and one from each equation.
    EXPECT_EQ(Count(dot, " -> n"), 7u) << dot;
    EXPECT_EQ(Count(dot, "label=\"[1] <= 0\""), 1u) << dot;
}

TEST(KOBWBGraphPrinter, WalksDeepGraphsWithoutRecursion) {
    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    KOBWBExpression* chain = x;
    for (int i = 0; i < 200000; ++i) chain = f.CreateSum(chain, x);
    f.AddEquation(chain, KOBWBEqEqual);
    std::string dot;
    KOBWBGraphPrinter::PrintDot(f, dot);
    EXPECT_EQ(Count(dot, " -> n"), 400000u + 1u);
}

} // namespace
