// Columns: the column list of the current floor on the input grid (name, section type, height,
// factored load, end moment M2, dimensions a to e); the toolbar saves it, prints it, copies
// columns from another floor (`ciel_List`, `ColsList`), deletes rows and takes the floor's
// columns and groups down to the footing level.
#pragma once

#include <QDialog>
#include <QString>
#include <vector>

#include "columns/column_records.h"
#include "ui/grid_form.h"

class QListWidget;

namespace orvak::ui {
class EditAsc;
}

namespace orvak::columns::forms {

/// Rows of the grid: the most columns a floor holds in this form.
inline constexpr int kColumnRows = 300;

class Columns : public ui::GridForm {
    Q_OBJECT
public:
    /// The columns of the shell's current floor, or the column necks of the footing level.
    explicit Columns(shell::ShellState& shell, bool footingLevel = false,
                     QWidget* parent = nullptr);

    int floor() const { return m_floor; }
    bool footingLevel() const { return m_footingLevel; }

    /// "copy": the columns of floor `fromFloor` at `which` (indexes into its column file, in
    /// that order) go into the first free rows, without their group (groups are the floor's
    /// own); saved by "save". Refused with "Copying from same slab not allowed" for the
    /// current floor; nothing chosen does nothing. False when nothing was copied.
    bool copyColumns(int fromFloor, const std::vector<std::size_t>& which);
    /// "cdelete": after asking, empties the selected rows and closes the gap (saved by "save").
    bool deleteSelectedRows();
    /// "cprint": the list as shown, in the text viewer.
    ui::EditAsc* printList();
    /// "tofooting": saves the list when it was changed, then copies the floor's column and
    /// group files over those of the footing level after asking. True when done.
    bool takeToFootingLevel();

protected:
    void syncData() override;
    bool dataChanged() const override;
    std::size_t writeTable(const ui::GridProgress& progress) override;
    bool rowInUse(int row) const override;
    void runCommand(std::string_view key) override;

private:
    void load();
    void showColumn(int row, const Column& column);
    void chooseAndCopy();
    QString text(std::size_t prompt, std::string_view english) const;

    int m_floor = 0; ///< 0: the footing level
    bool m_footingLevel = false;
    /// Per grid row, the column it stands for: the values without a grid column (group, the
    /// smaller moment, the y moments) ride along with the row.
    std::vector<Column> m_rows;
    std::vector<Column> m_stored; ///< what the floor's file holds
    bool m_rowsChanged = false;   ///< rows copied or deleted since the last save
};

/// The choice of "copy": a floor in `ciel_List` (the current one included, refused on OK by the
/// form), then its columns in `ColsList` (several may be chosen).
class CopyColumnsDialog : public QDialog {
    Q_OBJECT
public:
    CopyColumnsDialog(shell::ShellState& shell, const shell::PromptList& prompts,
                      QWidget* parent = nullptr);
    QListWidget* floorList() const { return m_floors; }
    QListWidget* columnList() const { return m_columns; }
    /// The chosen floor (0: none) and the chosen columns' indexes in its file.
    int chosenFloor() const;
    std::vector<std::size_t> chosenColumns() const;

private:
    void showColumnsOf(int floor);

    shell::ShellState& m_shell;
    QListWidget* m_floors;
    QListWidget* m_columns;
};

} // namespace orvak::columns::forms
