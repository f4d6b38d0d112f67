// Opndiams: the bar diameters of the bar table in a list; a double click or the accept button
// takes the chosen one, the exit button none.
#include "bars/forms/opndiams_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "bars/bar_table_grid.h"
#include "core/error.h"
#include "ui/general_prompts.h"

namespace orvak::bars::forms {

namespace {

constexpr std::string_view kPromptKey = "Opndiams";
constexpr std::size_t kCaptionPrompt = 1;
constexpr std::size_t kOkPrompt = 2;
constexpr std::size_t kExitPrompt = 3;
constexpr std::size_t kHeadingPrompt = 4;
constexpr std::size_t kItemPrompt = 5; ///< "%1" the diameter
constexpr std::size_t kPromptCount = 5;

} // namespace

Opndiams::Opndiams(shell::ShellState& shell, QWidget* parent)
    : QDialog(parent), m_shell(shell), m_heading(new QLabel(this)), m_list(new QListWidget(this)),
      m_ok(new QPushButton(this)), m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("Opndiams"));
    m_list->setObjectName(QStringLiteral("ListIN"));
    m_ok->setObjectName(QStringLiteral("OKLISTIN"));
    m_exit->setObjectName(QStringLiteral("EXLISTIN"));
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_ok->setDefault(true);
    m_ok->setEnabled(false);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_ok);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_heading);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);

    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_exit, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(m_list, &QListWidget::currentRowChanged, this,
            [this](int row) { m_ok->setEnabled(row >= 0); });

    try {
        m_diameters = bars::LoadBarDiameters(m_shell.generalFolder());
    } catch (const FileError& e) {
        m_loadError = QString::fromUtf8(e.what());
    }
    readPrompts();
    if (!m_diameters.diameters.empty()) {
        m_list->setCurrentRow(0);
    }
    resize(260, 360);
}

void Opndiams::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    const auto prompt = [this](std::size_t n, std::string_view fallback) {
        return ui::formPrompt(m_prompts, n, fallback, m_shell.language());
    };
    setWindowTitle(prompt(kCaptionPrompt, "Bar diameters"));
    m_ok->setText(prompt(kOkPrompt, "OK"));
    m_exit->setText(prompt(kExitPrompt, "Exit"));
    m_heading->setText(prompt(kHeadingPrompt, "Choose a bar diameter:"));

    const int current = m_list->currentRow();
    m_list->clear();
    const QString itemText = prompt(kItemPrompt, "%1 mm");
    for (const float d : m_diameters.diameters) {
        auto* item =
            new QListWidgetItem(itemText.arg(QString::fromStdString(bars::cellTextFor(d))), m_list);
        item->setData(Qt::UserRole, static_cast<double>(d));
    }
    m_list->setCurrentRow(current);
}

std::optional<float> Opndiams::selectedDiameter() const {
    const QListWidgetItem* item = m_list->currentItem();
    if (item == nullptr) {
        return std::nullopt;
    }
    return static_cast<float>(item->data(Qt::UserRole).toDouble());
}

std::optional<float> Opndiams::choose() {
    if (!m_loadError.isEmpty()) {
        ui::tellUser(this, m_messageHook, m_loadError);
        return std::nullopt;
    }
    if (!m_diameters.barTableAvailable || m_diameters.diameters.empty()) {
        ui::tellUser(this, m_messageHook, ui::generalPrompt(m_shell, ui::General::BarTableEmpty));
        return std::nullopt;
    }
    if (exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return selectedDiameter();
}

} // namespace orvak::bars::forms
