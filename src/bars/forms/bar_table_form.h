// The editing forms of the bar, spacing and mesh tables (`Roundbar`, `spacing`, `Netiron`):
// one form parametrised by its table, with the toolbar "save", "cprint", "copy", "cdelete", "exit".
#pragma once

#include <QWidget>
#include <string_view>

#include "bars/bar_table_grid.h"
#include "bars/forms/bar_form_support.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"

class QAction;
class QLabel;
class QProgressBar;
class QToolBar;

namespace orvak::ui {
class EditAsc;
class InputGrid;
} // namespace orvak::ui

namespace orvak::bars::forms {

class BarTableForm : public QWidget {
    Q_OBJECT
public:
    /// Opens the kind's table of the GENERAL folder (making an empty ROUNDBAR.DAT or
    /// SPACING.DAT where none exists, as the table's open does). `shell` must outlive the form.
    BarTableForm(const bars::TableKind& kind, shell::ShellState& shell, QWidget* parent = nullptr);

    const bars::TableKind& kind() const { return m_table.kind(); }
    ui::InputGrid* grid() const { return m_grid; }
    QToolBar* toolBar() const { return m_toolBar; }
    /// The toolbar action of a key ("save", "cprint", "copy", "cdelete", "exit").
    QAction* action(std::string_view key) const;
    QProgressBar* progressBar() const { return m_progress; }
    /// The text of the status line (last outcome of a command).
    QString statusText() const;
    bool isChanged() const;

    /// "save": checks every cell, then writes the rows that have a first value, without gaps,
    /// while the progress bar runs over the grid rows. True when the table is on disk as shown
    /// (also when nothing had changed); false, after telling the user, when a cell is refused
    /// or the file cannot be written, and the old table file is then as it was.
    bool save();
    /// "cprint": the rows in use as the printed table, in the text viewer; nullptr when the
    /// grid holds a refused cell.
    ui::EditAsc* printTable();
    /// "cdelete": when the table file exists, asks (Yes/No, default No) and on Yes deletes it
    /// and closes the form. True when the file was deleted.
    bool deleteTable();
    /// Runs the toolbar command of a key; "copy" is accepted and does nothing.
    void toolbarCommand(std::string_view key);

    /// Replaces the questions (leaving with changes, deleting the table file).
    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    /// Replaces the message boxes of refused values and failed commands.
    void setMessageHook(ui::MessageHook hook);

public slots:
    /// Reloads the captions and headings in the current language; what was typed stays.
    void readPrompts();

signals:
    /// The table was written (or removed, when every row was empty); the text says so.
    void saved(const QString& message);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void load();
    /// Copies what the grid shows into the table engine; cells it already holds stay.
    void syncTable();
    /// The first cell the checks refuse, after telling the user; false when all pass.
    bool refuseBadCell();
    QString prompt(std::size_t n, std::string_view fallback) const;
    void tell(const QString& message) const;
    void setStatus(const QString& text);

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    bars::BarTableGrid m_table;
    QToolBar* m_toolBar;
    ui::InputGrid* m_grid;
    QLabel* m_status;
    QProgressBar* m_progress;
    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
    bool m_loaded = false;
    /// The table file could not be read: nothing may be written over it.
    bool m_loadFailed = false;
    bool m_leavingWithoutQuestion = false;
    bool m_changedBeforeRelabel = false;
};

/// `Roundbar`: ROUNDBAR.DAT, 20 rows of 11 columns, the first 16 records shown.
class Roundbar : public BarTableForm {
    Q_OBJECT
public:
    explicit Roundbar(shell::ShellState& shell, QWidget* parent = nullptr)
        : BarTableForm(bars::roundbarTable(), shell, parent) {}
};

/// `spacing`: SPACING.DAT, 27 rows of 16 columns (areas 16 to 20 kept, not shown).
class spacing : public BarTableForm {
    Q_OBJECT
public:
    explicit spacing(shell::ShellState& shell, QWidget* parent = nullptr)
        : BarTableForm(bars::spacingTable(), shell, parent) {}
};

/// `Netiron`: NETIRON.DAT, 20 rows of 6 columns; a missing file opens empty.
class Netiron : public BarTableForm {
    Q_OBJECT
public:
    explicit Netiron(shell::ShellState& shell, QWidget* parent = nullptr)
        : BarTableForm(bars::netironTable(), shell, parent) {}
};

} // namespace orvak::bars::forms
