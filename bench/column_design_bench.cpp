// Speed of designing column groups through the job runner: projects of 50, 500 and 5,000
// groups on ten floors, each group gathered from its two member columns and designed into its
// sheet and bar items, all made durable at the end of the run.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "bars/bar_tables.h"
#include "bench_columns.h"
#include "floors/floors.h"
#include "jobs/column_design_job.h"

namespace {

namespace fs = std::filesystem;
using namespace orvak;

constexpr int kFloors = 10;

/// A project of `groupCount` column groups over ten floors, removed when the benchmark ends.
class ColumnProject {
public:
    explicit ColumnProject(int groupCount) {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        m_root = fs::temp_directory_path() / ("orvak-column-bench-" + std::to_string(stamp));
        fs::create_directories(project());
        std::vector<floors::Floor> floors;
        for (int f = 1; f <= kFloors; ++f) {
            floors.push_back({static_cast<std::int16_t>(f), "Floor " + std::to_string(f),
                              3.0f * static_cast<float>(f), 20.0f});
        }
        floors::writeFloors(project(), floors);
        bench::writeBenchGroups(project(), kFloors, groupCount);
        m_barTable = bars::LoadBarPropertiesOrBuiltIn(m_root / "GENERAL").rows;
    }
    ~ColumnProject() {
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }
    ColumnProject(const ColumnProject&) = delete;
    ColumnProject& operator=(const ColumnProject&) = delete;
    fs::path project() const { return m_root / "Columns.prj"; }
    const std::vector<bars::BarProperties>& barTable() const { return m_barTable; }

private:
    fs::path m_root;
    std::vector<bars::BarProperties> m_barTable;
};

// Every group of the project from its files: read, gather, design, sheet and bar items. Each
// iteration re-designs a designed project, as an engineer does after a change of loads.
void BM_DesignColumnGroups(benchmark::State& state) {
    const ColumnProject p(static_cast<int>(state.range(0)));
    std::size_t groups = 0;
    std::size_t designed = 0;
    double seconds = 0.0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const auto chosen = jobs::chooseColumnGroups(p.project(), {}, core::CodePage::Windows1252);
        const jobs::JobResult r = jobs::designColumnGroups(p.project(), chosen, p.barTable());
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
    // Linear in the groups when this stays put from 50 to 5,000 groups.
    state.counters["ms_per_group"] =
        1000.0 * seconds / static_cast<double>(state.iterations()) / static_cast<double>(groups);
}
BENCHMARK(BM_DesignColumnGroups)
    ->Arg(50)
    ->Arg(500)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

} // namespace
