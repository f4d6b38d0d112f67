// The record grid over a made-up record of a number, a name and a length (and a weight the grid
// does not show): records in and out of the grid, rows without a first value squeezed out,
// and the fields a row does not show kept through its saves.
#include "ui/record_grid.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "support/temp_dir.h"
#include "ui/input_grid.h"

namespace orvak::ui {
namespace {

namespace fs = std::filesystem;

constexpr auto kPartLayout = core::packFields(std::array<core::FieldSpec, 5>{{
    {"mark", core::FieldType::Text, 1},
    {"number", core::FieldType::Int16},
    {"name", core::FieldType::Text, 6},
    {"lengthM", core::FieldType::Single},
    {"weightKg", core::FieldType::Single},
}});
static_assert(kPartLayout.size == 17);

struct Part {
    std::int16_t number;
    std::string name;
    float lengthM;
    float weightKg;
};

core::RecordBuffer partRecord(char mark, const Part& part) {
    core::RecordBuffer record = core::blankRecord(kPartLayout);
    record.setText(kPartLayout["mark"], std::string(1, mark));
    record.setInt16(kPartLayout["number"], part.number);
    record.setText(kPartLayout["name"], part.name);
    record.setSingle(kPartLayout["lengthM"], part.lengthM);
    record.setSingle(kPartLayout["weightKg"], part.weightKg);
    return record;
}

/// The parts of a file as stored, every record in use.
std::vector<Part> storedParts(const fs::path& path) {
    const core::RecordFile file = core::RecordFile::load(path, kPartLayout.size);
    std::vector<Part> parts;
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer record = file.read(n);
        EXPECT_TRUE(record.inUse()) << n;
        parts.push_back(
            {record.getInt16(kPartLayout["number"]), record.getTrimmedText(kPartLayout["name"]),
             record.getSingle(kPartLayout["lengthM"]), record.getSingle(kPartLayout["weightKg"])});
    }
    return parts;
}

class RecordGridTest : public ::testing::Test {
protected:
    RecordGridTest()
        : m_path(m_dir / "PARTS.DAT"),
          m_records({{kPartLayout["number"]}, {kPartLayout["name"]}, {kPartLayout["lengthM"]}},
                    core::blankRecord(kPartLayout), "parts table") {
        InputGridSetup setup;
        setup.rows = 4;
        setup.columns = 3;
        // A number 0..999, a name of 6 characters, a length 0..999.99.
        setup.descriptors = {"11110103.0,06.0,03.2,"};
        setup.limitStrings = {"@1:0@2:999@3:0@4:0@5:0@6:999.99"};
        m_grid.setup(setup);
    }

    void load() {
        m_records.load(core::RecordFile::load(m_path, kPartLayout.size), m_grid, "English");
    }
    QStringList row(int r) const {
        return {m_grid.cellText(r, 0), m_grid.cellText(r, 1), m_grid.cellText(r, 2)};
    }

    test::TempDir m_dir;
    fs::path m_path;
    InputGridModel m_grid;
    RecordGrid m_records;
};

TEST_F(RecordGridTest, RoundTripSqueezesRowsWithoutAFirstValue) {
    // Record 2 is not in use; record 5 lies beyond the grid's four rows.
    test::writeBytes(m_path, [] {
        std::string bytes;
        for (const auto& record :
             {partRecord('1', {1, "B1", 3.5f, 7.25f}), partRecord(' ', {2, "OLD", 1.0f, 1.0f}),
              partRecord('1', {3, "B3", 2.75f, 9.5f}), partRecord('1', {4, "B4", 4.0f, 2.0f}),
              partRecord('1', {5, "B5", 5.0f, 3.0f})}) {
            bytes.append(record.bytes().begin(), record.bytes().end());
        }
        return bytes;
    }());
    load();
    EXPECT_EQ(row(0), (QStringList{"1", "B1", "3.5"}));
    EXPECT_EQ(row(1), (QStringList{"", "", ""}));
    EXPECT_EQ(row(2), (QStringList{"3", "B3", "2.75"}));

    // Row 1 loses its number and leaves the table; row 2 gets a name too long for its field.
    m_grid.setCellText(0, 0, "0");
    m_grid.setCellText(1, 0, "12");
    m_grid.setCellText(1, 1, "LONGNAME");
    m_grid.setCellText(1, 2, "1.25");
    QList<int> progress;
    EXPECT_EQ(m_records.save(m_grid, "English", [&](int value, int) { progress << value; }), 4u);
    EXPECT_EQ(progress, (QList<int>{1, 2, 3, 4, 0}));

    // The rows in use without gaps, each on its own record (the weight the grid does not show
    // stays with its row), then the record beyond the grid.
    std::vector<Part> parts = storedParts(m_path);
    ASSERT_EQ(parts.size(), 4u);
    EXPECT_EQ(parts[0].number, 12);
    EXPECT_EQ(parts[0].name, "LONGNA");
    EXPECT_FLOAT_EQ(parts[0].lengthM, 1.25f);
    EXPECT_FLOAT_EQ(parts[0].weightKg, 0.0f);
    EXPECT_EQ(parts[1].number, 3);
    EXPECT_FLOAT_EQ(parts[1].weightKg, 9.5f);
    EXPECT_EQ(parts[2].name, "B4");
    EXPECT_EQ(parts[3].name, "B5");
    EXPECT_FALSE(fs::exists(m_dir / "TMPFIL"));

    // A second save with the grid as it stands: row 3 still carries its own weight, though
    // its record moved up to number 2.
    m_grid.setCellText(2, 2, "2.5");
    ASSERT_EQ(m_records.save(m_grid, "English"), 4u);
    parts = storedParts(m_path);
    EXPECT_FLOAT_EQ(parts[1].lengthM, 2.5f);
    EXPECT_FLOAT_EQ(parts[1].weightKg, 9.5f);

    // Read back, the grid shows the table as saved.
    load();
    EXPECT_EQ(row(0), (QStringList{"12", "LONGNA", "1.25"}));
    EXPECT_EQ(row(1), (QStringList{"3", "B3", "2.5"}));
    EXPECT_EQ(row(3), (QStringList{"5", "B5", "5"}));
}

TEST_F(RecordGridTest, NoRowInUseRemovesTheFileAndAFailedSaveKeepsIt) {
    test::writeBytes(m_path, [] {
        const auto record = partRecord('1', {1, "B1", 3.5f, 7.25f});
        return std::string(record.bytes().begin(), record.bytes().end());
    }());
    const std::string before = test::readBytes(m_path);
    load();

    // A count beyond the 16-bit field is refused, and the file stays as it was.
    m_grid.setCellText(0, 0, "40000");
    EXPECT_THROW(m_records.save(m_grid, "English"), InputError);
    EXPECT_EQ(test::readBytes(m_path), before);

    // A blank first value counts as 0: the table is empty and its file goes; the empty TMPFIL
    // stays behind.
    m_grid.setCellText(0, 0, " ");
    EXPECT_EQ(m_records.save(m_grid, "English"), 0u);
    EXPECT_FALSE(fs::exists(m_path));
    ASSERT_TRUE(fs::exists(m_dir / "TMPFIL"));
    EXPECT_EQ(fs::file_size(m_dir / "TMPFIL"), 0u);
}

} // namespace
} // namespace orvak::ui
