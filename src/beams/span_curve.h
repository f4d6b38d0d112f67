// Bending moment, shear and elastic line along one span, given the actions at its left end and
// the values of its loads: exact piecewise polynomials between the load's break points.
#pragma once

#include <array>
#include <cstddef>

#include "beams/beam_loads.h"

namespace orvak::beams {

/// Stations per span at which moments and shears are kept: every twentieth of the span from
/// x = 0 to x = L, so that the tenth points are the even stations.
inline constexpr int kStationDivisions = 20;
inline constexpr int kStationsPerSpan = kStationDivisions + 1;

/// Rows of station values, padded beyond kStationsPerSpan to a whole number of vector
/// registers so that loops over them vectorise; the padding entries carry no meaning.
inline constexpr int kStationArray = 24;
using StationRow = std::array<double, kStationArray>;

/// Values of a span's four loads in one case (factored or service), indexed by loadIndex();
/// kg/cm for the distributed kinds, kg for the point load, downward positive.
using LoadValues = std::array<double, kLoadKindCount>;

/// The actions at the left end of a span in one case: the bending moment there (sagging
/// positive, kg·cm) and the upward force that the left joint exerts on the span (kg). A point
/// load standing exactly on the left support is included in that force but not in the shear
/// just inside the span.
struct SpanEndActions {
    double momentKgCm = 0.0;
    double forceKg = 0.0;
};

/// The elastic state of the span's left end: upward displacement (cm) and counterclockwise
/// rotation (rad) of the joint, and the span's flexural rigidity EI (kg·cm²).
struct SpanElasticStart {
    double displacementUpCm = 0.0;
    double rotation = 0.0;
    double rigidityKgCm2 = 1.0;
};

struct MomentExtreme {
    double momentKgCm = 0.0;
    double xCm = 0.0;
};

struct DeflectionExtreme {
    double deflectionMm = 0.0; ///< downward positive
    double xCm = 0.0;
};

/// Moment and shear at one point of a span.
struct Station {
    double xCm = 0.0;
    double momentKgCm = 0.0;
    double shearKg = 0.0; ///< just left of x, except at x = 0 (just inside the span)
};

/// Extremes of the moment and shear over one span in one state.
struct SpanExtremes {
    MomentExtreme max;        ///< largest moment and where
    MomentExtreme min;        ///< smallest moment and where
    double absMaxShearKg = 0; ///< largest shear magnitude (both sides of a point load count)
};

/// Break points of a span: its two ends, the two edges of a partial load and a point load.
inline constexpr int kMaxSpanBreaks = 5;

/// The share of a span's own loads in its moments and shears for one set of load values,
/// worked out once and reused by every state that gives the span the same values. Each entry
/// is to be subtracted from the straight line M0 + F0·x (and from F0 for the shear).
struct SpanLoadShares {
    StationRow stationMoment{};                       ///< Σ v·m(x) at the stations
    StationRow stationShear{};                        ///< Σ v·s(x) at the stations
    std::array<double, kMaxSpanBreaks> breakMoment{}; ///< Σ v·m at each break point
    std::array<double, kMaxSpanBreaks> breakShear{};  ///< Σ v·s just right of each break
    std::array<double, kMaxSpanBreaks> pieceQ0{};     ///< load intensity at the start of each piece
    double pieceQ1 = 0.0;                             ///< its slope (from the triangular load)
};

/// The geometry of one span and of its loads. Moments and shears follow from statics along
/// the span: M(x) = M0 + F0·x − Σ v·m(x), V = dM/dx, with x from the left support; the unit
/// functions m(x) of each load kind are tabulated once per span at the stations and at the
/// load break points, so that each load state costs a few multiply-adds.
class SpanCurve {
public:
    SpanCurve() = default;
    /// Preconditions: lengthCm > 0; present loads lie on the span (a partial load reaching
    /// past the right end is cut there). Absent loads are ignored whatever their values.
    SpanCurve(double lengthCm, const SpanLoads& loads);

    double lengthCm() const { return m_length; }
    double stationX(int station) const { return m_stationX[station]; }

    /// Bending moment at x (kg·cm), sagging positive. 0 <= x <= L.
    double momentAt(double xCm, const SpanEndActions& end, const LoadValues& values) const;
    /// Shear V = dM/dx at x (kg): the value just left of x, except at x = 0 where it is the
    /// value just inside the span.
    double shearAt(double xCm, const SpanEndActions& end, const LoadValues& values) const;
    /// The loads' shares for one set of load values.
    SpanLoadShares loadShares(const LoadValues& values) const;
    /// Moment and shear at every station (entries 0 .. kStationsPerSpan - 1 of the rows).
    void evaluateStations(const SpanEndActions& end, const SpanLoadShares& shares,
                          StationRow& moment, StationRow& shear) const;
    /// Largest and smallest moment, at the ends, the load break points or where the shear is
    /// zero (solved exactly over each piece), and the largest shear magnitude.
    SpanExtremes extremes(const SpanEndActions& end, const SpanLoadShares& shares) const;

    /// Downward deflection at x (cm) from the elastic state of the left end, by integrating
    /// the moment curve twice: EI·v'' = M, v upward.
    double deflectionAt(double xCm, const SpanElasticStart& start, const SpanEndActions& end,
                        const LoadValues& values) const;
    /// Downward deflection at every station in mm (entries 0 .. kStationsPerSpan - 1).
    void stationDeflectionsMm(const SpanElasticStart& start, const SpanEndActions& end,
                              const LoadValues& values, StationRow& out) const;
    /// Largest downward deflection over the span: the best station, refined to where the
    /// slope is zero between its neighbours (Newton on the slope, whose derivative is −M/EI).
    /// lineMm: the station deflections of the same state, from stationDeflectionsMm.
    DeflectionExtreme maxDeflection(const SpanElasticStart& start, const SpanEndActions& end,
                                    const LoadValues& values, const StationRow& lineMm) const;

private:
    using StationTable = std::array<StationRow, kLoadKindCount>;

    // Per load kind, the moment m(x) and the load resultant s(x) left of x of a unit load, and
    // the double integral of m; the full moment, shear and line are linear in the values.
    void unitMomentShear(double x, bool rightOfPoint, LoadValues& m, LoadValues& s) const;
    LoadValues unitDoubleIntegral(double x) const;
    LoadValues unitSingleIntegral(double x) const;
    // Slope of the downward deflection, dδ/dx.
    double slopeDown(double xCm, const SpanElasticStart& start, const SpanEndActions& end,
                     const LoadValues& values) const;

    double m_length = 0.0;
    double m_partialStart = 0.0;
    double m_partialEnd = 0.0;
    double m_pointAt = 0.0;
    bool m_peakAtLeft = false;

    StationRow m_stationX{};
    StationTable m_stationMoment{};
    StationTable m_stationShear{};
    StationTable m_stationLine{};

    // Break points (span ends and load edges) and the pieces between them: at each break the
    // unit moment and the unit resultant just right of it; over each piece the unit load
    // intensity q(xs + t) = q0 + q1·t.
    std::array<double, kMaxSpanBreaks> m_breaks{};
    int m_breakCount = 0;
    std::array<LoadValues, kMaxSpanBreaks> m_breakMoment{};
    std::array<LoadValues, kMaxSpanBreaks> m_breakShear{};
    std::array<LoadValues, kMaxSpanBreaks> m_pieceQ0{};
    LoadValues m_pieceQ1{};
};

} // namespace orvak::beams
