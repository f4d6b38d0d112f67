// The report document of a beam, written as RTF.
#include "beams/beam_report.h"

#include <fmt/format.h>

#include "core/mask_format.h"

namespace orvak::beams {

namespace {

// The sections of the report, in the order an engineer checks a beam, by listing (the
// listings come in the order of their extensions: shear, analysis, flexure, deflection).
struct Section {
    std::size_t listing;
    std::string_view heading;
};
constexpr Section kSections[] = {
    {1, "ANALYSIS"},
    {2, "FLEXURAL DESIGN"},
    {0, "SHEAR DESIGN"},
    {3, "LONG TIME DEFLECTION"},
};

// Text of the listings and titles as RTF: line ends become paragraphs, the RTF specials and
// every byte from 0x80 up are escaped.
void appendText(std::string& rtf, std::string_view text) {
    for (const char c : text) {
        const auto b = static_cast<unsigned char>(c);
        if (c == '\r') {
            continue;
        }
        if (c == '\n') {
            rtf += "\\par\n";
        } else if (c == '\t') {
            rtf += "\\tab ";
        } else if (c == '\\' || c == '{' || c == '}') {
            rtf += '\\';
            rtf += c;
        } else if (b >= 0x80) {
            rtf += fmt::format("\\'{:02x}", b);
        } else if (b < 0x20) {
            rtf += ' ';
        } else {
            rtf += c;
        }
    }
}

void appendLine(std::string& rtf, std::string_view text) {
    appendText(rtf, text);
    rtf += "\\par\n";
}

} // namespace

std::string framedHeading(std::string_view text) {
    return " ==========  " + std::string(text) + "  ========== ";
}

std::string beamReportRtf(const ReportHead& head, const BeamRecord& record,
                          std::span<const core::OutputFile> listings) {
    const bool hebrew = head.page == core::CodePage::Windows1255;
    std::string rtf = fmt::format(
        "{{\\rtf1\\ansi\\ansicpg{}\\deff0{{\\fonttbl{{\\f0\\fmodern\\fcharset{} Courier New;}}}}\n"
        "\\paperw11906\\paperh16838\\margl1134\\margr1134\\margt1134\\margb1134\n"
        "\\f0\\fs18\n",
        hebrew ? 1255 : 1252, hebrew ? 177 : 0);
    for (const std::string& line : head.titleLines) {
        if (line.find_first_not_of(' ') != std::string::npos) {
            appendLine(rtf, line);
        }
    }
    rtf += "\\par\n";
    const std::string name = record.name.empty() ? std::string("Beam") : record.name;
    appendLine(
        rtf, framedHeading(fmt::format("FLOOR {}, BEAM {} {}", record.floor, record.number, name)));
    appendLine(rtf, "Date of the design: " + head.date);
    appendLine(rtf, fmt::format("Spans: {}", record.spans.size()));
    rtf += "\\par\n";
    appendLine(rtf, framedHeading("MATERIALS"));
    appendLine(rtf, "Fc        =" + core::formatUsing(" ######", record.fc) + "   (kg/cm^2)");
    appendLine(rtf, "FY        =" + core::formatUsing(" ######", record.fyMain) + "   (kg/cm^2)");
    appendLine(rtf,
               "FY stirr. =" + core::formatUsing(" ######", record.fyStirrups) + "   (kg/cm^2)");
    for (const Section& section : kSections) {
        if (section.listing >= listings.size()) {
            continue;
        }
        // Each section starts on a page of its own.
        rtf += "\\page\n";
        appendLine(rtf, framedHeading(section.heading));
        rtf += "\\par\n";
        appendText(rtf, listings[section.listing].bytes);
    }
    rtf += "}\n";
    return rtf;
}

} // namespace orvak::beams
