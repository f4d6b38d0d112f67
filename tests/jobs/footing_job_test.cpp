// Tests of the design of footing groups through the job runner: each group's sheet, state and
// record land together, the pile footing keeps no bars, the bar items of a footing, the choice
// of groups, and editing or removing a group after its design.
#include <gtest/gtest.h>

#include "bars/steel_store.h"
#include "columns/column_records.h"
#include "core/error.h"
#include "footings/footing_records.h"
#include "jobs/footing_design_job.h"
#include "support/temp_dir.h"

namespace orvak::jobs {
namespace {

namespace fs = std::filesystem;
using footings::FootingGroup;
using footings::FootingKind;

const std::vector<bars::BarProperties> kBars = {
    {12.0f, 1.131f, 0.888f}, {14.0f, 1.539f, 1.21f}, {16.0f, 2.011f, 1.58f}};

columns::ColumnGroup columnGroup(const char* name, float a, float b) {
    columns::ColumnGroup g;
    g.name = name;
    g.type = 1;
    g.dims = {a, b, 0, 0, 0};
    return g;
}

columns::Column column(const char* name, std::int16_t group, float puT) {
    columns::Column c;
    c.name = name;
    c.group = group;
    c.heightCm = 150.0f;
    c.dims = {40, 40, 0, 0, 0};
    c.puT = puT;
    return c;
}

FootingGroup footing(const char* name, FootingKind kind, std::int16_t g1, std::int16_t g2 = 0) {
    FootingGroup g;
    g.kind = kind;
    g.name = name;
    g.columns[0] = {g1, "", kind == FootingKind::Combined ? 20.0f : 0.0f, 0.0f};
    g.columns[1] = {g2, "", kind == FootingKind::Combined ? 300.0f : 0.0f, 0.0f};
    return g;
}

const bars::DesignState* stateOf(const std::vector<bars::DesignState>& states, int number) {
    for (const auto& s : states) {
        if (s.kind == kFootingGroupKind && s.number == number) {
            return &s;
        }
    }
    return nullptr;
}

class FootingJob : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(project());
        const columns::ColumnLevel level{0};
        columns::writeColumns(
            project(), level,
            {column("C1", 1, 66.0f), column("C2", 2, 124.0f), column("C3", 1, 68.0f)});
        columns::writeGroups(project(), level,
                             {columnGroup("Gr-C1", 30, 40), columnGroup("Gr-C2", 40, 40)});
        footings::saveFootingGroup(project(), 0, footing("Gr-Ft1", FootingKind::Isolated, 1));
        footings::saveFootingGroup(project(), 0, footing("Gr-Ft2", FootingKind::Combined, 1, 2));
        footings::saveFootingGroup(project(), 0, footing("Pile 1", FootingKind::Pile, 2));
    }
    fs::path project() const { return m_dir / "Job.prj"; }
    test::TempDir m_dir;
};

TEST_F(FootingJob, ARunWritesEachGroupsSheetStateAndRecordAndThePileKeepsNoBars) {
    // The pile footing once held bars; its run leaves none.
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        bars::SteelItem old;
        old.mainKey = bars::makeMainKey(2, 0, 3, 1, 0);
        old.element = "Pile 1";
        old.beam = 3;
        old.general = 2;
        old.mark = 1;
        old.quantity = 4;
        old.diameterMm = 16;
        old.lengthCm = 200;
        db.saveItems({old});
    }
    const std::vector<ChosenFooting> chosen = chooseFootingGroups(project(), {}, {});
    ASSERT_EQ(chosen.size(), 3u);
    // The isolated footing stands under group 1, whose larger member load is C3's.
    const auto& iso = std::get<footings::IsolatedFootingInput>(chosen[0].input);
    EXPECT_FLOAT_EQ(iso.column.puT, 68.0f);
    EXPECT_EQ(chosen[1].group.columns[1].groupName, "Gr-C2");

    std::vector<footings::FootingSummary> summaries;
    std::vector<std::string> seen;
    JobObserver observer;
    observer.finished = [&](std::size_t k, std::size_t, const ElementReport& r) {
        // The summary of group k is in place when the run tells of it.
        EXPECT_EQ(footingOutcomeText(summaries.at(k - 1).status), r.outcome) << k;
        seen.push_back(r.name);
    };
    const JobResult run = designFootingGroups(project(), chosen, kBars, observer, {}, &summaries);
    ASSERT_EQ(run.elements.size(), 3u);
    EXPECT_EQ(seen, (std::vector<std::string>{"Gr-Ft1", "Gr-Ft2", "Pile 1"}));

    for (const char* sheet : {"FtGrp_Gr-Ft1.Analy", "FtGrp_Gr-Ft2.Analy", "FtGrp_Pile 1.Analy"}) {
        EXPECT_TRUE(fs::exists(project() / sheet)) << sheet;
    }
    const std::string pileSheet = test::readBytes(project() / "FtGrp_Pile 1.Analy");
    EXPECT_NE(pileSheet.find("PILE FOOTING"), std::string::npos);
    EXPECT_NE(pileSheet.find("Surface friction = "), std::string::npos);

    const ElementReport& pile = run.elements[2];
    EXPECT_EQ(pile.kind, kFootingGroupKind);
    EXPECT_EQ(pile.number, 3);
    EXPECT_EQ(pile.status, ElementStatus::ChecksFailed);
    EXPECT_EQ(pile.outcome, "not designed");
    EXPECT_EQ(pile.steelItems, 0u);
    const std::vector<bars::DesignState> states = recordedDesignStates(project());
    for (int n = 1; n <= 3; ++n) {
        ASSERT_NE(stateOf(states, n), nullptr) << n;
        EXPECT_EQ(stateOf(states, n)->floor, 0);
    }
    EXPECT_EQ(stateOf(states, 3)->status, bars::DesignState::Status::ChecksFailed);
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_TRUE(db.itemsByMark(bars::ElementKind::Footing, "Pile 1").empty());

    // Each record now holds what its design gave, the pile footing's "not designed".
    for (std::size_t i = 0; i < 3; ++i) {
        const FootingGroup g = *footings::readFootingGroup(project(), static_cast<int>(i + 1));
        EXPECT_EQ(g.status, summaries[i].status) << i;
        EXPECT_FLOAT_EQ(g.aCm, static_cast<float>(summaries[i].aCm)) << i;
        EXPECT_FLOAT_EQ(g.hCm, static_cast<float>(summaries[i].hCm)) << i;
    }
    EXPECT_EQ(footings::readFootingGroup(project(), 3)->status,
              footings::FootingStatus::NotDesigned);
}

TEST_F(FootingJob, TheBarsOfAFootingRunAlongBothSidesLessTheCover) {
    const std::vector<ChosenFooting> chosen = chooseFootingGroups(project(), {"Gr-Ft1"}, {});
    ASSERT_EQ(chosen.size(), 1u);
    footings::FootingSummary s;
    s.status = footings::FootingStatus::Designed;
    s.aCm = 155.0;
    s.bCm = 160.0;
    s.hCm = 57.5;
    s.barsY = {true, 9, 14.0, 13.85, 0.0};    // no length given: A − 2 · 7.5 = 140 cm
    s.barsX = {true, 10, 12.0, 11.31, 152.3}; // the design's length, rounded up: 153 cm
    const auto items = footingSteelItems(chosen[0], s);
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].mainKey, "02.000.001.0001.000");
    EXPECT_EQ(items[0].general, 2);
    EXPECT_EQ(items[0].beam, 1);
    EXPECT_FLOAT_EQ(items[0].quantity, 9.0f);
    EXPECT_FLOAT_EQ(items[0].diameterMm, 14.0f);
    EXPECT_FLOAT_EQ(items[0].lengthCm, 140.0f);
    EXPECT_EQ(items[1].mainKey, "02.000.001.0002.000");
    EXPECT_FLOAT_EQ(items[1].lengthCm, 153.0f);
    EXPECT_EQ(footingPlanText(s), "155 x 160 x 57.5 cm");

    s.barsX.found = false;
    EXPECT_EQ(footingSteelItems(chosen[0], s).size(), 1u);
    s.status = footings::FootingStatus::CheckData;
    EXPECT_TRUE(footingSteelItems(chosen[0], s).empty());
}

TEST_F(FootingJob, TheChoiceRefusesAGroupWhoseColumnGroupNumberNowStandsForAnother) {
    EXPECT_THROW(chooseFootingGroups(project(), {"Gr-Ft9"}, {}), InputError);
    // The column groups are rewritten with another group at number 1.
    columns::writeGroups(project(), columns::ColumnLevel{0},
                         {columnGroup("Gr-C7", 30, 40), columnGroup("Gr-C2", 40, 40)});
    try {
        chooseFootingGroups(project(), {}, {});
        ADD_FAILURE() << "a footing took another column group's loads";
    } catch (const InputError& e) {
        EXPECT_NE(std::string(e.what()).find("Footing group 1 (Gr-Ft1): its column group 1 is "
                                             "now Gr-C7, not Gr-C1"),
                  std::string::npos)
            << e.what();
    }
    // The pile footing stands on number 2, still Gr-C2.
    EXPECT_EQ(chooseFootingGroups(project(), {"Pile 1"}, {}).size(), 1u);

    test::TempDir empty;
    EXPECT_THROW(chooseFootingGroups(empty.path(), {}, {}), InputError);
}

TEST_F(FootingJob, EditingAnInputUndoesTheDesignAndRemovingForgetsIt) {
    designFootingGroups(project(), chooseFootingGroups(project(), {}, {}), kBars);
    // Saved again as read (the last design's values in it): the design stands.
    FootingGroup g = *footings::readFootingGroup(project(), 1);
    storeFootingGroup(project(), 1, g);
    const auto before = stateOf(recordedDesignStates(project()), 1)->status;
    EXPECT_NE(before, bars::DesignState::Status::NotDesigned);
    g.columns[0].cxCm = 10.0f;
    storeFootingGroup(project(), 1, g);
    auto states = recordedDesignStates(project());
    EXPECT_EQ(stateOf(states, 1)->status, bars::DesignState::Status::NotDesigned);
    EXPECT_EQ(stateOf(states, 1)->failures, kFootingChangedAfterDesign);
    EXPECT_NE(stateOf(states, 2)->status, bars::DesignState::Status::NotDesigned);

    removeFootingGroupWithDesign(project(), 2);
    states = recordedDesignStates(project());
    EXPECT_EQ(stateOf(states, 2), nullptr);
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_TRUE(db.itemsByMark(bars::ElementKind::Footing, "Gr-Ft2").empty());
    EXPECT_EQ(footings::readFootingGroups(project()).size(), 2u);
}

} // namespace
} // namespace orvak::jobs
