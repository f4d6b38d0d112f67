// The code's values that a beam setting stored as 0 stands for: applied where the setting is
// used (core::orDefault), never when it is saved. The one place these numbers are written.
#pragma once

namespace orvak::beams {

inline constexpr double kMomFiFallback = 0.9;       ///< `MomFiTxt`: phi for flexure
inline constexpr double kFacRmaxFallback = 0.5;     ///< `FacRmaxTxt`: rho max / rho b
inline constexpr double kFacRminFallback = 14.06;   ///< `FacRminTxt`: rho min = value / FY
inline constexpr double kLdFactFallback = 1.0;      ///< `LdfactTxt`: end-support moment factor
inline constexpr double kShearFactorFallback = 1.0; ///< shear factor on Vu
inline constexpr double kShearFiFallback = 0.85;    ///< `ShearFiTxt`: phi for shear
inline constexpr double kVsMinFallback = 3.5;       ///< `VsMinTxt`: minimum-stirrup stress, kg/cm²
inline constexpr double kStirrupDiameterFallbackMm = 8.0; ///< `SDIAMTXT`, mm
inline constexpr double kDeflDivisorFallback = 240.0;     ///< `DeflTxt`: allowed L / divisor

} // namespace orvak::beams
