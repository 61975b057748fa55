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
        const int before = factory.GetNbOfExpressions();
        KOBLVRListPKOBWBVariable present;
        state.ResumeTiming();
        for (KOBWBEquation* equation : sketch.equations) {
            equation->FindPresentVariables(present);
            for (int i = 0; i < present.Size(); ++i) {
                KOBWBVariable* v = present[i];
                benchmark::DoNotOptimize(factory.CreateDerivative(equation->GetRoot(), 1, &v));
            }
        }
        state.PauseTiming();
        created = factory.GetNbOfExpressions() - before;
        state.ResumeTiming();
    }
    state.counters["nodes created"] = created;
}

} // namespace

BENCHMARK(Jacobian)->Arg(2500)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
