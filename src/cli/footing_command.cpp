// orvak-cli footing command: the values of one footing group's calculation sheet as JSON (or
// the sheet itself), for a checking engineer to compare with a spreadsheet.
#include <cstdlib>
#include <iostream>
#include <memory>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "beams/beam_job.h"
#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "jobs/footing_design_job.h"
#include "shell/shell_state.h"
#include "shell/startup.h"

namespace fs = std::filesystem;
using nlohmann::json;

namespace orvak::cli {

namespace {

struct FootingOptions {
    std::string project;
    std::string group; ///< UTF-8 as typed
    bool json = false;
};

json columnJson(const footings::FootingColumn& c, core::CodePage page) {
    return {{"column_group", core::toUtf8(c.name, page)},
            {"type", c.type},
            {"dims_cm", c.dims},
            {"pu_t", c.puT},
            {"mux_tm", c.muxTm},
            {"muy_tm", c.muyTm},
            {"cx_cm", c.cxCm},
            {"cy_cm", c.cyCm}};
}

json settingsJson(const footings::FootingSettings& s) {
    return {{"fc_kgcm2", s.Fc},
            {"fy_kgcm2", s.FY},
            {"soil_capacity_kgcm2", s.soilCapacity},
            {"cover_cm", s.coverCm},
            {"lf", s.LF},
            {"min_steel_percent", s.minSteelPercent},
            {"min_depth_cm", s.minDepthCm},
            {"fac_rowmax", s.facRowmax}};
}

json barsJson(const footings::FootingBars& b) {
    return {{"found", b.found},
            {"count", b.count},
            {"diameter_mm", b.diameterMm},
            {"area_cm2", b.areaCm2},
            {"length_cm", b.lengthCm}};
}

json resultJson(const jobs::ChosenFooting& c, const footings::FootingSummary& s,
                core::CodePage page) {
    static constexpr const char* kKinds[] = {"isolated", "combined", "pile"};
    json j;
    j["group"] = core::toUtf8(c.group.name, page);
    j["number"] = c.number;
    j["kind"] = kKinds[static_cast<int>(c.group.kind) - 1];
    j["status"] = std::string(jobs::footingOutcomeText(s.status));
    json columns = json::array();
    std::visit(
        [&](const auto& in) {
            using T = std::decay_t<decltype(in)>;
            if constexpr (std::is_same_v<T, footings::CombinedFootingInput>) {
                columns.push_back(columnJson(in.column1, page));
                columns.push_back(columnJson(in.column2, page));
            } else {
                columns.push_back(columnJson(in.column, page));
            }
            j["settings"] = settingsJson(in.settings);
            if constexpr (std::is_same_v<T, footings::PileFootingInput>) {
                j["piles"] = {{"count", in.piles},
                              {"diameter_cm", in.pileDiameterCm},
                              {"length_cm", in.pileLengthCm},
                              {"surface_friction", in.surfaceFriction},
                              {"end_bearing", in.endBearing}};
            }
        },
        c.input);
    j["columns"] = columns;
    j["a_cm"] = s.aCm;
    j["b_cm"] = s.bCm;
    j["h_cm"] = s.hCm;
    j["bars_y"] = barsJson(s.barsY);
    j["bars_x"] = barsJson(s.barsX);
    json failures = json::array();
    for (const auto& f : s.failures) {
        failures.push_back(core::toUtf8(f, page));
    }
    j["failures"] = failures;
    j["sheet"] = jobs::footingSheetFileName(c.group);
    return j;
}

int runFootingDesign(const FootingOptions& o) {
    const fs::path project = existingProject(o.project, true);
    const core::CodePage page = configuredCodePage();
    const fs::path programFolder = shell::resolveProgramFolder(std::getenv);
    const fs::path general = core::resolveNoCase(programFolder, shell::kGeneralFolderName);
    const bars::BarPropertyTable table = beams::designBarTable(general);
    const std::string name = projectText(o.group, page, "The group name");
    const std::vector<jobs::ChosenFooting> chosen =
        jobs::chooseFootingGroups(project, {name}, page);
    const jobs::ChosenFooting& c = chosen.front();
    const jobs::FootingDesign d = jobs::designFooting(c, table.rows, page);
    if (o.json) {
        std::cout << resultJson(c, d.summary, page).dump(2) << "\n";
    } else {
        std::cout << d.sheet.str();
    }
    return d.summary.status == footings::FootingStatus::Designed ? 0 : 2;
}

} // namespace

void addFootingCommands(CLI::App& app, CommandContext& context) {
    auto* footing = app.add_subcommand("footing", "Footing groups");
    footing->require_subcommand(1);
    auto o = std::make_shared<FootingOptions>();
    auto* design = footing->add_subcommand(
        "design", "Design one footing group and print its sheet (or its values as JSON) without "
                  "writing anything. Exit code 2 when the group is not designed.");
    design->add_option("project", o->project, "Project folder (a folder ending in .prj)")
        ->required();
    design->add_option("--group", o->group, "The footing group's name")->required();
    design->add_flag("--json", o->json, "Print the sheet's values as JSON");
    design->callback([&context, o] { context.action = [o] { return runFootingDesign(*o); }; });
}

} // namespace orvak::cli
