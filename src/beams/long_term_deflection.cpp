// Long-term deflection of a designed continuous beam: gross and cracked sections, effective
// moments of inertia, immediate deflections from the averaged Ie and the long-term total.
#include "beams/long_term_deflection.h"

#include <algorithm>
#include <cmath>

#include "beams/flexure.h"
#include "beams/section.h"
#include "core/concrete.h"
#include "core/settings_fields.h"
#include "core/tolerances.h"

namespace orvak::beams {

double timeFactor(double durationMonths) {
    // ln of less than one month would turn the factor below its one-month value (and ln 0
    // has none): the shortest duration counted is one month.
    const double months = std::isfinite(durationMonths) ? std::max(durationMonths, 1.0) : 1.0;
    // Creep and shrinkage level off: the ACI time-dependent factor ends at 2.0 (five years
    // and more), which the logarithm would pass at about 83 months.
    return std::min(0.305 * std::log(months) + 0.654, kFinalTimeFactor);
}

GrossSection grossSection(const SectionGeometry& section, double frKgCm2) {
    GrossSection g;
    g.flanged = section.flanged() && section.flangeWidthCm > section.webWidthCm &&
                section.flangeThicknessCm > 0.0;
    g.bw = section.webWidthCm;
    g.b = g.flanged ? section.flangeWidthCm : g.bw;
    g.h = section.heightCm;
    g.t = g.flanged ? std::min(section.flangeThicknessCm, g.h) : 0.0;
    if (g.flanged) {
        // Measured from the flange face; the inertia is the same whichever face it is on.
        g.bo = g.b - g.bw;
        g.cg = (g.bo * g.t * g.t + g.bw * g.h * g.h) / (2.0 * (g.bo * g.t + g.bw * g.h));
        g.yt = g.h - g.cg;
        g.ig = g.b * std::pow(g.cg, 3) / 3.0 - g.bo / 3.0 * std::pow(g.cg - g.t, 3) +
               g.bw / 3.0 * std::pow(g.h - g.cg, 3);
    } else {
        g.ig = g.b * std::pow(g.h, 3) / 12.0;
        g.yt = g.h / 2.0;
        g.cg = g.h / 2.0;
    }
    g.mcrKgCm = g.yt > 0.0 ? g.ig * frKgCm2 / g.yt : 0.0;
    return g;
}

CrackedSection crackedSection(const SectionGeometry& section, bool flangeCompressed, double dCm,
                              double ast, double asc, double coverCm, double n) {
    CrackedSection k;
    const bool flanged = flangeCompressed && section.flangeWidthCm > section.webWidthCm &&
                         section.flangeThicknessCm > 0.0;
    k.bw = section.webWidthCm;
    k.b = flanged ? section.flangeWidthCm : k.bw;
    k.t = flanged ? section.flangeThicknessCm : 0.0;
    k.bo = k.b - k.bw;
    k.d = dCm;
    k.n = n;
    k.ast = std::max(ast, 0.0);
    k.asc = std::max(asc, 0.0);
    k.cover = coverCm;
    k.ac = k.b * k.d;
    k.row = k.ac > 0.0 ? k.ast / k.ac : 0.0;
    const double nr = n * k.row;
    if (k.ast <= 0.0 || k.d <= 0.0) {
        // Nothing in tension: no cracked section to speak of.
        k.formula = CrackedFormula::Rectangle;
        return k;
    }
    if (k.asc > 0.0) {
        k.formula = CrackedFormula::CompressionSteel;
        k.alpha = k.asc * (n - 1.0) / (n * k.ast);
        const double a1 = 1.0 + k.alpha;
        k.c = k.d *
              (std::sqrt(nr * (nr * a1 * a1 + 2.0 * (1.0 + k.alpha * coverCm / k.d))) - nr * a1);
        k.icr = k.b * std::pow(k.c, 3) / 3.0 + n * k.ast * std::pow(k.d - k.c, 2) +
                (n - 1.0) * k.asc * std::pow(k.c - coverCm, 2);
        return k;
    }
    if (flanged) {
        k.mc = k.b * k.t * k.t / 2.0;
        k.mt = n * k.ast * (k.d - k.t);
        if (k.mc <= k.mt) {
            k.formula = CrackedFormula::FlangeAxisInWeb;
            k.g = (k.bo * k.t + n * k.ast) / (k.bw * k.d);
            k.dt = (k.bo * k.t * k.t + 2.0 * n * k.ast * k.d) / (k.bw * k.d * k.d);
            k.c = k.d * (std::sqrt(k.g * k.g + k.dt) - k.g);
            k.icr = k.b * std::pow(k.c, 3) / 3.0 + n * k.ast * std::pow(k.d - k.c, 2) -
                    k.bo / 3.0 * std::pow(k.c - k.t, 3);
            return k;
        }
        k.formula = CrackedFormula::FlangeAxisInFlange;
    } else {
        k.formula = CrackedFormula::Rectangle;
    }
    k.c = k.d * (std::sqrt(nr * (nr + 2.0)) - nr);
    k.icr = k.b * std::pow(k.c, 3) / 3.0 + n * k.ast * std::pow(k.d - k.c, 2);
    return k;
}

double effectiveInertia(double ig, double icr, double mcrKgCm, double maKgCm) {
    const double ma = std::abs(maKgCm);
    if (!(ma > mcrKgCm) || !(ma > 0.0)) {
        return ig;
    }
    const double ratio = mcrKgCm / ma;
    return std::min(icr + (ig - icr) * ratio * ratio * ratio, ig);
}

namespace {

InertiaSet inertias(const DeflectionSection& s) {
    const double ig = s.gross.ig;
    const double icr = s.cracked.icr;
    const double mcr = s.gross.mcrKgCm;
    return {
        effectiveInertia(ig, icr, mcr, s.momDlKgCm), effectiveInertia(ig, icr, mcr, s.momLlKgCm),
        effectiveInertia(ig, icr, mcr, s.momSusKgCm), effectiveInertia(ig, icr, mcr, s.momTotKgCm)};
}

double at(const std::vector<double>& v, std::size_t i) {
    return i < v.size() && std::isfinite(v[i]) ? v[i] : 0.0;
}

} // namespace

DeflectionResult computeLongTermDeflection(const DeflectionInput& input) {
    DeflectionResult r;
    r.settings = input.settings;
    const std::size_t n = input.model.spans.size();
    const ServiceAnalysis& service = input.service;
    if (n == 0 || input.sections.size() != n ||
        service.dead.forces.supportMomentsKgCm.size() != n + 1 ||
        service.live.forces.supportMomentsKgCm.size() != n + 1 ||
        service.total.forces.supportMomentsKgCm.size() != n + 1 ||
        service.dead.forces.spans.size() != n || service.live.forces.spans.size() != n ||
        service.total.forces.spans.size() != n || !(input.fcKgCm2 > 0.0)) {
        r.ok = false;
        r.message = "The long time deflection needs an analysed beam with a section per span.";
        return r;
    }
    for (const SectionGeometry& sec : input.sections) {
        if (!(sec.webWidthCm > 0.0) || !(sec.heightCm > 0.0) || !std::isfinite(sec.heightCm) ||
            !(sec.heightCm - input.settings.topCoverCm > 0.0) ||
            !(sec.heightCm - input.settings.bottomCoverCm > 0.0)) {
            r.ok = false;
            r.message = "A span's section is too small for its covers: no deflection computed.";
            return r;
        }
    }
    r.fcKgCm2 = input.fcKgCm2;
    r.ec = core::concreteModulus(input.fcKgCm2);
    r.fr = 2.0 * std::sqrt(input.fcKgCm2);
    r.n = kSteelModulusKgCm2 / r.ec;
    r.tf = timeFactor(input.settings.durationMonths);
    r.divisor = core::orDefault(input.settings.deflDivisor, kDeflDivisorFallback);
    const double sus = std::clamp(input.settings.sustainedLivePercent, 0.0, 100.0) / 100.0;

    // A joint sags when its service moment is positive beyond the rounding of an exact zero
    // (the free tip of an overhang, a pinned end).
    double momentScale = 0.0;
    for (const double m : service.total.forces.supportMomentsKgCm) {
        momentScale = std::max(momentScale, std::abs(m));
    }
    for (const SpanForces& f : service.total.forces.spans) {
        momentScale = std::max(
            {momentScale, std::abs(f.maxMoment.momentKgCm), std::abs(f.minMoment.momentKgCm)});
    }
    for (std::size_t j = 0; j <= n; ++j) {
        // An inner joint between two different sections takes the one of smaller gross
        // inertia: the stiffer one would overstate the Ie that both members average in.
        const SectionGeometry& left = input.sections[j == 0 ? 0 : j - 1];
        const SectionGeometry& right = input.sections[j == n ? n - 1 : j];
        const SectionGeometry& sec = grossInertiaCm4(right) < grossInertiaCm4(left) ? right : left;
        DeflectionSection s;
        s.momDlKgCm = std::abs(service.dead.forces.supportMomentsKgCm[j]);
        s.momLlKgCm = std::abs(service.live.forces.supportMomentsKgCm[j]);
        s.momSusKgCm = s.momDlKgCm + sus * s.momLlKgCm;
        s.momTotKgCm = s.momDlKgCm + s.momLlKgCm;
        s.gross = grossSection(sec, r.fr);
        const double joint = service.total.forces.supportMomentsKgCm[j];
        if (joint > 0.0 && !core::negligible(joint, momentScale)) {
            // A joint that sags (no support under it): the bottom steel in tension, the top
            // face compressed, as in a member.
            s.cracked =
                crackedSection(sec, sec.flangeOnTop, sec.heightCm - input.settings.bottomCoverCm,
                               at(input.jointBottomAst, j), at(input.jointBottomAsc, j),
                               input.settings.topCoverCm, r.n);
        } else {
            // Hogging: the top steel in tension, the bottom face compressed.
            s.cracked = crackedSection(
                sec, sec.flangeAtBottom, sec.heightCm - input.settings.topCoverCm,
                at(input.jointAst, j), at(input.jointAsc, j), input.settings.bottomCoverCm, r.n);
        }
        s.ie = inertias(s);
        r.joints.push_back(s);
    }
    for (std::size_t i = 0; i < n; ++i) {
        const SectionGeometry& sec = input.sections[i];
        DeflectionSection s;
        s.momDlKgCm = std::max(service.dead.forces.spans[i].maxMoment.momentKgCm, 0.0);
        s.momLlKgCm = std::max(service.live.forces.spans[i].maxMoment.momentKgCm, 0.0);
        s.momSusKgCm = s.momDlKgCm + sus * s.momLlKgCm;
        s.momTotKgCm = s.momDlKgCm + s.momLlKgCm;
        s.gross = grossSection(sec, r.fr);
        s.cracked = crackedSection(
            sec, sec.flangeOnTop, sec.heightCm - input.settings.bottomCoverCm,
            at(input.memberAst, i), at(input.memberAsc, i), input.settings.topCoverCm, r.n);
        s.ie = inertias(s);
        r.members.push_back(s);
        // The allowed deflection is a share of the span between the supports that hold the
        // member, not of a piece between two joints.
        r.spanLengthsCm.push_back(supportedRun(input.model, static_cast<int>(i)).lengthCm);
    }

    // Averages: 0.7 of the middle and 0.15 of each end; a cantilever takes its support's Ie.
    std::vector<InertiaSet> avg(n);
    std::vector<int> ieFromJoint(n, 0);
    for (std::size_t i = 0; i < n; ++i) {
        const InertiaSet& m = r.members[i].ie;
        const InertiaSet& a = r.joints[i].ie;
        const InertiaSet& b = r.joints[i + 1].ie;
        // An overhang takes the Ie of the support it springs from; a joint without support
        // inside a run is averaged like any other.
        const SupportedRun run = supportedRun(input.model, static_cast<int>(i));
        const bool freeLeft = run.overhang && run.firstJoint == 0 &&
                              !input.model.supports.front().restrainsDisplacement;
        const std::size_t root =
            static_cast<std::size_t>(freeLeft ? run.lastJoint : run.firstJoint);
        auto mix = [&](double InertiaSet::*f) {
            if (run.overhang) {
                return r.joints[root].ie.*f;
            }
            return 0.7 * m.*f + 0.15 * (a.*f + b.*f);
        };
        avg[i] = {mix(&InertiaSet::dl), mix(&InertiaSet::ll), mix(&InertiaSet::sus),
                  mix(&InertiaSet::tot)};
        ieFromJoint[i] = run.overhang ? static_cast<int>(root) + 1 : 0;
    }

    // Immediate deflections: the elastic line of the beam again, each span with the averaged
    // Ie of the state.
    // The sustained state is run as a dead load of its own, dead + the sustained share of
    // live, so that its largest deflection is found as exactly as the others.
    auto rerun = [&](double InertiaSet::*f, double liveShareAsDead, unsigned state) {
        BeamAnalysisInput model = input.model;
        model.elasticModulusKgCm2 = r.ec;
        for (std::size_t i = 0; i < n; ++i) {
            model.spans[i].inertiaCm4 = avg[i].*f;
            if (liveShareAsDead > 0.0) {
                for (SpanLoad& load : model.spans[i].loads) {
                    load.deadValue += liveShareAsDead * load.liveValue;
                }
            }
        }
        return analyzeServiceLoads(model, state, input.spanCurves);
    };
    const BeamAnalysisResult runDl = rerun(&InertiaSet::dl, 0.0, kDeadState);
    const BeamAnalysisResult runTot = rerun(&InertiaSet::tot, 0.0, kTotalState);
    const BeamAnalysisResult runSus = rerun(&InertiaSet::sus, sus, kDeadState);
    if (!runDl.ok() || !runTot.ok() || !runSus.ok()) {
        r.ok = false;
        r.message = "The deflections could not be computed: " + (!runDl.ok()    ? runDl.message
                                                                 : !runTot.ok() ? runTot.message
                                                                                : runSus.message);
        r.deflections.assign(n, MemberDeflection{});
        return r;
    }
    for (std::size_t i = 0; i < n; ++i) {
        MemberDeflection m;
        m.ieAvg = avg[i];
        m.defDlCm = runDl.service.dead.maxDeflections[i].deflectionMm / 10.0;
        m.initDefCm = runTot.service.total.maxDeflections[i].deflectionMm / 10.0;
        // Both largest deflections are downward or zero, and the total state is the softer
        // one under the larger load: where its deflection still comes out smaller, the live
        // load lifts the member, and no live deflection is counted.
        m.defLlCm = m.initDefCm - m.defDlCm;
        if (m.defLlCm < 0.0 && !core::negligible(m.defLlCm, m.defDlCm)) {
            m.liveLifts = true;
        }
        m.defLlCm = std::max(m.defLlCm, 0.0);
        m.ieFromJoint = ieFromJoint[i];
        m.defSusCm = runSus.service.dead.maxDeflections[i].deflectionMm / 10.0;
        const double ac = r.members[i].cracked.ac;
        m.lnda = r.tf / (1.0 + (ac > 0.0 ? 50.0 * r.members[i].cracked.asc / ac : 0.0));
        m.defLtCm = m.defLlCm + 2.0 * m.defDlCm + m.lnda * m.defSusCm;
        m.allowedCm = r.spanLengthsCm[i] / r.divisor;
        m.exceeds = m.defLtCm > m.allowedCm;
        if (m.exceeds) {
            r.exceedingSpans.push_back(static_cast<int>(i) + 1);
        }
        r.deflections.push_back(m);
    }
    return r;
}

} // namespace orvak::beams
