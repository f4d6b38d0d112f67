// Projdata: the project-data form. One grid row per field of GEN.CST that the user edits,
// each with its own width and range; Save checks every row, stamps the date and writes the
// record, Exit leaves (asking first when something was changed).
#include "shell/forms/projdata_form.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "core/error.h"
#include "shell/project_record.h"
#include "shell/projects.h"
#include "ui/general_prompts.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"

namespace orvak::shell::forms {

namespace {

constexpr std::string_view kPromptKey = "Projdata";
/// Prompts 1-21 label the fields; the form's own texts follow.
constexpr std::size_t kCaptionPrompt = 22;
constexpr std::size_t kSavePrompt = 23;
constexpr std::size_t kExitPrompt = 24;
constexpr std::size_t kValueHeadingPrompt = 25;
constexpr std::size_t kSavedPrompt = 26;
constexpr std::size_t kPromptCount = 26;

/// Visible width of the value column in characters; longer texts (the work folder) scroll.
constexpr int kVisibleChars = 40;

struct FieldRule {
    const char* descriptor; ///< one column: access, kind, "II.D,"
    const char* limits;     ///< minimum and maximum of the number fields
    int width;              ///< characters a text field holds in GEN.CST
    const char* label;      ///< English label when the prompt file lacks it
};

// Text fields hold exactly their GEN.CST width; numbers carry their range. The title lines
// head every report and line 1 names the project on each printed sheet; the short texts,
// texts and codes are the job's own record (number, revision, design notes, file numbers),
// kept with the project and shown by the command-line program. The choice, the count and
// the value are read by nothing: their rows are hidden and they keep what the file holds.
constexpr std::array<FieldRule, Projdata::kFieldCount> kFields = {{
    {"1030.0,", "", 30, "Title line 1 (project name)"},
    {"1030.0,", "", 30, "Title line 2"},
    {"1030.0,", "", 30, "Title line 3"},
    {"1030.0,", "", 30, "Title line 4"},
    {"1030.0,", "", 30, "Title line 5"},
    {"1030.0,", "", 30, "Title line 6"},
    {"1030.0,", "", 30, "Title line 7"},
    {"1030.0,", "", 30, "Title line 8"},
    {"1010.0,", "", 10, "Project no."},
    {"1010.0,", "", 10, "Revision"},
    {"1030.0,", "", 30, "Design note 1"},
    {"1030.0,", "", 30, "Design note 2"},
    {"1030.0,", "", 30, "Design note 3"},
    {"1012.0,", "", 12, "Job code"},
    {"1012.0,", "", 12, "Office file no."},
    {"1099.0,", "", 99, "Work folder"},
    {"1101.0,", "@1:1@2:2", 0, "Choice (kept as stored, not shown)"},
    {"1030.0,", "", 30, "Checked by"},
    {"1103.0,", "@1:1@2:199", 0, "Count (kept as stored, not shown)"},
    {"0030.0,", "", 30, "Date saved"},
    {"1103.2,", "@1:0@2:999.99", 0, "Value (kept as stored, not shown)"},
}};

std::string upperAscii(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

std::string trimmedBlanks(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The text rows of the grid in GEN.CST order (the number rows and the date are apart).
std::array<std::string*, 17> textFields(shell::ProjectRecord& r) {
    return {&r.titleLines[0], &r.titleLines[1], &r.titleLines[2], &r.titleLines[3],
            &r.titleLines[4], &r.titleLines[5], &r.titleLines[6], &r.titleLines[7],
            &r.shortTexts[0], &r.shortTexts[1], &r.texts9to11[0], &r.texts9to11[1],
            &r.texts9to11[2], &r.codes[0],      &r.codes[1],      &r.workFolder,
            &r.text12};
}

bool isHiddenRow(int row) {
    return std::find(Projdata::kHiddenRows.begin(), Projdata::kHiddenRows.end(), row) !=
           Projdata::kHiddenRows.end();
}

/// Grid row of each entry of textFields().
constexpr std::array<int, 17> kTextRows = {
    0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, Projdata::kWorkFolderRow, 17};

} // namespace

Projdata::Projdata(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_grid(new ui::InputGrid(this)),
      m_saveButton(new QPushButton(this)), m_exitButton(new QPushButton(this)) {
    setObjectName(QStringLiteral("Projdata"));
    ORVAK_ASSERT(m_shell.hasProject());

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_saveButton);
    buttons->addWidget(m_exitButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid, 1);
    layout->addLayout(buttons);

    connect(m_saveButton, &QPushButton::clicked, this, [this] { save(); });
    // Inside the main window the sub-window closes, which asks this form first.
    connect(m_exitButton, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
    loadRecord();
}

void Projdata::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    const auto prompt = [this](std::size_t n, std::string_view fallback) {
        return ui::formPrompt(m_prompts, n, fallback, m_shell.language());
    };

    ui::InputGridSetup setup;
    setup.rows = kFieldCount;
    setup.columns = 1;
    for (int row = 0; row < kFieldCount; ++row) {
        setup.descriptors.emplace_back(kFields[static_cast<std::size_t>(row)].descriptor);
        setup.limitStrings.emplace_back(kFields[static_cast<std::size_t>(row)].limits);
        setup.rowHeadings.append(label(row));
    }
    setup.columnHeadings = {prompt(kValueHeadingPrompt, "Value")};
    setup.columnWidths = {kVisibleChars};
    setup.rangeMessage = ui::generalPrompt(m_shell, ui::General::RangeMessage);
    setup.notANumberMessage = ui::generalPrompt(m_shell, ui::General::NotANumber);

    // A new language relabels the grid; what the user typed stays, and so does the fact that
    // it is not saved yet.
    const bool hadCells = m_grid->model()->rowCount() == kFieldCount;
    QStringList texts;
    if (hadCells) {
        m_changedBeforeRelabel = m_changedBeforeRelabel || m_grid->isChanged();
        for (int row = 0; row < kFieldCount; ++row) {
            texts.append(m_grid->cellText(row, 0));
        }
    }
    m_grid->setup(setup);
    if (hadCells) {
        for (int row = 0; row < kFieldCount; ++row) {
            m_grid->setCellText(row, 0, texts.at(row));
        }
    }
    // Every shown field at once: the form is short enough not to need a scroll bar.
    QTableView* view = m_grid->view();
    for (const int row : kHiddenRows) {
        view->setRowHidden(row, true);
    }
    const int shownRows = kFieldCount - static_cast<int>(kHiddenRows.size());
    view->horizontalHeader()->setStretchLastSection(true);
    m_grid->setMinimumHeight(view->verticalHeader()->defaultSectionSize() * shownRows +
                             view->horizontalHeader()->sizeHint().height() +
                             2 * view->frameWidth());

    setWindowTitle(prompt(kCaptionPrompt, "Project data") + QStringLiteral(" - ") +
                   QString::fromStdString(m_shell.projectName));
    m_saveButton->setText(prompt(kSavePrompt, "Save"));
    m_exitButton->setText(prompt(kExitPrompt, "Exit"));
}

QString Projdata::label(int row) const {
    return ui::formPrompt(m_prompts, static_cast<std::size_t>(row) + 1,
                          kFields[static_cast<std::size_t>(row)].label, m_shell.language());
}

void Projdata::loadRecord() {
    shell::ProjectRecord record = m_shell.project;
    const auto& language = m_shell.language();
    const auto texts = textFields(record);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        m_grid->setCellText(kTextRows[i], 0, ui::toQString(*texts[i], language));
    }
    m_grid->setCellText(kChoiceRow, 0, QString::number(record.choice));
    m_grid->setCellText(kCountRow, 0, QString::number(record.count));
    m_grid->setCellText(kDateRow, 0, ui::toQString(record.dateText, language));
    m_grid->setCellText(kValueRow, 0, QString::number(static_cast<double>(record.value), 'f', 2));
    m_grid->clearChanged();
    m_changedBeforeRelabel = false;
}

bool Projdata::isChanged() const {
    return m_changedBeforeRelabel || m_grid->isChanged();
}

QString Projdata::dateStamp(const QDate& date) {
    return date.toString(QStringLiteral("dd-MM-yyyy"));
}

void Projdata::setMessageHook(std::function<void(const QString&)> hook) {
    m_messageHook = hook;
    m_grid->setMessageHook(std::move(hook));
}

void Projdata::showCell(int row) {
    if (isVisible()) {
        m_grid->focusCell(row, 0);
    }
}

void Projdata::tell(const QString& message) const {
    if (m_messageHook) {
        m_messageHook(message);
    } else {
        QMessageBox::warning(const_cast<Projdata*>(this), windowTitle(), message);
    }
}

bool Projdata::save() {
    const auto& language = m_shell.language();
    ui::InputGridModel* model = m_grid->model();

    // Every shown row is checked before anything is written: one refused field saves
    // nothing. A hidden row is not the user's to mend, and its field is not taken from it.
    for (int row = 0; row < kFieldCount; ++row) {
        if (model->accessAt(row, 0) == 0 || isHiddenRow(row)) {
            continue;
        }
        const QString text = m_grid->cellText(row, 0);
        if (model->kindAt(row, 0) == 1) {
            const QString refusal = ui::refusedNumberMessage(m_shell, *model, row, 0);
            if (!refusal.isEmpty()) {
                tell(refusal);
                showCell(row);
                return false;
            }
            continue;
        }
        const int width = kFields[static_cast<std::size_t>(row)].width;
        if (static_cast<int>(ui::fromQString(text, language).size()) > width) {
            tell(ui::generalPrompt(m_shell, ui::General::TextTooLong).arg(label(row)).arg(width));
            showCell(row);
            return false;
        }
    }

    // Fields the form does not show (the hidden rows, the project values, the output
    // settings) keep what they held.
    shell::ProjectRecord record = m_shell.project;
    const auto texts = textFields(record);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        *texts[i] = ui::fromQString(m_grid->cellText(kTextRows[i], 0), language);
    }
    record.workFolder = upperAscii(trimmedBlanks(record.workFolder));
    record.dateText = ui::fromQString(dateStamp(QDate::currentDate()), language);
    if (record.sheetName.empty()) {
        record.sheetName = std::string(shell::kDefaultSheetName);
    }

    try {
        shell::writeProjectRecord(m_shell.projectPath(), record);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    record.valid = true;
    m_shell.project = record;
    m_shell.sheetName = record.sheetName;
    shell::setWorkFolder(m_shell, record.workFolder);

    m_grid->setCellText(kWorkFolderRow, 0, ui::toQString(record.workFolder, language));
    m_grid->setCellText(kDateRow, 0, ui::toQString(record.dateText, language));
    m_grid->clearChanged();
    m_changedBeforeRelabel = false;
    emit saved(ui::formPrompt(m_prompts, kSavedPrompt, "The project data were saved.", language));
    return true;
}

void Projdata::closeEvent(QCloseEvent* event) {
    if (!isChanged() || ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::shell::forms
