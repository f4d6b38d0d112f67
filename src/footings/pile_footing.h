// The pile footing: its sheet holds the head and the inputs only; this version of the program
// does not design the piles or their cap.
#pragma once

#include "core/sheet.h"
#include "footings/footing_input.h"

namespace orvak::footings {

/// "FOOTING DESIGN", "PILE FOOTING", the inputs and the statement that the design is not made.
core::Sheet pileFootingSheet(const PileFootingInput& input,
                             core::CodePage page = core::CodePage::Windows1252);

/// Status NotDesigned, with its sentence.
FootingSummary pileFootingSummary(const PileFootingInput& input);

} // namespace orvak::footings
