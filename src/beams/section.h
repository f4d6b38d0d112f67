// Cross-sections of beam spans: the seven section kinds, the meaning of their five stored
// dimensions, and the geometry the analysis and the design read from them. Lengths in cm.
#pragma once

#include <array>
#include <optional>
#include <string>

namespace orvak::beams {

/// Section kinds as stored in the beam record (1 to 7).
enum class SectionKind : int {
    WideRectangle = 1, ///< a band beam within or below the slab (panel HRECT)
    DeepRectangle = 2, ///< an ordinary rectangular beam (panel VRECT)
    TSection = 3,      ///< web with a flange on both sides at the top (panel T)
    LSection = 4,      ///< web with a flange on one side at the top (panel L)
    InvertedT = 5,     ///< web with a flange on both sides at the bottom
    InvertedL = 6,     ///< web with a flange on one side at the bottom
    Rib = 7,           ///< a rib (joist) of a ribbed slab: a T whose flange is the topping
};

/// The five stored dimensions, in stored order:
///   [0] flange width B, [1] flange thickness T, [2] web width bw (the width of a rectangle),
///   [3] not used (kept as stored), [4] total height H.
using SectionDims = std::array<float, 5>;

/// What the analysis and design need of a section.
struct SectionGeometry {
    SectionKind kind = SectionKind::DeepRectangle;
    double webWidthCm = 0.0;        ///< bw; the width b of a rectangle
    double flangeWidthCm = 0.0;     ///< B; equals bw for a rectangle
    double flangeThicknessCm = 0.0; ///< T; 0 for a rectangle
    double heightCm = 0.0;          ///< H
    bool flangeOnTop = false;       ///< T, L and rib: the flange is in compression under sagging
    bool flangeAtBottom = false;    ///< inverted T and L: in compression under hogging

    bool flanged() const { return flangeOnTop || flangeAtBottom; }
};

/// The geometry of a stored section, or an empty result with a plain sentence in `error`
/// when the kind is not 1..7 or a dimension the kind uses is not a positive finite number
/// (or the flange is thinner than nothing, thicker than the height, or narrower than the web).
std::optional<SectionGeometry> sectionGeometry(int kind, const SectionDims& dims, std::string& error);

/// Gross moment of inertia about the section's own centroid, cm⁴: b·h³/12 of each
/// rectangular part plus its area times the square of its distance from the centroid.
double grossInertiaCm4(const SectionGeometry& section);

/// Height of the centroid above the bottom face, cm.
double centroidFromBottomCm(const SectionGeometry& section);

} // namespace orvak::beams
