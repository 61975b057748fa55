#include "ModelTestSupport.h"

#include <fstream>
#include <sstream>

namespace {

// Parses a file of the test data through the file overload.
struct ParsedFile {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    int errors = -1;
    std::string out;
    std::string err;

    explicit ParsedFile(const char* name) {
        FILE* file = std::fopen(ParsedModel::DataPath(name).c_str(), "rb");
        if (!file) return;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        errors = KOBWBParser::Parse(file, model, ids, messenger, nullptr);
        out = testing::internal::GetCapturedStdout();
        err = testing::internal::GetCapturedStderr();
        std::fclose(file);
    }
};

// Every error has a location inside the text: lines from 1, columns from 0,
// the end not before the start.
void ExpectSaneLocations(const KOBWBParserMessenger& messenger) {
    for (int i = 0; i < messenger.GetErrorNumber(); ++i) {
        int code = 0;
        KOBWBLocation where;
        ASSERT_EQ(messenger.GetError(i, code, where), 0);
        EXPECT_GE(where.GetFirstLine(), 1);
        EXPECT_GE(where.GetFirstColumn(), 0);
        EXPECT_GE(where.GetLastLine(), where.GetFirstLine());
        if (where.GetLastLine() == where.GetFirstLine()) {
            EXPECT_GE(where.GetLastColumn(), where.GetFirstColumn());
        }
    }
}

std::string Repeat(const std::string& piece, int count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

} // namespace

TEST(KOBWBBadInput, ReadsAFailingModelFromAFile) {
    ParsedFile parsed("errors.model");
    EXPECT_EQ(parsed.errors, 8);
    std::vector<int> codes;
    for (int i = 0; i < parsed.messenger.GetErrorNumber(); ++i) {
        int code = 0;
        KOBWBLocation where;
        parsed.messenger.GetError(i, code, where);
        codes.push_back(code);
    }
    EXPECT_EQ(codes, (std::vector<int>{7, 7, 7, 22, 25, 23, 24, -1}));
    EXPECT_NE(parsed.err.find("unknown function unknownbox in (10,4,10,20)"), std::string::npos);
    EXPECT_EQ(parsed.ids.Size(), 7);
    ExpectSaneLocations(parsed.messenger);
}

TEST(KOBWBBadInput, SurvivesBinaryBytesAndNuls) {
    ParsedFile parsed("binary.model");
    ASSERT_GE(parsed.errors, 1);
    EXPECT_NE(parsed.out.find("Invalid character\n"), std::string::npos);
    ExpectSaneLocations(parsed.messenger);
    // A NUL ends a text given as a string.
    ParsedModel cut("x = 1;\0y = ;");
    EXPECT_EQ(cut.errors, 0);
    EXPECT_EQ(cut.model.GetNbOfEquations(), 1);
    // Bytes above 127, other than the degree sign, are invalid characters.
    ParsedModel high("x\xC3\xA9 = 1 \xB0;");
    EXPECT_EQ(high.out, "Invalid character\nInvalid character\n");
    EXPECT_EQ(high.errors, 0);
}

TEST(KOBWBBadInput, EndsAtAnUnterminatedComment) {
    ParsedFile parsed("unterminated_comment.model");
    EXPECT_EQ(parsed.errors, 0);
    EXPECT_EQ(parsed.model.GetNbOfEquations(), 2);
    ParsedModel inside("x = 1 + /* y;");
    EXPECT_EQ(inside.Codes(), (std::vector<int>{1}));
}

TEST(KOBWBBadInput, HandlesVeryLongLinesAndNames) {
    const std::string name = "v" + Repeat("abcdefghij", 100000);
    const std::string text = name + " = " + Repeat("x + ", 200000) + "1 mm;\n" + name + " = 2;";
    ParsedModel parsed(text.c_str());
    EXPECT_EQ(parsed.errors, 0);
    ASSERT_EQ(parsed.model.GetNbOfEquations(), 2);
    EXPECT_EQ(parsed.model.GetVariable(name.c_str())->GetUnitType(), "Distance");
    EXPECT_EQ(parsed.model.GetVariable("x")->GetUnitType(), "Distance");
    EXPECT_EQ(parsed.Equation(1)->GetLeftTerm()->GetLocation().GetLastColumn(), 1000001);
    // Walks over the 200000-deep sum do not exhaust the call stack.
    EXPECT_EQ(KOBWBModelHomogeneity::CheckHomogeneity(parsed.model), 0);
    EXPECT_TRUE(parsed.Equation(0)->IsEqual(parsed.Equation(0)));
    KOBLVRListPKOBLVRString names;
    parsed.Equation(0)->FillPresentVariables(names);
    EXPECT_EQ(names.Size(), 2);
    KOBWBEqNode* first = parsed.Equation(0);
    EXPECT_EQ(parsed.model.RemoveEquation(first), KOBWBModelOk);
    EXPECT_EQ(parsed.model.GetNbOfVariables(), 1);
    // The same text read from a file, whose buffer grows for the long name.
    FILE* file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    std::fwrite(text.data(), 1, text.size(), file);
    std::rewind(file);
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    EXPECT_EQ(KOBWBParser::Parse(file, model, ids, messenger, nullptr), 0);
    std::fclose(file);
    EXPECT_EQ(model.GetNbOfEquations(), 2);
    EXPECT_TRUE(model.GetEquationById(2)->IsEqual(parsed.model.GetEquationById(2)));
    EXPECT_EQ(model.GetVariable(name.c_str())->GetUnitType(), "Distance");
}

TEST(KOBWBBadInput, AnswersDeepNestingWithMemoryExhausted) {
    for (const std::string& text :
         {Repeat("(", 20000) + "1" + Repeat(")", 20000) + ";", Repeat("-", 20000) + "1;",
          Repeat("2^", 20000) + "2;",
          "y = " + Repeat("sin(", 20000) + "1" + Repeat(")", 20000) + ";",
          // Names and argument lists left on the parser's stack.
          "y = " + Repeat("f(1, g(", 10000) + ";"}) {
        ParsedModel parsed(("a = 1;\n" + text + "\nb = 2;").c_str());
        EXPECT_EQ(parsed.Codes(), (std::vector<int>{-1}));
        EXPECT_NE(parsed.err.find("ExprParser : memory exhausted in (2,"), std::string::npos);
        EXPECT_EQ(parsed.model.GetNbOfEquations(), 1);
    }
    // Nesting the parser's stack holds is parsed in full.
    ParsedModel deep(
        (Repeat("(", 3000) + "1 mm" + Repeat(")", 3000) + " = " + Repeat("-", 3000) + "x;")
            .c_str());
    EXPECT_EQ(deep.errors, 0);
    EXPECT_EQ(deep.model.GetVariable("x")->GetUnitType(), "Distance");
    EXPECT_EQ(KOBWBModelHomogeneity::CheckHomogeneity(deep.model), 1);
}

TEST(KOBWBBadInput, TakesUnknownFunctionsWithAnyArguments) {
    ParsedModel parsed(
        "y = nofunc(1, 2, 3) + nofunc() + nofunc(nofunc(x)); z = atan2(1, 2, 3, 4);"
        "w = sin(1, 2, 3 mm); u = Int(x); v = if (a < b) then (sin(1, 2)) else (cos());");
    ExpectSaneLocations(parsed.messenger);
    EXPECT_EQ(parsed.model.GetNbOfEquations(), 4);
    EXPECT_EQ(parsed.Codes(), (std::vector<int>{-1, -1, -1, -1, -1, -1, -1, -1}));
}

TEST(KOBWBBadInput, SurvivesManyErrors) {
    // Every line is wrong in some way; the parse reports and goes on.
    std::string text;
    const char* lines[] = {"x = ;",  "= 3;",   ")(;", "if (;",   "y = 2.5 Pi;",
                           "f(,);",  "3 3 3;", "((;", "a == b;", "x = 1 km deg rad;",
                           "Pi Pi;", ";;;",    "@#$;"};
    for (int i = 0; i < 300; ++i)
        text += std::string(lines[i % 13]) + " ok = 1;\n";
    ParsedModel parsed(text.c_str());
    EXPECT_GE(parsed.errors, 250);
    EXPECT_EQ(parsed.ids.Size(), parsed.model.GetNbOfEquations());
    ExpectSaneLocations(parsed.messenger);
}
