// The rows of the menu table: each item of the menu bar that is in this version, with the form
// it opens or the command it runs. A new form is one more row here.
#include "app/menu_table.h"

#include <array>

#include "app/mdi_main.h"
#include "bars/forms/bar_table_form.h"
#include "bars/forms/steel_qnt_form.h"
#include "bars/forms/steel_upd_form.h"
#include "beams/forms/bmdesign_form.h"
#include "beams/forms/bmriprpt_form.h"
#include "beams/forms/bmseting_form.h"
#include "beams/forms/ldefcalc_form.h"
#include "columns/forms/clgroups_form.h"
#include "columns/forms/clgrprpt_form.h"
#include "columns/forms/clseting_form.h"
#include "columns/forms/columns_form.h"
#include "floors/forms/floor_forms.h"
#include "footings/forms/ftgroups_form.h"
#include "footings/forms/ftrpt_form.h"
#include "footings/forms/ftseting_form.h"
#include "shell/forms/gsetting_form.h"
#include "shell/forms/openlib_form.h"
#include "shell/forms/projdata_form.h"

namespace orvak::app {

namespace {

/// A form that needs nothing but the shell to open.
template <class Form> QWidget* form(MdiMain& frame) {
    return new Form(frame.shell());
}

/// A help item opens the help text at its section (0: from the top).
template <int Section> QWidget* help(MdiMain& frame) {
    frame.openHelp(Section);
    return nullptr;
}

using bars::forms::Netiron;
using bars::forms::Roundbar;
using bars::forms::spacing;
using bars::forms::SteelQnt;
using bars::forms::SteelUpd;
using beams::forms::BmDesign;
using beams::forms::BmRipRpt;
using beams::forms::Bmseting;
using beams::forms::LDefCalc;
using columns::forms::ClGroups;
using columns::forms::ClGrpRpt;
using columns::forms::Clseting;
using columns::forms::Columns;
using floors::forms::CielData;
using floors::forms::CielThick;
using floors::forms::NewCiel;
using floors::forms::SlcCiel;
using footings::forms::FtGroups;
using footings::forms::FtRpt;
using footings::forms::FtSeting;
using shell::forms::Gsetting;
using shell::forms::Projdata;
namespace pi = project_item;
namespace si = setting_item;
namespace qi = quantities_item;
namespace ci = cielling_item;
namespace bi = beam_item;
namespace coi = columns_item;
namespace ri = reports_item;
namespace fi = foundation_item;

constexpr bool kProject = true; // needs an open project
constexpr bool kAlways = false;

// clang-format off
const std::array kMenuTable = {
    MenuItem{MainMenu::Project, pi::kProjectsDir, "", kAlways,
             [](MdiMain& f) -> QWidget* { f.chooseProjectsFolder(); return nullptr; }},
    MenuItem{MainMenu::Project, pi::kProjectData, "Projdata", kProject, form<Projdata>},
    MenuItem{MainMenu::Project, pi::kArchive, "", kProject,
             [](MdiMain& f) -> QWidget* { f.openlib().archiveProject(); return nullptr; }},
    MenuItem{MainMenu::Project, pi::kNew, "", kAlways,
             [](MdiMain& f) -> QWidget* { f.newProject(); return nullptr; }},
    MenuItem{MainMenu::Project, pi::kOpen, "", kAlways,
             [](MdiMain& f) -> QWidget* { f.openProject(); return nullptr; }},
    MenuItem{MainMenu::Project, pi::kCopy, "", kProject,
             [](MdiMain& f) -> QWidget* { f.openlib().copyProject(); return nullptr; }},
    MenuItem{MainMenu::Project, pi::kDelete, "", kAlways,
             [](MdiMain& f) -> QWidget* { f.openlib().deleteProject(); return nullptr; }},
    MenuItem{MainMenu::Project, pi::kExit, "", kAlways,
             [](MdiMain& f) -> QWidget* { f.close(); return nullptr; }},

    MenuItem{MainMenu::Cielling, ci::kNew, "NewCiel", kProject, form<NewCiel>},
    MenuItem{MainMenu::Cielling, ci::kSelect, "SlcCiel", kProject, form<SlcCiel>},
    MenuItem{MainMenu::Cielling, ci::kData, "CielData", kProject, form<CielData>},
    MenuItem{MainMenu::Cielling, ci::kThickness, "CielThick", kProject, form<CielThick>},

    // The defaults every new beam copies live in the GENERAL folder, shared by every project.
    MenuItem{MainMenu::Beam, bi::kSettings, "Bmseting", kAlways, form<Bmseting>},
    MenuItem{MainMenu::Beam, bi::kAnalysisAndDesign, "BmDesign", kProject, form<BmDesign>},
    MenuItem{MainMenu::Beam, bi::kLongTimeDeflection, "LDefCalc", kProject, form<LDefCalc>},

    // The defaults every new column group copies live in the GENERAL folder as well.
    MenuItem{MainMenu::Columns, coi::kSettings, "Clseting", kAlways, form<Clseting>},
    MenuItem{MainMenu::Columns, coi::kColumnsData, "Columns", kProject, form<Columns>},
    MenuItem{MainMenu::Columns, coi::kGroups, "ClGroups", kProject, form<ClGroups>},
    MenuItem{MainMenu::Foundation, fi::kSettings, "FtSeting", kAlways, form<FtSeting>},
    MenuItem{MainMenu::Foundation, fi::kNecksData, "FtColumns", kProject,
             [](MdiMain& f) -> QWidget* { return new Columns(f.shell(), true); }},
    MenuItem{MainMenu::Foundation, fi::kNeckGroups, "FtClGroups", kProject,
             [](MdiMain& f) -> QWidget* { return new ClGroups(f.shell(), true); }},
    MenuItem{MainMenu::Foundation, fi::kFootingGroups, "FtGroups", kProject, form<FtGroups>},

    MenuItem{MainMenu::Quantities, qi::kSteelUpdate, "SteelUpd", kProject, form<SteelUpd>},
    MenuItem{MainMenu::Quantities, qi::kSteelPrint, "SteelQnt", kProject, form<SteelQnt>},

    MenuItem{MainMenu::Reports, ri::kBeamRip, "BmRipRpt", kProject, form<BmRipRpt>},
    MenuItem{MainMenu::Reports, ri::kColumnGroups, "ClGrpRpt", kProject, form<ClGrpRpt>},
    MenuItem{MainMenu::Reports, ri::kFootingColumnGroups, "FtClGrpRpt", kProject,
             [](MdiMain& f) -> QWidget* { return new ClGrpRpt(f.shell(), true); }},
    MenuItem{MainMenu::Reports, ri::kFootingGroups, "FtRpt", kProject, form<FtRpt>},

    MenuItem{MainMenu::Setting, si::kSoftware, "Gsetting", kAlways, form<Gsetting>},
    // The bar tables live in the GENERAL folder, shared by every project.
    MenuItem{MainMenu::Setting, si::kAreasForBars, "Roundbar", kAlways, form<Roundbar>},
    MenuItem{MainMenu::Setting, si::kAreasForSpacing, "spacing", kAlways, form<spacing>},
    MenuItem{MainMenu::Setting, si::kNetworkIron, "Netiron", kAlways, form<Netiron>},

    MenuItem{MainMenu::Help, 0, "", kAlways, help<0>},
    MenuItem{MainMenu::Help, 1, "", kAlways, help<1>},
    MenuItem{MainMenu::Help, 2, "", kAlways, help<2>},
    MenuItem{MainMenu::Help, 3, "", kAlways, help<3>},
    MenuItem{MainMenu::Help, 4, "", kAlways, help<4>},
    MenuItem{MainMenu::Help, 5, "", kAlways, help<5>},
};
// clang-format on

} // namespace

std::span<const MenuItem> menuTable() {
    return kMenuTable;
}

} // namespace orvak::app
