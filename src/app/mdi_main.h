// The main window: the multiple-document frame in which every form of the program opens, its
// menu bar (one control array of items per menu, driven by the menu table), status bar and
// the project's parameter file.
#pragma once

#include <QMainWindow>
#include <QString>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "app/menu_table.h"
#include "shell/parameter_file.h"
#include "shell/shell_state.h"

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace orvak::ui {
class EditAsc;
}

namespace orvak::shell::forms {
class Openlib;
}

namespace orvak::app {

class BeamDesignRun;
class ProjectExplorer;

class MdiMain : public QMainWindow {
    Q_OBJECT
public:
    /// `shell` comes from shell::runStartup and must outlive the window. `items` are the menu
    /// items that are in this version (menuTable() in the program).
    explicit MdiMain(shell::ShellState& shell, std::span<const MenuItem> items = menuTable(),
                     QWidget* parent = nullptr);
    ~MdiMain() override;

    shell::ShellState& shell() { return m_shell; }
    QMdiArea* mdiArea() const { return m_mdi; }
    shell::forms::Openlib& openlib() { return *m_openlib; }
    const shell::ParameterFile& parameterFile() const { return m_parameters; }

    /// The menu-bar entry of a menu (its caption); for Graphics the entry itself.
    QAction* menuAction(MainMenu menu) const;
    /// The drop-down of a menu; nullptr for Graphics, which has no items.
    QMenu* menu(MainMenu menu) const;
    /// Item `index` of a menu's control array (0-based, separators counted); nullptr when out
    /// of range.
    QAction* menuItem(MainMenu menu, int index) const;
    /// Item of the sub-menu of Setting > plotter ("Config" 0, "pages data" 1).
    QAction* plotterItem(int index) const;

    /// Does what a menu item does, as its click would: brings forward the form of the item when
    /// one is open, else opens it (or runs the item's command). Returns the form's widget;
    /// nullptr for a command, for an item not in this version, and for an item that needs a
    /// project while none is open (the user is told so).
    QWidget* open(MainMenu menu, int item, int subItem = kNoSubItem);
    /// The same for the item whose form bears `objectName` (case-blind); nullptr when no item
    /// opens such a form.
    QWidget* openForm(const QString& objectName);
    /// The object names of the forms the menu opens, in menu order.
    QStringList formNames() const;

    /// "Projects Dir": the user chooses the projects folder, which PRJNO then remembers.
    void chooseProjectsFolder();
    /// "new" and "open": the chosen project becomes current everywhere.
    void newProject();
    void openProject();
    /// The help text at the section of a Help item (0: Contents, from the top), in one viewer;
    /// nullptr when there is no help text.
    ui::EditAsc* openHelp(int index);

    /// The dock with the project's floors, beams, design states and sheets.
    ProjectExplorer* explorer() const { return m_explorer; }
    /// "Design all beams of the floor": asks for the load-case scheme (the full live-load
    /// pattern preselected), then designs them through the job runner off the GUI thread with
    /// a progress dialog; the explorer is read again at the end.
    void designFloor(int floor);
    /// The same under a given scheme, without asking; the run of the window (for tests).
    BeamDesignRun* startFloorDesign(int floor, int scheme);

    /// Opens a sheet (a listing) of the project in the text viewer; nullptr when it cannot be
    /// read (the user is told).
    ui::EditAsc* openSheet(const std::filesystem::path& sheet);

    /// Called after a project command changed the current project or projects folder: reopens
    /// the parameter file, writes PRJNO and refreshes caption, status bar and menu items.
    void projectChanged();

    /// Closes every child window, each asking about unsaved changes; false when one stayed.
    bool closeChildWindows();

    /// Shows, once, the problems met at start-up that did not stop it.
    void showStartupWarnings();

    /// Whether closing stores the window's geometry (off for screenshots).
    void setRemembersGeometry(bool remember) { m_remembersGeometry = remember; }
    /// Replaces the message boxes of the window's own messages (tests record them instead).
    void setMessageHook(std::function<void(const QString&)> hook) {
        m_messageHook = std::move(hook);
    }

    /// The window caption: the title, and the current project's name when one is open.
    QString captionText() const;
    /// The texts of the status bar: projects folder and project path.
    QString projectsFolderText() const;
    QString projectText() const;

public slots:
    /// Reloads every caption of the window from the prompt table in the current language (and
    /// the shell's general and global prompts), mirrors the application for a right-to-left
    /// language and asks every open form to reload its own captions.
    void ReadAllPrompts();
    /// Shows a form's report of a save in the status bar for a while.
    void showSavedMessage(const QString& message);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Moves a child window back inside the visible work area (after a resize).
    void keepInside(QMdiSubWindow* sub) const;
    /// Where an item of the menu bar stands: its menu, item and sub-item.
    struct ItemPlace {
        MainMenu menu;
        int item;
        int subItem;
    };

    void buildMenus();
    const MenuItem* findItem(MainMenu menu, int item, int subItem) const;
    /// Enables the items of the table (those needing a project only while one is open); every
    /// item greyed out says why in its tooltip and status tip.
    void updateMenuItems();
    void applyFonts();
    void restoreWindowGeometry();
    void saveWindowGeometry() const;
    QString geometryFile() const;
    void openParameterFile();
    void refreshProjectDisplay();
    void tell(const QString& message) const;
    /// The sub-window whose form bears this object name (the form's class name).
    QMdiSubWindow* findChildWindow(const QString& objectName) const;
    /// Shows a new form as a child window; its save reports go to the status bar and a new
    /// language it saves relabels the whole program.
    QMdiSubWindow* addChildWindow(QWidget* form);
    /// Shows what a form saved in the status bar and the explorer, and follows its language.
    void hearForm(QWidget* form);
    void reloadChildPrompts();

    shell::ShellState& m_shell;
    std::span<const MenuItem> m_items;
    shell::ParameterFile m_parameters;
    QMdiArea* m_mdi;
    std::unique_ptr<shell::forms::Openlib> m_openlib;
    QLabel* m_projectsFolderLabel;
    QLabel* m_projectLabel;
    QLabel* m_floorLabel;
    ProjectExplorer* m_explorer;
    BeamDesignRun* m_designRun;
    std::array<QAction*, kMainMenuCount> m_menuActions{};
    std::array<QMenu*, kMainMenuCount> m_menus{};
    QMenu* m_plotterMenu = nullptr;
    /// The action of every caption of the prompt file, in its order (separators included),
    /// and where each stands in the menus.
    std::vector<QAction*> m_captionActions;
    std::vector<std::optional<ItemPlace>> m_captionPlaces;
    /// The reason shown in the status bar for the greyed item under the mouse.
    QString m_shownReason;
    std::function<void(const QString&)> m_messageHook;
    bool m_remembersGeometry = true;
    bool m_closed = false;
};

} // namespace orvak::app
