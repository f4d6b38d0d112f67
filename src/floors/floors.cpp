// The floors of a project: CIELS.DAT codec, the checks of a floor list and the names of the
// per-floor files.
#include "floors/floors.h"

#include <algorithm>
#include <cmath>
#include <set>

#include <fmt/format.h>

#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::floors {

std::vector<Floor> readFloors(const fs::path& projectFolder) {
    std::vector<Floor> floors;
    const auto path = core::findFileNoCase(projectFolder, kFloorsFile);
    if (!path) {
        return floors;
    }
    const auto file =
        core::RecordFile::load(*path, kFloorLayout.size, core::RecordFile::Count::WholeOnly);
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        if (!rec.inUse()) {
            continue;
        }
        Floor f;
        f.number = rec.getInt16(kFloorLayout["number"]);
        f.name = rec.getTrimmedText(kFloorLayout["name"]);
        f.levelM = rec.getSingle(kFloorLayout["levelM"]);
        f.thicknessCm = rec.getSingle(kFloorLayout["thicknessCm"]);
        floors.push_back(std::move(f));
    }
    // A floor that could not have been stored (number 0, used twice, a level that is not a
    // number) is damage, not a floor to skip or to pass on.
    if (const std::string problem = validateFloors(floors); !problem.empty()) {
        throw FileError(*path, "The floor file is damaged: " + problem);
    }
    return floors;
}

void writeFloors(const fs::path& projectFolder, const std::vector<Floor>& floors) {
    floorsFileImage(projectFolder, floors).save();
}

core::RecordFile floorsFileImage(const fs::path& projectFolder, const std::vector<Floor>& floors) {
    core::RecordFile file(core::resolveNoCase(projectFolder, kFloorsFile), kFloorLayout.size);
    for (std::size_t i = 0; i < floors.size(); ++i) {
        core::RecordBuffer rec = core::blankRecord(kFloorLayout);
        rec.setText(kFloorLayout["marker"], std::string(1, core::kUseMark));
        rec.setInt16(kFloorLayout["number"], floors[i].number);
        rec.setText(kFloorLayout["name"], floors[i].name);
        rec.setSingle(kFloorLayout["levelM"], floors[i].levelM);
        rec.setSingle(kFloorLayout["thicknessCm"], floors[i].thicknessCm);
        file.write(i + 1, rec);
    }
    return file;
}

std::string validateFloors(const std::vector<Floor>& floors) {
    std::set<int> seen;
    for (const Floor& f : floors) {
        if (f.number < 1 || f.number > kMaxFloorNumber) {
            return fmt::format("Floor number {} is not between 1 and {}.", f.number,
                               kMaxFloorNumber);
        }
        if (!seen.insert(f.number).second) {
            return fmt::format("Floor number {} is used twice.", f.number);
        }
        if (f.name.size() > kFloorLayout["name"].width) {
            return fmt::format("Floor {}: the name is longer than {} characters.", f.number,
                               kFloorLayout["name"].width);
        }
        if (!std::isfinite(f.levelM)) {
            return fmt::format("Floor {}: the level is not a number.", f.number);
        }
        if (!std::isfinite(f.thicknessCm) || f.thicknessCm < 0.0f) {
            return fmt::format("Floor {}: the slab thickness must be zero or more cm.", f.number);
        }
    }
    return {};
}

int nextFloorNumber(const std::vector<Floor>& floors) {
    std::set<int> used;
    for (const Floor& f : floors) {
        used.insert(f.number);
    }
    const int above = used.empty() ? 1 : *used.rbegin() + 1;
    if (above <= kMaxFloorNumber) {
        return above;
    }
    for (int n = 1; n <= kMaxFloorNumber; ++n) {
        if (used.count(n) == 0) {
            return n;
        }
    }
    return 0;
}

void saveFloors(const fs::path& projectFolder, const std::vector<Floor>& floors) {
    for (const Floor& floor : floors) {
        if (!(floor.levelM >= kMinLevelM && floor.levelM <= kMaxLevelM)) {
            throw InputError(fmt::format("Floor {}: the level must be from {:g} to {:g} m.",
                                         floor.number, kMinLevelM, kMaxLevelM));
        }
        if (!(floor.thicknessCm >= 0.0f && floor.thicknessCm <= kMaxSlabThicknessCm)) {
            throw InputError(fmt::format("Floor {}: the slab thickness must be from 0 to {:g} cm.",
                                         floor.number, kMaxSlabThicknessCm));
        }
    }
    if (const std::string problem = validateFloors(floors); !problem.empty()) {
        throw InputError(problem);
    }
    writeFloors(projectFolder, floors);
}

void saveFloor(const fs::path& projectFolder, const Floor& floor) {
    std::vector<Floor> floors = readFloors(projectFolder);
    auto same = std::find_if(floors.begin(), floors.end(),
                             [&](const Floor& f) { return f.number == floor.number; });
    if (same != floors.end()) {
        *same = floor;
    } else {
        floors.push_back(floor);
    }
    saveFloors(projectFolder, floors);
}

void removeFloor(const fs::path& projectFolder, int number) {
    std::vector<Floor> floors = readFloors(projectFolder);
    const auto gone = std::remove_if(floors.begin(), floors.end(),
                                     [&](const Floor& f) { return f.number == number; });
    if (gone == floors.end()) {
        throw InputError(fmt::format("The project has no floor {}.", number));
    }
    floors.erase(gone, floors.end());
    // The beams first: a beam file left without its floor would be taken up by the next
    // floor given that number, while a floor left without its beams shows plainly.
    if (const auto beams = core::findFileNoCase(projectFolder, beamFileName(number))) {
        std::error_code ec;
        fs::remove(*beams, ec);
        if (ec) {
            throw FileError(*beams, "The beam file of the floor cannot be deleted, so the floor "
                                    "was kept: " +
                                        ec.message());
        }
        core::syncFolder(projectFolder);
    }
    writeFloors(projectFolder, floors);
}

std::string beamFileName(int floorNumber) {
    return "BEAMS." + std::to_string(floorNumber);
}

} // namespace orvak::floors
