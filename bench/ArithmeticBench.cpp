#include "AllocationCounter.h"
#include "KOBWBx.h"

#include <benchmark/benchmark.h>

#include <algorithm>

// Side by side in one run:
// - the interval-level sum and product against a hand-written pair of doubles doing
//   the same work (consistency check of the arguments, arithmetic, ordering and
//   clamping of the bounds), once inlined in the loop ("Baseline") and once behind a
//   call that cannot be inlined ("BaselineCall"), which is what a call into the shared
//   library costs at least;
// - the value-level sum of two real intervals against the interval level.
// The counter reports heap allocations per iteration: the value level must not allocate.

namespace {

struct Pair {
    double lower;
    double upper;
};

struct Flags {
    mutable unsigned bits = 0;
};

Pair Clamped(double lower, double upper) {
    const double max = KOBWBMaxReal;
    const double clampedLower = lower < -max ? -max : lower;
    const double clampedUpper = upper > max ? max : upper;
    if (!(clampedLower <= clampedUpper)) return {max, -max};
    return {clampedLower, clampedUpper};
}

bool Consistent(const Flags& flags, const Pair& a, const Pair& b) {
    const double precision = KOBWBAbsPrecision;
    if ((a.lower - a.upper <= precision) & (b.lower - b.upper <= precision)) return true;
    flags.bits |= 1;
    return false;
}

Pair PairSum(const Flags& flags, const Pair& a, const Pair& b) {
    if (!Consistent(flags, a, b)) return {KOBWBMaxReal, -KOBWBMaxReal};
    const double lower = a.lower + b.lower;
    const double upper = a.upper + b.upper;
    return Clamped(std::min(lower, upper), std::max(lower, upper));
}

Pair PairMul(const Flags& flags, const Pair& a, const Pair& b) {
    if (!Consistent(flags, a, b)) return {KOBWBMaxReal, -KOBWBMaxReal};
    const double p1 = a.lower * b.lower;
    const double p2 = a.lower * b.upper;
    const double p3 = a.upper * b.lower;
    const double p4 = a.upper * b.upper;
    return Clamped(std::min(std::min(p1, p2), std::min(p3, p4)),
                   std::max(std::max(p1, p2), std::max(p3, p4)));
}

// Read through a volatile pointer, so the compiler cannot inline the call.
Pair (*volatile pairSumCall)(const Flags&, const Pair&, const Pair&) = PairSum;
Pair (*volatile pairMulCall)(const Flags&, const Pair&, const Pair&) = PairMul;

template <class Operands, class Operation>
void Run(benchmark::State& state, Operands a, Operands b, Operation operation) {
    const std::size_t before = bench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        auto result = operation(a, b);
        benchmark::DoNotOptimize(result);
    }
    state.counters["allocs/iter"] = benchmark::Counter(
        static_cast<double>(bench::AllocationCount() - before), benchmark::Counter::kAvgIterations);
}

const KOBWBEnvironment environment;
const Flags flags;
const Pair pairA = {1.0, 2.0};
const Pair pairB = {-3.0, 0.5};
const KOBWBRealInterval intervalA = {1.0, 2.0};
const KOBWBRealInterval intervalB = {-3.0, 0.5};

void BaselineSum(benchmark::State& state) {
    Run(state, pairA, pairB, [](const Pair& a, const Pair& b) { return PairSum(flags, a, b); });
}

void BaselineSumCall(benchmark::State& state) {
    Run(state, pairA, pairB, [](const Pair& a, const Pair& b) { return pairSumCall(flags, a, b); });
}

void IntervalSum(benchmark::State& state) {
    Run(state, intervalA, intervalB, [](const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
        return KOBWBSum(environment, a, b);
    });
}

void BaselineMul(benchmark::State& state) {
    Run(state, pairA, pairB, [](const Pair& a, const Pair& b) { return PairMul(flags, a, b); });
}

void BaselineMulCall(benchmark::State& state) {
    Run(state, pairA, pairB, [](const Pair& a, const Pair& b) { return pairMulCall(flags, a, b); });
}

void IntervalMul(benchmark::State& state) {
    Run(state, intervalA, intervalB, [](const KOBWBRealInterval& a, const KOBWBRealInterval& b) {
        return KOBWBMul(environment, a, b);
    });
}

void ValueSum(benchmark::State& state) {
    Run(state, KOBWBValue(intervalA), KOBWBValue(intervalB),
        [](const KOBWBValue& a, const KOBWBValue& b) { return KOBWBSum(environment, a, b); });
}

} // namespace

BENCHMARK(BaselineSum);
BENCHMARK(BaselineSumCall);
BENCHMARK(IntervalSum);
BENCHMARK(BaselineMul);
BENCHMARK(BaselineMulCall);
BENCHMARK(IntervalMul);
BENCHMARK(ValueSum);
BENCHMARK_MAIN();
