// Statics and elastic line of one span. Loads are written with Macaulay brackets <x − a>, so
// that each kind is one formula over the whole span and integrates term by term.
#include "beams/span_curve.h"

#include <algorithm>
#include <cmath>

#include "core/error.h"
#include "core/tolerances.h"

namespace orvak::beams {

namespace {

constexpr std::size_t kUniform = loadIndex(LoadKind::Uniform);
constexpr std::size_t kTriangle = loadIndex(LoadKind::Triangular);
constexpr std::size_t kPartial = loadIndex(LoadKind::PartialUniform);
constexpr std::size_t kPoint = loadIndex(LoadKind::Concentrated);

double bracket(double d) {
    return d > 0.0 ? d : 0.0;
}

double dot(const LoadValues& a, const LoadValues& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

// Real roots in (0, len) of a2·t² + a1·t + a0 = 0, written to roots; returns their count.
// The quadratic term is dropped when it is negligible over the interval.
int rootsInInterval(double a2, double a1, double a0, double len, std::array<double, 2>& roots) {
    std::array<double, 2> r{};
    int n = 0;
    const double scale = std::abs(a1) * len + std::abs(a0);
    if (std::abs(a2) * len * len <= core::kNegligibleQuadratic * scale) {
        if (a1 != 0.0) {
            r[n++] = -a0 / a1;
        }
    } else {
        const double disc = a1 * a1 - 4.0 * a2 * a0;
        if (disc >= 0.0) {
            // The stable form avoids cancellation between -a1 and the root of disc.
            const double q = -0.5 * (a1 + std::copysign(std::sqrt(disc), a1));
            r[n++] = q / a2;
            if (q != 0.0) {
                r[n++] = a0 / q;
            }
        }
    }
    int kept = 0;
    for (int i = 0; i < n; ++i) {
        if (r[i] > 0.0 && r[i] < len) {
            roots[kept++] = r[i];
        }
    }
    return kept;
}

} // namespace

SpanCurve::SpanCurve(double lengthCm, const SpanLoads& loads) : m_length(lengthCm) {
    ORVAK_ASSERT(lengthCm > 0.0);
    const double l = lengthCm;
    // An absent load is parked at the right end, where its brackets vanish over the span.
    m_partialStart = l;
    m_partialEnd = l;
    m_pointAt = l;
    m_breaks[m_breakCount++] = 0.0;
    m_breaks[m_breakCount++] = l;
    const SpanLoad& partial = loads[kPartial];
    if (partial.present) {
        m_partialStart = std::clamp(partial.startCm, 0.0, l);
        m_partialEnd = std::clamp(partial.startCm + partial.lengthCm, m_partialStart, l);
        m_breaks[m_breakCount++] = m_partialStart;
        m_breaks[m_breakCount++] = m_partialEnd;
    }
    const SpanLoad& point = loads[kPoint];
    if (point.present) {
        m_pointAt = std::clamp(point.startCm, 0.0, l);
        m_breaks[m_breakCount++] = m_pointAt;
    }
    m_peakAtLeft = loads[kTriangle].present && loads[kTriangle].peak == TrianglePeak::AtLeft;
    std::sort(m_breaks.begin(), m_breaks.begin() + m_breakCount);
    m_breakCount = static_cast<int>(std::unique(m_breaks.begin(), m_breaks.begin() + m_breakCount) -
                                    m_breaks.begin());

    for (int st = 0; st < kStationsPerSpan; ++st) {
        const double x = l * st / kStationDivisions;
        m_stationX[st] = x;
        LoadValues m;
        LoadValues sh;
        unitMomentShear(x, st == 0, m, sh);
        const LoadValues line = unitDoubleIntegral(x);
        for (std::size_t k = 0; k < kLoadKindCount; ++k) {
            m_stationMoment[k][st] = m[k];
            m_stationShear[k][st] = sh[k];
            m_stationLine[k][st] = line[k];
        }
    }
    const double slope = m_peakAtLeft ? -1.0 / l : 1.0 / l;
    m_pieceQ1 = {0.0, slope, 0.0, 0.0};
    for (int b = 0; b < m_breakCount; ++b) {
        const double xs = m_breaks[b];
        unitMomentShear(xs, true, m_breakMoment[b], m_breakShear[b]);
        if (b + 1 < m_breakCount) {
            const double mid = (xs + m_breaks[b + 1]) / 2.0;
            const bool inPartial = mid > m_partialStart && mid < m_partialEnd;
            m_pieceQ0[b] = {1.0, m_peakAtLeft ? 1.0 - xs / l : xs / l, inPartial ? 1.0 : 0.0, 0.0};
        }
    }
}

void SpanCurve::unitMomentShear(double x, bool rightOfPoint, LoadValues& m, LoadValues& s) const {
    const double l = m_length;
    m[kUniform] = x * x / 2.0;
    s[kUniform] = x;
    // Triangle rising to the right, w(t) = t / L: resultant x²/2L at x/3 from x.
    const double riseMoment = x * x * x / (6.0 * l);
    const double riseShear = x * x / (2.0 * l);
    m[kTriangle] = m_peakAtLeft ? x * x / 2.0 - riseMoment : riseMoment;
    s[kTriangle] = m_peakAtLeft ? x - riseShear : riseShear;
    const double p1 = bracket(x - m_partialStart);
    const double p2 = bracket(x - m_partialEnd);
    m[kPartial] = (p1 * p1 - p2 * p2) / 2.0;
    s[kPartial] = p1 - p2;
    const double d = x - m_pointAt;
    m[kPoint] = bracket(d);
    s[kPoint] = (d > 0.0 || (rightOfPoint && d == 0.0)) ? 1.0 : 0.0;
}

LoadValues SpanCurve::unitDoubleIntegral(double x) const {
    const double l = m_length;
    const double x4 = x * x * x * x / 24.0;
    const double x5 = x * x * x * x * x / (120.0 * l);
    const double p1 = bracket(x - m_partialStart);
    const double p2 = bracket(x - m_partialEnd);
    const double d = bracket(x - m_pointAt);
    return {x4, m_peakAtLeft ? x4 - x5 : x5, (p1 * p1 * p1 * p1 - p2 * p2 * p2 * p2) / 24.0,
            d * d * d / 6.0};
}

double SpanCurve::momentAt(double xCm, const SpanEndActions& end, const LoadValues& values) const {
    LoadValues m;
    LoadValues s;
    unitMomentShear(xCm, false, m, s);
    return end.momentKgCm + end.forceKg * xCm - dot(values, m);
}

double SpanCurve::shearAt(double xCm, const SpanEndActions& end, const LoadValues& values) const {
    LoadValues m;
    LoadValues s;
    unitMomentShear(xCm, xCm == 0.0, m, s);
    return end.forceKg - dot(values, s);
}

SpanLoadShares SpanCurve::loadShares(const LoadValues& values) const {
    SpanLoadShares shares;
    for (std::size_t k = 0; k < kLoadKindCount; ++k) {
        const double value = values[k];
        if (value == 0.0) {
            continue;
        }
        const StationRow& unitMoment = m_stationMoment[k];
        const StationRow& unitShear = m_stationShear[k];
        for (int st = 0; st < kStationArray; ++st) {
            shares.stationMoment[st] += value * unitMoment[st];
            shares.stationShear[st] += value * unitShear[st];
        }
    }
    for (int b = 0; b < m_breakCount; ++b) {
        shares.breakMoment[b] = dot(values, m_breakMoment[b]);
        shares.breakShear[b] = dot(values, m_breakShear[b]);
        shares.pieceQ0[b] = dot(values, m_pieceQ0[b]);
    }
    shares.pieceQ1 = dot(values, m_pieceQ1);
    return shares;
}

void SpanCurve::evaluateStations(const SpanEndActions& end, const SpanLoadShares& shares,
                                 StationRow& moment, StationRow& shear) const {
    // Local rows: the compiler can see that they alias nothing and keeps the loop in vector
    // registers.
    StationRow m;
    StationRow v;
    for (int st = 0; st < kStationArray; ++st) {
        m[st] = end.momentKgCm + end.forceKg * m_stationX[st] - shares.stationMoment[st];
        v[st] = end.forceKg - shares.stationShear[st];
    }
    moment = m;
    shear = v;
}

SpanExtremes SpanCurve::extremes(const SpanEndActions& end, const SpanLoadShares& shares) const {
    SpanExtremes e;
    e.max = {end.momentKgCm, 0.0};
    e.min = e.max;
    auto consider = [&e](double x, double moment) {
        if (moment > e.max.momentKgCm) {
            e.max = {moment, x};
        }
        if (moment < e.min.momentKgCm) {
            e.min = {moment, x};
        }
    };
    const double q1 = shares.pieceQ1;
    for (int k = 0; k + 1 < m_breakCount; ++k) {
        // Over the piece: V(xs + t) = Vs − q0·t − q1·t²/2, M = Ms + Vs·t − q0·t²/2 − q1·t³/6.
        const double xs = m_breaks[k];
        const double len = m_breaks[k + 1] - xs;
        const double ms = end.momentKgCm + end.forceKg * xs - shares.breakMoment[k];
        const double vs = end.forceKg - shares.breakShear[k];
        const double q0 = shares.pieceQ0[k];
        auto momentIn = [&](double t) { return ms + t * (vs - t * (q0 / 2.0 + q1 * t / 6.0)); };
        consider(xs + len, momentIn(len));
        const double ve = vs - len * (q0 + q1 * len / 2.0);
        // A shear linear over the piece passes zero only if its ends differ in sign.
        if (q1 != 0.0 || (vs > 0.0) != (ve > 0.0)) {
            std::array<double, 2> roots{};
            const int n = rootsInInterval(-q1 / 2.0, -q0, vs, len, roots);
            for (int i = 0; i < n; ++i) {
                consider(xs + roots[i], momentIn(roots[i]));
            }
        }
        e.absMaxShearKg = std::max({e.absMaxShearKg, std::abs(vs), std::abs(ve)});
        // The shear is extreme inside a piece only where the load intensity passes zero.
        if (q1 != 0.0) {
            const double t = -q0 / q1;
            if (t > 0.0 && t < len) {
                e.absMaxShearKg = std::max(e.absMaxShearKg, std::abs(vs - t * (q0 + q1 * t / 2.0)));
            }
        }
    }
    return e;
}

double SpanCurve::deflectionAt(double xCm, const SpanElasticStart& start, const SpanEndActions& end,
                               const LoadValues& values) const {
    const double x = xCm;
    const double bend = end.momentKgCm * x * x / 2.0 + end.forceKg * x * x * x / 6.0 -
                        dot(values, unitDoubleIntegral(x));
    return -(start.displacementUpCm + start.rotation * x + bend / start.rigidityKgCm2);
}

void SpanCurve::stationDeflectionsMm(const SpanElasticStart& start, const SpanEndActions& end,
                                     const LoadValues& values, StationRow& out) const {
    StationRow bend;
    for (int st = 0; st < kStationArray; ++st) {
        const double x = m_stationX[st];
        bend[st] = end.momentKgCm * x * x / 2.0 + end.forceKg * x * x * x / 6.0;
    }
    for (std::size_t k = 0; k < kLoadKindCount; ++k) {
        const double value = values[k];
        const StationRow& unitLine = m_stationLine[k];
        for (int st = 0; st < kStationArray; ++st) {
            bend[st] -= value * unitLine[st];
        }
    }
    const double flexibility = 1.0 / start.rigidityKgCm2;
    for (int st = 0; st < kStationArray; ++st) {
        out[st] = -10.0 * (start.displacementUpCm + start.rotation * m_stationX[st] +
                           bend[st] * flexibility);
    }
}

LoadValues SpanCurve::unitSingleIntegral(double x) const {
    const double l = m_length;
    const double x3 = x * x * x / 6.0;
    const double x4 = x * x * x * x / (24.0 * l);
    const double p1 = bracket(x - m_partialStart);
    const double p2 = bracket(x - m_partialEnd);
    const double d = bracket(x - m_pointAt);
    return {x3, m_peakAtLeft ? x3 - x4 : x4, (p1 * p1 * p1 - p2 * p2 * p2) / 6.0, d * d / 2.0};
}

double SpanCurve::slopeDown(double xCm, const SpanElasticStart& start, const SpanEndActions& end,
                            const LoadValues& values) const {
    const double x = xCm;
    const double bend =
        end.momentKgCm * x + end.forceKg * x * x / 2.0 - dot(values, unitSingleIntegral(x));
    return -(start.rotation + bend / start.rigidityKgCm2);
}

DeflectionExtreme SpanCurve::maxDeflection(const SpanElasticStart& start, const SpanEndActions& end,
                                           const LoadValues& values, const StationRow& line) const {
    const int best = static_cast<int>(
        std::max_element(line.begin(), line.begin() + kStationsPerSpan) - line.begin());
    DeflectionExtreme result{line[best], m_stationX[best]};
    // The peak lies where the slope of the line passes from rising to falling between the
    // neighbours of the best station; an end station keeps its value when the line falls
    // away from it.
    double lo = m_stationX[std::max(best - 1, 0)];
    double hi = m_stationX[std::min(best + 1, kStationDivisions)];
    if (slopeDown(lo, start, end, values) <= 0.0 || slopeDown(hi, start, end, values) >= 0.0) {
        return result;
    }
    double x = m_stationX[best];
    const double tolerance = core::kPeakPlaceRelative * m_length;
    for (int iteration = 0; iteration < 60 && hi - lo > tolerance; ++iteration) {
        const double g = slopeDown(x, start, end, values);
        if (g > 0.0) {
            lo = x;
        } else {
            hi = x;
        }
        // Newton on the slope: d(slope)/dx = −M/EI; bisect when the step leaves the bracket.
        const double curvature = -momentAt(x, end, values) / start.rigidityKgCm2;
        double next = curvature < 0.0 ? x - g / curvature : lo - 1.0;
        if (!(next > lo && next < hi)) {
            next = (lo + hi) / 2.0;
        }
        if (std::abs(next - x) <= tolerance) {
            x = next;
            break;
        }
        x = next;
    }
    const double peak = 10.0 * deflectionAt(x, start, end, values);
    if (peak > result.deflectionMm) {
        result = {peak, x};
    }
    return result;
}

} // namespace orvak::beams
