// Design settings of columns: defaults, checks and COLSSET.DAT through the shared settings
// codec; the type names, text, are written beside the numbers.
#include "columns/column_settings.h"

#include <cctype>
#include <cmath>

#include <fmt/format.h>

#include "core/error.h"

namespace fs = std::filesystem;

namespace orvak::columns {

namespace {

const core::FieldDef& namesField() {
    return kColumnSettingsLayout["TypeNames"];
}

} // namespace

ColumnSettings defaultColumnSettings() {
    ColumnSettings s;
    s.Fc = 250;
    s.FY = 4200;
    s.FYties = 2400;
    s.Cover = 4.0f;
    s.KFactor = 1.0f;
    s.BdFactor = 0.0f;
    s.Braced = 1;
    // ACI strength design: tied columns phi 0.70 and 0.80 Po as the largest axial strength,
    // spiral columns phi 0.75 and 0.85 Po (types 2 and 6 carry spirals).
    s.PhiPercent = {70, 75, 70, 70, 70, 75, 70};
    s.EccPercent = {20, 15, 20, 20, 20, 15, 20};
    s.MinSteelPercent = {1, 1, 1, 1, 1, 1, 1};
    s.Tolerance = 0.001f;
    s.TypeNames = {"Rectangle", "Circle", "Tee", "L", "Cross", "Square spiral", "Circle tied"};
    return s;
}

std::string validateColumnSettings(const ColumnSettings& s) {
    if (s.Fc < 50 || s.Fc > 1000) {
        return fmt::format("the concrete strength Fc is {}: it must be 50 to 1000 kg/cm2", s.Fc);
    }
    if (s.FY < 1000 || s.FY > 10000) {
        return fmt::format("the steel strength FY is {}: it must be 1000 to 10000 kg/cm2", s.FY);
    }
    if (s.FYties < 1000 || s.FYties > 10000) {
        return fmt::format("the tie steel strength is {}: it must be 1000 to 10000 kg/cm2",
                           s.FYties);
    }
    const auto within = [](float v, float least, float most) {
        return std::isfinite(v) && v >= least && v <= most;
    };
    if (!within(s.Cover, 1.0f, 20.0f)) {
        return "the steel cover must be 1 to 20 cm";
    }
    if (!within(s.KFactor, 0.3f, 10.0f)) {
        return "the effective length factor KFactor must be 0.3 to 10";
    }
    if (!within(s.BdFactor, 0.0f, 1.0f)) {
        return "the creep ratio BdFactor must be 0 to 1";
    }
    if (s.Braced != 0 && s.Braced != 1) {
        return "the braced flag must be 0 (unbraced) or 1 (braced)";
    }
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        if (!within(s.PhiPercent[t], 50.0f, 100.0f)) {
            return fmt::format("type {}: the strength reduction factor must be 50 to 100 %", t + 1);
        }
        if (!within(s.EccPercent[t], 0.0f, 50.0f)) {
            return fmt::format("type {}: the reduction for minimum eccentricity must be 0 to 50 %",
                               t + 1);
        }
        // The steel-ratio search runs from this ratio up to 8 %.
        if (!within(s.MinSteelPercent[t], 0.1f, 7.9f)) {
            return fmt::format("type {}: the least steel ratio Ast% must be 0.1 to 7.9 %", t + 1);
        }
    }
    if (!within(s.Tolerance, 1e-6f, 0.05f)) {
        return "the convergence tolerance must be 0.000001 to 0.05";
    }
    return {};
}

ColumnSettings decodeColumnSettings(const core::RecordBuffer& rec) {
    ColumnSettings s;
    core::decodeSettingsFields(kColumnSettingsLayout, rec, s);
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        s.TypeNames[t] = rec.getTrimmedText(namesField(), t);
    }
    return s;
}

core::RecordBuffer encodeColumnSettings(const ColumnSettings& settings) {
    core::RecordBuffer rec = core::encodeSettingsRecord(kColumnSettingsLayout, settings);
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        rec.setText(namesField(), settings.TypeNames[t], t);
    }
    return rec;
}

ColumnSettings readColumnSettingsFile(const fs::path& folder) {
    const auto rec = core::readSettingsRecord(folder, kColumnSettingsFile,
                                              kColumnSettingsLayout.size);
    if (!rec) {
        return defaultColumnSettings();
    }
    const ColumnSettings settings = decodeColumnSettings(*rec);
    if (std::string problem = validateColumnSettings(settings); !problem.empty()) {
        problem[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(problem[0])));
        throw FileError(folder / kColumnSettingsFile,
                        fmt::format("{} holds a setting no design can use: {}. Open the column "
                                    "settings and save them again, or restore the defaults.",
                                    kColumnSettingsFile, problem),
                        1);
    }
    return settings;
}

void writeColumnSettingsFile(const fs::path& folder, const ColumnSettings& settings) {
    if (const std::string problem = validateColumnSettings(settings); !problem.empty()) {
        throw InputError("The column settings were not saved: " + problem + ".");
    }
    core::writeSettingsRecord(folder, kColumnSettingsFile, encodeColumnSettings(settings));
}

} // namespace orvak::columns
