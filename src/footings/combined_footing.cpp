// Combined footing: a beam on a uniform soil reaction carrying two column loads (statics of
// the free body from the left end), one-way shear at d from the face with the largest shear,
// two-way shear at d/2 from each column (ACI 318 11.12), and the cross strips of ACI 318 15.4.
#include "footings/combined_footing.h"

#include <algorithm>
#include <cmath>

#include "core/tolerances.h"

namespace orvak::footings {

namespace {

/// The real extent of a column along x and across (the round and square types: a both ways).
double extentAlong(const FootingColumn& c) {
    return typed((isCircular(c) || c.type == 6) ? c.dims[0] : c.dims[1]);
}

void checkData(CombinedFootingResult& r) {
    r.status = FootingStatus::CheckData;
    r.failures.push_back("Check your data");
}

/// The moment at x from the left end (positive: tension at the bottom face) of the footing
/// under the line load w, with the column loads at their centres.
double momentAt(double x, double w, double pu1, double cx1, double pu2, double cx2) {
    return w * x * x / 2.0 - pu1 * std::max(0.0, x - cx1) - pu2 * std::max(0.0, x - cx2);
}

/// The punching capacity of a column at depth d: the section at d/2 from its faces, cut off
/// where it runs out over the footing's edges (a side on or beyond an edge is no side), less
/// the soil pressure on the area inside it.
PunchPass punching(double d, double cx, const FaceSizes& face, double A, double B, double vc,
                   double qu) {
    const double x0 = cx - face.alongCm / 2.0 - d / 2.0;
    const double x1 = cx + face.alongCm / 2.0 + d / 2.0;
    const double y0 = A / 2.0 - face.acrossCm / 2.0 - d / 2.0;
    const double y1 = A / 2.0 + face.acrossCm / 2.0 + d / 2.0;
    const double tol = core::kAbsoluteEqual * std::max(A, B);
    const double xa = std::max(0.0, x0);
    const double xb = std::min(B, x1);
    const double ya = std::max(0.0, y0);
    const double yb = std::min(A, y1);
    double perimeter = 0.0;
    const bool leftIn = x0 > tol;
    const bool rightIn = x1 < B - tol;
    perimeter += leftIn ? (yb - ya) : 0.0;
    perimeter += rightIn ? (yb - ya) : 0.0;
    perimeter += y0 > tol ? (xb - xa) : 0.0;
    perimeter += y1 < A - tol ? (xb - xa) : 0.0;
    PunchPass p;
    p.dCm = d;
    p.edge = !leftIn || !rightIn;
    p.psKg = vc * perimeter * d - qu * (xb - xa) * (yb - ya);
    return p;
}

/// Deepens d in 2 cm steps from `d` until the column's punching capacity carries its load.
double punchColumn(double d, double puKg, double cx, const FaceSizes& face, double A, double B,
                   CombinedFootingResult& r, ColumnPunching& out, bool& exhausted) {
    for (int step = 0;; ++step) {
        out.passes.push_back(punching(d, cx, face, A, B, r.vcPunchKgCm2, r.quKgCm2));
        if (out.passes.back().psKg >= puKg) {
            return d;
        }
        if (step == kMaxPunchSteps) {
            exhausted = true;
            return d;
        }
        d += kPunchStepCm;
    }
}

} // namespace

CombinedFootingResult designCombinedFooting(const CombinedFootingInput& in,
                                            std::span<const bars::BarProperties> barTable) {
    CombinedFootingResult r;
    const FootingSettings& s = in.settings;
    const FootingColumn& c1 = in.column1;
    const FootingColumn& c2 = in.column2;
    if (!settingsUsable(s) || !columnUsable(c1) || !columnUsable(c2) || !(c1.puT > 0.0f) ||
        !(c2.puT >= 0.0f)) {
        checkData(r);
        return r;
    }
    const double cx1 = typed(c1.cxCm);
    const double cx2 = typed(c2.cxCm);
    const double e1 = extentAlong(c1);
    const double e2 = extentAlong(c2);
    // Column 1 inside the left end, and the two columns apart, on one line.
    if (cx1 - e1 / 2.0 < 0.0 || cx1 + e1 / 2.0 > cx2 - e2 / 2.0) {
        checkData(r);
        return r;
    }
    r.limits = steelLimits(s);
    const double fc = s.Fc;
    const double lf = typed(s.LF);
    const double pu1 = typed(c1.puT) * 1000.0;
    const double pu2 = typed(c2.puT) * 1000.0;
    const double soil = typed(s.soilCapacity);
    const double cover = typed(s.coverCm);

    // Plan: the resultant at mid-length, the width from the soil capacity.
    r.service1Kg = pu1 / lf;
    r.service2Kg = pu2 / lf;
    r.areaCm2 = (r.service1Kg + r.service2Kg) / soil;
    r.ex1Cm = pu2 * (cx2 - cx1) / (pu1 + pu2);
    r.bRawCm = (r.ex1Cm + cx1) * 2.0;
    r.aRawCm = r.areaCm2 / r.bRawCm;
    r.bCm = roundUpToFive(r.bRawCm);
    // A footing is never narrower than its columns.
    r.aCm = roundUpToFive(std::max({r.aRawCm, typed(c1.dims[0]), typed(c2.dims[0])}));
    r.planComputed = true;
    const double A = r.aCm;
    const double B = r.bCm;
    if (A > kMaxFootingSideCm || B > kMaxFootingSideCm ||
        cx2 + e2 / 2.0 > B + core::kSingleRounding * B) {
        checkData(r);
        return r;
    }

    // A uniform pressure: the rounding of B leaves the resultant within 2.5 cm of the centre.
    r.abCm2 = A * B;
    r.pKg = r.service1Kg + r.service2Kg;
    const double q = r.pKg / r.abCm2;
    r.q = {q, q, q, q};
    for (int i = 0; i < 4; ++i) {
        if (q > soil * (1.0 + core::kRelativeEqual)) {
            r.cornersOver.push_back(i + 1);
        }
        if (q < 0.0) {
            r.cornersTension.push_back(i + 1);
        }
    }
    r.qMax = q;

    // Shears and moments of the footing as a beam.
    const FaceSizes f1 = faceSizes(c1);
    const FaceSizes f2 = faceSizes(c2);
    r.quKgCm2 = (pu1 + pu2) / r.abCm2;
    const double w = r.quKgCm2 * A;
    r.v1ltKg = w * (cx1 - f1.alongCm / 2.0);
    r.v1rtKg = w * (cx1 + f1.alongCm / 2.0) - pu1;
    r.v2ltKg = w * (cx2 - f2.alongCm / 2.0) - pu1;
    r.v2rtKg = w * (cx2 + f2.alongCm / 2.0) - (pu1 + pu2);
    r.vmaxKg =
        std::max({std::abs(r.v1ltKg), std::abs(r.v1rtKg), std::abs(r.v2ltKg), std::abs(r.v2rtKg)});
    const auto m = [&](double x) { return momentAt(x, w, pu1, cx1, pu2, cx2); };
    const double mFace1R = m(cx1 + f1.alongCm / 2.0);
    const double mFace2L = m(cx2 - f2.alongCm / 2.0);
    r.mUnderKgCm = std::max({std::abs(m(cx1 - f1.alongCm / 2.0)), std::abs(mFace1R),
                             std::abs(mFace2L), std::abs(m(cx2 + f2.alongCm / 2.0))});
    // Between the columns the shear w·x − Pu1 is zero at x = Pu1 / w (w > 0). With no load on
    // column 2 that point is the far end, and the moment between the columns is largest at a
    // face.
    const double x0 = pu1 / w;
    r.zeroShearBetween = x0 > cx1 && x0 < cx2;
    if (r.zeroShearBetween) {
        r.zeroShearCm = x0;
        r.mBetweenKgCm = std::abs(m(x0));
    } else {
        r.mBetweenKgCm = std::max(std::abs(mFace1R), std::abs(mFace2L));
    }

    // One-way shear at d from the face: Vmax − Qu·A·d = Vc·A·d.
    r.vcBeamKgCm2 = 0.53 * 0.85 * std::sqrt(fc);
    r.dBeamCm = r.vmaxKg / (r.quKgCm2 * A + r.vcBeamKgCm2 * A);
    r.dStartCm = roundUpToFive(std::max(typed(s.minDepthCm), r.dBeamCm));

    // Two-way shear, column 1 and then column 2 from the depth column 1 needed.
    r.vcPunchKgCm2 = 1.06 * 0.85 * std::sqrt(fc);
    r.punch1.edgeDistanceCm = cx1 - f1.alongCm / 2.0;
    r.punch2.edgeDistanceCm = B - (cx2 + f2.alongCm / 2.0);
    double d = punchColumn(r.dStartCm, pu1, cx1, f1, A, B, r, r.punch1, r.punchingExhausted);
    if (!r.punchingExhausted) {
        d = punchColumn(d, pu2, cx2, f2, A, B, r, r.punch2, r.punchingExhausted);
    }
    r.dCm = d;
    r.hCm = d + cover;
    r.beamShearUnsafe =
        r.vmaxKg - r.quKgCm2 * A * d > r.vcBeamKgCm2 * A * d * (1.0 + core::kRelativeEqual);

    // Steel: the long direction for the largest moment along the footing, over the width A;
    // a cross strip under each column, the column's load spread over the width and the strip
    // the column's side and 0.75 d either side of it, within the footing's ends.
    const auto stripWidth = [&](double cx, const FaceSizes& f, double dd) {
        const double lo = std::max(0.0, cx - f.alongCm / 2.0 - 0.75 * dd);
        const double hi = std::min(B, cx + f.alongCm / 2.0 + 0.75 * dd);
        return hi - lo;
    };
    const double w1 = std::max(0.0, (A - f1.acrossCm) / 2.0);
    const double w2 = std::max(0.0, (A - f2.acrossCm) / 2.0);
    // The moment along the footing is a quadratic between the loads; its extremes lie at the
    // faces and where the shear is zero (between the columns, and beyond column 2). A
    // positive moment (the soil pushing up) pulls the bottom, a negative one the top.
    {
        std::vector<double> at = {cx1 - f1.alongCm / 2.0, cx1 + f1.alongCm / 2.0,
                                  cx2 - f2.alongCm / 2.0, cx2 + f2.alongCm / 2.0};
        if (r.zeroShearBetween) {
            at.push_back(r.zeroShearCm);
        }
        const double x3 = (pu1 + pu2) / w;
        if (x3 > cx2 && x3 < B) {
            at.push_back(x3);
        }
        for (const double x : at) {
            const double mx = m(std::clamp(x, 0.0, B));
            r.mSaggingKgCm = std::max(r.mSaggingKgCm, mx);
            r.mHoggingKgCm = std::max(r.mHoggingKgCm, -mx);
        }
    }
    r.longAtTop = r.mHoggingKgCm >= r.mSaggingKgCm;
    const double mLong = std::max({r.mUnderKgCm, r.mBetweenKgCm, r.mSaggingKgCm, r.mHoggingKgCm});
    const double mOther = r.longAtTop ? r.mSaggingKgCm : r.mHoggingKgCm;
    double dd = d;
    for (int step = 0;; ++step) {
        r.steelLong =
            designSteel(0.0, mLong, A, dd, A - 2.0 * cover, B - 2.0 * cover, s, r.limits, barTable);
        r.steelOther = designSteel(0.0, mOther, A, dd, A - 2.0 * cover, B - 2.0 * cover, s,
                                   r.limits, barTable);
        const double s1 = stripWidth(cx1, f1, dd);
        const double s2 = stripWidth(cx2, f2, dd);
        r.strip1 = designSteel(w1, pu1 / A * w1 * w1 / 2.0, s1, dd, s1, A - 2.0 * cover, s,
                               r.limits, barTable);
        r.strip2 = designSteel(w2, pu2 / A * w2 * w2 / 2.0, s2, dd, s2, A - 2.0 * cover, s,
                               r.limits, barTable);
        bool shallow = false;
        double worst = 0.0;
        for (const SteelDirection* sd : {&r.steelLong, &r.steelOther, &r.strip1, &r.strip2}) {
            if (sd->tooShallow(r.limits)) {
                shallow = true;
                worst = std::max(worst, DeepenPass::ratioOf(*sd, s));
            }
        }
        if (!shallow) {
            break;
        }
        if (step == kMaxDeepenSteps) {
            r.deepenExhausted = true;
            break;
        }
        r.deepenPasses.push_back({dd, worst});
        dd += kDeepenStepCm;
    }
    r.finalDCm = dd;
    r.finalHCm = dd + cover;

    if (!r.cornersOver.empty()) {
        r.failures.push_back("Pressure exceeds safe bearing capacity");
    }
    if (r.beamShearUnsafe) {
        r.failures.push_back("Unsafe beam shear");
    }
    if (r.punchingExhausted) {
        r.failures.push_back("Unsafe punching shear");
    }
    if (r.deepenExhausted) {
        r.failures.push_back("Steel ratio above RowMax");
    }
    if (!r.steelLong.bars.found || !r.steelOther.bars.found || !r.strip1.bars.found ||
        !r.strip2.bars.found) {
        r.failures.push_back("No bars of the table fit the steel area");
    }
    r.status = r.failures.empty() ? FootingStatus::Designed : FootingStatus::ChecksFailed;
    return r;
}

FootingSummary CombinedFootingResult::summary() const {
    FootingSummary sum;
    sum.status = status;
    sum.failures = failures;
    if (status == FootingStatus::CheckData) {
        return sum;
    }
    sum.aCm = aCm;
    sum.bCm = bCm;
    sum.hCm = finalHCm;
    sum.barsY = steelLong.bars;
    sum.barsX = strip2.muKgCm > strip1.muKgCm ? strip2.bars : strip1.bars;
    sum.barSets = {
        {longAtTop ? "Top bars, long direction" : "Bottom bars, long direction", steelLong.bars},
        {longAtTop ? "Bottom bars, long direction" : "Top bars, long direction", steelOther.bars},
        {"Bottom bars across, under column 1", strip1.bars},
        {"Bottom bars across, under column 2", strip2.bars}};
    return sum;
}

} // namespace orvak::footings
