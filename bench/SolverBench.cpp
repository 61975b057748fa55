#include "ResidentMemory.h"
#include "TriangleStrip.h"

#include <benchmark/benchmark.h>

#include <Eigen/SparseCore>
#include <Eigen/SparseLU>

#include <cmath>
#include <memory>
#include <vector>

// The rigid triangle strip solved to a residual below 1e-10, from 5% of an edge off
// the answer, at 100 to 100,000 points:
// - Solve: KOBWBSolver, from its construction (Jacobian, tapes) to the answer;
// - HostLoop: the baseline, the loop a host writes over the library without the
//   solver: CreateDerivative per entry, values set one variable at a time, residuals
//   and Jacobian through EvaluateExpressions and GetValue, an undamped Newton step by
//   sparse LU;
// - Presolve: the solver after the symbolic transformations;
// - Contract: the solver within the domains the contractor narrows first;
// - Conflict: the strip with one wrong extra distance, solved until the conflicting
//   equations are named (compare with Solve at the same size).
// Time per point is reported beside each, and MB: the resident memory the solve (or the
// host's loop) added, in megabytes; the ratios are read between rows of one run.

namespace {

double MaxResidual(const bench::TriangleStrip& strip) {
    double worst = 0.0;
    for (KOBWBEquation* equation : strip.equations) {
        const double r = equation->GetRoot()->GetValue().GetAsDouble();
        worst = std::max(worst, std::fabs(r));
    }
    return worst;
}

void Solve(benchmark::State& state, KOBWBSolverPresolve presolve, bool wrongDistance) {
    const int points = static_cast<int>(state.range(0));
    double iterations = 0;
    double residual = 0;
    double conflicting = 0;
    double megabytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto factory = std::make_unique<KOBWBFactory>();
        bench::TriangleStrip strip = bench::BuildTriangleStrip(*factory, points);
        if (wrongDistance) bench::AddDistance(*factory, strip, points / 2, points / 2 - 3, 18.5);
        bench::ReleaseFreedMemory();
        const std::size_t before = bench::ResidentBytes();
        state.ResumeTiming();
        KOBWBSolver solver(*factory);
        solver.SetPresolve(presolve);
        const KOBWBSolverStatus status = solver.Solve();
        state.PauseTiming();
        megabytes = static_cast<double>(bench::ResidentBytes() - before) / 1e6;
        iterations = solver.GetNbOfIterations();
        residual = wrongDistance ? solver.GetResidual() : MaxResidual(strip);
        conflicting = static_cast<double>(solver.GetConflictingEquations().size());
        if (status != (wrongDistance ? KOBWBSolverInconsistent : KOBWBSolverSolved)) {
            state.SkipWithError(KOBWBGetSolverStatusText(status));
            break;
        }
        factory.reset();
        state.ResumeTiming();
    }
    state.counters["iterations"] = iterations;
    state.counters["residual"] = residual;
    if (wrongDistance) state.counters["conflicting"] = conflicting;
    state.counters["MB"] = megabytes;
    state.counters["us/point"] = benchmark::Counter(points * 1e-6, benchmark::Counter::kIsIterationInvariantRate |
                                                                      benchmark::Counter::kInvert);
}

void BM_Solve(benchmark::State& state) { Solve(state, KOBWBPresolveNone, false); }
void BM_Presolve(benchmark::State& state) { Solve(state, KOBWBPresolveTransformations, false); }
void BM_Contract(benchmark::State& state) { Solve(state, KOBWBPresolveContractor, false); }
void BM_Conflict(benchmark::State& state) { Solve(state, KOBWBPresolveNone, true); }

// The host's own Newton loop over the library.
void BM_HostLoop(benchmark::State& state) {
    const int points = static_cast<int>(state.range(0));
    double iterations = 0;
    double residual = 0;
    double megabytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto factory = std::make_unique<KOBWBFactory>();
        bench::TriangleStrip strip = bench::BuildTriangleStrip(*factory, points);
        bench::ReleaseFreedMemory();
        const std::size_t before = bench::ResidentBytes();
        state.ResumeTiming();
        std::vector<KOBWBVariable*> unknowns(strip.variables.begin() + 2, strip.variables.end());
        std::vector<int> column(static_cast<std::size_t>(factory->GetNbOfVariables()), -1);
        for (std::size_t j = 0; j < unknowns.size(); ++j) column[static_cast<std::size_t>(unknowns[j]->GetIdx())] = static_cast<int>(j);
        std::vector<KOBWBExpression*> list;
        std::vector<Eigen::Triplet<double>> pattern;
        for (KOBWBEquation* equation : strip.equations) list.push_back(equation->GetRoot());
        for (std::size_t i = 0; i < strip.equations.size(); ++i) {
            KOBWBVariable** present = nullptr;
            const int count = strip.equations[i]->GetRoot()->FindPresentVariables(present);
            for (int k = 0; k < count; ++k) {
                const int j = column[static_cast<std::size_t>(present[k]->GetIdx())];
                if (j < 0) continue;
                list.push_back(factory->CreateDerivative(strip.equations[i]->GetRoot(), 1, &present[k]));
                pattern.emplace_back(static_cast<int>(i), j, 0.0);
            }
            delete[] present;
        }
        const int m = static_cast<int>(strip.equations.size());
        const int n = static_cast<int>(unknowns.size());
        Eigen::VectorXd f(m);
        Eigen::SparseLU<Eigen::SparseMatrix<double>> lu;
        int steps = 0;
        for (; steps < 50; ++steps) {
            factory->ResetBuffer();
            factory->EvaluateExpressions(static_cast<int>(list.size()), list.data());
            for (int i = 0; i < m; ++i) f[i] = list[static_cast<std::size_t>(i)]->GetValue().GetAsDouble();
            residual = f.cwiseAbs().maxCoeff();
            if (residual < 1e-10) break;
            for (std::size_t k = 0; k < pattern.size(); ++k)
                pattern[k] = Eigen::Triplet<double>(pattern[k].row(), pattern[k].col(),
                                                    list[static_cast<std::size_t>(m) + k]->GetValue().GetAsDouble());
            Eigen::SparseMatrix<double> jacobian(m, n);
            jacobian.setFromTriplets(pattern.begin(), pattern.end());
            lu.compute(jacobian);
            const Eigen::VectorXd dx = lu.solve(-f);
            for (int j = 0; j < n; ++j) {
                KOBWBVariable* v = unknowns[static_cast<std::size_t>(j)];
                v->SetExprValue(KOBWBValue(v->GetExprValue().GetAsDouble() + dx[j]));
            }
        }
        iterations = steps;
        state.PauseTiming();
        megabytes = static_cast<double>(bench::ResidentBytes() - before) / 1e6;
        factory.reset();
        state.ResumeTiming();
    }
    state.counters["iterations"] = iterations;
    state.counters["residual"] = residual;
    state.counters["MB"] = megabytes;
    state.counters["us/point"] = benchmark::Counter(points * 1e-6, benchmark::Counter::kIsIterationInvariantRate |
                                                                      benchmark::Counter::kInvert);
}

void Sizes(benchmark::internal::Benchmark* b) {
    for (int points : {100, 1000, 10000, 100000}) b->Arg(points);
    b->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3)->ReportAggregatesOnly(true);
}

} // namespace

BENCHMARK(BM_Solve)->Apply(Sizes);
BENCHMARK(BM_HostLoop)->Apply(Sizes);
BENCHMARK(BM_Presolve)->Apply(Sizes);
BENCHMARK(BM_Contract)->Apply(Sizes);
BENCHMARK(BM_Conflict)->Apply(Sizes);

BENCHMARK_MAIN();
