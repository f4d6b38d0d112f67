// Stirrup design of one point of a beam to ACI strength design: concrete share, minimum
// stirrups, the upper limit of the steel share, legs, diameter, spacing and cut length.
#pragma once

#include <string>

#include "beams/code_defaults.h"
#include "beams/flexure.h"

namespace orvak::beams {

/// Shear settings as stored; the fallbacks of shearFactor, shearFi and vsMin (0 or less) are
/// applied by designShear.
struct ShearSettings {
    double shearFactor = 0.0;       ///< multiplies Vu (fallback 1.0)
    double shearFi = 0.0;           ///< `ShearFiTxt`: phi for shear (fallback 0.85)
    double vsMin = 0.0;             ///< `VsMinTxt`: stress of minimum stirrups, kg/cm² (3.5)
    double stirrupDiameterMm = 8.0; ///< `SDIAMTXT`: first diameter tried, mm (0: 8 mm)
    double maxSpacingCm = 20.0;     ///< `SSPCTXT` (0 or less: d / 2)
    double minSpacingCm = 7.5;      ///< `MinSSPCTXT` (0 or less: no minimum)
    double fourLegWidthCm = 40.0;   ///< `WIDTHLNK`: webs wider than this get four legs
    double stirrupCover = 2.5;      ///< clear cover to the stirrup, cm
    double hookCm = 0.0;            ///< hook length of each end (0 or less: max(6 Ø, 7.5 cm))
};

/// The diameter is raised in 2 mm steps up to this (or the first diameter, when larger).
inline constexpr double kMaxStirrupDiameterMm = 16.0;

/// Bent-up (inclined) bars crossing the point.
struct InclinedBars {
    int count = 0;
    double diameterMm = 0.0;
    double angleDeg = 45.0;
};

struct ShearPointInput {
    double vuKg = 0.0;             ///< factored shear (sign ignored)
    double webWidthCm = 0.0;       ///< b
    double heightCm = 0.0;         ///< h, for the cut length
    double effectiveDepthCm = 0.0; ///< d
    InclinedBars inclined;
};

enum class ShearStatus {
    Ok,
    InvalidInput,         ///< dimensions or materials not above zero
    SectionTooSmall,      ///< Vs above 2.06 sqrt(Fc) b d: no stirrups designed
    MinSpacingNotReached, ///< the spacing stays below the minimum at the largest diameter
};

struct ShearResult {
    ShearStatus status = ShearStatus::Ok;
    std::string message;
    double vnKg = 0.0;      ///< Vu × factor / phi
    double vcKg = 0.0;      ///< 0.53 sqrt(Fc) b d
    double vbKg = 0.0;      ///< share of inclined bars
    double vsKg = 0.0;      ///< steel share designed for
    double vsLimitKg = 0.0; ///< 2.06 sqrt(Fc) b d
    bool minimumStirrups = false;
    int legs = 0;
    double diameterMm = 0.0;
    double avCm2 = 0.0;
    double spacingCm = 0.0;
    double cutLengthCm = 0.0;      ///< the outer closed stirrup
    double innerCutLengthCm = 0.0; ///< the inner stirrup of four legs, else 0
    bool ok() const { return status == ShearStatus::Ok; }
};

/// The spacing at which stirrups are placed: the designed one cut down to 0.1 cm, never
/// rounded up past what the shear allows (9.16 gives 9.1).
double placedSpacingCm(double spacingCm);

ShearResult designShear(const ShearPointInput& point, const ShearSettings& settings,
                        const DesignMaterials& materials);

} // namespace orvak::beams
