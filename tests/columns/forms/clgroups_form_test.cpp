// The column groups form as an engineer uses it: groups made and filled by ticking columns reach
// the files together, a design run writes the sheets and lists the problems at its end, a
// deleted group takes its members with it, and the report form finds the sheets.
#include "columns/forms/clgroups_form.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>

#include "columns/forms/clgrprpt_form.h"
#include "columns/forms/slcclgrp_form.h"
#include "floors/floors.h"
#include "ui/design_run.h"
#include "ui/shell_fixture.h"
#include "ui/text_viewer.h"

namespace orvak::columns::forms {
namespace {

namespace fs = std::filesystem;

Column column(const char* name, float heightCm, float side, float puT) {
    Column c;
    c.name = name;
    c.type = 1;
    c.heightCm = heightCm;
    c.puT = puT;
    c.dims = {side, side, 0.0f, 0.0f, 0.0f};
    return c;
}

class ClGroupsTest : public test::FormFixture {
protected:
    ClGroupsTest() {
        m_shell.currentFloor = 1;
        floors::writeFloors(project(), {{1, "Ground", 3.0f, 20.0f}});
        // Two ordinary columns, and a 30 x 30 one 10 m high: kl/r = 1000 / (0.3 · 30) = 111.
        writeColumns(
            project(), ColumnLevel{1},
            {column("C1", 300, 40, 150), column("C2", 300, 40, 140), column("C3", 1000, 30, 20)});
        writeGroups(project(), ColumnLevel{1}, {});
    }
    fs::path project() const { return m_shell.projectPath(); }
    void tick(ClGroups& form, int row) { form.columnList()->item(row)->setCheckState(Qt::Checked); }
    QString run(ClGroups& form, bool all) {
        QSignalSpy ended(form.designRun(), &ui::DesignRun::finished);
        m_messages.clear();
        EXPECT_TRUE(all ? form.designAll() : form.designGroup())
            << m_messages.join('\n').toStdString();
        EXPECT_TRUE(ended.wait(60000));
        return m_messages.join('\n');
    }
};

TEST_F(ClGroupsTest, GroupsMadeByTickingColumnsAreStoredDesignedAndReported) {
    auto form = open<ClGroups>();
    ASSERT_EQ(form->level().floor, 1);
    ASSERT_EQ(form->columnList()->count(), 3);

    form->newGroup();
    tick(*form, 0);
    tick(*form, 1);
    form->newGroup();
    // An empty group takes the section of its first member: the slender column's.
    tick(*form, 2);
    EXPECT_EQ(form->field("DimATxt")->text(), "30");
    // The members' governing values are shown, not edited: the largest load of C3 alone.
    EXPECT_FALSE(form->field("PuTxt")->isEnabled());
    EXPECT_EQ(form->field("PuTxt")->text(), "20.00");
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();

    const std::vector<ColumnGroup> groups = readGroups(project(), ColumnLevel{1});
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups[0].name, "Gr-C1");
    EXPECT_EQ(groups[1].name, "Gr-C2");
    EXPECT_FLOAT_EQ(groups[1].dims[0], 30.0f);
    EXPECT_EQ(groups[0].members, 2);
    const std::vector<Column> stored = readColumns(project(), ColumnLevel{1});
    EXPECT_EQ(stored[0].group, 1);
    EXPECT_EQ(stored[1].group, 1);
    EXPECT_EQ(stored[2].group, 2);

    // The run ends with one message: the outcome, then the problems of every group.
    const QString summary = run(*form, true);
    EXPECT_TRUE(summary.contains("All 2 groups were designed.")) << summary.toStdString();
    EXPECT_TRUE(summary.contains("(K*L/r) > 100 Gr-C2 (C3)")) << summary.toStdString();
    EXPECT_TRUE(fs::exists(project() / "ClGrp_F1-Gr-C1.Analy"));
    EXPECT_TRUE(form->groupList()->item(0)->text().endsWith("designed"));
    // The group shows the bars its design chose, read back from its record.
    ASSERT_TRUE(form->chooseGroup(1));
    const ColumnGroup designed = readGroups(project(), ColumnLevel{1})[0];
    ASSERT_GT(designed.barCount, 0);
    EXPECT_TRUE(form->findChild<QLabel*>("StateLbl")
                    ->text()
                    .contains(QStringLiteral("%1 bars of %2 mm")
                                  .arg(designed.barCount)
                                  .arg(designed.barDiameterMm)));
    ui::EditAsc* sheet = form->showSheet();
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->text().contains("COLUMN DESIGN"));
    sheet->close();

    // Deleting group 1 (after the question) frees its columns; group 2 becomes group 1 and
    // keeps its member, and is not designed under its new number.
    ASSERT_TRUE(form->chooseGroup(1));
    m_answer = QMessageBox::Yes;
    ASSERT_TRUE(form->deleteGroup());
    ASSERT_TRUE(form->save());
    const std::vector<Column> after = readColumns(project(), ColumnLevel{1});
    EXPECT_EQ(after[0].group, 0);
    EXPECT_EQ(after[2].group, 1);
    ASSERT_EQ(form->groupList()->count(), 1);
    EXPECT_TRUE(form->groupList()->item(0)->text().endsWith("not designed yet"));

    // One group designed alone; its sheet is found by the report form.
    EXPECT_TRUE(run(*form, false).contains("All 1 groups were designed."));
    ClGrpRpt report(m_shell);
    report.setMessageHook([this](const QString& m) { m_messages << m; });
    ASSERT_TRUE(report.chooseGroup(ColumnLevel{1}, 1));
    EXPECT_EQ(report.sheetPath(), project() / "ClGrp_F1-Gr-C2.Analy");
    ui::EditAsc* viewer = report.showSheet();
    ASSERT_NE(viewer, nullptr);
    viewer->close();
    EXPECT_FALSE(report.chooseGroup(ColumnLevel{1}, 2));
}

TEST_F(ClGroupsTest, ABadValueOrAnUnknownNumberIsRefusedAndNothingIsLost) {
    auto form = open<ClGroups>();
    form->newGroup();
    tick(*form, 0);
    // A cover beyond 20 cm: the group is not stored, the edits stay in the form.
    form->field("CoverTxt")->setText("25");
    m_messages.clear();
    EXPECT_FALSE(form->save());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("cover")) << m_messages[0].toStdString();
    EXPECT_FALSE(fs::exists(project() / "COLSGRP.101"));
    EXPECT_TRUE(form->isDirty());
    form->field("CoverTxt")->setText("5");
    EXPECT_TRUE(form->save());
    EXPECT_FLOAT_EQ(readGroups(project(), ColumnLevel{1})[0].coverCm, 5.0f);

    // The group choice: a typed number chooses its row; one that is no group's chooses none.
    SlcClGrp choice(m_shell, readGroups(project(), ColumnLevel{1}));
    choice.numberField()->setText("1");
    emit choice.numberField()->textEdited("1");
    EXPECT_EQ(choice.chosenGroup(), 1);
    emit choice.numberField()->textEdited("1.5");
    EXPECT_EQ(choice.chosenGroup(), 0);
    emit choice.numberField()->textEdited("7");
    EXPECT_EQ(choice.chosenGroup(), 0);
}

} // namespace
} // namespace orvak::columns::forms
