// The project model in a project folder: the floor list CIELS.DAT, each floor's beam, column
// and group files and the footing level's with its footing groups, read as they stand and
// written only into a project that holds none of them yet.
#include "model/project_model.h"

#include <fmt/format.h>

#include "core/error.h"
#include "core/file_util.h"
#include "core/output_batch.h"

namespace fs = std::filesystem;

namespace orvak::model {

ProjectModel readProjectModel(const fs::path& projectFolder) {
    ProjectModel model;
    for (const floors::Floor& f : floors::readFloors(projectFolder)) {
        const columns::ColumnLevel level{f.number};
        model.floors.push_back({f, beams::readBeamFile(projectFolder, f.number),
                                columns::readColumns(projectFolder, level),
                                columns::readGroups(projectFolder, level)});
    }
    model.footingColumns = columns::readColumns(projectFolder, columns::ColumnLevel{0});
    model.footingGroups = columns::readGroups(projectFolder, columns::ColumnLevel{0});
    for (footings::StoredFootingGroup& s : footings::readFootingGroups(projectFolder)) {
        model.footingDesignGroups.push_back(std::move(s.group));
    }
    return model;
}

void writeProjectModel(const fs::path& projectFolder, const ProjectModel& model) {
    if (core::findFileNoCase(projectFolder, floors::kFloorsFile)) {
        throw InputError(fmt::format("The project {} has floors already; import goes into a "
                                     "project without CIELS.DAT.",
                                     projectFolder.string()));
    }
    std::vector<std::string> names;
    for (const FloorModel& fm : model.floors) {
        names.push_back(floors::beamFileName(fm.floor.number));
        names.push_back(columns::columnsFileName({fm.floor.number}));
        names.push_back(columns::groupsFileName({fm.floor.number}));
    }
    names.push_back(columns::columnsFileName({0}));
    names.push_back(columns::groupsFileName({0}));
    names.emplace_back(footings::kFootingGroupsFile);
    for (const std::string& name : names) {
        if (core::findFileNoCase(projectFolder, name)) {
            throw InputError(
                fmt::format("The project {} has a file {} already.", projectFolder.string(), name));
        }
    }
    // All or nothing: every file's temporary is written and flushed before the first takes
    // its name, so a full disk or a bad write leaves the project as it was, and a kill leaves
    // only temporaries, which opening the project clears. The floor list is renamed last: a
    // project with CIELS.DAT is a finished import.
    std::vector<core::OutputFile> files;
    const auto add = [&files](const core::RecordFile& file) {
        const std::vector<std::uint8_t> image = file.image();
        files.push_back({file.path(), std::string(image.begin(), image.end())});
    };
    for (const FloorModel& fm : model.floors) {
        if (!fm.beams.empty()) {
            add(beams::beamFileImage(projectFolder, fm.floor.number, fm.beams));
        }
        if (!fm.columns.empty()) {
            add(columns::columnsFileImage(projectFolder, {fm.floor.number}, fm.columns));
        }
        if (!fm.groups.empty()) {
            add(columns::groupsFileImage(projectFolder, {fm.floor.number}, fm.groups));
        }
    }
    if (!model.footingColumns.empty()) {
        add(columns::columnsFileImage(projectFolder, {0}, model.footingColumns));
    }
    if (!model.footingGroups.empty()) {
        add(columns::groupsFileImage(projectFolder, {0}, model.footingGroups));
    }
    if (!model.footingDesignGroups.empty()) {
        add(footings::footingGroupsFileImage(projectFolder, model.footingDesignGroups));
    }
    std::vector<floors::Floor> list;
    for (const auto& fm : model.floors) {
        list.push_back(fm.floor);
    }
    add(floors::floorsFileImage(projectFolder, list));
    core::saveTogether(files);
}

} // namespace orvak::model
