// The stirrup zones of a designed beam: stretches of each span over which one stirrup (legs,
// diameter, spacing) is placed, from the stirrups of the span's three shear points.
#pragma once

#include <vector>

#include "beams/beam_design.h"

namespace orvak::beams {

/// One stretch of a span under one stirrup. Distances from the span's left joint, cm.
struct StirrupZone {
    int span = 0; ///< 0-based
    double startCm = 0.0;
    double endCm = 0.0;
    /// False where a point of the zone found the section too small (or no stirrup at all):
    /// no stirrups are placed there and the section must change.
    bool designed = true;
    int legs = 0;
    double diameterMm = 0.0;
    double spacingCm = 0.0; ///< as placed (placedSpacingCm)
};

/// The zones of every span, left to right. The end quarters of a span take the denser of the
/// end point's and the middle point's stirrups (the middle point covers the shear between the
/// quarter points, and under downward loads the shear of an end quarter lies between those of
/// its two ends); the middle half takes the middle point's. Neighbouring zones of one span
/// with the same stirrup become one. `spanLengthsCm` holds one length per span; a span
/// without its three shear points gets no zone.
std::vector<StirrupZone> stirrupZones(const BeamDesignResult& design,
                                      const std::vector<double>& spanLengthsCm);

} // namespace orvak::beams
