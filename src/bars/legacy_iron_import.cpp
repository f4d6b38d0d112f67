// Import of the bar items of an older installation's Access store (Iron.MDB) into Iron.db,
// read through libmdb; the new store appears only once it is complete.
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <map>
#include <random>
#include <string>

#include "bars/steel_store.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"

#if ORVAK_HAVE_LIBMDB
#include <mdbtools.h>
#endif

namespace fs = std::filesystem;

namespace orvak::bars {

namespace {

// An Access file names its engine at byte 4; anything else is not worth handing to libmdb.
bool looksLikeAccessFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::array<char, 19> head{};
    in.read(head.data(), head.size());
    if (in.gcount() != static_cast<std::streamsize>(head.size())) {
        return false;
    }
    const std::string_view engine(head.data() + 4, 15);
    return engine == "Standard Jet DB" || engine == "Standard ACE DB";
}

// Iron.MDB cannot be read as an old store: no item of it can ever be imported, and while it
// stands beside the project no store may be made. It is kept under a name of its own, so
// that nothing is lost and the project can go on.
LegacyImportResult setUnreadableAside(const fs::path& mdbPath, std::string_view why) {
    const std::string base = mdbPath.filename().string() + std::string(kUnreadableLegacySuffix);
    fs::path target = mdbPath.parent_path() / base;
    std::error_code ec;
    // A name is free when nothing stands under it in any case of its letters (the project's
    // files are found without regard to case), not even a dangling link.
    const auto taken = [&ec](const fs::path& p) {
        return fs::symlink_status(p, ec).type() != fs::file_type::not_found ||
               core::findFileNoCase(p.parent_path(), p.filename().string()).has_value();
    };
    for (int n = 2; taken(target); ++n) {
        if (n > 999) {
            throw FileError(mdbPath, "The old steel-quantity database cannot be read, and no "
                                     "free name was found to keep it under");
        }
        target = mdbPath.parent_path() / (base + "-" + std::to_string(n));
    }
    fs::rename(mdbPath, target, ec);
    if (ec) {
        throw FileError(mdbPath, "The old steel-quantity database cannot be read, and it cannot "
                                 "be put aside: " + ec.message());
    }
    core::syncFolder(mdbPath.parent_path());
    LegacyImportResult result;
    result.available = true;
    result.setAside = target;
    result.message = "Iron.MDB cannot be read as an older steel-quantity database (" +
                     std::string(why) + "); nothing was imported. It was kept as " +
                     target.filename().string() +
                     ", and the steel quantities start in a new, empty store";
    return result;
}

// Why libmdb refused the file, or an empty string when the table's rows are read.
struct LegacyRows {
    std::vector<std::map<std::string, std::string>> rows;
    std::string unreadable;
};

#if ORVAK_HAVE_LIBMDB

double parseNumber(const std::string& text) {
    double v = 0.0;
    const char* first = text.data();
    const char* last = text.data() + text.size();
    while (first < last && *first == ' ') {
        ++first;
    }
    if (first < last && *first == '+') {
        ++first;
    }
    const auto [end, ec] = std::from_chars(first, last, v);
    return (ec == std::errc() && std::isfinite(v)) ? v : 0.0;
}

std::int16_t parseInt16(const std::string& text) {
    const double v = std::round(parseNumber(text));
    if (v < -32768.0 || v > 32767.0) {
        return 0;
    }
    return static_cast<std::int16_t>(v);
}

// The rows of SteelQntTable as text by column name; libmdb hands text as UTF-8, which goes
// back to the single-byte code page the old store was made with.
LegacyRows readLegacyRows(const fs::path& mdbPath) {
    LegacyRows result;
    MdbHandle* mdb = mdb_open(mdbPath.c_str(), MDB_NOFLAGS);
    if (mdb == nullptr) {
        result.unreadable = "it is damaged";
        return result;
    }
    std::string tableName(kSteelTableName);
    MdbTableDef* table = mdb_read_table_by_name(mdb, tableName.data(), MDB_TABLE);
    if (table == nullptr) {
        mdb_close(mdb);
        result.unreadable = "it holds no steel quantities table";
        return result;
    }
    mdb_read_columns(table);
    mdb_rewind_table(table);
    const unsigned columns = table->num_cols;
    std::vector<std::vector<char>> buffers(columns, std::vector<char>(MDB_BIND_SIZE));
    std::vector<int> lengths(columns, 0);
    std::vector<std::string> names(columns);
    for (unsigned i = 0; i < columns; ++i) {
        const auto* col = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
        names[i] = col->name;
        mdb_bind_column(table, static_cast<int>(i + 1), buffers[i].data(), &lengths[i]);
    }
    std::vector<std::map<std::string, std::string>>& rows = result.rows;
    while (mdb_fetch_row(table)) {
        std::map<std::string, std::string> row;
        for (unsigned i = 0; i < columns; ++i) {
            const auto n = static_cast<std::size_t>(std::max(0, lengths[i]));
            row[names[i]] = std::string(buffers[i].data(), std::min(n, buffers[i].size()));
        }
        rows.push_back(std::move(row));
    }
    mdb_free_tabledef(table);
    mdb_close(mdb);
    return result;
}

SteelItem itemFromLegacyRow(const std::map<std::string, std::string>& row) {
    const auto text = [&](const char* name) {
        const auto it = row.find(name);
        return it == row.end() ? std::string()
                               : core::fromUtf8(it->second, core::CodePage::Windows1252);
    };
    SteelItem it;
    it.mainKey = text("MAINKEY");
    it.element = text("BLDCLBEAM");
    it.subBuilding = parseInt16(text("SUBBUILDNO"));
    it.slab = parseInt16(text("CIELINDEX"));
    it.beam = parseInt16(text("BEAMINDEX"));
    it.mark = parseInt16(text("IRONINDEX"));
    it.general = parseInt16(text("GENERAL"));
    it.quantity = static_cast<float>(parseNumber(text("QUANTITY")));
    it.ironType = parseInt16(text("IRONTYPE"));
    it.diameterMm = static_cast<float>(parseNumber(text("DIAMETER")));
    it.lengthCm = static_cast<float>(parseNumber(text("LENGTH")));
    it.shape = parseInt16(text("SHAPE"));
    it.sheet = parseInt16(text("SHTINDX"));
    it.description = text("DESCRIPTION");
    return it;
}

#endif

} // namespace

LegacyImportResult importLegacyIronDatabase(const fs::path& projectFolder) {
    if (core::findFileNoCase(projectFolder, kIronDatabaseFile)) {
        throw InputError("The project has a steel-quantity database already; nothing was "
                         "imported");
    }
    const auto mdbPath = core::findFileNoCase(projectFolder, kLegacyIronDatabaseFile);
    if (!mdbPath) {
        throw InputError("The project holds no old steel-quantity database (Iron.MDB) to import");
    }
    if (!looksLikeAccessFile(*mdbPath)) {
        return setUnreadableAside(*mdbPath, "it is empty, damaged or not an Access file");
    }
#if ORVAK_HAVE_LIBMDB
    const LegacyRows legacy = readLegacyRows(*mdbPath);
    if (!legacy.unreadable.empty()) {
        return setUnreadableAside(*mdbPath, legacy.unreadable);
    }
    const auto& rows = legacy.rows;
    std::vector<SteelItem> items;
    LegacyImportResult result;
    result.available = true;
    std::map<std::string, bool> seen;
    for (const auto& row : rows) {
        SteelItem item = itemFromLegacyRow(row);
        const std::string key = item.mainKey.substr(0, kMainKeyWidth);
        if (key.empty() || seen.count(key) != 0) {
            ++result.skipped;
            continue;
        }
        seen[key] = true;
        items.push_back(std::move(item));
    }

    std::random_device rd;
    const fs::path target = projectFolder / kIronDatabaseFile;
    const fs::path temp =
        projectFolder / ("." + std::string(kIronDatabaseFile) + ".import" + std::to_string(rd()));
    std::error_code ec;
    try {
        {
            IronDatabase db = IronDatabase::openFile(temp);
            result.imported = db.saveItems(items);
        }
        if (fs::exists(target, ec)) {
            throw InputError("A steel-quantity database appeared during the import; nothing "
                             "was imported");
        }
        fs::rename(temp, target);
    } catch (const fs::filesystem_error& e) {
        fs::remove(temp, ec);
        throw FileError(target,
                        "The imported steel quantities cannot be stored: " + e.code().message());
    } catch (...) {
        fs::remove(temp, ec);
        throw;
    }
    result.message = "Imported " + std::to_string(result.imported) + " steel items from Iron.MDB" +
                     (result.skipped > 0 ? "; " + std::to_string(result.skipped) +
                                               " rows without a key of "
                                               "their own were left out"
                                         : "");
    return result;
#else
    LegacyImportResult result;
    result.available = false;
    result.message = "This build of Orvak cannot read Access files, so the items of Iron.MDB "
                     "cannot be imported";
    return result;
#endif
}

} // namespace orvak::bars
