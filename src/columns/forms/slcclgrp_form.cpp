// SlcClGrp: the list and the number field follow each other.
#include "columns/forms/slcclgrp_form.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "shell/prompts.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"

namespace orvak::columns::forms {

namespace {

constexpr std::string_view kPromptKey = "SLCCLGRP";
constexpr std::size_t kCaption = 1;
constexpr std::size_t kNumberLabel = 2;
constexpr std::size_t kPromptCount = 2;

} // namespace

SlcClGrp::SlcClGrp(const shell::ShellState& shell, const std::vector<ColumnGroup>& groups,
                   QWidget* parent)
    : QDialog(parent), m_list(new QListWidget(this)), m_number(new QLineEdit(this)) {
    setObjectName(QStringLiteral("SlcClGrp"));
    const shell::PromptList prompts =
        shell::readPrompts(shell.programFolder, shell.language(), kPromptKey, 2, kPromptCount);
    const auto text = [&](std::size_t n, std::string_view english) {
        return ui::formPrompt(prompts, n, english, shell.language());
    };
    setWindowTitle(text(kCaption, "Choose a column group"));
    m_list->setObjectName(QStringLiteral("GrpList"));
    m_number->setObjectName(QStringLiteral("GrpNoTxt"));
    m_number->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[.0-9]*")), m_number));
    for (std::size_t i = 0; i < groups.size(); ++i) {
        m_list->addItem(QStringLiteral("%1  %2").arg(i + 1).arg(
            ui::toQString(groups[i].name, shell.language())));
    }
    auto* label = new QLabel(text(kNumberLabel, "Group number"), this);
    label->setBuddy(m_number);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(ui::generalPrompt(shell, ui::General::Ok));
    buttons->button(QDialogButtonBox::Cancel)
        ->setText(ui::generalPrompt(shell, ui::General::Cancel));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(label);
    layout->addWidget(m_number);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0 && m_number->text().toDouble() != row + 1) {
            m_number->setText(QString::number(row + 1));
        }
    });
    // A typed number chooses its row; a number that is no group's chooses none.
    connect(m_number, &QLineEdit::textEdited, this, [this](const QString& t) {
        bool ok = false;
        const double n = t.toDouble(&ok);
        const int row = ok && n == static_cast<int>(n) ? static_cast<int>(n) - 1 : -1;
        m_list->setCurrentRow(row >= 0 && row < m_list->count() ? row : -1);
    });
}

int SlcClGrp::chosenGroup() const {
    return m_list->currentRow() + 1;
}

int SlcClGrp::choose(QWidget* parent, const shell::ShellState& shell,
                     const std::vector<ColumnGroup>& groups, int current) {
    SlcClGrp dialog(shell, groups, parent);
    if (current >= 1) {
        dialog.groupList()->setCurrentRow(current - 1);
    }
    return dialog.exec() == QDialog::Accepted ? dialog.chosenGroup() : 0;
}

} // namespace orvak::columns::forms
