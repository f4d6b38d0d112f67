// Tests of the floors file CIELS.DAT: golden bytes, round trip and the checks of a floor list.
#include <gtest/gtest.h>

#include "core/error.h"
#include "core/file_util.h"
#include "floors/floors.h"
#include "support/temp_dir.h"

namespace orvak::floors {
namespace {

TEST(FloorsFile, GoldenBytesAndRoundTrip) {
    test::TempDir dir;
    const std::vector<Floor> list = {{1, "Ground", 0.0f, 15.0f}, {12, "Roof", 6.4f, 12.5f}};
    writeFloors(dir.path(), list);
    const auto bytes = core::readWholeFile(dir / "CIELS.DAT");
    ASSERT_TRUE(bytes);
    ASSERT_EQ(bytes->size(), 62u);
    // Record 2 starts at 31: mark, number 12 at 32, name at 34..53, level 54, thickness 58.
    EXPECT_EQ((*bytes)[31], '1');
    EXPECT_EQ((*bytes)[32], 12);
    EXPECT_EQ((*bytes)[33], 0);
    EXPECT_EQ(std::string(bytes->begin() + 34, bytes->begin() + 54), "Roof                ");
    // 12.5f = 0x41480000.
    EXPECT_EQ(std::vector<std::uint8_t>(bytes->begin() + 58, bytes->end()),
              (std::vector<std::uint8_t>{0x00, 0x00, 0x48, 0x41}));
    EXPECT_EQ(readFloors(dir.path()), list);
    EXPECT_EQ(beamFileName(12), "BEAMS.12");
}

TEST(FloorsFile, DamagedFilesAreReportedNotShortened) {
    test::TempDir dir;
    writeFloors(dir.path(), {{1, "Ground", 0.0f, 15.0f}, {2, "Roof", 3.2f, 15.0f}});
    std::string bytes = test::readBytes(dir / "CIELS.DAT");
    // Cut in the middle of record 2: floor 2 must not silently vanish.
    test::writeBytes(dir / "CIELS.DAT", bytes.substr(0, 46));
    EXPECT_THROW(readFloors(dir.path()), FileError);
    // Floor number 0 in record 2 (offset 31 + 1): no floor can have it.
    bytes[32] = 0;
    test::writeBytes(dir / "CIELS.DAT", bytes);
    try {
        readFloors(dir.path());
        FAIL() << "floor 0 was read";
    } catch (const FileError& e) {
        EXPECT_NE(std::string(e.what()).find("Floor number 0"), std::string::npos) << e.what();
    }
}

TEST(FloorsChecks, RefuseBadNumbersAndValues) {
    EXPECT_EQ(validateFloors({{1, "A", 0, 15}, {2, "B", 3, 15}}), "");
    EXPECT_NE(validateFloors({{1, "A", 0, 15}, {1, "B", 3, 15}}).find("used twice"),
              std::string::npos);
    EXPECT_NE(validateFloors({{0, "A", 0, 15}}).find("between 1 and 999"), std::string::npos);
    EXPECT_NE(validateFloors({{3, "A", 0, -1}}).find("Floor 3"), std::string::npos);
    EXPECT_NE(validateFloors({{3, std::string(21, 'x'), 0, 1}}).find("longer"), std::string::npos);
}

TEST(FloorsEdits, AddReplaceRemoveAndNextNumber) {
    test::TempDir dir;
    EXPECT_EQ(nextFloorNumber({}), 1);
    EXPECT_EQ(nextFloorNumber({{1, "A", 0, 15}, {7, "B", 3, 15}}), 8);
    // 999 taken: the lowest free number; all taken: none.
    EXPECT_EQ(nextFloorNumber({{1, "A", 0, 15}, {999, "B", 3, 15}}), 2);
    std::vector<Floor> all;
    for (int n = 1; n <= kMaxFloorNumber; ++n) {
        all.push_back({static_cast<std::int16_t>(n), "", 0, 0});
    }
    EXPECT_EQ(nextFloorNumber(all), 0);

    saveFloor(dir.path(), {2, "Second", 3.2f, 15.0f});
    saveFloor(dir.path(), {1, "Ground", 0.0f, 20.0f});
    saveFloor(dir.path(), {2, "Upper", 3.4f, 16.0f}); // replaces floor 2 in its place
    EXPECT_EQ(readFloors(dir.path()),
              (std::vector<Floor>{{2, "Upper", 3.4f, 16.0f}, {1, "Ground", 0.0f, 20.0f}}));
    // Out of bounds, or a floor the list cannot hold: refused, nothing written.
    const auto before = test::readBytes(dir / "CIELS.DAT");
    EXPECT_THROW(saveFloor(dir.path(), {3, "High", 5000.0f, 15.0f}), InputError);
    EXPECT_THROW(saveFloor(dir.path(), {3, "Thick", 3.0f, 301.0f}), InputError);
    EXPECT_THROW(saveFloor(dir.path(), {0, "Zero", 3.0f, 15.0f}), InputError);
    EXPECT_EQ(test::readBytes(dir / "CIELS.DAT"), before);

    // Removing a floor takes its beam file with it, and leaves the other floor's.
    test::writeBytes(dir / "BEAMS.2", "beams of floor 2");
    test::writeBytes(dir / "BEAMS.1", "beams of floor 1");
    removeFloor(dir.path(), 2);
    EXPECT_EQ(readFloors(dir.path()), (std::vector<Floor>{{1, "Ground", 0.0f, 20.0f}}));
    EXPECT_FALSE(std::filesystem::exists(dir / "BEAMS.2"));
    EXPECT_TRUE(std::filesystem::exists(dir / "BEAMS.1"));
    EXPECT_THROW(removeFloor(dir.path(), 2), InputError);
}

} // namespace
} // namespace orvak::floors
