// Stirrup zones and the design of one load case alone, on the two-span beam of the design
// tests: zone boundaries and spacings by hand, and a case designed alone against the scheme
// that holds only that case.
#include "beams/stirrup_zones.h"

#include <gtest/gtest.h>

#include "beams/beam_design_fixture.h"

namespace orvak::beams {
namespace {

TEST(StirrupZones, EndQuartersTakeTheDenserStirrupAndEqualNeighboursMerge) {
    // Two 6 m spans under w = 45 kg/cm (scheme 1), b = 30, d = 55, Fc 250, stirrup FY 2800,
    // Ø8 two legs: Av = 2 π 0.8² / 4 = 1.00531 cm², Av FY d = 154,817.7 kg·cm.
    // Vc = 0.53 √250 × 30 × 55 = 13,827.1 kg; minimum stirrups up to Vn = Vc + 3.5 b d =
    // 19,602.1 kg. Span 1: left end 3wL/8 = 10,125 kg and the middle half, whose largest shear
    // is again 3wL/8 at its right quarter point (10,125 - 45 × 450 = -10,125): Vn = 11,912,
    // minimum stirrups, s = 154,817.7 / (3.5 × 30 × 55) = 26.81 -> 26.8 cm. Right end 5wL/8 =
    // 16,875 kg: Vn = 19,852.9, Vs = 6,025.9, s = 25.69 -> 25.6 cm. With the maximum spacing
    // raised to 30 cm: span 1 is [0, 450] at 26.8 and [450, 600] at 25.6; span 2 the mirror.
    BeamDesignInput in = twoSpanDesignInput(30, 60, 60);
    in.shear.maxSpacingCm = 30;
    const BeamDesignResult r = designBeam(in);
    ASSERT_TRUE(r.ok()) << r.failures.front();
    const std::vector<StirrupZone> zones = stirrupZones(r, {600.0, 600.0});
    ASSERT_EQ(zones.size(), 4u);
    const struct {
        int span;
        double start, end, spacing;
    } expected[] = {{0, 0, 450, 26.8}, {0, 450, 600, 25.6}, {1, 0, 150, 25.6}, {1, 150, 600, 26.8}};
    for (std::size_t k = 0; k < zones.size(); ++k) {
        SCOPED_TRACE(k);
        EXPECT_EQ(zones[k].span, expected[k].span);
        EXPECT_NEAR(zones[k].startCm, expected[k].start, 1e-9);
        EXPECT_NEAR(zones[k].endCm, expected[k].end, 1e-9);
        EXPECT_NEAR(zones[k].spacingCm, expected[k].spacing, 1e-9);
        EXPECT_TRUE(zones[k].designed);
        EXPECT_EQ(zones[k].legs, 2);
        EXPECT_EQ(zones[k].diameterMm, 8.0);
    }

    // At the default maximum of 20 cm every point takes Ø8 @ 20: one zone per span.
    in.shear.maxSpacingCm = 20;
    const std::vector<StirrupZone> capped = stirrupZones(designBeam(in), {600.0, 600.0});
    ASSERT_EQ(capped.size(), 2u);
    EXPECT_NEAR(capped[1].startCm, 0.0, 1e-9);
    EXPECT_NEAR(capped[1].endCm, 600.0, 1e-9);
    EXPECT_NEAR(capped[1].spacingCm, 20.0, 1e-9);
}

TEST(StirrupZones, ASectionTooSmallAtAnEndLeavesItsQuarterWithoutStirrups) {
    // A 4 m span whose right end fails the upper limit of Vs: the left quarter and the middle
    // take the same Ø8 @ 20 and merge into [0, 300]; [300, 400] has no stirrup and is marked.
    BeamDesignResult r;
    const auto point = [&](PointPlace place, ShearStatus status) {
        ShearPoint p;
        p.place = place;
        p.shear.status = status;
        if (status == ShearStatus::Ok) {
            p.shear.legs = 2;
            p.shear.diameterMm = 8;
            p.shear.spacingCm = 20;
        }
        r.shearPoints.push_back(p);
    };
    point(PointPlace::Left, ShearStatus::Ok);
    point(PointPlace::Field, ShearStatus::Ok);
    point(PointPlace::Right, ShearStatus::SectionTooSmall);
    const std::vector<StirrupZone> zones = stirrupZones(r, {400.0});
    ASSERT_EQ(zones.size(), 2u);
    EXPECT_TRUE(zones[0].designed);
    EXPECT_NEAR(zones[0].endCm, 300.0, 1e-9);
    EXPECT_FALSE(zones[1].designed);
    EXPECT_NEAR(zones[1].startCm, 300.0, 1e-9);
    EXPECT_EQ(zones[1].spacingCm, 0.0);
}

TEST(CaseAnalysis, ACaseDesignedAloneEqualsTheSchemeOfThatCaseOnly) {
    // The full-load case is the first of every scheme and the only one of scheme 1: designed
    // alone out of scheme 3 it must ask for exactly the steel of a scheme-1 design.
    BeamDesignInput scheme1 = twoSpanDesignInput(30, 60, 60);
    BeamDesignInput scheme3 = scheme1;
    scheme3.model.caseScheme = 3;
    const BeamAnalysisResult all = analyzeBeam(scheme3.model);
    ASSERT_TRUE(all.ok());
    ASSERT_GT(all.cases.size(), 1u);
    scheme3.analysis = caseAnalysis(all, 0);
    const BeamDesignResult alone = designBeam(scheme3);
    const BeamDesignResult reference = designBeam(scheme1);
    ASSERT_EQ(alone.flexurePoints.size(), reference.flexurePoints.size());
    for (std::size_t k = 0; k < alone.flexurePoints.size(); ++k) {
        EXPECT_NEAR(alone.flexurePoints[k].flexure.tensionAreaCm2,
                    reference.flexurePoints[k].flexure.tensionAreaCm2, 1e-9);
    }
    ASSERT_EQ(alone.shearPoints.size(), reference.shearPoints.size());
    for (std::size_t k = 0; k < alone.shearPoints.size(); ++k) {
        EXPECT_NEAR(alone.shearPoints[k].vuKg, reference.shearPoints[k].vuKg, 1e-6);
    }

    // Case 2 loads the live load of span 1 only: span 2 sees 1.4 × 20 = 28 kg/cm, so its
    // largest sagging moment alone is below that of the full load, and the envelope of the
    // case alone is the case itself at every station.
    const BeamAnalysisResult second = caseAnalysis(all, 1);
    const std::size_t mid = kStationsPerSpan + kStationDivisions / 2;
    EXPECT_EQ(second.envelope.stationMomentMaxKgCm[mid], all.cases[1].stations[mid].momentKgCm);
    EXPECT_EQ(second.envelope.stationMomentMinKgCm[mid], all.cases[1].stations[mid].momentKgCm);
    EXPECT_LT(second.envelope.spanMomentMax[1].value, all.envelope.spanMomentMax[1].value);
}

} // namespace
} // namespace orvak::beams
