// The base of the forms that edit a table in the input grid: the toolbar of command keys, the
// status line and progress bar, relabelling in a new language, the cell checks before a save,
// and the question on leaving with unsaved changes.
#pragma once

#include <QWidget>
#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QAction;
class QLabel;
class QProgressBar;
class QToolBar;

namespace orvak::ui {

class InputGrid;

/// Progress of a save: (row, rows) after each grid row, (0, rows) at the end.
using GridProgress = std::function<void(int value, int maximum)>;

/// A line of a form's prompt file (prompt n is line n + 1) and the English text shown when the
/// file lacks it.
struct FormText {
    std::size_t prompt;
    std::string_view english;
};

/// A command of the toolbar: its key (the action's object name) and its English caption.
struct GridTool {
    std::string_view key;
    std::string_view english;
};

/// The commands of the table forms' toolbar, in its order.
inline constexpr GridTool kTableTools[] = {
    {"save", "Save"},      {"cprint", "Print"}, {"copy", "Copy"},
    {"cdelete", "Delete"}, {"exit", "Exit"},
};

/// What a grid form is: its name and prompt file, where its texts stand in that file, and the
/// shape of its grid. The spans and strings must outlive the form (constants of the form).
struct GridFormSetup {
    std::string_view objectName;
    std::string_view promptKey;
    FormText caption;
    std::span<const GridTool> tools = kTableTools;
    std::size_t firstToolPrompt = 0;            ///< tool k has prompt firstToolPrompt + k
    std::span<const std::string_view> headings; ///< English headings, one per grid column
    std::size_t firstHeadingPrompt = 0;         ///< column k has prompt firstHeadingPrompt + k
    FormText saving;
    FormText saved; ///< "%1": the number of records written
    FormText emptySaved;
    int rows = 1;
    int columns = 1;
    /// Columns shown, from the first; the others are hidden and keep what was loaded into
    /// them. 0: every column.
    int shownColumns = 0;
    std::string_view descriptor; ///< field descriptor string of every row
    std::string_view limits;     ///< limit string of every row
};

class GridForm : public QWidget {
    Q_OBJECT
public:
    InputGrid* grid() const { return m_grid; }
    QToolBar* toolBar() const { return m_toolBar; }
    /// The toolbar action of a key ("save", "cprint" ...); nullptr for a key not on it.
    QAction* action(std::string_view key) const;
    QProgressBar* progressBar() const { return m_progress; }
    /// The text of the status line (last outcome of a command).
    QString statusText() const;
    /// Edits not saved yet: typed into the grid (also before a relabelling) or held by the
    /// form's own data.
    bool isChanged() const;

    /// "save": checks every cell, then writes the table while the progress bar runs over the
    /// grid rows. True when the table is on disk as shown (also when nothing had changed);
    /// false, after telling the user, when a cell is refused or the file cannot be written,
    /// and the old table file is then as it was.
    bool save();
    /// Runs the toolbar command of a key: "save" and "exit" here, the others in the form.
    void toolbarCommand(std::string_view key);

    /// Replaces the questions (leaving with changes, and the form's own).
    void setAskHook(AskHook hook) { m_askHook = std::move(hook); }
    /// Replaces the message boxes of refused values and failed commands.
    void setMessageHook(MessageHook hook);

public slots:
    /// Reloads the captions and headings in the current language; what was typed stays, and
    /// so does the fact that it is not saved yet.
    void readPrompts();

signals:
    /// The table was written (or removed, when no row was in use); the text says so.
    void saved(const QString& message);

protected:
    /// `shell` must outlive the form. The form fills the grid once its own part is built, then
    /// calls finishLoad().
    GridForm(shell::ShellState& shell, const GridFormSetup& setup, QWidget* parent);

    /// The grid shows the table as read. `readOk` false: nothing could be read, and the form
    /// will neither write nor delete the file it could not read.
    void finishLoad(bool readOk);
    /// Copies what the grid shows into the form's data before a save or print.
    virtual void syncData() {}
    /// Whether the data differ from the table file, after syncData(); by default, whether the
    /// grid was edited.
    virtual bool dataChanged() const;
    /// Writes the table, reporting progress; returns the records written (0: no row was in
    /// use and the table file is gone). Throws FileError, the old file being left as it was.
    virtual std::size_t writeTable(const GridProgress& progress) = 0;
    /// Whether a row belongs to the table, so that its cells are checked; by default every row.
    virtual bool rowInUse(int row) const;
    /// A toolbar command other than "save" and "exit"; by default nothing.
    virtual void runCommand(std::string_view key);

    shell::ShellState& shell() const { return m_shell; }
    const shell::PromptList& prompts() const { return m_prompts; }
    QString prompt(const FormText& text) const;
    const AskHook& askHook() const { return m_askHook; }
    const MessageHook& messageHook() const { return m_messageHook; }
    void tell(const QString& message) const;
    void setStatus(const QString& text);
    /// The first shown cell of a row in use whose value its column refuses is told and, on
    /// screen, focused; false when every cell passes. Hidden columns are the file's, not the
    /// user's to mend, and are not checked. A value can reach a cell without its editor (read
    /// from a file another program wrote), so every save and print checks them all.
    bool refuseBadCell();
    /// Edits typed before the grid was relabelled for a new language: they are in its texts,
    /// no longer marked there, and not saved yet.
    bool changedBeforeRelabel() const { return m_changedBeforeRelabel; }
    /// Closes the form without asking about unsaved changes (their file is gone).
    void closeWithoutQuestion();

    void closeEvent(QCloseEvent* event) override;

private:
    shell::ShellState& m_shell;
    GridFormSetup m_setup;
    shell::PromptList m_prompts;
    QToolBar* m_toolBar;
    InputGrid* m_grid;
    QLabel* m_status;
    QProgressBar* m_progress;
    AskHook m_askHook;
    MessageHook m_messageHook;
    bool m_loaded = false;
    /// The table file could not be read: nothing may be written over it.
    bool m_loadFailed = false;
    bool m_leavingWithoutQuestion = false;
    bool m_changedBeforeRelabel = false;
};

} // namespace orvak::ui
