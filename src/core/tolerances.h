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

} // namespace orvak::core
