// The main window: menu bar built from one table of captions (the order of the MdiMain prompt
// file) and driven by the menu table, the MDI area of the forms, the status bar of the projects
// folder and project, the parameter file of the open project, and the window geometry kept in
// the GENERAL folder.
#include "app/mdi_main.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QHelpEvent>
#include <QIcon>
#include <QInputDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QStatusBar>
#include <QTextBlock>
#include <QToolTip>
#include <array>
#include <string_view>

#include "app/beam_design_run.h"
#include "app/project_explorer.h"
#include "beams/forms/bmdesign_form.h"
#include "beams/load_cases.h"
#include "columns/forms/clgroups_form.h"
#include "core/error.h"
#include "floors/forms/floor_forms.h"
#include "footings/forms/ftgroups_form.h"
#include "shell/forms/openlib_form.h"
#include "shell/projects.h"
#include "shell/startup.h"
#include "ui/general_prompts.h"
#include "ui/text_viewer.h"

namespace fs = std::filesystem;

namespace orvak::app {

namespace {

enum class Entry { Menu, Item, Separator, SubItem };

struct FrameEntry {
    Entry kind;
    std::string_view caption; ///< the caption as stored, shown when the prompt file lacks it
};

// Every caption of the menu bar in menu order; line n + 1 of the MdiMain prompt file holds
// caption n. A menu's items form its control array, numbered from 0 with separators counted.
constexpr std::array kFrameEntries = {
    FrameEntry{Entry::Menu, "Project"},
    FrameEntry{Entry::Item, "Projects Dir"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "Project data"},
    FrameEntry{Entry::Item, "Archeive of projects"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "new"},
    FrameEntry{Entry::Item, "open"},
    FrameEntry{Entry::Item, "copy"},
    FrameEntry{Entry::Item, "delete"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "exit"},
    FrameEntry{Entry::Menu, "Cielling"},
    FrameEntry{Entry::Item, "New"},
    FrameEntry{Entry::Item, "Select"},
    FrameEntry{Entry::Item, "Data"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "Thickness"},
    FrameEntry{Entry::Menu, "Beam\\Rip"},
    FrameEntry{Entry::Item, "Settings"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "Thickness"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "Analysis and Design"},
    FrameEntry{Entry::Item, "Long time deflection calculation"},
    FrameEntry{Entry::Menu, "Columns"},
    FrameEntry{Entry::Item, "Settings"},
    FrameEntry{Entry::Item, "Columns data"},
    FrameEntry{Entry::Item, "Down load on columns from slabs"},
    FrameEntry{Entry::Item, "Groups data/Design"},
    FrameEntry{Entry::Menu, "Foundation"},
    FrameEntry{Entry::Item, "Settings"},
    FrameEntry{Entry::Item, "Columns necks data"},
    FrameEntry{Entry::Item, "Columns necks Groups data"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "Foundation Groups/Design"},
    FrameEntry{Entry::Menu, "Graphics"},
    FrameEntry{Entry::Menu, "Quantities"},
    FrameEntry{Entry::Item, "Steel update"},
    FrameEntry{Entry::Item, "steel print"},
    FrameEntry{Entry::Menu, "Setting"},
    FrameEntry{Entry::Item, "Software"},
    FrameEntry{Entry::Item, "Printer"},
    FrameEntry{Entry::Item, "plotter "},
    FrameEntry{Entry::SubItem, "Config"},
    FrameEntry{Entry::SubItem, "pages data"},
    FrameEntry{Entry::Separator, "-"},
    FrameEntry{Entry::Item, "Areas for bars"},
    FrameEntry{Entry::Item, "Areas for spacing"},
    FrameEntry{Entry::Item, "Filling"},
    FrameEntry{Entry::Item, "NetWork Iron"},
    FrameEntry{Entry::Menu, "Reports"},
    FrameEntry{Entry::Item, "Beam/Rip"},
    FrameEntry{Entry::Item, "Columns groups"},
    FrameEntry{Entry::Item, "Foundations columns necks groups"},
    FrameEntry{Entry::Item, "Foundations groups"},
    FrameEntry{Entry::Menu, "Help"},
    FrameEntry{Entry::Item, "Contents"},
    FrameEntry{Entry::Item, "&Input data"},
    FrameEntry{Entry::Item, "&Graphics"},
    FrameEntry{Entry::Item, "&Settings"},
    FrameEntry{Entry::Item, "Steel &quantities"},
    FrameEntry{Entry::Item, "&Report"},
};

constexpr std::string_view kHelpKey = "HELP";
constexpr std::string_view kHelpViewerName = "HelpViewer";
constexpr const char* kGeometryFileName = "orvak-window.ini";
/// The frame is sized to the screen less 410 twips, 27 pixels at 15 twips a pixel.
constexpr int kScreenMarginPx = 27;
constexpr int kTwipsPerPixel = 15;
constexpr int kUiPointSize = 10;
/// How long the status bar shows a save report and the count of projects found.
constexpr int kSavedMessageMs = 5000;
constexpr int kProjectListMessageMs = 8000;

/// The program's icon, drawn rather than shipped: the initial on the frame's blue.
QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0x2f, 0x5f, 0x9e));
        painter.drawRoundedRect(QRectF(0.5, 0.5, size - 1.0, size - 1.0), size / 6.0, size / 6.0);
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setBold(true);
        font.setPixelSize(size * 3 / 4);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(QRect(0, 0, size, size), Qt::AlignCenter, QStringLiteral("O"));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

QString fromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A path reads left to right also inside a Hebrew sentence: it is isolated as one
/// left-to-right run, so that its leading "/" stays in front.
QString leftToRight(const QString& text) {
    return QChar(0x2066) + text + QChar(0x2069);
}

bool isFile(const fs::path& path) {
    std::error_code ec;
    return !path.empty() && fs::is_regular_file(path, ec);
}

QString latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

/// The action of a menu or of the menu bar under a point of it; nullptr elsewhere.
QAction* actionUnder(QObject* bar, const QPoint& at) {
    if (auto* drop = qobject_cast<QMenu*>(bar)) {
        return drop->actionAt(at);
    }
    if (auto* menuBar = qobject_cast<QMenuBar*>(bar)) {
        return menuBar->actionAt(at);
    }
    return nullptr;
}

} // namespace

MdiMain::MdiMain(shell::ShellState& shell, std::span<const MenuItem> items, QWidget* parent)
    : QMainWindow(parent), m_shell(shell), m_items(items), m_mdi(new QMdiArea(this)),
      m_openlib(std::make_unique<shell::forms::Openlib>(shell, this)),
      m_projectsFolderLabel(new QLabel(this)), m_projectLabel(new QLabel(this)),
      m_floorLabel(new QLabel(this)), m_explorer(new ProjectExplorer(shell, this)),
      m_designRun(new BeamDesignRun(shell, this)) {
    m_shell.loading = true;
    setObjectName(latin1(m_shell.frameKey));
    applyFonts();
    setWindowIcon(programIcon());

    m_mdi->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdi->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // Forms that a form opens beside itself are heard as those of the menu.
    connect(m_mdi, &QMdiArea::subWindowActivated, this,
            [this](QMdiSubWindow* sub) { hearForm(sub ? sub->widget() : nullptr); });
    setCentralWidget(m_mdi);
    // Projects folder | project path, each in its own field of the status bar.
    m_projectsFolderLabel->setContentsMargins(4, 0, 8, 0);
    m_projectLabel->setContentsMargins(8, 0, 4, 0);
    auto* divider = new QFrame(this);
    divider->setFrameShape(QFrame::VLine);
    divider->setFrameShadow(QFrame::Sunken);
    statusBar()->addWidget(m_projectsFolderLabel, 1);
    statusBar()->addWidget(divider);
    statusBar()->addWidget(m_projectLabel, 2);
    // The floor the beam and column forms work on.
    m_floorLabel->setObjectName(QStringLiteral("CurrentFloor"));
    m_floorLabel->setContentsMargins(8, 0, 4, 0);
    auto* floorDivider = new QFrame(this);
    floorDivider->setFrameShape(QFrame::VLine);
    floorDivider->setFrameShadow(QFrame::Sunken);
    statusBar()->addWidget(floorDivider);
    statusBar()->addWidget(m_floorLabel, 1);
    floors::forms::chooseDefaultFloor(m_shell);
    addDockWidget(Qt::LeftDockWidgetArea, m_explorer);
    connect(m_explorer, &ProjectExplorer::sheetChosen, this,
            [this](const std::filesystem::path& sheet) { openSheet(sheet); });
    connect(m_explorer, &ProjectExplorer::beamChosen, this, [this](int floor, int number) {
        if (auto* form =
                qobject_cast<beams::forms::BmDesign*>(openForm(QStringLiteral("BmDesign")))) {
            form->chooseBeam(floor, number);
        }
    });
    connect(m_explorer, &ProjectExplorer::columnGroupChosen, this, [this](int floor, int number) {
        if (auto* form =
                qobject_cast<columns::forms::ClGroups*>(openForm(QStringLiteral("ClGroups")))) {
            if (form->showLevel(columns::ColumnLevel{floor}) && number > 0) {
                form->chooseGroup(number);
            }
        }
    });
    connect(m_explorer, &ProjectExplorer::footingGroupChosen, this, [this](int number) {
        if (auto* form =
                qobject_cast<footings::forms::FtGroups*>(openForm(QStringLiteral("FtGroups")))) {
            form->chooseGroup(number);
        }
    });
    connect(m_explorer, &ProjectExplorer::designFloorRequested, this,
            [this](int floor) { designFloor(floor); });
    connect(m_designRun, &BeamDesignRun::finished, m_explorer, &ProjectExplorer::refresh);
    buildMenus();
    m_openlib->setLeaveProjectCheck([this] { return closeChildWindows(); });

    ReadAllPrompts();
    restoreWindowGeometry();
    if (m_shell.screenWidthTwips > 0) {
        m_shell.workAreaHeightTwips =
            static_cast<std::int16_t>(height() * kTwipsPerPixel - m_shell.toolAreaHeightTwips - 50);
    }
    openParameterFile();
    m_shell.loading = false;
}

MdiMain::~MdiMain() = default;

void MdiMain::applyFonts() {
    // The program's faces: a proportional face for captions and buttons, a fixed-width face
    // for what the user types and for listings. DejaVu carries the Hebrew letters as well.
    QFont captions(QStringLiteral("DejaVu Sans"), kUiPointSize);
    QApplication::setFont(captions);
    QFont fixed(QStringLiteral("DejaVu Sans Mono"), kUiPointSize);
    fixed.setStyleHint(QFont::Monospace);
    fixed.setFixedPitch(true);
    QApplication::setFont(fixed, "QLineEdit");
    QApplication::setFont(fixed, "QPlainTextEdit");
    QApplication::setFont(fixed, "QTextEdit");
}

void MdiMain::buildMenus() {
    // The greyed items tell why when the mouse rests on them: in a tooltip, and in the
    // status bar, which Qt leaves alone for a disabled item.
    menuBar()->installEventFilter(this);
    QMenu* current = nullptr;
    QMenu* submenu = nullptr;
    ItemPlace submenuPlace{};
    int menuNumber = -1;
    for (std::size_t i = 0; i < kFrameEntries.size(); ++i) {
        const FrameEntry& entry = kFrameEntries[i];
        const QString caption = latin1(entry.caption);
        const bool nextIsSubItem =
            i + 1 < kFrameEntries.size() && kFrameEntries[i + 1].kind == Entry::SubItem;
        QAction* action = nullptr;
        std::optional<ItemPlace> place;
        switch (entry.kind) {
        case Entry::Menu: {
            ++menuNumber;
            const auto menu = static_cast<MainMenu>(menuNumber);
            const bool hasItems =
                i + 1 < kFrameEntries.size() && kFrameEntries[i + 1].kind != Entry::Menu;
            if (hasItems) {
                current = menuBar()->addMenu(caption);
                current->setToolTipsVisible(true);
                current->installEventFilter(this);
                m_menus[static_cast<std::size_t>(menuNumber)] = current;
                action = current->menuAction();
            } else {
                // A menu-bar entry that opens its form at once (Graphics).
                current = nullptr;
                action = menuBar()->addAction(caption);
                place = ItemPlace{menu, kMenuBarEntry, kNoSubItem};
                connect(action, &QAction::triggered, this,
                        [this, menu] { open(menu, kMenuBarEntry); });
            }
            m_menuActions[static_cast<std::size_t>(menuNumber)] = action;
            submenu = nullptr;
            break;
        }
        case Entry::Separator:
            action = current->addSeparator();
            break;
        case Entry::Item: {
            const auto menu = static_cast<MainMenu>(menuNumber);
            const int index = static_cast<int>(current->actions().size());
            place = ItemPlace{menu, index, kNoSubItem};
            if (nextIsSubItem) {
                submenu = current->addMenu(caption);
                submenu->setToolTipsVisible(true);
                submenu->installEventFilter(this);
                action = submenu->menuAction();
                submenuPlace = *place;
                if (menu == MainMenu::Setting) {
                    m_plotterMenu = submenu;
                }
            } else {
                action = current->addAction(caption);
                connect(action, &QAction::triggered, this,
                        [this, menu, index] { open(menu, index); });
            }
            break;
        }
        case Entry::SubItem: {
            const ItemPlace sub{submenuPlace.menu, submenuPlace.item,
                                static_cast<int>(submenu->actions().size())};
            action = submenu->addAction(caption);
            place = sub;
            connect(action, &QAction::triggered, this,
                    [this, sub] { open(sub.menu, sub.item, sub.subItem); });
            break;
        }
        }
        m_captionActions.push_back(action);
        m_captionPlaces.push_back(place);
    }
}

QAction* MdiMain::menuAction(MainMenu menu) const {
    return m_menuActions.at(static_cast<std::size_t>(menu));
}

QMenu* MdiMain::menu(MainMenu menu) const {
    return m_menus.at(static_cast<std::size_t>(menu));
}

QAction* MdiMain::menuItem(MainMenu which, int index) const {
    const QMenu* drop = menu(which);
    if (!drop || index < 0 || index >= drop->actions().size()) {
        return nullptr;
    }
    return drop->actions().at(index);
}

QAction* MdiMain::plotterItem(int index) const {
    if (!m_plotterMenu || index < 0 || index >= m_plotterMenu->actions().size()) {
        return nullptr;
    }
    return m_plotterMenu->actions().at(index);
}

const MenuItem* MdiMain::findItem(MainMenu menu, int item, int subItem) const {
    for (const MenuItem& row : m_items) {
        if (row.menu == menu && row.item == item && row.subItem == subItem) {
            return &row;
        }
    }
    return nullptr;
}

void MdiMain::updateMenuItems() {
    const QString notInThisVersion = ui::generalPrompt(m_shell, ui::General::NotAvailable);
    const QString noProject = ui::generalPrompt(m_shell, ui::General::NoProject);
    for (std::size_t i = 0; i < m_captionActions.size(); ++i) {
        if (!m_captionPlaces[i]) {
            continue;
        }
        const ItemPlace& place = *m_captionPlaces[i];
        QAction* action = m_captionActions[i];
        QString reason;
        if (action->menu() != nullptr) {
            // An item with a sub-menu is there when one of its sub-items is.
            const bool any = std::any_of(m_items.begin(), m_items.end(), [&](const MenuItem& row) {
                return row.menu == place.menu && row.item == place.item;
            });
            reason = any ? QString() : notInThisVersion;
        } else if (const MenuItem* row = findItem(place.menu, place.item, place.subItem)) {
            reason = row->needsProject && !m_shell.hasProject() ? noProject : QString();
        } else {
            reason = notInThisVersion;
        }
        action->setEnabled(reason.isEmpty());
        action->setToolTip(reason);
        action->setStatusTip(reason);
    }
}

bool MdiMain::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseMove: {
        const QAction* action =
            actionUnder(watched, static_cast<QMouseEvent*>(event)->position().toPoint());
        if (action && !action->isEnabled() && !action->statusTip().isEmpty()) {
            m_shownReason = action->statusTip();
            statusBar()->showMessage(m_shownReason);
        } else if (!m_shownReason.isEmpty()) {
            if (statusBar()->currentMessage() == m_shownReason) {
                statusBar()->clearMessage();
            }
            m_shownReason.clear();
        }
        break;
    }
    case QEvent::Leave:
    case QEvent::Hide:
        if (!m_shownReason.isEmpty() && statusBar()->currentMessage() == m_shownReason) {
            statusBar()->clearMessage();
        }
        m_shownReason.clear();
        break;
    case QEvent::ToolTip:
        // The drop-downs show their items' tooltips themselves; the menu bar does not.
        if (qobject_cast<QMenuBar*>(watched)) {
            const auto* help = static_cast<QHelpEvent*>(event);
            const QAction* action = actionUnder(watched, help->pos());
            if (action && !action->statusTip().isEmpty()) {
                QToolTip::showText(help->globalPos(), action->statusTip(), menuBar(),
                                   menuBar()->actionGeometry(const_cast<QAction*>(action)));
                return true;
            }
        }
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}

void MdiMain::ReadAllPrompts() {
    try {
        shell::loadShellPrompts(m_shell);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
    const shell::PromptList prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), shell::kMainFramePromptKey, 2,
                           kFrameEntries.size());
    for (std::size_t i = 0; i < kFrameEntries.size(); ++i) {
        if (kFrameEntries[i].kind == Entry::Separator) {
            continue;
        }
        m_captionActions[i]->setText(
            ui::formPrompt(prompts, i + 1, kFrameEntries[i].caption, m_shell.language()));
    }
    // Hebrew (and any language but English) reads from right to left: the whole application
    // is mirrored, menus, forms and grids alike.
    QApplication::setLayoutDirection(m_shell.rightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    m_openlib->readPrompts();
    m_explorer->readPrompts();
    refreshProjectDisplay();
    reloadChildPrompts();
}

void MdiMain::reloadChildPrompts() {
    for (QMdiSubWindow* sub : m_mdi->subWindowList()) {
        QWidget* form = sub->widget();
        if (form && form->metaObject()->indexOfMethod("readPrompts()") >= 0) {
            QMetaObject::invokeMethod(form, "readPrompts");
        }
    }
}

QString MdiMain::captionText() const {
    QString caption = fromUtf8(m_shell.title);
    if (m_shell.hasProject()) {
        caption += QStringLiteral(" - ") + fromUtf8(m_shell.projectName);
    }
    return caption;
}

QString MdiMain::projectsFolderText() const {
    const QString folder = m_shell.last.projectsFolder.empty()
                               ? ui::generalPrompt(m_shell, ui::General::NoneShown)
                               : leftToRight(fromUtf8(m_shell.last.projectsFolder));
    return ui::generalPrompt(m_shell, ui::General::ProjectsFolder) + QLatin1Char(' ') + folder;
}

QString MdiMain::projectText() const {
    const QString project = m_shell.hasProject()
                                ? leftToRight(fromUtf8(m_shell.last.projectPath))
                                : ui::generalPrompt(m_shell, ui::General::NoneShown);
    return ui::generalPrompt(m_shell, ui::General::Project) + QLatin1Char(' ') + project;
}

void MdiMain::refreshProjectDisplay() {
    setWindowTitle(captionText());
    m_projectsFolderLabel->setText(projectsFolderText());
    m_projectLabel->setText(projectText());
    m_floorLabel->setText(floors::forms::currentFloorText(m_shell));
    m_explorer->refresh();
    updateMenuItems();
}

void MdiMain::tell(const QString& message) const {
    if (m_messageHook) {
        m_messageHook(message);
    } else {
        QMessageBox::warning(const_cast<MdiMain*>(this), windowTitle(), message);
    }
}

void MdiMain::showSavedMessage(const QString& message) {
    statusBar()->showMessage(message, kSavedMessageMs);
    // A floor form may have added, chosen or deleted the current floor.
    floors::forms::chooseDefaultFloor(m_shell);
    m_floorLabel->setText(floors::forms::currentFloorText(m_shell));
    m_explorer->refresh();
}

void MdiMain::showStartupWarnings() {
    for (const auto& warning : m_shell.warnings) {
        tell(fromUtf8(warning));
    }
    m_shell.warnings.clear();
}

QWidget* MdiMain::open(MainMenu menu, int item, int subItem) {
    const MenuItem* row = findItem(menu, item, subItem);
    if (row == nullptr) {
        return nullptr;
    }
    const QString name = latin1(row->objectName);
    if (!name.isEmpty()) {
        if (QMdiSubWindow* open = findChildWindow(name)) {
            m_mdi->setActiveSubWindow(open);
            return open->widget();
        }
    }
    if (row->needsProject && !m_shell.hasProject()) {
        tell(ui::generalPrompt(m_shell, ui::General::NoProject));
        return nullptr;
    }
    QWidget* form = row->open(*this);
    if (form == nullptr) {
        return nullptr;
    }
    // The name is what keeps a second window of the form from opening.
    ORVAK_ASSERT(form->objectName() == name && !name.isEmpty());
    addChildWindow(form);
    return form;
}

QWidget* MdiMain::openForm(const QString& objectName) {
    for (const MenuItem& row : m_items) {
        if (!row.objectName.empty() &&
            latin1(row.objectName).compare(objectName, Qt::CaseInsensitive) == 0) {
            return open(row.menu, row.item, row.subItem);
        }
    }
    return nullptr;
}

QStringList MdiMain::formNames() const {
    QStringList names;
    for (const MenuItem& row : m_items) {
        if (!row.objectName.empty()) {
            names << latin1(row.objectName);
        }
    }
    return names;
}

void MdiMain::chooseProjectsFolder() {
    if (!m_openlib->chooseProjectsFolder()) {
        return;
    }
    try {
        shell::saveLastProjectState(m_shell);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
    refreshProjectDisplay();
    statusBar()->showMessage(m_openlib->projectListSummary(), kProjectListMessageMs);
}

void MdiMain::newProject() {
    if (m_openlib->newProject()) {
        projectChanged();
    }
}

void MdiMain::openProject() {
    if (m_openlib->openProject()) {
        projectChanged();
    }
}

void MdiMain::projectChanged() {
    showStartupWarnings();
    openParameterFile();
    floors::forms::chooseDefaultFloor(m_shell);
    try {
        shell::saveLastProjectState(m_shell);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
    refreshProjectDisplay();
}

void MdiMain::openParameterFile() {
    m_parameters.close();
    if (!m_shell.hasProject()) {
        return;
    }
    try {
        m_parameters.open(m_shell.projectPath());
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
}

QMdiSubWindow* MdiMain::findChildWindow(const QString& objectName) const {
    for (QMdiSubWindow* sub : m_mdi->subWindowList()) {
        if (sub->widget() && sub->widget()->objectName() == objectName) {
            return sub;
        }
    }
    return nullptr;
}

void MdiMain::keepInside(QMdiSubWindow* sub) const {
    // The area places a new window itself (at its leading corner, mirrored for Hebrew); keep
    // the whole window inside the visible work area.
    const QSize room = m_mdi->viewport()->size();
    if (!room.isValid() || room.isEmpty()) {
        return;
    }
    QRect placed = sub->geometry();
    if (placed.right() > room.width() - 1) {
        placed.moveRight(room.width() - 1);
    }
    if (placed.bottom() > room.height() - 1) {
        placed.moveBottom(room.height() - 1);
    }
    placed.moveTopLeft(QPoint(std::max(placed.left(), 0), std::max(placed.top(), 0)));
    sub->setGeometry(placed);
}

void MdiMain::hearForm(QWidget* form) {
    // Once per form, whoever opened it: the menu, or another form beside it.
    if (form == nullptr || form->property("orvakHeard").toBool()) {
        return;
    }
    form->setProperty("orvakHeard", true);
    if (form->metaObject()->indexOfSignal("saved(QString)") >= 0) {
        connect(form, SIGNAL(saved(QString)), this, SLOT(showSavedMessage(QString)));
    }
    if (form->metaObject()->indexOfSignal("languageChanged()") >= 0) {
        connect(form, SIGNAL(languageChanged()), this, SLOT(ReadAllPrompts()));
    }
}

QMdiSubWindow* MdiMain::addChildWindow(QWidget* form) {
    hearForm(form);
    QMdiSubWindow* sub = m_mdi->addSubWindow(form);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    form->show();
    // Room for the whole form where the work area allows it.
    const QSize wanted = sub->sizeHint();
    const QSize room = m_mdi->viewport()->size();
    if (room.isValid() && !room.isEmpty()) {
        sub->resize(std::min(wanted.width(), room.width()),
                    std::min(wanted.height(), room.height()));
    }
    sub->show();
    keepInside(sub);
    m_mdi->setActiveSubWindow(sub);
    return sub;
}

bool MdiMain::closeChildWindows() {
    for (QMdiSubWindow* sub : m_mdi->subWindowList()) {
        if (!sub->close()) {
            m_mdi->setActiveSubWindow(sub);
            return false;
        }
    }
    return true;
}

void MdiMain::designFloor(int floor) {
    QStringList schemes;
    for (int scheme = 1; scheme <= 3; ++scheme) {
        const std::string_view name = beams::caseSchemeName(scheme);
        schemes << QStringLiteral("%1: %2").arg(scheme).arg(
            QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())));
    }
    bool chosen = false;
    const QString scheme = QInputDialog::getItem(this, windowTitle(), QString(), schemes,
                                                 beams::kDefaultCaseScheme - 1, false, &chosen);
    if (chosen) {
        startFloorDesign(floor, schemes.indexOf(scheme) + 1);
    }
}

BeamDesignRun* MdiMain::startFloorDesign(int floor, int scheme) {
    if (m_messageHook) {
        m_designRun->setMessageHook(m_messageHook);
    }
    m_designRun->start(floor, scheme);
    return m_designRun;
}

ui::EditAsc* MdiMain::openSheet(const std::filesystem::path& sheet) {
    const QString name = fromUtf8(sheet.filename().string());
    if (QMdiSubWindow* open = findChildWindow(name)) {
        m_mdi->setActiveSubWindow(open);
        return qobject_cast<ui::EditAsc*>(open->widget());
    }
    auto* viewer = new ui::EditAsc;
    viewer->setObjectName(name);
    viewer->setMessageHook([this](const QString& message) { tell(message); });
    if (!viewer->openFile(fromUtf8(sheet.string()), m_shell.language())) {
        delete viewer;
        return nullptr;
    }
    viewer->setActionTexts(ui::generalPrompt(m_shell, ui::General::Print),
                           ui::generalPrompt(m_shell, ui::General::SaveAsPdf),
                           ui::generalPrompt(m_shell, ui::General::Exit));
    viewer->setWindowTitle(name);
    ui::setSheetTitleBlock(viewer, m_shell, fromUtf8(sheet.stem().string()));
    QMdiSubWindow* sub = addChildWindow(viewer);
    const QSize room = m_mdi->viewport()->size();
    sub->resize(std::min(760, room.width()), std::min(560, room.height()));
    keepInside(sub);
    return viewer;
}

ui::EditAsc* MdiMain::openHelp(int index) {
    // The help text follows the prompt-file rule (language folder, HELP & letter & ".TXT"),
    // falling back to the English text.
    std::string language = m_shell.language();
    fs::path file = shell::promptFilePath(m_shell.programFolder, language, kHelpKey);
    if (!isFile(file)) {
        language = "English";
        file = shell::promptFilePath(m_shell.programFolder, language, kHelpKey);
    }
    if (!isFile(file)) {
        tell(ui::generalPrompt(m_shell, ui::General::HelpMissing));
        return nullptr;
    }

    ui::EditAsc* viewer = nullptr;
    if (QMdiSubWindow* open = findChildWindow(latin1(kHelpViewerName))) {
        viewer = qobject_cast<ui::EditAsc*>(open->widget());
        m_mdi->setActiveSubWindow(open);
    } else {
        viewer = new ui::EditAsc;
        viewer->setObjectName(latin1(kHelpViewerName));
        viewer->setMessageHook([this](const QString& message) { tell(message); });
        if (!viewer->openFile(fromUtf8(file.string()), language)) {
            delete viewer;
            return nullptr;
        }
        viewer->setActionTexts(ui::generalPrompt(m_shell, ui::General::Print),
                               ui::generalPrompt(m_shell, ui::General::SaveAsPdf),
                               ui::generalPrompt(m_shell, ui::General::Exit));
        viewer->setWindowTitle(fromUtf8(m_shell.title) + QStringLiteral(" - ") +
                               ui::generalPrompt(m_shell, ui::General::Help));
        QMdiSubWindow* sub = addChildWindow(viewer);
        const QSize room = m_mdi->viewport()->size();
        sub->resize(std::min(680, room.width()), std::min(520, room.height()));
        keepInside(sub);
    }

    // Items after Contents open the text at their section, whose heading starts "<index>. ".
    auto* text = viewer->findChild<QPlainTextEdit*>();
    if (text) {
        int line = 0;
        if (index > 0) {
            const QString heading = QString::number(index) + QStringLiteral(". ");
            for (QTextBlock block = text->document()->begin(); block.isValid();
                 block = block.next()) {
                if (block.text().startsWith(heading)) {
                    line = block.blockNumber();
                    break;
                }
            }
        }
        QTextCursor cursor(text->document()->findBlockByNumber(line));
        text->setTextCursor(cursor);
        text->verticalScrollBar()->setValue(line);
    }
    return viewer;
}

QString MdiMain::geometryFile() const {
    return fromUtf8((m_shell.generalFolder() / kGeometryFileName).string());
}

void MdiMain::restoreWindowGeometry() {
    QSettings settings(geometryFile(), QSettings::IniFormat);
    if (settings.contains(QStringLiteral("MainWindow/geometry")) &&
        restoreGeometry(settings.value(QStringLiteral("MainWindow/geometry")).toByteArray())) {
        restoreState(settings.value(QStringLiteral("MainWindow/state")).toByteArray());
        return;
    }
    // First start: at the screen's corner, as large as the screen less a small margin.
    if (const QScreen* screen = QApplication::primaryScreen()) {
        const QRect available = screen->availableGeometry();
        move(available.topLeft());
        resize(available.width() - kScreenMarginPx, available.height() - kScreenMarginPx);
    }
}

void MdiMain::saveWindowGeometry() const {
    QSettings settings(geometryFile(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("MainWindow/geometry"), saveGeometry());
    settings.setValue(QStringLiteral("MainWindow/state"), saveState());
    settings.sync();
}

void MdiMain::closeEvent(QCloseEvent* event) {
    if (m_closed) {
        event->accept();
        return;
    }
    // Every form may still ask to save its changes; one that stays keeps the program open.
    if (!closeChildWindows()) {
        event->ignore();
        return;
    }
    m_parameters.close();
    try {
        shell::closeProject(m_shell);
    } catch (const std::exception& e) {
        tell(QString::fromUtf8(e.what()));
    }
    try {
        shell::saveLastProjectState(m_shell);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
    }
    if (m_remembersGeometry) {
        saveWindowGeometry();
    }
    m_closed = true;
    event->accept();
}

} // namespace orvak::app
