// Speed of designing footing groups through the job runner: projects of 20, 200 and 2,000
// footing groups, isolated and combined in turn, over a hundred column groups of the footing
// level; each designed into its sheet and bar items, all made durable at the end of the run.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "bars/bar_tables.h"
#include "columns/column_records.h"
#include "footings/footing_records.h"
#include "jobs/footing_design_job.h"

namespace {

namespace fs = std::filesystem;
using namespace orvak;

constexpr int kColumnGroups = 100;

/// A project of `count` footing groups, removed when the benchmark ends. Column group k
/// carries 60 t when k is odd and 100 t when even, on 40 × 40 (or 30 × 40) sections, without
/// moments, so that every footing designs.
class FootingProject {
public:
    explicit FootingProject(int count) {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        m_root = fs::temp_directory_path() / ("orvak-footing-bench-" + std::to_string(stamp));
        fs::create_directories(project());
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
        columns::writeColumns(project(), columns::ColumnLevel{0}, {});
        columns::writeGroups(project(), columns::ColumnLevel{0}, columnGroups);
        std::vector<footings::FootingGroup> groups;
        for (int n = 1; n <= count; ++n) {
            footings::FootingGroup g;
            g.name = "F" + std::to_string(n);
            // The lighter column on the left of a combined footing, so that the resultant of
            // the two lies between them.
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
        footings::footingGroupsFileImage(project(), groups).save();
        m_barTable = bars::LoadBarPropertiesOrBuiltIn(m_root / "GENERAL").rows;
    }
    ~FootingProject() {
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }
    FootingProject(const FootingProject&) = delete;
    FootingProject& operator=(const FootingProject&) = delete;
    fs::path project() const { return m_root / "Footings.prj"; }
    const std::vector<bars::BarProperties>& barTable() const { return m_barTable; }

private:
    fs::path m_root;
    std::vector<bars::BarProperties> m_barTable;
};

// Every footing group from the files: read, gathered, designed, sheet, bar items and the
// results written back into the group file.
void BM_DesignFootingGroups(benchmark::State& state) {
    const FootingProject p(static_cast<int>(state.range(0)));
    std::size_t groups = 0;
    std::size_t designed = 0;
    double seconds = 0.0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const auto chosen = jobs::chooseFootingGroups(p.project(), {}, core::CodePage::Windows1252);
        const jobs::JobResult r = jobs::designFootingGroups(p.project(), chosen, p.barTable());
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        groups = r.elements.size();
        designed = 0;
        for (const auto& e : r.elements) {
            designed += e.status == jobs::ElementStatus::Designed ? 1 : 0;
        }
        benchmark::DoNotOptimize(groups);
    }
    state.counters["groups"] = static_cast<double>(groups);
    state.counters["designed"] = static_cast<double>(designed);
    // Linear in the groups when this stays put from 20 to 2,000 groups.
    state.counters["ms_per_group"] =
        1000.0 * seconds / static_cast<double>(state.iterations()) / static_cast<double>(groups);
}
BENCHMARK(BM_DesignFootingGroups)
    ->Arg(20)
    ->Arg(200)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

} // namespace
