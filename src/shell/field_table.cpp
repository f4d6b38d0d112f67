// Field descriptor and limit strings of the input grids, read the way the grid reads them:
// flags by position, five-character digit groups, and "@n:value" limit entries.
#include "shell/field_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/text_reader.h"

namespace orvak::shell {

namespace {

// The row's string; a single-row table always reads row 1. A row without a string reads as
// an empty one, which leaves every default in place.
std::string_view rowString(int rowCount, int row, const std::vector<std::string>& strings) {
    const int index = rowCount > 1 ? row - 1 : 0;
    if (index < 0 || static_cast<std::size_t>(index) >= strings.size()) {
        return {};
    }
    return strings[static_cast<std::size_t>(index)];
}

// The flag at a 1-based position: 1 when the position lies beyond the string; otherwise the
// digit's value, and 0 for a character that is not a digit (it reads as no number).
std::int16_t flagAt(std::string_view descriptor, int position) {
    if (position < 1 || static_cast<std::size_t>(position) > descriptor.size()) {
        return 1;
    }
    const char c = descriptor[static_cast<std::size_t>(position - 1)];
    return (c >= '0' && c <= '9') ? static_cast<std::int16_t>(c - '0') : 0;
}

int wholeNumber(std::string_view text) {
    const auto v = core::leadingNumber(text);
    if (!v || !std::isfinite(*v) || *v < 0) {
        return 0;
    }
    return static_cast<int>(std::min(*v, 99.0));
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

// The value text behind a limit key, up to the next "@" or the end of the string.
std::string_view limitText(std::string_view limits, std::size_t keyEnd) {
    const auto next = limits.find('@', keyEnd);
    return limits.substr(keyEnd, next == std::string_view::npos ? limits.npos : next - keyEnd);
}

// A cell's text as a number: an optional sign, digits, an optional point and decimals, and
// nothing else (the keys a number cell takes).
std::optional<double> cellNumber(std::string_view text) {
    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        negative = text[i] == '-';
        ++i;
    }
    const std::string_view body = text.substr(i);
    if (body.empty() || body.find_first_not_of("0123456789.") != std::string_view::npos ||
        body.find_first_of("0123456789") == std::string_view::npos ||
        std::count(body.begin(), body.end(), '.') > 1) {
        return std::nullopt;
    }
    double value = 0.0;
    const auto [end, ec] = std::from_chars(body.data(), body.data() + body.size(), value);
    if (ec != std::errc() || end != body.data() + body.size()) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

} // namespace

std::int16_t accessFlag(int rowCount, int row, const std::vector<std::string>& descriptors,
                        int column) {
    return flagAt(rowString(rowCount, row, descriptors), column);
}

std::int16_t kindFlag(int rowCount, int row, int columnCount, int column,
                      const std::vector<std::string>& descriptors) {
    return flagAt(rowString(rowCount, row, descriptors), columnCount + column);
}

ColumnDigits columnDigits(int rowCount, int row, int columnCount, int column,
                          const std::vector<std::string>& descriptors) {
    const std::string_view descriptor = rowString(rowCount, row, descriptors);
    ColumnDigits digits;
    if (column < 1 || columnCount < 0) {
        return digits;
    }
    // Groups "II.D," start behind the 2n flags, five characters each.
    const std::size_t start =
        2 * static_cast<std::size_t>(columnCount) + 5 * static_cast<std::size_t>(column - 1);
    if (start >= descriptor.size()) {
        return digits;
    }
    const std::string_view group = descriptor.substr(start, 5);
    digits.integerDigits = wholeNumber(group.substr(0, std::min<std::size_t>(2, group.size())));
    if (group.size() >= 4 && group[2] == '.') {
        digits.decimals = wholeNumber(group.substr(3, 1));
    }
    return digits;
}

Limits columnLimits(int rowCount, int row, const std::vector<std::string>& limitStrings,
                    int column) {
    Limits limits;
    const std::string_view text = rowString(rowCount, row, limitStrings);
    if (text.empty() || column < 1) {
        return limits;
    }
    // Keys carry their colon, so "@2:" is never found inside "@21:".
    const std::string minKey = "@" + std::to_string(2 * column - 1) + ":";
    const std::string maxKey = "@" + std::to_string(2 * column) + ":";
    const auto minAt = text.find(minKey);
    const auto maxAt = text.find(maxKey);
    if (minAt == std::string_view::npos || maxAt == std::string_view::npos) {
        return limits;
    }
    // A value of blanks only is no value, like an empty one.
    const std::string_view minText = trimmed(limitText(text, minAt + minKey.size()));
    const std::string_view maxText = trimmed(limitText(text, maxAt + maxKey.size()));
    if (!minText.empty()) {
        limits.minimum = core::leadingNumber(minText).value_or(0.0);
    }
    if (!maxText.empty()) {
        limits.maximum = core::leadingNumber(maxText).value_or(0.0);
    }
    return limits;
}

std::string formatNumberForDisplay(int /*access*/, int kind, int integerDigits,
                                   std::string_view text, int decimals) {
    if (kind != 1) {
        return std::string(text);
    }
    const std::string_view value = trimmed(text);
    const int d = std::max(decimals, 0);
    std::string fraction = d > 0 ? "." + std::string(static_cast<std::size_t>(d), '0') : "";
    std::string_view integerPart = value;
    const auto point = value.find('.');
    if (point != std::string_view::npos) {
        integerPart = value.substr(0, point);
        if (d > 0) {
            // Decimals beyond the column's count are cut, not rounded: the cell shows what
            // was typed, never a value the engineer did not enter.
            const std::string_view typed = value.substr(point + 1);
            fraction = "." + std::string(typed.substr(0, static_cast<std::size_t>(d)));
            fraction.resize(static_cast<std::size_t>(d) + 1, '0');
        }
    }
    // Right-aligned in the column's integer width; a longer integer part is shown whole
    // rather than cut to a different number.
    std::string out;
    const auto width = static_cast<std::size_t>(std::max(integerDigits, 0));
    if (integerPart.size() < width) {
        out.assign(width - integerPart.size(), ' ');
    }
    out += integerPart;
    out += fraction;
    return out;
}

int filterNumberKey(int keyCode, std::string_view textSoFar, int maxLength, bool& changed) {
    constexpr int kEnter = 13;
    constexpr int kEscape = 27;
    constexpr int kBackspace = 8;
    constexpr int kLineFeed = 10;
    if (keyCode == kEnter) {
        return keyCode;
    }
    if (keyCode == kEscape || keyCode == kBackspace || keyCode == kLineFeed) {
        changed = true;
        return keyCode;
    }
    if (maxLength > 0 && textSoFar.size() >= static_cast<std::size_t>(maxLength)) {
        return 0;
    }
    if (keyCode < 0 || keyCode > 127) {
        return 0;
    }
    const char c = static_cast<char>(keyCode);
    if (std::string_view("+-.0123456789").find(c) == std::string_view::npos) {
        return 0;
    }
    if ((c == '.' || c == '-' || c == '+') && textSoFar.find(c) != std::string_view::npos) {
        return 0;
    }
    changed = true;
    return keyCode;
}

CellCheckResult checkCell(std::string_view text, int kind, const Limits& limits) {
    CellCheckResult result;
    if (kind != 1) {
        return result;
    }
    const std::string_view value = trimmed(text);
    if (!value.empty()) {
        const auto number = cellNumber(value);
        if (!number) {
            result.status = CellCheck::NotANumber;
            return result;
        }
        result.value = *number;
    }
    if (result.value < limits.minimum || result.value > limits.maximum) {
        result.status = CellCheck::OutOfRange;
    }
    return result;
}

} // namespace orvak::shell
