// The pile footing's sheet as the footing job calls it (the declaration the job is written
// against; the sheet itself comes with its own module).
#pragma once

#include "core/codepage.h"
#include "core/sheet.h"
#include "footings/footing_input.h"

namespace orvak::footings {

core::Sheet pileFootingSheet(const PileFootingInput& input,
                             core::CodePage page = core::CodePage::Windows1252);

} // namespace orvak::footings
