// The grid form base, through a small form over a record grid: every number cell is checked
// before anything is written, and relabelling in another language keeps unsaved edits.
#include "ui/grid_form.h"

#include <QAction>
#include <QSignalSpy>

#include "ui/input_grid.h"
#include "ui/record_grid.h"
#include "ui/shell_fixture.h"

namespace orvak::ui {
namespace {

namespace fs = std::filesystem;

constexpr auto kPartLayout = core::packFields(std::array<core::FieldSpec, 4>{{
    {"mark", core::FieldType::Text, 1},
    {"name", core::FieldType::Text, 6},
    {"count", core::FieldType::Int16},
    {"lengthM", core::FieldType::Single},
}});

constexpr std::string_view kHeadings[] = {"Name", "Count", "Length m"};

/// A form of parts in the GENERAL folder; it has no prompt file, so it shows its English texts.
class PartsForm : public RecordGridForm {
public:
    explicit PartsForm(shell::ShellState& shell)
        : RecordGridForm(
              shell, setup(),
              RecordGrid({{kPartLayout["name"]}, {kPartLayout["count"]}, {kPartLayout["lengthM"]}},
                         core::blankRecord(kPartLayout), "parts table"),
              nullptr) {
        loadRecords(shell.generalFolder() / "PARTS.DAT", core::RecordFile::Count::WholeOnly);
    }

private:
    static GridFormSetup setup() {
        GridFormSetup setup;
        setup.objectName = "Parts";
        setup.promptKey = "Parts";
        setup.caption = {1, "Parts"};
        setup.firstToolPrompt = 2;
        setup.headings = kHeadings;
        setup.firstHeadingPrompt = 7;
        setup.saving = {10, "Saving..."};
        setup.saved = {11, "Saved: %1 parts."};
        setup.emptySaved = {12, "No parts."};
        setup.rows = 3;
        setup.columns = 3;
        // A name of 6 characters, a count 1..50, a length 0..99.9.
        setup.descriptor = "11101106.0,02.0,02.1,";
        setup.limits = "@1:0@2:0@3:1@4:50@5:0@6:99.9";
        return setup;
    }
};

class GridFormTest : public test::ShellFixture {
protected:
    GridFormTest() : m_shell(startShell()), m_form(m_shell) {
        m_form.setMessageHook([this](const QString& m) { m_messages << m; });
    }

    bool type(int row, int column, const QString& text) {
        return test::typeInto(*m_form.grid(), row, column, text);
    }

    fs::path file() const { return m_shell.generalFolder() / "PARTS.DAT"; }

    shell::ShellState m_shell;
    PartsForm m_form;
    QStringList m_messages;
};

TEST_F(GridFormTest, EveryNumberCellIsCheckedBeforeAnythingIsWritten) {
    EXPECT_EQ(m_form.windowTitle(), "Parts");
    EXPECT_EQ(m_form.action("cprint")->text(), "Print");
    ASSERT_TRUE(type(0, 0, "COL-A"));
    ASSERT_TRUE(type(0, 1, "2"));
    // A value that came in without the cell's editor, as from a file another program wrote.
    m_form.grid()->setCellText(1, 0, "COL-B");
    m_form.grid()->setCellText(1, 1, "60");
    QSignalSpy saved(&m_form, &GridForm::saved);

    EXPECT_FALSE(m_form.save());
    // The names are text and pass, and so does the count 0 of the empty row 3, which is not
    // part of the table; the count of row 2 is refused.
    EXPECT_EQ(m_messages, QStringList{"The value 60 is outside the range 1 to 50."});
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_TRUE(m_form.isChanged());
    EXPECT_EQ(saved.count(), 0);

    ASSERT_TRUE(type(1, 1, "5"));
    ASSERT_TRUE(m_form.save());
    EXPECT_EQ(fs::file_size(file()), 2u * kPartLayout.size);
    EXPECT_EQ(m_form.statusText(), "Saved: 2 parts.");
    ASSERT_EQ(saved.count(), 1);
    EXPECT_EQ(saved.at(0).at(0).toString(), "Saved: 2 parts.");
    EXPECT_FALSE(m_form.isChanged());
}

TEST_F(GridFormTest, RelabellingKeepsWhatWasTypedUnsaved) {
    ASSERT_TRUE(type(2, 0, "COL-C"));
    ASSERT_TRUE(type(2, 1, "4"));
    ASSERT_TRUE(type(2, 2, "3.5"));
    m_shell.software.language = "Hebrew";
    m_form.readPrompts();
    EXPECT_EQ(m_form.grid()->cellText(2, 0), "COL-C");
    EXPECT_FALSE(m_form.grid()->isChanged()) << "the grid was set up anew";
    EXPECT_TRUE(m_form.isChanged());

    ASSERT_TRUE(m_form.save());
    const core::RecordFile saved = core::RecordFile::load(file(), kPartLayout.size);
    ASSERT_EQ(saved.count(), 1u);
    EXPECT_EQ(saved.read(1).getTrimmedText(kPartLayout["name"]), "COL-C");
    EXPECT_EQ(saved.read(1).getInt16(kPartLayout["count"]), 4);
    EXPECT_FLOAT_EQ(saved.read(1).getSingle(kPartLayout["lengthM"]), 3.5f);
}

} // namespace
} // namespace orvak::ui
