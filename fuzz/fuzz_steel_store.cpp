// libFuzzer target: the project's steel store of any bytes. The first byte chooses the file:
// even, Iron.db, opened through its schema check, every element's items read and the report
// built; odd, an old Iron.MDB, imported. A file that is not what it should be is refused with
// a FileError and left as it was; nothing the file holds crashes the program, and every number
// of the steel report is a number. An import that fails leaves no Iron.db behind; one that
// succeeds leaves a store that opens.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "bars/bar_tables.h"
#include "bars/steel_report.h"
#include "bars/steel_store.h"
#include "core/error.h"
#include "core/file_util.h"
#include "fuzz_support.h"

using namespace orvak;

namespace {

void readStore(const std::filesystem::path& project) {
    try {
        bars::IronDatabase db = bars::IronDatabase::open(project, 0);
        const std::vector<std::string> names = db.elementNames();
        for (const std::string& name : names) {
            (void)db.elementQuantities(name);
        }
        bars::BarPropertyTable table;
        table.rows = bars::builtInBarProperties();
        table.available = true;
        // Every number the report prints is a number (the descriptions are the user's text,
        // and may say anything).
        const bars::SteelReport report = bars::buildSteelReport(db, names, table);
        const auto finite = [](double v) { return std::isfinite(v); };
        bool allFinite = finite(report.grandTotalKg);
        for (const bars::ElementReport& element : report.elements) {
            allFinite = allFinite && finite(element.totalKg);
            for (const bars::ReportItem& r : element.items) {
                allFinite = allFinite && finite(r.weightKg) && finite(r.item.quantity) &&
                            finite(r.item.diameterMm) && finite(r.item.lengthCm);
            }
            for (const bars::DiameterTotal& t : element.diameterTotals) {
                allFinite = allFinite && finite(t.weightKg) && finite(t.diameterMm);
            }
        }
        for (const bars::DiameterTotal& t : report.diameterTotals) {
            allFinite = allFinite && finite(t.weightKg) && finite(t.diameterMm);
        }
        if (!allFinite) {
            fuzz::fail("the steel report holds a value that is not a number");
        }
        (void)bars::formatSteelReport(report);
    } catch (const FileError&) {
    }
}

void importLegacy(const std::filesystem::path& project) {
    bool imported = false;
    try {
        imported = bars::importLegacyIronDatabase(project).available;
    } catch (const FileError&) {
    } catch (const InputError&) {
    }
    const bool storeThere = core::findFileNoCase(project, bars::kIronDatabaseFile).has_value();
    if (!imported && storeThere) {
        fuzz::fail("a failed import left a steel store behind");
    }
    if (storeThere) {
        readStore(project);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("steel");
    if (size == 0) {
        return 0;
    }
    scratch.clear();
    const bool legacy = data[0] % 2 == 1;
    fuzz::writeFile(scratch.path() /
                        (legacy ? bars::kLegacyIronDatabaseFile : bars::kIronDatabaseFile),
                    data + 1, size - 1);
    if (legacy) {
        importLegacy(scratch.path());
    } else {
        readStore(scratch.path());
    }
    return 0;
}
