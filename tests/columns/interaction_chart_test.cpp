// Tests of the interaction chart against hand calculations: the ends of a curve and its
// balanced point, the design point of a converged design, which designs have a chart, and
// the SVG's texts and number formats.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>

#include "columns/interaction_chart.h"

namespace orvak::columns {
namespace {

const std::vector<bars::BarProperties> kBars = {
    {12.0f, 1.131f, 0.888f}, {14.0f, 1.539f, 1.21f}, {16.0f, 2.011f, 1.58f},
    {20.0f, 3.142f, 2.47f},  {25.0f, 4.909f, 3.85f}, {32.0f, 8.042f, 6.31f},
};

ColumnGroup rectangleGroup(float a, float b, float puT, float m2) {
    ColumnGroup g;
    g.name = "Gr-C1";
    g.type = 1;
    g.dims = {a, b, 0, 0, 0};
    g.puT = puT;
    g.x = {m2, 0.0f};
    g.colLenCm = 300.0f;
    g.settings = defaultColumnSettings(); // Fc 250, FY 4200, tied phi 0.7, 1 %, cover 4 cm
    return g;
}

TEST(InteractionCurve, EndsAndBalancedPointOfA40x40ColumnWithEightBarsByHand) {
    // 40 × 40, 8 bars 5 cm in from the faces, rho = 1 %: As = 16 cm², 2 cm² a bar; Fc 250,
    // FY 4200; b = sqrt(1600) = 40, so Fc·b² = 400 000 kg and Fc·b³ = 16 000 000 kg·cm.
    const auto s = columnSection(1, {40, 40, 0, 0, 0});
    ASSERT_TRUE(s);
    const std::vector<Point> bars = barPlaces(*s, 8, 5.0);
    ASSERT_EQ(bars.size(), 8u);
    const InteractionCurve c = interactionCurve(*s, Direction::X, bars, 0.01, 250.0, 4200.0, 40.0);
    ASSERT_GE(c.points.size(), 3u);

    // Pure tension: every bar at −FY, no concrete: −4200·16 / 400 000 = −0.168, no moment.
    EXPECT_NEAR(c.points.front().p, -0.168, 1e-9);
    EXPECT_NEAR(c.points.front().m, 0.0, 1e-9);
    // Pure compression: P0 = 0.85·250·(1600 − 16) + 4200·16 = 336 600 + 67 200 = 403 800 kg,
    // 403 800 / 400 000 = 1.0095; no moment by symmetry.
    EXPECT_NEAR(c.points.back().p, 1.0095, 1e-6);
    EXPECT_NEAR(c.points.back().m, 0.0, 1e-9);

    // The balanced point as in the design's test: cb = 6100/10300·35 = 20.7282, ab = 0.85 cb,
    // Cc = 0.85·250·40·ab; rows at depth 5 (3 bars, 4200 − 212.5), 20 (2 bars, elastic) and
    // 35 (3 bars, −4200). P = Cc + 6·3987.5 + 4·fs20 − 6·4200 = 149 343.9 kg,
    // M = Cc(20 − ab/2) + 6·3987.5·15 + 6·4200·15 = 2 412 784 kg·cm.
    const double cb = 6100.0 / 10300.0 * 35.0;
    const double ab = 0.85 * cb;
    const double cc = 0.85 * 250.0 * 40.0 * ab;
    const double fs20 = 6100.0 * (cb - 20.0) / cb;
    const double pb = (cc + 6.0 * 3987.5 + 4.0 * fs20 - 6.0 * 4200.0) / 400000.0;
    const double mb = (cc * (20.0 - ab / 2.0) + 6.0 * 3987.5 * 15.0 + 6.0 * 4200.0 * 15.0) / 16e6;
    const bool onCurve = std::any_of(c.points.begin(), c.points.end(), [&](const ChartPoint& q) {
        return std::abs(q.p - pb) < 1e-7 && std::abs(q.m - mb) < 1e-7;
    });
    EXPECT_TRUE(onCurve) << "balanced point " << mb << ", " << pb;
}

// Pn on the curve where its eccentricity m/p (= e/b) crosses `ratio`, from the compression
// side of the balanced point (linear between two sampled points).
std::optional<double> axialAtEccentricity(const InteractionCurve& c, double ratio) {
    for (std::size_t i = 1; i < c.points.size(); ++i) {
        const ChartPoint& a = c.points[i - 1];
        const ChartPoint& b = c.points[i];
        if (a.p <= 0.0 || b.p <= 0.0) {
            continue;
        }
        const double ea = a.m / a.p - ratio, eb = b.m / b.p - ratio;
        if (ea >= 0.0 && eb <= 0.0) {
            const double t = ea / (ea - eb);
            return a.p + t * (b.p - a.p);
        }
    }
    return std::nullopt;
}

TEST(InteractionChart, TheDesignPointLiesOnTheCurveOfTheDesignRatio) {
    // 40 × 40 under Pu = 100 t at e = 25 cm (above T = 0.1·250·1600 = 40 t: phi stays 0.7).
    // b = 40: p = 100 000 / 0.7 / 400 000 = 0.357143, m = 100 000·25 / 0.7 / 16e6 = 0.223214.
    // Gamma: bars 4 cm in from both faces, (40 − 8) / 40 = 0.8.
    const ColumnGroup g = rectangleGroup(40, 40, 100.0f, 25.0f);
    const ColumnDesignResult r = designColumn(g, kBars);
    ASSERT_EQ(r.status, ColumnStatus::Designed);
    const auto chart = interactionChart(g, r);
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->direction, Direction::X);
    EXPECT_NEAR(chart->bCm, 40.0, 1e-12);
    EXPECT_NEAR(chart->gamma, 0.8, 1e-12);
    ASSERT_TRUE(chart->design);
    EXPECT_NEAR(chart->design->p, 100000.0 / 0.7 / 400000.0, 1e-9);
    EXPECT_NEAR(chart->design->m, 100000.0 * 25.0 / 0.7 / 16e6, 1e-9);

    // From the least ratio (1 %) to 8 %, the design ratio among them.
    ASSERT_GE(chart->curves.size(), 3u);
    EXPECT_NEAR(chart->curves.front().rho, 0.01, 1e-7);
    EXPECT_NEAR(chart->curves.back().rho, 0.08, 1e-12);
    const auto design = std::find_if(chart->curves.begin(), chart->curves.end(),
                                     [](const InteractionCurve& c) { return c.design; });
    ASSERT_NE(design, chart->curves.end());
    EXPECT_DOUBLE_EQ(design->rho, r.bendX->rho);
    // The search stopped within the settings' tolerance above Pu/phi at e = 25 cm; the curve
    // is sampled every 0.02 h of neutral axis, so it meets the point within 1 %.
    const auto pn = axialAtEccentricity(*design, 25.0 / 40.0);
    ASSERT_TRUE(pn);
    EXPECT_NEAR(*pn, chart->design->p, 0.01 * chart->design->p);

    // A rectangle 30 × 50 bent over its 30 cm: b = sqrt(1500), gamma = (30 − 8) / 30.
    const ColumnGroup flat = rectangleGroup(30, 50, 60.0f, 6.0f);
    const auto flatChart = interactionChart(flat, designColumn(flat, kBars));
    ASSERT_TRUE(flatChart);
    EXPECT_NEAR(flatChart->bCm, std::sqrt(1500.0), 1e-12);
    EXPECT_NEAR(flatChart->gamma, 22.0 / 30.0, 1e-12);

    // 50 × 50 under 150 t with 12 t·m about x and 14 t·m about y: the least steel carries
    // both, so the larger eccentricity governs, y: e = 14·100/150 = 9.333 cm, phi 0.7 (Pu
    // above T = 62.5 t), m = 150 000·9.333 / 0.7 / (250·50³) = 0.064.
    ColumnGroup both = rectangleGroup(50, 50, 150.0f, 12.0f);
    both.y = {14.0f, 0.0f};
    const auto bothChart = interactionChart(both, designColumn(both, kBars));
    ASSERT_TRUE(bothChart);
    EXPECT_EQ(bothChart->direction, Direction::Y);
    EXPECT_NEAR(bothChart->design->m, 150000.0 * (1400.0 / 150.0) / 0.7 / (250.0 * 125000.0), 1e-9);
}

TEST(InteractionChart, OnlyADesignThatReachedTheBendingStageIsCharted) {
    // A moment 8 % cannot carry (30 × 30, Pu = 50 t, M = 40 t·m): charted with the point
    // outside the 8 % curve and no design ratio. e = 80 cm, b = 30: e/b = 2.667.
    ColumnGroup g = rectangleGroup(30, 30, 50.0f, 40.0f);
    ColumnDesignResult r = designColumn(g, kBars);
    ASSERT_EQ(r.status, ColumnStatus::SectionTooSmall);
    const auto chart = interactionChart(g, r);
    ASSERT_TRUE(chart);
    EXPECT_TRUE(std::none_of(chart->curves.begin(), chart->curves.end(),
                             [](const InteractionCurve& c) { return c.design; }));
    const auto pn8 = axialAtEccentricity(chart->curves.back(), 80.0 / 30.0);
    ASSERT_TRUE(pn8);
    EXPECT_GT(chart->design->p, *pn8);

    // 40 × 40 under 300 t: phi Pn,max = 0.8·0.7·(0.85·250·1584 + 4200·16) = 226.1 t < 300 t,
    // the section is too small before any bars are placed.
    g = rectangleGroup(40, 40, 300.0f, 1.0f);
    r = designColumn(g, kBars);
    ASSERT_EQ(r.status, ColumnStatus::SectionTooSmall);
    EXPECT_FALSE(interactionChart(g, r));
}

TEST(InteractionChartSvg, AxesLabelsAndTickFormats) {
    const ColumnGroup g = rectangleGroup(40, 40, 100.0f, 25.0f);
    const auto chart = interactionChart(g, designColumn(g, kBars));
    ASSERT_TRUE(chart);
    const std::string svg = interactionChartSvg(*chart);
    for (const char* text : {">Mn/(Fc*b^3)<", ">Pn/(Fc*b^2)<", "> Gamma =.8<", "> R=.01<",
                             "> R=.02<", "> R=.08<", " design<", "<svg ", "</svg>"}) {
        EXPECT_NE(svg.find(text), std::string::npos) << text;
    }
    std::string lower = svg;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    EXPECT_EQ(lower.find("nan"), std::string::npos);
    EXPECT_EQ(lower.find("inf"), std::string::npos);

    // Every tick label is a "#.##" or "#.#" number: no zero before the point, no trailing
    // zero, no bare point, "0" for zero.
    const std::regex tick(R"re(class="tick">([^<]*)<)re");
    const std::regex number(R"(^(0|-?(?=[\d.]*\d)([1-9]\d*)?(\.\d?[1-9])?)$)");
    int ticks = 0;
    for (auto it = std::sregex_iterator(svg.begin(), svg.end(), tick); it != std::sregex_iterator();
         ++it) {
        const std::string label = (*it)[1];
        ++ticks;
        EXPECT_TRUE(std::regex_match(label, number)) << label;
        EXPECT_NE(label.rfind("0.", 0), 0u) << label;
        EXPECT_NE(label.rfind("-0.", 0), 0u) << label;
    }
    EXPECT_GE(ticks, 6);

    // The text of a chart that is not drawn is escaped for XML.
    EXPECT_NE(noInteractionChartSvg("Pu < phi & Pc").find(">Pu &lt; phi &amp; Pc<"),
              std::string::npos);

    // The masks' number texts.
    struct Case {
        double v;
        int decimals;
        const char* text;
    };
    for (const Case& c : {Case{0.05, 2, ".05"}, Case{1.25, 2, "1.25"}, Case{0.0, 2, "0"},
                          Case{0.004, 2, "0"}, Case{-0.3, 1, "-.3"}, Case{1.0, 2, "1"},
                          Case{12.5, 1, "12.5"}, Case{0.125, 2, ".13"}, Case{-1.96, 1, "-2"}}) {
        EXPECT_EQ(chartNumberText(c.v, c.decimals), c.text) << c.v;
    }
}

} // namespace
} // namespace orvak::columns
