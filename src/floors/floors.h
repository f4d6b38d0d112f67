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

/// Name of the beam file of a floor: "BEAMS." followed by the floor number.
std::string beamFileName(int floorNumber);

} // namespace orvak::floors
