// Isolated footing: plan from the soil capacity, linear corner pressures (P/A ± M·c/I), the
// depth from one-way shear at d and two-way shear at d/2 from the column faces (ACI 318
// 11.12), and the cantilever moments at the column faces (ACI 318 15.4).
#include "footings/isolated_footing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/tolerances.h"

namespace orvak::footings {

namespace {

using std::numbers::pi;

/// The column's real extent along y (a) and along x (b; a for the round and square types).
struct Extent {
    double yCm = 0.0;
    double xCm = 0.0;
};

Extent extentOf(const FootingColumn& c) {
    const double a = typed(c.dims[0]);
    if (isCircular(c) || c.type == 6) {
        return {a, a};
    }
    return {a, typed(c.dims[1])};
}

/// The ratio of the longer to the shorter column side (1 for the round and square types).
double sideRatio(const FootingColumn& c) {
    const Extent e = extentOf(c);
    return std::max(e.yCm, e.xCm) / std::min(e.yCm, e.xCm);
}

/// The longer of the two distances from a face to the footing's edge along one direction,
/// the column centred at `centreCm` with `faceCm` the side that places its faces.
double longerOverhang(double sideCm, double centreCm, double faceCm) {
    return std::max(centreCm - faceCm / 2.0, sideCm - centreCm - faceCm / 2.0);
}

void checkData(IsolatedFootingResult& r) {
    r.status = FootingStatus::CheckData;
    r.failures.push_back("Check your data");
}

} // namespace

IsolatedFootingResult designIsolatedFooting(const IsolatedFootingInput& in,
                                            std::span<const bars::BarProperties> barTable) {
    IsolatedFootingResult r;
    const FootingSettings& s = in.settings;
    const FootingColumn& col = in.column;
    if (!settingsUsable(s) || !columnUsable(col) || !(col.puT > 0.0f) || col.cxCm < 0.0f ||
        col.cyCm < 0.0f) {
        checkData(r);
        return r;
    }
    r.limits = steelLimits(s);
    const double fc = s.Fc;
    const double lf = typed(s.LF);
    const double pu = typed(col.puT) * 1000.0;
    const double soil = typed(s.soilCapacity);
    const double cover = typed(s.coverCm);

    // Plan: the area the service load needs on the soil.
    r.serviceLoadKg = pu / lf;
    r.areaCm2 = r.serviceLoadKg / soil;
    const Extent ext = extentOf(col);
    if (col.type == 1) {
        // (a + 2x)(b + 2x) = Area: 4x² + 2(a + b)x + ab − Area = 0. The root's term is
        // 4(a − b)² + 16 Area, never negative; a column that alone covers the area gives a
        // negative x, and a footing is never narrower than its column.
        r.rectangularPlan = true;
        const double a = ext.yCm;
        const double b = ext.xCm;
        const double root = 4.0 * (a + b) * (a + b) - 16.0 * (a * b - r.areaCm2);
        r.projectionCm = std::max(0.0, (-2.0 * (a + b) + std::sqrt(std::max(0.0, root))) / 8.0);
        r.aRawCm = a + 2.0 * r.projectionCm;
        r.bRawCm = b + 2.0 * r.projectionCm;
    } else {
        const double side = std::max({std::sqrt(r.areaCm2), ext.yCm, ext.xCm});
        r.aRawCm = side;
        r.bRawCm = side;
    }
    r.aCm = roundUpToFive(r.aRawCm);
    r.bCm = roundUpToFive(r.bRawCm);
    const double A = r.aCm;
    const double B = r.bCm;
    // The column stands Cy and Cx from the edges to its faces; 0 places it in the middle.
    r.cyCm = col.cyCm > 0.0f ? typed(col.cyCm) : (A - ext.yCm) / 2.0;
    r.cxCm = col.cxCm > 0.0f ? typed(col.cxCm) : (B - ext.xCm) / 2.0;
    if (A > kMaxFootingSideCm || B > kMaxFootingSideCm ||
        r.cyCm + ext.yCm > A + core::kSingleRounding * A ||
        r.cxCm + ext.xCm > B + core::kSingleRounding * B) {
        checkData(r);
        return r;
    }

    // Corner pressures under the service load and moments, on the rounded plan.
    r.ixCm4 = B * A * A * A / 12.0;
    r.iyCm4 = A * B * B * B / 12.0;
    const double yc = r.cyCm + ext.yCm / 2.0;
    const double xc = r.cxCm + ext.xCm / 2.0;
    r.eyCm = yc - A / 2.0;
    r.exCm = xc - B / 2.0;
    r.mxKgCm = r.serviceLoadKg * r.eyCm + typed(col.muxTm) * 1.0e5 / lf;
    r.myKgCm = r.serviceLoadKg * r.exCm + typed(col.muyTm) * 1.0e5 / lf;
    const double mean = r.serviceLoadKg / (A * B);
    const double fy = r.mxKgCm * (A / 2.0) / r.ixCm4;
    const double fx = r.myKgCm * (B / 2.0) / r.iyCm4;
    r.q = {mean + fy - fx, mean - fy - fx, mean - fy + fx, mean + fy + fx};
    for (int i = 0; i < 4; ++i) {
        const double qi = r.q[static_cast<std::size_t>(i)];
        if (qi > soil * (1.0 + core::kRelativeEqual)) {
            r.cornersOver.push_back(i + 1);
        }
        if (qi < -core::kRelativeEqual * mean) {
            r.cornersTension.push_back(i + 1);
        }
    }
    r.qMax = *std::max_element(r.q.begin(), r.q.end());

    // One-way shear at d from the face: Qu (Lc − d) = Vu d over a unit strip.
    const FaceSizes face = faceSizes(col);
    r.vuKgCm2 = 0.53 * 0.85 * std::sqrt(fc);
    r.lcYCm = std::max(0.0, longerOverhang(A, yc, face.acrossCm));
    r.lcXCm = std::max(0.0, longerOverhang(B, xc, face.alongCm));
    r.lcCm = std::max(r.lcYCm, r.lcXCm);
    r.quKgCm2 = r.qMax * lf;
    r.dBeamCm = r.lcCm * r.quKgCm2 / (r.vuKgCm2 + r.quKgCm2);
    const double dStart = std::max(typed(s.minDepthCm), r.dBeamCm);

    // Two-way shear at d/2 from the faces: Vc (perimeter + 4d) d = Pu, or Vc pi (D + d) d.
    r.betaC = sideRatio(col);
    r.vcRawKgCm2 = 0.53 * 0.85 * (1.0 + 2.0 / r.betaC) * std::sqrt(fc);
    r.vcKgCm2 = std::min(r.vcRawKgCm2, 1.06 * 0.85 * std::sqrt(fc));
    const bool round = isCircular(col);
    const double perimeter = round ? pi * ext.yCm : 2.0 * (ext.yCm + ext.xCm);
    r.a1 = (round ? pi : 4.0) * r.vcKgCm2;
    r.b1 = r.vcKgCm2 * perimeter;
    r.c1 = pu;
    r.dPunchCm = (-r.b1 + std::sqrt(r.b1 * r.b1 + 4.0 * r.a1 * r.c1)) / (2.0 * r.a1);
    r.dCm = roundUpToFive(std::max(dStart, r.dPunchCm));
    r.hCm = r.dCm + cover;
    r.hPunchCm = r.dPunchCm + cover;
    const double d = r.dCm;
    r.psKg = (r.a1 * d + r.b1) * d;
    r.punchingUnsafe = r.psKg < pu * (1.0 - core::kRelativeEqual);
    r.beamShearUnsafe = r.quKgCm2 * (r.lcCm - d) > r.vuKgCm2 * d * (1.0 + core::kRelativeEqual);

    // Bottom steel at the column faces; a ratio above RowMax deepens the footing.
    r.lCentredCm = (A - ext.yCm) / 2.0;
    r.wCentredCm = (B - ext.xCm) / 2.0;
    double dd = d;
    for (int step = 0;; ++step) {
        const double muY = r.quKgCm2 * r.lcYCm * r.lcYCm / 2.0 * B;
        const double muX = r.quKgCm2 * r.lcXCm * r.lcXCm / 2.0 * A;
        r.steelY = designSteel(r.lcYCm, muY, B, dd, B - 2.0 * cover, A - 2.0 * cover, s, r.limits,
                               barTable);
        r.steelX = designSteel(r.lcXCm, muX, A, dd, A - 2.0 * cover, B - 2.0 * cover, s, r.limits,
                               barTable);
        const bool yShallow = r.steelY.tooShallow(r.limits);
        const bool xShallow = r.steelX.tooShallow(r.limits);
        if (!yShallow && !xShallow) {
            break;
        }
        if (step == kMaxDeepenSteps) {
            r.deepenExhausted = true;
            break;
        }
        r.deepenPasses.push_back({dd, std::max(yShallow ? DeepenPass::ratioOf(r.steelY, s) : 0.0,
                                               xShallow ? DeepenPass::ratioOf(r.steelX, s) : 0.0)});
        dd += kDeepenStepCm;
    }
    r.finalDCm = dd;
    r.finalHCm = dd + cover;

    if (!r.cornersOver.empty()) {
        r.failures.push_back("Pressure exceeds safe bearing capacity");
    }
    if (!r.cornersTension.empty()) {
        r.failures.push_back("Tension stresses at corners");
    }
    if (r.beamShearUnsafe) {
        r.failures.push_back("Unsafe beam shear");
    }
    if (r.punchingUnsafe) {
        r.failures.push_back("Unsafe punching shear");
    }
    if (r.deepenExhausted) {
        r.failures.push_back("Steel ratio above RowMax");
    }
    if (!r.steelY.bars.found || !r.steelX.bars.found) {
        r.failures.push_back("No bars of the table fit the steel area");
    }
    r.status = r.failures.empty() ? FootingStatus::Designed : FootingStatus::ChecksFailed;
    return r;
}

FootingSummary IsolatedFootingResult::summary() const {
    FootingSummary sum;
    sum.status = status;
    sum.failures = failures;
    if (status == FootingStatus::CheckData) {
        return sum;
    }
    sum.aCm = aCm;
    sum.bCm = bCm;
    sum.hCm = finalHCm;
    sum.barsY = steelY.bars;
    sum.barsX = steelX.bars;
    sum.barSets = {{"Bottom bars, Y direction", steelY.bars},
                   {"Bottom bars, X direction", steelX.bars}};
    return sum;
}

} // namespace orvak::footings
