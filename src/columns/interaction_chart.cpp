// The interaction diagram of a column group: curves from the same strain-compatibility
// section strength the design searches on, scaled by Fc·b² and Fc·b³ with b = sqrt(Ag), and
// their drawing as SVG text (no library: a few dozen elements of plain SVG 1.1).
#include "columns/interaction_chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/concrete.h"
#include "core/error.h"
#include "core/tolerances.h"

namespace orvak::columns {

namespace {

constexpr double kKgPerT = 1000.0;
constexpr double kKgCmPerTm = 100000.0;

// Standard ratios charted above the type's least one.
constexpr std::array<double, 4> kChartRatios = {0.02, 0.04, 0.06, kMaxSteelRatio};

// Neutral-axis depths over the section depth of one curve. The first is a sliver (every bar
// yields in tension, no concrete: pure tension); the last lies so far beyond the section that
// every bar strain exceeds yield in compression (pure compression). Between them the points
// are dense where the curve turns, within the section.
std::vector<double> sweepDepths() {
    std::vector<double> t = {1e-9};
    for (int i = 1; i <= 60; ++i) {
        t.push_back(0.02 * i);
    }
    for (const double v : {1.35, 1.5, 1.75, 2.0, 2.5, 3.0, 4.0, 6.0, 10.0, 20.0, 1e6}) {
        t.push_back(v);
    }
    return t;
}

const RatioSearch& lastSearch(const BendingDesign& b) {
    return b.second ? *b.second : b.search;
}

// The direction whose design governs: one whose search failed (x first, the direction every
// design has), else the larger ratio; where both take the same ratio (the least steel carries
// both), the larger eccentricity over the depth.
const BendingDesign& governing(const ColumnDesignResult& r) {
    const BendingDesign& x = *r.bendX;
    if (!r.bendY || !lastSearch(x).found()) {
        return x;
    }
    const BendingDesign& y = *r.bendY;
    if (!lastSearch(y).found() || y.rho > x.rho) {
        return y;
    }
    if (y.rho == x.rho && y.muTm / y.hCm > x.muTm / x.hCm) {
        return y;
    }
    return x;
}

std::string xmlEscaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&apos;";
            break;
        default:
            // Only printable ASCII reaches the file: it is UTF-8 whatever the project's code
            // page, and a control character is not allowed in XML 1.0.
            out += (static_cast<unsigned char>(c) >= 0x20 && static_cast<unsigned char>(c) < 0x7f)
                       ? c
                       : '?';
        }
    }
    return out;
}

// A coordinate of the drawing; a value that is not finite never reaches the file.
std::string coord(double v) {
    return fmt::format("{:.1f}", std::isfinite(v) ? v : 0.0);
}

// A tick step of 1, 2 or 5 times a power of ten, no finer than the mask's decimals, giving at
// most `maxSteps` steps over [lo, hi]; the range widened to whole steps.
struct Axis {
    double lo = 0.0, hi = 1.0, step = 1.0;
};
Axis niceAxis(double lo, double hi, int decimals, int maxSteps) {
    // A bound within this fraction of a step of a tick is on it (the moment at the ends of a
    // symmetric section is zero up to rounding).
    constexpr double kOnTick = 1e-6;
    if (!(hi > lo)) {
        hi = lo + std::pow(10.0, -decimals);
    }
    double decade = std::pow(10.0, -decimals);
    // Chart values are of order one; twenty decades cover any section the records allow.
    for (int k = 0; k < 20; ++k, decade *= 10.0) {
        for (const double f : {1.0, 2.0, 5.0}) {
            const double step = f * decade;
            const double a = std::floor(lo / step + kOnTick) * step;
            const double b = std::ceil(hi / step - kOnTick) * step;
            if (std::lround((b - a) / step) <= maxSteps) {
                return {a, b, step};
            }
        }
    }
    return {lo, hi, hi - lo};
}

constexpr std::string_view kTick = " class=\"tick\"";
constexpr double kWidth = 700.0, kHeight = 500.0;
constexpr double kLeft = 75.0, kRight = 545.0, kTop = 45.0, kBottom = 440.0;

std::string svgHead() {
    return fmt::format("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"{0}\" "
                       "height=\"{1}\" viewBox=\"0 0 {0} {1}\" font-family=\"sans-serif\">\n"
                       "<rect x=\"0\" y=\"0\" width=\"{0}\" height=\"{1}\" fill=\"white\"/>\n",
                       kWidth, kHeight);
}

std::string svgText(double x, double y, std::string_view text, std::string_view anchor, int size,
                    std::string_view extra = {}) {
    return fmt::format("<text x=\"{}\" y=\"{}\" font-size=\"{}\" text-anchor=\"{}\" "
                       "xml:space=\"preserve\"{}>{}</text>\n",
                       coord(x), coord(y), size, anchor, extra, xmlEscaped(text));
}

} // namespace

std::string chartNumberText(double v, int decimals) {
    ORVAK_ASSERT(decimals >= 0 && decimals <= 6 && std::abs(v) < 1e9);
    long long scale = 1;
    for (int i = 0; i < decimals; ++i) {
        scale *= 10;
    }
    // Half away from zero, as the sheets' masks round.
    const long long n = std::llround(std::abs(v) * static_cast<double>(scale));
    if (n == 0) {
        return "0";
    }
    std::string out = v < 0.0 ? "-" : "";
    if (n / scale != 0) {
        out += std::to_string(n / scale);
    }
    if (n % scale != 0) {
        std::string frac = fmt::format("{:0{}d}", n % scale, decimals);
        frac.erase(frac.find_last_not_of('0') + 1);
        out += "." + frac;
    }
    return out;
}

InteractionCurve interactionCurve(const ColumnSection& s, Direction d, std::span<const Point> bars,
                                  double rho, double fc, double fy, double bCm) {
    ORVAK_ASSERT(!bars.empty() && rho >= 0.0 && bCm > 0.0 && fc > 0.0);
    const double h = s.depth(d);
    const double barArea = rho * s.areaCm2 / static_cast<double>(bars.size());
    std::vector<double> depths = sweepDepths();
    for (double& t : depths) {
        t *= h;
    }
    // The balanced point of the deepest bar (ACI: the concrete at 0.003 as that bar yields),
    // where the compression and tension branches meet.
    double deepest = 0.0;
    for (const Point& p : bars) {
        deepest = std::max(deepest, d == Direction::X ? s.extentX - p.x : s.extentY - p.y);
    }
    depths.push_back(core::balancedTerm(fy) * deepest);
    std::sort(depths.begin(), depths.end());

    InteractionCurve curve;
    curve.rho = rho;
    const double pScale = fc * bCm * bCm;
    const double mScale = pScale * bCm;
    for (const double c : depths) {
        const SectionForce f = sectionForce(s, d, bars, barArea, fc, fy, c);
        curve.points.push_back({f.mKgCm / mScale, f.pKg / pScale});
    }
    return curve;
}

std::optional<InteractionChart> interactionChart(const ColumnGroup& group,
                                                 const ColumnDesignResult& r) {
    // The curves need the bar layout and the bending design; before that stage there is no
    // point to draw (an unstable column, a section too small for the axial load).
    if (!r.section || !r.axial || !r.bendX) {
        return std::nullopt;
    }
    const ColumnSection& s = *r.section;
    const BendingDesign& b = governing(r);
    if (b.barCount < 1) {
        return std::nullopt;
    }
    const std::vector<Point> bars = barPlaces(s, b.barCount, r.coverCm);
    if (bars.empty()) {
        return std::nullopt;
    }
    const double fc = group.settings.Fc;
    const double fy = group.settings.FY;

    InteractionChart chart;
    chart.direction = b.direction;
    chart.bCm = std::sqrt(s.areaCm2);
    double shallow = std::numeric_limits<double>::max(), deep = 0.0;
    for (const Point& p : bars) {
        const double depth = b.direction == Direction::X ? s.extentX - p.x : s.extentY - p.y;
        shallow = std::min(shallow, depth);
        deep = std::max(deep, depth);
    }
    chart.gamma = (deep - shallow) / b.hCm;

    std::vector<std::pair<double, bool>> ratios = {{r.axial->astMin, false}};
    for (const double rho : kChartRatios) {
        if (rho > r.axial->astMin + core::kAbsoluteEqual) {
            ratios.emplace_back(rho, false);
        }
    }
    if (lastSearch(b).found() && b.rho > 0.0) {
        const auto same = std::find_if(ratios.begin(), ratios.end(), [&](const auto& x) {
            return std::abs(x.first - b.rho) <= core::kAbsoluteEqual;
        });
        if (same != ratios.end()) {
            same->second = true;
        } else {
            ratios.emplace_back(b.rho, true);
        }
    }
    std::sort(ratios.begin(), ratios.end());
    for (const auto& [rho, design] : ratios) {
        chart.curves.push_back(interactionCurve(s, b.direction, bars, rho, fc, fy, chart.bCm));
        chart.curves.back().design = design;
    }
    // The nominal strength the design asks for: Pu/phi and Mu/phi = Pu·e/phi, with the phi
    // the design ends with in this direction (raised for a small axial load).
    const double pScale = fc * chart.bCm * chart.bCm;
    chart.design = ChartPoint{b.muTm * kKgCmPerTm / b.phi / (pScale * chart.bCm),
                              group.puT * kKgPerT / b.phi / pScale};
    return chart;
}

std::string interactionChartSvg(const InteractionChart& chart) {
    double mLo = 0.0, mHi = 0.0, pLo = 0.0, pHi = 0.0;
    const auto take = [&](const ChartPoint& q) {
        if (std::isfinite(q.m) && std::isfinite(q.p)) {
            mLo = std::min(mLo, q.m);
            mHi = std::max(mHi, q.m);
            pLo = std::min(pLo, q.p);
            pHi = std::max(pHi, q.p);
        }
    };
    for (const InteractionCurve& c : chart.curves) {
        for (const ChartPoint& q : c.points) {
            take(q);
        }
    }
    if (chart.design) {
        take(*chart.design);
    }
    const Axis mx = niceAxis(mLo, mHi, 2, 8);
    const Axis py = niceAxis(pLo, pHi, 1, 10);
    const auto xOf = [&](double m) {
        return kLeft + (m - mx.lo) / (mx.hi - mx.lo) * (kRight - kLeft);
    };
    const auto yOf = [&](double p) {
        return kBottom - (p - py.lo) / (py.hi - py.lo) * (kBottom - kTop);
    };

    std::string svg = svgHead();
    // Grid and tick labels: the moment axis through "#.##", the axial axis through "#.#".
    svg += "<g stroke=\"#dddddd\" stroke-width=\"1\">\n";
    const int mSteps = static_cast<int>(std::lround((mx.hi - mx.lo) / mx.step));
    const int pSteps = static_cast<int>(std::lround((py.hi - py.lo) / py.step));
    for (int i = 0; i <= mSteps; ++i) {
        const double x = xOf(mx.lo + i * mx.step);
        svg += fmt::format("<line x1=\"{0}\" y1=\"{1}\" x2=\"{0}\" y2=\"{2}\"/>\n", coord(x),
                           coord(kTop), coord(kBottom));
    }
    for (int i = 0; i <= pSteps; ++i) {
        const double y = yOf(py.lo + i * py.step);
        svg += fmt::format("<line x1=\"{1}\" y1=\"{0}\" x2=\"{2}\" y2=\"{0}\"/>\n", coord(y),
                           coord(kLeft), coord(kRight));
    }
    svg += "</g>\n";
    for (int i = 0; i <= mSteps; ++i) {
        const double v = mx.lo + i * mx.step;
        svg += svgText(xOf(v), kBottom + 18.0, chartNumberText(v, 2), "middle", 12, kTick);
    }
    for (int i = 0; i <= pSteps; ++i) {
        const double v = py.lo + i * py.step;
        svg += svgText(kLeft - 6.0, yOf(v) + 4.0, chartNumberText(v, 1), "end", 12, kTick);
    }
    // The zero axes and the frame.
    svg += fmt::format("<g stroke=\"#444444\" stroke-width=\"1\" fill=\"none\">\n"
                       "<line x1=\"{0}\" y1=\"{2}\" x2=\"{0}\" y2=\"{3}\"/>\n"
                       "<line x1=\"{4}\" y1=\"{1}\" x2=\"{5}\" y2=\"{1}\"/>\n"
                       "<rect x=\"{4}\" y=\"{2}\" width=\"{6}\" height=\"{7}\"/>\n</g>\n",
                       coord(xOf(0.0)), coord(yOf(0.0)), coord(kTop), coord(kBottom), coord(kLeft),
                       coord(kRight), coord(kRight - kLeft), coord(kBottom - kTop));
    svg += svgText((kLeft + kRight) / 2.0, kHeight - 22.0, kChartMomentAxis, "middle", 14);
    svg += svgText(22.0, (kTop + kBottom) / 2.0, kChartAxialAxis, "middle", 14,
                   fmt::format(" transform=\"rotate(-90 22 {})\"", coord((kTop + kBottom) / 2.0)));
    svg += svgText(kLeft, 28.0,
                   fmt::format("Interaction diagram, bending in {}",
                               chart.direction == Direction::X ? "x" : "y"),
                   "start", 15);
    svg += svgText(kRight, 28.0, std::string(kChartGammaLabel) + chartNumberText(chart.gamma, 2),
                   "end", 15);

    // The curves, each with its line in the legend to the right of the plot.
    static constexpr std::array<std::string_view, 6> kColours = {"#1f77b4", "#2ca02c", "#ff7f0e",
                                                                 "#9467bd", "#8c564b", "#17becf"};
    double legendY = kTop + 12.0;
    std::size_t colour = 0;
    for (const InteractionCurve& c : chart.curves) {
        const std::string_view stroke =
            c.design ? std::string_view("#000000") : kColours[colour++ % kColours.size()];
        const double width = c.design ? 2.5 : 1.5;
        std::string points;
        for (const ChartPoint& q : c.points) {
            if (std::isfinite(q.m) && std::isfinite(q.p)) {
                points += fmt::format("{},{} ", coord(xOf(q.m)), coord(yOf(q.p)));
            }
        }
        svg += fmt::format("<polyline fill=\"none\" stroke=\"{}\" stroke-width=\"{}\" "
                           "points=\"{}\"/>\n",
                           stroke, width, points);
        svg +=
            fmt::format("<line x1=\"{0}\" y1=\"{2}\" x2=\"{1}\" y2=\"{2}\" stroke=\"{3}\" "
                        "stroke-width=\"{4}\"/>\n",
                        coord(kRight + 12.0), coord(kRight + 34.0), coord(legendY), stroke, width);
        svg += svgText(kRight + 36.0, legendY + 4.0,
                       std::string(kChartRatioLabel) + chartNumberText(c.rho, 3) +
                           (c.design ? " design" : ""),
                       "start", 12);
        legendY += 20.0;
    }
    if (chart.design && std::isfinite(chart.design->m) && std::isfinite(chart.design->p)) {
        svg += fmt::format("<circle cx=\"{}\" cy=\"{}\" r=\"4.5\" fill=\"#d62728\" "
                           "stroke=\"#000000\" stroke-width=\"1\"/>\n",
                           coord(xOf(chart.design->m)), coord(yOf(chart.design->p)));
        svg += fmt::format("<circle cx=\"{}\" cy=\"{}\" r=\"4.5\" fill=\"#d62728\" "
                           "stroke=\"#000000\" stroke-width=\"1\"/>\n",
                           coord(kRight + 23.0), coord(legendY));
        svg += svgText(kRight + 36.0, legendY + 4.0, "Pu/phi, Mu/phi", "start", 12);
    }
    svg += "</svg>\n";
    return svg;
}

std::string noInteractionChartSvg(std::string_view note) {
    return svgHead() + svgText(kWidth / 2.0, kHeight / 2.0, note, "middle", 14) + "</svg>\n";
}

} // namespace orvak::columns
