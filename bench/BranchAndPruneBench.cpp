#include "AllSolutionsWorkloads.h"

#include <benchmark/benchmark.h>

#include <memory>

// The search of every solution: boxes processed per solution on the 16-solution system,
// and the Broyden banded system at n = 100 and 1,000 (one solution), boxes beside the
// time; the growth from 100 to 1,000 unknowns is read between the two rows.

namespace {

void Search(benchmark::State& state, bool broyden) {
    const int n = static_cast<int>(state.range(0));
    double boxes = 0;
    double solutions = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto factory = std::make_unique<KOBWBFactory>();
        if (broyden)
            bench::BuildBroydenBanded(*factory, n);
        else
            bench::BuildMixedProducts(*factory);
        state.ResumeTiming();
        KOBWBBranchAndPrune search(*factory);
        search.SetMaxSeconds(600);
        if (search.Run() != KOBWBSearchComplete) {
            state.SkipWithError("incomplete");
            break;
        }
        boxes = static_cast<double>(search.GetNbOfBoxes());
        solutions = static_cast<double>(search.GetSolutions().size());
        state.PauseTiming();
        factory.reset();
        state.ResumeTiming();
    }
    state.counters["boxes"] = boxes;
    state.counters["solutions"] = solutions;
    state.counters["boxes/solution"] = solutions > 0 ? boxes / solutions : 0;
}

void BM_MixedProducts(benchmark::State& state) { Search(state, false); }
void BM_BroydenBanded(benchmark::State& state) { Search(state, true); }

} // namespace

BENCHMARK(BM_MixedProducts)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BroydenBanded)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(1);

BENCHMARK_MAIN();
