// Speed of the continuous-beam analysis: the largest beam (30 spans) with every load kind,
// under the per-span case scheme (31 cases), envelopes and service deflections included.
#include <benchmark/benchmark.h>

#include "beams/beam_analysis.h"

namespace {

using namespace orvak::beams;

BeamAnalysisInput thirtySpanBeam() {
    BeamAnalysisInput in;
    for (int i = 0; i < kMaxSpans; ++i) {
        BeamSpan span;
        span.lengthCm = 400.0 + 25.0 * (i % 7);
        span.inertiaCm4 = 30.0 * 60.0 * 60.0 * 60.0 / 12.0;
        const double l = span.lengthCm;
        span.loads[loadIndex(LoadKind::Uniform)] = {true, 2.5, 1.2, 0.0, 0.0, {}};
        if (i % 2 == 0) {
            span.loads[loadIndex(LoadKind::Triangular)] = {
                true, 1.5, 0.5,
                0.0,  0.0, i % 4 == 0 ? TrianglePeak::AtLeft : TrianglePeak::AtRight};
        }
        if (i % 3 == 0) {
            span.loads[loadIndex(LoadKind::PartialUniform)] = {true, 3.0, 1.0, l / 5, l / 2, {}};
        }
        if (i % 3 != 1) {
            span.loads[loadIndex(LoadKind::Concentrated)] = {true, 3000.0, 1500.0, l / 3, 0.0, {}};
        }
        in.spans.push_back(span);
    }
    in.supports.assign(kMaxSupports, supportFromCodes(2, 0));
    in.supports.front() = supportFromCodes(2, 1);
    in.elasticModulusKgCm2 = 15100.0 * 15.8113883; // Fc = 250 kg/cm²
    in.factors.dead = {1.4, 1.4};
    in.factors.live = {1.7, 1.0};
    in.caseScheme = 2;
    return in;
}

void BM_Beam30SpanAnalysisScheme2(benchmark::State& state) {
    const BeamAnalysisInput in = thirtySpanBeam();
    for (auto _ : state) {
        BeamAnalysisResult r = analyzeBeam(in);
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_Beam30SpanAnalysisScheme2)->Unit(benchmark::kMicrosecond);

} // namespace
