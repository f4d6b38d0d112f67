// The project model: a project's floors and the elements each floor holds, as one value that
// the JSON model, the demo installation and the command line read from and write to a project.
#pragma once

#include <filesystem>
#include <vector>

#include "beams/beam_record.h"
#include "columns/column_records.h"
#include "floors/floors.h"
#include "footings/footing_records.h"

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
    std::vector<columns::Column> columns;
    std::vector<columns::ColumnGroup> groups; ///< group n (a column's group) is groups[n − 1]
    bool operator==(const FloorModel&) const = default;
};

/// Every element of a project, floor by floor.
struct ProjectModel {
    std::vector<FloorModel> floors;
    /// The columns standing on the footings and their groups (FCOLUMNS.DAT, FCOLSGRP.DAT).
    std::vector<columns::Column> footingColumns;
    std::vector<columns::ColumnGroup> footingGroups;
    /// The footing groups (FootsGRP.DAT) in record order, removed ones left out; a footing
    /// group's column groups are numbers into footingGroups.
    std::vector<footings::FootingGroup> footingDesignGroups;
    bool operator==(const ProjectModel&) const = default;
};

/// The floors, beams, columns and column groups and the footing groups stored in a project
/// folder. Throws FileError.
ProjectModel readProjectModel(const std::filesystem::path& projectFolder);
/// Writes CIELS.DAT, the beam, column and group files of every floor and those of the footing
/// level with its footing groups. Refuses (InputError) when the project already holds floors or one
/// of these files, so that nothing is overwritten.
void writeProjectModel(const std::filesystem::path& projectFolder, const ProjectModel& model);

} // namespace orvak::model
