// Footing groups as stored: the 852-byte record of FootsGRP.DAT with the group's kind, the
// footing-level column groups it stands under, its inputs, its copy of the footing settings
// and the values its last design left; removal in place, and a design's input built from the
// footing level's column groups.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "columns/column_records.h"
#include "core/record.h"
#include "footings/footing_input.h"
#include "footings/footing_settings.h"

namespace orvak::footings {

inline constexpr std::string_view kFootingGroupsFile = "FootsGRP.DAT";
inline constexpr std::size_t kFootingGroupRecordLength = 852;
/// Characters of a footing group's name.
inline constexpr std::size_t kFootingNameWidth = 10;
/// Column groups a footing stands under: one (isolated, pile) or two (combined).
inline constexpr std::size_t kFootingColumns = 2;

/// The two messages of saving a group's main data, as the system words them.
inline constexpr std::string_view kNotSuitableMessage =
    "Footing dimension is not suitable for column";
inline constexpr std::string_view kCx1NotLeftMessage = "CX1 IS GREATER OR EQUAL CX2";

/// The record. The header up to offset 48 is fixed by the files of earlier installations:
/// use mark, kind, state, name, the two column groups, A, B, the number of columns, and four
/// singles (H, the steel
/// areas both ways, one spare). The value area from 48 is this program's, the same for every
/// kind; a kind reads the parts it uses (docs/file-formats.md).
inline constexpr auto kFootingGroupLayout = core::packFields<28>({{
    {"marker", core::FieldType::Text, 1},
    {"reserved", core::FieldType::Text, 1},
    {"kind", core::FieldType::Int16},
    {"state", core::FieldType::Int16},
    {"name", core::FieldType::Text, kFootingNameWidth},
    {"group1", core::FieldType::Int16},
    {"group2", core::FieldType::Int16},
    {"A", core::FieldType::Single},
    {"B", core::FieldType::Single},
    {"columnCount", core::FieldType::Int16}, ///< written for older readers, not read
    {"reserved2", core::FieldType::Text, 2},
    {"H", core::FieldType::Single},
    {"AstY", core::FieldType::Single},
    {"AstX", core::FieldType::Single},
    {"spare", core::FieldType::Single},
    // The value area.
    {"settings", core::FieldType::Text, kFootingSettingsLayout.size},
    {"groupNames", core::FieldType::Text, columns::kGroupNameWidth, kFootingColumns},
    {"Cx", core::FieldType::Single, 0, kFootingColumns},
    {"Cy", core::FieldType::Single, 0, kFootingColumns},
    {"piles", core::FieldType::Int16},
    {"pileDiameter", core::FieldType::Single},
    {"pileLength", core::FieldType::Single},
    {"SurfaceFriction", core::FieldType::Single},
    {"EndBearing", core::FieldType::Single},
    {"barCount", core::FieldType::Int16, 0, 2},     ///< [0] Y direction, [1] X direction
    {"barDiameter", core::FieldType::Single, 0, 2}, ///< mm
    {"barLength", core::FieldType::Single, 0, 2},   ///< one bar, cm
    {"reserved3", core::FieldType::Text, 681},
}});
static_assert(kFootingGroupLayout.size == kFootingGroupRecordLength,
              "footing group records are 852 bytes");
static_assert(kFootingGroupLayout["kind"].offset == 2 && kFootingGroupLayout["state"].offset == 4);
static_assert(kFootingGroupLayout["name"].offset == 6 &&
              kFootingGroupLayout["group1"].offset == 16);
static_assert(kFootingGroupLayout["group2"].offset == 18 && kFootingGroupLayout["A"].offset == 20);
static_assert(kFootingGroupLayout["B"].offset == 24 &&
              kFootingGroupLayout["columnCount"].offset == 28);
static_assert(kFootingGroupLayout["H"].offset == 32 && kFootingGroupLayout["spare"].offset == 44);
static_assert(kFootingGroupLayout["settings"].offset == 48);
static_assert(kFootingGroupLayout["groupNames"].offset == 77 &&
              kFootingGroupLayout["Cx"].offset == 117);
static_assert(kFootingGroupLayout["piles"].offset == 133 &&
              kFootingGroupLayout["barCount"].offset == 151);
static_assert(kFootingGroupLayout["reserved3"].offset == 171);

/// A column the footing stands under: the footing level's column group by its record number
/// in FCOLSGRP.DAT (the number picks it; the name is the one it had when it was picked, kept
/// for showing and to notice that the number now stands for another group), and where the
/// column stands in the plan (see FootingColumn::cxCm).
struct FootingPlacement {
    std::int16_t group = 0; ///< record number in FCOLSGRP.DAT, 0 none
    std::string groupName;  ///< at most 20 characters; empty: not checked
    float cxCm = 0.0f;
    float cyCm = 0.0f;
    bool operator==(const FootingPlacement&) const = default;
};

/// The bars of one direction as the last design left them.
struct StoredFootingBars {
    std::int16_t count = 0;
    float diameterMm = 0.0f;
    float areaCm2 = 0.0f;
    float lengthCm = 0.0f;
    bool operator==(const StoredFootingBars&) const = default;
};

struct FootingGroup {
    FootingKind kind = FootingKind::Isolated;
    std::string name; ///< single-byte, at most 10 characters
    /// [0] the column (the left one of a combined footing), [1] the right column of a
    /// combined footing; unused for the other kinds.
    std::array<FootingPlacement, kFootingColumns> columns{};
    // The pile footing's inputs.
    std::int16_t piles = 4;
    float pileDiameterCm = 40.0f;
    float pileLengthCm = 1200.0f;
    float surfaceFriction = 0.0f;                        ///< t/m²
    float endBearing = 0.0f;                             ///< t/m²
    FootingSettings settings = defaultFootingSettings(); ///< the group's own copy
    // What the last design left: its status (NotDesigned until one ran), plan and bars.
    FootingStatus status = FootingStatus::NotDesigned;
    float aCm = 0.0f;
    float bCm = 0.0f;
    float hCm = 0.0f;
    StoredFootingBars barsY;
    StoredFootingBars barsX;

    bool operator==(const FootingGroup&) const = default;
    /// The column groups this kind stands under: 2 for a combined footing, else 1.
    std::size_t columnCount() const { return kind == FootingKind::Combined ? 2 : 1; }
};

/// A group as the file holds it: its record number keys its steel items and design state
/// and never changes while the group stands.
struct StoredFootingGroup {
    int number = 0;
    FootingGroup group;
};

core::RecordBuffer encodeFootingGroup(const FootingGroup& group);
/// The group of a record; a kind or state out of range reads as Isolated / NotDesigned.
FootingGroup decodeFootingGroup(const core::RecordBuffer& rec);

/// An empty string when the group can be stored (its own fields), else one sentence.
std::string validateFootingGroup(const FootingGroup& group);
/// The check of a group's main data against the footing level's column groups (record n is
/// columnGroups[n − 1]): an empty string when it suits, else the system's message:
/// kNotSuitableMessage for a column group that does not exist or lacks a dimension the
/// footing needs, an isolated footing's column set beyond an edge (a negative Cx or Cy), or a
/// combined footing whose left column reaches past the left edge (Cx1 below half its size
/// along x) or whose columns overlap; kCx1NotLeftMessage for Cx1 ≥ Cx2.
std::string checkFootingMainData(const FootingGroup& group,
                                 const std::vector<columns::ColumnGroup>& columnGroups);

/// The groups in use, in record order, each with its record number; removed records are
/// passed over. A missing file gives none. Throws FileError when the file cannot be read or
/// ends in a partial record.
std::vector<StoredFootingGroup> readFootingGroups(const std::filesystem::path& projectFolder);
/// The group of record `number`, none when the record is removed or beyond the end.
std::optional<FootingGroup> readFootingGroup(const std::filesystem::path& projectFolder,
                                             int number);

/// Stores `group` as record `number`, a group in use (0: a new record after the last, so that
/// no number is ever taken again) after validateFootingGroup and checkFootingMainData against the
/// footing level's column groups; the column groups' names are kept with their numbers. Crash-safe:
/// the file is written beside and renamed over. Returns the record number. Throws InputError
/// (nothing written) with one sentence, the system's message where there is one; FileError.
int saveFootingGroup(const std::filesystem::path& projectFolder, int number,
                     const FootingGroup& group);
/// Sets the use mark of record `number` to "0" and writes it back in place: the file keeps
/// its count of records and every other group its number. Throws InputError when there is
/// no group `number`, FileError.
void removeFootingGroup(const std::filesystem::path& projectFolder, int number);
/// Puts the result values of a design (status, A, B, H, bars) into record `number` when it
/// still holds a group named `name`; returns whether it did. Throws FileError.
bool storeFootingResult(const std::filesystem::path& projectFolder, int number,
                        std::string_view name, const FootingSummary& summary);
/// The results of a run, stored together with one write of the file (a record that no longer
/// holds its group is passed over). Returns how many were stored. Throws FileError.
struct FootingResult {
    int number = 0;
    std::string name;
    FootingSummary summary;
};
std::size_t storeFootingResults(const std::filesystem::path& projectFolder,
                                std::span<const FootingResult> results);

/// Every group in use as records 1..n, for an import into a project without the file.
/// Throws InputError as validateFootingGroup does.
core::RecordFile footingGroupsFileImage(const std::filesystem::path& projectFolder,
                                        const std::vector<FootingGroup>& groups);

/// The name of a new group: "Gr-Ft" and the smallest number no group in use is named with.
std::string newFootingGroupName(const std::vector<StoredFootingGroup>& groups);

/// The column a placement stands for: the column group of record `placement.group` with its
/// members' governing load and moments gathered (columns::gatherMembers: the largest Pu, the
/// largest end moment M2 about each direction), its section type and dimensions, and the
/// placement's Cx, Cy. Throws InputError naming the group when the number holds no group.
FootingColumn footingColumn(const FootingPlacement& placement,
                            const std::vector<columns::Column>& levelColumns,
                            const std::vector<columns::ColumnGroup>& columnGroups);
IsolatedFootingInput isolatedFootingInput(const FootingGroup& group,
                                          const std::vector<columns::Column>& levelColumns,
                                          const std::vector<columns::ColumnGroup>& columnGroups);
CombinedFootingInput combinedFootingInput(const FootingGroup& group,
                                          const std::vector<columns::Column>& levelColumns,
                                          const std::vector<columns::ColumnGroup>& columnGroups);
PileFootingInput pileFootingInput(const FootingGroup& group,
                                  const std::vector<columns::Column>& levelColumns,
                                  const std::vector<columns::ColumnGroup>& columnGroups);

} // namespace orvak::footings
