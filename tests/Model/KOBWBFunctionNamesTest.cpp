#include "ModelTestSupport.h"

#include <string>

namespace {

// The scanner reads every name of the table as its function, and the printer
// writes every function with a name that reads back as the same function.
TEST(KOBWBFunctionNames, TheScannerAndThePrinterShareOneTable) {
    for (int i = 0; i < KOBWBGetNbOfFunctionNames(); ++i) {
        const KOBWBFunctionName* function = KOBWBGetFunctionNameRow(i);
        ASSERT_NE(function, nullptr);
        if (!function->read) continue;
        const std::string text = std::string("y = ") + function->name + "(x, z);";
        const ParsedModel parsed(text.c_str());
        const KOBWBNode* right = parsed.Equation(0) ? parsed.Equation(0)->GetRightTerm() : nullptr;
        ASSERT_NE(right, nullptr) << text;
        ASSERT_EQ(right->GetNodeType(), KOBWBOpNodeType) << text;
        EXPECT_EQ(static_cast<const KOBWBOpNode*>(right)->GetType(), function->type) << text;
        const KOBWBFunctionName* written = KOBWBFindWrittenFunction(function->type);
        ASSERT_NE(written, nullptr) << text;
        EXPECT_EQ(KOBWBFindReadFunction(written->name, static_cast<int>(std::string(written->name).size())),
                  written)
            << text;
    }
    // A name that goes on is an identifier; the table is not searched past a name.
    EXPECT_EQ(KOBWBFindReadFunction("sinx", 4), nullptr);
    EXPECT_NE(KOBWBFindReadFunction("sinx", 3), nullptr);
    EXPECT_EQ(KOBWBFindReadFunction("implies", 7), nullptr);
    EXPECT_STREQ(KOBWBFindWrittenFunction(KOBWBImplicationType)->name, "implies");
    EXPECT_EQ(KOBWBFindWrittenFunction(KOBWBSumType), nullptr);
    EXPECT_EQ(KOBWBGetFunctionNameRow(-1), nullptr);
    EXPECT_EQ(KOBWBGetFunctionNameRow(KOBWBGetNbOfFunctionNames()), nullptr);
    const ParsedModel identifiers("y = sinx + atan2x + Int2;");
    EXPECT_EQ(identifiers.errors, 0);
}

} // namespace
