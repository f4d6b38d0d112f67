// A two-span beam ready for design, shared by the design and listing tests.
#pragma once

#include "bars/bar_tables.h"
#include "beams/beam_design.h"

namespace orvak::beams {

/// Two spans of 6 m, pinned supports, 20 kg/cm dead and 10 kg/cm live on both, Fc 250,
/// FY 4200 (stirrups 2800), rectangles b × h1 and b × h2, settings stored as zeros where a
/// fallback exists, the built-in bar table.
inline BeamDesignInput twoSpanDesignInput(double b, double h1, double h2) {
    BeamDesignInput in;
    for (int i = 0; i < 2; ++i) {
        BeamSpan span;
        span.lengthCm = 600;
        span.inertiaCm4 = b * 60.0 * 60.0 * 60.0 / 12.0;
        span.loads[loadIndex(LoadKind::Uniform)] = {true, 20.0, 10.0, 0, 0, {}};
        in.model.spans.push_back(span);
        SectionGeometry s;
        s.webWidthCm = b;
        s.flangeWidthCm = b;
        s.heightCm = i == 0 ? h1 : h2;
        in.sections.push_back(s);
    }
    in.model.supports.assign(3, supportFromCodes(2, 0));
    in.model.elasticModulusKgCm2 = 15100.0 * 15.811388300841896;
    in.model.factors.dead = {1.4, 1.4};
    in.model.factors.live = {1.7, 1.0};
    in.model.caseScheme = 1;
    in.analysis = analyzeBeam(in.model);
    in.materials = {250.0, 4200.0, 2800.0};
    in.flexure.coverCm = 5;
    in.flexure.compressionCoverCm = 5;
    in.shear.stirrupDiameterMm = 8;
    in.shear.maxSpacingCm = 20;
    in.shear.minSpacingCm = 7.5;
    in.shear.fourLegWidthCm = 40;
    in.shear.stirrupCover = 2.5;
    in.shear.hookCm = 10;
    in.deflection.sustainedLivePercent = 30;
    in.deflection.durationMonths = 60;
    in.deflection.topCoverCm = 5;
    in.deflection.bottomCoverCm = 5;
    in.barTable = {
        {10, 0.79f, 0.62f}, {12, 1.13f, 0.89f}, {14, 1.54f, 1.21f}, {16, 2.01f, 1.58f},
        {18, 2.54f, 2.00f}, {20, 3.14f, 2.47f}, {22, 3.80f, 2.98f}, {25, 4.91f, 3.85f},
    };
    return in;
}

} // namespace orvak::beams
