// orvak-cli steel commands: add or change a bar item of a project's steel-quantity store,
// print the steel report (text or JSON), and import the store of an older installation.
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "bars/bar_table_grid.h"
#include "bars/bar_tables.h"
#include "bars/steel_report.h"
#include "bars/steel_store.h"
#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "shell/software_config.h"
#include "shell/startup.h"

namespace fs = std::filesystem;

namespace orvak::cli {

namespace {

// Before anything makes an empty Iron.db, the items of an old Iron.MDB are to be brought over.
void refuseWhileLegacyPending(const fs::path& project) {
    if (bars::legacyImportOffered(project)) {
        throw InputError("The project holds an older steel-quantity database (Iron.MDB); import "
                         "it first with 'orvak-cli steel import " +
                         project.string() + "'.");
    }
}

struct AddOptions {
    std::string project;
    std::string element;
    std::string kind = "extra";
    int subBuilding = 0;
    int slab = 0;
    int elementNumber = 0;
    int mark = 0;
    double quantity = 0.0;
    double diameter = 0.0;
    double length = 0.0;
    int shape = 0;
    int sheet = 0;
    int barKind = 0;
    std::string description;
};

int runAdd(const AddOptions& o) {
    const fs::path project = existingProject(o.project);
    refuseWhileLegacyPending(project);
    const core::CodePage page =
        core::codePageForLanguage(configuredLanguage(shell::resolveProgramFolder(std::getenv)));

    bars::ManualItem manual;
    manual.kind = o.kind == "slab"      ? bars::ElementKind::Slab
                  : o.kind == "footing" ? bars::ElementKind::Footing
                                        : bars::ElementKind::Extra;
    manual.element = projectText(o.element, page, "element name");
    manual.subBuilding = o.subBuilding;
    manual.slab = o.slab;
    manual.elementNumber = o.elementNumber;
    manual.mark = o.mark;
    manual.quantity = static_cast<float>(o.quantity);
    manual.diameterMm = static_cast<float>(o.diameter);
    manual.lengthCm = static_cast<float>(o.length);
    manual.shape = o.shape;
    manual.sheet = o.sheet;
    manual.barKind = o.barKind;
    manual.description = projectText(o.description, page, "description");
    const bars::SteelItem item = bars::itemFromManual(manual);

    bars::IronDatabase db = bars::OpenIronDatabase(project);
    const auto saved = db.saveItem(item);
    std::cout << (saved == bars::IronDatabase::SaveKind::Added ? "Added" : "Changed") << " item "
              << item.mainKey << " of " << core::toUtf8(item.element, page) << ".\n";
    return 0;
}

// A single as the decimal the user typed (0.89, not 0.8899999856948853).
double jsonSingle(float v) {
    return std::stod(bars::cellTextFor(v));
}

// A sum in kg to the gram: the sums add singles in double precision, and their last binary
// digits mean nothing to a reader.
double jsonKg(double v) {
    return std::round(v * 1000.0) / 1000.0;
}

nlohmann::json itemJson(const bars::ReportItem& line, core::CodePage page) {
    const bars::SteelItem& it = line.item;
    return {
        {"mainKey", it.mainKey},
        {"element", core::toUtf8(it.element, page)},
        {"subBuilding", it.subBuilding},
        {"slab", it.slab},
        {"elementNumber", it.beam},
        {"mark", it.mark},
        {"kind", it.general},
        {"quantity", jsonSingle(it.quantity)},
        {"barKind", it.ironType},
        {"diameterMm", jsonSingle(it.diameterMm)},
        {"lengthCm", jsonSingle(it.lengthCm)},
        {"shape", it.shape},
        {"sheet", it.sheet},
        {"description", core::toUtf8(it.description, page)},
        {"weightKg", jsonSingle(line.weightKg)},
        {"weightFound", line.weightFound},
    };
}

nlohmann::json totalsJson(const std::vector<bars::DiameterTotal>& totals) {
    nlohmann::json out = nlohmann::json::array();
    for (const auto& t : totals) {
        out.push_back({{"diameterMm", jsonSingle(t.diameterMm)}, {"weightKg", jsonKg(t.weightKg)}});
    }
    return out;
}

nlohmann::json reportJson(const bars::SteelReport& report, core::CodePage page) {
    nlohmann::json elements = nlohmann::json::array();
    for (const auto& element : report.elements) {
        nlohmann::json items = nlohmann::json::array();
        for (const auto& line : element.items) {
            items.push_back(itemJson(line, page));
        }
        elements.push_back({{"element", core::toUtf8(element.element, page)},
                            {"items", items},
                            {"diameterTotals", totalsJson(element.diameterTotals)},
                            {"totalKg", jsonKg(element.totalKg)}});
    }
    return {{"elements", elements},
            {"diameterTotals", totalsJson(report.diameterTotals)},
            {"grandTotalKg", jsonKg(report.grandTotalKg)}};
}

struct ReportOptions {
    std::string project;
    std::string element;
    bool json = false;
};

int runReport(const ReportOptions& o) {
    const fs::path project = existingProject(o.project);
    const fs::path programFolder = shell::resolveProgramFolder(std::getenv);
    const std::string language = configuredLanguage(programFolder);
    const core::CodePage page = core::codePageForLanguage(language);

    const bars::BarPropertyTable barTable = bars::LoadBarPropertiesOrBuiltIn(
        core::resolveNoCase(programFolder, shell::kGeneralFolderName));
    if (barTable.builtIn) {
        noteBuiltInBarTable();
    }
    if (barTable.rows.empty()) {
        const shell::PromptList general =
            shell::readPrompts(programFolder, language, shell::kGeneralPromptKey, 2, 30);
        std::cerr << core::toUtf8(general.get(3, "The bar table (ROUNDBAR.DAT) holds no bars; "
                                                 "enter them under Setting, Areas for bars."),
                                  page)
                  << "\n";
        return 1;
    }

    // A report only reads: a project without a store has no items, and none is made.
    bars::SteelReport report;
    if (core::findFileNoCase(project, bars::kIronDatabaseFile)) {
        const bars::IronDatabase db = bars::OpenIronDatabase(project);
        const std::vector<std::string> elements =
            o.element.empty() ? db.elementNames()
                              : std::vector<std::string>{core::fromUtf8(o.element, page)};
        report = bars::buildSteelReport(db, elements, barTable);
    } else {
        refuseWhileLegacyPending(project);
    }

    if (o.json) {
        std::cout << reportJson(report, page).dump(2) << "\n";
    } else {
        std::cout << core::toUtf8(bars::formatSteelReport(report), page);
    }
    return 0;
}

int runImport(const std::string& folder) {
    const fs::path project = existingProject(folder);
    const bars::LegacyImportResult result = bars::importLegacyIronDatabase(project);
    if (!result.available) {
        throw InputError(result.message + ".");
    }
    std::cout << result.message << ".\n";
    return 0;
}

} // namespace

void addSteelCommands(CLI::App& app, CommandContext& context) {
    auto* steel = app.add_subcommand("steel", "Record and report the steel quantities of a "
                                              "project.");
    steel->require_subcommand(1);

    auto add = std::make_shared<AddOptions>();
    auto* addCmd = steel->add_subcommand(
        "add", "Add a bar item to a project's steel quantities, or change the item of the same "
               "key (kind, slab, element number, mark, sub-building).");
    addCmd->add_option("project", add->project, "Project folder")->required();
    addCmd->add_option("--element", add->element, "Element name (10 characters are kept)")
        ->required();
    addCmd->add_option("--kind", add->kind, "Element kind: slab, footing or extra")
        ->check(CLI::IsMember({"slab", "footing", "extra"}))
        ->capture_default_str();
    addCmd->add_option("--sub-building", add->subBuilding, "Sub-building number");
    addCmd->add_option("--slab", add->slab, "Slab number (0: none)");
    addCmd->add_option("--beam", add->elementNumber, "Number of the element within its kind");
    addCmd->add_option("--mark", add->mark, "Bar mark")->required();
    addCmd->add_option("--quantity", add->quantity, "Number of bars")->required();
    addCmd->add_option("--diameter", add->diameter, "Bar diameter, mm")->required();
    addCmd->add_option("--length", add->length, "Length of one bar, cm")->required();
    addCmd->add_option("--shape", add->shape, "Bar shape number");
    addCmd->add_option("--sheet", add->sheet, "Drawing sheet number");
    addCmd->add_option("--bar-kind", add->barKind, "Bar kind");
    addCmd->add_option("--description", add->description, "Free text (25 characters kept)");
    addCmd->callback([&context, add] { context.action = [add] { return runAdd(*add); }; });

    auto report = std::make_shared<ReportOptions>();
    auto* reportCmd = steel->add_subcommand(
        "report", "Print the steel report: items by ascending diameter with weights from the "
                  "bar table, sums per diameter and element.");
    reportCmd->add_option("project", report->project, "Project folder")->required();
    reportCmd->add_option("--element", report->element, "Only this element");
    reportCmd->add_flag("--json", report->json, "Print the report as JSON");
    reportCmd->callback(
        [&context, report] { context.action = [report] { return runReport(*report); }; });

    auto importFolder = std::make_shared<std::string>();
    auto* importCmd = steel->add_subcommand(
        "import", "Bring the items of an older Iron.MDB into a new Iron.db of the project.");
    importCmd->add_option("project", *importFolder, "Project folder")->required();
    importCmd->callback([&context, importFolder] {
        context.action = [importFolder] { return runImport(*importFolder); };
    });
}

} // namespace orvak::cli
