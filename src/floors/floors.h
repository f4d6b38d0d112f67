// The floors of a project, kept in CIELS.DAT: one fixed record per floor with its number,
// name, slab level and slab thickness. A floor owns the beam file BEAMS.<number>.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/record.h"

namespace orvak::floors {

inline constexpr std::string_view kFloorsFile = "CIELS.DAT";

inline constexpr auto kFloorLayout = core::packFields<5>({{
    {"marker", core::FieldType::Text, 1},
    {"number", core::FieldType::Int16},
    {"name", core::FieldType::Text, 20},
    {"levelM", core::FieldType::Single},
    {"thicknessCm", core::FieldType::Single},
}});
static_assert(kFloorLayout.size == 31, "CIELS.DAT records are 31 bytes");

/// Floor numbers run from 1 to kMaxFloorNumber; the number names the floor's files.
inline constexpr int kMaxFloorNumber = 999;

struct Floor {
    std::int16_t number = 0;  ///< 1..999, unique in the project
    std::string name;         ///< single-byte text, at most 20 characters
    float levelM = 0.0f;      ///< level of the top of the slab, m
    float thicknessCm = 0.0f; ///< slab thickness, cm

    bool operator==(const Floor&) const = default;
};

/// The floors in record order; records not in use are skipped. A missing file gives none.
/// Throws FileError when the file cannot be read.
std::vector<Floor> readFloors(const std::filesystem::path& projectFolder);

/// Replaces CIELS.DAT with one record per floor, in the order given, crash-safely.
/// Precondition: the floors passed validateFloors.
void writeFloors(const std::filesystem::path& projectFolder, const std::vector<Floor>& floors);

/// CIELS.DAT as writeFloors would write it, nothing written.
core::RecordFile floorsFileImage(const std::filesystem::path& projectFolder,
                                 const std::vector<Floor>& floors);

/// An empty string when the floors can be stored, else a sentence naming the bad floor.
std::string validateFloors(const std::vector<Floor>& floors);

/// What a floor form accepts for a floor's level and slab thickness: a building stands
/// within a few hundred metres of its ground, and a slab is at most a few metres thick.
inline constexpr float kMinLevelM = -200.0f;
inline constexpr float kMaxLevelM = 1000.0f;
inline constexpr float kMaxSlabThicknessCm = 300.0f;

/// The number a new floor gets: one above the highest in use, or the lowest free number when
/// 999 is taken; 0 when every number is taken.
int nextFloorNumber(const std::vector<Floor>& floors);

/// Replaces CIELS.DAT with `floors` as a form edited them. Throws InputError with one sentence
/// when a floor cannot be stored (a number out of 1..999 or used twice, a name longer than 20
/// characters, a level or thickness outside the bounds above), FileError when the file
/// cannot be written; nothing is written then.
void saveFloors(const std::filesystem::path& projectFolder, const std::vector<Floor>& floors);

/// Adds `floor` to CIELS.DAT, or replaces the floor of its number, keeping the order of the
/// others (a new floor goes last), through saveFloors.
void saveFloor(const std::filesystem::path& projectFolder, const Floor& floor);

/// Deletes the beam file of floor `number`, then removes the floor from CIELS.DAT; its steel
/// items are the caller's (they live in the steel store). Throws InputError when there is no
/// such floor, FileError when a file cannot be changed (the floor is then kept).
void removeFloor(const std::filesystem::path& projectFolder, int number);

/// Name of the beam file of a floor: "BEAMS." followed by the floor number.
std::string beamFileName(int floorNumber);

} // namespace orvak::floors
