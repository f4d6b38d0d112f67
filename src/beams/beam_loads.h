// The loads of one span of a continuous beam: four kinds, each with a dead and a live part,
// and the rule that combines the two parts with a pair of load factors.
#pragma once

#include <array>
#include <cstddef>

namespace orvak::beams {

/// The four load kinds of a span, numbered as the beam record numbers them.
enum class LoadKind : int {
    Uniform = 1,        ///< over the whole span, kg/cm
    Triangular = 2,     ///< zero at one end, peak at the other, kg/cm at the peak
    PartialUniform = 3, ///< uniform from startCm over lengthCm, kg/cm
    Concentrated = 4,   ///< a point load at startCm, kg
};

inline constexpr std::size_t kLoadKindCount = 4;

/// Index of a kind in SpanLoads (0-based).
constexpr std::size_t loadIndex(LoadKind kind) {
    return static_cast<std::size_t>(kind) - 1;
}

/// Which end of the span carries the peak of a triangular load (the other end carries zero).
enum class TrianglePeak { AtRight, AtLeft };

/// One load of a span. Values may be negative (an upward load).
struct SpanLoad {
    bool present = false;
    double deadValue = 0.0; ///< kg/cm for the distributed kinds, kg for the point load
    double liveValue = 0.0; ///< same unit as deadValue
    /// Distance from the span's left support to the start of a partial load or to the point
    /// load, cm; unused by the other kinds.
    double startCm = 0.0;
    double lengthCm = 0.0; ///< loaded length of a partial load, cm; unused by the other kinds
    TrianglePeak peak = TrianglePeak::AtRight; ///< triangular load only
};

/// The loads of one span, indexed by loadIndex(kind): at most one of each kind.
using SpanLoads = std::array<SpanLoad, kLoadKindCount>;

/// Factored value of a load: dead part × dead factor + live part × live factor; zero for an
/// absent load.
constexpr double factoredValue(const SpanLoad& load, double deadFactor, double liveFactor) {
    return load.present ? load.deadValue * deadFactor + load.liveValue * liveFactor : 0.0;
}

} // namespace orvak::beams
