// The steel-quantity store of a project in SQLite: schema, item key, edit-or-add, deletes and
// the ordered walks of the report. Every statement binds its values; writes are transactions.
#include "bars/steel_store.h"

#include <sqlite3.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::bars {

namespace {

// Field order and widths of the table as the older Access store had it. Text lengths are
// checked in bytes (single-byte text); BLDCLBEAM compares without regard to ASCII case, as
// the Access engine compared text.
constexpr std::string_view kCreateTable = R"(
CREATE TABLE SteelQntTable (
    MAINKEY     TEXT NOT NULL PRIMARY KEY CHECK (length(CAST(MAINKEY AS BLOB)) <= 19),
    BLDCLBEAM   TEXT NOT NULL DEFAULT '' COLLATE NOCASE
                CHECK (length(CAST(BLDCLBEAM AS BLOB)) <= 10),
    SUBBUILDNO  INTEGER NOT NULL DEFAULT 0 CHECK (SUBBUILDNO BETWEEN -32768 AND 32767),
    CIELINDEX   INTEGER NOT NULL DEFAULT 0 CHECK (CIELINDEX BETWEEN -32768 AND 32767),
    BEAMINDEX   INTEGER NOT NULL DEFAULT 0 CHECK (BEAMINDEX BETWEEN -32768 AND 32767),
    IRONINDEX   INTEGER NOT NULL DEFAULT 0 CHECK (IRONINDEX BETWEEN -32768 AND 32767),
    GENERAL     INTEGER NOT NULL DEFAULT 0 CHECK (GENERAL BETWEEN -32768 AND 32767),
    QUANTITY    REAL NOT NULL DEFAULT 0,
    IRONTYPE    INTEGER NOT NULL DEFAULT 0 CHECK (IRONTYPE BETWEEN -32768 AND 32767),
    DIAMETER    REAL NOT NULL DEFAULT 0,
    LENGTH      REAL NOT NULL DEFAULT 0,
    SHAPE       INTEGER NOT NULL DEFAULT 0 CHECK (SHAPE BETWEEN -32768 AND 32767),
    SHTINDX     INTEGER NOT NULL DEFAULT 0 CHECK (SHTINDX BETWEEN -32768 AND 32767),
    DESCRIPTION TEXT NOT NULL DEFAULT '' CHECK (length(CAST(DESCRIPTION AS BLOB)) <= 25)
);
CREATE UNIQUE INDEX MAINKEY_INDEX ON SteelQntTable (MAINKEY);
CREATE INDEX BLDCLBEAM_INDEX ON SteelQntTable (BLDCLBEAM);
CREATE INDEX SUBBUILDNO_INDEX ON SteelQntTable (SUBBUILDNO);
CREATE INDEX CIELINDEX_INDEX ON SteelQntTable (CIELINDEX);
CREATE INDEX BEAMINDEX_INDEX ON SteelQntTable (BEAMINDEX);
CREATE INDEX IRONINDEX_INDEX ON SteelQntTable (IRONINDEX);
CREATE INDEX GENERAL_INDEX ON SteelQntTable (GENERAL);
CREATE INDEX SHEET_INDEX ON SteelQntTable (SHTINDX);
CREATE INDEX ELEMENT_INDEX ON SteelQntTable (GENERAL, CIELINDEX, BEAMINDEX);
)";

// The element of a design run, found by kind, floor and number in one indexed lookup.
constexpr std::string_view kCreateElementIndex =
    "CREATE INDEX IF NOT EXISTS ELEMENT_INDEX ON SteelQntTable (GENERAL, CIELINDEX, BEAMINDEX)";

constexpr const char* kColumnNames[] = {
    "MAINKEY",  "BLDCLBEAM", "SUBBUILDNO", "CIELINDEX", "BEAMINDEX", "IRONINDEX", "GENERAL",
    "QUANTITY", "IRONTYPE",  "DIAMETER",   "LENGTH",    "SHAPE",     "SHTINDX",   "DESCRIPTION",
};

constexpr std::string_view kSelectItems =
    "SELECT MAINKEY, BLDCLBEAM, SUBBUILDNO, CIELINDEX, BEAMINDEX, IRONINDEX, GENERAL, QUANTITY, "
    "IRONTYPE, DIAMETER, LENGTH, SHAPE, SHTINDX, DESCRIPTION FROM SteelQntTable ";

// One plain sentence for a database failure; the caller adds the path.
std::string describeFailure(const SQLite::Exception& e) {
    switch (e.getErrorCode() & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "The steel-quantity database is in use by another program; close that program "
               "and try again";
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return "The steel-quantity database is damaged or is not a database; it was left as it "
               "is";
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
        return "The steel-quantity database cannot be opened for writing";
    case SQLITE_FULL:
        return "The disk is full; the steel quantities were not changed";
    case SQLITE_IOERR:
        return "The steel-quantity database cannot be read or written";
    default:
        return std::string("The steel-quantity database refused the operation: ") + e.what();
    }
}

// Runs a database operation, turning any SQLite failure into a FileError for the user.
template <typename Fn> auto guarded(const fs::path& path, Fn&& fn) -> decltype(fn()) {
    try {
        return fn();
    } catch (const SQLite::Exception& e) {
        throw FileError(path, describeFailure(e));
    }
}

std::string cutBytes(std::string_view text, std::size_t width) {
    return std::string(text.substr(0, std::min(text.size(), width)));
}

std::string trimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

std::int16_t toInt16(std::int32_t v, std::string_view what) {
    if (v < std::numeric_limits<std::int16_t>::min() ||
        v > std::numeric_limits<std::int16_t>::max()) {
        throw InputError("The " + std::string(what) + " " + std::to_string(v) +
                         " is out of range (-32768 to 32767)");
    }
    return static_cast<std::int16_t>(v);
}

void requireFinite(float v, std::string_view what) {
    if (!std::isfinite(v)) {
        throw InputError("The " + std::string(what) + " of a steel item must be a number");
    }
}

// A value no bar item can have (a negative count, 1e30 bars) would be summed into every
// weight of the report: refused with the range it may take.
void requireWithin(float v, float most, std::string_view what, std::string_view unit) {
    requireFinite(v, what);
    if (v < 0.0f || v > most) {
        throw InputError(fmt::format("The {} of a steel item must be from 0 to {:g}{}; {:g} was "
                                     "given",
                                     what, most, unit, v));
    }
}

// The item as it is stored: key, name and description cut to their widths.
SteelItem normalized(const SteelItem& item) {
    SteelItem out = item;
    out.mainKey = cutBytes(item.mainKey, kMainKeyWidth);
    out.element = storedElementName(item.element);
    out.description = cutBytes(trimBlanks(item.description), kDescriptionWidth);
    if (out.mainKey.empty()) {
        throw InputError("A steel item needs a key");
    }
    requireFinite(item.quantity, "quantity");
    requireFinite(item.diameterMm, "diameter");
    requireFinite(item.lengthCm, "length");
    return out;
}

std::int16_t columnInt16(const SQLite::Column& c) {
    const std::int64_t v = c.getInt64();
    if (v < std::numeric_limits<std::int16_t>::min() ||
        v > std::numeric_limits<std::int16_t>::max()) {
        return 0; // only another program can have put it there; the checks keep ours in range
    }
    return static_cast<std::int16_t>(v);
}

float columnSingle(const SQLite::Column& c) {
    const auto v = static_cast<float>(c.getDouble());
    return std::isfinite(v) ? v : 0.0f;
}

std::vector<SteelItem> collect(SQLite::Statement& st) {
    std::vector<SteelItem> items;
    while (st.executeStep()) {
        SteelItem it;
        it.mainKey = st.getColumn(0).getString();
        it.element = st.getColumn(1).getString();
        it.subBuilding = columnInt16(st.getColumn(2));
        it.slab = columnInt16(st.getColumn(3));
        it.beam = columnInt16(st.getColumn(4));
        it.mark = columnInt16(st.getColumn(5));
        it.general = columnInt16(st.getColumn(6));
        it.quantity = columnSingle(st.getColumn(7));
        it.ironType = columnInt16(st.getColumn(8));
        it.diameterMm = columnSingle(st.getColumn(9));
        it.lengthCm = columnSingle(st.getColumn(10));
        it.shape = columnInt16(st.getColumn(11));
        it.sheet = columnInt16(st.getColumn(12));
        it.description = st.getColumn(13).getString();
        items.push_back(std::move(it));
    }
    return items;
}

// Binds the fields of an item as parameters 1..14 in column order.
void bindItem(SQLite::Statement& st, const SteelItem& it) {
    st.bind(1, it.mainKey);
    st.bind(2, it.element);
    st.bind(3, it.subBuilding);
    st.bind(4, it.slab);
    st.bind(5, it.beam);
    st.bind(6, it.mark);
    st.bind(7, it.general);
    st.bind(8, static_cast<double>(it.quantity));
    st.bind(9, it.ironType);
    st.bind(10, static_cast<double>(it.diameterMm));
    st.bind(11, static_cast<double>(it.lengthCm));
    st.bind(12, it.shape);
    st.bind(13, it.sheet);
    st.bind(14, it.description);
}

bool keyExists(SQLite::Database& db, const std::string& key) {
    SQLite::Statement st(db, "SELECT 1 FROM SteelQntTable WHERE MAINKEY = ?");
    st.bind(1, key);
    return st.executeStep();
}

// Adds or edits one normalized item inside an open transaction.
IronDatabase::SaveKind writeItem(SQLite::Database& db, const SteelItem& it) {
    if (keyExists(db, it.mainKey)) {
        SQLite::Statement st(db,
                             "UPDATE SteelQntTable SET BLDCLBEAM = ?2, SUBBUILDNO = ?3, "
                             "CIELINDEX = ?4, BEAMINDEX = ?5, IRONINDEX = ?6, GENERAL = ?7, "
                             "QUANTITY = ?8, IRONTYPE = ?9, DIAMETER = ?10, LENGTH = ?11, "
                             "SHAPE = ?12, SHTINDX = ?13, DESCRIPTION = ?14 WHERE MAINKEY = ?1");
        bindItem(st, it);
        st.exec();
        return IronDatabase::SaveKind::Edited;
    }
    SQLite::Statement st(db, "INSERT INTO SteelQntTable (MAINKEY, BLDCLBEAM, SUBBUILDNO, "
                             "CIELINDEX, BEAMINDEX, IRONINDEX, GENERAL, QUANTITY, IRONTYPE, "
                             "DIAMETER, LENGTH, SHAPE, SHTINDX, DESCRIPTION) VALUES "
                             "(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14)");
    bindItem(st, it);
    st.exec();
    return IronDatabase::SaveKind::Added;
}

std::vector<SteelItem> normalizedAll(const std::vector<SteelItem>& items) {
    std::vector<SteelItem> rows;
    rows.reserve(items.size());
    for (const SteelItem& item : items) {
        rows.push_back(normalized(item));
    }
    return rows;
}

// Saves normalized rows inside an open transaction, then runs `beforeCommit`; returns how
// many were added.
std::size_t writeRows(SQLite::Database& db, const std::vector<SteelItem>& rows,
                      const std::function<void()>& beforeCommit) {
    std::size_t added = 0;
    for (const SteelItem& it : rows) {
        added += writeItem(db, it) == IronDatabase::SaveKind::Added ? 1 : 0;
    }
    if (beforeCommit) {
        beforeCommit();
    }
    return added;
}

// Makes the table in an empty database, or checks that an existing one is ours.
void prepareSchema(SQLite::Database& db, const fs::path& path) {
    const auto hasTables = [&db] {
        SQLite::Statement st(db, "SELECT count(*) FROM sqlite_master WHERE type = 'table'");
        st.executeStep();
        return st.getColumn(0).getInt() > 0;
    };
    if (!hasTables()) {
        // Two programs may open a new project's store at once: the one that takes the write
        // lock second finds the table made, and checks it like any existing store.
        SQLite::Transaction tx(db, SQLite::TransactionBehavior::IMMEDIATE);
        if (!hasTables()) {
            db.exec(std::string(kCreateTable));
            tx.commit();
            return;
        }
        tx.commit();
    }
    std::vector<std::string> columns;
    {
        SQLite::Statement st(db,
                             "SELECT name FROM pragma_table_info('SteelQntTable') ORDER BY cid");
        while (st.executeStep()) {
            columns.push_back(st.getColumn(0).getString());
        }
    }
    const bool ours = columns.size() == std::size(kColumnNames) &&
                      std::equal(columns.begin(), columns.end(), std::begin(kColumnNames));
    if (!ours) {
        throw FileError(path, "This file is a database but does not hold the steel quantities "
                              "table; it was left as it is");
    }
    // Stores made before the element index get it now: a design replaces an element's items
    // through it. A store that cannot be written now (another program holds it) is used as it
    // is; the lookups are then slower, not wrong.
    try {
        db.exec(std::string(kCreateElementIndex));
    } catch (const SQLite::Exception&) {
    }
}

// The sheets of a design run waiting for their renames: a row per staged temporary, named
// relative to the store's folder where it lies inside it (a project moved after a kill is
// still completed).
constexpr std::string_view kPendingTable = "PendingOutputs";

bool hasPendingTable(SQLite::Database& db) {
    SQLite::Statement st(db, "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND "
                             "name = ?");
    st.bind(1, std::string(kPendingTable));
    st.executeStep();
    return st.getColumn(0).getInt() > 0;
}

std::string storedName(const fs::path& path, const fs::path& folder) {
    const fs::path relative = path.lexically_relative(folder);
    if (relative.empty() || *relative.begin() == "..") {
        return path.string();
    }
    return relative.string();
}

// A design run holds the store's write lock from before its first sheet is staged until its
// commit, and lists its sheets in the store before it releases it. So when the lock can be
// taken at once, no run is under way: the sheets a list still names are put in place (the
// run was cut off after its commit), and every other staged sheet of a run is an orphan of a
// run cut off before its commit, whatever its age. When a run holds the lock, nothing is
// done; the next open tries again. Nothing here stops the store from opening.
void completeInterruptedRun(SQLite::Database& db, const fs::path& file, int busyTimeoutMs) {
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    sqlite3_busy_timeout(db.getHandle(), 0);
    try {
        db.exec("BEGIN IMMEDIATE");
    } catch (const SQLite::Exception&) {
        sqlite3_busy_timeout(db.getHandle(), busyTimeoutMs);
        return;
    }
    sqlite3_busy_timeout(db.getHandle(), busyTimeoutMs);
    bool orphansOnly = true;
    try {
        if (hasPendingTable(db)) {
            std::vector<core::PendingRename> renames;
            {
                SQLite::Statement st(db, "SELECT TEMPNAME, TARGETNAME FROM " +
                                             std::string(kPendingTable) + " ORDER BY rowid");
                while (st.executeStep()) {
                    renames.push_back({folder / st.getColumn(0).getString(),
                                       folder / st.getColumn(1).getString()});
                }
            }
            if (!renames.empty()) {
                orphansOnly = false;
                core::completeRenames(renames);
                db.exec("DELETE FROM " + std::string(kPendingTable));
                orphansOnly = true;
            }
        }
        // A list that could not be completed keeps its temporaries for the next try.
        if (orphansOnly) {
            core::removeStaleTemporaries(folder, fs::file_time_type::clock::now(),
                                         core::kRunTemporaryTag,
                                         fs::file_time_type::duration::zero());
        }
        db.exec("COMMIT");
    } catch (const SQLite::Exception&) {
    } catch (const FileError&) {
    }
    try {
        if (sqlite3_get_autocommit(db.getHandle()) == 0) {
            db.exec("ROLLBACK");
        }
    } catch (const SQLite::Exception&) {
    }
}

} // namespace

std::string makeMainKey(std::int32_t first, std::int32_t second, std::int32_t third,
                        std::int32_t fourth, std::int32_t fifth) {
    const auto place = [](std::int32_t n, std::size_t width) {
        const std::string text = std::string(width, '0') + std::to_string(n);
        return text.substr(text.size() - width);
    };
    return place(first, 2) + "." + place(second, 3) + "." + place(third, 3) + "." +
           place(fourth, 4) + "." + place(fifth, 3);
}

std::string storedElementName(std::string_view element) {
    std::string name = cutBytes(element, kElementNameWidth);
    const auto last = name.find_last_not_of(' ');
    name.erase(last == std::string::npos ? 0 : last + 1);
    return name;
}

SteelItem itemFromManual(const ManualItem& m) {
    requireWithin(m.quantity, kMaxItemQuantity, "quantity", " bars");
    requireWithin(m.diameterMm, kMaxItemDiameterMm, "diameter", " mm");
    requireWithin(m.lengthCm, kMaxItemLengthCm, "length", " cm");
    SteelItem it;
    it.general = static_cast<std::int16_t>(m.kind);
    it.slab = toInt16(m.slab, "slab number");
    it.beam = toInt16(m.elementNumber, "element number");
    it.mark = toInt16(m.mark, "bar mark");
    it.subBuilding = toInt16(m.subBuilding, "sub-building number");
    it.mainKey = makeMainKey(it.general, it.slab, it.beam, it.mark, it.subBuilding);
    it.element = storedElementName(m.element);
    it.quantity = m.quantity;
    it.ironType = toInt16(m.barKind, "bar kind");
    it.diameterMm = m.diameterMm;
    it.lengthCm = m.lengthCm;
    it.shape = toInt16(m.shape, "shape number");
    it.sheet = toInt16(m.sheet, "sheet number");
    it.description = cutBytes(trimBlanks(m.description), kDescriptionWidth);
    for (const auto& [text, what] : {std::pair{std::string_view(it.element), "element name"},
                                     std::pair{std::string_view(it.description), "description"}}) {
        if (std::any_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; })) {
            throw InputError(fmt::format("The {} of a steel item holds a control character (a "
                                         "NUL, a line break, a tab ...)",
                                         what));
        }
    }
    return it;
}

fs::path ironDatabasePath(const fs::path& projectFolder) {
    return core::resolveNoCase(projectFolder, kIronDatabaseFile);
}

bool legacyImportOffered(const fs::path& projectFolder) {
    return !core::findFileNoCase(projectFolder, kIronDatabaseFile) &&
           core::findFileNoCase(projectFolder, kLegacyIronDatabaseFile).has_value();
}

IronDatabase::IronDatabase(fs::path path, std::unique_ptr<SQLite::Database> db)
    : m_path(std::move(path)), m_db(std::move(db)) {}
IronDatabase::IronDatabase(IronDatabase&&) noexcept = default;
IronDatabase& IronDatabase::operator=(IronDatabase&&) noexcept = default;
IronDatabase::~IronDatabase() = default;

IronDatabase IronDatabase::open(const fs::path& projectFolder, int busyTimeoutMs) {
    std::error_code ec;
    if (!fs::is_directory(projectFolder, ec)) {
        throw FileError(projectFolder, "The project folder does not exist");
    }
    return openFile(ironDatabasePath(projectFolder), busyTimeoutMs);
}

IronDatabase IronDatabase::openFile(const fs::path& file, int busyTimeoutMs) {
    std::error_code ec;
    if (fs::is_directory(file, ec)) {
        throw FileError(file, "A folder stands where the steel-quantity database should be");
    }
    return guarded(file, [&] {
        auto db = std::make_unique<SQLite::Database>(
            file, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, busyTimeoutMs);
        db->exec("PRAGMA foreign_keys = ON");
        prepareSchema(*db, file);
        completeInterruptedRun(*db, file, busyTimeoutMs);
        return IronDatabase(file, std::move(db));
    });
}

IronDatabase::SaveKind IronDatabase::saveItem(const SteelItem& item) {
    const SteelItem it = normalized(item);
    return guarded(m_path, [&] {
        SQLite::Transaction tx(*m_db, SQLite::TransactionBehavior::IMMEDIATE);
        const SaveKind kind = writeItem(*m_db, it);
        tx.commit();
        return kind;
    });
}

std::size_t IronDatabase::saveItems(const std::vector<SteelItem>& items) {
    return replaceItems({}, items);
}

std::size_t IronDatabase::replaceItems(const std::vector<std::string>& removedKeys,
                                       const std::vector<SteelItem>& items,
                                       const std::function<void()>& beforeCommit) {
    const std::vector<SteelItem> rows = normalizedAll(items);
    return guarded(m_path, [&] {
        SQLite::Transaction tx(*m_db, SQLite::TransactionBehavior::IMMEDIATE);
        SQLite::Statement remove(*m_db, "DELETE FROM SteelQntTable WHERE MAINKEY = ?");
        for (const std::string& key : removedKeys) {
            remove.bind(1, cutBytes(key, kMainKeyWidth));
            remove.exec();
            remove.reset();
        }
        const std::size_t added = writeRows(*m_db, rows, beforeCommit);
        tx.commit();
        return added;
    });
}

std::size_t IronDatabase::replaceElementItems(ElementKind kind, std::int16_t slab,
                                              std::int16_t element,
                                              const std::vector<SteelItem>& items,
                                              const std::function<void()>& beforeCommit) {
    const std::vector<SteelItem> rows = normalizedAll(items);
    auto replace = [&] {
        SQLite::Statement remove(*m_db, "DELETE FROM SteelQntTable WHERE GENERAL = ? AND "
                                        "CIELINDEX = ? AND BEAMINDEX = ?");
        remove.bind(1, static_cast<int>(kind));
        remove.bind(2, slab);
        remove.bind(3, element);
        remove.exec();
        return writeRows(*m_db, rows, beforeCommit);
    };
    return guarded(m_path, [&] {
        if (!m_inGroup) {
            SQLite::Transaction tx(*m_db, SQLite::TransactionBehavior::IMMEDIATE);
            const std::size_t added = replace();
            tx.commit();
            return added;
        }
        // Inside a group the element is a savepoint: it lands with the group's commit, and
        // an element that fails is rolled back alone.
        m_db->exec("SAVEPOINT element");
        try {
            const std::size_t added = replace();
            m_db->exec("RELEASE element");
            return added;
        } catch (...) {
            try {
                m_db->exec("ROLLBACK TO element");
                m_db->exec("RELEASE element");
            } catch (const SQLite::Exception&) {
            }
            // A full disk or an I/O error makes SQLite roll the whole group back: the elements
            // before this one lost their items too, which the caller must know.
            if (sqlite3_get_autocommit(m_db->getHandle()) != 0) {
                m_inGroup = false;
                m_groupLost = true;
            }
            throw;
        }
    });
}

void IronDatabase::beginGroup() {
    ORVAK_ASSERT(!m_inGroup);
    guarded(m_path, [&] { m_db->exec("BEGIN IMMEDIATE"); });
    m_inGroup = true;
}

void IronDatabase::commitGroup() {
    ORVAK_ASSERT(m_inGroup);
    m_inGroup = false;
    try {
        guarded(m_path, [&] { m_db->exec("COMMIT"); });
    } catch (...) {
        m_groupLost = true;
        try {
            m_db->exec("ROLLBACK");
        } catch (const SQLite::Exception&) {
        }
        throw;
    }
}

void IronDatabase::rollbackGroup() {
    if (!m_inGroup) {
        return;
    }
    m_inGroup = false;
    try {
        m_db->exec("ROLLBACK");
    } catch (const SQLite::Exception&) {
    }
}

void IronDatabase::recordPendingOutputs(std::span<const core::PendingRename> renames) {
    ORVAK_ASSERT(m_inGroup);
    const fs::path folder = m_path.has_parent_path() ? m_path.parent_path() : fs::path(".");
    guarded(m_path, [&] {
        m_db->exec("CREATE TABLE IF NOT EXISTS " + std::string(kPendingTable) +
                   " (TEMPNAME TEXT NOT NULL, TARGETNAME TEXT NOT NULL)");
        SQLite::Statement add(*m_db, "INSERT INTO " + std::string(kPendingTable) +
                                         " (TEMPNAME, TARGETNAME) VALUES (?, ?)");
        for (const core::PendingRename& r : renames) {
            add.bind(1, storedName(r.temp, folder));
            add.bind(2, storedName(r.target, folder));
            add.exec();
            add.reset();
        }
    });
}

void IronDatabase::clearPendingOutputs() {
    guarded(m_path, [&] {
        if (hasPendingTable(*m_db)) {
            m_db->exec("DELETE FROM " + std::string(kPendingTable));
        }
    });
}

namespace {
// One row per designed element: its last run's outcome and time. Made by the first run.
constexpr std::string_view kDesignStateTable = "DesignState";
} // namespace

void IronDatabase::recordDesignState(const DesignState& state) {
    guarded(m_path, [&] {
        m_db->exec("CREATE TABLE IF NOT EXISTS " + std::string(kDesignStateTable) +
                   " (KIND TEXT NOT NULL, FLOOR INTEGER NOT NULL, NUMBER INTEGER NOT NULL, "
                   "STATUS INTEGER NOT NULL, RUNTIME TEXT NOT NULL, FAILURES TEXT NOT NULL, "
                   "PRIMARY KEY (KIND, FLOOR, NUMBER))");
        SQLite::Statement put(*m_db, "INSERT OR REPLACE INTO " + std::string(kDesignStateTable) +
                                         " VALUES (?, ?, ?, ?, ?, ?)");
        put.bind(1, state.kind);
        put.bind(2, state.floor);
        put.bind(3, state.number);
        put.bind(4, static_cast<int>(state.status));
        put.bind(5, state.when);
        put.bind(6, state.failures);
        put.exec();
    });
}

void IronDatabase::removeDesignState(std::string_view kind, std::int16_t floor,
                                     std::int16_t number) {
    guarded(m_path, [&] {
        SQLite::Statement has(*m_db, "SELECT count(*) FROM sqlite_master WHERE type = 'table' "
                                     "AND name = ?");
        has.bind(1, std::string(kDesignStateTable));
        if (!has.executeStep() || has.getColumn(0).getInt() == 0) {
            return;
        }
        SQLite::Statement drop(*m_db, "DELETE FROM " + std::string(kDesignStateTable) +
                                          " WHERE KIND = ? AND FLOOR = ? AND NUMBER = ?");
        drop.bind(1, std::string(kind));
        drop.bind(2, floor);
        drop.bind(3, number);
        drop.exec();
    });
}

std::vector<DesignState> IronDatabase::designStates() const {
    return guarded(m_path, [&] {
        std::vector<DesignState> states;
        SQLite::Statement has(*m_db, "SELECT count(*) FROM sqlite_master WHERE type = 'table' "
                                     "AND name = ?");
        has.bind(1, std::string(kDesignStateTable));
        if (!has.executeStep() || has.getColumn(0).getInt() == 0) {
            return states;
        }
        SQLite::Statement st(*m_db, "SELECT KIND, FLOOR, NUMBER, STATUS, RUNTIME, FAILURES FROM " +
                                        std::string(kDesignStateTable) +
                                        " ORDER BY KIND, FLOOR, NUMBER");
        while (st.executeStep()) {
            DesignState d;
            d.kind = st.getColumn(0).getString();
            d.floor = static_cast<std::int16_t>(st.getColumn(1).getInt());
            d.number = static_cast<std::int16_t>(st.getColumn(2).getInt());
            const int status = st.getColumn(3).getInt();
            // A value no version wrote reads as "not designed": never as designed.
            d.status = status == 1   ? DesignState::Status::Designed
                       : status == 2 ? DesignState::Status::ChecksFailed
                                     : DesignState::Status::NotDesigned;
            d.when = st.getColumn(4).getString();
            d.failures = st.getColumn(5).getString();
            states.push_back(std::move(d));
        }
        return states;
    });
}

void IronDatabase::deferDurability() {
    guarded(m_path, [&] {
        // Only a write-ahead log keeps the store whole without a flush per commit; where the
        // file system refuses one, the commits stay fully synced.
        // A run is one transaction: its changed pages stay in memory until the commit rather
        // than spill into the log and be read back (64 MB; the pages of a building's items).
        m_db->exec("PRAGMA cache_size = -65536");
        SQLite::Statement mode(*m_db, "PRAGMA journal_mode = WAL");
        if (mode.executeStep() && mode.getColumn(0).getString() == "wal") {
            m_db->exec("PRAGMA synchronous = NORMAL");
        }
    });
}

void IronDatabase::flushDeferred() {
    guarded(m_path, [&] {
        m_db->exec("PRAGMA wal_checkpoint(TRUNCATE)");
        m_db->exec("PRAGMA synchronous = FULL");
    });
    // Back to the plain journal, so that the store is one file again when the project is
    // copied or archived. Another connection keeps the log in use; it is then left as it is.
    try {
        m_db->exec("PRAGMA journal_mode = DELETE");
    } catch (const SQLite::Exception&) {
    }
}

std::optional<SteelItem> IronDatabase::findItem(std::string_view mainKey) const {
    return guarded(m_path, [&]() -> std::optional<SteelItem> {
        SQLite::Statement st(*m_db, std::string(kSelectItems) + "WHERE MAINKEY = ?");
        st.bind(1, cutBytes(mainKey, kMainKeyWidth));
        auto items = collect(st);
        if (items.empty()) {
            return std::nullopt;
        }
        return items.front();
    });
}

bool IronDatabase::deleteItem(std::string_view mainKey) {
    return guarded(m_path, [&] {
        SQLite::Transaction tx(*m_db, SQLite::TransactionBehavior::IMMEDIATE);
        SQLite::Statement st(*m_db, "DELETE FROM SteelQntTable WHERE MAINKEY = ?");
        st.bind(1, cutBytes(mainKey, kMainKeyWidth));
        const int n = st.exec();
        tx.commit();
        return n > 0;
    });
}

std::size_t IronDatabase::deleteElementItems(ElementKind kind, std::string_view element) {
    return guarded(m_path, [&] {
        SQLite::Transaction tx(*m_db, SQLite::TransactionBehavior::IMMEDIATE);
        SQLite::Statement st(*m_db,
                             "DELETE FROM SteelQntTable WHERE GENERAL = ? AND BLDCLBEAM = ?");
        st.bind(1, static_cast<int>(kind));
        st.bind(2, storedElementName(element));
        const int n = st.exec();
        tx.commit();
        return static_cast<std::size_t>(n);
    });
}

std::size_t IronDatabase::deleteSlabItems(std::int16_t slab) {
    if (slab == 0) {
        return 0;
    }
    return guarded(m_path, [&] {
        SQLite::Transaction tx(*m_db, SQLite::TransactionBehavior::IMMEDIATE);
        SQLite::Statement st(*m_db, "DELETE FROM SteelQntTable WHERE CIELINDEX = ?");
        st.bind(1, slab);
        const int n = st.exec();
        tx.commit();
        return static_cast<std::size_t>(n);
    });
}

std::vector<SteelItem> IronDatabase::elementQuantities(std::string_view element) const {
    return guarded(m_path, [&] {
        // rowid grows with each new row, so ties keep the order the items were stored in.
        SQLite::Statement st(*m_db, std::string(kSelectItems) +
                                        "WHERE BLDCLBEAM = ? ORDER BY DIAMETER, rowid");
        st.bind(1, storedElementName(element));
        return collect(st);
    });
}

std::vector<SteelItem> IronDatabase::elementItemsByMark(std::string_view element) const {
    return guarded(m_path, [&] {
        SQLite::Statement st(*m_db, std::string(kSelectItems) +
                                        "WHERE BLDCLBEAM = ? ORDER BY IRONINDEX, rowid");
        st.bind(1, storedElementName(element));
        return collect(st);
    });
}

std::vector<SteelItem> IronDatabase::itemsByMark(ElementKind kind, std::string_view element) const {
    return guarded(m_path, [&] {
        SQLite::Statement st(*m_db,
                             std::string(kSelectItems) +
                                 "WHERE GENERAL = ? AND BLDCLBEAM = ? ORDER BY IRONINDEX, rowid");
        st.bind(1, static_cast<int>(kind));
        st.bind(2, storedElementName(element));
        return collect(st);
    });
}

std::vector<std::string> IronDatabase::elementNames() const {
    return guarded(m_path, [&] {
        SQLite::Statement st(*m_db, "SELECT BLDCLBEAM FROM SteelQntTable GROUP BY BLDCLBEAM "
                                    "ORDER BY BLDCLBEAM");
        std::vector<std::string> names;
        while (st.executeStep()) {
            names.push_back(st.getColumn(0).getString());
        }
        return names;
    });
}

std::size_t IronDatabase::itemCount() const {
    return guarded(m_path, [&] {
        SQLite::Statement st(*m_db, "SELECT count(*) FROM SteelQntTable");
        st.executeStep();
        return static_cast<std::size_t>(st.getColumn(0).getInt64());
    });
}

IronDatabase OpenIronDatabase(const fs::path& projectFolder) {
    return IronDatabase::open(projectFolder);
}

std::size_t DeleteSlabQuantities(const fs::path& projectFolder, std::int16_t slab) {
    if (slab == 0 || !core::findFileNoCase(projectFolder, kIronDatabaseFile)) {
        return 0;
    }
    IronDatabase db = IronDatabase::open(projectFolder);
    return db.deleteSlabItems(slab);
}

std::vector<SteelItem> ElementQuantities(const IronDatabase& db, std::string_view element) {
    return db.elementQuantities(element);
}

} // namespace orvak::bars
