// Derived outputs of a design run written as sets: temporaries first, one flush, then renames.
#include "core/output_batch.h"

#include <algorithm>
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

} // namespace

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
            m_staged.push_back({writeTemporaryBeside(f.path, {data, f.bytes.size()},
                                                     m_durability == Durability::PerFile),
                                f.path});
        }
    } catch (...) {
        discardFrom(mark);
        throw;
    }
}

void OutputBatch::discardFrom(std::size_t mark) {
    while (m_staged.size() > mark) {
        std::error_code ec;
        fs::remove(m_staged.back().temp, ec);
        m_staged.pop_back();
    }
}

void OutputBatch::discard() {
    discardFrom(0);
}

std::vector<fs::path> OutputBatch::commit() {
    std::vector<fs::path> done;
    if (m_staged.empty()) {
        return done;
    }
    std::vector<fs::path> folders;
    for (const Staged& s : m_staged) {
        const fs::path folder = folderOf(s.target);
        if (std::find(folders.begin(), folders.end(), folder) == folders.end()) {
            folders.push_back(folder);
        }
    }
    if (m_durability == Durability::PerRun) {
        // Every temporary is durable before any of them takes its target's name. A few files
        // are flushed one by one; many are flushed by one flush of the file system, which
        // costs one journal commit instead of one per file (but also writes out what other
        // programs left unwritten there).
        if (m_staged.size() <= kFilesFlushedOneByOne) {
            for (const Staged& s : m_staged) {
                syncFile(s.temp);
            }
        } else {
            for (const fs::path& folder : folders) {
                flushFileSystem(folder);
            }
        }
    }
    std::size_t next = 0;
    try {
        for (; next < m_staged.size(); ++next) {
            renameOver(m_staged[next].temp, m_staged[next].target);
            done.push_back(m_staged[next].target);
        }
    } catch (...) {
        // renameOver removed the failed temporary; the rest are removed here.
        for (std::size_t k = next + 1; k < m_staged.size(); ++k) {
            std::error_code ec;
            fs::remove(m_staged[k].temp, ec);
        }
        m_staged.clear();
        for (const fs::path& folder : folders) {
            syncFolder(folder);
        }
        throw;
    }
    m_staged.clear();
    for (const fs::path& folder : folders) {
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
