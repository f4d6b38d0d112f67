// Host file services the engines share: case-blind lookup, crash-safe saving, whole-file reads.
// Projects come from Windows machines, so a name may differ in case from what the code builds.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace orvak::core {

/// The existing entry of `folder` whose name equals `name` without regard to ASCII case; the
/// exact name wins when both exist. Empty when there is none or the folder cannot be read.
std::optional<std::filesystem::path> findFileNoCase(const std::filesystem::path& folder,
                                                    std::string_view name);

/// `folder / name` resolved case-blind: the existing entry when there is one, else the path
/// as built (so that a new file gets the name the program uses).
std::filesystem::path resolveNoCase(const std::filesystem::path& folder, std::string_view name);

/// The whole content of a file; empty optional when it does not exist. Throws FileError when
/// it exists but cannot be read.
std::optional<std::vector<std::uint8_t>> readWholeFile(const std::filesystem::path& path);

/// Called after the temporary file is complete and before it is renamed over the target;
/// tests throw from it to stand for a program that dies mid-save.
using BeforeRenameHook = std::function<void(const std::filesystem::path& tempPath)>;

/// Writes `bytes` to a temporary file beside `target`, flushes it to disk, and renames it over
/// the target, so the target is either the old file or the new one, never a torn one. On any
/// failure the temporary file is removed and FileError is thrown; the old target is unchanged.
void saveFileAtomically(const std::filesystem::path& target, const std::vector<std::uint8_t>& bytes,
                        const BeforeRenameHook& beforeRename = {});
void saveFileAtomically(const std::filesystem::path& target, std::string_view bytes,
                        const BeforeRenameHook& beforeRename = {});

/// What a failed writeFileBytes() leaves behind: the file with the part that was written, or
/// no file.
enum class FailedWrite { KeepPart, Remove };

/// Writes `bytes` to `path`, made or emptied first, and flushes them to disk when `sync`.
/// Returns the system error of the step that failed (empty when all went well); a file that
/// was opened is then kept or removed as `failed` says.
std::error_code writeFileBytes(const std::filesystem::path& path,
                               std::span<const std::uint8_t> bytes, bool sync, FailedWrite failed);

/// The tag of the temporaries of a save ("tmp"), and of the staged outputs of a design run
/// ("run"), which a run's ledger may still have to put in place after a kill.
inline constexpr std::string_view kSaveTemporaryTag = "tmp";
inline constexpr std::string_view kRunTemporaryTag = "run";

/// The steps of a save, for callers that write several files as one set: a temporary file
/// beside `target` holding `bytes` (flushed to disk when `sync`), named "." + the target's
/// name + "." + `tag` + a number. Throws FileError (the temporary removed) when it cannot be
/// written.
std::filesystem::path writeTemporaryBeside(const std::filesystem::path& target,
                                           std::span<const std::uint8_t> bytes, bool sync,
                                           std::string_view tag = kSaveTemporaryTag);
/// Renames a temporary over its target; on failure removes the temporary and throws FileError.
void renameOver(const std::filesystem::path& temp, const std::filesystem::path& target);
/// Makes the entries of a folder (renames, new files) durable.
void syncFolder(const std::filesystem::path& folder);
/// Flushes a file's data to disk. Throws FileError when it cannot.
void syncFile(const std::filesystem::path& path);
/// Flushes every written file of the file system that holds `folder` to disk, in one call
/// (syncfs where the host has it, else a whole sync). Throws FileError when the flush reports
/// a write that failed.
void flushFileSystem(const std::filesystem::path& folder);

/// How old a temporary of an interrupted save must be before it counts as stale: saves take
/// milliseconds, and a design run keeps its staged temporaries for seconds.
inline constexpr std::chrono::minutes kStaleTemporaryAge{10};

/// Removes the temporaries of interrupted saves in `folder` (".NAME.<tag>NNNNNN", the names
/// writeTemporaryBeside gives) last written at least `minimumAge` before `now`. Returns
/// the names of the files whose temporary stood alone: a first save of that file was cut
/// off, and nothing holds it. Errors of the folder are not reported (a temporary that cannot
/// be removed stays).
std::vector<std::string> removeStaleTemporaries(
    const std::filesystem::path& folder, std::filesystem::file_time_type now,
    std::string_view tag = kSaveTemporaryTag,
    std::filesystem::file_time_type::duration minimumAge = kStaleTemporaryAge);

/// Creates a folder and its parents; a folder that exists already is not an error. Throws
/// FileError when it cannot be created.
void makeFolder(const std::filesystem::path& folder);

/// True when a path component typed by the user stays a plain name: not empty, no "/" or "\",
/// not "." or "..", no control characters, no ":" (a drive on Windows).
bool isSafeFileComponent(std::string_view name);

} // namespace orvak::core
