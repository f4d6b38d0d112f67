// The project explorer on the demo project: looking makes no store; after the first floor's
// beams are designed it shows their states and sheets, and a chosen sheet opens in the viewer.
#include "app/project_explorer.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTreeWidget>

#include "app/beam_design_run.h"
#include "app/mdi_main.h"
#include "bars/bar_tables.h"
#include "beams/beam_job.h"
#include "beams/forms/bmdesign_form.h"
#include "columns/forms/clgroups_form.h"
#include "core/codepage.h"
#include "footings/forms/ftgroups_form.h"
#include "jobs/beam_design_job.h"
#include "jobs/column_design_job.h"
#include "jobs/footing_design_job.h"
#include "ui/shell_fixture.h"
#include "ui/text_viewer.h"

namespace orvak::app {
namespace {

namespace fs = std::filesystem;

class ProjectExplorerTest : public test::ShellFixture {};

TEST_F(ProjectExplorerTest, ShowsTheStatesOfTheLastRunAndOpensSheets) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);
    window.setMessageHook([](const QString& m) { ADD_FAILURE() << m.toStdString(); });
    QTreeWidget* tree = window.explorer()->tree();
    const fs::path project = shell.projectPath();

    // The demo: two floors, four and two beams and their column groups, the footing level's
    // groups, none designed; looking made no store.
    ASSERT_EQ(tree->topLevelItemCount(), 4); // two floors, the footing level and the sheets
    QTreeWidgetItem* first = tree->topLevelItem(0);
    ASSERT_EQ(first->childCount(), 5); // four beams and the column groups
    EXPECT_EQ(first->child(0)->text(ProjectExplorer::StateColumn), "not designed yet");
    EXPECT_FALSE(fs::exists(project / "Iron.db"));

    const auto chosen = jobs::chooseBeams(project, {1, 0}, core::CodePage::Windows1252);
    const jobs::JobResult run = jobs::designBeams(project, chosen, bars::builtInBarProperties(), 3);
    ASSERT_EQ(run.failing(), 0u);
    window.explorer()->refresh();

    first = tree->topLevelItem(0);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(first->child(i)->text(ProjectExplorer::StateColumn), "designed");
        // "yyyy-mm-dd hh:mm" behind a left-to-right mark.
        EXPECT_EQ(first->child(i)->text(ProjectExplorer::WhenColumn).size(), 17);
    }
    EXPECT_EQ(tree->topLevelItem(1)->child(0)->text(ProjectExplorer::StateColumn),
              "not designed yet");
    // Four listings and the report for each of the four beams.
    QTreeWidgetItem* sheets = tree->topLevelItem(3);
    ASSERT_EQ(sheets->childCount(), 20);

    // A beam opens in the beam form; a sheet in the viewer.
    QSignalSpy chosenBeam(window.explorer(), &ProjectExplorer::beamChosen);
    emit tree->itemActivated(first->child(1), 0);
    ASSERT_EQ(chosenBeam.size(), 1);
    EXPECT_EQ(chosenBeam.at(0).at(0).toInt(), 1);
    EXPECT_EQ(chosenBeam.at(0).at(1).toInt(), 2);
    auto* form =
        qobject_cast<beams::forms::BmDesign*>(window.mdiArea()->activeSubWindow()->widget());
    ASSERT_NE(form, nullptr);
    ASSERT_NE(form->beam(), nullptr);
    EXPECT_EQ(form->beam()->number, 2);
    window.mdiArea()->closeAllSubWindows();

    QSignalSpy chosenSheet(window.explorer(), &ProjectExplorer::sheetChosen);
    QTreeWidgetItem* firstSheet = sheets->child(0);
    emit tree->itemActivated(firstSheet, 0);
    ASSERT_EQ(chosenSheet.size(), 1);
    const auto sheet = chosenSheet.at(0).at(0).value<fs::path>();
    EXPECT_EQ(sheet.filename().string(), firstSheet->text(0).toStdString());
    ASSERT_TRUE(fs::exists(sheet));
    ui::EditAsc* viewer = window.openSheet(sheet);
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(window.mdiArea()->subWindowList().size(), 1);
    // The same sheet again brings the same viewer forward.
    EXPECT_EQ(window.openSheet(sheet), viewer);
    window.mdiArea()->closeAllSubWindows();

    // The footing level's groups, designed, with their sheets among the project's; a group
    // opens in the column groups form at its level.
    const jobs::JobResult groups = jobs::designColumnGroups(
        project, jobs::chooseColumnGroups(project, {true, 0, {}}, core::CodePage::Windows1252),
        bars::builtInBarProperties());
    ASSERT_FALSE(groups.elements.empty());
    window.explorer()->refresh();
    QTreeWidgetItem* footing = tree->topLevelItem(2)->child(0);
    ASSERT_EQ(footing->childCount(), static_cast<int>(groups.elements.size()));
    EXPECT_EQ(footing->child(0)->text(ProjectExplorer::StateColumn),
              groups.elements[0].status == jobs::ElementStatus::Designed ? "designed"
                                                                         : "checks failed");
    EXPECT_EQ(tree->topLevelItem(3)->childCount(), 20 + static_cast<int>(groups.elements.size()));
    emit tree->itemActivated(footing->child(0), 0);
    auto* groupsForm =
        qobject_cast<columns::forms::ClGroups*>(window.mdiArea()->activeSubWindow()->widget());
    ASSERT_NE(groupsForm, nullptr);
    EXPECT_TRUE(groupsForm->level().footing());
    EXPECT_EQ(groupsForm->currentGroup(), 1);
    window.mdiArea()->closeAllSubWindows();

    // The demo's footing groups under the footing level; a designed one opens in its form.
    const jobs::JobResult footings = jobs::designFootingGroups(
        project, jobs::chooseFootingGroups(project, {}, core::CodePage::Windows1252),
        bars::builtInBarProperties());
    window.explorer()->refresh();
    QTreeWidgetItem* footingGroups = tree->topLevelItem(2)->child(1);
    ASSERT_NE(footingGroups, nullptr);
    ASSERT_EQ(footingGroups->childCount(), static_cast<int>(footings.elements.size()));
    EXPECT_EQ(footingGroups->child(1)->text(ProjectExplorer::StateColumn),
              footings.elements[1].status == jobs::ElementStatus::Designed ? "designed"
                                                                           : "checks failed");
    emit tree->itemActivated(footingGroups->child(1), 0);
    auto* footingForm =
        qobject_cast<footings::forms::FtGroups*>(window.mdiArea()->activeSubWindow()->widget());
    ASSERT_NE(footingForm, nullptr);
    EXPECT_EQ(footingForm->currentGroup(), 2);
}

// The floor's run from the window goes off the GUI thread, and writes what the command line
// writes: the same listings, byte for byte, as a run of the job runner on a copy.
TEST_F(ProjectExplorerTest, DesigningAFloorFromTheWindowWritesWhatTheCommandLineWrites) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);
    QStringList messages;
    window.setMessageHook([&](const QString& m) { messages << m; });
    const fs::path project = shell.projectPath();
    const fs::path copy = home() / "Copy.prj";
    fs::copy(project, copy, fs::copy_options::recursive);

    BeamDesignRun* run = window.startFloorDesign(1, 3);
    ASSERT_TRUE(run->running());
    QSignalSpy ended(run, &BeamDesignRun::finished);
    ASSERT_TRUE(ended.wait(60000));
    EXPECT_EQ(run->result().elements.size(), 4u);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0], "All 4 beams were designed.");
    // The explorer was read again when the run ended.
    EXPECT_EQ(
        window.explorer()->tree()->topLevelItem(0)->child(0)->text(ProjectExplorer::StateColumn),
        "designed");

    const auto chosen = jobs::chooseBeams(copy, {1, 0}, core::CodePage::Windows1252);
    jobs::designBeams(copy, chosen, beams::designBarTable(shell.generalFolder()).rows, 3);
    int compared = 0;
    for (const auto& entry : fs::directory_iterator(project)) {
        const std::string ext = entry.path().extension().string();
        if (ext.rfind(".Analy", 0) == 0) {
            EXPECT_EQ(test::readBytes(entry.path()),
                      test::readBytes(copy / entry.path().filename()))
                << entry.path().filename();
            ++compared;
        }
    }
    EXPECT_EQ(compared, 16);
}

} // namespace
} // namespace orvak::app
