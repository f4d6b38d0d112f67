// A grid over a file of fixed-length records: each grid column shows one value of a record
// field, and a save writes the rows in use, without gaps, by the table-file rule. The record
// grid form is a grid form over one such file.
#pragma once

#include <QString>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/file_util.h"
#include "core/record.h"
#include "core/table_file.h"
#include "ui/grid_form.h"

namespace orvak::ui {

class InputGridModel;

/// A grid column shows value `index` of `field` (text, 16- or 32-bit integer, or single).
struct RecordColumn {
    core::FieldDef field;
    std::size_t index = 0;
};

class RecordGrid {
public:
    /// `columns`: one per grid column, in order. `blank` is the record a new row starts from
    /// (core::blankRecord of the layout) and gives the record length. `tableName` names the
    /// table in messages ("column table").
    RecordGrid(std::vector<RecordColumn> columns, core::RecordBuffer blank, std::string tableName);

    std::size_t recordLength() const { return m_records.recordLength(); }

    /// Shows `file` in the grid: record n in row n, a record not in use as an empty row, rows
    /// past the last record empty. Records past the grid's last row are not shown; the save
    /// keeps those in use. Saves go to file.path().
    void load(const core::RecordFile& file, InputGridModel& grid, std::string_view language);

    /// A row is in use when it has its first value: a number other than 0, or text that is not
    /// blank. Only such rows are saved.
    bool rowInUse(const InputGridModel& grid, int row) const;

    /// Saves the grid by the table-file rule: each row in use becomes the next record, built on
    /// the record the row shows (fields the grid does not show stay as they were) with the use
    /// mark "1" and the values of its cells; text is cut to its field. The records beyond the
    /// grid follow. With no row in use the file is removed. Returns the records written.
    /// Throws FileError, the file being left as it was, and InputError for a number that its
    /// integer field cannot hold. Afterwards each row stands for the record it was saved as.
    std::size_t save(const InputGridModel& grid, std::string_view language,
                     const GridProgress& progress = {},
                     const core::BeforeRenameHook& beforeRename = {});

private:
    /// Puts the value of a cell into its field of `record`.
    void store(const InputGridModel& grid, int row, int column, std::string_view language,
               core::RecordBuffer& record) const;
    static QString cellText(const core::RecordBuffer& record, const RecordColumn& column,
                            std::string_view language);

    std::vector<RecordColumn> m_columns;
    std::string m_tableName;
    std::filesystem::path m_path;
    /// The record behind each grid row, and the records in use past the grid's last row.
    core::TableRecords m_records;
};

/// A grid form whose table is a record file: its grid shows the records and its save writes
/// them back through the record grid. Rows not in use are left out of the checks as well.
class RecordGridForm : public GridForm {
    Q_OBJECT
protected:
    RecordGridForm(shell::ShellState& shell, const GridFormSetup& setup, RecordGrid records,
                   QWidget* parent);

    /// Reads the record file `path` (a partial last record taken as `count` says) into the grid
    /// and ends the load. A file that cannot be read is told; the grid then stays empty and
    /// nothing is written over the file.
    void loadRecords(const std::filesystem::path& path, core::RecordFile::Count count);

    std::size_t writeTable(const GridProgress& progress) override;
    bool rowInUse(int row) const override;

private:
    RecordGrid m_records;
};

} // namespace orvak::ui
