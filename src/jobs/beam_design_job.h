// Beams in the design job runner: which beams a run takes, and how each one is designed into
// its listings, steel items and (for the run's last beam) the case files.
#pragma once

#include <filesystem>
#include <vector>

#include "bars/bar_tables.h"
#include "beams/beam_record.h"
#include "core/codepage.h"
#include "jobs/design_job.h"

namespace orvak::jobs {

inline constexpr std::string_view kBeamKind = "beam";

/// Which beams a run takes: a floor number and a beam number, 0 standing for every one.
struct BeamSelection {
    int floor = 0;
    int beam = 0;
};

/// Reads the chosen beams of the project, floor by floor in the floors' order, and checks
/// every one before anything is designed. Throws InputError with one sentence (names in
/// UTF-8 through `page`) for a floor or beam that does not exist, an empty choice, or an
/// invalid record (then nothing is designed); FileError for a damaged file.
std::vector<beams::BeamRecord> chooseBeams(const std::filesystem::path& projectFolder,
                                           const BeamSelection& selection, core::CodePage page);

/// Designs the beams under a load-case scheme through the runner: the four listings, the
/// report document (its text in `page`, the code page of the project's language) and the bar
/// items of each beam, and, for the last beam of the run, the case files of the interactive
/// analysis (removed at the start of the run, so that a failed run leaves none).
JobResult designBeams(const std::filesystem::path& projectFolder,
                      const std::vector<beams::BeamRecord>& beams,
                      const std::vector<bars::BarProperties>& barTable, int scheme,
                      const JobObserver& observer = {},
                      core::CodePage page = core::CodePage::Windows1252);

/// Designs beam `beamNumber` of floor `floor` alone (chooseBeams, then designBeams), with the
/// bar table of the GENERAL folder, its texts in `page` (the code page of the user's
/// language, as a run of the floor writes them). Throws InputError as chooseBeams does.
ElementReport designStoredBeam(const std::filesystem::path& projectFolder,
                               const std::filesystem::path& generalFolder, int floor,
                               int beamNumber, int scheme,
                               core::CodePage page = core::CodePage::Windows1252);

/// What a beam's last design says once the beam was edited: it no longer stands. A beam
/// with a recorded state gets "not designed" with this reason and the time; its steel items
/// stay as designed until the next design. A project without a steel store has no state.
inline constexpr std::string_view kChangedAfterDesign =
    "The beam was changed after its last design; design it again.";
void markBeamChanged(const std::filesystem::path& projectFolder, int floor, int beamNumber);

/// A deleted beam leaves nothing behind: its steel items and its design state go.
void forgetBeam(const std::filesystem::path& projectFolder, int floor, int beamNumber);

} // namespace orvak::jobs
