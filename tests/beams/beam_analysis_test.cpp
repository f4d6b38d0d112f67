// Continuous-beam analysis against closed forms of beam theory: clamped, propped and simple
// spans, continuous beams, the three-moment equation, load patterns, deflections, instability.
#include "beams/beam_analysis.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace orvak::beams {
namespace {

constexpr double kE = 250000.0; // kg/cm²
constexpr double kI = 540000.0; // cm⁴: a 30 × 60 cm rectangle, 30·60³/12
constexpr double kEI = kE * kI; // kg·cm²
constexpr double kRel = 1e-9;   // relative tolerance of the exact solutions

const BeamSupport kFree = supportFromCodes(0, 0);
const BeamSupport kPinned = supportFromCodes(2, 0);
const BeamSupport kFixed = supportFromCodes(2, 1);

// Factors of 1 on every span, so that a case's load is the dead value plus the live value.
BeamAnalysisInput makeBeam(std::vector<double> lengths, std::vector<BeamSupport> supports) {
    BeamAnalysisInput in;
    for (double l : lengths) {
        in.spans.push_back({l, kI, {}});
    }
    in.supports = std::move(supports);
    in.elasticModulusKgCm2 = kE;
    in.factors.dead = {1.0, 1.0};
    in.factors.live = {1.0, 1.0};
    in.caseScheme = 1;
    return in;
}

void addLoad(BeamAnalysisInput& in, int span, LoadKind kind, double dead, double live = 0.0,
             double startCm = 0.0, double lengthCm = 0.0,
             TrianglePeak peak = TrianglePeak::AtRight) {
    in.spans[span].loads[loadIndex(kind)] = {true, dead, live, startCm, lengthCm, peak};
}

BeamAnalysisResult run(const BeamAnalysisInput& in) {
    BeamAnalysisResult r = analyzeBeam(in);
    EXPECT_TRUE(r.ok()) << r.message;
    return r;
}

#define EXPECT_REL(actual, expected) EXPECT_NEAR(actual, expected, kRel* std::abs(expected) + 1e-7)

TEST(BeamAnalysisSingleSpan, FixedFixedUniformLoad) {
    // Clamped both ends, uniform w: M_ends = -wL²/12, M_mid = +wL²/24, R = wL/2, V(0) = wL/2.
    const double l = 600.0;
    const double w = 30.0;
    auto in = makeBeam({l}, {kFixed, kFixed});
    addLoad(in, 0, LoadKind::Uniform, w);
    const auto r = run(in);
    const CaseResult& c = r.cases.at(0);
    EXPECT_EQ(r.freeDofCount, 0);
    EXPECT_REL(c.supportMomentsKgCm[0], -w * l * l / 12);
    EXPECT_REL(c.supportMomentsKgCm[1], -w * l * l / 12);
    EXPECT_REL(c.tenthPoint(0, 5).momentKgCm, w * l * l / 24);
    EXPECT_REL(c.spans[0].maxMoment.momentKgCm, w * l * l / 24);
    EXPECT_REL(c.spans[0].maxMoment.xCm, l / 2);
    EXPECT_REL(c.spans[0].shearLeftKg, w * l / 2);
    EXPECT_REL(c.spans[0].shearRightKg, -w * l / 2);
    EXPECT_REL(c.reactionsKg[0], w * l / 2);
}

TEST(BeamAnalysisSingleSpan, ProppedCantileverUniformLoad) {
    // Fixed at A, pinned at B: M_A = -wL²/8, R_A = 5wL/8, R_B = 3wL/8; V = 5wL/8 - wx = 0 at
    // x = 5L/8, where M = -wL²/8 + (5wL/8)(5L/8) - w(5L/8)²/2 = 9wL²/128.
    const double l = 600.0;
    const double w = 30.0;
    auto in = makeBeam({l}, {kFixed, kPinned});
    addLoad(in, 0, LoadKind::Uniform, w);
    const auto r = run(in);
    const CaseResult& c = r.cases.at(0);
    EXPECT_REL(c.supportMomentsKgCm[0], -w * l * l / 8);
    EXPECT_EQ(c.supportMomentsKgCm[1], 0.0);
    EXPECT_REL(c.reactionsKg[0], 5 * w * l / 8);
    EXPECT_REL(c.reactionsKg[1], 3 * w * l / 8);
    EXPECT_REL(c.spans[0].maxMoment.momentKgCm, 9 * w * l * l / 128);
    EXPECT_REL(c.spans[0].maxMoment.xCm, 5 * l / 8);
    EXPECT_REL(c.spans[0].minMoment.momentKgCm, -w * l * l / 8);
    EXPECT_EQ(c.spans[0].minMoment.xCm, 0.0);
}

TEST(BeamAnalysisSingleSpan, SimpleSpanPointTriangularAndPartialLoads) {
    const double l = 600.0;
    {
        // Point load P at a: M = Pab/L under the load, V = Pb/L left of it, -Pa/L right.
        const double p = 8000.0;
        const double a = 200.0;
        const double b = l - a;
        auto in = makeBeam({l}, {kPinned, kPinned});
        addLoad(in, 0, LoadKind::Concentrated, p, 0.0, a);
        const auto r = run(in);
        const SpanForces& s = r.cases.at(0).spans[0];
        EXPECT_REL(s.maxMoment.momentKgCm, p * a * b / l);
        EXPECT_REL(s.maxMoment.xCm, a);
        EXPECT_REL(s.shearLeftKg, p * b / l);
        EXPECT_REL(s.shearRightKg, -p * a / l);
        EXPECT_REL(s.absMaxShearKg, p * b / l);
    }
    {
        // Triangle rising to w at B: R_A = wL/6, V = wL/6 - wx²/2L = 0 at x = L/√3, where
        // M = wL²/(9√3).
        const double w = 40.0;
        auto in = makeBeam({l}, {kPinned, kPinned});
        addLoad(in, 0, LoadKind::Triangular, w);
        const auto r = run(in);
        const SpanForces& s = r.cases.at(0).spans[0];
        EXPECT_REL(s.maxMoment.momentKgCm, w * l * l / (9 * std::numbers::sqrt3));
        EXPECT_REL(s.maxMoment.xCm, l / std::numbers::sqrt3);
        EXPECT_REL(r.cases[0].reactionsKg[0], w * l / 6);
        // The peak at A mirrors it.
        in.spans[0].loads[loadIndex(LoadKind::Triangular)].peak = TrianglePeak::AtLeft;
        const auto m = run(in);
        EXPECT_REL(m.cases.at(0).spans[0].maxMoment.xCm, l - l / std::numbers::sqrt3);
        EXPECT_REL(m.cases[0].reactionsKg[0], w * l / 3);
    }
    {
        // w over [a, a + c]: R_A = wc (L - a - c/2) / L; V = R_A - w(x - a) = 0 at
        // x0 = a + R_A / w, where M = R_A x0 - w (x0 - a)² / 2.
        const double w = 25.0;
        const double a = 100.0;
        const double c = 300.0;
        auto in = makeBeam({l}, {kPinned, kPinned});
        addLoad(in, 0, LoadKind::PartialUniform, w, 0.0, a, c);
        const auto r = run(in);
        const double ra = w * c * (l - a - c / 2) / l;
        const double x0 = a + ra / w;
        const SpanForces& s = r.cases.at(0).spans[0];
        EXPECT_REL(r.cases[0].reactionsKg[0], ra);
        EXPECT_REL(s.maxMoment.xCm, x0);
        EXPECT_REL(s.maxMoment.momentKgCm, ra * x0 - w * (x0 - a) * (x0 - a) / 2);
    }
}

TEST(BeamAnalysisContinuous, EqualSpansUnderUniformLoad) {
    const double l = 500.0;
    const double w = 20.0;
    {
        // Two equal spans: M_B = -wL²/8; reactions 3wL/8, 10wL/8, 3wL/8.
        auto in = makeBeam({l, l}, {kPinned, kPinned, kPinned});
        addLoad(in, 0, LoadKind::Uniform, w);
        addLoad(in, 1, LoadKind::Uniform, w);
        const auto r = run(in);
        const CaseResult& c = r.cases.at(0);
        EXPECT_REL(c.supportMomentsKgCm[1], -w * l * l / 8);
        EXPECT_REL(c.reactionsKg[0], 3 * w * l / 8);
        EXPECT_REL(c.reactionsKg[1], 10 * w * l / 8);
        EXPECT_REL(c.reactionsKg[2], 3 * w * l / 8);
        EXPECT_REL(c.spans[1].shearLeftKg, 5 * w * l / 8);
    }
    {
        // Three equal spans: M_B = M_C = -wL²/10; reactions 0.4wL and 1.1wL.
        auto in = makeBeam({l, l, l}, {kPinned, kPinned, kPinned, kPinned});
        for (int i = 0; i < 3; ++i) {
            addLoad(in, i, LoadKind::Uniform, w);
        }
        const auto r = run(in);
        const CaseResult& c = r.cases.at(0);
        EXPECT_REL(c.supportMomentsKgCm[1], -w * l * l / 10);
        EXPECT_REL(c.supportMomentsKgCm[2], -w * l * l / 10);
        EXPECT_REL(c.reactionsKg[0], 0.4 * w * l);
        EXPECT_REL(c.reactionsKg[1], 1.1 * w * l);
    }
}

TEST(BeamAnalysisContinuous, ThreeMomentEquationForUnequalSpans) {
    // Clapeyron, simple outer supports (M_A = M_C = 0):
    //   M_A L1 + 2 M_B (L1 + L2) + M_C L2 = -(w1 L1³ + w2 L2³) / 4
    // L1 = 500, L2 = 700, w1 = 20, w2 = 35:
    //   w1 L1³ = 20 · 1.25e8 = 2.5e9, w2 L2³ = 35 · 3.43e8 = 1.2005e10, sum 1.4505e10
    //   M_B = -1.4505e10 / (8 · 1200) = -1,510,937.5 kg·cm
    //   R_A = w1 L1 / 2 + M_B / L1 = 5000 - 3021.875 = 1978.125 kg
    auto in = makeBeam({500.0, 700.0}, {kPinned, kPinned, kPinned});
    addLoad(in, 0, LoadKind::Uniform, 20.0);
    addLoad(in, 1, LoadKind::Uniform, 35.0);
    const auto r = run(in);
    EXPECT_REL(r.cases.at(0).supportMomentsKgCm[1], -1510937.5);
    EXPECT_REL(r.cases.at(0).reactionsKg[0], 1978.125);
}

TEST(BeamAnalysisContinuous, SpanWithoutLoadsCarriesOnlyTheContinuityMoment) {
    // Load on span 1 only, equal spans: three-moment gives M_B = -wL³/(8 · 2L) = -wL²/16;
    // the unloaded span's moment falls linearly from M_B to zero and its far support pulls
    // down: R_C = M_B / L.
    const double l = 500.0;
    const double w = 20.0;
    auto in = makeBeam({l, l}, {kPinned, kPinned, kPinned});
    addLoad(in, 0, LoadKind::Uniform, w);
    const auto r = run(in);
    const CaseResult& c = r.cases.at(0);
    const double mb = -w * l * l / 16;
    EXPECT_REL(c.supportMomentsKgCm[1], mb);
    EXPECT_REL(c.reactionsKg[2], mb / l);
    for (const Station& st : c.spanStations(1)) {
        EXPECT_REL(st.momentKgCm, mb * (1 - st.xCm / l));
        EXPECT_REL(st.shearKg, -mb / l);
    }
}

TEST(BeamAnalysisContinuous, OverhangAndCantilever) {
    const double w = 30.0;
    {
        // Overhang a = 200 beyond A of a simple span L = 600, loaded on the overhang only:
        // M_A = -wa²/2, tip moment 0, the far support pulls down R = -wa²/(2L).
        const double a = 200.0;
        const double l = 600.0;
        auto in = makeBeam({a, l}, {kFree, kPinned, kPinned});
        addLoad(in, 0, LoadKind::Uniform, w);
        const auto r = run(in);
        const CaseResult& c = r.cases.at(0);
        EXPECT_EQ(c.supportMomentsKgCm[0], 0.0);
        EXPECT_EQ(c.reactionsKg[0], 0.0);
        EXPECT_REL(c.supportMomentsKgCm[1], -w * a * a / 2);
        EXPECT_REL(c.reactionsKg[2], -w * a * a / (2 * l));
        EXPECT_REL(c.reactionsKg[1], w * a + w * a * a / (2 * l));
    }
    {
        // Cantilever of length L clamped at A: M_A = -wL²/2, tip deflection wL⁴/(8EI).
        const double l = 300.0;
        auto in = makeBeam({l}, {kFixed, kFree});
        addLoad(in, 0, LoadKind::Uniform, w);
        const auto r = run(in);
        EXPECT_REL(r.cases.at(0).supportMomentsKgCm[0], -w * l * l / 2);
        const DeflectionExtreme& d = r.service.dead.maxDeflections.at(0);
        EXPECT_REL(d.deflectionMm, 10 * w * l * l * l * l / (8 * kEI));
        EXPECT_REL(d.xCm, l);
    }
}

TEST(BeamAnalysisCases, SchemeTwoPatternOnTwoEqualSpans) {
    // Dead 20, live 10 kg/cm on both spans; factors dead (1.4, 0.9), live (1.7, 1.0).
    // Loaded span: 1.4·20 + 1.7·10 = 45; unloaded span: 0.9·20 = 18 (live dropped).
    // Three-moment with equal spans: M_B = -(w1 + w2) L² / 16.
    // Span 1 between A (M = 0) and B: R_A = w1 L/2 + M_B/L, largest moment R_A² / (2 w1).
    const double l = 500.0;
    auto in = makeBeam({l, l}, {kPinned, kPinned, kPinned});
    in.factors.dead = {1.4, 0.9};
    in.factors.live = {1.7, 1.0};
    in.caseScheme = 2;
    addLoad(in, 0, LoadKind::Uniform, 20.0, 10.0);
    addLoad(in, 1, LoadKind::Uniform, 20.0, 10.0);
    const auto r = run(in);
    ASSERT_EQ(r.cases.size(), 3u);
    EXPECT_REL(r.cases[0].supportMomentsKgCm[1], -(45.0 + 45.0) * l * l / 16);
    EXPECT_REL(r.cases[1].supportMomentsKgCm[1], -(45.0 + 18.0) * l * l / 16);
    EXPECT_REL(r.cases[2].supportMomentsKgCm[1], -(18.0 + 45.0) * l * l / 16);
    EXPECT_REL(r.envelope.supportMomentMinKgCm[1], -90.0 * l * l / 16);
    // Span 1 sags most when it alone carries live load (case 2):
    // R_A = 22.5 L - 63 L / 16 = 18.5625 L, M = 18.5625² L² / 90.
    EXPECT_REL(r.envelope.spanMomentMax[0].value, 18.5625 * 18.5625 * l * l / 90);
    EXPECT_EQ(r.envelope.spanMomentMax[0].caseIndex, 1);
    // End shear of span 1 at B in the full case: 45 L / 2 + 90 L / 16 = 28.125 L.
    EXPECT_REL(r.envelope.spanShearAbsMax[0].value, 28.125 * l);
}

TEST(BeamAnalysisCases, SchemesBuildTheirPatterns) {
    EXPECT_EQ(buildLoadCases(1, 5).size(), 1u);
    EXPECT_EQ(buildLoadCases(2, 30).size(), 31u);
    // Full pattern on four spans (bits = spans carrying live load, span 1 = bit 0): full, each
    // span alone, odd spans, even spans, then beside supports B, C, D two adjacent spans plus
    // every other span beyond them.
    std::vector<std::uint32_t> masks;
    for (const LoadCase& c : buildLoadCases(3, 4)) {
        masks.push_back(c.liveSpans);
    }
    const std::vector<std::uint32_t> aci = {0b1111, 0b0001, 0b0010, 0b0100, 0b1000,
                                            0b0101, 0b1010, 0b1011, 0b0110, 0b1101};
    EXPECT_EQ(masks, aci);
    // Two spans: the adjacent pattern of support B is the full load, odd and even spans are
    // the one-span cases, so nothing is repeated.
    EXPECT_EQ(buildLoadCases(3, 2).size(), 3u);
    // Unloaded spans keep their dead load under the second dead factor, without live load.
    const LoadFactors f{{1.4, 0.9}, {1.7, 1.0}};
    const SpanFactors unloaded = spanFactors(buildLoadCases(2, 3)[1], 2, f);
    EXPECT_EQ(unloaded.dead, 0.9);
    EXPECT_EQ(unloaded.live, 0.0);
}

TEST(BeamAnalysisCases, DefaultPatternEnvelopesAdjacentSpans) {
    // Three equal pinned spans, dead 20 and live 10 kg/cm; a loaded span takes
    // 1.4·20 + 1.7·10 = 45, an unloaded one 0.9·20 = 18.
    // Three-moment equation, equal spans and EI, M_A = M_D = 0:
    //   4 M_B + M_C = -(w1 + w2) L² / 4,   M_B + 4 M_C = -(w2 + w3) L² / 4
    //   => M_B = -(4 w1 + 3 w2 - w3) L² / 60.
    // All loaded: -(180 + 135 - 45) / 60 = -4.50 L². Scheme 2's one-span cases give at most
    // that: span 1 alone -(180 + 54 - 18) / 60 = -3.60 L². Spans 1 and 2 loaded (the adjacent
    // pattern of B): -(180 + 135 - 18) / 60 = -4.95 L², 10 % more.
    // Span 1 sags most with spans 1 and 3 loaded: M_B = -(180 + 54 - 45) / 60 = -3.15 L²,
    // R_A = 22.5 L - 3.15 L = 19.35 L, M = R_A² / (2 · 45) = 19.35² L² / 90; with span 1
    // alone R_A = 22.5 L - 3.6 L = 18.9 L.
    const double l = 600.0;
    auto in = makeBeam({l, l, l}, {kPinned, kPinned, kPinned, kPinned});
    in.factors.dead = {1.4, 0.9};
    in.factors.live = {1.7, 1.0};
    for (int i = 0; i < 3; ++i) {
        addLoad(in, i, LoadKind::Uniform, 20.0, 10.0);
    }
    EXPECT_EQ(BeamAnalysisInput{}.caseScheme, 3) << "the full pattern is the default";
    in.caseScheme = 2;
    const auto two = run(in);
    EXPECT_REL(two.envelope.supportMomentMinKgCm[1], -4.5 * l * l);
    EXPECT_REL(two.envelope.spanMomentMax[0].value, 18.9 * 18.9 * l * l / 90);
    in.caseScheme = 3;
    const auto full = run(in);
    EXPECT_REL(full.envelope.supportMomentMinKgCm[1], -4.95 * l * l);
    EXPECT_REL(full.envelope.supportMomentMinKgCm[2], -4.95 * l * l);
    EXPECT_REL(full.envelope.spanMomentMax[0].value, 19.35 * 19.35 * l * l / 90);
}

TEST(BeamAnalysisDeflection, SimpleSpanUniformLoad) {
    // Midspan deflection 5wL⁴ / (384 EI): L = 600, EI = 1.35e11, dead 20 gives
    // 5 · 20 · 1.296e11 / 5.184e13 = 0.25 cm = 2.5 mm, live 10 gives 1.25 mm.
    const double l = 600.0;
    auto in = makeBeam({l}, {kPinned, kPinned});
    addLoad(in, 0, LoadKind::Uniform, 20.0, 10.0);
    const auto r = run(in);
    EXPECT_REL(r.service.dead.maxDeflections[0].deflectionMm, 2.5);
    EXPECT_REL(r.service.live.maxDeflections[0].deflectionMm, 1.25);
    EXPECT_REL(r.service.total.maxDeflections[0].deflectionMm, 3.75);
    EXPECT_NEAR(r.service.total.maxDeflections[0].xCm, l / 2, 1e-4);
    EXPECT_REL(r.service.dead.stationDeflectionsMm[kStationDivisions / 2], 2.5);
}

TEST(BeamAnalysisDeflection, ElasticLineClosesOnEverySupport) {
    // Integrating the moment curve of each span from its left joint must land on the right
    // joint's displacement: zero on every support. A wrong fixed-end force of any load kind
    // breaks this compatibility. All kinds, both triangle directions, an upward load.
    auto in = makeBeam({200.0, 550.0, 420.0, 610.0, 380.0},
                       {kFree, kPinned, kFixed, kPinned, kPinned, kFree});
    addLoad(in, 0, LoadKind::Concentrated, 1500.0, 500.0, 200.0);
    addLoad(in, 1, LoadKind::Uniform, 20.0, 10.0);
    addLoad(in, 1, LoadKind::Triangular, 15.0, 5.0, 0.0, 0.0, TrianglePeak::AtLeft);
    addLoad(in, 2, LoadKind::PartialUniform, 30.0, 12.0, 60.0, 250.0);
    addLoad(in, 2, LoadKind::Concentrated, -2000.0, 0.0, 300.0);
    addLoad(in, 3, LoadKind::Triangular, 25.0, 10.0);
    addLoad(in, 3, LoadKind::Concentrated, 4000.0, 2000.0, 0.0);
    addLoad(in, 4, LoadKind::PartialUniform, 18.0, 6.0, 200.0, 180.0);
    addLoad(in, 4, LoadKind::Uniform, 8.0, 4.0);
    const auto r = run(in);
    const ServiceCase& t = r.service.total;
    double scale = 0.0;
    for (double d : t.stationDeflectionsMm) {
        scale = std::max(scale, std::abs(d));
    }
    ASSERT_GT(scale, 0.0);
    for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        const double endOfSpan = t.stationDeflectionsMm[(i + 1) * kStationsPerSpan - 1];
        const double joint = -10.0 * t.forces.displacementsUpCm[i + 1];
        EXPECT_NEAR(endOfSpan, joint, 1e-9 * scale);
        if (in.supports[i + 1].restrainsDisplacement) {
            EXPECT_NEAR(endOfSpan, 0.0, 1e-9 * scale);
        }
    }
    // Vertical equilibrium of the dead + live state: the reactions carry the whole load,
    // 2000 + 550·30 + 550·20/2 + 250·42 - 2000 + 610·35/2 + 6000 + 180·24 + 380·12.
    const double total = 2000.0 + 550.0 * 30 + 550.0 * 20 / 2 + 250.0 * 42 - 2000.0 +
                         610.0 * 35 / 2 + 6000.0 + 180.0 * 24 + 380.0 * 12;
    double reactions = 0.0;
    for (double v : t.forces.reactionsKg) {
        reactions += v;
    }
    EXPECT_REL(reactions, total);
}

TEST(BeamAnalysisStability, UnstableBeamsGiveAMessageAndNoNumbers) {
    struct Case {
        const char* name;
        std::vector<double> lengths;
        std::vector<BeamSupport> supports;
    };
    const std::vector<Case> cases = {
        {"no supports", {500.0, 500.0}, {kFree, kFree, kFree}},
        {"one pinned end", {500.0}, {kPinned, kFree}},
        {"pinned middle, free ends", {300.0, 300.0}, {kFree, kPinned, kFree}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto in = makeBeam(c.lengths, c.supports);
        addLoad(in, 0, LoadKind::Uniform, 20.0);
        const auto r = analyzeBeam(in);
        EXPECT_EQ(r.status, AnalysisStatus::Unstable);
        EXPECT_FALSE(r.message.empty());
        EXPECT_TRUE(r.cases.empty());
        EXPECT_TRUE(r.service.total.maxDeflections.empty());
    }
}

TEST(BeamAnalysisInputCheck, BadValuesAreRefusedWithTheirSpan) {
    struct Case {
        const char* name;
        void (*spoil)(BeamAnalysisInput&);
        const char* says;
    };
    const std::vector<Case> cases = {
        {"no spans", [](BeamAnalysisInput& in) { in.spans.clear(); }, "no spans"},
        {"31 spans",
         [](BeamAnalysisInput& in) {
             in.spans.assign(31, in.spans[0]);
             in.supports.assign(32, kPinned);
         },
         "at most 30"},
        {"support count", [](BeamAnalysisInput& in) { in.supports.pop_back(); }, "supports"},
        {"zero length", [](BeamAnalysisInput& in) { in.spans[1].lengthCm = 0.0; }, "span 2"},
        {"zero inertia", [](BeamAnalysisInput& in) { in.spans[1].inertiaCm4 = 0.0; }, "span 2"},
        {"zero modulus", [](BeamAnalysisInput& in) { in.elasticModulusKgCm2 = 0.0; }, "modulus"},
        {"scheme 4", [](BeamAnalysisInput& in) { in.caseScheme = 4; }, "scheme"},
        {"partial past the end",
         [](BeamAnalysisInput& in) { addLoad(in, 1, LoadKind::PartialUniform, 5, 0, 300, 250); },
         "span 2"},
        {"point outside",
         [](BeamAnalysisInput& in) { addLoad(in, 1, LoadKind::Concentrated, 5, 0, -1); }, "span 2"},
        {"load not a number",
         [](BeamAnalysisInput& in) { addLoad(in, 1, LoadKind::Uniform, std::nan("")); }, "span 2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto in = makeBeam({500.0, 500.0}, {kPinned, kPinned, kPinned});
        c.spoil(in);
        const auto r = analyzeBeam(in);
        EXPECT_EQ(r.status, AnalysisStatus::InvalidInput);
        EXPECT_NE(r.message.find(c.says), std::string::npos) << r.message;
        EXPECT_TRUE(r.cases.empty());
    }
}

} // namespace
} // namespace orvak::beams
