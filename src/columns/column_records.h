// Columns and column groups as stored: the 168-byte column record, the 2884-byte group record
// with its copy of the column settings, the per-floor and footing-level files, and the rule
// by which a group takes the governing load and moments of its members.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "columns/column_settings.h"
#include "core/record.h"

namespace orvak::columns {

inline constexpr std::size_t kColumnRecordLength = 168;
inline constexpr std::size_t kGroupRecordLength = 2884;
/// Characters of a column's name; a longer name is cut on saving.
inline constexpr std::size_t kColumnNameWidth = 10;
inline constexpr std::size_t kGroupNameWidth = 20;

/// The largest values the column list and the groups keep (the grid's limits): height, load,
/// the size of an end moment, and a dimension.
inline constexpr float kMaxHeightCm = 9999.9f;
inline constexpr float kMaxLoadT = 99999.99f;
inline constexpr float kMaxMomentTm = 999.99f;
inline constexpr float kMaxDimCm = 999.9f;

inline constexpr std::string_view kFootingColumnsFile = "FCOLUMNS.DAT";
inline constexpr std::string_view kFootingGroupsFile = "FCOLSGRP.DAT";

/// Where a set of columns and groups lives: a floor (1..999) or the footing level (0).
struct ColumnLevel {
    int floor = 0;
    bool footing() const { return floor == 0; }
};

/// "COLUMNS." and "COLSGRP." with the floor number + 100 (COLUMNS.101 for floor 1), or the
/// footing level's FCOLUMNS.DAT and FCOLSGRP.DAT.
std::string columnsFileName(ColumnLevel level);
std::string groupsFileName(ColumnLevel level);

/// The column record. Offsets 0, 1, 14, 16, 40..56, 72 and 164 are fixed by the files of
/// earlier installations; the other values are this program's (docs/file-formats.md).
inline constexpr auto kColumnLayout = core::packFields<12>({{
    {"marker", core::FieldType::Text, 1},
    {"name", core::FieldType::Text, kColumnNameWidth},
    {"reserved", core::FieldType::Text, 1},
    {"group", core::FieldType::Int16},
    {"type", core::FieldType::Int16},
    {"heightCm", core::FieldType::Single},
    {"spare1", core::FieldType::Single, 0, 5},
    {"dims", core::FieldType::Single, 0, 5},
    {"moments", core::FieldType::Single, 0, 10}, ///< [0] M1x [1] M2y [2] M1y [3] M2x, t·m
    {"internal", core::FieldType::Int16},
    {"reserved2", core::FieldType::Text, 2},
    {"loads", core::FieldType::Single, 0, 16}, ///< [15] factored axial load, t
}});
static_assert(kColumnLayout.size == kColumnRecordLength, "column records are 168 bytes");
static_assert(kColumnLayout["type"].offset == 14 && kColumnLayout["heightCm"].offset == 16);
static_assert(kColumnLayout["dims"].offset == 40 && kColumnLayout["moments"].offset == 60);
static_assert(kColumnLayout["internal"].offset == 100 && kColumnLayout["loads"].offset == 104);

/// Indexes into the column record's moment values: M2x at offset 72 is grid column 5.
inline constexpr std::size_t kM1x = 0, kM2y = 1, kM1y = 2, kM2x = 3;
inline constexpr std::size_t kAxialLoadIndex = 15;

/// The design of a group bends it in two directions: x over the dimension a (moments Mux,
/// the group's pair M2 and M1), y over the other dimension (the pair at offsets 528, 532).
struct EndMoments {
    float m2 = 0.0f; ///< the larger end moment, t·m (the divisor of M1/M2)
    float m1 = 0.0f; ///< the smaller end moment, t·m; negative in reverse curvature
    bool operator==(const EndMoments&) const = default;
    /// The same pair seen from the other side when M2 is negative: both signs turn, so M2 is
    /// its size and M1/M2 (the curvature) is kept. The column list shows M2 as a size.
    EndMoments withPositiveM2() const { return m2 < 0.0f ? EndMoments{-m2, -m1} : *this; }
};

struct Column {
    std::string name;            ///< single-byte, cut to 10 characters on saving
    std::int16_t group = 0;      ///< number of its group at the same level (record number), 0 none
    std::int16_t type = 1;       ///< section type 1..5
    float heightCm = 0.0f;       ///< grid column 3: clear height, cm
    std::array<float, 5> dims{}; ///< a, b, c, d, e, cm
    EndMoments x;                ///< grid column 5 is x.m2
    EndMoments y;
    float puT = 0.0f; ///< grid column 4: factored axial load, t
    bool operator==(const Column&) const = default;
};

/// Design states of a group, stored at offset 54.
enum class GroupState : std::int16_t {
    NotDesigned = 0,
    Designed = 1,
    SectionTooSmall = 2,
    NotConverged = 3,
    Unstable = 4,
};

/// The group record. The offsets the design reads are fixed; the rest is this program's.
inline constexpr auto kGroupLayout = core::packFields<23>({{
    {"marker", core::FieldType::Text, 1},
    {"name", core::FieldType::Text, kGroupNameWidth},
    {"text", core::FieldType::Text, 30},
    {"reserved", core::FieldType::Text, 1},
    {"members", core::FieldType::Int16},
    {"state", core::FieldType::Int16},
    {"ColLen", core::FieldType::Single},
    {"reserved2", core::FieldType::Text, 424},
    {"type", core::FieldType::Int16},
    {"reserved3", core::FieldType::Text, 2},
    {"dims", core::FieldType::Single, 0, 5},
    {"cover", core::FieldType::Single},
    {"steelArea", core::FieldType::Single},
    {"Pu", core::FieldType::Single},
    {"M2", core::FieldType::Single},
    {"M1", core::FieldType::Single},
    {"M2y", core::FieldType::Single},
    {"M1y", core::FieldType::Single},
    {"secondAxis", core::FieldType::Int16},
    {"barCount", core::FieldType::Int16},
    {"barDiameter", core::FieldType::Int16},
    {"settings", core::FieldType::Text, kColumnSettingsLayout.size},
    {"reserved4", core::FieldType::Text, 2128},
}});
static_assert(kGroupLayout.size == kGroupRecordLength, "group records are 2884 bytes");
static_assert(kGroupLayout["name"].offset == 1 && kGroupLayout["text"].offset == 21);
static_assert(kGroupLayout["members"].offset == 52 && kGroupLayout["state"].offset == 54);
static_assert(kGroupLayout["ColLen"].offset == 56 && kGroupLayout["type"].offset == 484);
static_assert(kGroupLayout["dims"].offset == 488 && kGroupLayout["cover"].offset == 508);
static_assert(kGroupLayout["Pu"].offset == 516 && kGroupLayout["M2"].offset == 520);
static_assert(kGroupLayout["M1"].offset == 524 && kGroupLayout["M2y"].offset == 528);
static_assert(kGroupLayout["secondAxis"].offset == 536 && kGroupLayout["barCount"].offset == 538);
static_assert(kGroupLayout["barDiameter"].offset == 540 && kGroupLayout["settings"].offset == 542);

struct ColumnGroup {
    std::string name;         ///< at most 20 characters
    std::string text;         ///< a free text of the group, at most 30 characters
    std::int16_t members = 0; ///< columns of the level assigned to it when last gathered
    GroupState state = GroupState::NotDesigned;
    float colLenCm = 0.0f;       ///< ColLen: height of the column, cm
    std::int16_t type = 1;       ///< section type 1..7
    std::array<float, 5> dims{}; ///< a, b, c, d, e, cm
    float coverCm = 0.0f;        ///< 0: the cover of the settings copy
    float steelAreaCm2 = 0.0f;   ///< steel provided by the last design
    float puT = 0.0f;            ///< Pu, t
    EndMoments x;                ///< M2 at 520, M1 at 524
    EndMoments y;                ///< at 528, 532
    /// 1 when the load is largely sustained: the creep ratio applies to the stiffness and the
    /// slenderness over the dimension a is checked against 100 as well.
    std::int16_t secondAxis = 0;
    std::int16_t barCount = 0; ///< bars chosen by the last design
    std::int16_t barDiameterMm = 0;
    ColumnSettings settings = defaultColumnSettings(); ///< the group's own copy

    bool operator==(const ColumnGroup&) const = default;
};

core::RecordBuffer encodeColumn(const Column& column);
Column decodeColumn(const core::RecordBuffer& rec);
core::RecordBuffer encodeGroup(const ColumnGroup& group);
ColumnGroup decodeGroup(const core::RecordBuffer& rec);

/// An empty string when the column can be stored (the grid's limits), else one sentence.
std::string validateColumn(const Column& column);
/// An empty string when the group can be stored and designed, else one sentence.
std::string validateGroup(const ColumnGroup& group);

/// The columns (groups) of a level in record order; records not in use are skipped. A missing
/// file gives none. Throws FileError when the file cannot be read or ends in a partial record.
std::vector<Column> readColumns(const std::filesystem::path& projectFolder, ColumnLevel level);
std::vector<ColumnGroup> readGroups(const std::filesystem::path& projectFolder, ColumnLevel level);
/// Replaces the level's file with one record per column (group), each with the use mark,
/// crash-safely: a temporary beside it is renamed over it, so the old file is gone exactly
/// when the new one stands. No columns (groups) leave no file. Throws InputError (nothing
/// written) when one cannot be stored, FileError when the file cannot be written.
void writeColumns(const std::filesystem::path& projectFolder, ColumnLevel level,
                  const std::vector<Column>& columns);
void writeGroups(const std::filesystem::path& projectFolder, ColumnLevel level,
                 const std::vector<ColumnGroup>& groups);
/// The level's file as writeColumns (writeGroups) would write it, nothing written; for an
/// import that writes several files together. Throws InputError as they do.
core::RecordFile columnsFileImage(const std::filesystem::path& projectFolder, ColumnLevel level,
                                  const std::vector<Column>& columns);
core::RecordFile groupsFileImage(const std::filesystem::path& projectFolder, ColumnLevel level,
                                 const std::vector<ColumnGroup>& groups);

/// What the last design of a group gave, for its record: the state, the steel provided and the
/// bars (none when the design found none).
struct GroupResult {
    int number = 0;   ///< the group's number at its level (its place among the records in use)
    std::string name; ///< the name it was designed under
    GroupState state = GroupState::NotDesigned;
    float steelAreaCm2 = 0.0f;
    std::int16_t barCount = 0;
    std::int16_t barDiameterMm = 0;
};
/// Puts the results of a run into the level's group file with one write; a group whose
/// number now holds another name (the file changed meanwhile) is passed over, and the rest of
/// every record stays byte for byte. Returns how many were stored. Throws FileError.
std::size_t storeGroupResults(const std::filesystem::path& projectFolder, ColumnLevel level,
                              const std::vector<GroupResult>& results);

/// Takes floor `floor`'s columns and groups to the footing level: a non-empty COLUMNS.n+100
/// is copied over FCOLUMNS.DAT, and a non-empty COLSGRP.n+100 over FCOLSGRP.DAT; a missing
/// or empty source is passed over. Returns how many files were copied.
int takeFloorToFootingLevel(const std::filesystem::path& projectFolder, int floor);

/// The group's load and moments from its members (the columns whose group number is
/// `groupNumber`): the largest axial load and height; about each direction the largest end
/// moment M2 (by size, its sign kept) and, with it, the ratio M1/M2 nearest +1 among the
/// members that carry a moment there (the curvature that magnifies most). The section and the
/// settings stay the group's. Returns the number of members; with none the group is as it was.
int gatherMembers(ColumnGroup& group, int groupNumber, const std::vector<Column>& columns);

/// The name of a new group: "Gr-C" and its number.
std::string defaultGroupName(int number);

} // namespace orvak::columns
