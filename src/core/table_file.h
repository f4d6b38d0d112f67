// The table files of the grid forms: the number a cell holds, the text a cell shows for a
// stored single, and the save rule (rows in use to "TMPFIL" beside the table, then renamed).
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/file_util.h"

namespace orvak::core {

/// Scratch file of a table save, in the same folder as the table.
inline constexpr std::string_view kTableTempFile = "TMPFIL";

/// The number a cell holds: its leading decimal number after leading blanks, as BASIC's Val
/// reads it; blank or non-numeric text, NaN and infinities count as 0.
double cellNumber(std::string_view text);

/// The text a grid cell shows for a stored single: the shortest decimal that reads back to
/// the same single ("0.15", "12", "0").
std::string cellTextFor(float value);

/// Saves a table file by the rule of the table forms. `records` are the whole records of the
/// rows in use, in order, without gaps. They are written to TMPFIL in the folder of `target`
/// and synced; `beforeRename` is called; then TMPFIL is renamed over `target`, which stays
/// intact until that moment. When `records` is empty, `target` is deleted and the empty TMPFIL
/// stays behind. The folder is synced last. Throws FileError, whose message calls the table
/// `tableName` ("bar table"); `target` is then as it was.
void saveTableFile(const std::filesystem::path& target, const std::vector<std::uint8_t>& records,
                   std::string_view tableName, const BeforeRenameHook& beforeRename = {});

} // namespace orvak::core
