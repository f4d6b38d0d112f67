// The steps the isolated and the combined footing share: the steel-ratio limits, the rounding
// of sizes to 5 cm, the flexural steel ratio of a slab strip, the bar choice, and the sheet's
// input block. Loads in kg inside (t on the sheet), moments in kg·cm, lengths in cm.
#pragma once

#include <span>
#include <string_view>

#include "bars/bar_tables.h"
#include "core/sheet.h"
#include "footings/footing_input.h"

namespace orvak::footings {

/// Plan sizes and depths are rounded up to whole multiples of this step.
inline constexpr double kSizeStepCm = 5.0;
/// A steel ratio above RowMax deepens the footing by this step, at most kMaxDeepenSteps times
/// (10 m), so that the search always ends.
inline constexpr double kDeepenStepCm = 5.0;
inline constexpr int kMaxDeepenSteps = 200;
/// A footing side above this (1 km) is not a footing: "Check your data". It keeps every
/// product of the design finite whatever the singles of a record hold.
inline constexpr double kMaxFootingSideCm = 100000.0;
/// The bar choice: diameters of the table from 12 to 25 mm, spacing from 10 to 30 cm.
inline constexpr double kMinFootingBarMm = 12.0;
inline constexpr double kMaxFootingBarMm = 25.0;
inline constexpr double kMinBarSpacingCm = 10.0;
inline constexpr double kMaxBarSpacingCm = 30.0;

/// Masks of the footing sheets.
inline constexpr std::string_view kNum = "#####.##";
inline constexpr std::string_view kBig = "#########.##"; // areas in cm²
inline constexpr std::string_view kInertia = "##.####^^^^";
inline constexpr std::string_view kRatio = "#.#####";

/// A stored single as the decimal the user typed: its shortest form that reads back to the
/// same single (1.4f is 1.4, not 1.39999998), so that a pressure equal to the capacity in
/// exact arithmetic is not reported above it. NaN and infinities pass unchanged.
double typed(float v);

/// The steel-ratio limits of one design (ACI 318 balanced ratio).
struct SteelLimits {
    double beta1 = 0.0;
    double rowb = 0.0;   ///< (0.85 Fc / FY) · beta1 · 6100 / (6100 + FY)
    double rowMax = 0.0; ///< FacRowmax · Rowb
    double rowMin = 0.0; ///< the least ratio, minSteelPercent / 100
};
SteelLimits steelLimits(const FootingSettings& settings);

/// Int((v + 0.9999·5) / 5)·5: a size already on a multiple of 5 cm stays.
double roundUpToFive(double v);

/// The design of the bottom steel of one direction: the strip of width `widthCm` under the
/// moment `muKgCm` at the effective depth d.
struct SteelDirection {
    double spanCm = 0.0;  ///< the cantilever (or strip overhang) from the column face
    double muKgCm = 0.0;  ///< factored moment
    double widthCm = 0.0; ///< width of the section that carries it
    double term = 0.0;    ///< 2.61 Mu / (Fc · width · d²)
    double rhoCalc = 0.0; ///< (0.85 Fc/FY)(1 − √|1 − term|)
    double rho = 0.0;     ///< rhoCalc, not below the least ratio
    double astCm2 = 0.0;  ///< rho · width · d
    FootingBars bars;
    /// The section is too shallow for the moment: the ratio is above RowMax, or the term is
    /// above 1 (the root of the formula is then taken of a negative number, and the ratio it
    /// gives is no longer the one that carries the moment).
    bool tooShallow(const SteelLimits& limits) const {
        return rhoCalc > limits.rowMax || term > 1.0;
    }
};

/// The ratio and area of one direction; the bars are chosen over `spreadCm` (the width the
/// bars are spaced across) with `barLengthCm` the length of one bar. Precondition: the
/// settings are valid, widthCm > 0, dCm > 0.
SteelDirection designSteel(double spanCm, double muKgCm, double widthCm, double dCm,
                           double spreadCm, double barLengthCm, const FootingSettings& settings,
                           const SteelLimits& limits, std::span<const bars::BarProperties> table);

/// The bars for `areaCm2`: of the table's diameters from 12 to 25 mm, each with the least
/// count that gives the area and keeps the spacing spreadCm / (count − 1) within 10 to 30 cm
/// (two bars at least); the fewest bars win, then the smaller diameter.
FootingBars chooseFootingBars(double areaCm2, double spreadCm, double barLengthCm,
                              std::span<const bars::BarProperties> table);

/// The sides of a column that place its critical sections: across the footing (along y, the
/// column's a) and along x (its b). Polygonal types take their bounding box (a by b, a by a
/// for the square spiral); a circular column the square of the same area (ACI 318 15.3).
struct FaceSizes {
    double acrossCm = 0.0;
    double alongCm = 0.0;
};
FaceSizes faceSizes(const FootingColumn& column);
/// Types 2 and 7.
bool isCircular(const FootingColumn& column);
/// A type of 1 to 7 whose needed dimensions are above 0 and every number finite.
bool columnUsable(const FootingColumn& column);
/// Every setting a positive, finite number (cover, least steel and MinDepth may be 0).
bool settingsUsable(const FootingSettings& settings);
/// The default name of a section type ("Rectangle" ...), "?" outside 1..7.
std::string_view columnTypeName(int type);

/// An input as the sheet shows it: a number that is not finite (which only a damaged record
/// can hold, and which gives "Check your data") prints as 0.
inline double shown(double v) {
    return v - v == 0.0 ? v : 0.0;
}

/// Sheet blocks shared by the footing kinds.
void columnLines(core::Sheet& sh, const FootingColumn& column);
void settingLines(core::Sheet& sh, const FootingSettings& settings, std::string_view coverText,
                  std::string_view minDepthText);
void limitLines(core::Sheet& sh, const SteelLimits& limits);
void barLines(core::Sheet& sh, std::string_view heading, const FootingBars& bars);
/// "A=", "B=", "H=" under a heading.
void dimensionLines(core::Sheet& sh, std::string_view heading, double aCm, double bCm, double hCm);
/// The ratio lines of one direction after its moment: the formula's text as it stands, "IF
/// ROW < ROW min  take ROW min", the ratio after `rowText`, and the area after `astText`.
void ratioLines(core::Sheet& sh, std::string_view formulaText, std::string_view rowText,
                std::string_view astText, const SteelDirection& s);
/// The passes of the RowMax search: each depth at which the ratio was too large.
struct DeepenPass {
    double dCm = 0.0;
    double rhoCalc = 0.0; ///< the larger ratio of the directions that were too shallow
    /// The ratio a too shallow direction shows: past a term of 1 the formula's ratio means
    /// nothing, and the most it can give, 0.85 Fc / FY, stands in.
    static double ratioOf(const SteelDirection& s, const FootingSettings& settings);
};
void deepenLines(core::Sheet& sh, std::span<const DeepenPass> passes, bool exhausted);

} // namespace orvak::footings
