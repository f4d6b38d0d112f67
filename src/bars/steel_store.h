// The steel-quantity store of a project: one SQLite table of bar items (Iron.db), keyed by a
// 19-character item key, with the lookups the quantity report and the item forms use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/output_batch.h"

namespace SQLite {
class Database;
}

namespace orvak::bars {

inline constexpr std::string_view kIronDatabaseFile = "Iron.db";
/// The store of older installations, an Access (Jet) file; its items can be imported.
inline constexpr std::string_view kLegacyIronDatabaseFile = "Iron.MDB";
inline constexpr std::string_view kSteelTableName = "SteelQntTable";

inline constexpr std::size_t kMainKeyWidth = 19;
inline constexpr std::size_t kElementNameWidth = 10;
inline constexpr std::size_t kDescriptionWidth = 25;

/// How long a statement waits for another program's lock before giving up.
inline constexpr int kIronDatabaseBusyMs = 2000;

/// The kind of element an item belongs to, kept in the GENERAL field (its group marker).
/// 0 is an item whose writer gave no kind. A column group's items carry ColumnGroup.
enum class ElementKind : std::int16_t {
    None = 0,
    Slab = 1,
    Footing = 2,
    Extra = 3,
    ColumnGroup = 4,
};

/// The item key: "00.000.000.0000.000" with the five numbers written into characters 1-2,
/// 4-6, 8-10, 12-15 and 17-19. Each number's decimal text (a minus sign kept) is prefixed
/// with zeros and cut to its last 2, 3, 3, 4 or 3 characters, so a number too wide for its
/// place keeps only its low digits: (1, 2, 15, 7, 0) gives "01.002.015.0007.000", and 1234
/// in a 3-digit place gives "234".
std::string makeMainKey(std::int32_t first, std::int32_t second, std::int32_t third,
                        std::int32_t fourth, std::int32_t fifth);

/// One bar item, a row of SteelQntTable. Text is single-byte, as the element files hold it.
struct SteelItem {
    std::string mainKey;          ///< MAINKEY
    std::string element;          ///< BLDCLBEAM, at most 10 characters when stored
    std::int16_t subBuilding = 0; ///< SUBBUILDNO
    std::int16_t slab = 0;        ///< CIELINDEX, 0 when none
    std::int16_t beam = 0;        ///< BEAMINDEX: number of the element within its kind and slab
    std::int16_t mark = 0;        ///< IRONINDEX: the bar mark within the element
    std::int16_t general = 0;     ///< GENERAL: the ElementKind of the item
    float quantity = 0.0f;        ///< QUANTITY: number of bars
    std::int16_t ironType = 0;    ///< IRONTYPE: bar kind
    float diameterMm = 0.0f;      ///< DIAMETER
    float lengthCm = 0.0f;        ///< LENGTH of one bar
    std::int16_t shape = 0;       ///< SHAPE
    std::int16_t sheet = 0;       ///< SHTINDX
    std::string description;      ///< DESCRIPTION, stored trimmed, at most 25 characters

    bool operator==(const SteelItem&) const = default;
};

/// An item entered by hand: element kind and element, its numbers, and the bar.
struct ManualItem {
    ElementKind kind = ElementKind::Extra;
    std::string element;
    std::int32_t subBuilding = 0;
    std::int32_t slab = 0;
    std::int32_t elementNumber = 0; ///< BEAMINDEX
    std::int32_t mark = 0;          ///< IRONINDEX
    float quantity = 0.0f;
    float diameterMm = 0.0f;
    float lengthCm = 0.0f;
    std::int32_t shape = 0;
    std::int32_t sheet = 0;
    std::int32_t barKind = 0; ///< IRONTYPE
    std::string description;
};

/// What a bar item may hold: bars, their diameter and the length of one; each fits its
/// column of the reports ("#####", "##.##", "####.##").
inline constexpr float kMaxItemQuantity = 99'999.0f;
inline constexpr float kMaxItemDiameterMm = 99.0f;
inline constexpr float kMaxItemLengthCm = 9'999.0f;

/// The row a manual item is saved as. Its key is made of (kind, slab, element number, mark,
/// sub-building) in that order, each cut to its place; the element name is cut to 10
/// characters and right-trimmed; the description is trimmed on both sides and cut to 25.
/// Throws InputError when a number does not fit a 16-bit field, or the quantity, diameter or
/// length is not a number from 0 to its maximum above.
SteelItem itemFromManual(const ManualItem& manual);

/// The element name as stored and looked up: its first 10 characters, trailing blanks cut.
std::string storedElementName(std::string_view element);

/// What the last design run made of one element, as kept in the store beside its items.
struct DesignState {
    enum class Status { Designed = 1, ChecksFailed = 2, NotDesigned = 3 };
    std::string kind; ///< "beam", later "column group", "footing group"
    std::int16_t floor = 0;
    std::int16_t number = 0;
    Status status = Status::NotDesigned;
    std::string when;     ///< local time of the run, "yyyy-mm-dd hh:mm"
    std::string failures; ///< the failed checks or the reason, one sentence a line
    bool operator==(const DesignState&) const = default;
};

/// The project's steel-quantity store, held open while the project is worked on. Every error
/// of the database (damaged file, file locked by another program, full disk) is thrown as a
/// FileError with one plain sentence; a failed write changes nothing.
class IronDatabase {
public:
    enum class SaveKind { Added, Edited };

    /// `OpenIronDatabase`: opens Iron.db of the project folder, creating it with the table and
    /// its eight indexes when it does not exist (or is an empty file). A file that is not a
    /// database, or holds a different table of that name, is refused and left untouched.
    /// Unless a design run holds the store now: a run that was cut off after its items were
    /// committed has its sheets put in place, and the staged sheets of runs cut off before
    /// their commit (core::kRunTemporaryTag) are removed.
    static IronDatabase open(const std::filesystem::path& projectFolder,
                             int busyTimeoutMs = kIronDatabaseBusyMs);
    /// The same for a store at an explicit file path (an import builds one under a
    /// temporary name).
    static IronDatabase openFile(const std::filesystem::path& file,
                                 int busyTimeoutMs = kIronDatabaseBusyMs);

    IronDatabase(IronDatabase&&) noexcept;
    IronDatabase& operator=(IronDatabase&&) noexcept;
    ~IronDatabase();

    const std::filesystem::path& path() const { return m_path; }

    /// Edit-or-add by key: a row with the item's MAINKEY is changed in place, else a row is
    /// added. The element name is cut to 10 characters, the description trimmed and cut to
    /// 25, the key cut to 19.
    SaveKind saveItem(const SteelItem& item);
    /// Saves many items in one transaction (all or none); returns how many were added.
    std::size_t saveItems(const std::vector<SteelItem>& items);
    /// Deletes the items of `removedKeys` and saves `items`, all in one transaction, so that a
    /// design replacing an element's bars never leaves old and new items mixed. A key in both
    /// lists ends up holding the new item. Returns how many items were added.
    /// `beforeCommit`, when given, runs inside the transaction once the rows are written and
    /// the store holds its write lock: a design writes its listings there, so that a store
    /// that cannot be written stops it before any listing, and a listing that cannot be
    /// written leaves the store as it was (the exception rolls the transaction back).
    std::size_t replaceItems(const std::vector<std::string>& removedKeys,
                             const std::vector<SteelItem>& items,
                             const std::function<void()>& beforeCommit = {});
    /// Deletes every item of one element (its kind, slab and number: the GENERAL, CIELINDEX
    /// and BEAMINDEX fields) and saves `items`, in one transaction through the element index;
    /// `beforeCommit` as in replaceItems. Returns how many items were added.
    std::size_t replaceElementItems(ElementKind kind, std::int16_t slab, std::int16_t element,
                                    const std::vector<SteelItem>& items,
                                    const std::function<void()>& beforeCommit = {});

    /// For a design run: the transactions that follow still commit one by one and a crash
    /// never damages the store, but they are flushed to disk together by flushDeferred()
    /// (a write-ahead log, synced at its checkpoint). A power cut before that may lose the
    /// run's items, never what was stored before the run.
    void deferDurability();
    /// Makes the deferred transactions durable and returns the store to its plain journal.
    void flushDeferred();
    /// Groups the element replacements that follow into one transaction (each element a
    /// savepoint of it, rolled back alone when it fails) until commitGroup(): a run writes
    /// the pages its elements share once per group rather than once per element. A group
    /// dropped without commitGroup() (the store closed, the program killed) leaves the store
    /// as it was before the group.
    void beginGroup();
    void commitGroup();
    /// Drops the open group (if any): the store is as it was before it.
    void rollbackGroup();
    /// True once a group was rolled back as a whole (a full disk, a failed commit): the items
    /// of every element of that group are gone, not only those of the element that failed.
    bool groupLost() const { return m_groupLost; }
    /// For a design run: records, inside the open group, the staged outputs (sheets) the run
    /// puts in place once the group is committed, so that the items and the sheets of a run
    /// land together. A run cut off between the commit and the last rename is completed by
    /// the next open of the store; clearPendingOutputs() forgets them once they are in place.
    /// A run stages its sheets only while its group is open (it holds the store's write lock),
    /// which is how an open tells a run under way from one that was cut off.
    void recordPendingOutputs(std::span<const core::PendingRename> renames);
    void clearPendingOutputs();
    /// Records what a design made of an element (replacing its earlier state), in the open
    /// group when there is one, so that the state lands with the element's items.
    void recordDesignState(const DesignState& state);
    /// Forgets the state of one element (it was deleted); nothing when there is none.
    void removeDesignState(std::string_view kind, std::int16_t floor, std::int16_t number);
    /// The recorded states, by kind, floor and number; none in a store no run has written.
    std::vector<DesignState> designStates() const;

    std::optional<SteelItem> findItem(std::string_view mainKey) const;
    /// `delqnt`: deletes the item of that key; false when there was none.
    bool deleteItem(std::string_view mainKey);
    /// `QntDelall`: deletes every item of the element kind and element; returns how many.
    std::size_t deleteElementItems(ElementKind kind, std::string_view element);
    /// Deletes every item of slab `slab`; slab 0 deletes nothing.
    std::size_t deleteSlabItems(std::int16_t slab);

    /// `ElementQuantities`: the items of an element in ascending diameter; items of equal
    /// diameter in the order they were first stored.
    std::vector<SteelItem> elementQuantities(std::string_view element) const;
    /// The items of an element by bar mark (ties in the order they were first stored).
    std::vector<SteelItem> elementItemsByMark(std::string_view element) const;
    /// The items of an element kind and element by bar mark (the list of the item form).
    std::vector<SteelItem> itemsByMark(ElementKind kind, std::string_view element) const;
    /// The distinct element names that hold items, in ascending order (case-blind).
    std::vector<std::string> elementNames() const;
    std::size_t itemCount() const;

private:
    IronDatabase(std::filesystem::path path, std::unique_ptr<SQLite::Database> db);

    std::filesystem::path m_path;
    std::unique_ptr<SQLite::Database> m_db;
    bool m_inGroup = false;
    bool m_groupLost = false;
};

/// `OpenIronDatabase` of the project folder.
IronDatabase OpenIronDatabase(const std::filesystem::path& projectFolder);

/// `DeleteSlabQuantities`: deletes every item of a slab from the project's store. Slab 0
/// deletes nothing and opens nothing; a project without Iron.db has nothing to delete (no
/// store is made). Returns the number of items deleted.
std::size_t DeleteSlabQuantities(const std::filesystem::path& projectFolder, std::int16_t slab);

/// `ElementQuantities` of an open store.
std::vector<SteelItem> ElementQuantities(const IronDatabase& db, std::string_view element);

/// Iron.db of the project folder, found without regard to case, or the path it will get.
std::filesystem::path ironDatabasePath(const std::filesystem::path& projectFolder);

/// True when the project holds a legacy Iron.MDB and no Iron.db: the forms then offer to
/// import the old items (importLegacyIronDatabase) before anything makes an empty store.
bool legacyImportOffered(const std::filesystem::path& projectFolder);

struct LegacyImportResult {
    bool available = false; ///< false: this build cannot read Access files (see message)
    std::size_t imported = 0;
    std::size_t skipped = 0; ///< rows without a key, or whose key came twice
    std::string message;     ///< one plain sentence about the outcome
    /// Where an Iron.MDB that cannot be read as an old store was put aside (empty when none).
    std::filesystem::path setAside;
};

/// The name an unreadable Iron.MDB is kept under, beside the project's files.
inline constexpr std::string_view kUnreadableLegacySuffix = ".unreadable";

/// Imports the rows of SteelQntTable of the project's Iron.MDB into a new Iron.db. The new
/// store is built beside the project under a temporary name and renamed into place only
/// when complete, so a failed import leaves no Iron.db behind. An Iron.MDB that cannot be
/// read as an old store (empty, damaged, not an Access file, or without the steel table)
/// would block steel entry for ever: it is renamed to Iron.MDB.unreadable (or
/// Iron.MDB.unreadable-2 and on, never over a file), nothing is imported, `setAside` names
/// the file and the message says so; the next store is a new, empty one. Throws InputError
/// when Iron.db exists already or there is no Iron.MDB; FileError when the new store cannot
/// be written or Iron.MDB cannot be put aside.
LegacyImportResult importLegacyIronDatabase(const std::filesystem::path& projectFolder);

} // namespace orvak::bars
