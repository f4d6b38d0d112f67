// Design of a whole continuous beam from its analysis: flexure and bars at the supports and in
// the field of every span, stirrups, the minimum-depth check and the long-term deflection.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "bars/bar_tables.h"
#include "beams/bar_selection.h"
#include "beams/beam_analysis.h"
#include "beams/flexure.h"
#include "beams/long_term_deflection.h"
#include "beams/section.h"
#include "beams/shear_design.h"

namespace orvak::beams {

inline constexpr std::string_view kDepthMessage = "Depth less than code requirement in span(s)";
inline constexpr std::string_view kCheckDeflectionMessage = "Check long time deflection !";

struct BeamDesignInput {
    BeamAnalysisInput model;               ///< spans, supports and loads as analysed
    BeamAnalysisResult analysis;           ///< analyzeBeam(model)
    std::vector<SectionGeometry> sections; ///< one per span
    /// Supports (n + 1) whose moment is multiplied by `LdfactTxt`: the last support of a
    /// one-span beam with support code 2, and end supports with joint code 1. Empty: none.
    std::vector<bool> ldFactorAtSupport;
    DesignMaterials materials;
    FlexureSettings flexure;
    BarSelectionSettings bars;
    /// The least bars of a face wherever it is designed (`MINUPSQ`, `MINUPSD` on top,
    /// `MINDNSQ`, `MINDNSD` at the bottom): at least that many bars of at least that
    /// diameter. 0: no minimum beyond the two corner bars.
    struct MinimumBars {
        int count = 0;
        double diameterMm = 0.0;
    } minTopBars, minBottomBars;
    ShearSettings shear;
    DeflectionSettings deflection;
    DepthDivisors depthDivisors; ///< the beam rows of `THIKTXT`
    std::vector<bars::BarProperties> barTable;
};

enum class PointPlace { Left, Field, Right };

/// One flexural design point: a face (top under hogging, bottom under sagging) at a support
/// end or in the field of a span.
struct FlexurePoint {
    int span = 0; ///< 0-based
    PointPlace place = PointPlace::Field;
    bool hogging = false;
    double momentKgCm = 0.0; ///< the envelope value designed for, signed
    FlexureResult flexure;
    BarChoice tensionBars;
    BarChoice compressionBars; ///< only where compression steel is required
};

struct ShearPoint {
    int span = 0;
    PointPlace place = PointPlace::Field;
    double vuKg = 0.0;
    ShearResult shear;
};

struct SpanDepthCheck {
    double heightCm = 0.0;
    double minimumCm = 0.0;
    bool shallow = false;
};

struct BeamDesignResult {
    std::vector<std::string> failures; ///< one plain sentence per failed check; empty: all ok
    std::vector<std::string> messages; ///< the depth messages for the user
    FlexureLimits limits;
    DesignMaterials materials;
    std::vector<FlexurePoint> flexurePoints; ///< six per span, span after span
    std::vector<ShearPoint> shearPoints;     ///< left end, middle, right end of every span
    std::vector<SpanDepthCheck> depthChecks;
    std::vector<int> shallowSpans; ///< 1-based
    /// Limiting stress-block depth per support (n + 1), [0] from the span on its left, [1]
    /// from the span on its right (0 where there is none).
    std::vector<std::array<double, 2>> limitBlockDepthCm;
    DeflectionResult deflection;
    bool ok() const { return failures.empty(); }
};

/// Designs every point of the beam. Never throws for engineering outcomes and never returns
/// NaN: bad input and failed checks are listed in failures.
BeamDesignResult designBeam(const BeamDesignInput& input);

} // namespace orvak::beams
