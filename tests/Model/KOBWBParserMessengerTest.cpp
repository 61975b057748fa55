#include "ModelTestSupport.h"

TEST(KOBWBParserMessenger, CodesMessagesByTheirExactText) {
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode("syntax error, unexpected end of input"), 1);
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode("syntax error, unexpected semi-colon"), 7);
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode("syntax error, unexpected semi-colon, expecting right bracket"), 7);
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode("internal error, unit computation not available"), 100);
    // Only the exact texts carry a code: near misses count as other messages.
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode("syntax error, unexpected identifier, expecting left bracket"), -1);
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode("syntax error, unexpected semi-colon "), -1);
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode("memory exhausted"), -1);
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode(""), -1);
    EXPECT_EQ(KOBWBParserMessenger::GetErrorCode(nullptr), -1);
}

TEST(KOBWBParserMessenger, KeepsEveryErrorWithItsLocation) {
    KOBWBParserMessenger messenger;
    const KOBWBLocation first(2, 3, 2, 7);
    testing::internal::CaptureStderr();
    EXPECT_EQ(messenger.ReportError(&first, "semantic error, unknown unit"), 0);
    EXPECT_EQ(messenger.ReportError(nullptr, "lost somewhere"), 0);
    EXPECT_EQ(messenger.ReportError(&first, "syntax error, unexpected real"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ExprParser : semantic error, unknown unit in (2,3,2,7)\n\n"
              "\n"
              "ExprParser : syntax error, unexpected real in (2,3,2,7)\n\n");
    EXPECT_EQ(messenger.GetErrorNumber(), 3);
    EXPECT_EQ(std::string(messenger.GetString().str()),
              "semantic error, unknown unit\nsyntax error, unexpected real\n");
    int code = 0;
    KOBWBLocation location;
    EXPECT_EQ(messenger.GetError(0, code, location), 0);
    EXPECT_EQ(code, 22);
    EXPECT_TRUE(location.Compare(first));
    EXPECT_EQ(messenger.GetError(1, code, location), 0);
    EXPECT_EQ(code, -1);
    EXPECT_TRUE(location.Compare(KOBWBLocation()));
    EXPECT_EQ(messenger.GetError(3, code, location), KOBWBModelFailure);
    EXPECT_EQ(messenger.GetError(-1, code, location), KOBWBModelFailure);

    // GetErrors replaces what the outputs held, and the copies are the caller's.
    KOBLVRIntArray codes;
    codes.Append(99);
    KOBLVRListPKOBWBLocation locations;
    locations.Append(new KOBWBLocation(9, 9, 9, 9));
    EXPECT_EQ(messenger.GetErrors(codes, locations), 0);
    ASSERT_EQ(codes.Size(), 3);
    ASSERT_EQ(locations.Size(), 3);
    EXPECT_EQ(codes[0], 22);
    EXPECT_EQ(codes[2], 4);
    EXPECT_TRUE(locations[2]->Compare(first));
    locations.DeleteAll();
}

TEST(KOBWBParserMessenger, KeepsItsReportsToItselfWhenToldAndHandsBackEachMessage) {
    KOBWBParserMessenger messenger;
    EXPECT_TRUE(messenger.IsEchoingToStandardError());
    messenger.SetEchoToStandardError(false);
    KOBWBModel model;
    KOBLVRIntArray ids;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int errors = KOBWBParser::Parse("x = 2 furlong;\ny = (3 $;\n", model, ids, messenger, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(messenger.GetNbOfInvalidCharacters(), 1);
    ASSERT_EQ(errors, 2);
    EXPECT_EQ(std::string(messenger.GetErrorMessage(0).str()), "syntax error, unexpected semi-colon");
    EXPECT_EQ(std::string(messenger.GetErrorMessage(1).str()), "semantic error, unknown unit");
    EXPECT_EQ(std::string(messenger.GetErrorMessage(2).str()), "");
    EXPECT_EQ(std::string(messenger.GetErrorMessage(-1).str()), "");
    int code = 0;
    KOBWBLocation location;
    messenger.GetError(1, code, location);
    EXPECT_EQ(code, 22);
    EXPECT_EQ(location.GetFirstLine(), 1);
    EXPECT_EQ(location.GetFirstColumn(), 6);
}
