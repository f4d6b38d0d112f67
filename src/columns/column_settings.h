// Design settings of columns: the settings record of COLSSET.DAT (also copied into every
// column group), its built-in defaults, the seven section types' tables and their checks.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/record.h"
#include "core/settings_fields.h"

namespace orvak::columns {

inline constexpr std::string_view kColumnSettingsFile = "COLSSET.DAT";

/// Section types of a column group (1 to 7; the column grid offers 1 to 5).
inline constexpr std::size_t kSectionTypes = 7;
/// Characters of a type name.
inline constexpr std::size_t kTypeNameWidth = 15;

/// The settings record: a use mark, the numbers in stored order, then the seven type names.
/// Strengths are int16 (whole kg/cm²), the flag is an int16 (1 braced), the rest singles;
/// the three per-type tables hold percentages.
inline constexpr auto kColumnSettingsLayout = core::packFields<13>({{
    {"marker", core::FieldType::Text, 1},
    {"Fc", core::FieldType::Int16},
    {"FY", core::FieldType::Int16},
    {"FYties", core::FieldType::Int16},
    {"Cover", core::FieldType::Single},
    {"KFactor", core::FieldType::Single},
    {"BdFactor", core::FieldType::Single},
    {"Braced", core::FieldType::Int16},
    {"PhiPercent", core::FieldType::Single, 0, kSectionTypes},
    {"EccPercent", core::FieldType::Single, 0, kSectionTypes},
    {"MinSteelPercent", core::FieldType::Single, 0, kSectionTypes},
    {"Tolerance", core::FieldType::Single},
    {"TypeNames", core::FieldType::Text, kTypeNameWidth, kSectionTypes},
}});
static_assert(kColumnSettingsLayout.size == 214, "column settings records are 214 bytes");

/// The settings as stored; the type tables are indexed by section type − 1.
struct ColumnSettings {
    std::int16_t Fc = 0;      ///< concrete strength, kg/cm²
    std::int16_t FY = 0;      ///< yield strength of the main bars, kg/cm²
    std::int16_t FYties = 0;  ///< yield strength of the ties and spirals, kg/cm²
    float Cover = 0;          ///< face of the column to the centre of the main bars, cm
    float KFactor = 0;        ///< effective length factor
    float BdFactor = 0;       ///< creep ratio beta d (sustained over total factored load)
    std::int16_t Braced = 0;  ///< 1 braced against sidesway, 0 unbraced
    std::array<float, kSectionTypes> PhiPercent{};      ///< strength reduction factor, %
    std::array<float, kSectionTypes> EccPercent{};      ///< minimum-eccentricity reduction, %
    std::array<float, kSectionTypes> MinSteelPercent{}; ///< least steel ratio Ast%, %
    float Tolerance = 0; ///< relative tolerance of the steel-ratio search
    std::array<std::string, kSectionTypes> TypeNames; ///< single-byte, at most 15 characters

    bool operator==(const ColumnSettings&) const = default;
};

/// The numeric fields for the settings codec of core/settings_fields.h, in stored order (the
/// type names are text and go through the codec of column_settings.cpp).
template <class S, class Visit>
requires std::same_as<std::remove_const_t<S>, ColumnSettings>
void forEachSettingsField(S& s, Visit&& visit) {
    visit("Fc", s.Fc);
    visit("FY", s.FY);
    visit("FYties", s.FYties);
    visit("Cover", s.Cover);
    visit("KFactor", s.KFactor);
    visit("BdFactor", s.BdFactor);
    visit("Braced", s.Braced);
    visit("PhiPercent", s.PhiPercent);
    visit("EccPercent", s.EccPercent);
    visit("MinSteelPercent", s.MinSteelPercent);
    visit("Tolerance", s.Tolerance);
}

/// The built-in settings: Fc 250, FY 4200, ties 2400, cover 4 cm, K 1, beta d 0, braced;
/// tied types phi 70 %, 20 % eccentricity reduction; spiral types (circle, square with a
/// spiral) 75 % and 15 %; 1 % least steel; tolerance 0.001.
ColumnSettings defaultColumnSettings();

/// An empty string when a design can use the settings, else one sentence naming the first
/// setting at fault and the values it may take.
std::string validateColumnSettings(const ColumnSettings& settings);

ColumnSettings decodeColumnSettings(const core::RecordBuffer& rec);
/// A settings record with the use mark "1". Names are cut to 15 characters.
core::RecordBuffer encodeColumnSettings(const ColumnSettings& settings);

/// Record 1 of COLSSET.DAT in `folder`; the defaults when the file is missing or holds no
/// record in use. Throws FileError when it cannot be read or holds a setting that
/// validateColumnSettings refuses.
ColumnSettings readColumnSettingsFile(const std::filesystem::path& folder);
/// Writes record 1 of COLSSET.DAT crash-safely. Throws InputError (nothing written) when
/// validateColumnSettings refuses the settings, FileError when the file cannot be written.
void writeColumnSettingsFile(const std::filesystem::path& folder, const ColumnSettings& settings);

} // namespace orvak::columns
