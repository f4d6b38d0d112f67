// orvak-cli bars commands: print the bar, spacing or mesh table of the program folder, the
// built-in table when the file is missing or empty. Nothing is written.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>

#include "bars/bar_table_grid.h"
#include "bars/bar_tables.h"
#include "cli/commands.h"
#include "core/error.h"
#include "core/file_util.h"
#include "shell/shell_state.h"
#include "shell/startup.h"

namespace fs = std::filesystem;

namespace orvak::cli {

void addBarsCommands(CLI::App& app, CommandContext& context) {
    auto* bars = app.add_subcommand("bars", "Show the reference tables of reinforcing steel.");
    bars->require_subcommand(1);

    auto table = std::make_shared<std::string>();
    auto* show = bars->add_subcommand(
        "show", "Print a table of the GENERAL folder (the built-in table when it has no file).");
    show->add_option("table", *table, "roundbar, spacing or netiron")
        ->required()
        ->check(CLI::IsMember({"roundbar", "spacing", "netiron"}, CLI::ignore_case));
    show->callback([&context, table] {
        context.action = [table] {
            const auto id = bars::tableIdFromName(*table);
            if (!id) {
                throw InputError("There is no table named " + *table +
                                 "; use roundbar, spacing or netiron.");
            }
            const bars::TableKind& kind = bars::tableKind(*id);
            const fs::path programFolder = shell::resolveProgramFolder(std::getenv);
            const fs::path general = core::resolveNoCase(programFolder, shell::kGeneralFolderName);
            // Read only: unlike the form, showing a table never makes an empty file.
            const bars::BarTableGrid grid = bars::BarTableGrid::read(kind, general);
            if (grid.showsDefaults()) {
                std::cerr << kind.fileName
                          << " is missing or empty; the built-in table is shown.\n";
            }
            std::cout << bars::printTable(grid);
            return 0;
        };
    });
}

} // namespace orvak::cli
