// Stirrup design of a point: the minimum-stirrup boundary, legs, the diameter loop and its
// cap, the upper limit of Vs, inclined bars and the cut length.
#include "beams/shear_design.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace orvak::beams {
namespace {

// Fc = 256 so that sqrt(Fc) = 16 exactly; stirrups of FY 2800.
const DesignMaterials kMaterials{256.0, 4200.0, 2800.0};

ShearSettings settings() {
    ShearSettings s;
    s.shearFactor = 1.0;
    s.shearFi = 1.0; // Vn = Vu, so that boundaries can be hit exactly
    s.vsMin = 0.0;   // stored zero: 3.5
    s.stirrupDiameterMm = 8;
    s.maxSpacingCm = 20;
    s.minSpacingCm = 1;
    s.fourLegWidthCm = 40;
    s.stirrupCover = 2.5;
    s.hookCm = 10;
    return s;
}

ShearPointInput point(double vu, double b = 30) {
    return {vu, b, 60.0, 55.0, {}};
}

TEST(ShearDesign, MinimumStirrupBoundaryAndFallbacks) {
    // Vc = 0.53 × 16 × 30 × 55 = 13,992 kg; the boundary Vc + 3.5 × 30 × 55 = 19,767 kg.
    const double boundary = 0.53 * std::sqrt(256.0) * 30.0 * 55.0 + 3.5 * 30.0 * 55.0;
    const ShearResult at = designShear(point(boundary), settings(), kMaterials);
    ASSERT_TRUE(at.ok());
    EXPECT_NEAR(at.vcKg, 13992.0, 1e-6);
    EXPECT_TRUE(at.minimumStirrups);
    EXPECT_NEAR(at.vsKg, 5775.0, 1e-9);
    // s = Av FY d / Vs = 1.00531 × 2800 × 55 / 5775 = 26.8 cm, held to the maximum 20.
    EXPECT_DOUBLE_EQ(at.spacingCm, 20.0);

    const ShearResult above = designShear(point(boundary + 10.0), settings(), kMaterials);
    EXPECT_FALSE(above.minimumStirrups);
    EXPECT_NEAR(above.vsKg, 5785.0, 1e-6);

    // Stored zeros: factor 1.0 and phi 0.85, Vn = 17,000 / 0.85 = 20,000.
    ShearSettings zeros = settings();
    zeros.shearFactor = 0.0;
    zeros.shearFi = 0.0;
    EXPECT_NEAR(designShear(point(17000.0), zeros, kMaterials).vnKg, 20000.0, 1e-6);
}

TEST(ShearDesign, CodeSpacingLimitsTightenTheMaximumSetting) {
    // A shallow beam, h = 30, d = 26: minimum stirrups allow Av FY / (3.5 b) = 1.00531 × 2800
    // / 105 = 26.8 cm, but ACI keeps s ≤ d/2 = 13 cm, below the 20 cm of the setting.
    const ShearResult shallow = designShear({1000.0, 30.0, 30.0, 26.0, {}}, settings(), kMaterials);
    ASSERT_TRUE(shallow.ok());
    EXPECT_DOUBLE_EQ(shallow.spacingCm, 13.0);

    // High shear in it, with a minimum spacing of 7.5 cm: Vc = 0.53 × 16 × 30 × 26 = 6614.4,
    // Vs = 14,000 kg is above 1.06 × 16 × 30 × 26 = 13,228.8, so the cap is d/4 = 6.5 cm, under
    // the minimum. 8 mm stirrups need 1.00531 × 2800 × 26 / 14,000 = 5.23 cm: raised to 10 mm,
    // 1.5708 × 2800 × 26 / 14,000 = 8.17 cm by strength, which reaches the minimum; they stand
    // at the cap, 6.5 cm. The cap itself never makes the diameter grow.
    ShearSettings close = settings();
    close.minSpacingCm = 7.5;
    const ShearResult capped =
        designShear({6614.4 + 14000.0, 30.0, 30.0, 26.0, {}}, close, kMaterials);
    ASSERT_TRUE(capped.ok()) << capped.message;
    EXPECT_DOUBLE_EQ(capped.diameterMm, 10.0);
    EXPECT_DOUBLE_EQ(capped.spacingCm, 6.5);

    // d = 55: Vs above 1.06 × 16 × 30 × 55 = 27,984 kg halves the limit to d/4 = 13.75 cm.
    // Vu = Vn = 13,992 + 30,000 kg gives Vs = 30,000 kg. 8 mm two-leg stirrups need
    // s = 1.00531 × 2800 × 55 / 30,000 = 5.16 cm, well inside every limit.
    const ShearResult high = designShear(point(13992.0 + 30000.0), settings(), kMaterials);
    EXPECT_NEAR(high.spacingCm, 1.00531 * 2800.0 * 55.0 / 30000.0, 1e-3);
    ShearSettings wide = settings();
    wide.maxSpacingCm = 0.0; // no setting: the code limit alone
    // 16 mm stirrups, Av = 4.0212 cm²: 4.0212 × 2800 × 55 / 30,000 = 20.6 cm, held to d/4;
    // just below the threshold, Vs = 27,900 kg: 22.1 cm, under d/2 = 27.5 cm, stands.
    wide.stirrupDiameterMm = 16;
    EXPECT_NEAR(designShear(point(13992.0 + 30000.0), wide, kMaterials).spacingCm, 13.75, 1e-9);
    EXPECT_NEAR(designShear(point(13992.0 + 27900.0), wide, kMaterials).spacingCm,
                4.0212386 * 2800.0 * 55.0 / 27900.0, 1e-3);
}

TEST(ShearDesign, LegsAndCutLength) {
    // b exactly the four-leg width: two legs. Centre-line stirrup 30 - 5 - 0.8 = 24.2 by
    // 60 - 5 - 0.8 = 54.2: 2 × 24.2 + 2 × 54.2 + 2 × 10 = 176.8 cm.
    const ShearResult two = designShear(point(5000.0, 40.0), settings(), kMaterials);
    EXPECT_EQ(two.legs, 2);
    const ShearResult narrow = designShear(point(5000.0, 30.0), settings(), kMaterials);
    EXPECT_NEAR(narrow.cutLengthCm, 176.8, 1e-9);
    EXPECT_NEAR(narrow.avCm2, 2.0 * std::numbers::pi * 0.64 / 4.0, 1e-12);
    // Wider: four legs; inner stirrup 2 × (2 × 54.2 / 3) + 2 × 54.2 + 20 = 200.667 cm.
    const ShearResult four = designShear(point(5000.0, 60.0), settings(), kMaterials);
    EXPECT_EQ(four.legs, 4);
    EXPECT_NEAR(four.innerCutLengthCm, 200.6667, 1e-4);
}

TEST(ShearDesign, DiameterRaisedInTwoMillimetreStepsAndCapped) {
    // Vs = 30,000 kg (Vu = 13,992 + 30,000): s = Av × 2800 × 55 / 30,000 with two legs is
    // 5.16 (8 mm), 8.06 (10 mm), 11.61 (12 mm): the minimum 10 cm is reached at 12 mm.
    ShearSettings s = settings();
    s.minSpacingCm = 10;
    const ShearResult r = designShear(point(43992.0), s, kMaterials);
    ASSERT_TRUE(r.ok());
    EXPECT_DOUBLE_EQ(r.diameterMm, 12);
    EXPECT_NEAR(r.spacingCm, 2.0 * std::numbers::pi * 1.44 / 4.0 * 2800 * 55 / 30000, 1e-9);

    s.minSpacingCm = 1;
    EXPECT_DOUBLE_EQ(designShear(point(43992.0), s, kMaterials).diameterMm, 8);

    s.minSpacingCm = 100; // never reached: the loop stops at 16 mm and says so
    const ShearResult capped = designShear(point(43992.0), s, kMaterials);
    EXPECT_EQ(capped.status, ShearStatus::MinSpacingNotReached);
    EXPECT_DOUBLE_EQ(capped.diameterMm, 16);
    EXPECT_FALSE(capped.message.empty());

    s.stirrupDiameterMm = 1e300; // 1e300 + 2 == 1e300: the loop must still end, finite
    const ShearResult absurd = designShear(point(43992.0), s, kMaterials);
    EXPECT_TRUE(std::isfinite(absurd.spacingCm));
    EXPECT_LE(absurd.spacingCm, 20.0);
}

TEST(ShearDesign, UpperLimitAndInclinedBars) {
    // Limit 2.06 × 16 × 30 × 55 = 54,384 kg; Vs = 60,000 is too much.
    const ShearResult big = designShear(point(13992.0 + 60000.0), settings(), kMaterials);
    EXPECT_EQ(big.status, ShearStatus::SectionTooSmall);
    EXPECT_NEAR(big.vsLimitKg, 54384.0, 1e-6);
    EXPECT_NE(big.message.find("60.00"), std::string::npos);

    // Four 20 mm bars at 45°: Vb = 4 × π × 4 / 4 × 2800 × 0.7071 = 24,881 kg > Vn - Vc, so
    // Vs = 0 and the maximum spacing is used.
    ShearPointInput p = point(20000.0);
    p.inclined = {4, 20.0, 45.0};
    const ShearResult r = designShear(p, settings(), kMaterials);
    EXPECT_NEAR(r.vbKg, 4.0 * std::numbers::pi * 2800.0 * std::sqrt(0.5), 1e-6);
    EXPECT_DOUBLE_EQ(r.vsKg, 0.0);
    EXPECT_DOUBLE_EQ(r.spacingCm, 20.0);
}

} // namespace
} // namespace orvak::beams
