// Flexural design of one point of a continuous beam to ACI strength design: tension steel,
// compression steel where the section needs it, the steel-ratio limits and the minimum depth.
#include "beams/flexure.h"

#include <algorithm>
#include <cmath>

#include "core/concrete.h"
#include "core/settings_fields.h"

namespace orvak::beams {

namespace {

constexpr double kTmToKgCm = 100000.0;
// 0.375 of the rib's shortcut limit, M1 = 0.375 b d² Fc.
constexpr double kShortcutFactor = 0.375;

// Steel of a rectangle of width b for the moment mu (kg·cm): tension steel alone up to the
// limit moment M1 = phi 0.85 Fc b a (d - a/2) at c = FacRmax × c b, else the limit steel plus
// a couple over d - d' whose compression steel works at the stress its strain allows.
struct RectangleSteel {
    FlexureBranch branch = FlexureBranch::None;
    double as = 0.0;
    double asc = 0.0;
    double fsc = 0.0;
    double m1 = 0.0;
    double aLimit = 0.0;
    bool compressionIneffective = false;
};

// Compression bars of a steel couple whose tension half is as2 (cm²), with the neutral axis
// at c and the bars at d' from the compressed face: their stress follows their strain
// 0.003 (c - d') / c, at most FY, and each bar adds only f's - 0.85 Fc, since the stress
// block already counts the concrete it stands in. Bars at or below the neutral axis (or
// whose net stress is not positive) cannot work: ineffective, and the area shown is as2.
struct CompressionBars {
    double asc = 0.0;
    double fsc = 0.0;
    bool ineffective = false;
};

CompressionBars compressionBars(double as2, double c, double dPrime, const DesignMaterials& mat) {
    CompressionBars out;
    if (!(as2 > 0.0)) {
        return out;
    }
    const double strain = c > 0.0 ? 0.003 * (c - dPrime) / c : 0.0;
    out.fsc = std::max(std::min(mat.fyKgCm2, strain * kSteelModulusKgCm2), 0.0);
    const double net = out.fsc - 0.85 * mat.fcKgCm2;
    if (net <= 0.0) {
        out.ineffective = true;
        out.asc = as2;
    } else {
        out.asc = as2 * mat.fyKgCm2 / net;
    }
    return out;
}

RectangleSteel designRectangle(double mu, double b, double d, double dPrime,
                               const FlexureLimits& lim, const DesignMaterials& mat) {
    RectangleSteel out;
    const double cb = core::balancedTerm(mat.fyKgCm2) * d;
    const double c = lim.facRmax * cb;
    const double a = lim.beta1 * c;
    out.aLimit = a;
    out.m1 = lim.phi * 0.85 * mat.fcKgCm2 * b * a * (d - a / 2.0);
    if (mu <= 0.0) {
        return out;
    }
    const double rho = tensionRatio(mu, b, d, mat.fcKgCm2, mat.fyKgCm2);
    if (mu <= out.m1 && rho >= 0.0) {
        out.branch = FlexureBranch::TensionOnly;
        out.as = rho * b * d;
        return out;
    }
    // The limit steel balances the stress block at c; the excess goes to the couple. With
    // phi above 0.9 the square root can fail a little below M1: the couple is then zero.
    out.branch = FlexureBranch::CompressionSteel;
    const double as1 = 0.85 * mat.fcKgCm2 * b * a / mat.fyKgCm2;
    const double excess = std::max(mu - out.m1, 0.0);
    const double as2 = excess / (lim.phi * mat.fyKgCm2 * (d - dPrime));
    out.as = as1 + as2;
    const CompressionBars bars = compressionBars(as2, c, dPrime, mat);
    out.asc = bars.asc;
    out.fsc = bars.fsc;
    out.compressionIneffective = bars.ineffective;
    return out;
}

} // namespace

double tensionRatio(double momentKgCm, double widthCm, double depthCm, double fcKgCm2,
                    double fyKgCm2) {
    const double arg = 1.0 - 2.61 * momentKgCm / (fcKgCm2 * widthCm * depthCm * depthCm);
    if (arg < 0.0) {
        return -1.0;
    }
    return 0.85 * fcKgCm2 / fyKgCm2 * (1.0 - std::sqrt(arg));
}

FlexureLimits flexureLimits(const FlexureSettings& settings, const DesignMaterials& materials) {
    FlexureLimits lim;
    lim.phi = core::orDefault(settings.momFi, kMomFiFallback);
    lim.facRmax = std::min(core::orDefault(settings.facRmax, kFacRmaxFallback), 1.0);
    lim.facRmin = core::orDefault(settings.facRmin, kFacRminFallback);
    lim.beta1 = core::beta1(materials.fcKgCm2);
    lim.rhoBalanced = 0.85 * materials.fcKgCm2 / materials.fyKgCm2 * lim.beta1 *
                      core::balancedTerm(materials.fyKgCm2);
    lim.rhoMax = lim.facRmax * lim.rhoBalanced;
    lim.rhoMin = lim.facRmin / materials.fyKgCm2;
    return lim;
}

double designMomentTm(double momentKgCm, bool flaggedEndSupport, const FlexureSettings& settings) {
    const double m = std::abs(momentKgCm) / kTmToKgCm;
    return flaggedEndSupport ? m * core::orDefault(settings.ldFact, kLdFactFallback) : m;
}

FlexureResult designFlexure(const SectionGeometry& section, double muTm, bool hogging,
                            const FlexureSettings& settings, const DesignMaterials& materials) {
    FlexureResult r;
    r.momentTm = std::isfinite(muTm) ? std::abs(muTm) : 0.0;
    const double d = section.heightCm - settings.coverCm;
    const double dPrime = settings.compressionCoverCm;
    r.effectiveDepthCm = d;
    if (!(materials.fcKgCm2 > 0.0) || !(materials.fyKgCm2 > 0.0)) {
        r.status = FlexureStatus::InvalidInput;
        r.message = "The concrete strength and the steel yield stress must be above zero.";
        return r;
    }
    if (!(section.webWidthCm > 0.0) || !(d > 0.0) || !(dPrime >= 0.0) || !(d - dPrime > 0.0) ||
        !std::isfinite(muTm)) {
        r.status = FlexureStatus::InvalidInput;
        r.message = "The section is too shallow for its covers: the effective depth must "
                    "exceed the compression cover.";
        return r;
    }
    const FlexureLimits lim = flexureLimits(settings, materials);
    const double fc = materials.fcKgCm2;
    const double fy = materials.fyKgCm2;
    const double mu = r.momentTm * kTmToKgCm;
    const double bw = section.webWidthCm;
    const bool flangeCompressed =
        (!hogging && section.flangeOnTop) || (hogging && section.flangeAtBottom);
    const double bFlange = flangeCompressed ? std::max(section.flangeWidthCm, bw) : bw;
    r.compressionWidthCm = bFlange;

    if (section.kind == SectionKind::Rib) {
        // Ribs of ribbed slabs: the shortcut limit on the compressed face's width, but never
        // past the limit of tension steel alone at c = FacRmax × c b. Above that the tension
        // steel of the shortcut would exceed rho max (up to 1.7 rho b at 0.375 b d² Fc), the
        // bars would not yield, and the 2.61 formula would no longer hold.
        const RectangleSteel ductile = designRectangle(0.0, bFlange, d, dPrime, lim, materials);
        const double m1 = std::min(kShortcutFactor * bFlange * d * d * fc, ductile.m1);
        r.limitMomentTm = m1 / kTmToKgCm;
        r.limitBlockDepthCm = ductile.aLimit;
        if (mu > 0.0 && mu <= m1) {
            r.branch = FlexureBranch::TensionOnly;
            r.tensionAreaCm2 = tensionRatio(mu, bFlange, d, fc, fy) * bFlange * d;
        } else if (mu > m1) {
            // M1 is at most the ductile limit, where the ratio formula always has a root. The
            // couple's compression bars work at the stress their strain at c = FacRmax × c b
            // allows.
            r.branch = FlexureBranch::Shortcut;
            const double as2 = (mu - m1) / (lim.phi * fy * (d - dPrime));
            r.tensionAreaCm2 = tensionRatio(m1, bFlange, d, fc, fy) * bFlange * d + as2;
            const CompressionBars bars =
                compressionBars(as2, lim.facRmax * core::balancedTerm(fy) * d, dPrime, materials);
            r.compressionAreaCm2 = bars.asc;
            r.compressionStressKgCm2 = bars.fsc;
            if (bars.ineffective) {
                r.status = FlexureStatus::CompressionSteelIneffective;
            }
        }
    } else if (flangeCompressed && bFlange > bw && section.flangeThicknessCm > 0.0) {
        const double t = std::min(section.flangeThicknessCm, d);
        const double rho = mu > 0.0 ? tensionRatio(mu, bFlange, d, fc, fy) : 0.0;
        const double asWide = rho * bFlange * d;
        const double aWide = asWide * fy / (0.85 * fc * bFlange);
        // Limit of the full-width block, for the record.
        const RectangleSteel wide = designRectangle(0.0, bFlange, d, dPrime, lim, materials);
        r.limitMomentTm = wide.m1 / kTmToKgCm;
        r.limitBlockDepthCm = wide.aLimit;
        if (mu <= 0.0) {
            r.branch = FlexureBranch::None;
        } else if (rho >= 0.0 && aWide <= t) {
            r.branch = FlexureBranch::TensionOnly;
            r.tensionAreaCm2 = asWide;
        } else {
            // The block reaches the web: the overhangs carry a couple of their own and the
            // web takes the rest as a rectangle.
            const double asf = 0.85 * fc * (bFlange - bw) * t / fy;
            const double mf = lim.phi * asf * fy * (d - t / 2.0);
            const RectangleSteel web =
                designRectangle(std::max(mu - mf, 0.0), bw, d, dPrime, lim, materials);
            r.branch = web.branch == FlexureBranch::CompressionSteel
                           ? FlexureBranch::CompressionSteel
                           : FlexureBranch::FlangedTension;
            r.tensionAreaCm2 = asf + web.as;
            r.compressionAreaCm2 = web.asc;
            r.compressionStressKgCm2 = web.fsc;
            r.limitMomentTm = (mf + web.m1) / kTmToKgCm;
            if (web.compressionIneffective) {
                r.status = FlexureStatus::CompressionSteelIneffective;
            }
        }
    } else {
        const RectangleSteel rect = designRectangle(mu, bw, d, dPrime, lim, materials);
        r.branch = rect.branch;
        r.tensionAreaCm2 = rect.as;
        r.compressionAreaCm2 = rect.asc;
        r.compressionStressKgCm2 = rect.fsc;
        r.limitMomentTm = rect.m1 / kTmToKgCm;
        r.limitBlockDepthCm = rect.aLimit;
        if (rect.compressionIneffective) {
            r.status = FlexureStatus::CompressionSteelIneffective;
        }
    }
    if (r.status == FlexureStatus::CompressionSteelIneffective) {
        r.message = "The section is too small: the compression steel would lie at or below "
                    "the neutral axis. Deepen the beam.";
    }
    // Where the analysis asks for tension steel, never less than rho min over the web, unless
    // a third more than the moment needs is less (ACI): a small moment then gets 4/3 of its
    // steel rather than the full minimum of the section.
    const double asRhoMin = lim.rhoMin * bw * d;
    const double asMin = std::min(asRhoMin, 4.0 / 3.0 * r.tensionAreaCm2);
    if (mu > 0.0 && r.tensionAreaCm2 < asMin) {
        r.tensionAreaCm2 = asMin;
        r.minimumGoverns = true;
        r.fourThirdsGoverns = asMin < asRhoMin;
    }
    r.rho = r.tensionAreaCm2 / (bw * d);
    return r;
}

double minimumDepthCm(double spanLengthCm, const SpanEndConditions& ends,
                      const DepthDivisors& divisors, double fyKgCm2) {
    const DepthDivisors aci;
    // The divisors hold for FY 4200; a weaker steel works at lower service stresses and
    // strains, so the beam may be shallower, a stronger one must be deeper.
    const double steel = 0.4 + core::orDefault(fyKgCm2, 4200.0) / 7000.0;
    double divisor = core::orDefault(divisors.simple, aci.simple);
    if (ends.cantilever) {
        divisor = core::orDefault(divisors.cantilever, aci.cantilever);
    } else if (ends.leftContinuous && ends.rightContinuous) {
        divisor = core::orDefault(divisors.bothEnds, aci.bothEnds);
    } else if (ends.leftContinuous || ends.rightContinuous) {
        divisor = core::orDefault(divisors.oneEnd, aci.oneEnd);
    }
    return spanLengthCm / divisor * steel;
}

} // namespace orvak::beams
