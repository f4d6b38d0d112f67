// A level's groups and their members, stored together; the store follows the record numbers.
#include "jobs/column_groups_store.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>

#include "core/error.h"
#include "core/output_batch.h"
#include "jobs/column_design_job.h"

namespace orvak::jobs {

void storeColumnGroups(const std::filesystem::path& project, columns::ColumnLevel level,
                       const std::vector<EditedGroup>& edited,
                       const std::vector<columns::Column>& columnList, int storedCount) {
    std::vector<columns::ColumnGroup> groups;
    groups.reserve(edited.size());
    for (const EditedGroup& e : edited) {
        groups.push_back(e.group);
    }
    for (const columns::Column& c : columnList) {
        if (c.group < 0 || c.group > static_cast<int>(groups.size())) {
            throw InputError(fmt::format("Column {} belongs to group {}, which does not exist.",
                                         c.name, c.group));
        }
    }
    // Both images are made (and checked) before either file is touched.
    core::RecordFile groupFile = columns::groupsFileImage(project, level, groups);
    core::RecordFile columnFile = columns::columnsFileImage(project, level, columnList);
    std::vector<core::OutputFile> files;
    std::vector<std::filesystem::path> emptied;
    for (const core::RecordFile* f : std::array{&columnFile, &groupFile}) {
        if (f->count() == 0) {
            emptied.push_back(f->path()); // no records leave no file
            continue;
        }
        const std::vector<std::uint8_t> bytes = f->image();
        files.push_back({f->path(), std::string(bytes.begin(), bytes.end())});
    }
    core::saveTogether(files);
    for (const std::filesystem::path& path : emptied) {
        std::error_code ec;
        std::filesystem::remove(path, ec);
        if (ec) {
            throw FileError(path, fmt::format("{} could not be removed: {}.",
                                              path.filename().string(), ec.message()));
        }
    }

    const int count = std::max<int>(storedCount, static_cast<int>(edited.size()));
    for (int number = 1; number <= count; ++number) {
        const bool holds = number <= static_cast<int>(edited.size());
        if (!holds || edited[number - 1].origin != number) {
            forgetElement(project, kColumnGroupKind, kColumnSteelKind, level.floor, number);
        } else if (edited[number - 1].changed) {
            markElementChanged(project, kColumnGroupKind, level.floor, number,
                               kGroupChangedAfterDesign);
        }
    }
}

int markGroupsOfChangedColumns(const std::filesystem::path& project, columns::ColumnLevel level,
                               const std::vector<columns::Column>& before,
                               const std::vector<columns::Column>& after) {
    // Each group's members as a sorted list, before and after; the order of the rows does
    // not matter to a design.
    using Members = std::map<int, std::vector<std::string>>;
    const auto members = [](const std::vector<columns::Column>& list) {
        Members m;
        for (const columns::Column& c : list) {
            if (c.group > 0) {
                const core::RecordBuffer rec = columns::encodeColumn(c);
                m[c.group].emplace_back(rec.bytes().begin(), rec.bytes().end());
            }
        }
        for (auto& [group, list] : m) {
            std::sort(list.begin(), list.end());
        }
        return m;
    };
    const Members was = members(before);
    const Members now = members(after);
    std::set<int> changed;
    for (const auto& [group, list] : was) {
        const auto it = now.find(group);
        if (it == now.end() || it->second != list) {
            changed.insert(group);
        }
    }
    for (const auto& [group, list] : now) {
        if (!was.contains(group)) {
            changed.insert(group);
        }
    }
    for (const int group : changed) {
        markElementChanged(project, kColumnGroupKind, level.floor, group, kGroupChangedAfterDesign);
    }
    return static_cast<int>(changed.size());
}

} // namespace orvak::jobs
