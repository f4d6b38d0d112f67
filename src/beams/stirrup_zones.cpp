// Stirrup zones of a designed beam: the end quarters and the middle half of each span, merged
// where they take the same stirrup.
#include "beams/stirrup_zones.h"

#include <array>

namespace orvak::beams {

namespace {

// The fraction of a span covered by each end zone: the middle point's shear is the largest
// of the envelope between the quarter points.
constexpr double kEndZoneFraction = 0.25;

StirrupZone zoneOf(const ShearPoint& p) {
    StirrupZone z;
    z.span = p.span;
    z.designed = p.shear.ok() && p.shear.legs > 0 && p.shear.spacingCm > 0.0;
    if (z.designed) {
        z.legs = p.shear.legs;
        z.diameterMm = p.shear.diameterMm;
        z.spacingCm = placedSpacingCm(p.shear.spacingCm);
    }
    return z;
}

// Steel area per cm of beam: the measure of which of two stirrups is denser.
double areaPerCm(const StirrupZone& z) {
    return z.designed ? z.legs * z.diameterMm * z.diameterMm / z.spacingCm : 0.0;
}

// The stirrup of an end quarter: a failed point fails the zone, else the denser one.
StirrupZone denser(const StirrupZone& end, const StirrupZone& middle) {
    if (!end.designed || !middle.designed) {
        return end.designed ? middle : end;
    }
    return areaPerCm(middle) > areaPerCm(end) ? middle : end;
}

bool sameStirrup(const StirrupZone& a, const StirrupZone& b) {
    return a.designed == b.designed && a.legs == b.legs && a.diameterMm == b.diameterMm &&
           a.spacingCm == b.spacingCm;
}

} // namespace

std::vector<StirrupZone> stirrupZones(const BeamDesignResult& design,
                                      const std::vector<double>& spanLengthsCm) {
    std::vector<StirrupZone> zones;
    for (std::size_t s = 0; s < spanLengthsCm.size(); ++s) {
        const ShearPoint* at[3] = {nullptr, nullptr, nullptr};
        for (const ShearPoint& p : design.shearPoints) {
            if (p.span == static_cast<int>(s)) {
                at[static_cast<int>(p.place)] = &p;
            }
        }
        if (at[0] == nullptr || at[1] == nullptr || at[2] == nullptr) {
            continue;
        }
        const double length = spanLengthsCm[s];
        const StirrupZone middle = zoneOf(*at[1]);
        std::array<StirrupZone, 3> parts = {denser(zoneOf(*at[0]), middle), middle,
                                            denser(zoneOf(*at[2]), middle)};
        parts[0].startCm = 0.0;
        parts[0].endCm = kEndZoneFraction * length;
        parts[1].startCm = parts[0].endCm;
        parts[1].endCm = (1.0 - kEndZoneFraction) * length;
        parts[2].startCm = parts[1].endCm;
        parts[2].endCm = length;
        zones.push_back(parts[0]);
        for (std::size_t k = 1; k < parts.size(); ++k) {
            if (sameStirrup(zones.back(), parts[k])) {
                zones.back().endCm = parts[k].endCm;
            } else {
                zones.push_back(parts[k]);
            }
        }
    }
    return zones;
}

} // namespace orvak::beams
