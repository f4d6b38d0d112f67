// What the design of one footing group takes and what every footing design gives back, the same
// for the isolated, the combined and the pile footing. Loads in t, moments in t·m, lengths in
// cm, stresses in kg/cm².
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace orvak::footings {

enum class FootingKind : std::int16_t { Isolated = 1, Combined = 2, Pile = 3 };

/// The footing settings as one design uses them (each group keeps its own copy).
struct FootingSettings {
    std::int16_t Fc = 250;         ///< concrete strength, kg/cm²
    std::int16_t FY = 4200;        ///< yield strength of the bars, kg/cm²
    float soilCapacity = 2.0f;     ///< safe bearing capacity of the soil, kg/cm²
    float coverCm = 7.5f;          ///< steel cover, d to H
    float LF = 1.4f;               ///< load factor Pu / (Pd + Pl)
    float minSteelPercent = 0.18f; ///< least steel ratio, %
    float minDepthCm = 30.0f;      ///< least effective depth d the design starts from
    float facRowmax = 0.75f;       ///< RowMax = FacRowmax · Rowb
    bool operator==(const FootingSettings&) const = default;
};

/// A column standing on the footing: its section (type 1..7 and a..e as the column groups
/// keep them), its factored load and moments, and where it stands in the footing's plan.
struct FootingColumn {
    std::string name; ///< the column group's name, single-byte
    std::int16_t type = 1;
    std::array<float, 5> dims{}; ///< a (along y, the side A), b (along x, the side B), c, d, e
    float puT = 0.0f;
    float muxTm = 0.0f; ///< about x (bends over a)
    float muyTm = 0.0f; ///< about y (bends over b)
    /// Isolated footing: the distances from the footing's edges to the column's faces (0 for a
    /// column in the middle). Combined footing: cxCm is the column centre from the left edge.
    float cxCm = 0.0f;
    float cyCm = 0.0f;
    bool operator==(const FootingColumn&) const = default;
};

struct IsolatedFootingInput {
    FootingColumn column;
    FootingSettings settings;
};

struct CombinedFootingInput {
    FootingColumn column1; ///< the left column (cxCm below column2's)
    FootingColumn column2;
    FootingSettings settings;
};

/// The pile footing's inputs; its design is not part of this version, only its sheet head.
struct PileFootingInput {
    FootingColumn column;
    FootingSettings settings;
    std::int16_t piles = 4;
    float pileDiameterCm = 40.0f;
    float pileLengthCm = 1200.0f;
    float surfaceFriction = 0.0f; ///< t/m² along the shaft
    float endBearing = 0.0f;      ///< t/m² under the tip
};

enum class FootingStatus {
    Designed = 1,     ///< every check holds
    ChecksFailed = 2, ///< designed and written, but a check fails (pressure, tension, shear)
    CheckData = 3,    ///< no footing can be made of the data ("Check your data")
    NotDesigned = 4,  ///< the pile footing: its design is not part of this version
};

/// The bars of one direction.
struct FootingBars {
    bool found = false;
    int count = 0;
    double diameterMm = 0.0;
    double areaCm2 = 0.0;
    double lengthCm = 0.0; ///< one bar, end to end
};

/// One set of bars of a footing as the steel store lists it ("Bottom bars, Y direction").
struct FootingBarSet {
    std::string text;
    FootingBars bars;
};

/// What every footing design gives back for the group's record, the steel store and the run.
struct FootingSummary {
    FootingStatus status = FootingStatus::NotDesigned;
    double aCm = 0.0;  ///< side A (along y)
    double bCm = 0.0;  ///< side B (along x)
    double hCm = 0.0;  ///< total depth H
    FootingBars barsY; ///< the bars along y (the steel of the Y direction)
    FootingBars barsX;
    /// Every set of bars the footing holds, for the steel store: the two bottom layers of an
    /// isolated footing; the long bars at the top and at the bottom and the cross bars under
    /// each column of a combined one.
    std::vector<FootingBarSet> barSets;
    std::vector<std::string> failures; ///< one sentence each, in English, for the run's list
};

} // namespace orvak::footings
