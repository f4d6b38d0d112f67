// Long-term deflection: time factor, gross and cracked sections against closed forms, the
// effective inertia and its guards, and a simply supported span worked by hand.
#include "beams/long_term_deflection.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orvak::beams {
namespace {

SectionGeometry rectangle(double b, double h) {
    SectionGeometry s;
    s.webWidthCm = b;
    s.flangeWidthCm = b;
    s.heightCm = h;
    return s;
}

SectionGeometry topFlanged(double bFlange, double bw, double t, double h) {
    SectionGeometry s;
    s.kind = SectionKind::TSection;
    s.webWidthCm = bw;
    s.flangeWidthCm = bFlange;
    s.flangeThicknessCm = t;
    s.heightCm = h;
    s.flangeOnTop = true;
    return s;
}

const double kFr = 2.0 * std::sqrt(250.0);                  // 31.6228 kg/cm²
const double kN = 2040000.0 / (15100.0 * std::sqrt(250.0)); // 8.5444

TEST(LongTermDeflection, TimeFactor) {
    EXPECT_DOUBLE_EQ(timeFactor(1.0), 0.654);
    EXPECT_DOUBLE_EQ(timeFactor(0.0), 0.654); // no logarithm of zero: one month at least
    EXPECT_NEAR(timeFactor(60.0), 0.305 * 4.0943446 + 0.654, 1e-7);
    // The logarithm reaches 2.0 at exp(1.346 / 0.305) = 82.5 months; ten years stay at 2.0.
    EXPECT_NEAR(timeFactor(82.0), 0.305 * std::log(82.0) + 0.654, 1e-12);
    EXPECT_DOUBLE_EQ(timeFactor(120.0), 2.0);
}

TEST(LongTermDeflection, GrossSectionsOfARectangleAndATee) {
    // 30 × 60: Ig = 30 × 60³ / 12 = 540,000 cm⁴, Yt = 30, Mcr = 540,000 × 31.6228 / 30.
    const GrossSection r = grossSection(rectangle(30, 60), kFr);
    EXPECT_DOUBLE_EQ(r.ig, 540000.0);
    EXPECT_NEAR(r.mcrKgCm, 569209.98, 0.01);
    // T 100/30, T = 10, H = 60: areas 1000 at 5 and 1500 at 35 -> cg = 23 from the top;
    // Ig = 8,333.3 + 1000 × 18² + 312,500 + 1500 × 12² = 860,833.3; Yt = 37.
    const GrossSection t = grossSection(topFlanged(100, 30, 10, 60), kFr);
    EXPECT_NEAR(t.cg, 23.0, 1e-12);
    EXPECT_NEAR(t.ig, 860833.333, 1e-3);
    EXPECT_NEAR(t.mcrKgCm, 860833.333 * kFr / 37.0, 1e-3);
}

TEST(LongTermDeflection, CrackedSectionsBalanceTheirForces) {
    // Rectangle 30, D = 55, AST = 10: 15 c² = n × 10 × (55 - c) -> c = 15.0797,
    // Icr = 30 c³ / 3 + n × 10 × (55 - c)² = 170,457.5 cm⁴.
    const CrackedSection r = crackedSection(rectangle(30, 60), false, 55, 10, 0, 5, kN);
    EXPECT_EQ(r.formula, CrackedFormula::Rectangle);
    EXPECT_NEAR(r.c, 15.0797051, 1e-6);
    EXPECT_NEAR(r.icr, 170457.506, 1e-2);

    // Compression steel 5 cm² at 5 cm: 15 c² + (n - 1) × 5 × (c - 5) = n × 10 × (55 - c).
    const CrackedSection k = crackedSection(rectangle(30, 60), false, 55, 10, 5, 5, kN);
    EXPECT_EQ(k.formula, CrackedFormula::CompressionSteel);
    EXPECT_NEAR(15 * k.c * k.c + (kN - 1) * 5 * (k.c - 5), kN * 10 * (55 - k.c), 1e-6);

    // T 100/30, T = 5, D = 55, AST = 40: mc = 1250 < mt = n × 40 × 50, axis in the web:
    // 100 c² / 2 - 70 (c - 5)² / 2 = n × 40 × (55 - c).
    const CrackedSection w = crackedSection(topFlanged(100, 30, 5, 60), true, 55, 40, 0, 5, kN);
    EXPECT_EQ(w.formula, CrackedFormula::FlangeAxisInWeb);
    EXPECT_NEAR(50 * w.c * w.c - 35 * (w.c - 5) * (w.c - 5), kN * 40 * (55 - w.c), 1e-6);
    // A light steel keeps the axis in the flange: the rectangle of width 100.
    const CrackedSection f = crackedSection(topFlanged(100, 30, 10, 60), true, 55, 5, 0, 5, kN);
    EXPECT_EQ(f.formula, CrackedFormula::FlangeAxisInFlange);
    EXPECT_NEAR(50 * f.c * f.c, kN * 5 * (55 - f.c), 1e-6);
}

TEST(LongTermDeflection, EffectiveInertiaGuards) {
    EXPECT_DOUBLE_EQ(effectiveInertia(540000, 170000, 569210, 0.0), 540000);    // MomDL = 0
    EXPECT_DOUBLE_EQ(effectiveInertia(540000, 170000, 569210, 400000), 540000); // uncracked
    // Ma = 2 Mcr: Icr + (Ig - Icr) / 8.
    EXPECT_DOUBLE_EQ(effectiveInertia(540000, 170000, 500000, 1000000), 170000 + 370000 / 8.0);
}

// A simply supported 6 m span of 30 × 60, Fc 250, under one load, analysed, with 10 cm² of
// bottom steel and covers of 5 cm.
DeflectionInput simpleSpan(LoadKind kind, SpanLoad load) {
    DeflectionInput in;
    BeamSpan span;
    span.lengthCm = 600;
    span.inertiaCm4 = 540000;
    span.loads[loadIndex(kind)] = load;
    in.model.spans = {span};
    in.model.supports = {supportFromCodes(2, 0), supportFromCodes(2, 0)};
    in.model.elasticModulusKgCm2 = 15100.0 * std::sqrt(250.0);
    in.model.factors.dead = {1.4, 1.4};
    in.model.factors.live = {1.7, 1.0};
    in.model.caseScheme = 1;
    const BeamAnalysisResult analysis = analyzeBeam(in.model);
    EXPECT_TRUE(analysis.ok()) << analysis.message;
    in.service = analysis.service;
    in.sections = {rectangle(30, 60)};
    in.fcKgCm2 = 250;
    in.jointAst = {0, 0};
    in.jointAsc = {0, 0};
    in.memberAst = {10};
    in.memberAsc = {0};
    in.settings.bottomCoverCm = 5;
    in.settings.topCoverCm = 5;
    return in;
}

TEST(LongTermDeflection, SimpleSpanByHand) {
    // One span of 6 m, 30 × 60, Fc 250, dead 20 kg/cm and live 10 kg/cm, 10 cm² bottom steel,
    // no compression steel, no sustained live load, 12 months.
    // Md = 20 × 600² / 8 = 900,000, Mt = 1,350,000 kg·cm, Mcr = 569,210, Icr = 170,457.5:
    //   IeDL = Icr + (Ig - Icr)(Mcr/Md)³ = 263,945.2; IeTot = 198,157.6; joints uncracked (Ig):
    //   IeDLAvg = 0.7 × 263,945.2 + 0.3 × 540,000 = 346,761.6; IeTotAvg = 300,710.3.
    //   DefDL = 5 × 20 × 600⁴ / (384 Ec IeDLAvg) = 0.40766; DefTot = 0.70513 cm;
    //   DefLL = 0.29747; TF = 0.305 ln 12 + 0.654 = 1.41190, LNDA = TF (no ASC);
    //   DefLt = 0.29747 + 2 × 0.40766 + 1.41190 × 0.40766 = 1.68836 cm < 600 / 240 = 2.5.
    DeflectionInput in = simpleSpan(LoadKind::Uniform, {true, 20.0, 10.0, 0, 0, {}});
    in.settings.durationMonths = 12;
    const DeflectionResult r = computeLongTermDeflection(in);
    ASSERT_TRUE(r.ok) << r.message;
    const MemberDeflection& m = r.deflections.at(0);
    EXPECT_NEAR(m.ieAvg.dl, 346761.63, 0.05);
    EXPECT_NEAR(m.ieAvg.tot, 300710.29, 0.05);
    EXPECT_NEAR(m.defDlCm, 0.407658, 1e-5);
    EXPECT_NEAR(m.initDefCm, 0.705131, 1e-5);
    EXPECT_NEAR(m.defLlCm, 0.297473, 1e-5);
    EXPECT_NEAR(m.defSusCm, 0.407658, 1e-5);
    EXPECT_NEAR(m.lnda, 1.411897, 1e-6);
    EXPECT_NEAR(m.defLtCm, 1.688359, 1e-5);
    EXPECT_DOUBLE_EQ(m.allowedCm, 2.5); // DeflTxt stored 0: L/240
    EXPECT_FALSE(m.exceeds);

    // 5 cm² of compression steel: LNDA = TF / (1 + 50 × 5 / (30 × 55)) = 1.41190 / 1.15152.
    in.memberAsc = {5};
    const DeflectionResult c = computeLongTermDeflection(in);
    EXPECT_NEAR(c.deflections.at(0).lnda, 1.411897 / (1.0 + 250.0 / 1650.0), 1e-6);

    // Half the live load sustained: Msus = 25 × 600² / 8 = 1,125,000, IeSus = 170,457.5 +
    // 369,542.5 × (569,210 / 1,125,000)³ = 218,323.2, IesusAvg = 0.7 × 218,323.2 + 0.3 × Ig
    // = 314,826.2; DefSus = 5 × 25 × 600⁴ / (384 Ec IesusAvg) = 0.561262 cm.
    in.memberAsc = {0};
    in.settings.sustainedLivePercent = 50;
    const DeflectionResult half = computeLongTermDeflection(in);
    EXPECT_NEAR(half.deflections.at(0).ieAvg.sus, 314826.23, 0.05);
    EXPECT_NEAR(half.deflections.at(0).defSusCm, 0.561262, 1e-5);
}

TEST(LongTermDeflection, WithoutSustainedLiveLoadDefSusIsDefDl) {
    // A triangular load peaks its deflection at 0.519 L, between two stations: with no
    // sustained live load the sustained state is the dead state, and both must find the same
    // largest deflection, not a station value for one and the exact one for the other.
    DeflectionInput in =
        simpleSpan(LoadKind::Triangular, {true, 40.0, 20.0, 0, 0, TrianglePeak::AtRight});
    const MemberDeflection m = computeLongTermDeflection(in).deflections.at(0);
    EXPECT_GT(m.defDlCm, 0.0);
    EXPECT_NEAR(m.defSusCm, m.defDlCm, 1e-12 * m.defDlCm);
}

} // namespace
} // namespace orvak::beams
