// Storing a level's column groups as the engineer edits them: the groups and the membership of
// the level's columns are one change, and a group whose record number now stands for another
// group (or for none) may not keep the steel and design state of the one that stood there.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "columns/column_records.h"

namespace orvak::jobs {

/// One group as edited: the group, the record number it was read from (0 for a new group)
/// and whether anything the design reads changed (its data or its members).
struct EditedGroup {
    columns::ColumnGroup group;
    int origin = 0;
    bool changed = false;
};

/// Why a group's design no longer stands after an edit.
inline constexpr std::string_view kGroupChangedAfterDesign =
    "The group was changed after its last design; design it again.";

/// Stores the level's groups in the order given (group k has record number k) and the level's
/// columns with their group numbers, both files or neither. Then, for every record number that
/// held a group before (`storedCount` of them) or holds one now: a number that now holds
/// another group, or none, loses its steel items and design state; a group that changed in
/// place keeps its items and becomes "not designed" with kGroupChangedAfterDesign. A column's
/// group number must be 0 or one of the groups. Throws InputError (nothing written) for a
/// group or column that cannot be stored, FileError when a file cannot be written.
void storeColumnGroups(const std::filesystem::path& projectFolder, columns::ColumnLevel level,
                       const std::vector<EditedGroup>& groups,
                       const std::vector<columns::Column>& columns, int storedCount);

/// After the level's column list changed from `before` to `after`: every group whose members
/// are not the same columns with the same values any more becomes "not designed" with
/// kGroupChangedAfterDesign (its bars stay until its next design). Returns how many groups.
int markGroupsOfChangedColumns(const std::filesystem::path& projectFolder,
                               columns::ColumnLevel level,
                               const std::vector<columns::Column>& before,
                               const std::vector<columns::Column>& after);

} // namespace orvak::jobs
