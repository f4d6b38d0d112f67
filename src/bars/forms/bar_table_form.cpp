// The editing form of the three steel tables: the grid loaded from the table file or the
// built-in table, saved with the progress bar running, printed, and its file deleted on request.
#include "bars/forms/bar_table_form.h"

#include <span>

#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::bars::forms {

namespace {

// Prompts of the form, in the order of its prompt file (from line 2): the caption, the five
// tools, the print headings, three status texts, then one heading per grid column.
constexpr ui::FormText kCaption{1, ""};
constexpr std::size_t kFirstToolPrompt = 2;
constexpr std::size_t kPrintHeadingPrompt = 7;
constexpr ui::FormText kSaved{8, "The table was saved: %1 rows."};
constexpr ui::FormText kEmptySaved{9, "No row has a first value: the table file was removed."};
constexpr ui::FormText kSaving{10, "Saving the table..."};
constexpr std::size_t kFirstHeadingPrompt = 11;

// The eight values after the area are read by nothing: their columns are hidden, untitled,
// and keep what the file holds.
constexpr std::string_view kRoundbarHeadings[] = {
    "Diameter mm", "Weight kg/m", "Area cm²", "", "", "", "", "", "", "", "",
};
constexpr std::string_view kSpacingHeadings[] = {
    "Spacing cm", "6 mm",  "7 mm",  "8 mm",  "10 mm", "12 mm", "14 mm", "16 mm",
    "18 mm",      "20 mm", "22 mm", "24 mm", "26 mm", "28 mm", "30 mm", "32 mm",
};
constexpr std::string_view kNetironHeadings[] = {
    "Wire mm", "Spacing 1 cm", "Spacing 2 cm", "As 1 cm²/m", "As 2 cm²/m", "Mark (0/1)",
};

/// The form of a table: its prompt file, and its English texts where that file lacks them.
ui::GridFormSetup formSetup(const bars::TableKind& kind) {
    ui::GridFormSetup setup;
    setup.objectName = kind.formName;
    setup.promptKey = kind.promptKey;
    setup.caption = kCaption;
    switch (kind.id) {
    case bars::TableId::Roundbar:
        setup.caption.english = "Areas for bars";
        setup.headings = kRoundbarHeadings;
        break;
    case bars::TableId::Spacing:
        setup.caption.english = "Areas for spacing";
        setup.headings = kSpacingHeadings;
        break;
    case bars::TableId::Netiron:
        setup.caption.english = "NetWork Iron";
        setup.headings = kNetironHeadings;
        break;
    }
    setup.firstToolPrompt = kFirstToolPrompt;
    setup.firstHeadingPrompt = kFirstHeadingPrompt;
    setup.saving = kSaving;
    setup.saved = kSaved;
    setup.emptySaved = kEmptySaved;
    setup.rows = kind.gridRows;
    setup.columns = kind.gridColumns;
    setup.shownColumns = kind.shownColumns;
    setup.descriptor = kind.columnFormat;
    setup.limits = kind.limitString;
    return setup;
}

} // namespace

BarTableForm::BarTableForm(const bars::TableKind& kind, shell::ShellState& shell, QWidget* parent)
    : GridForm(shell, formSetup(kind), parent), m_table(kind) {
    load();
}

void BarTableForm::load() {
    const bars::TableKind& kind = m_table.kind();
    bool readOk = true;
    try {
        m_table = bars::BarTableGrid::open(kind, shell().generalFolder());
    } catch (const FileError& e) {
        // Nothing was read: the form shows an empty grid and will not write over the file.
        tell(QString::fromUtf8(e.what()));
        readOk = false;
    }
    const auto& language = shell().language();
    for (int r = 1; r <= kind.gridRows; ++r) {
        for (int c = 1; c <= kind.gridColumns; ++c) {
            grid()->setCellText(r - 1, c - 1, ui::toQString(m_table.cell(r, c), language));
        }
    }
    finishLoad(readOk);
}

void BarTableForm::syncData() {
    const bars::TableKind& kind = m_table.kind();
    const auto& language = shell().language();
    for (int r = 1; r <= kind.gridRows; ++r) {
        for (int c = 1; c <= kind.gridColumns; ++c) {
            std::string text = ui::fromQString(grid()->cellText(r - 1, c - 1), language);
            if (text != m_table.cell(r, c)) {
                m_table.setCell(r, c, std::move(text));
            }
        }
    }
    if (changedBeforeRelabel()) {
        m_table.markChanged();
    }
}

std::size_t BarTableForm::writeTable(const ui::GridProgress& progress) {
    bars::TableSaveOptions options;
    options.progress = progress;
    return m_table.save(shell().generalFolder(), options).recordsWritten;
}

ui::EditAsc* BarTableForm::printTable() {
    if (refuseBadCell()) {
        return nullptr;
    }
    syncData();
    const std::string headings =
        prompts().count() >= kPrintHeadingPrompt ? prompts()(kPrintHeadingPrompt) : std::string();
    const std::string text = bars::printTable(m_table, headings);
    return ui::openReportViewer(this, shell(), windowTitle(),
                                ui::toQString(text, shell().language()), messageHook());
}

bool BarTableForm::deleteTable() {
    const bars::TableKind& kind = m_table.kind();
    const auto folder = shell().generalFolder();
    if (!bars::tableFileExists(kind, folder)) {
        return false;
    }
    if (!ui::askYesNo(this, askHook(), ui::generalPrompt(shell(), ui::General::DeleteTableFile),
                      ui::generalPrompt(shell(), ui::General::Delete))) {
        return false;
    }
    try {
        bars::deleteTableFile(kind, folder);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    // What the grid shows belongs to a file that is gone: the form leaves without asking.
    closeWithoutQuestion();
    return true;
}

void BarTableForm::runCommand(std::string_view key) {
    if (key == "cprint") {
        printTable();
    } else if (key == "cdelete") {
        deleteTable();
    }
}

} // namespace orvak::bars::forms
