// orvak-cli project commands: create a project folder, print its GEN.CST fields, list the
// projects of a folder. None of them touches the program folder's remembered project.
#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>

#include "cli/commands.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "model/shipped_data.h"
#include "shell/project_record.h"
#include "shell/projects.h"
#include "shell/shell_state.h"
#include "shell/software_config.h"
#include "shell/startup.h"

namespace fs = std::filesystem;

namespace orvak::cli {

namespace {

// Texts of a project are single-byte in the code page of the configured language.
core::CodePage configuredCodePage() {
    try {
        const fs::path general =
            shell::resolveProgramFolder(std::getenv) / shell::kGeneralFolderName;
        if (const auto swc = core::findFileNoCase(general, shell::kSwcFile)) {
            return core::codePageForLanguage(shell::readSoftwareConfig(*swc).language);
        }
    } catch (const FileError&) {
        // An unreadable configuration leaves the default code page.
    }
    return core::CodePage::Windows1252;
}

fs::path existingFolder(const std::string& folder, const char* what) {
    std::error_code ec;
    if (!fs::is_directory(folder, ec)) {
        throw InputError(fmt::format("There is no {} at {}.", what, folder));
    }
    return fs::path(folder);
}

shell::ProjectRecord loadRecordReadOnly(const fs::path& project) {
    const auto file = core::findFileNoCase(project, shell::kProjectRecordFile);
    if (!file) {
        throw InputError(
            fmt::format("The project folder {} has no GEN.CST project record.", project.string()));
    }
    const auto bytes = core::readWholeFile(*file);
    const std::size_t length = shell::kGenCstLayout.size;
    if (!bytes || bytes->size() < length) {
        throw FileError(*file, fmt::format("The project record is shorter than one record of {} "
                                           "bytes ({} bytes)",
                                           length, bytes ? bytes->size() : 0));
    }
    const auto record = shell::decodeProjectRecord(
        core::RecordBuffer(std::vector<std::uint8_t>(bytes->begin(), bytes->begin() + length)));
    if (!record.valid) {
        throw FileError(*file, "The project record holds no data: its first byte is not the "
                               "in-use marker \"1\"");
    }
    return record;
}

void printRecord(const shell::ProjectRecord& r, std::ostream& out) {
    const core::CodePage page = configuredCodePage();
    const auto line = [&](const std::string& label, const std::string& value) {
        out << label << ": " << value << "\n";
    };
    const auto text = [&](const std::string& label, const std::string& value) {
        line(label, core::toUtf8(value, page));
    };
    line("Marker", "1");
    line("Project code", std::to_string(r.projectCode));
    text("Units", r.unitsText);
    for (std::size_t i = 0; i < r.titleLines.size(); ++i) {
        text(fmt::format("Title line {}", i + 1), r.titleLines[i]);
    }
    // The same names as the project-data form gives these fields.
    text("Project no.", r.shortTexts[0]);
    text("Revision", r.shortTexts[1]);
    for (std::size_t i = 0; i < r.texts9to11.size(); ++i) {
        text(fmt::format("Design note {}", i + 1), r.texts9to11[i]);
    }
    text("Job code", r.codes[0]);
    text("Office file no.", r.codes[1]);
    for (std::size_t i = 0; i < r.values.size(); ++i) {
        line(fmt::format("Project value {}", i + 1), fmt::format("{}", r.values[i]));
    }
    text("Work folder", r.workFolder);
    line("Choice", std::to_string(r.choice));
    text("Checked by", r.text12);
    line("Count", std::to_string(r.count));
    text("Date", r.dateText);
    line("Value", fmt::format("{}", r.value));
    text("Output name", r.outputName);
    line("Output number", std::to_string(r.outputNumber));
    text("Sheet name", r.sheetName);
}

} // namespace

void addProjectCommands(CLI::App& app, CommandContext& context) {
    auto* project = app.add_subcommand("project", "Create, inspect and list project folders.");
    project->require_subcommand(1);

    auto newFolder = std::make_shared<std::string>();
    auto newName = std::make_shared<std::string>();
    auto* create = project->add_subcommand(
        "new", "Create the project folder <name>.prj in a projects folder, with its GEN.CST.");
    create->add_option("projects-folder", *newFolder, "Folder that holds the projects")->required();
    create->add_option("name", *newName, "Project name; \".prj\" is appended")->required();
    create->callback([&context, newFolder, newName] {
        context.action = [newFolder, newName] {
            // A shell of its own: the command creates a project, it does not open it in the
            // program's remembered state.
            shell::ShellState scratch;
            const fs::path created = shell::newProject(scratch, *newFolder, *newName);
            std::cout << "Created project " << created.string() << "\n";
            return 0;
        };
    });

    auto infoProject = std::make_shared<std::string>();
    auto* info = project->add_subcommand(
        "info", "Print the fields of a project's GEN.CST, one \"label: value\" line each.");
    info->add_option("project", *infoProject, "Project folder (a folder ending in .prj)")
        ->required();
    info->callback([&context, infoProject] {
        context.action = [infoProject] {
            const fs::path folder = existingFolder(*infoProject, "project folder");
            printRecord(loadRecordReadOnly(folder), std::cout);
            return 0;
        };
    });

    auto demoFolder = std::make_shared<std::string>();
    auto* demo = project->add_subcommand(
        "demo", "Create the demo project Demo.prj, with its floors and beams, in a projects "
                "folder (a Demo.prj that exists is left alone).");
    demo->add_option("projects-folder", *demoFolder, "Folder that holds the projects")
        ->required();
    demo->callback([&context, demoFolder] {
        context.action = [demoFolder] {
            const fs::path folder = existingFolder(*demoFolder, "projects folder");
            std::error_code ec;
            const fs::path executable = fs::read_symlink("/proc/self/exe", ec);
            const fs::path data = shell::resolveDataFolder(executable, std::getenv);
            if (data.empty()) {
                throw InputError("The program's data folder (with demo/model.json) cannot be "
                                 "found: set ORVAK_DATA to it.");
            }
            const bool existed = fs::exists(folder / shell::kDemoProjectFolderName, ec);
            const fs::path created = model::installDemoProject(data / "demo", folder);
            std::cout << (existed ? "Left as it is: " : "Created the demo project ")
                      << created.string() << "\n";
            return 0;
        };
    });

    auto listFolder = std::make_shared<std::string>();
    auto* list = project->add_subcommand("list", "List the projects (*.prj folders) of a folder.");
    list->add_option("projects-folder", *listFolder, "Folder that holds the projects")->required();
    list->callback([&context, listFolder] {
        context.action = [listFolder] {
            const fs::path folder = existingFolder(*listFolder, "projects folder");
            for (const auto& name : shell::listProjects(folder)) {
                std::cout << name << "\n";
            }
            return 0;
        };
    });
}

} // namespace orvak::cli
