// The editing engine shared by the bar, spacing and mesh table forms: a grid of cell texts
// loaded from the table file or the built-in table, saved with empty rows squeezed out.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bars/bar_tables.h"
#include "core/file_util.h"
#include "core/table_file.h"

namespace orvak::bars {

// The cell rules are those of every table form.
using core::cellNumber;
using core::cellTextFor;

/// Progress of a save: called with (row, gridRows) after each grid row and with (0, gridRows)
/// at the end, as a progress bar from 0 to the number of rows is driven.
using SaveProgress = std::function<void(int value, int maximum)>;

struct TableSaveOptions {
    SaveProgress progress;
    /// Called once TMPFIL is complete and on disk, before it is renamed over the table file.
    core::BeforeRenameHook beforeRename;
};

enum class TableSaveOutcome {
    Unchanged, ///< nothing changed since the load or the last save: nothing written
    Saved,     ///< the table file holds the rows with a first value, without gaps, then the
               ///< records no row shows
    AllEmpty,  ///< nothing to write: the table file is gone, an empty TMPFIL remains
};

struct TableSaveResult {
    TableSaveOutcome outcome = TableSaveOutcome::Unchanged;
    std::size_t recordsWritten = 0;
};

/// The rows and cells of one table form. Rows and columns are numbered from 1 as the form
/// shows them; every row has gridColumns cells.
class BarTableGrid {
public:
    /// An empty grid of the kind's size: every cell blank, no record behind any row.
    explicit BarTableGrid(const TableKind& kind);

    /// Loads the table as its form does when it opens: the kind's open operation (which makes
    /// an empty ROUNDBAR.DAT or SPACING.DAT where none exists), then rows 1..shownRows from
    /// records 1..shownRows (a record not in use, or beyond the end, gives a row of zeros), or
    /// the built-in table when the file holds no record. Each row keeps the record it shows;
    /// the records in use after record shownRows are kept as no row shows them. Throws
    /// FileError when the file cannot be read or made.
    static BarTableGrid open(const TableKind& kind, const std::filesystem::path& generalFolder);
    /// The same load without making any file (for showing a table read-only).
    static BarTableGrid read(const TableKind& kind, const std::filesystem::path& generalFolder);

    const TableKind& kind() const { return *m_kind; }
    int rowCount() const { return m_kind->gridRows; }
    int columnCount() const { return m_kind->gridColumns; }

    /// Text of a cell. Precondition: 1 <= row <= rowCount(), 1 <= column <= columnCount().
    const std::string& cell(int row, int column) const;
    /// The number of a cell, read as cellNumber() does.
    double number(int row, int column) const { return cellNumber(cell(row, column)); }
    /// Changes a cell and marks the grid changed (an edit of the form).
    void setCell(int row, int column, std::string text);
    /// The cell texts of one row (1-based row).
    const std::vector<std::string>& row(int row) const;

    bool changed() const { return m_changed; }
    void markChanged() { m_changed = true; }
    /// True when the load found no record and put the built-in table up.
    bool showsDefaults() const { return m_showsDefaults; }

    /// A row is in use when its first cell holds a number other than 0: such rows are saved
    /// and printed, the others are squeezed out.
    bool rowInUse(int row) const { return number(row, 1) != 0.0; }

    /// Saves the grid into the table file of `generalFolder`: each row in use becomes the next
    /// record of TMPFIL, built on the record the row was loaded from or last saved as (so the
    /// values the grid does not show, areas 16 to 20 of SPACING.DAT, stay with their row save
    /// after save), its visible values from the cells and its use mark "1"; the records no row
    /// shows (ROUNDBAR.DAT after record 16) follow as they were. TMPFIL is written completely
    /// and synced, then renamed over the table file, which stays intact until that moment.
    /// When there is no record to write the table file is deleted and the empty TMPFIL stays
    /// behind. Returns at once, writing nothing, when the grid has not changed. Throws
    /// FileError on a write failure; the table file and the rows' records are then as they
    /// were.
    TableSaveResult save(const std::filesystem::path& generalFolder,
                         const TableSaveOptions& options = {});

private:
    static BarTableGrid fromFile(const TableKind& kind, const core::RecordFile& file);
    std::vector<std::vector<std::string>>::size_type index(int row) const;

    const TableKind* m_kind;
    std::vector<std::vector<std::string>> m_cells;
    /// The record behind each row, and the records no row shows.
    core::TableRecords m_records;
    bool m_changed = false;
    bool m_showsDefaults = false;
};

/// True when the kind's table file exists in `generalFolder` (the delete command asks only
/// then).
bool tableFileExists(const TableKind& kind, const std::filesystem::path& generalFolder);

/// Deletes the kind's table file; nothing else. Returns false when there was none. Throws
/// FileError when it exists and cannot be deleted.
bool deleteTableFile(const TableKind& kind, const std::filesystem::path& generalFolder);

/// The table as report text: the heading lines, then one line per row in use, each shown
/// value (the kind's shownColumns) through its column's print mask. Headings come from a prompt
/// line through "@0:" (title) and "@1:" .. "@n:" (heading lines under it, n = headingPlaceholders);
/// blank ones print no line. An empty `headingPrompt` uses the kind's English headings. Lines end
/// in "\n".
std::string printTable(const BarTableGrid& grid, std::string_view headingPrompt = {});

} // namespace orvak::bars
