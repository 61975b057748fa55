#include "ModelTestSupport.h"

namespace {

std::string ClassOf(const ParsedModel& parsed, const char* name) {
    KOBLVRListPKOBWBVarNode occurrences;
    parsed.model.GetVariable(name, occurrences);
    if (occurrences.Size() == 0) return "absent";
    const std::string first = occurrences[0]->GetUnitType().str();
    for (int i = 1; i < occurrences.Size(); ++i)
        if (first != occurrences[i]->GetUnitType().str()) return "mixed";
    return first;
}

} // namespace

TEST(KOBWBModelCheck, InfersUnitClassesThroughTheEquations) {
    ParsedModel parsed("a = b + c;\n"       // all three wait for a class
                       "d = 2 * Pi * r;\n"  // d follows r through pure factors
                       "c <= 4 mm;\n"       // c, hence a and b, are lengths
                       "r = -abs(e) / 2;\n" // e follows r
                       "e = max(f, 3 cm);\n"
                       "t = atan2(y1 - y0, x1);\n" // t is an angle, y1, y0 and x1 share a class
                       "t = u + (v) deg;\n"
                       "k = p * q;\n" // a product of two unknowns decides nothing
                       "y0 = 1 in;\n"
                       "if (g < 3 deg) then (h = 1 mm) else (h = 2);\n"
                       "z = 7;\n");
    EXPECT_EQ(parsed.errors, 0) << parsed.err;
    for (const char* name : {"a", "b", "c", "e", "f", "h", "y1", "y0", "x1"})
        EXPECT_EQ(ClassOf(parsed, name), "Distance") << name;
    EXPECT_EQ(ClassOf(parsed, "d"), "Distance");
    EXPECT_EQ(ClassOf(parsed, "r"), "Distance");
    for (const char* name : {"t", "u", "v", "g"})
        EXPECT_EQ(ClassOf(parsed, name), "Angle") << name;
    for (const char* name : {"k", "p", "q", "z"})
        EXPECT_EQ(ClassOf(parsed, name), "None") << name;
    // A model with only known units, or none, draws no report.
    ParsedModel plain("x = y * 2; y = sqrt(x + 1);");
    EXPECT_EQ(plain.errors, 0);
    EXPECT_EQ(plain.err, "");
}

TEST(KOBWBModelCheck, ReportsUnitsItCannotUse) {
    ParsedModel parsed("x = 3 furlong;\n"
                       "y = (a + b) parsec;\n"
                       "z = 2 Pi mm;\n"
                       "w = (q) Pi cm + Pi km;\n"
                       "v = 2 Pi rad + Pi deg;\n");
    EXPECT_EQ(parsed.Codes(), (std::vector<int>{22, 22, 25, 25, 25}));
    EXPECT_EQ(parsed.err, "ExprParser : semantic error, unknown unit in (1,6,1,13)\n\n"
                          "ExprParser : semantic error, unknown unit in (2,12,2,18)\n\n"
                          "ExprParser : semantic error, ambiguous Pi in (3,4,3,11)\n\n"
                          "ExprParser : semantic error, ambiguous Pi in (4,4,4,13)\n\n"
                          "ExprParser : semantic error, ambiguous Pi in (4,16,4,21)\n\n");
}

TEST(KOBWBModelCheck, ReportsVariablesThatAreLengthsAndAngles) {
    ParsedModel parsed("a = 30 deg;\nb = a;\nc = b + 1;\nc = 1 m;\nc = 2 mm;\n");
    EXPECT_EQ(parsed.Codes(), (std::vector<int>{23}));
    EXPECT_EQ(parsed.ErrorLocation(0).GetFirstLine(), 4);
    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(ClassOf(parsed, name), "Inhomogeneous");
    // The order of the equations does not change the classes, only where the
    // conflict is seen.
    ParsedModel reversed("c = 2 mm;\nc = 1 m;\nc = b + 1;\nb = a;\na = 30 deg;\n");
    EXPECT_EQ(reversed.Codes(), (std::vector<int>{23}));
    EXPECT_EQ(reversed.ErrorLocation(0).GetFirstLine(), 5);
    EXPECT_EQ(ClassOf(reversed, "b"), "Inhomogeneous");
    // Lengths and angles mixed in one expression make the variable both.
    ParsedModel mixed("x = 2 km + 30 deg;\ny = (x) deg;\n");
    EXPECT_EQ(mixed.Codes(), (std::vector<int>{23}));
    // Without a variable it is for the homogeneity check to tell.
    ParsedModel constants("2 km + 30 deg = 1;");
    EXPECT_EQ(constants.errors, 0);
    // Separate conflicts are reported each once.
    ParsedModel two("a = 1 mm; a = 1 rad; b = 1 rad; b = 1 mm; a = b;");
    EXPECT_EQ(two.Codes(), (std::vector<int>{23, 23}));
}

TEST(KOBWBModelCheck, ReportsUnitsWhereTheyCannotApply) {
    ParsedModel parsed("x = 5 mm;\n"
                       "y = ln(x) + log(2 rad) + exp(5 ') + ln(x / (3 mm));\n"
                       "z = sin(x) + cos(30 deg) + tan(t) + sinh(1 rad) + asin(x);\n"
                       "w = x ^ 2 + 2 ^ (1 deg);\n"
                       "t = 10 deg;\n");
    EXPECT_EQ(parsed.Codes(), (std::vector<int>{24, 24, 24, 24, 24, 24, 24}));
    EXPECT_EQ(parsed.ErrorLocation(0).Write(), KOBLVRString("(2,7,2,8)").str());
    EXPECT_EQ(std::string(parsed.ErrorLocation(3).Write().str()), "(3,8,3,9)");
    EXPECT_EQ(std::string(parsed.ErrorLocation(6).Write().str()), "(4,17,4,22)");
}

TEST(KOBWBModelCheck, ReportsUnknownFunctionsAndWrongArgumentCounts) {
    TestBlackBox f("f");
    KOBLVRListPKOBWBBlackBox blackBoxes;
    blackBoxes.Append(&f);
    ParsedModel parsed(
        "y = f(x) + g(x, 1);\nz = h();\nw = sin(a, b) + atan2(1) + min(a) + mod(1, 2, 3);\n"
        "v = sqrt(1, 2) + max(a, b, c) + step(x, 1, 2, 3, 4);\n",
        &blackBoxes);
    EXPECT_EQ(parsed.errors, 7) << parsed.err;
    EXPECT_NE(parsed.err.find("semantic error, unknown function g in (1,11,1,18)"),
              std::string::npos);
    EXPECT_NE(parsed.err.find("semantic error, unknown function h in (2,4,2,7)"),
              std::string::npos);
    EXPECT_NE(parsed.err.find("wrong number of arguments for sin in (3,4,3,13)"),
              std::string::npos);
    EXPECT_NE(parsed.err.find("wrong number of arguments for atan2"), std::string::npos);
    EXPECT_NE(parsed.err.find("wrong number of arguments for min"), std::string::npos);
    EXPECT_NE(parsed.err.find("wrong number of arguments for mod"), std::string::npos);
    EXPECT_NE(parsed.err.find("wrong number of arguments for sqrt"), std::string::npos);
    for (int code : parsed.Codes())
        EXPECT_EQ(code, -1);
    // Syntax and semantic errors come from the same pass.
    ParsedModel both("x = ;\ny = 3 furlong;\n");
    EXPECT_EQ(both.Codes(), (std::vector<int>{7, 22}));
}
