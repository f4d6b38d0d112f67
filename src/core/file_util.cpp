// Host file services: case-blind lookup, whole-file reads and crash-safe saving.
// A save writes a temporary file beside the target, syncs it and renames it over the target.
#include "core/file_util.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <random>

#include "core/error.h"

namespace fs = std::filesystem;

namespace orvak::core {

namespace {

bool equalNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto x = static_cast<unsigned char>(a[i]);
        const auto y = static_cast<unsigned char>(b[i]);
        const auto lx = (x >= 'A' && x <= 'Z') ? x + 32 : x;
        const auto ly = (y >= 'A' && y <= 'Z') ? y + 32 : y;
        if (lx != ly) {
            return false;
        }
    }
    return true;
}

std::string systemMessage(int err) {
    return std::strerror(err);
}

// Writes all bytes to a file descriptor, retrying short writes.
bool writeAll(int fd, const std::uint8_t* data, std::size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        data += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

} // namespace

std::optional<fs::path> findFileNoCase(const fs::path& folder, std::string_view name) {
    std::error_code ec;
    const fs::path exact = folder / fs::path(std::string(name));
    if (fs::exists(exact, ec)) {
        return exact;
    }
    fs::directory_iterator it(folder, ec);
    if (ec) {
        return std::nullopt;
    }
    for (; it != fs::directory_iterator(); it.increment(ec)) {
        if (ec) {
            return std::nullopt;
        }
        if (equalNoCase(it->path().filename().string(), name)) {
            return it->path();
        }
    }
    return std::nullopt;
}

fs::path resolveNoCase(const fs::path& folder, std::string_view name) {
    if (auto found = findFileNoCase(folder, name)) {
        return *found;
    }
    return folder / fs::path(std::string(name));
}

std::optional<std::vector<std::uint8_t>> readWholeFile(const fs::path& path) {
    std::error_code ec;
    if (!fs::exists(path, ec)) {
        return std::nullopt;
    }
    if (fs::is_directory(path, ec)) {
        throw FileError(path, "A folder stands where a file was expected");
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw FileError(path, "The file cannot be opened for reading");
    }
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                    std::istreambuf_iterator<char>());
    if (in.bad()) {
        throw FileError(path, "The file cannot be read");
    }
    return bytes;
}

std::error_code writeFileBytes(const fs::path& path, std::span<const std::uint8_t> bytes, bool sync,
                               FailedWrite failed) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        return {errno, std::generic_category()};
    }
    bool ok = writeAll(fd, bytes.data(), bytes.size()) && (!sync || ::fsync(fd) == 0);
    int writeErr = errno;
    // Without a sync, close() is where a delayed write error (a full share) may show.
    if (::close(fd) != 0 && ok) {
        ok = false;
        writeErr = errno;
    }
    if (ok) {
        return {};
    }
    if (failed == FailedWrite::Remove) {
        std::error_code ec;
        fs::remove(path, ec);
    }
    return {writeErr, std::generic_category()};
}

fs::path writeTemporaryBeside(const fs::path& target, std::span<const std::uint8_t> bytes,
                              bool sync, std::string_view tag) {
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    std::random_device rd;
    const fs::path temp =
        folder / ("." + target.filename().string() + "." + std::string(tag) +
                  std::to_string(rd() % 1000000));
    if (const std::error_code err = writeFileBytes(temp, bytes, sync, FailedWrite::Remove)) {
        throw FileError(target, "The file cannot be saved: " + systemMessage(err.value()));
    }
    return temp;
}

void renameOver(const fs::path& temp, const fs::path& target) {
    if (::rename(temp.c_str(), target.c_str()) != 0) {
        const int err = errno;
        std::error_code ec;
        fs::remove(temp, ec);
        throw FileError(target, "The file cannot be saved: " + systemMessage(err));
    }
}

void syncFolder(const fs::path& folder) {
    const int dfd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dfd >= 0) {
        ::fsync(dfd);
        ::close(dfd);
    }
}

void syncFile(const fs::path& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        throw FileError(path, "The file cannot be flushed to disk: " + systemMessage(errno));
    }
    const bool ok = ::fdatasync(fd) == 0;
    const int err = errno;
    ::close(fd);
    if (!ok) {
        throw FileError(path, "The file cannot be flushed to disk: " + systemMessage(err));
    }
}

void flushFileSystem(const fs::path& folder) {
    const int dfd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dfd < 0) {
        throw FileError(folder, "The folder cannot be flushed to disk: " + systemMessage(errno));
    }
#ifdef __linux__
    // A write that was lost on its way to the disk is reported here; the files it held must
    // not take the place of whole ones.
    const bool ok = ::syncfs(dfd) == 0;
    const int err = errno;
    ::close(dfd);
    if (!ok) {
        throw FileError(folder, "The files cannot be flushed to disk: " + systemMessage(err));
    }
#else
    ::close(dfd);
    ::sync();
#endif
}

void saveFileAtomically(const fs::path& target, const std::vector<std::uint8_t>& bytes,
                        const BeforeRenameHook& beforeRename) {
    const fs::path temp = writeTemporaryBeside(target, bytes, true);
    try {
        if (beforeRename) {
            beforeRename(temp);
        }
    } catch (...) {
        std::error_code ec;
        fs::remove(temp, ec);
        throw;
    }
    renameOver(temp, target);
    // Make the rename itself durable.
    syncFolder(target.has_parent_path() ? target.parent_path() : fs::path("."));
}

void saveFileAtomically(const fs::path& target, std::string_view bytes,
                        const BeforeRenameHook& beforeRename) {
    saveFileAtomically(target, std::vector<std::uint8_t>(bytes.begin(), bytes.end()), beforeRename);
}

std::vector<std::string> removeStaleTemporaries(const fs::path& folder, fs::file_time_type now,
                                                std::string_view tag,
                                                fs::file_time_type::duration minimumAge) {
    const std::string dotTag = "." + std::string(tag);
    const std::size_t tagLength = dotTag.size();
    std::vector<std::string> alone;
    std::error_code ec;
    for (auto it = fs::directory_iterator(folder, ec); !ec && it != fs::directory_iterator();
         it.increment(ec)) {
        const std::string name = it->path().filename().string();
        // "." + target + "." + tag + 1 to 6 digits.
        const std::size_t tmp = name.rfind(dotTag);
        if (name.size() < 2 || name[0] != '.' || tmp == std::string::npos || tmp < 2 ||
            name.size() - tmp - tagLength < 1 || name.size() - tmp - tagLength > 6 ||
            name.find_first_not_of("0123456789", tmp + tagLength) != std::string::npos) {
            continue;
        }
        std::error_code fileEc;
        if (!it->is_regular_file(fileEc)) {
            continue;
        }
        const fs::file_time_type written = it->last_write_time(fileEc);
        if (fileEc || now - written < minimumAge) {
            continue;
        }
        const std::string target = name.substr(1, tmp - 1);
        const bool targetExists = fs::exists(folder / target, fileEc);
        if (fs::remove(it->path(), fileEc) && !targetExists) {
            alone.push_back(target);
        }
    }
    return alone;
}

void makeFolder(const fs::path& folder) {
    std::error_code ec;
    if (fs::is_directory(folder, ec)) {
        return;
    }
    fs::create_directories(folder, ec);
    if (ec && !fs::is_directory(folder)) {
        throw FileError(folder, "The folder cannot be created: " + ec.message());
    }
}

bool isSafeFileComponent(std::string_view name) {
    if (name.empty() || name == "." || name == "..") {
        return false;
    }
    for (const char ch : name) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 32 || c == 127 || ch == '/' || ch == '\\' || ch == ':') {
            return false;
        }
    }
    // A name of dots only ("...") is no name either.
    return name.find_first_not_of('.') != std::string_view::npos;
}

} // namespace orvak::core
