// libFuzzer target: the project description GEN.CST of any bytes. Reading never fails on a
// damaged file (a short or unmarked one reads as blank); a record that is read is written as
// it was read (encoding is a fixed point after one pass), and once a blank sheet name has
// been filled in and written back, reading the file again gives the same record.
#include <cstddef>
#include <cstdint>

#include "core/error.h"
#include "fuzz_support.h"
#include "shell/project_record.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("gencst");
    fuzz::writeFile(scratch.path() / "GEN.CST", data, size);
    shell::ProjectRecord first;
    try {
        first = shell::readProjectRecord(scratch.path());
    } catch (const FileError&) {
        return 0;
    }
    const core::RecordBuffer stored = shell::encodeProjectRecord(first);
    const shell::ProjectRecord decoded = shell::decodeProjectRecord(stored);
    if (!decoded.valid || shell::encodeProjectRecord(decoded).bytes() != stored.bytes()) {
        fuzz::fail("a project record does not read back as it was written");
    }
    if (first.valid) {
        const shell::ProjectRecord again = shell::readProjectRecord(scratch.path());
        if (shell::encodeProjectRecord(again).bytes() != stored.bytes()) {
            fuzz::fail("reading GEN.CST twice gives two different records");
        }
    }
    return 0;
}
