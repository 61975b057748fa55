#include "ModelTestSupport.h"

namespace {

// Where a node was written, or its unit.
std::string Where(const KOBWBNode* node, bool unit = false) {
    return (unit ? node->GetUnitLocation() : node->GetLocation()).Write().str();
}

} // namespace

TEST(KOBWBParser, EmptyTextsGiveEmptyModels) {
    for (const char* text : {"", "   \t\n\r\n", "/* nothing */\n", "/* open"}) {
        ParsedModel parsed(text);
        EXPECT_EQ(parsed.model.GetNbOfEquations(), 0) << text;
        EXPECT_EQ(parsed.ids.Size(), 0);
    }
    ParsedModel empty("");
    EXPECT_EQ(empty.errors, 0);
    EXPECT_EQ(empty.err, "");
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    EXPECT_EQ(KOBWBParser::Parse(static_cast<const char*>(nullptr), model, ids, messenger, nullptr),
              0);
    EXPECT_EQ(KOBWBParser::Parse(static_cast<FILE*>(nullptr), model, ids, messenger, nullptr), 0);
}

TEST(KOBWBParser, BuildsEquationsAndTheirIds) {
    ParsedModel parsed("x = 10 mm;\ny <= 2 * x;\nz;\na != b; a < b; a > b; a >= b;");
    EXPECT_EQ(parsed.errors, 0);
    ASSERT_EQ(parsed.ids.Size(), 7);
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(parsed.ids[i], parsed.Equation(i)->GetId());
    EXPECT_EQ(parsed.Left(0), "x");
    EXPECT_EQ(parsed.Right(0), "10:mm");
    EXPECT_EQ(parsed.Equation(0)->GetRightTerm()->GetUnitType(), "Distance");
    EXPECT_EQ(Where(parsed.Equation(0)->GetRightTerm(), true), "(1,7,1,9)");
    EXPECT_EQ(parsed.Equation(1)->GetWBEqType(), KOBWBEqLessEqual);
    EXPECT_EQ(parsed.Right(1), "11(2,x)");
    EXPECT_EQ(parsed.Equation(2)->GetRightTerm(), nullptr);
    EXPECT_EQ(parsed.Equation(3)->GetWBEqType(), KOBWBEqNotEqual);
    EXPECT_EQ(parsed.Equation(4)->GetWBEqType(), KOBWBEqLess);
    EXPECT_EQ(parsed.Equation(5)->GetWBEqType(), KOBWBEqGreater);
    EXPECT_EQ(parsed.Equation(6)->GetWBEqType(), KOBWBEqGreaterEqual);
    // Locations: a token at the start of the second line, and whole equations.
    EXPECT_EQ(Where(parsed.Equation(1)->GetLeftTerm()), "(2,0,2,1)");
    EXPECT_EQ(Where(parsed.Equation(1)), "(2,0,2,11)");
    EXPECT_EQ(Where(parsed.Equation(1)->GetRightTerm()), "(2,5,2,10)");
}

TEST(KOBWBParser, FollowsPrecedenceAndAssociativity) {
    ParsedModel parsed("-2^2; 2^3^2; a-b-c; 2^-3; a+b*c/d; -a*b; (a+b)*c; a/b/c;");
    EXPECT_EQ(parsed.errors, 0);
    EXPECT_EQ(parsed.Left(0), "45(13(2,2))");
    EXPECT_EQ(parsed.Left(1), "13(2,13(3,2))");
    EXPECT_EQ(parsed.Left(2), "46(46(a,b),c)");
    EXPECT_EQ(parsed.Left(3), "13(2,45(3))");
    EXPECT_EQ(parsed.Left(4), "10(a,12(11(b,c),d))");
    EXPECT_EQ(parsed.Left(5), "11(45(a),b)");
    EXPECT_EQ(parsed.Left(6), "11(10(a,b),c)");
    EXPECT_EQ(parsed.Left(7), "12(12(a,b),c)");
}

TEST(KOBWBParser, ReadsNumbersUnitsAndPi) {
    ParsedModel parsed("y = 2 x; 2147483648; 2147483647; 12.5; .5; 1e5; 1E+5; 1.5E-03; 1e;"
                       "Pi; PI mm; 2 Pi; 2 Pi rad; 2pi; (a+b) deg; (a) Pi; (2.5) Pi rad; 30 \xB0;"
                       "5 '; 7 \"; 3 %_angle; 4 in_ft; \"x;");
    EXPECT_EQ(parsed.errors, 3); // the units x, e and the identifier "x are unknown
    EXPECT_EQ(parsed.Right(0), "2:x");
    EXPECT_EQ(parsed.Left(1), "2.14748e+09r");
    EXPECT_EQ(parsed.Left(2), "2147483647");
    EXPECT_EQ(parsed.Left(3), "12.5r");
    EXPECT_EQ(parsed.Left(4), "0.5r");
    EXPECT_EQ(parsed.Left(5), "100000r");
    EXPECT_EQ(parsed.Left(6), "100000r");
    EXPECT_EQ(parsed.Left(7), "0.0015r");
    EXPECT_EQ(parsed.Left(8), "1:e");
    EXPECT_EQ(parsed.Left(9), "1/1Pi1");
    EXPECT_EQ(parsed.Left(10), "1/1Pi1:mm");
    EXPECT_EQ(parsed.Left(11), "11(2,1/1Pi1)");
    EXPECT_EQ(parsed.Left(12), "11(2,1/1Pi1:rad)");
    EXPECT_EQ(parsed.Left(13), "11(2,1/1Pi1)");
    EXPECT_EQ(parsed.Left(14), "10(a,b):deg");
    EXPECT_EQ(parsed.Left(15), "11(a,1/1Pi1)");
    EXPECT_EQ(parsed.Left(16), "11(2.5r,1/1Pi1:rad)");
    EXPECT_EQ(parsed.Left(17), "30:\xB0");
    EXPECT_EQ(parsed.Equation(17)->GetLeftTerm()->GetUnitType(), "Ambiguous");
    EXPECT_EQ(parsed.Left(18), "5:'");
    EXPECT_EQ(parsed.Left(19), "7:\"");
    EXPECT_EQ(parsed.Equation(20)->GetLeftTerm()->GetUnitType(), "Angle");
    EXPECT_EQ(parsed.Equation(21)->GetLeftTerm()->GetUnitType(), "Distance");
    EXPECT_EQ(parsed.Left(22), "\"x");
    // The unit location of "2 Pi rad" is that of rad; the nodes of the rule
    // span all of it.
    const KOBWBOpNode* product =
        static_cast<const KOBWBOpNode*>(parsed.Equation(12)->GetLeftTerm());
    EXPECT_EQ(Where(product->GetChild(2), true), "(1,88,1,91)");
    EXPECT_EQ(Where(product->GetChild(1)), "(1,83,1,91)");

    // A number cut short ends where its digits do: "7e+x" is 7 e + x, ".5E-y"
    // is 0.5 E - y, "3." is 3 followed by an invalid character.
    ParsedModel cut("7e+x; .5E-y; 3.;");
    EXPECT_EQ(cut.Codes(), (std::vector<int>{22, 22}));
    EXPECT_EQ(cut.out, "Invalid character\n");
    EXPECT_EQ(cut.Left(0), "10(7:e,x)");
    EXPECT_EQ(cut.Left(1), "46(0.5r:E,y)");
    EXPECT_EQ(cut.Left(2), "3");
    const KOBWBOpNode* sum = static_cast<const KOBWBOpNode*>(cut.Equation(0)->GetLeftTerm());
    EXPECT_EQ(Where(sum->GetChild(1)), "(1,0,1,2)");
    EXPECT_EQ(Where(sum->GetChild(1), true), "(1,1,1,2)");
    EXPECT_EQ(Where(sum->GetChild(2)), "(1,3,1,4)");
    EXPECT_EQ(Where(cut.Equation(1)->GetLeftTerm()), "(1,6,1,11)");
    EXPECT_EQ(Where(cut.Equation(2)->GetLeftTerm()), "(1,13,1,14)");
}

TEST(KOBWBParser, TellsKeywordsFromIdentifiers) {
    ParsedModel parsed("sinx; sin2; Pi2; sin(x); atan2(y, x); atan2x; f(); g(a, 1); Int(x, y);"
                       "int(x, y); min(a, b, c); _a%b; %_angle; ifx; andy;");
    EXPECT_EQ(parsed.Left(0), "sinx");
    EXPECT_EQ(parsed.Left(1), "sin2");
    EXPECT_EQ(parsed.Left(2), "Pi2");
    EXPECT_EQ(parsed.Left(3), "19(x)");
    EXPECT_EQ(parsed.Left(4), "25(y,x)");
    EXPECT_EQ(parsed.Left(5), "atan2x");
    EXPECT_EQ(parsed.Left(6), "44()");
    EXPECT_EQ(parsed.Left(7), "44(a,1)");
    EXPECT_EQ(parsed.Left(8), "47(x,y)");
    EXPECT_EQ(parsed.Left(9), "47(x,y)");
    EXPECT_EQ(parsed.Left(10), "41(a,b,c)");
    EXPECT_EQ(parsed.Left(11), "_a%b");
    EXPECT_EQ(parsed.Left(12), "%_angle");
    EXPECT_EQ(parsed.Left(13), "ifx");
    EXPECT_EQ(parsed.Left(14), "andy");
}

TEST(KOBWBParser, BuildsConditions) {
    ParsedModel parsed("y = if (a == b) then (1) else (2);"
                       "y = if (!(a == b) and (a < b) or !(a >= b)) then (1) else (2);"
                       "y = if (a != b && a > b || a <= 1) then (x) else (z);"
                       "if (a <= b) then (x = 1 mm) else (x >= 2 mm);");
    EXPECT_EQ(parsed.Right(0), "43(6(a,b),1,2)");
    EXPECT_EQ(parsed.Right(1), "43(4(5(6(a,b),8c4(a,b)),3(8c5(a,b))),1,2)");
    EXPECT_EQ(parsed.Right(2), "43(4(5(8c2(a,b),8c6(a,b)),8c3(a,1)),x,z)");
    // A conditional equation is one term holding both branches as comparisons.
    EXPECT_EQ(parsed.Left(3), "43(8c3(a,b),6(x,1:mm),8c5(x,2:mm))");
    EXPECT_EQ(parsed.Equation(3)->GetRightTerm(), nullptr);
    EXPECT_EQ(parsed.ids.Size(), 4);
}

TEST(KOBWBParser, CallsTheBlackBoxesItIsGiven) {
    TestBlackBox f("f");
    TestBlackBox g("g");
    KOBLVRListPKOBWBBlackBox blackBoxes;
    blackBoxes.Append(&f);
    blackBoxes.Append(&g);
    ParsedModel parsed("y = f(x, 2) + g(); z = f();", &blackBoxes);
    EXPECT_EQ(parsed.errors, 0);
    const KOBWBOpNode* sum = static_cast<const KOBWBOpNode*>(parsed.Equation(0)->GetRightTerm());
    EXPECT_EQ(static_cast<const KOBWBOpNode*>(sum->GetChild(1))->GetBlackBox(), &f);
    EXPECT_EQ(static_cast<const KOBWBOpNode*>(sum->GetChild(2))->GetBlackBox(), &g);
    EXPECT_EQ(static_cast<const KOBWBOpNode*>(parsed.Equation(1)->GetRightTerm())->GetBlackBox(),
              &f);
    KOBLVRListPKOBWBBlackBox declared;
    parsed.model.GetBlackBoxes(declared);
    EXPECT_EQ(declared.Size(), 2);
}

TEST(KOBWBParser, ReportsSyntaxErrorsAndRecoversAtTheSemicolon) {
    ParsedModel parsed("x = ;\ny = 1;\nz = f(;\nq = 1;\n2 3;\nw = 2.5Pi;\nv = 1 +");
    EXPECT_EQ(parsed.Codes(), (std::vector<int>{7, 7, 3, -1, 1}));
    EXPECT_EQ(parsed.errors, 5);
    EXPECT_EQ(
        parsed.err,
        "ExprParser : syntax error, unexpected semi-colon in (1,4,1,5)\n\n"
        "ExprParser : syntax error, unexpected semi-colon, expecting right bracket in (3,6,3,7)\n\n"
        "ExprParser : syntax error, unexpected integer in (5,2,5,3)\n\n"
        "ExprParser : syntax error, unexpected Pi in (6,7,6,9)\n\n"
        "ExprParser : syntax error, unexpected end of input in (7,7,7,7)\n\n");
    EXPECT_EQ(std::string(parsed.messenger.GetString().str()),
              "syntax error, unexpected semi-colon\n"
              "syntax error, unexpected semi-colon, expecting right bracket\n"
              "syntax error, unexpected integer\n"
              "syntax error, unexpected Pi\n"
              "syntax error, unexpected end of input\n");
    // Only the good equation is built; the abandoned nodes stay with the model.
    ASSERT_EQ(parsed.ids.Size(), 2);
    EXPECT_EQ(parsed.model.GetNbOfEquations(), 2);
    EXPECT_EQ(parsed.Left(0), "y");
    EXPECT_EQ(parsed.Left(1), "q");
    // Until three tokens follow a recovery, a new error abandons its equation
    // without a report.
    ParsedModel quiet("x = ;\n2 3;\ny = 1;");
    EXPECT_EQ(quiet.Codes(), (std::vector<int>{7}));
    EXPECT_EQ(quiet.model.GetNbOfEquations(), 1);
    EXPECT_EQ(std::string(parsed.ErrorLocation(0).Write().str()), "(1,4,1,5)");
}

TEST(KOBWBParser, NamesTheExpectedTokens) {
    ParsedModel parsed("x = sin 2;\ny = if (a < b) (1) else (2);\nz = if (a < b;\n"
                       "y = if (!a) then (1) else (2);\na = b = c;\nf(a b);\n");
    EXPECT_EQ(parsed.Codes(), (std::vector<int>{6, -1, -1, -1, -1, -1}));
    EXPECT_EQ(
        parsed.err,
        "ExprParser : syntax error, unexpected integer, expecting left bracket in (1,8,1,9)\n\n"
        "ExprParser : syntax error, unexpected left bracket, expecting TOKEN_THEN in "
        "(2,15,2,16)\n\n"
        "ExprParser : syntax error, unexpected semi-colon, expecting right bracket or TOKEN_AND"
        " or TOKEN_OR in (3,13,3,14)\n\n"
        "ExprParser : syntax error, unexpected identifier, expecting left bracket in (4,9,4,10)\n\n"
        "ExprParser : syntax error, unexpected = in (5,6,5,7)\n\n"
        "ExprParser : syntax error, unexpected identifier, expecting right bracket in "
        "(6,4,6,5)\n\n");
}

TEST(KOBWBParser, PrintsInvalidCharactersAndGoesOn) {
    ParsedModel parsed("x = 5.;\ny = 3 # 4;\t$\n");
    EXPECT_EQ(parsed.out, "Invalid character\nInvalid character\nInvalid character\n");
    EXPECT_EQ(parsed.Right(0), "5");
    EXPECT_EQ(parsed.Codes(), (std::vector<int>{3}));
    // The messenger keeps where each one was, apart from the errors.
    ASSERT_EQ(parsed.messenger.GetNbOfInvalidCharacters(), 3);
    int line = 0;
    int column = 0;
    EXPECT_EQ(parsed.messenger.GetInvalidCharacter(1, line, column), 0);
    EXPECT_EQ(line, 2);
    EXPECT_EQ(column, 6);
    EXPECT_EQ(parsed.messenger.GetInvalidCharacter(2, line, column), 0);
    EXPECT_EQ(line, 2);
    EXPECT_EQ(column, 11);
    EXPECT_EQ(parsed.messenger.GetInvalidCharacter(3, line, column), KOBWBModelFailure);
    EXPECT_EQ(parsed.messenger.GetInvalidCharacter(-1, line, column), KOBWBModelFailure);
}

TEST(KOBWBParser, CountsLinesOutsideAndInsideComments) {
    // Outside comments each of \n, \r, \r\n and \n\r is one line.
    ParsedModel breaks("a;\r\nb;\rc;\n\rd;\n\ne;");
    EXPECT_EQ(Where(breaks.Equation(1)), "(2,0,2,1)");
    EXPECT_EQ(Where(breaks.Equation(2)), "(3,0,3,1)");
    EXPECT_EQ(Where(breaks.Equation(3)), "(4,0,4,1)");
    EXPECT_EQ(Where(breaks.Equation(4)), "(6,0,6,1)");
    // Inside a comment a run of line breaks counts once, and a lone \r is text.
    ParsedModel comments("/* one\n\n\ntwo */ a;\n/* x\ry */ b; /* * / **/ c;");
    EXPECT_EQ(Where(comments.Equation(0)), "(2,7,2,8)");
    EXPECT_EQ(Where(comments.Equation(1)), "(3,10,3,11)");
    EXPECT_EQ(Where(comments.Equation(2)), "(3,24,3,25)");
}

TEST(KOBWBParser, ReadsFiles) {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    FILE* file = std::fopen(ParsedModel::DataPath("sketch.model").c_str(), "rb");
    ASSERT_NE(file, nullptr);
    testing::internal::CaptureStderr();
    const int errors = KOBWBParser::Parse(file, model, ids, messenger, nullptr);
    const std::string err = testing::internal::GetCapturedStderr();
    std::fclose(file);
    EXPECT_EQ(errors, 0) << err;
    EXPECT_EQ(model.GetNbOfEquations(), 12);
    EXPECT_EQ(ids.Size(), 12);
    EXPECT_EQ(model.GetVariable("L1")->GetUnitType(), "Distance");
    EXPECT_EQ(model.GetVariable("alpha")->GetUnitType(), "Angle");
}
