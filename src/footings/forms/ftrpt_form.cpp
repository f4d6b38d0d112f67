// FtRpt: the project's footing groups, read when the form opens.
#include "footings/forms/ftrpt_form.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/error.h"
#include "footings/forms/slcftgrp_form.h"
#include "jobs/footing_design_job.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::footings::forms {

namespace {

constexpr std::string_view kPromptKey = "FTRPT";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kGroupLabel = 2;
constexpr std::size_t kChooseButton = 3;
constexpr std::size_t kSheetButton = 4;
constexpr std::size_t kExitButton = 5;
constexpr std::size_t kNoGroup = 6;
constexpr std::size_t kNoSheet = 7;
constexpr std::size_t kPromptCount = 7;

} // namespace

FtRpt::FtRpt(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_groupLabel(new QLabel(this)),
      m_groupCombo(new QComboBox(this)), m_choose(new QPushButton(this)),
      m_sheet(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("FtRpt"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_groupCombo->setObjectName(QStringLiteral("GroupCombo"));
    m_choose->setObjectName(QStringLiteral("CmdChoose"));
    m_sheet->setObjectName(QStringLiteral("CmdSheet"));
    m_exit->setObjectName(QStringLiteral("CmdExit"));
    m_groupCombo->setMinimumContentsLength(24);
    m_groupLabel->setBuddy(m_groupCombo);

    auto* fields = new QFormLayout;
    auto* groupRow = new QHBoxLayout;
    groupRow->addWidget(m_groupCombo, 1);
    groupRow->addWidget(m_choose);
    fields->addRow(m_groupLabel, groupRow);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_sheet);
    buttons->addStretch();
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addStretch();
    layout->addLayout(buttons);

    connect(m_choose, &QPushButton::clicked, this, [this] {
        const int k = chooseFootingGroup(this, m_shell, m_groups, m_groupCombo->currentIndex() + 1);
        if (k > 0) {
            m_groupCombo->setCurrentIndex(k - 1);
        }
    });
    connect(m_sheet, &QPushButton::clicked, this, [this] { showSheet(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });
    readPrompts();
    load();
}

QString FtRpt::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void FtRpt::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Foundations groups"));
    m_groupLabel->setText(prompt(kGroupLabel, "Group"));
    m_choose->setText(prompt(kChooseButton, "Choose..."));
    m_sheet->setText(prompt(kSheetButton, "Sheet"));
    m_exit->setText(prompt(kExitButton, "Exit"));
}

void FtRpt::load() {
    m_groups.clear();
    m_groupCombo->clear();
    if (m_shell.hasProject()) {
        try {
            m_groups = readFootingGroups(m_shell.projectPath());
        } catch (const FileError& e) {
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
    }
    for (const StoredFootingGroup& g : m_groups) {
        m_groupCombo->addItem(QStringLiteral("%1  %2").arg(g.number).arg(
            ui::toQString(g.group.name, m_shell.language())));
    }
    m_choose->setEnabled(!m_groups.empty());
}

bool FtRpt::chooseGroup(int number) {
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        if (m_groups[i].number == number) {
            m_groupCombo->setCurrentIndex(static_cast<int>(i));
            return true;
        }
    }
    return false;
}

std::filesystem::path FtRpt::sheetPath() const {
    const int k = m_groupCombo->currentIndex();
    if (k < 0 || k >= static_cast<int>(m_groups.size())) {
        return {};
    }
    return m_shell.projectPath() /
           jobs::footingSheetFileName(m_groups[static_cast<std::size_t>(k)].group);
}

ui::EditAsc* FtRpt::showSheet() {
    const std::filesystem::path sheet = sheetPath();
    if (sheet.empty()) {
        ui::tellUser(this, m_messageHook, prompt(kNoGroup, "Choose a group first."));
        return nullptr;
    }
    ui::EditAsc* viewer = ui::openSheetViewer(this, m_shell, sheet, m_messageHook);
    if (viewer == nullptr) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoSheet, "Sorry, no file is prepared yet ! Design the group first."));
    }
    return viewer;
}

} // namespace orvak::footings::forms
