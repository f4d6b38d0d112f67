// The table files of the grid forms: cell numbers and texts, and the save through TMPFIL
// that replaces the table file in one step or removes it when no row is in use.
#include "core/table_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>

#include "core/error.h"

namespace fs = std::filesystem;

namespace orvak::core {

namespace {

std::string cannotSave(std::string_view tableName) {
    return "The " + std::string(tableName) + " cannot be saved: ";
}

std::string systemMessage(int err) {
    return std::strerror(err);
}

// Writes the bytes to `path` (replacing it) and syncs them to disk before returning.
void writeSynced(const fs::path& path, const std::vector<std::uint8_t>& bytes,
                 std::string_view tableName) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        throw FileError(path, cannotSave(tableName) + systemMessage(errno));
    }
    const std::uint8_t* data = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, data, left);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            const int err = errno;
            ::close(fd);
            throw FileError(path, cannotSave(tableName) + systemMessage(err));
        }
        data += n;
        left -= static_cast<std::size_t>(n);
    }
    if (::fsync(fd) != 0) {
        const int err = errno;
        ::close(fd);
        throw FileError(path, cannotSave(tableName) + systemMessage(err));
    }
    ::close(fd);
}

} // namespace

double cellNumber(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) {
        ++at;
    }
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        negative = text[at] == '-';
        ++at;
    }
    if (at >= text.size() ||
        !(std::isdigit(static_cast<unsigned char>(text[at])) || text[at] == '.')) {
        return 0.0; // also keeps "inf" and "nan" out
    }
    double value = 0.0;
    const auto [end, ec] = std::from_chars(text.data() + at, text.data() + text.size(), value);
    if (ec != std::errc() || !std::isfinite(value)) {
        return 0.0;
    }
    return negative ? -value : value;
}

std::string cellTextFor(float value) {
    if (value == 0.0f || !std::isfinite(value)) {
        return "0";
    }
    char buf[64];
    const auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed);
    ORVAK_ASSERT(ec == std::errc());
    return std::string(buf, end);
}

void saveTableFile(const fs::path& target, const std::vector<std::uint8_t>& records,
                   std::string_view tableName, const BeforeRenameHook& beforeRename) {
    const fs::path folder = target.parent_path();
    const fs::path temp = resolveNoCase(folder, kTableTempFile);
    writeSynced(temp, records, tableName);
    if (beforeRename) {
        beforeRename(temp);
    }
    std::error_code ec;
    if (!records.empty()) {
        // rename() replaces the table file in one step: a crash leaves the old or the new one.
        if (::rename(temp.c_str(), target.c_str()) != 0) {
            throw FileError(target, cannotSave(tableName) + systemMessage(errno));
        }
    } else if (fs::exists(target, ec)) {
        fs::remove(target, ec);
        if (ec) {
            throw FileError(target, "The empty " + std::string(tableName) +
                                        " cannot replace the old one: " + ec.message());
        }
    }
    syncFolder(folder);
}

} // namespace orvak::core
