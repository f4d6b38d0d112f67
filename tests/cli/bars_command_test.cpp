// End-to-end tests of "orvak-cli bars show": the tables of the program folder's GENERAL
// folder, or the built-in ones, printed without writing anything.
#include <gtest/gtest.h>

#include <algorithm>

#include "cli/cli_runner.h"
#include "support/temp_dir.h"

namespace orvak::cli {
namespace {

namespace fs = std::filesystem;

class CliBars : public ::testing::Test {
protected:
    void SetUp() override { fs::create_directories(general()); }
    fs::path home() const { return m_dir / "home"; }
    fs::path general() const { return home() / "GENERAL"; }
    testing::CliRun run(const std::vector<std::string>& args) const {
        return testing::runCli(home(), m_dir.path(), args);
    }
    test::TempDir m_dir;
};

TEST_F(CliBars, ShowWithoutAFilePrintsTheBuiltInTableAndWritesNothing) {
    const auto r = run({"bars", "show", "roundbar"});
    ASSERT_EQ(r.code, 0) << r.err;
    // 5 mm: 0.15 kg/m and 0.20 cm² through "### " and "###.##"; the eight kept values of a
    // record are not printed.
    EXPECT_NE(r.out.find("\n  5   0.15  0.20\n"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("\n 32   6.31  8.04"), std::string::npos) << r.out;
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 2 + 16); // title, heading, rows
    EXPECT_NE(r.err.find("built-in table"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(general()));
}

TEST_F(CliBars, ShowPrintsTheRowsInUseOfAFile) {
    // One SPACING.DAT record: "1", 10.0 (0x41200000), 2.83 (0x40351EB8), 19 zero singles.
    test::writeBytes(general() / "SPACING.DAT", std::string("1") +
                                                    std::string("\x00\x00\x20\x41", 4) +
                                                    "\xB8\x1E\x35\x40" + std::string(76, '\0'));
    const auto r = run({"bars", "show", "SPACING"});
    ASSERT_EQ(r.code, 0) << r.err;
    const std::string zeros = [] {
        std::string z;
        for (int i = 0; i < 14; ++i) {
            z += "   0.00";
        }
        return z;
    }();
    EXPECT_NE(r.out.find("\n10.0      2.83" + zeros + "\n"), std::string::npos) << r.out;
    EXPECT_EQ(r.err, "");

    const auto mesh = run({"bars", "show", "netiron"});
    ASSERT_EQ(mesh.code, 0);
    EXPECT_EQ(std::count(mesh.out.begin(), mesh.out.end(), '\n'), 3); // headings only
    EXPECT_FALSE(fs::exists(general() / "NETIRON.DAT"));
}

} // namespace
} // namespace orvak::cli
