#include "AllocationCounter.h"
#include "IntervalTape.h"
#include "ResidentMemory.h"
#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <vector>

// One full evaluation of every equation root of the sketch after ResetBuffer,
// against the same graph evaluated by a plain loop over a topologically ordered
// array of two-double intervals.

namespace {

int points = 10000;

void EvaluateRoots(KOBWBFactory& factory, const bench::Sketch& sketch) {
    factory.ResetBuffer(nullptr);
    for (KOBWBEquation* equation : sketch.equations) benchmark::DoNotOptimize(equation->GetRoot()->GetValue());
}

// The evaluations a solver repeats: the first evaluation of each root makes its
// plan, outside the measured loop (LibraryFirstEvaluation measures it).
void Library(benchmark::State& state) {
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, points);
    const double nodes = factory.GetNbOfExpressions();
    EvaluateRoots(factory, sketch);
    for (auto _ : state) EvaluateRoots(factory, sketch);
    state.counters["nodes"] = nodes;
    state.counters["ns/node"] = benchmark::Counter(nodes, benchmark::Counter::kIsIterationInvariantRate |
                                                              benchmark::Counter::kInvert);
}

// The first evaluation of a new sketch, which makes the plans of its roots.
void LibraryFirstEvaluation(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto factory = std::make_unique<KOBWBFactory>();
        const bench::Sketch sketch = bench::BuildSketch(*factory, points);
        state.ResumeTiming();
        EvaluateRoots(*factory, sketch);
        state.PauseTiming();
        factory.reset();
        state.ResumeTiming();
    }
}

// Every node evaluated on its own, in the order of the factory's list: what a caller
// pays who walks the nodes itself instead of evaluating the roots.
void LibraryInCreationOrder(benchmark::State& state) {
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, points);
    const int count = factory.GetNbOfExpressions();
    for (auto _ : state) {
        factory.ResetBuffer(nullptr);
        for (int i = 0; i < count; ++i) benchmark::DoNotOptimize(factory.GetExpression(i)->GetValue());
    }
}

void PlainLoop(benchmark::State& state) {
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, points);
    std::vector<KOBWBExpression*> roots;
    for (KOBWBEquation* equation : sketch.equations) roots.push_back(equation->GetRoot());
    const bench::Tape tape = bench::RecordAll(roots);
    std::vector<bench::Interval> values(tape.nodes.size());
    for (auto _ : state) {
        bench::EvaluateTape(tape, values);
        benchmark::DoNotOptimize(values.data());
    }
    const double nodes = static_cast<double>(tape.nodes.size());
    state.counters["nodes"] = nodes;
    state.counters["ns/node"] = benchmark::Counter(nodes, benchmark::Counter::kIsIterationInvariantRate |
                                                              benchmark::Counter::kInvert);
}

// Bytes per binary operator node, its children list included: resident, as blocks of
// nodes are mapped from the system directly, and allocated through malloc.
void BinaryNodeMemory(benchmark::State& state) {
    for (auto _ : state) {
        bench::ReleaseFreedMemory();
        KOBWBFactory factory;
        KOBWBVariable* x = factory.CreateVariable();
        KOBWBVariable* y = factory.CreateVariable();
        constexpr int count = 100000;
        const std::size_t resident = bench::ResidentBytes();
        const std::size_t allocated = bench::AllocatedBytes();
        for (int i = 0; i < count; ++i) factory.CreateQuotient(x, y);
        state.counters["resident B/binary node"] = static_cast<double>(bench::ResidentBytes() - resident) / count;
        state.counters["malloc B/binary node"] = static_cast<double>(bench::AllocatedBytes() - allocated) / count;
    }
}

// Bytes per node of the whole sketch, resident and allocated through malloc.
void SketchMemory(benchmark::State& state) {
    for (auto _ : state) {
        bench::ReleaseFreedMemory();
        KOBWBFactory factory;
        const std::size_t resident = bench::ResidentBytes();
        const std::size_t allocated = bench::AllocatedBytes();
        bench::BuildSketch(factory, points);
        const double nodes = factory.GetNbOfExpressions();
        state.counters["resident B/node"] = static_cast<double>(bench::ResidentBytes() - resident) / nodes;
        state.counters["malloc B/node"] = static_cast<double>(bench::AllocatedBytes() - allocated) / nodes;
    }
}

} // namespace

BENCHMARK(Library)->Unit(benchmark::kMillisecond);
BENCHMARK(LibraryFirstEvaluation)->Unit(benchmark::kMillisecond);
BENCHMARK(LibraryInCreationOrder)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainLoop)->Unit(benchmark::kMillisecond);
BENCHMARK(BinaryNodeMemory)->Iterations(1);
BENCHMARK(SketchMemory)->Iterations(1);
int main(int argc, char** argv) {
    if (const char* override = std::getenv("SKETCH_POINTS")) points = std::atoi(override);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
