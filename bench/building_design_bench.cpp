// Speed of designing a whole building through the job runner: projects of 10, 100 and 1,000
// beams on 10 floors (1 to 30 spans each) with a column group for every two beams and a
// footing group for every two column groups, designed
// from their files to listings, sheets and steel items, and one beam re-designed in a project
// whose every beam is designed already.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "bars/bar_tables.h"
#include "beams/beam_record.h"
#include "beams/beam_settings.h"
#include "bench_columns.h"
#include "bench_footings.h"
#include "floors/floors.h"
#include "jobs/beam_design_job.h"
#include "jobs/column_design_job.h"
#include "jobs/footing_design_job.h"

namespace {

namespace fs = std::filesystem;
using namespace orvak;

constexpr int kFloors = 10;

// Beam k of a building: 1 + k mod 30 spans of 3.5 to 6.5 m, 30 × 60, 2.5 t/m dead and 1.2 t/m live,
// a point load on every second span.
beams::BeamRecord buildingBeam(int floor, int number, int k) {
    beams::BeamRecord b;
    b.name = "B" + std::to_string(floor) + "-" + std::to_string(number);
    b.floor = static_cast<std::int16_t>(floor);
    b.number = static_cast<std::int16_t>(number);
    b.fc = 250;
    b.fyMain = 4200;
    b.fyStirrups = 2800;
    b.coverTopCm = 5;
    b.coverBottomCm = 5;
    b.coverSideCm = 2.5f;
    b.settings = beams::defaultBeamSettings();
    const int spans = 1 + k % beams::kMaxSpans;
    for (int i = 0; i < spans; ++i) {
        beams::StoredSpan s;
        s.lengthM = 3.5f + 0.5f * static_cast<float>((k + i) % 7);
        s.sectionKind = 2;
        s.dims = {0, 0, 30, 0, 60};
        s.loads[beams::loadIndex(beams::LoadKind::Uniform)] = {true, 2.5f, 1.2f, 0, 0, 0};
        if (i % 2 == 1) {
            s.loads[beams::loadIndex(beams::LoadKind::Concentrated)] = {true, 3.0f,          1.5f,
                                                                        0,    s.lengthM / 3, 0};
        }
        b.spans.push_back(s);
    }
    b.supports.assign(static_cast<std::size_t>(spans) + 1, beams::StoredSupport{});
    return b;
}

/// A project of `beamCount` beams and half as many column groups (two columns each) spread
/// over ten floors, removed when the benchmark ends.
class Building {
public:
    explicit Building(int beamCount) {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        m_root = fs::temp_directory_path() / ("orvak-building-bench-" + std::to_string(stamp));
        fs::create_directories(project());
        std::vector<floors::Floor> floors;
        int k = 0;
        for (int f = 1; f <= kFloors; ++f) {
            floors.push_back({static_cast<std::int16_t>(f), "Floor " + std::to_string(f),
                              3.0f * static_cast<float>(f), 20.0f});
            std::vector<beams::BeamRecord> onFloor;
            const int count = beamCount / kFloors + (f <= beamCount % kFloors ? 1 : 0);
            for (int n = 1; n <= count; ++n) {
                onFloor.push_back(buildingBeam(f, n, k++));
            }
            beams::writeBeamFile(project(), f, onFloor);
        }
        floors::writeFloors(project(), floors);
        bench::writeBenchGroups(project(), kFloors, groupCount(beamCount));
        bench::writeBenchFootings(project(), footingCount(beamCount));
        m_barTable = bars::LoadBarPropertiesOrBuiltIn(m_root / "GENERAL").rows;
    }
    ~Building() {
        std::error_code ec;
        fs::remove_all(m_root, ec);
    }
    Building(const Building&) = delete;
    Building& operator=(const Building&) = delete;
    static int groupCount(int beamCount) { return std::max(1, beamCount / 2); }
    /// A footing for every two column groups.
    static int footingCount(int beamCount) { return std::max(1, beamCount / 4); }
    fs::path project() const { return m_root / "Building.prj"; }
    const std::vector<bars::BarProperties>& barTable() const { return m_barTable; }

private:
    fs::path m_root;
    std::vector<bars::BarProperties> m_barTable;
};

// Every element of the building from its files, the beams' run, the columns' and the footings':
// read, analyse, design, listings, sheets and steel items, each run made durable at its end.
// Each iteration re-designs a designed building, as an engineer does after a change.
void BM_DesignBuilding(benchmark::State& state) {
    const Building building(static_cast<int>(state.range(0)));
    std::size_t beamCount = 0;
    std::size_t groupCount = 0;
    std::size_t footingCount = 0;
    double seconds = 0.0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const auto beams = jobs::chooseBeams(building.project(), {}, core::CodePage::Windows1252);
        const jobs::JobResult rb = jobs::designBeams(building.project(), beams, building.barTable(),
                                                     beams::kDefaultCaseScheme);
        const auto groups =
            jobs::chooseColumnGroups(building.project(), {}, core::CodePage::Windows1252);
        const jobs::JobResult rc =
            jobs::designColumnGroups(building.project(), groups, building.barTable());
        const auto footings =
            jobs::chooseFootingGroups(building.project(), {}, core::CodePage::Windows1252);
        const jobs::JobResult rf =
            jobs::designFootingGroups(building.project(), footings, building.barTable());
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        beamCount = rb.elements.size();
        groupCount = rc.elements.size();
        footingCount = rf.elements.size();
        benchmark::DoNotOptimize(groupCount);
    }
    state.counters["beams"] = static_cast<double>(beamCount);
    state.counters["groups"] = static_cast<double>(groupCount);
    state.counters["footings"] = static_cast<double>(footingCount);
    // Linear in the elements when this stays put from 10 to 1,000 beams.
    state.counters["ms_per_element"] = 1000.0 * seconds / static_cast<double>(state.iterations()) /
                                       static_cast<double>(beamCount + groupCount + footingCount);
}
BENCHMARK(BM_DesignBuilding)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

// One beam of a designed building re-designed: its lookup in the steel store must not grow
// with the building.
void BM_RedesignOneBeam(benchmark::State& state) {
    const Building building(static_cast<int>(state.range(0)));
    const auto all = jobs::chooseBeams(building.project(), {}, core::CodePage::Windows1252);
    jobs::designBeams(building.project(), all, building.barTable(), beams::kDefaultCaseScheme);
    const auto one = jobs::chooseBeams(building.project(), {5, 3}, core::CodePage::Windows1252);
    for (auto _ : state) {
        const jobs::JobResult r = jobs::designBeams(building.project(), one, building.barTable(),
                                                    beams::kDefaultCaseScheme);
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_RedesignOneBeam)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
