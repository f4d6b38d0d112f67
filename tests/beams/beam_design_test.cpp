// Design of a whole beam: the design points and their values against the closed forms of a
// two-span beam, the depth messages, and input that must fail with a sentence, not NaN.
#include "beams/beam_design.h"
#include "beams/beam_listings.h"

#include <cmath>

#include <gtest/gtest.h>

#include "beams/beam_design_fixture.h"

namespace orvak::beams {
namespace {

TEST(BeamDesign, TwoEqualSpansByHand) {
    // Two 6 m spans under 45 kg/cm factored (1.4 × 20 + 1.7 × 10), scheme 1: the middle
    // support moment wL²/8 = 45 × 600² / 8 = 2,025,000 kg·cm; end reactions 3wL/8 = 10,125 kg,
    // shears at the middle support 5wL/8 = 16,875 kg; field moment 9wL²/128 = 11.39 t·m.
    const BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    const BeamDesignResult r = designBeam(in);
    ASSERT_TRUE(r.ok()) << r.failures.front();
    ASSERT_EQ(r.flexurePoints.size(), 12u);
    ASSERT_EQ(r.shearPoints.size(), 6u);
    const FlexurePoint& rightTop = r.flexurePoints[4];
    EXPECT_EQ(rightTop.place, PointPlace::Right);
    EXPECT_TRUE(rightTop.hogging);
    EXPECT_NEAR(rightTop.flexure.momentTm, 20.25, 1e-6);
    // rho = 0.0505952 × (1 - sqrt(1 - 2.61 × 2,025,000 / (250 × 30 × 55²))) = 0.0062835,
    // As = 10.3677 cm².
    EXPECT_NEAR(rightTop.flexure.tensionAreaCm2, 10.3677, 1e-3);
    EXPECT_TRUE(rightTop.tensionBars.found);
    EXPECT_GE(rightTop.tensionBars.areaCm2, rightTop.flexure.tensionAreaCm2);
    EXPECT_NEAR(r.flexurePoints[2].flexure.momentTm, 11.390625, 1e-4);
    EXPECT_NEAR(r.shearPoints[0].vuKg, 10125.0, 1e-6);
    EXPECT_NEAR(r.shearPoints[2].vuKg, 16875.0, 1e-6);
    // Span of 600 with one continuous end: 600 / 18.5 = 32.4 cm < 60.
    EXPECT_NEAR(r.depthChecks[0].minimumCm, 600.0 / 18.5, 1e-9);
    EXPECT_TRUE(r.messages.empty());
    // The limiting block of the middle support from both spans: a = 0.85 × 0.5 × 0.5922 × 55.
    EXPECT_NEAR(r.limitBlockDepthCm[1][0], 13.84345, 1e-4);
    EXPECT_NEAR(r.limitBlockDepthCm[1][1], 13.84345, 1e-4);
    EXPECT_TRUE(r.deflection.ok);
}

TEST(BeamDesign, AnOverhangAsksForNoBottomSteelAndItsMiddleZoneForTheLargerShear) {
    // Span 2 becomes a 2 m overhang (its third joint free) with a point load of 2 t dead and
    // 1 t live at the tip. It hogs along its whole length, zero only at the tip: its bottom
    // face needs no steel, not rho min.
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    in.model.supports[2] = supportFromCodes(0, 0);
    in.model.spans[1].lengthCm = 200;
    in.model.spans[1].loads[loadIndex(LoadKind::Concentrated)] = {true,  2000.0, 1000.0,
                                                                  200.0, 0,      {}};
    in.analysis = analyzeBeam(in.model);
    ASSERT_TRUE(in.analysis.ok());
    const BeamDesignResult r = designBeam(in);
    const FlexurePoint& bottom = r.flexurePoints[6 + 2];
    ASSERT_EQ(bottom.place, PointPlace::Field);
    ASSERT_FALSE(bottom.hogging);
    EXPECT_EQ(bottom.momentKgCm, 0.0);
    EXPECT_EQ(bottom.flexure.tensionAreaCm2, 0.0);
    EXPECT_FALSE(bottom.flexure.minimumGoverns);
    // The overhang's middle zone reaches the quarter point next to the support, x = 50 cm,
    // where V = 45 × 150 + (1.4 × 2000 + 1.7 × 1000) = 6750 + 4500 = 11,250 kg.
    EXPECT_NEAR(r.shearPoints[3 + 1].vuKg, 11250.0, 1e-6);
}

TEST(BeamDesign, BarsInTwoLayersLowerTheEffectiveDepth) {
    // A 25 cm web with 16 mm bars only: 25 - 5 - 1.6 = 18.4 cm inside holds five
    // (5 × 1.6 + 4 × 2.5 = 18.0). The 20.25 t·m of the middle support, at d = 55, needs
    // rho = 0.0505952 × (1 - sqrt(1 - 2.61 × 2,025,000 / (250 × 25 × 55²))) = 0.0076504,
    // As = 10.519 cm²: six 16 mm bars (12.06), five below and one above at a pitch of
    // 1.6 + 2.5 = 4.1 cm. Their centroid is 4.1 / 6 = 0.6833 cm higher, so d = 54.3167 and
    // As = 0.0078618 × 25 × 54.3167 = 10.676 cm², which six bars still cover.
    BeamDesignInput in = twoSpanDesignInput(25, 60, 60);
    in.bars.minDiameterMm = 16;
    in.bars.maxDiameterMm = 16;
    const BeamDesignResult r = designBeam(in);
    const FlexurePoint& top = r.flexurePoints[4];
    ASSERT_TRUE(top.hogging);
    EXPECT_EQ(top.tensionBars.count, 6);
    EXPECT_EQ(top.tensionBars.layers, 2);
    EXPECT_NEAR(top.flexure.effectiveDepthCm, 54.3167, 1e-4);
    EXPECT_NEAR(top.flexure.tensionAreaCm2, 10.676, 1e-3);
    // The shear at that support takes the same lower d: Vc = 0.53 √250 × 25 × 54.3167
    // = 11,379.5 kg, not the 11,522.5 kg of d = 55.
    const ShearPoint& support = r.shearPoints[2];
    ASSERT_EQ(support.place, PointPlace::Right);
    EXPECT_NEAR(support.shear.vcKg, 0.53 * std::sqrt(250.0) * 25.0 * 54.3167, 0.01);
    // The field's single layer keeps d = 55: 0.53 × 15.8114 × 25 × 55 = 11,522.5 kg.
    EXPECT_NEAR(r.shearPoints[1].shear.vcKg, 0.53 * std::sqrt(250.0) * 25.0 * 55.0, 0.01);
}

TEST(BeamDesign, ALiveLoadThatLiftsASpanCountsNoLiveDeflection) {
    // A 6 m span with a 2 m overhang: dead load 20 kg/cm on the span only, live load 40 kg/cm
    // on the overhang only. The overhang's live load hogs the support by 40 × 200² / 2 =
    // 800,000 kg·cm and lifts the span by about M L² / (16 EI) = 1.8e10 / EI at mid-span,
    // against the dead load's 5 w L⁴ / (384 EI) = 3.375e10 / EI: under dead + live the span
    // deflects less than under dead load alone, and the live deflection is not negative.
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    in.model.spans[1].lengthCm = 200;
    in.model.supports[2] = supportFromCodes(0, 0);
    in.model.spans[0].loads[loadIndex(LoadKind::Uniform)] = {true, 20.0, 0.0, 0, 0, {}};
    in.model.spans[1].loads[loadIndex(LoadKind::Uniform)] = {true, 0.0, 40.0, 0, 0, {}};
    in.analysis = analyzeBeam(in.model);
    ASSERT_TRUE(in.analysis.ok()) << in.analysis.message;
    const BeamDesignResult r = designBeam(in);
    ASSERT_TRUE(r.deflection.ok) << r.deflection.message;
    const MemberDeflection& m = r.deflection.deflections.at(0);
    EXPECT_LT(m.initDefCm, m.defDlCm);
    EXPECT_TRUE(m.liveLifts);
    EXPECT_EQ(m.defLlCm, 0.0);
    EXPECT_NEAR(m.defLtCm, 2.0 * m.defDlCm + m.lnda * m.defSusCm, 1e-9);
    const std::string listing = deflectionListing(r.deflection).str();
    EXPECT_NE(listing.find("DefLL is taken as 0"), std::string::npos);
    EXPECT_EQ(listing.find("DefLL  =  -"), std::string::npos);
}

TEST(BeamDesign, JointsWithoutSupportInsideASpanDoNotCutIt) {
    // Three 4 m pieces on supports only at the ends: one simple span of 12 m (a section
    // change, say, at the inner joints). 20 + 10 kg/cm on each piece.
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    in.model.spans.push_back(in.model.spans[0]);
    in.sections.push_back(in.sections[0]);
    for (auto& span : in.model.spans) {
        span.lengthCm = 400;
    }
    in.model.supports = {supportFromCodes(2, 0), supportFromCodes(0, 0), supportFromCodes(0, 0),
                         supportFromCodes(2, 0)};
    in.analysis = analyzeBeam(in.model);
    ASSERT_TRUE(in.analysis.ok());
    const BeamDesignResult r = designBeam(in);
    // Minimum depth of a simple span of 12 m: 1200 / 16 = 75 cm for every piece, not the
    // cantilever rule of a 4 m piece (50 cm).
    for (const SpanDepthCheck& dc : r.depthChecks) {
        EXPECT_NEAR(dc.minimumCm, 75.0, 1e-9);
    }
    // The allowed deflection is L/240 of the 12 m span: 5 cm.
    EXPECT_NEAR(r.deflection.deflections.at(1).allowedCm, 5.0, 1e-9);
    // The inner joints sag: they crack at the bottom, with the bottom bars chosen there.
    const FlexurePoint& bottomAtJoint2 = r.flexurePoints[4 + 1]; // span 1, right, bottom
    ASSERT_EQ(bottomAtJoint2.place, PointPlace::Right);
    ASSERT_FALSE(bottomAtJoint2.hogging);
    EXPECT_GT(bottomAtJoint2.flexure.momentTm, 0.0);
    EXPECT_GE(r.deflection.joints.at(1).cracked.ast, bottomAtJoint2.tensionBars.areaCm2);
    // Service deflection of the middle: 5 w L⁴ / (384 Ec I) with w = 30 kg/cm on the gross
    // section is 5 × 30 × 1200⁴ / (384 × 238,752 × 540,000) = 6.2828 cm; cracking can at most
    // about double it (Icr of the 30 × 60 with the bars chosen is above 250,000 cm⁴).
    const double initDef = r.deflection.deflections.at(1).initDefCm;
    EXPECT_GE(initDef, 6.2828 * (1.0 - 1e-4));
    EXPECT_LT(initDef, 6.2828 * 540000.0 / 250000.0);
}

TEST(BeamDesign, NoDeflectionsAreMadeUpWhereNoBarsFit) {
    // A 10 cm web: 10 - 5 - 1.6 = 3.4 cm inside, not room for two 10 mm bars with 2.5 cm
    // between them. Every point fails, and the deflection says why it is not computed.
    const BeamDesignResult r = designBeam(twoSpanDesignInput(10, 60, 60));
    EXPECT_FALSE(r.ok());
    EXPECT_FALSE(r.deflection.ok);
    EXPECT_EQ(r.deflection.message,
              "The long time deflection is not computed: no bars of the bar table fit span(s) 1, "
              "2.");
    EXPECT_TRUE(r.deflection.deflections.empty());
}

TEST(BeamDesign, ShallowSpansAreNamed) {
    const BeamDesignResult r = designBeam(twoSpanDesignInput(30, 30, 30));
    ASSERT_EQ(r.messages.size(), 2u);
    EXPECT_EQ(r.messages[0], "Depth less than code requirement in span(s) 1, 2");
    EXPECT_EQ(r.messages[1], "Check long time deflection !");

    // Each 6 m span has one continuous end: L / 18.5 = 32.43 cm for FY 4200. With FY 2800
    // the ACI factor 0.4 + 2800 / 7000 = 0.8 gives 25.95 cm, so 30 cm is deep enough.
    BeamDesignInput mild = twoSpanDesignInput(30, 30, 30);
    mild.materials.fyKgCm2 = 2800;
    const BeamDesignResult m = designBeam(mild);
    EXPECT_NEAR(m.depthChecks.at(0).minimumCm, 600.0 / 18.5 * 0.8, 1e-9);
    EXPECT_TRUE(m.shallowSpans.empty());
}

TEST(BeamDesign, BadInputFailsWithASentenceAndNoNumbers) {
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    in.sections.pop_back();
    const BeamDesignResult r = designBeam(in);
    ASSERT_FALSE(r.ok());
    EXPECT_TRUE(r.flexurePoints.empty());

    // A beam without loads designs to zero steel and the deflection stays finite.
    BeamDesignInput empty = twoSpanDesignInput(30, 60, 60);
    for (BeamSpan& s : empty.model.spans) {
        s.loads = {};
    }
    empty.analysis = analyzeBeam(empty.model);
    const BeamDesignResult z = designBeam(empty);
    EXPECT_TRUE(z.ok());
    for (const MemberDeflection& m : z.deflection.deflections) {
        EXPECT_TRUE(std::isfinite(m.defLtCm));
        EXPECT_NEAR(m.defLtCm, 0.0, 1e-12);
    }
}

} // namespace
} // namespace orvak::beams
