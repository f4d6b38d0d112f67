// End-to-end tests of the footing groups through orvak-cli: "design --footings" with one line
// per group and its plan, "footing design --json" with the sheet's values, and "design" of a
// whole project: beams, column groups and footing groups in that order.
#include <gtest/gtest.h>

#include <regex>

#include <cmath>
#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "beams/beam_job_fixture.h"
#include "cli/cli_runner.h"
#include "columns/column_records.h"
#include "footings/footing_records.h"
#include "support/temp_dir.h"

namespace orvak::cli {
namespace {

namespace fs = std::filesystem;

columns::Column column(const char* name, std::int16_t group, float puT) {
    columns::Column c;
    c.name = name;
    c.group = group;
    c.heightCm = 150;
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

class CliFootings : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(project());
        beams::testing::writeBarTable(home() / "GENERAL");
    }
    // The footing level: Gr-C1 carries the larger of 60 and 66 t, Gr-C2 124 t; an isolated
    // footing under Gr-C2 and a pile footing under Gr-C1.
    void writeFootingLevel() {
        columns::writeColumns(project(), {0},
                              {column("F1", 1, 60), column("F2", 2, 124), column("F3", 1, 66)});
        columns::writeGroups(project(), {0}, {group("Gr-C1"), group("Gr-C2")});
        footings::FootingGroup iso;
        iso.name = "Gr-Ft1";
        iso.columns[0].group = 2;
        footings::saveFootingGroup(project(), 0, iso);
        footings::FootingGroup pile;
        pile.kind = footings::FootingKind::Pile;
        pile.name = "P1";
        pile.columns[0].group = 1;
        pile.piles = 6;
        footings::saveFootingGroup(project(), 0, pile);
    }
    fs::path home() const { return m_dir / "home"; }
    fs::path project() const { return m_dir / "Job.prj"; }
    testing::CliRun run(const std::vector<std::string>& args) const {
        return testing::runCli(home(), m_dir.path(), args);
    }
    test::TempDir m_dir;
};

TEST_F(CliFootings, DesignPrintsEachGroupsOutcomeAndThePlanItsRecordNowHolds) {
    writeFootingLevel();
    const auto r = run({"design", project().string(), "--footings"});
    // The pile footing is not designed in this version: the run reports a failure.
    EXPECT_EQ(r.code, 2) << r.out << r.err;
    EXPECT_NE(r.out.find("Footing group 2 P1: not designed, 0 steel items\n"), std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("2 footing groups designed, "), std::string::npos) << r.out;
    EXPECT_TRUE(fs::exists(project() / "FtGrp_Gr-Ft1.Analy"));
    EXPECT_TRUE(fs::exists(project() / "FtGrp_P1.Analy"));

    // Whatever the design gave, the line shows the plan the record now holds.
    const footings::FootingGroup g = *footings::readFootingGroup(project(), 1);
    std::smatch m;
    ASSERT_TRUE(std::regex_search(r.out, m,
                                  std::regex("Footing group 1 Gr-Ft1: ([a-z ]+)(, .* cm)?, "
                                             "[0-9]+ steel items\n")))
        << r.out;
    if (g.aCm > 0.0f) {
        EXPECT_EQ(m[2].str(), fmt::format(", {:g} x {:g} x {:g} cm", g.aCm, g.bCm, g.hCm));
    }
    // --footings keeps to the footing groups and takes no floor or beam.
    EXPECT_EQ(run({"design", project().string(), "--footings", "--floor", "1"}).code, 1);
    EXPECT_EQ(run({"design", project().string(), "--footings", "--columns"}).code, 1);
}

TEST_F(CliFootings, FootingDesignJsonPrintsOneGroupsValuesAndWritesNothing) {
    writeFootingLevel();
    const auto r = run({"footing", "design", project().string(), "--group", "P1", "--json"});
    EXPECT_EQ(r.code, 2) << r.err;
    const nlohmann::json j = nlohmann::json::parse(r.out);
    EXPECT_EQ(j["group"], "P1");
    EXPECT_EQ(j["number"], 2);
    EXPECT_EQ(j["kind"], "pile");
    EXPECT_EQ(j["status"], "not designed");
    EXPECT_EQ(j["piles"]["count"], 6);
    ASSERT_EQ(j["columns"].size(), 1u);
    EXPECT_EQ(j["columns"][0]["column_group"], "Gr-C1");
    EXPECT_EQ(j["columns"][0]["pu_t"], 66.0); // the larger of its members' 60 and 66 t
    EXPECT_EQ(j["sheet"], "FtGrp_P1.Analy");
    EXPECT_FALSE(fs::exists(project() / "FtGrp_P1.Analy"));

    const auto sheet = run({"footing", "design", project().string(), "--group", "P1"});
    EXPECT_NE(sheet.out.find("PILE FOOTING"), std::string::npos) << sheet.out;

    // The isolated footing's steps, against a hand calculation with the default settings
    // (soil 2 kg/cm², LF 1.4): P = 124 / 1.4 = 88.571 t, Area = 88 571.4 / 2 = 44 285.7 cm²,
    // (40 + 2x)² = Area gives x = (210.442 − 40) / 2 = 85.221, A = B = 215 cm; a square column
    // has beta c = 1, so Vc = 0.53·0.85·3·√250 is capped at 1.06·0.85·√250 = 14.246 kg/cm².
    const auto iso = run({"footing", "design", project().string(), "--group", "Gr-Ft1", "--json"});
    const nlohmann::json steps = nlohmann::json::parse(iso.out)["steps"];
    EXPECT_NEAR(steps["service_load_t"].get<double>(), 124.0 / 1.4, 1e-4);
    EXPECT_NEAR(steps["area_cm2"].get<double>(), 124000.0 / 1.4 / 2.0, 1e-2);
    EXPECT_NEAR(steps["projection_cm"].get<double>(),
                (std::sqrt(124000.0 / 1.4 / 2.0) - 40.0) / 2.0, 1e-3);
    EXPECT_EQ(nlohmann::json::parse(iso.out)["a_cm"], 215.0);
    EXPECT_NEAR(steps["vc_kgcm2"].get<double>(), 1.06 * 0.85 * std::sqrt(250.0), 1e-9);
    EXPECT_EQ(steps["steel_y"]["bars"]["found"], true);

    const auto missing = run({"footing", "design", project().string(), "--group", "Gr-Ft7"});
    EXPECT_EQ(missing.code, 1);
    EXPECT_NE(missing.err.find("No footing group is named Gr-Ft7."), std::string::npos)
        << missing.err;
}

TEST_F(CliFootings, DesignWithoutAnElementOptionTakesBeamsColumnsAndFootingsInOrder) {
    test::writeBytes(m_dir / "model.json", beams::testing::twoBeamModel());
    ASSERT_EQ(run({"import", project().string(), (m_dir / "model.json").string()}).code, 0);
    writeFootingLevel();
    const auto r = run({"design", project().string()});
    EXPECT_EQ(r.code, 2) << r.out << r.err; // the pile footing
    const auto beams = r.out.find("2 beams designed");
    const auto groups = r.out.find("2 column groups designed");
    const auto footings = r.out.find("2 footing groups designed");
    ASSERT_NE(beams, std::string::npos) << r.out;
    ASSERT_NE(groups, std::string::npos) << r.out;
    ASSERT_NE(footings, std::string::npos) << r.out;
    EXPECT_LT(beams, groups);
    EXPECT_LT(groups, footings);
    EXPECT_TRUE(fs::exists(project() / "F1-B1_1.Analy1"));
    EXPECT_TRUE(fs::exists(project() / "FtClGrp_Gr-C1.Analy"));
    EXPECT_TRUE(fs::exists(project() / "FtGrp_Gr-Ft1.Analy"));

    // A floor's run keeps to that floor: no footing group is designed.
    const auto floor = run({"design", project().string(), "--floor", "1"});
    EXPECT_EQ(floor.code, 0) << floor.out << floor.err;
    EXPECT_EQ(floor.out.find("footing groups"), std::string::npos) << floor.out;
}

} // namespace
} // namespace orvak::cli
