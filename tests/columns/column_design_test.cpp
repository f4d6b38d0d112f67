// Tests of the column design against hand calculations: section properties, the balanced
// point by strain compatibility, the axial design at its exact limit, slenderness and the
// moment magnifier in closed form, the phi transition, bar choice and the failure outcomes.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "columns/column_design.h"

namespace orvak::columns {
namespace {

using std::numbers::pi;

const std::vector<bars::BarProperties> kBars = {
    {12.0f, 1.131f, 0.888f}, {14.0f, 1.539f, 1.21f}, {16.0f, 2.011f, 1.58f},
    {20.0f, 3.142f, 2.47f},  {25.0f, 4.909f, 3.85f}, {32.0f, 8.042f, 6.31f},
};

ColumnGroup rectangleGroup(float a, float b, float puT, float m2, float m1, float heightCm) {
    ColumnGroup g;
    g.name = "Gr-C1";
    g.type = 1;
    g.dims = {a, b, 0, 0, 0};
    g.puT = puT;
    g.x = {m2, m1};
    g.colLenCm = heightCm;
    g.settings = defaultColumnSettings(); // Fc 250, FY 4200, tied phi 0.7, R 0.8, 1 %
    return g;
}

bool sheetHasLine(const core::Sheet& sh, const std::string& line) {
    return ("\n" + sh.str()).find("\n" + line + "\n") != std::string::npos;
}

TEST(ColumnSection, PropertiesAndCompressedZonesByHand) {
    // Tee a = 60, b = 50, flange c = 15 at x = 45..60, stem d = 30: flange 750 cm² at x =
    // 52.5, stem 45 × 30 = 1350 cm² at x = 22.5; A = 2100, x̄ = (750·52.5 + 1350·22.5)/2100
    // = 33.2143; IY = 50·15³/12 + 750(52.5 − x̄)² + 30·45³/12 + 1350(22.5 − x̄)².
    const auto tee = columnSection(3, {60, 50, 15, 30, 0});
    ASSERT_TRUE(tee);
    const double xbar = (750.0 * 52.5 + 1350.0 * 22.5) / 2100.0;
    EXPECT_NEAR(tee->areaCm2, 2100.0, 1e-9);
    EXPECT_NEAR(tee->centroid.x, xbar, 1e-9);
    EXPECT_NEAR(tee->iyCm4,
                50.0 * 3375.0 / 12.0 + 750.0 * std::pow(52.5 - xbar, 2) + 30.0 * 91125.0 / 12.0 +
                    1350.0 * std::pow(22.5 - xbar, 2),
                1e-6);
    EXPECT_NEAR(tee->ixCm4, 15.0 * 125000.0 / 12.0 + 45.0 * 27000.0 / 12.0, 1e-6);
    // 20 cm from the flange face: the flange (750 cm², centroid 7.5) and 5 cm of the stem
    // (150 cm², centroid 17.5): 900 cm² at (750·7.5 + 150·17.5)/900 = 9.1667.
    const Zone z = compressionZone(*tee, Direction::X, 20.0);
    EXPECT_NEAR(z.areaCm2, 900.0, 1e-9);
    EXPECT_NEAR(z.centroidDepthCm, (750.0 * 7.5 + 150.0 * 17.5) / 900.0, 1e-9);
    EXPECT_EQ(minimumBars(*tee), 8);

    // Circle D = 40: half of it compressed is a half disc, centroid 4R/(3 pi) from the centre.
    const auto circle = columnSection(2, {40, 0, 0, 0, 0});
    ASSERT_TRUE(circle);
    EXPECT_NEAR(circle->areaCm2, pi * 400.0, 1e-9);
    const Zone half = compressionZone(*circle, Direction::X, 20.0);
    EXPECT_NEAR(half.areaCm2, pi * 200.0, 1e-9);
    EXPECT_NEAR(half.centroidDepthCm, 20.0 - 80.0 / (3.0 * pi), 1e-9);
    // A type whose dimension is missing, and a Tee whose flange is as deep as the section.
    EXPECT_FALSE(columnSection(4, {60, 50, 15, 0, 0}));
    EXPECT_FALSE(columnSection(3, {60, 50, 60, 30, 0}));
    EXPECT_FALSE(columnSection(8, {60, 50, 0, 0, 0}));
}

TEST(ColumnStrength, BalancedPointOfA40x40ColumnWithEightBarsByStrainCompatibility) {
    // 40 × 40, bars 5 cm in from the faces: corners and mid-sides, 2 cm² each (1 %). Fc 250,
    // FY 4200, compression at x = 40. Bar rows at depths 5 (3 bars), 20 (2), 35 (3).
    // cb = 6100/(6100 + 4200)·35 = 20.7282; ab = 0.85 cb = 17.6190.
    // Cc = 0.85·250·40·ab = 149 761.7 kg, acting ab/2 below the face.
    // Row d = 5: 6100(cb − 5)/cb = 4628.6 → FY 4200, inside the block: 4200 − 212.5 = 3987.5.
    // Row d = 20: 6100(cb − 20)/cb = 214.30, below the block.
    // Row d = 35: 6100(cb − 35)/cb = −4200 exactly (the balanced strain).
    // P = Cc + 6·3987.5 + 4·214.30 − 6·4200; M about the centre = Cc(20 − ab/2)
    //   + 6·3987.5·15 + 0 + 6·4200·15.
    const auto s = columnSection(1, {40, 40, 0, 0, 0});
    ASSERT_TRUE(s);
    const std::vector<Point> bars = barPlaces(*s, 8, 5.0);
    ASSERT_EQ(bars.size(), 8u);
    const double cb = 6100.0 / 10300.0 * 35.0;
    const double ab = 0.85 * cb;
    const double cc = 0.85 * 250.0 * 40.0 * ab;
    const double mid = 6100.0 * (cb - 20.0) / cb;
    const double p = cc + 6.0 * 3987.5 + 4.0 * mid - 6.0 * 4200.0;
    const double m = cc * (20.0 - ab / 2.0) + 6.0 * 3987.5 * 15.0 + 6.0 * 4200.0 * 15.0;
    const SectionForce f = sectionForce(*s, Direction::X, bars, 2.0, 250.0, 4200.0, cb);
    EXPECT_NEAR(f.pKg, p, 0.01);  // 149 343.9 kg
    EXPECT_NEAR(f.mKgCm, m, 1.0); // 2 412 784 kg·cm = 24.13 t·m
    // The same section bent about y is the same by symmetry.
    const SectionForce fy = sectionForce(*s, Direction::Y, bars, 2.0, 250.0, 4200.0, cb);
    EXPECT_NEAR(fy.pKg, p, 0.01);
    EXPECT_NEAR(fy.mKgCm, m, 1.0);
}

TEST(ColumnAxialDesign, ASectionExactlyAtTheRequiredAreaIsAcceptedAndOneAboveIsNot) {
    // phi Pn,max = 0.80 phi (0.85 Fc (Ag − Ast) + FY Ast) with Ag = 1600, Ast = 1 % = 16:
    // 0.8 · 0.7 · (212.5 · 1584 + 4200 · 16) = 0.56 · 403 800 = 226 128 kg. The required area
    // for Pu = 226.128 t is then (226128/0.7) / (0.8 (0.85·250·0.99 + 0.01·4200)) = 1600.
    ColumnGroup g = rectangleGroup(40, 40, 226.128f, 0, 0, 300);
    ColumnDesignResult r = designColumn(g, kBars);
    ASSERT_TRUE(r.axial);
    EXPECT_NEAR(r.axial->acRequiredCm2, 1600.0, 1e-3);
    EXPECT_FALSE(r.axial->tooSmall);
    EXPECT_NEAR(r.axial->astCm2, 16.0, 1e-9);
    // 16 cm²: 8 bars of 16 mm (16.09 cm²) give the least area of the table.
    EXPECT_EQ(r.axial->bars.count, 8);
    EXPECT_DOUBLE_EQ(r.axial->bars.diameterMm, 16.0);
    const core::Sheet sh = columnSheet(g, r);
    EXPECT_TRUE(sheetHasLine(sh, "Required cross section area=   1600 cm2")) << sh.str();
    EXPECT_TRUE(sheetHasLine(sh, "(Pu /  0.70 )=AC*(  0.80  * ((.85* Fc * (1 - Ast%) "
                                 "+Ast% * FY!)))"));

    g.puT = 226.5f;
    r = designColumn(g, kBars);
    EXPECT_EQ(r.status, ColumnStatus::SectionTooSmall);
    EXPECT_TRUE(r.axial->tooSmall);
    // Nothing is printed for the stage.
    EXPECT_EQ(columnSheet(g, r).str().find("Ast% min="), std::string::npos);
}

TEST(ColumnSlenderness, TheMagnifierInClosedFormAndItsLimits) {
    // 30 × 30 braced, L = 600 cm, K = 1: r = 0.3·30 = 9, kl/r = 66.67, limit 34 − 12·0.5 =
    // 28: long. Ec = 15100 √250; I = 30⁴/12 = 67 500; EI = Ec I / 2.5 (beta d 0);
    // Pc = pi² EI / 600² = 176.73 t; Cm = 0.6 + 0.5·0.5 = 0.85;
    // delta = 0.85 / (1 − 50 / (0.7·Pc)) = 1.4266.
    const double ec = 15100.0 * std::sqrt(250.0);
    const double pc = pi * pi * (ec * 67500.0 / 2.5) / (600.0 * 600.0) / 1000.0;
    struct Case {
        const char* name;
        float m2, m1;
        bool braced;
        double cm;
        double limit;
    };
    const Case cases[] = {
        {"single curvature", 3.0f, 1.5f, true, 0.85, 28.0},
        {"reverse curvature M1/M2 = -0.5: 0.35 floored to 0.4", 3.0f, -1.5f, true, 0.4, 40.0},
        {"no end moments: the deliberate 1.1", 0.0f, 0.0f, true, 1.1, 34.0},
        {"unbraced", 3.0f, 1.5f, false, 1.0, 22.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ColumnGroup g = rectangleGroup(30, 30, 50.0f, c.m2, c.m1, 600);
        g.settings.Braced = c.braced ? 1 : 0;
        const ColumnDesignResult r = designColumn(g, kBars);
        EXPECT_NEAR(r.slenderX.klr, 600.0 / 9.0, 1e-9);
        EXPECT_NEAR(r.slenderX.limit, c.limit, 1e-9);
        ASSERT_TRUE(r.magnifyX);
        EXPECT_NEAR(r.magnifyX->cm, c.cm, 1e-12);
        EXPECT_NEAR(r.magnifyX->pcT, pc, 1e-6);
        const double delta = std::max(1.0, c.cm / (1.0 - 50.0 / (0.7 * pc)));
        EXPECT_NEAR(r.magnifyX->delta, delta, 1e-9);
        EXPECT_NEAR(r.magnifyX->mMaxTm, c.m2 * delta, 1e-6);
    }
    // Cm = 0.4 gives 0.4 / 0.596 = 0.67 < 1: the magnifier is 1.
    ColumnGroup g = rectangleGroup(30, 30, 50.0f, 3.0f, -1.5f, 600);
    EXPECT_DOUBLE_EQ(designColumn(g, kBars).magnifyX->delta, 1.0);

    // kl/r exactly at the limit is short: unbraced, 198 / 9 = 22.
    g = rectangleGroup(30, 30, 50.0f, 3.0f, 1.5f, 198);
    g.settings.Braced = 0;
    ColumnDesignResult r = designColumn(g, kBars);
    EXPECT_DOUBLE_EQ(r.slenderX.klr, 22.0);
    EXPECT_FALSE(r.slenderX.isLong);
    EXPECT_FALSE(r.magnifyX);

    // Pu at phi·Pc = 0.7·176.73 = 123.7 t or above buckles the column: no magnifier printed.
    g = rectangleGroup(30, 30, 124.0f, 3.0f, 1.5f, 600);
    r = designColumn(g, kBars);
    EXPECT_EQ(r.status, ColumnStatus::Unstable);
    const core::Sheet sh = columnSheet(g, r);
    EXPECT_TRUE(sheetHasLine(
        sh, "Pu >= PHI * Pc : THE COLUMN IS UNSTABLE (BUCKLING), ENLARGE THE SECTION"));
    EXPECT_EQ(sh.str().find("DeltB"), std::string::npos);
    // kl/ry = 66.7 is below 100; a 20 cm column 700 cm high is not: 700/6 = 116.7.
    g = rectangleGroup(20, 20, 10.0f, 0.5f, 0.5f, 700);
    EXPECT_EQ(designColumn(g, kBars).problems, std::vector<std::string>{"(K*L/r) > 100 Gr-C1"});
}

TEST(ColumnBending, MinimumEccentricityPhiTransitionAndTheSearchOutcomes) {
    // 40 × 40, Pu = 20 t, M = 0.1 t·m: e = 0.1·100/20 = 0.5 cm, below 1.5 + 0.03·40 = 2.7 cm.
    // T = 0.1·250·1600 = 40 t; phi = 0.9 − 0.2·20/40 = 0.8.
    ColumnGroup g = rectangleGroup(40, 40, 20.0f, 0.1f, 0.0f, 300);
    ColumnDesignResult r = designColumn(g, kBars);
    EXPECT_NEAR(r.eccX.eCm, 0.5, 1e-6);
    EXPECT_NEAR(r.eccX.designCm, 2.7, 1e-6);
    ASSERT_TRUE(r.bendX);
    EXPECT_NEAR(r.bendX->tT, 40.0, 1e-9);
    EXPECT_NEAR(r.bendX->phi, 0.8, 1e-6);
    EXPECT_EQ(r.status, ColumnStatus::Designed);
    // Light load: the least steel carries it.
    EXPECT_EQ(r.bendX->search.outcome, RatioSearch::Outcome::BelowMinimum);
    EXPECT_TRUE(sheetHasLine(columnSheet(g, r), "Steel area too small, increase steel bars"));

    // Pu = 50 t on the same section: above T, the type's phi 0.7 stays.
    g.puT = 50.0f;
    EXPECT_NEAR(designColumn(g, kBars).bendX->phi, 0.7, 1e-12);

    // 40 × 40 under Pu = 100 t with e = 25 cm: the search converges between 1 % and 8 %,
    // within the tolerance above the demand Pu/phi = 142.86 t, in at most 20 points.
    g = rectangleGroup(40, 40, 100.0f, 25.0f, 0.0f, 300);
    r = designColumn(g, kBars);
    EXPECT_EQ(r.status, ColumnStatus::Designed);
    const RatioSearch& s = r.bendX->search;
    EXPECT_EQ(s.outcome, RatioSearch::Outcome::Converged);
    EXPECT_GT(s.rho, 0.01);
    EXPECT_LT(s.rho, 0.08);
    EXPECT_LE(s.passes.size(), 20u);
    EXPECT_GE(s.passes.back().pnT, 100.0 / 0.7);
    EXPECT_LE(s.passes.back().pnT, 100.0 / 0.7 * 1.001);
    EXPECT_GE(r.finalBars.areaCm2, s.rho * 1600.0);

    // A moment no ratio up to 8 % carries.
    g = rectangleGroup(30, 30, 50.0f, 40.0f, 0.0f, 300);
    r = designColumn(g, kBars);
    EXPECT_EQ(r.status, ColumnStatus::SectionTooSmall);
    EXPECT_TRUE(sheetHasLine(columnSheet(g, r), "Steel area too large, decrease steel bars"));

    // A tolerance no bisection of 20 points reaches.
    g = rectangleGroup(40, 40, 100.0f, 25.0f, 0.0f, 300);
    g.settings.Tolerance = 1e-6f;
    r = designColumn(g, kBars);
    EXPECT_EQ(r.status, ColumnStatus::NotConverged);
    const core::Sheet tooMany = columnSheet(g, r);
    EXPECT_TRUE(sheetHasLine(tooMany, "No of points exceeds 20"));
    EXPECT_TRUE(sheetHasLine(tooMany, "THE PROGRAM DOES NOT CONVERGE FOR THIS VALUE OF "));
    EXPECT_TRUE(sheetHasLine(tooMany, "ECCENTRICITY (EITHER TOO SMALL OR TOO LARGE"));
}

TEST(ColumnBending, MomentsInBothDirectionsAreCheckedByTheReciprocalLoad) {
    // A square under equal moments both ways: Pnx = Pny, so 1/Pni = 2/Pnx − 1/Po; the
    // check must hold with the bars chosen.
    ColumnGroup g = rectangleGroup(50, 50, 150.0f, 12.0f, 0.0f, 300);
    g.y = {12.0f, 0.0f};
    const ColumnDesignResult r = designColumn(g, kBars);
    ASSERT_TRUE(r.biaxialCheck);
    const BiaxialCheck& b = *r.biaxialCheck;
    EXPECT_NEAR(b.pnxT, b.pnyT, 1e-6);
    EXPECT_NEAR(1.0 / b.pniT, 2.0 / b.pnxT - 1.0 / b.p0T, 1e-12);
    EXPECT_EQ(r.status, ColumnStatus::Designed);
    EXPECT_GE(r.finalRho, b.rho);
    EXPECT_TRUE(sheetHasLine(columnSheet(g, r), "1 / Pni = 1 / Pnx + 1 / Pny - 1 / Po"));
}

TEST(ColumnBars, TheLeastAreaThatFitsTheBarLine) {
    // 40 × 40, cover 5: bar line 4·30 = 120 cm. 16 cm²: 12 mm → 15 → 16 bars (18.10),
    // 14 → 12 (18.47), 16 → 8 (16.09), 20 → 6 (18.85): 8 bars of 16 mm.
    const auto s = columnSection(1, {40, 40, 0, 0, 0});
    BarSet b = chooseColumnBars(*s, 16.0, 5.0, kBars);
    EXPECT_EQ(b.count, 8);
    EXPECT_DOUBLE_EQ(b.diameterMm, 16.0);
    // 25 × 25: a 60 cm line; 16 bars of 12 mm stand 60/16 − 1.2 = 2.55 cm apart, less than
    // 4 cm: refused; 14 mm: 12 bars, 5 − 1.4 = 3.6: refused; 16 mm: 8 bars, 7.5 − 1.6 = 5.9.
    const auto small = columnSection(1, {25, 25, 0, 0, 0});
    b = chooseColumnBars(*small, 16.0, 5.0, kBars);
    EXPECT_EQ(b.count, 8);
    EXPECT_DOUBLE_EQ(b.diameterMm, 16.0);
}

TEST(ColumnTransverseSteel, TiesOfARectangleAndTheSpiralOfACircleByHand) {
    // 40 × 40, 16 mm bars with their centres 4 cm in, 3 m high: ties of 10 mm at the least of
    // 16 · 1.6 = 25.6, 48 · 1.0 = 48 and 40 cm, set out at 25 cm; 300 / 25 = 12 spaces, 13
    // ties. The tie's centre line is 4 − (1.6 + 1.0) / 2 = 2.7 cm in, a 34.6 cm square: 138.4
    // cm, and two hooks of max(6 · 1.0, 7.5) = 7.5 cm: 153.4, cut at 154 cm.
    ColumnGroup g = rectangleGroup(40, 40, 100, 0, 0, 300);
    TransverseSteel t = transverseSteel(g, *columnSection(1, g.dims), 16.0, 4.0);
    EXPECT_FALSE(t.spiral);
    EXPECT_DOUBLE_EQ(t.diameterMm, 10.0);
    EXPECT_NEAR(t.limitCm, 25.6, 1e-9);
    EXPECT_DOUBLE_EQ(t.spacingCm, 25.0);
    EXPECT_EQ(t.countPerColumn, 13);
    EXPECT_DOUBLE_EQ(t.lengthCm, 154.0);
    // 30 × 60 with 25 mm bars: the least dimension governs (16 · 2.5 = 40 > 30); 310 / 30 is
    // 10.3, so 11 spaces and 12 ties, none more than 30 cm apart.
    g = rectangleGroup(30, 60, 100, 0, 0, 310);
    t = transverseSteel(g, *columnSection(1, g.dims), 25.0, 5.0);
    EXPECT_DOUBLE_EQ(t.spacingCm, 30.0);
    EXPECT_EQ(t.countPerColumn, 12);

    // A spirally reinforced circle of 50 cm, 20 mm bars 5 cm in, Fc 250, FYties 2400, 3 m:
    // bar circle 40, core out to out Dc = 40 + 2.0 + 2 · 1.0 = 44 cm, Ach = π 44² / 4 =
    // 1520.53 cm²; Ag / Ach = 50² / 44² = 1.291322, rho_s = 0.45 · 0.291322 · 250 / 2400 =
    // 0.0136557. Pitch 4 Asp / (Dc rho_s) = π / (44 · 0.0136557) = 5.2286, set out at 5.0 cm
    // (4.0 cm clear, within 2.5 to 7.5); 300 / 5 = 60 turns and 3 end turns: 63. One turn:
    // √((π · 43)² + 5²) = √(135.088² + 25) = 135.18, cut at 136 cm.
    g.type = 2;
    g.dims = {50, 0, 0, 0, 0};
    g.colLenCm = 300;
    t = transverseSteel(g, *columnSection(2, g.dims), 20.0, 5.0);
    EXPECT_TRUE(t.spiral);
    EXPECT_DOUBLE_EQ(t.diameterMm, 10.0);
    EXPECT_NEAR(t.coreDiameterCm, 44.0, 1e-9);
    EXPECT_NEAR(t.achCm2, 1520.53, 0.005);
    EXPECT_NEAR(t.rhoS, 0.0136557, 1e-7);
    EXPECT_DOUBLE_EQ(t.spacingCm, 5.0);
    EXPECT_TRUE(t.clearPitchHolds);
    EXPECT_EQ(t.countPerColumn, 63);
    EXPECT_DOUBLE_EQ(t.lengthCm, 136.0);
    // Fc 500 doubles rho_s: 10 mm would need a pitch of 2.61 → 2.5 cm, 1.5 clear; 12 mm:
    // Dc = 44.4, Ag/Ach = 2500/1971.36 = 1.268156, rho_s = 0.45 · 0.268156 · 500 / 2400 =
    // 0.0251396, pitch 4 · 1.130973 / (44.4 · 0.0251396) = 4.053 → 4.0 cm, 2.8 clear.
    g.settings.Fc = 500;
    t = transverseSteel(g, *columnSection(2, g.dims), 20.0, 5.0);
    EXPECT_DOUBLE_EQ(t.diameterMm, 12.0);
    EXPECT_DOUBLE_EQ(t.spacingCm, 4.0);
    EXPECT_TRUE(t.clearPitchHolds);
}

} // namespace
} // namespace orvak::columns
