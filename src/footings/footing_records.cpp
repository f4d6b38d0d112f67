// Footing groups as stored: the record codec, the checks of a group and of its main data, the
// group file with removal in place, and the input of a design from the footing level.
#include "footings/footing_records.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <set>
#include <span>

#include <fmt/format.h>

#include "columns/column_section.h"
#include "core/error.h"
#include "core/file_util.h"

namespace fs = std::filesystem;

namespace orvak::footings {

namespace {

const core::FieldDef& ff(std::string_view name) {
    return kFootingGroupLayout[name];
}

bool within(float v, float least, float most) {
    return std::isfinite(v) && v >= least && v <= most;
}

// The limits of the group form's boxes: positions up to 9999.9 cm, results as a design gives.
constexpr float kMaxPositionCm = 9999.9f;
constexpr float kMaxResult = 1.0e6f;

std::string upperAscii(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return s;
}

void putBars(core::RecordBuffer& rec, std::size_t i, const StoredFootingBars& b) {
    rec.setInt16(ff("barCount"), b.count, i);
    rec.setSingle(ff("barDiameter"), b.diameterMm, i);
    rec.setSingle(ff("barLength"), b.lengthCm, i);
}

StoredFootingBars takeBars(const core::RecordBuffer& rec, std::size_t i, float areaCm2) {
    return {rec.getInt16(ff("barCount"), i), rec.getSingle(ff("barDiameter"), i), areaCm2,
            rec.getSingle(ff("barLength"), i)};
}

void putResults(core::RecordBuffer& rec, const FootingGroup& g) {
    rec.setInt16(ff("state"), static_cast<std::int16_t>(g.status));
    rec.setSingle(ff("A"), g.aCm);
    rec.setSingle(ff("B"), g.bCm);
    rec.setSingle(ff("H"), g.hCm);
    rec.setSingle(ff("AstY"), g.barsY.areaCm2);
    rec.setSingle(ff("AstX"), g.barsX.areaCm2);
    putBars(rec, 0, g.barsY);
    putBars(rec, 1, g.barsX);
}

core::RecordFile loadFile(const fs::path& project) {
    const fs::path path = core::resolveNoCase(project, kFootingGroupsFile);
    return core::RecordFile::load(path, kFootingGroupRecordLength,
                                  core::RecordFile::Count::WholeOnly);
}

// The side of a column along x (the footing's side B): the diameter or side of a section of
// one dimension, else b.
float sizeAlongX(const columns::ColumnGroup& g) {
    return columns::requiredDimensions(g.type) == 1 ? g.dims[0] : g.dims[1];
}

std::string checkOwnFields(const FootingGroup& g) {
    if (g.kind != FootingKind::Isolated && g.kind != FootingKind::Combined &&
        g.kind != FootingKind::Pile) {
        return fmt::format("the footing kind is {}: it must be 1 (isolated), 2 (combined) or 3 "
                           "(pile)",
                           static_cast<int>(g.kind));
    }
    if (g.name.empty()) {
        return "the group has no name";
    }
    if (g.name.size() > kFootingNameWidth) {
        return fmt::format("the group name is longer than {} characters", kFootingNameWidth);
    }
    for (std::size_t k = 0; k < g.columnCount(); ++k) {
        const FootingPlacement& p = g.columns[k];
        if (p.group < 1) {
            return fmt::format("column {} has no column group", k + 1);
        }
        if (p.groupName.size() > columns::kGroupNameWidth) {
            return fmt::format("the name of column {}'s group is longer than {} characters", k + 1,
                               columns::kGroupNameWidth);
        }
        if (!within(p.cxCm, -kMaxPositionCm, kMaxPositionCm) ||
            !within(p.cyCm, -kMaxPositionCm, kMaxPositionCm)) {
            return fmt::format("Cx and Cy of column {} must lie within ±{} cm", k + 1,
                               kMaxPositionCm);
        }
    }
    if (g.kind == FootingKind::Pile) {
        if (g.piles < 1 || g.piles > 99) {
            return fmt::format("the footing has {} piles: it must have 1 to 99", g.piles);
        }
        if (!within(g.pileDiameterCm, 10.0f, 500.0f)) {
            return "the pile diameter must be 10 to 500 cm";
        }
        if (!within(g.pileLengthCm, 100.0f, 10000.0f)) {
            return "the pile length must be 100 to 10000 cm";
        }
        if (!within(g.surfaceFriction, 0.0f, 10000.0f) || !within(g.endBearing, 0.0f, 100000.0f)) {
            return "the surface friction and the end bearing must be 0 or more";
        }
    }
    for (const float v :
         {g.aCm, g.bCm, g.hCm, g.barsY.diameterMm, g.barsY.areaCm2, g.barsY.lengthCm,
          g.barsX.diameterMm, g.barsX.areaCm2, g.barsX.lengthCm}) {
        if (!within(v, 0.0f, kMaxResult)) {
            return "a result value of the last design is out of range";
        }
    }
    if (g.barsY.count < 0 || g.barsX.count < 0) {
        return "a bar count of the last design is negative";
    }
    return validateFootingSettings(g.settings);
}

FootingColumn placedColumn(const FootingPlacement& p, const std::vector<columns::Column>& members,
                           const std::vector<columns::ColumnGroup>& groups) {
    if (p.group < 1 || static_cast<std::size_t>(p.group) > groups.size()) {
        throw InputError(fmt::format("The footing level has no column group {}.", p.group));
    }
    columns::ColumnGroup g = groups[static_cast<std::size_t>(p.group - 1)];
    columns::gatherMembers(g, p.group, members);
    FootingColumn c;
    c.name = g.name;
    c.type = g.type;
    c.dims = g.dims;
    c.puT = g.puT;
    // The larger end moment of the group: at the footing it is the moment at the column's
    // foot whichever end the stored pair calls M2, so the larger one governs the plan.
    c.muxTm = g.x.m2;
    c.muyTm = g.y.m2;
    c.cxCm = p.cxCm;
    c.cyCm = p.cyCm;
    return c;
}

} // namespace

core::RecordBuffer encodeFootingGroup(const FootingGroup& g) {
    core::RecordBuffer rec = core::blankRecord(kFootingGroupLayout);
    rec.setText(ff("marker"), std::string(1, core::kUseMark));
    rec.setInt16(ff("kind"), static_cast<std::int16_t>(g.kind));
    rec.setText(ff("name"), g.name);
    rec.setInt16(ff("group1"), g.columns[0].group);
    rec.setInt16(ff("group2"), g.columns[1].group);
    rec.setInt16(ff("columnCount"), static_cast<std::int16_t>(g.columnCount()));
    const core::RecordBuffer settings = encodeFootingSettings(g.settings);
    std::copy(settings.bytes().begin(), settings.bytes().end(),
              rec.bytes().begin() + static_cast<std::ptrdiff_t>(ff("settings").offset));
    for (std::size_t k = 0; k < kFootingColumns; ++k) {
        rec.setText(ff("groupNames"), g.columns[k].groupName, k);
        rec.setSingle(ff("Cx"), g.columns[k].cxCm, k);
        rec.setSingle(ff("Cy"), g.columns[k].cyCm, k);
    }
    rec.setInt16(ff("piles"), g.piles);
    rec.setSingle(ff("pileDiameter"), g.pileDiameterCm);
    rec.setSingle(ff("pileLength"), g.pileLengthCm);
    rec.setSingle(ff("SurfaceFriction"), g.surfaceFriction);
    rec.setSingle(ff("EndBearing"), g.endBearing);
    putResults(rec, g);
    return rec;
}

FootingGroup decodeFootingGroup(const core::RecordBuffer& rec) {
    FootingGroup g;
    const std::int16_t kind = rec.getInt16(ff("kind"));
    g.kind = kind >= 1 && kind <= 3 ? static_cast<FootingKind>(kind) : FootingKind::Isolated;
    const std::int16_t state = rec.getInt16(ff("state"));
    g.status =
        state >= 1 && state <= 4 ? static_cast<FootingStatus>(state) : FootingStatus::NotDesigned;
    g.name = rec.getTrimmedText(ff("name"));
    g.columns[0].group = rec.getInt16(ff("group1"));
    g.columns[1].group = rec.getInt16(ff("group2"));
    g.aCm = rec.getSingle(ff("A"));
    g.bCm = rec.getSingle(ff("B"));
    g.hCm = rec.getSingle(ff("H"));
    const core::FieldDef& s = ff("settings");
    g.settings = decodeFootingSettings(core::RecordBuffer(
        std::vector<std::uint8_t>(rec.bytes().begin() + static_cast<std::ptrdiff_t>(s.offset),
                                  rec.bytes().begin() + static_cast<std::ptrdiff_t>(s.end()))));
    for (std::size_t k = 0; k < kFootingColumns; ++k) {
        g.columns[k].groupName = rec.getTrimmedText(ff("groupNames"), k);
        g.columns[k].cxCm = rec.getSingle(ff("Cx"), k);
        g.columns[k].cyCm = rec.getSingle(ff("Cy"), k);
    }
    g.piles = rec.getInt16(ff("piles"));
    g.pileDiameterCm = rec.getSingle(ff("pileDiameter"));
    g.pileLengthCm = rec.getSingle(ff("pileLength"));
    g.surfaceFriction = rec.getSingle(ff("SurfaceFriction"));
    g.endBearing = rec.getSingle(ff("EndBearing"));
    g.barsY = takeBars(rec, 0, rec.getSingle(ff("AstY")));
    g.barsX = takeBars(rec, 1, rec.getSingle(ff("AstX")));
    return g;
}

std::string validateFootingGroup(const FootingGroup& group) {
    return checkOwnFields(group);
}

std::string checkFootingMainData(const FootingGroup& g,
                                 const std::vector<columns::ColumnGroup>& columnGroups) {
    std::array<const columns::ColumnGroup*, kFootingColumns> cols{};
    for (std::size_t k = 0; k < g.columnCount(); ++k) {
        const std::int16_t n = g.columns[k].group;
        if (n < 1 || static_cast<std::size_t>(n) > columnGroups.size()) {
            return std::string(kNotSuitableMessage);
        }
        cols[k] = &columnGroups[static_cast<std::size_t>(n - 1)];
        // A footing is sized over the column's faces: a section the column design could not
        // draw (a dimension missing, a flange wider than the web) gives it none.
        if (!columns::columnSection(cols[k]->type, cols[k]->dims)) {
            return std::string(kNotSuitableMessage);
        }
    }
    if (g.kind == FootingKind::Isolated) {
        // Edge-to-face distances: a negative one sets the column beyond the footing's edge.
        if (g.columns[0].cxCm < 0.0f || g.columns[0].cyCm < 0.0f) {
            return std::string(kNotSuitableMessage);
        }
    } else if (g.kind == FootingKind::Combined) {
        const float cx1 = g.columns[0].cxCm;
        const float cx2 = g.columns[1].cxCm;
        if (cx1 >= cx2) {
            return std::string(kCx1NotLeftMessage);
        }
        const float c1 = sizeAlongX(*cols[0]);
        const float c2 = sizeAlongX(*cols[1]);
        // Centres from the left edge: the left column's face must not pass that edge, and the
        // two columns must stand apart.
        if (cx1 < c1 / 2.0f || cx2 - cx1 < (c1 + c2) / 2.0f) {
            return std::string(kNotSuitableMessage);
        }
    }
    return {};
}

std::vector<StoredFootingGroup> readFootingGroups(const fs::path& project) {
    std::vector<StoredFootingGroup> out;
    const auto path = core::findFileNoCase(project, kFootingGroupsFile);
    if (!path) {
        return out;
    }
    const auto file = core::RecordFile::load(*path, kFootingGroupRecordLength,
                                             core::RecordFile::Count::WholeOnly);
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        if (rec.inUse()) {
            out.push_back({static_cast<int>(n), decodeFootingGroup(rec)});
        }
    }
    return out;
}

std::optional<FootingGroup> readFootingGroup(const fs::path& project, int number) {
    for (StoredFootingGroup& s : readFootingGroups(project)) {
        if (s.number == number) {
            return std::move(s.group);
        }
    }
    return std::nullopt;
}

int saveFootingGroup(const fs::path& project, int number, const FootingGroup& group) {
    ORVAK_ASSERT(number >= 0);
    if (const std::string problem = checkOwnFields(group); !problem.empty()) {
        throw InputError(fmt::format("Footing group {}: {}. Nothing was saved.",
                                     number == 0 ? std::string("(new)") : std::to_string(number),
                                     problem));
    }
    const std::vector<columns::ColumnGroup> columnGroups =
        columns::readGroups(project, columns::ColumnLevel{0});
    if (const std::string problem = checkFootingMainData(group, columnGroups); !problem.empty()) {
        throw InputError(problem);
    }
    core::RecordFile file = loadFile(project);
    // A removed number stays removed: its steel items and state may still be about.
    if (number != 0 && (static_cast<std::size_t>(number) > file.count() ||
                        !file.read(static_cast<std::size_t>(number)).inUse())) {
        throw InputError(fmt::format("There is no footing group {}. Nothing was saved.", number));
    }
    const std::size_t at = number == 0 ? file.count() + 1 : static_cast<std::size_t>(number);
    // Sheets are found by name without regard to case, so two groups whose names differ only
    // in case would write one sheet.
    for (std::size_t n = 1; n <= file.count(); ++n) {
        const core::RecordBuffer rec = file.read(n);
        if (n != at && rec.inUse() &&
            upperAscii(rec.getTrimmedText(ff("name"))) == upperAscii(group.name)) {
            throw InputError(fmt::format("Footing group {} is named {} already. Nothing was saved.",
                                         n, rec.getTrimmedText(ff("name"))));
        }
    }
    if (at > 32767) {
        throw InputError("The footing group file holds 32767 records; no group can be added.");
    }
    FootingGroup stored = group;
    for (std::size_t k = 0; k < stored.columnCount(); ++k) {
        stored.columns[k].groupName =
            columnGroups[static_cast<std::size_t>(stored.columns[k].group - 1)].name;
    }
    file.write(at, encodeFootingGroup(stored));
    file.save();
    return static_cast<int>(at);
}

void removeFootingGroup(const fs::path& project, int number) {
    core::RecordFile file = loadFile(project);
    if (number < 1 || static_cast<std::size_t>(number) > file.count() ||
        !file.read(static_cast<std::size_t>(number)).inUse()) {
        throw InputError(fmt::format("There is no footing group {}.", number));
    }
    core::RecordBuffer rec = file.read(static_cast<std::size_t>(number));
    rec.bytes()[0] = '0';
    file.write(static_cast<std::size_t>(number), rec);
    file.save();
}

std::size_t storeFootingResults(const fs::path& project, std::span<const FootingResult> results) {
    if (results.empty()) {
        return 0;
    }
    core::RecordFile file = loadFile(project);
    const auto bars = [](const FootingBars& b) {
        if (!b.found || b.count < 0 || b.count > 32767) {
            return StoredFootingBars{};
        }
        return StoredFootingBars{static_cast<std::int16_t>(b.count),
                                 static_cast<float>(b.diameterMm), static_cast<float>(b.areaCm2),
                                 static_cast<float>(b.lengthCm)};
    };
    std::size_t stored = 0;
    for (const FootingResult& r : results) {
        if (r.number < 1 || static_cast<std::size_t>(r.number) > file.count()) {
            continue;
        }
        core::RecordBuffer rec = file.read(static_cast<std::size_t>(r.number));
        if (!rec.inUse() || rec.getTrimmedText(ff("name")) != r.name) {
            continue;
        }
        FootingGroup g = decodeFootingGroup(rec);
        g.status = r.summary.status;
        g.aCm = static_cast<float>(r.summary.aCm);
        g.bCm = static_cast<float>(r.summary.bCm);
        g.hCm = static_cast<float>(r.summary.hCm);
        g.barsY = bars(r.summary.barsY);
        g.barsX = bars(r.summary.barsX);
        // Only the result values change; the rest of the record stays byte for byte.
        putResults(rec, g);
        file.write(static_cast<std::size_t>(r.number), rec);
        ++stored;
    }
    // One write for the whole run: the file is rewritten once, not once a group.
    if (stored > 0) {
        file.save();
    }
    return stored;
}

bool storeFootingResult(const fs::path& project, int number, std::string_view name,
                        const FootingSummary& summary) {
    const FootingResult one{number, std::string(name), summary};
    return storeFootingResults(project, std::span(&one, 1)) == 1;
}

core::RecordFile footingGroupsFileImage(const fs::path& project,
                                        const std::vector<FootingGroup>& groups) {
    core::RecordFile file(core::resolveNoCase(project, kFootingGroupsFile),
                          kFootingGroupRecordLength);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (const std::string problem = checkOwnFields(groups[i]); !problem.empty()) {
            throw InputError(
                fmt::format("Footing group {}: {}. Nothing was saved.", i + 1, problem));
        }
        file.write(i + 1, encodeFootingGroup(groups[i]));
    }
    return file;
}

std::string newFootingGroupName(const std::vector<StoredFootingGroup>& groups) {
    std::set<std::string> taken;
    for (const StoredFootingGroup& s : groups) {
        taken.insert(upperAscii(s.group.name));
    }
    for (int n = 1;; ++n) {
        std::string name = "Gr-Ft" + std::to_string(n);
        if (!taken.contains(upperAscii(name))) {
            return name;
        }
    }
}

FootingColumn footingColumn(const FootingPlacement& placement,
                            const std::vector<columns::Column>& levelColumns,
                            const std::vector<columns::ColumnGroup>& columnGroups) {
    return placedColumn(placement, levelColumns, columnGroups);
}

IsolatedFootingInput isolatedFootingInput(const FootingGroup& g,
                                          const std::vector<columns::Column>& levelColumns,
                                          const std::vector<columns::ColumnGroup>& columnGroups) {
    ORVAK_ASSERT(g.kind == FootingKind::Isolated);
    return {placedColumn(g.columns[0], levelColumns, columnGroups), g.settings};
}

CombinedFootingInput combinedFootingInput(const FootingGroup& g,
                                          const std::vector<columns::Column>& levelColumns,
                                          const std::vector<columns::ColumnGroup>& columnGroups) {
    ORVAK_ASSERT(g.kind == FootingKind::Combined);
    return {placedColumn(g.columns[0], levelColumns, columnGroups),
            placedColumn(g.columns[1], levelColumns, columnGroups), g.settings};
}

PileFootingInput pileFootingInput(const FootingGroup& g,
                                  const std::vector<columns::Column>& levelColumns,
                                  const std::vector<columns::ColumnGroup>& columnGroups) {
    ORVAK_ASSERT(g.kind == FootingKind::Pile);
    PileFootingInput in;
    in.column = placedColumn(g.columns[0], levelColumns, columnGroups);
    in.settings = g.settings;
    in.piles = g.piles;
    in.pileDiameterCm = g.pileDiameterCm;
    in.pileLengthCm = g.pileLengthCm;
    in.surfaceFriction = g.surfaceFriction;
    in.endBearing = g.endBearing;
    return in;
}

} // namespace orvak::footings
