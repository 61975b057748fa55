#include "KOBLVRUtilities.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

TEST(KOBLVRString, ValueSemanticsAndConcatenation) {
    KOBLVRString empty;
    EXPECT_STREQ(empty.str(), "");
    KOBLVRString a("va");
    a += 12;
    EXPECT_EQ(a, "va12");
    KOBLVRString b = a;
    b += "x";
    EXPECT_EQ(a, "va12");
    EXPECT_EQ(b, "va12x");
    EXPECT_TRUE("va12" == a);
    EXPECT_EQ(KOBLVRString("a") + KOBLVRString("b") + "c", "abc");
    EXPECT_EQ("z" + KOBLVRString("y"), "zy");
    a += a;
    EXPECT_EQ(a, "va12va12");
    a = a.str() + 2;
    EXPECT_EQ(a, "12va12");
    EXPECT_EQ(KOBLVRString(-7), "-7");
    EXPECT_EQ(KOBLVRString(0.5, 3), "0.5");
    a.clear();
    EXPECT_EQ(a.Length(), 0);
    const char* none = nullptr;
    a = none;
    EXPECT_EQ(a, "");
}

// Short texts live inside the string and long ones on the heap: growth across
// the boundary, moves and copies either way, and appending a string to itself
// must keep every character.
TEST(KOBLVRString, TextsAcrossTheInlineBoundary) {
    KOBLVRString text("0123456789abcde");
    EXPECT_EQ(text.Length(), 15);
    text += "f";
    EXPECT_EQ(text, "0123456789abcdef");
    text += text;
    EXPECT_EQ(text, "0123456789abcdef0123456789abcdef");

    KOBLVRString shortText("P12_x");
    KOBLVRString moved(std::move(shortText));
    EXPECT_EQ(moved, "P12_x");
    EXPECT_TRUE(shortText.IsEmpty());
    EXPECT_STREQ(shortText.str(), "");

    KOBLVRString longText = text;
    KOBLVRString taken(std::move(longText));
    EXPECT_EQ(taken, text);
    EXPECT_STREQ(longText.str(), "");
    taken = std::move(moved);
    EXPECT_EQ(taken, "P12_x");
    moved = std::move(text);
    EXPECT_EQ(moved, "0123456789abcdef0123456789abcdef");

    KOBLVRString self("ab");
    self += self;
    self = self.str() + 1;
    EXPECT_EQ(self, "bab");
    KOBLVRString reserved(40u);
    EXPECT_TRUE(reserved.IsEmpty());
    reserved += "x";
    EXPECT_EQ(reserved, "x");
}

TEST(KOBLVRIntArray, GrowsSortsSearchesAndDeduplicates) {
    KOBLVRIntArray array;
    array.SetDimension(3);
    EXPECT_EQ(array.Size(), 3);
    EXPECT_EQ(array[2], 0);
    array.Set(5, 9);
    EXPECT_EQ(array.Size(), 6);
    EXPECT_EQ(array[4], 0);
    array.Append(4);
    array.Append(9);
    EXPECT_EQ(array.Locate(9, 0), 5);
    EXPECT_EQ(array.Locate(9, 6), 7);
    EXPECT_EQ(array.Locate(42, 0), -1);
    array.RemoveDuplicates();
    ASSERT_EQ(array.Size(), 3);
    EXPECT_EQ(array[0], 0);
    EXPECT_EQ(array[1], 4);
    EXPECT_EQ(array[2], 9);
    EXPECT_EQ(array.BinarySearch(4), 1);
    EXPECT_EQ(array.BinarySearch(5), -1);
    KOBLVRIntArray copy(array);
    array.Fill(2, 7);
    EXPECT_EQ(copy.Size(), 3);
    EXPECT_EQ(array.Size(), 2);
    EXPECT_EQ(array[1], 7);
    array.Set(-1, 3);
    EXPECT_EQ(array.Size(), 2);

    KOBLVRBoolArray flags(3, true);
    EXPECT_TRUE(flags.Check());
    flags.Set(4, true);
    EXPECT_FALSE(flags.Check());
    EXPECT_FALSE(flags[3]);
}

TEST(KOBLVRStream, WritesTextNumbersAndSections) {
    std::ostringstream out;
    {
        KOBLVRStream stream(&out);
        stream << "x=" << 3 << " y=" << 0.5 << lvrendl;
        stream.WriteString(KOBLVRString("done"));
        EXPECT_TRUE(stream.GetStorage().AddSection("#!MODE", "", "1", KOBLVRStorage::Input, 0));
        EXPECT_TRUE(stream.GetStorage().AddSection("#!MODE", "", "2", KOBLVRStorage::Input, 1));
        EXPECT_FALSE(stream.GetStorage().AddSection("", "", "2", KOBLVRStorage::Input, 1));
        stream.GetStorage().AddSection("#!OUT", "", "", KOBLVRStorage::Output, 0);
        stream << lvrendl;
        stream.WriteSections(KOBLVRStorage::Input);
        // A written part is closed: writing it again writes nothing.
        stream.WriteSections(KOBLVRStorage::Input);
        stream.WriteSections(KOBLVRStorage::Output);
    }
    EXPECT_EQ(out.str(), "x=3 y=0.5\ndone\n#!MODE\n2\n#!OUT\n");

    KOBLVRStream unopened(KOBLVRString("/nonexistent-folder/trace.txt"), KOBLVRTraceStream, false);
    EXPECT_FALSE(unopened.IsOpen());
    unopened << "ignored" << lvrendl;
}

TEST(KOBLVRGlobalParameters, TraceStreamFollowsLevel) {
    KOBLVRGlobalParameters& parameters = GetGlobalParameters();
    std::ostringstream out;
    KOBLVRStream stream(&out);
    EXPECT_EQ(parameters.GetTraceStream(), nullptr);
    parameters.SetTraceStream(&stream);
    parameters.SetTraceLevel(1);
    EXPECT_EQ(parameters.GetTraceStream(1), &stream);
    EXPECT_EQ(parameters.GetTraceStream(2), nullptr);
    parameters.SetTraceLevel(0);
    parameters.SetTraceStream(nullptr);
}

namespace {
std::string lastAssertion;
void RecordAssertion(const char* condition, const char* file, unsigned line) {
    lastAssertion = std::string(condition) + "|" + file + "|" + std::to_string(line);
}
} // namespace

TEST(KOBLVRAssert, HandlerReceivesReportsAndDefaultIsRestored) {
    const KOBLVRAssertHandler previous = KOBLVRSetAssertHandler(RecordAssertion);
    KOBLVRAssertError("iapChildren", "WhiteBoxData/src/KOBWBOperator", 34);
    EXPECT_EQ(lastAssertion, "iapChildren|WhiteBoxData/src/KOBWBOperator|34");
    EXPECT_EQ(KOBLVRSetAssertHandler(nullptr), RecordAssertion);
    testing::internal::CaptureStderr();
    KOBLVRAssertError("x", "m", 1);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("x"), std::string::npos);
    KOBLVRSetAssertHandler(previous);
}

TEST(KOBLVRFile, PathsAndEnvironment) {
    EXPECT_EQ(KOBLVRMakePath("dir", "file.txt"), "dir/file.txt");
    EXPECT_EQ(KOBLVRMakePath("dir/", "file.txt"), "dir/file.txt");
    EXPECT_EQ(KOBLVRMakePath("", "file.txt"), "file.txt");
    EXPECT_EQ(KOBLVRGetEnv("KOBWBX_SURELY_UNSET_VARIABLE"), "");

    KOBLVRExpressionTerm* sum = KOBLVRExpressionTerm::Create(KOBLVRTermSum);
    sum->AddChild(KOBLVRExpressionTerm::Create(2.0));
    sum->AddChild(KOBLVRExpressionTerm::Create(KOBLVRString("x")));
    std::ostringstream out;
    KOBLVRStream stream(&out);
    sum->Print(stream, false);
    EXPECT_EQ(out.str(), "2 + x");
    KOBLVRExpressionTerm::Destroy(sum);
    EXPECT_EQ(sum, nullptr);
}

namespace {

// An operator that records its mode in its input replay and its result in its output.
class Counting : public KOBLVROperator {
public:
    explicit Counting(int* alive) : m_alive(alive) { ++*m_alive; }
    ~Counting() override { --*m_alive; }
    int DoRun() override { return ++runs; }
    void WriteInput(KOBLVRStream& stream) const override {
        stream.GetStorage().AddSection("#!MODE", "", KOBLVRString(mode), KOBLVRStorage::Input, 1);
        stream.WriteSections(KOBLVRStorage::Input);
    }
    void WriteOutput(KOBLVRStream& stream) const override {
        stream.GetStorage().AddSection("#!RUNS", "", KOBLVRString(runs), KOBLVRStorage::Output, 2);
        stream.WriteSections(KOBLVRStorage::Output);
    }
    KOBLVRString GetOperatorName() override { return GetOperatorInfo().GetName(); }

    int mode = 0;
    int runs = 0;

protected:
    OperatorInfo& GetOperatorInfo() override {
        static OperatorInfo info("Counting", "CT", "LVRTest");
        return info;
    }

private:
    int* m_alive;
};

} // namespace

TEST(KOBLVROperator, RunsWriteEachReplayPartOnce) {
    int alive = 0;
    std::ostringstream out;
    KOBLVRStream stream(&out);
    Counting* op = new Counting(&alive);
    EXPECT_EQ(op->Run(), 1);
    op->SetReplayStream(&stream);
    op->mode = 4;
    EXPECT_EQ(op->Run(), 2);
    op->mode = 6;
    EXPECT_EQ(op->Run(), 3);
    EXPECT_EQ(out.str(), "#!MODE\n4\n#!RUNS\n2\n#!MODE\n6\n#!RUNS\n3\n");
    EXPECT_EQ(op->GetOperatorName(), "Counting");
    EXPECT_EQ(op->GetOperatorShortName(), "CT");
    EXPECT_EQ(op->GetVersionOfStream(), 0);
    EXPECT_TRUE(op->CheckInput(out));
    EXPECT_TRUE(op->CheckOutput(stream));
    op->Remove();
    EXPECT_EQ(alive, 0);
}
