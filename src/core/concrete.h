// Material constants of the ACI strength design shared by beams, columns and footings, and
// the round-up-to-step rule of dimensions. Stresses in kg/cm².
#pragma once

namespace orvak::core {

/// Stress-block depth factor: 0.85 up to Fc = 280 kg/cm², less 0.05 per 70 kg/cm² above it,
/// never below 0.65.
double beta1(double fcKgCm2);

/// The balanced-strain term 6100 / (6100 + FY) (6100 kg/cm² = Es × 0.003).
double balancedTerm(double fyKgCm2);

/// Modulus of elasticity of normal-weight concrete, Ec = 15100 √Fc (kg/cm²).
/// Precondition: fcKgCm2 >= 0.
double concreteModulus(double fcKgCm2);

/// Rounds v up to a whole multiple of step: Int((v + 0.9999·step) / step) · step, so a value
/// already on a multiple stays. Precondition: step > 0.
double roundUpToStep(double v, double step);

} // namespace orvak::core
