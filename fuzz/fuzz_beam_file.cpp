// libFuzzer target: a floor's beam file (BEAMS.1) of any bytes, through the record checks, the
// analysis under a load-case scheme and the whole design, to the four listings and the steel
// items. The first byte chooses the scheme; the rest is the file. Whatever the file holds:
// - the reader either refuses the file with a FileError or gives records that encode and
//   decode to themselves;
// - a beam that passes the checks is analysed and designed without an exception, and no
//   listing prints a value that is not a number;
// - a beam reported designed has, at every flexural point, at least the bars its moment
//   needs (the fault this target was made for: an absurd area once fell back to two bars);
// - every steel item has a finite quantity, diameter and length of 0 or more.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

#include "bars/bar_tables.h"
#include "beams/beam_analysis.h"
#include "beams/beam_design.h"
#include "beams/beam_job.h"
#include "beams/beam_listings.h"
#include "beams/beam_record.h"
#include "core/error.h"
#include "fuzz_support.h"

namespace {

using namespace orvak;
using orvak::fuzz::fail;

// Bars the beam has against the area its moment asks: the bar count is rounded up from the
// area with a millionth of a bar's tolerance, never down.
void checkBars(const beams::BarChoice& bars, double needCm2, const char* face) {
    if (!(needCm2 > 0.0)) {
        return;
    }
    if (!bars.found) {
        fail(std::string("a designed beam has no ") + face + " bars where its moment needs some");
    }
    const double oneBar = bars.count > 0 ? bars.areaCm2 / bars.count : 0.0;
    if (bars.areaCm2 < needCm2 - 1e-5 * oneBar - 1e-9) {
        fail(std::string("a designed beam has fewer ") + face + " bars than its moment needs");
    }
}

void designOne(beams::BeamRecord record, int scheme) {
    if (!beams::validateBeam(record).empty()) {
        return;
    }
    // A valid record is stored as it stands: encoding and decoding give it back.
    std::string error;
    const core::RecordBuffer stored = beams::encodeBeamRecord(record);
    const beams::BeamRecord again = beams::decodeBeamRecord(stored, error);
    if (!error.empty() || beams::encodeBeamRecord(again).bytes() != stored.bytes()) {
        fail("a valid beam record does not read back as it was written");
    }

    // The name is the user's text and may say "nan"; the listings' numbers are what is checked.
    record.name = "B";
    beams::BeamAnalysisInput model = beams::analysisInput(record, scheme);
    beams::BeamAnalysisResult analysis = beams::analyzeBeam(model);
    if (!analysis.ok()) {
        if (analysis.message.empty()) {
            fail("an analysis failed without a message");
        }
        return;
    }
    const beams::BeamDesignInput input = beams::designInputFromRecord(
        record, std::move(model), std::move(analysis), bars::builtInBarProperties());
    const beams::BeamDesignResult design = beams::designBeam(input);

    for (const core::Sheet& sheet :
         {beams::shearListing(input, design), beams::analysisListing(input.model, input.analysis),
          beams::flexureListing(input, design), beams::deflectionListing(design.deflection)}) {
        if (fuzz::printsNonNumber(sheet.str())) {
            fail("a listing prints a value that is not a number");
        }
    }
    if (design.ok()) {
        for (const beams::FlexurePoint& p : design.flexurePoints) {
            if (!p.flexure.ok()) {
                fail("a beam reported designed has a point whose flexure failed");
            }
            checkBars(p.tensionBars, p.flexure.tensionAreaCm2, "tension");
            checkBars(p.compressionBars, p.flexure.compressionAreaCm2, "compression");
        }
    }
    for (const bars::SteelItem& item : beams::beamSteelItems(record, input, design)) {
        for (const float v : {item.quantity, item.diameterMm, item.lengthCm}) {
            if (!std::isfinite(v) || v < 0.0f) {
                fail("a steel item has a quantity, diameter or length that is not 0 or more");
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("beams");
    if (size == 0) {
        return 0;
    }
    const int scheme = 1 + data[0] % 3;
    fuzz::writeFile(scratch.path() / "BEAMS.1", data + 1, size - 1);
    std::vector<beams::BeamRecord> records;
    try {
        records = beams::readBeamFile(scratch.path(), 1);
    } catch (const FileError&) {
        return 0; // a damaged file is refused with its name: that is the wanted outcome
    }
    for (const beams::BeamRecord& record : records) {
        designOne(record, scheme);
    }
    return 0;
}
