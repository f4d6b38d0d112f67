// The main window: menus and their item numbering, captions from the prompt files in English
// and Hebrew, the switch of language, the project commands' effect on the window, closing.
#include "app/mdi_main.h"

#include <QAction>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include "shell/forms/gsetting_form.h"
#include "shell/forms/openlib_form.h"
#include "shell/parameter_file.h"
#include "shell/software_config.h"
#include "ui/shell_fixture.h"
#include "ui/text_viewer.h"

namespace orvak::app {
namespace {

namespace fs = std::filesystem;

QStringList menuBarTexts(const MdiMain& window) {
    QStringList texts;
    for (const QAction* action : window.menuBar()->actions()) {
        texts << action->text();
    }
    return texts;
}

class MdiMainTest : public test::ShellFixture {
protected:
    QStringList m_messages;

    void record(MdiMain& window) {
        window.setMessageHook([this](const QString& m) { m_messages << m; });
    }
};

TEST_F(MdiMainTest, MenusAndItemsKeepTheirOrderAndIndexes) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);
    // The menu bar of the design, Graphics being an entry without a drop-down.
    EXPECT_EQ(menuBarTexts(window),
              (QStringList{"Project", "Cielling", "Beam\\Rip", "Columns", "Foundation", "Graphics",
                           "Quantities", "Setting", "Reports", "Help"}));
    EXPECT_EQ(window.menu(MainMenu::Graphics), nullptr);
    EXPECT_FALSE(window.menuAction(MainMenu::Graphics)->isEnabled());
    EXPECT_EQ(window.windowTitle(), "Orvak Ver 2 - Demo.prj");

    // Items keep the indexes the menu handlers use, separators included.
    const QStringList project = {
        "Projects Dir", "", "Project data", "Archeive of projects", "", "new", "open", "copy",
        "delete",       "", "exit"};
    for (int i = 0; i < project.size(); ++i) {
        const QAction* item = window.menuItem(MainMenu::Project, i);
        ASSERT_NE(item, nullptr) << i;
        EXPECT_EQ(item->isSeparator(), project[i].isEmpty()) << i;
        EXPECT_EQ(item->text(), project[i]) << i;
    }
    EXPECT_EQ(window.menuItem(MainMenu::Project, 11), nullptr);
    ASSERT_NE(window.menuItem(MainMenu::Setting, 2)->menu(), nullptr);
    EXPECT_EQ(window.plotterItem(1)->text(), "pages data");
    EXPECT_TRUE(window.menuItem(MainMenu::Setting, 3)->isSeparator());
    EXPECT_EQ(window.menuItem(MainMenu::Setting, 4)->text(), "Areas for bars");
    EXPECT_EQ(window.menuItem(MainMenu::Setting, 7)->text(), "NetWork Iron");
    EXPECT_EQ(window.menuItem(MainMenu::Quantities, 1)->text(), "steel print");
    EXPECT_TRUE(window.menuItem(MainMenu::Foundation, 3)->isSeparator());
    EXPECT_EQ(window.menuItem(MainMenu::Foundation, 4)->text(), "Foundation Groups/Design");
    EXPECT_EQ(window.menuItem(MainMenu::Help, 5)->text(), "&Report");
}

TEST_F(MdiMainTest, CaptionsComeFromThePromptFile) {
    shell::ShellState shell = startShell();
    // The user's own prompt file: line 2 names the Project menu, line 13 its item 10.
    auto lines = test::shippedLines("English", "MdiMainE.TXT");
    lines[1] = "&Job";
    lines[12] = "Quit";
    std::string bytes;
    for (const auto& line : lines) {
        bytes += line + "\r\n";
    }
    test::writeBytes(home() / "English" / "MdiMainE.TXT", bytes);

    MdiMain window(shell);
    EXPECT_EQ(window.menuAction(MainMenu::Project)->text(), "&Job");
    EXPECT_EQ(window.menuItem(MainMenu::Project, 10)->text(), "Quit");
    EXPECT_EQ(window.menuItem(MainMenu::Project, 6)->text(), "open");
}

TEST_F(MdiMainTest, HebrewConfigurationGivesHebrewCaptionsRightToLeft) {
    configureLanguage("Hebrew");
    shell::ShellState shell = startShell();
    MdiMain window(shell);

    const auto lines = test::shippedLines("Hebrew", "MdiMainH.TXT");
    // Line 2 is the Project menu, lines 3-13 its items 0-10; Setting is line 42, its item 4
    // ("Areas for bars") line 49 after the two lines of the plotter sub-menu.
    EXPECT_EQ(window.menuAction(MainMenu::Project)->text(), test::hebrewText(lines[1]));
    EXPECT_EQ(window.menuItem(MainMenu::Project, 0)->text(), test::hebrewText(lines[2]));
    EXPECT_EQ(window.menuItem(MainMenu::Project, 10)->text(), test::hebrewText(lines[12]));
    EXPECT_EQ(window.menuAction(MainMenu::Setting)->text(), test::hebrewText(lines[41]));
    EXPECT_EQ(window.menuItem(MainMenu::Setting, 4)->text(), test::hebrewText(lines[48]));
    EXPECT_EQ(window.menuItem(MainMenu::Project, 0)->text().at(0).script(), QChar::Script_Hebrew);
    EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft);
    EXPECT_TRUE(window.isRightToLeft());
}

TEST_F(MdiMainTest, SoftwareSettingsSwitchTheLanguageBothWays) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);
    ASSERT_EQ(window.menuItem(MainMenu::Project, 10)->text(), "exit");
    window.menuItem(MainMenu::Setting, setting_item::kSoftware)->trigger();
    auto* form = window.mdiArea()->findChild<shell::forms::Gsetting*>();
    ASSERT_NE(form, nullptr);
    form->languageBox()->setCurrentText("Hebrew");
    ASSERT_TRUE(form->save());

    const auto hebrew = test::shippedLines("Hebrew", "MdiMainH.TXT");
    EXPECT_EQ(window.menuAction(MainMenu::Help)->text(), test::hebrewText(hebrew[57]));
    EXPECT_EQ(window.menuItem(MainMenu::Project, 10)->text(), test::hebrewText(hebrew[12]));
    EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(shell::readSoftwareConfig(home() / "GENERAL" / "SWC").language, "Hebrew");

    shell.software.language = "English";
    window.ReadAllPrompts();
    EXPECT_EQ(window.menuItem(MainMenu::Project, 10)->text(), "exit");
    EXPECT_EQ(QApplication::layoutDirection(), Qt::LeftToRight);
}

TEST_F(MdiMainTest, NewProjectBecomesCurrentEverywhere) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);
    record(window);
    shell::forms::OpenlibHooks hooks;
    hooks.askText = [](const QString&, const QString&) { return QString("Tower"); };
    window.openlib().setHooks(hooks);

    window.menuItem(MainMenu::Project, project_item::kNew)->trigger();

    const fs::path tower = home() / "Projects" / "Tower.prj";
    EXPECT_TRUE(m_messages.isEmpty()) << m_messages.join("\n").toStdString();
    EXPECT_EQ(window.windowTitle(), "Orvak Ver 2 - Tower.prj");
    EXPECT_TRUE(window.projectText().contains(QString::fromStdString(tower.string())));
    EXPECT_EQ(window.parameterFile().path(), tower / "DEFPARAM.DAT");
    EXPECT_TRUE(window.parameterFile().isOpen());
    // The project commands write PRJNO at once, so a crash keeps the new project.
    EXPECT_EQ(shell::readLastProjectState(home() / "GENERAL" / "PRJNO").projectPath,
              tower.string());
}

TEST_F(MdiMainTest, ClosingCleansTheProjectAndRemembersIt) {
    shell::ShellState shell = startShell();
    const fs::path demo = shell.projectPath();
    test::writeBytes(demo / "EMPTY.DAT", "");
    test::writeBytes(demo / "KEEP.DAT", "x");
    {
        MdiMain window(shell);
        record(window);
        window.menuItem(MainMenu::Project, project_item::kExit)->trigger();
    }
    EXPECT_FALSE(fs::exists(demo / "EMPTY.DAT"));
    EXPECT_TRUE(fs::exists(demo / "KEEP.DAT"));
    EXPECT_EQ(shell::readLastProjectState(home() / "GENERAL" / "PRJNO").projectPath, demo.string());
    EXPECT_TRUE(fs::exists(home() / "GENERAL" / "orvak-window.ini"));
}

TEST_F(MdiMainTest, HelpItemsOpenTheTextAtTheirHeading) {
    shell::ShellState shell = startShell();
    MdiMain window(shell);
    window.resize(900, 700);
    record(window);
    window.menuItem(MainMenu::Help, 3)->trigger();
    auto* viewer = window.mdiArea()->findChild<ui::EditAsc*>();
    ASSERT_NE(viewer, nullptr);
    auto* text = viewer->findChild<QPlainTextEdit*>();
    EXPECT_TRUE(text->textCursor().block().text().startsWith("3. SETTINGS"));
    EXPECT_TRUE(viewer->text().startsWith("ORVAK VER 2 - HELP"));

    // Contents reuses the same viewer from the top.
    window.menuItem(MainMenu::Help, 0)->trigger();
    EXPECT_EQ(window.mdiArea()->findChildren<ui::EditAsc*>().size(), 1);
    EXPECT_EQ(text->textCursor().blockNumber(), 0);
    EXPECT_TRUE(m_messages.isEmpty());
}

} // namespace
} // namespace orvak::app
