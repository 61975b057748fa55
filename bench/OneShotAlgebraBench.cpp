#include "SketchWorkload.h"

#include <benchmark/benchmark.h>

// One-shot algebra calls on one small equation of a sketch, at 1,000 and at 40,000
// points: a call costs what the expression holds, so the two sizes should take about
// the same time. The expression is the sum of squares under the first distance
// constraint, (x1 - x0)^2 + (y1 - y0)^2, a polynomial in x0.

namespace {

struct OneShot {
    KOBWBFactory factory;
    bench::Sketch sketch;
    KOBWBExpression* expression = nullptr;
    KOBWBVariable* x = nullptr;
    explicit OneShot(int points) : sketch(bench::BuildSketch(factory, points)) {
        expression = sketch.equations[sketch.equations.size() - 2]->GetRoot();
        // The root is the difference of sqrt(...) and the constant; find the sqrt's argument.
        while (expression->GetType() != KOBWBSqrtType) expression = expression->GetChild(0);
        expression = expression->GetChild(0);
        x = sketch.variables[sketch.variables.size() - 4];
    }
};

void Coefficients(benchmark::State& state) {
    OneShot setup(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        int degree = 0;
        KOBWBExpression** coefficients = nullptr;
        benchmark::DoNotOptimize(setup.expression->IsPolynomial(setup.x, degree, coefficients));
        delete[] coefficients;
    }
}

void PartialEval(benchmark::State& state) {
    OneShot setup(static_cast<int>(state.range(0)));
    KOBWBExpression* two = setup.factory.CreateIntegerConstant(2);
    for (auto _ : state) benchmark::DoNotOptimize(setup.expression->PartialEval(setup.x, two));
}

void Simplify(benchmark::State& state) {
    OneShot setup(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(KOBWBPolynomialTools::Simplify(setup.expression));
}

} // namespace

BENCHMARK(Coefficients)->Arg(1000)->Arg(40000)->Unit(benchmark::kMicrosecond);
BENCHMARK(PartialEval)->Arg(1000)->Arg(40000)->Unit(benchmark::kMicrosecond)->Iterations(2000);
BENCHMARK(Simplify)->Arg(1000)->Arg(40000)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
