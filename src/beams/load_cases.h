// Load cases of a continuous beam: which spans carry their live load in each case of the three
// case schemes, and the pair of load factors each span takes in a case.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orvak::beams {

/// The dead-load and live-load factors, two of each: index 0 for a span that carries its live
/// load in the case, index 1 for a span that does not (its live part is then dropped).
struct LoadFactors {
    std::array<double, 2> dead{}; ///< FACDEADL
    std::array<double, 2> live{}; ///< FACDAYNL
};

/// How a load case came about, for listings.
enum class CaseKind {
    FullLoad,      ///< every span carries dead and live load
    SingleSpan,    ///< one span loaded (index = that span), the others dead load only
    OddSpans,      ///< spans 1, 3, 5 ... loaded
    EvenSpans,     ///< spans 2, 4, 6 ... loaded
    AdjacentSpans, ///< the two spans beside a support (index = that support), then every other
};

/// One load case. Spans and supports are numbered from 0 here; listings add 1.
struct LoadCase {
    CaseKind kind = CaseKind::FullLoad;
    int index = -1; ///< span (SingleSpan) or support (AdjacentSpans) the case is built for
    std::uint32_t liveSpans = 0; ///< bit i set: span i carries its live load

    bool spanLoaded(int span) const { return ((liveSpans >> span) & 1U) != 0; }
};

inline constexpr int kMinCaseScheme = 1;
inline constexpr int kMaxCaseScheme = 3;
/// The scheme a design takes unless the engineer chooses another: the full live-load pattern.
inline constexpr int kDefaultCaseScheme = 3;

/// How a scheme is named on the listings and the command line.
std::string_view caseSchemeName(int scheme);

/// The load cases of a scheme, in the order in which they are numbered.
/// Scheme 1: the full-load case only.
/// Scheme 2: the full-load case, then one case per span with only that span loaded.
/// Scheme 3, the full live-load pattern: the cases of scheme 2, then the odd and the even
/// spans loaded, then per interior support the two adjacent spans loaded with every other
/// span beyond them; a pattern equal to one already built is not repeated.
/// Preconditions: 1 <= scheme <= 3, 1 <= spanCount <= 30.
std::vector<LoadCase> buildLoadCases(int scheme, int spanCount);

/// Dead and live factor of a span in a case: the first pair if the span is loaded, else the
/// second pair with the live factor zero (the live part is dropped).
struct SpanFactors {
    double dead = 0.0;
    double live = 0.0;
};
SpanFactors spanFactors(const LoadCase& loadCase, int span, const LoadFactors& factors);

} // namespace orvak::beams
