// What the forms share beyond the grid: the questions and messages they put to the user
// (replaceable for tests), the fixed-width face of listings and the report viewer they open.
#pragma once

#include <QMessageBox>
#include <QSize>
#include <QString>
#include <filesystem>
#include <functional>

class QFont;
class QLineEdit;
class QWidget;

namespace orvak::shell {
struct ShellState;
}

namespace orvak::ui {

class EditAsc;

/// Answers a question instead of a message box: receives its text, returns the button.
using AskHook = std::function<QMessageBox::StandardButton(const QString& question)>;
/// Receives a message instead of a message box.
using MessageHook = std::function<void(const QString& message)>;

/// A Yes/No question whose default is No; true for Yes.
bool askYesNo(QWidget* form, const AskHook& hook, const QString& question, const QString& title);

/// Shows a message through the hook, or in a warning box; a sentence without its full stop
/// (as the engines give them) gets one.
void tellUser(QWidget* form, const MessageHook& hook, const QString& message);
/// Shows the system's own message exactly as it stands, no full stop added.
void tellUserAsIs(QWidget* form, const MessageHook& hook, const QString& text);

/// The fixed-width face of listings and item lists (DejaVu Sans Mono, else the system's).
QFont listingFont();

/// Makes a line edit wide enough for `chars` characters of its font, and no wider.
void fitToChars(QLineEdit* edit, int chars);

/// Gives a viewer of a calculation sheet the title block of its printed pages: the project's
/// title (its first title line, else its name), the element (the sheet's name) and the page
/// words of the user's language (prompt file SHEET).
void setSheetTitleBlock(EditAsc* viewer, const shell::ShellState& shell, const QString& element);

/// Shows `other` (a form or viewer, deleted when closed) beside `form`: in the main window's
/// work area when the form lives there, else as a window of its own, at most `size`.
void showBeside(QWidget* form, QWidget* other, QSize size);

/// Opens the plain-text viewer on a printout beside `form`: in the main window's work area
/// when the form lives there, else as a window of its own. The viewer deletes itself when
/// closed. Captions of its toolbar come from the general prompts.
EditAsc* openReportViewer(QWidget* form, const shell::ShellState& shell, const QString& title,
                          const QString& text, const MessageHook& hook);

/// Opens a sheet or listing file (an ".rtf" report as its plain text) in the viewer beside
/// `form`, with the title block of its printed pages; nullptr when the file cannot be read
/// (the caller says why: not designed yet, say).
EditAsc* openSheetViewer(QWidget* form, const shell::ShellState& shell,
                         const std::filesystem::path& file, const MessageHook& hook);

} // namespace orvak::ui
