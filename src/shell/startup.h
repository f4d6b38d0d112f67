// Start-up of the program: the program folder and its sub-folders, the shipped data, the
// configuration, the remembered project and the prompts, in the order the shell needs them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "shell/shell_state.h"

namespace orvak::shell {

/// The program folder: $ORVAK_HOME when set and not empty, else $XDG_DATA_HOME/orvak, else
/// ~/.local/share/orvak. `env` looks a variable up (std::getenv in the program, a map in tests).
std::filesystem::path resolveProgramFolder(const std::function<const char*(const char*)>& env);

/// The folder of the program's shipped data (prompt files, LANGUAGE.DAT, demo project):
/// $ORVAK_DATA when set; else the first of <exe dir>/data, <exe dir>/../share/orvak and the
/// source tree's data folder that holds LANGUAGE.DAT.
std::filesystem::path resolveDataFolder(const std::filesystem::path& executable,
                                        const std::function<const char*(const char*)>& env);

/// Copies the shipped data into the program folder where it is missing: LANGUAGE.DAT into
/// DRIVERS, each language's prompt files into its folder, the demo project into
/// Projects/Demo.prj. A file the user already has is never overwritten.
void installProgramData(const std::filesystem::path& dataFolder,
                        const std::filesystem::path& programFolder);

/// The default projects folder of a fresh installation: program folder / "Projects".
std::filesystem::path defaultProjectsFolder(const std::filesystem::path& programFolder);

struct StartupOptions {
    std::filesystem::path programFolder;
    std::optional<std::filesystem::path> dataFolder; ///< install shipped data from here
    std::int16_t screenWidthTwips = 0;
    std::int16_t screenHeightTwips = 0;
    /// A project to open instead of the remembered one (the program's --project option).
    std::optional<std::filesystem::path> project;
};

/// The start-up sequence up to the prompts: folders (DRIVERS, DEFAULT.prj, GENERAL, one per
/// language of LANGUAGE.DAT up to 50, the current language, Symbols), SWC, PRJNO, the
/// forgetting of a vanished project, TMPDIR, GEN.CST, and the shell's prompt lists.
ShellState runStartup(const StartupOptions& options);

/// Reloads the shell's general and global prompt lists in the current language.
void loadShellPrompts(ShellState& shell);

/// Writes PRJNO from the shell's state (on closing the main window and after project commands).
void saveLastProjectState(const ShellState& shell);

/// Writes SWC from the shell's state (software settings form).
void saveSoftwareConfig(const ShellState& shell);

} // namespace orvak::shell
