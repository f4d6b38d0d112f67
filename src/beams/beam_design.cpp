// Design of a whole continuous beam from its analysis: flexure and bars at the supports and in
// the field of every span, stirrups, the minimum-depth check and the long-term deflection.
#include "beams/beam_design.h"

#include <algorithm>
#include <cmath>

#include "core/sheet.h"
#include "core/tolerances.h"

namespace orvak::beams {

namespace {

std::string spanList(const std::vector<int>& spans) {
    std::string out;
    for (int s : spans) {
        out += (out.empty() ? " " : ", ") + std::to_string(s);
    }
    return out;
}

double stationShear(const Envelope& env, std::size_t span, int station) {
    const std::size_t k = span * kStationsPerSpan + static_cast<std::size_t>(station);
    if (k >= env.stationShearMaxKg.size() || k >= env.stationShearMinKg.size()) {
        return 0.0;
    }
    return std::max(std::abs(env.stationShearMaxKg[k]), std::abs(env.stationShearMinKg[k]));
}

// Passes of a flexural point's design while the layers of its bars lower the effective depth.
constexpr int kMaxLayerPasses = 8;

// The shear of the middle zone, between the quarter points: the largest envelope value there.
// Station values are taken just left of each station, so the stations after a point load in
// the zone carry the shear on its right side too.
double middleZoneShear(const Envelope& env, std::size_t span) {
    double v = 0.0;
    for (int k = kStationDivisions / 4; k <= kStationDivisions - kStationDivisions / 4; ++k) {
        v = std::max(v, stationShear(env, span, k));
    }
    return v;
}

// Moments that are zero in exact arithmetic (the free tip of an overhang, a pinned end) are
// taken as zero, so that their rounding asks for no steel.
double cleanMoment(double m, double scale) {
    return core::negligible(m, scale) ? 0.0 : m;
}

// The most negative envelope moment between the quarter points: nearer the supports the top
// steel of the support governs, and the span's own minimum would only repeat it.
double fieldHogging(const Envelope& env, std::size_t span) {
    double m = 0.0;
    for (int k = kStationDivisions / 4; k <= kStationDivisions - kStationDivisions / 4; ++k) {
        const std::size_t s = span * kStationsPerSpan + static_cast<std::size_t>(k);
        if (s < env.stationMomentMinKgCm.size()) {
            m = std::min(m, env.stationMomentMinKgCm[s]);
        }
    }
    return m;
}

// The effective depth of a shear point: the least d of the span's flexural points at the same
// place, so that bars in two or three layers lower the depth that the concrete's share and the
// stirrup spacing use, as they do in flexure. A point whose flexure found no depth leaves the
// depth of the first layer.
double shearDepthCm(const std::vector<FlexurePoint>& points, int span, PointPlace place,
                    double firstLayerDepthCm) {
    double d = firstLayerDepthCm;
    for (const FlexurePoint& p : points) {
        if (p.span == span && p.place == place && p.flexure.effectiveDepthCm > 0.0) {
            d = std::min(d, p.flexure.effectiveDepthCm);
        }
    }
    return d;
}

} // namespace

BeamDesignResult designBeam(const BeamDesignInput& input) {
    BeamDesignResult r;
    r.materials = input.materials;
    const std::size_t n = input.model.spans.size();
    const Envelope& env = input.analysis.envelope;
    if (!input.analysis.ok()) {
        r.failures.push_back("The beam has no analysis to design from: " + input.analysis.message);
        return r;
    }
    if (n == 0 || input.sections.size() != n || input.model.supports.size() != n + 1 ||
        env.supportMomentMinKgCm.size() != n + 1 || env.supportMomentMaxKgCm.size() != n + 1 ||
        env.spanMomentMax.size() != n || env.spanMomentMin.size() != n) {
        r.failures.push_back("The beam's sections do not match its analysed spans.");
        return r;
    }
    if (!(input.materials.fcKgCm2 > 0.0) || !(input.materials.fyKgCm2 > 0.0)) {
        r.failures.push_back(
            "The concrete strength and the steel yield stress must be above zero.");
        return r;
    }
    r.limits = flexureLimits(input.flexure, input.materials);
    r.limitBlockDepthCm.assign(n + 1, {0.0, 0.0});
    auto flagged = [&](std::size_t joint) {
        return joint < input.ldFactorAtSupport.size() && input.ldFactorAtSupport[joint];
    };

    double momentScale = 0.0;
    for (const auto* row : {&env.supportMomentMinKgCm, &env.supportMomentMaxKgCm}) {
        for (const double m : *row) {
            momentScale = std::max(momentScale, std::abs(m));
        }
    }
    for (const auto* row : {&env.spanMomentMax, &env.spanMomentMin}) {
        for (const EnvelopeValue& m : *row) {
            momentScale = std::max(momentScale, std::abs(m.value));
        }
    }

    std::vector<double> jointAst(n + 1, 0.0), jointAsc(n + 1, 0.0);
    std::vector<double> jointBottomAst(n + 1, 0.0), jointBottomAsc(n + 1, 0.0);
    std::vector<double> memberAst(n, 0.0), memberAsc(n, 0.0);
    for (std::size_t i = 0; i < n; ++i) {
        const SectionGeometry& sec = input.sections[i];
        struct Place {
            PointPlace place;
            bool hogging;
            double moment;
            std::size_t joint;
        };
        const Place places[] = {
            {PointPlace::Left, true, std::min(env.supportMomentMinKgCm[i], 0.0), i},
            {PointPlace::Left, false, std::max(env.supportMomentMaxKgCm[i], 0.0), i},
            {PointPlace::Field, false, std::max(env.spanMomentMax[i].value, 0.0), n + 1},
            {PointPlace::Field, true, std::min(fieldHogging(env, i), 0.0), n + 1},
            {PointPlace::Right, true, std::min(env.supportMomentMinKgCm[i + 1], 0.0), i + 1},
            {PointPlace::Right, false, std::max(env.supportMomentMaxKgCm[i + 1], 0.0), i + 1},
        };
        for (const Place& p : places) {
            FlexurePoint fp;
            fp.span = static_cast<int>(i);
            fp.place = p.place;
            fp.hogging = p.hogging;
            fp.momentKgCm = std::isfinite(p.moment) ? cleanMoment(p.moment, momentScale) : 0.0;
            const double mu =
                designMomentTm(fp.momentKgCm, p.joint <= n && flagged(p.joint), input.flexure);
            // The face's own least bars: their count and diameter bound the choice.
            const BeamDesignInput::MinimumBars& least =
                p.hogging ? input.minTopBars : input.minBottomBars;
            BarSelectionSettings faceBars = input.bars;
            faceBars.minBars = std::max(faceBars.minBars, least.count);
            faceBars.minDiameterMm = std::max(faceBars.minDiameterMm, least.diameterMm);
            // Bars in two or three layers have their centroid above the first layer's: the
            // point is designed again with d reduced by that offset until the choice holds.
            // The offset only grows with the steel, and three layers bound it.
            FlexureSettings flexure = input.flexure;
            for (int pass = 0; pass < kMaxLayerPasses; ++pass) {
                fp.flexure = designFlexure(sec, mu, p.hogging, flexure, input.materials);
                fp.tensionBars =
                    selectBars(fp.flexure.tensionAreaCm2, sec.webWidthCm, input.barTable, faceBars);
                const double offset = layerCentroidOffsetCm(fp.tensionBars, faceBars);
                if (offset <= flexure.coverCm - input.flexure.coverCm + core::kAbsoluteEqual) {
                    break;
                }
                flexure.coverCm = input.flexure.coverCm + offset;
            }
            if (!fp.flexure.ok()) {
                r.failures.push_back("Span " + std::to_string(i + 1) + ": " + fp.flexure.message);
            }
            if (fp.tensionBars.found && !fp.tensionBars.crackControlMet) {
                r.failures.push_back(
                    "Span " + std::to_string(i + 1) +
                    ": the bars cannot keep the crack-control spacing of " +
                    core::compactValue("##.#", fp.tensionBars.crackSpacingLimitCm).substr(1) +
                    " cm; reduce the cover or widen the web.");
            }
            if (!fp.tensionBars.found) {
                r.failures.push_back("Span " + std::to_string(i + 1) +
                                     ": no bar arrangement of the bar table fits the web width.");
            }
            if (fp.flexure.compressionAreaCm2 > 0.0) {
                // The compression face does not crack: its bars keep only the spacing rules.
                BarSelectionSettings compressionBars = input.bars;
                compressionBars.crackControlFyKgCm2 = 0.0;
                fp.compressionBars = selectBars(fp.flexure.compressionAreaCm2, sec.webWidthCm,
                                                input.barTable, compressionBars);
                if (!fp.compressionBars.found) {
                    r.failures.push_back(
                        "Span " + std::to_string(i + 1) +
                        ": no compression bar arrangement of the bar table fits the web width.");
                }
            }
            if (p.hogging && p.place != PointPlace::Field) {
                jointAst[p.joint] = std::max(jointAst[p.joint], fp.tensionBars.areaCm2);
                jointAsc[p.joint] = std::max(jointAsc[p.joint], fp.compressionBars.areaCm2);
                r.limitBlockDepthCm[p.joint][p.place == PointPlace::Left ? 1 : 0] =
                    fp.flexure.limitBlockDepthCm;
            }
            if (!p.hogging && p.place != PointPlace::Field) {
                jointBottomAst[p.joint] = std::max(jointBottomAst[p.joint], fp.tensionBars.areaCm2);
                jointBottomAsc[p.joint] =
                    std::max(jointBottomAsc[p.joint], fp.compressionBars.areaCm2);
            }
            if (!p.hogging && p.place == PointPlace::Field) {
                memberAst[i] = fp.tensionBars.areaCm2;
                memberAsc[i] = fp.compressionBars.areaCm2;
            }
            r.flexurePoints.push_back(fp);
        }

        const int stations[] = {0, kStationDivisions / 2, kStationDivisions};
        const PointPlace shearPlaces[] = {PointPlace::Left, PointPlace::Field, PointPlace::Right};
        for (int k = 0; k < 3; ++k) {
            ShearPoint sp;
            sp.span = static_cast<int>(i);
            sp.place = shearPlaces[k];
            sp.vuKg = shearPlaces[k] == PointPlace::Field ? middleZoneShear(env, i)
                                                          : stationShear(env, i, stations[k]);
            ShearPointInput in;
            in.vuKg = sp.vuKg;
            in.webWidthCm = sec.webWidthCm;
            in.heightCm = sec.heightCm;
            in.effectiveDepthCm = shearDepthCm(r.flexurePoints, static_cast<int>(i), shearPlaces[k],
                                               sec.heightCm - input.flexure.coverCm);
            sp.shear = designShear(in, input.shear, input.materials);
            if (!sp.shear.ok()) {
                r.failures.push_back("Span " + std::to_string(i + 1) + ": " + sp.shear.message);
            }
            r.shearPoints.push_back(sp);
        }

        // The depth rule speaks of the span between the supports that hold it: a joint
        // without support inside it does not shorten it, and an overhang is a cantilever
        // from the free end to its support.
        const SupportedRun run = supportedRun(input.model, static_cast<int>(i));
        const BeamSupport& left = input.model.supports[static_cast<std::size_t>(run.firstJoint)];
        const BeamSupport& right = input.model.supports[static_cast<std::size_t>(run.lastJoint)];
        SpanEndConditions ends;
        ends.leftContinuous = run.firstJoint > 0 || left.restrainsRotation;
        ends.rightContinuous = run.lastJoint < static_cast<int>(n) || right.restrainsRotation;
        ends.cantilever = run.overhang;
        SpanDepthCheck dc;
        dc.heightCm = sec.heightCm;
        dc.minimumCm =
            minimumDepthCm(run.lengthCm, ends, input.depthDivisors, input.materials.fyKgCm2);
        dc.shallow = dc.heightCm < dc.minimumCm;
        if (dc.shallow) {
            r.shallowSpans.push_back(static_cast<int>(i) + 1);
        }
        r.depthChecks.push_back(dc);
    }
    if (!r.shallowSpans.empty()) {
        r.messages.push_back(std::string(kDepthMessage) + spanList(r.shallowSpans));
        r.messages.push_back(std::string(kCheckDeflectionMessage));
    }

    DeflectionInput din;
    din.model = input.model;
    din.service = input.analysis.service;
    din.spanCurves = input.analysis.spanCurves;
    din.sections = input.sections;
    din.fcKgCm2 = input.materials.fcKgCm2;
    din.jointAst = std::move(jointAst);
    din.jointAsc = std::move(jointAsc);
    din.jointBottomAst = std::move(jointBottomAst);
    din.jointBottomAsc = std::move(jointBottomAsc);
    din.memberAst = std::move(memberAst);
    din.memberAsc = std::move(memberAsc);
    din.settings = input.deflection;
    // Cracked sections need the bars of every point: where a point found none, deflections
    // worked out without its steel would be numbers of no meaning.
    std::vector<int> barless;
    for (const FlexurePoint& fp : r.flexurePoints) {
        if (!fp.tensionBars.found && (barless.empty() || barless.back() != fp.span + 1)) {
            barless.push_back(fp.span + 1);
        }
    }
    if (barless.empty()) {
        r.deflection = computeLongTermDeflection(din);
    } else {
        r.deflection = DeflectionResult{};
        r.deflection.ok = false;
        r.deflection.message = "The long time deflection is not computed: no bars of the bar "
                               "table fit span(s)" +
                               spanList(barless) + ".";
    }
    if (!r.deflection.ok) {
        r.failures.push_back(r.deflection.message);
    } else if (!r.deflection.exceedingSpans.empty()) {
        r.failures.push_back(
            "The long time deflection exceeds L/" +
            std::to_string(static_cast<long long>(std::lround(r.deflection.divisor))) +
            " in span(s)" + spanList(r.deflection.exceedingSpans) + ".");
    }
    return r;
}

} // namespace orvak::beams
