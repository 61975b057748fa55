#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <string>

// Printing the sketch workload (P = 10,000) in each output form; bytes per
// second is the figure to watch.
template <void (*print)(const KOBWBFactory&, std::string&)>
static void BM_PrintSketch(benchmark::State& state) {
    KOBWBFactory factory;
    bench::BuildSketch(factory, 10000);
    std::string text;
    for (auto _ : state) {
        text.clear();
        print(factory, text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
    state.counters["bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_PrintSketch<KOBWBEquationPrinter::PrintFactory>)->Name("PrintSketchAsText")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PrintSketch<KOBWBEquationMLPrinter::PrintFactory>)->Name("PrintSketchAsMathML")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PrintSketch<KOBWBEquationMLPrinter::PrintJson>)->Name("PrintSketchAsJson")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
