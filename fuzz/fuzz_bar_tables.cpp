// libFuzzer target: the three bar tables (ROUNDBAR.DAT, SPACING.DAT, NETIRON.DAT) of any
// bytes; the first byte chooses the table. Every reader refuses the file with a FileError or
// gives values a design can use: no value that is not a number, and the design's bar table
// holds only bars within the physical bounds, or is refused with a message (InputError).
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "bars/bar_tables.h"
#include "beams/beam_job.h"
#include "core/error.h"
#include "fuzz_support.h"

using namespace orvak;

namespace {

void checkFinite(float v, const char* what) {
    if (!std::isfinite(v)) {
        fuzz::fail(what);
    }
}

void readRoundbar(const std::filesystem::path& folder) {
    try {
        for (const float d : bars::LoadBarDiameters(folder).diameters) {
            checkFinite(d, "a bar diameter read as a value that is not a number");
            if (!(d > 0.0f)) {
                fuzz::fail("a bar diameter of 0 or less is offered to the forms");
            }
        }
    } catch (const FileError&) {
    }
    try {
        const bars::BarPropertyTable table = beams::designBarTable(folder);
        for (const bars::BarProperties& bar : table.rows) {
            const double round = M_PI * bar.diameterMm * bar.diameterMm / 400.0;
            if (!(bar.diameterMm >= beams::kMinBarDiameterMm &&
                  bar.diameterMm <= beams::kMaxBarDiameterMm &&
                  bar.areaCm2 >= beams::kBarAreaLeast * round * (1 - 1e-6) &&
                  bar.areaCm2 <= beams::kBarAreaMost * round * (1 + 1e-6))) {
                fuzz::fail("the design's bar table holds a bar outside the physical bounds");
            }
            checkFinite(bar.weightKgPerM, "a bar weight read as a value that is not a number");
        }
    } catch (const FileError&) {
    } catch (const InputError&) {
    }
}

void readTable(const bars::TableKind& kind, const std::filesystem::path& folder) {
    try {
        const core::RecordFile file = bars::readTableFile(kind, folder);
        for (std::size_t n = 1; n <= file.count(); ++n) {
            const core::RecordBuffer rec = file.read(n);
            for (std::size_t i = 0; i < kind.valueCount; ++i) {
                checkFinite(bars::recordValue(rec, kind, i),
                            "a table value read as a value that is not a number");
            }
        }
    } catch (const FileError&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("bartables");
    if (size == 0) {
        return 0;
    }
    scratch.clear();
    const bars::TableKind& kind = bars::tableKind(static_cast<bars::TableId>(data[0] % 3));
    fuzz::writeFile(bars::tableFilePath(kind, scratch.path()), data + 1, size - 1);
    readTable(kind, scratch.path());
    if (&kind == &bars::roundbarTable()) {
        readRoundbar(scratch.path());
    } else if (&kind == &bars::netironTable()) {
        try {
            for (const bars::MeshRow& row : bars::ReadNetironRows(scratch.path())) {
                for (const float v : row.values) {
                    checkFinite(v, "a mesh value read as a value that is not a number");
                }
            }
        } catch (const FileError&) {
        }
    }
    return 0;
}
