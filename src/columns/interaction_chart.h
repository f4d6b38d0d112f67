// The non-dimensional interaction diagram of a column group: the strength curves of the
// section for several steel ratios, the design point, and the chart drawn as a plain SVG file.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "columns/column_design.h"
#include "columns/column_records.h"
#include "columns/column_section.h"

namespace orvak::columns {

/// The axes of the chart and the labels of its curves, as the chart prints them.
inline constexpr std::string_view kChartMomentAxis = "Mn/(Fc*b^3)";
inline constexpr std::string_view kChartAxialAxis = "Pn/(Fc*b^2)";
inline constexpr std::string_view kChartGammaLabel = " Gamma =";
inline constexpr std::string_view kChartRatioLabel = " R=";

/// One point of a chart: m = Mn / (Fc·b³), p = Pn / (Fc·b²), compression positive.
struct ChartPoint {
    double m = 0.0;
    double p = 0.0;
};

/// The strength of the section with the steel ratio `rho`, from pure tension (first point)
/// to pure compression (last point); one point is the balanced strain of the deepest bar.
struct InteractionCurve {
    double rho = 0.0;
    bool design = false; ///< the ratio the design found for the charted direction
    std::vector<ChartPoint> points;
};

struct InteractionChart {
    Direction direction = Direction::X;   ///< the governing direction of the design
    double bCm = 0.0;                     ///< sqrt(Ag): Pn/(Fc·b²) reads as Pn/(Fc·Ag)
    double gamma = 0.0;                   ///< distance between the outer bar layers over the depth
    std::vector<InteractionCurve> curves; ///< ascending ratio
    std::optional<ChartPoint> design;     ///< (Mu/phi, Pu/phi) of the charted direction
};

/// The curve of the section with `bars` (cm) sharing the steel area rho·Ag, nondimensional
/// by `bCm`; Fc and FY in kg/cm². The neutral axis sweeps from a sliver of the section to far
/// beyond it, where every bar yields in compression (P0 = 0.85 Fc (Ag − As) + FY As).
/// Precondition: bars not empty, rho >= 0, bCm > 0.
InteractionCurve interactionCurve(const ColumnSection& section, Direction d,
                                  std::span<const Point> bars, double rho, double fc, double fy,
                                  double bCm);

/// The chart of a design that reached the bending stage (empty otherwise: a type or dimension
/// missing, an unstable column, a section too small for the axial load or for its bars). A
/// design whose search failed is charted all the same, its point outside the curves.
std::optional<InteractionChart> interactionChart(const ColumnGroup& group,
                                                 const ColumnDesignResult& result);

/// The chart as a self-contained SVG 1.1 document of 700 × 500, UTF-8, generic fonts.
std::string interactionChartSvg(const InteractionChart& chart);

/// An SVG of the same size holding only `note` (printable ASCII): it stands in for the chart
/// of a design that has none, so that no chart of an earlier design is left beside its sheet.
std::string noInteractionChartSvg(std::string_view note);

/// A number as the chart's "#.##" and "#.#" masks print it: rounded to `decimals`, no zero
/// before the point (".05"), no trailing zeros and no bare point ("1.2", "1"), and "0" for
/// a value that rounds to zero. Precondition: decimals 0..6, |v| < 1e9.
std::string chartNumberText(double v, int decimals);

} // namespace orvak::columns
