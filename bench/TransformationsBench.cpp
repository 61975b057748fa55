#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

#include <vector>

// The symbolic transformations over whole systems, the factory built anew for each
// pass and only the run timed: a chain of points x[i+1] = x[i] + c[i] with a distance
// equation at every step (mode 2|4|8|16, sizes in equations, to show how a run
// scales), and the sketch workload with mode 4|8.

namespace {

void BuildChain(KOBWBFactory& factory, int equations) {
    const int steps = equations / 2;
    std::vector<KOBWBVariable*> x, y;
    for (int i = 0; i <= steps; ++i) {
        x.push_back(factory.CreateVariable());
        y.push_back(factory.CreateVariable());
    }
    for (int i = 0; i < steps; ++i) {
        factory.AddEquation(x[i + 1], KOBWBEqEqual, factory.CreateSum(x[i], factory.CreateIntegerConstant(i % 7 + 1)));
        KOBWBExpression* dx = factory.CreateSub(x[i + 1], x[i]);
        KOBWBExpression* dy = factory.CreateSub(y[i + 1], y[i]);
        KOBWBExpression* length = factory.CreateSqrt(factory.CreateSum(factory.CreatePower(dx, 2), factory.CreatePower(dy, 2)));
        factory.AddEquation(length, KOBWBEqEqual, factory.CreateRealConstant(10.0));
    }
}

void Run(benchmark::State& state, unsigned mode, void (*build)(KOBWBFactory&, int)) {
    const int size = static_cast<int>(state.range(0));
    int equations = 0;
    for (auto _ : state) {
        state.PauseTiming();
        {
            KOBWBFactory factory;
            build(factory, size);
            equations = factory.GetNbOfEquations();
            KOBWBSymbolicTransformations* transformations = KOBCreateWBSymbolicTransformations(0, factory);
            transformations->SetMode(mode);
            state.ResumeTiming();
            transformations->Run();
            state.PauseTiming();
            KOBRemove(transformations);
        }
        state.ResumeTiming();
    }
    state.counters["time per equation"] =
        benchmark::Counter(equations, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Chain(benchmark::State& state) {
    Run(state, KOBWBEliminateLinear | KOBWBSimplifyEquations | KOBWBBinarizeOperators | KOBWBJudgeInequalities, BuildChain);
}

void Sketch(benchmark::State& state) {
    Run(state, KOBWBSimplifyEquations | KOBWBBinarizeOperators,
        [](KOBWBFactory& factory, int points) { bench::BuildSketch(factory, points); });
}

} // namespace

BENCHMARK(Chain)->Arg(1000)->Arg(4000)->Arg(16000)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(Sketch)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK_MAIN();
