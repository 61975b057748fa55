#include "AllocationCounter.h"
#include "IntervalTape.h"
#include "ResidentMemory.h"
#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include <sys/prctl.h>

// The Jacobian of the sketch, as a solver asks for it at every step: the variables
// present in each equation found by the library, then every equation differentiated
// by each of them. Reports the time, the nodes and the resident memory per derivative,
// and the resident memory of the whole factory, sketch and Jacobian; the growth from
// 2,500 to 10,000 points is read from the two runs, each best run in a process of its
// own (--benchmark_filter=MakeJacobian/HugePages/2500), so that memory freed by one is not
// reused by the other. Blocks of nodes are backed by 2 MB pages where the system offers
// them: the Jacobian's first nodes may then fill a page the sketch's last nodes made
// resident, and its last page may be partly used, so that its resident memory is known
// to 2 MB at either end; the same runs without huge pages count it to 4 KB. Then the
// evaluation of every entry of the Jacobian after ResetBuffer, against a plain loop over
// a topologically ordered array of two-double intervals computing the same entries.

namespace {

std::vector<KOBWBExpression*> Jacobian(KOBWBFactory& factory, const bench::Sketch& sketch) {
    std::vector<KOBWBExpression*> entries;
    for (KOBWBEquation* equation : sketch.equations) {
        KOBWBVariable** present = nullptr;
        const int count = equation->GetRoot()->FindPresentVariables(present);
        for (int i = 0; i < count; ++i)
            entries.push_back(factory.CreateDerivative(equation->GetRoot(), 1, &present[i]));
        delete[] present;
    }
    return entries;
}

void MakeJacobian(benchmark::State& state, bool hugePages) {
    // Without huge pages the resident memory counts the pages the Jacobian fills, to
    // 4 KB; the system's default otherwise.
    prctl(PR_SET_THP_DISABLE, hugePages ? 0 : 1, 0, 0, 0);
    const int points = static_cast<int>(state.range(0));
    double derivatives = 0;
    double nodes = 0;
    double resident = 0;
    double factoryResident = 0;
    double allocated = 0;
    for (auto _ : state) {
        state.PauseTiming();
        bench::ReleaseFreedMemory();
        const std::size_t residentAtStart = bench::ResidentBytes();
        auto factory = std::make_unique<KOBWBFactory>();
        const bench::Sketch sketch = bench::BuildSketch(*factory, points);
        const int nodesBefore = factory->GetNbOfExpressions();
        const std::size_t residentBefore = bench::ResidentBytes();
        const std::size_t allocatedBefore = bench::AllocatedBytes();
        state.ResumeTiming();
        const std::vector<KOBWBExpression*> entries = Jacobian(*factory, sketch);
        state.PauseTiming();
        derivatives = static_cast<double>(entries.size());
        nodes = factory->GetNbOfExpressions() - nodesBefore;
        const std::size_t residentAfter = bench::ResidentBytes();
        resident = static_cast<double>(residentAfter - residentBefore);
        factoryResident = static_cast<double>(residentAfter - residentAtStart);
        allocated = static_cast<double>(bench::AllocatedBytes() - allocatedBefore);
        factory.reset();
        state.ResumeTiming();
    }
    state.counters["derivatives"] = derivatives;
    state.counters["nodes/derivative"] = nodes / derivatives;
    state.counters["resident MB"] = resident / (1024 * 1024);
    state.counters["factory resident MB"] = factoryResident / (1024 * 1024);
    state.counters["resident B/derivative"] = resident / derivatives;
    state.counters["resident B/node"] = resident / nodes;
    state.counters["malloc B/derivative"] = allocated / derivatives;
    prctl(PR_SET_THP_DISABLE, 0, 0, 0, 0);
}

constexpr int evaluatedPoints = 10000;

// Every entry evaluated after ResetBuffer, the plan made outside the loop; with read,
// every entry's value is then read as a caller would.
void EvaluateJacobian(benchmark::State& state, bool read) {
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, evaluatedPoints);
    const std::vector<KOBWBExpression*> entries = Jacobian(factory, sketch);
    const int count = static_cast<int>(entries.size());
    factory.EvaluateExpressions(count, entries.data());
    for (KOBWBExpression* entry : entries) benchmark::DoNotOptimize(entry->GetValue());
    for (auto _ : state) {
        factory.ResetBuffer();
        factory.EvaluateExpressions(count, entries.data());
        if (read)
            for (KOBWBExpression* entry : entries) benchmark::DoNotOptimize(entry->GetValue());
    }
    state.counters["entries"] = count;
}

// The same entries evaluated one by one with GetValue, each walking its graph.
void EvaluateJacobianOneByOne(benchmark::State& state) {
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, evaluatedPoints);
    const std::vector<KOBWBExpression*> entries = Jacobian(factory, sketch);
    for (auto _ : state) {
        factory.ResetBuffer();
        for (KOBWBExpression* entry : entries) benchmark::DoNotOptimize(entry->GetValue());
    }
}

void EvaluateJacobianPlainLoop(benchmark::State& state) {
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, evaluatedPoints);
    const bench::Tape tape = bench::RecordAll(Jacobian(factory, sketch));
    std::vector<bench::Interval> values(tape.nodes.size());
    for (auto _ : state) {
        bench::EvaluateTape(tape, values);
        benchmark::DoNotOptimize(values.data());
    }
    state.counters["tape nodes"] = static_cast<double>(tape.nodes.size());
}

} // namespace

BENCHMARK_CAPTURE(MakeJacobian, HugePages, true)->Arg(2500)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK_CAPTURE(MakeJacobian, SmallPages, false)->Arg(2500)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK_CAPTURE(EvaluateJacobian, Evaluated, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EvaluateJacobian, EvaluatedAndRead, true)->Unit(benchmark::kMillisecond);
BENCHMARK(EvaluateJacobianOneByOne)->Unit(benchmark::kMillisecond);
BENCHMARK(EvaluateJacobianPlainLoop)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
