// NumberedChoice: the list and the number field follow each other.
#include "ui/numbered_choice.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "shell/prompts.h"
#include "ui/general_prompts.h"

namespace orvak::ui {

namespace {

constexpr std::size_t kCaption = 1;
constexpr std::size_t kNumberLabel = 2;
constexpr std::size_t kPromptCount = 2;

} // namespace

NumberedChoice::NumberedChoice(const shell::ShellState& shell, const NumberedChoiceTexts& texts,
                               const QStringList& items, QWidget* parent)
    : QDialog(parent), m_list(new QListWidget(this)), m_number(new QLineEdit(this)) {
    const shell::PromptList prompts =
        shell::readPrompts(shell.programFolder, shell.language(), texts.promptKey, 2, kPromptCount);
    const auto text = [&](std::size_t n, std::string_view english) {
        return formPrompt(prompts, n, english, shell.language());
    };
    setWindowTitle(text(kCaption, texts.caption));
    m_list->setObjectName(QStringLiteral("GrpList"));
    m_number->setObjectName(QStringLiteral("GrpNoTxt"));
    m_number->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[.0-9]*")), m_number));
    for (qsizetype i = 0; i < items.size(); ++i) {
        m_list->addItem(QStringLiteral("%1  %2").arg(i + 1).arg(items[i]));
    }
    auto* label = new QLabel(text(kNumberLabel, texts.label), this);
    label->setBuddy(m_number);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(generalPrompt(shell, General::Ok));
    buttons->button(QDialogButtonBox::Cancel)->setText(generalPrompt(shell, General::Cancel));
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
    // A typed number chooses its row; a number that is no item's chooses none.
    connect(m_number, &QLineEdit::textEdited, this, [this](const QString& t) {
        bool ok = false;
        const double n = t.toDouble(&ok);
        const int row = ok && n == static_cast<int>(n) ? static_cast<int>(n) - 1 : -1;
        m_list->setCurrentRow(row >= 0 && row < m_list->count() ? row : -1);
    });
}

int NumberedChoice::chosen() const {
    return m_list->currentRow() + 1;
}

int NumberedChoice::choose(QWidget* parent, const shell::ShellState& shell,
                           const NumberedChoiceTexts& texts, const QStringList& items,
                           int current) {
    NumberedChoice dialog(shell, texts, items, parent);
    if (current >= 1) {
        dialog.list()->setCurrentRow(current - 1);
    }
    return dialog.exec() == QDialog::Accepted ? dialog.chosen() : 0;
}

} // namespace orvak::ui
