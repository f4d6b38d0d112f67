// libFuzzer target: the footing settings FOOTSSET.DAT of any bytes. The reader refuses the file
// with a FileError or gives settings that a design can use, and those settings are stored as
// they were read (encoding is a fixed point).
#include <cstddef>
#include <cstdint>

#include "core/error.h"
#include "footings/footing_settings.h"
#include "fuzz_support.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("footsset");
    fuzz::writeFile(scratch.path() / footings::kFootingSettingsFile, data, size);
    footings::FootingSettings settings;
    try {
        settings = footings::readFootingSettingsFile(scratch.path());
    } catch (const FileError&) {
        return 0;
    }
    if (!footings::validateFootingSettings(settings).empty()) {
        fuzz::fail("settings the design refuses were read without a word");
    }
    const core::RecordBuffer stored = footings::encodeFootingSettings(settings);
    if (footings::encodeFootingSettings(footings::decodeFootingSettings(stored)).bytes() !=
        stored.bytes()) {
        fuzz::fail("footing settings do not read back as they were written");
    }
    return 0;
}
