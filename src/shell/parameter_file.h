// The project's shared parameter file DEFPARAM.DAT: 241-byte records, opened when a project
// becomes current and kept open until it is left.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace orvak::shell {

inline constexpr std::string_view kParameterFile = "DEFPARAM.DAT";
inline constexpr std::size_t kParameterRecordLength = 241;

class ParameterFile {
public:
    ParameterFile() = default;
    ParameterFile(const ParameterFile&) = delete;
    ParameterFile& operator=(const ParameterFile&) = delete;

    /// Opens (creating when missing) DEFPARAM.DAT of the project; a file open before is closed
    /// first. Throws FileError when it cannot be opened.
    void open(const std::filesystem::path& projectPath);
    void close();
    bool isOpen() const { return m_stream.is_open(); }
    std::size_t recordLength() const { return kParameterRecordLength; }
    /// File length / 241 at the time of opening.
    std::size_t recordCount() const { return m_count; }
    const std::filesystem::path& path() const { return m_path; }

private:
    std::fstream m_stream;
    std::filesystem::path m_path;
    std::size_t m_count = 0;
};

} // namespace orvak::shell
