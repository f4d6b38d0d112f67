// libFuzzer target: a floor's column list COLUMNS.101 and group file COLSGRP.101 of any bytes,
// through the record checks, the gathering of each group's members and the whole design to the
// calculation sheet and the bar items. The first two bytes (little-endian) give the length of
// the column list; the rest of the input is the group file. Whatever the files hold:
// - each reader either refuses its file with a FileError or gives records that, where they
//   pass the checks, encode and decode to themselves;
// - a group that passes the checks after gathering, with a load above 0, is designed without
//   an exception, and its sheet prints no value that is not a number;
// - a group reported designed has bars whose area is at least the least steel and the ratio
//   its bending asked for;
// - every bar item has a finite quantity, diameter and length of 0 or more.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "bars/bar_tables.h"
#include "columns/column_design.h"
#include "columns/column_records.h"
#include "core/error.h"
#include "fuzz_support.h"
#include "jobs/column_design_job.h"

namespace {

using namespace orvak;
using orvak::fuzz::fail;

void checkColumnRoundTrip(const columns::Column& c) {
    if (!columns::validateColumn(c).empty()) {
        return;
    }
    const core::RecordBuffer stored = columns::encodeColumn(c);
    if (columns::encodeColumn(columns::decodeColumn(stored)).bytes() != stored.bytes()) {
        fail("a valid column record does not read back as it was written");
    }
}

void designOne(jobs::ChosenGroup chosen, const std::vector<columns::Column>& members) {
    if (!columns::validateGroup(chosen.group).empty()) {
        return;
    }
    const core::RecordBuffer stored = columns::encodeGroup(chosen.group);
    if (columns::encodeGroup(columns::decodeGroup(stored)).bytes() != stored.bytes()) {
        fail("a valid group record does not read back as it was written");
    }
    columns::gatherMembers(chosen.group, chosen.number, members);
    if (!columns::validateGroup(chosen.group).empty() || !(chosen.group.puT > 0.0f)) {
        return; // the run refuses such a group before designing anything
    }
    // The name is the user's text and may say "nan"; the sheet's numbers are what is checked.
    chosen.group.name = "G";
    const auto& table = bars::builtInBarProperties();
    const columns::ColumnDesignResult r = columns::designColumn(chosen.group, table);
    if (fuzz::printsNonNumber(columns::columnSheet(chosen.group, r).str())) {
        fail("a column sheet prints a value that is not a number");
    }
    if (r.status == columns::ColumnStatus::Designed) {
        if (!r.finalBars.found || !r.axial || !r.section) {
            fail("a group reported designed has no final bars");
        }
        const double need = std::max(r.axial->astCm2, r.finalRho * r.section->areaCm2);
        const double oneBar = r.finalBars.areaCm2 / std::max(r.finalBars.count, 1);
        if (r.finalBars.areaCm2 < need - 1e-5 * oneBar - 1e-9) {
            fail("a group reported designed has less steel than its design asked for");
        }
    }
    for (const bars::SteelItem& item : jobs::columnGroupSteelItems(chosen, r)) {
        for (const float v : {item.quantity, item.diameterMm, item.lengthCm}) {
            if (!std::isfinite(v) || v < 0.0f) {
                fail("a bar item has a quantity, diameter or length that is not 0 or more");
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("columns");
    if (size < 2) {
        return 0;
    }
    const std::size_t split = std::min<std::size_t>(data[0] | (data[1] << 8), size - 2);
    const columns::ColumnLevel level{1};
    scratch.clear();
    fuzz::writeFile(scratch.path() / columns::columnsFileName(level), data + 2, split);
    fuzz::writeFile(scratch.path() / columns::groupsFileName(level), data + 2 + split,
                    size - 2 - split);
    std::vector<columns::Column> members;
    std::vector<columns::ColumnGroup> groups;
    try {
        members = columns::readColumns(scratch.path(), level);
    } catch (const FileError&) {
        members.clear(); // a damaged list is refused with its name; the groups are read alone
    }
    try {
        groups = columns::readGroups(scratch.path(), level);
    } catch (const FileError&) {
        return 0;
    }
    for (const columns::Column& c : members) {
        checkColumnRoundTrip(c);
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
        designOne({level, static_cast<int>(i + 1), groups[i]}, members);
    }
    return 0;
}
