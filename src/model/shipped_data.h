// What the design modules ship for a fresh installation: the built-in bar and spacing tables
// and the demo project with its building. The shell installs its own data (prompts, languages).
#pragma once

#include <filesystem>

namespace orvak::model {

/// Creates the demo project `projectsFolder`/Demo.prj with the GEN.CST described by
/// `demoData`/project.json and, when `demoData` holds a model.json, its floors and beams; a
/// Demo.prj that exists is left alone. Returns the project folder. Throws FileError when the
/// description cannot be read, the model is bad or the project cannot be written (a half-made
/// project is removed).
std::filesystem::path installDemoProject(const std::filesystem::path& demoData,
                                         const std::filesystem::path& projectsFolder);

/// Installs what the design modules ship in `dataFolder` into `programFolder`, where it is
/// fresh: the built-in bar and spacing tables into a GENERAL folder that does not exist yet,
/// and the demo project (from `dataFolder`/demo) into a Projects folder that does not exist
/// yet. A table or demo project the user deleted does not come back. An empty or missing data
/// folder installs nothing. Throws FileError when a file cannot be read or written. This is
/// what the program's entry hands to shell::StartupOptions::installShippedData.
void installShippedData(const std::filesystem::path& dataFolder,
                        const std::filesystem::path& programFolder);

} // namespace orvak::model
