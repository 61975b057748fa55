#include "AllSolutionsWorkloads.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <memory>

// The search of every solution: boxes processed per solution on the 16-solution system,
// and the Broyden banded system at n = 100 and 1,000 (one solution), boxes beside the
// time. BM_BroydenBandedGrowth searches both sizes in each iteration and reports the
// ratio of their times (10x the unknowns should cost at most 12x the time). Times are
// the processor time of the search alone, so that other work on the machine does not
// move the ratio.

namespace {

struct Searched {
    double seconds = 0;
    long boxes = 0;
    std::size_t solutions = 0;
    bool complete = false;
};

// One search on a system built beforehand; only the search is timed.
Searched SearchOnce(bool broyden, int n) {
    KOBWBFactory factory;
    if (broyden)
        bench::BuildBroydenBanded(factory, n);
    else
        bench::BuildMixedProducts(factory);
    KOBWBBranchAndPrune search(factory);
    search.SetMaxSeconds(600);
    const std::clock_t start = std::clock();
    const bool complete = search.Run() == KOBWBSearchComplete;
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    return {seconds, search.GetNbOfBoxes(), search.GetSolutions().size(), complete};
}

void Search(benchmark::State& state, bool broyden) {
    const int n = static_cast<int>(state.range(0));
    Searched last;
    for (auto _ : state) {
        last = SearchOnce(broyden, n);
        state.SetIterationTime(last.seconds);
        if (!last.complete) {
            state.SkipWithError("incomplete");
            break;
        }
    }
    state.counters["boxes"] = static_cast<double>(last.boxes);
    state.counters["solutions"] = static_cast<double>(last.solutions);
    state.counters["boxes/solution"] = last.solutions > 0 ? static_cast<double>(last.boxes) / last.solutions : 0;
}

void BM_MixedProducts(benchmark::State& state) { Search(state, false); }
void BM_BroydenBanded(benchmark::State& state) { Search(state, true); }

void BM_BroydenBandedGrowth(benchmark::State& state) {
    double small = 0;
    double large = 0;
    Searched hundred;
    Searched thousand;
    for (auto _ : state) {
        hundred = SearchOnce(true, 100);
        thousand = SearchOnce(true, 1000);
        if (!hundred.complete || !thousand.complete) {
            state.SkipWithError("incomplete");
            break;
        }
        small += hundred.seconds;
        large += thousand.seconds;
        state.SetIterationTime(hundred.seconds + thousand.seconds);
    }
    state.counters["boxes_100"] = static_cast<double>(hundred.boxes);
    state.counters["boxes_1000"] = static_cast<double>(thousand.boxes);
    state.counters["ms_100"] = 1e3 * small / static_cast<double>(state.iterations());
    state.counters["ms_1000"] = 1e3 * large / static_cast<double>(state.iterations());
    state.counters["time_ratio"] = small > 0 ? large / small : 0;
}

} // namespace

BENCHMARK(BM_MixedProducts)->Arg(2)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BroydenBanded)->Arg(100)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BroydenBandedGrowth)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

BENCHMARK_MAIN();
