// Flexural design of a point: hand calculations of the tension-only, compression-steel,
// shortcut and flanged branches, the ratio limits with their fallbacks and the minimum depth.
#include "beams/flexure.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orvak::beams {
namespace {

// Areas are compared to 0.001 cm², well below a hand calculation's last printed digit.
constexpr double kAreaTol = 1e-3;

SectionGeometry rectangle(double b, double h) {
    SectionGeometry s;
    s.kind = SectionKind::DeepRectangle;
    s.webWidthCm = b;
    s.flangeWidthCm = b;
    s.heightCm = h;
    return s;
}

SectionGeometry tee(SectionKind kind, double bFlange, double bw, double t, double h) {
    SectionGeometry s;
    s.kind = kind;
    s.webWidthCm = bw;
    s.flangeWidthCm = bFlange;
    s.flangeThicknessCm = t;
    s.heightCm = h;
    s.flangeOnTop =
        kind == SectionKind::TSection || kind == SectionKind::LSection || kind == SectionKind::Rib;
    s.flangeAtBottom = kind == SectionKind::InvertedT || kind == SectionKind::InvertedL;
    return s;
}

const DesignMaterials kMaterials{250.0, 4200.0, 0.0};

FlexureSettings covers(double cover, double compressionCover) {
    FlexureSettings s; // every ratio setting stored as 0: the fallbacks design
    s.coverCm = cover;
    s.compressionCoverCm = compressionCover;
    return s;
}

TEST(FlexureLimits, StoredZerosDesignWithTheFallbacks) {
    // rho b = 0.85 × 250 / 4200 × 0.85 × 6100 / 10300 = 0.0254695; rho max = 0.5 rho b;
    // rho min = 14.06 / 4200 = 0.0033476.
    const FlexureLimits lim = flexureLimits(FlexureSettings{}, kMaterials);
    EXPECT_DOUBLE_EQ(lim.phi, 0.9);
    EXPECT_NEAR(lim.rhoBalanced, 0.0254695, 1e-7);
    EXPECT_NEAR(lim.rhoMax, 0.0127348, 1e-7);
    EXPECT_NEAR(lim.rhoMin, 14.06 / 4200.0, 1e-12);

    FlexureSettings stored;
    stored.momFi = 0.8;
    stored.facRmax = 0.75;
    stored.facRmin = 12.0;
    const FlexureLimits own = flexureLimits(stored, kMaterials);
    EXPECT_DOUBLE_EQ(own.phi, 0.8);
    EXPECT_NEAR(own.rhoMax, 0.75 * 0.0254695, 1e-7);
    EXPECT_NEAR(own.rhoMin, 12.0 / 4200.0, 1e-12);
}

TEST(FlexureLimits, Beta1ComesFromTheConcreteStrength) {
    // Fc = 350: beta1 = 0.80, rho b = 0.85 × 350 / 4200 × 0.80 × 6100 / 10300 = 0.0335599.
    const FlexureLimits lim = flexureLimits(FlexureSettings{}, {350.0, 4200.0, 0.0});
    EXPECT_NEAR(lim.beta1, 0.80, 1e-12);
    EXPECT_NEAR(lim.rhoBalanced, 0.0335599, 1e-7);
}

TEST(FlexureMoment, SignDoesNotMatterAndFlaggedEndsTakeTheFactor) {
    FlexureSettings s;
    EXPECT_DOUBLE_EQ(designMomentTm(-2.0e6, false, s), 20.0);
    EXPECT_DOUBLE_EQ(designMomentTm(2.0e6, false, s), 20.0);
    EXPECT_DOUBLE_EQ(designMomentTm(2.0e6, true, s), 20.0); // LdfactTxt 0 stands for 1.0
    s.ldFact = 0.8;
    EXPECT_DOUBLE_EQ(designMomentTm(-2.0e6, true, s), 16.0);
    EXPECT_DOUBLE_EQ(designMomentTm(-2.0e6, false, s), 20.0);
}

TEST(FlexureRectangle, TensionSteelFromTheQuadratic) {
    // b = 30, h = 60, d = 55, Fc = 250, FY = 4200, Mu = 20 t·m = 2,000,000 kg·cm:
    // 2.61 Mu / (Fc b d²) = 5.22e6 / 22,687,500 = 0.230083; sqrt(0.769917) = 0.877449;
    // rho = 0.0505952 × 0.122551 = 0.0062005; As = rho × 30 × 55 = 10.2308 cm².
    // Limit: c = 0.5 × 6100/10300 × 55 = 16.2864, a = 13.8434,
    // M1 = 0.9 × 0.85 × 250 × 30 × a × (55 - a/2) = 3,818,702 kg·cm = 38.187 t·m.
    const FlexureResult r = designFlexure(rectangle(30, 60), 20.0, false, covers(5, 5), kMaterials);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.branch, FlexureBranch::TensionOnly);
    EXPECT_NEAR(r.tensionAreaCm2, 10.2308, kAreaTol);
    EXPECT_DOUBLE_EQ(r.compressionAreaCm2, 0.0);
    EXPECT_NEAR(r.limitMomentTm, 38.18702, 1e-4);
    EXPECT_NEAR(r.limitBlockDepthCm, 13.84345, 1e-4);
    EXPECT_FALSE(r.minimumGoverns);

    const FlexureResult hog =
        designFlexure(rectangle(30, 60), 20.0, true, covers(5, 5), kMaterials);
    EXPECT_DOUBLE_EQ(hog.tensionAreaCm2, r.tensionAreaCm2);
}

TEST(FlexureRectangle, RhoMinBoundsASmallMomentButNotZero) {
    // rho min b d = 14.06 / 4200 × 30 × 55 = 5.5236 cm². Mu = 9 t·m needs As = 4.4398 cm²,
    // whose 4/3 (5.9198) exceeds the minimum: the minimum governs.
    const FlexureResult moderate =
        designFlexure(rectangle(30, 60), 9.0, false, covers(5, 5), kMaterials);
    EXPECT_TRUE(moderate.minimumGoverns);
    EXPECT_FALSE(moderate.fourThirdsGoverns);
    EXPECT_NEAR(moderate.tensionAreaCm2, 5.5236, kAreaTol);
    // Mu = 3 t·m needs As = 1.4532 cm²; a third more, 1.9376, is less than the minimum and
    // is enough (ACI).
    const FlexureResult small =
        designFlexure(rectangle(30, 60), 3.0, false, covers(5, 5), kMaterials);
    EXPECT_TRUE(small.fourThirdsGoverns);
    EXPECT_NEAR(small.tensionAreaCm2, 1.9376, kAreaTol);
    const FlexureResult none =
        designFlexure(rectangle(30, 60), 0.0, false, covers(5, 5), kMaterials);
    EXPECT_EQ(none.branch, FlexureBranch::None);
    EXPECT_DOUBLE_EQ(none.tensionAreaCm2, 0.0);
}

TEST(FlexureRectangle, CompressionSteelCarriesTheExcess) {
    // Mu = 50 t·m > M1 = 38.187. As1 = 0.85 × 250 × 30 × 13.8434 / 4200 = 21.0124;
    // As2 = (5,000,000 - 3,818,702) / (0.9 × 4200 × (55 - 5)) = 6.2503; As = 27.2626.
    // Steel strain 0.003 × (16.2864 - 5) / 16.2864 × 2.04e6 = 4241 > FY: f's = FY, and the
    // bars displace concrete counted at 0.85 Fc = 212.5: A's = 6.2503 × 4200 / 3987.5 = 6.5834.
    const FlexureResult r = designFlexure(rectangle(30, 60), 50.0, false, covers(5, 5), kMaterials);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.branch, FlexureBranch::CompressionSteel);
    EXPECT_NEAR(r.tensionAreaCm2, 27.2626, kAreaTol);
    EXPECT_NEAR(r.compressionAreaCm2, 6.5834, kAreaTol);
    EXPECT_DOUBLE_EQ(r.compressionStressKgCm2, 4200.0);

    // d' = 7: strain 0.003 × 9.2864 / 16.2864 gives fs' = 3489.58; As2 = 1,181,298 /
    // (0.9 × 4200 × 48) = 6.5106, As = 27.5231, A's = 6.5106 × 4200 / (3489.58 - 212.5)
    // = 8.3442.
    const FlexureResult soft =
        designFlexure(rectangle(30, 60), 50.0, false, covers(5, 7), kMaterials);
    EXPECT_NEAR(soft.tensionAreaCm2, 27.5231, kAreaTol);
    EXPECT_NEAR(soft.compressionAreaCm2, 8.3442, kAreaTol);
    EXPECT_NEAR(soft.compressionStressKgCm2, 3489.59, 0.01);
}

TEST(FlexureRectangle, CompressionSteelBelowTheNeutralAxisIsAFailureNotNaN) {
    // d = 15 (h 20, cover 5): c = 0.5 × 0.5922 × 15 = 4.44 < d' = 5.
    const FlexureResult r = designFlexure(rectangle(30, 20), 10.0, false, covers(5, 5), kMaterials);
    EXPECT_EQ(r.status, FlexureStatus::CompressionSteelIneffective);
    EXPECT_TRUE(std::isfinite(r.tensionAreaCm2));
    EXPECT_TRUE(std::isfinite(r.compressionAreaCm2));
    EXPECT_FALSE(r.message.empty());

    const FlexureResult bad = designFlexure(rectangle(30, 8), 1.0, false, covers(5, 5), kMaterials);
    EXPECT_EQ(bad.status, FlexureStatus::InvalidInput);
}

TEST(FlexureRib, ShortcutLimitAndCouple) {
    // Rib B = 50, bw = 12, T = 5, h = 30, d = 27 under hogging: the web carries it.
    // Shortcut: 0.375 × 12 × 27² × 250 = 820,125 kg·cm. The limit of tension steel alone,
    // c = 0.5 × 6100 / 10300 × 27 = 7.99515, a = 0.85 c = 6.79587, M1 = 0.9 × 0.85 × 250 × 12
    // × 6.79587 × (27 - 3.39794) = 368,110 kg·cm, is smaller and governs: the shortcut would
    // ask for rho = 0.0432 = 1.7 rho b, whose bars could not yield.
    // Mu = 10 t·m: rho(M1) = 0.0505952 × (1 - sqrt(1 - 2.61 × 368,110 / (250 × 12 × 27²)))
    // = 0.0127099, As1 = 4.1180; As2 = (1,000,000 - 368,110) / (0.9 × 4200 × 24) = 6.9653;
    // As = 11.0833. Compression bars at d' = 3: strain 0.003 × 4.99515 / 7.99515 gives
    // f's = 3823.61, A's = 6.9653 × 4200 / (3823.61 - 212.5) = 8.1012.
    const SectionGeometry rib = tee(SectionKind::Rib, 50, 12, 5, 30);
    const FlexureResult r = designFlexure(rib, 10.0, true, covers(3, 3), kMaterials);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.branch, FlexureBranch::Shortcut);
    EXPECT_NEAR(r.limitMomentTm, 3.68110, 1e-5);
    EXPECT_NEAR(r.tensionAreaCm2, 11.0833, kAreaTol);
    EXPECT_NEAR(r.compressionAreaCm2, 8.1012, kAreaTol);

    // Sagging, the flange of B = 50 is compressed: the limit of tension steel alone grows
    // with the width to 50/12 × 368,110 = 1,533,793 kg·cm, still below the shortcut
    // 0.375 × 50 × 27² × 250 = 3,417,188, and Mu = 10 t·m stays within it.
    const FlexureResult sag = designFlexure(rib, 10.0, false, covers(3, 3), kMaterials);
    EXPECT_NEAR(sag.limitMomentTm, 15.33793, 1e-4);
    EXPECT_EQ(sag.branch, FlexureBranch::TensionOnly);
}

TEST(FlexureTee, FlangeInCompressionAndHoggingOnTheWeb) {
    // B = 100, bw = 30, T = 10, d = 55, Mu = 20 t·m sagging: rho over B = 0.0017774,
    // As = 9.7756; a = As × 4200 / (0.85 × 250 × 100) = 1.93 < T: the block stays in the flange.
    const SectionGeometry t = tee(SectionKind::TSection, 100, 30, 10, 60);
    const FlexureResult sag = designFlexure(t, 20.0, false, covers(5, 5), kMaterials);
    EXPECT_EQ(sag.branch, FlexureBranch::TensionOnly);
    EXPECT_NEAR(sag.tensionAreaCm2, 9.7756, kAreaTol);
    // Hogging puts the flange in tension: the web rectangle 30 × 55 of the first case.
    const FlexureResult hog = designFlexure(t, 20.0, true, covers(5, 5), kMaterials);
    EXPECT_NEAR(hog.tensionAreaCm2, 10.2308, kAreaTol);
    // The inverted T is the mirror image.
    const SectionGeometry inv = tee(SectionKind::InvertedT, 100, 30, 10, 60);
    EXPECT_NEAR(designFlexure(inv, 20.0, true, covers(5, 5), kMaterials).tensionAreaCm2, 9.7756,
                kAreaTol);
    EXPECT_NEAR(designFlexure(inv, 20.0, false, covers(5, 5), kMaterials).tensionAreaCm2, 10.2308,
                kAreaTol);
}

TEST(FlexureTee, OverhangCoupleWhenTheBlockReachesTheWeb) {
    // T = 3, Mu = 40 t·m: over B the block would be 3.94 deep > 3.
    // Asf = 0.85 × 250 × 70 × 3 / 4200 = 10.625; Mf = 0.9 × 10.625 × 4200 × 53.5 = 2,148,694;
    // web: Mu - Mf = 1,851,306 over 30 × 55 gives As = 9.4215; total 20.0465 cm².
    const SectionGeometry t = tee(SectionKind::LSection, 100, 30, 3, 60);
    const FlexureResult r = designFlexure(t, 40.0, false, covers(5, 5), kMaterials);
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(r.branch, FlexureBranch::FlangedTension);
    EXPECT_NEAR(r.tensionAreaCm2, 20.0465, kAreaTol);
}

TEST(FlexureDepth, MinimumDepthByEndConditions) {
    EXPECT_DOUBLE_EQ(minimumDepthCm(800, {false, false, false}), 50.0);
    EXPECT_DOUBLE_EQ(minimumDepthCm(740, {true, false, false}), 40.0);
    EXPECT_DOUBLE_EQ(minimumDepthCm(840, {true, true, false}), 40.0);
    EXPECT_DOUBLE_EQ(minimumDepthCm(200, {true, false, true}), 25.0);
    // Stored divisors replace the table; a zero keeps the ACI value.
    EXPECT_DOUBLE_EQ(minimumDepthCm(800, {false, false, false}, {20.0, 0.0, 0.0, 0.0}), 40.0);
    EXPECT_DOUBLE_EQ(minimumDepthCm(740, {false, true, false}, {20.0, 0.0, 0.0, 0.0}), 40.0);
}

} // namespace
} // namespace orvak::beams
