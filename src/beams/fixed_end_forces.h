// Fixed-end forces of a span clamped at both ends under each of the four load kinds, in
// closed form (kg, cm, kg·cm), and their sum over a span's loads.
#pragma once

#include "beams/beam_loads.h"

namespace orvak::beams {

/// The actions that the two clamps exert on a span. Forces upward positive (kg), moments
/// counterclockwise positive (kg·cm), the stiffness method's convention: a downward uniform
/// load w gives forceLeft = forceRight = wL/2, momentLeft = +wL²/12, momentRight = -wL²/12.
/// The bending moment at the left end is -momentLeftKgCm and at the right end
/// +momentRightKgCm (sagging positive).
struct FixedEndForces {
    double forceLeftKg = 0.0;
    double momentLeftKgCm = 0.0;
    double forceRightKg = 0.0;
    double momentRightKgCm = 0.0;

    FixedEndForces& operator+=(const FixedEndForces& o) {
        forceLeftKg += o.forceLeftKg;
        momentLeftKgCm += o.momentLeftKgCm;
        forceRightKg += o.forceRightKg;
        momentRightKgCm += o.momentRightKgCm;
        return *this;
    }
};

/// Full uniform load w (kg/cm, downward positive) on a span of length L > 0 (cm).
FixedEndForces uniformLoadFixedEnd(double wKgCm, double lengthCm);

/// Triangular load rising linearly from zero to wPeak (kg/cm) at the end given by peak.
FixedEndForces triangularLoadFixedEnd(double wPeakKgCm, double lengthCm, TrianglePeak peak);

/// Uniform load w over [a, a + c]. Precondition: 0 <= a, 0 <= c, a + c <= L (to rounding).
FixedEndForces partialUniformLoadFixedEnd(double wKgCm, double lengthCm, double startCm,
                                          double loadedLengthCm);

/// Point load P (kg, downward positive) at distance a from the left end, 0 <= a <= L.
FixedEndForces concentratedLoadFixedEnd(double pKg, double lengthCm, double startCm);

/// Fixed-end forces of one load with value v (its factored value), by its kind.
FixedEndForces loadFixedEnd(LoadKind kind, const SpanLoad& load, double value, double lengthCm);

} // namespace orvak::beams
