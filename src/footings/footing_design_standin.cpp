// TEMPORARY stand-ins for the footing designs and sheets, so that the footing job builds and
// runs before the design module joins; this file goes when it does. The plan is the square
// the service load asks of the soil, the depth the least depth plus the cover, and the bars
// the table's first row at 20 cm: enough for the job's files, states and steel items.
#include <cmath>

#include "footings/combined_footing.h"
#include "footings/isolated_footing.h"
#include "footings/pile_footing.h"

namespace orvak::footings {

namespace {

FootingSummary squarePlan(double puT, const FootingSettings& s,
                          std::span<const bars::BarProperties> table) {
    FootingSummary out;
    if (!(puT > 0.0) || table.empty()) {
        out.status = FootingStatus::CheckData;
        out.failures.push_back("Check your data");
        return out;
    }
    const double areaCm2 = puT / s.LF * 1000.0 / s.soilCapacity;
    const double side = std::ceil(std::sqrt(areaCm2) / 5.0) * 5.0;
    out.status = FootingStatus::Designed;
    out.aCm = out.bCm = side;
    out.hCm = s.minDepthCm + s.coverCm;
    FootingBars bars;
    bars.found = true;
    bars.count = static_cast<int>(side / 20.0) + 1;
    bars.diameterMm = table.front().diameterMm;
    bars.areaCm2 = bars.count * table.front().areaCm2;
    bars.lengthCm = side - 2.0 * s.coverCm;
    out.barsY = out.barsX = bars;
    return out;
}

core::Sheet head(std::string_view kind, core::CodePage page) {
    core::Sheet sheet(page);
    sheet.line("FOOTING DESIGN").line(kind).line();
    return sheet;
}

} // namespace

IsolatedFootingResult designIsolatedFooting(const IsolatedFootingInput& in,
                                            std::span<const bars::BarProperties> table) {
    return {squarePlan(in.column.puT, in.settings, table)};
}

CombinedFootingResult designCombinedFooting(const CombinedFootingInput& in,
                                            std::span<const bars::BarProperties> table) {
    return {squarePlan(in.column1.puT + in.column2.puT, in.settings, table)};
}

core::Sheet isolatedFootingSheet(const IsolatedFootingInput& in, const IsolatedFootingResult& r,
                                 core::CodePage page) {
    core::Sheet sheet = head("ISOLATED FOOTING", page);
    sheet.formula("Pu= ", "####.##", in.column.puT, " t");
    sheet.formula("A=", "####.#", r.result.aCm, " cm");
    return sheet;
}

core::Sheet combinedFootingSheet(const CombinedFootingInput& in, const CombinedFootingResult& r,
                                 core::CodePage page) {
    core::Sheet sheet = head("COMBINED FOOTING", page);
    sheet.formula("Pu1= ", "####.##", in.column1.puT, " t");
    sheet.formula("Pu2= ", "####.##", in.column2.puT, " t");
    sheet.formula("B=", "####.#", r.result.bCm, " cm");
    return sheet;
}

core::Sheet pileFootingSheet(const PileFootingInput& in, core::CodePage page) {
    core::Sheet sheet = head("PILE FOOTING", page);
    sheet.formula("Surface friction = ", "####.##", in.surfaceFriction, " t/m2");
    return sheet;
}

} // namespace orvak::footings
