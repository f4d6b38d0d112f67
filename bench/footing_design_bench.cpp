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
#include "bench_footings.h"
#include "jobs/footing_design_job.h"

namespace {

namespace fs = std::filesystem;
using namespace orvak;

/// A project of `count` footing groups (bench_footings.h), removed when the benchmark ends.
class FootingProject {
public:
    explicit FootingProject(int count) {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        m_root = fs::temp_directory_path() / ("orvak-footing-bench-" + std::to_string(stamp));
        fs::create_directories(project());
        bench::writeBenchFootings(project(), count);
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
