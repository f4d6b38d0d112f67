// Tests of the section geometry: centroid and gross inertia of rectangles and flanged sections
// against hand calculations, and the refusal of impossible dimensions.
#include <gtest/gtest.h>

#include "beams/section.h"

namespace orvak::beams {
namespace {

constexpr double kTol = 1e-6; // cm or cm⁴, relative to values of 10 to 10⁶

TEST(SectionGeometry, RectangleIsBhCubedOverTwelve) {
    std::string error;
    const auto g = sectionGeometry(2, {0, 0, 30, 0, 60}, error);
    ASSERT_TRUE(g) << error;
    EXPECT_FALSE(g->flanged());
    // 30 · 60³ / 12 = 30 · 216,000 / 12 = 540,000 cm⁴; centroid at mid-height.
    EXPECT_NEAR(grossInertiaCm4(*g), 540000.0, kTol);
    EXPECT_NEAR(centroidFromBottomCm(*g), 30.0, kTol);
}

TEST(SectionGeometry, TSectionByParallelAxisRule) {
    // B = 100, T = 15, bw = 30, H = 60.
    // Web 30 × 45: A = 1350, centroid 22.5 above the bottom. Flange 100 × 15: A = 1500, at 52.5.
    // ȳ = (1350·22.5 + 1500·52.5) / 2850 = 109,125 / 2850 = 38.289474 cm.
    // I = 30·45³/12 + 1350·(22.5 − ȳ)² + 100·15³/12 + 1500·(52.5 − ȳ)²
    //   = 227,812.5 + 336,565.1 + 28,125 + 302,908.6 = 895,411.18 cm⁴.
    std::string error;
    const auto t = sectionGeometry(3, {100, 15, 30, 0, 60}, error);
    ASSERT_TRUE(t) << error;
    EXPECT_TRUE(t->flangeOnTop);
    EXPECT_NEAR(centroidFromBottomCm(*t), 109125.0 / 2850.0, kTol);
    EXPECT_NEAR(grossInertiaCm4(*t), 895411.1842105, 1e-3);

    // The inverted T is the same shape upside down: same I, centroid mirrored.
    const auto inverted = sectionGeometry(5, {100, 15, 30, 0, 60}, error);
    ASSERT_TRUE(inverted) << error;
    EXPECT_TRUE(inverted->flangeAtBottom);
    EXPECT_NEAR(centroidFromBottomCm(*inverted), 60.0 - 109125.0 / 2850.0, kTol);
    EXPECT_NEAR(grossInertiaCm4(*inverted), 895411.1842105, 1e-3);
}

TEST(SectionGeometry, RefusesImpossibleSections) {
    struct Case {
        const char* name;
        int kind;
        SectionDims dims;
    };
    const Case cases[] = {
        {"kind 0", 0, {0, 0, 30, 0, 60}},
        {"kind 8", 8, {0, 0, 30, 0, 60}},
        {"zero height", 2, {0, 0, 30, 0, 0}},
        {"zero web", 1, {0, 0, 0, 0, 30}},
        {"flange as thick as the height", 3, {100, 60, 30, 0, 60}},
        {"flange narrower than web", 4, {20, 15, 30, 0, 60}},
        {"no flange thickness", 7, {60, 0, 12, 0, 30}},
    };
    for (const Case& c : cases) {
        std::string error;
        EXPECT_FALSE(sectionGeometry(c.kind, c.dims, error)) << c.name;
        EXPECT_FALSE(error.empty()) << c.name;
    }
}

} // namespace
} // namespace orvak::beams
