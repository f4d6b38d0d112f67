// The beam record: one continuous beam of up to 30 spans with its sections, loads, supports,
// materials, covers and a copy of the design settings, as stored in the floor's beam file.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "beams/beam_analysis.h"
#include "beams/beam_settings.h"
#include "beams/section.h"
#include "core/record.h"
#include "core/settings_fields.h"

namespace orvak::beams {

inline constexpr std::size_t kBeamRecordLength = 16699;
/// Kinds per span in the load tables; kinds 1 to 4 are in use, the fifth is kept as stored.
inline constexpr std::size_t kLoadTableKinds = 5;
/// Live-load duration of the long-term deflection when a beam gives none: five years, after
/// which the ACI time-dependent factor grows no more (the time factor gives 1.903 there).
inline constexpr float kDefaultLiveLoadMonths = 60.0f;
/// Bounds of a stored beam beyond which an entry can only be a slip of the keyboard or a
/// damaged file: they keep every number of the design and its listings within its masks.
inline constexpr float kMaxSpanLengthM = 50.0f;
/// The shortest span: a piece shorter than 10 cm is a slip (1e-45 m), whose stiffness L³
/// would leave the equations without meaning.
inline constexpr float kMinSpanLengthM = 0.1f;
inline constexpr float kMaxSectionCm = 500.0f;
inline constexpr float kMaxCoverCm = 20.0f;
/// Beams of one floor: the steel quantities key a beam's items by its number in three digits
/// ("01.002.999.0001.000"), so a floor holds beams 1 to 999 and no two share a key.
inline constexpr int kMaxBeamsPerFloor = 999;
inline constexpr float kMaxSupportWidthCm = 500.0f;
inline constexpr float kMaxFcKgCm2 = 1000.0f;
inline constexpr float kMaxFyKgCm2 = 10000.0f;
inline constexpr float kMaxDistributedLoadTm = 500.0f; ///< t/m, dead or live part
inline constexpr float kMaxPointLoadT = 5000.0f;       ///< t, dead or live part
/// Values per load: 1 dead part, 2 live part, 3 kept as stored (see docs/file-formats.md).
inline constexpr std::size_t kLoadValuesPerLoad = 3;

/// Field layout of the beam record. Tables are stored span after span: the value of span s
/// (0-based) and kind k (1-based) is at index s·5 + k − 1 of a 5-by-30 table, value v of a
/// load at s·12 + (k − 1)·3 + v − 1.
inline constexpr auto kBeamRecordLayout = core::packFields<28>({{
    {"marker", core::FieldType::Text, 1},
    {"name", core::FieldType::Text, 20},
    {"floor", core::FieldType::Int16},
    {"number", core::FieldType::Int16},
    {"supportCount", core::FieldType::Int16},
    {"fc", core::FieldType::Single},
    {"fyMain", core::FieldType::Single},
    {"fyStirrups", core::FieldType::Single},
    {"coverTop", core::FieldType::Single},
    {"coverBottom", core::FieldType::Single},
    {"coverSide", core::FieldType::Single},
    {"sectionKind", core::FieldType::Int16, 0, kMaxSpans},
    {"sectionDims", core::FieldType::Single, 0, 5 * kMaxSpans},
    {"spanLength", core::FieldType::Single, 0, kMaxSpans},
    {"loadPresent", core::FieldType::Int16, 0, kLoadTableKinds* kMaxSpans},
    {"loadValues", core::FieldType::Single, 0, kLoadKindCount* kLoadValuesPerLoad* kMaxSpans},
    {"loadPlacement", core::FieldType::Single, 0, kLoadTableKinds* kMaxSpans},
    {"loadLength", core::FieldType::Single, 0, kLoadTableKinds* kMaxSpans},
    {"trianglePeak", core::FieldType::Int16, 0, kMaxSpans},
    {"supportCode", core::FieldType::Int16, 0, kMaxSupports},
    {"supportSecond", core::FieldType::Int16, 0, kMaxSupports},
    {"supportValues", core::FieldType::Single, 0, 2 * kMaxSupports},
    {"settings", core::FieldType::Text, kBeamSettingsLayout.size},
    {"caseScheme", core::FieldType::Int16},
    {"freeDofCount", core::FieldType::Int16},
    {"sustainedLivePercent", core::FieldType::Single},
    {"liveLoadMonths", core::FieldType::Single},
    {"reserved", core::FieldType::Text, 12241},
}});
static_assert(kBeamRecordLayout.size == kBeamRecordLength, "beam records are 16,699 bytes");

/// One load of a span as stored: loads in t/m (the point load in t), distances in m.
struct StoredLoad {
    bool present = false;
    float dead = 0.0f;
    float live = 0.0f;
    float spare = 0.0f;   ///< third load value, not used by the analysis
    float startM = 0.0f;  ///< partial: distance to its start; point: to the load
    float lengthM = 0.0f; ///< partial: loaded length
    bool operator==(const StoredLoad&) const = default;
};

struct StoredSpan {
    std::int16_t sectionKind = 2;
    SectionDims dims{};
    float lengthM = 0.0f;
    std::array<StoredLoad, kLoadKindCount> loads{}; ///< indexed by loadIndex(kind)
    bool trianglePeakLeft = false; ///< the triangular load peaks at the left support
    bool operator==(const StoredSpan&) const = default;
};

struct StoredSupport {
    std::int16_t code = 2;   ///< 2 supported; other values free
    std::int16_t second = 0; ///< 1 on a supported joint: the rotation is restrained too
    float widthCm = 0.0f;    ///< width of the supporting column or beam, cm
    float value2 = 0.0f;     ///< kept as stored
    bool operator==(const StoredSupport&) const = default;
};

struct BeamRecord {
    std::string name;                    ///< the beam's identification, at most 20 characters
    std::int16_t floor = 0;              ///< number of the floor whose beam file holds it
    std::int16_t number = 0;             ///< record number in that file
    float fc = 0.0f;                     ///< concrete strength, kg/cm²
    float fyMain = 0.0f;                 ///< yield strength of the main bars, kg/cm²
    float fyStirrups = 0.0f;             ///< yield strength of the stirrups, kg/cm²
    float coverTopCm = 0.0f;             ///< top face to the centre of the top bars
    float coverBottomCm = 0.0f;          ///< bottom face to the centre of the bottom bars
    float coverSideCm = 0.0f;            ///< side face to the outside of the stirrups
    std::vector<StoredSpan> spans;       ///< 1 to 30
    std::vector<StoredSupport> supports; ///< spans.size() + 1
    BeamSettings settings;               ///< the beam's own copy of the design settings
    std::int16_t caseScheme = 0;         ///< scheme of the last analysis (0 none yet)
    std::int16_t freeDofCount = 0;       ///< free degrees of freedom of the last analysis
    /// Long-term deflection data: the sustained part of the live load, 0 to 100 %, and how
    /// long the live load acts, months (0 stands for kDefaultLiveLoadMonths).
    float sustainedLivePercent = 0.0f;
    float liveLoadMonths = kDefaultLiveLoadMonths;
    bool operator==(const BeamRecord&) const = default;

    /// The live-load duration with the fallback of a stored 0 applied.
    double effectiveLiveLoadMonths() const {
        return core::orDefault(liveLoadMonths, kDefaultLiveLoadMonths);
    }
};

/// The record's fields. A support count outside 0..31 is corrupt: `error` gets a sentence and
/// the result is empty of spans.
BeamRecord decodeBeamRecord(const core::RecordBuffer& rec, std::string& error);
/// A record with the use mark. Precondition: validateBeam(record) is empty.
core::RecordBuffer encodeBeamRecord(const BeamRecord& record);

/// An empty string when the beam can be stored and analysed, else one sentence naming the
/// span or support and the field (e.g. "span 2: the length must be more than 0 m").
std::string validateBeam(const BeamRecord& record);

/// The beams of a floor in record order (records not in use are skipped). A missing file gives
/// none. Throws FileError when the file cannot be read or a record is corrupt.
std::vector<BeamRecord> readBeamFile(const std::filesystem::path& projectFolder, int floor);
/// The beam file of a floor as it would be written (see writeBeamFile), nothing written.
core::RecordFile beamFileImage(const std::filesystem::path& projectFolder, int floor,
                               const std::vector<BeamRecord>& beams);
/// Replaces the floor's beam file with these beams, record n holding beams[n − 1].
void writeBeamFile(const std::filesystem::path& projectFolder, int floor,
                   const std::vector<BeamRecord>& beams);

/// The input of the analysis engine: t/m → kg/cm (× 10), t → kg (× 1000), m → cm (× 100),
/// gross inertia of each section, Ec = 15100 √Fc, FACDEADL and FACDAYNL of the beam's own
/// settings. Precondition: validateBeam(record) is empty.
BeamAnalysisInput analysisInput(const BeamRecord& record, int caseScheme);

} // namespace orvak::beams
