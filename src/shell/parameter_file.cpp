// The project's shared parameter file DEFPARAM.DAT, held open while the project is current,
// the way a random-access file of 241-byte records stays open under its file number.
#include "shell/parameter_file.h"

#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::shell {

void ParameterFile::open(const fs::path& projectPath) {
    close();
    const fs::path path = core::resolveNoCase(projectPath, kParameterFile);
    std::error_code ec;
    if (fs::exists(path, ec) && !fs::is_regular_file(path, ec)) {
        throw FileError(path, "The project's parameter file is not a file");
    }
    if (!fs::exists(path, ec)) {
        // Opening a random-access file creates it empty.
        std::ofstream create(path, std::ios::binary);
        if (!create) {
            throw FileError(path, "The project's parameter file cannot be created");
        }
    }
    m_stream.open(path, std::ios::in | std::ios::out | std::ios::binary);
    if (!m_stream.is_open()) {
        // A project on a read-only medium can still be read.
        m_stream.clear();
        m_stream.open(path, std::ios::in | std::ios::binary);
    }
    if (!m_stream.is_open()) {
        throw FileError(path, "The project's parameter file cannot be opened");
    }
    const auto size = fs::file_size(path, ec);
    m_count = ec ? 0 : static_cast<std::size_t>(size / kParameterRecordLength);
    m_path = path;
}

void ParameterFile::close() {
    if (m_stream.is_open()) {
        m_stream.close();
    }
    m_stream.clear();
    m_path.clear();
    m_count = 0;
}

} // namespace orvak::shell
