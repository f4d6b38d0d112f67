// Tests of the isolated and combined footing designs against hand calculations written out
// beside each expectation (ACI 318 one-way and two-way shear, the cantilever moment and the
// flexural ratio with phi = 0.9), the shared rounding and limits, and the sheets' key lines.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "footings/combined_footing.h"
#include "footings/footing_design.h"
#include "footings/isolated_footing.h"

namespace orvak::footings {
namespace {

const std::vector<bars::BarProperties> kBars = {
    {12.0f, 1.131f, 0.888f}, {14.0f, 1.539f, 1.21f}, {16.0f, 2.011f, 1.58f},
    {20.0f, 3.142f, 2.47f},  {25.0f, 4.909f, 3.85f}, {32.0f, 8.042f, 6.31f},
};

constexpr double kTol = 1e-6; // relative to values of order 1 to 10^7, computed in double

// Fc 250, FY 4200, soil 2.0, cover 7.5, LF 1.4, 0.18 %, MinDepth 30, FacRowmax 0.75.
IsolatedFootingInput squareColumn(float puT, float mux = 0, float muy = 0) {
    IsolatedFootingInput in;
    in.column.type = 1;
    in.column.dims = {40, 40, 0, 0, 0};
    in.column.puT = puT;
    in.column.muxTm = mux;
    in.column.muyTm = muy;
    return in;
}

bool hasLine(const core::Sheet& sh, const std::string& line) {
    return ("\n" + sh.str()).find("\n" + line + "\n") != std::string::npos;
}

bool finiteSheet(const core::Sheet& sh) {
    return sh.str().find("NaN") == std::string::npos && sh.str().find("Inf") == std::string::npos;
}

// The flexural ratio of the sheets, written out: (0.85 Fc / FY)(1 − √|1 − 2.61 Mu/(Fc b d²)|).
double rhoByHand(double mu, double b, double d) {
    return (0.85 * 250.0 / 4200.0) *
           (1.0 - std::sqrt(std::abs(1.0 - 2.61 * mu / (250 * b * d * d))));
}

TEST(FootingShared, RoundingLimitsAndTheAbsoluteRoot) {
    // Int((v + 4.9995) / 5)·5: 150.0004 + 4.9995 = 154.9999 stays below 155.
    EXPECT_DOUBLE_EQ(roundUpToFive(150.0), 150.0);
    EXPECT_DOUBLE_EQ(roundUpToFive(150.0004), 150.0);
    EXPECT_DOUBLE_EQ(roundUpToFive(150.001), 155.0);
    EXPECT_DOUBLE_EQ(roundUpToFive(152.0), 155.0);

    FootingSettings s;
    s.Fc = 280;
    EXPECT_DOUBLE_EQ(steelLimits(s).beta1, 0.85);
    s.Fc = 350; // 0.85 − 0.05 · 70 / 70
    const SteelLimits l = steelLimits(s);
    EXPECT_NEAR(l.beta1, 0.80, 1e-12);
    // Rowb = (0.85·350/4200)·0.80·6100/10300 = 0.0419643
    EXPECT_NEAR(l.rowb, 0.85 * 350 / 4200 * 0.80 * 6100 / 10300, 1e-12);
    EXPECT_NEAR(l.rowMax, 0.75 * l.rowb, 1e-12);

    // A moment twice the section's reach: 2.61 Mu / (250·100·20²) = 2, |1 − 2| = 1, the
    // formula's ratio is 0 and the least ratio is taken, but the section is too shallow.
    const FootingSettings d250;
    const SteelDirection over = designSteel(0, 2.0 * 250 * 100 * 400 / 2.61, 100, 20, 85, 100, d250,
                                            steelLimits(d250), kBars);
    EXPECT_NEAR(over.term, 2.0, 1e-12);
    EXPECT_NEAR(over.rhoCalc, 0.0, 1e-12);
    EXPECT_NEAR(over.rho, 0.0018, 1e-12);
    EXPECT_TRUE(over.tooShallow(steelLimits(d250)));
}

TEST(IsolatedFooting, SquareFootingUnderASquareColumnByHand) {
    const IsolatedFootingInput in = squareColumn(140);
    const IsolatedFootingResult r = designIsolatedFooting(in, kBars);
    ASSERT_EQ(r.status, FootingStatus::Designed);
    // P = 140 000 / 1.4 = 100 000 kg; Area = 100 000 / 2 = 50 000 cm².
    EXPECT_NEAR(r.areaCm2, 50000.0, 1e-6);
    // (40 + 2x)² = 50 000: x = (√50 000 − 40)/2 = 91.8034; A = B = 223.607 → 225.
    EXPECT_NEAR(r.projectionCm, (std::sqrt(50000.0) - 40.0) / 2.0, kTol);
    EXPECT_DOUBLE_EQ(r.aCm, 225.0);
    EXPECT_DOUBLE_EQ(r.bCm, 225.0);
    // Centred, no moments: Q = 100 000 / 225² = 1.97531 at every corner, on the rounded plan.
    for (double q : r.q) {
        EXPECT_NEAR(q, 100000.0 / 50625.0, kTol);
    }
    // Beam shear: Lc = (225 − 40)/2 = 92.5, Qu = 1.4 Q, Vu = 0.53·0.85·√250 = 7.12303;
    // d = 92.5 Qu / (Vu + Qu) = 25.87 cm, below MinDepth 30.
    const double qu = 1.4 * 100000.0 / 50625.0;
    const double vu = 0.53 * 0.85 * std::sqrt(250.0);
    EXPECT_NEAR(r.lcCm, 92.5, kTol);
    EXPECT_NEAR(r.dBeamCm, 92.5 * qu / (vu + qu), kTol);
    // Punching: beta c = 1, 0.53·0.85·3·√250 = 21.37 is capped to 1.06·0.85·√250 = 14.2461;
    // 4 Vc d² + 160 Vc d = 140 000 → d = 33.45, rounded to 35; H = 35 + 7.5.
    const double vc = 1.06 * 0.85 * std::sqrt(250.0);
    EXPECT_NEAR(r.vcRawKgCm2, 0.53 * 0.85 * 3.0 * std::sqrt(250.0), kTol);
    EXPECT_NEAR(r.vcKgCm2, vc, kTol);
    const double a1 = 4 * vc, b1 = 160 * vc;
    EXPECT_NEAR(r.dPunchCm, (-b1 + std::sqrt(b1 * b1 + 4 * a1 * 140000.0)) / (2 * a1), kTol);
    EXPECT_NEAR(r.dPunchCm, 33.45, 0.01);
    EXPECT_DOUBLE_EQ(r.dCm, 35.0);
    EXPECT_DOUBLE_EQ(r.finalHCm, 42.5);
    // Ps = (2(40 + 35) + 2(40 + 35))·35·Vc = 149 584 kg > 140 000.
    EXPECT_NEAR(r.psKg, 300.0 * 35.0 * vc, kTol * 1e5);
    EXPECT_FALSE(r.punchingUnsafe);
    // Steel both ways: Mu = Qu·92.5²/2·225 = 26.62 t·m; rho = 0.002618, As = rho·225·35.
    const double mu = qu * 92.5 * 92.5 / 2.0 * 225.0;
    for (const SteelDirection* s : {&r.steelY, &r.steelX}) {
        EXPECT_NEAR(s->muKgCm, mu, kTol * mu);
        EXPECT_NEAR(s->rho, rhoByHand(mu, 225, 35), 1e-12);
        EXPECT_NEAR(s->astCm2, rhoByHand(mu, 225, 35) * 225 * 35, 1e-9);
        // 20.62 cm² over 225 − 15 = 210 cm: spacing ≤ 30 needs 8 bars; Ø20 needs 7 for the
        // area, Ø25 5: both 8, the smaller bar wins; Ø16 needs 11, Ø12 19 (11.7 cm apart).
        EXPECT_EQ(s->bars.count, 8);
        EXPECT_DOUBLE_EQ(s->bars.diameterMm, 20.0);
        EXPECT_DOUBLE_EQ(s->bars.lengthCm, 210.0);
    }
    const core::Sheet sh = isolatedFootingSheet(in, r);
    EXPECT_TRUE(hasLine(sh, "Ps > Pu    O.K "));
    EXPECT_TRUE(hasLine(sh, "QUANTITY=  8 DIAMETER= 20"));
    const FootingSummary sum = r.summary();
    EXPECT_EQ(sum.status, FootingStatus::Designed);
    EXPECT_DOUBLE_EQ(sum.hCm, 42.5);
}

TEST(IsolatedFooting, AreaOfTheColumnPlusFiveCmAllRoundNeedsNoRounding) {
    // 40 × 60 column, P = 8 750 / 1.25 = 7 000 kg on 2 kg/cm²: Area = 3 500 = (40+10)(60+10);
    // x = (−200 + √(4·100² − 16(2 400 − 3 500)))/8 = (−200 + 240)/8 = 5.
    IsolatedFootingInput in = squareColumn(8.75f);
    in.column.dims = {40, 60, 0, 0, 0};
    in.settings.LF = 1.25f;
    const IsolatedFootingResult r = designIsolatedFooting(in, kBars);
    EXPECT_NEAR(r.projectionCm, 5.0, 1e-9);
    EXPECT_DOUBLE_EQ(r.aCm, 50.0);
    EXPECT_DOUBLE_EQ(r.bCm, 70.0);
}

TEST(IsolatedFooting, RoundColumnPunchesOnACircleAndShearsFromItsEquivalentSquare) {
    // D = 40, Pu = 100 t: P = 71 428.6 kg, Area = 35 714.3, a square of √Area = 188.98 → 190.
    // Punching on the circle of D + d: pi Vc d (40 + d) = 100 000 (A1 = pi Vc, B1 = 40 pi Vc).
    // Beam shear from the faces of the square of the same area, side 40 √pi / 2 = 35.45:
    // Lc = (190 − 35.45)/2 = 77.28.
    IsolatedFootingInput in = squareColumn(100);
    in.column.type = 2;
    in.column.dims = {40, 0, 0, 0, 0};
    const IsolatedFootingResult r = designIsolatedFooting(in, kBars);
    const double vc = 1.06 * 0.85 * std::sqrt(250.0);
    EXPECT_DOUBLE_EQ(r.aCm, 190.0);
    EXPECT_DOUBLE_EQ(r.bCm, 190.0);
    EXPECT_NEAR(r.a1, std::numbers::pi * vc, 1e-12);
    EXPECT_NEAR(std::numbers::pi * vc * r.dPunchCm * (40.0 + r.dPunchCm), 100000.0, 1e-6);
    EXPECT_NEAR(r.lcCm, (190.0 - 40.0 * std::sqrt(std::numbers::pi) / 2.0) / 2.0, 1e-9);
    // d = 31.33 → 35; Ps = pi (40 + 35)·35·Vc; A1 = pi·14.2461 = 44.755.
    EXPECT_DOUBLE_EQ(r.dCm, 35.0);
    EXPECT_NEAR(r.psKg, std::numbers::pi * 75.0 * 35.0 * vc, 1e-6);
    EXPECT_TRUE(hasLine(isolatedFootingSheet(in, r), "A1 = PI * Vc=    44.76"));
}

TEST(IsolatedFooting, MomentsBothWaysLiftACornerAndOverloadTwo) {
    // The 225 × 225 footing of 140 t with Mux = 40 and Muy = 20 t·m: MX = 40e5 / 1.4,
    // My = 20e5 / 1.4, I = 225⁴/12 = 213 574 218.75; MX·112.5/I = 1.50497, My·112.5/I
    // = 0.75249; Q1 = 1.97531 + 1.50497 − 0.75249 = 2.728, Q2 = −0.282, Q3 = 1.223, Q4 = 4.233.
    const IsolatedFootingInput in = squareColumn(140, 40, 20);
    const IsolatedFootingResult r = designIsolatedFooting(in, kBars);
    const double i = std::pow(225.0, 4) / 12.0;
    const double mean = 100000.0 / 50625.0;
    const double fy = 40e5 / 1.4 * 112.5 / i;
    const double fx = 20e5 / 1.4 * 112.5 / i;
    EXPECT_NEAR(r.q[0], mean + fy - fx, kTol);
    EXPECT_NEAR(r.q[1], mean - fy - fx, kTol);
    EXPECT_NEAR(r.q[2], mean - fy + fx, kTol);
    EXPECT_NEAR(r.q[3], mean + fy + fx, kTol);
    EXPECT_LT(r.q[1], 0.0);
    EXPECT_EQ(r.cornersOver, (std::vector<int>{1, 4}));
    EXPECT_EQ(r.cornersTension, (std::vector<int>{2}));
    EXPECT_EQ(r.status, FootingStatus::ChecksFailed);
    const core::Sheet sh = isolatedFootingSheet(in, r);
    EXPECT_TRUE(hasLine(sh, "Pressure exceeds safe bearing capacity at corner(s):1,4"));
    EXPECT_TRUE(hasLine(sh, "Tension stresses at corner(s):2"));
    // The design pressure is the largest corner's: Qu = 1.4 · 4.233.
    EXPECT_NEAR(r.quKgCm2, 1.4 * (mean + fy + fx), kTol);
}

TEST(IsolatedFooting, ColumnNearAnEdgeAndOneOutsideTheFooting) {
    // Cy = 10 on the 225 footing: the centre 10 + 20 = 30 from the edge, Ey = 30 − 112.5;
    // the long side beyond the far face is 225 − 10 − 40 = 175 cm, the cantilever L.
    IsolatedFootingInput in = squareColumn(140);
    in.column.cyCm = 10;
    const IsolatedFootingResult r = designIsolatedFooting(in, kBars);
    EXPECT_NEAR(r.eyCm, -82.5, 1e-9);
    EXPECT_NEAR(r.exCm, 0.0, 1e-9);
    EXPECT_NEAR(r.lcYCm, 175.0, 1e-9);
    EXPECT_NEAR(r.steelY.spanCm, 175.0, 1e-9);
    EXPECT_NEAR(r.mxKgCm, 100000.0 * -82.5, 1e-3);
    // Cy = 190: the face at 190 + 40 = 230 lies outside the 225 cm side.
    in.column.cyCm = 190;
    const IsolatedFootingResult out = designIsolatedFooting(in, kBars);
    EXPECT_EQ(out.status, FootingStatus::CheckData);
    const core::Sheet sh = isolatedFootingSheet(in, out);
    EXPECT_TRUE(hasLine(sh, "Check your data"));
    EXPECT_TRUE(finiteSheet(sh));
}

TEST(IsolatedFooting, RatioAboveRowMaxDeepensInFiveCmSteps) {
    // With FacRowmax 0.1, RowMax = 0.1·0.0254690 = 0.0025469: at d = 35 the ratio 0.002618
    // is above it; at d = 40 it is rho(Mu, 225, 40) = 0.001992 and the search stops.
    IsolatedFootingInput in = squareColumn(140);
    in.settings.facRowmax = 0.1f;
    const IsolatedFootingResult r = designIsolatedFooting(in, kBars);
    const double qu = 1.4 * 100000.0 / 50625.0;
    const double mu = qu * 92.5 * 92.5 / 2.0 * 225.0;
    ASSERT_EQ(r.deepenPasses.size(), 1u);
    EXPECT_DOUBLE_EQ(r.deepenPasses[0].dCm, 35.0);
    EXPECT_NEAR(r.deepenPasses[0].rhoCalc, rhoByHand(mu, 225, 35), 1e-12);
    EXPECT_DOUBLE_EQ(r.finalDCm, 40.0);
    EXPECT_DOUBLE_EQ(r.summary().hCm, 47.5);
    EXPECT_NEAR(r.steelY.rho, rhoByHand(mu, 225, 40), 1e-12);
}

TEST(IsolatedFooting, DataOfWhichNoFootingCanBeMade) {
    IsolatedFootingInput in = squareColumn(140);
    for (int c = 0; c < 6; ++c) {
        IsolatedFootingInput bad = in;
        if (c == 0) {
            bad.column.puT = 0;
        } else if (c == 1) {
            bad.settings.FY = 0;
        } else if (c == 2) {
            bad.column.puT = std::nanf("");
        } else if (c == 3) {
            bad.column.type = 8;
        } else if (c == 4) {
            // No least depth and almost no load: the effective depth would come to zero and
            // the steel ratio divide by it (found by fuzzing).
            bad.settings.minDepthCm = 0.0f;
            bad.column.puT = 1e-30f;
        } else {
            bad.column.muyTm = 1e30f; // beyond what a column group can hold
        }
        const IsolatedFootingResult r = designIsolatedFooting(bad, kBars);
        EXPECT_EQ(r.status, FootingStatus::CheckData) << c;
        const core::Sheet sh = isolatedFootingSheet(bad, r);
        EXPECT_TRUE(hasLine(sh, "Check your data")) << c;
        EXPECT_TRUE(finiteSheet(sh)) << c;
    }
}

// Two 40 × 40 columns on a line, Fc 250, soil 2.0, LF 1.4.
CombinedFootingInput twoColumns(float pu1, float cx1, float pu2, float cx2) {
    CombinedFootingInput in;
    in.column1.dims = {40, 40, 0, 0, 0};
    in.column1.puT = pu1;
    in.column1.cxCm = cx1;
    in.column2 = in.column1;
    in.column2.puT = pu2;
    in.column2.cxCm = cx2;
    return in;
}

TEST(CombinedFooting, EqualLoadsByHand) {
    const CombinedFootingInput in = twoColumns(70, 50, 70, 350);
    const CombinedFootingResult r = designCombinedFooting(in, kBars);
    ASSERT_EQ(r.status, FootingStatus::Designed);
    // Ex1 = 70·300/140 = 150 = (Cx2 − Cx1)/2; B = 2(150 + 50) = 400 = Cx1 + Cx2;
    // A = (100 000 / 2) / 400 = 125; Q = 100 000 / 50 000 = 2.0, exactly the capacity.
    EXPECT_NEAR(r.ex1Cm, 150.0, 1e-9);
    EXPECT_DOUBLE_EQ(r.bCm, 400.0);
    EXPECT_DOUBLE_EQ(r.aCm, 125.0);
    EXPECT_NEAR(r.qMax, 2.0, 1e-12);
    EXPECT_TRUE(r.cornersOver.empty());
    // Qu = 140 000 / 50 000 = 2.8, w = Qu·125 = 350 kg/cm.
    // V1LT = 350·30 = 10 500; V1RT = 350·70 − 70 000 = −45 500; V2LT = 350·330 − 70 000
    // = 45 500; V2RT = 350·370 − 140 000 = −10 500.
    EXPECT_NEAR(r.quKgCm2, 2.8, 1e-12);
    EXPECT_NEAR(r.v1ltKg, 10500.0, 1e-6);
    EXPECT_NEAR(r.v1rtKg, -45500.0, 1e-6);
    EXPECT_NEAR(r.v2ltKg, 45500.0, 1e-6);
    EXPECT_NEAR(r.v2rtKg, -10500.0, 1e-6);
    EXPECT_NEAR(r.vmaxKg, 45500.0, 1e-6);
    // M(70) = 350·70²/2 − 70 000·20 = −542 500; zero shear at 70 000/350 = 200 (mid-way),
    // M(200) = 350·200²/2 − 70 000·150 = −3 500 000 kg·cm.
    EXPECT_NEAR(r.mUnderKgCm, 542500.0, 1e-6);
    ASSERT_TRUE(r.zeroShearBetween);
    EXPECT_NEAR(r.zeroShearCm, 200.0, 1e-9);
    EXPECT_NEAR(r.mBetweenKgCm, 3.5e6, 1e-3);
    // Beam shear: d = 45 500 / (125 (2.8 + 7.12303)) = 36.68 → 40.
    EXPECT_NEAR(r.dBeamCm, 45500.0 / (125.0 * (2.8 + 0.53 * 0.85 * std::sqrt(250.0))), kTol);
    EXPECT_DOUBLE_EQ(r.dStartCm, 40.0);
    // Punching at 40: edge distance 30 > 20, four sides of 80: Ps = Vc·320·40 − 2.8·80²
    // = 164 430 kg > 70 000 at the first depth, for both columns.
    const double vc = 1.06 * 0.85 * std::sqrt(250.0);
    ASSERT_EQ(r.punch1.passes.size(), 1u);
    EXPECT_FALSE(r.punch1.passes[0].edge);
    EXPECT_NEAR(r.punch1.passes[0].psKg, vc * 320 * 40 - 2.8 * 6400, 1e-6);
    EXPECT_NEAR(r.punch2.passes[0].psKg, vc * 320 * 40 - 2.8 * 6400, 1e-6);
    EXPECT_DOUBLE_EQ(r.summary().hCm, 47.5);
    // Long steel for 35 t·m over A = 125: rho = 0.004855, As = 24.27 cm²; over 110 cm Ø25
    // needs 5 (27.5 cm apart), Ø20 8; Ø16 and less would stand closer than 10 cm.
    EXPECT_NEAR(r.steelLong.rho, rhoByHand(3.5e6, 125, 40), 1e-12);
    EXPECT_EQ(r.steelLong.bars.count, 5);
    EXPECT_DOUBLE_EQ(r.steelLong.bars.diameterMm, 25.0);
    // That moment hogs, so those bars lie at the top. The bottom takes the largest sagging
    // moment, at the outer faces: M(30) = M(370) = 350·30²/2 = 157 500 kg·cm, rho 0.00026 →
    // 0.0018, As = 0.0018·125·40 = 9.0 cm².
    EXPECT_TRUE(r.longAtTop);
    EXPECT_NEAR(r.mHoggingKgCm, 3.5e6, 1e-3);
    EXPECT_NEAR(r.mSaggingKgCm, 157500.0, 1e-6);
    EXPECT_NEAR(r.steelOther.astCm2, 9.0, 1e-9);
    // The steel store gets the four layers: the long bars at the top and at the bottom, and
    // the cross bars under each column.
    const FootingSummary sum = r.summary();
    ASSERT_EQ(sum.barSets.size(), 4u);
    EXPECT_EQ(sum.barSets[0].text, "Top bars, long direction");
    EXPECT_EQ(sum.barSets[1].text, "Bottom bars, long direction");
    // Strip under column 1: W = (125 − 40)/2 = 42.5, Mu = (70 000/125)·42.5²/2 = 505 750 over
    // 0..100 (40 + 0.75·40 beyond the inner face, cut at the end): rho 0.00084 → 0.0018,
    // As = 0.0018·100·40 = 7.2 cm².
    EXPECT_NEAR(r.strip1.muKgCm, 505750.0, 1e-6);
    EXPECT_NEAR(r.strip1.widthCm, 100.0, 1e-9);
    EXPECT_NEAR(r.strip1.rhoCalc, rhoByHand(505750, 100, 40), 1e-12);
    EXPECT_NEAR(r.strip1.astCm2, 7.2, 1e-9);
}

TEST(CombinedFooting, NoLoadOnTheSecondColumnHasNoZeroShearBetween) {
    // Pu2 = 0: Ex1 = 0, B = 2·Cx1 = 200; w = 70 000/200 = 350; the shear 350x − 70 000 is
    // zero only at the far end. Between the columns M(120) = 350·120²/2 − 70 000·20
    // = 1 120 000 and M(130) = 857 500: the larger magnitude is kept.
    const CombinedFootingInput in = twoColumns(70, 100, 0, 150);
    const CombinedFootingResult r = designCombinedFooting(in, kBars);
    ASSERT_NE(r.status, FootingStatus::CheckData);
    EXPECT_NEAR(r.ex1Cm, 0.0, 1e-12);
    EXPECT_DOUBLE_EQ(r.bCm, 200.0);
    EXPECT_FALSE(r.zeroShearBetween);
    EXPECT_NEAR(r.mBetweenKgCm, 1120000.0, 1e-6);
    EXPECT_NEAR(r.strip2.muKgCm, 0.0, 1e-12);
    const core::Sheet sh = combinedFootingSheet(in, r);
    EXPECT_TRUE(finiteSheet(sh));
    EXPECT_NE(sh.str().find("No point of zero shear between the columns"), std::string::npos);
    EXPECT_EQ(sh.str().find("Location of Max B.M between columns from left="), std::string::npos);
}

TEST(CombinedFooting, EdgeDistanceOfExactlyHalfTheDepthIsThreeSided) {
    // Cx1 = 40, Cx2 = 340: B = 2(150 + 40) = 380, A = 50 000/380 = 131.6 → 135; w = 140 000
    // / 380; Vmax = 368.42·60 − 70 000 = 47 895; d = 47 895 / (135 (Qu + 7.12303)) = 36.0 → 40
    // (MinDepth 40 as well). Both edge distances are 20 = d/2: the sections reach the ends,
    // x from 0 to 80 and y 27.5 to 107.5: three sides, 80 + 2·80 = 240, area 6 400.
    CombinedFootingInput in = twoColumns(70, 40, 70, 340);
    in.settings.minDepthCm = 40;
    const CombinedFootingResult r = designCombinedFooting(in, kBars);
    ASSERT_NE(r.status, FootingStatus::CheckData);
    EXPECT_DOUBLE_EQ(r.bCm, 380.0);
    EXPECT_DOUBLE_EQ(r.aCm, 135.0);
    EXPECT_DOUBLE_EQ(r.dStartCm, 40.0);
    EXPECT_NEAR(r.punch1.edgeDistanceCm, 20.0, 1e-12);
    EXPECT_NEAR(r.punch2.edgeDistanceCm, 20.0, 1e-12);
    const double vc = 1.06 * 0.85 * std::sqrt(250.0);
    const double qu = 140000.0 / (135.0 * 380.0);
    for (const ColumnPunching* p : {&r.punch1, &r.punch2}) {
        ASSERT_EQ(p->passes.size(), 1u);
        EXPECT_TRUE(p->passes[0].edge);
        EXPECT_NEAR(p->passes[0].psKg, vc * 240 * 40 - qu * 6400, 1e-6);
    }
    const core::Sheet sh = combinedFootingSheet(in, r);
    EXPECT_NE(sh.str().find("Ps1= Vc * ((2 * (B10 + D / 2) + (A10 + D)) * D) - (Qu * (B10 + D / "
                            "2) * (A10 + D)) ="),
              std::string::npos);
    EXPECT_NE(sh.str().find("Ps2= Vc * ((2 * (B20 + D / 2) + (A20 + D)) * D) - (Qu * (B20 + D / "
                            "2) * (A20 + D)) ="),
              std::string::npos);
}

TEST(CombinedFooting, ColumnsOutsideOrOutOfOrderAreCheckYourData) {
    // Column 1 at 10 reaches 10 cm past the left end; the columns in the wrong order; column
    // 2 past the right end (Pu2 = 0: B = 2·100 = 200, and its face at 190 + 20 = 210).
    for (const CombinedFootingInput& in :
         {twoColumns(70, 10, 70, 300), twoColumns(70, 300, 70, 100), twoColumns(70, 100, 0, 190)}) {
        const CombinedFootingResult r = designCombinedFooting(in, kBars);
        EXPECT_EQ(r.status, FootingStatus::CheckData);
        const core::Sheet sh = combinedFootingSheet(in, r);
        EXPECT_TRUE(hasLine(sh, "Check your data"));
        EXPECT_TRUE(finiteSheet(sh));
    }
}

TEST(FootingDesigns, ExtremeSinglesEndWithoutNaNOrInfinity) {
    // Whatever a damaged record holds, a design ends and its sheet shows numbers: loads,
    // sizes and settings at the ends of the single's range, one field at a time.
    const float extremes[] = {3.4e38f, 1e-30f, 1e-45f, 1e30f};
    for (const float v : extremes) {
        for (int field = 0; field < 6; ++field) {
            IsolatedFootingInput iso = squareColumn(140, 20, -10);
            CombinedFootingInput com = twoColumns(70, 100, 30, 200);
            float* isoField[] = {&iso.column.puT,   &iso.column.dims[0],
                                 &iso.settings.LF,  &iso.settings.soilCapacity,
                                 &iso.column.muxTm, &iso.settings.facRowmax};
            float* comField[] = {&com.column1.puT, &com.column2.cxCm,
                                 &com.settings.LF, &com.settings.soilCapacity,
                                 &com.column2.puT, &com.settings.coverCm};
            *isoField[field] = v;
            *comField[field] = v;
            const core::Sheet a = isolatedFootingSheet(iso, designIsolatedFooting(iso, kBars));
            const core::Sheet b = combinedFootingSheet(com, designCombinedFooting(com, kBars));
            EXPECT_TRUE(finiteSheet(a)) << v << " in field " << field;
            EXPECT_TRUE(finiteSheet(b)) << v << " in field " << field;
        }
    }
}

} // namespace
} // namespace orvak::footings
