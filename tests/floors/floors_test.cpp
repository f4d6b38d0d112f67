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

} // namespace
} // namespace orvak::floors
