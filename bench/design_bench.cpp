// Speed of a whole beam design: a 30-span beam analysed under the per-span scheme and designed
// in memory, the demo project designed from its files to listings and steel items, and the
// demo's footing groups chosen and designed through the job runner.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>

#include "beams/beam_job.h"
#include "bench_models.h"
#include "core/file_util.h"
#include "core/record.h"
#include "floors/floors.h"
#include "jobs/beam_design_job.h"
#include "jobs/footing_design_job.h"
#include "model/model_json.h"

namespace {

namespace fs = std::filesystem;
using namespace orvak::beams;

void BM_Beam30SpanScheme2(benchmark::State& state) {
    const BeamDesignInput base = orvak::bench::thirtySpanDesignModel();
    for (auto _ : state) {
        BeamDesignInput in = base;
        in.analysis = analyzeBeam(in.model);
        BeamDesignResult r = designBeam(in);
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_Beam30SpanScheme2)->Unit(benchmark::kMicrosecond);

/// A project folder holding the demo model and a GENERAL folder with a bar table, removed
/// when the benchmark ends.
class DemoProject {
public:
    DemoProject() {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        m_root = fs::temp_directory_path() / ("orvak-design-bench-" + std::to_string(stamp));
        fs::create_directories(project());
        fs::create_directories(general());
        const fs::path model =
            fs::path(__FILE__).parent_path().parent_path() / "data" / "demo" / "model.json";
        orvak::model::importModelFile(project(), model);
        const float rows[][3] = {{8, 0.40f, 0.50f},  {10, 0.62f, 0.79f}, {12, 0.89f, 1.13f},
                                 {14, 1.21f, 1.54f}, {16, 1.58f, 2.01f}, {20, 2.47f, 3.14f}};
        std::string bytes;
        for (const auto& r : rows) {
            std::uint8_t rec[45] = {'1'};
            for (int v = 0; v < 3; ++v) {
                orvak::core::writeSingle(rec + 1 + 4 * v, r[v]);
            }
            bytes.append(reinterpret_cast<const char*>(rec), sizeof rec);
        }
        orvak::core::saveFileAtomically(general() / "ROUNDBAR.DAT", bytes);
    }
    ~DemoProject() {
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }
    DemoProject(const DemoProject&) = delete;
    DemoProject& operator=(const DemoProject&) = delete;
    fs::path project() const { return m_root / "Demo.prj"; }
    fs::path general() const { return m_root / "GENERAL"; }

private:
    fs::path m_root;
};

void BM_DesignDemoProject(benchmark::State& state) {
    const DemoProject demo;
    std::size_t beams = 0;
    for (auto _ : state) {
        const auto barTable = designBarTable(demo.general()).rows;
        beams = 0;
        for (const auto& floor : orvak::floors::readFloors(demo.project())) {
            for (const auto& record : readBeamFile(demo.project(), floor.number)) {
                auto r = orvak::jobs::designBeams(demo.project(), {record}, barTable, 2);
                benchmark::DoNotOptimize(r);
                ++beams;
            }
        }
    }
    state.counters["beams"] = static_cast<double>(beams);
}
BENCHMARK(BM_DesignDemoProject)->Unit(benchmark::kMillisecond);

// One run over the demo's footing groups: reading the group file and the footing level,
// gathering each group's loads, the designs, the sheets and the steel store's transaction.
void BM_DesignDemoFootings(benchmark::State& state) {
    const DemoProject demo;
    const auto barTable = designBarTable(demo.general()).rows;
    for (auto _ : state) {
        const auto chosen = orvak::jobs::chooseFootingGroups(demo.project(), {}, {});
        auto r = orvak::jobs::designFootingGroups(demo.project(), chosen, barTable);
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_DesignDemoFootings)->Unit(benchmark::kMillisecond);

} // namespace
