// Design of one column group: the four stages in their order, each leaving its printed values
// in the result. ACI strength design: moment magnifier, minimum eccentricity, 0.85 Fc stress
// block over beta1·c, steel strain scale Es·0.003 = 6100 kg/cm².
#include "columns/column_design.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include "core/concrete.h"
#include "core/counts.h"
#include "core/error.h"
#include "core/tolerances.h"

namespace orvak::columns {

namespace {

constexpr double kKgPerT = 1000.0;
constexpr double kKgCmPerTm = 100000.0;

// Depths of the bars below the compression face.
std::vector<double> barDepths(const ColumnSection& s, Direction d, std::span<const Point> bars) {
    std::vector<double> out;
    for (const Point& p : bars) {
        out.push_back(d == Direction::X ? s.extentX - p.x : s.extentY - p.y);
    }
    return out;
}

// The point of the interaction curve of the section at eccentricity e (cm) from the
// centroid: the neutral axis depth c found by bisection on M − e·P, from a sliver of the
// section to fifty times its depth (where the whole section is compressed). Empty when no c
// gives that eccentricity (smaller than the section's least, for an unsymmetric section).
std::optional<SectionForce> pointAtEccentricity(const ColumnSection& s, Direction d,
                                                std::span<const Point> bars, double barArea,
                                                double fc, double fy, double eCm) {
    const double h = s.depth(d);
    double lo = 1e-6 * h;
    double hi = 50.0 * h;
    const SectionForce top = sectionForce(s, d, bars, barArea, fc, fy, hi);
    if (!(top.pKg > 0.0) || top.mKgCm - eCm * top.pKg > 0.0) {
        return std::nullopt;
    }
    for (int i = 0; i < 200 && hi - lo > 1e-10 * h; ++i) {
        const double mid = (lo + hi) / 2.0;
        const SectionForce f = sectionForce(s, d, bars, barArea, fc, fy, mid);
        if (!(f.pKg > 0.0) || f.mKgCm - eCm * f.pKg > 0.0) {
            lo = mid;
        } else {
            hi = mid;
        }
    }
    const SectionForce f = sectionForce(s, d, bars, barArea, fc, fy, hi);
    if (!(f.pKg > 0.0) || std::abs(f.mKgCm / f.pKg - eCm) > 1e-6 * std::max(eCm, h)) {
        return std::nullopt;
    }
    return f;
}

// The bisection on the steel ratio between the least ratio and 8 %, each pass a point of the
// table of at most 20. The capacity grows with the ratio; a pass converges when it carries
// the target and exceeds it by no more than the tolerance (so the ratio kept is always on the
// safe side).
RatioSearch searchRatio(double rhoMin, double targetKg, double tolerance,
                        const std::function<std::optional<SectionForce>(double)>& capacity) {
    RatioSearch r;
    r.targetT = targetKg / kKgPerT;
    const auto pass = [&](double rho) -> std::optional<double> {
        const auto f = capacity(rho);
        if (!f) {
            return std::nullopt;
        }
        r.passes.push_back({rho, f->pKg / kKgPerT, f->mKgCm / kKgCmPerTm});
        return f->pKg;
    };
    const auto atMin = pass(rhoMin);
    if (!atMin) {
        r.outcome = RatioSearch::Outcome::NoEccentricity;
        return r;
    }
    if (*atMin >= targetKg) {
        r.outcome = RatioSearch::Outcome::BelowMinimum;
        r.rho = rhoMin;
        return r;
    }
    const auto atMax = pass(kMaxSteelRatio);
    if (!atMax) {
        r.outcome = RatioSearch::Outcome::NoEccentricity;
        return r;
    }
    if (*atMax < targetKg) {
        r.outcome = RatioSearch::Outcome::AboveMaximum;
        return r;
    }
    double lo = rhoMin, hi = kMaxSteelRatio;
    while (true) {
        if (static_cast<int>(r.passes.size()) >= kMaxSearchPoints) {
            r.outcome = RatioSearch::Outcome::TooManyPoints;
            return r;
        }
        const double mid = (lo + hi) / 2.0;
        const auto p = pass(mid);
        if (!p) {
            r.outcome = RatioSearch::Outcome::NoEccentricity;
            return r;
        }
        if (*p >= targetKg) {
            hi = mid;
            if ((*p - targetKg) / targetKg <= tolerance) {
                r.outcome = RatioSearch::Outcome::Converged;
                r.rho = mid;
                return r;
            }
        } else {
            lo = mid;
        }
    }
}

double radiusOfGyration(const ColumnSection& s, Direction d) {
    // 0.3 h for rectangles and squares, 0.25 D for circles (ACI), sqrt(I/A) for the Tee, the
    // L and the cross, whose depth alone does not tell their stiffness.
    switch (s.type) {
    case SectionType::Rectangle:
    case SectionType::SquareSpiral:
        return 0.3 * s.depth(d);
    case SectionType::Circle:
    case SectionType::CircleTied:
        return 0.25 * s.depth(d);
    default:
        return std::sqrt((d == Direction::X ? s.iyCm4 : s.ixCm4) / s.areaCm2);
    }
}

// The larger end moment by size is M2.
EndMoments ordered(const EndMoments& m) {
    return std::abs(m.m2) >= std::abs(m.m1) ? m : EndMoments{m.m1, m.m2};
}

double endRatio(const EndMoments& m) {
    return m.m2 == 0.0f ? 0.0 : static_cast<double>(m.m1) / m.m2;
}

} // namespace

SectionForce sectionForce(const ColumnSection& s, Direction d, std::span<const Point> bars,
                          double barArea, double fc, double fy, double c) {
    const double b1 = core::beta1(fc);
    const double ab = b1 * c;
    const Zone zone = compressionZone(s, d, ab);
    const double yc = s.centroidDepth(d);
    SectionForce f;
    const double cc = 0.85 * fc * zone.areaCm2;
    f.pKg = cc;
    f.mKgCm = cc * (yc - zone.centroidDepthCm);
    for (const double di : barDepths(s, d, bars)) {
        double fs = core::kBalancedStrainStressKgCm2 * (c - di) / c;
        fs = std::clamp(fs, -fy, fy);
        if (di < std::min(ab, s.depth(d))) {
            fs -= 0.85 * fc;
        }
        f.pKg += barArea * fs;
        f.mKgCm += barArea * fs * (yc - di);
    }
    return f;
}

BarSet chooseColumnBars(const ColumnSection& s, double areaCm2, double cover,
                        std::span<const bars::BarProperties> table) {
    BarSet best;
    const double line = barLineLengthCm(s, cover);
    for (const bars::BarProperties& bar : table) {
        const double db = bar.diameterMm;
        if (db < kMinColumnBarMm || db > kMaxColumnBarMm || !(bar.areaCm2 > 0.0f)) {
            continue;
        }
        const auto wanted =
            core::checkedCount(std::ceil(areaCm2 / bar.areaCm2 - core::kSingleRounding), 999);
        if (!wanted) {
            continue;
        }
        const int n = placeableBars(s, *wanted);
        const double clear = line / n - db / 10.0;
        if (clear + core::kAbsoluteEqual < std::max(kMinColumnClearCm, 1.5 * db / 10.0)) {
            continue;
        }
        const double provided = n * static_cast<double>(bar.areaCm2);
        if (!best.found || provided < best.areaCm2 - core::kAbsoluteEqual ||
            (std::abs(provided - best.areaCm2) <= core::kAbsoluteEqual && db > best.diameterMm)) {
            best = {true, n, db, provided};
        }
    }
    return best;
}

TransverseSteel transverseSteel(const ColumnGroup& g, const ColumnSection& s, double mainBarMm,
                                double cover) {
    TransverseSteel t;
    const double db = mainBarMm / 10.0;
    const double height = std::max(0.0, static_cast<double>(g.colLenCm));
    // Whole counts of ties or turns over heights up to 100 m: far below this limit.
    constexpr int kMaxCount = 1000000;
    t.spiral = s.type == SectionType::Circle || s.type == SectionType::SquareSpiral;
    if (!t.spiral) {
        t.diameterMm = mainBarMm <= kLargestBarOfSmallTiesMm ? kTieMm : kLargeTieMm;
        const double dt = t.diameterMm / 10.0;
        // The least dimension of the member: of a Tee, an L or a cross its thinnest part.
        double least = std::numeric_limits<double>::infinity();
        for (int i = 0; i < requiredDimensions(static_cast<int>(s.type)); ++i) {
            least = std::min(least, static_cast<double>(g.dims[static_cast<std::size_t>(i)]));
        }
        t.limitCm = std::min({16.0 * db, 48.0 * dt, least});
        // Ties are set out in whole centimetres, never farther apart than the limit.
        t.spacingCm = t.limitCm >= 1.0 ? std::floor(t.limitCm + core::kAbsoluteEqual) : t.limitCm;
        const auto spaces =
            core::checkedCount(std::ceil(height / t.spacingCm - core::kRelativeEqual), kMaxCount);
        t.countPerColumn = spaces ? *spaces + 1 : 0;
        // The tie's centre line wraps the bars: half a bar and half a tie outside their centres.
        const double offset = std::max(cover - (db + dt) / 2.0, dt / 2.0);
        const double hook = std::max(kTieHookDiameters * dt, kMinTieHookCm);
        t.lengthCm = std::ceil(barLineLengthCm(s, offset) + 2.0 * hook - core::kAbsoluteEqual);
        return t;
    }
    // Spiral: the core out to out of the spiral is the bar circle, a bar and two spiral bars.
    const double barCircle = std::min(s.extentX, s.extentY) - 2.0 * cover;
    const double fc = g.settings.Fc;
    const double fyt = g.settings.FYties;
    for (const double ds : kSpiralBarsMm) {
        const double dsCm = ds / 10.0;
        t.diameterMm = ds;
        t.coreDiameterCm = barCircle + db + 2.0 * dsCm;
        t.achCm2 = std::numbers::pi * t.coreDiameterCm * t.coreDiameterCm / 4.0;
        // ACI 318 volumetric ratio of a spiral, never below 0 for a core as large as the section.
        t.rhoS = std::max(0.0, 0.45 * (s.areaCm2 / t.achCm2 - 1.0) * fc / fyt);
        const double asp = std::numbers::pi * dsCm * dsCm / 4.0;
        // One turn's volume Asp·pi·Dc over the core's pi Dc²/4 per pitch: rho_s = 4 Asp/(Dc s).
        const double pitch = t.rhoS > 0.0 ? 4.0 * asp / (t.coreDiameterCm * t.rhoS)
                                          : std::numeric_limits<double>::infinity();
        t.spacingCm =
            std::floor(2.0 * std::min(pitch, kMaxSpiralClearCm + dsCm) + core::kAbsoluteEqual) /
            2.0;
        t.clearPitchHolds = t.spacingCm - dsCm >= kMinSpiralClearCm - core::kAbsoluteEqual;
        if (t.clearPitchHolds) {
            break;
        }
    }
    const double dsCm = t.diameterMm / 10.0;
    const auto turns = core::checkedCount(
        std::ceil(height / t.spacingCm - core::kRelativeEqual) + kSpiralEndTurns, kMaxCount);
    t.countPerColumn = turns ? *turns : 0;
    // One turn is the helix over a pitch round the spiral's centre line, Dc − ds across.
    const double around = std::numbers::pi * (t.coreDiameterCm - dsCm);
    t.lengthCm = std::ceil(std::hypot(around, t.spacingCm) - core::kAbsoluteEqual);
    return t;
}

ColumnDesignResult designColumn(const ColumnGroup& g,
                                std::span<const bars::BarProperties> barTable) {
    ORVAK_ASSERT(validateGroup(g).empty());
    ColumnDesignResult r;
    const ColumnSettings& set = g.settings;
    const std::size_t ti = static_cast<std::size_t>(std::clamp<int>(g.type, 1, 7) - 1);
    r.typeName = set.TypeNames[ti];
    r.coverCm = g.coverCm > 0.0f ? g.coverCm : set.Cover;
    r.section = columnSection(g.type, g.dims);
    if (!r.section) {
        r.status = ColumnStatus::MissingData;
        return r;
    }
    ORVAK_ASSERT(g.puT > 0.0f);
    const ColumnSection& s = *r.section;
    const double fc = set.Fc;
    const double fy = set.FY;
    const double pu = g.puT;
    const double phiType = set.PhiPercent[ti] / 100.0;
    const bool braced = set.Braced == 1;
    const double kl = set.KFactor * g.colLenCm;
    const EndMoments mx = ordered(g.x);
    const EndMoments my = ordered(g.y);
    r.biaxial = mx.m2 != 0.0f && my.m2 != 0.0f;

    // Stage 1: slenderness. The braced limit is 34 − 12 M1/M2 with M1/M2 = 0 when M2 is 0;
    // a column exactly at the limit is short.
    const auto slender = [&](Direction d, const EndMoments& m) {
        Slenderness sl;
        sl.rCm = radiusOfGyration(s, d);
        sl.klr = kl / sl.rCm;
        sl.limit = braced ? 34.0 - 12.0 * endRatio(m) : 22.0;
        sl.isLong = sl.klr > sl.limit;
        sl.over100 = sl.klr > 100.0;
        return sl;
    };
    r.slenderX = slender(Direction::X, mx);
    r.slenderY = slender(Direction::Y, my);
    if (r.slenderY.over100 || (g.secondAxis == 1 && r.slenderX.over100)) {
        r.problems.push_back("(K*L/r) > 100 " + g.name);
    }

    // Stage 2: moment magnification of a long column, direction by direction. The phi of the
    // magnifier is the type's; the creep ratio applies when the group's flag says so.
    r.ecKgCm2 = core::concreteModulus(fc);
    const double bd = g.secondAxis == 1 ? set.BdFactor : 0.0;
    const auto magnify = [&](Direction d, const EndMoments& m) {
        Magnification mg;
        if (!braced) {
            mg.cm = 1.0;
        } else if (m.m2 == 0.0f) {
            mg.cm = 0.6 + 0.5; // the deliberate value for a column without end moments
        } else {
            mg.cm = std::max(0.4, 0.6 + 0.5 * endRatio(m));
        }
        const double inertia = d == Direction::X ? s.iyCm4 : s.ixCm4;
        mg.eiKgCm2 = (r.ecKgCm2 * inertia / 2.5) / (1.0 + bd);
        mg.pcT = std::numbers::pi * std::numbers::pi * mg.eiKgCm2 / (kl * kl) / kKgPerT;
        if (pu >= phiType * mg.pcT) {
            mg.unstable = true;
            return mg;
        }
        mg.delta = std::max(1.0, mg.cm / (1.0 - pu / (phiType * mg.pcT)));
        mg.mMinTm = m.m1 * mg.delta;
        mg.mMaxTm = m.m2 * mg.delta;
        return mg;
    };
    EndMoments designX = mx, designY = my;
    if (r.slenderX.isLong) {
        r.magnifyX = magnify(Direction::X, mx);
        if (r.magnifyX->unstable) {
            r.status = ColumnStatus::Unstable;
            return r;
        }
        designX = {static_cast<float>(r.magnifyX->mMaxTm), static_cast<float>(r.magnifyX->mMinTm)};
    }
    if (r.slenderY.isLong) {
        r.magnifyY = magnify(Direction::Y, my);
        if (r.magnifyY->unstable) {
            r.status = ColumnStatus::Unstable;
            return r;
        }
        designY = {static_cast<float>(r.magnifyY->mMaxTm), static_cast<float>(r.magnifyY->mMinTm)};
    }

    // Stage 3: minimum eccentricity, e in cm from MU in t·m over Pu in t; the bound
    // 1.5 + 0.03 a in both directions.
    const auto eccentricity = [&](const EndMoments& m) {
        Eccentricity e;
        e.muTm = std::abs(m.m2);
        e.eCm = e.muTm * 100.0 / pu;
        e.minCm = 1.5 + 0.03 * g.dims[0];
        e.designCm = std::max(e.eCm, e.minCm);
        return e;
    };
    r.eccX = eccentricity(designX);
    if (my.m2 != 0.0f) {
        r.eccY = eccentricity(designY);
    }

    // Stage 4: the section for the axial load with the least steel.
    AxialDesign ax;
    ax.phi = phiType;
    ax.r = 1.0 - set.EccPercent[ti] / 100.0;
    ax.astMin = set.MinSteelPercent[ti] / 100.0;
    ax.acRequiredCm2 =
        (pu * kKgPerT / ax.phi) / (ax.r * (0.85 * fc * (1.0 - ax.astMin) + ax.astMin * fy));
    ax.acCm2 = s.areaCm2;
    ax.pdT = pu / ax.phi;
    // A section equal to the required area is accepted: the comparison allows the rounding of
    // the dimensions, which are singles.
    ax.tooSmall = ax.acCm2 < ax.acRequiredCm2 * (1.0 - core::kSingleRounding);
    if (ax.tooSmall) {
        r.axial = ax;
        r.status = ColumnStatus::SectionTooSmall;
        return r;
    }
    ax.astCm2 = ax.astMin * ax.acCm2;
    ax.bars = chooseColumnBars(s, ax.astCm2, r.coverCm, barTable);
    r.axial = ax;
    if (!ax.bars.found) {
        r.status = ColumnStatus::SectionTooSmall;
        return r;
    }

    // Stage 5: axial load with bending. The search spreads the steel over the bars the design
    // ends with: it starts on the fewest bars and is made again while the bars chosen for its
    // ratio are more.
    const double ag = s.areaCm2;
    const double tol = set.Tolerance;
    int count = minimumBars(s);
    for (int round = 0; round < 4; ++round) {
        const std::vector<Point> places = barPlaces(s, count, r.coverCm);
        if (places.empty()) {
            r.status = ColumnStatus::SectionTooSmall;
            return r;
        }
        const auto bend = [&](Direction d, const Eccentricity& e) {
            BendingDesign b;
            b.direction = d;
            b.barCount = count;
            b.muTm = pu * e.designCm / 100.0;
            b.pncT = pu / phiType;
            b.mncTm = b.muTm / phiType;
            b.pneqT = b.pncT + 10.0 * b.mncTm;
            b.hCm = s.depth(d);
            b.dCm = b.hCm - r.coverCm;
            b.pdT = b.pncT;
            b.mdTm = b.mncTm;
            // Balanced point with the least steel.
            const double barArea = ax.astMin * ag / count;
            BalancedPoint& bp = b.balanced;
            bp.cbCm = core::balancedTerm(fy) * b.dCm;
            bp.abCm = core::beta1(fc) * bp.cbCm;
            const SectionForce concrete = sectionForce(s, d, {}, 0.0, fc, fy, bp.cbCm);
            const SectionForce all = sectionForce(s, d, places, barArea, fc, fy, bp.cbCm);
            bp.sum1Kg = all.pKg - concrete.pKg;
            bp.sum2KgCm = all.mKgCm - concrete.mKgCm;
            bp.pnbT = all.pKg / kKgPerT;
            bp.mnbTm = all.mKgCm / kKgCmPerTm;
            bp.ebCm = all.pKg > 0.0 ? all.mKgCm / all.pKg : 0.0;
            const auto capacity = [&](double rho) {
                return pointAtEccentricity(s, d, places, rho * ag / count, fc, fy, e.designCm);
            };
            b.search = searchRatio(ax.astMin, pu * kKgPerT / phiType, tol, capacity);
            b.phi = phiType;
            b.rho = b.search.rho;
            // Strength reduction for small axial load, T = 0.1 Fc Ag (the code's transition):
            // phi rises from the type's towards 0.9 as Pu falls below T.
            b.tT = 0.1 * fc * ag / kKgPerT;
            if (b.search.found()) {
                b.phi = std::max(phiType, 0.9 - (0.9 - phiType) * pu / b.tT);
                if (b.phi > phiType + core::kRelativeEqual) {
                    b.second = searchRatio(ax.astMin, pu * kKgPerT / b.phi, tol, capacity);
                    b.rho = b.second->rho;
                }
            }
            b.requiredAreaCm2 = b.rho * ag;
            return b;
        };
        r.bendX = bend(Direction::X, r.eccX);
        const RatioSearch* last = r.bendX->second ? &*r.bendX->second : &r.bendX->search;
        if (!last->found()) {
            break;
        }
        double rho = r.bendX->rho;
        r.bendY.reset();
        if (r.eccY) {
            r.bendY = bend(Direction::Y, *r.eccY);
            last = r.bendY->second ? &*r.bendY->second : &r.bendY->search;
            if (!last->found()) {
                break;
            }
            rho = std::max(rho, r.bendY->rho);
        }
        r.biaxialCheck.reset();
        if (r.biaxial) {
            // Bresler: 1/Pni = 1/Pnx + 1/Pny − 1/Po at the two design eccentricities.
            const auto pni = [&](double ratio, BiaxialCheck* out) -> std::optional<SectionForce> {
                const double barArea = ratio * ag / count;
                const auto px =
                    pointAtEccentricity(s, Direction::X, places, barArea, fc, fy, r.eccX.designCm);
                const auto py =
                    pointAtEccentricity(s, Direction::Y, places, barArea, fc, fy, r.eccY->designCm);
                if (!px || !py) {
                    return std::nullopt;
                }
                const double as = ratio * ag;
                const double p0 = 0.85 * fc * (ag - as) + fy * as;
                const double inv = 1.0 / px->pKg + 1.0 / py->pKg - 1.0 / p0;
                if (!(inv > 0.0)) {
                    return std::nullopt;
                }
                if (out != nullptr) {
                    out->pnxT = px->pKg / kKgPerT;
                    out->pnyT = py->pKg / kKgPerT;
                    out->p0T = p0 / kKgPerT;
                    out->pniT = 1.0 / inv / kKgPerT;
                }
                return SectionForce{1.0 / inv, 0.0};
            };
            BiaxialCheck check;
            const double phi = std::min(r.bendX->phi, r.bendY->phi);
            if (!pni(rho, &check)) {
                r.bendX->search.outcome = RatioSearch::Outcome::NoEccentricity;
                break;
            }
            check.phiPniT = phi * check.pniT;
            check.holds = check.phiPniT >= pu * (1.0 - core::kSingleRounding);
            check.rho = rho;
            if (!check.holds) {
                check.search = searchRatio(rho, pu * kKgPerT / phi, tol,
                                           [&](double ratio) { return pni(ratio, nullptr); });
                if (check.search->found()) {
                    check.rho = check.search->rho;
                    rho = check.rho;
                }
            }
            r.biaxialCheck = check;
            if (check.search && !check.search->found()) {
                break;
            }
        }
        r.finalRho = rho;
        const double area = std::max(ax.astCm2, rho * ag);
        r.finalBars = chooseColumnBars(s, area, r.coverCm, barTable);
        if (!r.finalBars.found) {
            r.status = ColumnStatus::SectionTooSmall;
            return r;
        }
        if (r.finalBars.count <= count) {
            break;
        }
        count = r.finalBars.count;
        r.finalBars = {};
    }
    // The outcome of the last search made.
    const auto outcomeOf = [](const BendingDesign& b) {
        return b.second ? b.second->outcome : b.search.outcome;
    };
    std::vector<RatioSearch::Outcome> outcomes;
    if (r.bendX) {
        outcomes.push_back(outcomeOf(*r.bendX));
    }
    if (r.bendY) {
        outcomes.push_back(outcomeOf(*r.bendY));
    }
    if (r.biaxialCheck && r.biaxialCheck->search) {
        outcomes.push_back(r.biaxialCheck->search->outcome);
    }
    for (const auto o : outcomes) {
        if (o == RatioSearch::Outcome::AboveMaximum) {
            r.status = ColumnStatus::SectionTooSmall;
            return r;
        }
        if (o == RatioSearch::Outcome::NoEccentricity || o == RatioSearch::Outcome::TooManyPoints) {
            r.status = ColumnStatus::NotConverged;
            return r;
        }
    }
    if (!r.finalBars.found) {
        r.status = ColumnStatus::SectionTooSmall;
        return r;
    }
    r.transverse = transverseSteel(g, s, r.finalBars.diameterMm, r.coverCm);
    if (!r.transverse->clearPitchHolds) {
        r.problems.push_back("Spiral clear pitch < 2.5 cm " + g.name);
    }
    return r;
}

} // namespace orvak::columns
