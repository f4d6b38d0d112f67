// End-to-end tests of "orvak-cli design": listings, case files and steel items of an imported
// project, the exit codes of a failing beam and of a missing bar table, and the summary.
#include <gtest/gtest.h>

#include "bars/steel_store.h"
#include "beams/beam_job_fixture.h"
#include "cli/cli_runner.h"
#include "support/temp_dir.h"

namespace orvak::cli {
namespace {

namespace fs = std::filesystem;

class CliDesign : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(project());
        fs::create_directories(home() / "GENERAL");
    }
    fs::path home() const { return m_dir / "home"; }
    fs::path project() const { return m_dir / "Job.prj"; }
    testing::CliRun run(const std::vector<std::string>& args) const {
        return testing::runCli(home(), m_dir.path(), args);
    }
    void importModel() {
        test::writeBytes(m_dir / "model.json", beams::testing::twoBeamModel());
        const auto r = run({"import", project().string(), (m_dir / "model.json").string()});
        ASSERT_EQ(r.code, 0) << r.err;
    }
    void writeBarTable() { beams::testing::writeBarTable(home() / "GENERAL"); }
    test::TempDir m_dir;
};

TEST_F(CliDesign, DesignsEveryBeamAndARepeatReplacesTheSteelItems) {
    importModel(); // B2: one span on two pins, stable
    writeBarTable();
    const auto r = run({"design", project().string()});
    ASSERT_EQ(r.code, 0) << r.out << r.err;
    EXPECT_EQ(r.out.find("Load cases: scheme 3 (full live-load pattern)\n"), 0u) << r.out;
    EXPECT_NE(r.out.find("Floor 1, beam 1 B1: designed"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("Floor 1, beam 2 B2: designed"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("2 beams designed, 0 with failures."), std::string::npos) << r.out;
    EXPECT_TRUE(fs::exists(project() / "F1-B2_2.Analy3"));

    std::size_t first = 0;
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        first = db.itemCount();
        EXPECT_EQ(db.elementNames(), (std::vector<std::string>{"B1", "B2"}));
    }
    const auto again = run({"design", project().string(), "--floor", "1", "--beam", "1"});
    ASSERT_EQ(again.code, 0) << again.err;
    EXPECT_NE(again.out.find("1 beams designed"), std::string::npos) << again.out;
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_EQ(db.itemCount(), first);
}

TEST_F(CliDesign, AnUnstableBeamIsRefusedAtImport) {
    // B2 rests on one hinge and can turn about it: the model is refused, nothing is written.
    test::writeBytes(m_dir / "model.json",
                     beams::testing::twoBeamModel(R"([{"code": 2}, {"code": 2}, {"code": 2}])",
                                                  R"([{"code": 2}, {"code": 0}])"));
    const auto r = run({"import", project().string(), (m_dir / "model.json").string()});
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find("Floor 1, beam 2 (B2): the beam rests on one hinged support"),
              std::string::npos)
        << r.err;
    EXPECT_TRUE(fs::is_empty(project()));
}

TEST_F(CliDesign, ABadRecordStopsTheRunBeforeAnythingIsWritten) {
    importModel();
    writeBarTable();
    // Beam 2's uniform dead load (record 2, load values at 1131) becomes NaN, as a damaged
    // file or another program could leave it; beam 1 comes first and is sound.
    std::string bytes = test::readBytes(project() / "BEAMS.1");
    const std::uint8_t nan[4] = {0x00, 0x00, 0xC0, 0x7F};
    bytes.replace(16699 + 1131, 4, reinterpret_cast<const char*>(nan), 4);
    test::writeBytes(project() / "BEAMS.1", bytes);

    const auto r = run({"design", project().string()});
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find("Floor 1, beam 2 (B2): span 1, uniform load: the value is not a number"),
              std::string::npos)
        << r.err;
    EXPECT_FALSE(fs::exists(project() / "F1-B1_1.Analy1"));
    EXPECT_FALSE(fs::exists(project() / "Iron.db"));

    const auto none = run({"design", project().string(), "--beam", "7"});
    EXPECT_EQ(none.code, 1);
    EXPECT_NE(none.err.find("No floor of the project has a beam 7."), std::string::npos);
    // Floor and beam numbers start at 1; 0 is no shorthand for "all".
    EXPECT_EQ(run({"design", project().string(), "--floor", "0"}).code, 1);
    EXPECT_EQ(run({"design", project().string(), "--beam", "0"}).code, 1);
    // A folder that is no project.
    const auto notProject = run({"design", m_dir.path().string()});
    EXPECT_EQ(notProject.code, 1);
    EXPECT_NE(notProject.err.find("is not a project folder"), std::string::npos) << notProject.err;
}

TEST_F(CliDesign, MissingBarTableUsesTheBuiltInOneAndABrokenOneStopsTheRun) {
    importModel();
    // No ROUNDBAR.DAT: the built-in table, as a first start writes it, and a note.
    const auto builtIn = run({"design", project().string()});
    ASSERT_EQ(builtIn.code, 0) << builtIn.out << builtIn.err;
    EXPECT_NE(builtIn.err.find("built-in table is used"), std::string::npos) << builtIn.err;
    EXPECT_TRUE(fs::exists(project() / "F1-B1_1.Analy2"));

    // A table whose only record has no diameter is the user's own broken table: nothing is
    // designed, nothing is written, and the user is asked to enter the bars.
    fs::remove_all(project());
    fs::create_directories(project());
    importModel();
    std::uint8_t rec[45] = {'1'};
    test::writeBytes(home() / "GENERAL" / "ROUNDBAR.DAT",
                     std::string(reinterpret_cast<const char*>(rec), sizeof rec));
    const auto r = run({"design", project().string()});
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find("enter the bar table"), std::string::npos) << r.err;
    EXPECT_FALSE(fs::exists(project() / "F1-B1_1.Analy1"));
    EXPECT_FALSE(fs::exists(project() / "Iron.db"));

    writeBarTable();
    const auto missing = run({"design", project().string(), "--floor", "4"});
    EXPECT_EQ(missing.code, 1);
    EXPECT_NE(missing.err.find("no floor 4"), std::string::npos) << missing.err;
}

} // namespace
} // namespace orvak::cli
