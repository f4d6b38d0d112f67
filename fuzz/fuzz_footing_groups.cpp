// libFuzzer target: the footing group file FootsGRP.DAT of any bytes. The reader refuses the
// file with a FileError or gives the groups in use with their record numbers; every group
// stores as it was read (encoding is a fixed point), and groups that pass the checks are
// written as records that read back to the same groups.
#include <cstddef>
#include <cstdint>

#include "core/error.h"
#include "footings/footing_records.h"
#include "fuzz_support.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("footsgrp");
    static const fuzz::ScratchFolder rewritten("footsgrp-again");
    fuzz::writeFile(scratch.path() / footings::kFootingGroupsFile, data, size);
    std::vector<footings::StoredFootingGroup> stored;
    try {
        stored = footings::readFootingGroups(scratch.path());
    } catch (const FileError&) {
        return 0;
    }
    std::vector<footings::FootingGroup> valid;
    int last = 0;
    for (const footings::StoredFootingGroup& s : stored) {
        if (s.number <= last || static_cast<std::size_t>(s.number) * 852 > size) {
            fuzz::fail("record numbers are not those of the file's records in order");
        }
        last = s.number;
        const core::RecordBuffer rec = footings::encodeFootingGroup(s.group);
        if (footings::encodeFootingGroup(footings::decodeFootingGroup(rec)).bytes() !=
            rec.bytes()) {
            fuzz::fail("a footing group does not read back as it was written");
        }
        if (footings::validateFootingGroup(s.group).empty()) {
            valid.push_back(s.group);
        }
    }
    if (valid.empty()) {
        return 0;
    }
    const auto bytes = footings::footingGroupsFileImage(rewritten.path(), valid).image();
    fuzz::writeFile(rewritten.path() / footings::kFootingGroupsFile, bytes.data(), bytes.size());
    const auto back = footings::readFootingGroups(rewritten.path());
    if (back.size() != valid.size()) {
        fuzz::fail("valid footing groups are lost on writing");
    }
    for (std::size_t i = 0; i < back.size(); ++i) {
        if (footings::encodeFootingGroup(back[i].group).bytes() !=
            footings::encodeFootingGroup(valid[i]).bytes()) {
            fuzz::fail("valid footing groups do not read back as they were written");
        }
    }
    return 0;
}
