// orvak-cli: what several commands share: the project folder a command was given and the code
// page in which the program folder's language writes its texts.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/codepage.h"

namespace orvak::cli {

/// The language of the program folder's configuration; English when it has none.
std::string configuredLanguage(const std::filesystem::path& programFolder);

/// The code page of the texts of the program folder's language (names in the project files).
core::CodePage configuredCodePage();

/// The project folder `folder`; throws InputError with one sentence when it is no folder, or,
/// with `mustBeProject`, when its name does not end in ".prj" (any case).
std::filesystem::path existingProject(const std::string& folder, bool mustBeProject = false);

/// Tells the user, on standard error, that the built-in bar table stands in for a program
/// folder that has none.
void noteBuiltInBarTable();

/// A text typed on the command line as the project's single-byte text. Throws InputError,
/// naming `what`, when a character has no byte in the code page (it would be stored as "?").
std::string projectText(std::string_view utf8, core::CodePage page, std::string_view what);

} // namespace orvak::cli
