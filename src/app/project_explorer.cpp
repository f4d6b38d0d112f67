// The project explorer: the floors and beams of the project with their design states, and the
// sheets in the project folder.
#include "app/project_explorer.h"

#include <QFont>
#include <QHeaderView>
#include <QMenu>
#include <QSet>
#include <QTreeWidget>
#include <algorithm>
#include <map>
#include <tuple>

#include "bars/steel_store.h"
#include "beams/beam_job.h"
#include "beams/beam_record.h"
#include "beams/beam_report.h"
#include "core/error.h"
#include "core/file_util.h"
#include "floors/floors.h"
#include "footings/footing_records.h"
#include "jobs/column_design_job.h"
#include "jobs/design_job.h"
#include "jobs/footing_design_job.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace fs = std::filesystem;

namespace orvak::app {

namespace {

constexpr std::string_view kPromptKey = "EXPLORER";
// Prompts of EXPLORER<letter>.TXT (prompt n on line n + 1).
constexpr std::size_t kCaption = 1;
constexpr std::size_t kElementHeading = 2;
constexpr std::size_t kStateHeading = 3;
constexpr std::size_t kWhenHeading = 4;
constexpr std::size_t kDesigned = 5;
constexpr std::size_t kChecksFailed = 6;
constexpr std::size_t kNotDesigned = 7;
constexpr std::size_t kNotYet = 8;
constexpr std::size_t kSheets = 9;
constexpr std::size_t kFloor = 10;
constexpr std::size_t kNoProject = 11;
constexpr std::size_t kDesignFloor = 12;
constexpr std::size_t kOpenBeam = 18;
constexpr std::size_t kOpenListing = 19;
constexpr std::size_t kColumnGroups = 20;
constexpr std::size_t kFootingLevel = 21;
constexpr std::size_t kOpenGroups = 22;
constexpr std::size_t kFootingGroups = 23;
constexpr std::size_t kOpenFootings = 24;
constexpr std::size_t kPromptCount = 24;
// The floor number of a floor's item.
constexpr int kFloorRole = Qt::UserRole + 2;
// The floor and the number of a beam's item.
constexpr int kBeamFloorRole = Qt::UserRole + 3;
constexpr int kBeamRole = Qt::UserRole + 4;
// The level (floor, 0 for the footing level) and the number of a column group's item.
constexpr int kGroupLevelRole = Qt::UserRole + 5;
constexpr int kGroupRole = Qt::UserRole + 6;
// The record number of a footing group's item.
constexpr int kFootingRole = Qt::UserRole + 7;

// Where an item leads: the sheet a double click opens, kept on the item.
constexpr int kSheetRole = Qt::UserRole;
// What an item stands for, so that a refresh keeps the expanded ones expanded.
constexpr int kKeyRole = Qt::UserRole + 1;

bool isSheet(const fs::path& file) {
    const std::string ext = file.extension().string();
    return (ext.size() == 7 && ext.rfind(".Analy", 0) == 0 && ext[6] >= '0' && ext[6] <= '9') ||
           ext == jobs::kColumnSheetExt || ext == beams::kReportExt;
}

} // namespace

ProjectExplorer::ProjectExplorer(shell::ShellState& shell, QWidget* parent)
    : QDockWidget(parent), m_shell(shell), m_tree(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("ProjectExplorer"));
    // Not closable: the menu bar has no item to bring it back.
    setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    m_tree->setObjectName(QStringLiteral("ProjectTree"));
    m_tree->setColumnCount(3);
    m_tree->setUniformRowHeights(true);
    // Every column as wide as its texts: a floor's and a beam's names are what the engineer
    // looks for, and the dock scrolls sideways when it is narrow.
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tree->setIndentation(14);
    setWidget(m_tree);
    setMinimumWidth(360);
    connect(m_tree, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { activated(item); });
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tree, &QTreeWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { showMenu(at); });
    readPrompts();
}

QString ProjectExplorer::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void ProjectExplorer::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Project"));
    m_tree->setHeaderLabels({prompt(kElementHeading, "Element"), prompt(kStateHeading, "State"),
                             prompt(kWhenHeading, "Designed on")});
    refresh();
}

void ProjectExplorer::refresh() {
    QSet<QString> expanded;
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        if (m_tree->topLevelItem(i)->isExpanded()) {
            expanded.insert(m_tree->topLevelItem(i)->data(0, kKeyRole).toString());
        }
    }
    m_tree->clear();
    if (!m_shell.hasProject()) {
        auto* none = new QTreeWidgetItem(m_tree, {prompt(kNoProject, "No project is open.")});
        none->setFlags(Qt::ItemIsEnabled);
        return;
    }
    const fs::path project = m_shell.projectPath();
    const auto& language = m_shell.language();

    StateMap states;
    for (bars::DesignState& s : jobs::recordedDesignStates(project)) {
        states[{s.kind, s.floor, s.number}] = std::move(s);
    }

    std::vector<floors::Floor> floorList;
    try {
        floorList = floors::readFloors(project);
    } catch (const FileError& e) {
        new QTreeWidgetItem(m_tree, {QString::fromUtf8(e.what())});
    }
    for (const floors::Floor& f : floorList) {
        QString caption = prompt(kFloor, "Floor %1").arg(f.number);
        if (!f.name.empty()) {
            caption += QStringLiteral(" - ") + ui::toQString(f.name, language);
        }
        auto* floorItem = new QTreeWidgetItem(m_tree, {caption});
        const QString key = QStringLiteral("floor %1").arg(f.number);
        floorItem->setData(0, kKeyRole, key);
        floorItem->setData(0, kFloorRole, static_cast<int>(f.number));
        if (f.number == m_shell.currentFloor) {
            QFont bold = floorItem->font(0);
            bold.setBold(true);
            floorItem->setFont(0, bold);
        }
        std::vector<beams::BeamRecord> beamList;
        try {
            beamList = beams::readBeamFile(project, f.number);
        } catch (const FileError& e) {
            new QTreeWidgetItem(floorItem, {QString::fromUtf8(e.what())});
        }
        for (const beams::BeamRecord& b : beamList) {
            auto* beamItem = new QTreeWidgetItem(
                floorItem,
                {QStringLiteral("%1  %2").arg(b.number).arg(ui::toQString(b.name, language))});
            beamItem->setData(0, kBeamFloorRole, static_cast<int>(f.number));
            beamItem->setData(0, kBeamRole, static_cast<int>(b.number));
            const auto state = states.find({"beam", b.floor, b.number});
            if (state == states.end()) {
                beamItem->setText(StateColumn, prompt(kNotYet, "not designed yet"));
                continue;
            }
            const bars::DesignState& s = state->second;
            showState(beamItem, s);
            const fs::path flexure =
                project / (beams::listingBaseName(b) + std::string(beams::kFlexureListingExt));
            if (s.status != bars::DesignState::Status::NotDesigned) {
                beamItem->setData(0, kSheetRole, QString::fromStdString(flexure.string()));
            }
        }
        addColumnGroups(floorItem, columns::ColumnLevel{f.number}, states, expanded);
        floorItem->setExpanded(expanded.contains(key) || f.number == m_shell.currentFloor);
    }
    if (!floorList.empty()) {
        auto* footing = new QTreeWidgetItem(m_tree, {prompt(kFootingLevel, "Footing level")});
        footing->setData(0, kKeyRole, QStringLiteral("footing"));
        addColumnGroups(footing, columns::ColumnLevel{0}, states, expanded);
        addFootingGroups(footing, states, expanded);
        footing->setExpanded(expanded.contains(QStringLiteral("footing")));
    }

    // The sheets of the project folder, by name.
    std::vector<fs::path> sheets;
    std::error_code ec;
    for (auto it = fs::directory_iterator(project, ec); !ec && it != fs::directory_iterator();
         it.increment(ec)) {
        if (it->is_regular_file(ec) && isSheet(it->path())) {
            sheets.push_back(it->path());
        }
    }
    std::sort(sheets.begin(), sheets.end());
    auto* sheetsItem = new QTreeWidgetItem(
        m_tree, {prompt(kSheets, "Sheets") + QStringLiteral(" (%1)").arg(sheets.size())});
    sheetsItem->setData(0, kKeyRole, QStringLiteral("sheets"));
    for (const fs::path& sheet : sheets) {
        auto* item =
            new QTreeWidgetItem(sheetsItem, {QString::fromStdString(sheet.filename().string())});
        item->setData(0, kSheetRole, QString::fromStdString(sheet.string()));
    }
    sheetsItem->setExpanded(expanded.contains(QStringLiteral("sheets")));
}

void ProjectExplorer::showState(QTreeWidgetItem* item, const bars::DesignState& s) {
    switch (s.status) {
    case bars::DesignState::Status::Designed:
        item->setText(StateColumn, prompt(kDesigned, "designed"));
        break;
    case bars::DesignState::Status::ChecksFailed:
        item->setText(StateColumn, prompt(kChecksFailed, "checks failed"));
        item->setForeground(StateColumn, QColor(0xB0, 0x00, 0x00));
        break;
    case bars::DesignState::Status::NotDesigned:
        item->setText(StateColumn, prompt(kNotDesigned, "not designed"));
        item->setForeground(StateColumn, QColor(0xB0, 0x00, 0x00));
        break;
    }
    // A date reads left to right in a right-to-left window too.
    item->setText(WhenColumn, QChar(0x200E) + QString::fromStdString(s.when));
    if (!s.failures.empty()) {
        item->setToolTip(StateColumn, ui::toQString(s.failures, m_shell.language()));
    }
}

void ProjectExplorer::addColumnGroups(QTreeWidgetItem* parent, columns::ColumnLevel level,
                                      const StateMap& states, const QSet<QString>& expanded) {
    const fs::path project = m_shell.projectPath();
    std::vector<columns::ColumnGroup> groups;
    try {
        groups = columns::readGroups(project, level);
    } catch (const FileError& e) {
        new QTreeWidgetItem(parent, {QString::fromUtf8(e.what())});
        return;
    }
    if (groups.empty()) {
        return;
    }
    auto* node = new QTreeWidgetItem(parent, {prompt(kColumnGroups, "Column groups") +
                                              QStringLiteral(" (%1)").arg(groups.size())});
    const QString key = QStringLiteral("groups %1").arg(level.floor);
    node->setData(0, kKeyRole, key);
    node->setData(0, kGroupLevelRole, level.floor);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const int number = static_cast<int>(i + 1);
        auto* item =
            new QTreeWidgetItem(node, {QStringLiteral("%1  %2").arg(number).arg(
                                          ui::toQString(groups[i].name, m_shell.language()))});
        item->setData(0, kGroupLevelRole, level.floor);
        item->setData(0, kGroupRole, number);
        const auto state = states.find({std::string(jobs::kColumnGroupKind), level.floor, number});
        if (state == states.end()) {
            item->setText(StateColumn, prompt(kNotYet, "not designed yet"));
            continue;
        }
        showState(item, state->second);
        if (state->second.status != bars::DesignState::Status::NotDesigned) {
            const jobs::ChosenGroup chosen{level, number, groups[i], {}};
            item->setData(
                0, kSheetRole,
                QString::fromStdString((project / jobs::columnSheetFileName(chosen)).string()));
        }
    }
    node->setExpanded(expanded.contains(key));
}

void ProjectExplorer::addFootingGroups(QTreeWidgetItem* parent, const StateMap& states,
                                       const QSet<QString>& expanded) {
    const fs::path project = m_shell.projectPath();
    std::vector<footings::StoredFootingGroup> groups;
    try {
        groups = footings::readFootingGroups(project);
    } catch (const FileError& e) {
        new QTreeWidgetItem(parent, {QString::fromUtf8(e.what())});
        return;
    }
    if (groups.empty()) {
        return;
    }
    auto* node = new QTreeWidgetItem(parent, {prompt(kFootingGroups, "Footing groups") +
                                              QStringLiteral(" (%1)").arg(groups.size())});
    const QString key = QStringLiteral("footings");
    node->setData(0, kKeyRole, key);
    for (const footings::StoredFootingGroup& g : groups) {
        auto* item =
            new QTreeWidgetItem(node, {QStringLiteral("%1  %2").arg(g.number).arg(
                                          ui::toQString(g.group.name, m_shell.language()))});
        item->setData(0, kFootingRole, g.number);
        const auto state = states.find({std::string(jobs::kFootingGroupKind), 0, g.number});
        if (state == states.end()) {
            item->setText(StateColumn, prompt(kNotYet, "not designed yet"));
            continue;
        }
        showState(item, state->second);
        if (state->second.status != bars::DesignState::Status::NotDesigned) {
            item->setData(
                0, kSheetRole,
                QString::fromStdString((project / jobs::footingSheetFileName(g.group)).string()));
        }
    }
    node->setExpanded(expanded.contains(key));
}

void ProjectExplorer::showMenu(const QPoint& at) {
    QTreeWidgetItem* item = m_tree->itemAt(at);
    if (item == nullptr) {
        return;
    }
    QMenu menu(this);
    if (item->data(0, kBeamRole).isValid()) {
        QAction* form = menu.addAction(prompt(kOpenBeam, "Open the beam form"));
        QAction* listing = menu.addAction(prompt(kOpenListing, "Open the listing"));
        const QString sheet = item->data(0, kSheetRole).toString();
        listing->setEnabled(!sheet.isEmpty());
        QAction* chosen = menu.exec(m_tree->viewport()->mapToGlobal(at));
        if (chosen == form) {
            emit beamChosen(item->data(0, kBeamFloorRole).toInt(),
                            item->data(0, kBeamRole).toInt());
        } else if (chosen == listing) {
            emit sheetChosen(fs::path(sheet.toStdString()));
        }
        return;
    }
    if (item->data(0, kFootingRole).isValid()) {
        QAction* form = menu.addAction(prompt(kOpenFootings, "Open the footing groups"));
        QAction* sheet = menu.addAction(prompt(kOpenListing, "Open the listing"));
        sheet->setEnabled(!item->data(0, kSheetRole).toString().isEmpty());
        QAction* chosen = menu.exec(m_tree->viewport()->mapToGlobal(at));
        if (chosen == form) {
            emit footingGroupChosen(item->data(0, kFootingRole).toInt());
        } else if (chosen == sheet) {
            emit sheetChosen(fs::path(item->data(0, kSheetRole).toString().toStdString()));
        }
        return;
    }
    if (item->data(0, kGroupLevelRole).isValid()) {
        QAction* form = menu.addAction(prompt(kOpenGroups, "Open the column groups"));
        QAction* sheet = nullptr;
        if (item->data(0, kGroupRole).isValid()) {
            sheet = menu.addAction(prompt(kOpenListing, "Open the listing"));
            sheet->setEnabled(!item->data(0, kSheetRole).toString().isEmpty());
        }
        QAction* chosen = menu.exec(m_tree->viewport()->mapToGlobal(at));
        if (chosen == form) {
            emit columnGroupChosen(item->data(0, kGroupLevelRole).toInt(),
                                   item->data(0, kGroupRole).toInt());
        } else if (chosen != nullptr && chosen == sheet) {
            emit sheetChosen(fs::path(item->data(0, kSheetRole).toString().toStdString()));
        }
        return;
    }
    if (!item->data(0, kFloorRole).isValid()) {
        return;
    }
    const int floor = item->data(0, kFloorRole).toInt();
    QAction* design = menu.addAction(prompt(kDesignFloor, "Design all beams of the floor"));
    design->setEnabled(item->childCount() > 0);
    if (menu.exec(m_tree->viewport()->mapToGlobal(at)) == design) {
        emit designFloorRequested(floor);
    }
}

void ProjectExplorer::activated(QTreeWidgetItem* item) {
    if (item != nullptr && item->data(0, kBeamRole).isValid()) {
        emit beamChosen(item->data(0, kBeamFloorRole).toInt(), item->data(0, kBeamRole).toInt());
        return;
    }
    if (item != nullptr && item->data(0, kFootingRole).isValid()) {
        emit footingGroupChosen(item->data(0, kFootingRole).toInt());
        return;
    }
    if (item != nullptr && item->data(0, kGroupRole).isValid()) {
        emit columnGroupChosen(item->data(0, kGroupLevelRole).toInt(),
                               item->data(0, kGroupRole).toInt());
        return;
    }
    const QString sheet = item ? item->data(0, kSheetRole).toString() : QString();
    if (!sheet.isEmpty()) {
        emit sheetChosen(fs::path(sheet.toStdString()));
    }
}

} // namespace orvak::app
