// Field descriptor and limit strings of the input grids: which cells take input, which hold
// numbers, how numbers are shown, which keys a number cell takes, and each column's range.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvak::shell {

inline constexpr double kNoUpperLimit = 1e36;

/// Access flag of a column (1-based): 1 takes input, 0 shown only; 1 when absent. The row is
/// used only when rowCount > 1, else row 1 is read.
std::int16_t accessFlag(int rowCount, int row, const std::vector<std::string>& descriptors,
                        int column);

/// Kind flag of a column: 0 text, 1 number, 2 text never formatted as a number; 1 when absent.
std::int16_t kindFlag(int rowCount, int row, int columnCount, int column,
                      const std::vector<std::string>& descriptors);

/// Integer digits (for a text column: its width) and decimals of a column, from the five-
/// character groups behind the flags; 0 and 0 when the group is missing or unreadable.
struct ColumnDigits {
    int integerDigits = 0;
    int decimals = 0;
};
ColumnDigits columnDigits(int rowCount, int row, int columnCount, int column,
                          const std::vector<std::string>& descriptors);

/// Minimum (entry 2k-1) and maximum (entry 2k) of column k; 0 and 1e36 by default.
struct Limits {
    double minimum = 0.0;
    double maximum = kNoUpperLimit;
};
Limits columnLimits(int rowCount, int row, const std::vector<std::string>& limitStrings,
                    int column);

/// Display text of a cell: number cells (kind 1) right-aligned in integerDigits blanks with
/// exactly `decimals` decimals cut (not rounded); text cells as typed.
std::string formatNumberForDisplay(int access, int kind, int integerDigits, std::string_view text,
                                   int decimals);

/// Key filter of a number cell. Returns the key to pass on, or 0 to swallow it; `changed` is
/// set when an accepted key (other than Enter) alters the cell. maxLength 0 means no limit.
int filterNumberKey(int keyCode, std::string_view textSoFar, int maxLength, bool& changed);

/// Outcome of the check made when a cell is left.
enum class CellCheck { Ok, NotANumber, OutOfRange };
struct CellCheckResult {
    CellCheck status = CellCheck::Ok;
    double value = 0.0; ///< the number read, for number cells
};
/// A blank number cell counts as 0. Text cells always pass.
CellCheckResult checkCell(std::string_view text, int kind, const Limits& limits);

} // namespace orvak::shell
