// Settings records read and written field by field. A settings type lists its fields once, by
// their stored names, in a visitor; the record codec here and the JSON model go through it.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/record.h"

namespace orvak::core {

// A settings type S comes with
//     template <class S, class Visit> void forEachSettingsField(S& s, Visit&& visit);
// in its own namespace (found by argument-dependent lookup), which calls visit(name, member)
// for every field in stored order, for S and for const S. `name` is the field's name in the
// record layout; a member is one of the SettingsValue kinds below.

template <class T> inline constexpr bool kIsSettingsRow = false;
template <std::size_t N> inline constexpr bool kIsSettingsRow<std::array<float, N>> = true;

/// What a settings field holds: an int16 (bar counts, diameters in mm, flags), a single, or a
/// row of singles.
template <class T>
concept SettingsValue =
    std::same_as<T, std::int16_t> || std::same_as<T, float> || kIsSettingsRow<T>;

/// A design setting stored as 0 stands for the code's value, which is applied where the
/// setting is used, never when it is saved: the stored value when it is above 0, else
/// `codeValue`. A negative or not-a-number value stands for the code's value as well.
constexpr double orDefault(double stored, double codeValue) {
    return stored > 0.0 ? stored : codeValue;
}

/// Calls visit(name, value) for every single of `settings`, each value of a row in turn, in
/// stored order; the int16 fields are left out. For checks that hold for every number.
template <class S, class Visit> void forEachSettingsSingle(const S& settings, Visit&& visit) {
    forEachSettingsField(settings, [&](std::string_view name, const auto& value) {
        using T = std::decay_t<decltype(value)>;
        static_assert(SettingsValue<T>);
        if constexpr (std::is_same_v<T, float>) {
            visit(name, value);
        } else if constexpr (kIsSettingsRow<T>) {
            for (const float x : value) {
                visit(name, x);
            }
        }
    });
}

/// Reads every field of `settings` from `rec`, a record of `layout` (the use mark is not
/// looked at). A field the layout does not name is a bug and asserts.
template <class S, std::size_t N>
void decodeSettingsFields(const RecordLayout<N>& layout, const RecordBuffer& rec, S& settings) {
    forEachSettingsField(settings, [&](std::string_view name, auto& value) {
        using T = std::decay_t<decltype(value)>;
        static_assert(SettingsValue<T>);
        const FieldDef& f = layout[name];
        if constexpr (std::is_same_v<T, std::int16_t>) {
            value = rec.getInt16(f);
        } else if constexpr (std::is_same_v<T, float>) {
            value = rec.getSingle(f);
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                value[i] = rec.getSingle(f, i);
            }
        }
    });
}

/// A record of `layout` with the use mark "1" in its first field and every field of
/// `settings`; text fields the settings do not fill are blank.
template <class S, std::size_t N>
RecordBuffer encodeSettingsRecord(const RecordLayout<N>& layout, const S& settings) {
    RecordBuffer rec = blankRecord(layout);
    rec.setText(layout.fields[0], std::string(1, kUseMark));
    forEachSettingsField(settings, [&](std::string_view name, const auto& value) {
        using T = std::decay_t<decltype(value)>;
        static_assert(SettingsValue<T>);
        const FieldDef& f = layout[name];
        if constexpr (std::is_same_v<T, std::int16_t>) {
            rec.setInt16(f, value);
        } else if constexpr (std::is_same_v<T, float>) {
            rec.setSingle(f, value);
        } else {
            for (std::size_t i = 0; i < value.size(); ++i) {
                rec.setSingle(f, value[i], i);
            }
        }
    });
    return rec;
}

/// Record 1 of the settings file `fileName` in `folder` (found without regard to case) when
/// it is in use; nothing when the file is missing or its record 1 is not in use. Throws
/// FileError when the file cannot be read.
std::optional<RecordBuffer> readSettingsRecord(const std::filesystem::path& folder,
                                               std::string_view fileName, std::size_t recordLength);
/// Writes `rec` as record 1 of the settings file `fileName` in `folder`, crash-safely,
/// keeping any later records. Throws FileError.
void writeSettingsRecord(const std::filesystem::path& folder, std::string_view fileName,
                         const RecordBuffer& rec);

/// The settings of file `fileName` in `folder`, or `defaults` when it holds none.
template <class S, std::size_t N>
S readSettingsFile(const std::filesystem::path& folder, std::string_view fileName,
                   const RecordLayout<N>& layout, const S& defaults) {
    const auto rec = readSettingsRecord(folder, fileName, layout.size);
    if (!rec) {
        return defaults;
    }
    S settings{};
    decodeSettingsFields(layout, *rec, settings);
    return settings;
}

} // namespace orvak::core
