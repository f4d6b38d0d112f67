// Column groups in the design job runner: the choice of groups and the design of each into its
// calculation sheet and bar items.
#include "jobs/column_design_job.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

#include "columns/interaction_chart.h"
#include "core/error.h"
#include "core/sheet.h"
#include "core/tolerances.h"
#include "floors/floors.h"

namespace orvak::jobs {

namespace {

std::string levelText(columns::ColumnLevel level) {
    return level.footing() ? std::string("The footing level")
                           : fmt::format("Floor {}", level.floor);
}

std::string upperAscii(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return s;
}

// The groups of one level with their members gathered, as a run takes them.
void chooseOnLevel(const std::filesystem::path& project, columns::ColumnLevel level,
                   const ColumnGroupSelection& o, core::CodePage page,
                   std::vector<ChosenGroup>& chosen) {
    const std::vector<columns::Column> members = columns::readColumns(project, level);
    const std::vector<columns::ColumnGroup> groups = columns::readGroups(project, level);
    // Sheets are found by name without regard to case (projects travel to Windows), so two
    // groups of a level whose sheet names differ only in case would overwrite each other.
    std::map<std::string, std::string> sheetNames;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        ChosenGroup c{level, static_cast<int>(i + 1), groups[i], {}};
        const auto [at, added] =
            sheetNames.emplace(upperAscii(columnSheetFileName(c)), c.group.name);
        if (!added) {
            throw InputError(fmt::format("{} has two groups named {}; rename one. Nothing was "
                                         "designed.",
                                         levelText(level), core::toUtf8(c.group.name, page)));
        }
        if (!o.group.empty() && c.group.name != o.group) {
            continue;
        }
        columns::gatherMembers(c.group, c.number, members);
        for (const columns::Column& m : members) {
            if (m.group == c.number) {
                c.memberNames.push_back(m.name);
            }
        }
        const std::string problem = columns::validateGroup(c.group);
        if (!problem.empty()) {
            throw InputError(fmt::format("{}, group {} ({}): {}. Nothing was designed.",
                                         levelText(level), c.number,
                                         core::toUtf8(c.group.name, page), problem));
        }
        if (!(c.group.puT > 0.0f)) {
            throw InputError(fmt::format("{}, group {} ({}): the group carries no axial load. "
                                         "Nothing was designed.",
                                         levelText(level), c.number,
                                         core::toUtf8(c.group.name, page)));
        }
        chosen.push_back(std::move(c));
    }
}

ElementStatus elementStatus(columns::ColumnStatus status) {
    switch (status) {
    case columns::ColumnStatus::Designed:
        return ElementStatus::Designed;
    case columns::ColumnStatus::SectionTooSmall:
    case columns::ColumnStatus::NotConverged:
    case columns::ColumnStatus::Unstable:
        return ElementStatus::ChecksFailed;
    case columns::ColumnStatus::MissingData:
        break;
    }
    return ElementStatus::NotDesigned;
}

std::string failureSentence(columns::ColumnStatus status) {
    switch (status) {
    case columns::ColumnStatus::Designed:
        break;
    case columns::ColumnStatus::SectionTooSmall:
        return "The section is too small; enlarge it and design the group again.";
    case columns::ColumnStatus::NotConverged:
        return "The steel ratio search did not converge.";
    case columns::ColumnStatus::Unstable:
        return "The column is unstable (buckling); enlarge the section.";
    case columns::ColumnStatus::MissingData:
        return "The group's section type or a dimension is missing.";
    }
    return {};
}

} // namespace

namespace {

columns::GroupState groupState(columns::ColumnStatus status) {
    switch (status) {
    case columns::ColumnStatus::Designed:
        return columns::GroupState::Designed;
    case columns::ColumnStatus::SectionTooSmall:
        return columns::GroupState::SectionTooSmall;
    case columns::ColumnStatus::NotConverged:
        return columns::GroupState::NotConverged;
    case columns::ColumnStatus::Unstable:
        return columns::GroupState::Unstable;
    case columns::ColumnStatus::MissingData:
        break;
    }
    return columns::GroupState::NotDesigned;
}

} // namespace

std::string_view columnOutcomeText(columns::ColumnStatus status) {
    switch (status) {
    case columns::ColumnStatus::Designed:
        return "designed";
    case columns::ColumnStatus::SectionTooSmall:
        return "section too small";
    case columns::ColumnStatus::NotConverged:
        return "did not converge";
    case columns::ColumnStatus::Unstable:
        return "unstable";
    case columns::ColumnStatus::MissingData:
        break;
    }
    return "missing data";
}

std::vector<ChosenGroup> chooseColumnGroups(const std::filesystem::path& project,
                                            const ColumnGroupSelection& o, core::CodePage page) {
    std::vector<ChosenGroup> chosen;
    if (o.footingLevel) {
        chooseOnLevel(project, columns::ColumnLevel{0}, o, page, chosen);
    } else {
        bool floorFound = false;
        for (const auto& f : floors::readFloors(project)) {
            if (o.floor == 0 || f.number == o.floor) {
                floorFound = true;
                chooseOnLevel(project, columns::ColumnLevel{f.number}, o, page, chosen);
            }
        }
        if (o.floor != 0 && !floorFound) {
            throw InputError(fmt::format("The project has no floor {}.", o.floor));
        }
    }
    if (chosen.empty()) {
        if (!o.group.empty()) {
            throw InputError(fmt::format("{} no column group named {}.",
                                         o.footingLevel ? std::string("The footing level has")
                                         : o.floor != 0 ? fmt::format("Floor {} has", o.floor)
                                                        : std::string("No floor has"),
                                         core::toUtf8(o.group, page)));
        }
        throw InputError(o.footingLevel ? "The footing level has no column group to design."
                         : o.floor != 0
                             ? fmt::format("Floor {} has no column group to design.", o.floor)
                             : std::string("The project has no column group to design."));
    }
    return chosen;
}

std::string columnSheetFileName(const ChosenGroup& c) {
    // Every floor names its groups "Gr-C1", "Gr-C2" ... by default, so a floor group's sheet
    // carries its floor as a beam's listings do; the footing level is one set of groups.
    const std::string base = c.level.footing()
                                 ? "FtClGrp_" + c.group.name
                                 : fmt::format("ClGrp_F{}-{}", c.level.floor, c.group.name);
    return core::sheetBaseName(base) + std::string(kColumnSheetExt);
}

std::string columnChartFileName(const ChosenGroup& c) {
    std::string name = columnSheetFileName(c);
    name.resize(name.size() - kColumnSheetExt.size());
    return name + std::string(kColumnChartExt);
}

std::vector<bars::SteelItem> columnGroupSteelItems(const ChosenGroup& c,
                                                   const columns::ColumnDesignResult& result) {
    std::vector<bars::SteelItem> items;
    if (result.status != columns::ColumnStatus::Designed || !result.finalBars.found) {
        return items;
    }
    const double dbCm = result.finalBars.diameterMm / 10.0;
    // ACI 318 compression lap splice of bars up to 420 MPa: 0.071 fy db (fy in MPa), at least
    // 30 cm; each bar is lapped once over the column's height.
    const double fyMpa = c.group.settings.FY * 0.0980665;
    const double lapCm = std::max(0.071 * fyMpa * dbCm, 30.0);
    const int columnsOfGroup = std::max<int>(c.group.members, 1);
    bars::SteelItem item;
    item.mark = 1;
    item.mainKey = bars::makeMainKey(static_cast<std::int32_t>(kColumnSteelKind), c.level.floor,
                                     c.number, item.mark, 0);
    item.element = bars::storedElementName(c.group.name);
    item.slab = static_cast<std::int16_t>(c.level.floor);
    item.beam = static_cast<std::int16_t>(c.number);
    item.general = static_cast<std::int16_t>(kColumnSteelKind);
    item.quantity = static_cast<float>(result.finalBars.count * columnsOfGroup);
    item.diameterMm = static_cast<float>(result.finalBars.diameterMm);
    item.lengthCm = static_cast<float>(std::ceil(c.group.colLenCm + lapCm - core::kSingleRounding));
    item.description = fmt::format("Main bars, {} columns", columnsOfGroup);
    items.push_back(item);
    // Mark 2: the ties of every column, or the turns of every spiral, each one tie (turn) long.
    if (result.transverse) {
        const columns::TransverseSteel& t = *result.transverse;
        item.mark = 2;
        item.mainKey = bars::makeMainKey(static_cast<std::int32_t>(kColumnSteelKind), c.level.floor,
                                         c.number, item.mark, 0);
        item.quantity = static_cast<float>(t.countPerColumn * columnsOfGroup);
        item.diameterMm = static_cast<float>(t.diameterMm);
        item.lengthCm = static_cast<float>(t.lengthCm);
        item.description =
            fmt::format("{}, {} columns", t.spiral ? "Spiral turns" : "Ties", columnsOfGroup);
        items.push_back(std::move(item));
    }
    return items;
}

JobResult designColumnGroups(const std::filesystem::path& project,
                             const std::vector<ChosenGroup>& groups,
                             const std::vector<bars::BarProperties>& barTable,
                             const JobObserver& observer, core::CodePage page) {
    // What each design gave, for the groups' records once the run stands.
    std::vector<columns::GroupResult> kept(groups.size());
    std::vector<JobElement> elements;
    elements.reserve(groups.size());
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const ChosenGroup& c = groups[i];
        JobElement e;
        e.kind = std::string(kColumnGroupKind);
        e.floor = c.level.floor;
        e.number = c.number;
        e.name = c.group.name;
        e.design = [&project, &c, &barTable, page, &kept, i](bool) {
            const columns::ColumnDesignResult result = columns::designColumn(c.group, barTable);
            columns::GroupResult& k = kept[i];
            k.number = c.number;
            k.name = c.group.name;
            k.state = groupState(result.status);
            if (result.status == columns::ColumnStatus::Designed && result.finalBars.found) {
                k.steelAreaCm2 = static_cast<float>(result.finalBars.areaCm2);
                k.barCount = static_cast<std::int16_t>(result.finalBars.count);
                k.barDiameterMm =
                    static_cast<std::int16_t>(std::lround(result.finalBars.diameterMm));
            }
            ElementOutputs out;
            out.report.status = elementStatus(result.status);
            out.report.outcome = std::string(columnOutcomeText(result.status));
            if (result.status != columns::ColumnStatus::Designed) {
                out.report.failures.push_back(failureSentence(result.status));
            }
            // A problem of the group is one of each of its columns: their names go with it.
            out.report.messages = result.problems;
            if (!c.memberNames.empty()) {
                std::string names;
                for (const std::string& n : c.memberNames) {
                    names += (names.empty() ? "" : ", ") + n;
                }
                for (std::string& m : out.report.messages) {
                    m += " (" + names + ")";
                }
            }
            if (out.report.status == ElementStatus::NotDesigned) {
                return out;
            }
            out.files.push_back({project / columnSheetFileName(c),
                                 columns::columnSheet(c.group, result, page).bytes()});
            // The chart file always follows the sheet: the runner puts outputs in place but
            // removes none, so a design without a chart writes one that says so.
            const auto chart = columns::interactionChart(c.group, result);
            out.files.push_back(
                {project / columnChartFileName(c),
                 chart ? columns::interactionChartSvg(*chart)
                       : columns::noInteractionChartSvg("No interaction chart. " +
                                                        failureSentence(result.status))});
            out.recordsSteel = true;
            out.steelKind = kColumnSteelKind;
            out.items = columnGroupSteelItems(c, result);
            return out;
        };
        elements.push_back(std::move(e));
    }
    JobResult run = runDesignJob(project, elements, observer);
    // Each level's group file shows what the designs that were put in place gave, written
    // once a level.
    std::map<int, std::vector<columns::GroupResult>> byLevel;
    for (std::size_t i = 0; i < run.elements.size() && i < groups.size(); ++i) {
        if (run.elements[i].status != ElementStatus::NotDesigned && !kept[i].name.empty()) {
            byLevel[groups[i].level.floor].push_back(kept[i]);
        }
    }
    for (const auto& [floor, results] : byLevel) {
        columns::storeGroupResults(project, columns::ColumnLevel{floor}, results);
    }
    return run;
}

} // namespace orvak::jobs
