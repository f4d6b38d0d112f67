// What the design modules ship: the built-in bar tables written as files and the demo project
// made from its description and its JSON model, each only into a fresh installation.
#include "model/shipped_data.h"

#include <array>
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

#include "bars/bar_table_grid.h"
#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "model/model_json.h"
#include "shell/project_record.h"
#include "shell/projects.h"
#include "shell/shell_state.h"
#include "shell/startup.h"

namespace fs = std::filesystem;

namespace orvak::model {

namespace {

bool isFolder(const fs::path& path) {
    std::error_code ec;
    return fs::is_directory(path, ec);
}

std::string single(const nlohmann::json& value) {
    return core::fromUtf8(value.get<std::string>(), core::CodePage::Windows1252);
}

template <std::size_t N>
void textArray(const nlohmann::json& j, const char* key, std::array<std::string, N>& out) {
    if (!j.contains(key)) {
        return;
    }
    const auto& a = j.at(key);
    for (std::size_t i = 0; i < N && i < a.size(); ++i) {
        out[i] = single(a.at(i));
    }
}

// The GEN.CST fields of a project description; fields it does not name stay blank.
shell::ProjectRecord recordFromJson(const nlohmann::json& j) {
    shell::ProjectRecord r;
    r.projectCode = j.value("projectCode", std::int16_t{0});
    textArray(j, "titleLines", r.titleLines);
    textArray(j, "shortTexts", r.shortTexts);
    textArray(j, "texts9to11", r.texts9to11);
    textArray(j, "codes", r.codes);
    if (j.contains("values")) {
        const auto& a = j.at("values");
        for (std::size_t i = 0; i < r.values.size() && i < a.size(); ++i) {
            r.values[i] = a.at(i).get<float>();
        }
    }
    const auto text = [&](const char* key, std::string& out) {
        if (j.contains(key)) {
            out = single(j.at(key));
        }
    };
    text("unitsText", r.unitsText);
    text("workFolder", r.workFolder);
    text("text12", r.text12);
    text("dateText", r.dateText);
    text("outputName", r.outputName);
    text("sheetName", r.sheetName);
    r.choice = j.value("choice", std::int16_t{1});
    r.count = j.value("count", std::int16_t{1});
    r.value = j.value("value", 0.0f);
    r.outputNumber = j.value("outputNumber", std::int16_t{0});
    if (r.sheetName.empty()) {
        r.sheetName = std::string(shell::kDefaultSheetName);
    }
    return r;
}

} // namespace

fs::path installDemoProject(const fs::path& demoData, const fs::path& projectsFolder) {
    const fs::path target = projectsFolder / shell::kDemoProjectFolderName;
    if (core::findFileNoCase(projectsFolder, shell::kDemoProjectFolderName)) {
        return target;
    }
    const fs::path description = demoData / "project.json";
    const auto bytes = core::readWholeFile(description);
    if (!bytes) {
        throw FileError(description, "The demo project's description is missing");
    }
    shell::ProjectRecord record;
    try {
        const auto j = nlohmann::json::parse(bytes->begin(), bytes->end());
        record = recordFromJson(j.at("genCst"));
    } catch (const nlohmann::json::exception& e) {
        throw FileError(description,
                        std::string("The demo project's description cannot be read: ") + e.what());
    }
    core::makeFolder(projectsFolder);
    core::makeFolder(target);
    try {
        shell::writeProjectRecord(target, record);
        shell::createScratchFolder(target);
        // The demo building's floors and beams, when the data folder describes them.
        if (const auto model = core::findFileNoCase(demoData, "model.json")) {
            try {
                importModelFile(target, *model);
            } catch (const InputError& e) {
                throw FileError(*model,
                                std::string("The demo model cannot be imported: ") + e.what());
            }
        }
    } catch (...) {
        std::error_code ec;
        fs::remove_all(target, ec);
        throw;
    }
    return target;
}

void installShippedData(const fs::path& dataFolder, const fs::path& programFolder) {
    if (dataFolder.empty() || !isFolder(dataFolder)) {
        return;
    }
    core::makeFolder(programFolder);

    // A fresh installation gets the built-in bar and spacing tables as files, so that the
    // design modules and the steel report have bars to work with from the first start. An
    // existing GENERAL folder is the user's: a table deleted there stays deleted.
    if (!core::findFileNoCase(programFolder, shell::kGeneralFolderName)) {
        const fs::path general = programFolder / shell::kGeneralFolderName;
        core::makeFolder(general);
        for (const bars::TableKind* kind : {&bars::roundbarTable(), &bars::spacingTable()}) {
            bars::BarTableGrid grid = bars::BarTableGrid::read(*kind, general);
            if (grid.showsDefaults()) {
                grid.markChanged();
                grid.save(general);
            }
        }
    }

    // The demo project belongs to a fresh installation only: once the Projects folder exists,
    // the projects in it are the user's business.
    const fs::path projects = shell::defaultProjectsFolder(programFolder);
    std::error_code ec;
    const auto demo = core::findFileNoCase(dataFolder, "demo");
    if (!fs::exists(projects, ec) && demo && isFolder(*demo)) {
        installDemoProject(*demo, projects);
    }
}

} // namespace orvak::model
