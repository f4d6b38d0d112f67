// libFuzzer target: the floor list CIELS.DAT of any bytes. The reader refuses the file with a
// FileError or gives floors; floors that pass the checks are written as the same records
// (the file image decodes to the same floors).
#include <cstddef>
#include <cstdint>

#include "core/error.h"
#include "floors/floors.h"
#include "fuzz_support.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("floors");
    static const fuzz::ScratchFolder rewritten("floors-again");
    fuzz::writeFile(scratch.path() / floors::kFloorsFile, data, size);
    std::vector<floors::Floor> list;
    try {
        list = floors::readFloors(scratch.path());
    } catch (const FileError&) {
        return 0;
    }
    if (!floors::validateFloors(list).empty()) {
        return 0;
    }
    const auto bytes = floors::floorsFileImage(rewritten.path(), list).image();
    fuzz::writeFile(rewritten.path() / floors::kFloorsFile, bytes.data(), bytes.size());
    if (floors::readFloors(rewritten.path()) != list) {
        fuzz::fail("valid floors do not read back as they were written");
    }
    return 0;
}
