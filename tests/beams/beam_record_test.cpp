// Tests of the beam record: golden bytes at hand-counted offsets, the beam file, the checks of
// a beam and its translation into the analysis engine's units.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>

#include "beams/beam_record.h"
#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::beams {
namespace {

// Two spans of a 30 × 60 rectangle, 5.0 and 6.5 m; span 2 carries a point load of 4 t dead,
// 1.5 t live at 3 m; the middle support is fixed.
BeamRecord sampleBeam() {
    BeamRecord b;
    b.name = "B7";
    b.floor = 2;
    b.number = 1;
    b.fc = 250.0f;
    b.fyMain = 4200.0f;
    b.fyStirrups = 2400.0f;
    b.coverTopCm = 4.0f;
    b.coverBottomCm = 4.0f;
    b.coverSideCm = 2.5f;
    b.settings = defaultBeamSettings();
    StoredSpan span;
    span.sectionKind = 2;
    span.dims = {0, 0, 30, 0, 60};
    span.lengthM = 5.0f;
    span.loads[loadIndex(LoadKind::Uniform)] = {true, 2.0f, 1.0f};
    b.spans.push_back(span);
    span.lengthM = 6.5f;
    StoredLoad& point = span.loads[loadIndex(LoadKind::Concentrated)];
    point = {true, 4.0f, 1.5f};
    point.startM = 3.0f;
    b.spans.push_back(span);
    b.supports = {{2, 0, 30.0f}, {2, 1, 30.0f}, {2, 0, 30.0f}};
    b.sustainedLivePercent = 25.0f;
    b.liveLoadMonths = 36.0f;
    return b;
}

std::vector<std::uint8_t> bytesAt(const core::RecordBuffer& rec, std::size_t offset,
                                  std::size_t n) {
    return {rec.bytes().begin() + offset, rec.bytes().begin() + offset + n};
}

TEST(BeamRecordLayout, GoldenBytesAtHandCountedOffsets) {
    const core::RecordBuffer rec = encodeBeamRecord(sampleBeam());
    ASSERT_EQ(rec.length(), 16699u);
    // Header: mark 0, name 1..20, floor 21, number 23, support count 25, fc 27, fy main 31,
    // fy stirrups 35, covers 39/43/47; section kinds 51, dims 111, span lengths 711,
    // load flags 831, load values 1131, placements 2571, lengths 3171, triangle peaks 3771,
    // support codes 3831, second codes 3893, support values 3955, settings copy 4203.
    EXPECT_EQ(bytesAt(rec, 0, 4), (std::vector<std::uint8_t>{'1', 'B', '7', ' '}));
    EXPECT_EQ(bytesAt(rec, 21, 2), (std::vector<std::uint8_t>{0x02, 0x00}));
    EXPECT_EQ(bytesAt(rec, 25, 2), (std::vector<std::uint8_t>{0x03, 0x00}));
    EXPECT_EQ(bytesAt(rec, 27, 4), (std::vector<std::uint8_t>{0x00, 0x00, 0x7A, 0x43}));
    // Span 2 length 6.5f = 0x40D00000 at 711 + 4.
    EXPECT_EQ(bytesAt(rec, 715, 4), (std::vector<std::uint8_t>{0x00, 0x00, 0xD0, 0x40}));
    // Span 2 (s = 1), point load (k = 4): flag at 831 + 2·(1·5 + 3) = 847.
    EXPECT_EQ(bytesAt(rec, 847, 2), (std::vector<std::uint8_t>{0x01, 0x00}));
    // Its dead value at 1131 + 4·((1·4 + 3)·3) = 1215 (4.0f), live at 1219 (1.5f = 0x3FC00000).
    EXPECT_EQ(bytesAt(rec, 1215, 8),
              (std::vector<std::uint8_t>{0x00, 0x00, 0x80, 0x40, 0x00, 0x00, 0xC0, 0x3F}));
    // Its distance at 2571 + 4·(1·5 + 3) = 2603 (3.0f).
    EXPECT_EQ(bytesAt(rec, 2603, 4), (std::vector<std::uint8_t>{0x00, 0x00, 0x40, 0x40}));
    // Support 2 second code 1 at 3893 + 2; support 3 code 2 at 3831 + 4.
    EXPECT_EQ(bytesAt(rec, 3895, 2), (std::vector<std::uint8_t>{0x01, 0x00}));
    EXPECT_EQ(bytesAt(rec, 3835, 2), (std::vector<std::uint8_t>{0x02, 0x00}));
    // Settings copy: its mark at 4203, FACDEADL[0] = 1.4f at 4203 + 125.
    EXPECT_EQ(rec.bytes()[4203], '1');
    EXPECT_EQ(bytesAt(rec, 4328, 4), (std::vector<std::uint8_t>{0x33, 0x33, 0xB3, 0x3F}));
    // After the settings (4203 + 243 = 4446) the scheme and free degrees of freedom (4446,
    // 4448), then the sustained live load % at 4450 (25.0f = 0x41C80000) and the live-load
    // duration at 4454 (36.0f = 0x42100000); the blank reserve from 4458 to the end.
    EXPECT_EQ(bytesAt(rec, 4450, 8),
              (std::vector<std::uint8_t>{0x00, 0x00, 0xC8, 0x41, 0x00, 0x00, 0x10, 0x42}));
    EXPECT_EQ(rec.bytes()[4458], ' ');
    EXPECT_EQ(rec.bytes()[16698], ' ');
}

TEST(BeamRecordLayout, BlankDeflectionDataReadsAsNoSustainedLoadAndTheDefaultDuration) {
    // A record written before the deflection data had a place holds blanks there.
    core::RecordBuffer rec = encodeBeamRecord(sampleBeam());
    std::fill(rec.bytes().begin() + 4450, rec.bytes().begin() + 4458, ' ');
    std::string error;
    const BeamRecord b = decodeBeamRecord(rec, error);
    ASSERT_EQ(error, "");
    EXPECT_EQ(b.sustainedLivePercent, 0.0f);
    EXPECT_EQ(b.liveLoadMonths, 0.0f);
    EXPECT_EQ(b.effectiveLiveLoadMonths(), 60.0);
}

TEST(BeamRecordFile, RoundTripAndCorruptRecord) {
    test::TempDir dir;
    const BeamRecord beam = sampleBeam();
    writeBeamFile(dir.path(), 2, {beam, beam});
    EXPECT_EQ(std::filesystem::file_size(dir / "BEAMS.2"), 2u * 16699u);
    const auto read = readBeamFile(dir.path(), 2);
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0], beam);
    EXPECT_TRUE(readBeamFile(dir.path(), 3).empty());

    // A file cut inside its second record is damaged, not a file of one beam.
    std::filesystem::resize_file(dir / "BEAMS.2", 16699 + 100);
    EXPECT_THROW(readBeamFile(dir.path(), 2), FileError);
    writeBeamFile(dir.path(), 2, {beam, beam});

    // A support count of 40 cannot be: the file is reported with the record, not guessed at.
    {
        std::fstream f(dir / "BEAMS.2", std::ios::in | std::ios::out | std::ios::binary);
        f.seekp(16699 + 25);
        f.put(40);
    }
    try {
        readBeamFile(dir.path(), 2);
        FAIL() << "a corrupt record was accepted";
    } catch (const FileError& e) {
        EXPECT_EQ(e.record(), 2);
        EXPECT_NE(std::string(e.what()).find("supports"), std::string::npos);
    }
}

TEST(BeamRecordChecks, NameTheSpanAndField) {
    const auto problem = [](auto change) {
        BeamRecord b = sampleBeam();
        change(b);
        return validateBeam(b);
    };
    EXPECT_EQ(validateBeam(sampleBeam()), "");
    EXPECT_NE(problem([](BeamRecord& b) { b.spans[1].lengthM = 0; }).find("span 2"),
              std::string::npos);
    EXPECT_NE(problem([](BeamRecord& b) { b.spans[0].dims[4] = 0; }).find("height"),
              std::string::npos);
    EXPECT_NE(problem([](BeamRecord& b) { b.spans[1].loads[3].startM = 7.0f; }).find("point load"),
              std::string::npos);
    EXPECT_NE(problem([](BeamRecord& b) {
                  b.spans[0].loads[0].dead = std::nanf("");
              }).find("not a number"),
              std::string::npos);
    EXPECT_NE(problem([](BeamRecord& b) { b.supports.pop_back(); }).find("supports"),
              std::string::npos);
    EXPECT_NE(problem([](BeamRecord& b) { b.sustainedLivePercent = 101.0f; }).find("sustained"),
              std::string::npos);
    EXPECT_NE(problem([](BeamRecord& b) { b.liveLoadMonths = -1.0f; }).find("duration"),
              std::string::npos);
    // A setting that is not a number is refused; a negative one stands for the code's value,
    // except for the load factors, which have none.
    EXPECT_EQ(problem([](BeamRecord& b) { b.settings.THIKTXT[5] = std::nanf(""); }),
              "the setting THIKTXT must be a number");
    EXPECT_EQ(problem([](BeamRecord& b) { b.settings.FACDAYNL[1] = -1.7f; }),
              "the setting FACDAYNL must be a number of 0 or more");
    EXPECT_EQ(problem([](BeamRecord& b) { b.settings.MomFiTxt = -1.0f; }), "");
    EXPECT_NE(problem([](BeamRecord& b) { b.settings.MomFiTxt = 9.0f; }).find("above 1"),
              std::string::npos);
    // Four blanks stored where a single belongs read as 0x20202020 = 1.35e-19: a phi that
    // small would ask for 1e19 times the steel, so it is refused by name, like a bar
    // diameter of 0.5 mm among the offered ones.
    float blanks = 0.0f;
    const std::uint32_t bits = 0x20202020u;
    std::memcpy(&blanks, &bits, sizeof blanks);
    EXPECT_NEAR(blanks, 1.35e-19f, 0.01e-19f);
    EXPECT_NE(problem([&](BeamRecord& b) { b.settings.MomFiTxt = blanks; }).find("MomFiTxt"),
              std::string::npos);
    EXPECT_NE(problem([](BeamRecord& b) { b.settings.DSTXT[2] = 0.5f; }).find("DSTXT"),
              std::string::npos);
    EXPECT_EQ(problem([](BeamRecord& b) { b.settings.FacRmaxTxt = 0.75f; }), "");
    // Record 1000 of a floor's file: its steel key would be beam 1's.
    EXPECT_NE(problem([](BeamRecord& b) { b.number = 1000; }).find("at most 999 beams"),
              std::string::npos);
}

TEST(BeamRecordAnalysisInput, ConvertsToKgAndCm) {
    BeamRecord b = sampleBeam();
    StoredLoad& tri = b.spans[0].loads[loadIndex(LoadKind::Triangular)];
    tri = {true, 1.0f, 0.5f};
    b.spans[0].trianglePeakLeft = true;
    const BeamAnalysisInput in = analysisInput(b, 3);
    ASSERT_EQ(in.spans.size(), 2u);
    EXPECT_EQ(in.caseScheme, 3);
    EXPECT_NEAR(in.spans[1].lengthCm, 650.0, 1e-9);
    EXPECT_NEAR(in.spans[0].inertiaCm4, 540000.0, 1e-6); // 30 · 60³ / 12
    // Ec = 15100 · √250 = 238,751.96 kg/cm².
    EXPECT_NEAR(in.elasticModulusKgCm2, 238751.96, 0.01);
    // 2 t/m = 2000 kg / 100 cm = 20 kg/cm; 4 t = 4000 kg at 300 cm.
    EXPECT_NEAR(in.spans[0].loads[0].deadValue, 20.0, 1e-9);
    EXPECT_NEAR(in.spans[1].loads[3].deadValue, 4000.0, 1e-9);
    EXPECT_NEAR(in.spans[1].loads[3].liveValue, 1500.0, 1e-9);
    EXPECT_NEAR(in.spans[1].loads[3].startCm, 300.0, 1e-9);
    EXPECT_EQ(in.spans[0].loads[1].peak, TrianglePeak::AtLeft);
    EXPECT_FALSE(in.spans[1].loads[1].present);
    EXPECT_TRUE(in.supports[1].restrainsRotation);
    EXPECT_FALSE(in.supports[0].restrainsRotation);
    EXPECT_NEAR(in.factors.dead[0], 1.4, 1e-6);
    EXPECT_NEAR(in.factors.live[1], 0.0, 1e-12);
}

} // namespace
} // namespace orvak::beams
