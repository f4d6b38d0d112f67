// Tests of the footing group records: golden bytes at the fixed offsets and in the value area,
// removal in place with stable numbers, the checks of a group's main data, the input a design
// takes from the footing level, and the footing settings file.
#include <gtest/gtest.h>

#include <filesystem>

#include "columns/column_records.h"
#include "core/error.h"
#include "footings/footing_records.h"
#include "footings/footing_settings.h"
#include "support/temp_dir.h"

namespace orvak::footings {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

Bytes bytesAt(const core::RecordBuffer& rec, std::size_t offset, std::size_t n) {
    return {rec.bytes().begin() + offset, rec.bytes().begin() + offset + n};
}

columns::ColumnGroup columnGroup(const char* name, float a, float b) {
    columns::ColumnGroup g;
    g.name = name;
    g.type = 1;
    g.dims = {a, b, 0, 0, 0};
    return g;
}

columns::Column column(const char* name, std::int16_t group, float puT, float m2x) {
    columns::Column c;
    c.name = name;
    c.group = group;
    c.type = 1;
    c.heightCm = 150.0f;
    c.dims = {40, 40, 0, 0, 0};
    c.puT = puT;
    c.x = {m2x, 0.0f};
    return c;
}

FootingGroup combined(float cx1, float cx2) {
    FootingGroup g;
    g.kind = FootingKind::Combined;
    g.name = "Gr-Ft1";
    g.columns[0] = {1, "", cx1, 0.0f};
    g.columns[1] = {2, "", cx2, 0.0f};
    return g;
}

FootingGroup isolated(const char* name, std::int16_t group, float cx = 0.0f, float cy = 0.0f) {
    FootingGroup g;
    g.name = name;
    g.columns[0] = {group, "", cx, cy};
    return g;
}

TEST(FootingGroupRecord, GoldenBytesOfTheHeaderAndTheValueArea) {
    FootingGroup g = combined(30.0f, 155.0f);
    g.name = "Gr-Ft12345678"; // 13 characters: the field keeps 10
    g.columns[0].group = 3;
    g.columns[0].groupName = "Gr-C2";
    g.columns[1].group = 5;
    g.columns[1].cyCm = 12.5f;
    g.status = FootingStatus::Designed;
    g.aCm = 155.0f;
    g.bCm = 60.0f;
    g.hCm = 12.5f;
    g.barsY = {7, 12.5f, 0.0f, 60.0f};
    const core::RecordBuffer rec = encodeFootingGroup(g);
    ASSERT_EQ(rec.length(), 852u);
    // IEEE singles, little-endian: 155 = 1.2109375 · 2^7 -> 0x431B0000; 60 = 1.875 · 2^5 ->
    // 0x42700000; 12.5 = 1.5625 · 2^3 -> 0x41480000; 30 = 1.875 · 2^4 -> 0x41F00000;
    // 2 -> 0x40000000; 7.5 = 1.875 · 2^2 -> 0x40F00000.
    const Bytes s155 = {0x00, 0x00, 0x1B, 0x43}, s60 = {0x00, 0x00, 0x70, 0x42},
                s12_5 = {0x00, 0x00, 0x48, 0x41}, s30 = {0x00, 0x00, 0xF0, 0x41};
    EXPECT_EQ(rec.bytes()[0], '1');
    EXPECT_EQ(bytesAt(rec, 2, 4), (Bytes{0x02, 0x00, 0x01, 0x00})); // combined, designed
    EXPECT_EQ(bytesAt(rec, 6, 10), (Bytes{'G', 'r', '-', 'F', 't', '1', '2', '3', '4', '5'}));
    EXPECT_EQ(bytesAt(rec, 16, 4), (Bytes{0x03, 0x00, 0x05, 0x00}));
    EXPECT_EQ(bytesAt(rec, 20, 4), s155);
    EXPECT_EQ(bytesAt(rec, 24, 4), s60);
    EXPECT_EQ(bytesAt(rec, 28, 2), (Bytes{0x02, 0x00})); // two columns
    EXPECT_EQ(bytesAt(rec, 32, 4), s12_5);
    // The settings copy at 48: its use mark, Fc 250 = 0x00FA, FY 4200 = 0x1068, soil 2 kg/cm²,
    // cover 7.5 cm.
    EXPECT_EQ(bytesAt(rec, 48, 13),
              (Bytes{'1', 0xFA, 0x00, 0x68, 0x10, 0x00, 0x00, 0x00, 0x40, 0x00, 0x00, 0xF0, 0x40}));
    // The two column groups' names, blank-padded to 20 characters each.
    EXPECT_EQ(bytesAt(rec, 77, 6), (Bytes{'G', 'r', '-', 'C', '2', ' '}));
    EXPECT_EQ(bytesAt(rec, 97, 20), Bytes(20, ' '));
    EXPECT_EQ(bytesAt(rec, 117, 8), (Bytes{0x00, 0x00, 0xF0, 0x41, 0x00, 0x00, 0x1B, 0x43}));
    EXPECT_EQ(bytesAt(rec, 129, 4), s12_5);                           // Cy of column 2
    EXPECT_EQ(bytesAt(rec, 133, 2), (Bytes{0x04, 0x00}));             // four piles by default
    EXPECT_EQ(bytesAt(rec, 151, 4), (Bytes{0x07, 0x00, 0x00, 0x00})); // 7 bars along y
    EXPECT_EQ(bytesAt(rec, 155, 4), s12_5);
    EXPECT_EQ(bytesAt(rec, 163, 4), s60);
    EXPECT_EQ(bytesAt(rec, 171, 681), Bytes(681, ' '));

    FootingGroup back = g;
    back.name = "Gr-Ft12345";
    EXPECT_EQ(decodeFootingGroup(rec), back);
    EXPECT_EQ(encodeFootingGroup(decodeFootingGroup(rec)).bytes(), rec.bytes());
}

class FootingGroupFile : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(project());
        columns::writeGroups(project(), columns::ColumnLevel{0},
                             {columnGroup("Gr-C1", 30, 40), columnGroup("Gr-C2", 40, 40)});
    }
    fs::path project() const { return m_dir / "Job.prj"; }
    std::uintmax_t fileSize() const { return fs::file_size(project() / kFootingGroupsFile); }
    test::TempDir m_dir;
};

TEST_F(FootingGroupFile, RemovalMarksTheRecordInPlaceAndNumbersNeverMove) {
    EXPECT_EQ(saveFootingGroup(project(), 0, isolated("Gr-Ft1", 1)), 1);
    EXPECT_EQ(saveFootingGroup(project(), 0, isolated("Gr-Ft2", 2)), 2);
    EXPECT_EQ(saveFootingGroup(project(), 0, isolated("Gr-Ft3", 1)), 3);
    // Saving keeps the name the column group had when it was picked.
    EXPECT_EQ(readFootingGroup(project(), 2)->columns[0].groupName, "Gr-C2");

    removeFootingGroup(project(), 2);
    EXPECT_EQ(fileSize(), 3u * 852u);
    EXPECT_EQ(test::readBytes(project() / kFootingGroupsFile)[852], '0');
    const auto groups = readFootingGroups(project());
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups[0].number, 1);
    EXPECT_EQ(groups[1].number, 3);
    EXPECT_EQ(groups[1].group.name, "Gr-Ft3");
    EXPECT_FALSE(readFootingGroup(project(), 2));
    EXPECT_THROW(removeFootingGroup(project(), 2), InputError);
    EXPECT_THROW(saveFootingGroup(project(), 2, isolated("Gr-Ft2", 1)), InputError);

    // The free name is the removed group's, but its record number is never taken again: the
    // number keys the steel items and design state the removed group may have left.
    EXPECT_EQ(newFootingGroupName(groups), "Gr-Ft2");
    EXPECT_EQ(saveFootingGroup(project(), 0, isolated("Gr-Ft2", 1)), 4);
    // Names are compared without regard to case: the sheets are files on Windows too.
    EXPECT_THROW(saveFootingGroup(project(), 0, isolated("GR-FT3", 1)), InputError);
    EXPECT_EQ(fileSize(), 4u * 852u);
}

TEST_F(FootingGroupFile, TheFileIsFoundWithoutRegardToCaseAndADamagedOneIsRefused) {
    const core::RecordBuffer rec = encodeFootingGroup(isolated("Gr-Ft1", 1));
    test::writeBytes(project() / "FOOTSGRP.DAT",
                     std::string(rec.bytes().begin(), rec.bytes().end()));
    ASSERT_EQ(readFootingGroups(project()).size(), 1u);
    EXPECT_EQ(saveFootingGroup(project(), 0, isolated("Gr-Ft2", 2)), 2);
    EXPECT_FALSE(fs::exists(project() / kFootingGroupsFile)); // written to the file found
    EXPECT_EQ(fs::file_size(project() / "FOOTSGRP.DAT"), 2u * 852u);

    std::string bytes = test::readBytes(project() / "FOOTSGRP.DAT");
    test::writeBytes(project() / "FOOTSGRP.DAT", bytes + "1Gr");
    EXPECT_THROW(readFootingGroups(project()), FileError);
    EXPECT_THROW(saveFootingGroup(project(), 0, isolated("Gr-Ft3", 2)), FileError);
}

TEST_F(FootingGroupFile, MainDataThatDoesNotSuitTheColumnsIsRefusedWithTheSystemsMessage) {
    const std::vector<columns::ColumnGroup> cols = {
        columnGroup("Gr-C1", 30, 40), columnGroup("Gr-C2", 40, 50), columnGroup("NoB", 40, 0)};
    const std::string notSuitable(kNotSuitableMessage);
    const std::string notLeft(kCx1NotLeftMessage);
    struct Case {
        const char* what;
        FootingGroup group;
        std::string expected;
    };
    FootingGroup sameGroupTwice = combined(20.0f, 60.0f);
    sameGroupTwice.columns[1].group = 1;
    const Case cases[] = {
        {"isolated in the middle", isolated("A", 1), ""},
        {"isolated off centre", isolated("A", 2, 15.0f, 0.0f), ""},
        {"isolated beyond an edge", isolated("A", 1, -1.0f, 0.0f), notSuitable},
        {"no column group 4", isolated("A", 4), notSuitable},
        {"rectangle without b", isolated("A", 3), notSuitable},
        // Combined: c1 = 40 (b of Gr-C1), c2 = 50; the left face at Cx1 − 20.
        {"combined", combined(20.0f, 200.0f), ""},
        {"equal centres", combined(100.0f, 100.0f), notLeft},
        {"column 1 right of column 2", combined(200.0f, 100.0f), notLeft},
        {"left face past the edge", combined(19.9f, 200.0f), notSuitable},
        // The columns touch at 45 cm between centres, (40 + 50) / 2.
        {"columns touching", combined(20.0f, 65.0f), ""},
        {"columns overlapping", combined(20.0f, 64.0f), notSuitable},
        {"two columns of one group", sameGroupTwice, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(checkFootingMainData(c.group, cols), c.expected) << c.what;
    }

    // On saving, the message stands alone and nothing is written.
    try {
        saveFootingGroup(project(), 0, combined(100.0f, 100.0f));
        ADD_FAILURE() << "equal centres were saved";
    } catch (const InputError& e) {
        EXPECT_EQ(std::string(e.what()), notLeft);
    }
    EXPECT_THROW(saveFootingGroup(project(), 0, isolated("A", 3)), InputError);
    EXPECT_FALSE(fs::exists(project() / kFootingGroupsFile));
}

TEST_F(FootingGroupFile, ADesignInputTakesTheColumnGroupsGoverningLoadsAndTheResultsLandInPlace) {
    // Group 1 gathers C1 and C3: Pu the larger, 68 t; M2x the larger by size, 1.1 t·m.
    const std::vector<columns::Column> level = {
        column("C1", 1, 66.0f, 1.0f), column("C2", 2, 124.0f, 0.7f), column("C3", 1, 68.0f, -1.1f)};
    const std::vector<columns::ColumnGroup> groups = {columnGroup("Gr-C1", 30, 40),
                                                      columnGroup("Gr-C2", 40, 40)};
    FootingGroup g = combined(20.0f, 300.0f);
    g.settings.soilCapacity = 1.5f;
    const CombinedFootingInput in = combinedFootingInput(g, level, groups);
    EXPECT_EQ(in.column1.name, "Gr-C1");
    EXPECT_FLOAT_EQ(in.column1.puT, 68.0f);
    EXPECT_FLOAT_EQ(in.column1.muxTm, -1.1f);
    EXPECT_EQ(in.column1.dims, (std::array<float, 5>{30, 40, 0, 0, 0}));
    EXPECT_FLOAT_EQ(in.column2.puT, 124.0f);
    EXPECT_FLOAT_EQ(in.column2.cxCm, 300.0f);
    EXPECT_FLOAT_EQ(in.settings.soilCapacity, 1.5f);
    EXPECT_THROW(isolatedFootingInput(isolated("A", 3), level, groups), InputError);

    // A design's results go into the record; the inputs stay byte for byte.
    saveFootingGroup(project(), 0, isolated("Gr-Ft1", 1, 5.0f, 10.0f));
    const std::string before = test::readBytes(project() / kFootingGroupsFile);
    FootingSummary s;
    s.status = FootingStatus::ChecksFailed;
    s.aCm = 155.0;
    s.bCm = 160.0;
    s.hCm = 57.5;
    s.barsX = {true, 9, 14.0, 13.85, 145.0};
    EXPECT_FALSE(storeFootingResult(project(), 1, "Gr-Ft9", s)); // another group now
    EXPECT_TRUE(storeFootingResult(project(), 1, "Gr-Ft1", s));
    const std::string after = test::readBytes(project() / kFootingGroupsFile);
    EXPECT_EQ(after.substr(6, 14), before.substr(6, 14));
    EXPECT_EQ(after.substr(48, 103), before.substr(48, 103));
    const FootingGroup stored = *readFootingGroup(project(), 1);
    EXPECT_EQ(stored.status, FootingStatus::ChecksFailed);
    EXPECT_FLOAT_EQ(stored.hCm, 57.5f);
    EXPECT_EQ(stored.barsX, (StoredFootingBars{9, 14.0f, 13.85f, 145.0f}));
    EXPECT_EQ(stored.barsY, StoredFootingBars{});
}

TEST(FootingSettingsFile, DefaultsRoundTripAndRefusals) {
    test::TempDir dir;
    EXPECT_EQ(readFootingSettingsFile(dir.path()), defaultFootingSettings());
    FootingSettings s;
    s.Fc = 300;
    s.soilCapacity = 1.25f;
    s.minDepthCm = 35.0f;
    writeFootingSettingsFile(dir.path(), s);
    EXPECT_EQ(fs::file_size(dir.path() / kFootingSettingsFile), 29u);
    EXPECT_EQ(readFootingSettingsFile(dir.path()), s);

    FootingSettings bad = s;
    bad.soilCapacity = 0.0f; // no plan area can be found on a soil that carries nothing
    EXPECT_THROW(writeFootingSettingsFile(dir.path(), bad), InputError);
    EXPECT_EQ(readFootingSettingsFile(dir.path()), s);
    bad = s;
    bad.facRowmax = 1.2f; // above the balanced ratio
    EXPECT_NE(validateFootingSettings(bad), "");

    // A file another program left with a setting no design can use is named on reading.
    core::RecordBuffer rec = encodeFootingSettings(s);
    rec.setSingle(kFootingSettingsLayout["LF"], 0.5f);
    test::writeBytes(dir / "footsset.dat", std::string(rec.bytes().begin(), rec.bytes().end()));
    fs::remove(dir.path() / kFootingSettingsFile);
    EXPECT_THROW(readFootingSettingsFile(dir.path()), FileError);
}

} // namespace
} // namespace orvak::footings
