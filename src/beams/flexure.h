// Flexural design of one point of a continuous beam to ACI strength design: tension steel,
// compression steel where the section needs it, the steel-ratio limits and the minimum depth.
#pragma once

#include <string>

#include "beams/code_defaults.h"
#include "beams/section.h"
#include "core/concrete.h"

namespace orvak::beams {

/// Materials of a beam design, kg/cm².
struct DesignMaterials {
    double fcKgCm2 = 0.0;        ///< concrete strength Fc, > 0
    double fyKgCm2 = 0.0;        ///< main-bar yield FY (first steel grade), > 0
    double fyStirrupKgCm2 = 0.0; ///< stirrup yield (second steel grade); 0 means FY
};

/// Flexure settings as stored; a value of 0 or less stands for the built-in fallback, which
/// is applied by the functions that use it.
struct FlexureSettings {
    double momFi = 0.0;   ///< `MomFiTxt`: phi for flexure (fallback 0.9)
    double facRmax = 0.0; ///< `FacRmaxTxt`: rho max as a fraction of rho b (fallback 0.5)
    double facRmin = 0.0; ///< `FacRminTxt`: rho min = value / FY (fallback 14.06)
    double ldFact = 0.0;  ///< `LdfactTxt`: moment factor at flagged end supports (fallback 1.0)
    double coverCm = 5.0; ///< face to tension-steel centroid, cm; d = h - cover
    double compressionCoverCm = 5.0; ///< face to compression-steel centroid d', cm
};

/// Modulus of the reinforcing steel, kg/cm²: the shared material constant.
using core::kSteelModulusKgCm2;

/// The ratios of one design call with the fallbacks applied.
struct FlexureLimits {
    double phi = 0.0;
    double facRmax = 0.0; ///< used factor, never above 1 (tension steel must yield)
    double facRmin = 0.0; ///< used numerator
    double beta1 = 0.0;
    double rhoBalanced = 0.0;
    double rhoMax = 0.0;
    double rhoMin = 0.0;
};

/// Precondition: materials.fcKgCm2 > 0 and fyKgCm2 > 0.
FlexureLimits flexureLimits(const FlexureSettings& settings, const DesignMaterials& materials);

/// The design moment of a point in t·m: |stored kg·cm| / 100,000, times `LdfactTxt` (or its
/// fallback) at a flagged end support.
double designMomentTm(double momentKgCm, bool flaggedEndSupport, const FlexureSettings& settings);

enum class FlexureBranch {
    None,             ///< no moment: no steel required
    TensionOnly,      ///< rectangle (or T with the stress block in the flange), tension steel
    FlangedTension,   ///< flange overhang couple plus the web, tension steel only
    CompressionSteel, ///< the limit moment exceeded: a steel couple over d - d'
    Shortcut,         ///< a rib past its limit (the smaller of 0.375 b d² Fc and the ductile
                      ///< limit), with a couple for the excess
};

enum class FlexureStatus {
    Ok,
    InvalidInput,                ///< a dimension or material that cannot be designed; see message
    CompressionSteelIneffective, ///< the compression steel lies at or below the neutral axis
};

struct FlexureResult {
    FlexureStatus status = FlexureStatus::Ok;
    std::string message; ///< plain sentence when status is not Ok
    FlexureBranch branch = FlexureBranch::None;
    double momentTm = 0.0;               ///< the design moment (absolute), t·m
    double effectiveDepthCm = 0.0;       ///< d
    double compressionWidthCm = 0.0;     ///< width of the compression face used
    double limitMomentTm = 0.0;          ///< M1 of the tension-only limit, t·m
    double limitBlockDepthCm = 0.0;      ///< stress-block depth a at the ductile limit, cm
    double tensionAreaCm2 = 0.0;         ///< required As, rho min included
    double compressionAreaCm2 = 0.0;     ///< required A's (0 when not needed)
    double compressionStressKgCm2 = 0.0; ///< stress of the compression steel (<= FY)
    double rho = 0.0;                    ///< As / (bw d)
    bool minimumGoverns = false;         ///< As was raised to rho min × bw × d or 4/3 As
    bool fourThirdsGoverns = false;      ///< ... and it was 4/3 As, less than rho min × bw × d
    bool ok() const { return status == FlexureStatus::Ok; }
};

/// Designs one point for the moment muTm (t·m, >= 0, already the design moment). hogging:
/// tension at the top face. The flange is used in compression when it lies on the compressed
/// face (T, L and rib under sagging; inverted T and L under hogging); else the web rectangle
/// is designed. The rib (kind 7) takes the shortcut limit.
FlexureResult designFlexure(const SectionGeometry& section, double muTm, bool hogging,
                            const FlexureSettings& settings, const DesignMaterials& materials);

/// The tension-steel ratio of step "rho = 0.85 Fc / FY (1 - sqrt(1 - 2.61 M / (Fc b d²)))";
/// negative when the square root has no real value (the width cannot carry M alone). 2.61 is
/// 2.353 / 0.9 and stays as it is whatever the phi setting (phi enters the limit moment M1).
double tensionRatio(double momentKgCm, double widthCm, double depthCm, double fcKgCm2,
                    double fyKgCm2);

/// How the ends of a span are held, for the minimum depth.
struct SpanEndConditions {
    bool leftContinuous = false;
    bool rightContinuous = false;
    bool cantilever = false; ///< one end free (an overhang)
};

/// Divisors of the minimum depth L / divisor; a value of 0 or less stands for the ACI value.
struct DepthDivisors {
    double simple = 16.0;   ///< both ends discontinuous
    double oneEnd = 18.5;   ///< one end continuous
    double bothEnds = 21.0; ///< both ends continuous
    double cantilever = 8.0;
};

/// ACI minimum depth of a beam not supporting partitions likely to be damaged: L/16 with both
/// ends discontinuous, L/18.5 with one end continuous, L/21 with both, L/8 for a cantilever;
/// for a steel other than FY 4200 kg/cm² times (0.4 + FY / 7000). fyKgCm2 0 or less: 4200.
double minimumDepthCm(double spanLengthCm, const SpanEndConditions& ends,
                      const DepthDivisors& divisors = {}, double fyKgCm2 = 4200.0);

} // namespace orvak::beams
