// Listings of a designed two-span beam compared as text with frozen golden files, and the
// marks of failed points. The golden files were generated once, read line by line and their
// numbers checked against the hand calculations noted in each test, then frozen; set
// ORVAK_WRITE_GOLDEN=1 to write them again after a deliberate change of layout.
#include "beams/beam_listings.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "beams/beam_design_fixture.h"

namespace orvak::beams {
namespace {

std::filesystem::path goldenPath(const std::string& name) {
    return std::filesystem::path(ORVAK_TEST_DATA_DIR) / "beams" / name;
}

void expectGolden(const std::string& name, const core::Sheet& sheet) {
    const std::string& text = sheet.str();
    const std::filesystem::path path = goldenPath(name);
    if (std::getenv("ORVAK_WRITE_GOLDEN") != nullptr) {
        std::ofstream(path, std::ios::binary) << text;
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << "missing golden file " << path;
    std::stringstream golden;
    golden << in.rdbuf();
    // Line by line, so that a failure names the first line that differs.
    std::istringstream want(golden.str());
    std::istringstream got(text);
    std::string a;
    std::string b;
    int line = 0;
    while (true) {
        const bool moreWant = static_cast<bool>(std::getline(want, a));
        const bool moreGot = static_cast<bool>(std::getline(got, b));
        ++line;
        if (!moreWant && !moreGot) {
            break;
        }
        ASSERT_EQ(moreWant, moreGot) << name << ": the texts differ in length at line " << line;
        ASSERT_EQ(a, b) << name << " line " << line;
    }
    EXPECT_EQ(golden.str(), text);
}

// Span 1 a T 100/30/10/60, span 2 a rectangle 30 × 60, both 6 m under 20 + 10 kg/cm.
BeamDesignInput goldenInput() {
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    SectionGeometry& t = in.sections[0];
    t.kind = SectionKind::TSection;
    t.flangeWidthCm = 100;
    t.flangeThicknessCm = 10;
    t.flangeOnTop = true;
    return in;
}

TEST(BeamListings, AnalysisListing) {
    // Checked by hand: middle support -20.25 t·m (wL²/8 with w = 45 kg/cm, L = 6 m); field
    // maxima 11.39 t·m (9wL²/128) at x = 2.25 m (3L/8); largest shear 16.9 t (5wL/8); the
    // tenth point x = 3.00 m of span 1 carries 10,125 × 300 - 45 × 300² / 2 = 10.13 t·m.
    const BeamDesignInput in = goldenInput();
    expectGolden("analysis_listing.txt", analysisListing(in.model, in.analysis));
}

TEST(BeamListings, FlexureListing) {
    // Checked by hand: rho b 0.02547, rho max 0.01273, rho min 14.06 / 4200 = 0.00335.
    // Middle support top 20.25 t·m -> rho 0.0062835, As 10.37 cm² -> 3 x 22 mm (11.40, the
    // least area in one layer: 16 mm needs 6 = 12.06, 20 mm 4 = 12.56). Span 1 field 11.39 t·m
    // over the flange width 100: rho 0.0010045, As 5.525, just above rho min × 30 × 55 =
    // 5.524 -> 5 x 12 mm. Span 2 field over 30: rho 0.0034314, As 5.66 -> 3 x 16 mm. The
    // field top is free of hogging between the quarter points: 0.00 and corner bars.
    const BeamDesignInput in = goldenInput();
    expectGolden("flexure_listing.txt", flexureListing(in, designBeam(in)));
}

TEST(BeamListings, ShearListing) {
    // Checked by hand: Vc = 0.53 × 15.811 × 30 × 55 = 13.83 t; Vu 10.1 t at the ends and
    // 16.9 t at the middle support; Vn = 16.875 / 0.85 = 19.85 t > Vc + 5.775 = 19.60 t, so
    // Vs = 19.853 - 13.827 = 6.03 t and s = 1.005 × 2800 × 55 / 6026 = 25.7 -> 20 cm. The
    // middle zone, between the quarter points, takes the larger end: V(4.5 m) = 3/8 × 4.5 × 6
    // - 4.5 × 4.5 = -10.125 t, and minimum stirrups.
    const BeamDesignInput in = goldenInput();
    expectGolden("shear_listing.txt", shearListing(in, designBeam(in)));
}

TEST(BeamListings, DeflectionListing) {
    // Checked by hand: Fr 31.62, Ec 238,752, N 8.544, TF = 0.305 ln 60 + 0.654 = 1.903;
    // joint 1 of the T 100/30/10/60: cg = (70 × 100 + 30 × 3600) / (2 × (700 + 1800)) = 23,
    // Ig = 100 × 23³/3 - 70/3 × 13³ + 30/3 × 37³ = 860,833; joint 2, between the T and the
    // rectangle, takes the rectangle, the smaller: Ig 540,000 and Mcr 5.692 t·m, as joint 3;
    // L/240 = 2.5 cm.
    const BeamDesignInput in = goldenInput();
    expectGolden("deflection_listing.txt", deflectionListing(designBeam(in).deflection));
}

TEST(BeamListings, ACantileverNamesTheJointItsIeComesFrom) {
    // Span 2 as an overhang: no average of three values, the Ie of joint 2, its support.
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    in.model.supports[2] = supportFromCodes(0, 0);
    in.model.spans[1].lengthCm = 200;
    in.analysis = analyzeBeam(in.model);
    const DeflectionResult& d = designBeam(in).deflection;
    const std::string text = deflectionListing(d).str();
    const std::size_t member2 = text.find("Member   2\nIe");
    ASSERT_NE(member2, std::string::npos) << text;
    EXPECT_EQ(text.find("IeDLAvg = IeDL of joint 2 = ", member2), text.find("IeDLAvg", member2));
    EXPECT_EQ(d.deflections.at(1).ieAvg.dl, d.joints.at(1).ie.dl);
}

TEST(BeamListings, FailedShearPointIsStarred) {
    // A 20 × 30 second span under the same loads: Vs far above 2.06 sqrt(Fc) b d = 8.1 t.
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    in.sections[1].webWidthCm = 20;
    in.sections[1].flangeWidthCm = 20;
    in.sections[1].heightCm = 30;
    in.model.spans[1].loads[loadIndex(LoadKind::Uniform)].deadValue = 80;
    in.analysis = analyzeBeam(in.model);
    const BeamDesignResult r = designBeam(in);
    EXPECT_FALSE(r.ok());
    const std::string text = shearListing(in, r).str();
    EXPECT_NE(text.find("******"), std::string::npos);
    EXPECT_NE(text.find("Section too small in shear"), std::string::npos);
    EXPECT_NE(text.find("--- ------ ------ ------ ------------- ------------ ------------- "
                        "------------\n"),
              std::string::npos);
    EXPECT_EQ(text.find("NaN"), std::string::npos);
    EXPECT_EQ(text.find("Inf"), std::string::npos);
}

} // namespace
} // namespace orvak::beams
