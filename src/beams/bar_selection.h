// Choice of the main bars of a design point from a required steel area: count, diameter and
// layers, from the bar table, checked against the clear spacing the beam width allows.
#pragma once

#include <span>
#include <vector>

#include "bars/bar_tables.h"

namespace orvak::beams {

struct BarSelectionSettings {
    double sideCoverCm = 2.5;       ///< clear cover to the stirrup at the sides, cm
    double stirrupDiameterMm = 8.0; ///< stirrup between the cover and the bars, mm
    double minDiameterMm = 12.0;    ///< smallest main bar offered, mm
    double maxDiameterMm = 0.0;     ///< largest main bar offered, mm; 0 or less: any
    double minClearSpacingCm = 2.5; ///< ACI clear spacing: the larger of this and one bar
    int minBars = 2;                ///< corner bars of the stirrups
    int maxLayers = 3;
    /// The diameters the engineer allows (mm); empty: every diameter of the table.
    std::vector<double> allowedDiametersMm;
    /// Crack control of a face in tension: the yield stress of the main bars (kg/cm²), from
    /// which the service stress fs = 2/3 FY follows; 0 or less: no crack-control check (the
    /// compression bars of a point).
    double crackControlFyKgCm2 = 0.0;
    /// Cover from the tension face to the centre of the first layer of bars, cm: the clear
    /// cover of the crack-control rule is this less half a bar.
    double tensionCoverCm = 0.0;
};

struct BarChoice {
    bool found = false;
    int count = 0;
    double diameterMm = 0.0;
    int layers = 0;
    int barsPerLayer = 0;        ///< most bars one layer can hold
    double areaCm2 = 0.0;        ///< provided: count × area of one bar
    double clearSpacingCm = 0.0; ///< clear distance between bars of a full layer
    /// The crack-control spacing raised the count above what the area and the least bars ask.
    bool crackControlGoverns = false;
    double crackSpacingLimitCm = 0.0; ///< the largest centre spacing allowed (0: no check)
    /// False when even a full layer stands farther apart than the crack-control limit (a
    /// cover so large that the rule leaves almost no spacing): the design must say so.
    bool crackControlMet = true;
};

/// The largest centre-to-centre spacing of the bars nearest a tension face for crack control
/// (ACI 318 24.3.2): s = 38 (2855 / fs) - 2.5 cc, and not more than 30 (2855 / fs), in cm,
/// with fs = 2/3 FY the service stress (kg/cm²; 2855 kg/cm² is 280 MPa) and cc the clear
/// cover of the bars (cm). Never below zero. Precondition: fyKgCm2 > 0.
double crackControlMaxSpacingCm(double fyKgCm2, double clearCoverCm);

/// Bars of one layer that fit a web of widthCm with bars of diameterMm: the width less both
/// covers and stirrups, with a clear spacing of max(minClearSpacingCm, bar diameter) between
/// neighbours. 0 when not even one bar fits.
int barsPerLayer(double widthCm, double diameterMm, const BarSelectionSettings& settings);

/// The bars for areaCm2 (>= 0): among the table's diameters within the settings' range, the
/// fewest layers first, then the smallest provided area, then the larger bar (fewer pieces).
/// Every candidate has at least minBars bars and at least two per layer, and, where areaCm2
/// is above zero and crack control is asked for, enough bars in the first layer that their
/// centre spacing keeps to crackControlMaxSpacingCm (a full layer always counts as meeting it:
/// no more bars fit). found is false when no diameter fits within maxLayers.
BarChoice selectBars(double areaCm2, double widthCm, std::span<const bars::BarProperties> table,
                     const BarSelectionSettings& settings);

/// How far the centroid of the chosen bars lies from the centre of the first layer, cm: the
/// layers are filled in turn with barsPerLayer bars, one above the other at a centre distance
/// of one bar plus the clear spacing max(minClearSpacingCm, bar diameter). 0 for one layer.
double layerCentroidOffsetCm(const BarChoice& choice, const BarSelectionSettings& settings);

} // namespace orvak::beams
