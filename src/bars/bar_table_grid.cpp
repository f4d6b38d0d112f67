// The editing engine of the bar, spacing and mesh table forms: load, crash-safe save with
// empty rows squeezed out, delete of the table file, and the printed table.
#include "bars/bar_table_grid.h"

#include "core/error.h"
#include "core/mask_format.h"
#include "shell/prompts.h"

namespace fs = std::filesystem;

namespace orvak::bars {

BarTableGrid::BarTableGrid(const TableKind& kind)
    : m_kind(&kind), m_cells(static_cast<std::size_t>(kind.gridRows),
                             std::vector<std::string>(static_cast<std::size_t>(kind.gridColumns))),
      m_records(core::RecordBuffer(kind.recordLength), static_cast<std::size_t>(kind.gridRows)) {}

BarTableGrid BarTableGrid::fromFile(const TableKind& kind, const core::RecordFile& file) {
    BarTableGrid grid(kind);
    grid.m_records.load(file, static_cast<std::size_t>(kind.gridRows),
                        static_cast<std::size_t>(kind.shownRows));
    if (file.count() > 0) {
        for (int r = 1; r <= kind.shownRows; ++r) {
            // A record not in use, or beyond the end, stands as a blank one: a row of zeros.
            const core::RecordBuffer& rec = grid.m_records.record(grid.index(r));
            auto& cells = grid.m_cells[grid.index(r)];
            for (int c = 1; c <= kind.gridColumns; ++c) {
                cells[static_cast<std::size_t>(c - 1)] =
                    rec.inUse()
                        ? cellTextFor(recordValue(rec, kind, static_cast<std::size_t>(c - 1)))
                        : "0";
            }
        }
        return grid;
    }
    const int rows = kind.defaultRows();
    for (int r = 1; r <= rows; ++r) {
        auto& cells = grid.m_cells[grid.index(r)];
        for (int c = 1; c <= kind.defaultColumns; ++c) {
            const auto at = static_cast<std::size_t>((r - 1) * kind.defaultColumns + (c - 1));
            cells[static_cast<std::size_t>(c - 1)] = cellTextFor(kind.defaults[at]);
        }
    }
    grid.m_showsDefaults = rows > 0;
    return grid;
}

BarTableGrid BarTableGrid::open(const TableKind& kind, const fs::path& generalFolder) {
    return fromFile(kind, openTableFile(kind, generalFolder));
}

BarTableGrid BarTableGrid::read(const TableKind& kind, const fs::path& generalFolder) {
    return fromFile(kind, readTableFile(kind, generalFolder));
}

std::vector<std::vector<std::string>>::size_type BarTableGrid::index(int row) const {
    ORVAK_ASSERT(row >= 1 && row <= m_kind->gridRows);
    return static_cast<std::size_t>(row - 1);
}

const std::string& BarTableGrid::cell(int row, int column) const {
    ORVAK_ASSERT(column >= 1 && column <= m_kind->gridColumns);
    return m_cells[index(row)][static_cast<std::size_t>(column - 1)];
}

void BarTableGrid::setCell(int row, int column, std::string text) {
    ORVAK_ASSERT(column >= 1 && column <= m_kind->gridColumns);
    m_cells[index(row)][static_cast<std::size_t>(column - 1)] = std::move(text);
    m_changed = true;
}

const std::vector<std::string>& BarTableGrid::row(int row) const {
    return m_cells[index(row)];
}

TableSaveResult BarTableGrid::save(const fs::path& generalFolder, const TableSaveOptions& options) {
    if (!m_changed) {
        return {};
    }
    const TableKind& kind = *m_kind;
    const std::size_t written = m_records.save(
        tableFilePath(kind, generalFolder), "bar table",
        [&](std::size_t row) { return rowInUse(static_cast<int>(row) + 1); },
        [&](std::size_t row, core::RecordBuffer& rec) {
            for (int c = 1; c <= kind.gridColumns; ++c) {
                rec.setSingle(kind.valuesField(),
                              static_cast<float>(number(static_cast<int>(row) + 1, c)),
                              static_cast<std::size_t>(c - 1));
            }
        },
        options.progress, options.beforeRename);
    m_changed = false;
    return {written > 0 ? TableSaveOutcome::Saved : TableSaveOutcome::AllEmpty, written};
}

bool tableFileExists(const TableKind& kind, const fs::path& generalFolder) {
    return core::findFileNoCase(generalFolder, kind.fileName).has_value();
}

bool deleteTableFile(const TableKind& kind, const fs::path& generalFolder) {
    const auto path = core::findFileNoCase(generalFolder, kind.fileName);
    if (!path) {
        return false;
    }
    std::error_code ec;
    fs::remove(*path, ec);
    if (ec) {
        throw FileError(*path, "The bar table file cannot be deleted: " + ec.message());
    }
    return true;
}

std::string printTable(const BarTableGrid& grid, std::string_view headingPrompt) {
    const TableKind& kind = grid.kind();
    const std::string_view prompt = headingPrompt.empty() ? kind.defaultHeadings : headingPrompt;
    std::string out;
    for (int k = 0; k <= kind.headingPlaceholders; ++k) {
        const std::string heading = shell::placeholderText(prompt, k);
        if (!heading.empty()) {
            out += heading;
            out += '\n';
        }
    }
    for (int r = 1; r <= grid.rowCount(); ++r) {
        if (!grid.rowInUse(r)) {
            continue;
        }
        for (int c = 1; c <= kind.shownColumns; ++c) {
            out += core::formatUsing(kind.printFormats[static_cast<std::size_t>(c - 1)],
                                     grid.number(r, c));
        }
        out += '\n';
    }
    return out;
}

} // namespace orvak::bars
