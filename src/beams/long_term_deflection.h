// Long-term deflection of a designed continuous beam: gross and cracked sections, effective
// moments of inertia, immediate deflections from the averaged Ie and the long-term total.
#pragma once

#include <string>
#include <vector>

#include "beams/beam_analysis.h"
#include "beams/code_defaults.h"
#include "beams/section.h"

namespace orvak::beams {

/// Deflection settings as stored.
struct DeflectionSettings {
    double sustainedLivePercent = 0.0; ///< part of the live load that is sustained, %
    double durationMonths = 60.0;      ///< live-load duration; below 1 month counts as 1
    double deflDivisor = 0.0;          ///< `DeflTxt`: allowed deflection L / value (0: 240)
    double topCoverCm = 5.0;           ///< top face to the top steel centroid
    double bottomCoverCm = 5.0;        ///< bottom face to the bottom steel centroid
};

/// The largest time factor: the ACI factor for five years and more.
inline constexpr double kFinalTimeFactor = 2.0;

/// TF = 0.305 ln(months) + 0.654, months taken as at least 1, TF at most kFinalTimeFactor.
double timeFactor(double durationMonths);

/// Gross section of the report: a flanged section with its flange on top (cg measured from
/// the top face), or a rectangle. Mcr = Ig Fr / Yt, kg·cm.
struct GrossSection {
    bool flanged = false;
    double b = 0.0, bw = 0.0, h = 0.0, t = 0.0;
    double bo = 0.0; ///< B - bw
    double cg = 0.0; ///< depth of the centroid below the top face
    double yt = 0.0;
    double ig = 0.0;
    double mcrKgCm = 0.0;
};
GrossSection grossSection(const SectionGeometry& section, double frKgCm2);

enum class CrackedFormula { Rectangle, FlangeAxisInWeb, FlangeAxisInFlange, CompressionSteel };

/// Cracked transformed section with tension steel ast at depth dCm and compression steel asc
/// at coverCm from the compressed face; n = Es / Ec. flangeCompressed: the flange lies on the
/// compressed face.
struct CrackedSection {
    CrackedFormula formula = CrackedFormula::Rectangle;
    double b = 0.0, bw = 0.0, t = 0.0, d = 0.0, n = 0.0;
    double ast = 0.0, asc = 0.0, cover = 0.0;
    double bo = 0.0, ac = 0.0, row = 0.0;
    double mc = 0.0, mt = 0.0, g = 0.0, dt = 0.0, alpha = 0.0;
    double c = 0.0;
    double icr = 0.0;
};
CrackedSection crackedSection(const SectionGeometry& section, bool flangeCompressed, double dCm,
                              double ast, double asc, double coverCm, double n);

/// Ie = Icr + (Ig - Icr)(Mcr / Ma)³, Ig when the section does not crack (Ma <= Mcr, Ma = 0)
/// and never above Ig.
double effectiveInertia(double ig, double icr, double mcrKgCm, double maKgCm);

/// Ie of the four service states.
struct InertiaSet {
    double dl = 0.0, ll = 0.0, sus = 0.0, tot = 0.0;
};

/// One joint or one member (span middle) of the report.
struct DeflectionSection {
    double momDlKgCm = 0.0, momLlKgCm = 0.0, momSusKgCm = 0.0, momTotKgCm = 0.0;
    GrossSection gross;
    CrackedSection cracked;
    InertiaSet ie;
};

struct MemberDeflection {
    InertiaSet ieAvg;
    /// 0 for a span between supports (ieAvg is the average); for a cantilever, the joint
    /// (1-based) whose Ie it takes.
    int ieFromJoint = 0;
    double initDefCm = 0.0; ///< immediate deflection under dead + live
    double defDlCm = 0.0;
    double defLlCm = 0.0; ///< immediate, Δ(D+L) - ΔD, never below 0 (see liveLifts)
    /// Δ(D+L) came out below ΔD: the live load lifts the member (live load on a neighbour or an
    /// overhang, or a tip that rises), and DefLL is taken as 0 rather than letting an upward
    /// live deflection reduce the long-term one.
    bool liveLifts = false;
    double defSusCm = 0.0; ///< immediate under dead + the sustained live part
    double lnda = 0.0;
    double defLtCm = 0.0;   ///< DefLL + 2 DefDL + LNDA DefSus
    double allowedCm = 0.0; ///< L / divisor
    bool exceeds = false;
};

/// What the computation needs beyond the settings. Areas per joint (n + 1) and per member
/// (n): the provided tension steel (top at joints, bottom at members) and the compression
/// steel of the same point (0 when none).
struct DeflectionInput {
    BeamAnalysisInput model; ///< the beam with its loads; inertias are replaced
    ServiceAnalysis service; ///< the service states of the analysis of model
    /// The span curves of that analysis, reused by the elastic lines with the effective
    /// inertias (empty: built anew).
    std::shared_ptr<const SpanCurves> spanCurves;
    std::vector<SectionGeometry> sections; ///< per span
    double fcKgCm2 = 0.0;
    std::vector<double> jointAst, jointAsc, memberAst, memberAsc;
    /// Bottom steel at the joints and the top bars that work with it (n + 1; may be empty):
    /// a joint that sags under the service loads (one without support inside a run) cracks
    /// at the bottom.
    std::vector<double> jointBottomAst, jointBottomAsc;
    DeflectionSettings settings;
};

struct DeflectionResult {
    bool ok = true;
    std::string message;
    double fcKgCm2 = 0.0, ec = 0.0, fr = 0.0, n = 0.0, tf = 0.0, divisor = 0.0;
    DeflectionSettings settings;
    std::vector<DeflectionSection> joints;
    std::vector<DeflectionSection> members;
    std::vector<MemberDeflection> deflections;
    std::vector<double> spanLengthsCm; ///< of each member's supported run (see SupportedRun)
    std::vector<int> exceedingSpans;   ///< 1-based
};

DeflectionResult computeLongTermDeflection(const DeflectionInput& input);

} // namespace orvak::beams
