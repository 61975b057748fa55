#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <string>

// Printing the sketch workload (P = 10,000) as model text; bytes per second is
// the figure to watch.
static void BM_PrintSketchAsText(benchmark::State& state) {
    KOBWBFactory factory;
    bench::BuildSketch(factory, 10000);
    std::string text;
    for (auto _ : state) {
        text.clear();
        KOBWBEquationPrinter::PrintFactory(factory, text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
    state.counters["bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_PrintSketchAsText)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
