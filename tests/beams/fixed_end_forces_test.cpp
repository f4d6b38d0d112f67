// Fixed-end forces of a clamped span against textbook closed forms, and the partial load
// against the point-load formula integrated over the loaded length.
#include "beams/fixed_end_forces.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orvak::beams {
namespace {

constexpr double kL = 600.0; // cm
constexpr double kTol = 1e-9;

void expectNear(const FixedEndForces& f, double ra, double ma, double rb, double mb) {
    EXPECT_NEAR(f.forceLeftKg, ra, kTol * std::abs(ra) + 1e-9);
    EXPECT_NEAR(f.momentLeftKgCm, ma, kTol * std::abs(ma) + 1e-9);
    EXPECT_NEAR(f.forceRightKg, rb, kTol * std::abs(rb) + 1e-9);
    EXPECT_NEAR(f.momentRightKgCm, mb, kTol * std::abs(mb) + 1e-9);
}

TEST(FixedEndForces, UniformLoadGivesWL2Over12) {
    // Any structural-analysis text: R = wL/2, M = wL²/12 (counterclockwise at the left end).
    const double w = 25.0;
    expectNear(uniformLoadFixedEnd(w, kL), w * kL / 2, w * kL * kL / 12, w * kL / 2,
               -w * kL * kL / 12);
    // An upward load reverses every action.
    expectNear(uniformLoadFixedEnd(-w, kL), -w * kL / 2, -w * kL * kL / 12, -w * kL / 2,
               w * kL * kL / 12);
}

TEST(FixedEndForces, TriangularLoadAndItsDirection) {
    // Peak w at the right end: M_A = wL²/30, M_B = wL²/20, R_A = 3wL/20, R_B = 7wL/20.
    const double w = 40.0;
    expectNear(triangularLoadFixedEnd(w, kL, TrianglePeak::AtRight), 3 * w * kL / 20,
               w * kL * kL / 30, 7 * w * kL / 20, -w * kL * kL / 20);
    // Peak at the left end: the mirror image.
    expectNear(triangularLoadFixedEnd(w, kL, TrianglePeak::AtLeft), 7 * w * kL / 20,
               w * kL * kL / 20, 3 * w * kL / 20, -w * kL * kL / 30);
}

TEST(FixedEndForces, PointLoadGivesPab2OverL2) {
    // M_A = P a b² / L², M_B = P a² b / L², R_A = P b² (3a + b) / L³, R_B = P a² (a + 3b) / L³.
    struct Case {
        double a;
    };
    const double p = 5000.0;
    for (const Case c : {Case{150.0}, Case{300.0}, Case{0.0}, Case{kL}}) {
        SCOPED_TRACE(c.a);
        const double a = c.a;
        const double b = kL - a;
        const double l3 = kL * kL * kL;
        expectNear(concentratedLoadFixedEnd(p, kL, a), p * b * b * (3 * a + b) / l3,
                   p * a * b * b / (kL * kL), p * a * a * (a + 3 * b) / l3,
                   -p * a * a * b / (kL * kL));
    }
}

TEST(FixedEndForces, PartialLoadIsThePointLoadIntegrated) {
    // A partial load w over [a, c] is the point-load formula integrated from a to c:
    //   M_A = ∫ w x (L − x)² / L² dx, M_B = ∫ w x² (L − x) / L² dx,
    //   R_A = ∫ w (L − x)² (L + 2x) / L³ dx, R_B = w (c − a) − R_A.
    // Each integrand is a cubic in x, so Simpson's rule over the one interval [a, c] is exact:
    //   ∫ g = (c − a) / 6 · (g(a) + 4 g((a + c) / 2) + g(c)).
    const double w = 18.0;
    struct Case {
        double a;
        double len;
    };
    for (const Case c : {Case{100.0, 250.0}, Case{0.0, 200.0}, Case{350.0, 250.0}}) {
        SCOPED_TRACE(c.a);
        const double lo = c.a;
        const double hi = c.a + c.len;
        auto simpson = [&](auto g) { return c.len / 6 * (g(lo) + 4 * g((lo + hi) / 2) + g(hi)); };
        const double ma = simpson([](double x) { return x * (kL - x) * (kL - x) / (kL * kL); });
        const double mb = simpson([](double x) { return x * x * (kL - x) / (kL * kL); });
        const double ra =
            simpson([](double x) { return (kL - x) * (kL - x) * (kL + 2 * x) / (kL * kL * kL); });
        expectNear(partialUniformLoadFixedEnd(w, kL, c.a, c.len), w * ra, w * ma,
                   w * c.len - w * ra, -w * mb);
    }
    // Loaded over the whole span it is the full uniform load.
    expectNear(partialUniformLoadFixedEnd(w, kL, 0.0, kL), w * kL / 2, w * kL * kL / 12, w * kL / 2,
               -w * kL * kL / 12);
}

} // namespace
} // namespace orvak::beams
