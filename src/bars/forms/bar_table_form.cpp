// The editing form of the three steel tables: the grid loaded from the table file or the
// built-in table, saved with the progress bar running, printed, and its file deleted on request.
#include "bars/forms/bar_table_form.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>
#include <span>

#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::bars::forms {

namespace {

// Prompts of the form, in the order of its prompt file (from line 2). The column headings
// follow the form's own texts, one per grid column.
constexpr std::size_t kCaptionPrompt = 1;
constexpr std::size_t kFirstToolPrompt = 2; // save, cprint, copy, cdelete, exit
constexpr std::size_t kPrintHeadingPrompt = 7;
constexpr std::size_t kSavedPrompt = 8;
constexpr std::size_t kEmptySavedPrompt = 9;
constexpr std::size_t kSavingPrompt = 10;
constexpr std::size_t kFirstHeadingPrompt = 11;

struct ToolKey {
    std::string_view key;
    std::string_view english;
};

constexpr std::array<ToolKey, 5> kTools = {{
    {"save", "Save"},
    {"cprint", "Print"},
    {"copy", "Copy"},
    {"cdelete", "Delete"},
    {"exit", "Exit"},
}};

constexpr std::string_view kRoundbarHeadings[] = {
    "Diameter mm", "Weight kg/m", "Area cm²", "Extra 1", "Extra 2", "Extra 3",
    "Extra 4",     "Extra 5",     "Extra 6",  "Extra 7", "Extra 8",
};
constexpr std::string_view kSpacingHeadings[] = {
    "Spacing cm", "6 mm",  "7 mm",  "8 mm",  "10 mm", "12 mm", "14 mm", "16 mm",
    "18 mm",      "20 mm", "22 mm", "24 mm", "26 mm", "28 mm", "30 mm", "32 mm",
};
constexpr std::string_view kNetironHeadings[] = {
    "Wire mm", "Spacing 1 cm", "Spacing 2 cm", "As 1 cm²/m", "As 2 cm²/m", "Mark (0/1)",
};

/// English texts of a table's form when its prompt file lacks them.
struct EnglishTexts {
    std::string_view caption;
    std::span<const std::string_view> headings;
};

EnglishTexts englishTexts(bars::TableId id) {
    switch (id) {
    case bars::TableId::Roundbar:
        return {"Areas for bars", kRoundbarHeadings};
    case bars::TableId::Spacing:
        return {"Areas for spacing", kSpacingHeadings};
    case bars::TableId::Netiron:
        return {"NetWork Iron", kNetironHeadings};
    }
    ORVAK_ASSERT(false);
}

} // namespace

BarTableForm::BarTableForm(const bars::TableKind& kind, shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_table(kind), m_toolBar(new QToolBar(this)),
      m_grid(new ui::InputGrid(this)), m_status(new QLabel(this)),
      m_progress(new QProgressBar(this)) {
    setObjectName(
        QString::fromLatin1(kind.formName.data(), static_cast<qsizetype>(kind.formName.size())));
    m_toolBar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_toolBar->setMovable(false);
    for (const ToolKey& tool : kTools) {
        QAction* action = m_toolBar->addAction(QString());
        action->setObjectName(
            QString::fromLatin1(tool.key.data(), static_cast<qsizetype>(tool.key.size())));
        const std::string_view key = tool.key;
        connect(action, &QAction::triggered, this, [this, key] { toolbarCommand(key); });
        if (key == "cdelete") {
            m_toolBar->addSeparator();
        }
    }
    m_grid->setObjectName(QStringLiteral("Pict1"));

    // The status area: the outcome of the last command, and the progress of a save.
    m_status->setObjectName(QStringLiteral("StatusText"));
    m_progress->setObjectName(QStringLiteral("ProgressBar1"));
    m_progress->setTextVisible(false);
    m_progress->setRange(0, kind.gridRows);
    m_progress->setValue(0);
    m_progress->setFixedWidth(180);
    auto* statusRow = new QHBoxLayout;
    statusRow->addWidget(m_status, 1);
    statusRow->addWidget(m_progress);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 0, 6, 6);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_grid, 1);
    layout->addLayout(statusRow);

    readPrompts();
    load();
}

QAction* BarTableForm::action(std::string_view key) const {
    return m_toolBar->findChild<QAction*>(
        QString::fromLatin1(key.data(), static_cast<qsizetype>(key.size())));
}

QString BarTableForm::prompt(std::size_t n, std::string_view fallback) const {
    return ui::formPrompt(m_prompts, n, fallback, m_shell.language());
}

void BarTableForm::readPrompts() {
    const bars::TableKind& kind = m_table.kind();
    const EnglishTexts english = englishTexts(kind.id);
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kind.promptKey, 2,
                           kFirstHeadingPrompt - 1 + static_cast<std::size_t>(kind.gridColumns));

    ui::InputGridSetup setup;
    setup.rows = kind.gridRows;
    setup.columns = kind.gridColumns;
    setup.descriptors = {std::string(kind.columnFormat)};
    setup.limitStrings = {std::string(kind.limitString)};
    for (int c = 0; c < kind.gridColumns; ++c) {
        setup.columnHeadings.append(prompt(kFirstHeadingPrompt + static_cast<std::size_t>(c),
                                           english.headings[static_cast<std::size_t>(c)]));
    }
    setup.rangeMessage = ui::generalPrompt(m_shell, ui::General::RangeMessage);
    setup.notANumberMessage = ui::generalPrompt(m_shell, ui::General::NotANumber);

    // A new language relabels the grid; what the user typed stays, and so does the fact that
    // it is not saved yet.
    QList<QStringList> texts;
    if (m_loaded) {
        m_changedBeforeRelabel = m_changedBeforeRelabel || m_grid->isChanged();
        for (int r = 0; r < kind.gridRows; ++r) {
            QStringList row;
            for (int c = 0; c < kind.gridColumns; ++c) {
                row.append(m_grid->cellText(r, c));
            }
            texts.append(row);
        }
    }
    m_grid->setup(setup);
    for (int r = 0; r < texts.size(); ++r) {
        for (int c = 0; c < kind.gridColumns; ++c) {
            m_grid->setCellText(r, c, texts[r][c]);
        }
    }

    setWindowTitle(prompt(kCaptionPrompt, english.caption));
    for (std::size_t i = 0; i < kTools.size(); ++i) {
        if (QAction* a = action(kTools[i].key)) {
            a->setText(prompt(kFirstToolPrompt + i, kTools[i].english));
        }
    }
}

void BarTableForm::load() {
    const bars::TableKind& kind = m_table.kind();
    try {
        m_table = bars::BarTableGrid::open(kind, m_shell.generalFolder());
    } catch (const FileError& e) {
        // Nothing was read: the form shows an empty grid and will not write over the file.
        tell(QString::fromUtf8(e.what()));
        m_loadFailed = true;
        action("save")->setEnabled(false);
        action("cdelete")->setEnabled(false);
    }
    const auto& language = m_shell.language();
    for (int r = 1; r <= kind.gridRows; ++r) {
        for (int c = 1; c <= kind.gridColumns; ++c) {
            m_grid->setCellText(r - 1, c - 1, ui::toQString(m_table.cell(r, c), language));
        }
    }
    m_grid->clearChanged();
    m_loaded = true;
    m_changedBeforeRelabel = false;
    setStatus(ui::generalPrompt(m_shell, ui::General::Ready));
}

bool BarTableForm::isChanged() const {
    return m_changedBeforeRelabel || m_grid->isChanged() || m_table.changed();
}

QString BarTableForm::statusText() const {
    return m_status->text();
}

void BarTableForm::setStatus(const QString& text) {
    m_status->setText(text);
}

void BarTableForm::setMessageHook(ui::MessageHook hook) {
    m_messageHook = hook;
    m_grid->setMessageHook(std::move(hook));
}

void BarTableForm::tell(const QString& message) const {
    ui::tellUser(const_cast<BarTableForm*>(this), m_messageHook, message);
}

void BarTableForm::syncTable() {
    const bars::TableKind& kind = m_table.kind();
    const auto& language = m_shell.language();
    for (int r = 1; r <= kind.gridRows; ++r) {
        for (int c = 1; c <= kind.gridColumns; ++c) {
            std::string text = ui::fromQString(m_grid->cellText(r - 1, c - 1), language);
            if (text != m_table.cell(r, c)) {
                m_table.setCell(r, c, std::move(text));
            }
        }
    }
    if (m_changedBeforeRelabel) {
        m_table.markChanged();
    }
}

bool BarTableForm::refuseBadCell() {
    const ui::InputGridModel& model = *m_grid->model();
    for (int r = 0; r < model.rowCount(); ++r) {
        for (int c = 0; c < model.columnCount(); ++c) {
            const QString refusal = ui::refusedNumberMessage(m_shell, model, r, c);
            if (!refusal.isEmpty()) {
                tell(refusal);
                if (isVisible()) {
                    m_grid->focusCell(r, c);
                }
                return true;
            }
        }
    }
    return false;
}

bool BarTableForm::save() {
    if (m_loadFailed) {
        return false;
    }
    syncTable();
    if (!m_table.changed()) {
        return true;
    }
    // A value can reach a cell without its editor (read from a file another program wrote):
    // every cell is checked before anything is written.
    if (refuseBadCell()) {
        return false;
    }

    bars::TableSaveOptions options;
    options.progress = [this](int value, int maximum) {
        m_progress->setMaximum(maximum);
        m_progress->setValue(value);
    };
    setStatus(prompt(kSavingPrompt, "Saving the table..."));
    bars::TableSaveResult result;
    try {
        result = m_table.save(m_shell.generalFolder(), options);
    } catch (const FileError& e) {
        m_progress->setValue(0);
        setStatus(ui::generalPrompt(m_shell, ui::General::NotSaved));
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    m_grid->clearChanged();
    m_changedBeforeRelabel = false;

    const QString message =
        result.outcome == bars::TableSaveOutcome::AllEmpty
            ? prompt(kEmptySavedPrompt, "No row has a first value: the table file was removed.")
            : prompt(kSavedPrompt, "The table was saved: %1 rows.")
                  .arg(static_cast<qulonglong>(result.recordsWritten));
    setStatus(message);
    emit saved(message);
    if (isVisible()) {
        m_grid->setFocus();
    }
    return true;
}

ui::EditAsc* BarTableForm::printTable() {
    if (refuseBadCell()) {
        return nullptr;
    }
    syncTable();
    const auto& language = m_shell.language();
    const std::string headings =
        m_prompts.count() >= kPrintHeadingPrompt ? m_prompts(kPrintHeadingPrompt) : std::string();
    const std::string text = bars::printTable(m_table, headings);
    return ui::openReportViewer(this, m_shell, windowTitle(), ui::toQString(text, language),
                                m_messageHook);
}

bool BarTableForm::deleteTable() {
    const bars::TableKind& kind = m_table.kind();
    const auto folder = m_shell.generalFolder();
    if (!bars::tableFileExists(kind, folder)) {
        return false;
    }
    if (!ui::askYesNo(this, m_askHook, ui::generalPrompt(m_shell, ui::General::DeleteTableFile),
                      ui::generalPrompt(m_shell, ui::General::Delete))) {
        return false;
    }
    try {
        bars::deleteTableFile(kind, folder);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    // What the grid shows belongs to a file that is gone: the form leaves without asking.
    m_leavingWithoutQuestion = true;
    ui::closeForm(this);
    return true;
}

void BarTableForm::toolbarCommand(std::string_view key) {
    if (key == "save") {
        save();
    } else if (key == "cprint") {
        printTable();
    } else if (key == "cdelete") {
        deleteTable();
    } else if (key == "exit") {
        ui::closeForm(this);
    }
    // "copy" is accepted and does nothing in these forms.
}

void BarTableForm::closeEvent(QCloseEvent* event) {
    if (m_leavingWithoutQuestion || m_loadFailed || !isChanged() ||
        ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::bars::forms
