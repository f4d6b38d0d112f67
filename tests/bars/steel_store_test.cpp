// Tests of the project's steel-quantity store: item keys, the table and its indexes, edit-or-
// add, deletes, ordered walks, odd names, and damaged, locked or legacy database files.
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <latch>
#include <mutex>
#include <thread>

#include "bars/steel_store.h"
#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::bars {
namespace {

namespace fs = std::filesystem;

SteelItem item(std::string key, std::string element, float diameter, std::int16_t mark = 1,
               std::int16_t slab = 0) {
    SteelItem it;
    it.mainKey = std::move(key);
    it.element = std::move(element);
    it.diameterMm = diameter;
    it.mark = mark;
    it.slab = slab;
    it.quantity = 2.0f;
    it.lengthCm = 100.0f;
    return it;
}

std::vector<std::string> keys(const std::vector<SteelItem>& items) {
    std::vector<std::string> out;
    for (const auto& it : items) {
        out.push_back(it.mainKey);
    }
    return out;
}

class SteelStore : public ::testing::Test {
protected:
    test::TempDir m_dir;
    fs::path project() const { return m_dir.path(); }
    fs::path dbFile() const { return m_dir / "Iron.db"; }
};

TEST_F(SteelStore, FirstOpenCreatesTheTableWithItsFieldsAndIndexes) {
    { IronDatabase::open(project()); }
    ASSERT_TRUE(fs::exists(dbFile()));
    SQLite::Database db(dbFile().string());
    std::vector<std::string> columns;
    SQLite::Statement cols(db, "SELECT name FROM pragma_table_info('SteelQntTable') ORDER BY cid");
    while (cols.executeStep()) {
        columns.push_back(cols.getColumn(0).getString());
    }
    EXPECT_EQ(columns,
              (std::vector<std::string>{"MAINKEY", "BLDCLBEAM", "SUBBUILDNO", "CIELINDEX",
                                        "BEAMINDEX", "IRONINDEX", "GENERAL", "QUANTITY", "IRONTYPE",
                                        "DIAMETER", "LENGTH", "SHAPE", "SHTINDX", "DESCRIPTION"}));
    std::vector<std::string> indexes;
    SQLite::Statement idx(db, "SELECT name, \"unique\" FROM pragma_index_list('SteelQntTable') "
                              "WHERE origin = 'c' ORDER BY name");
    while (idx.executeStep()) {
        indexes.push_back(idx.getColumn(0).getString() + (idx.getColumn(1).getInt() ? "!" : ""));
    }
    // The eight named indexes, and the element index (kind, slab, element) through which a
    // design replaces one element's items.
    EXPECT_EQ(indexes,
              (std::vector<std::string>{"BEAMINDEX_INDEX", "BLDCLBEAM_INDEX", "CIELINDEX_INDEX",
                                        "ELEMENT_INDEX", "GENERAL_INDEX", "IRONINDEX_INDEX",
                                        "MAINKEY_INDEX!", "SHEET_INDEX", "SUBBUILDNO_INDEX"}));
    // Reopening an existing store keeps it.
    IronDatabase again = IronDatabase::open(project());
    EXPECT_EQ(again.itemCount(), 0u);
}

TEST_F(SteelStore, TwoProgramsOpeningANewStoreAtOnceBothGetIt) {
    // Two connections racing to make the table of a new store: the second must find the
    // table made by the first, not fail with "table SteelQntTable already exists". Many
    // rounds, each on a fresh folder, so that the race window is hit.
    int failures = 0;
    std::string first;
    for (int round = 0; round < 40; ++round) {
        const fs::path folder = m_dir / ("p" + std::to_string(round));
        fs::create_directories(folder);
        std::latch start(2);
        std::mutex m;
        auto open = [&] {
            start.arrive_and_wait();
            try {
                IronDatabase::open(folder).itemCount();
            } catch (const FileError& e) {
                const std::lock_guard lock(m);
                ++failures;
                first = first.empty() ? e.what() : first;
            }
        };
        std::thread a(open);
        std::thread b(open);
        a.join();
        b.join();
    }
    EXPECT_EQ(failures, 0) << first;
}

TEST_F(SteelStore, SavingByKeyEditsInPlaceOrAdds) {
    IronDatabase db = IronDatabase::open(project());
    EXPECT_EQ(db.saveItem(item("K1", "B1", 12.0f)), IronDatabase::SaveKind::Added);
    EXPECT_EQ(db.saveItem(item("K2", "B1", 12.0f)), IronDatabase::SaveKind::Added);
    SteelItem changed = item("K1", "B1", 12.0f);
    changed.quantity = 7.0f;
    changed.description = "   top bars   ";
    EXPECT_EQ(db.saveItem(changed), IronDatabase::SaveKind::Edited);
    EXPECT_EQ(db.itemCount(), 2u);
    // Edited in place: K1 still comes before K2 among equal diameters.
    EXPECT_EQ(keys(db.elementQuantities("B1")), (std::vector<std::string>{"K1", "K2"}));
    const auto stored = db.findItem("K1");
    ASSERT_TRUE(stored.has_value());
    EXPECT_EQ(stored->quantity, 7.0f);
    EXPECT_EQ(stored->description, "top bars");
}

TEST_F(SteelStore, ReplacingDeletesTheOldKeysAndSavesTheNewItemsTogether) {
    IronDatabase db = IronDatabase::open(project());
    db.saveItems({item("K1", "B1", 12.0f), item("K2", "B1", 12.0f), item("K9", "C1", 8.0f)});
    SteelItem renewed = item("K2", "B1", 16.0f);
    // K1 goes, K2 is both removed and saved (it holds the new item), K3 is new; C1 untouched.
    EXPECT_EQ(db.replaceItems({"K1", "K2"}, {renewed, item("K3", "B1", 10.0f)}), 2u);
    EXPECT_EQ(keys(db.elementQuantities("B1")), (std::vector<std::string>{"K3", "K2"}));
    EXPECT_EQ(db.findItem("K2")->diameterMm, 16.0f);
    EXPECT_TRUE(db.findItem("K9").has_value());
}

TEST_F(SteelStore, ManualItemsAreCutToTheirFieldsAndWideKeysCollide) {
    ManualItem m;
    m.kind = ElementKind::Slab;
    m.element = "GROUNDFLOOR-EAST";
    m.slab = 2;
    m.elementNumber = 15;
    m.mark = 7;
    m.quantity = 4.0f;
    m.diameterMm = 10.0f;
    m.lengthCm = 250.0f;
    m.description = "  a description longer than twenty-five  ";
    const SteelItem first = itemFromManual(m);
    EXPECT_EQ(first.mainKey, "01.002.015.0007.000");
    // Each number keeps its low digits in its place.
    EXPECT_EQ(makeMainKey(0, 1234, 0, 0, 0), "00.234.000.0000.000");
    EXPECT_EQ(makeMainKey(123, 0, 0, 123456, 1000), "23.000.000.3456.000");
    EXPECT_EQ(first.element, "GROUNDFLOO");
    EXPECT_EQ(first.description, "a description longer than");

    IronDatabase db = IronDatabase::open(project());
    EXPECT_EQ(db.saveItem(first), IronDatabase::SaveKind::Added);
    // Mark 10007 keeps "0007" in its 4-digit place: the same key, so the row is edited.
    m.mark = 10007;
    m.quantity = 9.0f;
    EXPECT_EQ(db.saveItem(itemFromManual(m)), IronDatabase::SaveKind::Edited);
    m.mark = 40000; // does not fit the 16-bit mark field
    EXPECT_THROW(itemFromManual(m), InputError);
    m.mark = 7;
    // 1e30 bars, or a negative count or diameter, would reach every total of the report.
    for (const auto& [quantity, diameter] :
         {std::pair{1e30f, 10.0f}, std::pair{-4.0f, 10.0f}, std::pair{4.0f, -10.0f}}) {
        m.quantity = quantity;
        m.diameterMm = diameter;
        EXPECT_THROW(itemFromManual(m), InputError) << quantity << " x " << diameter;
    }
    m.quantity = 9.0f;
    m.diameterMm = 10.0f;
    EXPECT_EQ(db.itemCount(), 1u);
    EXPECT_EQ(db.findItem("01.002.015.0007.000")->quantity, 9.0f);

    // Two names sharing their first 10 characters share their items.
    EXPECT_EQ(db.elementQuantities("GROUNDFLOOR-WEST").size(), 1u);
}

TEST_F(SteelStore, NamesWithQuotesAreStoredAndFoundAsTheyAre) {
    IronDatabase db = IronDatabase::open(project());
    const std::string tricky = "x'; DROP T"; // 10 characters, cut nowhere
    db.saveItem(item("K1", "O'Brien", 12.0f));
    db.saveItem(item("K2", tricky + "ABLE SteelQntTable; --", 12.0f));
    EXPECT_EQ(keys(db.elementQuantities("O'Brien")), (std::vector<std::string>{"K1"}));
    EXPECT_EQ(keys(db.elementQuantities(tricky)), (std::vector<std::string>{"K2"}));
    EXPECT_EQ(db.elementNames(), (std::vector<std::string>{"O'Brien", tricky}));
    EXPECT_EQ(db.deleteElementItems(ElementKind::None, "O'Brien"), 1u);
    EXPECT_EQ(db.itemCount(), 1u);
}

TEST_F(SteelStore, WalksOrderByDiameterOrByMarkKeepingStoredOrderForTies) {
    IronDatabase db = IronDatabase::open(project());
    db.saveItem(item("A", "B1", 16.0f, 3));
    db.saveItem(item("B", "B1", 12.0f, 1));
    db.saveItem(item("C", "B1", 16.0f, 2));
    db.saveItem(item("D", "B1", 12.0f, 4));
    db.saveItem(item("E", "B1", 8.0f, 2));
    db.saveItem(item("F", "B2", 6.0f, 1));
    EXPECT_EQ(keys(ElementQuantities(db, "B1")),
              (std::vector<std::string>{"E", "B", "D", "A", "C"}));
    EXPECT_EQ(keys(db.elementItemsByMark("b1")), // the element name compares case-blind
              (std::vector<std::string>{"B", "C", "E", "A", "D"}));
}

TEST_F(SteelStore, DeletesTakeTheItemTheSlabOrTheElementOfAKind) {
    {
        IronDatabase db = IronDatabase::open(project());
        db.saveItem(item("S1", "F1", 12.0f, 1, 1));
        db.saveItem(item("S2", "F1", 12.0f, 2, 2));
        db.saveItem(item("S3", "F2", 12.0f, 3, 2));
        SteelItem footing = item("S4", "F1", 12.0f, 4, 3);
        footing.general = static_cast<std::int16_t>(ElementKind::Footing);
        db.saveItem(footing);
        SteelItem extra = item("S5", "F1", 12.0f, 5, 3);
        extra.general = static_cast<std::int16_t>(ElementKind::Extra);
        db.saveItem(extra);
    }
    EXPECT_EQ(DeleteSlabQuantities(project(), 0), 0u);
    EXPECT_EQ(DeleteSlabQuantities(project(), 2), 2u);
    IronDatabase db = IronDatabase::open(project());
    EXPECT_EQ(keys(db.elementItemsByMark("F1")), (std::vector<std::string>{"S1", "S4", "S5"}));
    EXPECT_EQ(db.deleteElementItems(ElementKind::Footing, "F1"), 1u);
    EXPECT_TRUE(db.deleteItem("S1"));
    EXPECT_FALSE(db.deleteItem("S1"));
    EXPECT_EQ(keys(db.itemsByMark(ElementKind::Extra, "F1")), (std::vector<std::string>{"S5"}));

    test::TempDir empty;
    EXPECT_EQ(DeleteSlabQuantities(empty.path(), 4), 0u);
    EXPECT_FALSE(fs::exists(empty / "Iron.db")); // no store is made just to delete from it
}

TEST_F(SteelStore, AFileThatIsNotAStoreIsRefusedAndLeftUnchanged) {
    std::string garbage = "This is not a database at all.";
    for (int i = 0; i < 200; ++i) {
        garbage += static_cast<char>((i * 37) & 0xFF);
    }
    test::writeBytes(dbFile(), garbage);
    try {
        IronDatabase::open(project());
        FAIL() << "a garbage file was opened";
    } catch (const FileError& e) {
        EXPECT_NE(std::string(e.what()).find("damaged or is not a database"), std::string::npos)
            << e.what();
    }
    EXPECT_EQ(test::readBytes(dbFile()), garbage);

    fs::remove(dbFile());
    {
        SQLite::Database other(dbFile().string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        other.exec("CREATE TABLE SteelQntTable (something TEXT)");
    }
    EXPECT_THROW(IronDatabase::open(project()), FileError);
}

TEST_F(SteelStore, ALockHeldByAnotherProgramGivesAClearMessageAndChangesNothing) {
    {
        IronDatabase db = IronDatabase::open(project());
        db.saveItem(item("K1", "B1", 12.0f));
    }
    SQLite::Database other(dbFile().string(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN EXCLUSIVE");
    try {
        IronDatabase::open(project(), 50);
        FAIL() << "a locked store was opened";
    } catch (const FileError& e) {
        EXPECT_NE(std::string(e.what()).find("in use by another program"), std::string::npos)
            << e.what();
    }
    other.exec("ROLLBACK");

    IronDatabase db = IronDatabase::open(project(), 50);
    other.exec("BEGIN EXCLUSIVE");
    EXPECT_THROW(db.saveItem(item("K2", "B1", 12.0f)), FileError);
    other.exec("ROLLBACK");
    EXPECT_EQ(db.itemCount(), 1u);
}

// An old store that cannot be read would block steel entry for ever: it is kept under a name
// of its own, never overwritten, and the project goes on with a new store.
TEST_F(SteelStore, UnreadableLegacyStoreIsPutAsideAndNeverOverwritten) {
    EXPECT_FALSE(legacyImportOffered(project()));
    EXPECT_THROW(importLegacyIronDatabase(project()), InputError);

    const std::string garbage(4096, 'x');
    test::writeBytes(m_dir / "iron.mdb", garbage);
    EXPECT_TRUE(legacyImportOffered(project()));
    const LegacyImportResult first = importLegacyIronDatabase(project());
    EXPECT_EQ(first.imported, 0u);
    EXPECT_EQ(first.setAside, m_dir / "iron.mdb.unreadable");
    EXPECT_NE(first.message.find("kept as iron.mdb.unreadable"), std::string::npos)
        << first.message;
    EXPECT_TRUE(test::readBytes(m_dir / "iron.mdb.unreadable") == garbage);
    EXPECT_FALSE(fs::exists(dbFile()));
    EXPECT_FALSE(legacyImportOffered(project()));

    // A second one, an Access header over an empty body and an empty file: each kept apart.
    std::string header(4096, '\0');
    header.replace(4, 15, "Standard Jet DB");
    test::writeBytes(m_dir / "Iron.MDB", header);
    EXPECT_EQ(importLegacyIronDatabase(project()).setAside, m_dir / "Iron.MDB.unreadable-2");
    EXPECT_TRUE(test::readBytes(m_dir / "Iron.MDB.unreadable-2") == header);
    test::writeBytes(m_dir / "Iron.MDB", "");
    EXPECT_EQ(importLegacyIronDatabase(project()).setAside, m_dir / "Iron.MDB.unreadable-3");
    EXPECT_TRUE(test::readBytes(m_dir / "iron.mdb.unreadable") == garbage);

    { IronDatabase::open(project()); }
    test::writeBytes(m_dir / "Iron.MDB", garbage);
    EXPECT_FALSE(legacyImportOffered(project()));
    EXPECT_THROW(importLegacyIronDatabase(project()), InputError);
}

} // namespace
} // namespace orvak::bars
