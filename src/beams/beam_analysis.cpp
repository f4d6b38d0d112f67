// Direct stiffness analysis of a continuous beam: two degrees of freedom per joint, one
// factorisation of the stiffness matrix for all load cases, statics along each span after.
#include "beams/beam_analysis.h"

#include <Eigen/Core>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include <fmt/format.h>

#include "beams/fixed_end_forces.h"
#include "core/error.h"
#include "core/tolerances.h"

namespace orvak::beams {

namespace {

// Unit load values for one kind: the fixed-end forces are linear in the load value.
using UnitFixedEnd = std::array<FixedEndForces, kLoadKindCount>;

// The stiffness equations of a continuous beam couple each joint's two degrees of freedom
// with those of its neighbours only: numbered joint by joint, a free equation reaches at most
// three places to either side of the diagonal.
constexpr int kHalfBand = 3;

// Cholesky factor L (K = L Lᵀ) of a symmetric positive definite band matrix, stored by rows:
// row i holds L(i, i - k) for k = 0 .. kHalfBand. The work grows with the number of
// equations, not with its cube.
class BandCholesky {
public:
    void resize(int n) {
        m_n = n;
        m_band.assign(static_cast<std::size_t>(n) * (kHalfBand + 1), 0.0);
    }
    // Entry (i, j) of the lower band, i >= j >= i - kHalfBand: the matrix before factor(), L
    // after it.
    double& at(int i, int j) {
        ORVAK_ASSERT(i >= j && i - j <= kHalfBand);
        return m_band[static_cast<std::size_t>(i) * (kHalfBand + 1) + (i - j)];
    }
    double at(int i, int j) const {
        return m_band[static_cast<std::size_t>(i) * (kHalfBand + 1) + (i - j)];
    }
    // Factors in place. Returns the smallest squared pivot, or 0 when a pivot is not positive
    // (the matrix is singular or not positive definite).
    double factor() {
        double minPivot = std::numeric_limits<double>::infinity();
        for (int i = 0; i < m_n; ++i) {
            for (int j = std::max(0, i - kHalfBand); j <= i; ++j) {
                double sum = at(i, j);
                for (int k = std::max(0, i - kHalfBand); k < j; ++k) {
                    sum -= at(i, k) * at(j, k);
                }
                if (i == j) {
                    if (!(sum > 0.0)) {
                        return 0.0;
                    }
                    minPivot = std::min(minPivot, sum);
                    at(i, i) = std::sqrt(sum);
                } else {
                    at(i, j) = sum / at(j, j);
                }
            }
        }
        return minPivot;
    }
    // Solves K x = b for every column of rhs, in place.
    void solveInPlace(Eigen::MatrixXd& rhs) const {
        for (Eigen::Index c = 0; c < rhs.cols(); ++c) {
            for (int i = 0; i < m_n; ++i) {
                double v = rhs(i, c);
                for (int k = std::max(0, i - kHalfBand); k < i; ++k) {
                    v -= at(i, k) * rhs(k, c);
                }
                rhs(i, c) = v / at(i, i);
            }
            for (int i = m_n - 1; i >= 0; --i) {
                double v = rhs(i, c);
                for (int k = i + 1; k <= std::min(m_n - 1, i + kHalfBand); ++k) {
                    v -= at(k, i) * rhs(k, c);
                }
                rhs(i, c) = v / at(i, i);
            }
        }
    }

private:
    int m_n = 0;
    std::vector<double> m_band;
};

struct Model {
    int spanCount = 0;
    int jointCount = 0;
    std::shared_ptr<const SpanCurves> curves;
    std::vector<double> rigidity; // EI per span, kg·cm²
    std::vector<UnitFixedEnd> unitFixedEnd;
    std::vector<int> freeIndex; // per degree of freedom (2 per joint): free index or -1
    int freeCount = 0;
    Eigen::VectorXd scale; // Jacobi scaling of the free equations
    BandCholesky factor;
};

bool finite(double v) {
    return std::isfinite(v);
}

std::string stabilityProblem(const std::vector<BeamSupport>& supports) {
    int displacementRestraints = 0;
    int rotationRestraints = 0;
    for (const BeamSupport& s : supports) {
        displacementRestraints += s.restrainsDisplacement ? 1 : 0;
        rotationRestraints += s.restrainsRotation ? 1 : 0;
    }
    // A continuous beam without hinges moves as a rigid body in two ways (a drop and a turn);
    // two supports, or one fixed support, hold both.
    if (displacementRestraints == 0) {
        return "The beam has no support: at least one joint must be supported.";
    }
    if (displacementRestraints == 1 && rotationRestraints == 0) {
        return "The beam rests on a single hinged support and can turn about it: add a second "
               "support or fix this one.";
    }
    return {};
}

// Element stiffness times the end displacements (v1, θ1, v2, θ2), plus the fixed-end forces:
// the actions of the joints on the span.
FixedEndForces endActions(double ei, double l, const std::array<double, 4>& d,
                          const FixedEndForces& fixedEnd) {
    const double k = ei / (l * l * l);
    const double v1 = d[0];
    const double t1 = d[1] * l;
    const double v2 = d[2];
    const double t2 = d[3] * l;
    FixedEndForces f;
    f.forceLeftKg = k * (12.0 * v1 + 6.0 * t1 - 12.0 * v2 + 6.0 * t2);
    f.momentLeftKgCm = k * l * (6.0 * v1 + 4.0 * t1 - 6.0 * v2 + 2.0 * t2);
    f.forceRightKg = -f.forceLeftKg;
    f.momentRightKgCm = k * l * (6.0 * v1 + 2.0 * t1 - 6.0 * v2 + 4.0 * t2);
    f += fixedEnd;
    return f;
}

FixedEndForces fixedEndOf(const UnitFixedEnd& unit, const LoadValues& values) {
    FixedEndForces f;
    for (std::size_t k = 0; k < kLoadKindCount; ++k) {
        f.forceLeftKg += values[k] * unit[k].forceLeftKg;
        f.momentLeftKgCm += values[k] * unit[k].momentLeftKgCm;
        f.forceRightKg += values[k] * unit[k].forceRightKg;
        f.momentRightKgCm += values[k] * unit[k].momentRightKgCm;
    }
    return f;
}

LoadValues loadValues(const BeamSpan& span, double deadFactor, double liveFactor) {
    LoadValues v{};
    for (std::size_t k = 0; k < kLoadKindCount; ++k) {
        v[k] = factoredValue(span.loads[k], deadFactor, liveFactor);
    }
    return v;
}

// Builds the span curves and the stiffness matrix and factors it. Returns an empty string, or
// the reason the beam cannot be analysed.
std::string buildModel(const BeamAnalysisInput& input, std::shared_ptr<const SpanCurves> curves,
                       Model& model) {
    const int n = static_cast<int>(input.spans.size());
    model.spanCount = n;
    model.jointCount = n + 1;
    if (!curves || curves->size() != static_cast<std::size_t>(n)) {
        auto built = std::make_shared<SpanCurves>();
        built->reserve(n);
        for (const BeamSpan& span : input.spans) {
            built->emplace_back(span.lengthCm, span.loads);
        }
        curves = std::move(built);
    }
    model.curves = std::move(curves);
    model.rigidity.reserve(n);
    model.unitFixedEnd.resize(n);
    for (int i = 0; i < n; ++i) {
        const BeamSpan& span = input.spans[i];
        model.rigidity.push_back(input.elasticModulusKgCm2 * span.inertiaCm4);
        for (std::size_t k = 0; k < kLoadKindCount; ++k) {
            const LoadKind kind = static_cast<LoadKind>(k + 1);
            // Loads reaching past the span by no more than rounding are cut at its end.
            SpanLoad placed = span.loads[k];
            placed.startCm = std::min(placed.startCm, span.lengthCm);
            placed.lengthCm = std::min(placed.lengthCm, span.lengthCm - placed.startCm);
            model.unitFixedEnd[i][k] =
                placed.present ? loadFixedEnd(kind, placed, 1.0, span.lengthCm) : FixedEndForces{};
        }
    }

    const int dofCount = 2 * model.jointCount;
    model.freeIndex.assign(dofCount, -1);
    for (int j = 0; j < model.jointCount; ++j) {
        const BeamSupport& s = input.supports[j];
        if (!s.restrainsDisplacement) {
            model.freeIndex[2 * j] = model.freeCount++;
        }
        if (!s.restrainsRotation) {
            model.freeIndex[2 * j + 1] = model.freeCount++;
        }
    }
    if (std::string problem = stabilityProblem(input.supports); !problem.empty()) {
        return problem;
    }
    if (model.freeCount == 0) {
        return {};
    }

    BandCholesky& k = model.factor;
    k.resize(model.freeCount);
    for (int i = 0; i < n; ++i) {
        const double l = input.spans[i].lengthCm;
        const double c = model.rigidity[i] / (l * l * l);
        const double ke[4][4] = {{12.0, 6.0 * l, -12.0, 6.0 * l},
                                 {6.0 * l, 4.0 * l * l, -6.0 * l, 2.0 * l * l},
                                 {-12.0, -6.0 * l, 12.0, -6.0 * l},
                                 {6.0 * l, 2.0 * l * l, -6.0 * l, 4.0 * l * l}};
        for (int r = 0; r < 4; ++r) {
            const int fr = model.freeIndex[2 * i + r];
            if (fr < 0) {
                continue;
            }
            for (int s = 0; s < 4; ++s) {
                const int fs = model.freeIndex[2 * i + s];
                if (fs >= 0 && fs <= fr) {
                    k.at(fr, fs) += c * ke[r][s];
                }
            }
        }
    }
    // Scaling to a unit diagonal makes the pivots comparable between displacement and
    // rotation equations, whose stiffness differs by L².
    model.scale.resize(model.freeCount);
    for (int i = 0; i < model.freeCount; ++i) {
        model.scale[i] = 1.0 / std::sqrt(k.at(i, i));
    }
    for (int i = 0; i < model.freeCount; ++i) {
        for (int j = std::max(0, i - kHalfBand); j <= i; ++j) {
            k.at(i, j) *= model.scale[i] * model.scale[j];
        }
    }
    const double minPivot = k.factor();
    if (!(minPivot >= core::kSingularPivot)) {
        return "The beam is unstable: its supports cannot hold it in place.";
    }
    return {};
}

// Solves every load state at once and turns the joint displacements into the forces of each
// span. values holds spanCount load values per state; the station envelopes of the first
// factoredCount states are gathered on the way, span by span, while the rows are at hand.
std::vector<CaseResult> solveStates(const BeamAnalysisInput& input, const Model& model,
                                    const std::vector<LoadCase>& cases,
                                    const std::vector<LoadValues>& values, int factoredCount,
                                    std::vector<SpanEndActions>& ends, Envelope& envelope) {
    const int n = model.spanCount;
    const int stateCount = static_cast<int>(cases.size());

    // Right-hand sides: the joint loads equivalent to the span loads, -(fixed-end forces).
    std::vector<FixedEndForces> fixedEnd(static_cast<std::size_t>(stateCount) * n);
    Eigen::MatrixXd rhs = Eigen::MatrixXd::Zero(model.freeCount, stateCount);
    for (int c = 0; c < stateCount; ++c) {
        for (int i = 0; i < n; ++i) {
            const std::size_t at = static_cast<std::size_t>(c) * n + i;
            const FixedEndForces f = fixedEndOf(model.unitFixedEnd[i], values[at]);
            fixedEnd[at] = f;
            const double terms[4] = {f.forceLeftKg, f.momentLeftKgCm, f.forceRightKg,
                                     f.momentRightKgCm};
            for (int r = 0; r < 4; ++r) {
                const int fr = model.freeIndex[2 * i + r];
                if (fr >= 0) {
                    rhs(fr, c) -= terms[r];
                }
            }
        }
    }
    if (model.freeCount > 0) {
        rhs = model.scale.asDiagonal() * rhs;
        model.factor.solveInPlace(rhs);
        rhs = model.scale.asDiagonal() * rhs;
    }

    std::vector<CaseResult> results(stateCount);
    for (int c = 0; c < stateCount; ++c) {
        CaseResult& r = results[c];
        r.loadCase = cases[c];
        r.displacementsUpCm.resize(model.jointCount);
        r.rotations.resize(model.jointCount);
        for (int j = 0; j < model.jointCount; ++j) {
            const int fv = model.freeIndex[2 * j];
            const int fr = model.freeIndex[2 * j + 1];
            r.displacementsUpCm[j] = fv >= 0 ? rhs(fv, c) : 0.0;
            r.rotations[j] = fr >= 0 ? rhs(fr, c) : 0.0;
        }
        r.supportMomentsKgCm.assign(model.jointCount, 0.0);
        r.reactionsKg.assign(model.jointCount, 0.0);
        r.spans.resize(n);
        r.stations.reserve(static_cast<std::size_t>(n) * kStationsPerSpan);
    }

    const std::size_t stationCount = static_cast<std::size_t>(n) * kStationsPerSpan;
    envelope.stationMomentMaxKgCm.resize(stationCount);
    envelope.stationMomentMinKgCm.resize(stationCount);
    envelope.stationShearMaxKg.resize(stationCount);
    envelope.stationShearMinKg.resize(stationCount);
    StationRow moment{};
    StationRow shear{};
    // The cases give a span only a few distinct sets of load values (loaded, unloaded, the
    // service states): the loads' shares are worked out once per set.
    constexpr int kCachedSets = 8;
    std::array<LoadValues, kCachedSets> cachedValues{};
    std::vector<SpanLoadShares> cachedShares(kCachedSets);
    SpanLoadShares ownShares;
    for (int i = 0; i < n; ++i) {
        int cached = 0;
        const SpanCurve& curve = (*model.curves)[i];
        const bool leftHinged = i == 0 && !input.supports[0].restrainsRotation;
        const bool rightHinged = i == n - 1 && !input.supports[n].restrainsRotation;
        StationRow momentMax;
        StationRow momentMin;
        StationRow shearMax;
        StationRow shearMin;
        momentMax.fill(-kSearchSentinel);
        momentMin.fill(kSearchSentinel);
        shearMax.fill(-kSearchSentinel);
        shearMin.fill(kSearchSentinel);
        for (int c = 0; c < stateCount; ++c) {
            CaseResult& r = results[c];
            const std::size_t at = static_cast<std::size_t>(c) * n + i;
            const std::array<double, 4> d = {r.displacementsUpCm[i], r.rotations[i],
                                             r.displacementsUpCm[i + 1], r.rotations[i + 1]};
            const FixedEndForces f =
                endActions(model.rigidity[i], curve.lengthCm(), d, fixedEnd[at]);
            // An outer joint that is free to turn carries no moment; statics says so exactly.
            const SpanEndActions end{leftHinged ? 0.0 : -f.momentLeftKgCm, f.forceLeftKg};
            const LoadValues& v = values[at];
            ends[at] = end;

            const SpanLoadShares* shares = &ownShares;
            const auto known = std::find(cachedValues.begin(), cachedValues.begin() + cached, v);
            if (known != cachedValues.begin() + cached) {
                shares = &cachedShares[known - cachedValues.begin()];
            } else if (cached < kCachedSets) {
                cachedValues[cached] = v;
                cachedShares[cached] = curve.loadShares(v);
                shares = &cachedShares[cached];
                ++cached;
            } else {
                ownShares = curve.loadShares(v);
            }
            curve.evaluateStations(end, *shares, moment, shear);
            std::array<Station, kStationsPerSpan> row;
            for (int k = 0; k < kStationsPerSpan; ++k) {
                row[k] = {curve.stationX(k), moment[k], shear[k]};
            }
            r.stations.insert(r.stations.end(), row.begin(), row.end());
            if (c < factoredCount) {
                for (int k = 0; k < kStationArray; ++k) {
                    momentMax[k] = std::max(momentMax[k], moment[k]);
                    momentMin[k] = std::min(momentMin[k], moment[k]);
                    shearMax[k] = std::max(shearMax[k], shear[k]);
                    shearMin[k] = std::min(shearMin[k], shear[k]);
                }
            }

            SpanForces& s = r.spans[i];
            s.momentLeftKgCm = end.momentKgCm;
            s.momentRightKgCm = rightHinged ? 0.0 : f.momentRightKgCm;
            s.shearLeftKg = shear[0];
            s.shearRightKg = shear[kStationDivisions];
            const SpanExtremes e = curve.extremes(end, *shares);
            s.maxMoment = e.max;
            s.minMoment = e.min;
            s.absMaxShearKg = e.absMaxShearKg;
            r.reactionsKg[i] += f.forceLeftKg;
            r.reactionsKg[i + 1] += f.forceRightKg;
        }
        const std::size_t first = static_cast<std::size_t>(i) * kStationsPerSpan;
        std::copy_n(momentMax.begin(), kStationsPerSpan, &envelope.stationMomentMaxKgCm[first]);
        std::copy_n(momentMin.begin(), kStationsPerSpan, &envelope.stationMomentMinKgCm[first]);
        std::copy_n(shearMax.begin(), kStationsPerSpan, &envelope.stationShearMaxKg[first]);
        std::copy_n(shearMin.begin(), kStationsPerSpan, &envelope.stationShearMinKg[first]);
    }

    for (CaseResult& r : results) {
        for (int j = 0; j < model.jointCount; ++j) {
            if (!input.supports[j].restrainsDisplacement) {
                r.reactionsKg[j] = 0.0;
            }
            const bool hasLeft = j > 0;
            const bool hasRight = j < n;
            const double fromLeft = hasLeft ? r.spans[j - 1].momentRightKgCm : 0.0;
            const double fromRight = hasRight ? r.spans[j].momentLeftKgCm : 0.0;
            if (hasLeft && hasRight) {
                // Equal unless the joint is clamped, which can take a moment difference.
                r.supportMomentsKgCm[j] =
                    std::abs(fromLeft) >= std::abs(fromRight) ? fromLeft : fromRight;
            } else {
                r.supportMomentsKgCm[j] = hasLeft ? fromLeft : fromRight;
            }
        }
    }
    return results;
}

// The extremes at the supports and over each span of the factored cases.
void buildEnvelope(const std::vector<CaseResult>& cases, int spanCount, Envelope& e) {
    const std::size_t joints = static_cast<std::size_t>(spanCount) + 1;
    e.supportMomentMinKgCm.assign(joints, kSearchSentinel);
    e.supportMomentMaxKgCm.assign(joints, -kSearchSentinel);
    e.spanMomentMax.assign(spanCount, {-kSearchSentinel, 0.0, -1});
    e.spanMomentMin.assign(spanCount, {kSearchSentinel, 0.0, -1});
    e.spanShearAbsMax.assign(spanCount, {-kSearchSentinel, 0.0, -1});
    for (std::size_t c = 0; c < cases.size(); ++c) {
        const CaseResult& r = cases[c];
        const int ci = static_cast<int>(c);
        for (std::size_t j = 0; j < joints; ++j) {
            e.supportMomentMinKgCm[j] =
                std::min(e.supportMomentMinKgCm[j], r.supportMomentsKgCm[j]);
            e.supportMomentMaxKgCm[j] =
                std::max(e.supportMomentMaxKgCm[j], r.supportMomentsKgCm[j]);
        }
        for (int i = 0; i < spanCount; ++i) {
            const SpanForces& s = r.spans[i];
            if (s.maxMoment.momentKgCm > e.spanMomentMax[i].value) {
                e.spanMomentMax[i] = {s.maxMoment.momentKgCm, s.maxMoment.xCm, ci};
            }
            if (s.minMoment.momentKgCm < e.spanMomentMin[i].value) {
                e.spanMomentMin[i] = {s.minMoment.momentKgCm, s.minMoment.xCm, ci};
            }
            if (s.absMaxShearKg > e.spanShearAbsMax[i].value) {
                e.spanShearAbsMax[i] = {s.absMaxShearKg, 0.0, ci};
            }
        }
    }
}

// The elastic line of a service state: the left joint's displacement and rotation start the
// double integration of the moment curve along each span.
ServiceCase withDeflections(CaseResult forces, const Model& model,
                            const std::vector<LoadValues>& values,
                            const std::vector<SpanEndActions>& ends, std::size_t offset) {
    ServiceCase s;
    const int n = model.spanCount;
    s.stationDeflectionsMm.resize(static_cast<std::size_t>(n) * kStationsPerSpan);
    s.maxDeflections.resize(n);
    for (int i = 0; i < n; ++i) {
        const SpanCurve& curve = (*model.curves)[i];
        const SpanElasticStart start{forces.displacementsUpCm[i], forces.rotations[i],
                                     model.rigidity[i]};
        const SpanEndActions& end = ends[offset + i];
        const LoadValues& v = values[offset + i];
        StationRow line;
        curve.stationDeflectionsMm(start, end, v, line);
        std::copy_n(line.begin(), kStationsPerSpan,
                    &s.stationDeflectionsMm[static_cast<std::size_t>(i) * kStationsPerSpan]);
        s.maxDeflections[i] = curve.maxDeflection(start, end, v, line);
    }
    s.forces = std::move(forces);
    return s;
}

std::string checkScheme(int scheme) {
    if (scheme < kMinCaseScheme || scheme > kMaxCaseScheme) {
        return "The load case scheme must be 1, 2 or 3.";
    }
    return {};
}

BeamAnalysisResult failed(AnalysisStatus status, std::string message) {
    BeamAnalysisResult r;
    r.status = status;
    r.message = std::move(message);
    return r;
}

BeamAnalysisResult analyze(const BeamAnalysisInput& input, bool withFactoredCases,
                           unsigned serviceStates, std::shared_ptr<const SpanCurves> curves) {
    if (std::string problem = validateBeamInput(input); !problem.empty()) {
        return failed(AnalysisStatus::InvalidInput, std::move(problem));
    }
    Model model;
    if (std::string problem = buildModel(input, std::move(curves), model); !problem.empty()) {
        BeamAnalysisResult r = failed(AnalysisStatus::Unstable, std::move(problem));
        r.freeDofCount = model.freeCount;
        return r;
    }
    const int n = model.spanCount;
    std::vector<LoadCase> states;
    if (withFactoredCases) {
        states = buildLoadCases(input.caseScheme, n);
    }
    const std::size_t factoredCount = states.size();
    const LoadCase full = buildLoadCases(1, n).front();
    // The service states asked for, in the order dead, live, dead + live.
    std::vector<std::size_t> serviceKinds;
    for (std::size_t s = 0; s < 3; ++s) {
        if ((serviceStates & (1u << s)) != 0) {
            serviceKinds.push_back(s);
        }
    }
    states.insert(states.end(), serviceKinds.size(), full);

    std::vector<LoadValues> values(states.size() * n);
    for (std::size_t c = 0; c < factoredCount; ++c) {
        for (int i = 0; i < n; ++i) {
            const SpanFactors f = spanFactors(states[c], i, input.factors);
            values[c * n + i] = loadValues(input.spans[i], f.dead, f.live);
        }
    }
    const double serviceFactors[3][2] = {{1.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}};
    for (std::size_t s = 0; s < serviceKinds.size(); ++s) {
        const double* f = serviceFactors[serviceKinds[s]];
        for (int i = 0; i < n; ++i) {
            values[(factoredCount + s) * n + i] = loadValues(input.spans[i], f[0], f[1]);
        }
    }

    std::vector<SpanEndActions> ends(values.size());
    BeamAnalysisResult result;
    std::vector<CaseResult> solved = solveStates(
        input, model, states, values, static_cast<int>(factoredCount), ends, result.envelope);

    result.freeDofCount = model.freeCount;
    result.spanCurves = model.curves;
    ServiceCase* service[3] = {&result.service.dead, &result.service.live, &result.service.total};
    for (std::size_t s = 0; s < serviceKinds.size(); ++s) {
        *service[serviceKinds[s]] = withDeflections(std::move(solved[factoredCount + s]), model,
                                                    values, ends, (factoredCount + s) * n);
    }
    solved.resize(factoredCount);
    result.cases = std::move(solved);
    if (withFactoredCases) {
        buildEnvelope(result.cases, n, result.envelope);
    } else {
        result.envelope = Envelope{};
    }
    return result;
}

} // namespace

std::string validateBeamInput(const BeamAnalysisInput& input) {
    const std::size_t n = input.spans.size();
    if (n == 0) {
        return "The beam has no spans.";
    }
    if (n > static_cast<std::size_t>(kMaxSpans)) {
        return fmt::format("A beam has at most {} spans; this one has {}.", kMaxSpans, n);
    }
    if (input.supports.size() != n + 1) {
        return fmt::format("A beam of {} spans needs {} supports, not {}.", n, n + 1,
                           input.supports.size());
    }
    if (!finite(input.elasticModulusKgCm2) || input.elasticModulusKgCm2 <= 0.0) {
        return "The modulus of elasticity of the concrete must be greater than zero.";
    }
    if (std::string problem = checkScheme(input.caseScheme); !problem.empty()) {
        return problem;
    }
    for (int p = 0; p < 2; ++p) {
        if (!finite(input.factors.dead[p]) || !finite(input.factors.live[p])) {
            return "The load factors must be numbers.";
        }
    }
    for (std::size_t i = 0; i < n; ++i) {
        const BeamSpan& span = input.spans[i];
        const std::size_t no = i + 1;
        if (!finite(span.lengthCm) || span.lengthCm <= 0.0) {
            return fmt::format("The length of span {} must be greater than zero.", no);
        }
        if (!finite(span.inertiaCm4) || span.inertiaCm4 <= 0.0) {
            return fmt::format("The section of span {} has no stiffness: its moment of inertia "
                               "must be greater than zero.",
                               no);
        }
        const double l = span.lengthCm;
        const double slack = l * core::kRelativeEqual;
        for (const SpanLoad& load : span.loads) {
            if (load.present && (!finite(load.deadValue) || !finite(load.liveValue) ||
                                 !finite(load.startCm) || !finite(load.lengthCm))) {
                return fmt::format("A load of span {} is not a number.", no);
            }
        }
        const SpanLoad& partial = span.loads[loadIndex(LoadKind::PartialUniform)];
        if (partial.present) {
            if (partial.startCm < 0.0 || partial.lengthCm < 0.0) {
                return fmt::format("The partial load of span {} must start on the span and "
                                   "have a length of zero or more.",
                                   no);
            }
            if (partial.startCm + partial.lengthCm > l + slack) {
                return fmt::format("The partial load of span {} reaches past the end of the "
                                   "span.",
                                   no);
            }
        }
        const SpanLoad& point = span.loads[loadIndex(LoadKind::Concentrated)];
        if (point.present && (point.startCm < 0.0 || point.startCm > l + slack)) {
            return fmt::format("The concentrated load of span {} lies outside the span.", no);
        }
    }
    return {};
}

SupportedRun supportedRun(const BeamAnalysisInput& input, int span) {
    const int n = static_cast<int>(input.spans.size());
    auto supported = [&](int j) {
        return input.supports[static_cast<std::size_t>(j)].restrainsDisplacement;
    };
    SupportedRun run;
    run.firstJoint = span;
    while (run.firstJoint > 0 && !supported(run.firstJoint)) {
        --run.firstJoint;
    }
    run.lastJoint = span + 1;
    while (run.lastJoint < n && !supported(run.lastJoint)) {
        ++run.lastJoint;
    }
    run.overhang = !supported(run.firstJoint) || !supported(run.lastJoint);
    for (int i = run.firstJoint; i < run.lastJoint; ++i) {
        run.lengthCm += input.spans[static_cast<std::size_t>(i)].lengthCm;
    }
    return run;
}

BeamAnalysisResult analyzeBeam(const BeamAnalysisInput& input) {
    return analyze(input, true, kAllServiceStates, {});
}

BeamAnalysisResult caseAnalysis(const BeamAnalysisResult& all, std::size_t caseIndex) {
    ORVAK_ASSERT(all.ok() && caseIndex < all.cases.size());
    BeamAnalysisResult one;
    one.freeDofCount = all.freeDofCount;
    one.service = all.service;
    one.spanCurves = all.spanCurves;
    one.cases.push_back(all.cases[caseIndex]);
    const CaseResult& c = one.cases.front();
    buildEnvelope(one.cases, static_cast<int>(c.spans.size()), one.envelope);
    Envelope& e = one.envelope;
    e.stationMomentMaxKgCm.reserve(c.stations.size());
    for (const Station& s : c.stations) {
        e.stationMomentMaxKgCm.push_back(s.momentKgCm);
        e.stationShearMaxKg.push_back(s.shearKg);
    }
    e.stationMomentMinKgCm = e.stationMomentMaxKgCm;
    e.stationShearMinKg = e.stationShearMaxKg;
    return one;
}

BeamAnalysisResult analyzeServiceLoads(const BeamAnalysisInput& input, unsigned states,
                                       std::shared_ptr<const SpanCurves> curves) {
    return analyze(input, false, states & kAllServiceStates, std::move(curves));
}

} // namespace orvak::beams
