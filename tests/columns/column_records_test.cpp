// Tests of the column and group records: golden bytes at the fixed offsets, the level files
// and their names, the footing-level copy, the group's governing loads and the settings file.
#include <gtest/gtest.h>

#include <filesystem>

#include "columns/column_records.h"
#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::columns {
namespace {

std::vector<std::uint8_t> bytesAt(const core::RecordBuffer& rec, std::size_t offset,
                                  std::size_t n) {
    return {rec.bytes().begin() + offset, rec.bytes().begin() + offset + n};
}

using Bytes = std::vector<std::uint8_t>;

Column sampleColumn() {
    Column c;
    c.name = "COLUMN-ABCDEF"; // 13 characters: stored as its first 10
    c.group = 2;
    c.type = 1;
    c.heightCm = 300.0f;
    c.dims = {40.0f, 60.0f, 0, 0, 0};
    c.x = {12.25f, -4.0f};
    c.puT = 120.5f;
    return c;
}

ColumnGroup sampleGroup() {
    ColumnGroup g;
    g.name = "Gr-C1";
    g.text = "corner columns";
    g.colLenCm = 350.0f;
    g.type = 3;
    g.dims = {60.0f, 40.0f, 12.25f, 40.0f, 0.0f};
    g.puT = 120.5f;
    g.x = {12.25f, -4.0f};
    g.y = {4.0f, 0.0f};
    g.secondAxis = 1;
    return g;
}

TEST(ColumnRecordLayout, GoldenBytesAtTheFixedOffsets) {
    const core::RecordBuffer rec = encodeColumn(sampleColumn());
    ASSERT_EQ(rec.length(), 168u);
    // Mark and the name cut to 10 characters, then the reserved blank at 11.
    EXPECT_EQ(bytesAt(rec, 0, 12), (Bytes{'1', 'C', 'O', 'L', 'U', 'M', 'N', '-', 'A', 'B', 'C',
                                          ' '}));
    EXPECT_EQ(bytesAt(rec, 12, 4), (Bytes{0x02, 0x00, 0x01, 0x00})); // group 2, type 1
    EXPECT_EQ(bytesAt(rec, 16, 4), (Bytes{0x00, 0x00, 0x96, 0x43})); // 300.0f = 0x43960000
    EXPECT_EQ(bytesAt(rec, 40, 8), (Bytes{0x00, 0x00, 0x20, 0x42, 0x00, 0x00, 0x70, 0x42}));
    // M1x at 60 (-4.0f = 0xC0800000) and M2x, grid column 5, at 72 (12.25f = 0x41440000).
    EXPECT_EQ(bytesAt(rec, 60, 4), (Bytes{0x00, 0x00, 0x80, 0xC0}));
    EXPECT_EQ(bytesAt(rec, 72, 4), (Bytes{0x00, 0x00, 0x44, 0x41}));
    // The last single of the array at 104, grid column 4: 120.5f = 0x42F10000 at 164.
    EXPECT_EQ(bytesAt(rec, 164, 4), (Bytes{0x00, 0x00, 0xF1, 0x42}));
    Column back = decodeColumn(rec);
    Column expected = sampleColumn();
    expected.name = "COLUMN-ABC";
    EXPECT_EQ(back, expected);
}

TEST(ColumnRecordLayout, GroupGoldenBytesAndItsSettingsCopy) {
    ColumnGroup g = sampleGroup();
    g.settings.Fc = 300;
    const core::RecordBuffer rec = encodeGroup(g);
    ASSERT_EQ(rec.length(), 2884u);
    EXPECT_EQ(bytesAt(rec, 0, 6), (Bytes{'1', 'G', 'r', '-', 'C', '1'}));
    EXPECT_EQ(bytesAt(rec, 21, 7), (Bytes{'c', 'o', 'r', 'n', 'e', 'r', ' '}));
    EXPECT_EQ(bytesAt(rec, 56, 4), (Bytes{0x00, 0x00, 0xAF, 0x43}));    // ColLen 350.0f
    EXPECT_EQ(bytesAt(rec, 484, 2), (Bytes{0x03, 0x00}));               // type 3
    EXPECT_EQ(bytesAt(rec, 488, 4), (Bytes{0x00, 0x00, 0x70, 0x42}));   // a = 60.0f
    EXPECT_EQ(bytesAt(rec, 496, 4), (Bytes{0x00, 0x00, 0x44, 0x41}));   // c = 12.25f
    EXPECT_EQ(bytesAt(rec, 516, 4), (Bytes{0x00, 0x00, 0xF1, 0x42}));   // Pu 120.5f
    EXPECT_EQ(bytesAt(rec, 520, 8),
              (Bytes{0x00, 0x00, 0x44, 0x41, 0x00, 0x00, 0x80, 0xC0})); // M2 12.25, M1 -4
    EXPECT_EQ(bytesAt(rec, 528, 4), (Bytes{0x00, 0x00, 0x80, 0x40}));   // M2y 4.0f
    EXPECT_EQ(bytesAt(rec, 536, 2), (Bytes{0x01, 0x00}));
    // The settings copy at 542 with its own mark; Fc 300 = 0x012C as an int16 at 543, the
    // first type name at 542 + 109.
    EXPECT_EQ(bytesAt(rec, 542, 3), (Bytes{'1', 0x2C, 0x01}));
    EXPECT_EQ(bytesAt(rec, 651, 10), (Bytes{'R', 'e', 'c', 't', 'a', 'n', 'g', 'l', 'e', ' '}));
    EXPECT_EQ(rec.bytes()[2883], ' ');
    EXPECT_EQ(decodeGroup(rec), g);
}

TEST(ColumnFiles, FloorFilesCarryTheNumberPlus100AndSaveWholeRecords) {
    test::TempDir dir;
    EXPECT_EQ(columnsFileName({1}), "COLUMNS.101");
    EXPECT_EQ(groupsFileName({1}), "COLSGRP.101");
    EXPECT_EQ(columnsFileName({0}), "FCOLUMNS.DAT");
    EXPECT_EQ(groupsFileName({0}), "FCOLSGRP.DAT");

    Column second = sampleColumn();
    second.name = "C2";
    writeColumns(dir.path(), {1}, {sampleColumn(), second});
    EXPECT_EQ(std::filesystem::file_size(dir / "COLUMNS.101"), 2u * 168u);
    const std::vector<Column> back = readColumns(dir.path(), {1});
    ASSERT_EQ(back.size(), 2u);
    EXPECT_EQ(back[0].name, "COLUMN-ABC");
    EXPECT_EQ(back[1], second);

    writeGroups(dir.path(), {0}, {sampleGroup()});
    EXPECT_EQ(std::filesystem::file_size(dir / "FCOLSGRP.DAT"), 2884u);
    EXPECT_EQ(readGroups(dir.path(), {0}).front(), sampleGroup());
    // Rewriting with no groups leaves no file; a file ending in part of a record is refused.
    writeGroups(dir.path(), {0}, {});
    EXPECT_FALSE(std::filesystem::exists(dir / "FCOLSGRP.DAT"));
    test::writeBytes(dir / "COLUMNS.102", std::string(168 + 20, ' '));
    EXPECT_THROW(readColumns(dir.path(), {2}), FileError);
    // A column the grid would refuse stops the save before anything is written.
    Column bad = second;
    bad.type = 6;
    EXPECT_THROW(writeColumns(dir.path(), {1}, {bad}), InputError);
    EXPECT_EQ(readColumns(dir.path(), {1}).size(), 2u);
}

TEST(ColumnFiles, TakingAFloorToTheFootingLevelCopiesNonEmptyFilesOnly) {
    test::TempDir dir;
    writeColumns(dir.path(), {3}, {sampleColumn()});
    test::writeBytes(dir / "COLSGRP.103", "");
    writeGroups(dir.path(), {0}, {sampleGroup()});
    EXPECT_EQ(takeFloorToFootingLevel(dir.path(), 3), 1);
    EXPECT_EQ(test::readBytes(dir / "FCOLUMNS.DAT"), test::readBytes(dir / "COLUMNS.103"));
    // The empty group file of the floor is passed over: the footing level keeps its groups.
    EXPECT_EQ(readGroups(dir.path(), {0}).size(), 1u);
    EXPECT_EQ(takeFloorToFootingLevel(dir.path(), 4), 0);
}

TEST(ColumnGroups, AGroupTakesTheGoverningLoadAndMomentsOfItsMembers) {
    std::vector<Column> columns(4);
    // Members of group 1: loads 80 and 95 t, heights 300 and 320 cm; about x, end moments
    // (10, -5) and (-6, 3): the largest M2 by size is 10; the ratios are -0.5 and -0.5;
    // member 3 has M1 larger than M2 as typed, (2, 8): taken as M2 = 8, ratio 0.25, which is
    // the ratio nearest +1. So M2 = 10, M1 = 0.25 × 10 = 2.5. About y only member 3: (0, 0)
    // gives no moment. Column 4 belongs to group 2 and is left out.
    columns[0] = {"A", 1, 1, 300.0f, {}, {10.0f, -5.0f}, {}, 80.0f};
    columns[1] = {"B", 1, 1, 320.0f, {}, {-6.0f, 3.0f}, {}, 95.0f};
    columns[2] = {"C", 1, 1, 280.0f, {}, {2.0f, 8.0f}, {}, 60.0f};
    columns[3] = {"D", 2, 1, 900.0f, {}, {99.0f, 0.0f}, {}, 999.0f};
    ColumnGroup g = sampleGroup();
    EXPECT_EQ(gatherMembers(g, 1, columns), 3);
    EXPECT_EQ(g.members, 3);
    EXPECT_FLOAT_EQ(g.puT, 95.0f);
    EXPECT_FLOAT_EQ(g.colLenCm, 320.0f);
    EXPECT_FLOAT_EQ(g.x.m2, 10.0f);
    EXPECT_FLOAT_EQ(g.x.m1, 2.5f);
    EXPECT_EQ(g.y, EndMoments{});
    EXPECT_EQ(g.type, 3); // the section stays the group's
    ColumnGroup untouched = sampleGroup();
    EXPECT_EQ(gatherMembers(untouched, 7, columns), 0);
    EXPECT_EQ(untouched, sampleGroup());
    EXPECT_EQ(defaultGroupName(4), "Gr-C4");
}

TEST(ColumnSettingsFile, RoundTripDefaultsAndRefusals) {
    test::TempDir dir;
    EXPECT_EQ(readColumnSettingsFile(dir.path()), defaultColumnSettings());
    ColumnSettings s = defaultColumnSettings();
    s.Fc = 300;
    s.Braced = 0;
    s.PhiPercent[1] = 80.0f;
    s.TypeNames[4] = "A very long type name"; // cut to 15 characters
    writeColumnSettingsFile(dir.path(), s);
    EXPECT_EQ(std::filesystem::file_size(dir / "COLSSET.DAT"), 214u);
    ColumnSettings expected = s;
    expected.TypeNames[4] = "A very long typ";
    EXPECT_EQ(readColumnSettingsFile(dir.path()), expected);

    s.PhiPercent[2] = 0.0f; // a phi of 0 would divide the required area by zero
    EXPECT_THROW(writeColumnSettingsFile(dir.path(), s), InputError);
    s = defaultColumnSettings();
    s.MinSteelPercent[0] = 8.0f; // leaves the ratio search nothing to search
    EXPECT_FALSE(validateColumnSettings(s).empty());
    // A damaged file is named when read, not found later in a design.
    core::RecordBuffer rec = encodeColumnSettings(defaultColumnSettings());
    rec.setSingle(kColumnSettingsLayout["KFactor"], 0.0f);
    test::writeBytes(dir / "COLSSET.DAT",
                     std::string(rec.bytes().begin(), rec.bytes().end()));
    EXPECT_THROW(readColumnSettingsFile(dir.path()), FileError);
}

} // namespace
} // namespace orvak::columns
