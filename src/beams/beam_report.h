// The report document of a designed beam: one rich-text (RTF) file that any word processor
// opens, in a fixed-width face so that the listings' columns stay aligned: the project's
// title lines, the beam and its materials, then the analysis, flexure, shear and long-term
// deflection listings, each under a framed heading.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "beams/beam_record.h"
#include "core/codepage.h"
#include "core/output_batch.h"

namespace orvak::beams {

/// Extension of the report document; its name is listingBaseName(record) + this.
inline constexpr std::string_view kReportExt = ".rtf";

/// What the report shows above the beam: the project's title lines (blank ones left out)
/// and the date of the design, all single-byte text in `page`.
struct ReportHead {
    std::vector<std::string> titleLines;
    std::string date;
    core::CodePage page = core::CodePage::Windows1252;
};

/// A heading framed as the report frames it: " ==========  text  ========== ".
std::string framedHeading(std::string_view text);

/// The RTF bytes of the report of `record`, whose listings (shear, analysis, flexure,
/// deflection, in the order of their extensions) are `listings`. Bytes from 0x80 up are
/// written as \'hh in the page's ANSI code page, so the file reads the same everywhere.
std::string beamReportRtf(const ReportHead& head, const BeamRecord& record,
                          std::span<const core::OutputFile> listings);

} // namespace orvak::beams
