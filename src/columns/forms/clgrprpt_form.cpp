// ClGrpRpt: the groups of the chosen level, read from their file each time the level changes.
#include "columns/forms/clgrprpt_form.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "columns/forms/column_chart_view.h"
#include "columns/forms/slcclgrp_form.h"
#include "core/error.h"
#include "floors/floors.h"
#include "jobs/column_design_job.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::columns::forms {

namespace {

constexpr std::string_view kPromptKey = "CLGRPRPT";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kFootingCaption = 2;
constexpr std::size_t kLevelLabel = 3;
constexpr std::size_t kGroupLabel = 4;
constexpr std::size_t kFloorItem = 5;
constexpr std::size_t kFootingItem = 6;
constexpr std::size_t kChooseButton = 7;
constexpr std::size_t kSheetButton = 8;
constexpr std::size_t kChartButton = 9;
constexpr std::size_t kExitButton = 10;
constexpr std::size_t kNoGroup = 11;
constexpr std::size_t kNoSheet = 12;
constexpr std::size_t kNoChart = 13;
constexpr std::size_t kPromptCount = 13;

} // namespace

ClGrpRpt::ClGrpRpt(shell::ShellState& shell, bool footingLevel, QWidget* parent)
    : QWidget(parent), m_shell(shell),
      m_footingLevel(footingLevel), m_level{footingLevel ? 0 : shell.currentFloor},
      m_levelLabel(new QLabel(this)), m_groupLabel(new QLabel(this)),
      m_levelCombo(new QComboBox(this)), m_groupCombo(new QComboBox(this)),
      m_choose(new QPushButton(this)), m_sheet(new QPushButton(this)),
      m_chart(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(footingLevel ? QStringLiteral("FtClGrpRpt") : QStringLiteral("ClGrpRpt"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_levelCombo->setObjectName(QStringLiteral("LevelCombo"));
    m_groupCombo->setObjectName(QStringLiteral("GroupCombo"));
    m_choose->setObjectName(QStringLiteral("CmdChoose"));
    m_sheet->setObjectName(QStringLiteral("CmdSheet"));
    m_chart->setObjectName(QStringLiteral("CmdChart"));
    m_exit->setObjectName(QStringLiteral("CmdExit"));
    m_groupCombo->setMinimumContentsLength(24);
    m_levelLabel->setBuddy(m_levelCombo);
    m_groupLabel->setBuddy(m_groupCombo);

    auto* fields = new QFormLayout;
    fields->addRow(m_levelLabel, m_levelCombo);
    auto* groupRow = new QHBoxLayout;
    groupRow->addWidget(m_groupCombo, 1);
    groupRow->addWidget(m_choose);
    fields->addRow(m_groupLabel, groupRow);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_sheet);
    buttons->addWidget(m_chart);
    buttons->addStretch();
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addStretch();
    layout->addLayout(buttons);

    connect(m_levelCombo, &QComboBox::activated, this, [this](int index) {
        showGroupsOf(ColumnLevel{m_levelCombo->itemData(index).toInt()});
    });
    connect(m_choose, &QPushButton::clicked, this, [this] {
        const int n = SlcClGrp::choose(this, m_shell, m_groups, m_groupCombo->currentIndex() + 1);
        if (n > 0) {
            m_groupCombo->setCurrentIndex(n - 1);
        }
    });
    connect(m_sheet, &QPushButton::clicked, this, [this] { showSheet(); });
    connect(m_chart, &QPushButton::clicked, this, [this] { showChart(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });
    readPrompts();
}

QString ClGrpRpt::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void ClGrpRpt::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(m_footingLevel ? prompt(kFootingCaption, "Foundations columns necks groups")
                                  : prompt(kCaption, "Columns groups"));
    m_levelLabel->setText(prompt(kLevelLabel, "Level"));
    m_groupLabel->setText(prompt(kGroupLabel, "Group"));
    m_choose->setText(prompt(kChooseButton, "Choose..."));
    m_sheet->setText(prompt(kSheetButton, "Sheet"));
    m_chart->setText(prompt(kChartButton, "Chart"));
    m_exit->setText(prompt(kExitButton, "Exit"));
    fillLevels();
}

void ClGrpRpt::fillLevels() {
    m_levelCombo->clear();
    if (m_footingLevel) {
        m_levelCombo->addItem(prompt(kFootingItem, "Footing level"), 0);
    } else if (m_shell.hasProject()) {
        try {
            for (const floors::Floor& f : floors::readFloors(m_shell.projectPath())) {
                QString caption = prompt(kFloorItem, "Floor %1").arg(f.number);
                if (!f.name.empty()) {
                    caption += QStringLiteral(" - ") + ui::toQString(f.name, m_shell.language());
                }
                m_levelCombo->addItem(caption, static_cast<int>(f.number));
            }
        } catch (const FileError& e) {
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
    }
    const int at = m_levelCombo->findData(m_level.floor);
    m_levelCombo->setCurrentIndex(at >= 0 ? at : 0);
    showGroupsOf(ColumnLevel{m_levelCombo->currentData().toInt()});
}

void ClGrpRpt::showGroupsOf(ColumnLevel level) {
    m_level = level;
    m_groups.clear();
    m_groupCombo->clear();
    if (m_levelCombo->count() > 0 && m_shell.hasProject()) {
        try {
            m_groups = readGroups(m_shell.projectPath(), level);
        } catch (const FileError& e) {
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
    }
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        m_groupCombo->addItem(QStringLiteral("%1  %2").arg(i + 1).arg(
            ui::toQString(m_groups[i].name, m_shell.language())));
    }
    m_choose->setEnabled(!m_groups.empty());
}

bool ClGrpRpt::chooseGroup(ColumnLevel level, int number) {
    const int at = m_levelCombo->findData(level.floor);
    if (at < 0) {
        return false;
    }
    m_levelCombo->setCurrentIndex(at);
    showGroupsOf(level);
    if (number < 1 || number > static_cast<int>(m_groups.size())) {
        return false;
    }
    m_groupCombo->setCurrentIndex(number - 1);
    return true;
}

std::filesystem::path ClGrpRpt::groupFile(bool chart) const {
    const int k = m_groupCombo->currentIndex();
    if (k < 0 || k >= static_cast<int>(m_groups.size())) {
        return {};
    }
    const jobs::ChosenGroup chosen{m_level, k + 1, m_groups[static_cast<std::size_t>(k)], {}};
    return m_shell.projectPath() /
           (chart ? jobs::columnChartFileName(chosen) : jobs::columnSheetFileName(chosen));
}

ui::EditAsc* ClGrpRpt::showSheet() {
    const std::filesystem::path sheet = groupFile(false);
    if (sheet.empty()) {
        ui::tellUser(this, m_messageHook, prompt(kNoGroup, "Choose a level and a group first."));
        return nullptr;
    }
    ui::EditAsc* viewer = ui::openSheetViewer(this, m_shell, sheet, m_messageHook);
    if (viewer == nullptr) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoSheet, "Sorry, no file is prepared yet ! Design the group first."));
    }
    return viewer;
}

QWidget* ClGrpRpt::showChart() {
    const std::filesystem::path svg = groupFile(true);
    if (svg.empty()) {
        ui::tellUser(this, m_messageHook, prompt(kNoGroup, "Choose a level and a group first."));
        return nullptr;
    }
    QWidget* chart = openColumnChart(this, svg);
    if (chart == nullptr) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoChart, "The group has no chart yet: design it first."));
    }
    return chart;
}

} // namespace orvak::columns::forms
