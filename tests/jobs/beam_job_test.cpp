// Tests of the design of stored beams through the job runner: listings, case files and steel
// items of a two-span beam imported from JSON, replacement of earlier items, failures.
#include <gtest/gtest.h>

#include <algorithm>

#include <cmath>
#include <map>

#include "bars/steel_store.h"
#include "beams/beam_job.h"
#include "beams/beam_job_fixture.h"
#include "beams/case_files.h"
#include "core/error.h"
#include "core/rtf_text.h"
#include "jobs/beam_design_job.h"
#include "model/model_json.h"
#include "support/temp_dir.h"
#include "support/unprivileged.h"

namespace orvak::beams {
namespace {

namespace fs = std::filesystem;

using jobs::designStoredBeam;
using jobs::ElementStatus;
using model::modelFromJson;
using model::writeProjectModel;
using testing::twoBeamModel;
using testing::writeBarTable;

class BeamJob : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(project());
        writeBarTable(general());
    }
    void import(const std::string& json) {
        writeProjectModel(project(), modelFromJson(nlohmann::json::parse(json)));
    }
    fs::path project() const { return m_dir / "Job.prj"; }
    /// The steel items of beam B1 by their description.
    std::map<std::string, bars::SteelItem> itemsOfB1() const {
        std::map<std::string, bars::SteelItem> byName;
        for (const auto& item :
             bars::OpenIronDatabase(project()).itemsByMark(kBeamSteelKind, "B1")) {
            byName[item.description] = item;
        }
        return byName;
    }
    fs::path general() const { return m_dir / "GENERAL"; }
    test::TempDir m_dir;
};

TEST_F(BeamJob, DesignWritesListingsCaseFilesAndTheSteelOfThatBeamOnly) {
    nlohmann::json model = nlohmann::json::parse(twoBeamModel());
    model["floors"][0]["beams"][0]["sustained_live_percent"] = 50;
    model["floors"][0]["beams"][0]["live_load_duration_months"] = 12;
    import(model.dump());
    const jobs::ElementReport r = designStoredBeam(project(), general(), 1, 1, 2);
    ASSERT_EQ(r.status, ElementStatus::Designed) << (r.failures.empty() ? "" : r.failures[0]);

    for (const char* ext : {".Analy0", ".Analy1", ".Analy2", ".Analy3"}) {
        EXPECT_TRUE(fs::exists(project() / (std::string("F1-B1_1") + ext))) << ext;
    }
    ASSERT_EQ(r.files.size(), 5u);
    // The report document holds the listings under framed headings, and reads as their text
    // in any word processor.
    const std::string report = core::rtfPlainText(test::readBytes(project() / "F1-B1_1.rtf"));
    const std::string flexure = test::readBytes(project() / "F1-B1_1.Analy2");
    EXPECT_NE(report.find(" ==========  FLEXURAL DESIGN  ========== \n"), std::string::npos);
    std::string flexureText = flexure;
    flexureText.erase(std::remove(flexureText.begin(), flexureText.end(), '\r'), flexureText.end());
    EXPECT_NE(report.find(flexureText), std::string::npos);
    EXPECT_NE(report.find("   (kg/cm^2)\n"), std::string::npos);
    // The run's last beam leaves the case files of the interactive analysis.
    for (const auto name : {kLoadCasesFile, kCasesT1File, kCasesT2File, kCasesT3File}) {
        EXPECT_TRUE(fs::exists(project() / name)) << name;
    }

    // Two equal spans fully loaded: the middle support carries -wL²/8 in every case, with
    // w = 1.4 × 3 t/m = 4.2 t/m and L = 6 m: 4.2 × 36 / 8 = 18.90 t·m.
    const std::string analy1 = test::readBytes(project() / "F1-B1_1.Analy1");
    EXPECT_NE(analy1.find("Support      2           -18.90  -18.90\r\n"), std::string::npos)
        << analy1;
    EXPECT_EQ(analy1.find("\n"), analy1.find("\r\n") + 1); // lines end in CR LF
    // The deflection data of the beam record reach the long-term listing: 50 % of the live
    // load sustained over 12 months, TF = 0.305 ln 12 + 0.654 = 0.305 × 2.4849 + 0.654 = 1.412.
    const std::string analy3 = test::readBytes(project() / "F1-B1_1.Analy3");
    EXPECT_NE(analy3.find("Sustained live load %     =   50.00 %"), std::string::npos) << analy3;
    EXPECT_NE(analy3.find("Time factor               =    1.412"), std::string::npos) << analy3;

    bars::IronDatabase db = bars::OpenIronDatabase(project());
    const auto items = db.itemsByMark(kBeamSteelKind, "B1");
    // Bottom bars of two spans, top bars over three supports, top bars of two fields,
    // stirrups of two spans (two legs: the web of 30 cm is below the four-leg width of 40 cm).
    ASSERT_EQ(items.size(), 9u);
    EXPECT_EQ(db.itemCount(), 9u); // nothing of beam 2
    for (const auto& item : items) {
        EXPECT_EQ(item.slab, 1);
        EXPECT_EQ(item.beam, 1);
        EXPECT_GT(item.quantity, 0.0f);
        EXPECT_EQ(item.mainKey.substr(0, 10), "01.001.001");
    }
    // The top bars over the middle support reach 0.3 of each 600 cm span: 180 + 180 cm.
    EXPECT_EQ(items[3].description, "top support 2");
    EXPECT_FLOAT_EQ(items[3].lengthCm, 360.0f);
    // The field of span 1 never hogs (the moment of a propped span under uniform load is
    // wL²(3/8 · 3/4 - 9/32) = 0 at its three-quarter point and positive before): two
    // hangers over the middle 0.4 × 600 = 240 cm, lapped 40 diameters into the support bars.
    EXPECT_EQ(items[5].description, "top span 1");
    EXPECT_FLOAT_EQ(items[5].quantity, 2.0f);
    EXPECT_FLOAT_EQ(items[5].lengthCm, 240.0f + 2 * 40 * items[5].diameterMm / 10.0f);
    EXPECT_EQ(r.steelItems, 9u);
}

TEST_F(BeamJob, BarsEndInsideTheConcreteAndACantileversTopBarsReachItsTip) {
    // B1: a 600 cm span on a 40 cm wide end support, then a 600 cm overhang with a free tip.
    import(twoBeamModel(R"([{"code": 2, "width_cm": 40}, {"code": 2}, {"code": 0}])"));
    designStoredBeam(project(), general(), 1, 1, 2);
    std::map<std::string, bars::SteelItem> byName = itemsOfB1();
    // Hand rules, side cover 2.5 cm: at the end support the bar reaches the far face, 40/2 -
    // 2.5 = 17.5 cm past the axis, and hooks 12 db; at the inner joint it runs on 40 db; at
    // the tip it stops 2.5 cm short.
    const auto endSupport = [](double db) { return 17.5 + 12 * db; };
    ASSERT_TRUE(byName.count("bottom span 1"));
    const double db1 = byName["bottom span 1"].diameterMm / 10.0;
    EXPECT_FLOAT_EQ(byName["bottom span 1"].lengthCm,
                    std::ceil(endSupport(db1) + 600 + 40 * db1 - 1e-6));
    ASSERT_TRUE(byName.count("bottom span 2"));
    const double db2 = byName["bottom span 2"].diameterMm / 10.0;
    EXPECT_FLOAT_EQ(byName["bottom span 2"].lengthCm, std::ceil(40 * db2 + 600 - 2.5 - 1e-6));
    // Over the inner support: 0.3 × 600 = 180 cm into span 1, the whole overhang less the
    // cover into span 2: 180 + 597.5 = 777.5, rounded up to 778 cm. No bars of the tip itself.
    ASSERT_TRUE(byName.count("top support 2"));
    EXPECT_FLOAT_EQ(byName["top support 2"].lengthCm, 778.0f);
    EXPECT_FALSE(byName.count("top support 3"));
    ASSERT_TRUE(byName.count("top support 1"));
    const double dt = byName["top support 1"].diameterMm / 10.0;
    EXPECT_FLOAT_EQ(byName["top support 1"].lengthCm, std::ceil(endSupport(dt) + 180 - 1e-6));

    // A support of unknown width (0): the hooked development length ldh = 0.075 × 4200 /
    // sqrt(250) db = 19.922 db (at least 15 cm) past the axis stands for it.
    fs::remove_all(project());
    fs::create_directories(project());
    import(twoBeamModel(R"([{"code": 2}, {"code": 2}, {"code": 0}])"));
    designStoredBeam(project(), general(), 1, 1, 2);
    const bars::SteelItem top = itemsOfB1().at("top support 1");
    const double d = top.diameterMm / 10.0;
    EXPECT_FLOAT_EQ(top.lengthCm, std::ceil(std::max(19.922 * d, 15.0) + 12 * d + 180 - 1e-6));
}

TEST_F(BeamJob, AFieldThatHogsGetsTopBarsOverItsWholeLength) {
    // 8, 2 and 8 m under 3 t/m: the short middle span hogs from end to end (its moment stays
    // below -wL²/8 = -1.5 t·m of its own load against support moments near -20 t·m), so its
    // top bars run the whole 200 cm and 40 diameters past both inner joints.
    nlohmann::json model = nlohmann::json::parse(twoBeamModel());
    nlohmann::json& b1 = model["floors"][0]["beams"][0];
    b1["spans"].push_back(b1["spans"][0]);
    b1["spans"][0]["length_m"] = 8.0;
    b1["spans"][1]["length_m"] = 2.0;
    b1["spans"][2]["length_m"] = 8.0;
    b1["supports"].push_back(b1["supports"][0]);
    import(model.dump());
    designStoredBeam(project(), general(), 1, 1, 2);
    std::map<std::string, bars::SteelItem> byName = itemsOfB1();
    ASSERT_TRUE(byName.count("top span 2"));
    const double db2 = byName["top span 2"].diameterMm / 10.0;
    EXPECT_FLOAT_EQ(byName["top span 2"].lengthCm, std::ceil(200 + 2 * 40 * db2 - 1e-6));
    EXPECT_GT(byName["top span 2"].quantity, 0.0f);
}

TEST_F(BeamJob, TheBarSettingsBoundEveryChoice) {
    // At least three top bars of 16 mm, and 16 mm the only main bar allowed: the pinned end
    // supports, with no moment, get three 16 mm bars, and every other bar is 16 mm too.
    nlohmann::json model = nlohmann::json::parse(twoBeamModel());
    model["floors"][0]["beams"][0]["settings"] = {
        {"MINUPSQ", 3}, {"MINUPSD", 16}, {"DSTXT", {16, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}}};
    import(model.dump());
    designStoredBeam(project(), general(), 1, 1, 2);
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    for (const auto& item : db.itemsByMark(kBeamSteelKind, "B1")) {
        if (item.description.starts_with("stirrups")) {
            continue;
        }
        EXPECT_FLOAT_EQ(item.diameterMm, 16.0f) << item.description;
        if (item.description == "top support 1") {
            EXPECT_FLOAT_EQ(item.quantity, 3.0f);
        }
    }
    // A smallest diameter above the largest cannot be met: refused with the reason.
    model["floors"][0]["beams"][0]["settings"] = {{"MINDCALC", 25}, {"MAXDCALC", 10}};
    EXPECT_THROW(modelFromJson(model), InputError);
}

TEST_F(BeamJob, ASecondRunReplacesTheBeamsItemsAndKeepsOthers) {
    import(twoBeamModel());
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        bars::SteelItem stale;
        stale.mainKey = bars::makeMainKey(1, 1, 1, 99, 0);
        stale.element = "OLD NAME";
        stale.slab = 1;
        stale.beam = 1;
        stale.mark = 99;
        stale.general = 1;
        stale.quantity = 4;
        db.saveItem(stale);
        bars::SteelItem other = stale;
        other.mainKey = bars::makeMainKey(3, 0, 5, 1, 0);
        other.element = "EXTRA";
        other.general = 3;
        other.slab = 0;
        other.beam = 5;
        db.saveItem(other);
    }
    designStoredBeam(project(), general(), 1, 1, 2);
    designStoredBeam(project(), general(), 1, 1, 2);
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_EQ(db.itemsByMark(kBeamSteelKind, "B1").size(), 9u);
    EXPECT_FALSE(db.findItem(bars::makeMainKey(1, 1, 1, 99, 0)));
    EXPECT_TRUE(db.findItem(bars::makeMainKey(3, 0, 5, 1, 0)));
    EXPECT_EQ(db.itemCount(), 10u);
}

TEST_F(BeamJob, BeamsOfTheSameNameOnTwoFloorsKeepTheirOwnListings) {
    // Floor 1's B1 spans 6 m under 3 t/m, floor 2's B1 spans 4 m under 2 + 1 t/m: the middle
    // support of floor 1's two spans carries 1.4 × 3 × 6² / 8 = 18.90 t·m, which floor 2's
    // single span on two pins never shows.
    nlohmann::json model = nlohmann::json::parse(twoBeamModel());
    nlohmann::json upper = model["floors"][0];
    upper["number"] = 2;
    upper["beams"].erase(0);          // B2 of floor 1 becomes beam 1 of floor 2 ...
    upper["beams"][0]["name"] = "B1"; // ... under the name floor 1 uses too
    model["floors"].push_back(upper);
    writeProjectModel(project(), modelFromJson(model));

    designStoredBeam(project(), general(), 1, 1, 2);
    designStoredBeam(project(), general(), 2, 1, 2);
    const std::string lower = test::readBytes(project() / "F1-B1_1.Analy1");
    const std::string higher = test::readBytes(project() / "F2-B1_1.Analy1");
    EXPECT_NE(lower.find("-18.90"), std::string::npos) << lower;
    EXPECT_EQ(higher.find("-18.90"), std::string::npos) << higher;
}

TEST_F(BeamJob, ListingsAndStoreChangeTogetherOrNotAtAll) {
    import(twoBeamModel());
    designStoredBeam(project(), general(), 1, 1, 2);
    const std::string listing = test::readBytes(project() / "F1-B1_1.Analy2");
    std::size_t items = 0;
    { items = bars::OpenIronDatabase(project()).itemCount(); }
    // The beam changes: 6 t/m instead of 3, so a new design would change every listing.
    std::vector<BeamRecord> beams = readBeamFile(project(), 1);
    beams[0].spans[0].loads[loadIndex(LoadKind::Uniform)].dead = 6.0f;
    beams[0].spans[1].loads[loadIndex(LoadKind::Uniform)].dead = 6.0f;
    writeBeamFile(project(), 1, beams);

    // A folder standing where a listing goes: nothing is written, the store keeps its items,
    // and the beam is reported not designed with the reason.
    fs::remove(project() / "F1-B1_1.Analy3");
    fs::create_directory(project() / "F1-B1_1.Analy3");
    const jobs::ElementReport blocked = designStoredBeam(project(), general(), 1, 1, 2);
    EXPECT_EQ(blocked.status, ElementStatus::NotDesigned);
    ASSERT_EQ(blocked.failures.size(), 1u);
    EXPECT_NE(blocked.failures[0].find("something other than a file"), std::string::npos);
    EXPECT_EQ(test::readBytes(project() / "F1-B1_1.Analy2"), listing);
    EXPECT_EQ(bars::OpenIronDatabase(project()).itemCount(), items);
    for (const auto& entry : fs::directory_iterator(project())) {
        EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos)
            << "a temporary was left: " << entry.path();
    }
    fs::remove(project() / "F1-B1_1.Analy3");

    // A store that cannot be written (the user may write the folder, not Iron.db): the job
    // stops before any listing is replaced.
    fs::permissions(project(), fs::perms::all);
    fs::permissions(project() / "Iron.db",
                    fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    const int outcome = test::runUnprivileged([&] {
        try {
            return designStoredBeam(project(), general(), 1, 1, 2).status ==
                           ElementStatus::NotDesigned
                       ? 0
                       : 1;
        } catch (const FileError&) {
            return 0;
        }
    });
    EXPECT_EQ(outcome, 0);
    EXPECT_EQ(test::readBytes(project() / "F1-B1_1.Analy2"), listing);
    fs::permissions(project() / "Iron.db", fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(bars::OpenIronDatabase(project()).itemCount(), items);

    // Both writable again: the new design replaces listings and items.
    designStoredBeam(project(), general(), 1, 1, 2);
    EXPECT_NE(test::readBytes(project() / "F1-B1_1.Analy2"), listing);
}

TEST_F(BeamJob, InputProblemsAreRefusedWithASentence) {
    import(twoBeamModel());
    EXPECT_THROW(designStoredBeam(project(), general(), 1, 3, 2), InputError);
    writeBarTable(general(), {{0, 0, 0}}); // a record in use without a diameter
    try {
        designStoredBeam(project(), general(), 1, 1, 2);
        FAIL() << "a bar table without a bar was accepted";
    } catch (const InputError& e) {
        EXPECT_NE(std::string(e.what()).find("enter the bar table"), std::string::npos);
    }
    EXPECT_FALSE(fs::exists(project() / "F1-B1_1.Analy1"));

    // A 16 mm bar whose area reads 1e-30 cm² (π 1.6² / 4 = 2.01 cm² for a round bar): the
    // table is refused by file, row and value before anything is designed.
    writeBarTable(general(), {{16, 1.58f, 1e-30f}});
    try {
        designStoredBeam(project(), general(), 1, 1, 2);
        FAIL() << "a bar of 1e-30 cm2 was accepted";
    } catch (const InputError& e) {
        const std::string what = e.what();
        EXPECT_NE(what.find("ROUNDBAR.DAT"), std::string::npos) << what;
        EXPECT_NE(what.find("16 mm bar (row 1)"), std::string::npos) << what;
        EXPECT_NE(what.find("2.01 cm2"), std::string::npos) << what;
    }
    EXPECT_FALSE(fs::exists(project() / "F1-B1_1.Analy1"));

    BeamRecord odd;
    odd.floor = 0;
    odd.name = "A/B:C*  ";
    odd.number = 12;
    EXPECT_EQ(listingBaseName(odd), "F0-A_B_C__12");
    odd.name = "";
    EXPECT_EQ(listingBaseName(odd), "F0-Beam_12");
}

} // namespace
} // namespace orvak::beams
