// Tests of the beam settings: the code values standing in for settings left at zero, the
// stored byte order of the record and the settings file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beams/beam_settings.h"
#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::beams {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

TEST(BeamSettingsFallbacks, ZeroRecordDesignsWithCodeValues) {
    const BeamSettings zero = decodeBeamSettings(core::RecordBuffer(kBeamSettingsLayout.size));
    EXPECT_DOUBLE_EQ(zero.effectiveFacRmax(), 0.5);
    EXPECT_DOUBLE_EQ(zero.effectiveFacRmin(), 14.06);
    EXPECT_DOUBLE_EQ(zero.effectiveMomFi(), 0.9);
    EXPECT_DOUBLE_EQ(zero.effectiveShearFi(), 0.85);
    EXPECT_DOUBLE_EQ(zero.effectiveVsMin(), 3.5);
    EXPECT_DOUBLE_EQ(zero.effectiveLdfact(), 1.0);

    BeamSettings negative;
    negative.MomFiTxt = -0.7f;
    EXPECT_DOUBLE_EQ(negative.effectiveMomFi(), 0.9);

    // A value set by the user is used as it stands, and saving keeps the zero as zero.
    BeamSettings set;
    set.ShearFiTxt = 0.75f;
    EXPECT_DOUBLE_EQ(set.effectiveShearFi(), 0.75f);
    EXPECT_EQ(decodeBeamSettings(encodeBeamSettings(zero)).MomFiTxt, 0.0f);
}

TEST(BeamSettingsRecord, GoldenBytesOfTheDefaults) {
    const core::RecordBuffer rec = encodeBeamSettings(defaultBeamSettings());
    const auto& b = rec.bytes();
    ASSERT_EQ(b.size(), 243u);
    EXPECT_EQ(b[0], '1');
    // Offsets counted by hand from the stored order: 1 mark, six int16 (1..12), MINDIST 13,
    // MINAREA 17, CutNgtvBarsChk 21, six singles 23..46, SDIAMTXT 47, SSPCTXT 51,
    // MinSSPCTXT 55, WIDTHLNK 59, angleheight 63, DSTXT 75, CONTBSTLCHK 123, FACDEADL 125,
    // FACDAYNL 133, DeflTxt 141 ... THIKTXT 195..242.
    const auto at = [&](std::size_t offset, std::vector<std::uint8_t> expected) {
        EXPECT_EQ(
            std::vector<std::uint8_t>(b.begin() + offset, b.begin() + offset + expected.size()),
            expected)
            << "offset " << offset;
    };
    at(1, {0x02, 0x00});               // MINUPSQ 2
    at(47, {0x00, 0x00, 0x00, 0x41});  // SDIAMTXT 8.0f = 0x41000000
    at(125, {0x33, 0x33, 0xB3, 0x3F}); // FACDEADL[0] 1.4f
    at(133, {0x9A, 0x99, 0xD9, 0x3F}); // FACDAYNL[0] 1.7f
    at(137, {0x00, 0x00, 0x00, 0x00}); // FACDAYNL[1] 0
    at(141, {0x00, 0x00, 0xB4, 0x43}); // DeflTxt 360.0f
    at(195, {0x00, 0x00, 0x80, 0x41}); // THIKTXT[0] 16.0f = 0x41800000
}

TEST(BeamSettingsFile, MissingFileGivesDefaultsAndSavedValuesReadBack) {
    test::TempDir dir;
    EXPECT_EQ(readBeamSettingsFile(dir.path()), defaultBeamSettings());
    BeamSettings s = defaultBeamSettings();
    s.MomFiTxt = 0.0f;
    s.DSTXT[11] = 36.0f;
    s.RedMomChk = 1;
    writeBeamSettingsFile(dir.path(), s);
    EXPECT_EQ(std::filesystem::file_size(dir / "BMSETING.DAT"), 243u);
    EXPECT_EQ(readBeamSettingsFile(dir.path()), s);
}

// A file another program damaged, or a slip saved by an older version, is refused when read,
// with the file and the setting named: each new beam would otherwise copy it into its design.
TEST(BeamSettingsFile, ValuesNoDesignCanUseAreRefusedWithFileAndSettingNamed) {
    test::TempDir dir;
    const auto refusal = [&] {
        try {
            readBeamSettingsFile(dir.path());
        } catch (const FileError& e) {
            return std::string(e.what());
        }
        return std::string("read without complaint");
    };
    BeamSettings s = defaultBeamSettings();
    s.MomFiTxt = 9.0f; // 0.9 typed without its point
    writeBeamSettingsFile(dir.path(), s);
    EXPECT_THAT(refusal(), AllOf(HasSubstr("BMSETING.DAT"), HasSubstr("MomFiTxt")));

    // Four blanks where DeflTxt's single lies (bytes 141-144) read as about 1.4e-19: L/1e-19.
    writeBeamSettingsFile(dir.path(), defaultBeamSettings());
    std::string bytes = test::readBytes(dir / "BMSETING.DAT");
    bytes.replace(141, 4, "    ");
    test::writeBytes(dir / "BMSETING.DAT", bytes);
    EXPECT_THAT(refusal(), HasSubstr("DeflTxt"));

    s = defaultBeamSettings();
    s.MINDNSQ = 500; // five hundred bottom bars as the least a beam gets
    writeBeamSettingsFile(dir.path(), s);
    EXPECT_THAT(refusal(), HasSubstr("MINDNSQ is 500"));
    s = defaultBeamSettings();
    s.MINUPSD = 1; // a 1 mm bar
    writeBeamSettingsFile(dir.path(), s);
    EXPECT_THAT(refusal(), HasSubstr("MINUPSD is 1"));
}

} // namespace
} // namespace orvak::beams
