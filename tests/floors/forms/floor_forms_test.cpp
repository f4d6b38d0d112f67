// The floor forms on the demo project (floors 1 and 2): what each writes to CIELS.DAT, what it
// refuses, the current floor, and the deletion of a floor with its beams and steel items.
#include "floors/forms/floor_forms.h"

#include <QTableWidget>

#include "bars/steel_store.h"
#include "floors/floors.h"
#include "ui/input_grid.h"
#include "ui/shell_fixture.h"

namespace orvak::floors::forms {
namespace {

namespace fs = std::filesystem;

class FloorFormsTest : public test::FormFixture {
protected:
    fs::path project() const { return m_shell.projectPath(); }
    bool type(ui::InputGrid& grid, int row, int column, const QString& text) {
        return test::typeInto(grid, row, column, text);
    }
};

TEST_F(FloorFormsTest, ANewFloorIsWrittenAtOnceAndBecomesCurrent) {
    ASSERT_EQ(readFloors(project()).size(), 2u);
    auto form = open<NewCiel>();
    ui::InputGrid& grid = *form->grid();
    // The next number, one storey above the last floor, with its slab.
    EXPECT_EQ(grid.cellText(0, 0).trimmed(), "3");

    // A level of 5 km is refused in the cell, and nothing reaches the disk.
    const std::string before = test::readBytes(project() / "CIELS.DAT");
    EXPECT_FALSE(type(grid, 0, 2, "5000"));
    EXPECT_EQ(m_messages.size(), 1);
    EXPECT_EQ(test::readBytes(project() / "CIELS.DAT"), before);

    ASSERT_TRUE(type(grid, 0, 1, "Roof"));
    ASSERT_TRUE(type(grid, 0, 2, "9.6"));
    ASSERT_TRUE(type(grid, 0, 3, "12"));
    ASSERT_TRUE(form->save());
    const std::vector<Floor> floors = readFloors(project());
    ASSERT_EQ(floors.size(), 3u);
    EXPECT_EQ(floors.back(), (Floor{3, "Roof", 9.6f, 12.0f}));
    EXPECT_EQ(m_shell.currentFloor, 3);
    EXPECT_EQ(currentFloorText(m_shell), "Floor: 3 - Roof");
    // The form is ready for the next one.
    EXPECT_EQ(grid.cellText(0, 0).trimmed(), "4");

    // A number taken already is refused with a sentence, and nothing is written.
    ASSERT_TRUE(type(grid, 0, 0, "2"));
    m_messages.clear();
    EXPECT_FALSE(form->save());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("Floor 2 exists already")) << m_messages[0].toStdString();
    EXPECT_EQ(readFloors(project()).size(), 3u);
}

TEST_F(FloorFormsTest, DataAndThicknessChangeOnlyWhatWasTyped) {
    // A level finer than the grid shows (3.125 m appears as 3.12) must survive a save that
    // only renames the floor.
    std::vector<Floor> floors = readFloors(project());
    floors[1].levelM = 3.125f;
    writeFloors(project(), floors);

    auto data = open<CielData>();
    ASSERT_TRUE(type(*data->grid(), 1, 1, "Second floor"));
    ASSERT_TRUE(data->save());
    floors[1].name = "Second floor";
    EXPECT_EQ(readFloors(project()), floors);

    auto thickness = open<CielThick>();
    EXPECT_FALSE(thickness->grid()->model()->flags(thickness->grid()->model()->index(0, 1)) &
                 Qt::ItemIsEditable);
    ASSERT_TRUE(type(*thickness->grid(), 0, 3, "22.5"));
    ASSERT_TRUE(thickness->save());
    floors[0].thicknessCm = 22.5f;
    EXPECT_EQ(readFloors(project()), floors);
}

TEST_F(FloorFormsTest, ChoosingAndDeletingAFloor) {
    // Floor 2's beams have steel items, and so has floor 1.
    {
        bars::IronDatabase db = bars::OpenIronDatabase(project());
        for (const std::int16_t floor : {std::int16_t{1}, std::int16_t{2}}) {
            bars::SteelItem item;
            item.mainKey = bars::makeMainKey(1, floor, 1, 1, 0);
            item.element = "B";
            item.slab = floor;
            item.beam = 1;
            item.mark = 1;
            item.general = 1;
            item.quantity = 4;
            db.saveItem(item);
        }
    }
    ASSERT_TRUE(fs::exists(project() / "BEAMS.2"));
    auto form = open<SlcCiel>();
    QTableWidget* list = form->list();
    ASSERT_EQ(list->rowCount(), 2);
    EXPECT_EQ(list->item(1, 4)->text(), "2"); // the demo's roof holds two beams

    list->selectRow(1);
    ASSERT_TRUE(form->chooseSelected());
    EXPECT_EQ(m_shell.currentFloor, 2);

    // No keeps everything; Yes deletes the floor, its beam file and its steel items only.
    m_answer = QMessageBox::No;
    EXPECT_FALSE(form->deleteSelected());
    ASSERT_EQ(m_questions.size(), 1);
    EXPECT_TRUE(m_questions[0].contains("Delete floor 2")) << m_questions[0].toStdString();
    EXPECT_TRUE(fs::exists(project() / "BEAMS.2"));
    m_answer = QMessageBox::Yes;
    list->selectRow(1);
    ASSERT_TRUE(form->deleteSelected());
    EXPECT_EQ(readFloors(project()).size(), 1u);
    EXPECT_FALSE(fs::exists(project() / "BEAMS.2"));
    EXPECT_TRUE(fs::exists(project() / "BEAMS.1"));
    bars::IronDatabase db = bars::OpenIronDatabase(project());
    EXPECT_EQ(db.itemCount(), 1u);
    EXPECT_EQ(db.findItem(bars::makeMainKey(1, 1, 1, 1, 0))->slab, 1);
    // The deleted floor was current: the first floor left takes its place.
    EXPECT_EQ(m_shell.currentFloor, 1);
    EXPECT_EQ(list->rowCount(), 1);
}

} // namespace
} // namespace orvak::floors::forms
