#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <vector>

// The contractor on the sketch workload (P points, a distance and an angle equation
// between consecutive points).
// - ReviseOverForward: one revision of every equation against one forward evaluation
//   of every root over the same domains, timed alternately in the same loop; the
//   counter "ratio" is revise time over forward time (target: at most 4).
// - PropagateFixingPoints: from a wide box, the points are fixed one by one (to a box of
//   width 2e-6 around a consistent drawing) and the contractor propagates from each to
//   its fixed point; the counters give the revisions, the passes (revisions over the
//   number of equations) and the time.

namespace {

int points = 10000;

using Clock = std::chrono::steady_clock;

double Seconds(Clock::duration d) { return std::chrono::duration<double>(d).count(); }

std::vector<KOBWBValue> DomainsOf(const bench::Sketch& sketch) {
    std::vector<KOBWBValue> domains;
    for (KOBWBVariable* v : sketch.variables) domains.push_back(v->GetExprValue());
    return domains;
}

void Restore(const bench::Sketch& sketch, const std::vector<KOBWBValue>& domains) {
    for (size_t i = 0; i < domains.size(); ++i) sketch.variables[i]->SetExprValue(domains[i]);
}

void ReviseOverForward(benchmark::State& state) {
    KOBWBFactory factory;
    const bench::Sketch sketch = bench::BuildSketch(factory, points);
    const std::vector<KOBWBValue> domains = DomainsOf(sketch);
    KOBWBContractor contractor(factory);
    // The first pass makes the evaluation plans and the contractor's tapes.
    for (KOBWBEquation* equation : sketch.equations) contractor.Revise(equation);
    Restore(sketch, domains);
    Clock::duration forward{};
    Clock::duration revise{};
    for (auto _ : state) {
        Restore(sketch, domains);
        const Clock::time_point start = Clock::now();
        factory.ResetBuffer(nullptr);
        for (KOBWBEquation* equation : sketch.equations)
            benchmark::DoNotOptimize(equation->GetRoot()->GetValue());
        const Clock::time_point middle = Clock::now();
        factory.ResetBuffer(nullptr);
        for (KOBWBEquation* equation : sketch.equations)
            benchmark::DoNotOptimize(contractor.Revise(equation));
        const Clock::time_point end = Clock::now();
        forward += middle - start;
        revise += end - middle;
    }
    const double iterations = static_cast<double>(state.iterations());
    state.counters["forward ms"] = 1e3 * Seconds(forward) / iterations;
    state.counters["revise ms"] = 1e3 * Seconds(revise) / iterations;
    state.counters["ratio"] = Seconds(revise) / Seconds(forward);
}

void PropagateFixingPoints(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        KOBWBFactory factory;
        const bench::Sketch sketch = bench::BuildSketch(factory, points);
        const double wide = 20.0 * points;
        for (KOBWBVariable* v : sketch.variables) v->SetExprValue(KOBWBValue(KOBWBRealInterval{-wide, wide}));
        KOBWBContractor contractor(factory);
        // A drawing that satisfies the equations: each point 11.18 away at the angle 0.4636.
        const double stepX = 11.18 * std::cos(0.4636);
        const double stepY = 11.18 * std::sin(0.4636);
        long revisions = 0;
        int unsolved = 0;
        state.ResumeTiming();
        const Clock::time_point start = Clock::now();
        for (int i = 0; i < points; ++i) {
            KOBWBVariable* fixed[] = {sketch.variables[2 * i], sketch.variables[2 * i + 1]};
            fixed[0]->SetExprValue(KOBWBValue(KOBWBRealInterval{i * stepX - 1e-6, i * stepX + 1e-6}));
            fixed[1]->SetExprValue(KOBWBValue(KOBWBRealInterval{i * stepY - 1e-6, i * stepY + 1e-6}));
            unsolved += contractor.Propagate(2, fixed) == KOBWBContractionNoSolution;
            revisions += contractor.GetNbOfRevisions();
        }
        const double seconds = Seconds(Clock::now() - start);
        state.counters["revisions"] = static_cast<double>(revisions);
        state.counters["passes"] = static_cast<double>(revisions) / sketch.equations.size();
        state.counters["no solution"] = unsolved;
        state.counters["us/revision"] = 1e6 * seconds / static_cast<double>(revisions);
    }
}

} // namespace

BENCHMARK(ReviseOverForward)->Unit(benchmark::kMillisecond);
BENCHMARK(PropagateFixingPoints)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char** argv) {
    if (const char* override = std::getenv("SKETCH_POINTS")) points = std::atoi(override);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
