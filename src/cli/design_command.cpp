// orvak-cli design command: designs the beams of a project from their files, writes every
// listing, records the chosen bars in the steel store and prints one line per beam.
#include <cstdlib>
#include <iostream>
#include <memory>

#include <fmt/format.h>

#include "beams/beam_job.h"
#include "beams/load_cases.h"
#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "floors/floors.h"
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
};

std::string statusWord(beams::BeamJobStatus status) {
    switch (status) {
    case beams::BeamJobStatus::Designed:
        return "designed";
    case beams::BeamJobStatus::ChecksFailed:
        return "FAILS CHECKS";
    case beams::BeamJobStatus::AnalysisFailed:
        return "NOT DESIGNED";
    }
    return "";
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
    const std::vector<bars::BarProperties>& barTable = table.rows;

    std::vector<floors::Floor> chosenFloors;
    for (const auto& f : floors::readFloors(project)) {
        if (o.floor == 0 || f.number == o.floor) {
            chosenFloors.push_back(f);
        }
    }
    if (o.floor != 0 && chosenFloors.empty()) {
        throw InputError(fmt::format("The project has no floor {}.", o.floor));
    }

    // Every chosen beam is read and checked before the first one is designed, so that a bad
    // record stops the run before anything is written.
    std::vector<beams::BeamRecord> chosen;
    for (const auto& f : chosenFloors) {
        bool found = false;
        for (auto& record : beams::readBeamFile(project, f.number)) {
            if (o.beam != 0 && record.number != o.beam) {
                continue;
            }
            found = true;
            const std::string problem = beams::validateBeam(record);
            if (!problem.empty()) {
                throw InputError(fmt::format("Floor {}, beam {} ({}): {}. Nothing was designed.",
                                             record.floor, record.number,
                                             core::toUtf8(record.name, page), problem));
            }
            chosen.push_back(std::move(record));
        }
        if (o.beam != 0 && o.floor != 0 && !found) {
            throw InputError(fmt::format("Floor {} has no beam {}.", f.number, o.beam));
        }
    }

    if (chosen.empty()) {
        throw InputError(o.beam != 0 ? fmt::format("No floor of the project has a beam {}.", o.beam)
                                     : std::string("The project has no beam to design."));
    }

    int designed = 0;
    int failing = 0;
    for (const auto& record : chosen) {
        const beams::BeamJobResult r = beams::designBeamRecord(project, record, barTable, o.scheme);
        ++designed;
        std::cout << fmt::format("Floor {}, beam {} {}: {}, {} listings, {} steel items\n", r.floor,
                                 r.number, core::toUtf8(r.name, page), statusWord(r.status),
                                 r.files.size(), r.steelItems);
        for (const auto& m : r.messages) {
            std::cout << "  " << m << "\n";
        }
        if (r.status != beams::BeamJobStatus::Designed) {
            ++failing;
            for (const auto& failure : r.failures) {
                std::cout << "  " << failure << "\n";
            }
        }
    }
    std::cout << fmt::format("{} beams designed, {} with failures.\n", designed, failing);
    return failing > 0 ? 2 : 0;
}

} // namespace

void addDesignCommands(CLI::App& app, CommandContext& context) {
    auto o = std::make_shared<DesignOptions>();
    auto* design = app.add_subcommand(
        "design", "Design the beams of a project: listings (.Analy0 to .Analy3) and steel items. "
                  "Exit code 2 when a beam fails a check.");
    design->add_option("project", o->project, "Project folder (a folder ending in .prj)")
        ->required();
    design->add_option("--floor", o->floor, "Only this floor (default: every floor)")
        ->check(CLI::Range(1, floors::kMaxFloorNumber));
    design->add_option("--beam", o->beam, "Only beams of this number (default: every beam)")
        ->check(CLI::Range(1, 32767));
    design
        ->add_option("--scheme", o->scheme,
                     fmt::format("Load-case scheme {} to {} (default {}: {})", beams::kMinCaseScheme,
                                 beams::kMaxCaseScheme, beams::kDefaultCaseScheme,
                                 beams::caseSchemeName(beams::kDefaultCaseScheme)))
        ->check(CLI::Range(beams::kMinCaseScheme, beams::kMaxCaseScheme));
    design->callback([&context, o] { context.action = [o] { return runDesign(*o); }; });
}

} // namespace orvak::cli
