// Derived outputs of a design run (sheets, case files) written as sets: every temporary of a set
// is complete before the first rename, and a run flushes the disk once rather than per file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace orvak::core {

/// One file of an output set: its place and its whole content.
struct OutputFile {
    std::filesystem::path path;
    std::string bytes;
};

/// A staged temporary and the file it is to become.
struct PendingRename {
    std::filesystem::path temp;
    std::filesystem::path target;
};

/// Puts pending temporaries in place, in order: each one that still stands is renamed over its
/// target; one that is gone was put in place already (by an earlier try, or by another
/// program completing the same run) and is passed over. Then makes the folders' entries
/// durable. Throws FileError when a rename fails for another reason, after trying the rest.
void completeRenames(std::span<const PendingRename> renames);

/// Files staged now and put in place together later.
///
/// stage() writes the temporaries of a set beside their targets; nothing visible changes yet.
/// commit() makes every staged temporary durable and then renames them over their targets, so
/// that after a power cut a target holds either its old content or the whole new one, never a
/// file that looks whole and is not. With `Durability::PerRun` the temporaries are written
/// unsynced and the file system is flushed once in commit(): the cost of a run no longer grows
/// with a disk flush per file, and the temporaries are tagged as a run's ("run", see
/// core::kRunTemporaryTag), apart from those of saves. A batch that is destroyed without
/// commit() (an error, a cancel) removes its temporaries and leaves every target as it was.
class OutputBatch {
public:
    enum class Durability {
        PerFile, ///< each temporary flushed as it is written (a single save)
        PerRun,  ///< one flush of the file system in commit()
    };

    explicit OutputBatch(Durability durability = Durability::PerRun);
    OutputBatch(const OutputBatch&) = delete;
    OutputBatch& operator=(const OutputBatch&) = delete;
    ~OutputBatch();

    /// Checks that each target can take a file (no folder stands there), then writes every
    /// temporary of the set. Throws FileError; the temporaries of this call are then removed
    /// and those staged before stay.
    void stage(std::span<const OutputFile> files);
    /// Drops what stage() has written since `mark` (a count from staged()), e.g. when the
    /// element the files belong to is rolled back.
    void discardFrom(std::size_t mark);
    std::size_t staged() const { return m_staged.size(); }

    /// Makes every staged temporary durable (PerRun: one flush) and returns the renames that
    /// commit() will do, so that a caller can record them, with what else the run changed,
    /// before any target changes: a run cut off after that record can be completed later
    /// (completeRenames). The batch keeps its temporaries until commit() or discard().
    std::vector<PendingRename> prepare();
    /// prepare() unless done, then renames every staged temporary over its target in the
    /// order staged (one already gone counts as put in place) and makes the folders' entries
    /// durable. Throws FileError when a rename fails; the temporaries not yet renamed are
    /// removed. Returns the targets of the batch.
    std::vector<std::filesystem::path> commit();
    /// Removes every staged temporary.
    void discard();

private:
    struct Staged {
        std::filesystem::path temp;
        std::filesystem::path target;
    };
    Durability m_durability;
    std::vector<Staged> m_staged;
    bool m_prepared = false;
};

/// Saves one set of files at once (every temporary written and flushed before the first
/// rename): the sheets of one element. Throws FileError; the targets are then unchanged.
void saveTogether(std::span<const OutputFile> files);

} // namespace orvak::core
