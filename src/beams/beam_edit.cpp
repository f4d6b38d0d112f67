// Beams of a floor edited one at a time, in place in the floor's beam file.
#include "beams/beam_edit.h"

#include <fmt/format.h>

#include "core/error.h"
#include "core/file_util.h"
#include "core/record.h"
#include "floors/floors.h"

namespace orvak::beams {

namespace fs = std::filesystem;

namespace {

core::RecordFile loadBeamFile(const fs::path& projectFolder, int floor) {
    const fs::path path = core::resolveNoCase(projectFolder, floors::beamFileName(floor));
    return core::RecordFile::load(path, kBeamRecordLength, core::RecordFile::Count::WholeOnly);
}

} // namespace

BeamRecord storeBeam(const fs::path& projectFolder, int floor, const BeamRecord& record) {
    if (record.number < 1 || record.number > kMaxBeamsPerFloor) {
        throw InputError(fmt::format("A beam number must be 1 to {}; {} is not.",
                                     kMaxBeamsPerFloor, record.number));
    }
    if (const std::string problem = validateBeam(record); !problem.empty()) {
        throw InputError(problem);
    }
    BeamRecord stored = record;
    stored.floor = static_cast<std::int16_t>(floor);
    core::RecordFile file = loadBeamFile(projectFolder, floor);
    const auto n = static_cast<std::size_t>(record.number);
    file.write(n, encodeBeamRecord(stored));
    file.save();

    // Read back from the file, so that what the form shows is what a design will read.
    const core::RecordFile back = loadBeamFile(projectFolder, floor);
    std::string error;
    BeamRecord read = decodeBeamRecord(back.read(n), error);
    if (!error.empty()) {
        throw FileError(back.path(), "The beam record is corrupt: " + error,
                        static_cast<std::int64_t>(n), 0);
    }
    read.floor = static_cast<std::int16_t>(floor);
    read.number = record.number;
    return read;
}

std::optional<BeamRecord> readStoredBeam(const fs::path& projectFolder, int floor, int number) {
    for (BeamRecord& b : readBeamFile(projectFolder, floor)) {
        if (b.number == number) {
            return std::move(b);
        }
    }
    return std::nullopt;
}

void removeBeam(const fs::path& projectFolder, int floor, int number) {
    core::RecordFile file = loadBeamFile(projectFolder, floor);
    const auto n = static_cast<std::size_t>(number);
    if (number < 1 || n > file.count()) {
        return;
    }
    // A record without its use mark is free; a new beam may take its number later.
    file.write(n, core::RecordBuffer(kBeamRecordLength));
    std::size_t last = file.count();
    while (last > 0 && !file.read(last).inUse()) {
        --last;
    }
    file.truncate(last);
    file.save();
}

int freeBeamNumber(const fs::path& projectFolder, int floor) {
    const core::RecordFile file = loadBeamFile(projectFolder, floor);
    for (std::size_t n = 1; n <= file.count(); ++n) {
        if (!file.read(n).inUse()) {
            return n <= static_cast<std::size_t>(kMaxBeamsPerFloor) ? static_cast<int>(n) : 0;
        }
    }
    const std::size_t next = file.count() + 1;
    return next <= static_cast<std::size_t>(kMaxBeamsPerFloor) ? static_cast<int>(next) : 0;
}

BeamRecord newBeam(int floor, int number, const BeamSettings& defaults, const BeamRecord* like) {
    BeamRecord b;
    b.floor = static_cast<std::int16_t>(floor);
    b.number = static_cast<std::int16_t>(number);
    b.name = fmt::format("B{}", number);
    if (like != nullptr) {
        b.fc = like->fc;
        b.fyMain = like->fyMain;
        b.fyStirrups = like->fyStirrups;
        b.coverTopCm = like->coverTopCm;
        b.coverBottomCm = like->coverBottomCm;
        b.coverSideCm = like->coverSideCm;
    } else {
        b.fc = 250.0f;
        b.fyMain = 4200.0f;
        b.fyStirrups = 2400.0f;
        b.coverTopCm = 4.0f;
        b.coverBottomCm = 4.0f;
        b.coverSideCm = 2.5f;
    }
    StoredSpan span;
    span.sectionKind = static_cast<std::int16_t>(SectionKind::DeepRectangle);
    span.dims = {25.0f, 0.0f, 25.0f, 0.0f, 50.0f};
    span.lengthM = 5.0f;
    b.spans = {span};
    StoredSupport support;
    support.code = 2;
    support.widthCm = 25.0f;
    b.supports = {support, support};
    b.settings = defaults;
    return b;
}

bool insertSpan(BeamRecord& beam, int after) {
    const auto count = static_cast<int>(beam.spans.size());
    if (count >= kMaxSpans || after < 0 || after >= count ||
        beam.supports.size() != beam.spans.size() + 1) {
        return false;
    }
    const auto at = static_cast<std::ptrdiff_t>(after);
    beam.spans.insert(beam.spans.begin() + at + 1, beam.spans[static_cast<std::size_t>(after)]);
    beam.supports.insert(beam.supports.begin() + at + 2,
                         beam.supports[static_cast<std::size_t>(after) + 1]);
    return true;
}

bool removeSpan(BeamRecord& beam, int span) {
    const auto count = static_cast<int>(beam.spans.size());
    if (count <= 1 || span < 0 || span >= count ||
        beam.supports.size() != beam.spans.size() + 1) {
        return false;
    }
    const auto at = static_cast<std::ptrdiff_t>(span);
    // The beam's end support stays an end support: the last span gives up its left joint.
    const std::ptrdiff_t joint = span == count - 1 ? at : at + 1;
    beam.spans.erase(beam.spans.begin() + at);
    beam.supports.erase(beam.supports.begin() + joint);
    return true;
}

} // namespace orvak::beams
