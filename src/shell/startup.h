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

inline constexpr std::string_view kProjectsFolderName = "Projects";
inline constexpr std::string_view kDemoProjectFolderName = "Demo.prj";

/// The folder of the program's shipped data (prompt files, LANGUAGE.DAT, demo project):
/// $ORVAK_DATA when set and not empty; else the first of <exe dir>/data, <exe dir>/../data
/// (the build tree), <exe dir>/../share/orvak and the source tree's data folder that holds
/// LANGUAGE.DAT; an empty path when none does.
std::filesystem::path resolveDataFolder(const std::filesystem::path& executable,
                                        const std::function<const char*(const char*)>& env);

/// Copies the shell's shipped data into the program folder where it is missing: LANGUAGE.DAT
/// into DRIVERS and the prompt files of each language the shipped LANGUAGE.DAT names (and
/// English) into its folder. A file the user already has is never overwritten. An empty or
/// missing data folder installs nothing. Throws FileError when a file cannot be read or
/// written. What the design modules ship is installed through
/// StartupOptions::installShippedData.
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
    /// Installs what the design modules ship (bar tables, the demo project) from the data
    /// folder into the program folder. Called after the shell's own data and before start-up
    /// creates any folder, so that it can still tell a fresh installation; only with a data
    /// folder. A FileError it throws becomes a warning. The shell knows no design module: the
    /// program's entry hands model::installShippedData here.
    std::function<void(const std::filesystem::path& dataFolder,
                       const std::filesystem::path& programFolder)>
        installShippedData;
};

/// The start-up sequence up to the prompts: the shipped data (when a data folder is given),
/// folders (DRIVERS, DEFAULT.prj, GENERAL, one per language of LANGUAGE.DAT up to 50, the
/// current language, Symbols), SWC, PRJNO, the forgetting of a vanished project, GEN.CST and
/// TMPDIR, and the shell's prompt lists. Without any PRJNO (a first start) the projects folder
/// is Projects (created, and kept even without a project) and the demo project is current
/// when it exists. Files that cannot be read
/// leave their defaults and add a sentence to ShellState::warnings. DEFPARAM.DAT is not
/// opened here: the frame holds a ParameterFile and opens it when hasProject(). Throws
/// FileError only when the program folder itself cannot be created.
ShellState runStartup(const StartupOptions& options);

/// Reloads the shell's general and global prompt lists in the current language.
void loadShellPrompts(ShellState& shell);

/// Writes PRJNO from the shell's state (on closing the main window and after project commands).
void saveLastProjectState(const ShellState& shell);

/// Writes SWC from the shell's state (software settings form).
void saveSoftwareConfig(const ShellState& shell);

} // namespace orvak::shell
