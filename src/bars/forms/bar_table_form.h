// The editing forms of the bar, spacing and mesh tables (`Roundbar`, `spacing`, `Netiron`):
// one grid form parametrised by its table, with the toolbar "save", "cprint", "copy",
// "cdelete", "exit".
#pragma once

#include "bars/bar_table_grid.h"
#include "shell/shell_state.h"
#include "ui/grid_form.h"

namespace orvak::ui {
class EditAsc;
}

namespace orvak::bars::forms {

class BarTableForm : public ui::GridForm {
    Q_OBJECT
public:
    /// Opens the kind's table of the GENERAL folder (making an empty ROUNDBAR.DAT or
    /// SPACING.DAT where none exists, as the table's open does). `shell` must outlive the form.
    BarTableForm(const bars::TableKind& kind, shell::ShellState& shell, QWidget* parent = nullptr);

    const bars::TableKind& kind() const { return m_table.kind(); }

    /// "cprint": the rows in use as the printed table, in the text viewer; nullptr when the
    /// grid holds a refused cell.
    ui::EditAsc* printTable();
    /// "cdelete": when the table file exists, asks (Yes/No, default No) and on Yes deletes it
    /// and closes the form. True when the file was deleted.
    bool deleteTable();

protected:
    /// Copies what the grid shows into the table engine; cells it already holds stay.
    void syncData() override;
    bool dataChanged() const override { return m_table.changed(); }
    /// Writes the rows that have a first value, without gaps.
    std::size_t writeTable(const ui::GridProgress& progress) override;
    /// "cprint" and "cdelete"; "copy" is accepted and does nothing in these forms.
    void runCommand(std::string_view key) override;

private:
    void load();

    bars::BarTableGrid m_table;
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
