// Tests of beams edited one at a time: stored in place at their numbers, deleted without
// renumbering the others, spans added and taken out with their supports, and what an edit or
// a deletion does to the beam's design state and steel.
#include <gtest/gtest.h>

#include <fstream>

#include "bars/steel_store.h"
#include "beams/beam_edit.h"
#include "beams/beam_job_fixture.h"
#include "core/error.h"
#include "floors/floors.h"
#include "jobs/beam_design_job.h"
#include "model/model_json.h"
#include "support/temp_dir.h"

namespace orvak::beams {
namespace {

namespace fs = std::filesystem;

std::vector<std::uint8_t> bytesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

BeamRecord spansOf(std::initializer_list<float> lengths) {
    BeamRecord b = newBeam(1, 1, defaultBeamSettings());
    b.spans.clear();
    b.supports.clear();
    float width = 10.0f;
    for (float length : lengths) {
        StoredSpan span = newBeam(1, 1, defaultBeamSettings()).spans[0];
        span.lengthM = length;
        b.spans.push_back(span);
        b.supports.push_back(StoredSupport{2, 0, width, 0.0f});
        width += 10.0f;
    }
    b.supports.push_back(StoredSupport{2, 0, width, 0.0f});
    return b;
}

std::vector<float> lengths(const BeamRecord& b) {
    std::vector<float> out;
    for (const StoredSpan& s : b.spans) {
        out.push_back(s.lengthM);
    }
    return out;
}

std::vector<float> supportWidths(const BeamRecord& b) {
    std::vector<float> out;
    for (const StoredSupport& s : b.supports) {
        out.push_back(s.widthCm);
    }
    return out;
}

TEST(BeamEdit, BeamsAreStoredAndDeletedInPlaceWithoutRenumberingTheOthers) {
    test::TempDir dir;
    const fs::path file = dir.path() / floors::beamFileName(1);
    for (int n = 1; n <= 3; ++n) {
        BeamRecord b = newBeam(1, n, defaultBeamSettings());
        b.spans[0].lengthM = static_cast<float>(n);
        storeBeam(dir.path(), 1, b);
    }
    EXPECT_EQ(fs::file_size(file), 3 * kBeamRecordLength);

    removeBeam(dir.path(), 1, 2);
    EXPECT_EQ(fs::file_size(file), 3 * kBeamRecordLength); // a hole, not a shift
    EXPECT_EQ(freeBeamNumber(dir.path(), 1), 2);
    const std::vector<std::uint8_t> before = bytesOf(file);

    // Beam 3 edited: it stays record 3, and record 1 keeps every byte.
    BeamRecord third = readBeamFile(dir.path(), 1)[1];
    ASSERT_EQ(third.number, 3);
    third.spans[0].lengthM = 7.5f;
    const BeamRecord back = storeBeam(dir.path(), 1, third);
    EXPECT_EQ(back.number, 3);
    EXPECT_FLOAT_EQ(back.spans[0].lengthM, 7.5f);
    const std::vector<std::uint8_t> after = bytesOf(file);
    ASSERT_EQ(after.size(), before.size());
    EXPECT_TRUE(std::equal(before.begin(), before.begin() + kBeamRecordLength, after.begin()));
    const std::vector<BeamRecord> read = readBeamFile(dir.path(), 1);
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].number, 1);
    EXPECT_FLOAT_EQ(read[0].spans[0].lengthM, 1.0f);
    EXPECT_EQ(read[1].number, 3);

    // The last beam deleted: the free records at the end go, the file is one record long.
    removeBeam(dir.path(), 1, 3);
    EXPECT_EQ(fs::file_size(file), kBeamRecordLength);
    EXPECT_EQ(freeBeamNumber(dir.path(), 1), 2);

    // A beam that cannot be analysed is refused and nothing is written.
    BeamRecord bad = read[0];
    bad.spans[0].lengthM = 0.0f;
    const std::vector<std::uint8_t> kept = bytesOf(file);
    EXPECT_THROW(storeBeam(dir.path(), 1, bad), InputError);
    EXPECT_EQ(bytesOf(file), kept);
}

TEST(BeamEdit, SpansAreAddedAndTakenOutWithTheirSupports) {
    BeamRecord b = spansOf({4.0f, 5.0f, 6.0f}); // supports 10, 20, 30, 40 cm wide

    // A new span copies the chosen one and the support on its right.
    ASSERT_TRUE(insertSpan(b, 1));
    EXPECT_EQ(lengths(b), (std::vector<float>{4.0f, 5.0f, 5.0f, 6.0f}));
    EXPECT_EQ(supportWidths(b), (std::vector<float>{10.0f, 20.0f, 30.0f, 30.0f, 40.0f}));

    // An inner span goes with its right support; the last with its left one, so that the
    // beam keeps its end support.
    BeamRecord inner = spansOf({4.0f, 5.0f, 6.0f});
    ASSERT_TRUE(removeSpan(inner, 0));
    EXPECT_EQ(lengths(inner), (std::vector<float>{5.0f, 6.0f}));
    EXPECT_EQ(supportWidths(inner), (std::vector<float>{10.0f, 30.0f, 40.0f}));
    BeamRecord last = spansOf({4.0f, 5.0f, 6.0f});
    ASSERT_TRUE(removeSpan(last, 2));
    EXPECT_EQ(lengths(last), (std::vector<float>{4.0f, 5.0f}));
    EXPECT_EQ(supportWidths(last), (std::vector<float>{10.0f, 20.0f, 40.0f}));

    // The limits: 30 spans at most, one at least, and only spans the beam has.
    BeamRecord one = spansOf({4.0f});
    EXPECT_FALSE(removeSpan(one, 0));
    EXPECT_FALSE(insertSpan(one, 1));
    for (int n = 1; n < kMaxSpans; ++n) {
        ASSERT_TRUE(insertSpan(one, 0));
    }
    EXPECT_EQ(one.spans.size(), 30u);
    EXPECT_EQ(one.supports.size(), 31u);
    EXPECT_FALSE(insertSpan(one, 0));
    EXPECT_TRUE(validateBeam(one).empty());
}

TEST(BeamEdit, AnEditVoidsTheDesignStateAndADeletionLeavesNoSteel) {
    test::TempDir dir;
    const fs::path project = dir.path() / "Edit.prj";
    const fs::path general = dir.path() / "GENERAL";
    fs::create_directories(project);
    testing::writeBarTable(general);
    model::writeProjectModel(project, model::modelFromJson(nlohmann::json::parse(
                                          testing::twoBeamModel())));

    // Without a store an edit makes none.
    jobs::markBeamChanged(project, 1, 1);
    EXPECT_FALSE(fs::exists(bars::ironDatabasePath(project)));

    ASSERT_EQ(jobs::designStoredBeam(project, general, 1, 1, 3).status,
              jobs::ElementStatus::Designed);
    ASSERT_EQ(jobs::designStoredBeam(project, general, 1, 2, 3).status,
              jobs::ElementStatus::Designed);
    const auto stateOf = [&](int number) {
        for (const bars::DesignState& s : bars::OpenIronDatabase(project).designStates()) {
            if (s.floor == 1 && s.number == number) {
                return std::optional<bars::DesignState>(s);
            }
        }
        return std::optional<bars::DesignState>();
    };
    const std::size_t items = bars::OpenIronDatabase(project).itemCount();

    jobs::markBeamChanged(project, 1, 1);
    ASSERT_TRUE(stateOf(1).has_value());
    EXPECT_EQ(stateOf(1)->status, bars::DesignState::Status::NotDesigned);
    EXPECT_EQ(stateOf(1)->failures, jobs::kChangedAfterDesign);
    EXPECT_EQ(stateOf(2)->status, bars::DesignState::Status::Designed);
    EXPECT_EQ(bars::OpenIronDatabase(project).itemCount(), items); // steel kept till redesign

    jobs::forgetBeam(project, 1, 1);
    EXPECT_FALSE(stateOf(1).has_value());
    const std::size_t left = bars::OpenIronDatabase(project).itemCount();
    EXPECT_LT(left, items);
    EXPECT_GT(left, 0u); // beam 2 keeps its bars
}

} // namespace
} // namespace orvak::beams
