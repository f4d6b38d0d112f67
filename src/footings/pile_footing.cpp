// The pile footing's sheet: the inputs as the group holds them, and no design.
#include "footings/pile_footing.h"

#include "footings/footing_design.h"

namespace orvak::footings {

namespace {
constexpr std::string_view kNotDesigned =
    "Pile footings are not designed by this version of the program";
} // namespace

core::Sheet pileFootingSheet(const PileFootingInput& in, core::CodePage page) {
    core::Sheet sh(page);
    const FootingColumn& c = in.column;
    sh.line("FOOTING DESIGN");
    sh.line("PILE FOOTING");
    sh.line("INPUT DATA");
    sh.line("==========");
    sh.formula("Pu= ", kNum, shown(c.puT), " ton");
    sh.formula("Mux= ", kNum, shown(c.muxTm), " ton.m");
    sh.formula("Muy= ", kNum, shown(c.muyTm), " ton.m");
    sh.line("Column dimension");
    columnLines(sh, c);
    sh.formula("Number of piles = ", "####", in.piles);
    sh.formula("Pile diameter = ", kNum, shown(in.pileDiameterCm), " cm");
    sh.formula("Pile length = ", kNum, shown(in.pileLengthCm), " cm");
    sh.formula("Surface friction = ", kNum, shown(in.surfaceFriction), " t/m^2");
    sh.formula("End bearing = ", kNum, shown(in.endBearing), " t/m^2");
    settingLines(sh, in.settings, "steel cover           = ", "MinDepth  = ");
    sh.line(kNotDesigned);
    return sh;
}

FootingSummary pileFootingSummary(const PileFootingInput&) {
    FootingSummary sum;
    sum.status = FootingStatus::NotDesigned;
    sum.failures.emplace_back(kNotDesigned);
    return sum;
}

} // namespace orvak::footings
