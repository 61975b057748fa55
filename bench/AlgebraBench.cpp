#include "AllocationCounter.h"
#include "SketchWorkload.h"
#include "SparsePolynomialWorkload.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

// The algebra engine: every sketch equation read as a polynomial and written back
// in canonical form (per equation, at two sizes whose ratio shows the scaling), the
// expansion of (x + y + z + 1)^20, and the product of two sparse polynomials of
// 1,000 terms each. For the last two: the heap bytes per term that the operation
// allocates on its way, and those that its result holds.

namespace {

// The heap bytes a polynomial holds per term, measured as what a copy allocates.
double HeldBytesPerTerm(const KOBWBPolynomial& polynomial) {
    const size_t before = bench::AllocatedBytes();
    const KOBWBPolynomial copy(polynomial);
    benchmark::DoNotOptimize(copy);
    return static_cast<double>(bench::AllocatedBytes() - before) / polynomial.GetNbOfTerms();
}

void SketchRoundTrip(benchmark::State& state) {
    const int points = static_cast<int>(state.range(0));
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, points);
    size_t allocations = 0;
    for (auto _ : state) {
        const size_t before = bench::AllocationCount();
        KOBWBPolynomialContext context(factory);
        KOBWBPolynomial polynomial;
        for (KOBWBEquation* equation : sketch.equations) {
            context.ToPolynomial(equation->GetRoot(), polynomial);
            benchmark::DoNotOptimize(context.ToExpression(polynomial));
        }
        allocations = bench::AllocationCount() - before;
    }
    const double equations = static_cast<double>(sketch.equations.size());
    state.counters["allocations per equation"] = static_cast<double>(allocations) / equations;
    state.counters["time per equation"] =
        benchmark::Counter(equations, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

KOBWBPolynomial SumOfAtoms(int count) {
    KOBWBPolynomial sum(KOBWBCoefficient(1));
    for (int atom = 1; atom <= count; ++atom) sum += KOBWBPolynomial::Atom(atom);
    return sum;
}

void ExpandPower(benchmark::State& state) {
    const KOBWBPolynomial sum = SumOfAtoms(3);
    KOBWBPolynomial power;
    size_t bytes = 0;
    for (auto _ : state) {
        const size_t before = bench::AllocatedBytes();
        sum.Power(20, 100000, power);
        bytes = bench::AllocatedBytes() - before;
        benchmark::DoNotOptimize(power);
    }
    state.counters["terms"] = power.GetNbOfTerms();
    state.counters["allocated bytes per term"] = static_cast<double>(bytes) / power.GetNbOfTerms();
    state.counters["held bytes per term"] = HeldBytesPerTerm(power);
}

void SparseProduct(benchmark::State& state) {
    const KOBWBPolynomial a = bench::SparsePolynomial(1), b = bench::SparsePolynomial(2);
    KOBWBPolynomial product;
    size_t bytes = 0;
    for (auto _ : state) {
        const size_t before = bench::AllocatedBytes();
        product = KOBWBPolynomial::Multiply(a, b);
        bytes = bench::AllocatedBytes() - before;
    }
    state.counters["terms"] = product.GetNbOfTerms();
    state.counters["allocated bytes per term"] = static_cast<double>(bytes) / product.GetNbOfTerms();
    state.counters["held bytes per term"] = HeldBytesPerTerm(product);
}

} // namespace

BENCHMARK(SketchRoundTrip)->Arg(2500)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(ExpandPower)->Unit(benchmark::kMillisecond);
BENCHMARK(SparseProduct)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
