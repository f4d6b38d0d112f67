// The column list of a floor: an edit in the grid reaches the floor's file with the values the
// grid does not show kept, a copy from the same floor is refused, a refused value writes
// nothing, and the floor's files go down to the footing level.
#include "columns/forms/columns_form.h"

#include <QItemSelectionModel>
#include <QTableView>

#include "ui/input_grid.h"
#include "ui/shell_fixture.h"

namespace orvak::columns::forms {
namespace {

namespace fs = std::filesystem;

enum { Name, Type, Height, Load, Moment, DimA };

Column column(const char* name, float puT) {
    Column c;
    c.name = name;
    c.type = 1;
    c.heightCm = 300.0f;
    c.puT = puT;
    c.dims = {40.0f, 50.0f, 0.0f, 0.0f, 0.0f};
    return c;
}

class ColumnsTest : public test::FormFixture {
protected:
    ColumnsTest() {
        m_shell.currentFloor = 1;
        Column held = column("C1", 120.0f);
        // Values without a grid column, which a save must keep.
        held.group = 2;
        held.x = {3.5f, -1.25f};
        held.y = {2.0f, 0.5f};
        writeColumns(project(), ColumnLevel{1}, {held, column("C2", 80.0f)});
        writeColumns(project(), ColumnLevel{2}, {column("U1", 60.0f), column("U2", 70.0f)});
    }
    fs::path project() const { return m_shell.projectPath(); }
    std::vector<Column> floorOne() const { return readColumns(project(), ColumnLevel{1}); }
};

TEST_F(ColumnsTest, AnEditReachesTheFileAndKeepsWhatTheGridDoesNotShow) {
    EXPECT_EQ(columnsFileName(ColumnLevel{1}), "COLUMNS.101");
    const std::vector<Column> before = floorOne();
    auto form = open<Columns>();
    ui::InputGrid& grid = *form->grid();
    EXPECT_EQ(grid.cellText(1, Name), "C2");

    ASSERT_TRUE(test::typeInto(grid, 0, Load, "125.5"));
    ASSERT_TRUE(test::typeInto(grid, 0, Moment, "4.25"));
    // A name longer than the record's ten characters (read from elsewhere) is cut on saving.
    grid.setCellText(2, Name, "ABCDEFGHIJKL");
    grid.setCellText(2, Type, "2");
    grid.setCellText(2, Height, "280");
    grid.setCellText(2, DimA, "30");
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();

    const std::vector<Column> after = floorOne();
    ASSERT_EQ(after.size(), 3u);
    Column expected = before[0];
    expected.puT = 125.5f;
    expected.x.m2 = 4.25f;
    EXPECT_EQ(after[0], expected);
    EXPECT_EQ(after[1], before[1]);
    EXPECT_EQ(after[2].name, "ABCDEFGHIJ");
    EXPECT_EQ(after[2].type, 2);
    EXPECT_EQ(after[2].heightCm, 280.0f);
    EXPECT_EQ(after[2].dims[0], 30.0f);
    EXPECT_EQ(grid.cellText(2, Name), "ABCDEFGHIJ");
}

TEST_F(ColumnsTest, CopyingFromTheSameFloorIsRefusedAndFromAnotherTakesNoGroup) {
    auto form = open<Columns>();
    const std::string file = test::readBytes(project() / "COLUMNS.101");
    EXPECT_FALSE(form->copyColumns(1, {0}));
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_EQ(m_messages[0].toStdString(), "Copying from same slab not allowed");
    EXPECT_TRUE(form->grid()->cellText(2, Name).isEmpty());
    EXPECT_FALSE(form->isChanged());
    EXPECT_FALSE(form->copyColumns(2, {})); // nothing chosen: nothing happens

    std::vector<Column> upper = readColumns(project(), ColumnLevel{2});
    upper[1].group = 1;
    writeColumns(project(), ColumnLevel{2}, upper);
    ASSERT_TRUE(form->copyColumns(2, {1}));
    EXPECT_EQ(test::readBytes(project() / "COLUMNS.101"), file); // only "save" writes
    ASSERT_TRUE(form->save());
    const std::vector<Column> after = floorOne();
    ASSERT_EQ(after.size(), 3u);
    Column copied = upper[1];
    copied.group = 0;
    EXPECT_EQ(after[2], copied);
}

TEST_F(ColumnsTest, ARefusedValueWritesNothing) {
    auto form = open<Columns>();
    const std::string file = test::readBytes(project() / "COLUMNS.101");
    ui::InputGrid& grid = *form->grid();

    struct Case {
        int row, cell;
        const char* text;
        const char* told;
    };
    // A named row without its type says which cell is empty and what it may hold.
    for (const Case& c : {Case{0, Type, "6", "1 to 5"}, Case{1, DimA, "1000", "0 to 999.9"},
                          Case{3, Type, "1", "Row 4 has no name."},
                          Case{0, Type, "",
                               "Row 1, Type (1-5): the cell is empty; give a value "
                               "from 1 to 5."}}) {
        SCOPED_TRACE(c.text);
        const QString was = grid.cellText(c.row, c.cell);
        ASSERT_TRUE(test::typeInto(grid, 1, Height, "310")); // an edit to save
        grid.setCellText(c.row, c.cell, c.text); // past the editor, as a value read from elsewhere
        m_messages.clear();
        EXPECT_FALSE(form->save());
        ASSERT_FALSE(m_messages.isEmpty());
        EXPECT_TRUE(m_messages.back().contains(c.told)) << m_messages.back().toStdString();
        EXPECT_EQ(test::readBytes(project() / "COLUMNS.101"), file);
        grid.setCellText(c.row, c.cell, was);
    }
}

// A pair of end moments stored with a negative M2 (an import) is shown as its size, and saved
// seen from the other side: M1/M2 and the size of M2 are what the design reads, and they stay.
TEST_F(ColumnsTest, ANegativeM2IsShownAsItsSizeAndSavedWithItsCurvature) {
    Column c = column("N1", 50.0f);
    c.x = {-4.0f, 2.0f}; // M1/M2 = -0.5: reverse curvature
    writeColumns(project(), ColumnLevel{1}, {c});
    auto form = open<Columns>();
    EXPECT_EQ(form->grid()->cellText(0, Moment), "4");
    ASSERT_TRUE(test::typeInto(*form->grid(), 0, Height, "320"));
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();
    const Column saved = floorOne()[0];
    EXPECT_FLOAT_EQ(saved.x.m2, 4.0f);
    EXPECT_FLOAT_EQ(saved.x.m1 / saved.x.m2, -0.5f);
}

TEST_F(ColumnsTest, DeletedRowsCloseUpAndTheFloorGoesDownToTheFootingLevel) {
    auto form = open<Columns>();
    form->grid()->view()->selectionModel()->select(form->grid()->model()->index(0, Name),
                                                   QItemSelectionModel::Select |
                                                       QItemSelectionModel::Rows);
    m_answer = QMessageBox::Yes;
    ASSERT_TRUE(form->deleteSelectedRows());
    EXPECT_EQ(form->grid()->cellText(0, Name), "C2");
    EXPECT_TRUE(form->grid()->cellText(1, Name).isEmpty());

    // Taking the floor down saves the list first.
    ASSERT_TRUE(form->takeToFootingLevel()) << m_messages.join('\n').toStdString();
    ASSERT_EQ(floorOne().size(), 1u);
    EXPECT_EQ(readColumns(project(), ColumnLevel{0}), floorOne());
}

} // namespace
} // namespace orvak::columns::forms
