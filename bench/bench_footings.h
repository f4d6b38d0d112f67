// Footing groups shared by the benchmarks: a hundred column groups of the footing level and
// footing groups over them, isolated and combined in turn, every one of which designs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "columns/column_records.h"
#include "footings/footing_records.h"

namespace orvak::bench {

inline constexpr int kFootingColumnGroups = 100;

/// Writes the footing level's column groups and `count` footing groups into the project.
/// Column group k carries 60 t when k is odd and 100 t when even, on 40 × 40 (or 30 × 40)
/// sections, without moments; a combined footing has the lighter column on the left, so that
/// the resultant of the two lies between them.
inline void writeBenchFootings(const std::filesystem::path& projectFolder, int count) {
    constexpr int kColumnGroups = kFootingColumnGroups;
    std::vector<columns::ColumnGroup> columnGroups;
    for (int k = 1; k <= kColumnGroups; ++k) {
        columns::ColumnGroup g;
        g.name = columns::defaultGroupName(k);
        g.type = 1;
        g.dims = {k % 3 == 0 ? 30.0f : 40.0f, 40.0f, 0, 0, 0};
        g.colLenCm = 300.0f;
        g.puT = k % 2 == 1 ? 60.0f : 100.0f;
        columnGroups.push_back(g);
    }
    columns::writeColumns(projectFolder, columns::ColumnLevel{0}, {});
    columns::writeGroups(projectFolder, columns::ColumnLevel{0}, columnGroups);
    std::vector<footings::FootingGroup> groups;
    for (int n = 1; n <= count; ++n) {
        footings::FootingGroup g;
        g.name = "F" + std::to_string(n);
        const int left = 1 + 2 * (n % (kColumnGroups / 2));
        if (n % 2 == 1) {
            g.kind = footings::FootingKind::Isolated;
            g.columns[0] = {static_cast<std::int16_t>(left), columnGroups[left - 1].name, 0, 0};
        } else {
            g.kind = footings::FootingKind::Combined;
            g.columns[0] = {static_cast<std::int16_t>(left), columnGroups[left - 1].name, 30.0f,
                            0.0f};
            g.columns[1] = {static_cast<std::int16_t>(left + 1), columnGroups[left].name,
                            300.0f + 10.0f * static_cast<float>(n % 5), 0.0f};
        }
        groups.push_back(g);
    }
    footings::footingGroupsFileImage(projectFolder, groups).save();
}

} // namespace orvak::bench
