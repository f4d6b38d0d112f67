// Columns and column groups as stored: record codecs, checks, the level files and the rule
// by which a group gathers its members' loads.
#include "columns/column_records.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "core/error.h"
#include "core/file_util.h"
#include "floors/floors.h"

namespace fs = std::filesystem;

namespace orvak::columns {

namespace {

const core::FieldDef& cf(std::string_view name) {
    return kColumnLayout[name];
}

const core::FieldDef& gf(std::string_view name) {
    return kGroupLayout[name];
}

bool finite(float v) {
    return std::isfinite(v);
}

// The grid's limits of the column form: name, type 1..5, height 0..9999.9 cm, load
// 0..99999.99 t, moment 0..999.99 t·m, dimensions 0..999.9 cm.

template <class Record, class Encode>
core::RecordFile recordsImage(const fs::path& path, std::size_t length,
                              const std::vector<Record>& records, Encode encode) {
    core::RecordFile file(path, length);
    for (std::size_t i = 0; i < records.size(); ++i) {
        file.write(i + 1, encode(records[i]));
    }
    return file;
}

template <class Record, class Encode>
void writeRecords(const fs::path& path, std::size_t length, const std::vector<Record>& records,
                  Encode encode) {
    if (records.empty()) {
        std::error_code ec;
        fs::remove(path, ec);
        if (ec) {
            throw FileError(path, "The file cannot be deleted: " + ec.message());
        }
        return;
    }
    recordsImage(path, length, records, encode).save();
}

template <class Record, class Decode>
std::vector<Record> readRecords(const fs::path& folder, const std::string& name, std::size_t length,
                                Decode decode) {
    std::vector<Record> out;
    const auto path = core::findFileNoCase(folder, name);
    if (!path) {
        return out;
    }
    const auto file = core::RecordFile::load(*path, length, core::RecordFile::Count::WholeOnly);
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        if (rec.inUse()) {
            out.push_back(decode(rec));
        }
    }
    return out;
}

} // namespace

std::string columnsFileName(ColumnLevel level) {
    return level.footing() ? std::string(kFootingColumnsFile)
                           : "COLUMNS." + std::to_string(level.floor + 100);
}

std::string groupsFileName(ColumnLevel level) {
    return level.footing() ? std::string(kFootingGroupsFile)
                           : "COLSGRP." + std::to_string(level.floor + 100);
}

core::RecordBuffer encodeColumn(const Column& c) {
    core::RecordBuffer rec = core::blankRecord(kColumnLayout);
    rec.setText(cf("marker"), std::string(1, core::kUseMark));
    rec.setText(cf("name"), c.name); // cut to 10 characters by the field
    rec.setInt16(cf("group"), c.group);
    rec.setInt16(cf("type"), c.type);
    rec.setSingle(cf("heightCm"), c.heightCm);
    for (std::size_t i = 0; i < 5; ++i) {
        rec.setSingle(cf("dims"), c.dims[i], i);
    }
    rec.setSingle(cf("moments"), c.x.m1, kM1x);
    rec.setSingle(cf("moments"), c.x.m2, kM2x);
    rec.setSingle(cf("moments"), c.y.m1, kM1y);
    rec.setSingle(cf("moments"), c.y.m2, kM2y);
    rec.setSingle(cf("loads"), c.puT, kAxialLoadIndex);
    return rec;
}

Column decodeColumn(const core::RecordBuffer& rec) {
    Column c;
    c.name = rec.getTrimmedText(cf("name"));
    c.group = rec.getInt16(cf("group"));
    c.type = rec.getInt16(cf("type"));
    c.heightCm = rec.getSingle(cf("heightCm"));
    for (std::size_t i = 0; i < 5; ++i) {
        c.dims[i] = rec.getSingle(cf("dims"), i);
    }
    c.x = {rec.getSingle(cf("moments"), kM2x), rec.getSingle(cf("moments"), kM1x)};
    c.y = {rec.getSingle(cf("moments"), kM2y), rec.getSingle(cf("moments"), kM1y)};
    c.puT = rec.getSingle(cf("loads"), kAxialLoadIndex);
    return c;
}

core::RecordBuffer encodeGroup(const ColumnGroup& g) {
    core::RecordBuffer rec = core::blankRecord(kGroupLayout);
    rec.setText(gf("marker"), std::string(1, core::kUseMark));
    rec.setText(gf("name"), g.name);
    rec.setText(gf("text"), g.text);
    rec.setInt16(gf("members"), g.members);
    rec.setInt16(gf("state"), static_cast<std::int16_t>(g.state));
    rec.setSingle(gf("ColLen"), g.colLenCm);
    rec.setInt16(gf("type"), g.type);
    for (std::size_t i = 0; i < 5; ++i) {
        rec.setSingle(gf("dims"), g.dims[i], i);
    }
    rec.setSingle(gf("cover"), g.coverCm);
    rec.setSingle(gf("steelArea"), g.steelAreaCm2);
    rec.setSingle(gf("Pu"), g.puT);
    rec.setSingle(gf("M2"), g.x.m2);
    rec.setSingle(gf("M1"), g.x.m1);
    rec.setSingle(gf("M2y"), g.y.m2);
    rec.setSingle(gf("M1y"), g.y.m1);
    rec.setInt16(gf("secondAxis"), g.secondAxis);
    rec.setInt16(gf("barCount"), g.barCount);
    rec.setInt16(gf("barDiameter"), g.barDiameterMm);
    const core::RecordBuffer settings = encodeColumnSettings(g.settings);
    std::copy(settings.bytes().begin(), settings.bytes().end(),
              rec.bytes().begin() + static_cast<std::ptrdiff_t>(gf("settings").offset));
    return rec;
}

ColumnGroup decodeGroup(const core::RecordBuffer& rec) {
    ColumnGroup g;
    g.name = rec.getTrimmedText(gf("name"));
    g.text = rec.getTrimmedText(gf("text"));
    g.members = rec.getInt16(gf("members"));
    const std::int16_t state = rec.getInt16(gf("state"));
    g.state = state >= 0 && state <= 4 ? static_cast<GroupState>(state) : GroupState::NotDesigned;
    g.colLenCm = rec.getSingle(gf("ColLen"));
    g.type = rec.getInt16(gf("type"));
    for (std::size_t i = 0; i < 5; ++i) {
        g.dims[i] = rec.getSingle(gf("dims"), i);
    }
    g.coverCm = rec.getSingle(gf("cover"));
    g.steelAreaCm2 = rec.getSingle(gf("steelArea"));
    g.puT = rec.getSingle(gf("Pu"));
    g.x = {rec.getSingle(gf("M2")), rec.getSingle(gf("M1"))};
    g.y = {rec.getSingle(gf("M2y")), rec.getSingle(gf("M1y"))};
    g.secondAxis = rec.getInt16(gf("secondAxis"));
    g.barCount = rec.getInt16(gf("barCount"));
    g.barDiameterMm = rec.getInt16(gf("barDiameter"));
    const core::FieldDef& s = gf("settings");
    g.settings = decodeColumnSettings(core::RecordBuffer(
        std::vector<std::uint8_t>(rec.bytes().begin() + static_cast<std::ptrdiff_t>(s.offset),
                                  rec.bytes().begin() + static_cast<std::ptrdiff_t>(s.end()))));
    return g;
}

std::string validateColumn(const Column& c) {
    if (c.type < 1 || c.type > 5) {
        return fmt::format("the section type is {}: it must be 1 to 5", c.type);
    }
    if (!finite(c.heightCm) || c.heightCm < 0.0f || c.heightCm > kMaxHeightCm) {
        return fmt::format("the height must be 0 to {} cm", kMaxHeightCm);
    }
    if (!finite(c.puT) || c.puT < 0.0f || c.puT > kMaxLoadT) {
        return fmt::format("the factored load must be 0 to {} t", kMaxLoadT);
    }
    for (const float m : {c.x.m1, c.x.m2, c.y.m1, c.y.m2}) {
        if (!finite(m) || std::abs(m) > kMaxMomentTm) {
            return fmt::format("the end moments must lie within ±{} t.m", kMaxMomentTm);
        }
    }
    for (const float d : c.dims) {
        if (!finite(d) || d < 0.0f || d > kMaxDimCm) {
            return fmt::format("the dimensions must be 0 to {} cm", kMaxDimCm);
        }
    }
    return {};
}

std::string validateGroup(const ColumnGroup& g) {
    if (g.name.size() > kGroupNameWidth) {
        return fmt::format("the group name is longer than {} characters", kGroupNameWidth);
    }
    if (g.type < 1 || g.type > static_cast<int>(kSectionTypes)) {
        return fmt::format("the section type is {}: it must be 1 to {}", g.type, kSectionTypes);
    }
    if (!finite(g.colLenCm) || g.colLenCm < 0.0f || g.colLenCm > kMaxHeightCm) {
        return fmt::format("the column height must be 0 to {} cm", kMaxHeightCm);
    }
    if (!finite(g.puT) || g.puT < 0.0f || g.puT > kMaxLoadT) {
        return fmt::format("the factored load must be 0 to {} t", kMaxLoadT);
    }
    for (const float m : {g.x.m1, g.x.m2, g.y.m1, g.y.m2}) {
        if (!finite(m) || std::abs(m) > kMaxMomentTm) {
            return fmt::format("the end moments must lie within ±{} t.m", kMaxMomentTm);
        }
    }
    for (const float d : g.dims) {
        if (!finite(d) || d < 0.0f || d > kMaxDimCm) {
            return fmt::format("the dimensions must be 0 to {} cm", kMaxDimCm);
        }
    }
    if (!finite(g.coverCm) || g.coverCm < 0.0f || g.coverCm > 20.0f) {
        return "the cover must be 0 to 20 cm (0: the settings' cover)";
    }
    if (g.secondAxis != 0 && g.secondAxis != 1) {
        return "the second-axis flag must be 0 or 1";
    }
    return validateColumnSettings(g.settings);
}

std::vector<Column> readColumns(const fs::path& project, ColumnLevel level) {
    return readRecords<Column>(project, columnsFileName(level), kColumnRecordLength, decodeColumn);
}

std::vector<ColumnGroup> readGroups(const fs::path& project, ColumnLevel level) {
    return readRecords<ColumnGroup>(project, groupsFileName(level), kGroupRecordLength,
                                    decodeGroup);
}

namespace {

void checkColumns(const std::vector<Column>& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (const std::string problem = validateColumn(columns[i]); !problem.empty()) {
            throw InputError(fmt::format("Column {}: {}. Nothing was saved.", i + 1, problem));
        }
    }
}

void checkGroups(const std::vector<ColumnGroup>& groups) {
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (const std::string problem = validateGroup(groups[i]); !problem.empty()) {
            throw InputError(fmt::format("Group {}: {}. Nothing was saved.", i + 1, problem));
        }
    }
}

} // namespace

void writeColumns(const fs::path& project, ColumnLevel level, const std::vector<Column>& columns) {
    checkColumns(columns);
    writeRecords(core::resolveNoCase(project, columnsFileName(level)), kColumnRecordLength, columns,
                 encodeColumn);
}

void writeGroups(const fs::path& project, ColumnLevel level,
                 const std::vector<ColumnGroup>& groups) {
    checkGroups(groups);
    writeRecords(core::resolveNoCase(project, groupsFileName(level)), kGroupRecordLength, groups,
                 encodeGroup);
}

core::RecordFile columnsFileImage(const fs::path& project, ColumnLevel level,
                                  const std::vector<Column>& columns) {
    checkColumns(columns);
    return recordsImage(core::resolveNoCase(project, columnsFileName(level)), kColumnRecordLength,
                        columns, encodeColumn);
}

core::RecordFile groupsFileImage(const fs::path& project, ColumnLevel level,
                                 const std::vector<ColumnGroup>& groups) {
    checkGroups(groups);
    return recordsImage(core::resolveNoCase(project, groupsFileName(level)), kGroupRecordLength,
                        groups, encodeGroup);
}

std::size_t storeGroupResults(const fs::path& project, ColumnLevel level,
                              const std::vector<GroupResult>& results) {
    const auto path = core::findFileNoCase(project, groupsFileName(level));
    if (!path || results.empty()) {
        return 0;
    }
    core::RecordFile file =
        core::RecordFile::load(*path, kGroupRecordLength, core::RecordFile::Count::WholeOnly);
    // A group's number is its place among the records in use.
    std::vector<std::size_t> inUse;
    for (std::size_t n = 1; n <= file.count(); ++n) {
        if (file.read(n).inUse()) {
            inUse.push_back(n);
        }
    }
    std::size_t stored = 0;
    for (const GroupResult& r : results) {
        if (r.number < 1 || static_cast<std::size_t>(r.number) > inUse.size()) {
            continue;
        }
        const std::size_t n = inUse[static_cast<std::size_t>(r.number - 1)];
        core::RecordBuffer rec = file.read(n);
        if (rec.getTrimmedText(gf("name")) != r.name) {
            continue;
        }
        rec.setInt16(gf("state"), static_cast<std::int16_t>(r.state));
        rec.setSingle(gf("steelArea"), r.steelAreaCm2);
        rec.setInt16(gf("barCount"), r.barCount);
        rec.setInt16(gf("barDiameter"), r.barDiameterMm);
        file.write(n, rec);
        ++stored;
    }
    if (stored > 0) {
        file.save();
    }
    return stored;
}

int takeFloorToFootingLevel(const fs::path& project, int floor) {
    ORVAK_ASSERT(floor >= 1 && floor <= floors::kMaxFloorNumber);
    int copied = 0;
    const ColumnLevel from{floor};
    const ColumnLevel to{0};
    const std::pair<std::string, std::string> files[] = {
        {columnsFileName(from), columnsFileName(to)},
        {groupsFileName(from), groupsFileName(to)},
    };
    for (const auto& [source, target] : files) {
        const auto path = core::findFileNoCase(project, source);
        if (!path) {
            continue;
        }
        const auto bytes = core::readWholeFile(*path);
        if (!bytes || bytes->empty()) {
            continue;
        }
        core::saveFileAtomically(core::resolveNoCase(project, target), *bytes);
        ++copied;
    }
    return copied;
}

int gatherMembers(ColumnGroup& group, int groupNumber, const std::vector<Column>& columns) {
    int members = 0;
    float pu = 0.0f;
    float height = 0.0f;
    // About each direction: the largest M2 by size, and the ratio M1/M2 nearest +1 (single
    // curvature) among the members with a moment there: Cm and the slenderness limit both
    // grow with the ratio, so the group is designed for the worst of its members.
    struct Governing {
        float m2 = 0.0f;
        double ratio = -1.0;
        bool any = false;
    };
    Governing gx, gy;
    const auto take = [](Governing& g, const EndMoments& m) {
        const float big = std::abs(m.m2) >= std::abs(m.m1) ? m.m2 : m.m1;
        const float small = std::abs(m.m2) >= std::abs(m.m1) ? m.m1 : m.m2;
        if (big == 0.0f) {
            return;
        }
        if (std::abs(big) > std::abs(g.m2)) {
            g.m2 = big;
        }
        g.ratio = std::max(g.ratio, static_cast<double>(small) / big);
        g.any = true;
    };
    for (const Column& c : columns) {
        if (c.group != groupNumber) {
            continue;
        }
        ++members;
        pu = std::max(pu, c.puT);
        height = std::max(height, c.heightCm);
        take(gx, c.x);
        take(gy, c.y);
    }
    if (members == 0) {
        return 0;
    }
    group.members = static_cast<std::int16_t>(members);
    group.puT = pu;
    group.colLenCm = height;
    const auto pair = [](const Governing& g) {
        return g.any ? EndMoments{g.m2, static_cast<float>(g.ratio * g.m2)} : EndMoments{};
    };
    group.x = pair(gx);
    group.y = pair(gy);
    return members;
}

std::string defaultGroupName(int number) {
    return "Gr-C" + std::to_string(number);
}

} // namespace orvak::columns
