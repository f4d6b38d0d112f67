// Design of one column group as one column to the ACI strength method: slenderness and moment
// magnification, minimum eccentricity, axial design of the section, and the steel ratio for
// axial load with bending through the balanced point and a bisection; then the calculation
// sheet, which only formats the values the result holds. Loads in t, moments in t·m.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bars/bar_tables.h"
#include "columns/column_records.h"
#include "columns/column_section.h"
#include "core/sheet.h"

namespace orvak::columns {

/// The largest steel ratio of a column, and the most points of one ratio search.
inline constexpr double kMaxSteelRatio = 0.08;
inline constexpr int kMaxSearchPoints = 20;
/// Main bars a column design chooses from, mm.
inline constexpr double kMinColumnBarMm = 12.0;
inline constexpr double kMaxColumnBarMm = 32.0;
/// Least clear distance between column bars (ACI): 4 cm and 1.5 bar diameters.
inline constexpr double kMinColumnClearCm = 4.0;
/// Ties (ACI 318): 10 mm around main bars up to 32 mm, 12 mm around larger ones; each closed
/// with two 135° hooks of 6 tie diameters and at least 7.5 cm.
inline constexpr double kTieMm = 10.0;
inline constexpr double kLargeTieMm = 12.0;
inline constexpr double kLargestBarOfSmallTiesMm = 32.0;
inline constexpr double kTieHookDiameters = 6.0;
inline constexpr double kMinTieHookCm = 7.5;
/// Spirals (ACI 318): a clear pitch of 2.5 to 7.5 cm, 1.5 extra turns at each end.
inline constexpr double kMinSpiralClearCm = 2.5;
inline constexpr double kMaxSpiralClearCm = 7.5;
inline constexpr double kSpiralEndTurns = 3.0;
/// Spiral bars tried in turn until the pitch the ratio asks leaves the least clear pitch, mm.
inline constexpr double kSpiralBarsMm[] = {10.0, 12.0, 14.0, 16.0};

enum class ColumnStatus {
    Designed = 1,
    SectionTooSmall = 2, ///< the group is to be enlarged and designed again
    NotConverged = 3,    ///< no ratio, or more than 20 points
    Unstable = 4,        ///< Pu at or above phi Pc: the column buckles
    MissingData = 5,     ///< a type outside 1..7 or a dimension missing: not designed
};

/// Slenderness of one direction of bending.
struct Slenderness {
    double rCm = 0.0;   ///< radius of gyration
    double klr = 0.0;   ///< K·L/r
    double limit = 0.0; ///< 34 − 12 M1/M2 braced, 22 unbraced
    bool isLong = false;
    bool over100 = false;
};

/// Moment magnification of one direction of a long column.
struct Magnification {
    double cm = 0.0;
    double eiKgCm2 = 0.0; ///< (Ec·I / 2.5) / (1 + beta d)
    double pcT = 0.0;     ///< pi² EI / (K·L)², t
    bool unstable = false;
    double delta = 1.0;
    double mMinTm = 0.0, mMaxTm = 0.0; ///< magnified end moments
};

/// The eccentricity of one direction: MU / Pu, the least one, and the one designed for.
struct Eccentricity {
    double muTm = 0.0;
    double eCm = 0.0;
    double minCm = 0.0;
    double designCm = 0.0;
};

struct BarSet {
    bool found = false;
    int count = 0;
    double diameterMm = 0.0;
    double areaCm2 = 0.0;
};

struct AxialDesign {
    double phi = 0.0, r = 0.0, astMin = 0.0;
    double acRequiredCm2 = 0.0, acCm2 = 0.0;
    double pdT = 0.0; ///< (Pu / PHI)
    bool tooSmall = false;
    double astCm2 = 0.0; ///< AST = ROW% · AC
    BarSet bars;
};

struct BalancedPoint {
    double cbCm = 0.0, abCm = 0.0;
    double sum1Kg = 0.0, sum2KgCm = 0.0;
    double pnbT = 0.0, mnbTm = 0.0, ebCm = 0.0;
};

/// One pass of a ratio search: the ratio tried and the section's strength at the design
/// eccentricity (a point of the interaction table).
struct SearchPass {
    double rho = 0.0;
    double pnT = 0.0;
    double mnTm = 0.0;
};

struct RatioSearch {
    enum class Outcome { Converged, BelowMinimum, AboveMaximum, NoEccentricity, TooManyPoints };
    Outcome outcome = Outcome::Converged;
    double targetT = 0.0;
    double rho = 0.0;
    std::vector<SearchPass> passes;
    bool found() const { return outcome == Outcome::Converged || outcome == Outcome::BelowMinimum; }
};

/// Axial load with bending in one direction.
struct BendingDesign {
    Direction direction = Direction::X;
    int barCount = 0;  ///< the bars the search spread its steel over
    double muTm = 0.0; ///< Pu · e
    double pncT = 0.0, mncTm = 0.0, pneqT = 0.0;
    double hCm = 0.0, dCm = 0.0, pdT = 0.0, mdTm = 0.0;
    BalancedPoint balanced;
    RatioSearch search;
    /// The strength reduction for small axial load: T = 0.1 Fc Ag and the phi it gives; when
    /// phi rises above the type's, the search is made again for the smaller demand.
    double tT = 0.0;
    double phi = 0.0;
    std::optional<RatioSearch> second;
    double rho = 0.0;
    double requiredAreaCm2 = 0.0;
};

/// Bresler's reciprocal load check where moments act in both directions.
struct BiaxialCheck {
    double pnxT = 0.0, pnyT = 0.0, p0T = 0.0, pniT = 0.0, phiPniT = 0.0;
    bool holds = false;
    std::optional<RatioSearch> search; ///< the ratio raised until the check holds
    double rho = 0.0;
};

/// The ties or the spiral of one column of a designed group.
struct TransverseSteel {
    bool spiral = false; ///< types 2 and 6; the others have ties
    double diameterMm = 0.0;
    double limitCm = 0.0;        ///< ties: the least of 16 db, 48 dt and the least dimension
    double spacingCm = 0.0;      ///< tie spacing, or the spiral's pitch centre to centre
    int countPerColumn = 0;      ///< ties, or turns of the spiral with its end turns
    double lengthCm = 0.0;       ///< one tie with its hooks, or one turn of the spiral
    double coreDiameterCm = 0.0; ///< spiral: Dc, out to out of the spiral
    double achCm2 = 0.0;         ///< spiral: the core's area
    double rhoS = 0.0;           ///< spiral: the least volumetric ratio
    bool clearPitchHolds = true; ///< spiral: the pitch leaves at least 2.5 cm clear
};

struct ColumnDesignResult {
    ColumnStatus status = ColumnStatus::Designed;
    std::vector<std::string> problems; ///< "(K*L/r) > 100" with the column's name
    std::string typeName;
    std::optional<ColumnSection> section;
    double coverCm = 0.0;
    bool biaxial = false; ///< moments act in both directions
    Slenderness slenderX, slenderY;
    double ecKgCm2 = 0.0;
    std::optional<Magnification> magnifyX, magnifyY;
    Eccentricity eccX;
    std::optional<Eccentricity> eccY;
    std::optional<AxialDesign> axial;
    std::optional<BendingDesign> bendX, bendY;
    std::optional<BiaxialCheck> biaxialCheck;
    BarSet finalBars; ///< found when designed
    double finalRho = 0.0;
    std::optional<TransverseSteel> transverse; ///< when designed
};

/// Designs the group as one column with its own settings copy and the bar table. A group that
/// cannot be stored (validateGroup) is a precondition failure; Pu must be above 0.
ColumnDesignResult designColumn(const ColumnGroup& group,
                                std::span<const bars::BarProperties> barTable);

/// The ties or the spiral of a group's columns around main bars of `mainBarMm` with their
/// centres `coverCm` in from the faces. Ties: 10 mm (12 above 32 mm bars) at the least of
/// 16 db, 48 dt and the least dimension the type gives, rounded down to whole cm; a tie at each
/// end and none farther apart; each tie the perimeter of its centre line plus two hooks.
/// Spiral (types 2 and 6): the ratio 0.45 (Ag/Ach − 1) Fc/FYties = 4 Asp / (Dc s) gives the
/// pitch, at most 7.5 cm clear, rounded down to 0.5 cm; the first bar of 10 to 16 mm that
/// leaves 2.5 cm clear; turns over the height and 1.5 more at each end.
TransverseSteel transverseSteel(const ColumnGroup& group, const ColumnSection& section,
                                double mainBarMm, double coverCm);

/// The calculation sheet of a design.
core::Sheet columnSheet(const ColumnGroup& group, const ColumnDesignResult& result,
                        core::CodePage page = core::CodePage::Windows1252);

/// The axial load and moment about the centroid (kg, kg·cm) of the section with bars of
/// `barAreaCm2` at `bars` when the neutral axis lies `cCm` from the compression face: the
/// stress block 0.85 Fc over beta1·c, steel stress 6100 (c − d)/c within ±FY, less the
/// concrete a bar in the block displaces.
struct SectionForce {
    double pKg = 0.0;
    double mKgCm = 0.0;
};
SectionForce sectionForce(const ColumnSection& section, Direction d, std::span<const Point> bars,
                          double barAreaCm2, double fc, double fy, double cCm);

/// The bars for `areaCm2`: diameters of the table from 12 to 32 mm, each with the least
/// count the type places that gives the area, where the clear distance along the bar line
/// is at least 4 cm and 1.5 bars; the least area, then the larger bar.
BarSet chooseColumnBars(const ColumnSection& section, double areaCm2, double coverCm,
                        std::span<const bars::BarProperties> barTable);

} // namespace orvak::columns
