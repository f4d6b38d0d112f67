// The calculation sheet of an isolated footing: the printed texts of each step, each followed
// by the value the design left in its result.
#include <string>

#include "footings/isolated_footing.h"

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

void headLines(core::Sheet& sh, const IsolatedFootingInput& in) {
    const FootingColumn& c = in.column;
    sh.line("FOOTING DESIGN");
    sh.line("ISOLATED FOOTING");
    sh.line("Input column dimension");
    sh.line("INPUT DATA");
    sh.line("==========");
    sh.formula("Pu= ", kNum, shown(c.puT), " ton");
    sh.formula("Mux= ", kNum, shown(c.muxTm), " ton.m");
    sh.formula("Muy= ", kNum, shown(c.muyTm), " ton.m");
    sh.line("Column dimension");
    columnLines(sh, c);
    sh.formula("Cx = ", kNum, shown(c.cxCm), " cm");
    sh.formula("Cy = ", kNum, shown(c.cyCm), " cm");
    settingLines(sh, in.settings, "steel cover           = ", "MinDepth  = ");
}

} // namespace

core::Sheet isolatedFootingSheet(const IsolatedFootingInput& in, const IsolatedFootingResult& r,
                                 core::CodePage page) {
    core::Sheet sh(page);
    headLines(sh, in);
    const FootingColumn& col = in.column;
    const bool rect = col.type == 1;
    const bool round = isCircular(col);
    const bool teeOrL = col.type == 3 || col.type == 4;
    if (r.status == FootingStatus::CheckData && !(r.aCm > 0.0)) {
        sh.line("Check your data");
        return sh;
    }
    limitLines(sh, r.limits);
    sh.formula("Service load=Pu/LF=", kNum, r.serviceLoadKg / 1000.0, " ton");
    sh.formula("Area = P * 1000 / SoilBcapcity!= ", kBig, r.areaCm2, " cm2");
    sh.formula("B=", kNum, r.bCm, " cm");
    sh.formula("A=", kNum, r.aCm, " cm");
    if (r.status == FootingStatus::CheckData) {
        sh.line("Check your data");
        return sh;
    }

    // Corner pressures.
    sh.formula("IX = B * A ^ 3 / 12= ", kInertia, r.ixCm4, " cm^4");
    sh.formula("IY = A * B ^ 3 / 12= ", kInertia, r.iyCm4, " cm^4");
    sh.formula("Ey = (Cy + a  / 2) - a / 2 = ", kNum, r.eyCm, " cm");
    sh.formula("Ex = (Cx + b  / 2) - a / 2 = ", kNum, r.exCm, " cm");
    sh.formula("MX = P * 1000 * Ey + (Mux / LF)   = ", kNum, r.mxKgCm / 1.0e5, " ton.m");
    sh.formula("My = P * 1000 * Ex + (Muy  / LF)  = ", kNum, r.myKgCm / 1.0e5, " ton.m");
    sh.formula("Q(1)=P*1000/Area + MX * (a/2)/IX - My *(B/2)/IY= ", kNum, r.q[0], " kg/cm^2");
    sh.formula("Q(2)=P*1000/Area - MX * (a/2)/IX - My *(B/2)/IY= ", kNum, r.q[1], " kg/cm^2");
    sh.formula("Q(3)=P*1000/Area - MX * (a/2)/IX + My *(B/2)/IY= ", kNum, r.q[2], " kg/cm^2");
    sh.formula("Q(4)=P*1000/Area + MX * (a/2)/IX + My *(B/2)/IY= ", kNum, r.q[3], " kg/cm^2");
    if (!r.cornersOver.empty()) {
        sh.text("Pressure exceeds safe bearing capacity at corner(s):")
            .text(cornerList(r.cornersOver))
            .end();
        for (const int c : r.cornersOver) {
            sh.value(kNum, r.q[static_cast<std::size_t>(c - 1)]).text(" exceed ");
            sh.value(kNum, in.settings.soilCapacity).text(" Kg/cm^2").end();
        }
        sh.line("Change footing dimension");
    }
    if (!r.cornersTension.empty()) {
        sh.text("Tension stresses at corner(s):").text(cornerList(r.cornersTension)).end();
        sh.line("Change footing dimension");
    }
    sh.formula("Max stress  Q= ", kNum, r.qMax, " kg/cm^2");

    // Beam shear.
    sh.line("Depth for beam shear");
    sh.line("====================");
    sh.line("Critical section for beam shear at distance (d) from column face");
    sh.formula("Vu= 0.53 * 0.85* Sqr(Fc)= ", kNum, r.vuKgCm2, " kg/cm^2");
    sh.formula("Length from edge to critical section in Y direction = ", kNum, r.lcYCm, " cm");
    sh.formula("Length from edge to critical section in X direction = ", kNum, r.lcXCm, " cm");
    sh.formula("Qu = Q * LF= ", kNum, r.quKgCm2, " kg/cm^2");
    sh.formula("D = (Length at critical section) * Qu / (Vu + Qu )= ", kNum, r.dBeamCm, " cm");

    // Punching.
    sh.line("Depth for punching shear");
    sh.line("========================");
    sh.line("Critical section for punching shear at distance (d/2) from column face");
    sh.line("To get d for punching solve the following equation:");
    sh.line("A1*D^2 + B1*D - C=0");
    sh.line("Where:");
    sh.formula("(max/min column section length)=", kNum, r.betaC);
    sh.formula("Vc = 0.53 * 0.85 * (1 + (2 /(max/min column section length))) *  (Fc)^0.5)= ", kNum,
               r.vcRawKgCm2, " kg/cm^2");
    sh.line("If Vc > 1.06 * 0.85 * Sqr(Fc) Then Vc = 1.06 * 0.85 * Sqr(Fc) ");
    sh.formula("Vc= ", kNum, r.vcKgCm2, " kg/cm^2");
    sh.formula(round ? "A1 = PI * Vc= " : "A1 = 4 * Vc= ", kNum, r.a1);
    sh.formula("B1 =  Vc * Column circumference= ", kBig, r.b1);
    sh.formula("C1 = Pu * 1000 ", kBig, r.c1);
    sh.formula("D  = (-B1 + Sqr(B1 ^ 2 + 4 * A1 * C1)) / (2 * A1)= ", kNum, r.dPunchCm, " cm");
    dimensionLines(sh, "Footing dimension", r.aCm, r.bCm, r.hCm);

    // The punching check at the depth found.
    const char* psText = "Ps = ((b + H) * 2 + (a + H) * 2) * H * Vc= ";
    if (round) {
        psText = "Ps = PI * (A0 + H) * H * Vc= ";
    } else if (col.type == 3) {
        psText = "Ps = ((A0 + H) * 2 + (B0 + H + D0) * 2) * H * Vc= ";
    } else if (col.type == 4) {
        psText = "Ps = ((A0 + H) * 2 + (B0 + H) * 2) * H * Vc= ";
    }
    sh.formula(psText, kNum, r.psKg / 1000.0, " ton");
    // The punching section lies d/2 from the faces and is d deep: the capacity is computed with
    // the effective depth where the line above reads H.
    sh.formula("Computed with the effective depth d= ", kNum, r.dCm, " cm");
    if (r.punchingUnsafe) {
        sh.text("Unsafe punching shear, set footing depth(H) >= ");
        sh.value("###.#", r.hPunchCm).end();
    } else {
        sh.line("Ps > Pu    O.K ");
    }
    if (r.beamShearUnsafe) {
        sh.line("Unsafe beam shear, increase footing depth");
    }
    dimensionLines(sh, "Final footing dimension", r.aCm, r.bCm, r.hCm);
    if (!r.deepenPasses.empty() || r.deepenExhausted) {
        deepenLines(sh, r.deepenPasses, r.deepenExhausted);
        dimensionLines(sh, "Final footing dimension", r.aCm, r.bCm, r.finalHCm);
    }

    // Steel.
    sh.line("CALCULATE STEEL AREA IN BOTH DIRECTIONS");
    sh.line("Steel area in Y-Direction");
    if (rect) {
        sh.formula("L = (A -a) / 2= ", kNum, r.lCentredCm, " cm");
        sh.line("If L < A - (Cy + a/2) Then L = A - (Cy + a/2)");
    } else if (teeOrL) {
        sh.formula("L = (a - (b + d)) / 2= ", kNum, r.lCentredCm, " cm");
        sh.line("If L < a - (Cy + (B0 + D0) / 2) Then L = a - (Cy + (B0 + D0) / 2)");
    } else {
        sh.formula("L = (A -b) / 2= ", kNum, r.lCentredCm, " cm");
        sh.line("If L < A - (Cy + b/2) Then L = A - (Cy + b/2)");
    }
    sh.formula("L = ", kNum, r.steelY.spanCm, " cm");
    sh.formula("Mux = (Qu * LF * L ^ 2 / 2) * B= ", kNum, r.steelY.muKgCm / 1.0e5, " ton.m");
    ratioLines(sh, "R0W=(0.85 * Fc/FY)*(1-Abs((1-((2.61*Mux)/(Fc*B*D^2))))^(1/2)) ",
               "ROW= ", "AST=ROW*B*D= ", r.steelY);
    sh.line("Steel area in X-Direction");
    if (rect) {
        sh.formula("W = (B - b) / 2= ", kNum, r.wCentredCm, " cm");
        sh.line("If w < B - (Cx + b / 2) Then L = B - (Cx + b / 2)");
    } else {
        sh.formula("W = (B - a) / 2= ", kNum, r.wCentredCm, " cm");
        sh.line("If w < B - (Cx + a / 2) Then L = B - (Cx + a / 2)");
    }
    sh.formula("w = ", kNum, r.steelX.spanCm, " cm");
    sh.formula("Muy = (Qu * LF * W ^ 2 / 2) * A= ", kNum, r.steelX.muKgCm / 1.0e5, " ton.m");
    ratioLines(sh, "R0W=(0.85*Fc/FY)*(1-Abs((1-((2.61* Muy)/(Fc*A*D^2))))^(1/2)) ",
               "ROW= ", "AST=ROW*A*D= ", r.steelX);
    barLines(sh, "FINAL STEEL BARS IN Y DIRECTION", r.steelY.bars);
    barLines(sh, "FINAL STEEL BARS IN X DIRECTION", r.steelX.bars);
    return sh;
}

} // namespace orvak::footings
