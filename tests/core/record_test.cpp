// Golden byte tests of the fixed-record codec and the in-memory record file: every expected
// byte is written out by hand from the little-endian int16 / IEEE single / blank-padded layout.
#include "core/record.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <string>

#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::core {
namespace {

// Mark (text 1), Count (int16), Load (single), Name (text 6), Levels (2 × int16), Total (int32).
constexpr auto kSample = packFields(std::array<FieldSpec, 6>{{
    {"Mark", FieldType::Text, 1},
    {"Count", FieldType::Int16},
    {"Load", FieldType::Single},
    {"Name", FieldType::Text, 6},
    {"Levels", FieldType::Int16, 0, 2},
    {"Total", FieldType::Int32},
}});
static_assert(kSample.size == 1 + 2 + 4 + 6 + 2 * 2 + 4);
static_assert(kSample["Levels"].offset == 13 && kSample["Total"].offset == 17);

// The record below, byte by byte:
//   "1"                 Mark
//   FE FF               Count  = -2      (0xFFFE)
//   00 00 C0 3F         Load   = 1.5f    (sign 0, exponent 127, mantissa 0x400000)
//   "AB    "            Name   = "AB", blank-padded to 6
//   2C 01  00 80        Levels = 300 (0x012C), -32768 (0x8000)
//   60 79 FE FF         Total  = -100000 (0xFFFE7960)
const std::string kGolden("1"
                          "\xFE\xFF"
                          "\x00\x00\xC0\x3F"
                          "AB    "
                          "\x2C\x01\x00\x80"
                          "\x60\x79\xFE\xFF",
                          21);

std::string asString(const RecordBuffer& rec) {
    return std::string(rec.bytes().begin(), rec.bytes().end());
}

RecordBuffer fromString(const std::string& bytes) {
    return RecordBuffer(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

TEST(RecordCodec, WritesAndReadsGoldenBytes) {
    RecordBuffer rec = blankRecord(kSample);
    rec.setText(kSample["Mark"], "1");
    rec.setInt16(kSample["Count"], -2);
    rec.setSingle(kSample["Load"], 1.5f);
    rec.setText(kSample["Name"], "AB");
    rec.setInt16(kSample["Levels"], 300, 0);
    rec.setInt16(kSample["Levels"], -32768, 1);
    rec.setInt32(kSample["Total"], -100000);
    EXPECT_EQ(asString(rec), kGolden);
    EXPECT_TRUE(rec.inUse());

    rec = fromString(kGolden);
    EXPECT_EQ(rec.getText(kSample["Mark"]), "1");
    EXPECT_EQ(rec.getInt16(kSample["Count"]), -2);
    EXPECT_EQ(rec.getSingle(kSample["Load"]), 1.5f); // exact: 1.5 is a binary fraction
    EXPECT_EQ(rec.getText(kSample["Name"]), "AB    ");
    EXPECT_EQ(rec.getTrimmedText(kSample["Name"]), "AB");
    EXPECT_EQ(rec.getInt16(kSample["Levels"], 0), 300);
    EXPECT_EQ(rec.getInt16(kSample["Levels"], 1), -32768);
    EXPECT_EQ(rec.getInt32(kSample["Total"]), -100000);
}

TEST(RecordCodec, TextIsCutOrPaddedToItsWidth) {
    RecordBuffer rec = blankRecord(kSample);
    // A fresh blank record: text fields blanks, numbers zero bytes.
    EXPECT_EQ(asString(rec), std::string(" \0\0\0\0\0\0      \0\0\0\0\0\0\0\0", 21));
    rec.setText(kSample["Name"], "ABCDEFGH");
    EXPECT_EQ(rec.getText(kSample["Name"]), "ABCDEF");
    rec.setText(kSample["Name"], "XY");
    EXPECT_EQ(rec.getText(kSample["Name"]), "XY    ") << "a shorter text must clear the old tail";

    // Files written by other programs may pad with NULs; trimming drops those as well.
    RecordBuffer nulPadded =
        fromString(std::string("1\0\0\0\0\0\0AB\0\0 \0", 13) + std::string(8, '\0'));
    EXPECT_EQ(nulPadded.getTrimmedText(kSample["Name"]), "AB");
    EXPECT_FALSE(fromString(std::string(21, ' ')).inUse());
}

TEST(RecordCodecDeathTest, AnUnknownFieldNameAssertsNamingIt) {
    const std::string name = "Lod"; // a slip of "Load", known only at run time
    EXPECT_DEATH(kSample[name], "the record layout has no field \"Lod\"");
}

TEST(RecordCodec, SinglesKeepTheirBits) {
    RecordBuffer rec(kSample.size);
    // -0.1f = 0xBDCCCCCD, the nearest single to -0.1.
    rec.setSingle(kSample["Load"], -0.1f);
    EXPECT_EQ(asString(rec).substr(3, 4), std::string("\xCD\xCC\xCC\xBD", 4));

    // A quiet NaN with a payload, as a corrupt or foreign file may hold: it reads as NaN and
    // is written back with the very same bits.
    std::string bytes(21, '\0');
    bytes.replace(3, 4, std::string("\x45\x23\xC1\x7F", 4)); // 0x7FC12345
    const RecordBuffer nan = fromString(bytes);
    const float v = nan.getSingle(kSample["Load"]);
    EXPECT_TRUE(std::isnan(v));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(v), 0x7FC12345u);
    RecordBuffer copy(kSample.size);
    copy.setSingle(kSample["Load"], v);
    EXPECT_EQ(asString(copy), bytes);
}

class RecordFileTest : public ::testing::Test {
protected:
    test::TempDir dir;
    std::filesystem::path file = dir / "DATA.DAT";
};

TEST_F(RecordFileTest, CountIsWholeRecordsOfTheFileLength) {
    // A missing file is an empty file; a folder in its place is an error.
    EXPECT_EQ(RecordFile::load(file, 21).count(), 0u);
    std::filesystem::create_directory(dir / "FOLDER.DAT");
    EXPECT_THROW(RecordFile::load(dir / "FOLDER.DAT", 21), FileError);

    // Three records and 5 stray bytes: 5 < 21/2, so even rounding counts 3.
    test::writeBytes(file, kGolden + kGolden + kGolden + "12345");
    EXPECT_EQ(RecordFile::load(file, 21).count(), 3u);
    EXPECT_EQ(RecordFile::load(file, 21, RecordFile::Count::Round).count(), 3u);

    // Two records and 11 bytes: 11 * 2 >= 21, so rounding counts a third record whose missing
    // tail reads as zero bytes; truncation still counts 2.
    test::writeBytes(file, kGolden + kGolden + kGolden.substr(0, 11));
    EXPECT_EQ(RecordFile::load(file, 21).count(), 2u);
    const RecordFile rounded = RecordFile::load(file, 21, RecordFile::Count::Round);
    ASSERT_EQ(rounded.count(), 3u);
    EXPECT_EQ(asString(rounded.read(3)), kGolden.substr(0, 11) + std::string(10, '\0'));

    // 10 bytes are less than half of 21.
    test::writeBytes(file, kGolden + kGolden.substr(0, 10));
    EXPECT_EQ(RecordFile::load(file, 21, RecordFile::Count::Round).count(), 1u);
}

TEST_F(RecordFileTest, ReadAndWriteBeyondTheEnd) {
    test::writeBytes(file, kGolden);
    RecordFile records = RecordFile::load(file, 21);
    EXPECT_EQ(asString(records.read(1)), kGolden);
    EXPECT_EQ(asString(records.read(500)), std::string(21, '\0')) << "zero bytes past the end";
    RecordBuffer rec = fromString(kGolden);
    rec.setInt16(kSample["Count"], 7); // 07 00
    records.write(4, rec);
    EXPECT_EQ(records.count(), 4u);
    EXPECT_EQ(asString(records.read(2)), std::string(21, '\0')) << "the gap is fresh records";
    records.save();

    std::string expected4 = kGolden;
    expected4.replace(1, 2, std::string("\x07\x00", 2));
    EXPECT_EQ(test::readBytes(file), kGolden + std::string(42, '\0') + expected4);

    records.truncate(1);
    records.save();
    EXPECT_EQ(test::readBytes(file), kGolden);
    EXPECT_EQ(RecordFile::load(file, 21).count(), 1u);
}

TEST_F(RecordFileTest, SavingKeepsAPartialLastRecordUntilAWriteCoversIt) {
    // A damaged file ends in 5 stray bytes: saving record 1 must not drop them.
    test::writeBytes(file, kGolden + "12345");
    RecordFile records = RecordFile::load(file, 21);
    RecordBuffer rec = fromString(kGolden);
    rec.setInt16(kSample["Count"], 7);
    records.write(1, rec);
    records.save();
    std::string expected1 = kGolden;
    expected1.replace(1, 2, std::string("\x07\x00", 2));
    EXPECT_EQ(test::readBytes(file), expected1 + "12345");

    // Writing record 2 puts a whole record where the stray bytes stood.
    records.write(2, fromString(kGolden));
    records.save();
    EXPECT_EQ(test::readBytes(file), expected1 + kGolden);
}

} // namespace
} // namespace orvak::core
