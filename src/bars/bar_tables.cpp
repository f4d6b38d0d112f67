// The three reference tables of reinforcing steel: their descriptions, the built-in tables
// typed in from the office's steel handbook, and the operations the design modules call.
#include "bars/bar_tables.h"

#include <cmath>
#include <fstream>
#include <string>

#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::bars {

namespace {

// Columns: diameter (mm), weight (kg/m), area of one bar (cm²); the other eight stay empty.
constexpr float kRoundbarDefaults[] = {
    5,  0.15f, 0.20f, //
    6,  0.22f, 0.28f, //
    7,  0.30f, 0.38f, //
    8,  0.40f, 0.50f, //
    10, 0.62f, 0.79f, //
    12, 0.89f, 1.13f, //
    14, 1.21f, 1.54f, //
    16, 1.58f, 2.01f, //
    18, 2.00f, 2.54f, //
    20, 2.47f, 3.14f, //
    22, 2.98f, 3.80f, //
    24, 3.55f, 4.52f, //
    26, 4.17f, 5.31f, //
    28, 4.83f, 6.16f, //
    30, 5.55f, 7.07f, //
    32, 6.31f, 8.04f, //
};

// Spacing (cm), then area per metre width (cm²/m) for 6, 7, 8, 10, 12, 14, 16, 18 and 20 mm
// bars. Kept exactly as typed in: 5.95 at 9 cm for 8 mm and 9.04 at 16.5 cm for 20 mm do not
// follow area x 100 / spacing, and the 20 mm column sits slightly below the rounded rule.
constexpr float kSpacingDefaults[] = {
    7.0f,  4.04f, 5.50f, 7.18f, 11.22f, 16.16f, 21.99f, 28.73f, 36.36f, 44.87f, //
    7.5f,  3.77f, 5.13f, 6.70f, 10.47f, 15.08f, 20.52f, 26.81f, 33.93f, 41.88f, //
    8.0f,  3.53f, 4.81f, 6.28f, 9.82f,  14.14f, 19.24f, 25.14f, 31.81f, 39.26f, //
    8.5f,  3.33f, 4.53f, 5.91f, 9.24f,  13.31f, 18.11f, 23.66f, 29.94f, 36.95f, //
    9.0f,  3.14f, 4.28f, 5.95f, 8.73f,  12.57f, 17.10f, 22.34f, 28.28f, 34.90f, //
    9.5f,  2.98f, 4.05f, 5.29f, 8.27f,  11.90f, 16.20f, 21.17f, 26.79f, 33.06f, //
    10.0f, 2.83f, 3.85f, 5.03f, 7.85f,  11.31f, 15.39f, 20.11f, 25.45f, 31.41f, //
    10.5f, 2.69f, 3.67f, 4.79f, 7.48f,  10.77f, 14.66f, 19.15f, 24.24f, 29.91f, //
    11.0f, 2.57f, 3.50f, 4.57f, 7.14f,  10.28f, 13.99f, 18.28f, 23.14f, 28.55f, //
    11.5f, 2.46f, 3.35f, 4.37f, 6.83f,  9.84f,  13.39f, 17.49f, 22.13f, 27.31f, //
    12.0f, 2.36f, 3.21f, 4.19f, 6.54f,  9.42f,  12.83f, 16.76f, 21.21f, 26.17f, //
    12.5f, 2.26f, 3.08f, 4.02f, 6.28f,  9.05f,  12.32f, 16.09f, 20.36f, 25.13f, //
    13.0f, 2.17f, 2.96f, 3.87f, 6.04f,  8.70f,  11.84f, 15.47f, 19.58f, 24.16f, //
    13.5f, 2.09f, 2.85f, 3.72f, 5.82f,  8.38f,  11.40f, 14.90f, 18.85f, 23.27f, //
    14.0f, 2.02f, 2.75f, 3.59f, 5.61f,  8.08f,  11.00f, 14.36f, 18.18f, 22.44f, //
    14.5f, 1.95f, 2.65f, 3.47f, 5.42f,  7.80f,  10.62f, 13.87f, 17.55f, 21.66f, //
    15.0f, 1.89f, 2.57f, 3.35f, 5.24f,  7.54f,  10.26f, 13.41f, 16.97f, 20.94f, //
    15.5f, 1.82f, 2.48f, 3.24f, 5.07f,  7.30f,  9.93f,  12.97f, 16.42f, 20.27f, //
    16.0f, 1.77f, 2.41f, 3.14f, 4.91f,  7.07f,  9.62f,  12.57f, 15.90f, 19.64f, //
    16.5f, 1.71f, 2.33f, 3.05f, 4.76f,  6.85f,  9.33f,  12.19f, 15.42f, 9.04f,  //
    17.0f, 1.66f, 2.26f, 2.96f, 4.62f,  6.65f,  9.05f,  11.83f, 14.97f, 18.48f, //
    17.5f, 1.62f, 2.20f, 2.87f, 4.49f,  6.46f,  8.79f,  11.49f, 14.54f, 17.95f, //
    18.0f, 1.57f, 2.14f, 2.79f, 4.36f,  6.28f,  8.55f,  11.17f, 14.14f, 17.46f, //
    18.5f, 1.53f, 2.08f, 2.72f, 4.25f,  6.11f,  8.32f,  10.87f, 13.76f, 16.94f, //
    19.0f, 1.49f, 2.03f, 2.65f, 4.13f,  5.95f,  8.10f,  10.58f, 13.39f, 16.54f, //
    19.5f, 1.45f, 1.97f, 2.58f, 4.03f,  5.80f,  7.89f,  10.31f, 13.05f, 16.11f, //
    20.0f, 1.41f, 1.92f, 2.51f, 3.93f,  5.65f,  7.69f,  10.05f, 12.72f, 15.72f, //
};

constexpr std::string_view kRoundbarPrint[] = {
    "### ",   "###.##", "###.##", "###.##", "###.##", "###.##",
    "###.##", "###.##", "###.##", "###.##", "###.##",
};

constexpr std::string_view kSpacingPrint[] = {
    "##.#   ", "####.##", "####.##", "####.##", "####.##", "####.##", "####.##", "####.##",
    "####.##", "####.##", "####.##", "####.##", "####.##", "####.##", "####.##", "####.##",
};

constexpr std::string_view kNetironPrint[] = {
    "##.# ", "###.# ", "###.# ", "##.## ", "##.## ", "  #",
};

const TableKind kRoundbar{
    TableId::Roundbar,
    "Roundbar",
    "roundbar",
    kRoundbarFile,
    kRoundbarLayout.size,
    11,
    20,
    11,
    3, // the eight values after the area are read by nothing
    16,
    "@1:0@2:999@3:0@4:999.99@5:0@6:999.99@7:0@8:999.99@9:0@10:999.99@11:0@12:999.99@13:0@14:"
    "999.99@15:0@16:999.99@17:0@18:999.99@19:0@20:999.99@21:0@22:999.99@23:",
    "111111111111111111111103.0,03.2,03.2,03.2,03.2,03.2,03.2,03.2,03.2,03.2,03.2",
    kRoundbarPrint,
    2,
    "@0:Areas for bars@1:Dia.  kg/m   cm2@2:",
    kRoundbarDefaults,
    3,
    true,
};

const TableKind kSpacing{
    TableId::Spacing,
    "spacing",
    "spacing",
    kSpacingFile,
    kSpacingLayout.size,
    21,
    27,
    16,
    16,
    27,
    "@1:0@2:99.9@3:0@4:9999.99@5:0@6:9999.99@7:0@8:9999.99@9:0@10:9999.99@11:0@12:9999.99@13:"
    "0@14:9999.99@15:0@16:9999.99@17:0@18:9999.99@19:0@20:9999.99@21:0@22:9999.99@23:0@24:"
    "9999.99@25:0@26:9999.99@27:0@28:9999.99@29:0@30:9999.99@31:0@32:9999.99@33:",
    "1111111111111111111111111111111102.1,04.2,04.2,04.2,04.2,04.2,04.2,04.2,04.2,04.2,04.2,"
    "04.2,04.2,04.2,04.2,04.2,",
    kSpacingPrint,
    2,
    "@0:Areas for spacing@1:Spacing   6 mm   7 mm   8 mm  10 mm  12 mm  14 mm  16 mm  18 mm"
    "  20 mm@2:",
    kSpacingDefaults,
    10,
    true,
};

const TableKind kNetiron{
    TableId::Netiron,
    "Netiron",
    "Netiron",
    kNetironFile,
    kNetironLayout.size,
    6,
    20,
    6,
    6,
    20,
    "@1:0@2:99.9@3:0@4:999.9@5:0@6:999.9@7:0@8:99.99@9:0@10:99.99@11:0@12:1@13:",
    "11111111111102.1,03.1,03.1,02.2,02.2,01.0",
    kNetironPrint,
    7,
    "@0:NetWork Iron@1:Wire  Sp.1  Sp.2   As1   As2   M@2:  mm    cm    cm cm2/m cm2/m@3:",
    {},
    0,
    false,
};

bool equalNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    const auto lower = [](char c) {
        return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    };
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (lower(a[i]) != lower(b[i])) {
            return false;
        }
    }
    return true;
}

} // namespace

const core::FieldDef& TableKind::valuesField() const {
    switch (id) {
    case TableId::Roundbar:
        return kRoundbarLayout.fields[1];
    case TableId::Spacing:
        return kSpacingLayout.fields[1];
    case TableId::Netiron:
        return kNetironLayout.fields[1];
    }
    ORVAK_ASSERT(false);
}

const TableKind& roundbarTable() {
    return kRoundbar;
}
const TableKind& spacingTable() {
    return kSpacing;
}
const TableKind& netironTable() {
    return kNetiron;
}

const TableKind& tableKind(TableId id) {
    switch (id) {
    case TableId::Roundbar:
        return kRoundbar;
    case TableId::Spacing:
        return kSpacing;
    case TableId::Netiron:
        return kNetiron;
    }
    ORVAK_ASSERT(false);
}

std::optional<TableId> tableIdFromName(std::string_view name) {
    for (const TableKind* kind : {&kRoundbar, &kSpacing, &kNetiron}) {
        if (equalNoCase(name, kind->promptKey)) {
            return kind->id;
        }
    }
    return std::nullopt;
}

fs::path tableFilePath(const TableKind& kind, const fs::path& folder) {
    return core::resolveNoCase(folder, kind.fileName);
}

namespace {

// The record count is the file length over the record length rounded to the nearest whole;
// a last record counted by rounding up lies partly beyond the end of the file, and a read
// there gives an empty row (a torn record is never taken for data).
core::RecordFile loadRounded(const TableKind& kind, const fs::path& path) {
    core::RecordFile file =
        core::RecordFile::load(path, kind.recordLength, core::RecordFile::Count::Round);
    std::error_code ec;
    const auto size = fs::file_size(path, ec);
    if (!ec && file.count() > 0 && size < file.count() * kind.recordLength) {
        file.write(file.count(), core::RecordBuffer(kind.recordLength));
    }
    return file;
}

} // namespace

core::RecordFile readTableFile(const TableKind& kind, const fs::path& folder) {
    return loadRounded(kind, tableFilePath(kind, folder));
}

core::RecordFile openTableFile(const TableKind& kind, const fs::path& folder) {
    const fs::path path = tableFilePath(kind, folder);
    std::error_code ec;
    if (kind.openCreatesFile && !fs::exists(path, ec)) {
        // Opening a random-access file makes it: an empty table file is left behind.
        std::ofstream create(path, std::ios::binary | std::ios::app);
        if (!create) {
            throw FileError(path, "The bar table file cannot be created");
        }
    }
    return loadRounded(kind, path);
}

core::RecordFile OpenRoundbarFile(const fs::path& folder) {
    return openTableFile(kRoundbar, folder);
}
core::RecordFile OpenSpacingFile(const fs::path& folder) {
    return openTableFile(kSpacing, folder);
}
core::RecordFile OpenNetironFile(const fs::path& folder) {
    return openTableFile(kNetiron, folder);
}

float recordValue(const core::RecordBuffer& record, const TableKind& kind, std::size_t index) {
    const float v = record.getSingle(kind.valuesField(), index);
    return std::isfinite(v) ? v : 0.0f;
}

BarDiameterList LoadBarDiameters(const fs::path& generalFolder) {
    const core::RecordFile file = readTableFile(kRoundbar, generalFolder);
    BarDiameterList list;
    list.barTableAvailable = file.count() > 0;
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        const float diameter = recordValue(rec, kRoundbar, 0);
        if (!rec.inUse() || !(diameter > 0.0f)) {
            continue;
        }
        if (list.diameters.size() == kMaxBarDiameters) {
            throw FileError(file.path(),
                            "The bar table holds more than " + std::to_string(kMaxBarDiameters) +
                                " bar diameters; remove some rows so that at most " +
                                std::to_string(kMaxBarDiameters) + " remain",
                            static_cast<std::int64_t>(n));
        }
        list.diameters.push_back(diameter);
    }
    return list;
}

BarPropertyTable LoadBarProperties(const fs::path& generalFolder) {
    const core::RecordFile file = readTableFile(kRoundbar, generalFolder);
    BarPropertyTable table;
    table.available = file.count() > 0;
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        if (!rec.inUse()) {
            continue;
        }
        // Record order is diameter, weight, area; the arrays hand area before weight.
        table.rows.push_back(BarProperties{recordValue(rec, kRoundbar, 0),
                                           recordValue(rec, kRoundbar, 2),
                                           recordValue(rec, kRoundbar, 1)});
    }
    return table;
}

std::vector<BarProperties> builtInBarProperties() {
    const TableKind& kind = roundbarTable();
    std::vector<BarProperties> rows;
    for (int r = 0; r < kind.defaultRows(); ++r) {
        const std::size_t at = static_cast<std::size_t>(r * kind.defaultColumns);
        rows.push_back(
            BarProperties{kind.defaults[at], kind.defaults[at + 2], kind.defaults[at + 1]});
    }
    return rows;
}

BarPropertyTable LoadBarPropertiesOrBuiltIn(const fs::path& generalFolder) {
    BarPropertyTable table = LoadBarProperties(generalFolder);
    if (!table.available) {
        table.rows = builtInBarProperties();
        table.available = true;
        table.builtIn = true;
    }
    return table;
}

std::optional<BarProperties> FindBarProperties(float diameterMm,
                                               std::span<const BarProperties> rows) {
    for (const BarProperties& row : rows) {
        if (row.diameterMm == diameterMm) {
            return row;
        }
    }
    return std::nullopt;
}

std::vector<MeshRow> ReadNetironRows(const fs::path& generalFolder) {
    const core::RecordFile file = readTableFile(kNetiron, generalFolder);
    std::vector<MeshRow> rows;
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        if (!rec.inUse()) {
            continue;
        }
        MeshRow row;
        for (std::size_t i = 0; i < row.values.size(); ++i) {
            row.values[i] = recordValue(rec, kNetiron, i);
        }
        rows.push_back(row);
    }
    return rows;
}

} // namespace orvak::bars
