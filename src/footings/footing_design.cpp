// Shared steps of the footing designs: ACI 318 steel-ratio limits, the rounding of sizes, the
// ratio of a rectangular section in flexure (phi = 0.9), the bar choice and the input block.
#include "footings/footing_design.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

#include "columns/column_records.h"
#include "columns/column_section.h"
#include "core/concrete.h"
#include "core/tolerances.h"
#include "footings/footing_settings.h"

namespace orvak::footings {

double typed(float v) {
    if (!std::isfinite(v)) {
        return v;
    }
    std::array<char, 32> buf{};
    const auto out = std::to_chars(buf.data(), buf.data() + buf.size(), v);
    double d = v;
    std::from_chars(buf.data(), out.ptr, d);
    return d;
}

SteelLimits steelLimits(const FootingSettings& s) {
    SteelLimits l;
    const double fc = s.Fc;
    const double fy = s.FY;
    l.beta1 = core::beta1(fc);
    l.rowb = (0.85 * fc / fy) * l.beta1 * core::balancedTerm(fy);
    l.rowMax = typed(s.facRowmax) * l.rowb;
    l.rowMin = typed(s.minSteelPercent) / 100.0;
    return l;
}

double roundUpToFive(double v) {
    return core::roundUpToStep(v, kSizeStepCm);
}

SteelDirection designSteel(double spanCm, double muKgCm, double widthCm, double dCm,
                           double spreadCm, double barLengthCm, const FootingSettings& settings,
                           const SteelLimits& limits, std::span<const bars::BarProperties> table) {
    SteelDirection s;
    const double fc = settings.Fc;
    const double fy = settings.FY;
    s.spanCm = spanCm;
    s.muKgCm = muKgCm;
    s.widthCm = widthCm;
    // rho = (0.85 Fc/FY)(1 − √(1 − 2 Mu / (phi 0.85 Fc b d²))) with phi = 0.9: 2/(0.9·0.85)
    // = 2.61. The absolute value under the root is the printed formula's.
    s.term = 2.61 * muKgCm / (fc * widthCm * dCm * dCm);
    s.rhoCalc = (0.85 * fc / fy) * (1.0 - std::sqrt(std::abs(1.0 - s.term)));
    s.rho = std::max(s.rhoCalc, limits.rowMin);
    s.astCm2 = s.rho * widthCm * dCm;
    s.bars = chooseFootingBars(s.astCm2, spreadCm, barLengthCm, table);
    return s;
}

FootingBars chooseFootingBars(double areaCm2, double spreadCm, double barLengthCm,
                              std::span<const bars::BarProperties> table) {
    FootingBars best;
    if (!(spreadCm > 0.0) || !(barLengthCm > 0.0) || !(areaCm2 >= 0.0) || !std::isfinite(areaCm2)) {
        return best;
    }
    for (const bars::BarProperties& bar : table) {
        const double dia = bar.diameterMm;
        if (dia < kMinFootingBarMm - core::kSingleRounding ||
            dia > kMaxFootingBarMm + core::kSingleRounding || !(bar.areaCm2 > 0.0f)) {
            continue;
        }
        // The least count for the area, and the least that keeps the spacing within 30 cm.
        const double forArea = std::ceil(areaCm2 / bar.areaCm2 - core::kSingleRounding);
        const double forSpacing =
            std::ceil(spreadCm / kMaxBarSpacingCm - core::kSingleRounding) + 1.0;
        const double n = std::max({2.0, forArea, forSpacing});
        if (!(n <= 100000.0)) {
            continue;
        }
        if (spreadCm / (n - 1.0) < kMinBarSpacingCm - core::kSingleRounding) {
            continue;
        }
        const int count = static_cast<int>(n);
        if (!best.found || count < best.count || (count == best.count && dia < best.diameterMm)) {
            best.found = true;
            best.count = count;
            best.diameterMm = dia;
            best.areaCm2 = count * static_cast<double>(bar.areaCm2);
            best.lengthCm = barLengthCm;
        }
    }
    return best;
}

bool isCircular(const FootingColumn& c) {
    return c.type == 2 || c.type == 7;
}

FaceSizes faceSizes(const FootingColumn& c) {
    const double a = typed(c.dims[0]);
    if (isCircular(c)) {
        const double side = a * std::sqrt(std::numbers::pi) / 2.0;
        return {side, side};
    }
    if (c.type == 6) {
        return {a, a};
    }
    return {a, typed(c.dims[1])};
}

bool columnUsable(const FootingColumn& c) {
    if (c.type < 1 || c.type > 7) {
        return false;
    }
    // The column group's own limits: what a group can hold is what a footing can take.
    for (const float v : c.dims) {
        if (!std::isfinite(v) || v > columns::kMaxDimCm) {
            return false;
        }
    }
    const int needed = columns::requiredDimensions(c.type);
    for (int i = 0; i < needed; ++i) {
        if (!(c.dims[static_cast<std::size_t>(i)] > 0.0f)) {
            return false;
        }
    }
    const auto moment = [](float m) {
        return std::isfinite(m) && std::abs(m) <= columns::kMaxMomentTm;
    };
    return std::isfinite(c.puT) && c.puT <= columns::kMaxLoadT && moment(c.muxTm) &&
           moment(c.muyTm) && std::isfinite(c.cxCm) && std::isfinite(c.cyCm) &&
           std::abs(c.cxCm) <= kMaxFootingSideCm && std::abs(c.cyCm) <= kMaxFootingSideCm;
}

bool settingsUsable(const FootingSettings& s) {
    // The settings the form and the file accept (a least depth of 10 cm among them: the
    // effective depth never comes to zero, where the steel ratio would divide by it).
    return validateFootingSettings(s).empty();
}

std::string_view columnTypeName(int type) {
    static constexpr std::array<std::string_view, 7> kNames = {
        "Rectangle", "Circle", "Tee", "L", "Cross", "Square spiral", "Circle tied"};
    if (type < 1 || type > 7) {
        return "?";
    }
    return kNames[static_cast<std::size_t>(type - 1)];
}

void columnLines(core::Sheet& sh, const FootingColumn& c) {
    static constexpr std::array<std::string_view, 5> kDimNames = {
        "a = ", "b = ", "c = ", "d = ", "e = "};
    sh.text("Type: ").text(columnTypeName(c.type)).end();
    for (std::size_t i = 0; i < 5; ++i) {
        if (c.dims[i] != 0.0f) {
            sh.text(kDimNames[i]).value("###.##", shown(c.dims[i]), core::Sheet::Value::Compact);
            sh.text(" cm").end();
        }
    }
}

void settingLines(core::Sheet& sh, const FootingSettings& s, std::string_view coverText,
                  std::string_view minDepthText) {
    sh.formula("Fc=", kNum, s.Fc, " kg/cm^2");
    sh.formula("Fy=", kNum, s.FY, " kg/cm^2");
    sh.formula("Soil bearing capacity = ", kNum, shown(s.soilCapacity), " kg/cm^2");
    sh.formula(coverText, kNum, shown(s.coverCm), " cm");
    sh.formula("Load factor(LF=Pu/(Pd+Pl))= ", kNum, shown(s.LF));
    sh.formula("Min percentage Ast %  = ", kNum, shown(s.minSteelPercent), " %");
    sh.formula(minDepthText, kNum, shown(s.minDepthCm), " cm");
}

void limitLines(core::Sheet& sh, const SteelLimits& l) {
    sh.line("CALCULATIONS");
    sh.line("============");
    sh.formula("BETA1 = ", kRatio, l.beta1);
    sh.formula("Rowb  = (0.85 * Fc / FY) * BETA1  * (6100 / (6100 + FY))=", kRatio, l.rowb);
    sh.formula("RowMax  = FacRowmax  * Rowb =", kRatio, l.rowMax);
}

void barLines(core::Sheet& sh, std::string_view heading, const FootingBars& b) {
    sh.line(heading);
    if (!b.found) {
        sh.line("NO BARS OF THE TABLE FIT THIS STEEL AREA");
        return;
    }
    sh.text("QUANTITY=").value("###", b.count).text(" DIAMETER=").value("###", b.diameterMm).end();
}

void dimensionLines(core::Sheet& sh, std::string_view heading, double aCm, double bCm, double hCm) {
    sh.line(heading);
    sh.formula("A=", kNum, aCm, " cm");
    sh.formula("B=", kNum, bCm, " cm");
    sh.formula("H=", kNum, hCm, " cm");
}

void ratioLines(core::Sheet& sh, std::string_view formulaText, std::string_view rowText,
                std::string_view astText, const SteelDirection& s) {
    sh.line(formulaText);
    sh.line("IF ROW < ROW min  take ROW min");
    sh.formula(rowText, kRatio, s.rho);
    sh.formula(astText, kNum, s.astCm2, " cm^2");
}

double DeepenPass::ratioOf(const SteelDirection& s, const FootingSettings& settings) {
    return s.term > 1.0 ? 0.85 * settings.Fc / settings.FY : s.rhoCalc;
}

void deepenLines(core::Sheet& sh, std::span<const DeepenPass> passes, bool exhausted) {
    for (const DeepenPass& p : passes) {
        sh.text("ROW=").value(kRatio, p.rhoCalc).text(" > RowMax  at D=").value(kNum, p.dCm);
        sh.text(" cm, increase footing depth").end();
    }
    if (exhausted) {
        sh.line("ROW > RowMax  at every depth up to 10 m, enlarge the footing");
    }
}

} // namespace orvak::footings
