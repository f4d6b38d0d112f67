// The calculation sheet of a column group: the printed texts of the four stages, each followed
// by the value the design left in its result.
#include <fmt/format.h>

#include "columns/column_design.h"
#include "core/mask_format.h"

namespace orvak::columns {

namespace {

constexpr std::string_view kNum = "#####.##";   // values of the head and the stages
constexpr std::string_view kFactor = "###.## "; // the factors of the axial design
constexpr std::string_view kRatio = "#.#### ";
constexpr std::string_view kStiffness = "##.####^^^^"; // EI, kg.cm2

const char* const kDimNames[5] = {"a = ", "b = ", "c = ", "d = ", "e = "};

void slenderLine(core::Sheet& sh, const Slenderness& s) {
    sh.text("kl/r=").value(kNum, s.klr, core::Sheet::Value::Compact);
    sh.text(s.isLong ? ">" : "<=").value(kNum, s.limit, core::Sheet::Value::Compact).end();
    sh.line(s.isLong ? "So that this column behaves as LONG COLUMN"
                     : "So that this column behaves as SHORT COLUMN");
}

void magnifyLines(core::Sheet& sh, const Magnification& m, Direction d, bool creepFlag) {
    const bool x = d == Direction::X;
    sh.formula("CmFactor=", kFactor, m.cm);
    if (x) {
        sh.formula("EIy = (Ec * IY / 2.5) / (1 + BdFactor!)=", kStiffness, m.eiKgCm2);
        sh.formula("Pcx  = PI ^ 2 * EIy / (KFactor  * ColLen) ^ 2=", kNum, m.pcT, " ton");
    } else {
        sh.formula(creepFlag ? "EIx  = (Ec * IX / 2.5) / (1 + BdFactor )="
                             : "EIx = (Ec * IX / 2.5) / (1 + Bd )=",
                   kStiffness, m.eiKgCm2);
        sh.formula("Pcy  = PI ^ 2 * EIx / (KFactor! * ColLen) ^ 2=", kNum, m.pcT, " ton");
    }
    if (m.unstable) {
        sh.line("Pu >= PHI * Pc : THE COLUMN IS UNSTABLE (BUCKLING), ENLARGE THE SECTION");
        return;
    }
    sh.formula("DeltB = CmFactor  / (1 - Pu / (PHI * Pc))=", kFactor, m.delta);
    if (x) {
        sh.formula("Muxmin = Muxmin * DeltB=", kNum, m.mMinTm, " ton.m");
        sh.formula("Muxmax =Muxmax * DeltB=", kNum, m.mMaxTm, " ton.m");
    } else {
        sh.formula("Muymin = Muymin * DeltB=", kNum, m.mMinTm, " ton.m");
        sh.formula("Muymax =Muymax * DeltB=", kNum, m.mMaxTm, " ton.m");
    }
}

void eccLines(core::Sheet& sh, const Eccentricity& e) {
    sh.formula("e = MU / Pu =", kNum, e.eCm, " cm");
    sh.line("If e < (1.5 + 0.03 * a) Then e = (1.5 + 0.03 * a)");
    sh.formula("e=", kNum, e.designCm, " cm");
}

void barLines(core::Sheet& sh, const BarSet& b) {
    sh.text("QUANTITY=").value("###", b.count).text(" DIAMETER=").value("###", b.diameterMm).end();
    sh.line("FINAL STEEL BARS ");
    sh.formula("FINAL STEEL AREA =", kNum, b.areaCm2, " cm2");
}

// The ties or the spiral of one column, after its final bars.
void transverseLines(core::Sheet& sh, const TransverseSteel& t) {
    if (!t.spiral) {
        sh.line("TIES");
        sh.formula("Tie diameter=", "###", t.diameterMm, " mm");
        sh.formula("s max = min(16 * db, 48 * dt, least dimension)=", kNum, t.limitCm, " cm");
        sh.formula("Tie spacing=", kNum, t.spacingCm, " cm");
        sh.formula("Ties per column=", "#####", t.countPerColumn);
        sh.formula("Tie length with two 135 degree hooks=", kNum, t.lengthCm, " cm");
        return;
    }
    sh.line("SPIRAL");
    sh.formula("Dc (out to out of the spiral)=", kNum, t.coreDiameterCm, " cm");
    sh.formula("Ach = PI * Dc ^ 2 / 4=", kNum, t.achCm2, " cm2");
    sh.formula("Ros = 0.45 * (Ag / Ach - 1) * Fc / FYties=", kRatio, t.rhoS);
    sh.formula("Spiral diameter=", "###", t.diameterMm, " mm");
    sh.formula("Pitch = 4 * Asp / (Dc * Ros), clear 2.5 to 7.5 cm=", kNum, t.spacingCm, " cm");
    if (!t.clearPitchHolds) {
        sh.line("THE CLEAR PITCH IS BELOW 2.5 cm: RAISE FYties OR ENLARGE THE SECTION");
    }
    sh.formula("Turns per column (1.5 more at each end)=", "#####", t.countPerColumn);
    sh.formula("Length of one turn=", kNum, t.lengthCm, " cm");
}

// The passes of a search and how it ended; true when it found a ratio.
bool searchLines(core::Sheet& sh, const RatioSearch& s, bool biaxial) {
    for (const SearchPass& p : s.passes) {
        if (biaxial) {
            sh.text("Ro=").value(kRatio, p.rho).text(" Pni=").value(kNum, p.pnT).end();
        } else {
            sh.text("PD=").value(kNum, p.pnT).text("  MD=").value(kNum, p.mnTm).end();
        }
    }
    switch (s.outcome) {
    case RatioSearch::Outcome::BelowMinimum:
        sh.line("Steel area too small, increase steel bars");
        return true;
    case RatioSearch::Outcome::AboveMaximum:
        sh.line("Steel area too large, decrease steel bars");
        return false;
    case RatioSearch::Outcome::TooManyPoints:
        // The table ran out before a ratio carried the demand within the tolerance: the search
        // found no ratio, and says so as it does for an eccentricity no section reaches.
        sh.line("No of points exceeds 20");
        [[fallthrough]];
    case RatioSearch::Outcome::NoEccentricity:
        sh.line("THE PROGRAM DOES NOT CONVERGE FOR THIS VALUE OF ");
        sh.line("ECCENTRICITY (EITHER TOO SMALL OR TOO LARGE");
        return false;
    case RatioSearch::Outcome::Converged:
        break;
    }
    return true;
}

bool bendingLines(core::Sheet& sh, const BendingDesign& b, const ColumnDesignResult& r) {
    sh.formula("Pnc=Pu/0.7=", kNum, b.pncT, " ton");
    sh.formula("Mnc=Mu/0.7=", kNum, b.mncTm, " ton.m");
    sh.formula("Pneq=Pnc+10*Mnc= ", kNum, b.pneqT, " ton");
    sh.formula("h=", kNum, b.hCm, " cm");
    sh.formula("d=", kNum, b.dCm, " cm");
    sh.formula("PD =", kNum, b.pdT, " ton");
    sh.formula("MD =", kNum, b.mdTm, " ton.m");
    sh.line("FINAL COLUMN CROSS SECTION ");
    sh.formula("CROSS SECTION AREA=", kNum, r.section->areaCm2, " cm2");
    const BalancedPoint& bp = b.balanced;
    sh.formula("cb = (6100 / (6100 + FY)) *(A-cover)= ", kNum, bp.cbCm, " cm");
    sh.formula("ab = Beta1 * cb=", kNum, bp.abCm, " cm");
    sh.formula("Pnb = (0.85 * Fc * B  * ab + SUM1)=", kNum, bp.pnbT, " ton");
    sh.formula("Mnb = (0.85 * Fc * B  * ab * (A - ab) / 2 + SUM2= ", kNum, bp.mnbTm, " ton.m");
    sh.formula("eb = Mnb / Pnb=", kNum, bp.ebCm, " cm");
    if (!searchLines(sh, b.search, false)) {
        return false;
    }
    sh.formula("T = 0.1 * Fc * Ag=", kNum, b.tT, " ton");
    sh.formula("PHI = 0.9 - (0.9 - PHI) * Pu / T=", kFactor, b.phi);
    if (b.second && !searchLines(sh, *b.second, false)) {
        return false;
    }
    sh.formula("REQUIRED STEEL AREA =Ro*Area=", kNum, b.requiredAreaCm2, " cm2");
    return true;
}

} // namespace

core::Sheet columnSheet(const ColumnGroup& g, const ColumnDesignResult& r, core::CodePage page) {
    core::Sheet sh(page);
    const ColumnSettings& set = g.settings;
    sh.line("COLUMN DESIGN");
    sh.text(g.name).end();
    sh.formula("Fc=", kNum, set.Fc, " kg/cm^2");
    sh.formula("Fy=", kNum, set.FY, " kg/cm^2");
    sh.formula("Pu=", kNum, g.puT, " ton");
    sh.formula("Steel cover", kNum, r.coverCm, " cm");
    sh.line("Column dimension");
    sh.text("Type: ").text(r.typeName).end();
    for (std::size_t i = 0; i < 5; ++i) {
        if (g.dims[i] != 0.0f) {
            sh.text(kDimNames[i]).value("###.##", g.dims[i], core::Sheet::Value::Compact);
            sh.text(" cm").end();
        }
    }
    sh.formula("Column height=", kNum, g.colLenCm, " cm");
    sh.line(set.Braced == 1 ? " BRACED COLUMN " : " UNBRACED COLUMN");
    if (r.status == ColumnStatus::MissingData) {
        sh.text("Missing data for ").text(r.typeName).end();
        return sh;
    }
    // Slenderness.
    sh.line("check (Kl/r)");
    sh.line("According  to  ACI code, columns classified as long if");
    sh.line("(KL/r)>=34-12(M2b/M1b)  for braced column");
    sh.line("(KL/r)>=22              for unbraced column");
    sh.text("rx=").value(kNum, r.slenderX.rCm, core::Sheet::Value::Compact);
    sh.text(" ry=").value(kNum, r.slenderY.rCm, core::Sheet::Value::Compact).end();
    sh.text("kl/rx=").value(kNum, r.slenderX.klr, core::Sheet::Value::Compact);
    sh.text(" kl/ry=").value(kNum, r.slenderY.klr, core::Sheet::Value::Compact).end();
    slenderLine(sh, r.slenderX);
    if (r.eccY) {
        sh.line("Y DIRECTION");
    }
    slenderLine(sh, r.slenderY);
    // Magnification.
    if (r.magnifyX || r.magnifyY) {
        sh.line("calculate magnification factor (delta b)");
        sh.formula("Ec  = 15100 * Sqr(Fc)=", "#######.##", r.ecKgCm2, " kg/cm2");
        if (r.magnifyX) {
            magnifyLines(sh, *r.magnifyX, Direction::X, g.secondAxis == 1);
        }
        if (r.magnifyY && !(r.magnifyX && r.magnifyX->unstable)) {
            sh.line("Y DIRECTION");
            magnifyLines(sh, *r.magnifyY, Direction::Y, g.secondAxis == 1);
        }
    }
    if (r.status == ColumnStatus::Unstable) {
        return sh;
    }
    // Minimum eccentricity.
    eccLines(sh, r.eccX);
    if (r.eccY) {
        sh.line("Y DIRECTION");
        eccLines(sh, *r.eccY);
    }
    // Axial design: a section too small prints nothing for the stage.
    if (!r.axial || r.axial->tooSmall) {
        return sh;
    }
    const AxialDesign& ax = *r.axial;
    sh.formula("Ast% min=", kRatio, ax.astMin);
    sh.formula("Strength reduction factor=", kFactor, ax.phi);
    sh.formula("Reduction factor due to min eccentricity", kFactor, ax.r);
    sh.text("(Pu /").value(kFactor, ax.phi).text(")=AC*(").value(kFactor, ax.r);
    sh.text(" * ((.85* Fc * (1 - Ast%) +Ast% * FY!)))").end();
    sh.formula("Required cross section area=", "#######", std::floor(ax.acRequiredCm2), " cm2");
    sh.formula(">  The final cross sectional area=", kNum, ax.acCm2, " cm2");
    sh.formula("PD=(Pu / PHI) / 1000 =", kNum, ax.pdT, " ton");
    sh.formula(">  Pu= ", kNum, g.puT, " ton");
    sh.line("Required steel area = AST=ROW% * AC ");
    sh.formula("AST=", kNum, ax.astCm2, " cm2");
    if (!ax.bars.found) {
        sh.line("THE BARS DO NOT FIT IN THE SECTION");
        return sh;
    }
    barLines(sh, ax.bars);
    // Axial load with bending.
    if (r.bendX && !bendingLines(sh, *r.bendX, r)) {
        return sh;
    }
    if (r.bendY) {
        sh.line("Y DIRECTION");
        if (!bendingLines(sh, *r.bendY, r)) {
            return sh;
        }
    }
    if (r.biaxialCheck) {
        const BiaxialCheck& b = *r.biaxialCheck;
        sh.line("BIAXIAL BENDING: BRESLER RECIPROCAL LOAD METHOD");
        sh.line("1 / Pni = 1 / Pnx + 1 / Pny - 1 / Po");
        sh.formula("Pnx=", kNum, b.pnxT, " ton");
        sh.formula("Pny=", kNum, b.pnyT, " ton");
        sh.formula("Po=", kNum, b.p0T, " ton");
        sh.formula("Pni=", kNum, b.pniT, " ton");
        sh.text("PHI * Pni=").value(kNum, b.phiPniT).text(" ton");
        sh.text(b.holds ? " >= Pu" : " < Pu").end();
        if (b.search) {
            if (!searchLines(sh, *b.search, true)) {
                return sh;
            }
            sh.formula("REQUIRED STEEL AREA =Ro*Area=", kNum, b.rho * r.section->areaCm2, " cm2");
        }
    }
    if (!r.finalBars.found) {
        sh.line("THE BARS DO NOT FIT IN THE SECTION");
        return sh;
    }
    barLines(sh, r.finalBars);
    if (r.transverse) {
        transverseLines(sh, *r.transverse);
    }
    return sh;
}

} // namespace orvak::columns
