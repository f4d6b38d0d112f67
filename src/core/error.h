// Errors raised by the engines when a file or its format is at fault.
// Engineering outcomes (a section too small, an unsafe shear) are results, never exceptions.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvak {

/// A file that cannot be read or written, or whose bytes do not hold what they should.
/// what() is one plain sentence for the user; path, record (1-based) and byte offset say where.
class FileError : public std::runtime_error {
public:
    FileError(std::filesystem::path path, std::string message,
              std::optional<std::int64_t> record = std::nullopt,
              std::optional<std::int64_t> offset = std::nullopt);

    const std::filesystem::path& path() const { return m_path; }
    std::optional<std::int64_t> record() const { return m_record; }
    std::optional<std::int64_t> offset() const { return m_offset; }

private:
    std::filesystem::path m_path;
    std::optional<std::int64_t> m_record;
    std::optional<std::int64_t> m_offset;
};

/// Input that the user typed or a file held which the program refuses (a project name with a
/// path separator, say). what() is one plain sentence for the user.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace orvak

/// Always-on assertion for programming errors (never for bad input).
#define ORVAK_ASSERT(cond)                                                                         \
    do {                                                                                           \
        if (!(cond)) {                                                                             \
            ::orvak::assertionFailed(#cond, __FILE__, __LINE__);                                   \
        }                                                                                          \
    } while (false)

/// Always-on failure for a programming error that no single condition names; `message` (text
/// or std::string) says what was wrong.
#define ORVAK_FAIL(message) ::orvak::assertionFailed((message), __FILE__, __LINE__)

namespace orvak {
[[noreturn]] void assertionFailed(std::string_view what, const char* file, int line);
}
