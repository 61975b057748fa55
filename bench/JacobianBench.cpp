#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <vector>

// The Jacobian of the sketch: every equation differentiated by every variable that
// occurs in it. Reports the time and the nodes the derivatives create.

namespace {

void Jacobian(benchmark::State& state) {
    const int points = static_cast<int>(state.range(0));
    double created = 0;
    for (auto _ : state) {
        state.PauseTiming();
        KOBWBFactory factory;
        const bench::Sketch sketch = bench::BuildSketch(factory, points);
        // The sparsity pattern is known to the caller; only the derivatives are timed.
        std::vector<std::vector<KOBWBVariable*>> pattern;
        KOBLVRListPKOBWBVariable present;
        for (KOBWBEquation* equation : sketch.equations) {
            equation->FindPresentVariables(present);
            pattern.emplace_back();
            for (int i = 0; i < present.Size(); ++i) pattern.back().push_back(present[i]);
        }
        const int before = factory.GetNbOfExpressions();
        state.ResumeTiming();
        for (size_t e = 0; e < sketch.equations.size(); ++e) {
            for (KOBWBVariable* v : pattern[e])
                benchmark::DoNotOptimize(factory.CreateDerivative(sketch.equations[e]->GetRoot(), 1, &v));
        }
        state.PauseTiming();
        created = factory.GetNbOfExpressions() - before;
        state.ResumeTiming();
    }
    state.counters["nodes created"] = created;
}

} // namespace

BENCHMARK(Jacobian)->Arg(2500)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK_MAIN();
