// Named tolerances of the engines: every comparison of computed numbers uses one of these.
#pragma once

namespace orvak::core {

/// Relative tolerance under which two computed lengths, forces or moments count as equal.
inline constexpr double kRelativeEqual = 1e-9;

/// A pivot below this fraction of the largest stiffness term marks a singular (unstable)
/// structure.
inline constexpr double kSingularPivot = 1e-10;

} // namespace orvak::core
