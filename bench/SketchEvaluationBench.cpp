#include "AllocationCounter.h"
#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <unordered_map>
#include <vector>

// One full evaluation of every equation root of the sketch after ResetBuffer,
// against the same graph evaluated by a plain loop over a topologically ordered
// array of two-double intervals.

namespace {

int points = 10000;

struct Interval {
    double lower;
    double upper;
};

Interval Clamp(double lower, double upper) {
    constexpr double max = 3.4028234663852886e+38;
    if (!(lower <= upper) || lower > max || upper < -max) return {max, -max};
    return {std::max(lower, -max), std::min(upper, max)};
}

// A node of the baseline tape: its code and the positions of its children.
struct TapeNode {
    KOBWBExpressionType type;
    int first;
    int count;
    Interval constant;
};

struct Tape {
    std::vector<TapeNode> nodes;
    std::vector<int> children;
    std::vector<int> roots;
};

int Record(Tape& tape, KOBWBExpression* node, std::unordered_map<KOBWBExpression*, int>& seen) {
    const auto known = seen.find(node);
    if (known != seen.end()) return known->second;
    std::vector<int> children;
    for (int i = 0; i < node->GetNbOfChildren(); ++i) children.push_back(Record(tape, node->GetChild(i), seen));
    TapeNode entry{node->GetType(), static_cast<int>(tape.children.size()), static_cast<int>(children.size()), {0, 0}};
    if (node->GetNbOfChildren() == 0) {
        const KOBWBRealInterval value = node->GetExprValue().GetAsRealInterval();
        entry.constant = {value.lower, value.upper};
    }
    tape.children.insert(tape.children.end(), children.begin(), children.end());
    tape.nodes.push_back(entry);
    const int position = static_cast<int>(tape.nodes.size()) - 1;
    seen.emplace(node, position);
    return position;
}

Interval Multiply(Interval a, Interval b) {
    const double p[] = {a.lower * b.lower, a.lower * b.upper, a.upper * b.lower, a.upper * b.upper};
    return Clamp(*std::min_element(p, p + 4), *std::max_element(p, p + 4));
}

Interval Atan2(Interval y, Interval x) {
    if (x.lower <= 0) return {-3.141592653589793, 3.141592653589793};
    const double c[] = {std::atan2(y.lower, x.lower), std::atan2(y.lower, x.upper), std::atan2(y.upper, x.lower),
                        std::atan2(y.upper, x.upper)};
    return Clamp(*std::min_element(c, c + 4), *std::max_element(c, c + 4));
}

void EvaluateTape(const Tape& tape, std::vector<Interval>& values) {
    for (size_t i = 0; i < tape.nodes.size(); ++i) {
        const TapeNode& node = tape.nodes[i];
        const int* c = tape.children.data() + node.first;
        Interval result = node.constant;
        switch (node.type) {
        case KOBWBSumType:
            result = values[c[0]];
            for (int k = 1; k < node.count; ++k)
                result = Clamp(result.lower + values[c[k]].lower, result.upper + values[c[k]].upper);
            break;
        case KOBWBProductType:
            result = values[c[0]];
            for (int k = 1; k < node.count; ++k) result = Multiply(result, values[c[k]]);
            break;
        case KOBWBPowerType: {
            const Interval a = values[c[0]];
            const double l = a.lower * a.lower, u = a.upper * a.upper;
            result = a.lower <= 0 && a.upper >= 0 ? Clamp(0, std::max(l, u)) : Clamp(std::min(l, u), std::max(l, u));
            break;
        }
        case KOBWBSqrtType: {
            const Interval a = values[c[0]];
            result = a.upper < 0 ? Interval{1, -1} : Clamp(std::sqrt(std::max(a.lower, 0.0)), std::sqrt(a.upper));
            break;
        }
        case KOBWBAtan2Type: result = Atan2(values[c[0]], values[c[1]]); break;
        default: break;
        }
        values[i] = result;
    }
}

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
    Tape tape;
    std::unordered_map<KOBWBExpression*, int> seen;
    for (KOBWBEquation* equation : sketch.equations) tape.roots.push_back(Record(tape, equation->GetRoot(), seen));
    std::vector<Interval> values(tape.nodes.size());
    for (auto _ : state) {
        EvaluateTape(tape, values);
        benchmark::DoNotOptimize(values.data());
    }
    const double nodes = static_cast<double>(tape.nodes.size());
    state.counters["nodes"] = nodes;
    state.counters["ns/node"] = benchmark::Counter(nodes, benchmark::Counter::kIsIterationInvariantRate |
                                                              benchmark::Counter::kInvert);
}

// Bytes allocated per binary operator node, its children list included.
void BinaryNodeMemory(benchmark::State& state) {
    for (auto _ : state) {
        KOBWBFactory factory;
        KOBWBVariable* x = factory.CreateVariable();
        KOBWBVariable* y = factory.CreateVariable();
        constexpr int count = 100000;
        const std::size_t before = bench::AllocatedBytes();
        for (int i = 0; i < count; ++i) factory.CreateQuotient(x, y);
        state.counters["bytes/binary node"] = static_cast<double>(bench::AllocatedBytes() - before) / count;
    }
}

// Bytes allocated per operator node of the whole sketch.
void SketchMemory(benchmark::State& state) {
    for (auto _ : state) {
        KOBWBFactory factory;
        const std::size_t before = bench::AllocatedBytes();
        bench::BuildSketch(factory, points);
        state.counters["bytes/node"] =
            static_cast<double>(bench::AllocatedBytes() - before) / factory.GetNbOfExpressions();
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
