// The main window: the multiple-document frame in which every form of the program opens, its
// menu bar (one control array of items per menu), status bar and the project's parameter file.
#pragma once

#include <QMainWindow>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "shell/parameter_file.h"
#include "shell/shell_state.h"

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace orvak::ui {

class EditAsc;
class Gsetting;
class Openlib;
class Projdata;
class SteelQnt;
class SteelUpd;

/// The menus of the menu bar, in their order (Graphics is a menu-bar entry without items).
enum class MainMenu {
    Project = 0,
    Cielling,
    Beam,
    Columns,
    Foundation,
    Graphics,
    Quantities,
    Setting,
    Reports,
    Help,
};
inline constexpr int kMainMenuCount = 10;

/// Item indexes of the Project menu (0-based, separators counted).
namespace project_item {
inline constexpr int kProjectsDir = 0;
inline constexpr int kProjectData = 2;
inline constexpr int kArchive = 3;
inline constexpr int kNew = 5;
inline constexpr int kOpen = 6;
inline constexpr int kCopy = 7;
inline constexpr int kDelete = 8;
inline constexpr int kExit = 10;
} // namespace project_item

/// Item indexes of the Quantities menu.
namespace quantities_item {
inline constexpr int kSteelUpdate = 0;
inline constexpr int kSteelPrint = 1;
} // namespace quantities_item

/// Item indexes of the Setting menu.
namespace setting_item {
inline constexpr int kSoftware = 0;
inline constexpr int kPrinter = 1;
inline constexpr int kPlotter = 2;
inline constexpr int kAreasForBars = 4;
inline constexpr int kAreasForSpacing = 5;
inline constexpr int kFilling = 6;
inline constexpr int kNetworkIron = 7;
} // namespace setting_item

class MdiMain : public QMainWindow {
    Q_OBJECT
public:
    /// `shell` comes from shell::runStartup and must outlive the window.
    explicit MdiMain(shell::ShellState& shell, QWidget* parent = nullptr);
    ~MdiMain() override;

    /// Reloads every caption of the window from the prompt table in the current language (and
    /// the shell's general and global prompts), mirrors the application for a right-to-left
    /// language and asks every open form to reload its own captions.
    void ReadAllPrompts();

    shell::ShellState& shell() { return m_shell; }
    QMdiArea* mdiArea() const { return m_mdi; }
    Openlib& openlib() { return *m_openlib; }
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

    /// Menu handlers: each receives the index of the item chosen.
    void projectMenuClick(int index);
    void settingMenuClick(int index);
    void quantitiesMenuClick(int index);
    void helpMenuClick(int index);

    /// Opens the child form (or brings forward the one already open); nullptr when it cannot
    /// open (no project for Projdata, no help file for the help viewer).
    Projdata* openProjdata();
    Gsetting* openGsetting();
    EditAsc* openHelp(int index);
    /// The bar, spacing and mesh table forms (Setting items 4, 5 and 7).
    QWidget* openBarTable(int settingIndex);
    /// The steel forms of the current project; nullptr without a project.
    SteelUpd* openSteelUpd();
    SteelQnt* openSteelQnt();

    /// Called after a project command changed the current project or projects folder: reopens
    /// the parameter file, writes PRJNO and refreshes caption and status bar.
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

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void menuItemClicked(MainMenu menu, int index);
    void applyFonts();
    void restoreWindowGeometry();
    void saveWindowGeometry() const;
    QString geometryFile() const;
    void openParameterFile();
    void refreshProjectDisplay();
    void tell(const QString& message) const;
    /// The sub-window whose form bears this object name (the form's class name).
    QMdiSubWindow* findChildWindow(const char* objectName) const;
    QMdiSubWindow* addChildWindow(QWidget* form);
    /// The open form of this object name brought forward, or a new one made by `make`.
    template <class Form, class Make> Form* openChild(const char* objectName, Make make);
    void reloadChildPrompts();

    shell::ShellState& m_shell;
    shell::ParameterFile m_parameters;
    QMdiArea* m_mdi;
    std::unique_ptr<Openlib> m_openlib;
    QLabel* m_projectsFolderLabel;
    QLabel* m_projectLabel;
    std::array<QAction*, kMainMenuCount> m_menuActions{};
    std::array<QMenu*, kMainMenuCount> m_menus{};
    QMenu* m_plotterMenu = nullptr;
    /// The action of every caption of the prompt file, in its order (separators included).
    std::vector<QAction*> m_captionActions;
    std::function<void(const QString&)> m_messageHook;
    bool m_remembersGeometry = true;
    bool m_closed = false;
};

} // namespace orvak::ui
