// Derived outputs of a design run written as sets: temporaries first, one flush, then renames.
#include "core/output_batch.h"

#include <cerrno>
#include <cstdio>

#include <algorithm>
#include <optional>
#include <system_error>

#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::core {

namespace {

// Up to this many staged files a commit flushes each one; above it, the whole file system once.
constexpr std::size_t kFilesFlushedOneByOne = 16;

fs::path folderOf(const fs::path& target) {
    return target.has_parent_path() ? target.parent_path() : fs::path(".");
}

std::vector<fs::path> foldersOf(std::span<const PendingRename> renames) {
    std::vector<fs::path> folders;
    for (const PendingRename& r : renames) {
        const fs::path folder = folderOf(r.target);
        if (std::find(folders.begin(), folders.end(), folder) == folders.end()) {
            folders.push_back(folder);
        }
    }
    return folders;
}

// Renames a temporary over its target; false when the temporary is gone already.
bool renameIfThere(const PendingRename& r) {
    if (::rename(r.temp.c_str(), r.target.c_str()) == 0) {
        return true;
    }
    const int err = errno;
    if (err == ENOENT) {
        std::error_code ec;
        if (!fs::exists(r.temp, ec) && fs::is_directory(folderOf(r.target), ec)) {
            return false;
        }
    }
    std::error_code ec;
    fs::remove(r.temp, ec);
    throw FileError(r.target, "The file cannot be saved: " + std::generic_category().message(err));
}

} // namespace

void completeRenames(std::span<const PendingRename> renames) {
    std::optional<FileError> first;
    for (const PendingRename& r : renames) {
        try {
            renameIfThere(r);
        } catch (const FileError& e) {
            if (!first) {
                first = e;
            }
        }
    }
    for (const fs::path& folder : foldersOf(renames)) {
        syncFolder(folder);
    }
    if (first) {
        throw *first;
    }
}

OutputBatch::OutputBatch(Durability durability) : m_durability(durability) {}

OutputBatch::~OutputBatch() {
    discard();
}

void OutputBatch::stage(std::span<const OutputFile> files) {
    for (const OutputFile& f : files) {
        std::error_code ec;
        if (fs::exists(f.path, ec) && !fs::is_regular_file(f.path, ec)) {
            throw FileError(f.path, "The file cannot be written: something other than a file "
                                    "stands at its place.");
        }
    }
    const std::size_t mark = m_staged.size();
    try {
        for (const OutputFile& f : files) {
            const auto* data = reinterpret_cast<const std::uint8_t*>(f.bytes.data());
            const bool perFile = m_durability == Durability::PerFile;
            m_staged.push_back({writeTemporaryBeside(f.path, {data, f.bytes.size()}, perFile,
                                                     perFile ? kSaveTemporaryTag
                                                             : kRunTemporaryTag),
                                f.path});
        }
    } catch (...) {
        discardFrom(mark);
        throw;
    }
}

void OutputBatch::discardFrom(std::size_t mark) {
    m_prepared = m_prepared && mark >= m_staged.size();
    while (m_staged.size() > mark) {
        std::error_code ec;
        fs::remove(m_staged.back().temp, ec);
        m_staged.pop_back();
    }
}

void OutputBatch::discard() {
    discardFrom(0);
}

std::vector<PendingRename> OutputBatch::prepare() {
    std::vector<PendingRename> renames;
    renames.reserve(m_staged.size());
    for (const Staged& s : m_staged) {
        renames.push_back({s.temp, s.target});
    }
    if (m_prepared || m_durability != Durability::PerRun || m_staged.empty()) {
        m_prepared = true;
        return renames;
    }
    // Every temporary is durable before any of them takes its target's name. A few files are
    // flushed one by one; many are flushed by one flush of the file system, which costs one
    // journal commit instead of one per file (but also writes out what other programs left
    // unwritten there).
    if (m_staged.size() <= kFilesFlushedOneByOne) {
        for (const Staged& s : m_staged) {
            syncFile(s.temp);
        }
    } else {
        for (const fs::path& folder : foldersOf(renames)) {
            flushFileSystem(folder);
        }
    }
    m_prepared = true;
    return renames;
}

std::vector<fs::path> OutputBatch::commit() {
    std::vector<fs::path> done;
    if (m_staged.empty()) {
        return done;
    }
    const std::vector<PendingRename> renames = prepare();
    std::size_t next = 0;
    try {
        for (; next < renames.size(); ++next) {
            renameIfThere(renames[next]);
            done.push_back(renames[next].target);
        }
    } catch (...) {
        // The failed temporary is removed; the rest are removed here.
        for (std::size_t k = next + 1; k < renames.size(); ++k) {
            std::error_code ec;
            fs::remove(renames[k].temp, ec);
        }
        m_staged.clear();
        m_prepared = false;
        for (const fs::path& folder : foldersOf(renames)) {
            syncFolder(folder);
        }
        throw;
    }
    m_staged.clear();
    m_prepared = false;
    for (const fs::path& folder : foldersOf(renames)) {
        syncFolder(folder);
    }
    return done;
}

void saveTogether(std::span<const OutputFile> files) {
    OutputBatch batch(OutputBatch::Durability::PerFile);
    batch.stage(files);
    batch.commit();
}

} // namespace orvak::core
