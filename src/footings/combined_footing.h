// Design of a rectangular combined footing under two columns on one line (x): the length that
// puts the resultant of the factored loads at mid-length, a uniform soil pressure, shears and
// moments along the footing as a beam, depth from beam shear and punching, and the steel of
// the long direction and of one cross strip under each column; and its calculation sheet.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "bars/bar_tables.h"
#include "core/sheet.h"
#include "footings/footing_design.h"
#include "footings/footing_input.h"

namespace orvak::footings {

/// One depth tried in the punching search of a column.
struct PunchPass {
    double dCm = 0.0;
    double psKg = 0.0; ///< Vc · perimeter · d − Qu · area inside the section
    bool edge = false; ///< the section runs out over the footing's end: three sides
};

struct ColumnPunching {
    double edgeDistanceCm = 0.0; ///< from the column's face to the footing's end
    std::vector<PunchPass> passes;
};

/// Every value the sheet prints. Loads in kg, moments in kg·cm, lengths in cm, pressures in
/// kg/cm². B is the length along x (the columns' line), A the width across.
struct CombinedFootingResult {
    FootingStatus status = FootingStatus::Designed;
    std::vector<std::string> failures;
    SteelLimits limits;

    // Plan.
    double service1Kg = 0.0, service2Kg = 0.0;
    double areaCm2 = 0.0;
    double ex1Cm = 0.0; ///< the resultant of the factored loads from column 1
    double bRawCm = 0.0, aRawCm = 0.0;
    double bCm = 0.0, aCm = 0.0; ///< rounded up to 5 cm
    bool planComputed = false;

    // Pressure.
    double abCm2 = 0.0;
    double pKg = 0.0;
    std::array<double, 4> q{};
    std::vector<int> cornersOver;
    std::vector<int> cornersTension;
    double qMax = 0.0;

    // The footing as a beam under the line load Qu·A and the two column loads.
    double quKgCm2 = 0.0; ///< (Pu1 + Pu2) / (A·B)
    double v1ltKg = 0.0, v1rtKg = 0.0, v2ltKg = 0.0, v2rtKg = 0.0;
    double vmaxKg = 0.0;
    double mUnderKgCm = 0.0; ///< the largest magnitude at the four column faces
    bool zeroShearBetween = false;
    double zeroShearCm = 0.0;  ///< from the left end, when zeroShearBetween
    double mBetweenKgCm = 0.0; ///< magnitude; at the inner faces when no zero shear between

    // Depth.
    double vcBeamKgCm2 = 0.0; ///< 0.53 · 0.85 · √Fc
    double dBeamCm = 0.0;
    double dStartCm = 0.0; ///< the larger of MinDepth and the beam-shear depth, rounded
    bool beamShearUnsafe = false;
    double vcPunchKgCm2 = 0.0; ///< 1.06 · 0.85 · √Fc
    ColumnPunching punch1, punch2;
    bool punchingExhausted = false;
    double dCm = 0.0;
    double hCm = 0.0;

    // Steel; the depth may grow where a ratio exceeds RowMax.
    std::vector<DeepenPass> deepenPasses;
    bool deepenExhausted = false;
    double finalDCm = 0.0;
    double finalHCm = 0.0;
    /// Bars along x for the largest moment along the footing: at the top where the footing
    /// hogs (tension at the top, between the columns), else at the bottom.
    SteelDirection steelLong;
    bool longAtTop = false;
    /// Bars along x on the other face, for the largest moment of the other sign (the least
    /// steel where there is none).
    SteelDirection steelOther;
    double mSaggingKgCm = 0.0; ///< the largest moment with tension at the bottom
    double mHoggingKgCm = 0.0; ///< the largest moment with tension at the top (its size)
    SteelDirection strip1;     ///< bars across, in the strip under column 1
    SteelDirection strip2;

    FootingSummary summary() const;
};

/// The most 2 cm steps of one column's punching search (10 m).
inline constexpr int kMaxPunchSteps = 500;
inline constexpr double kPunchStepCm = 2.0;

/// Designs the footing with the bar table. Never throws on engineering data: data of which no
/// footing can be made give status CheckData.
CombinedFootingResult designCombinedFooting(const CombinedFootingInput& input,
                                            std::span<const bars::BarProperties> barTable);

/// The calculation sheet of a design.
core::Sheet combinedFootingSheet(const CombinedFootingInput& input,
                                 const CombinedFootingResult& result,
                                 core::CodePage page = core::CodePage::Windows1252);

} // namespace orvak::footings
