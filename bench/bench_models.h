// Models shared by the benchmarks: the largest continuous beam (30 spans) with its sections,
// materials and bar table, ready for the analysis and the design.
#pragma once

#include "beams/beam_design.h"

namespace orvak::bench {

/// 30 spans of 4.00 to 5.50 m, T sections (odd spans) and rectangles 30 × 60, uniform and
/// point loads, Fc 250, FY 4200 (stirrups 2800), scheme 2. The analysis is not yet made.
inline beams::BeamDesignInput thirtySpanDesignModel() {
    using namespace orvak::beams;
    BeamDesignInput in;
    for (int i = 0; i < kMaxSpans; ++i) {
        BeamSpan span;
        span.lengthCm = 400.0 + 25.0 * (i % 7);
        span.inertiaCm4 = 30.0 * 60.0 * 60.0 * 60.0 / 12.0;
        span.loads[loadIndex(LoadKind::Uniform)] = {true, 25.0, 12.0, 0.0, 0.0, {}};
        if (i % 3 != 1) {
            span.loads[loadIndex(LoadKind::Concentrated)] = {
                true, 3000.0, 1500.0, span.lengthCm / 3, 0.0, {}};
        }
        in.model.spans.push_back(span);
        SectionGeometry s;
        s.kind = i % 2 == 0 ? SectionKind::TSection : SectionKind::DeepRectangle;
        s.webWidthCm = 30.0;
        s.flangeWidthCm = i % 2 == 0 ? 100.0 : 30.0;
        s.flangeThicknessCm = i % 2 == 0 ? 12.0 : 0.0;
        s.flangeOnTop = i % 2 == 0;
        s.heightCm = 60.0;
        in.sections.push_back(s);
    }
    in.model.supports.assign(kMaxSupports, supportFromCodes(2, 0));
    in.model.elasticModulusKgCm2 = 15100.0 * 15.8113883;
    in.model.factors.dead = {1.4, 1.4};
    in.model.factors.live = {1.7, 1.0};
    in.model.caseScheme = 2;
    in.materials = {250.0, 4200.0, 2800.0};
    in.shear.minSpacingCm = 7.5;
    in.deflection.sustainedLivePercent = 30.0;
    in.deflection.durationMonths = 60.0;
    for (float d : {10.0f, 12.0f, 14.0f, 16.0f, 18.0f, 20.0f, 22.0f, 25.0f}) {
        in.barTable.push_back({d, 3.14159265f * d * d / 400.0f, 0.00617f * d * d});
    }
    return in;
}

} // namespace orvak::bench
