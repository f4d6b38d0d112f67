// Material constants of the ACI strength design shared by beams, columns and footings, and
// the round-up-to-step rule of dimensions. Stresses in kg/cm².
#pragma once

namespace orvak::core {

/// Modulus of elasticity of the reinforcing steel, Es, kg/cm².
inline constexpr double kSteelModulusKgCm2 = 2040000.0;

/// The stress of the balanced-strain term, kg/cm²: Es × 0.003 (the concrete's crushing
/// strain), taken as the code's round 6100 rather than the 6120 of Es = 2.04e6.
inline constexpr double kBalancedStrainStressKgCm2 = 6100.0;

/// Stress-block depth factor: 0.85 up to Fc = 280 kg/cm², less 0.05 per 70 kg/cm² above it,
/// never below 0.65.
double beta1(double fcKgCm2);

/// The balanced-strain term 6100 / (6100 + FY), with kBalancedStrainStressKgCm2.
double balancedTerm(double fyKgCm2);

/// Modulus of elasticity of normal-weight concrete, Ec = 15100 √Fc (kg/cm²).
/// Precondition: fcKgCm2 >= 0.
double concreteModulus(double fcKgCm2);

/// Rounds v up to a whole multiple of step: Int((v + 0.9999·step) / step) · step, so a value
/// already on a multiple stays. Precondition: step > 0.
double roundUpToStep(double v, double step);

} // namespace orvak::core
