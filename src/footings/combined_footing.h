// The combined footing's design as the footing job calls it (the declarations the job is
// written against; the design itself comes with its own module).
#pragma once

#include <span>

#include "bars/bar_tables.h"
#include "core/codepage.h"
#include "core/sheet.h"
#include "footings/footing_input.h"

namespace orvak::footings {

/// What the design gives back; the job reads its summary.
struct CombinedFootingResult {
    FootingSummary result;
    FootingSummary summary() const { return result; }
};

CombinedFootingResult designCombinedFooting(const CombinedFootingInput& input,
                                            std::span<const bars::BarProperties> barTable);

core::Sheet combinedFootingSheet(const CombinedFootingInput& input,
                                 const CombinedFootingResult& result,
                                 core::CodePage page = core::CodePage::Windows1252);

} // namespace orvak::footings
