// Sheets of the beam listings: the analysis (".Analy1"), the flexural design (".Analy2"), the
// shear design (".Analy0") and the long time deflection (".Analy3").
#include "beams/beam_listings.h"

#include <algorithm>
#include <cmath>

#include "core/mask_format.h"
#include "core/settings_fields.h"
#include "core/sheet.h"

namespace orvak::beams {

namespace {

using core::formatUsing;
using core::Sheet;
constexpr Sheet::Value kCompact = Sheet::Value::Compact;
// The mask of a formula's value on the deflection sheet, printed compact.
constexpr std::string_view kValueMask = "##############.##";

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

Sheet analysisListing(const BeamAnalysisInput& model, const BeamAnalysisResult& analysis) {
    Sheet out;
    out.line("CONTINUOUS BEAM ANALYSIS");
    if (!analysis.ok()) {
        return out.line(analysis.message);
    }
    const std::size_t n = model.spans.size();
    const Envelope& env = analysis.envelope;
    out.line("Spans" + text(kGap, "") + fmt("#####", static_cast<double>(n)));
    out.line("Scheme" + text("\\      \\", "") + fmt("#####", model.caseScheme) + "   " +
             std::string(caseSchemeName(model.caseScheme)));
    out.line("Cases" + text(kGap, "") + fmt("#####", static_cast<double>(analysis.cases.size())));
    out.line();
    out.line("SUPPORT MOMENTS, ENVELOPE OF THE CASES (t.m)");
    out.line("Support      #" + rightIn("M min", 17) + rightIn("M max", 8));
    for (std::size_t j = 0; j <= n; ++j) {
        out.line(text(kGap, "Support") + fmt("#####", static_cast<double>(j + 1)) + text(kGap, "") +
                 fmt(" ####.##", env.supportMomentMinKgCm[j] / kKgCmPerTm) +
                 fmt(" ####.##", env.supportMomentMaxKgCm[j] / kKgCmPerTm));
    }
    out.line();
    out.line("SPAN EXTREMES (lengths and x in m, moments t.m, shear t)");
    out.line("Span         #" + rightIn("L", 14) + rightIn("x", 13) + rightIn("M max", 17) +
             rightIn("x", 13) + rightIn("M min", 17) + rightIn("|V| max", 10));
    for (std::size_t i = 0; i < n; ++i) {
        out.line(text(kGap, "Span") + fmt("#####", static_cast<double>(i + 1)) + text(kGap, "") +
                 fmt("##.##", model.spans[i].lengthCm / 100.0) + text(kGap, "") +
                 fmt("##.#", env.spanMomentMax[i].xCm / 100.0) + text(kGap, "") +
                 fmt(" ####.##", env.spanMomentMax[i].value / kKgCmPerTm) + text(kGap, "") +
                 fmt("##.#", env.spanMomentMin[i].xCm / 100.0) + text(kGap, "") +
                 fmt(" ####.##", env.spanMomentMin[i].value / kKgCmPerTm) +
                 fmt("    ####.#", env.spanShearAbsMax[i].value / kKgPerT));
    }
    out.line();
    out.line("ENVELOPE AT THE TENTH POINTS (x in m, moments t.m, shears t)");
    for (std::size_t i = 0; i < n; ++i) {
        out.line("Span" + fmt("#####", static_cast<double>(i + 1)));
        out.line(rightIn("x", 14) + rightIn("M max", 17) + rightIn("M min", 8) +
                 rightIn("V max", 10) + rightIn("V min", 10));
        for (int k = 0; k <= 10; ++k) {
            const std::size_t s =
                i * kStationsPerSpan + static_cast<std::size_t>(k * (kStationDivisions / 10));
            out.line(text(kGap, "") + fmt("##.##", model.spans[i].lengthCm * k / 1000.0) +
                     text(kGap, "") + fmt(" ####.##", env.stationMomentMaxKgCm[s] / kKgCmPerTm) +
                     fmt(" ####.##", env.stationMomentMinKgCm[s] / kKgCmPerTm) +
                     fmt("    ####.#", env.stationShearMaxKg[s] / kKgPerT) +
                     fmt("    ####.#", env.stationShearMinKg[s] / kKgPerT));
        }
    }
    return out;
}

Sheet flexureListing(const BeamDesignInput& input, const BeamDesignResult& result) {
    const FlexureLimits& lim = result.limits;
    Sheet out;
    out.line("FLEXURAL DESIGN").line();
    out.formula("Fc      =", " #####", result.materials.fcKgCm2, "   (kg/cm^2)");
    out.formula("FY      =", " #####", result.materials.fyKgCm2, "   (kg/cm^2)");
    out.formula("phi     =", " ##.##", lim.phi);
    out.formula("beta1   =", " ##.###", lim.beta1);
    out.formula("rho b   = (0.85 * Fc / FY) * beta1 * 6100 / (6100 + FY) =", " #.#####",
                lim.rhoBalanced);
    out.text("rho max = FacRmax * rho b =").value(" ##.##", lim.facRmax).text(" *");
    out.formula("", " #.#####", lim.rhoBalanced, " =" + fmt(" #.#####", lim.rhoMax));
    out.text("rho min = FacRmin / FY =").value(" ##.##", lim.facRmin).text(" /");
    out.formula("", " #####", result.materials.fyKgCm2, " =" + fmt(" #.#####", lim.rhoMin));
    out.formula("Cover to the tension steel     =", " ##.##", input.flexure.coverCm, " (cm)");
    out.formula("Cover to the compression steel =", " ##.##", input.flexure.compressionCoverCm,
                " (cm)");
    out.line();
    out.line("Span Point  Face    Mu (t.m)  d (cm) As (cm2) As' (cm2)     rho  Bars");
    out.line("---- ------ ------ --------- ------- -------- --------- ------- ----------------");
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
        out.line(row);
    }
    for (const FlexurePoint& p : result.flexurePoints) {
        if (p.tensionBars.found && p.tensionBars.crackControlGoverns) {
            out.text("Span" + fmt(" ##", p.span + 1.0) + " " + placeName(p.place) + " " +
                     (p.hogging ? "top" : "bottom") + ": more bars for crack control, ");
            out.formula("centre spacing <= 38 * (2855 / fs) - 2.5 * cc <= 30 * (2855 / fs) =",
                        " ###.#", p.tensionBars.crackSpacingLimitCm, " (cm), fs = 2/3 FY");
        }
    }
    out.line();
    out.line("MINIMUM DEPTH (cm)");
    out.line("Span  h (cm)  h min (cm)");
    for (std::size_t i = 0; i < result.depthChecks.size(); ++i) {
        const SpanDepthCheck& dc = result.depthChecks[i];
        out.line(fmt("####", static_cast<double>(i + 1)) + fmt(" ####.##", dc.heightCm) +
                 fmt("     ####.##", dc.minimumCm) + (dc.shallow ? "  <" : ""));
    }
    for (const std::string& m : result.messages) {
        out.line(m);
    }
    for (const FlexurePoint& p : result.flexurePoints) {
        if (!p.flexure.ok()) {
            out.line("Span" + fmt(" ##", p.span + 1.0) + ": " + p.flexure.message);
        }
    }
    return out;
}

Sheet shearListing(const BeamDesignInput& input, const BeamDesignResult& result) {
    const ShearSettings& s = input.shear;
    const double fyStirrup =
        core::orDefault(result.materials.fyStirrupKgCm2, result.materials.fyKgCm2);
    Sheet out;
    out.line("SHEAR DESIGN").line();
    out.text("Fc = ").value("####", result.materials.fcKgCm2);
    out.formula("   FY = ", "####", fyStirrup, "   (kg/cm^2)");
    out.text("Shear factor =")
        .value(" ##.##", core::orDefault(s.shearFactor, kShearFactorFallback));
    out.text("   phi =").value(" ##.##", core::orDefault(s.shearFi, kShearFiFallback));
    out.formula("   Vs min =", " ##.##", core::orDefault(s.vsMin, kVsMinFallback), " (kg/cm^2)");
    out.line("Vc = 0.53 * Sqr(Fc) * b * d, Vs limit = 2.06 * Sqr(Fc) * b * d").line();
    out.line(" #   Vu(t)  Vc(t)  Vs(t)  Stirrup (mm)  Spacing(cm)     Cut (cm)  Span, point");
    out.line("--- ------ ------ ------ ------------- ------------ ------------- ------------");
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
        out.line(row);
    }
    out.line();
    number = 0;
    for (const ShearPoint& p : result.shearPoints) {
        ++number;
        if (!p.shear.ok()) {
            out.line("Point" + fmt(" ##", number) + ": " + p.shear.message);
        } else if (p.shear.legs == 4) {
            out.formula("Point" + fmt(" ##", number) + ": inner stirrup cut length", " ####.#",
                        p.shear.innerCutLengthCm, " (cm)");
        }
    }
    return out;
}

namespace {

// The value of a formula line, without the mask's leading blanks beyond one.
std::string val(double v, std::string_view mask = kValueMask) {
    return core::compactValue(mask, v);
}

void grossLines(Sheet& out, const GrossSection& g) {
    if (g.flanged) {
        out.formula("Bo = B - bw = ", kValueMask, g.bo, {}, kCompact);
        out.formula("cg = (Bo * T ^ 2 + bw * H ^ 2) / (2 * (Bo * T + bw * H))= ", kValueMask, g.cg,
                    {}, kCompact);
        out.formula("Yt = H -cg = ", kValueMask, g.yt, {}, kCompact);
        out.formula("Ig =B * cg ^ 3 / 3 - Bo / 3 * (cg - T) ^ 3 + bw / 3 * (H - cg) ^ 3= ",
                    kValueMask, g.ig, {}, kCompact);
    } else {
        out.formula("Ig =(1 / 12) * B * H ^ 3 =", kValueMask, g.ig, {}, kCompact);
        out.formula("Yt = H / 2= ", kValueMask, g.yt, {}, kCompact);
    }
    out.formula("Mcr = Ig * Fr / Yt = ", "######.###", g.mcrKgCm / kKgCmPerTm, " (t.m)", kCompact);
}

void crackedLines(Sheet& out, const CrackedSection& k) {
    out.line("B =" + val(k.b) + "  bw =" + val(k.bw) + "  T =" + val(k.t) + "  D =" + val(k.d) +
             "  AST =" + val(k.ast) + "  ASC =" + val(k.asc));
    out.formula("Ac = B * D =", kValueMask, k.ac, {}, kCompact);
    out.formula("ROW = AST / (B * D)= ", "#.######", k.row, {}, kCompact);
    switch (k.formula) {
    case CrackedFormula::CompressionSteel:
        out.formula("alpha = ASC * (N - 1) / (N * AST)= ", "###.####", k.alpha, {}, kCompact);
        out.formula("c = D * (Sqr(N * ROW * (N * ROW * (1 + alpha) ^ 2 + 2 * (1 + alpha * DSU / "
                    "D))) - N * ROW * (1 + alpha))= ",
                    kValueMask, k.c, {}, kCompact);
        out.formula("Icr = B * c ^ 3 / 3 + N * AST * (D - c) ^ 2 + (N - 1) * ASC * (c - Cover) ^ "
                    "2= ",
                    kValueMask, k.icr, {}, kCompact);
        break;
    case CrackedFormula::FlangeAxisInWeb:
        out.formula("mc = B * T ^ 2 / 2= ", kValueMask, k.mc, {}, kCompact);
        out.formula("mt = N * AST * (D - T)= ", kValueMask, k.mt, {}, kCompact);
        out.line(" mc <= mt ");
        out.formula("G = (Bo * T + N * AST) / (bw * D) = ", "####.####", k.g, {}, kCompact);
        out.formula("dt = (Bo * T ^ 2 + 2 * N * AST * D) / (bw * D ^ 2)= ", "####.####", k.dt, {},
                    kCompact);
        out.formula("c = D * (Sqr(G ^ 2 + dt) - G) ", kValueMask, k.c, {}, kCompact);
        out.formula("Icr = B * cc ^ 3 / 3 + N * AST * (D - cc) ^ 2 - Bo / 3 * (cc - T) ^ 3 = ",
                    kValueMask, k.icr, {}, kCompact);
        break;
    case CrackedFormula::FlangeAxisInFlange:
        out.formula("mc = B * T ^ 2 / 2= ", kValueMask, k.mc, {}, kCompact);
        out.formula("mt = N * AST * (D - T)= ", kValueMask, k.mt, {}, kCompact);
        out.line(" mc > mt ");
        [[fallthrough]];
    case CrackedFormula::Rectangle:
        out.formula("c = D * (Sqr(N * ROW * (N * ROW + 2)) - N * ROW)= ", kValueMask, k.c, {},
                    kCompact);
        out.formula("Icr = B * cc ^ 3 / 3 + N * AST * (D - cc) ^ 2 = ", kValueMask, k.icr, {},
                    kCompact);
        break;
    }
}

void ieLines(Sheet& out, const DeflectionSection& s) {
    out.formula("IeDL = Icr + (Ig - Icr) * (Mcr / MomDL) ^ 3 = ", kValueMask, s.ie.dl, {},
                kCompact);
    out.formula("IeLL = Icr + (Ig - Icr) * (Mcr / MomLL) ^ 3 = ", kValueMask, s.ie.ll, {},
                kCompact);
    out.formula("IeSus = Icr + (Ig - Icr) * (Mcr / MomSus) ^ 3 = ", kValueMask, s.ie.sus, {},
                kCompact);
    out.formula("IeTot = Icr + (Ig - Icr) * (Mcr / MomTot) ^ 3 = ", kValueMask, s.ie.tot, {},
                kCompact);
}

void momentRows(Sheet& out, const std::vector<DeflectionSection>& rows) {
    out.line(" #   MomDL    MomLL   MomTot");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        out.row("### ####.### ####.### ####.###",
                {static_cast<double>(i + 1), rows[i].momDlKgCm / kKgCmPerTm,
                 rows[i].momLlKgCm / kKgCmPerTm, rows[i].momTotKgCm / kKgCmPerTm});
    }
}

} // namespace

Sheet deflectionListing(const DeflectionResult& r) {
    Sheet out;
    out.line("LONG TIME DEFLECTION ...").line();
    if (!r.ok) {
        return out.line(r.message);
    }
    const DeflectionSettings& s = r.settings;
    const std::string divisor = val(r.divisor, "#####").substr(1);
    out.line("Required data:");
    out.formula("Fr = 2 * Sqr(Fc)          = ", "####.##", r.fr, " (kg/cm2)");
    out.formula("Top concrete cover        = ", "####.##", s.topCoverCm, " (cm)");
    out.formula("Bottom concrete cover     = ", "####.##", s.bottomCoverCm, " (cm)");
    out.formula("Sustained live load %     = ", "####.##", s.sustainedLivePercent, " %");
    out.formula("Live load duration        = ", "####.##", s.durationMonths, " (months)");
    out.formula("Time factor               = ", "####.###", r.tf).line();
    out.formula("Fc  =", kValueMask, r.fcKgCm2, " (kg/cm2)", kCompact);
    out.formula("Ec  = 15100 * Sqr(Fc)=", kValueMask, r.ec, " (kg/cm2)", kCompact);
    out.formula("Es  =", kValueMask, kSteelModulusKgCm2, " (kg/cm2)", kCompact);
    out.formula("N =Es / Ec = ", "####.###", r.n, {}, kCompact);
    out.formula("TF = 0.305 * Log(months) + 0.654 = ", "####.###", r.tf, {}, kCompact);
    if (r.tf >= kFinalTimeFactor) {
        out.line("TF is held at its final value " + val(kFinalTimeFactor, "#.###").substr(1) +
                 " (creep and shrinkage end after about five years)");
    }
    out.line("Allowed deflection = L/" + divisor).line();

    out.line("MAXIMUM SERVICE MOMENT FOR JOINTS");
    momentRows(out, r.joints);
    out.line().line("MAXIMUM SERVICE MOMENT FOR MEMBERS");
    momentRows(out, r.members);

    out.line().line("CALCULATE Ig And Mcr for Joints");
    for (std::size_t j = 0; j < r.joints.size(); ++j) {
        out.line("Joint" + fmt(" ###", j + 1.0));
        grossLines(out, r.joints[j].gross);
    }
    out.line().line("CALCULATE Ig And Mcr for MEMBERS");
    for (std::size_t i = 0; i < r.members.size(); ++i) {
        out.line("Member" + fmt(" ###", i + 1.0));
        grossLines(out, r.members[i].gross);
    }
    out.line().line("CALCULATE Icr And Ie for Joints");
    for (std::size_t j = 0; j < r.joints.size(); ++j) {
        out.line("Joint" + fmt(" ###", j + 1.0));
        crackedLines(out, r.joints[j].cracked);
        ieLines(out, r.joints[j]);
    }
    out.line().line("CALCULATE Icr And Ie for MEMBERS");
    for (std::size_t i = 0; i < r.members.size(); ++i) {
        out.line("Member" + fmt(" ###", i + 1.0));
        crackedLines(out, r.members[i].cracked);
        ieLines(out, r.members[i]);
    }
    out.line().line("CALCULATE Ie average for MEMBERS");
    for (std::size_t i = 0; i < r.deflections.size(); ++i) {
        const InertiaSet& a = r.deflections[i].ieAvg;
        out.line("Member" + fmt(" ###", i + 1.0));
        if (const int j = r.deflections[i].ieFromJoint; j > 0) {
            // A cantilever: no average, the Ie of the support it springs from.
            const std::string at = " of joint " + std::to_string(j) + " = ";
            out.formula("IeLLAvg = IeLL" + at, kValueMask, a.ll, {}, kCompact);
            out.formula("IeDLAvg = IeDL" + at, kValueMask, a.dl, {}, kCompact);
            out.formula("IesusAvg = IeSus" + at, kValueMask, a.sus, {}, kCompact);
            out.formula("IeTotAvg = IeTot" + at, kValueMask, a.tot, {}, kCompact);
            continue;
        }
        out.formula("IeLLAvg = 0.7 * IeLL + 0.15 * (IeLL1 + IeLL2) = ", kValueMask, a.ll, {},
                    kCompact);
        out.formula("IeDLAvg = 0.7 * IeDL + 0.15 * (IeDL1 + IeDL2) = ", kValueMask, a.dl, {},
                    kCompact);
        out.formula("IesusAvg = 0.7 * IeSus + 0.15 * (IeSus1 + IeSus2) = ", kValueMask, a.sus, {},
                    kCompact);
        out.formula("IeTotAvg = 0.7 * IeTot + 0.15 * (IeTot1 + IeTot2) = ", kValueMask, a.tot, {},
                    kCompact);
    }
    out.line().line("CALCULATE long time deflection for MEMBERS");
    for (std::size_t i = 0; i < r.deflections.size(); ++i) {
        const MemberDeflection& m = r.deflections[i];
        out.line("Member" + fmt(" ###", i + 1.0));
        out.formula("InitDef = ", "####.###", m.initDefCm, {}, kCompact);
        out.formula("DefDL  = ", "####.###", m.defDlCm, {}, kCompact);
        out.formula("DefLL  = ", "####.###", m.defLlCm, {}, kCompact);
        if (m.liveLifts) {
            out.line("DefLL is taken as 0: InitDef is less than DefDL, the live load lifts this "
                     "member");
        }
        out.formula("DefSus = ", "####.###", m.defSusCm, {}, kCompact);
        out.formula("LNDA   = TF / (1 + 50 * ASC / Ac) = ", "####.###", m.lnda, {}, kCompact);
        out.formula("DefLt  = DefLL + 2 * DefDL + LNDA * DefSus = ", "####.###", m.defLtCm, {},
                    kCompact);
        out.formula("L/" + divisor + " = ", "####.###", m.allowedCm, m.exceeds ? "   exceeded" : "",
                    kCompact);
    }

    out.line().line("RESULTS FOR JOINTS ");
    out.line(" #  Igr/10^5 Mcr/10^5 Icr/10^5");
    out.line("--- -----.-- -----.-- -----.--");
    for (std::size_t j = 0; j < r.joints.size(); ++j) {
        const DeflectionSection& js = r.joints[j];
        out.row("### #####.## #####.## #####.##",
                {j + 1.0, js.gross.ig / 1e5, js.gross.mcrKgCm / 1e5, js.cracked.icr / 1e5});
    }
    out.line().line("RESULTS FOR MEMBERS ");
    out.line(" #  InitDef  Igr/10^5 Mcr/10^5 Icr/10^5  DLDef    LLDef   TotDef   ");
    out.line("--- -----.-- -----.-- -----.-- -----.-- -----.-- -----.-- -----.-- -----.--");
    for (std::size_t i = 0; i < r.members.size(); ++i) {
        const DeflectionSection& ms = r.members[i];
        const MemberDeflection& m = r.deflections[i];
        out.row("### #####.## #####.## #####.## #####.## #####.## #####.## #####.## #####.##",
                {i + 1.0, m.initDefCm, ms.gross.ig / 1e5, ms.gross.mcrKgCm / 1e5,
                 ms.cracked.icr / 1e5, m.defDlCm, m.defLlCm, m.defLtCm, m.allowedCm});
    }
    out.line("Note: The deflection is given in (cm)");
    out.line("The last column is the allowed deflection L/" + divisor);
    if (!r.exceedingSpans.empty()) {
        out.text("The long time deflection exceeds the allowed value in span(s)");
        for (std::size_t k = 0; k < r.exceedingSpans.size(); ++k) {
            out.text((k == 0 ? " " : ", ") + std::to_string(r.exceedingSpans[k]));
        }
        out.end();
    }
    return out;
}

} // namespace orvak::beams
