#include "ModelTestSupport.h"

#include <cstdlib>
#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;

std::string FileText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST(KOBWBModelGraphDump, WritesEveryEquationAndNodeWithKindTextUnitAndPlace) {
    ParsedModel parsed("x + 2 mm = 10 mm;\n"
                       "  if (a < b) then (c = -sin(d)) else (c = 2 Pi/3);\n"
                       "y^2;\n");
    ASSERT_EQ(parsed.errors, 0) << parsed.err;
    std::string dump;
    KOBWBModelGraphDump::Write(parsed.model, dump);
    EXPECT_EQ(dump, "WBGraph 1\n"
                    "equation 1 \"=\" 1:1 left 0 right 3\n"
                    "node 0 operator \"+\" 1:1 children 1 2\n"
                    "node 1 variable \"x\" 1:1\n"
                    "node 2 constant \"2\" unit \"mm\" 1:5\n"
                    "node 3 constant \"10\" unit \"mm\" 1:12\n"
                    "equation 2 \"\" 2:3 left 4 right -\n"
                    "node 4 operator \"if\" 2:3 children 5 8 13\n"
                    "node 5 operator \"<\" 2:7 children 6 7\n"
                    "node 6 variable \"a\" 2:7\n"
                    "node 7 variable \"b\" 2:11\n"
                    "node 8 operator \"==\" 2:20 children 9 10\n"
                    "node 9 variable \"c\" 2:20\n"
                    "node 10 operator \"-\" 2:24 children 11\n"
                    "node 11 operator \"sin\" 2:25 children 12\n"
                    "node 12 variable \"d\" 2:29\n"
                    "node 13 operator \"==\" 2:39 children 14 15\n"
                    "node 14 variable \"c\" 2:39\n"
                    "node 15 operator \"/\" 2:43 children 16 19\n"
                    "node 16 operator \"*\" 2:43 children 17 18\n"
                    "node 17 constant \"2\" 2:43\n"
                    "node 18 constant \"Pi\" 2:43\n"
                    "node 19 constant \"3\" 2:48\n"
                    "equation 3 \"\" 3:1 left 20 right -\n"
                    "node 20 operator \"^\" 3:1 children 21 22\n"
                    "node 21 variable \"y\" 3:1\n"
                    "node 22 constant \"2\" 3:3\n");

    std::ostringstream stream;
    EXPECT_TRUE(KOBWBModelGraphDump::Write(parsed.model, stream));
    EXPECT_EQ(stream.str(), dump);
    KOBWBModel empty;
    std::string nothing;
    KOBWBModelGraphDump::Write(empty, nothing);
    EXPECT_EQ(nothing, "WBGraph 1\n");
}

// Restores the two variables of the dump when a test ends.
class KOBWBModelGraphDumpFiles : public ::testing::Test {
protected:
    void SetUp() override {
        m_folder = fs::path(::testing::TempDir()) / ("kobwbx-graph-dump-" + std::to_string(::getpid()));
        fs::remove_all(m_folder);
        ASSERT_TRUE(fs::create_directories(m_folder));
    }
    void TearDown() override {
        ::unsetenv("ADL_ODT_OUT");
        ::unsetenv("ODT_LOG_NAME");
        fs::remove_all(m_folder);
    }
    fs::path m_folder;
};

TEST_F(KOBWBModelGraphDumpFiles, WritesNumberedFilesIntoTheFolderTheEnvironmentNames) {
    ParsedModel parsed("a + b = 3;\nb = 2 deg;\n");
    ASSERT_EQ(parsed.errors, 0) << parsed.err;
    std::string expected;
    KOBWBModelGraphDump::Write(parsed.model, expected);
    std::string path = "unchanged";

    ::unsetenv("ADL_ODT_OUT");
    EXPECT_EQ(KOBWBModelGraphDump::WriteFile(parsed.model, &path), KOBWBModelGraphDump::NotRequested);
    EXPECT_EQ(path, "unchanged");
    EXPECT_TRUE(fs::is_empty(m_folder));

    ::setenv("ADL_ODT_OUT", m_folder.c_str(), 1);
    ::setenv("ODT_LOG_NAME", "solve", 1);
    ASSERT_EQ(KOBWBModelGraphDump::WriteFile(parsed.model, &path), KOBWBModelGraphDump::Written);
    EXPECT_EQ(fs::path(path), m_folder / "solve.WBGraph");
    EXPECT_EQ(FileText(path), expected);
    EXPECT_EQ(KOBWBModelGraphDump::WriteFile(parsed.model, &path), KOBWBModelGraphDump::Written);
    EXPECT_EQ(fs::path(path), m_folder / "solve_2.WBGraph");

    // Each conversion writes the next file, and converts as before.
    KOBWBFactory factory;
    KOBLVRListPKOBWBVarNode variableNodes;
    KOBLVRListPKOBWBVariable factoryVariables;
    EXPECT_EQ(parsed.model.FillFactory(factory, parsed.ids, -1, variableNodes, factoryVariables), 2);
    EXPECT_EQ(FileText(m_folder / "solve_3.WBGraph"), expected);

    // Without a log name, the default one, numbered on its own.
    ::unsetenv("ODT_LOG_NAME");
    ASSERT_EQ(KOBWBModelGraphDump::WriteFile(parsed.model, &path), KOBWBModelGraphDump::Written);
    EXPECT_EQ(fs::path(path), m_folder / (std::string(KOBWBModelGraphDump::DefaultLogName) + ".WBGraph"));
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()), 4);
}

TEST_F(KOBWBModelGraphDumpFiles, ABadFolderFailsWithoutStoppingTheConversion) {
    ParsedModel parsed("a = 3;\n");
    ASSERT_EQ(parsed.errors, 0) << parsed.err;
    const fs::path missing = m_folder / "missing";
    const fs::path notAFolder = m_folder / "file";
    std::ofstream(notAFolder) << "x";
    EXPECT_EQ(KOBWBModelGraphDump::WriteFileInto(parsed.model, missing.c_str()), KOBWBModelGraphDump::Failed);
    EXPECT_EQ(KOBWBModelGraphDump::WriteFileInto(parsed.model, notAFolder.c_str()), KOBWBModelGraphDump::Failed);
    EXPECT_EQ(KOBWBModelGraphDump::WriteFileInto(parsed.model, ""), KOBWBModelGraphDump::NotRequested);
    EXPECT_EQ(KOBWBModelGraphDump::WriteFileInto(parsed.model, nullptr), KOBWBModelGraphDump::NotRequested);

    ::setenv("ADL_ODT_OUT", missing.c_str(), 1);
    KOBWBFactory factory;
    KOBLVRListPKOBWBVarNode variableNodes;
    KOBLVRListPKOBWBVariable factoryVariables;
    EXPECT_EQ(parsed.model.FillFactory(factory, parsed.ids, -1, variableNodes, factoryVariables), 1);
    EXPECT_EQ(factory.GetNbOfEquations(), 1);
    EXPECT_FALSE(fs::exists(missing));
}

} // namespace
