// Start-up: where the program folder and the shipped data are, the installation of missing
// data, and the sequence that brings the shell from nothing to a current project and prompts.
#include "shell/startup.h"

#include <pwd.h>
#include <unistd.h>

#include "core/error.h"
#include "core/file_util.h"
#include "shell/project_record.h"
#include "shell/projects.h"
#include "shell/prompts.h"
#include "shell/software_config.h"

namespace fs = std::filesystem;

namespace orvak::shell {

namespace {

// Languages past this count in LANGUAGE.DAT get no folder.
constexpr std::size_t kMaxLanguages = 50;

std::string variable(const std::function<const char*(const char*)>& env, const char* name) {
    const char* value = env ? env(name) : nullptr;
    return value ? std::string(value) : std::string();
}

bool isFolder(const fs::path& path) {
    std::error_code ec;
    return fs::is_directory(path, ec);
}

// Creates a folder where one may exist already; a folder that cannot be made is noted, and
// start-up goes on without it.
void makeFolderQuietly(const fs::path& folder, ShellState& shell) {
    try {
        core::makeFolder(folder);
    } catch (const FileError& e) {
        shell.warnings.push_back(e.what());
    }
}

void copyFileIfMissing(const fs::path& source, const fs::path& targetFolder) {
    const std::string name = source.filename().string();
    if (core::findFileNoCase(targetFolder, name)) {
        return;
    }
    const auto bytes = core::readWholeFile(source);
    if (bytes) {
        core::saveFileAtomically(targetFolder / name, *bytes);
    }
}

// A remembered project folder is usable when it names an existing folder by an absolute path
// that holds no control character (a garbled PRJNO could hold a NUL, which would cut the path
// short and name a different folder).
bool usableProjectFolder(const std::string& path) {
    if (path.find_first_not_of(' ') == std::string::npos) {
        return false;
    }
    for (const char ch : path) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 32 || c == 127) {
            return false;
        }
    }
    const fs::path p(path);
    return p.is_absolute() && isFolder(p);
}

} // namespace

fs::path resolveProgramFolder(const std::function<const char*(const char*)>& env) {
    const std::string home = variable(env, "ORVAK_HOME");
    if (!home.empty()) {
        return fs::absolute(home).lexically_normal();
    }
    // The XDG base directory rules ignore a relative XDG_DATA_HOME.
    const std::string xdg = variable(env, "XDG_DATA_HOME");
    if (!xdg.empty() && fs::path(xdg).is_absolute()) {
        return fs::path(xdg) / "orvak";
    }
    std::string userHome = variable(env, "HOME");
    if (userHome.empty()) {
        if (const passwd* pw = ::getpwuid(::geteuid()); pw && pw->pw_dir) {
            userHome = pw->pw_dir;
        }
    }
    if (userHome.empty()) {
        return fs::current_path() / ".orvak";
    }
    return fs::path(userHome) / ".local" / "share" / "orvak";
}

fs::path resolveDataFolder(const fs::path& executable,
                           const std::function<const char*(const char*)>& env) {
    const std::string data = variable(env, "ORVAK_DATA");
    if (!data.empty()) {
        return fs::absolute(data).lexically_normal();
    }
    const fs::path exeDir = fs::absolute(executable).parent_path();
    const fs::path candidates[] = {exeDir / "data", exeDir / ".." / "data",
                                   exeDir / ".." / "share" / "orvak",
                                   fs::path(ORVAK_SOURCE_DATA_DIR)};
    for (const auto& candidate : candidates) {
        if (core::findFileNoCase(candidate, kLanguageFile)) {
            return candidate.lexically_normal();
        }
    }
    return {};
}

fs::path defaultProjectsFolder(const fs::path& programFolder) {
    return programFolder / kProjectsFolderName;
}

void installProgramData(const fs::path& dataFolder, const fs::path& programFolder) {
    if (dataFolder.empty() || !isFolder(dataFolder)) {
        return;
    }
    core::makeFolder(programFolder);
    const fs::path drivers = core::resolveNoCase(programFolder, kDriversFolderName);
    core::makeFolder(drivers);

    if (const auto languageFile = core::findFileNoCase(dataFolder, kLanguageFile)) {
        copyFileIfMissing(*languageFile, drivers);
    }

    std::vector<std::string> languages = readLanguageList(dataFolder);
    languages.emplace_back("English");
    for (const auto& language : languages) {
        if (!core::isSafeFileComponent(language)) {
            continue;
        }
        const auto source = core::findFileNoCase(dataFolder, language);
        if (!source || !isFolder(*source)) {
            continue;
        }
        const fs::path target = core::resolveNoCase(programFolder, language);
        core::makeFolder(target);
        std::error_code ec;
        for (auto it = fs::directory_iterator(*source, ec); !ec && it != fs::directory_iterator();
             it.increment(ec)) {
            std::error_code typeEc;
            if (it->is_regular_file(typeEc)) {
                copyFileIfMissing(it->path(), target);
            }
        }
    }
}

ShellState runStartup(const StartupOptions& options) {
    ShellState shell;
    shell.programFolder = fs::absolute(options.programFolder).lexically_normal();
    shell.screenWidthTwips = options.screenWidthTwips;
    shell.screenHeightTwips = options.screenHeightTwips;
    core::makeFolder(shell.programFolder);

    if (options.dataFolder) {
        try {
            installProgramData(*options.dataFolder, shell.programFolder);
            if (options.installShippedData) {
                options.installShippedData(*options.dataFolder, shell.programFolder);
            }
        } catch (const FileError& e) {
            shell.warnings.push_back(e.what());
        }
    }

    // Folders that must exist. The current language is still English here: SWC comes later.
    makeFolderQuietly(shell.driversFolder(), shell);
    makeFolderQuietly(shell.defaultProjectFolder(), shell);
    makeFolderQuietly(shell.generalFolder(), shell);
    std::vector<std::string> languages;
    try {
        languages = readLanguageList(shell.driversFolder());
    } catch (const FileError& e) {
        shell.warnings.push_back(e.what());
    }
    if (languages.size() > kMaxLanguages) {
        languages.resize(kMaxLanguages);
    }
    languages.push_back(shell.language());
    for (const auto& language : languages) {
        if (!core::isSafeFileComponent(language)) {
            shell.warnings.push_back("The language name \"" + language +
                                     "\" of LANGUAGE.DAT cannot be a folder name; it is skipped.");
            continue;
        }
        makeFolderQuietly(core::resolveNoCase(shell.programFolder, language), shell);
    }
    makeFolderQuietly(shell.symbolsFolder(), shell);

    try {
        if (const auto swc = core::findFileNoCase(shell.generalFolder(), kSwcFile)) {
            shell.software = readSoftwareConfig(*swc);
        }
    } catch (const FileError& e) {
        shell.warnings.push_back(e.what());
    }

    const auto prjno = core::findFileNoCase(shell.generalFolder(), kPrjnoFile);
    if (prjno) {
        try {
            shell.last = readLastProjectState(*prjno);
            shell.last.projectsFolder = withTrailingSeparator(shell.last.projectsFolder);
        } catch (const FileError& e) {
            shell.warnings.push_back(e.what());
        }
    } else {
        // A first start: the installation's own projects folder, with the demo project open.
        const fs::path projects = defaultProjectsFolder(shell.programFolder);
        makeFolderQuietly(projects, shell);
        shell.last.projectsFolder = withTrailingSeparator(projects.string());
        const fs::path demo = projects / kDemoProjectFolderName;
        if (isFolder(demo)) {
            shell.last.projectPath = demo.string();
        }
    }
    if (options.project) {
        const fs::path project = fs::absolute(*options.project).lexically_normal();
        const fs::path folder = project.filename().empty() ? project.parent_path() : project;
        if (isFolder(folder)) {
            shell.last.projectPath = folder.string();
            shell.last.projectsFolder = withTrailingSeparator(folder.parent_path().string());
        } else {
            shell.warnings.push_back("There is no project folder at " + folder.string() + ".");
        }
    }
    if (!shell.last.projectPath.empty()) {
        shell.projectName = projectNameFromPath(shell.last.projectsFolder, shell.last.projectPath);
    }

    // A remembered project that is gone is forgotten without a word, and with it the folder
    // it was remembered in. A first start keeps its fresh projects folder, so that "new"
    // has a place to go at once.
    if (!usableProjectFolder(shell.last.projectPath)) {
        shell.last.projectPath.clear();
        shell.projectName.clear();
        if (prjno) {
            shell.last.projectsFolder.clear();
        }
    }

    shell.tempFolderKey = std::string(kScratchFolderKey);
    if (shell.hasProject()) {
        try {
            loadCurrentProject(shell);
        } catch (const FileError& e) {
            shell.warnings.push_back(e.what());
        }
    }

    try {
        loadShellPrompts(shell);
    } catch (const FileError& e) {
        shell.warnings.push_back(e.what());
    }
    return shell;
}

void loadShellPrompts(ShellState& shell) {
    shell.generalPrompts = readPrompts(shell.programFolder, shell.language(), kGeneralPromptKey, 2,
                                       kGeneralPromptLines);
    shell.globalPrompts1 =
        readPrompts(shell.programFolder, shell.language(), kGlobalPromptKey, 2, 36);
    shell.globalPrompts2 =
        readPrompts(shell.programFolder, shell.language(), kGlobalPromptKey, 49, 120);
}

void saveLastProjectState(const ShellState& shell) {
    core::makeFolder(shell.generalFolder());
    writeLastProjectState(core::resolveNoCase(shell.generalFolder(), kPrjnoFile), shell.last);
}

void saveSoftwareConfig(const ShellState& shell) {
    core::makeFolder(shell.generalFolder());
    writeSoftwareConfig(core::resolveNoCase(shell.generalFolder(), kSwcFile), shell.software);
}

} // namespace orvak::shell
