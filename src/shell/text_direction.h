// Hebrew text for devices that write left to right: reversal of Hebrew runs, and conversion
// of a Windows-1255 text file to the DOS Hebrew code page.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace orvak::shell {

/// True for a Windows-1255 Hebrew letter (codes 224..250).
constexpr bool isHebrewLetter(unsigned char c) { return c >= 224 && c <= 250; }

/// Reverses the runs of Hebrew text in `text` (single-byte). Whether a non-Hebrew, non-blank
/// character ends a run is decided by testing `projectPath` (the current project path), as the
/// original routine did; see docs/decisions.md.
std::string ReverseHebInStrng(std::string_view text, std::string_view projectPath);

/// Rewrites a text file with its Hebrew letters moved from Windows codes 224..250 to DOS codes
/// 128..154, through the scratch file "TMP1" of the project folder. A blank or missing file
/// name does nothing. Lines that hold "@" also get the placeholder step described in
/// docs/decisions.md.
void ConvWinCharToDos(const std::filesystem::path& file, const std::filesystem::path& projectFolder,
                      std::string_view projectPath);

} // namespace orvak::shell
