// Column groups shared by the benchmarks: a varied, repeatable set of groups (rectangles,
// circles, spiral squares, Tees; short and slender; moments about one or both axes) with their
// member columns, written into a project's floors.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "columns/column_records.h"

namespace orvak::bench {

/// Group k of a building and its two member columns (they carry its load and moments).
struct BenchGroup {
    columns::ColumnGroup group;
    std::array<columns::Column, 2> members;
};

/// Group k: the section cycles through rectangles (three of seven), a spirally reinforced
/// circle, a tied circle, a spiral square and a Tee; every third group is 5.5 m high (slender),
/// the others 3 m; the factored load is 20 to 35 % of Fc·Ag (Fc 250 of the default settings),
/// which every section carries; every second group bends about both axes.
inline BenchGroup benchGroup(int k, std::int16_t groupNumber) {
    static constexpr std::array<std::int16_t, 7> kTypes = {1, 2, 1, 7, 6, 1, 3};
    BenchGroup b;
    columns::ColumnGroup& g = b.group;
    g.name = columns::defaultGroupName(groupNumber);
    g.type = kTypes[static_cast<std::size_t>(k % 7)];
    const float step = 5.0f * static_cast<float>(k % 4);
    double areaCm2 = 0.0;
    switch (g.type) {
    case 1:
        g.dims = {30.0f + step, 40.0f + step, 0, 0, 0};
        areaCm2 = static_cast<double>(g.dims[0]) * g.dims[1];
        break;
    case 3:
        g.dims = {60.0f, 60.0f + step, 20.0f, 30.0f, 0};
        areaCm2 = static_cast<double>(g.dims[1]) * g.dims[2] +
                  static_cast<double>(g.dims[0] - g.dims[2]) * g.dims[3];
        break;
    default: // circles and the spiral square: one dimension
        g.dims = {40.0f + step, 0, 0, 0, 0};
        areaCm2 = (g.type == 6 ? 1.0 : 0.785) * g.dims[0] * g.dims[0];
        break;
    }
    const float heightCm = k % 3 == 0 ? 550.0f : 300.0f;
    const auto puT = static_cast<float>((0.20 + 0.05 * (k % 4)) * 250.0 * areaCm2 / 1000.0);
    for (std::size_t i = 0; i < b.members.size(); ++i) {
        columns::Column& c = b.members[i];
        c.name = "C" + std::to_string(groupNumber) + "-" + std::to_string(i + 1);
        c.group = groupNumber;
        c.type = 1;
        c.dims = {30, 30, 0, 0, 0};
        c.heightCm = heightCm - 20.0f * static_cast<float>(i);
        c.puT = puT * (i == 0 ? 1.0f : 0.8f);
        // End moments of 5 to 11 cm eccentricity, single or reverse curvature.
        const float mx = puT * (0.05f + 0.02f * static_cast<float>(k % 4));
        c.x = {mx, (k % 2 == 0 ? 0.5f : -0.5f) * mx};
        if (k % 2 == 1) {
            c.y = {0.6f * mx, 0.3f * mx};
        }
    }
    return b;
}

/// Writes `groupCount` groups (and their members) spread over floors 1..floorCount of the
/// project, `k` counting on from `first`. The floors file is the caller's.
inline void writeBenchGroups(const std::filesystem::path& project, int floorCount, int groupCount,
                             int first = 0) {
    int k = first;
    for (int f = 1; f <= floorCount; ++f) {
        const int count = groupCount / floorCount + (f <= groupCount % floorCount ? 1 : 0);
        std::vector<columns::ColumnGroup> groups;
        std::vector<columns::Column> members;
        for (int n = 1; n <= count; ++n) {
            BenchGroup b = benchGroup(k++, static_cast<std::int16_t>(n));
            groups.push_back(std::move(b.group));
            members.insert(members.end(), b.members.begin(), b.members.end());
        }
        columns::writeGroups(project, columns::ColumnLevel{f}, groups);
        columns::writeColumns(project, columns::ColumnLevel{f}, members);
    }
}

} // namespace orvak::bench
