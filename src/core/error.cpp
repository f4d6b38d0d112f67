// Errors raised by the engines when a file or its format is at fault.
// The sentence shown to the user is built here once, with where the fault lies.
#include "core/error.h"

#include <cstdio>
#include <cstdlib>

namespace orvak {

namespace {
std::string describe(const std::filesystem::path& path, const std::string& message,
                     std::optional<std::int64_t> record, std::optional<std::int64_t> offset) {
    std::string text = message;
    if (!path.empty()) {
        text += " (file " + path.string();
        if (record) {
            text += ", record " + std::to_string(*record);
        }
        if (offset) {
            text += ", byte " + std::to_string(*offset);
        }
        text += ")";
    }
    return text;
}
} // namespace

FileError::FileError(std::filesystem::path path, std::string message,
                     std::optional<std::int64_t> record, std::optional<std::int64_t> offset)
    : std::runtime_error(describe(path, message, record, offset)), m_path(std::move(path)),
      m_record(record), m_offset(offset) {}

void assertionFailed(std::string_view what, const char* file, int line) {
    std::fprintf(stderr, "Orvak internal error: %.*s (%s:%d)\n", static_cast<int>(what.size()),
                 what.data(), file, line);
    std::abort();
}

} // namespace orvak
