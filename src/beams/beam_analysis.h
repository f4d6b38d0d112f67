// Elastic analysis of a continuous beam by the direct stiffness method: load cases, moments
// and shears along each span, envelopes over the cases, reactions and service deflections.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "beams/beam_loads.h"
#include "beams/load_cases.h"
#include "beams/span_curve.h"

namespace orvak::beams {

inline constexpr int kMaxSpans = 30;
inline constexpr int kMaxSupports = kMaxSpans + 1;

/// Starting values of the searches for maxima and minima over the cases (10 × 25,000⁵).
inline constexpr double kSearchSentinel = 10.0 * 25000.0 * 25000.0 * 25000.0 * 25000.0 * 25000.0;

/// One span of the beam.
struct BeamSpan {
    double lengthCm = 0.0;   ///< clear distance between the joints, cm, > 0
    double inertiaCm4 = 0.0; ///< moment of inertia of the section, cm⁴, > 0
    SpanLoads loads{};
};

/// One joint of the beam. A joint without restraint is free (the tip of an overhang).
struct BeamSupport {
    bool restrainsDisplacement = false; ///< support code 2
    bool restrainsRotation = false;     ///< second support code 1 on a supported joint (fixed)
};

/// The support of a joint from the two codes of the beam record: code 2 restrains the
/// vertical displacement, and a second code of 1 on such a joint restrains the rotation too.
constexpr BeamSupport supportFromCodes(int supportCode, int secondCode) {
    const bool supported = supportCode == 2;
    return {supported, supported && secondCode == 1};
}

/// Everything the analysis reads. Units: kg and cm.
struct BeamAnalysisInput {
    std::vector<BeamSpan> spans;         ///< 1 to 30 spans, left to right
    std::vector<BeamSupport> supports;   ///< one per joint: spans.size() + 1
    double elasticModulusKgCm2 = 0.0;    ///< Ec of the concrete, > 0
    LoadFactors factors;                 ///< FACDEADL and FACDAYNL
    int caseScheme = kDefaultCaseScheme; ///< 1, 2 or 3 (see buildLoadCases)
};

enum class AnalysisStatus {
    Ok,
    InvalidInput, ///< a value out of range; message says which
    Unstable,     ///< the supports do not hold the beam; message says why
};

/// Moments, shears and reactions of one span in one case.
struct SpanForces {
    double momentLeftKgCm = 0.0;  ///< bending moment at x = 0, sagging positive
    double momentRightKgCm = 0.0; ///< bending moment at x = L
    double shearLeftKg = 0.0;     ///< shear just inside the span at its left end, V = dM/dx
    double shearRightKg = 0.0;    ///< shear just inside the span at its right end
    MomentExtreme maxMoment;      ///< largest moment over the span and where (sagging if > 0)
    MomentExtreme minMoment;      ///< smallest moment over the span and where
    double absMaxShearKg = 0.0;   ///< largest shear magnitude over the span
};

/// The result of one load case (factored or service).
struct CaseResult {
    LoadCase loadCase;
    /// Moment at each joint (n + 1), sagging positive. Where a fixed joint joins two spans
    /// with different end moments, the one of larger magnitude.
    std::vector<double> supportMomentsKgCm;
    std::vector<double> reactionsKg;       ///< upward positive, zero at a free joint (n + 1)
    std::vector<double> displacementsUpCm; ///< vertical displacement of each joint (n + 1)
    std::vector<double> rotations;         ///< counterclockwise rotation of each joint, rad
    std::vector<SpanForces> spans;         ///< n
    std::vector<Station> stations;         ///< kStationsPerSpan per span, span after span

    std::span<const Station> spanStations(int span) const {
        return std::span<const Station>(stations).subspan(
            static_cast<std::size_t>(span) * kStationsPerSpan, kStationsPerSpan);
    }
    /// Tenth point k (0 to 10) of a span: x = k·L/10.
    const Station& tenthPoint(int span, int k) const {
        return stations[static_cast<std::size_t>(span) * kStationsPerSpan +
                        static_cast<std::size_t>(k) * (kStationDivisions / 10)];
    }
};

/// An extreme over the cases: its value, where on the span, and the case (0-based) giving it.
struct EnvelopeValue {
    double value = 0.0;
    double xCm = 0.0;
    int caseIndex = -1;
};

/// Extremes of the factored cases.
struct Envelope {
    std::vector<double> supportMomentMinKgCm;   ///< n + 1
    std::vector<double> supportMomentMaxKgCm;   ///< n + 1
    std::vector<EnvelopeValue> spanMomentMax;   ///< n, kg·cm
    std::vector<EnvelopeValue> spanMomentMin;   ///< n, kg·cm
    std::vector<EnvelopeValue> spanShearAbsMax; ///< n, kg (x not kept)
    /// Per station (laid out as CaseResult::stations): extremes over the cases.
    std::vector<double> stationMomentMaxKgCm;
    std::vector<double> stationMomentMinKgCm;
    std::vector<double> stationShearMaxKg;
    std::vector<double> stationShearMinKg;
};

/// A service-load state (unfactored) with its elastic line.
struct ServiceCase {
    CaseResult forces;
    std::vector<double> stationDeflectionsMm;      ///< downward positive, as stations
    std::vector<DeflectionExtreme> maxDeflections; ///< per span: largest downward deflection
};

/// Service states: dead load, live load on every span, and both, all with factor 1.
struct ServiceAnalysis {
    ServiceCase dead;
    ServiceCase live;
    ServiceCase total;
};

/// The load curves of every span of an analysed beam (they depend on the spans' lengths and
/// on where the loads stand, not on the load values or the sections' inertias), shared by the
/// analyses that repeat the elastic line with other inertias or load values.
using SpanCurves = std::vector<SpanCurve>;

struct BeamAnalysisResult {
    AnalysisStatus status = AnalysisStatus::Ok;
    std::string message;           ///< plain sentence for the user when status is not Ok
    int freeDofCount = 0;          ///< degrees of freedom not restrained by the supports
    std::vector<CaseResult> cases; ///< the factored cases of the scheme, in order
    Envelope envelope;
    ServiceAnalysis service;
    std::shared_ptr<const SpanCurves> spanCurves; ///< empty when the beam was not analysed

    bool ok() const { return status == AnalysisStatus::Ok; }
};

/// The stretch of beam that carries a span from one supported joint to the next: a joint
/// without support inside it (a section change, say) does not end it. Joints are 0-based.
/// An overhang runs from the free outer end to the first supported joint.
struct SupportedRun {
    int firstJoint = 0;
    int lastJoint = 0;
    double lengthCm = 0.0; ///< the spans of the run added up
    bool overhang = false; ///< one end of the run is the beam's free end
};

/// The run of span `span` (0-based). Precondition: at least one joint is supported.
SupportedRun supportedRun(const BeamAnalysisInput& input, int span);

/// Checks the input; an empty string when it can be analysed, else a sentence saying what is
/// wrong.
std::string validateBeamInput(const BeamAnalysisInput& input);

/// Analyses the beam under every case of its scheme and under the service loads. On bad input
/// or an unstable beam the result holds the status and message and no numbers.
BeamAnalysisResult analyzeBeam(const BeamAnalysisInput& input);

/// The analysis of one of its cases alone, as if the scheme held no other: `cases` holds that
/// case, the envelope is its own values (at every station the largest and the smallest are
/// the case's), the service states and the span curves are those of `all`. A design made from
/// it shows what the case asks for by itself. Precondition: all.ok(), caseIndex < cases.size().
BeamAnalysisResult caseAnalysis(const BeamAnalysisResult& all, std::size_t caseIndex);

/// Service states of analyzeServiceLoads, to be or-ed together.
inline constexpr unsigned kDeadState = 1u;
inline constexpr unsigned kLiveState = 2u;
inline constexpr unsigned kTotalState = 4u;
inline constexpr unsigned kAllServiceStates = kDeadState | kLiveState | kTotalState;

/// The service states only (dead, live, dead + live), e.g. to repeat the elastic line with
/// other section inertias; `states` chooses which are worked out (the others stay empty).
/// On failure status and message are set as by analyzeBeam. `curves`, when given, are the
/// span curves of an earlier analysis of a beam with the same spans and the same loads in the
/// same places (values and inertias may differ): they are used instead of building them anew.
BeamAnalysisResult analyzeServiceLoads(const BeamAnalysisInput& input,
                                       unsigned states = kAllServiceStates,
                                       std::shared_ptr<const SpanCurves> curves = {});

} // namespace orvak::beams
