// Column groups in the design job runner: which groups a run takes (of a floor, of every
// floor, or of the footing level), and how each one is designed into its sheet and steel items.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "bars/bar_tables.h"
#include "bars/steel_store.h"
#include "columns/column_design.h"
#include "columns/column_records.h"
#include "core/codepage.h"
#include "jobs/design_job.h"

namespace orvak::jobs {

inline constexpr std::string_view kColumnGroupKind = "column group";
/// The steel items of a column group carry this kind; their key is
/// (4, floor or 0 for the footing level, group number, bar mark, 0).
inline constexpr bars::ElementKind kColumnSteelKind = bars::ElementKind::ColumnGroup;
inline constexpr std::string_view kColumnSheetExt = ".Analy";
inline constexpr std::string_view kColumnChartExt = ".svg";

/// Which groups a run takes: the footing level, or a floor (0 for every floor); a group by
/// its name (empty for every group of the chosen levels).
struct ColumnGroupSelection {
    bool footingLevel = false;
    int floor = 0;
    std::string group; ///< in the project's code page
};

/// One group of a run: where it stands, its number (record number in its level's file), and
/// the group with the governing load and moments of its current members.
struct ChosenGroup {
    columns::ColumnLevel level;
    int number = 0;
    columns::ColumnGroup group;
    /// The names of its member columns, in the level's order (none for a group without).
    std::vector<std::string> memberNames;
};

/// Reads the chosen groups, floor by floor in the floors' order, gathers each one's members
/// and checks every one before anything is designed. Throws InputError with one sentence
/// (names in UTF-8 through `page`) for a floor or group that does not exist, an empty choice,
/// a group that cannot be designed, or two groups of a level whose sheets would share a name;
/// FileError for a damaged file.
std::vector<ChosenGroup> chooseColumnGroups(const std::filesystem::path& projectFolder,
                                            const ColumnGroupSelection& selection,
                                            core::CodePage page);

/// The sheet of a group: "ClGrp_F<floor>-<name>.Analy" for a floor's group,
/// "FtClGrp_<name>.Analy" for a group of the footing level.
std::string columnSheetFileName(const ChosenGroup& chosen);

/// The interaction chart beside the sheet: the sheet's name with ".svg" for ".Analy".
std::string columnChartFileName(const ChosenGroup& chosen);

/// The group's bar items: mark 1 the main bars of every member column, each bar the column's
/// height and a compression lap splice long; mark 2 their ties (each one tie long) or the turns
/// of their spirals (each one turn long). None unless the design found its bars.
std::vector<bars::SteelItem> columnGroupSteelItems(const ChosenGroup& chosen,
                                                   const columns::ColumnDesignResult& result);

/// The word of a design outcome: "designed", "section too small", "did not converge",
/// "unstable", "missing data".
std::string_view columnOutcomeText(columns::ColumnStatus status);

/// Designs the groups through the runner: each group's sheet, its interaction chart and its
/// bar items. A group the design cannot carry (section too small, no convergence, unstable)
/// gets its sheet, which says why, no items (its earlier ones go) and the status ChecksFailed
/// with one sentence; its chart file shows the curves when the design reached the bending
/// stage, or else only that sentence, so that no chart of an earlier design is left.
JobResult designColumnGroups(const std::filesystem::path& projectFolder,
                             const std::vector<ChosenGroup>& groups,
                             const std::vector<bars::BarProperties>& barTable,
                             const JobObserver& observer = {},
                             core::CodePage page = core::CodePage::Windows1252);

} // namespace orvak::jobs
