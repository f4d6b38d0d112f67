// Project folders: the project commands of the shell (new, open, exit, copy, archive, delete)
// and the listing of a projects folder. A failed command leaves the disk and the shell as they
// were.
#include "shell/projects.h"

#include <algorithm>
#include <ctime>
#include <random>

#include "core/error.h"
#include "core/file_util.h"
#include "shell/project_record.h"

namespace fs = std::filesystem;

namespace orvak::shell {

namespace {

constexpr std::string_view kProjectSuffix = ".prj";
constexpr std::string_view kArchiveFolderName = "Archive";

std::string lowerAscii(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return out;
}

bool endsWithNoCase(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() &&
           lowerAscii(text.substr(text.size() - suffix.size())) == lowerAscii(suffix);
}

// An absolute, lexically normal folder path without a trailing separator.
fs::path normalFolder(const fs::path& folder) {
    fs::path p = fs::absolute(folder).lexically_normal();
    if (p.filename().empty() && p.has_parent_path() && p != p.root_path()) {
        p = p.parent_path();
    }
    return p;
}

bool isFolder(const fs::path& path) {
    std::error_code ec;
    return fs::is_directory(path, ec);
}

// True when `inner` is `outer` or lies inside it.
bool liesInside(const fs::path& inner, const fs::path& outer) {
    const fs::path rel = inner.lexically_relative(outer);
    return !rel.empty() && *rel.begin() != "..";
}

std::string timeStamp() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buf[32];
    std::strftime(buf, sizeof buf, "%Y%m%d-%H%M%S", &local);
    return buf;
}

// The project's folder name without its ".prj".
std::string projectStem(const fs::path& projectPath) {
    std::string name = projectPath.filename().string();
    if (isProjectFolderName(name)) {
        name.erase(name.size() - kProjectSuffix.size());
    }
    return name;
}

// A name in `folder` that no entry has yet: base.prj, else base-2.prj, base-3.prj, ...
fs::path freeName(const fs::path& folder, const std::string& base) {
    for (int n = 1;; ++n) {
        const std::string name =
            base + (n == 1 ? std::string() : "-" + std::to_string(n)) + std::string(kProjectSuffix);
        if (!core::findFileNoCase(folder, name)) {
            return folder / name;
        }
    }
}

// Copies a folder tree to `target` through a hidden staging folder beside it, so that the
// target appears whole or not at all.
void copyFolderWhole(const fs::path& source, const fs::path& target) {
    std::random_device rd;
    const fs::path stage = target.parent_path() /
                           ("." + target.filename().string() + ".partial" + std::to_string(rd()));
    std::error_code ec;
    fs::copy(source, stage, fs::copy_options::recursive | fs::copy_options::copy_symlinks, ec);
    if (!ec) {
        fs::rename(stage, target, ec);
    }
    if (ec) {
        std::error_code ignored;
        fs::remove_all(stage, ignored);
        throw FileError(source, "The project could not be copied to " + target.string() + ": " +
                                    ec.message());
    }
}

// Makes the archive folder; reports whether it was made now, so a failure can take it back.
bool makeArchiveFolder(const fs::path& archive) {
    const bool existed = isFolder(archive);
    core::makeFolder(archive);
    return !existed;
}

void removeIfMadeAndEmpty(const fs::path& folder, bool made) {
    std::error_code ec;
    if (made && fs::is_empty(folder, ec) && !ec) {
        fs::remove(folder, ec);
    }
}

fs::path existingProjectFolder(const fs::path& projectPath) {
    const fs::path path = normalFolder(projectPath);
    if (!isFolder(path)) {
        throw InputError("There is no project folder at " + path.string() + ".");
    }
    return path;
}

} // namespace

bool isProjectFolderName(std::string_view name) {
    return endsWithNoCase(name, kProjectSuffix);
}

std::string withTrailingSeparator(std::string_view folder) {
    std::string out(folder);
    if (!out.empty() && out.back() != '/') {
        out += '/';
    }
    return out;
}

std::string projectNameFromPath(std::string_view projectsFolder, std::string_view projectPath) {
    const std::string prefix = withTrailingSeparator(projectsFolder);
    if (!prefix.empty() && projectPath.size() > prefix.size() && projectPath.starts_with(prefix)) {
        return std::string(projectPath.substr(prefix.size()));
    }
    return std::string(projectPath);
}

std::string projectFolderName(std::string_view typedName) {
    const auto first = typedName.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        throw InputError("A project needs a name.");
    }
    const auto last = typedName.find_last_not_of(" \t");
    const std::string name(typedName.substr(first, last - first + 1));
    if (!core::isSafeFileComponent(name) || name.find("..") != std::string::npos) {
        throw InputError("The project name \"" + name +
                         "\" cannot be used: a name may not contain \"/\", \"\\\", \":\", \"..\" "
                         "or control characters.");
    }
    return name + std::string(kProjectSuffix);
}

void loadCurrentProject(ShellState& shell) {
    const fs::path path = shell.projectPath();
    ProjectRecord record = readProjectRecord(path);
    createScratchFolder(path);
    // Saves cut off by a crash or a kill leave their temporaries; the file each one was for is
    // whole (the old or the new one), unless it was being written for the first time.
    for (const std::string& name :
         core::removeStaleTemporaries(path, fs::file_time_type::clock::now())) {
        shell.warnings.push_back("A save of " + name +
                                 " in the project was cut off before the "
                                 "file was first written; the file is not there. Enter its data "
                                 "again.");
    }
    shell.sheetName = record.sheetName;
    shell.outputName = record.outputName;
    shell.outputNumber = record.outputNumber;
    setWorkFolder(shell, record.workFolder);
    shell.project = std::move(record);
}

fs::path newProject(ShellState& shell, const fs::path& projectsFolder, std::string_view typedName) {
    const std::string name = projectFolderName(typedName);
    if (projectsFolder.empty()) {
        throw InputError("No projects folder is chosen; choose one before creating a project.");
    }
    const fs::path folder = normalFolder(projectsFolder);
    std::error_code ec;
    if (fs::exists(folder, ec) && !isFolder(folder)) {
        throw InputError("The projects folder " + folder.string() + " is a file, not a folder.");
    }
    if (core::findFileNoCase(folder, name)) {
        throw InputError("A project named \"" + name + "\" already exists in " + folder.string() +
                         ".");
    }
    const bool madeFolder = !isFolder(folder);
    core::makeFolder(folder);
    const fs::path target = folder / name;
    ProjectRecord record;
    try {
        if (!fs::create_directory(target, ec) || ec) {
            throw FileError(target, "The project folder cannot be created: " +
                                        (ec ? ec.message() : std::string("it exists already")));
        }
        try {
            // A fresh folder has no record: reading gives the blank record with the default
            // sheet name, which is then written as the project's first GEN.CST.
            record = readProjectRecord(target);
            record.outputName.clear();
            writeProjectRecord(target, record);
            record.valid = true;
            createScratchFolder(target);
        } catch (...) {
            std::error_code ignored;
            fs::remove_all(target, ignored);
            throw;
        }
    } catch (...) {
        if (madeFolder) {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
        }
        throw;
    }

    shell.last.projectsFolder = withTrailingSeparator(folder.string());
    shell.last.projectPath = target.string();
    shell.projectName = projectNameFromPath(shell.last.projectsFolder, shell.last.projectPath);
    shell.sheetName = record.sheetName;
    shell.outputName.clear();
    shell.outputNumber = record.outputNumber;
    setWorkFolder(shell, record.workFolder);
    shell.project = std::move(record);
    return target;
}

void openProject(ShellState& shell, const fs::path& projectPath) {
    const fs::path path = existingProjectFolder(projectPath);
    ShellState opened = shell;
    opened.last.projectsFolder = withTrailingSeparator(path.parent_path().string());
    opened.last.projectPath = path.string();
    opened.projectName = projectNameFromPath(opened.last.projectsFolder, opened.last.projectPath);
    loadCurrentProject(opened);

    // The drawing editor rebuilds its scratch drawing and the picture from the project's
    // drawing; stale copies from a previous session would show the wrong building.
    std::error_code ec;
    if (auto scratch = core::findFileNoCase(path / kScratchFolderKey, "DRAW.DAT")) {
        fs::remove(*scratch, ec);
    }
    if (auto picture = core::findFileNoCase(path, "DRAW.BMP")) {
        fs::remove(*picture, ec);
    }
    removeEmptyFiles(path);
    shell = std::move(opened);
}

void closeProject(ShellState& shell) {
    if (shell.hasProject()) {
        removeEmptyFiles(shell.projectPath());
    }
}

std::vector<std::string> listProjects(const fs::path& projectsFolder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (auto it = fs::directory_iterator(projectsFolder, ec);
         !ec && it != fs::directory_iterator(); it.increment(ec)) {
        const std::string name = it->path().filename().string();
        std::error_code typeEc;
        if (it->is_directory(typeEc) && isProjectFolderName(name)) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

void removeEmptyFiles(const fs::path& folder) {
    std::error_code ec;
    std::vector<fs::path> empty;
    for (auto it = fs::directory_iterator(folder, ec); !ec && it != fs::directory_iterator();
         it.increment(ec)) {
        std::error_code e;
        // A link is never followed: only the folder's own empty files go.
        if (it->is_regular_file(e) && !it->is_symlink(e) && it->file_size(e) == 0 && !e) {
            empty.push_back(it->path());
        }
    }
    for (const auto& path : empty) {
        fs::remove(path, ec);
    }
}

void createScratchFolder(const fs::path& projectPath) {
    core::makeFolder(projectPath / kScratchFolderKey);
}

std::size_t setWorkFolder(ShellState& shell, std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    shell.workFolder =
        first == std::string_view::npos ? std::string() : std::string(text.substr(first));
    return shell.workFolder.size();
}

fs::path copyProject(const fs::path& projectPath, const fs::path& projectsFolder,
                     std::string_view newTypedName) {
    const std::string name = projectFolderName(newTypedName);
    const fs::path source = existingProjectFolder(projectPath);
    const fs::path folder = normalFolder(projectsFolder);
    if (!isFolder(folder)) {
        throw InputError("There is no projects folder at " + folder.string() + ".");
    }
    if (core::findFileNoCase(folder, name)) {
        throw InputError("A project named \"" + name + "\" already exists in " + folder.string() +
                         ".");
    }
    const fs::path target = folder / name;
    if (liesInside(target, source)) {
        throw InputError("A project cannot be copied into its own folder.");
    }
    copyFolderWhole(source, target);
    return target;
}

fs::path archiveFolder(const fs::path& projectsFolder) {
    return normalFolder(projectsFolder) / kArchiveFolderName;
}

fs::path archiveProject(const fs::path& projectPath, const fs::path& projectsFolder) {
    const fs::path source = existingProjectFolder(projectPath);
    const fs::path archive = archiveFolder(projectsFolder);
    if (liesInside(archive, source)) {
        throw InputError("A project cannot be archived into its own folder.");
    }
    const bool made = makeArchiveFolder(archive);
    const fs::path target = freeName(archive, projectStem(source) + "-" + timeStamp());
    try {
        copyFolderWhole(source, target);
    } catch (...) {
        removeIfMadeAndEmpty(archive, made);
        throw;
    }
    return target;
}

fs::path deleteProject(const ShellState& shell, const fs::path& projectPath,
                       const fs::path& projectsFolder) {
    const fs::path source = existingProjectFolder(projectPath);
    const std::string name = source.filename().string();
    if (!isProjectFolderName(name)) {
        throw InputError(source.string() + " is not a project folder: its name does not end in "
                                           "\".prj\".");
    }
    if (lowerAscii(name) == lowerAscii(kDefaultProjectFolderName)) {
        throw InputError("The default project DEFAULT.prj cannot be deleted.");
    }
    if (shell.hasProject()) {
        std::error_code ec;
        const fs::path current = normalFolder(shell.projectPath());
        if (current == source || fs::equivalent(current, source, ec)) {
            throw InputError("The open project cannot be deleted; open another project first.");
        }
    }
    const fs::path archive = archiveFolder(projectsFolder);
    if (liesInside(archive, source)) {
        throw InputError("A project cannot be moved into its own folder.");
    }
    const bool made = makeArchiveFolder(archive);
    const fs::path target = freeName(archive, projectStem(source) + "-deleted-" + timeStamp());
    std::error_code ec;
    fs::rename(source, target, ec);
    if (ec) {
        // Another file system: copy whole, then remove the original.
        try {
            copyFolderWhole(source, target);
        } catch (...) {
            removeIfMadeAndEmpty(archive, made);
            throw;
        }
        fs::remove_all(source, ec);
        if (ec) {
            throw FileError(source, "The project was copied to the archive but could not be "
                                    "removed: " +
                                        ec.message());
        }
    }
    return target;
}

} // namespace orvak::shell
