#include "KOBWBx.h"

#include <gtest/gtest.h>

#include <string>

namespace {

size_t Count(const std::string& text, const std::string& piece) {
    size_t count = 0;
    for (size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) ++count;
    return count;
}

TEST(KOBWBGraphPrinter, WritesSharedNodesOnceWithTheirValues) {
    KOBWBFactory f;
    KOBWBVariable* x = f.CreateVariable();
    x->SetName("x");
    KOBWBExpression* shared = f.CreateSin(x);
    KOBWBEquation* first = f.AddEquation(f.CreateSum(shared, f.CreateIntegerConstant(1)), KOBWBEqEqual);
    f.AddEquation(f.CreateProduct(shared, f.CreateConstant(KOBWBValue(KOBWBCreateFraction(1, 4, 1, 1)))),
                  KOBWBEqLessEqual);
    x->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(0, 0)));
    first->GetRoot()->GetValue();

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
