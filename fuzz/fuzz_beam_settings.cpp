// libFuzzer target: the beam settings BMSETING.DAT of any bytes. The reader refuses the file
// with a FileError or gives settings that a design can use, and those settings are stored as
// they were read (encoding is a fixed point).
#include <cstddef>
#include <cstdint>

#include "beams/beam_settings.h"
#include "core/error.h"
#include "fuzz_support.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("bmseting");
    fuzz::writeFile(scratch.path() / beams::kBeamSettingsFile, data, size);
    beams::BeamSettings settings;
    try {
        settings = beams::readBeamSettingsFile(scratch.path());
    } catch (const FileError&) {
        return 0;
    }
    if (!beams::validateBeamSettings(settings).empty()) {
        fuzz::fail("settings the design refuses were read without a word");
    }
    const core::RecordBuffer stored = beams::encodeBeamSettings(settings);
    if (beams::encodeBeamSettings(beams::decodeBeamSettings(stored)).bytes() != stored.bytes()) {
        fuzz::fail("beam settings do not read back as they were written");
    }
    return 0;
}
