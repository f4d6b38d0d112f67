// The general prompts (GNRL) that the main window and the forms share, by number, with the
// English texts shown when the prompt file lacks them.
#pragma once

#include <QMessageBox>
#include <QString>
#include <cstddef>
#include <functional>
#include <string_view>

#include "shell/prompts.h"

namespace orvak::shell {
struct ShellState;
}

namespace orvak::ui {

class InputGridModel;

/// Line numbers of the general prompt list (prompt n is line n + 1 of GNRL<letter>.TXT).
enum class General : std::size_t {
    Yes = 1,
    No = 2,
    BarTableEmpty = 3,
    RangeMessage = 4, ///< "%1" value, "%2" minimum, "%3" maximum
    NotANumber = 5,   ///< "%1" the text typed
    SaveChanges = 6,
    Save = 7,
    Exit = 8,
    Cancel = 9,
    Ok = 10,
    ProjectsFolder = 11,
    Project = 12,
    NoneShown = 13,
    NoProject = 14,
    Saved = 15,
    NotSaved = 16,
    NotAvailable = 17,
    Help = 18,
    HelpMissing = 19,
    Print = 20,
    CloseWindowsFirst = 21,
    Ready = 22,
    DeleteSelectedRows = 23,
    InsertRow = 24,
    DeleteRow = 25,
    SaveAsPdf = 26,
    NoData = 27,
    TextTooLong = 28, ///< "%1" field label, "%2" width in characters
    DeleteTableFile = 29,
    Delete = 30,
    EmptyValue = 31, ///< "%1" row, "%2" column heading, "%3" minimum, "%4" maximum
};

inline constexpr std::size_t kGeneralPromptCount = shell::kGeneralPromptLines;

/// The general prompt in the current language, or its English text when not read.
QString generalPrompt(const shell::ShellState& shell, General prompt);

/// Prompt n of a form's list in the form's language, or `fallback` (English) when not read.
QString formPrompt(const shell::PromptList& prompts, std::size_t n, std::string_view fallback,
                   std::string_view language);

/// The message for a number cell that its row's range refuses ("not a number" or "outside
/// the range"), in the user's language; empty when the cell passes. Forms check every row
/// again on saving, since a cell can be filled without passing through its editor.
QString refusedNumberMessage(const shell::ShellState& shell, const InputGridModel& model, int row,
                             int column);

/// The question a form asks when it is left with unsaved changes: "Save changes?" with Yes, No
/// and Cancel. Returns whether the form may close: Yes saves first (and stays when the save
/// fails), No drops the changes, Cancel stays. `ask` replaces the message box when set.
bool mayLeaveForm(QWidget* form, const shell::ShellState& shell,
                  const std::function<QMessageBox::StandardButton(const QString&)>& ask,
                  const std::function<bool()>& save);

/// Closes a form: inside the main window its sub-window (which asks the form first), else
/// the form itself.
void closeForm(QWidget* form);

} // namespace orvak::ui
