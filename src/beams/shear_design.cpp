// Stirrup design of one point of a beam to ACI strength design: concrete share, minimum
// stirrups, the upper limit of the steel share, legs, diameter, spacing and cut length.
#include "beams/shear_design.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/mask_format.h"
#include "core/settings_fields.h"
#include "core/tolerances.h"

namespace orvak::beams {

namespace {

// More 2 mm steps than from the smallest bar to the cap; only reached by absurd diameters.
constexpr int kMaxStirrupSteps = 16;

double legArea(int legs, double diameterMm) {
    const double db = diameterMm / 10.0;
    return legs * std::numbers::pi * db * db / 4.0;
}

// Kilograms as tonnes with two decimals, without the mask's leading blanks.
std::string tonnes(double kg) {
    const std::string s = core::formatUsing("######.##", kg / 1000.0);
    return s.substr(s.find_first_not_of(' '));
}

} // namespace

double placedSpacingCm(double spacingCm) {
    return std::floor(spacingCm * 10.0 + core::kAbsoluteEqual) / 10.0;
}

ShearResult designShear(const ShearPointInput& point, const ShearSettings& settings,
                        const DesignMaterials& materials) {
    ShearResult r;
    const double b = point.webWidthCm;
    const double d = point.effectiveDepthCm;
    const double fc = materials.fcKgCm2;
    const double fy = core::orDefault(materials.fyStirrupKgCm2, materials.fyKgCm2);
    if (!(b > 0.0) || !(d > 0.0) || !(fc > 0.0) || !(fy > 0.0) || !std::isfinite(point.vuKg)) {
        r.status = ShearStatus::InvalidInput;
        r.message = "The web width, the effective depth, Fc and FY must be above zero.";
        return r;
    }
    const double factor = core::orDefault(settings.shearFactor, kShearFactorFallback);
    const double phi = core::orDefault(settings.shearFi, kShearFiFallback);
    const double vsMin = core::orDefault(settings.vsMin, kVsMinFallback);
    const double sqrtFc = std::sqrt(fc);

    r.vnKg = std::abs(point.vuKg) * factor / phi;
    r.vcKg = 0.53 * sqrtFc * b * d;
    if (point.inclined.count > 0 && point.inclined.diameterMm > 0.0) {
        // ACI inclined bars: Vb = Av fy sin(alpha), Av of all the bars crossing the point.
        const double db = point.inclined.diameterMm / 10.0;
        r.vbKg = point.inclined.count * std::numbers::pi * db * db / 4.0 * fy *
                 std::sin(point.inclined.angleDeg * std::numbers::pi / 180.0);
    }
    if (r.vnKg <= r.vcKg + vsMin * b * d) {
        r.minimumStirrups = true;
        r.vsKg = vsMin * b * d;
    } else {
        r.vsKg = std::max(r.vnKg - r.vcKg - r.vbKg, 0.0);
    }
    r.vsLimitKg = 2.06 * sqrtFc * b * d;
    if (r.vsKg > r.vsLimitKg) {
        r.status = ShearStatus::SectionTooSmall;
        r.message = "Section too small in shear: Vs = " + tonnes(r.vsKg) +
                    " t exceeds 2.06 * Sqr(Fc) * b * d = " + tonnes(r.vsLimitKg) + " t.";
        return r;
    }

    r.legs = b <= settings.fourLegWidthCm ? 2 : 4;
    // ACI spacing limits of vertical stirrups: d/2 and 60 cm, halved to d/4 and 30 cm where
    // Vs exceeds 1.06 sqrt(Fc) b d, so that every 45-degree crack is crossed by a stirrup
    // (two where the shear is high). The beam's maximum-spacing setting can only tighten them.
    const bool highShear = r.vsKg > 1.06 * sqrtFc * b * d;
    const double codeMaxSpacing = highShear ? std::min(d / 4.0, 30.0) : std::min(d / 2.0, 60.0);
    const double maxSpacing = settings.maxSpacingCm > 0.0
                                  ? std::min(settings.maxSpacingCm, codeMaxSpacing)
                                  : codeMaxSpacing;
    const double minSpacing = std::max(settings.minSpacingCm, 0.0);
    const double firstDia = core::orDefault(settings.stirrupDiameterMm, kStirrupDiameterFallbackMm);
    const double lastDia = std::max(firstDia, kMaxStirrupDiameterMm);
    double dia = firstDia;
    // The step count bounds the loop even for a diameter so large that adding 2 mm does not
    // change it.
    for (int step = 0;; ++step) {
        r.diameterMm = dia;
        r.avCm2 = legArea(r.legs, dia);
        // The strength asks for s = Av FY d / Vs; only that spacing may call for a larger
        // stirrup. The code's cap may lie below the minimum spacing: then it holds as it is,
        // since a larger stirrup would not widen it.
        const double strength = r.vsKg > 0.0 ? r.avCm2 * fy * d / r.vsKg : maxSpacing;
        r.spacingCm = std::min(strength, maxSpacing);
        if (strength >= minSpacing) {
            break;
        }
        if (dia + 2.0 > lastDia || step >= kMaxStirrupSteps) {
            r.status = ShearStatus::MinSpacingNotReached;
            r.message = "The stirrup spacing stays below the minimum spacing even with " +
                        std::to_string(static_cast<int>(dia)) + " mm stirrups.";
            break;
        }
        dia += 2.0;
    }

    // Closed stirrups measured on their centre line: the section less the covers on both
    // faces and one stirrup diameter, plus the two hooks.
    const double db = r.diameterMm / 10.0;
    const double hook = core::orDefault(settings.hookCm, std::max(6.0 * db, 7.5));
    const double clearWidth = std::max(b - 2.0 * settings.stirrupCover - db, 0.0);
    const double clearHeight = std::max(point.heightCm - 2.0 * settings.stirrupCover - db, 0.0);
    r.cutLengthCm = 2.0 * clearWidth + 2.0 * clearHeight + 2.0 * hook;
    if (r.legs == 4) {
        r.innerCutLengthCm = 2.0 * (2.0 * clearWidth / 3.0) + 2.0 * clearHeight + 2.0 * hook;
    }
    return r;
}

} // namespace orvak::beams
