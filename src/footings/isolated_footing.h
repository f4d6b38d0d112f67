// Design of an isolated spread footing under one column: plan size from the soil's safe
// bearing capacity, corner pressures under the load and both moments, depth from beam shear
// and punching shear, bottom steel both ways; and its calculation sheet.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "bars/bar_tables.h"
#include "core/sheet.h"
#include "footings/footing_design.h"
#include "footings/footing_input.h"

namespace orvak::footings {

/// Every value the sheet prints. Loads in kg, moments in kg·cm, lengths in cm, pressures in
/// kg/cm². The plan: A along y (parallel to the column's a), B along x (parallel to b); the
/// corners 1 (+y, −x), 2 (−y, −x), 3 (−y, +x), 4 (+y, +x), y and x measured from the edges
/// Cy and Cx are taken from.
struct IsolatedFootingResult {
    FootingStatus status = FootingStatus::Designed;
    std::vector<std::string> failures;
    SteelLimits limits;

    // Plan.
    double serviceLoadKg = 0.0;   ///< P = Pu / LF
    double areaCm2 = 0.0;         ///< P / soil capacity
    bool rectangularPlan = false; ///< a type 1 column: equal projections x
    double projectionCm = 0.0;    ///< x, never below 0
    double aRawCm = 0.0, bRawCm = 0.0;
    double aCm = 0.0, bCm = 0.0; ///< rounded up to 5 cm

    // Corner pressures (service loads).
    double ixCm4 = 0.0, iyCm4 = 0.0;
    double cyCm = 0.0, cxCm = 0.0; ///< edge-to-face distances in use (a centred column's)
    double eyCm = 0.0, exCm = 0.0; ///< column centre from the footing centre
    double mxKgCm = 0.0, myKgCm = 0.0;
    std::array<double, 4> q{};
    std::vector<int> cornersOver;    ///< 1-based
    std::vector<int> cornersTension; ///< 1-based
    double qMax = 0.0;

    // Beam shear.
    double vuKgCm2 = 0.0; ///< 0.53 · 0.85 · √Fc
    double lcYCm = 0.0;   ///< the longer face-to-edge distance along y
    double lcXCm = 0.0;
    double lcCm = 0.0;    ///< the larger of the two
    double quKgCm2 = 0.0; ///< Q · LF
    double dBeamCm = 0.0;
    bool beamShearUnsafe = false;

    // Punching.
    double betaC = 1.0;
    double vcRawKgCm2 = 0.0; ///< before the cap
    double vcKgCm2 = 0.0;
    double a1 = 0.0, b1 = 0.0, c1 = 0.0;
    double dPunchCm = 0.0;
    double dCm = 0.0; ///< effective depth after punching, rounded
    double hCm = 0.0;
    double psKg = 0.0;     ///< capacity at dCm
    double hPunchCm = 0.0; ///< the punching depth and the cover: the least H
    bool punchingUnsafe = false;

    // Steel; the depth may grow where the ratio exceeds RowMax.
    std::vector<DeepenPass> deepenPasses;
    bool deepenExhausted = false;
    double finalDCm = 0.0;
    double finalHCm = 0.0;
    double lCentredCm = 0.0; ///< (A − a) / 2, the cantilever along y of a centred column
    double wCentredCm = 0.0; ///< (B − b) / 2
    SteelDirection steelY;   ///< bars along y, the moment over the cantilever L
    SteelDirection steelX;

    FootingSummary summary() const;
};

/// Designs the footing with the bar table. Never throws on engineering data: data of which no
/// footing can be made give status CheckData.
IsolatedFootingResult designIsolatedFooting(const IsolatedFootingInput& input,
                                            std::span<const bars::BarProperties> barTable);

/// The calculation sheet of a design.
core::Sheet isolatedFootingSheet(const IsolatedFootingInput& input,
                                 const IsolatedFootingResult& result,
                                 core::CodePage page = core::CodePage::Windows1252);

} // namespace orvak::footings
