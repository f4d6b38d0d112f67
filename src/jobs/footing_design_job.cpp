// Footing groups in the design job runner: the choice of groups, the design of each by its kind
// into its calculation sheet and bar items, and the group's record kept in step.
#include "jobs/footing_design_job.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

#include <fmt/format.h>

#include "core/error.h"
#include "core/sheet.h"
#include "core/tolerances.h"
#include "footings/combined_footing.h"
#include "footings/isolated_footing.h"
#include "footings/pile_footing.h"

namespace orvak::jobs {

namespace {

std::string upperAscii(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return s;
}

ElementStatus elementStatus(footings::FootingStatus status) {
    return status == footings::FootingStatus::Designed ? ElementStatus::Designed
                                                       : ElementStatus::ChecksFailed;
}

std::vector<std::string> failureSentences(const footings::FootingSummary& s) {
    std::vector<std::string> out = s.failures;
    if (!out.empty()) {
        return out;
    }
    switch (s.status) {
    case footings::FootingStatus::Designed:
        break;
    case footings::FootingStatus::ChecksFailed:
        out.emplace_back("A check of the footing fails; see its sheet.");
        break;
    case footings::FootingStatus::CheckData:
        out.emplace_back("Check your data");
        break;
    case footings::FootingStatus::NotDesigned:
        out.emplace_back("The pile footing is not designed in this version; its sheet holds its "
                         "inputs.");
        break;
    }
    return out;
}

FootingDesignInput buildInput(const footings::FootingGroup& g,
                              const std::vector<columns::Column>& members,
                              const std::vector<columns::ColumnGroup>& groups) {
    switch (g.kind) {
    case footings::FootingKind::Combined:
        return footings::combinedFootingInput(g, members, groups);
    case footings::FootingKind::Pile:
        return footings::pileFootingInput(g, members, groups);
    case footings::FootingKind::Isolated:
        break;
    }
    return footings::isolatedFootingInput(g, members, groups);
}

// The inputs a design reads, without the result values the last design left.
footings::FootingGroup designInputs(footings::FootingGroup g) {
    g.status = footings::FootingStatus::NotDesigned;
    g.aCm = g.bCm = g.hCm = 0.0f;
    g.barsY = g.barsX = {};
    for (auto& c : g.columns) {
        c.groupName.clear();
    }
    return g;
}

} // namespace

std::vector<ChosenFooting> chooseFootingGroups(const std::filesystem::path& project,
                                               const FootingGroupSelection& o,
                                               core::CodePage page) {
    const std::vector<footings::StoredFootingGroup> stored = footings::readFootingGroups(project);
    const columns::ColumnLevel level{0};
    const std::vector<columns::Column> members = columns::readColumns(project, level);
    const std::vector<columns::ColumnGroup> columnGroups = columns::readGroups(project, level);
    std::vector<ChosenFooting> chosen;
    // Sheets are found by name without regard to case (projects travel to Windows), so two
    // groups whose sheet names differ only in case would overwrite each other.
    std::map<std::string, int> sheetNames;
    for (const footings::StoredFootingGroup& s : stored) {
        const std::string name = core::toUtf8(s.group.name, page);
        if (!sheetNames.emplace(upperAscii(footingSheetFileName(s.group)), s.number).second) {
            throw InputError(fmt::format("Two footing groups are named {}; rename one. Nothing "
                                         "was designed.",
                                         name));
        }
        if (!o.group.empty() && s.group.name != o.group) {
            continue;
        }
        const auto refuse = [&](const std::string& problem) {
            throw InputError(fmt::format("Footing group {} ({}): {}. Nothing was designed.",
                                         s.number, name, problem));
        };
        if (std::string problem = footings::validateFootingGroup(s.group); !problem.empty()) {
            refuse(problem);
        }
        if (std::string problem = footings::checkFootingMainData(s.group, columnGroups);
            !problem.empty()) {
            refuse(problem);
        }
        // The column groups are picked by number, and the footing level's group file is
        // rewritten as its groups are edited: a number that now stands for another group
        // would quietly give the footing another column's loads.
        for (std::size_t k = 0; k < s.group.columnCount(); ++k) {
            const footings::FootingPlacement& p = s.group.columns[k];
            const std::string& now = columnGroups[static_cast<std::size_t>(p.group - 1)].name;
            if (!p.groupName.empty() && p.groupName != now) {
                refuse(fmt::format("its column group {} is now {}, not {}; choose the column "
                                   "group again",
                                   p.group, core::toUtf8(now, page),
                                   core::toUtf8(p.groupName, page)));
            }
        }
        chosen.push_back({s.number, s.group, buildInput(s.group, members, columnGroups)});
    }
    if (chosen.empty()) {
        if (!o.group.empty()) {
            throw InputError(
                fmt::format("No footing group is named {}.", core::toUtf8(o.group, page)));
        }
        throw InputError("The project has no footing group to design.");
    }
    return chosen;
}

std::string footingSheetFileName(const footings::FootingGroup& group) {
    return core::sheetBaseName("FtGrp_" + group.name) + std::string(kFootingSheetExt);
}

FootingDesign designFooting(const ChosenFooting& c,
                            const std::vector<bars::BarProperties>& barTable, core::CodePage page) {
    const std::span<const bars::BarProperties> table(barTable);
    if (const auto* in = std::get_if<footings::IsolatedFootingInput>(&c.input)) {
        const footings::IsolatedFootingResult r = footings::designIsolatedFooting(*in, table);
        return {r.summary(), footings::isolatedFootingSheet(*in, r, page)};
    }
    if (const auto* in = std::get_if<footings::CombinedFootingInput>(&c.input)) {
        const footings::CombinedFootingResult r = footings::designCombinedFooting(*in, table);
        return {r.summary(), footings::combinedFootingSheet(*in, r, page)};
    }
    const auto& pile = std::get<footings::PileFootingInput>(c.input);
    footings::FootingSummary none;
    none.status = footings::FootingStatus::NotDesigned;
    return {none, footings::pileFootingSheet(pile, page)};
}

std::vector<bars::SteelItem> footingSteelItems(const ChosenFooting& c,
                                               const footings::FootingSummary& s) {
    std::vector<bars::SteelItem> items;
    if (s.status != footings::FootingStatus::Designed &&
        s.status != footings::FootingStatus::ChecksFailed) {
        return items;
    }
    const double cover = c.group.settings.coverCm;
    // The bars along y span the side A, those along x the side B.
    struct Direction {
        footings::FootingBars bars;
        double sideCm;
        std::string text;
    };
    std::vector<Direction> directions;
    if (s.barSets.empty()) {
        directions = {{s.barsY, s.aCm, "Bottom bars, Y direction"},
                      {s.barsX, s.bCm, "Bottom bars, X direction"}};
    }
    for (const footings::FootingBarSet& set : s.barSets) {
        directions.push_back({set.bars, 0.0, set.text});
    }
    std::int32_t mark = 0;
    for (const auto& d : directions) {
        ++mark;
        if (!d.bars.found || d.bars.count <= 0 || d.bars.count > 32767) {
            continue;
        }
        const double length = d.bars.lengthCm > 0.0 ? d.bars.lengthCm : d.sideCm - 2.0 * cover;
        if (!(length > 0.0)) {
            continue;
        }
        bars::SteelItem item;
        item.mark = static_cast<std::int16_t>(mark);
        item.mainKey =
            bars::makeMainKey(static_cast<std::int32_t>(kFootingSteelKind), 0, c.number, mark, 0);
        item.element = bars::storedElementName(c.group.name);
        item.slab = 0;
        item.beam = static_cast<std::int16_t>(c.number);
        item.general = static_cast<std::int16_t>(kFootingSteelKind);
        item.quantity = static_cast<float>(d.bars.count);
        item.diameterMm = static_cast<float>(d.bars.diameterMm);
        item.lengthCm = static_cast<float>(std::ceil(length - core::kSingleRounding));
        item.description = d.text;
        items.push_back(std::move(item));
    }
    return items;
}

std::string_view footingOutcomeText(footings::FootingStatus status) {
    switch (status) {
    case footings::FootingStatus::Designed:
        return "designed";
    case footings::FootingStatus::ChecksFailed:
        return "checks fail";
    case footings::FootingStatus::CheckData:
        return "check your data";
    case footings::FootingStatus::NotDesigned:
        break;
    }
    return "not designed";
}

std::string footingPlanText(const footings::FootingSummary& s) {
    return fmt::format("{:g} x {:g} x {:g} cm", s.aCm, s.bCm, s.hCm);
}

JobResult designFootingGroups(const std::filesystem::path& project,
                              const std::vector<ChosenFooting>& groups,
                              const std::vector<bars::BarProperties>& barTable,
                              const JobObserver& observer, core::CodePage page,
                              std::vector<footings::FootingSummary>* summaries) {
    std::vector<footings::FootingSummary> own(groups.size());
    std::vector<footings::FootingSummary>& kept = summaries ? *summaries : own;
    kept.assign(groups.size(), {});
    std::vector<JobElement> elements;
    elements.reserve(groups.size());
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const ChosenFooting& c = groups[i];
        JobElement e;
        e.kind = std::string(kFootingGroupKind);
        e.floor = 0;
        e.number = c.number;
        e.name = c.group.name;
        e.design = [&project, &c, &barTable, page, &kept, i](bool) {
            const FootingDesign d = designFooting(c, barTable, page);
            kept[i] = d.summary;
            ElementOutputs out;
            out.report.status = elementStatus(d.summary.status);
            out.report.outcome = std::string(footingOutcomeText(d.summary.status));
            if (d.summary.status != footings::FootingStatus::Designed) {
                out.report.failures = failureSentences(d.summary);
            }
            out.files.push_back({project / footingSheetFileName(c.group), d.sheet.bytes()});
            out.recordsSteel = true;
            out.steelKind = kFootingSteelKind;
            out.items = footingSteelItems(c, d.summary);
            return out;
        };
        elements.push_back(std::move(e));
    }
    JobResult run = runDesignJob(project, elements, observer);
    // The group's record shows what its last design gave; a group whose design could not be
    // put in place keeps the values of the design before.
    std::vector<footings::FootingResult> results;
    for (std::size_t i = 0; i < run.elements.size(); ++i) {
        const ElementReport& r = run.elements[i];
        if (r.status != ElementStatus::NotDesigned) {
            results.push_back({r.number, r.name, kept[i]});
        }
    }
    footings::storeFootingResults(project, results);
    return run;
}

int storeFootingGroup(const std::filesystem::path& project, int number,
                      const footings::FootingGroup& group) {
    std::optional<footings::FootingGroup> before;
    if (number > 0) {
        before = footings::readFootingGroup(project, number);
    }
    const int stored = footings::saveFootingGroup(project, number, group);
    if (before && designInputs(*before) != designInputs(group)) {
        markElementChanged(project, kFootingGroupKind, 0, stored, kFootingChangedAfterDesign);
    }
    return stored;
}

void removeFootingGroupWithDesign(const std::filesystem::path& project, int number) {
    footings::removeFootingGroup(project, number);
    forgetElement(project, kFootingGroupKind, kFootingSteelKind, 0, number);
}

} // namespace orvak::jobs
