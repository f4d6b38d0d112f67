// Speed of the beam design: flexure, bars, stirrups, depth check and long-term deflection of
// a 30-span beam from a ready analysis (31 cases of the per-span scheme), no file output.
#include <benchmark/benchmark.h>

#include "beams/beam_design.h"
#include "bench_models.h"

namespace {

using namespace orvak::beams;

BeamDesignInput thirtySpanDesign() {
    BeamDesignInput in = orvak::bench::thirtySpanDesignModel();
    in.analysis = analyzeBeam(in.model);
    return in;
}

void BM_BeamDesign30Span(benchmark::State& state) {
    const BeamDesignInput in = thirtySpanDesign();
    if (const BeamDesignResult check = designBeam(in); !check.ok()) {
        state.SkipWithError(check.failures.front().c_str());
        return;
    }
    for (auto _ : state) {
        BeamDesignResult r = designBeam(in);
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_BeamDesign30Span)->Unit(benchmark::kMicrosecond);

} // namespace
