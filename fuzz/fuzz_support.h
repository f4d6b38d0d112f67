// What the fuzz targets share: a scratch folder of the fuzzing process in memory where the
// host has one, a plain file write, and the stop that libFuzzer reports with its input.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace orvak::fuzz {

/// A folder of this process, removed when the fuzzer exits.
class ScratchFolder {
public:
    explicit ScratchFolder(std::string_view name)
        : m_folder(base() /
                   ("orvak-fuzz-" + std::string(name) + "-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(m_folder);
    }
    ~ScratchFolder() {
        std::error_code ec;
        std::filesystem::remove_all(m_folder, ec);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return m_folder; }

    /// Empties the folder between inputs, so that one input's files never meet the next.
    void clear() const {
        std::error_code ec;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder, ec)) {
            std::filesystem::remove_all(entry.path(), ec);
        }
    }

private:
    // Memory-backed when the host has it: a target writes and reads files per input.
    static std::filesystem::path base() {
        std::error_code ec;
        if (std::filesystem::is_directory("/dev/shm", ec)) {
            return "/dev/shm";
        }
        return std::filesystem::temp_directory_path();
    }

    std::filesystem::path m_folder;
};

/// A plain write: the crash-safe save syncs to disk, which would slow a fuzzer a hundredfold.
inline void writeFile(const std::filesystem::path& path, const std::uint8_t* data,
                      std::size_t size) {
    std::FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr || (size > 0 && std::fwrite(data, 1, size, out) != size)) {
        std::abort();
    }
    std::fclose(out);
}

/// Stops the run with a message; libFuzzer keeps the input that led here.
[[noreturn]] inline void fail(std::string_view what) {
    std::fprintf(stderr, "fuzz check failed: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

/// True when a text holds a printed number that is not one: "nan" or "inf" standing as a
/// word of its own (any case, with a sign or not), as printf writes them.
inline bool printsNonNumber(std::string_view text) {
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    const auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; };
    for (std::size_t i = 0; i + 3 <= text.size(); ++i) {
        if (i > 0 && letter(text[i - 1])) {
            continue;
        }
        std::string word;
        std::size_t j = i;
        while (j < text.size() && letter(text[j])) {
            word += lower(text[j++]);
        }
        if (word == "nan" || word == "inf" || word == "infinity") {
            return true;
        }
        i = j > i ? j - 1 : i;
    }
    return false;
}

} // namespace orvak::fuzz
