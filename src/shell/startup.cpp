// Start-up: where the program folder and the shipped data are, the installation of missing
// data, and the sequence that brings the shell from nothing to a current project and prompts.
#include "shell/startup.h"

#include <pwd.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "bars/bar_table_grid.h"
#include "beams/model_json.h"
#include "core/codepage.h"
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

std::string single(const nlohmann::json& value) {
    return core::fromUtf8(value.get<std::string>(), core::CodePage::Windows1252);
}

template <std::size_t N>
void textArray(const nlohmann::json& j, const char* key, std::array<std::string, N>& out) {
    if (!j.contains(key)) {
        return;
    }
    const auto& a = j.at(key);
    for (std::size_t i = 0; i < N && i < a.size(); ++i) {
        out[i] = single(a.at(i));
    }
}

// The GEN.CST fields of a project description; fields it does not name stay blank.
ProjectRecord recordFromJson(const nlohmann::json& j) {
    ProjectRecord r;
    r.projectCode = j.value("projectCode", std::int16_t{0});
    textArray(j, "titleLines", r.titleLines);
    textArray(j, "shortTexts", r.shortTexts);
    textArray(j, "texts9to11", r.texts9to11);
    textArray(j, "codes", r.codes);
    if (j.contains("values")) {
        const auto& a = j.at("values");
        for (std::size_t i = 0; i < r.values.size() && i < a.size(); ++i) {
            r.values[i] = a.at(i).get<float>();
        }
    }
    const auto text = [&](const char* key, std::string& out) {
        if (j.contains(key)) {
            out = single(j.at(key));
        }
    };
    text("unitsText", r.unitsText);
    text("workFolder", r.workFolder);
    text("text12", r.text12);
    text("dateText", r.dateText);
    text("outputName", r.outputName);
    text("sheetName", r.sheetName);
    r.choice = j.value("choice", std::int16_t{1});
    r.count = j.value("count", std::int16_t{1});
    r.value = j.value("value", 0.0f);
    r.outputNumber = j.value("outputNumber", std::int16_t{0});
    if (r.sheetName.empty()) {
        r.sheetName = std::string(kDefaultSheetName);
    }
    return r;
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

fs::path installDemoProject(const fs::path& demoData, const fs::path& projectsFolder) {
    const fs::path target = projectsFolder / kDemoProjectFolderName;
    if (core::findFileNoCase(projectsFolder, kDemoProjectFolderName)) {
        return target;
    }
    const fs::path description = demoData / "project.json";
    const auto bytes = core::readWholeFile(description);
    if (!bytes) {
        throw FileError(description, "The demo project's description is missing");
    }
    ProjectRecord record;
    try {
        const auto j = nlohmann::json::parse(bytes->begin(), bytes->end());
        record = recordFromJson(j.at("genCst"));
    } catch (const nlohmann::json::exception& e) {
        throw FileError(description,
                        std::string("The demo project's description cannot be read: ") + e.what());
    }
    core::makeFolder(projectsFolder);
    core::makeFolder(target);
    try {
        writeProjectRecord(target, record);
        createScratchFolder(target);
        // The demo building's floors and beams, when the data folder describes them.
        if (const auto model = core::findFileNoCase(demoData, "model.json")) {
            try {
                beams::importModelFile(target, *model);
            } catch (const InputError& e) {
                throw FileError(*model,
                                std::string("The demo model cannot be imported: ") + e.what());
            }
        }
    } catch (...) {
        std::error_code ec;
        fs::remove_all(target, ec);
        throw;
    }
    return target;
}

void installProgramData(const fs::path& dataFolder, const fs::path& programFolder) {
    if (dataFolder.empty() || !isFolder(dataFolder)) {
        return;
    }
    core::makeFolder(programFolder);
    const fs::path drivers = core::resolveNoCase(programFolder, kDriversFolderName);
    core::makeFolder(drivers);

    // A fresh installation gets the built-in bar and spacing tables as files, so that the
    // design modules and the steel report have bars to work with from the first start. An
    // existing GENERAL folder is the user's: a table deleted there stays deleted.
    if (!core::findFileNoCase(programFolder, kGeneralFolderName)) {
        const fs::path general = programFolder / kGeneralFolderName;
        core::makeFolder(general);
        for (const bars::TableKind* kind : {&bars::roundbarTable(), &bars::spacingTable()}) {
            bars::BarTableGrid grid = bars::BarTableGrid::read(*kind, general);
            if (grid.showsDefaults()) {
                grid.markChanged();
                grid.save(general);
            }
        }
    }
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

    // The demo project belongs to a fresh installation only: once the Projects folder exists,
    // the projects in it are the user's business.
    const fs::path projects = defaultProjectsFolder(programFolder);
    std::error_code ec;
    const auto demo = core::findFileNoCase(dataFolder, "demo");
    if (!fs::exists(projects, ec) && demo && isFolder(*demo)) {
        installDemoProject(*demo, projects);
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
    shell.generalPrompts =
        readPrompts(shell.programFolder, shell.language(), kGeneralPromptKey, 2, 30);
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
