// Design of one stored beam from its record to everything the design produces: the four
// listings, the bar items of the steel store and the analysis the case files are made of.
// Nothing is written here: the design job runner puts a run's outputs in place.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "bars/bar_tables.h"
#include "bars/steel_store.h"
#include "beams/beam_design.h"
#include "beams/beam_record.h"
#include "core/output_batch.h"

namespace orvak::beams {

/// Extensions of the listing files; the deflection listing takes the next free number.
inline constexpr std::string_view kShearListingExt = ".Analy0";
inline constexpr std::string_view kAnalysisListingExt = ".Analy1";
inline constexpr std::string_view kFlexureListingExt = ".Analy2";
inline constexpr std::string_view kDeflectionListingExt = ".Analy3";

/// Steel items of beams are kept under the element kind of the floor's slab elements: the
/// key is (1, floor, beam number, mark, 0).
inline constexpr bars::ElementKind kBeamSteelKind = bars::ElementKind::Slab;
/// Anchorage of a bar beyond the point where it is no longer needed, in bar diameters.
inline constexpr double kAnchorageDiameters = 40.0;
/// Extension of a standard 90-degree hook at a bar's end, in bar diameters (ACI: 12 db).
inline constexpr double kHookDiameters = 12.0;
/// Top bars over an inner support reach this fraction of each adjacent span.
inline constexpr double kTopBarSpanFraction = 0.3;

enum class BeamJobStatus {
    Designed,       ///< every check passed
    ChecksFailed,   ///< listings and steel written; some points fail (see failures)
    AnalysisFailed, ///< the beam cannot be analysed (e.g. unstable): nothing written
};

/// What the design of one beam produces, before anything is written.
struct BeamDesignOutputs {
    BeamJobStatus status = BeamJobStatus::Designed;
    std::vector<std::string> failures;      ///< analysis message or failed checks, plain sentences
    std::vector<std::string> messages;      ///< the depth messages of the design
    std::vector<core::OutputFile> listings; ///< the four listings, CR LF, in extension order
    std::vector<bars::SteelItem> items;     ///< the bar items, marks from 1
    BeamAnalysisResult analysis;            ///< the cases of the analysis (for the case files)
};

/// The design input of a beam whose analysis is done: the record's materials, covers and
/// settings copy mapped field by field (stored zeros stay zeros: the design engine applies
/// the code fallbacks), the sections, the flagged end supports and the bar table.
/// Precondition: validateBeam(record) is empty and analysis was made from model.
BeamDesignInput designInputFromRecord(const BeamRecord& record, BeamAnalysisInput model,
                                      BeamAnalysisResult analysis,
                                      std::vector<bars::BarProperties> barTable);

/// The beam's listing base name: the identification "F<floor>-<name>" (the name's trailing
/// blanks cut, "Beam" when empty) and the number joined by "_", e.g. "F2-B1_1", each
/// character that cannot stand in a file name replaced by "_".
std::string listingBaseName(const BeamRecord& record);

/// The bar items of a designed beam, marks running from 1: per span the bottom bars of the
/// field, per support the top bars, per span the top bars of the field, per span the stirrups
/// (and the inner stirrups of four legs). Lengths in cm (see docs/decisions.md).
std::vector<bars::SteelItem> beamSteelItems(const BeamRecord& record, const BeamDesignInput& input,
                                            const BeamDesignResult& result);

/// Bars a design accepts from the bar table: diameters from 3 to 60 mm, and an area within
/// half and twice that of a round bar of the diameter (ribbed and bundled bars stay inside).
inline constexpr double kMinBarDiameterMm = 3.0;
inline constexpr double kMaxBarDiameterMm = 60.0;
inline constexpr double kBarAreaLeast = 0.5;
inline constexpr double kBarAreaMost = 2.0;

/// The bar table of the GENERAL folder for a design (LoadBarPropertiesOrBuiltIn): its rows
/// with a diameter and an area. Throws InputError with a sentence asking for the bar table
/// when the user's file holds records but no usable bar, and one naming the file, the row and
/// the value when a bar's diameter or area is outside the bounds above.
bars::BarPropertyTable designBarTable(const std::filesystem::path& generalFolder);

/// Designs a beam already read, under a load-case scheme, into its outputs (listings named
/// after listingBaseName in `projectFolder`). Throws InputError when the record is not valid.
/// A beam that cannot be analysed (unstable, say) has status AnalysisFailed and no outputs.
BeamDesignOutputs designBeamOutputs(const std::filesystem::path& projectFolder,
                                    const BeamRecord& record,
                                    const std::vector<bars::BarProperties>& barTable, int scheme);

} // namespace orvak::beams
