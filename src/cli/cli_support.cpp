// orvak-cli: what several commands share: the project folder a command was given and the code
// page in which the program folder's language writes its texts.
#include "cli/cli_support.h"

#include <cstdlib>
#include <iostream>

#include <fmt/format.h>

#include "core/error.h"
#include "core/file_util.h"
#include "shell/projects.h"
#include "shell/shell_state.h"
#include "shell/software_config.h"
#include "shell/startup.h"

namespace fs = std::filesystem;

namespace orvak::cli {

std::string configuredLanguage(const fs::path& programFolder) {
    try {
        const fs::path general = core::resolveNoCase(programFolder, shell::kGeneralFolderName);
        if (const auto swc = core::findFileNoCase(general, shell::kSwcFile)) {
            return shell::readSoftwareConfig(*swc).language;
        }
    } catch (const FileError&) {
        // An unreadable configuration leaves the default language.
    }
    return "English";
}

core::CodePage configuredCodePage() {
    return core::codePageForLanguage(configuredLanguage(shell::resolveProgramFolder(std::getenv)));
}

fs::path existingProject(const std::string& folder, bool mustBeProject) {
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) {
        throw InputError("There is no project folder at " + folder + ".");
    }
    if (mustBeProject) {
        std::string name = fs::path(folder).lexically_normal().filename().string();
        if (name.empty()) {
            name = fs::path(folder).lexically_normal().parent_path().filename().string();
        }
        if (!shell::isProjectFolderName(name)) {
            throw InputError(folder + " is not a project folder: the name of a project folder "
                                      "ends in .prj.");
        }
    }
    return fs::path(folder);
}

void noteBuiltInBarTable() {
    std::cerr << "The program folder has no bar table (GENERAL/ROUNDBAR.DAT); the built-in "
                 "table is used.\n";
}

std::string projectText(std::string_view utf8, core::CodePage page, std::string_view what) {
    if (auto bytes = core::fromUtf8Exact(utf8, page)) {
        return *std::move(bytes);
    }
    throw InputError(fmt::format("The {} \"{}\" holds a character that the project's code page "
                                 "({}) cannot keep.",
                                 what, utf8,
                                 page == core::CodePage::Windows1255 ? "Windows-1255, Hebrew"
                                                                     : "Windows-1252, English"));
}

} // namespace orvak::cli
