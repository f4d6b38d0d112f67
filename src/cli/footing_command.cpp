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
#include "footings/combined_footing.h"
#include "footings/isolated_footing.h"
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

json steelJson(const footings::SteelDirection& d) {
    return {{"span_cm", d.spanCm}, {"mu_tm", d.muKgCm / 1.0e5}, {"width_cm", d.widthCm},
            {"term", d.term},      {"rho_calc", d.rhoCalc},     {"rho", d.rho},
            {"ast_cm2", d.astCm2}, {"bars", barsJson(d.bars)}};
}

json limitsJson(const footings::SteelLimits& l) {
    return {{"beta1", l.beta1}, {"rowb", l.rowb}, {"rowmax", l.rowMax}, {"rowmin", l.rowMin}};
}

// The values the sheet prints, in its own units (t, t·m, cm, kg/cm²), step by step.
json isolatedJson(const footings::IsolatedFootingResult& r) {
    return {{"limits", limitsJson(r.limits)},
            {"service_load_t", r.serviceLoadKg / 1000.0},
            {"area_cm2", r.areaCm2},
            {"projection_cm", r.projectionCm},
            {"a_raw_cm", r.aRawCm},
            {"b_raw_cm", r.bRawCm},
            {"ix_cm4", r.ixCm4},
            {"iy_cm4", r.iyCm4},
            {"ey_cm", r.eyCm},
            {"ex_cm", r.exCm},
            {"mx_tm", r.mxKgCm / 1.0e5},
            {"my_tm", r.myKgCm / 1.0e5},
            {"q_kgcm2", r.q},
            {"corners_over", r.cornersOver},
            {"corners_tension", r.cornersTension},
            {"q_max_kgcm2", r.qMax},
            {"vu_kgcm2", r.vuKgCm2},
            {"lc_y_cm", r.lcYCm},
            {"lc_x_cm", r.lcXCm},
            {"qu_kgcm2", r.quKgCm2},
            {"d_beam_cm", r.dBeamCm},
            {"beam_shear_unsafe", r.beamShearUnsafe},
            {"beta_c", r.betaC},
            {"vc_raw_kgcm2", r.vcRawKgCm2},
            {"vc_kgcm2", r.vcKgCm2},
            {"a1", r.a1},
            {"b1", r.b1},
            {"c1", r.c1},
            {"d_punch_cm", r.dPunchCm},
            {"d_cm", r.dCm},
            {"ps_t", r.psKg / 1000.0},
            {"punching_unsafe", r.punchingUnsafe},
            {"final_d_cm", r.finalDCm},
            {"final_h_cm", r.finalHCm},
            {"steel_y", steelJson(r.steelY)},
            {"steel_x", steelJson(r.steelX)}};
}

json combinedJson(const footings::CombinedFootingResult& r) {
    const auto punching = [](const footings::ColumnPunching& p) {
        json passes = json::array();
        for (const footings::PunchPass& pass : p.passes) {
            passes.push_back(
                {{"d_cm", pass.dCm}, {"ps_t", pass.psKg / 1000.0}, {"edge", pass.edge}});
        }
        return json{{"edge_distance_cm", p.edgeDistanceCm}, {"passes", passes}};
    };
    return {{"limits", limitsJson(r.limits)},
            {"service_1_t", r.service1Kg / 1000.0},
            {"service_2_t", r.service2Kg / 1000.0},
            {"area_cm2", r.areaCm2},
            {"ex1_cm", r.ex1Cm},
            {"b_raw_cm", r.bRawCm},
            {"a_raw_cm", r.aRawCm},
            {"q_max_kgcm2", r.qMax},
            {"qu_kgcm2", r.quKgCm2},
            {"v1lt_t", r.v1ltKg / 1000.0},
            {"v1rt_t", r.v1rtKg / 1000.0},
            {"v2lt_t", r.v2ltKg / 1000.0},
            {"v2rt_t", r.v2rtKg / 1000.0},
            {"vmax_t", r.vmaxKg / 1000.0},
            {"m_under_tm", r.mUnderKgCm / 1.0e5},
            {"zero_shear_between", r.zeroShearBetween},
            {"zero_shear_cm", r.zeroShearCm},
            {"m_between_tm", r.mBetweenKgCm / 1.0e5},
            {"m_sagging_tm", r.mSaggingKgCm / 1.0e5},
            {"m_hogging_tm", r.mHoggingKgCm / 1.0e5},
            {"d_beam_cm", r.dBeamCm},
            {"d_start_cm", r.dStartCm},
            {"punching_1", punching(r.punch1)},
            {"punching_2", punching(r.punch2)},
            {"final_d_cm", r.finalDCm},
            {"final_h_cm", r.finalHCm},
            {"long_at_top", r.longAtTop},
            {"steel_long", steelJson(r.steelLong)},
            {"steel_other_face", steelJson(r.steelOther)},
            {"strip_1", steelJson(r.strip1)},
            {"strip_2", steelJson(r.strip2)}};
}

json resultJson(const jobs::ChosenFooting& c, const footings::FootingSummary& s,
                const std::vector<bars::BarProperties>& barTable, core::CodePage page) {
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
            // A footing of which no footing can be made has no steps to show.
            if constexpr (std::is_same_v<T, footings::IsolatedFootingInput>) {
                if (s.status != footings::FootingStatus::CheckData) {
                    j["steps"] = isolatedJson(footings::designIsolatedFooting(in, barTable));
                }
            } else if constexpr (std::is_same_v<T, footings::CombinedFootingInput>) {
                if (s.status != footings::FootingStatus::CheckData) {
                    j["steps"] = combinedJson(footings::designCombinedFooting(in, barTable));
                }
            }
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
        std::cout << resultJson(c, d.summary, table.rows, page).dump(2) << "\n";
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
