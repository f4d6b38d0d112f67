// Counts worked out in double (bars, stirrups, rows) turned into integers only after their
// range is checked: an absurd input must never wrap into a small, plausible count.
#pragma once

#include <cmath>
#include <optional>

namespace orvak::core {

/// `value` as an int when it is a number from 0 to `limit`; empty otherwise (not a number,
/// negative, or beyond the limit, where a plain conversion would be undefined or wrap).
/// Precondition: value is already rounded the way the caller wants (floor or ceil).
inline std::optional<int> checkedCount(double value, int limit) {
    if (!(value >= 0.0) || !(value <= static_cast<double>(limit))) {
        return std::nullopt;
    }
    return static_cast<int>(value);
}

} // namespace orvak::core
