// Sheets of the beam listings: the analysis (".Analy1"), the flexural design (".Analy2"), the
// shear design (".Analy0") and the long time deflection (".Analy3").
#pragma once

#include <string>

#include "core/sheet.h"

#include "beams/beam_analysis.h"
#include "beams/beam_design.h"
#include "beams/long_term_deflection.h"

namespace orvak::beams {

/// Analysis listing: support moments, span extremes and the envelope at the tenth points of
/// every span, moments in t·m and shears in t.
core::Sheet analysisListing(const BeamAnalysisInput& model, const BeamAnalysisResult& analysis);

/// Flexural design listing: materials and ratios, the steel and bars of every design point,
/// the minimum-depth check and its messages.
core::Sheet flexureListing(const BeamDesignInput& input, const BeamDesignResult& result);

/// Shear listing: one row per shear point under the dashed header rule; "******" marks a
/// point whose section is too small in shear.
core::Sheet shearListing(const BeamDesignInput& input, const BeamDesignResult& result);

/// The listing headed "LONG TIME DEFLECTION ..." with every step of the computation.
core::Sheet deflectionListing(const DeflectionResult& result);

} // namespace orvak::beams
