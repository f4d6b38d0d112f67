// orvak-cli model commands: import a JSON model of floors and beams into a project folder,
// and export a project's floors and beams as JSON.
#include <cctype>
#include <fstream>
#include <iostream>
#include <memory>

#include <fmt/format.h>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/error.h"
#include "core/file_util.h"
#include "model/model_json.h"
#include "shell/projects.h"

namespace fs = std::filesystem;

namespace orvak::cli {

namespace {

fs::path projectFolder(const std::string& folder) {
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) {
        throw InputError(fmt::format("There is no project folder at {}.", folder));
    }
    return fs::path(folder);
}

// A model written over a file of a project (BEAMS.1, GEN.CST, ...) would destroy its input:
// inside a project folder only a .json file of the engineer's own may be written or replaced.
void refuseProjectFile(const fs::path& output) {
    const fs::path absolute = fs::absolute(output).lexically_normal();
    const std::string folder = absolute.parent_path().filename().string();
    std::error_code ec;
    if (shell::isProjectFolderName(folder) && fs::exists(absolute, ec)) {
        std::string ext = absolute.extension().string();
        for (char& c : ext) {
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        if (ext != ".json") {
            throw InputError(fmt::format(
                "{} is a file of the project {}: the model is not written over it; choose a file "
                "outside the project or a name ending in .json.",
                output.string(), absolute.parent_path().string()));
        }
    }
}

} // namespace

void addModelCommands(CLI::App& app, CommandContext& context) {
    auto importProject = std::make_shared<std::string>();
    auto importFile = std::make_shared<std::string>();
    auto* importCmd = app.add_subcommand(
        "import",
        "Write the floors (CIELS.DAT), beam, column and column-group files of a JSON model into "
        "a project.");
    importCmd->add_option("project", *importProject, "Project folder (a folder ending in .prj)")
        ->required();
    importCmd->add_option("model", *importFile, "Model file (JSON, format orvak-model)")
        ->required();
    importCmd->callback([&context, importProject, importFile] {
        context.action = [importProject, importFile] {
            const fs::path folder = existingProject(*importProject, true);
            const auto imported = model::modelFromJson(model::readJsonFile(*importFile));
            model::writeProjectModel(folder, imported);
            std::size_t beamCount = 0;
            std::size_t columnCount = imported.footingColumns.size();
            std::size_t groupCount = imported.footingGroups.size();
            for (const auto& f : imported.floors) {
                beamCount += f.beams.size();
                columnCount += f.columns.size();
                groupCount += f.groups.size();
            }
            if (columnCount + groupCount == 0) {
                std::cout << fmt::format("Imported {} floors and {} beams into {}\n",
                                         imported.floors.size(), beamCount, folder.string());
            } else if (imported.footingDesignGroups.empty()) {
                std::cout << fmt::format(
                    "Imported {} floors, {} beams, {} columns and {} column groups into {}\n",
                    imported.floors.size(), beamCount, columnCount, groupCount, folder.string());
            } else {
                std::cout << fmt::format("Imported {} floors, {} beams, {} columns, {} column "
                                         "groups and {} footing groups into {}\n",
                                         imported.floors.size(), beamCount, columnCount, groupCount,
                                         imported.footingDesignGroups.size(), folder.string());
            }
            return 0;
        };
    });

    auto exportProject = std::make_shared<std::string>();
    auto exportFile = std::make_shared<std::string>();
    auto* exportCmd =
        app.add_subcommand("export", "Print a project's floors, beams, columns, column groups and "
                                     "footing groups as a JSON model.");
    exportCmd->add_option("project", *exportProject, "Project folder (a folder ending in .prj)")
        ->required();
    exportCmd->add_option("-o,--output", *exportFile, "Write the model to this file instead");
    exportCmd->callback([&context, exportProject, exportFile] {
        context.action = [exportProject, exportFile] {
            const fs::path folder = projectFolder(*exportProject);
            const std::string text =
                model::modelToJson(model::readProjectModel(folder)).dump(2) + "\n";
            if (exportFile->empty()) {
                std::cout << text;
            } else {
                refuseProjectFile(*exportFile);
                core::saveFileAtomically(*exportFile, text);
            }
            return 0;
        };
    });
}

} // namespace orvak::cli
