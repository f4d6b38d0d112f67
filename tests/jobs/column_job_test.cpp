// Tests of the design of column groups through the job runner: the sheet and the bar items of
// a group land together, a group the design cannot carry keeps no bars, the choice of groups.
#include <gtest/gtest.h>

#include <cmath>

#include "bars/steel_store.h"
#include "beams/beam_job_fixture.h"
#include "columns/column_records.h"
#include "core/error.h"
#include "floors/floors.h"
#include "jobs/column_design_job.h"
#include "support/temp_dir.h"

namespace orvak::jobs {
namespace {

namespace fs = std::filesystem;
using columns::Column;
using columns::ColumnGroup;
using columns::ColumnLevel;

const std::vector<bars::BarProperties> kBars = {
    {12.0f, 1.131f, 0.888f}, {14.0f, 1.539f, 1.21f}, {16.0f, 2.011f, 1.58f},
    {20.0f, 3.142f, 2.47f},  {25.0f, 4.909f, 3.85f}, {32.0f, 8.042f, 6.31f},
};

Column column(const char* name, std::int16_t group, float heightCm, float puT) {
    Column c;
    c.name = name;
    c.group = group;
    c.type = 1;
    c.heightCm = heightCm;
    c.dims = {40, 40, 0, 0, 0};
    c.puT = puT;
    return c;
}

ColumnGroup group(const char* name) {
    ColumnGroup g;
    g.name = name;
    g.type = 1;
    g.dims = {40, 40, 0, 0, 0};
    return g;
}

class ColumnJob : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(project());
        floors::writeFloors(project(), {{1, "Ground", 3.0f, 20.0f}, {2, "First", 6.0f, 20.0f}});
    }
    fs::path project() const { return m_dir / "Job.prj"; }
    std::string sheet(const char* name) const {
        std::string s = test::readBytes(project() / name);
        std::erase(s, '\r');
        return s;
    }
    test::TempDir m_dir;
};

TEST_F(ColumnJob, ARunWritesEachGroupsSheetWithItsBarsAndAFailingGroupKeepsNone) {
    // Group 1 takes the larger load and height of its two members: Pu = 226.128 t, L = 300 cm.
    // phi Pn,max = 0.8 · 0.7 · (0.85 · 250 · 1584 + 4200 · 16) = 226 128 kg for 40 × 40 with
    // 1 % steel, so the required area is exactly 1600 cm² and the least steel 16 cm².
    // Group 2 carries 300 t, more than phi Pn,max: the section is too small.
    columns::writeColumns(project(), ColumnLevel{1},
                          {column("C1", 1, 280, 200.0f), column("C2", 1, 300, 226.128f),
                           column("C3", 2, 300, 300.0f)});
    columns::writeGroups(project(), ColumnLevel{1}, {group("Gr-C1"), group("Gr-C2")});
    columns::writeColumns(project(), ColumnLevel{0}, {column("F1", 1, 150, 100.0f)});
    columns::writeGroups(project(), ColumnLevel{0}, {group("Gr-C1")});

    // Group 2 once held bars; a design that cannot carry it leaves none.
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        bars::SteelItem old;
        old.mainKey = bars::makeMainKey(4, 1, 2, 1, 0);
        old.element = "Gr-C2";
        old.slab = 1;
        old.beam = 2;
        old.mark = 1;
        old.general = 4;
        old.quantity = 4;
        old.diameterMm = 20;
        old.lengthCm = 350;
        db.replaceElementItems(kColumnSteelKind, 1, 2, {old});
    }

    const std::vector<ChosenGroup> chosen =
        chooseColumnGroups(project(), {false, 1, {}}, core::CodePage::Windows1252);
    ASSERT_EQ(chosen.size(), 2u);
    EXPECT_EQ(chosen[0].group.members, 2);
    EXPECT_FLOAT_EQ(chosen[0].group.puT, 226.128f);
    EXPECT_FLOAT_EQ(chosen[0].group.colLenCm, 300.0f);
    const JobResult run = designColumnGroups(project(), chosen, kBars);
    ASSERT_EQ(run.elements.size(), 2u);

    const ElementReport& first = run.elements[0];
    const columns::ColumnDesignResult r1 = columns::designColumn(chosen[0].group, kBars);
    ASSERT_TRUE(r1.finalBars.found) << first.outcome;
    EXPECT_EQ(first.kind, "column group");
    EXPECT_EQ(first.files, (std::vector<fs::path>{project() / "ClGrp_F1-Gr-C1.Analy"}));
    const std::string s1 = sheet("ClGrp_F1-Gr-C1.Analy");
    EXPECT_NE(s1.find("\nRequired cross section area=   1600 cm2\n"), std::string::npos) << s1;
    // One item: the main bars of both member columns, each the height and an ACI compression
    // lap splice long, 0.071 · fy · db with fy = 4200 · 0.0980665 = 411.9 MPa: for 16 mm
    // bars 46.8 cm, for 20 mm 58.5 cm (at least 30 cm), rounded up to whole centimetres.
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    const auto items = db.itemsByMark(kColumnSteelKind, "Gr-C1");
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].mainKey, "04.001.001.0001.000");
    EXPECT_FLOAT_EQ(items[0].quantity, 2.0f * static_cast<float>(r1.finalBars.count));
    const double lapCm = 0.071 * 411.87930 * r1.finalBars.diameterMm / 10.0;
    EXPECT_FLOAT_EQ(items[0].lengthCm, static_cast<float>(std::ceil(300.0 + lapCm)));
    // Mark 2: the ties of both columns, 10 mm, under a key of their own.
    ASSERT_TRUE(r1.transverse);
    EXPECT_EQ(items[1].mainKey, "04.001.001.0002.000");
    EXPECT_FLOAT_EQ(items[1].diameterMm, 10.0f);
    EXPECT_FLOAT_EQ(items[1].quantity, 2.0f * static_cast<float>(r1.transverse->countPerColumn));
    EXPECT_EQ(items[1].description, "Ties, 2 columns");
    EXPECT_NE(s1.find("\nTIES\nTie diameter= 10 mm\n"), std::string::npos) << s1;
    EXPECT_EQ(first.steelItems, 2u);

    const ElementReport& second = run.elements[1];
    EXPECT_EQ(second.status, ElementStatus::ChecksFailed);
    EXPECT_EQ(second.outcome, "section too small");
    EXPECT_EQ(second.failures,
              (std::vector<std::string>{
                  "The section is too small; enlarge it and design the group again."}));
    EXPECT_TRUE(fs::exists(project() / "ClGrp_F1-Gr-C2.Analy"));
    EXPECT_TRUE(db.itemsByMark(kColumnSteelKind, "Gr-C2").empty());
    EXPECT_FALSE(db.findItem(bars::makeMainKey(4, 1, 2, 1, 0)));

    // The design states of the run, under the column groups' kind.
    int states = 0;
    for (const bars::DesignState& st : db.designStates()) {
        if (st.kind == "column group" && st.floor == 1) {
            ++states;
            EXPECT_EQ(st.status, st.number == 1 ? bars::DesignState::Status::Designed
                                                : bars::DesignState::Status::ChecksFailed);
        }
    }
    EXPECT_EQ(states, 2);

    // The footing level's group writes an FtClGrp_ sheet and keys its bars to floor 0.
    const JobResult footing = designColumnGroups(
        project(), chooseColumnGroups(project(), {true, 0, {}}, core::CodePage::Windows1252),
        kBars);
    ASSERT_EQ(footing.elements.size(), 1u);
    EXPECT_EQ(footing.elements[0].status, ElementStatus::Designed);
    EXPECT_TRUE(fs::exists(project() / "FtClGrp_Gr-C1.Analy"));
    EXPECT_TRUE(db.findItem(bars::makeMainKey(4, 0, 1, 1, 0)));
    // Floor 1's group of the same name keeps its own bars: main bars and ties of each level.
    EXPECT_EQ(db.itemsByMark(kColumnSteelKind, "Gr-C1").size(), 4u);
}

TEST_F(ColumnJob, TheChoiceIsRefusedWithASentenceBeforeAnythingIsDesigned) {
    columns::writeColumns(project(), ColumnLevel{1}, {column("C1", 1, 300, 100.0f)});
    columns::writeGroups(project(), ColumnLevel{1}, {group("Gr-C1"), group("gr-c1")});
    columns::writeGroups(project(), ColumnLevel{2}, {group("Gr-C1")});
    auto refusal = [&](const ColumnGroupSelection& o) {
        try {
            chooseColumnGroups(project(), o, core::CodePage::Windows1252);
        } catch (const InputError& e) {
            return std::string(e.what());
        }
        return std::string("accepted");
    };
    // Two sheets whose names differ only in case would be one file on Windows.
    EXPECT_EQ(refusal({false, 1, {}}),
              "Floor 1 has two groups named gr-c1; rename one. Nothing was designed.");
    EXPECT_EQ(refusal({false, 3, {}}), "The project has no floor 3.");
    EXPECT_EQ(refusal({true, 0, {}}), "The footing level has no column group to design.");
    EXPECT_EQ(refusal({false, 2, "Gr-C9"}), "Floor 2 has no column group named Gr-C9.");
    // A group without members and without a load of its own cannot be designed.
    EXPECT_EQ(refusal({false, 2, {}}), "Floor 2, group 1 (Gr-C1): the group carries no axial "
                                       "load. Nothing was designed.");
}

} // namespace
} // namespace orvak::jobs
