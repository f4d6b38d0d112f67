// orvak-cli column command: the values of one column group's calculation sheet as JSON, for a
// checking engineer to compare with a spreadsheet.
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
#include "floors/floors.h"
#include "jobs/column_design_job.h"
#include "shell/shell_state.h"
#include "shell/startup.h"

namespace fs = std::filesystem;
using nlohmann::json;

namespace orvak::cli {

namespace {

struct ColumnOptions {
    std::string project;
    int floor = 0;
    bool footingLevel = false;
    std::string group; ///< UTF-8 as typed
    bool json = false;
};

json searchJson(const columns::RatioSearch& s) {
    static constexpr const char* kOutcomes[] = {"converged", "below minimum", "above maximum",
                                                "no eccentricity", "too many points"};
    json passes = json::array();
    for (const columns::SearchPass& p : s.passes) {
        passes.push_back({{"rho", p.rho}, {"pn_t", p.pnT}, {"mn_tm", p.mnTm}});
    }
    return {{"outcome", kOutcomes[static_cast<int>(s.outcome)]},
            {"target_t", s.targetT},
            {"rho", s.rho},
            {"passes", passes}};
}

json bendingJson(const columns::BendingDesign& b) {
    json j = {{"mu_tm", b.muTm},
              {"pnc_t", b.pncT},
              {"mnc_tm", b.mncTm},
              {"pneq_t", b.pneqT},
              {"h_cm", b.hCm},
              {"d_cm", b.dCm},
              {"pd_t", b.pdT},
              {"md_tm", b.mdTm},
              {"balanced",
               {{"cb_cm", b.balanced.cbCm},
                {"ab_cm", b.balanced.abCm},
                {"pnb_t", b.balanced.pnbT},
                {"mnb_tm", b.balanced.mnbTm},
                {"eb_cm", b.balanced.ebCm}}},
              {"search", searchJson(b.search)},
              {"t_t", b.tT},
              {"phi", b.phi},
              {"rho", b.rho},
              {"required_area_cm2", b.requiredAreaCm2}};
    if (b.second) {
        j["second_search"] = searchJson(*b.second);
    }
    return j;
}

json slendernessJson(const columns::Slenderness& s, const std::optional<columns::Magnification>& m,
                     const std::optional<columns::Eccentricity>& e) {
    json j = {{"r_cm", s.rCm},
              {"klr", s.klr},
              {"limit", s.limit},
              {"long", s.isLong},
              {"over_100", s.over100}};
    if (m) {
        j["magnification"] = {{"cm", m->cm},          {"ei_kgcm2", m->eiKgCm2},
                              {"pc_t", m->pcT},       {"unstable", m->unstable},
                              {"delta", m->delta},    {"m_min_tm", m->mMinTm},
                              {"m_max_tm", m->mMaxTm}};
    }
    if (e) {
        j["eccentricity"] = {
            {"mu_tm", e->muTm}, {"e_cm", e->eCm}, {"min_cm", e->minCm}, {"design_cm", e->designCm}};
    }
    return j;
}

json barsJson(const columns::BarSet& b) {
    return {{"found", b.found},
            {"count", b.count},
            {"diameter_mm", b.diameterMm},
            {"area_cm2", b.areaCm2}};
}

json resultJson(const jobs::ChosenGroup& c, const columns::ColumnDesignResult& r,
                core::CodePage page) {
    json j;
    j["group"] = core::toUtf8(c.group.name, page);
    j["level"] = c.level.footing() ? json("footing") : json(c.level.floor);
    j["number"] = c.number;
    j["status"] = std::string(jobs::columnOutcomeText(r.status));
    j["type"] = core::toUtf8(r.typeName, page);
    j["pu_t"] = c.group.puT;
    j["height_cm"] = c.group.colLenCm;
    json problems = json::array();
    for (const auto& p : r.problems) {
        problems.push_back(core::toUtf8(p, page));
    }
    j["problems"] = problems;
    if (r.section) {
        j["section"] = {{"area_cm2", r.section->areaCm2},
                        {"ix_cm4", r.section->ixCm4},
                        {"iy_cm4", r.section->iyCm4}};
    }
    j["cover_cm"] = r.coverCm;
    j["ec_kgcm2"] = r.ecKgCm2;
    j["biaxial"] = r.biaxial;
    j["x"] = slendernessJson(r.slenderX, r.magnifyX, r.eccX);
    j["y"] = slendernessJson(r.slenderY, r.magnifyY, r.eccY);
    if (r.axial) {
        const columns::AxialDesign& a = *r.axial;
        j["axial"] = {{"phi", a.phi},
                      {"r", a.r},
                      {"ast_min", a.astMin},
                      {"ac_required_cm2", a.acRequiredCm2},
                      {"ac_cm2", a.acCm2},
                      {"pd_t", a.pdT},
                      {"too_small", a.tooSmall},
                      {"ast_cm2", a.astCm2},
                      {"bars", barsJson(a.bars)}};
    }
    if (r.bendX) {
        j["x"]["bending"] = bendingJson(*r.bendX);
    }
    if (r.bendY) {
        j["y"]["bending"] = bendingJson(*r.bendY);
    }
    if (r.biaxialCheck) {
        const columns::BiaxialCheck& b = *r.biaxialCheck;
        j["biaxial_check"] = {{"pnx_t", b.pnxT}, {"pny_t", b.pnyT},        {"p0_t", b.p0T},
                              {"pni_t", b.pniT}, {"phi_pni_t", b.phiPniT}, {"holds", b.holds},
                              {"rho", b.rho}};
    }
    j["bars"] = barsJson(r.finalBars);
    j["rho"] = r.finalRho;
    if (r.transverse) {
        const columns::TransverseSteel& t = *r.transverse;
        j["transverse"] = {{"spiral", t.spiral},
                           {"diameter_mm", t.diameterMm},
                           {"limit_cm", t.limitCm},
                           {"spacing_cm", t.spacingCm},
                           {"count_per_column", t.countPerColumn},
                           {"length_cm", t.lengthCm},
                           {"core_diameter_cm", t.coreDiameterCm},
                           {"ach_cm2", t.achCm2},
                           {"rho_s", t.rhoS},
                           {"clear_pitch_holds", t.clearPitchHolds}};
    }
    j["sheet"] = jobs::columnSheetFileName(c);
    return j;
}

int runColumnDesign(const ColumnOptions& o) {
    const fs::path project = existingProject(o.project, true);
    const core::CodePage page = configuredCodePage();
    const fs::path programFolder = shell::resolveProgramFolder(std::getenv);
    const fs::path general = core::resolveNoCase(programFolder, shell::kGeneralFolderName);
    const bars::BarPropertyTable table = beams::designBarTable(general);
    const std::optional<std::string> name = core::fromUtf8Exact(o.group, page);
    if (!name) {
        throw InputError("The group name cannot be written in the project's code page.");
    }
    const std::vector<jobs::ChosenGroup> chosen =
        jobs::chooseColumnGroups(project, {o.footingLevel, o.floor, *name}, page);
    const jobs::ChosenGroup& c = chosen.front();
    const columns::ColumnDesignResult result = columns::designColumn(c.group, table.rows);
    if (o.json) {
        std::cout << resultJson(c, result, page).dump(2) << "\n";
    } else {
        std::cout << columns::columnSheet(c.group, result, page).str();
    }
    return result.status == columns::ColumnStatus::Designed ? 0 : 2;
}

} // namespace

void addColumnCommands(CLI::App& app, CommandContext& context) {
    auto* column = app.add_subcommand("column", "Column groups");
    column->require_subcommand(1);
    auto o = std::make_shared<ColumnOptions>();
    auto* design = column->add_subcommand(
        "design", "Design one column group and print its sheet (or its values as JSON) without "
                  "writing anything. Exit code 2 when the group is not designed.");
    design->add_option("project", o->project, "Project folder (a folder ending in .prj)")
        ->required();
    auto* floorOption = design->add_option("--floor", o->floor, "The group's floor")
                            ->check(CLI::Range(1, floors::kMaxFloorNumber));
    design->add_flag("--footing-level", o->footingLevel, "A group of the footing level")
        ->excludes(floorOption);
    design->add_option("--group", o->group, "The group's name")->required();
    design->add_flag("--json", o->json, "Print the sheet's values as JSON");
    design->callback([&context, o] {
        if (!o->footingLevel && o->floor == 0) {
            throw CLI::ValidationError("--floor or --footing-level is required");
        }
        context.action = [o] { return runColumnDesign(*o); };
    });
}

} // namespace orvak::cli
