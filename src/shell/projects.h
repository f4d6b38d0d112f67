// Project folders: create, open, leave, list, copy, archive and delete. A project is a folder
// whose name ends in ".prj" inside the projects folder; its general data is GEN.CST.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "shell/shell_state.h"

namespace orvak::shell {

/// The projects folder as held by the shell: with a trailing separator added when missing;
/// an empty folder stays empty.
std::string withTrailingSeparator(std::string_view folder);

/// Project name from path: the path less the projects folder (Mid from its length + 1); the
/// whole path when it does not start with the projects folder.
std::string projectNameFromPath(std::string_view projectsFolder, std::string_view projectPath);

/// The folder name of a project typed by the user: blanks trimmed and ".prj" appended without
/// a test (so "job.prj" gives "job.prj.prj"). Throws InputError with one plain sentence when
/// the name is empty or would reach outside the projects folder ("/", "\", "..", ":").
std::string projectFolderName(std::string_view typedName);

/// "new": creates projects folder / name.prj, makes it current, clears sheet and output
/// name, reads then writes its GEN.CST, sets the work folder and creates TMPDIR. Throws
/// InputError for a bad name or an existing project, FileError when the folder cannot be
/// written; nothing is left half-made.
std::filesystem::path newProject(ShellState& shell, const std::filesystem::path& projectsFolder,
                                 std::string_view typedName);

/// "open": makes the project current (its parent folder becomes the projects folder), reads
/// GEN.CST, deletes the drawing editor's scratch drawing TMPDIR/DRAW.DAT and the project's
/// picture DRAW.BMP where they exist, sets the work folder, creates TMPDIR and removes empty
/// files. Throws InputError when the folder does not exist; the shell is changed only when
/// the project could be opened.
void openProject(ShellState& shell, const std::filesystem::path& projectPath);

/// Reads GEN.CST of the shell's current project into the shell (record, sheet name, output
/// name and number; a blank sheet name of a valid record is written back as "Sheet1"), sets
/// the work folder from it, creates TMPDIR and removes the stale temporaries of interrupted
/// saves (core::removeStaleTemporaries), adding a warning for each file whose first save was
/// cut off. Throws FileError when the record or the
/// folder cannot be written.
void loadCurrentProject(ShellState& shell);

/// "exit": removes the empty files of the current project folder.
void closeProject(ShellState& shell);

/// True when a folder name ends in ".prj" (case-blind), as every project folder's does.
bool isProjectFolderName(std::string_view name);

/// Sub-folders of the projects folder whose names end in ".prj" (case-blind), sorted.
std::vector<std::string> listProjects(const std::filesystem::path& projectsFolder);

/// Deletes every zero-length regular file of the folder (not in sub-folders).
void removeEmptyFiles(const std::filesystem::path& folder);

/// Makes project / TMPDIR; an existing folder is not an error.
void createScratchFolder(const std::filesystem::path& projectPath);

/// The work folder becomes `text` with leading blanks removed; returns its length.
std::size_t setWorkFolder(ShellState& shell, std::string_view text);

/// "copy": copies a project folder to projects folder / newName.prj. Throws InputError when
/// the target exists or the name is bad; a failed copy removes its partial target.
std::filesystem::path copyProject(const std::filesystem::path& projectPath,
                                  const std::filesystem::path& projectsFolder,
                                  std::string_view newTypedName);

/// The archive folder of a projects folder: projects folder / "Archive".
std::filesystem::path archiveFolder(const std::filesystem::path& projectsFolder);

/// "Archeive of projects": copies the project into the archive folder under its name and a
/// time stamp (name-yyyymmdd-hhmmss.prj); the project itself is untouched. Returns the copy.
std::filesystem::path archiveProject(const std::filesystem::path& projectPath,
                                     const std::filesystem::path& projectsFolder);

/// "delete": moves the project into the archive folder (name-deleted-yyyymmdd-hhmmss.prj), so
/// that a deletion can be undone by hand. Refuses the current project and DEFAULT.prj.
std::filesystem::path deleteProject(const ShellState& shell,
                                    const std::filesystem::path& projectPath,
                                    const std::filesystem::path& projectsFolder);

} // namespace orvak::shell
