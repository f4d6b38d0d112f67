// The steel-quantity report: item weights from the bar table, sums per diameter and element,
// and the report and item-list lines through the PRINT USING masks of the listing.
#include "bars/steel_report.h"

#include <cmath>
#include <map>

#include "bars/bar_table_grid.h"
#include "core/concrete.h"
#include "core/mask_format.h"
#include "shell/prompts.h"

namespace orvak::bars {

namespace {

// Widths of the item line's columns, from its masks.
constexpr std::array<std::size_t, 7> kColumnWidths = {6, 18, 8, 8, 8, 8, 6};
constexpr std::size_t kLineWidth = 62;

constexpr std::string_view kDiameterSumMask = "   #######.# ";
constexpr std::string_view kElementSumMask = "            #######.# ";
// Caption widths that put a sum's last digit under the last digit of the item weights: the
// number of each sum mask ends one character before the mask does.
constexpr std::size_t kDiameterCaptionWidth = kLineWidth - (kDiameterSumMask.size() - 1);
constexpr std::size_t kElementCaptionWidth = kLineWidth - (kElementSumMask.size() - 1);

std::string fitted(std::string_view text, std::size_t width) {
    std::string out(text.substr(0, std::min(text.size(), width)));
    out.resize(width, ' ');
    return out;
}

std::string sumLine(std::string_view caption, std::size_t captionWidth, std::string_view mask,
                    double value) {
    return fitted(caption, captionWidth) + core::formatUsing(mask, value) + "\n";
}

// A sum as printed: rounded up to the step when there is one.
double roundedSum(double kg, double stepKg) {
    return stepKg > 0.0 ? core::roundUpToStep(kg, stepKg) : kg;
}

std::vector<DiameterTotal> toTotals(const std::map<float, double>& sums, double stepKg) {
    std::vector<DiameterTotal> totals;
    for (const auto& [d, w] : sums) {
        totals.push_back({d, roundedSum(w, stepKg)});
    }
    return totals;
}

std::string diameterCaption(std::string_view caption, float diameterMm) {
    return std::string(caption) + " " + cellTextFor(diameterMm) + " mm";
}

} // namespace

float itemWeightKg(const SteelItem& item, std::span<const BarProperties> bars, bool* found) {
    const auto props = FindBarProperties(item.diameterMm, bars);
    if (found != nullptr) {
        *found = props.has_value();
    }
    if (!props) {
        return 0.0f;
    }
    // Single precision throughout, length in cm and weight in kg/m.
    const float weight = item.quantity * item.lengthCm * props->weightKgPerM / 100.0f;
    return weight;
}

SteelReport buildSteelReport(const IronDatabase& db, std::span<const std::string> elements,
                             const BarPropertyTable& bars, double roundingStepKg) {
    SteelReport report;
    // A step that is not a positive finite number means no rounding.
    const double step =
        std::isfinite(roundingStepKg) && roundingStepKg > 0.0 ? roundingStepKg : 0.0;
    if (bars.rows.empty()) {
        report.status = SteelReportStatus::NoBarTable;
        return report;
    }
    std::map<float, double> overall;
    for (const std::string& name : elements) {
        ElementReport element;
        element.element = storedElementName(name);
        std::map<float, double> sums;
        for (SteelItem& item : db.elementQuantities(name)) {
            ReportItem line;
            line.weightKg = itemWeightKg(item, bars.rows, &line.weightFound);
            sums[item.diameterMm] += line.weightKg;
            overall[item.diameterMm] += line.weightKg;
            element.totalKg += line.weightKg;
            line.item = std::move(item);
            element.items.push_back(std::move(line));
        }
        element.diameterTotals = toTotals(sums, step);
        report.grandTotalKg += element.totalKg;
        element.totalKg = roundedSum(element.totalKg, step);
        report.elements.push_back(std::move(element));
    }
    report.diameterTotals = toTotals(overall, step);
    report.grandTotalKg = roundedSum(report.grandTotalKg, step);
    return report;
}

SteelReportTexts SteelReportTexts::fromPrompt(std::string_view line) {
    SteelReportTexts texts;
    const auto take = [&](int k, std::string& target) {
        std::string text = shell::placeholderText(line, k);
        if (!text.empty()) {
            target = std::move(text);
        }
    };
    take(0, texts.title);
    for (int k = 1; k <= 7; ++k) {
        take(k, texts.headings[static_cast<std::size_t>(k - 1)]);
    }
    take(8, texts.elementCaption);
    take(9, texts.diameterSumCaption);
    take(10, texts.elementSumCaption);
    take(11, texts.summaryCaption);
    take(12, texts.grandTotalCaption);
    return texts;
}

std::string steelItemLine(const ReportItem& line) {
    const SteelItem& it = line.item;
    const float totalLengthM = it.quantity * it.lengthCm / 100.0f;
    std::string out;
    out += core::formatUsing(" #### ", static_cast<double>(it.mark));
    out += fitted(it.description, 18);
    out += core::formatUsing("\\    \\  ", cellTextFor(it.diameterMm));
    out += core::formatUsing("######  ", static_cast<double>(it.quantity));
    out += core::formatUsing("#####.# ", static_cast<double>(it.lengthCm));
    out += core::formatUsing("#####.# ", static_cast<double>(totalLengthM));
    out += core::formatUsing("####.#", static_cast<double>(line.weightKg));
    return out;
}

std::string formatSteelReport(const SteelReport& report, const SteelReportTexts& texts) {
    std::string out = texts.title + "\n";
    std::string headings;
    for (std::size_t k = 0; k < kColumnWidths.size(); ++k) {
        headings += fitted(texts.headings[k], kColumnWidths[k]);
    }
    const auto last = headings.find_last_not_of(' ');
    headings.erase(last == std::string::npos ? 0 : last + 1);
    out += headings + "\n";
    out += std::string(kLineWidth, '-') + "\n";

    for (const ElementReport& element : report.elements) {
        out += texts.elementCaption + " " + element.element + "\n";
        std::size_t next = 0;
        for (const DiameterTotal& total : element.diameterTotals) {
            // Items come in ascending diameter, so each diameter's items stand together.
            while (next < element.items.size() &&
                   element.items[next].item.diameterMm == total.diameterMm) {
                out += steelItemLine(element.items[next]) + "\n";
                ++next;
            }
            out += sumLine(diameterCaption(texts.diameterSumCaption, total.diameterMm),
                           kDiameterCaptionWidth, kDiameterSumMask, total.weightKg);
        }
        out += sumLine(texts.elementSumCaption + " " + element.element, kElementCaptionWidth,
                       kElementSumMask, element.totalKg);
        out += "\n";
    }

    out += texts.summaryCaption + "\n";
    for (const DiameterTotal& total : report.diameterTotals) {
        out += sumLine(diameterCaption(texts.diameterSumCaption, total.diameterMm),
                       kDiameterCaptionWidth, kDiameterSumMask, total.weightKg);
    }
    out += sumLine(texts.grandTotalCaption, kElementCaptionWidth, kElementSumMask,
                   report.grandTotalKg);
    return out;
}

std::string itemListLine(const SteelItem& it, std::span<const std::string> barKindNames) {
    // The engineer reads the kind by its name; a code no name is given for (an imported item
    // of another program) still shows as its number.
    const auto kind = static_cast<std::size_t>(it.ironType);
    const std::string kindText =
        it.ironType >= 0 && kind < barKindNames.size() && !barKindNames[kind].empty()
            ? barKindNames[kind]
            : std::to_string(it.ironType);
    std::string out;
    out += core::formatUsing("#### ", static_cast<double>(it.mark));
    out += core::formatUsing("\\23456789012345678\\ ", std::string_view(it.description));
    out += core::formatUsing("\\       \\ ", std::string_view(kindText));
    out += core::formatUsing(" ##### ", static_cast<double>(it.quantity));
    out += core::formatUsing("  ##.## ", static_cast<double>(it.diameterMm));
    out += core::formatUsing(" ####.## ", static_cast<double>(it.lengthCm));
    out += core::formatUsing(" # ", static_cast<double>(it.shape));
    return out;
}

} // namespace orvak::bars
