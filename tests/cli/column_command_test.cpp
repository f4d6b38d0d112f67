// End-to-end tests of the column groups through orvak-cli: "design --columns" with one line
// per group and the problems at the end, and "column design --json" with the sheet's values.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "beams/beam_job_fixture.h"
#include "cli/cli_runner.h"
#include "columns/column_records.h"
#include "floors/floors.h"
#include "support/temp_dir.h"

namespace orvak::cli {
namespace {

namespace fs = std::filesystem;

columns::Column column(const char* name, std::int16_t group, float puT) {
    columns::Column c;
    c.name = name;
    c.group = group;
    c.heightCm = 300;
    c.dims = {40, 40, 0, 0, 0};
    c.puT = puT;
    return c;
}

columns::ColumnGroup group(const char* name) {
    columns::ColumnGroup g;
    g.name = name;
    g.dims = {40, 40, 0, 0, 0};
    return g;
}

class CliColumns : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(project());
        beams::testing::writeBarTable(home() / "GENERAL");
        floors::writeFloors(project(), {{1, "Ground", 3.0f, 20.0f}});
        // Gr-C1: 100 t on 40 × 40 (short: K L / r = 300 / 12 = 25 < 34); Gr-C2: 300 t, more
        // than phi Pn,max = 0.56 (212.5 · 1584 + 4200 · 16) = 226.1 t can carry.
        columns::writeColumns(project(), {1}, {column("C1", 1, 100), column("C2", 2, 300)});
        columns::writeGroups(project(), {1}, {group("Gr-C1"), group("Gr-C2")});
    }
    fs::path home() const { return m_dir / "home"; }
    fs::path project() const { return m_dir / "Job.prj"; }
    testing::CliRun run(const std::vector<std::string>& args) const {
        return testing::runCli(home(), m_dir.path(), args);
    }
    test::TempDir m_dir;
};

TEST_F(CliColumns, DesignPrintsALinePerGroupAndTheProblemsAtTheEnd) {
    const auto r = run({"design", project().string(), "--columns", "--floor", "1"});
    EXPECT_EQ(r.code, 2) << r.out << r.err;
    // Two items: the main bars and the ties.
    EXPECT_NE(r.out.find("Floor 1, group 1 Gr-C1: designed, 2 steel items\n"), std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("Floor 1, group 2 Gr-C2: section too small, 0 steel items\n"),
              std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("Problems:\n  Gr-C2: The section is too small; enlarge it and design "
                         "the group again.\n"),
              std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("2 column groups designed, 1 with failures.\n"), std::string::npos);
    EXPECT_TRUE(fs::exists(project() / "ClGrp_F1-Gr-C1.Analy"));
    EXPECT_TRUE(fs::exists(project() / "ClGrp_F1-Gr-C2.Analy"));

    const auto footing = run({"design", project().string(), "--columns", "--footing-level"});
    EXPECT_EQ(footing.code, 1);
    EXPECT_NE(footing.err.find("The footing level has no column group to design."),
              std::string::npos)
        << footing.err;
    EXPECT_NE(run({"design", project().string(), "--footing-level"}).code, 0);
}

TEST_F(CliColumns, ASlenderGroupIsDesignedAndListedAmongTheProblems) {
    // 30 × 30, 10 m high: K L / r = 1000 / (0.3 · 30) = 111 > 100. Pc = pi² (Ec I / 2.5) /
    // (K L)² with Ec = 15100 √250 and I = 30⁴ / 12 is 63.6 t, phi Pc = 44.5 t > Pu = 10 t.
    columns::Column slender = column("S1", 1, 10);
    slender.heightCm = 1000;
    slender.dims = {30, 30, 0, 0, 0};
    columns::ColumnGroup g = group("Gr-S");
    g.dims = {30, 30, 0, 0, 0};
    columns::writeColumns(project(), {0}, {slender});
    columns::writeGroups(project(), {0}, {g});
    const auto r = run({"design", project().string(), "--columns", "--footing-level"});
    EXPECT_EQ(r.code, 0) << r.out << r.err;
    EXPECT_NE(r.out.find("Footing level, group 1 Gr-S: designed"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("Problems:\n  Gr-S: (K*L/r) > 100"), std::string::npos) << r.out;
    EXPECT_TRUE(fs::exists(project() / "FtClGrp_Gr-S.Analy"));
}

TEST_F(CliColumns, TheJsonHoldsTheSheetsValues) {
    const auto r =
        run({"column", "design", project().string(), "--floor", "1", "--group", "Gr-C2", "--json"});
    EXPECT_EQ(r.code, 2) << r.err;
    const nlohmann::json j = nlohmann::json::parse(r.out);
    EXPECT_EQ(j["status"], "section too small");
    EXPECT_EQ(j["sheet"], "ClGrp_F1-Gr-C2.Analy");
    // (Pu / phi) / (R (0.85 Fc (1 − Ast%) + Ast% FY)) = (300 000 / 0.7) / (0.8 · 252.375)
    // = 2122.7 cm² > 1600 cm².
    EXPECT_NEAR(j["axial"]["ac_required_cm2"].get<double>(), 300000.0 / 0.7 / (0.8 * 252.375),
                0.05);
    EXPECT_NEAR(j["x"]["klr"].get<double>(), 25.0, 1e-6);
    // Nothing is written by it.
    EXPECT_FALSE(fs::exists(project() / "ClGrp_F1-Gr-C2.Analy"));
    const auto text =
        run({"column", "design", project().string(), "--floor", "1", "--group", "Gr-C1"});
    EXPECT_EQ(text.code, 0) << text.err;
    EXPECT_NE(text.out.find("Required cross section area="), std::string::npos) << text.out;
}

} // namespace
} // namespace orvak::cli
