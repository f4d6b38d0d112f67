// orvak-cli design command: designs the beams, the column groups and the footing groups of a
// project from their files (or one kind of them), writes every listing and sheet, records the
// bars in the steel store, one line each.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

#include <fmt/format.h>

#include "beams/beam_job.h"
#include "beams/beam_record.h"
#include "beams/beam_report.h"
#include "beams/load_cases.h"
#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "floors/floors.h"
#include "jobs/beam_design_job.h"
#include "jobs/column_design_job.h"
#include "jobs/footing_design_job.h"
#include "shell/shell_state.h"
#include "shell/startup.h"

namespace fs = std::filesystem;

namespace orvak::cli {

namespace {

struct DesignOptions {
    std::string project;
    int floor = 0; ///< 0: every floor
    int beam = 0;  ///< 0: every beam
    int scheme = beams::kDefaultCaseScheme;
    bool columns = false;      ///< the column groups instead of the beams
    bool footingLevel = false; ///< with columns: the groups of the footing level
    bool footings = false;     ///< the footing groups instead of the beams
};

std::string statusWord(jobs::ElementStatus status) {
    switch (status) {
    case jobs::ElementStatus::Designed:
        return "designed";
    case jobs::ElementStatus::ChecksFailed:
        return "FAILS CHECKS";
    case jobs::ElementStatus::NotDesigned:
        return "NOT DESIGNED";
    }
    return "";
}

// The problems of every element of a run together at its end, as the group forms show them
// after a run: a slenderness over 100 is one even where the group is designed.
void printProblems(const jobs::JobResult& run, core::CodePage page) {
    const bool problems = std::any_of(run.elements.begin(), run.elements.end(), [](const auto& r) {
        return !r.messages.empty() || !r.failures.empty();
    });
    if (problems) {
        std::cout << "Problems:\n";
        for (const jobs::ElementReport& r : run.elements) {
            for (const auto& line : r.messages) {
                std::cout << "  " << core::toUtf8(r.name, page) << ": " << line << "\n";
            }
            for (const auto& failure : r.failures) {
                std::cout << "  " << core::toUtf8(r.name, page) << ": " << failure << "\n";
            }
        }
    }
}

// The column groups chosen, one line each with the outcome of its design, and the problems
// of the run together at its end.
int runColumnDesign(const std::vector<jobs::ChosenGroup>& chosen, const fs::path& project,
                    core::CodePage page, const bars::BarPropertyTable& table) {
    jobs::JobObserver observer;
    observer.finished = [&](std::size_t, std::size_t, const jobs::ElementReport& r) {
        const std::string where =
            r.floor == 0 ? std::string("Footing level") : fmt::format("Floor {}", r.floor);
        std::cout << fmt::format(
            "{}, group {} {}: {}, {} steel items\n", where, r.number, core::toUtf8(r.name, page),
            r.outcome.empty() ? statusWord(r.status) : r.outcome, r.steelItems);
        std::cout.flush();
    };
    const jobs::JobResult run =
        jobs::designColumnGroups(project, chosen, table.rows, observer, page);
    printProblems(run, page);
    std::cout << fmt::format("{} column groups designed, {} with failures.\n", run.elements.size(),
                             run.failing());
    return run.failing() > 0 ? 2 : 0;
}

// The footing groups chosen, one line each with the outcome of its design and its plan
// A x B x H, and the problems of the run together at its end.
int runFootingDesign(const std::vector<jobs::ChosenFooting>& chosen, const fs::path& project,
                     core::CodePage page, const bars::BarPropertyTable& table) {
    std::vector<footings::FootingSummary> summaries;
    jobs::JobObserver observer;
    observer.finished = [&](std::size_t k, std::size_t, const jobs::ElementReport& r) {
        const footings::FootingSummary& s = summaries[k - 1];
        const bool planned = r.status != jobs::ElementStatus::NotDesigned && s.aCm > 0.0;
        std::cout << fmt::format(
            "Footing group {} {}: {}{}, {} steel items\n", r.number, core::toUtf8(r.name, page),
            r.status == jobs::ElementStatus::NotDesigned ? statusWord(r.status) : r.outcome,
            planned ? ", " + jobs::footingPlanText(s) : std::string(), r.steelItems);
        std::cout.flush();
    };
    const jobs::JobResult run =
        jobs::designFootingGroups(project, chosen, table.rows, observer, page, &summaries);
    printProblems(run, page);
    std::cout << fmt::format("{} footing groups designed, {} with failures.\n", run.elements.size(),
                             run.failing());
    return run.failing() > 0 ? 2 : 0;
}

// The beams chosen, one line each with the outcome of its design and its files.
int runBeamDesign(const DesignOptions& o, const std::vector<beams::BeamRecord>& chosen,
                  const fs::path& project, core::CodePage page,
                  const bars::BarPropertyTable& table) {
    std::cout << fmt::format("Load cases: scheme {} ({})\n", o.scheme,
                             beams::caseSchemeName(o.scheme));
    jobs::JobObserver observer;
    observer.finished = [&](std::size_t, std::size_t, const jobs::ElementReport& r) {
        // The listings and, when they were written, the report document.
        const auto report = std::count_if(r.files.begin(), r.files.end(), [](const fs::path& f) {
            return f.extension() == beams::kReportExt;
        });
        std::cout << fmt::format("Floor {}, beam {} {}: {}, {} listings{}, {} steel items\n",
                                 r.floor, r.number, core::toUtf8(r.name, page),
                                 statusWord(r.status), r.files.size() - report,
                                 report > 0 ? " and the report" : "", r.steelItems);
        for (const auto& m : r.messages) {
            std::cout << "  " << m << "\n";
        }
        if (r.status != jobs::ElementStatus::Designed) {
            for (const auto& failure : r.failures) {
                std::cout << "  " << failure << "\n";
            }
        }
        std::cout.flush();
    };
    const jobs::JobResult run =
        jobs::designBeams(project, chosen, table.rows, o.scheme, observer, page);
    std::cout << fmt::format("{} beams designed, {} with failures.\n", run.elements.size(),
                             run.failing());
    return run.failing() > 0 ? 2 : 0;
}

// Without an element option: the beams, the column groups (of the floors, then of the footing
// level) and the footing groups, in that order; a kind the project has none of is passed
// over, and --floor keeps to that floor's beams and groups. Every element is chosen and
// checked before the first is designed, so that a bad record stops the run before anything
// is written.
int runEveryKind(const DesignOptions& o, const fs::path& project, core::CodePage page,
                 const bars::BarPropertyTable& table) {
    bool anyBeams = false;
    bool anyColumns = false;
    for (const auto& f : floors::readFloors(project)) {
        if (o.floor == 0 || f.number == o.floor) {
            anyBeams = anyBeams || !beams::readBeamFile(project, f.number).empty();
            anyColumns =
                anyColumns || !columns::readGroups(project, columns::ColumnLevel{f.number}).empty();
        }
    }
    const bool wholeProject = o.floor == 0 && o.beam == 0;
    const bool anyFootingColumns =
        wholeProject && !columns::readGroups(project, columns::ColumnLevel{0}).empty();
    const bool anyFootings = wholeProject && !footings::readFootingGroups(project).empty();
    anyColumns = anyColumns && o.beam == 0;
    // With nothing else to design, the beams' choice says why nothing can be.
    anyBeams = anyBeams || !(anyColumns || anyFootingColumns || anyFootings);

    std::vector<beams::BeamRecord> chosenBeams;
    if (anyBeams) {
        chosenBeams = jobs::chooseBeams(project, {o.floor, o.beam}, page);
    }
    std::vector<jobs::ChosenGroup> chosenGroups;
    if (anyColumns) {
        chosenGroups = jobs::chooseColumnGroups(project, {false, o.floor, {}}, page);
    }
    if (anyFootingColumns) {
        for (auto& g : jobs::chooseColumnGroups(project, {true, 0, {}}, page)) {
            chosenGroups.push_back(std::move(g));
        }
    }
    std::vector<jobs::ChosenFooting> chosenFootings;
    if (anyFootings) {
        chosenFootings = jobs::chooseFootingGroups(project, {}, page);
    }
    int code = 0;
    if (!chosenBeams.empty()) {
        code = std::max(code, runBeamDesign(o, chosenBeams, project, page, table));
    }
    if (!chosenGroups.empty()) {
        code = std::max(code, runColumnDesign(chosenGroups, project, page, table));
    }
    if (!chosenFootings.empty()) {
        code = std::max(code, runFootingDesign(chosenFootings, project, page, table));
    }
    return code;
}

int runDesign(const DesignOptions& o) {
    const fs::path project = existingProject(o.project, true);
    const core::CodePage page = configuredCodePage();
    const fs::path programFolder = shell::resolveProgramFolder(std::getenv);
    const fs::path general = core::resolveNoCase(programFolder, shell::kGeneralFolderName);
    const bars::BarPropertyTable table = beams::designBarTable(general);
    if (table.builtIn) {
        noteBuiltInBarTable();
    }
    if (o.columns) {
        return runColumnDesign(
            jobs::chooseColumnGroups(project, {o.footingLevel, o.floor, {}}, page), project, page,
            table);
    }
    if (o.footings) {
        return runFootingDesign(jobs::chooseFootingGroups(project, {}, page), project, page, table);
    }
    return runEveryKind(o, project, page, table);
}

} // namespace

void addDesignCommands(CLI::App& app, CommandContext& context) {
    auto o = std::make_shared<DesignOptions>();
    auto* design = app.add_subcommand(
        "design",
        "Design the beams, the column groups and the footing groups of a project, in that order: "
        "listings (.Analy0 to .Analy3) and the report (.rtf) of each beam, a sheet (.Analy) of "
        "each group with an interaction chart (.svg) of each column group, and the steel items; "
        "--columns or --footings designs only that kind. Exit code 2 when an element fails a "
        "check.");
    design->add_option("project", o->project, "Project folder (a folder ending in .prj)")
        ->required();
    auto* floorOption =
        design->add_option("--floor", o->floor, "Only this floor (default: every floor)")
            ->check(CLI::Range(1, floors::kMaxFloorNumber));
    auto* beamOption =
        design->add_option("--beam", o->beam, "Only beams of this number (default: every beam)")
            ->check(CLI::Range(1, 32767));
    design
        ->add_option("--scheme", o->scheme,
                     fmt::format("Load-case scheme {} to {} (default {}: {})",
                                 beams::kMinCaseScheme, beams::kMaxCaseScheme,
                                 beams::kDefaultCaseScheme,
                                 beams::caseSchemeName(beams::kDefaultCaseScheme)))
        ->check(CLI::Range(beams::kMinCaseScheme, beams::kMaxCaseScheme));
    auto* columns = design->add_flag(
        "--columns", o->columns,
        "Design the column groups instead: one sheet (ClGrp_, FtClGrp_), its interaction "
        "chart (.svg) and the bars of each");
    auto* footing = design
                        ->add_flag("--footing-level", o->footingLevel,
                                   "With --columns: the groups of the footing level")
                        ->needs(columns);
    footing->excludes(floorOption);
    columns->excludes(beamOption);
    auto* footings = design->add_flag(
        "--footings", o->footings,
        "Design the footing groups instead: one sheet (FtGrp_) and the bars of each");
    footings->excludes(columns)->excludes(floorOption)->excludes(beamOption);
    design->callback([&context, o] { context.action = [o] { return runDesign(*o); }; });
}

} // namespace orvak::cli
