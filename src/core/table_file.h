// The table files of the grid forms: the number a cell holds, the text a cell shows for a
// stored single, the save rule (rows in use to "TMPFIL" beside the table, then renamed), and
// the record each grid row carries through its saves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/file_util.h"
#include "core/record.h"

namespace orvak::core {

/// Scratch file of a table save, in the same folder as the table.
inline constexpr std::string_view kTableTempFile = "TMPFIL";

/// The number a cell holds: its leading decimal number after leading blanks, as BASIC's Val
/// reads it; blank or non-numeric text, NaN and infinities count as 0.
double cellNumber(std::string_view text);

/// The text a grid cell shows for a stored single: the shortest decimal that reads back to
/// the same single ("0.15", "12", "0").
std::string cellTextFor(float value);

/// Saves a table file by the rule of the table forms. `records` are the whole records of the
/// rows in use, in order, without gaps. They are written to TMPFIL in the folder of `target`
/// and synced; `beforeRename` is called; then TMPFIL is renamed over `target`, which stays
/// intact until that moment. When `records` is empty, `target` is deleted and the empty TMPFIL
/// stays behind. The folder is synced last. Throws FileError, whose message calls the table
/// `tableName` ("bar table"); `target` is then as it was.
void saveTableFile(const std::filesystem::path& target, const std::vector<std::uint8_t>& records,
                   std::string_view tableName, const BeforeRenameHook& beforeRename = {});

/// Progress of a table save: (row, rows) after each grid row, (0, rows) at the end.
using RowProgress = std::function<void(int value, int maximum)>;

/// The records behind the rows of a table grid (rows numbered from 0). Each row carries the
/// record it was loaded from or last saved as, so the fields the grid does not show stay with
/// their row however often the rows in use are squeezed together. Records in use that no row
/// shows are kept and written back, as they were, after the rows.
class TableRecords {
public:
    /// `rows` rows, each standing for `blank` (a row without a record of its own); `blank`
    /// also gives the record length.
    explicit TableRecords(RecordBuffer blank, std::size_t rows = 0);

    std::size_t rowCount() const { return m_rows.size(); }
    std::size_t recordLength() const { return m_blank.length(); }

    /// `rows` rows from `file`: row n takes record n + 1 when that record is in use and
    /// n < shownRecords, else the blank record. The records in use after the first
    /// `shownRecords` are the ones no row shows. Precondition: shownRecords <= rows and the
    /// file's record length is recordLength().
    void load(const RecordFile& file, std::size_t rows, std::size_t shownRecords);

    /// The record row `row` stands for.
    const RecordBuffer& record(std::size_t row) const;

    /// Saves `target` by the rule of saveTableFile: each row for which `inUse(row)` holds
    /// becomes the next record, built on the record the row carries, with the use mark "1" and
    /// then `fill(row, record)` putting the row's cells in; the records no row shows follow.
    /// Returns the records written. Afterwards each row carries the record it was saved as (a
    /// row left out, none). When `fill` or the save throws, the table file is as it was and
    /// every row carries what it did before.
    std::size_t save(const std::filesystem::path& target, std::string_view tableName,
                     const std::function<bool(std::size_t row)>& inUse,
                     const std::function<void(std::size_t row, RecordBuffer& record)>& fill,
                     const RowProgress& progress = {}, const BeforeRenameHook& beforeRename = {});

private:
    RecordBuffer m_blank;
    std::vector<RecordBuffer> m_rows;
    /// Records in use that no row shows, in file order.
    std::vector<RecordBuffer> m_notShown;
};

} // namespace orvak::core
