// The footing groups form as an engineer uses it: groups over the footing level's column
// groups are saved at their record numbers, the system's refusals come word for word with
// nothing written, a run designs them and the form shows the plan, and a deleted group keeps
// its record (use mark "0") so no other group changes number.
#include "footings/forms/ftgroups_form.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>

#include "footings/forms/ftrpt_form.h"
#include "support/temp_dir.h"
#include "ui/design_run.h"
#include "ui/shell_fixture.h"
#include "ui/text_viewer.h"

namespace orvak::footings::forms {
namespace {

namespace fs = std::filesystem;

columns::ColumnGroup columnGroup(const char* name, float puT) {
    columns::ColumnGroup g;
    g.name = name;
    g.type = 1;
    g.dims = {40, 40, 0, 0, 0};
    g.colLenCm = 300;
    g.puT = puT;
    return g;
}

class FtGroupsTest : public test::FormFixture {
protected:
    FtGroupsTest() {
        // Two column groups of the footing level without members: their own loads stand.
        columns::writeColumns(project(), columns::ColumnLevel{0}, {});
        columns::writeGroups(project(), columns::ColumnLevel{0},
                             {columnGroup("Gr-C1", 140), columnGroup("Gr-C2", 70)});
        // Whatever footing groups the demo holds go: the form starts from none.
        fs::remove(project() / "FootsGRP.DAT");
    }
    fs::path project() const { return m_shell.projectPath(); }
};

TEST_F(FtGroupsTest, GroupsAreSavedRefusedDesignedAndRemovedInPlace) {
    auto form = open<FtGroups>();
    ASSERT_EQ(form->groupList()->count(), 0);

    // An isolated footing under Gr-C1, centred.
    form->newGroup();
    EXPECT_EQ(form->field("GrpNameTxt")->text(), "Gr-Ft1");
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();
    EXPECT_EQ(form->currentGroup(), 1);

    // A combined footing whose columns stand at the same x is refused with the system's
    // message as it stands, and nothing is written.
    form->newGroup();
    form->kindCombo()->setCurrentIndex(1);
    // The lighter column on the left, so that the resultant lies between the two.
    form->columnGroupCombo(0)->setCurrentIndex(1);
    form->columnGroupCombo(1)->setCurrentIndex(0);
    form->field("Cx1Txt")->setText("300");
    form->field("Cx2Txt")->setText("300");
    const std::string before = test::readBytes(project() / "FootsGRP.DAT");
    m_messages.clear();
    EXPECT_FALSE(form->save());
    EXPECT_EQ(m_messages, QStringList{"CX1 IS GREATER OR EQUAL CX2"});
    EXPECT_EQ(test::readBytes(project() / "FootsGRP.DAT"), before);
    form->field("Cx1Txt")->setText("25");
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();
    EXPECT_EQ(form->currentGroup(), 2);

    // Both designed; the isolated footing's plan as a hand calculation gives it: service load
    // 140 / 1.4 = 100 t over 2 kg/cm² is 50 000 cm², (40 + 2x)² = 50 000 → 223.6, rounded up
    // to 225 cm a side.
    QSignalSpy ended(form->designRun(), &ui::DesignRun::finished);
    m_messages.clear();
    ASSERT_TRUE(form->designAll()) << m_messages.join('\n').toStdString();
    ASSERT_TRUE(ended.wait(60000));
    EXPECT_TRUE(m_messages.back().startsWith("All 2 footing groups were designed."))
        << m_messages.back().toStdString();
    ASSERT_TRUE(form->chooseGroup(1));
    EXPECT_TRUE(form->resultText()->text().contains("A=225 cm, B=225 cm"))
        << form->resultText()->text().toStdString();
    ui::EditAsc* sheet = form->showSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->text().contains("ISOLATED FOOTING"));
    sheet->close();

    // The report form finds the combined footing's sheet.
    FtRpt report(m_shell);
    ASSERT_TRUE(report.chooseGroup(2));
    EXPECT_EQ(report.sheetPath(), project() / "FtGrp_Gr-Ft2.Analy");

    // Group 1 goes after the question; its record stays with the use mark "0", and group 2
    // keeps its number.
    ASSERT_TRUE(form->chooseGroup(1));
    m_answer = QMessageBox::Yes;
    const auto size = fs::file_size(project() / "FootsGRP.DAT");
    ASSERT_TRUE(form->deleteGroup());
    EXPECT_EQ(fs::file_size(project() / "FootsGRP.DAT"), size);
    EXPECT_EQ(test::readBytes(project() / "FootsGRP.DAT")[0], '0');
    ASSERT_EQ(form->groupList()->count(), 1);
    EXPECT_TRUE(form->chooseGroup(2));
    EXPECT_FALSE(form->chooseGroup(1));
}

} // namespace
} // namespace orvak::footings::forms
