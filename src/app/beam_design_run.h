// "Design all beams of the floor" from the desktop program: the beams are read and checked
// here, then designed by the shared design run on its worker thread.
#pragma once

#include "ui/design_run.h"

namespace orvak::app {

class BeamDesignRun : public ui::DesignRun {
    Q_OBJECT
public:
    using ui::DesignRun::DesignRun;

    /// Starts the design of every beam of `floor` under load-case scheme `scheme`. False,
    /// after telling the user why, when nothing can start (no beam, a beam that cannot be
    /// designed as stored, no usable bar table, a run already going).
    bool start(int floor, int scheme);
};

} // namespace orvak::app
