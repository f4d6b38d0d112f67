// Tests of the case files: sizes, the factored loads of each case's record copy and the
// support moment kept in the first result table, and no stale files after a failed run.
#include <gtest/gtest.h>

#include "beams/case_files.h"
#include "support/temp_dir.h"

namespace orvak::beams {
namespace {

namespace fs = std::filesystem;

// Two equal spans of 5 m, uniform load 2 t/m dead and 1 t/m live, simply supported ends.
BeamRecord twoSpanBeam() {
    BeamRecord b;
    b.name = "C1";
    b.fc = 250.0f;
    b.fyMain = b.fyStirrups = 4200.0f;
    b.coverTopCm = b.coverBottomCm = 4.0f;
    b.settings = defaultBeamSettings();
    StoredSpan span;
    span.dims = {0, 0, 30, 0, 60};
    span.lengthM = 5.0f;
    span.loads[0] = {true, 2.0f, 1.0f};
    b.spans = {span, span};
    b.supports = {{2, 0}, {2, 0}, {2, 0}};
    return b;
}

TEST(BeamRecordCaseFiles, SizesFactoredCopiesAndSupportMoment) {
    test::TempDir dir;
    const auto result = analyseBeamWithCaseFiles(dir.path(), twoSpanBeam(), 2);
    ASSERT_TRUE(result.ok()) << result.message;
    ASSERT_EQ(result.cases.size(), 3u); // full load, then each span loaded alone
    EXPECT_EQ(fs::file_size(dir / "LdCases.dat"), 3u * 16699u);
    EXPECT_EQ(fs::file_size(dir / "CasesT1.dat"), 3u * 19895u);
    EXPECT_EQ(fs::file_size(dir / "CasesT2.dat"), 3u * 19522u);
    EXPECT_EQ(fs::file_size(dir / "CasesT3.dat"), 3u * 19522u);

    // Case 2 loads span 1 only: span 1 = 1.4·2 + 1.7·1 = 4.5 t/m, span 2 = 1.4·2 + 0·1 = 2.8.
    const auto cases = core::RecordFile::load(dir / "LdCases.dat", kBeamRecordLength);
    std::string error;
    const BeamRecord case2 = decodeBeamRecord(cases.read(2), error);
    ASSERT_EQ(error, "");
    EXPECT_NEAR(case2.spans[0].loads[0].dead, 4.5, 1e-5);
    EXPECT_NEAR(case2.spans[1].loads[0].dead, 2.8, 1e-5);
    EXPECT_EQ(case2.spans[0].loads[0].live, 0.0f);
    EXPECT_EQ(case2.caseScheme, 2);

    // Case 1, full load w = 4.5 t/m = 45 kg/cm on both spans: two equal spans give
    // M = −wL²/8 = −45 · 500² / 8 = −1,406,250 kg·cm over the middle support.
    const auto t1 = core::RecordFile::load(dir / "CasesT1.dat", kCasesT1Layout.size);
    const core::RecordBuffer r1 = t1.read(1);
    EXPECT_EQ(r1.getInt16(kCasesT1Layout["caseNumber"]), 1);
    EXPECT_NEAR(r1.getSingle(kCasesT1Layout["supportMoments"], 1), -1406250.0, 2.0);
    // Station 0 of span 2 in CasesT2 is the same support moment.
    const auto t2 = core::RecordFile::load(dir / "CasesT2.dat", kCaseStationsLayout.size);
    EXPECT_NEAR(t2.read(1).getSingle(kCaseStationsLayout["stationValue"], kStationsPerSpan),
                -1406250.0, 2.0);
}

TEST(BeamRecordCaseFiles, FailedRunLeavesNoStaleFiles) {
    test::TempDir dir;
    ASSERT_TRUE(analyseBeamWithCaseFiles(dir.path(), twoSpanBeam(), 1).ok());
    BeamRecord loose = twoSpanBeam();
    for (auto& s : loose.supports) {
        s.code = 0; // nothing holds the beam up
    }
    const auto result = analyseBeamWithCaseFiles(dir.path(), loose, 1);
    EXPECT_EQ(result.status, AnalysisStatus::Unstable);
    EXPECT_FALSE(fs::exists(dir / "LdCases.dat"));
    EXPECT_FALSE(fs::exists(dir / "CasesT1.dat"));
}

} // namespace
} // namespace orvak::beams
