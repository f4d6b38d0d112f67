// The steel-quantity report: each element's items in ascending diameter with their weights
// from the bar table, sums per diameter and per element, and the item list of the item form.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bars/bar_tables.h"
#include "bars/steel_store.h"

namespace orvak::bars {

/// Weight of an item in kg: QUANTITY x LENGTH (cm) x weight per metre (kg/m) / 100, in single
/// precision, the weight per metre found by exact diameter; 0 when the diameter is not in the
/// table. `found` (when given) tells which.
float itemWeightKg(const SteelItem& item, std::span<const BarProperties> bars,
                   bool* found = nullptr);

struct ReportItem {
    SteelItem item;
    float weightKg = 0.0f;
    bool weightFound = false; ///< false: the diameter is not in the bar table
};

struct DiameterTotal {
    float diameterMm = 0.0f;
    double weightKg = 0.0;
};

struct ElementReport {
    std::string element;
    std::vector<ReportItem> items;             ///< ascending diameter, ties in stored order
    std::vector<DiameterTotal> diameterTotals; ///< ascending diameter
    double totalKg = 0.0;
};

enum class SteelReportStatus {
    Ok,
    NoBarTable, ///< the bar table holds no bar: the caller shows general prompt 3 and stops
};

struct SteelReport {
    SteelReportStatus status = SteelReportStatus::Ok;
    std::vector<ElementReport> elements;
    std::vector<DiameterTotal> diameterTotals; ///< over all elements, ascending diameter
    double grandTotalKg = 0.0;
};

/// The report of the given elements (names as the user chose them; each is looked up by its
/// stored form, so names that share their first 10 characters share their items). Item
/// weights are singles; the sums are kept in double precision. With a rounding step above 0
/// (kg, the form's rounding field) every sum, per diameter, per element and the grand total,
/// is rounded up to a whole multiple of the step from its exact value, as steel is ordered;
/// the item weights stay exact.
SteelReport buildSteelReport(const IronDatabase& db, std::span<const std::string> elements,
                             const BarPropertyTable& bars, double roundingStepKg = 0.0);

/// Texts of the report that come from the prompt table. fromPrompt() reads them from one
/// prompt line: "@0:" title, "@1:" .. "@7:" the column headings, "@8:" the element caption,
/// "@9:" the per-diameter sum caption, "@10:" the per-element sum caption, "@11:" the caption
/// of the closing sums by diameter, "@12:" the grand-total caption. A blank entry keeps the
/// English text.
struct SteelReportTexts {
    std::string title = "Steel quantities";
    std::array<std::string, 7> headings = {"Mark",   "Description", "Diam.", "Bars",
                                           "Len.cm", "Total m",     "kg"};
    std::string elementCaption = "Element";
    std::string diameterSumCaption = "Total diameter";
    std::string elementSumCaption = "Total element";
    std::string summaryCaption = "Totals by diameter";
    std::string grandTotalCaption = "Grand total";

    static SteelReportTexts fromPrompt(std::string_view line);
};

/// One item line: the bar mark " #### ", the description in 18 characters, the diameter as
/// text in 6 ("\    \  "), the number of bars "######  ", the length of one bar in cm and the
/// total length in m ("#####.# " each), and the weight in kg "####.#".
std::string steelItemLine(const ReportItem& item);

/// The report as text, lines ending in "\n":
///   title, the column headings, a rule;
///   per element: its caption and name, its item lines, after the last item of each diameter
///   a sum line of that diameter ("   #######.# "), then the element's sum
///   ("            #######.# ");
///   at the end the sums per diameter over all elements ("   #######.# ") and the grand
///   total ("            #######.# ").
/// Each sum's last digit stands under the last digit of the item weights.
std::string formatSteelReport(const SteelReport& report, const SteelReportTexts& texts = {});

/// One line of the item form's list: bar mark "#### ", description "\23456789012345678\ ",
/// the bar kind's name "\       \ " (barKindNames[IRONTYPE], single-byte; its number when it
/// has no name there), number of bars " ##### ", diameter "  ##.## ", length " ####.## " and
/// shape " # ".
std::string itemListLine(const SteelItem& item, std::span<const std::string> barKindNames);

} // namespace orvak::bars
