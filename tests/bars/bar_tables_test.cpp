// Tests of the bar, spacing and mesh tables: byte layouts, built-in tables, load and save of
// the editing grid, the lookups of the design modules, and damaged files.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "bars/bar_table_grid.h"
#include "bars/bar_tables.h"
#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::bars {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// Little-endian bytes of a single, assembled here independently of the codec under test.
std::string le(float v) {
    const auto u = std::bit_cast<std::uint32_t>(v);
    std::string b;
    for (int i = 0; i < 4; ++i) {
        b += static_cast<char>((u >> (8 * i)) & 0xFF);
    }
    return b;
}

// A record: flag byte, then `count` singles, the given ones first and zeros after them.
std::string record(char flag, std::initializer_list<float> values, std::size_t count) {
    std::string r(1, flag);
    for (float v : values) {
        r += le(v);
    }
    r.resize(1 + 4 * count, '\0');
    return r;
}

std::string roundbar(char flag, std::initializer_list<float> values) {
    return record(flag, values, 11);
}

class BarTables : public ::testing::Test {
protected:
    test::TempDir m_dir;
    fs::path general() const { return m_dir.path(); }
    fs::path file(std::string_view name) const { return m_dir / std::string(name); }
};

TEST_F(BarTables, SavedRecordsMatchTheirBytesWrittenOutByHand) {
    // 12 = 0x41400000, 0.89 = 0x3F63D70A, 1.13 = 0x3F90A3D7; eight zero singles follow.
    const std::string roundbarBytes = "1"s + "\x00\x00\x40\x41"s + "\x0A\xD7\x63\x3F"s +
                                      "\xD7\xA3\x90\x3F"s + std::string(32, '\0');
    // 6.5 = 0x40D00000, 15 = 0x41700000, 1 = 0x3F800000.
    const std::string netironBytes = "1"s + "\x00\x00\xD0\x40"s + "\x00\x00\x70\x41"s +
                                     std::string(12, '\0') + "\x00\x00\x80\x3F"s;
    ASSERT_EQ(roundbarBytes.size(), 45u);
    ASSERT_EQ(netironBytes.size(), 25u);

    BarTableGrid bars(roundbarTable());
    bars.setCell(1, 1, "12");
    bars.setCell(1, 2, "0.89");
    bars.setCell(1, 3, "1.13");
    bars.save(general());
    EXPECT_EQ(test::readBytes(file(kRoundbarFile)), roundbarBytes);

    BarTableGrid mesh(netironTable());
    mesh.setCell(1, 1, "6.5");
    mesh.setCell(1, 2, "15");
    mesh.setCell(1, 6, "1");
    mesh.save(general());
    EXPECT_EQ(test::readBytes(file(kNetironFile)), netironBytes);
    ASSERT_EQ(ReadNetironRows(general()).size(), 1u);
    EXPECT_TRUE(ReadNetironRows(general())[0].ticked());
}

TEST_F(BarTables, RoundbarWithoutFileShowsDefaultsAndAnEditSavesEveryRowWithADiameter) {
    BarTableGrid grid = BarTableGrid::open(roundbarTable(), general());
    ASSERT_TRUE(fs::exists(file(kRoundbarFile)));
    EXPECT_EQ(fs::file_size(file(kRoundbarFile)), 0u);
    EXPECT_TRUE(grid.showsDefaults());
    EXPECT_FALSE(grid.changed());
    // First and last rows of the built-in table; columns 4 to 11 and rows 17 to 20 empty.
    EXPECT_EQ(grid.row(1),
              (std::vector<std::string>{"5", "0.15", "0.2", "", "", "", "", "", "", "", ""}));
    EXPECT_EQ(grid.cell(16, 1), "32");
    EXPECT_EQ(grid.cell(16, 2), "6.31");
    EXPECT_EQ(grid.cell(16, 3), "8.04");
    EXPECT_EQ(grid.cell(17, 1), "");

    // Nothing is written until a save after an edit.
    EXPECT_EQ(grid.save(general()).outcome, TableSaveOutcome::Unchanged);
    EXPECT_FALSE(fs::exists(file(kTableTempFile)));
    EXPECT_EQ(fs::file_size(file(kRoundbarFile)), 0u);

    grid.setCell(6, 2, "0.9");
    int lastProgress = -1;
    int progressCalls = 0;
    const TableSaveResult saved = grid.save(general(), {[&](int value, int maximum) {
                                                EXPECT_EQ(maximum, 20);
                                                lastProgress = value;
                                                ++progressCalls;
                                            }});
    EXPECT_EQ(saved.outcome, TableSaveOutcome::Saved);
    EXPECT_EQ(saved.recordsWritten, 16u);
    EXPECT_EQ(progressCalls, 21); // once per grid row, then reset to 0
    EXPECT_EQ(lastProgress, 0);
    EXPECT_FALSE(grid.changed());
    const std::string bytes = test::readBytes(file(kRoundbarFile));
    ASSERT_EQ(bytes.size(), 16u * 45u);
    EXPECT_EQ(bytes.substr(5 * 45, 45), roundbar('1', {12.0f, 0.9f, 1.13f}));
    EXPECT_EQ(bytes.substr(15 * 45, 45), roundbar('1', {32.0f, 6.31f, 8.04f}));

    const BarTableGrid again = BarTableGrid::open(roundbarTable(), general());
    EXPECT_FALSE(again.showsDefaults());
    EXPECT_EQ(again.cell(6, 2), "0.9");
    EXPECT_EQ(again.cell(6, 4), "0");
}

TEST_F(BarTables, SpacingDefaultsHoldTheEntriesAsTypedAndMeshHasNone) {
    const BarTableGrid spacing = BarTableGrid::open(spacingTable(), general());
    EXPECT_EQ(spacing.cell(1, 1), "7");
    EXPECT_EQ(spacing.cell(27, 1), "20");
    EXPECT_EQ(spacing.cell(5, 1), "9");
    EXPECT_EQ(spacing.cell(5, 4), "5.95"); // 8 mm at 9 cm, off the rule 0.50 x 100 / 9 = 5.56
    EXPECT_EQ(spacing.cell(20, 1), "16.5");
    EXPECT_EQ(spacing.cell(20, 10), "9.04"); // 20 mm at 16.5 cm, off the rule 19.04
    EXPECT_EQ(spacing.cell(27, 11), "");

    const BarTableGrid mesh = BarTableGrid::open(netironTable(), general());
    EXPECT_FALSE(mesh.showsDefaults());
    EXPECT_EQ(mesh.cell(1, 1), "");
    EXPECT_FALSE(fs::exists(file(kNetironFile)));
    EXPECT_TRUE(ReadNetironRows(general()).empty());
}

TEST_F(BarTables, TwentyRecordsShowSixteenRowsWhileAllValidDiametersAreListed) {
    std::string bytes;
    for (int n = 1; n <= 20; ++n) {
        if (n == 5) {
            bytes += roundbar('1', {0.0f, 1.0f, 1.0f}); // in use, diameter 0
        } else if (n == 9) {
            bytes += roundbar(' ', {9.0f, 1.0f, 1.0f}); // empty row
        } else {
            bytes += roundbar('1', {static_cast<float>(n), 0.5f, 0.25f});
        }
    }
    test::writeBytes(file(kRoundbarFile), bytes);

    const BarTableGrid grid = BarTableGrid::open(roundbarTable(), general());
    EXPECT_EQ(grid.cell(16, 1), "16");
    EXPECT_EQ(grid.cell(17, 1), "");
    EXPECT_EQ(grid.cell(5, 1), "0");
    EXPECT_EQ(grid.cell(5, 2), "1"); // shown, though it will not be offered
    EXPECT_EQ(grid.cell(9, 2), "0"); // a row not in use shows zeros

    const BarDiameterList list = LoadBarDiameters(general());
    EXPECT_TRUE(list.barTableAvailable);
    std::vector<float> expected;
    for (int n = 1; n <= 20; ++n) {
        if (n != 5 && n != 9) {
            expected.push_back(static_cast<float>(n));
        }
    }
    EXPECT_EQ(list.diameters, expected);
    EXPECT_EQ(list.count(), 18);
}

TEST_F(BarTables, LookupMatchesTheDiameterExactlyAndNeedsATable) {
    test::writeBytes(file(kRoundbarFile),
                     roundbar('1', {12.0f, 0.89f, 1.13f}) + roundbar('1', {13.0f, 1.04f, 1.33f}));
    const BarPropertyTable table = LoadBarProperties(general());
    ASSERT_TRUE(table.available);
    EXPECT_FALSE(FindBarProperties(12.5f, table.rows).has_value());
    const auto bar13 = FindBarProperties(13.0f, table.rows);
    ASSERT_TRUE(bar13.has_value());
    EXPECT_EQ(bar13->weightKgPerM, 1.04f);
    EXPECT_EQ(bar13->areaCm2, 1.33f);
    EXPECT_FALSE(FindBarProperties(12.0f, {}).has_value());

    // A missing or empty file makes no table available, and reading makes no file.
    fs::remove(file(kRoundbarFile));
    EXPECT_FALSE(LoadBarDiameters(general()).barTableAvailable);
    EXPECT_FALSE(LoadBarProperties(general()).available);
    EXPECT_FALSE(fs::exists(file(kRoundbarFile)));
    test::writeBytes(file(kRoundbarFile), "");
    EXPECT_FALSE(LoadBarDiameters(general()).barTableAvailable);
}

TEST_F(BarTables, SaveSqueezesEmptyRowsAndEachRowKeepsItsHiddenSpacingValuesSaveAfterSave) {
    // Four old records (spacing, then the area 1.0 or as typed); areas 16 to 20 (values
    // 17..21) mark each record: 101 .. 104.
    const auto old = [](float spacing, float hidden, float area = 1.0f) {
        std::string r = record('1', {spacing, area}, 16);
        for (int i = 0; i < 5; ++i) {
            r += le(hidden);
        }
        return r;
    };
    test::writeBytes(file(kSpacingFile), old(7.0f, 101.0f) + old(8.0f, 102.0f) + old(9.0f, 103.0f) +
                                             old(10.0f, 104.0f));
    BarTableGrid grid = BarTableGrid::open(spacingTable(), general());
    grid.setCell(2, 1, " "); // row 2 emptied in the middle
    grid.setCell(3, 2, "4.5");
    grid.setCell(5, 1, "abc"); // non-numeric counts as 0: not saved
    EXPECT_EQ(grid.save(general()).recordsWritten, 3u);
    // Rows 3 and 4 moved up to records 2 and 3 with the hidden values of their old records.
    EXPECT_EQ(test::readBytes(file(kSpacingFile)),
              old(7.0f, 101.0f) + old(9.0f, 103.0f, 4.5f) + old(10.0f, 104.0f));

    // The form stays open on the same grid: a second save, of an edit in row 1, still gives
    // rows 3 and 4 their own hidden values, though the file now holds them one record up.
    grid.setCell(1, 2, "1.5");
    ASSERT_EQ(grid.save(general()).recordsWritten, 3u);
    EXPECT_EQ(test::readBytes(file(kSpacingFile)),
              old(7.0f, 101.0f, 1.5f) + old(9.0f, 103.0f, 4.5f) + old(10.0f, 104.0f));

    // A save that fails (a folder stands where TMPFIL goes) names TMPFIL and the system's
    // reason, and leaves every row with its own record for the next one.
    fs::create_directory(file(kTableTempFile));
    grid.setCell(3, 1, "0");
    try {
        grid.save(general());
        FAIL() << "TMPFIL was written over a folder";
    } catch (const FileError& e) {
        EXPECT_EQ(e.path(), file(kTableTempFile));
        EXPECT_EQ(std::string(e.what()), "The bar table cannot be saved: Is a directory (file " +
                                             file(kTableTempFile).string() + ")");
    }
    fs::remove(file(kTableTempFile));
    grid.setCell(3, 1, "9");
    grid.setCell(4, 1, "0");
    ASSERT_EQ(grid.save(general()).recordsWritten, 2u);
    EXPECT_EQ(test::readBytes(file(kSpacingFile)),
              old(7.0f, 101.0f, 1.5f) + old(9.0f, 103.0f, 4.5f));

    const BarTableGrid reloaded = BarTableGrid::open(spacingTable(), general());
    EXPECT_EQ(reloaded.cell(2, 1), "9");
}

TEST_F(BarTables, RecordsNoRowShowsAreWrittenBackAfterTheRows) {
    // ROUNDBAR.DAT of 21 records: the grid shows 1 to 16, never 17 to 21. Record 18 is not in
    // use: a deleted row, which stays out.
    std::string hidden;
    std::string bytes;
    for (int n = 1; n <= 21; ++n) {
        const std::string r = roundbar(n == 18 ? ' ' : '1', {static_cast<float>(n), 0.5f, 0.25f});
        bytes += r;
        if (n >= 17 && n != 18) {
            hidden += r;
        }
    }
    test::writeBytes(file(kRoundbarFile), bytes);
    BarTableGrid grid = BarTableGrid::open(roundbarTable(), general());
    EXPECT_EQ(grid.cell(17, 1), "");

    // Row 3 is emptied and a bar typed into grid row 17: the rows in use, squeezed, come
    // first, then the records the grid never showed, as they were.
    grid.setCell(3, 1, "0");
    grid.setCell(17, 1, "40");
    EXPECT_EQ(grid.save(general()).recordsWritten, 16u + 4u);
    std::string expected =
        bytes.substr(0, 2 * 45) + bytes.substr(3 * 45, 13 * 45) + roundbar('1', {40.0f}) + hidden;
    EXPECT_EQ(test::readBytes(file(kRoundbarFile)), expected);

    // A table whose shown rows are all emptied keeps the others.
    for (int r = 1; r <= 20; ++r) {
        grid.setCell(r, 1, "");
    }
    EXPECT_EQ(grid.save(general()).outcome, TableSaveOutcome::Saved);
    EXPECT_EQ(test::readBytes(file(kRoundbarFile)), hidden);
}

TEST_F(BarTables, SavingAnAllEmptyTableDeletesTheFileAndLeavesTmpfil) {
    test::writeBytes(file(kRoundbarFile), roundbar('1', {12.0f, 0.89f, 1.13f}));
    BarTableGrid grid = BarTableGrid::open(roundbarTable(), general());
    grid.setCell(1, 1, "0");
    const TableSaveResult result = grid.save(general());
    EXPECT_EQ(result.outcome, TableSaveOutcome::AllEmpty);
    EXPECT_FALSE(fs::exists(file(kRoundbarFile)));
    ASSERT_TRUE(fs::exists(file(kTableTempFile)));
    EXPECT_EQ(fs::file_size(file(kTableTempFile)), 0u);
    EXPECT_TRUE(BarTableGrid::open(roundbarTable(), general()).showsDefaults());
}

TEST(BarTablesDeathTest, AProgramKilledBetweenWriteAndRenameLeavesTheOldTable) {
    // Forked without exec, the child saves into this very folder and dies before the rename.
    GTEST_FLAG_SET(death_test_style, "fast");
    test::TempDir dir;
    const std::string old =
        roundbar('1', {12.0f, 0.89f, 1.13f}) + roundbar('1', {14.0f, 1.21f, 1.54f});
    test::writeBytes(dir / "ROUNDBAR.DAT", old);
    EXPECT_EXIT(
        {
            BarTableGrid grid = BarTableGrid::open(roundbarTable(), dir.path());
            grid.setCell(1, 2, "0.95");
            TableSaveOptions options;
            options.beforeRename = [](const fs::path&) { std::_Exit(3); };
            grid.save(dir.path(), options);
        },
        ::testing::ExitedWithCode(3), "");
    EXPECT_EQ(test::readBytes(dir / "ROUNDBAR.DAT"), old);
    // The new table was complete in TMPFIL when the program died.
    EXPECT_EQ(test::readBytes(dir / "TMPFIL").substr(0, 45), roundbar('1', {12.0f, 0.95f, 1.13f}));
}

TEST_F(BarTables, DamagedFilesNeverPutBadValuesIntoADesign) {
    // 2 records and 30 bytes of a third: rounded to 3, the torn record reads as an empty row.
    const std::string two =
        roundbar('1', {10.0f, 0.62f, 0.79f}) + roundbar('1', {12.0f, 0.89f, 1.13f});
    test::writeBytes(file(kRoundbarFile), two + roundbar('1', {14.0f, 1.21f, 1.54f}).substr(0, 30));
    BarTableGrid grid = BarTableGrid::open(roundbarTable(), general());
    EXPECT_EQ(grid.cell(3, 1), "0");
    EXPECT_EQ(LoadBarDiameters(general()).diameters, (std::vector<float>{10.0f, 12.0f}));
    // 10 stray bytes round down: two records.
    test::writeBytes(file(kRoundbarFile), two + std::string(10, '1'));
    EXPECT_EQ(LoadBarProperties(general()).rows.size(), 2u);

    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    test::writeBytes(file(kRoundbarFile),
                     roundbar('1', {nan, 1.0f, 1.0f}) + roundbar('1', {16.0f, inf, -inf}));
    EXPECT_EQ(LoadBarDiameters(general()).diameters, (std::vector<float>{16.0f}));
    const auto bar16 = FindBarProperties(16.0f, LoadBarProperties(general()).rows);
    ASSERT_TRUE(bar16.has_value());
    EXPECT_EQ(bar16->weightKgPerM, 0.0f);
    EXPECT_EQ(bar16->areaCm2, 0.0f);
    grid = BarTableGrid::open(roundbarTable(), general());
    EXPECT_EQ(grid.cell(1, 1), "0");
    EXPECT_EQ(grid.cell(2, 2), "0");
}

TEST_F(BarTables, MoreThanFiftyDiametersIsAClearError) {
    std::string bytes;
    for (int n = 1; n <= 50; ++n) {
        bytes += roundbar('1', {static_cast<float>(n), 1.0f, 1.0f});
    }
    test::writeBytes(file(kRoundbarFile), bytes);
    EXPECT_EQ(LoadBarDiameters(general()).diameters.size(), 50u);

    test::writeBytes(file(kRoundbarFile), bytes + roundbar('1', {51.0f, 1.0f, 1.0f}));
    try {
        LoadBarDiameters(general());
        FAIL() << "a 51st diameter was accepted";
    } catch (const FileError& e) {
        EXPECT_EQ(e.record(), 51);
        EXPECT_NE(std::string(e.what()).find("more than 50 bar diameters"), std::string::npos)
            << e.what();
    }
}

TEST_F(BarTables, PrintGivesHeadingsAndOneLinePerRowInUseThroughTheColumnMasks) {
    BarTableGrid mesh(netironTable());
    mesh.setCell(1, 1, "6");
    mesh.setCell(1, 2, "15");
    mesh.setCell(1, 3, "20");
    mesh.setCell(1, 4, "1.875");
    mesh.setCell(1, 5, "1.41");
    mesh.setCell(1, 6, "1");
    mesh.setCell(3, 1, "8"); // row 2 stays empty and is not printed
    // Masks "##.# ", "###.# ", "###.# ", "##.## ", "##.## ", "  #"; 1.875 (exact in binary)
    // rounds half away from zero to 1.88.
    EXPECT_EQ(printTable(mesh, "@0:Mesh@1:d s1 s2@2:@3:units"),
              "Mesh\n"
              "d s1 s2\n"
              "units\n"
              " 6.0  15.0  20.0  1.88  1.41   1\n"
              " 8.0   0.0   0.0  0.00  0.00   0\n");

    BarTableGrid bars(roundbarTable());
    bars.setCell(1, 1, "12");
    bars.setCell(1, 2, "0.89");
    const std::string text = printTable(bars);
    // Only the diameter, the weight and the area are printed; the eight kept values are not.
    EXPECT_EQ(text.substr(text.find('\n', text.find('\n') + 1) + 1), " 12   0.89  0.00\n");
}

TEST_F(BarTables, DeleteRemovesOnlyTheTableFile) {
    EXPECT_FALSE(deleteTableFile(spacingTable(), general()));
    test::writeBytes(file("spacing.dat"), record('1', {7.0f}, 21)); // found without regard to case
    test::writeBytes(file(kRoundbarFile), roundbar('1', {12.0f}));
    EXPECT_TRUE(tableFileExists(spacingTable(), general()));
    EXPECT_TRUE(deleteTableFile(spacingTable(), general()));
    EXPECT_FALSE(fs::exists(file("spacing.dat")));
    EXPECT_TRUE(fs::exists(file(kRoundbarFile)));
}

TEST(BarTablesCells, CellNumbersAreReadAsTheirLeadingNumber) {
    EXPECT_EQ(cellNumber(""), 0.0);
    EXPECT_EQ(cellNumber("   "), 0.0);
    EXPECT_EQ(cellNumber("abc"), 0.0);
    EXPECT_EQ(cellNumber("12abc"), 12.0);
    EXPECT_EQ(cellNumber("  7.5"), 7.5);
    EXPECT_EQ(cellNumber("+3"), 3.0);
    EXPECT_EQ(cellNumber("-2.25"), -2.25);
    EXPECT_EQ(cellNumber(".5"), 0.5);
    EXPECT_EQ(cellNumber("nan"), 0.0);
    EXPECT_EQ(cellNumber("inf"), 0.0);
    EXPECT_EQ(cellNumber("1e999"), 0.0);
}

} // namespace
} // namespace orvak::bars
