// orvak-cli design command: designs the beams (or the column groups) of a project from their
// files, writes every listing and sheet, records the bars in the steel store, one line each.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

#include <fmt/format.h>

#include "beams/beam_job.h"
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

// The column groups chosen, one line each with the outcome of its design, and the problems
// of the run together at its end.
int runColumnDesign(const DesignOptions& o, const fs::path& project, core::CodePage page,
                    const bars::BarPropertyTable& table) {
    const std::vector<jobs::ChosenGroup> chosen =
        jobs::chooseColumnGroups(project, {o.footingLevel, o.floor, {}}, page);
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
    // The problems of every group together, as the group form shows them after a run: a
    // slenderness over 100 is one even where the group is designed.
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
    std::cout << fmt::format("{} column groups designed, {} with failures.\n", run.elements.size(),
                             run.failing());
    return run.failing() > 0 ? 2 : 0;
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
        return runColumnDesign(o, project, page, table);
    }
    const std::vector<beams::BeamRecord> chosen =
        jobs::chooseBeams(project, {o.floor, o.beam}, page);

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

} // namespace

void addDesignCommands(CLI::App& app, CommandContext& context) {
    auto o = std::make_shared<DesignOptions>();
    auto* design = app.add_subcommand(
        "design",
        "Design the beams of a project: listings (.Analy0 to .Analy3), the report (.rtf) and "
        "steel items; with --columns the column groups: a sheet (.Analy), an interaction chart "
        "(.svg) and the bars of each. "
        "Exit code 2 when an element fails a check.");
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
    design->callback([&context, o] { context.action = [o] { return runDesign(*o); }; });
}

} // namespace orvak::cli
