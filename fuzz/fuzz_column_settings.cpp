// libFuzzer target: the column settings COLSSET.DAT of any bytes. The reader refuses the file
// with a FileError or gives settings that a design can use, and those settings are stored as
// they were read (encoding is a fixed point).
#include <cstddef>
#include <cstdint>

#include "columns/column_settings.h"
#include "core/error.h"
#include "fuzz_support.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("colsset");
    fuzz::writeFile(scratch.path() / columns::kColumnSettingsFile, data, size);
    columns::ColumnSettings settings;
    try {
        settings = columns::readColumnSettingsFile(scratch.path());
    } catch (const FileError&) {
        return 0;
    }
    if (!columns::validateColumnSettings(settings).empty()) {
        fuzz::fail("settings the design refuses were read without a word");
    }
    const core::RecordBuffer stored = columns::encodeColumnSettings(settings);
    if (columns::encodeColumnSettings(columns::decodeColumnSettings(stored)).bytes() !=
        stored.bytes()) {
        fuzz::fail("column settings do not read back as they were written");
    }
    return 0;
}
