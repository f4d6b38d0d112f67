// Material constants of the ACI strength design shared by the design modules.
// ACI 318: beta1 (10.2.7.3), balanced strain with Es = 2.04e6 kg/cm² and ecu = 0.003.
#include "core/concrete.h"

#include <algorithm>
#include <cmath>

#include "core/error.h"

namespace orvak::core {

double beta1(double fcKgCm2) {
    if (fcKgCm2 <= 280.0) {
        return 0.85;
    }
    return std::max(0.65, 0.85 - 0.05 * (fcKgCm2 - 280.0) / 70.0);
}

double balancedTerm(double fyKgCm2) {
    return kBalancedStrainStressKgCm2 / (kBalancedStrainStressKgCm2 + fyKgCm2);
}

double concreteModulus(double fcKgCm2) {
    ORVAK_ASSERT(fcKgCm2 >= 0.0);
    return 15100.0 * std::sqrt(fcKgCm2);
}

double roundUpToStep(double v, double step) {
    ORVAK_ASSERT(step > 0.0);
    return std::floor((v + 0.9999 * step) / step) * step;
}

} // namespace orvak::core
