// The record grid: record fields shown as cell texts in the user's code page, and the rows in
// use written back over the records they came from, squeezed together, through TMPFIL.
#include "ui/record_grid.h"

#include <cmath>
#include <limits>

#include "core/error.h"
#include "core/table_file.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"

namespace orvak::ui {

namespace {

/// A number of a cell as a whole number of an integer field; InputError when it cannot hold it.
template <class Int> Int wholeNumber(double value, const InputGridModel& grid, int column) {
    const double rounded = std::round(value);
    if (!(rounded >= static_cast<double>(std::numeric_limits<Int>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<Int>::max()))) {
        const QString heading =
            grid.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().simplified();
        throw InputError((heading + QStringLiteral(": %1 cannot be stored; the field holds whole "
                                                   "numbers from %2 to %3.")
                                        .arg(value, 0, 'g', 12)
                                        .arg(std::numeric_limits<Int>::min())
                                        .arg(std::numeric_limits<Int>::max()))
                             .toStdString());
    }
    return static_cast<Int>(rounded);
}

} // namespace

RecordGrid::RecordGrid(std::vector<RecordColumn> columns, core::RecordBuffer blank,
                       std::string tableName)
    : m_columns(std::move(columns)), m_tableName(std::move(tableName)),
      m_records(std::move(blank)) {
    ORVAK_ASSERT(!m_columns.empty());
    for (const RecordColumn& column : m_columns) {
        ORVAK_ASSERT(column.index < column.field.count &&
                     column.field.offset + column.field.width * (column.index + 1) <=
                         m_records.recordLength());
    }
}

QString RecordGrid::cellText(const core::RecordBuffer& record, const RecordColumn& column,
                             std::string_view language) {
    const core::FieldDef& f = column.field;
    switch (f.type) {
    case core::FieldType::Text:
        return toQString(record.getTrimmedText(f, column.index), language);
    case core::FieldType::Int16:
        return QString::number(record.getInt16(f, column.index));
    case core::FieldType::Int32:
        return QString::number(record.getInt32(f, column.index));
    case core::FieldType::Single:
        return QString::fromStdString(core::cellTextFor(record.getSingle(f, column.index)));
    }
    ORVAK_ASSERT(false);
}

void RecordGrid::load(const core::RecordFile& file, InputGridModel& grid,
                      std::string_view language) {
    ORVAK_ASSERT(grid.columnCount() == static_cast<int>(m_columns.size()));
    m_path = file.path();
    const auto rows = static_cast<std::size_t>(grid.rowCount());
    m_records.load(file, rows, rows);
    for (int r = 0; r < grid.rowCount(); ++r) {
        const core::RecordBuffer& record = m_records.record(static_cast<std::size_t>(r));
        for (int c = 0; c < grid.columnCount(); ++c) {
            grid.setCellText(
                r, c,
                record.inUse() ? cellText(record, m_columns[static_cast<std::size_t>(c)], language)
                               : QString());
        }
    }
}

bool RecordGrid::rowInUse(const InputGridModel& grid, int row) const {
    const QString text = grid.cellText(row, 0);
    if (m_columns.front().field.type == core::FieldType::Text) {
        return !text.trimmed().isEmpty();
    }
    return core::cellNumber(text.toStdString()) != 0.0;
}

void RecordGrid::store(const InputGridModel& grid, int row, int column, std::string_view language,
                       core::RecordBuffer& record) const {
    const RecordColumn& target = m_columns[static_cast<std::size_t>(column)];
    const core::FieldDef& f = target.field;
    const std::string text = fromQString(grid.cellText(row, column), language);
    if (f.type == core::FieldType::Text) {
        record.setText(f, text, target.index);
        return;
    }
    const double value = core::cellNumber(text);
    switch (f.type) {
    case core::FieldType::Int16:
        record.setInt16(f, wholeNumber<std::int16_t>(value, grid, column), target.index);
        break;
    case core::FieldType::Int32:
        record.setInt32(f, wholeNumber<std::int32_t>(value, grid, column), target.index);
        break;
    case core::FieldType::Single:
        record.setSingle(f, static_cast<float>(value), target.index);
        break;
    case core::FieldType::Text:
        break;
    }
}

std::size_t RecordGrid::save(const InputGridModel& grid, std::string_view language,
                             const GridProgress& progress,
                             const core::BeforeRenameHook& beforeRename) {
    ORVAK_ASSERT(!m_path.empty() && grid.rowCount() == static_cast<int>(m_records.rowCount()));
    return m_records.save(
        m_path, m_tableName, [&](std::size_t row) { return rowInUse(grid, static_cast<int>(row)); },
        [&](std::size_t row, core::RecordBuffer& record) {
            for (int c = 0; c < grid.columnCount(); ++c) {
                store(grid, static_cast<int>(row), c, language, record);
            }
        },
        progress, beforeRename);
}

RecordGridForm::RecordGridForm(shell::ShellState& shell, const GridFormSetup& setup,
                               RecordGrid records, QWidget* parent)
    : GridForm(shell, setup, parent), m_records(std::move(records)) {}

void RecordGridForm::loadRecords(const std::filesystem::path& path, core::RecordFile::Count count) {
    try {
        m_records.load(core::RecordFile::load(path, m_records.recordLength(), count),
                       *grid()->model(), shell().language());
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        finishLoad(false);
        return;
    }
    finishLoad(true);
}

std::size_t RecordGridForm::writeTable(const GridProgress& progress) {
    return m_records.save(*grid()->model(), shell().language(), progress);
}

bool RecordGridForm::rowInUse(int row) const {
    return m_records.rowInUse(*grid()->model(), row);
}

} // namespace orvak::ui
