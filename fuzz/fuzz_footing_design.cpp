// libFuzzer target: the isolated and the combined footing design of any input values. The
// bytes give the loads, moments, sections, positions and settings (singles as they stand, so
// zero, negative, huge and non-finite values come too). Every design ends, prints no value
// that is not a number, and a footing reported designed has the steel its sheet asks for.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "bars/bar_tables.h"
#include "footings/combined_footing.h"
#include "footings/isolated_footing.h"
#include "fuzz_support.h"

using namespace orvak;

namespace {

// Reads the next single (or a zero once the bytes are used up).
class Reader {
public:
    Reader(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    float single() {
        float v = 0.0f;
        if (m_at + sizeof v <= m_size) {
            std::memcpy(&v, m_data + m_at, sizeof v);
        }
        m_at += sizeof v;
        return v;
    }
    std::int16_t whole(std::int16_t least, std::int16_t most) {
        const float v = single();
        if (!(v >= least && v <= most)) {
            return least;
        }
        return static_cast<std::int16_t>(v);
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
};

footings::FootingColumn column(Reader& r) {
    footings::FootingColumn c;
    c.name = "C";
    c.type = r.whole(1, 7);
    for (float& d : c.dims) {
        d = r.single();
    }
    c.puT = r.single();
    c.muxTm = r.single();
    c.muyTm = r.single();
    c.cxCm = r.single();
    c.cyCm = r.single();
    return c;
}

footings::FootingSettings settings(Reader& r) {
    footings::FootingSettings s;
    s.Fc = r.whole(0, 2000);
    s.FY = r.whole(0, 20000);
    s.soilCapacity = r.single();
    s.coverCm = r.single();
    s.LF = r.single();
    s.minSteelPercent = r.single();
    s.minDepthCm = r.single();
    s.facRowmax = r.single();
    return s;
}

void checkSteel(const footings::SteelDirection& d, const char* what) {
    if (d.bars.found && d.bars.areaCm2 < d.astCm2 * (1.0 - 1e-9)) {
        fuzz::fail(what);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Reader r(data, size);
    const auto& table = bars::builtInBarProperties();
    footings::IsolatedFootingInput iso;
    iso.column = column(r);
    iso.settings = settings(r);
    const footings::IsolatedFootingResult ri = footings::designIsolatedFooting(iso, table);
    if (fuzz::printsNonNumber(footings::isolatedFootingSheet(iso, ri).str())) {
        fuzz::fail("an isolated footing's sheet prints a value that is not a number");
    }
    if (ri.status == footings::FootingStatus::Designed) {
        checkSteel(ri.steelY, "an isolated footing has less steel along y than it asks for");
        checkSteel(ri.steelX, "an isolated footing has less steel along x than it asks for");
    }

    footings::CombinedFootingInput com;
    com.column1 = column(r);
    com.column2 = column(r);
    com.settings = settings(r);
    const footings::CombinedFootingResult rc = footings::designCombinedFooting(com, table);
    if (fuzz::printsNonNumber(footings::combinedFootingSheet(com, rc).str())) {
        fuzz::fail("a combined footing's sheet prints a value that is not a number");
    }
    if (rc.status == footings::FootingStatus::Designed) {
        checkSteel(rc.steelLong, "a combined footing has less long steel than it asks for");
        checkSteel(rc.steelOther, "a combined footing has less steel on its other face");
        checkSteel(rc.strip1, "a combined footing has less cross steel than it asks for");
        checkSteel(rc.strip2, "a combined footing has less cross steel than it asks for");
    }
    return 0;
}
