// Closed-form fixed-end forces of a clamped span. Each follows from the influence lines of the
// clamped beam for a unit point load at x (b = L - x):
//   M_A = x b² / L², M_B = x² b / L², R_A = b² (L + 2x) / L³, R_B = x² (L + 2b) / L³,
// integrated over the load's extent for the distributed kinds.
#include "beams/fixed_end_forces.h"

#include "core/error.h"

namespace orvak::beams {

namespace {

// Antiderivatives of the clamped-beam influence lines times L² (moments) and L³ (left
// reaction): x (L - x)², x² (L - x) and (L - x)² (L + 2x) = L³ - 3 L x² + 2 x³.
double leftMomentPrimitive(double x, double l) {
    return l * l * x * x / 2.0 - 2.0 * l * x * x * x / 3.0 + x * x * x * x / 4.0;
}
double rightMomentPrimitive(double x, double l) {
    return l * x * x * x / 3.0 - x * x * x * x / 4.0;
}
double leftReactionPrimitive(double x, double l) {
    return l * l * l * x - l * x * x * x + x * x * x * x / 2.0;
}

} // namespace

FixedEndForces uniformLoadFixedEnd(double wKgCm, double lengthCm) {
    ORVAK_ASSERT(lengthCm > 0.0);
    const double l = lengthCm;
    return {wKgCm * l / 2.0, wKgCm * l * l / 12.0, wKgCm * l / 2.0, -wKgCm * l * l / 12.0};
}

FixedEndForces triangularLoadFixedEnd(double wPeakKgCm, double lengthCm, TrianglePeak peak) {
    ORVAK_ASSERT(lengthCm > 0.0);
    const double l = lengthCm;
    // Peak at the right, w(x) = w x / L: M_A = wL²/30, M_B = wL²/20, R_A = 3wL/20, R_B = 7wL/20.
    const double zeroEndMoment = wPeakKgCm * l * l / 30.0;
    const double peakEndMoment = wPeakKgCm * l * l / 20.0;
    const double zeroEndForce = 3.0 * wPeakKgCm * l / 20.0;
    const double peakEndForce = 7.0 * wPeakKgCm * l / 20.0;
    if (peak == TrianglePeak::AtRight) {
        return {zeroEndForce, zeroEndMoment, peakEndForce, -peakEndMoment};
    }
    return {peakEndForce, peakEndMoment, zeroEndForce, -zeroEndMoment};
}

FixedEndForces partialUniformLoadFixedEnd(double wKgCm, double lengthCm, double startCm,
                                          double loadedLengthCm) {
    ORVAK_ASSERT(lengthCm > 0.0 && startCm >= 0.0 && loadedLengthCm >= 0.0);
    const double l = lengthCm;
    const double a = startCm;
    const double c = startCm + loadedLengthCm;
    const double ma = wKgCm * (leftMomentPrimitive(c, l) - leftMomentPrimitive(a, l)) / (l * l);
    const double mb = wKgCm * (rightMomentPrimitive(c, l) - rightMomentPrimitive(a, l)) / (l * l);
    const double ra =
        wKgCm * (leftReactionPrimitive(c, l) - leftReactionPrimitive(a, l)) / (l * l * l);
    const double rb = wKgCm * loadedLengthCm - ra;
    return {ra, ma, rb, -mb};
}

FixedEndForces concentratedLoadFixedEnd(double pKg, double lengthCm, double startCm) {
    ORVAK_ASSERT(lengthCm > 0.0 && startCm >= 0.0);
    const double l = lengthCm;
    const double a = startCm;
    const double b = l - a;
    const double l3 = l * l * l;
    return {pKg * b * b * (l + 2.0 * a) / l3, pKg * a * b * b / (l * l),
            pKg * a * a * (l + 2.0 * b) / l3, -pKg * a * a * b / (l * l)};
}

FixedEndForces loadFixedEnd(LoadKind kind, const SpanLoad& load, double value, double lengthCm) {
    switch (kind) {
    case LoadKind::Uniform:
        return uniformLoadFixedEnd(value, lengthCm);
    case LoadKind::Triangular:
        return triangularLoadFixedEnd(value, lengthCm, load.peak);
    case LoadKind::PartialUniform:
        return partialUniformLoadFixedEnd(value, lengthCm, load.startCm, load.lengthCm);
    case LoadKind::Concentrated:
        return concentratedLoadFixedEnd(value, lengthCm, load.startCm);
    }
    ORVAK_ASSERT(false);
    return {};
}

} // namespace orvak::beams
