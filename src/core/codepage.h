// Single-byte code pages of the program's text files, converted to UTF-8 only where text
// leaves the engines for the screen (and back for what the user types).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvak::core {

enum class CodePage { Windows1252, Windows1255 };

/// The code page of a language's prompt and text files: Windows-1255 for Hebrew (any case,
/// blanks trimmed), Windows-1252 for every other language.
CodePage codePageForLanguage(std::string_view language);

/// Single-byte text to UTF-8. Bytes that the code page leaves undefined become U+FFFD.
std::string toUtf8(std::string_view bytes, CodePage page);

/// UTF-8 to single-byte text. A character the code page cannot hold, and a malformed UTF-8
/// sequence, become `replacement`.
std::string fromUtf8(std::string_view utf8, CodePage page, char replacement = '?');

/// UTF-8 typed by the user to single-byte text, only when every character has its own byte
/// in the code page: empty for a character the page cannot hold (Hebrew under Windows-1252),
/// an embedded NUL, or malformed UTF-8, so that a name is refused rather than stored mangled.
std::optional<std::string> fromUtf8Exact(std::string_view utf8, CodePage page);

} // namespace orvak::core
