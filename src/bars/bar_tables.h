// The three reference tables of reinforcing steel in the GENERAL folder (round bars, bar
// spacings, welded mesh): record layouts, built-in defaults, open and lookup operations.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/record.h"
#include "core/table_file.h"

namespace orvak::bars {

inline constexpr std::string_view kRoundbarFile = "ROUNDBAR.DAT";
inline constexpr std::string_view kSpacingFile = "SPACING.DAT";
inline constexpr std::string_view kNetironFile = "NETIRON.DAT";
/// Scratch file of a table save, in the same folder as the table.
inline constexpr std::string_view kTableTempFile = core::kTableTempFile;

/// Most bar diameters the design forms can be offered.
inline constexpr std::size_t kMaxBarDiameters = 50;

// Every record: a one-byte use mark ("1" in use) and a run of little-endian singles.
inline constexpr auto kRoundbarLayout = core::packFields<2>({{
    {"flag", core::FieldType::Text, 1},
    {"values", core::FieldType::Single, 0, 11}, ///< diameter mm, kg/m, cm², 8 kept values
}});
static_assert(kRoundbarLayout.size == 45, "ROUNDBAR.DAT records are 45 bytes");

inline constexpr auto kSpacingLayout = core::packFields<2>({{
    {"flag", core::FieldType::Text, 1},
    {"values", core::FieldType::Single, 0, 21}, ///< spacing cm, then 20 areas cm²/m
}});
static_assert(kSpacingLayout.size == 85, "SPACING.DAT records are 85 bytes");

inline constexpr auto kNetironLayout = core::packFields<2>({{
    {"flag", core::FieldType::Text, 1},
    {"values", core::FieldType::Single, 0, 6}, ///< wire mm, two spacings, two areas, mark
}});
static_assert(kNetironLayout.size == 25, "NETIRON.DAT records are 25 bytes");

enum class TableId { Roundbar, Spacing, Netiron };

/// Everything that tells the three tables apart: the editing engine is one design repeated.
struct TableKind {
    TableId id;
    std::string_view formName;  ///< `Roundbar`, `spacing`, `Netiron`
    std::string_view promptKey; ///< prompt-file key of the form
    std::string_view fileName;
    std::size_t recordLength;
    std::size_t valueCount; ///< singles per record behind the use mark
    int gridRows;           ///< rows of the editing grid; a save walks all of them
    int gridColumns;        ///< values per grid row (the first ones of the record)
    /// The first columns, those that carry a meaning, that the form shows and the printout
    /// lists; the others stay in the grid and the record as the file holds them.
    int shownColumns;
    int shownRows;                 ///< records a load puts into the grid
    std::string_view limitString;  ///< per-column minimum and maximum, input-grid notation
    std::string_view columnFormat; ///< per-column access, kind and digits, input-grid notation
    std::span<const std::string_view> printFormats; ///< one mask per grid column
    int headingPlaceholders;                        ///< the print headings use "@0:" .. "@n:"
    std::string_view defaultHeadings;               ///< English headings, in prompt-line form
    std::span<const float> defaults;                ///< row-major built-in table; empty: none
    int defaultColumns;                             ///< values per row of `defaults`
    bool openCreatesFile; ///< the open makes an empty file where none exists

    const core::FieldDef& valuesField() const;
    int defaultRows() const {
        return defaultColumns == 0 ? 0 : static_cast<int>(defaults.size()) / defaultColumns;
    }
};

const TableKind& roundbarTable();
const TableKind& spacingTable();
const TableKind& netironTable();
const TableKind& tableKind(TableId id);
/// "roundbar", "spacing" or "netiron" (any case); empty for anything else.
std::optional<TableId> tableIdFromName(std::string_view name);

/// The table file of `folder`, found without regard to case.
std::filesystem::path tableFilePath(const TableKind& kind, const std::filesystem::path& folder);

/// Loads a table file with a rounded record count: a partial last record of at least half a
/// record counts, and reads as an empty row (zeros, not in use). When the kind's open creates
/// files, an empty file is made where none exists. Throws FileError when the file cannot be read or
/// made.
core::RecordFile openTableFile(const TableKind& kind, const std::filesystem::path& folder);
/// The same without ever creating a file: a missing file is an empty one.
core::RecordFile readTableFile(const TableKind& kind, const std::filesystem::path& folder);

/// ROUNDBAR.DAT of `folder`, 45-byte records; creates an empty file where none exists.
core::RecordFile OpenRoundbarFile(const std::filesystem::path& folder);
/// SPACING.DAT of `folder`, 85-byte records; creates an empty file where none exists.
core::RecordFile OpenSpacingFile(const std::filesystem::path& folder);
/// NETIRON.DAT of `folder`, 25-byte records; a missing file gives count 0 and is not made.
core::RecordFile OpenNetironFile(const std::filesystem::path& folder);

/// Value `index` (0-based) of a table record; NaN and infinities, which only another program
/// can have written, read as 0 so that they never reach a design.
float recordValue(const core::RecordBuffer& record, const TableKind& kind, std::size_t index);

/// Diameters (mm) offered to the design forms: the diameter of every record in use whose
/// diameter is above 0, in file order, duplicates kept.
struct BarDiameterList {
    std::vector<float> diameters;
    /// False when ROUNDBAR.DAT holds no record: the caller shows general prompt 3.
    bool barTableAvailable = false;
    std::int16_t count() const { return static_cast<std::int16_t>(diameters.size()); }
};

/// Reads ROUNDBAR.DAT of the GENERAL folder (a missing file is not made). Throws FileError
/// when more than kMaxBarDiameters records qualify, or when the file cannot be read.
BarDiameterList LoadBarDiameters(const std::filesystem::path& generalFolder);

struct BarProperties {
    float diameterMm = 0.0f;
    float areaCm2 = 0.0f;      ///< cross-section of one bar
    float weightKgPerM = 0.0f; ///< weight per metre of bar
};

struct BarPropertyTable {
    std::vector<BarProperties> rows; ///< every record in use, in file order
    /// False when ROUNDBAR.DAT holds no record: the caller shows general prompt 3 and stops.
    bool available = false;
    bool builtIn = false; ///< the rows are the built-in table (LoadBarPropertiesOrBuiltIn)
};

/// Reads ROUNDBAR.DAT of the GENERAL folder (a missing file is not made).
BarPropertyTable LoadBarProperties(const std::filesystem::path& generalFolder);

/// The built-in round-bar rows (the table a fresh installation writes), in table order.
std::vector<BarProperties> builtInBarProperties();

/// ROUNDBAR.DAT of the GENERAL folder, or, where the folder has no table (no file, or one
/// without records: a program folder the GUI never started in), the built-in rows with
/// `builtIn` set, as a first start would have written them. A table of the user's that holds
/// records is never replaced, even when none of them is usable.
BarPropertyTable LoadBarPropertiesOrBuiltIn(const std::filesystem::path& generalFolder);

/// The first row whose diameter equals `diameterMm` exactly (single precision, no tolerance:
/// 12.5 is not found in a table of 12 and 13); empty when there is none.
std::optional<BarProperties> FindBarProperties(float diameterMm,
                                               std::span<const BarProperties> rows);

/// One welded-mesh type: wire diameter (mm), spacings in the two directions (cm), areas per
/// metre in the two directions (cm²/m), and a yes/no mark stored as 1.0 or 0.0.
struct MeshRow {
    std::array<float, 6> values{};
    bool ticked() const { return values[5] == 1.0f; }
};

/// The records in use of NETIRON.DAT of the GENERAL folder, in file order; none when the
/// file is missing.
std::vector<MeshRow> ReadNetironRows(const std::filesystem::path& generalFolder);

} // namespace orvak::bars
