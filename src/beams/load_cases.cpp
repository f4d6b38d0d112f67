// Load cases of the three schemes. Scheme 3 envelopes the ACI live-load patterns: alternate
// spans give the largest span moments, two adjacent spans (and every other span beyond) the
// support ones; the one-span cases of scheme 2 are kept in it, so that it never gives less.
#include "beams/load_cases.h"

#include <algorithm>

#include "core/error.h"

namespace orvak::beams {

namespace {

std::uint32_t allSpans(int spanCount) {
    return spanCount >= 32 ? ~0U : (1U << spanCount) - 1U;
}

std::uint32_t alternateSpans(int first, int spanCount) {
    std::uint32_t mask = 0;
    for (int i = first; i < spanCount; i += 2) {
        mask |= 1U << i;
    }
    return mask;
}

} // namespace

std::vector<LoadCase> buildLoadCases(int scheme, int spanCount) {
    ORVAK_ASSERT(scheme >= kMinCaseScheme && scheme <= kMaxCaseScheme);
    ORVAK_ASSERT(spanCount >= 1 && spanCount <= 31);
    std::vector<LoadCase> cases;
    cases.push_back({CaseKind::FullLoad, -1, allSpans(spanCount)});
    auto add = [&cases](CaseKind kind, int index, std::uint32_t mask) {
        const bool known = std::any_of(cases.begin(), cases.end(),
                                       [mask](const LoadCase& c) { return c.liveSpans == mask; });
        if (!known) {
            cases.push_back({kind, index, mask});
        }
    };
    if (scheme >= 2) {
        for (int i = 0; i < spanCount; ++i) {
            add(CaseKind::SingleSpan, i, 1U << i);
        }
    }
    if (scheme == 3) {
        add(CaseKind::OddSpans, -1, alternateSpans(0, spanCount));
        if (spanCount >= 2) {
            add(CaseKind::EvenSpans, -1, alternateSpans(1, spanCount));
        }
        // Interior support j lies between spans j - 1 and j.
        for (int j = 1; j < spanCount; ++j) {
            std::uint32_t mask = (1U << (j - 1)) | (1U << j);
            for (int i = j - 3; i >= 0; i -= 2) {
                mask |= 1U << i;
            }
            for (int i = j + 2; i < spanCount; i += 2) {
                mask |= 1U << i;
            }
            add(CaseKind::AdjacentSpans, j, mask);
        }
    }
    return cases;
}

std::string_view caseSchemeName(int scheme) {
    switch (scheme) {
    case 1:
        return "all spans loaded";
    case 2:
        return "all spans, then one span at a time";
    case 3:
        return "full live-load pattern";
    default:
        return "unknown scheme";
    }
}

SpanFactors spanFactors(const LoadCase& loadCase, int span, const LoadFactors& factors) {
    if (loadCase.spanLoaded(span)) {
        return {factors.dead[0], factors.live[0]};
    }
    return {factors.dead[1], 0.0};
}

} // namespace orvak::beams
