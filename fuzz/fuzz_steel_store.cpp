// libFuzzer target: the project's steel store of any bytes. The first byte chooses the file:
// even, Iron.db, opened through its schema check, every element's items read and the report
// built; odd, an old Iron.MDB, imported. A file that is not what it should be is refused with
// a FileError and left as it was; nothing the file holds crashes the program. An import that
// fails leaves no Iron.db behind; one that succeeds leaves a store that opens.
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
        const std::string text = bars::formatSteelReport(bars::buildSteelReport(db, names, table));
        if (fuzz::printsNonNumber(text)) {
            fuzz::fail("the steel report prints a value that is not a number");
        }
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
    fuzz::writeFile(scratch.path() / (legacy ? bars::kLegacyIronDatabaseFile
                                             : bars::kIronDatabaseFile),
                    data + 1, size - 1);
    if (legacy) {
        importLegacy(scratch.path());
    } else {
        readStore(scratch.path());
    }
    return 0;
}
