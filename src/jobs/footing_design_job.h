// Footing groups in the design job runner: which groups a run takes, how each one is designed
// by its kind into its sheet and bar items, and the group file kept in step with the steel
// store when a group is edited or removed.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "bars/bar_tables.h"
#include "bars/steel_store.h"
#include "core/codepage.h"
#include "core/sheet.h"
#include "footings/footing_input.h"
#include "footings/footing_records.h"
#include "jobs/design_job.h"

namespace orvak::jobs {

inline constexpr std::string_view kFootingGroupKind = "footing group";
/// The steel items of a footing group carry this kind; their key is
/// (2, 0, group number, 1 for the bars along y or 2 for those along x, 0).
inline constexpr bars::ElementKind kFootingSteelKind = bars::ElementKind::Footing;
inline constexpr std::string_view kFootingSheetExt = ".Analy";

/// Why a group's design no longer stands after an edit.
inline constexpr std::string_view kFootingChangedAfterDesign =
    "The footing group was changed after its last design; design it again.";

/// Which groups a run takes: one by its name, or every group (an empty name).
struct FootingGroupSelection {
    std::string group; ///< in the project's code page
};

using FootingDesignInput = std::variant<footings::IsolatedFootingInput,
                                        footings::CombinedFootingInput, footings::PileFootingInput>;

/// One group of a run: its record number, the group, and its design's input with the loads
/// of its column groups gathered from the footing level's columns.
struct ChosenFooting {
    int number = 0;
    footings::FootingGroup group;
    FootingDesignInput input;
};

/// Reads the chosen groups in record order, checks each one (its fields, its main data
/// against the footing level's column groups, and that every column group still has the name
/// it had when it was picked) and builds its input, before anything is designed. Throws
/// InputError with one sentence (names in UTF-8 through `page`) for a group that does not
/// exist or cannot be designed, an empty choice, or two groups whose sheets would share a
/// name; FileError for a damaged file.
std::vector<ChosenFooting> chooseFootingGroups(const std::filesystem::path& projectFolder,
                                               const FootingGroupSelection& selection,
                                               core::CodePage page);

/// The sheet of a group: "FtGrp_<name>.Analy".
std::string footingSheetFileName(const footings::FootingGroup& group);

/// The design of one chosen group by its kind: its summary and its sheet (the pile footing's
/// summary is NotDesigned with its sheet of inputs).
struct FootingDesign {
    footings::FootingSummary summary;
    core::Sheet sheet;
};
FootingDesign designFooting(const ChosenFooting& chosen,
                            const std::vector<bars::BarProperties>& barTable,
                            core::CodePage page = core::CodePage::Windows1252);

/// The group's bar items: the bottom bars along y (mark 1) and along x (mark 2), each bar as
/// long as the design gives it, or the footing's side less the cover at both ends. None
/// unless the design found them.
std::vector<bars::SteelItem> footingSteelItems(const ChosenFooting& chosen,
                                               const footings::FootingSummary& summary);

/// The word of a design outcome: "designed", "checks fail", "check your data", "not designed".
std::string_view footingOutcomeText(footings::FootingStatus status);
/// The plan of a design as "A x B x H cm" ("155 x 160 x 57.5 cm").
std::string footingPlanText(const footings::FootingSummary& summary);

/// Designs the groups through the runner: each group's sheet and its bar items, then puts
/// each designed group's result values (status, A, B, H, bars) into its record. A footing
/// that fails a check or whose data give no footing gets its sheet, which says why, and the
/// status ChecksFailed; the pile footing gets its sheet of inputs, no items, and ChecksFailed
/// with the outcome "not designed". When `summaries` is given it is sized to the groups and
/// (*summaries)[k − 1] holds group k's summary before observer.finished is told of it.
JobResult designFootingGroups(const std::filesystem::path& projectFolder,
                              const std::vector<ChosenFooting>& groups,
                              const std::vector<bars::BarProperties>& barTable,
                              const JobObserver& observer = {},
                              core::CodePage page = core::CodePage::Windows1252,
                              std::vector<footings::FootingSummary>* summaries = nullptr);

/// Saves a group as footings::saveFootingGroup does; an existing group whose design inputs
/// changed becomes "not designed" with kFootingChangedAfterDesign. Returns its number.
int storeFootingGroup(const std::filesystem::path& projectFolder, int number,
                      const footings::FootingGroup& group);
/// Removes group `number` (its use mark "0", in place) with its steel items and design state.
void removeFootingGroupWithDesign(const std::filesystem::path& projectFolder, int number);

} // namespace orvak::jobs
