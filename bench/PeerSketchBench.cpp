#include "TriangleStrip.h"

#include <benchmark/benchmark.h>
#include <slvs.h>

#include <cmath>
#include <memory>
#include <vector>

// The rigid triangle strip of SolverBench, solved by the open sketch solver library
// that Debian packages as libslvs1-dev (a peer for comparison only; this program is
// built when it is installed), beside KOBWBSolver in the same run, from the same start.
// The peer refuses systems past its number of unknowns: the row then reports its
// answer as an error.

namespace {

struct PeerStrip {
    std::vector<Slvs_Param> params;
    std::vector<Slvs_Entity> entities;
    std::vector<Slvs_Constraint> constraints;
};

// The strip in the peer's terms: a workplane at the origin (group 1), every point a 2d
// point in it (group 2), P0's coordinates and P1's ordinate in group 1 (held), one
// point-to-point distance per edge.
PeerStrip BuildPeerStrip(int points) {
    KOBWBFactory factory;
    const bench::TriangleStrip start = bench::BuildTriangleStrip(factory, points);
    PeerStrip strip;
    Slvs_hParam param = 1;
    strip.params.push_back(Slvs_MakeParam(param++, 1, 0.0));
    strip.params.push_back(Slvs_MakeParam(param++, 1, 0.0));
    strip.params.push_back(Slvs_MakeParam(param++, 1, 0.0));
    strip.entities.push_back(Slvs_MakePoint3d(101, 1, 1, 2, 3));
    double qw, qx, qy, qz;
    Slvs_MakeQuaternion(1, 0, 0, 0, 1, 0, &qw, &qx, &qy, &qz);
    strip.params.push_back(Slvs_MakeParam(param++, 1, qw));
    strip.params.push_back(Slvs_MakeParam(param++, 1, qx));
    strip.params.push_back(Slvs_MakeParam(param++, 1, qy));
    strip.params.push_back(Slvs_MakeParam(param++, 1, qz));
    strip.entities.push_back(Slvs_MakeNormal3d(102, 1, 4, 5, 6, 7));
    strip.entities.push_back(Slvs_MakeWorkplane(200, 1, 101, 102));
    for (int k = 0; k < points; ++k) {
        const double x = start.variables[2 * k]->GetExprValue().GetAsDouble();
        const double y = start.variables[2 * k + 1]->GetExprValue().GetAsDouble();
        const Slvs_hParam u = param++;
        const Slvs_hParam v = param++;
        strip.params.push_back(Slvs_MakeParam(u, k == 0 ? 1 : 2, x));
        strip.params.push_back(Slvs_MakeParam(v, k <= 1 ? 1 : 2, k == 1 ? 5.0 * std::sqrt(3.0) : y));
        strip.entities.push_back(Slvs_MakePoint2d(1000 + k, 2, 200, u, v));
    }
    Slvs_hConstraint constraint = 1;
    const auto distance = [&](int a, int b) {
        strip.constraints.push_back(
            Slvs_MakeConstraint(constraint++, 2, SLVS_C_PT_PT_DISTANCE, 200, 10.0, 1000 + a, 1000 + b, 0, 0));
    };
    if (points > 1) distance(0, 1);
    for (int k = 2; k < points; ++k) {
        distance(k, k - 1);
        distance(k, k - 2);
    }
    return strip;
}

void BM_Peer(benchmark::State& state) {
    const int points = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        PeerStrip strip = BuildPeerStrip(points);
        std::vector<Slvs_hConstraint> failed(strip.constraints.size());
        Slvs_System system{};
        system.param = strip.params.data();
        system.params = static_cast<int>(strip.params.size());
        system.entity = strip.entities.data();
        system.entities = static_cast<int>(strip.entities.size());
        system.constraint = strip.constraints.data();
        system.constraints = static_cast<int>(strip.constraints.size());
        system.failed = failed.data();
        system.faileds = static_cast<int>(failed.size());
        state.ResumeTiming();
        Slvs_Solve(&system, 2);
        if (system.result != SLVS_RESULT_OKAY) {
            state.SkipWithError(system.result == SLVS_RESULT_TOO_MANY_UNKNOWNS ? "too many unknowns" : "not solved");
            break;
        }
    }
}

void BM_Solver(benchmark::State& state) {
    const int points = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto factory = std::make_unique<KOBWBFactory>();
        bench::BuildTriangleStrip(*factory, points);
        state.ResumeTiming();
        KOBWBSolver solver(*factory);
        if (solver.Solve() != KOBWBSolverSolved) {
            state.SkipWithError("not solved");
            break;
        }
        state.PauseTiming();
        factory.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(BM_Peer)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Solver)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(3);

BENCHMARK_MAIN();
