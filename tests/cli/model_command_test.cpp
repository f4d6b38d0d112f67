// End-to-end tests of orvak-cli's import, export and beam analyse commands: byte-exact round
// trip of a project's files, refusal of bad models, and a two-span beam against closed forms.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

#include <nlohmann/json.hpp>

#include "cli/cli_runner.h"
#include "core/file_util.h"
#include "support/temp_dir.h"

namespace orvak::cli {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::CliRun;

// Two equal spans of 5 m, 30 × 60 cm, uniform 2 t/m dead and 1 t/m live, load factors 1 so
// that the full-load case carries w = 3 t/m.
json twoSpanBeam() {
    return json::parse(R"({"name": "B1", "fc": 250, "fy": 4200,
      "spans": [
        {"length_m": 5, "section": {"kind": 2, "dims_cm": [0, 0, 30, 0, 60]},
         "loads": [{"kind": "uniform", "dead": 2, "live": 1}]},
        {"length_m": 5, "section": {"kind": 2, "dims_cm": [0, 0, 30, 0, 60]},
         "loads": [{"kind": "uniform", "dead": 2, "live": 1}]}],
      "supports": [{"code": 2}, {"code": 2}, {"code": 2}],
      "settings": {"FACDEADL": [1, 1], "FACDAYNL": [1, 0]}})");
}

class CliModelBeam : public ::testing::Test {
protected:
    test::TempDir m_dir;

    CliRun run(const std::vector<std::string>& args) const {
        return testing::runCli(m_dir / "home", m_dir.path(), args);
    }
    fs::path writeJson(const std::string& name, const json& j) const {
        const fs::path p = m_dir / name;
        std::ofstream(p) << j.dump(1);
        return p;
    }
    fs::path newProject(const std::string& name) const {
        const fs::path p = m_dir / name;
        fs::create_directory(p);
        return p;
    }
};

using CliModel = CliModelBeam;
using CliBeam = CliModelBeam;

TEST_F(CliModel, ImportExportImportGivesTheSameBytes) {
    json beam = twoSpanBeam();
    beam["spans"][0]["length_m"] = 4.1;         // not a short single
    beam["spans"][1]["loads"][0]["dead"] = 0.1; // nor this
    beam["spans"][1]["loads"].push_back(
        {{"kind", "partial"}, {"dead", 1.0 / 3.0}, {"live", 0.2}, {"a_m", 0.7}, {"length_m", 2.9}});
    beam["spans"][0]["loads"].push_back({{"kind", "triangular"}, {"dead", -0.5}, {"peak", "left"}});
    const json model = {{"format", "orvak-model"},
                        {"version", 1},
                        {"floors",
                         {{{"number", 3},
                           {"name", "Third"},
                           {"level_m", 9.6},
                           {"slab_thickness_cm", 14.5},
                           {"beams", {beam, beam}}},
                          {{"number", 1}, {"name", "Ground"}, {"level_m", 0}}}}};
    const fs::path a = newProject("A.prj");
    const CliRun imported = run({"import", a.string(), writeJson("m.json", model).string()});
    ASSERT_EQ(imported.code, 0) << imported.err;

    const CliRun exported = run({"export", a.string()});
    ASSERT_EQ(exported.code, 0) << exported.err;
    const fs::path again = m_dir / "again.json";
    ASSERT_EQ(run({"export", a.string(), "-o", again.string()}).code, 0);
    EXPECT_EQ(test::readBytes(again), exported.out);

    const fs::path b = newProject("B.prj");
    ASSERT_EQ(run({"import", b.string(), again.string()}).code, 0);
    for (const char* name : {"CIELS.DAT", "BEAMS.3"}) {
        EXPECT_EQ(test::readBytes(a / name), test::readBytes(b / name)) << name;
        EXPECT_FALSE(test::readBytes(a / name).empty()) << name;
    }
    EXPECT_FALSE(fs::exists(b / "BEAMS.1")); // a floor without beams has no beam file

    // The model is never written over a file of a project, and goes only into projects.
    const std::string beams3 = test::readBytes(a / "BEAMS.3");
    const CliRun over = run({"export", a.string(), "-o", (a / "BEAMS.3").string()});
    EXPECT_EQ(over.code, 1);
    EXPECT_NE(over.err.find("is a file of the project"), std::string::npos) << over.err;
    EXPECT_EQ(test::readBytes(a / "BEAMS.3"), beams3);
    EXPECT_EQ(run({"export", a.string(), "-o", (a / "model.json").string()}).code, 0);
    fs::create_directories(m_dir / "plain");
    const CliRun notProject = run({"import", (m_dir / "plain").string(), again.string()});
    EXPECT_EQ(notProject.code, 1);
    EXPECT_NE(notProject.err.find("is not a project folder"), std::string::npos) << notProject.err;
    EXPECT_TRUE(fs::is_empty(m_dir / "plain"));
}

TEST_F(CliModel, BadModelIsRefusedAndNothingWritten) {
    json beam = twoSpanBeam();
    beam["spans"][1]["section"]["kind"] = 9;
    const json model = {{"format", "orvak-model"},
                        {"version", 1},
                        {"floors", {{{"number", 1}, {"beams", {twoSpanBeam(), beam}}}}}};
    const fs::path a = newProject("A.prj");
    const CliRun r = run({"import", a.string(), writeJson("m.json", model).string()});
    EXPECT_EQ(r.code, 1);
    EXPECT_NE(r.err.find("Floor 1, beam 2 (B1), span 2: section kind 9"), std::string::npos)
        << r.err;
    EXPECT_TRUE(fs::is_empty(a));

    // A file cut short, and a number no double holds: one sentence with the place, in the
    // program's words rather than the parser's tags.
    std::string text = model.dump(1);
    test::writeBytes(m_dir / "cut.json", text.substr(0, text.size() / 2));
    const CliRun cut = run({"import", a.string(), (m_dir / "cut.json").string()});
    EXPECT_EQ(cut.code, 1);
    EXPECT_NE(cut.err.find("The file is not valid JSON: at line "), std::string::npos) << cut.err;
    EXPECT_EQ(cut.err.find("json.exception"), std::string::npos) << cut.err;
    test::writeBytes(m_dir / "huge.json", R"({"format": "orvak-model", "version": 1e400})");
    const CliRun huge = run({"import", a.string(), (m_dir / "huge.json").string()});
    EXPECT_EQ(huge.code, 1);
    EXPECT_NE(huge.err.find("The file is not valid JSON"), std::string::npos) << huge.err;
    EXPECT_EQ(huge.err.find("json.exception"), std::string::npos) << huge.err;
    EXPECT_TRUE(fs::is_empty(a));
}

TEST_F(CliBeam, ASpanThatDoesNotSagReportsZeroNotMinusZero) {
    // An uplift on the middle of a double overhang: the middle span rises, the unloaded
    // overhangs dip; under live load (none) nothing moves. Zero deflections print as 0.
    json beam = twoSpanBeam();
    beam["spans"] = json::array();
    for (const double length : {1.5, 6.0, 1.5}) {
        beam["spans"].push_back({{"length_m", length},
                                 {"section", {{"kind", 2}, {"dims_cm", {0, 0, 30, 0, 60}}}},
                                 {"loads", json::array()}});
    }
    beam["spans"][1]["loads"].push_back({{"kind", "uniform"}, {"dead", -1.0}});
    beam["supports"] = {{{"code", 0}}, {{"code", 2}}, {{"code", 2}}, {{"code", 0}}};
    const CliRun r = run({"beam", "analyse", writeJson("up.json", beam).string(), "--json"});
    ASSERT_EQ(r.code, 0) << r.err;
    // The parsed document must outlive the loop that walks it.
    const json out = json::parse(r.out);
    for (const auto& [state, spans] : out["service_deflection_mm"].items()) {
        for (const json& d : spans) {
            EXPECT_FALSE(d.get<double>() == 0.0 && std::signbit(d.get<double>())) << state;
        }
    }
}

TEST_F(CliBeam, TwoSpanFullLoadMatchesClosedForm) {
    const CliRun r =
        run({"beam", "analyse", writeJson("b.json", twoSpanBeam()).string(), "--json"});
    ASSERT_EQ(r.code, 0) << r.err;
    const json j = json::parse(r.out);
    ASSERT_EQ(j["cases"].size(), 3u); // scheme 2 by default: full load, then each span alone
    const json& c = j["cases"][0];
    constexpr double tol = 1e-4; // t, t·m, m
    // Two equal spans under w = 3 t/m, L = 5 m (three-moment equation):
    // M_B = −wL²/8 = −9.375 t·m; R_A = R_C = 3wL/8 = 5.625 t, R_B = 10wL/8 = 18.75 t.
    EXPECT_NEAR(c["support_moments_tm"][1], -9.375, tol);
    EXPECT_NEAR(c["reactions_t"][0], 5.625, tol);
    EXPECT_NEAR(c["reactions_t"][1], 18.75, tol);
    // Span 1: V(L) = −5wL/8; largest sagging 9wL²/128 = 5.2734 t·m at 3L/8.
    EXPECT_NEAR(c["end_shears_t"][0][1], -9.375, tol);
    EXPECT_NEAR(c["span_max_moment_tm"][0], 9.0 * 3.0 * 25.0 / 128.0, tol);
    EXPECT_NEAR(c["span_max_moment_x_m"][1], 5.0 - 1.875, tol);
    // Mid-span of span 1: M = 5.625 · 2.5 − 3 · 2.5² / 2 = 4.6875; V = 5.625 − 7.5 = −1.875.
    const json& mid = c["tenth_points"][0][5];
    EXPECT_NEAR(mid["x_m"], 2.5, tol);
    EXPECT_NEAR(mid["moment_tm"], 4.6875, tol);
    EXPECT_NEAR(mid["shear_t"], -1.875, tol);
    EXPECT_NEAR(j["envelope"]["support_moment_min_tm"][1], -9.375, tol);
    // Dead load 2 t/m = 20 kg/cm: each span is a propped cantilever, largest deflection
    // (39 + 55√33)/65536 · wL⁴/EI with E = 15100√250, I = 30·60³/12 = 540,000 cm⁴.
    const double ei = 15100.0 * std::sqrt(250.0) * 540000.0;
    const double deadMm =
        (39.0 + 55.0 * std::sqrt(33.0)) / 65536.0 * 20.0 * std::pow(500.0, 4) / ei * 10.0;
    EXPECT_NEAR(j["service_deflection_mm"]["dead"][0], deadMm, 1e-4);
    EXPECT_NEAR(j["service_deflection_mm"]["dead_live"][1], deadMm * 1.5, 1e-4);
}

TEST_F(CliBeam, ProjectBeamWritesCaseFilesAndUnstableBeamFails) {
    json model = {{"format", "orvak-model"},
                  {"version", 1},
                  {"floors", {{{"number", 2}, {"beams", {twoSpanBeam()}}}}}};
    const fs::path a = newProject("A.prj");
    ASSERT_EQ(run({"import", a.string(), writeJson("m.json", model).string()}).code, 0);
    const CliRun table =
        run({"beam", "analyse", a.string(), "--floor", "2", "--beam", "1", "--scheme", "1"});
    ASSERT_EQ(table.code, 0) << table.err;
    EXPECT_NE(table.out.find("Envelope"), std::string::npos);
    // One case of scheme 1: one record of each case file (their layout is the case files' test).
    EXPECT_EQ(fs::file_size(a / "LdCases.dat"), 16699u);

    json loose = twoSpanBeam();
    for (auto& s : loose["supports"]) {
        s["code"] = 1;
    }
    const CliRun r = run({"beam", "analyse", writeJson("loose.json", loose).string(), "--json"});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
}

} // namespace
} // namespace orvak::cli
