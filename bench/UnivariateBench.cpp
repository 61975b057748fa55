#include "KOBWBUnivariatePolynomialTools.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

// The univariate tools: the gcd of two dense polynomials of degree 100 with a common
// factor of degree 50 and coefficients of about 64 bits, and the isolation of the
// 20 real roots of a polynomial of degree 50.

namespace {

const int x = 1;

KOBWBPolynomial Dense(std::mt19937_64& engine, int degree) {
    std::uniform_int_distribution<long long> coefficient(-(1LL << 31), 1LL << 31);
    KOBWBPolynomial p;
    for (int i = 0; i <= degree; ++i) {
        long long c = coefficient(engine);
        if (i == degree && c == 0) c = 1;
        p += KOBWBPolynomial::Atom(x, i) * KOBWBPolynomial(KOBWBCoefficient(c));
    }
    return p;
}

void GcdDegree100(benchmark::State& state) {
    std::mt19937_64 engine(42);
    const KOBWBPolynomial common = Dense(engine, 50);
    const KOBWBPolynomial a = common * Dense(engine, 50), b = common * Dense(engine, 50);
    KOBWBPolynomial gcd;
    for (auto _ : state) {
        KOBWBUnivariatePolynomialTools::Gcd(a, b, x, gcd);
        benchmark::DoNotOptimize(gcd);
    }
    state.counters["gcd degree"] = static_cast<double>(gcd.Degree(x));
}

// 20 rational roots between -5 and 5 and 15 factors x^2 + k without real roots.
void RealRootsDegree50(benchmark::State& state) {
    KOBWBPolynomial p(KOBWBCoefficient(1));
    const KOBWBPolynomial atom = KOBWBPolynomial::Atom(x);
    for (int i = 0; i < 20; ++i)
        p = p * (atom - KOBWBPolynomial(KOBWBCoefficient(KOBWBRational(2 * i - 19, 4))));
    for (int k = 1; k <= 15; ++k) p = p * (KOBWBPolynomial::Atom(x, 2) + KOBWBPolynomial(KOBWBCoefficient(k)));
    std::vector<KOBWBRealInterval> roots;
    for (auto _ : state) {
        KOBWBUnivariatePolynomialTools::IsolateRealRoots(p, x, roots);
        benchmark::DoNotOptimize(roots);
    }
    state.counters["roots"] = static_cast<double>(roots.size());
}

}

BENCHMARK(GcdDegree100)->Unit(benchmark::kMillisecond);
BENCHMARK(RealRootsDegree50)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
