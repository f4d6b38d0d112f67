// Tests of the design of column groups through the job runner: the sheet and the bar items of
// a group land together, a group the design cannot carry keeps no bars, the choice of groups.
#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "bars/steel_store.h"
#include "beams/beam_job_fixture.h"
#include "columns/column_records.h"
#include "core/error.h"
#include "floors/floors.h"
#include "jobs/column_design_job.h"
#include "jobs/column_groups_store.h"
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
    // The interaction chart stands beside the sheet, under the sheet's name.
    EXPECT_EQ(first.files, (std::vector<fs::path>{project() / "ClGrp_F1-Gr-C1.Analy",
                                                  project() / "ClGrp_F1-Gr-C1.svg"}));
    const std::string chart = test::readBytes(project() / "ClGrp_F1-Gr-C1.svg");
    EXPECT_NE(chart.find("> Gamma ="), std::string::npos);
    EXPECT_NE(chart.find(">Pn/(Fc*b^2)<"), std::string::npos);
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
    // Too small for its axial load, the group has no curves to chart; its chart file says so
    // in place of a chart an earlier design may have left.
    const std::string none = test::readBytes(project() / "ClGrp_F1-Gr-C2.svg");
    EXPECT_NE(none.find(">No interaction chart. The section is too small"), std::string::npos);
    EXPECT_EQ(none.find("Gamma"), std::string::npos);
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
    // The groups' records keep what their designs gave; the rest of each record is as it was.
    const std::vector<ColumnGroup> after = columns::readGroups(project(), ColumnLevel{1});
    EXPECT_EQ(after[0].state, columns::GroupState::Designed);
    EXPECT_EQ(after[0].barCount, r1.finalBars.count);
    EXPECT_EQ(after[0].barDiameterMm, static_cast<std::int16_t>(r1.finalBars.diameterMm));
    EXPECT_FLOAT_EQ(after[0].steelAreaCm2, static_cast<float>(r1.finalBars.areaCm2));
    EXPECT_EQ(after[0].name, "Gr-C1");
    EXPECT_EQ(after[0].dims, group("Gr-C1").dims);
    EXPECT_EQ(after[1].state, columns::GroupState::SectionTooSmall);
    EXPECT_EQ(after[1].barCount, 0);

    // The footing level's group writes an FtClGrp_ sheet and keys its bars to floor 0.
    const JobResult footing = designColumnGroups(
        project(), chooseColumnGroups(project(), {true, 0, {}}, core::CodePage::Windows1252),
        kBars);
    ASSERT_EQ(footing.elements.size(), 1u);
    EXPECT_EQ(footing.elements[0].status, ElementStatus::Designed);
    EXPECT_TRUE(fs::exists(project() / "FtClGrp_Gr-C1.Analy"));
    EXPECT_TRUE(fs::exists(project() / "FtClGrp_Gr-C1.svg"));
    EXPECT_TRUE(db.findItem(bars::makeMainKey(4, 0, 1, 1, 0)));
    // Floor 1's group of the same name keeps its own bars: main bars and ties of each level.
    EXPECT_EQ(db.itemsByMark(kColumnSteelKind, "Gr-C1").size(), 4u);
}

// An edit of a level's groups: the record numbers of the groups after a deleted one shift, and
// the steel and state stored under a number may not pass to the group that takes it.
TEST_F(ColumnJob, StoredGroupsTakeTheirMembersAndTheStoreFollowsTheNumbers) {
    // Three groups of 40 x 40 columns, each carrying 150 t: all three design.
    columns::writeColumns(project(), ColumnLevel{1},
                          {column("C1", 1, 300, 150.0f), column("C2", 2, 300, 150.0f),
                           column("C3", 3, 300, 150.0f), column("C4", 3, 300, 150.0f)});
    columns::writeGroups(project(), ColumnLevel{1},
                         {group("Gr-C1"), group("Gr-C2"), group("Gr-C3")});
    const JobResult run = designColumnGroups(
        project(), chooseColumnGroups(project(), {false, 1, {}}, core::CodePage::Windows1252),
        kBars);
    ASSERT_EQ(run.failing(), 0u);

    const auto stateOf = [&](int number) -> std::optional<bars::DesignState> {
        for (const bars::DesignState& st : bars::OpenIronDatabase(project()).designStates()) {
            if (st.kind == kColumnGroupKind && st.floor == 1 && st.number == number) {
                return st;
            }
        }
        return std::nullopt;
    };
    const auto itemsOf = [&](int number) {
        std::size_t n = 0;
        for (const char* name : {"Gr-C1", "Gr-C2", "Gr-C3"}) {
            for (const bars::SteelItem& item :
                 bars::OpenIronDatabase(project()).itemsByMark(kColumnSteelKind, name)) {
                n += item.beam == number ? 1 : 0;
            }
        }
        return n;
    };

    // Group 2 goes, group 1 gets a wider section, group 3 (now 2) takes C2 as well.
    std::vector<columns::Column> cols = columns::readColumns(project(), ColumnLevel{1});
    cols[1].group = 2;
    cols[2].group = 2;
    cols[3].group = 2;
    ColumnGroup wider = group("Gr-C1");
    wider.dims = {50, 40, 0, 0, 0};
    storeColumnGroups(project(), ColumnLevel{1}, {{wider, 1, true}, {group("Gr-C3"), 3, true}},
                      cols, 3);

    const std::vector<ColumnGroup> stored = columns::readGroups(project(), ColumnLevel{1});
    ASSERT_EQ(stored.size(), 2u);
    EXPECT_EQ(stored[1].name, "Gr-C3");
    EXPECT_EQ(columns::readColumns(project(), ColumnLevel{1})[1].group, 2);
    // Group 1 changed in place: its bars stay until its next design, its state says why.
    ASSERT_TRUE(stateOf(1));
    EXPECT_EQ(stateOf(1)->status, bars::DesignState::Status::NotDesigned);
    EXPECT_EQ(stateOf(1)->failures, kGroupChangedAfterDesign);
    EXPECT_EQ(itemsOf(1), 2u); // its main bars and its ties
    // Number 2 now stands for the former group 3, designed for other members: nothing of the
    // deleted group 2 (nor of group 3's old number) remains.
    EXPECT_FALSE(stateOf(2));
    EXPECT_EQ(itemsOf(2), 0u);
    EXPECT_FALSE(stateOf(3));
    EXPECT_EQ(itemsOf(3), 0u);

    // A column of a group that does not exist is refused before either file is written.
    cols[0].group = 3;
    EXPECT_THROW(storeColumnGroups(project(), ColumnLevel{1}, {{wider, 1, false}}, cols, 2),
                 InputError);
    EXPECT_EQ(columns::readGroups(project(), ColumnLevel{1}).size(), 2u);

    // No group left: the group file goes, the columns stay with none.
    for (columns::Column& c : cols) {
        c.group = 0;
    }
    storeColumnGroups(project(), ColumnLevel{1}, {}, cols, 2);
    EXPECT_FALSE(fs::exists(project() / "COLSGRP.101"));
    EXPECT_EQ(columns::readColumns(project(), ColumnLevel{1}).size(), 4u);
    EXPECT_FALSE(stateOf(1));
}

// An edit of the column list voids the design of exactly the groups whose members changed.
TEST_F(ColumnJob, AChangedMemberVoidsItsGroupsDesignAlone) {
    const std::vector<Column> before = {column("C1", 1, 300, 150.0f), column("C2", 2, 300, 150.0f),
                                        column("C3", 2, 300, 140.0f)};
    columns::writeColumns(project(), ColumnLevel{1}, before);
    columns::writeGroups(project(), ColumnLevel{1}, {group("Gr-C1"), group("Gr-C2")});
    ASSERT_EQ(designColumnGroups(
                  project(),
                  chooseColumnGroups(project(), {false, 1, {}}, core::CodePage::Windows1252), kBars)
                  .failing(),
              0u);
    // The rows in another order change nothing; a member's load does.
    std::vector<Column> after = {before[2], before[0], before[1]};
    EXPECT_EQ(markGroupsOfChangedColumns(project(), ColumnLevel{1}, before, after), 0);
    after[0].puT = 145.0f;
    EXPECT_EQ(markGroupsOfChangedColumns(project(), ColumnLevel{1}, before, after), 1);
    for (const bars::DesignState& st : bars::OpenIronDatabase(project()).designStates()) {
        if (st.kind == kColumnGroupKind) {
            EXPECT_EQ(st.status, st.number == 2 ? bars::DesignState::Status::NotDesigned
                                                : bars::DesignState::Status::Designed);
        }
    }
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
