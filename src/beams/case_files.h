// The case files of a beam analysis in the project folder: the beam record copied once per
// load case with that case's factored loads, and three result tables per case.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "beams/beam_analysis.h"
#include "beams/beam_record.h"
#include "core/output_batch.h"
#include "core/record.h"

namespace orvak::beams {

inline constexpr std::string_view kLoadCasesFile = "LdCases.dat";
inline constexpr std::string_view kCasesT1File = "CasesT1.dat";
inline constexpr std::string_view kCasesT2File = "CasesT2.dat";
inline constexpr std::string_view kCasesT3File = "CasesT3.dat";

/// First result table of a case: joint and span results. Moments kg·cm (sagging positive),
/// forces kg (reactions upward), displacements cm (upward), rotations rad, x in cm; tables of
/// two per span hold the left then the right end.
inline constexpr auto kCasesT1Layout = core::packFields<19>({{
    {"marker", core::FieldType::Text, 1},
    {"caseNumber", core::FieldType::Int16},
    {"caseKind", core::FieldType::Int16},
    {"caseIndex", core::FieldType::Int16},
    {"liveSpans", core::FieldType::Int32},
    {"spanCount", core::FieldType::Int16},
    {"freeDofCount", core::FieldType::Int16},
    {"supportMoments", core::FieldType::Single, 0, kMaxSupports},
    {"reactions", core::FieldType::Single, 0, kMaxSupports},
    {"displacements", core::FieldType::Single, 0, kMaxSupports},
    {"rotations", core::FieldType::Single, 0, kMaxSupports},
    {"endMoments", core::FieldType::Single, 0, 2 * kMaxSpans},
    {"endShears", core::FieldType::Single, 0, 2 * kMaxSpans},
    {"spanMaxMoment", core::FieldType::Single, 0, kMaxSpans},
    {"spanMaxMomentX", core::FieldType::Single, 0, kMaxSpans},
    {"spanMinMoment", core::FieldType::Single, 0, kMaxSpans},
    {"spanMinMomentX", core::FieldType::Single, 0, kMaxSpans},
    {"spanAbsMaxShear", core::FieldType::Single, 0, kMaxSpans},
    {"reserved", core::FieldType::Text, 18304},
}});
static_assert(kCasesT1Layout.size == 19895, "CasesT1.dat records are 19,895 bytes");

/// Second and third result tables of a case: a value at every station (every twentieth of
/// each span, span after span), the moment (kg·cm) in CasesT2.dat and the shear (kg) in
/// CasesT3.dat, with the station's x from the span's left support (cm).
inline constexpr auto kCaseStationsLayout = core::packFields<7>({{
    {"marker", core::FieldType::Text, 1},
    {"caseNumber", core::FieldType::Int16},
    {"spanCount", core::FieldType::Int16},
    {"stationsPerSpan", core::FieldType::Int16},
    {"stationX", core::FieldType::Single, 0, kMaxSpans* kStationsPerSpan},
    {"stationValue", core::FieldType::Single, 0, kMaxSpans* kStationsPerSpan},
    {"reserved", core::FieldType::Text, 14475},
}});
static_assert(kCaseStationsLayout.size == 19522, "CasesT2/T3.dat records are 19,522 bytes");

/// The beam record of one case: every present load's first value becomes its factored value
/// in the case (dead × dead factor + live × live factor of the span, t/m or t), the second is
/// cleared; the scheme is recorded.
BeamRecord caseRecord(const BeamRecord& beam, const LoadCase& loadCase, const LoadFactors& factors,
                      int caseScheme);

/// Deletes the four case files of the folder (a missing one is fine). Throws FileError when one
/// cannot be deleted.
void removeCaseFiles(const std::filesystem::path& folder);

/// The four case files of an analysed beam, one record per factored case, as files to write.
/// Precondition: result.ok().
std::vector<core::OutputFile> caseFileOutputs(const std::filesystem::path& folder,
                                              const BeamRecord& beam, int caseScheme,
                                              const BeamAnalysisResult& result);

/// Writes the four case files of an analysed beam together (see caseFileOutputs).
/// Precondition: result.ok().
void writeCaseFiles(const std::filesystem::path& folder, const BeamRecord& beam, int caseScheme,
                    const BeamAnalysisResult& result);

/// Analyses a stored beam under a case scheme: removes the old case files first, so that a
/// failed run leaves none, and writes the new ones when the analysis succeeds.
/// Precondition: validateBeam(beam) is empty.
BeamAnalysisResult analyseBeamWithCaseFiles(const std::filesystem::path& folder,
                                            const BeamRecord& beam, int caseScheme);

} // namespace orvak::beams
