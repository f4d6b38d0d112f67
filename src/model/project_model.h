// The project model: a project's floors and the elements each floor holds, as one value that
// the JSON model, the demo installation and the command line read from and write to a project.
#pragma once

#include <filesystem>
#include <vector>

#include "beams/beam_record.h"
#include "floors/floors.h"

namespace orvak::model {

// Each kind of element joins the model as one member, read by readProjectModel from the files
// that are its authority and written by writeProjectModel without overwriting any of them, and
// as one key of the JSON model. Elements of a floor (columns, column groups) are members of
// FloorModel beside `beams`; elements of the whole building (the footing groups of the footing
// level) are members of ProjectModel beside `floors`.

/// One floor of the project and its elements.
struct FloorModel {
    floors::Floor floor;
    std::vector<orvak::beams::BeamRecord> beams; ///< beam n of the floor is beams[n − 1]
    bool operator==(const FloorModel&) const = default;
};

/// Every element of a project, floor by floor.
struct ProjectModel {
    std::vector<FloorModel> floors;
};

/// The floors and beams stored in a project folder. Throws FileError.
ProjectModel readProjectModel(const std::filesystem::path& projectFolder);
/// Writes CIELS.DAT and the beam file of every floor. Refuses (InputError) when the project
/// already holds floors or beam files, so that nothing is overwritten.
void writeProjectModel(const std::filesystem::path& projectFolder, const ProjectModel& model);

} // namespace orvak::model
