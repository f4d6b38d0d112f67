// libFuzzer target of the record file reader, whole records only (a partial last record is
// not a record) and with the rounded count of the bar tables (half a record or more counts):
// any bytes on disk, any record length, every record and every field of a small layout read
// back without a crash or an out-of-bounds read, the count as the rule says, and a record
// written past the end reads back byte for byte.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/record.h"
#include "fuzz_support.h"

namespace {

using namespace orvak::core;

// A use mark, numbers of each width, a text and a small table: 1 + 2 + 4 + 4 + 5 + 3*2 = 22.
constexpr auto kLayout = packFields(std::array<FieldSpec, 6>{{
    {"Mark", FieldType::Text, 1},
    {"Count", FieldType::Int16},
    {"Total", FieldType::Int32},
    {"Load", FieldType::Single},
    {"Name", FieldType::Text, 5},
    {"Table", FieldType::Int16, 0, 3},
}});

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const orvak::fuzz::ScratchFolder scratch("record");
    const std::filesystem::path file = scratch.path() / "RECORDS.DAT";
    if (size == 0) {
        return 0;
    }
    // The first byte chooses the record length (1..256); the rest is the file.
    const std::size_t recordLength = static_cast<std::size_t>(data[0]) + 1;
    orvak::fuzz::writeFile(file, data + 1, size - 1);

    for (const auto count : {RecordFile::Count::Truncate, RecordFile::Count::Round}) {
        RecordFile records = RecordFile::load(file, recordLength, count);
        const std::size_t whole = (size - 1) / recordLength;
        if (records.count() < whole || records.count() > whole + 1) {
            std::abort();
        }
        volatile double sink = 0;
        // One record past the end too, which must read as zero bytes.
        for (std::size_t n = 1; n <= records.count() + 1; ++n) {
            const RecordBuffer rec = records.read(n);
            if (rec.length() != recordLength) {
                std::abort();
            }
            if (n > records.count() && rec.inUse()) {
                std::abort();
            }
            for (const FieldDef& f : kLayout.fields) {
                for (std::size_t i = 0; i < f.count; ++i) {
                    if (f.offset + f.width * (i + 1) > rec.length()) {
                        continue; // the field does not fit a record this short
                    }
                    switch (f.type) {
                    case FieldType::Int16:
                        sink = sink + rec.getInt16(f, i);
                        break;
                    case FieldType::Int32:
                        sink = sink + rec.getInt32(f, i);
                        break;
                    case FieldType::Single:
                        sink = sink + (std::isfinite(rec.getSingle(f, i)) ? 1.0 : 0.0);
                        break;
                    case FieldType::Text:
                        sink = sink + static_cast<double>(rec.getTrimmedText(f, i).size());
                        break;
                    }
                }
            }
        }
        // Writing a record back and reading it again gives the same bytes.
        if (records.count() > 0) {
            const RecordBuffer first = records.read(1);
            records.write(records.count() + 2, first);
            if (records.read(records.count()).bytes() != first.bytes()) {
                std::abort();
            }
        }
    }
    return 0;
}
