// Texts of the beam listings: the analysis (".Analy1"), the flexural design (".Analy2"), the
// shear design (".Analy0") and the long time deflection. Lines end with "\n".
#include "beams/beam_listings.h"

#include <algorithm>
#include <cmath>

#include "core/mask_format.h"

namespace orvak::beams {

namespace {

using core::formatUsing;

constexpr double kKgCmPerTm = 100000.0;
constexpr double kKgPerT = 1000.0;
// Column gap of the analysis listing: a text field nine characters wide.
constexpr std::string_view kGap = "\\       \\";

std::string fmt(std::string_view mask, double v) {
    return formatUsing(mask, v);
}

std::string text(std::string_view field, std::string_view value) {
    return formatUsing(field, value);
}

std::string rightIn(std::string s, std::size_t width) {
    return s.size() >= width ? s : std::string(width - s.size(), ' ') + s;
}

std::string leftIn(std::string s, std::size_t width) {
    return s.size() >= width ? s : s + std::string(width - s.size(), ' ');
}

const char* placeName(PointPlace p) {
    switch (p) {
    case PointPlace::Left:
        return "left";
    case PointPlace::Right:
        return "right";
    case PointPlace::Field:
        break;
    }
    return "middle";
}

} // namespace

std::string analysisListing(const BeamAnalysisInput& model, const BeamAnalysisResult& analysis) {
    std::string out = "CONTINUOUS BEAM ANALYSIS\n";
    if (!analysis.ok()) {
        return out + analysis.message + "\n";
    }
    const std::size_t n = model.spans.size();
    const Envelope& env = analysis.envelope;
    out += "Spans" + text(kGap, "") + fmt("#####", static_cast<double>(n)) + "\n";
    out += "Scheme" + text("\\      \\", "") + fmt("#####", model.caseScheme) + "   " +
           std::string(caseSchemeName(model.caseScheme)) + "\n";
    out += "Cases" + text(kGap, "") + fmt("#####", static_cast<double>(analysis.cases.size())) +
           "\n\n";
    out += "SUPPORT MOMENTS, ENVELOPE OF THE CASES (t.m)\n";
    out += "Support      #" + rightIn("M min", 17) + rightIn("M max", 8) + "\n";
    for (std::size_t j = 0; j <= n; ++j) {
        out += text(kGap, "Support") + fmt("#####", static_cast<double>(j + 1)) + text(kGap, "") +
               fmt(" ####.##", env.supportMomentMinKgCm[j] / kKgCmPerTm) +
               fmt(" ####.##", env.supportMomentMaxKgCm[j] / kKgCmPerTm) + "\n";
    }
    out += "\nSPAN EXTREMES (lengths and x in m, moments t.m, shear t)\n";
    out += "Span         #" + rightIn("L", 14) + rightIn("x", 13) + rightIn("M max", 17) +
           rightIn("x", 13) + rightIn("M min", 17) + rightIn("|V| max", 10) + "\n";
    for (std::size_t i = 0; i < n; ++i) {
        out += text(kGap, "Span") + fmt("#####", static_cast<double>(i + 1)) + text(kGap, "") +
               fmt("##.##", model.spans[i].lengthCm / 100.0) + text(kGap, "") +
               fmt("##.#", env.spanMomentMax[i].xCm / 100.0) + text(kGap, "") +
               fmt(" ####.##", env.spanMomentMax[i].value / kKgCmPerTm) + text(kGap, "") +
               fmt("##.#", env.spanMomentMin[i].xCm / 100.0) + text(kGap, "") +
               fmt(" ####.##", env.spanMomentMin[i].value / kKgCmPerTm) +
               fmt("    ####.#", env.spanShearAbsMax[i].value / kKgPerT) + "\n";
    }
    out += "\nENVELOPE AT THE TENTH POINTS (x in m, moments t.m, shears t)\n";
    for (std::size_t i = 0; i < n; ++i) {
        out += "Span" + fmt("#####", static_cast<double>(i + 1)) + "\n";
        out += rightIn("x", 14) + rightIn("M max", 17) + rightIn("M min", 8) +
               rightIn("V max", 10) + rightIn("V min", 10) + "\n";
        for (int k = 0; k <= 10; ++k) {
            const std::size_t s =
                i * kStationsPerSpan + static_cast<std::size_t>(k * (kStationDivisions / 10));
            out += text(kGap, "") + fmt("##.##", model.spans[i].lengthCm * k / 1000.0) +
                   text(kGap, "") + fmt(" ####.##", env.stationMomentMaxKgCm[s] / kKgCmPerTm) +
                   fmt(" ####.##", env.stationMomentMinKgCm[s] / kKgCmPerTm) +
                   fmt("    ####.#", env.stationShearMaxKg[s] / kKgPerT) +
                   fmt("    ####.#", env.stationShearMinKg[s] / kKgPerT) + "\n";
        }
    }
    return out;
}

std::string flexureListing(const BeamDesignInput& input, const BeamDesignResult& result) {
    const FlexureLimits& lim = result.limits;
    std::string out = "FLEXURAL DESIGN\n\n";
    out += "Fc      =" + fmt(" #####", result.materials.fcKgCm2) + "   (kg/cm^2)\n";
    out += "FY      =" + fmt(" #####", result.materials.fyKgCm2) + "   (kg/cm^2)\n";
    out += "phi     =" + fmt(" ##.##", lim.phi) + "\n";
    out += "beta1   =" + fmt(" ##.###", lim.beta1) + "\n";
    out += "rho b   = (0.85 * Fc / FY) * beta1 * 6100 / (6100 + FY) =" +
           fmt(" #.#####", lim.rhoBalanced) + "\n";
    out += "rho max = FacRmax * rho b =" + fmt(" ##.##", lim.facRmax) + " *" +
           fmt(" #.#####", lim.rhoBalanced) + " =" + fmt(" #.#####", lim.rhoMax) + "\n";
    out += "rho min = FacRmin / FY =" + fmt(" ##.##", lim.facRmin) + " /" +
           fmt(" #####", result.materials.fyKgCm2) + " =" + fmt(" #.#####", lim.rhoMin) + "\n";
    out += "Cover to the tension steel     =" + fmt(" ##.##", input.flexure.coverCm) + " (cm)\n";
    out += "Cover to the compression steel =" + fmt(" ##.##", input.flexure.compressionCoverCm) +
           " (cm)\n\n";
    out += "Span Point  Face    Mu (t.m)  d (cm) As (cm2) As' (cm2)     rho  Bars\n";
    out += "---- ------ ------ --------- ------- -------- --------- ------- ----------------\n";
    for (const FlexurePoint& p : result.flexurePoints) {
        std::string row = fmt("####", p.span + 1.0) + " " + leftIn(placeName(p.place), 6) + " " +
                          leftIn(p.hogging ? "top" : "bottom", 6) + " " +
                          fmt("  ####.##", p.flexure.momentTm);
        if (!p.flexure.ok() && p.flexure.status == FlexureStatus::InvalidInput) {
            row += "  ******";
        } else {
            row += fmt(" ####.##", p.flexure.effectiveDepthCm) +
                   fmt(" ####.##", p.flexure.tensionAreaCm2) +
                   fmt("  ####.##", p.flexure.compressionAreaCm2) + fmt(" #.#####", p.flexure.rho) +
                   "  ";
            if (!p.tensionBars.found) {
                row += "******";
            } else {
                row += fmt("##", p.tensionBars.count) + " x " +
                       fmt("##", p.tensionBars.diameterMm) + " mm" +
                       (p.tensionBars.layers > 1 ? fmt(" in # layers", p.tensionBars.layers)
                                                 : std::string());
            }
            if (p.compressionBars.found) {
                row += ", compression" + fmt(" ##", p.compressionBars.count) + " x " +
                       fmt("##", p.compressionBars.diameterMm) + " mm";
            }
            if (p.tensionBars.crackControlGoverns) {
                row += " (crack control)";
            }
            if (p.flexure.minimumGoverns) {
                row += p.flexure.fourThirdsGoverns ? " (4/3 As)" : " (rho min)";
            }
            if (!p.flexure.ok()) {
                row += " ******";
            }
        }
        out += row + "\n";
    }
    for (const FlexurePoint& p : result.flexurePoints) {
        if (p.tensionBars.found && p.tensionBars.crackControlGoverns) {
            out += "Span" + fmt(" ##", p.span + 1.0) + " " + placeName(p.place) + " " +
                   (p.hogging ? "top" : "bottom") +
                   ": more bars for crack control, centre spacing <= 38 * (2855 / fs) - 2.5 * "
                   "cc <= 30 * (2855 / fs) =" +
                   fmt(" ###.#", p.tensionBars.crackSpacingLimitCm) + " (cm), fs = 2/3 FY\n";
        }
    }
    out += "\nMINIMUM DEPTH (cm)\n";
    out += "Span  h (cm)  h min (cm)\n";
    for (std::size_t i = 0; i < result.depthChecks.size(); ++i) {
        const SpanDepthCheck& dc = result.depthChecks[i];
        out += fmt("####", static_cast<double>(i + 1)) + fmt(" ####.##", dc.heightCm) +
               fmt("     ####.##", dc.minimumCm) + (dc.shallow ? "  <" : "") + "\n";
    }
    for (const std::string& m : result.messages) {
        out += m + "\n";
    }
    for (const FlexurePoint& p : result.flexurePoints) {
        if (!p.flexure.ok()) {
            out += "Span" + fmt(" ##", p.span + 1.0) + ": " + p.flexure.message + "\n";
        }
    }
    return out;
}

std::string shearListing(const BeamDesignInput& input, const BeamDesignResult& result) {
    const ShearSettings& s = input.shear;
    const double fyStirrup = result.materials.fyStirrupKgCm2 > 0.0 ? result.materials.fyStirrupKgCm2
                                                                   : result.materials.fyKgCm2;
    std::string out = "SHEAR DESIGN\n\n";
    out += "Fc = " + fmt("####", result.materials.fcKgCm2) + "   FY = " + fmt("####", fyStirrup) +
           "   (kg/cm^2)\n";
    out += "Shear factor =" +
           fmt(" ##.##", s.shearFactor > 0.0 ? s.shearFactor : kShearFactorFallback) +
           "   phi =" + fmt(" ##.##", s.shearFi > 0.0 ? s.shearFi : kShearFiFallback) +
           "   Vs min =" + fmt(" ##.##", s.vsMin > 0.0 ? s.vsMin : kVsMinFallback) + " (kg/cm^2)\n";
    out += "Vc = 0.53 * Sqr(Fc) * b * d, Vs limit = 2.06 * Sqr(Fc) * b * d\n\n";
    out += " #   Vu(t)  Vc(t)  Vs(t)  Stirrup (mm)  Spacing(cm)     Cut (cm)  Span, point\n";
    out += "--- ------ ------ ------ ------------- ------------ ------------- ------------\n";
    int number = 0;
    for (const ShearPoint& p : result.shearPoints) {
        ++number;
        const ShearResult& r = p.shear;
        std::string row = " " + fmt("##", number) + " " + fmt("####.#", p.vuKg / kKgPerT) + " " +
                          fmt("####.#", r.vcKg / kKgPerT) + " ";
        if (r.status == ShearStatus::SectionTooSmall || r.status == ShearStatus::InvalidInput) {
            row += "****** " + rightIn("******", 13) + " " + rightIn("******", 12) + " " +
                   rightIn("******", 13) + " ";
        } else {
            row += fmt("####.#", r.vsKg / kKgPerT) + " " +
                   rightIn(fmt("###", r.diameterMm) + " x" + fmt("##", r.legs) + " legs", 13) +
                   " " + rightIn(fmt("###.#", placedSpacingCm(r.spacingCm)), 12) + " " +
                   rightIn(fmt("####.#", r.cutLengthCm), 13) + " ";
        }
        row += leftIn(fmt("###", p.span + 1.0) + " " + placeName(p.place), 12);
        while (!row.empty() && row.back() == ' ') {
            row.pop_back();
        }
        out += row + "\n";
    }
    out += "\n";
    number = 0;
    for (const ShearPoint& p : result.shearPoints) {
        ++number;
        if (!p.shear.ok()) {
            out += "Point" + fmt(" ##", number) + ": " + p.shear.message + "\n";
        } else if (p.shear.legs == 4) {
            out += "Point" + fmt(" ##", number) + ": inner stirrup cut length" +
                   fmt(" ####.#", p.shear.innerCutLengthCm) + " (cm)\n";
        }
    }
    return out;
}

namespace {

// The value of a formula line, without the mask's leading blanks beyond one.
std::string val(double v, std::string_view mask = "##############.##") {
    std::string s = fmt(mask, v);
    const std::size_t first = s.find_first_not_of(' ');
    return " " + (first == std::string::npos ? s : s.substr(first));
}

void grossLines(std::string& out, const GrossSection& g) {
    if (g.flanged) {
        out += "Bo = B - bw = " + val(g.bo) + "\n";
        out += "cg = (Bo * T ^ 2 + bw * H ^ 2) / (2 * (Bo * T + bw * H))= " + val(g.cg) + "\n";
        out += "Yt = H -cg = " + val(g.yt) + "\n";
        out += "Ig =B * cg ^ 3 / 3 - Bo / 3 * (cg - T) ^ 3 + bw / 3 * (H - cg) ^ 3= " + val(g.ig) +
               "\n";
    } else {
        out += "Ig =(1 / 12) * B * H ^ 3 =" + val(g.ig) + "\n";
        out += "Yt = H / 2= " + val(g.yt) + "\n";
    }
    out += "Mcr = Ig * Fr / Yt = " + val(g.mcrKgCm / kKgCmPerTm, "######.###") + " (t.m)\n";
}

void crackedLines(std::string& out, const CrackedSection& k) {
    out += "B =" + val(k.b) + "  bw =" + val(k.bw) + "  T =" + val(k.t) + "  D =" + val(k.d) +
           "  AST =" + val(k.ast) + "  ASC =" + val(k.asc) + "\n";
    out += "Ac = B * D =" + val(k.ac) + "\n";
    out += "ROW = AST / (B * D)= " + val(k.row, "#.######") + "\n";
    switch (k.formula) {
    case CrackedFormula::CompressionSteel:
        out += "alpha = ASC * (N - 1) / (N * AST)= " + val(k.alpha, "###.####") + "\n";
        out += "c = D * (Sqr(N * ROW * (N * ROW * (1 + alpha) ^ 2 + 2 * (1 + alpha * DSU / D))) - "
               "N * ROW * (1 + alpha))= " +
               val(k.c) + "\n";
        out += "Icr = B * c ^ 3 / 3 + N * AST * (D - c) ^ 2 + (N - 1) * ASC * (c - Cover) ^ 2= " +
               val(k.icr) + "\n";
        break;
    case CrackedFormula::FlangeAxisInWeb:
        out += "mc = B * T ^ 2 / 2= " + val(k.mc) + "\n";
        out += "mt = N * AST * (D - T)= " + val(k.mt) + "\n";
        out += " mc <= mt \n";
        out += "G = (Bo * T + N * AST) / (bw * D) = " + val(k.g, "####.####") + "\n";
        out +=
            "dt = (Bo * T ^ 2 + 2 * N * AST * D) / (bw * D ^ 2)= " + val(k.dt, "####.####") + "\n";
        out += "c = D * (Sqr(G ^ 2 + dt) - G) " + val(k.c) + "\n";
        out += "Icr = B * cc ^ 3 / 3 + N * AST * (D - cc) ^ 2 - Bo / 3 * (cc - T) ^ 3 = " +
               val(k.icr) + "\n";
        break;
    case CrackedFormula::FlangeAxisInFlange:
        out += "mc = B * T ^ 2 / 2= " + val(k.mc) + "\n";
        out += "mt = N * AST * (D - T)= " + val(k.mt) + "\n";
        out += " mc > mt \n";
        [[fallthrough]];
    case CrackedFormula::Rectangle:
        out += "c = D * (Sqr(N * ROW * (N * ROW + 2)) - N * ROW)= " + val(k.c) + "\n";
        out += "Icr = B * cc ^ 3 / 3 + N * AST * (D - cc) ^ 2 = " + val(k.icr) + "\n";
        break;
    }
}

void ieLines(std::string& out, const DeflectionSection& s) {
    out += "IeDL = Icr + (Ig - Icr) * (Mcr / MomDL) ^ 3 = " + val(s.ie.dl) + "\n";
    out += "IeLL = Icr + (Ig - Icr) * (Mcr / MomLL) ^ 3 = " + val(s.ie.ll) + "\n";
    out += "IeSus = Icr + (Ig - Icr) * (Mcr / MomSus) ^ 3 = " + val(s.ie.sus) + "\n";
    out += "IeTot = Icr + (Ig - Icr) * (Mcr / MomTot) ^ 3 = " + val(s.ie.tot) + "\n";
}

void momentRows(std::string& out, const std::vector<DeflectionSection>& rows) {
    out += " #   MomDL    MomLL   MomTot\n";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        out += fmt("###", static_cast<double>(i + 1)) +
               fmt(" ####.###", rows[i].momDlKgCm / kKgCmPerTm) +
               fmt(" ####.###", rows[i].momLlKgCm / kKgCmPerTm) +
               fmt(" ####.###", rows[i].momTotKgCm / kKgCmPerTm) + "\n";
    }
}

} // namespace

std::string deflectionListing(const DeflectionResult& r) {
    std::string out = "LONG TIME DEFLECTION ...\n\n";
    if (!r.ok) {
        return out + r.message + "\n";
    }
    const DeflectionSettings& s = r.settings;
    out += "Required data:\n";
    out += "Fr = 2 * Sqr(Fc)          = " + fmt("####.##", r.fr) + " (kg/cm2)\n";
    out += "Top concrete cover        = " + fmt("####.##", s.topCoverCm) + " (cm)\n";
    out += "Bottom concrete cover     = " + fmt("####.##", s.bottomCoverCm) + " (cm)\n";
    out += "Sustained live load %     = " + fmt("####.##", s.sustainedLivePercent) + " %\n";
    out += "Live load duration        = " + fmt("####.##", s.durationMonths) + " (months)\n";
    out += "Time factor               = " + fmt("####.###", r.tf) + "\n\n";
    out += "Fc  =" + val(r.fcKgCm2) + " (kg/cm2)\n";
    out += "Ec  = 15100 * Sqr(Fc)=" + val(r.ec) + " (kg/cm2)\n";
    out += "Es  =" + val(kSteelModulusKgCm2) + " (kg/cm2)\n";
    out += "N =Es / Ec = " + val(r.n, "####.###") + "\n";
    out += "TF = 0.305 * Log(months) + 0.654 = " + val(r.tf, "####.###") + "\n";
    if (r.tf >= kFinalTimeFactor) {
        out += "TF is held at its final value " + val(kFinalTimeFactor, "#.###").substr(1) +
               " (creep and shrinkage end after about five years)\n";
    }
    out += "Allowed deflection = L/" + val(r.divisor, "#####").substr(1) + "\n\n";

    out += "MAXIMUM SERVICE MOMENT FOR JOINTS\n";
    momentRows(out, r.joints);
    out += "\nMAXIMUM SERVICE MOMENT FOR MEMBERS\n";
    momentRows(out, r.members);

    out += "\nCALCULATE Ig And Mcr for Joints\n";
    for (std::size_t j = 0; j < r.joints.size(); ++j) {
        out += "Joint" + fmt(" ###", j + 1.0) + "\n";
        grossLines(out, r.joints[j].gross);
    }
    out += "\nCALCULATE Ig And Mcr for MEMBERS\n";
    for (std::size_t i = 0; i < r.members.size(); ++i) {
        out += "Member" + fmt(" ###", i + 1.0) + "\n";
        grossLines(out, r.members[i].gross);
    }
    out += "\nCALCULATE Icr And Ie for Joints\n";
    for (std::size_t j = 0; j < r.joints.size(); ++j) {
        out += "Joint" + fmt(" ###", j + 1.0) + "\n";
        crackedLines(out, r.joints[j].cracked);
        ieLines(out, r.joints[j]);
    }
    out += "\nCALCULATE Icr And Ie for MEMBERS\n";
    for (std::size_t i = 0; i < r.members.size(); ++i) {
        out += "Member" + fmt(" ###", i + 1.0) + "\n";
        crackedLines(out, r.members[i].cracked);
        ieLines(out, r.members[i]);
    }
    out += "\nCALCULATE Ie average for MEMBERS\n";
    for (std::size_t i = 0; i < r.deflections.size(); ++i) {
        const InertiaSet& a = r.deflections[i].ieAvg;
        out += "Member" + fmt(" ###", i + 1.0) + "\n";
        if (const int j = r.deflections[i].ieFromJoint; j > 0) {
            // A cantilever: no average, the Ie of the support it springs from.
            const std::string at = " of joint " + std::to_string(j) + " = ";
            out += "IeLLAvg = IeLL" + at + val(a.ll) + "\n";
            out += "IeDLAvg = IeDL" + at + val(a.dl) + "\n";
            out += "IesusAvg = IeSus" + at + val(a.sus) + "\n";
            out += "IeTotAvg = IeTot" + at + val(a.tot) + "\n";
            continue;
        }
        out += "IeLLAvg = 0.7 * IeLL + 0.15 * (IeLL1 + IeLL2) = " + val(a.ll) + "\n";
        out += "IeDLAvg = 0.7 * IeDL + 0.15 * (IeDL1 + IeDL2) = " + val(a.dl) + "\n";
        out += "IesusAvg = 0.7 * IeSus + 0.15 * (IeSus1 + IeSus2) = " + val(a.sus) + "\n";
        out += "IeTotAvg = 0.7 * IeTot + 0.15 * (IeTot1 + IeTot2) = " + val(a.tot) + "\n";
    }
    out += "\nCALCULATE long time deflection for MEMBERS\n";
    for (std::size_t i = 0; i < r.deflections.size(); ++i) {
        const MemberDeflection& m = r.deflections[i];
        out += "Member" + fmt(" ###", i + 1.0) + "\n";
        out += "InitDef = " + val(m.initDefCm, "####.###") + "\n";
        out += "DefDL  = " + val(m.defDlCm, "####.###") + "\n";
        out += "DefLL  = " + val(m.defLlCm, "####.###") + "\n";
        if (m.liveLifts) {
            out += "DefLL is taken as 0: InitDef is less than DefDL, the live load lifts this "
                   "member\n";
        }
        out += "DefSus = " + val(m.defSusCm, "####.###") + "\n";
        out += "LNDA   = TF / (1 + 50 * ASC / Ac) = " + val(m.lnda, "####.###") + "\n";
        out += "DefLt  = DefLL + 2 * DefDL + LNDA * DefSus = " + val(m.defLtCm, "####.###") + "\n";
        out += "L/" + val(r.divisor, "#####").substr(1) + " = " + val(m.allowedCm, "####.###") +
               (m.exceeds ? "   exceeded" : "") + "\n";
    }

    out += "\nRESULTS FOR JOINTS \n";
    out += " #  Igr/10^5 Mcr/10^5 Icr/10^5\n";
    out += "--- -----.-- -----.-- -----.--\n";
    for (std::size_t j = 0; j < r.joints.size(); ++j) {
        const DeflectionSection& js = r.joints[j];
        out += fmt("###", j + 1.0) + fmt(" #####.##", js.gross.ig / 1e5) +
               fmt(" #####.##", js.gross.mcrKgCm / 1e5) + fmt(" #####.##", js.cracked.icr / 1e5) +
               "\n";
    }
    out += "\nRESULTS FOR MEMBERS \n";
    out += " #  InitDef  Igr/10^5 Mcr/10^5 Icr/10^5  DLDef    LLDef   TotDef   \n";
    out += "--- -----.-- -----.-- -----.-- -----.-- -----.-- -----.-- -----.-- -----.--\n";
    for (std::size_t i = 0; i < r.members.size(); ++i) {
        const DeflectionSection& ms = r.members[i];
        const MemberDeflection& m = r.deflections[i];
        out += fmt("###", i + 1.0) + fmt(" #####.##", m.initDefCm) +
               fmt(" #####.##", ms.gross.ig / 1e5) + fmt(" #####.##", ms.gross.mcrKgCm / 1e5) +
               fmt(" #####.##", ms.cracked.icr / 1e5) + fmt(" #####.##", m.defDlCm) +
               fmt(" #####.##", m.defLlCm) + fmt(" #####.##", m.defLtCm) +
               fmt(" #####.##", m.allowedCm) + "\n";
    }
    out += "Note: The deflection is given in (cm)\n";
    out +=
        "The last column is the allowed deflection L/" + val(r.divisor, "#####").substr(1) + "\n";
    if (!r.exceedingSpans.empty()) {
        out += "The long time deflection exceeds the allowed value in span(s)";
        for (std::size_t k = 0; k < r.exceedingSpans.size(); ++k) {
            out += (k == 0 ? " " : ", ") + std::to_string(r.exceedingSpans[k]);
        }
        out += "\n";
    }
    return out;
}

} // namespace orvak::beams
