// Design settings of footings: the settings record of FOOTSSET.DAT in the GENERAL folder (also
// copied into every footing group), its built-in defaults and its checks.
#pragma once

#include <concepts>
#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/record.h"
#include "core/settings_fields.h"
#include "footings/footing_input.h"

namespace orvak::footings {

inline constexpr std::string_view kFootingSettingsFile = "FOOTSSET.DAT";

/// The settings record: a use mark, the strengths as int16 (whole kg/cm²), then singles.
inline constexpr auto kFootingSettingsLayout = core::packFields<9>({{
    {"marker", core::FieldType::Text, 1},
    {"Fc", core::FieldType::Int16},
    {"FY", core::FieldType::Int16},
    {"SoilCapacity", core::FieldType::Single},
    {"Cover", core::FieldType::Single},
    {"LF", core::FieldType::Single},
    {"MinSteelPercent", core::FieldType::Single},
    {"MinDepth", core::FieldType::Single},
    {"FacRowmax", core::FieldType::Single},
}});
static_assert(kFootingSettingsLayout.size == 29, "footing settings records are 29 bytes");
static_assert(kFootingSettingsLayout["SoilCapacity"].offset == 5);
static_assert(kFootingSettingsLayout["FacRowmax"].offset == 25);

/// The fields for the settings codec of core/settings_fields.h and the JSON model, in stored
/// order, by their stored names.
template <class S, class Visit>
requires std::same_as<std::remove_const_t<S>, FootingSettings>
void forEachSettingsField(S& s, Visit&& visit) {
    visit("Fc", s.Fc);
    visit("FY", s.FY);
    visit("SoilCapacity", s.soilCapacity);
    visit("Cover", s.coverCm);
    visit("LF", s.LF);
    visit("MinSteelPercent", s.minSteelPercent);
    visit("MinDepth", s.minDepthCm);
    visit("FacRowmax", s.facRowmax);
}

/// The built-in settings: Fc 250, FY 4200, soil 2 kg/cm², cover 7.5 cm (concrete cast against
/// the soil), LF 1.4, 0.18 % least steel (ACI shrinkage steel of grade 420 bars), MinDepth
/// 30 cm, FacRowmax 0.75.
FootingSettings defaultFootingSettings();

/// An empty string when a design can use the settings, else one sentence naming the first
/// setting at fault and the values it may take.
std::string validateFootingSettings(const FootingSettings& settings);

FootingSettings decodeFootingSettings(const core::RecordBuffer& rec);
/// A settings record with the use mark "1".
core::RecordBuffer encodeFootingSettings(const FootingSettings& settings);

/// Record 1 of FOOTSSET.DAT in `generalFolder` (found without regard to case); the defaults
/// when the file is missing or holds no record in use. Throws FileError when it cannot be
/// read or holds a setting that validateFootingSettings refuses.
FootingSettings readFootingSettingsFile(const std::filesystem::path& generalFolder);
/// Writes record 1 of FOOTSSET.DAT crash-safely. Throws InputError (nothing written) when
/// validateFootingSettings refuses the settings, FileError when the file cannot be written.
void writeFootingSettingsFile(const std::filesystem::path& generalFolder,
                              const FootingSettings& settings);

} // namespace orvak::footings
