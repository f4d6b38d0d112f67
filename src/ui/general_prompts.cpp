// The general prompts (GNRL) shared by the main window and the forms, with their English
// fallbacks for a program folder that lacks the prompt file.
#include "ui/general_prompts.h"

#include <QMdiSubWindow>
#include <array>

#include "shell/field_table.h"
#include "shell/shell_state.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"

namespace orvak::ui {

namespace {

constexpr std::array<std::string_view, kGeneralPromptCount> kEnglishGeneral = {
    "Yes",
    "No",
    "The bar table is empty: enter the bar diameters in Setting > Areas for bars first.",
    "The value %1 is outside the range %2 to %3.",
    "\"%1\" is not a number.",
    "Save changes?",
    "Save",
    "Exit",
    "Cancel",
    "OK",
    "Projects folder:",
    "Project:",
    "(none)",
    "No project is open: open or create a project first.",
    "The changes were saved.",
    "The changes were not saved.",
    "Not in this version.",
    "Help",
    "The help text cannot be found.",
    "Print",
    "Close the open windows of the project first.",
    "Ready",
    "Delete the selected rows?",
    "Insert row",
    "Delete row",
    "Save as PDF",
    "No data were entered.",
    "%1: at most %2 characters.",
    "Delete this table file?",
    "Delete",
    "Row %1, %2: the cell is empty; give a value from %3 to %4.",
};

} // namespace

QString generalPrompt(const shell::ShellState& shell, General prompt) {
    const auto n = static_cast<std::size_t>(prompt);
    return formPrompt(shell.generalPrompts, n, kEnglishGeneral.at(n - 1), shell.language());
}

QString formPrompt(const shell::PromptList& prompts, std::size_t n, std::string_view fallback,
                   std::string_view language) {
    if (n <= prompts.count() && !prompts(n).empty()) {
        return toQString(prompts(n), language);
    }
    return QString::fromUtf8(fallback.data(), static_cast<qsizetype>(fallback.size()));
}

QString refusedNumberMessage(const shell::ShellState& shell, const InputGridModel& model, int row,
                             int column) {
    const QString text = model.cellText(row, column);
    const shell::Limits limits = model.limitsAt(row, column);
    const QByteArray utf8 = text.toUtf8();
    const auto check = shell::checkCell(std::string_view(utf8.constData(), utf8.size()), 1, limits);
    switch (check.status) {
    case shell::CellCheck::NotANumber:
        return generalPrompt(shell, General::NotANumber).arg(text.trimmed());
    case shell::CellCheck::OutOfRange:
        return generalPrompt(shell, General::RangeMessage)
            .arg(text.trimmed(), QString::number(limits.minimum, 'g', 12),
                 QString::number(limits.maximum, 'g', 12));
    case shell::CellCheck::Ok:
        break;
    }
    return {};
}

bool mayLeaveForm(QWidget* form, const shell::ShellState& shell,
                  const std::function<QMessageBox::StandardButton(const QString&)>& ask,
                  const std::function<bool()>& save) {
    const QString question = generalPrompt(shell, General::SaveChanges);
    const QMessageBox::StandardButton answer =
        ask ? ask(question)
            : QMessageBox::question(form, form->windowTitle(), question,
                                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                                    QMessageBox::Yes);
    if (answer == QMessageBox::Yes) {
        return save();
    }
    return answer == QMessageBox::No;
}

void closeForm(QWidget* form) {
    if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget())) {
        sub->close();
    } else {
        form->close();
    }
}

} // namespace orvak::ui
