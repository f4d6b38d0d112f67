// The calculation sheet of a combined footing: the printed texts of each step, each followed
// by the value the design left in its result.
#include <string>

#include "footings/combined_footing.h"

namespace orvak::footings {

namespace {

std::string cornerList(const std::vector<int>& corners) {
    std::string out;
    for (const int c : corners) {
        if (!out.empty()) {
            out += ',';
        }
        out += std::to_string(c);
    }
    return out;
}

/// The printed form of column 1's punching capacity by its shape and case; column 2 prints
/// the same with "Ps2" and the suffix 20, except the circle, which has its own text.
std::string punchText(const FootingColumn& c, int n, bool edge) {
    if (c.type == 2 || c.type == 7) {
        return n == 1 ? "Ps1=Vc * (2 * PI * (A10 + D / 2)) + (Qu * (PI * (A10 + D / 2) ^ 2) ="
                      : "Ps2=Vc * (PI * (A20 + D)) * D) + (Qu * (PI * (A20 + D) ^ 2 / 4)) =";
    }
    std::string t;
    if (c.type == 3) {
        t = edge ? "Ps1=Vc * (2 * (B10 + D10 + D) + 2 * (A10 + D / 2) - (B10 + D)) * D) + (Qu * "
                   "((B10 + D) * (A10 + D / 2) + D10 * (E10 + D))) ="
                 : "Ps1=Vc * (2 * (B10 + D10 + D) + 2 * (A10 + D)) * D) + (Qu * ((B10 + D) * "
                   "(A10 + D) + D10 * (E10 + D))) =";
    } else if (c.type == 4) {
        t = edge ? "Ps1=Vc * ((B10 + D) + 2 * (A10 + D / 2)) * D) + (Qu * ((B10 + D) * (A10 + "
                   "D / 2) - D10 * (A10 - C10))) ="
                 : "Ps1=Vc * (2 * (B10 + D) + 2 * (A10 + D)) * D) + (Qu * ((B10 + D) * (A10 + "
                   "D) - D10 * (A10 - C10))) =";
    } else {
        t = edge ? "Ps1= Vc * ((2 * (B10 + D / 2) + (A10 + D)) * D) - (Qu * (B10 + D / 2) * "
                   "(A10 + D)) ="
                 : "Ps1=Vc * ((2 * (B10 + D) + 2 * (A10 + D)) * D) + (Qu * (B10 + D) * (A10 + "
                   "D)) =";
    }
    if (n == 2) {
        t[2] = '2';
        for (std::size_t at = t.find("10"); at != std::string::npos; at = t.find("10", at)) {
            t[at] = '2';
        }
    }
    return t;
}

void punchLines(core::Sheet& sh, const FootingColumn& c, int n, const ColumnPunching& p) {
    for (const PunchPass& pass : p.passes) {
        sh.formula("D= ", kNum, pass.dCm, " cm");
        sh.formula(punchText(c, n, pass.edge), kNum, pass.psKg / 1000.0, " ton");
    }
}

void stripLines(core::Sheet& sh, int n, const SteelDirection& s, double quKgCm) {
    const std::string k = std::to_string(n);
    sh.formula("W = ", kNum, s.spanCm, " cm");
    // What the moment below is made of: the column's load spread over the width, on the strip
    // under the column.
    sh.formula("qu = Pu" + k + " / A= ", kNum, quKgCm, " kg/cm");
    sh.formula("Strip width = ", kNum, s.widthCm, " cm");
    sh.formula("Muy" + k + " = (qu * W ^ 2 / 2) * A= ", kNum, s.muKgCm / 1.0e5, " ton.m");
    ratioLines(sh, "R0W=(0.85*Fc/FY)*(1-Abs((1-((2.61*Muy" + k + ")/(Fc*A*D^2))))^(1/2)) ",
               "ROW=", "AST=ROW*A*D=", s);
    barLines(sh, "FINAL STEEL BARS IN X DIRECTION", s.bars);
}

} // namespace

core::Sheet combinedFootingSheet(const CombinedFootingInput& in, const CombinedFootingResult& r,
                                 core::CodePage page) {
    core::Sheet sh(page);
    const FootingSettings& s = in.settings;
    sh.line("FOOTING DESIGN");
    sh.line("COMBINED FOOTING");
    sh.line("INPUT DATA");
    sh.line("==========");
    sh.formula("Pu1= ", kNum, shown(in.column1.puT), " ton");
    sh.formula("Pu2= ", kNum, shown(in.column2.puT), " ton");
    sh.formula("Cx1 =", kNum, shown(in.column1.cxCm), " cm");
    sh.formula("Cx2 =", kNum, shown(in.column2.cxCm), " cm");
    sh.line("COLUMN1 DIMENSION");
    columnLines(sh, in.column1);
    sh.line("COLUMN2 DIMENSION");
    columnLines(sh, in.column2);
    settingLines(sh, s, "Steel cover           = ", "MinDepth   =");
    if (!r.planComputed) {
        sh.line("Check your data");
        return sh;
    }
    limitLines(sh, r.limits);
    sh.formula("Service load for Column 1 =Pu1/LF=", kNum, r.service1Kg / 1000.0, " ton");
    sh.formula("Service load for Column 2 =Pu2/LF=", kNum, r.service2Kg / 1000.0, " ton");
    sh.formula("Area = P / SoilBcapcity!=", kBig, r.areaCm2, "  cm2");
    sh.formula("Ex1 = PU2 * (Cx2 - Cx1) / (PU1 + PU2)= ", kNum, r.ex1Cm, " cm");
    sh.formula("B=(Ex1 + Cx1) * 2 = ", kNum, r.bRawCm, " cm");
    sh.formula("A=Area / B = ", kNum, r.aRawCm, " cm");
    if (r.status == FootingStatus::CheckData) {
        sh.line("Check your data");
        sh.formula("B= ", kNum, r.bCm, " cm");
        sh.formula("A= ", kNum, r.aCm, " cm");
        return sh;
    }
    sh.formula("B=", kNum, r.bCm, " cm");
    sh.formula("A=", kNum, r.aCm, " cm");

    // Pressure.
    sh.formula("AB = a * B = ", kBig, r.abCm2, " cm2");
    sh.formula("P = P1 + P2 = ", kNum, r.pKg / 1000.0, " ton");
    sh.formula("Q(1) = P / AB =", kNum, r.q[0], " kg/cm^2");
    sh.formula("Q(2) = P / AB =", kNum, r.q[1], " kg/cm^2");
    sh.formula("Q(3) = P / AB =", kNum, r.q[2], " kg/cm^2");
    sh.formula("Q(4) = P / AB =", kNum, r.q[3], " kg/cm^2");
    if (!r.cornersOver.empty()) {
        sh.text("Pressure exceeds safe bearing capacity at corner(s):")
            .text(cornerList(r.cornersOver))
            .end();
        for (const int c : r.cornersOver) {
            sh.value(kNum, r.q[static_cast<std::size_t>(c - 1)]).text(" exceed ");
            sh.value(kNum, s.soilCapacity).text(" Kg/cm^2").end();
        }
        sh.line("Change footing dimension for  ");
    }
    if (!r.cornersTension.empty()) {
        sh.text("Tension stresses at corner(s):").text(cornerList(r.cornersTension)).end();
        sh.line("Change footing dimension  for ");
    }
    sh.formula("Max stress  Q= ", kNum, r.qMax, " kg/cm^2");

    // Shear and moment.
    sh.line("CALCULATE BENDING MOMENT And SHEAR FORCE");
    sh.formula("Ultimate Max stress  Qu= ", kNum, r.quKgCm2, " kg/cm^2");
    sh.formula("V1LT =", kNum, r.v1ltKg / 1000.0, " ton");
    sh.formula("V1RT =", kNum, r.v1rtKg / 1000.0, " ton");
    sh.formula("V2LT =", kNum, r.v2ltKg / 1000.0, " ton");
    sh.formula("V2RT =", kNum, r.v2rtKg / 1000.0, " ton");
    sh.formula("Max beam shear Vmax = ", kNum, r.vmaxKg / 1000.0, " ton");
    sh.formula("Max B.M under columns =", kNum, r.mUnderKgCm / 1.0e5, " ton.m");
    if (r.zeroShearBetween) {
        sh.formula("Location of Max B.M between columns from left=", kNum, r.zeroShearCm, " cm");
    } else {
        sh.line("No point of zero shear between the columns: the largest moment between them "
                "is at a column face");
    }
    sh.formula("Max B.M between columns =", kNum, r.mBetweenKgCm / 1.0e5, " ton.m");

    // Beam shear.
    sh.line("Depth for beam shear  ");
    sh.line("--------------------  ");
    sh.formula("Vc = 0.53 * 0.85 * Sqr(Fc)= ", kNum, r.vcBeamKgCm2, " kg/cm^2");
    sh.formula("D = vmax / (Qu*a + Vc * a)= ", kNum, r.dBeamCm, " cm");
    sh.formula("D= ", kNum, r.dStartCm, " cm");

    // Punching.
    sh.line("Punching shear");
    sh.line("------------- ");
    sh.formula("Vc = 1.06 * 0.85 * Sqr(Fc)= ", kNum, r.vcPunchKgCm2, " kg/cm^2");
    punchLines(sh, in.column1, 1, r.punch1);
    punchLines(sh, in.column2, 2, r.punch2);
    if (r.beamShearUnsafe) {
        sh.line("Unsafe beam shear, increase footing depth for");
    }
    dimensionLines(sh, " Final footing dimension", r.aCm, r.bCm, r.hCm);
    if (r.punchingExhausted) {
        sh.line("Unsafe punching shear at every depth up to 10 m, enlarge the footing");
    } else {
        sh.line("Ps1 > Pu1    O.K ");
        sh.line("Ps2 > Pu2    O.K ");
    }
    if (!r.deepenPasses.empty() || r.deepenExhausted) {
        deepenLines(sh, r.deepenPasses, r.deepenExhausted);
        dimensionLines(sh, " Final footing dimension", r.aCm, r.bCm, r.finalHCm);
    }

    // Steel.
    sh.line("CALCULATE STEEL AREA IN BOTH DIRECTION");
    sh.line("--------------------------------------");
    sh.line("Steel area in Y-Direction");
    sh.formula("Mux = (Qu * L ^ 2 / 2) * B= ", kNum, r.steelLong.muKgCm / 1.0e5, " ton.m");
    ratioLines(sh, "ROW=(0.85 * Fc/FY)*(1-Abs((1-((2.61*Mux)/(Fc*B*D^2))))^(1/2)) ",
               "ROW= ", "AST=ROW*B*D= ", r.steelLong);
    barLines(sh, "FINAL STEEL BARS IN Y DIRECTION", r.steelLong.bars);
    // Where the long bars lie, and those of the other face.
    sh.line(r.longAtTop ? "These bars lie at the top: the footing hogs between the columns."
                        : "These bars lie at the bottom.");
    sh.line(r.longAtTop ? "Long bars at the bottom" : "Long bars at the top");
    sh.formula("M = ", kNum, r.steelOther.muKgCm / 1.0e5, " ton.m");
    sh.formula("ROW= ", kRatio, r.steelOther.rho);
    sh.formula("AST=ROW*B*D= ", kNum, r.steelOther.astCm2, " cm^2");
    barLines(sh, r.longAtTop ? "FINAL STEEL BARS AT THE BOTTOM" : "FINAL STEEL BARS AT THE TOP",
             r.steelOther.bars);
    sh.line("Steel area in X-Direction");
    const double a = r.aCm > 0.0 ? r.aCm : 1.0;
    stripLines(sh, 1, r.strip1, typed(in.column1.puT) * 1000.0 / a);
    stripLines(sh, 2, r.strip2, typed(in.column2.puT) * 1000.0 / a);
    return sh;
}

} // namespace orvak::footings
