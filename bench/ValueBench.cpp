#include "AllocationCounter.h"
#include "KOBWBx.h"

#include <benchmark/benchmark.h>

// Constructing, copying and destroying values of the scalar and interval kinds must
// not touch the heap; the counters report allocations per iteration.

namespace {

template <class Make>
void CopyCycle(benchmark::State& state, Make make) {
    const std::size_t before = bench::AllocationCount();
    for (auto _ : state) {
        KOBWBValue value = make();
        KOBWBValue copy(value);
        KOBWBValue assigned;
        assigned = copy;
        benchmark::DoNotOptimize(assigned);
    }
    state.counters["allocs/iter"] = benchmark::Counter(
        static_cast<double>(bench::AllocationCount() - before), benchmark::Counter::kAvgIterations);
    state.counters["sizeof"] = sizeof(KOBWBValue);
}

void Integer(benchmark::State& state) { CopyCycle(state, [] { return KOBWBValue(7); }); }
void Real(benchmark::State& state) { CopyCycle(state, [] { return KOBWBValue(2.5); }); }
void Boolean(benchmark::State& state) { CopyCycle(state, [] { return KOBWBValue(KOBWBUndef); }); }
void IntegerInterval(benchmark::State& state) {
    CopyCycle(state, [] { return KOBWBValue(KOBWBCreateIntegerInterval(1, 9)); });
}
void RealInterval(benchmark::State& state) {
    CopyCycle(state, [] { return KOBWBValue(KOBWBCreateRealInterval(1.0, 9.0)); });
}
void Fraction(benchmark::State& state) {
    CopyCycle(state, [] { return KOBWBValue(KOBWBCreateFraction(1, 6, 1, 1)); });
}
void RealEnumeration(benchmark::State& state) {
    CopyCycle(state, [] {
        KOBWBValue value(KOBWBRealEnumValue);
        const double elements[] = {1.0, 2.0, 3.0};
        value.Set(3, elements);
        return value;
    });
}

} // namespace

BENCHMARK(Integer);
BENCHMARK(Real);
BENCHMARK(Boolean);
BENCHMARK(IntegerInterval);
BENCHMARK(RealInterval);
BENCHMARK(Fraction);
BENCHMARK(RealEnumeration);
BENCHMARK_MAIN();
