// The project model as JSON ("orvak-model", version 1): floors and their beams, read with
// checks that name the floor, beam, span and field, and written back so that they read exactly.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "beams/beam_record.h"
#include "model/project_model.h"

namespace orvak::model {

inline constexpr std::string_view kModelFormat = "orvak-model";
inline constexpr int kModelVersion = 1;

/// A model from its JSON. Throws InputError with one sentence naming the floor, beam, span
/// and field at fault (the first fault found).
ProjectModel modelFromJson(const nlohmann::json& j);
/// One beam object; `where` begins the messages (e.g. "Beam B1"). Throws InputError.
beams::BeamRecord beamFromJson(const nlohmann::json& j, const std::string& where);

nlohmann::json modelToJson(const ProjectModel& model);
nlohmann::json beamToJson(const beams::BeamRecord& beam);

/// Reads a JSON file; throws FileError when it cannot be read or parsed.
nlohmann::json readJsonFile(const std::filesystem::path& path);

/// Reads and checks a model file, then writes it into the project (nothing is written when
/// any part is bad). Throws InputError or FileError.
void importModelFile(const std::filesystem::path& projectFolder,
                     const std::filesystem::path& modelFile);

} // namespace orvak::model
