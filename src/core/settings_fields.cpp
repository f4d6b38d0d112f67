// Settings files: record 1 of a fixed-record file holds the settings; a missing file or a
// record not in use leaves the caller's defaults.
#include "core/settings_fields.h"

#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::core {

std::optional<RecordBuffer> readSettingsRecord(const fs::path& folder, std::string_view fileName,
                                               std::size_t recordLength) {
    const auto path = findFileNoCase(folder, fileName);
    if (!path) {
        return std::nullopt;
    }
    const auto file = RecordFile::load(*path, recordLength);
    RecordBuffer rec = file.read(1);
    if (!rec.inUse()) {
        return std::nullopt;
    }
    return rec;
}

void writeSettingsRecord(const fs::path& folder, std::string_view fileName,
                         const RecordBuffer& rec) {
    const fs::path path = resolveNoCase(folder, fileName);
    auto file = RecordFile::load(path, rec.length());
    file.write(1, rec);
    file.save();
}

} // namespace orvak::core
