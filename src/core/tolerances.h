// Named tolerances of the engines: every comparison of computed numbers uses one of these.
#pragma once

namespace orvak::core {

/// Relative tolerance under which two computed lengths, forces or moments count as equal.
inline constexpr double kRelativeEqual = 1e-9;

/// A computed value that is zero in exact arithmetic comes out as a few units of rounding:
/// within kRelativeEqual of `scale` (the largest value of its kind) it counts as zero.
inline bool negligible(double value, double scale) {
    return value <= kRelativeEqual * scale && -value <= kRelativeEqual * scale;
}

/// A pivot below this fraction of the largest stiffness term marks a singular (unstable)
/// structure.
inline constexpr double kSingularPivot = 1e-10;

/// Absolute tolerance under which two values of order 1 to 10⁴ computed in double (lengths
/// in cm, areas in cm², bar counts, spacings) count as equal; added before a value is floored,
/// so that an exact fit (bars in a layer, a spacing on a whole mm) is not lost to rounding.
inline constexpr double kAbsoluteEqual = 1e-9;

/// Tolerance of values that went through a single (about seven digits): relative to the
/// value's size (a load placed to end at the support may add up a rounding above the span),
/// or absolute for a value of order one to a thousand before it is rounded up (a bar count
/// from areas of the bar table, a length in cm), so that rounding does not add a whole step.
inline constexpr double kSingleRounding = 1e-6;

/// The quadratic term of a curve over a span is dropped, when its roots are sought, below
/// this fraction of the linear and constant terms over the span: it is rounding of a load
/// that is uniform in exact arithmetic, and dividing by it would give roots far outside.
inline constexpr double kNegligibleQuadratic = 1e-13;

/// The search for the place of largest deflection in a span stops when the place is known to
/// this fraction of the span length.
inline constexpr double kPeakPlaceRelative = 1e-12;

} // namespace orvak::core
