// The menu table behind the main window: items that need a project follow the project, each
// form opens in one window however often its item is chosen, and an item whose module is not
// built says so when the mouse rests on it.
#include "app/menu_table.h"

#include <QAction>
#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QStatusBar>
#include <set>
#include <utility>

#include "app/mdi_main.h"
#include "shell/forms/openlib_form.h"
#include "ui/shell_fixture.h"

namespace orvak::app {
namespace {

const QString kNotInThisVersion = QStringLiteral("Not in this version.");
const QString kNoProject = QStringLiteral("No project is open: open or create a project first.");

/// The action a row of the table stands behind.
QAction* actionOf(const MdiMain& window, const MenuItem& row) {
    if (row.subItem != kNoSubItem) {
        QAction* holder = window.menuItem(row.menu, row.item);
        if (!holder || !holder->menu() || row.subItem >= holder->menu()->actions().size()) {
            return nullptr;
        }
        return holder->menu()->actions().at(row.subItem);
    }
    if (window.menu(row.menu) == nullptr) {
        return row.item == kMenuBarEntry ? window.menuAction(row.menu) : nullptr;
    }
    return window.menuItem(row.menu, row.item);
}

int openWindowsNamed(const MdiMain& window, const QString& name) {
    int count = 0;
    for (const QMdiSubWindow* sub : window.mdiArea()->subWindowList()) {
        count += sub->widget() && sub->widget()->objectName() == name ? 1 : 0;
    }
    return count;
}

class MenuTableTest : public test::ShellFixture {
protected:
    void record(MdiMain& window) {
        window.setMessageHook([this](const QString& m) { m_messages << m; });
    }
    QStringList m_messages;
};

TEST_F(MenuTableTest, ItemsThatNeedAProjectWaitForOne) {
    shell::ShellState shell = startShell();
    shell.last.projectPath.clear();
    shell.projectName.clear();
    MdiMain window(shell);
    record(window);

    int needing = 0;
    for (const MenuItem& row : menuTable()) {
        const QAction* action = actionOf(window, row);
        ASSERT_NE(action, nullptr) << row.objectName << " " << row.item;
        ASSERT_FALSE(action->isSeparator()) << row.item;
        EXPECT_EQ(action->isEnabled(), !row.needsProject) << action->text().toStdString();
        EXPECT_EQ(action->statusTip(), row.needsProject ? kNoProject : QString())
            << action->text().toStdString();
        needing += row.needsProject ? 1 : 0;
    }
    // Project data, archive, copy, the four floor forms, the beam form, the deflection
    // calculation, the beam reports, the column list and groups of a floor and of the footing
    // level, the two column group reports, the footing groups and their report and the two
    // steel forms work on the current project.
    EXPECT_EQ(needing, 20);
    // Asked for all the same, the form of such an item says why it does not open.
    EXPECT_EQ(window.open(MainMenu::Project, project_item::kProjectData), nullptr);
    EXPECT_EQ(m_messages, QStringList{kNoProject});
    EXPECT_EQ(window.windowTitle(), "Orvak Ver 2");
    m_messages.clear();

    // Once a project is made, every item of the table is there.
    shell::forms::OpenlibHooks hooks;
    hooks.askText = [](const QString&, const QString&) { return QString("Tower"); };
    window.openlib().setHooks(hooks);
    window.menuItem(MainMenu::Project, project_item::kNew)->trigger();
    ASSERT_TRUE(shell.hasProject());
    for (const MenuItem& row : menuTable()) {
        const QAction* action = actionOf(window, row);
        EXPECT_TRUE(action->isEnabled()) << action->text().toStdString();
        EXPECT_TRUE(action->statusTip().isEmpty()) << action->text().toStdString();
    }
    EXPECT_TRUE(m_messages.isEmpty()) << m_messages.join('\n').toStdString();
}

TEST_F(MenuTableTest, EachFormOpensInOneWindow) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);
    record(window);

    QStringList forms;
    for (const MenuItem& row : menuTable()) {
        if (row.objectName.empty()) {
            continue;
        }
        const QString name = QString::fromLatin1(row.objectName.data(),
                                                 static_cast<qsizetype>(row.objectName.size()));
        QAction* action = actionOf(window, row);
        action->trigger();
        ASSERT_EQ(openWindowsNamed(window, name), 1) << name.toStdString();
        QWidget* first = window.mdiArea()->activeSubWindow()->widget();
        EXPECT_EQ(first->objectName(), name);

        // A second choice of the item, after another window came forward, brings the same
        // window back instead of opening a second one.
        window.mdiArea()->activateNextSubWindow();
        action->trigger();
        EXPECT_EQ(openWindowsNamed(window, name), 1) << name.toStdString();
        EXPECT_EQ(window.mdiArea()->activeSubWindow()->widget(), first) << name.toStdString();
        forms << name;
    }
    forms.sort();
    EXPECT_EQ(forms, QStringList({"BmDesign",   "BmRipRpt",  "Bmseting", "CielData", "CielThick",
                                  "ClGroups",   "ClGrpRpt",  "Clseting", "Columns",  "FtClGroups",
                                  "FtClGrpRpt", "FtColumns", "FtGroups", "FtRpt",    "FtSeting",
                                  "Gsetting",   "LDefCalc",  "Netiron",  "NewCiel",  "Projdata",
                                  "Roundbar",   "SlcCiel",   "SteelQnt", "SteelUpd", "spacing"}));
    EXPECT_EQ(window.mdiArea()->subWindowList().size(), forms.size());
    EXPECT_EQ(window.openForm("roundbar"), window.openForm("Roundbar"));
    EXPECT_EQ(window.mdiArea()->subWindowList().size(), forms.size());
    EXPECT_TRUE(m_messages.isEmpty()) << m_messages.join('\n').toStdString();
}

TEST_F(MenuTableTest, ItemsNotInThisVersionSaySo) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);

    std::set<std::pair<int, int>> built;
    for (const MenuItem& row : menuTable()) {
        built.insert({static_cast<int>(row.menu), row.item});
    }
    QStringList unbuilt;
    for (int m = 0; m < kMainMenuCount; ++m) {
        const auto which = static_cast<MainMenu>(m);
        QList<QAction*> items;
        if (QMenu* drop = window.menu(which)) {
            EXPECT_TRUE(drop->toolTipsVisible()) << m;
            items = drop->actions();
        } else {
            items = {window.menuAction(which)};
        }
        for (int i = 0; i < items.size(); ++i) {
            const QAction* item = items[i];
            if (item->isSeparator() || built.count({m, i}) > 0) {
                continue;
            }
            EXPECT_FALSE(item->isEnabled()) << item->text().toStdString();
            EXPECT_EQ(item->toolTip(), kNotInThisVersion) << item->text().toStdString();
            EXPECT_EQ(item->statusTip(), kNotInThisVersion) << item->text().toStdString();
            unbuilt << item->text();
        }
    }
    // Among them items of menus with built ones, a sub-menu and the Graphics entry of the
    // menu bar.
    for (const char* text :
         {"Down load on columns from slabs", "Filling", "plotter ", "Graphics"}) {
        EXPECT_TRUE(unbuilt.contains(text)) << text;
    }
    EXPECT_EQ(window.plotterItem(0)->statusTip(), kNotInThisVersion);

    // Resting on a greyed item puts the reason in the status bar; leaving the menu takes it away.
    window.resize(900, 600);
    window.show();
    QMenu* columns = window.menu(MainMenu::Columns);
    columns->popup(window.mapToGlobal(QPoint(40, 40)));
    QCoreApplication::processEvents();
    const QPoint over = columns->actionGeometry(columns->actions().at(2)).center();
    QMouseEvent move(QEvent::MouseMove, over, columns->mapToGlobal(over), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(columns, &move);
    EXPECT_EQ(window.statusBar()->currentMessage(), kNotInThisVersion);
    columns->hide();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.statusBar()->currentMessage().isEmpty());
}

} // namespace
} // namespace orvak::app
