#include "KOBWBUnivariatePolynomialTools.h"
#include "ResidentMemory.h"
#include "SparsePolynomialWorkload.h"

#include <arb_fmpz_poly.h>
#include <flint/fmpq_poly.h>
#include <flint/fmpz_mpoly.h>

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

// The exact polynomial tools next to FLINT (and its ball arithmetic) on the same
// inputs, in one run: each workload is measured twice, Ours/<name> and Flint/<name>,
// so that their ratio is read off one report. Workloads: the expansion of
// (x + y + z + 1)^20, the product of two sparse polynomials of 1,000 terms over six
// atoms, the gcd and the resultant of dense polynomials of degree 100, the
// isolation of the real roots of a polynomial of degree 50, and gcds, resultants
// and isolations of small polynomials (degrees 2 to 6).

namespace {

const int x = 1;

// FLINT values freed when the benchmark ends.
struct IntegerPolynomial {
    IntegerPolynomial() { fmpz_poly_init(value); }
    ~IntegerPolynomial() { fmpz_poly_clear(value); }
    IntegerPolynomial(const IntegerPolynomial&) = delete;
    IntegerPolynomial& operator=(const IntegerPolynomial&) = delete;
    fmpz_poly_t value;
};

struct RationalPolynomial {
    RationalPolynomial() { fmpq_poly_init(value); }
    ~RationalPolynomial() { fmpq_poly_clear(value); }
    RationalPolynomial(const RationalPolynomial&) = delete;
    RationalPolynomial& operator=(const RationalPolynomial&) = delete;
    fmpq_poly_t value;
};

struct Context {
    explicit Context(slong variables) { fmpz_mpoly_ctx_init(value, variables, ORD_LEX); }
    ~Context() { fmpz_mpoly_ctx_clear(value); }
    fmpz_mpoly_ctx_t value;
};

struct SparsePolynomial {
    explicit SparsePolynomial(Context& context) : context(context) { fmpz_mpoly_init(value, context.value); }
    ~SparsePolynomial() { fmpz_mpoly_clear(value, context.value); }
    SparsePolynomial(const SparsePolynomial&) = delete;
    SparsePolynomial& operator=(const SparsePolynomial&) = delete;
    Context& context;
    fmpz_mpoly_t value;
};

// The same integer polynomial in x for FLINT, read through the coefficients' text.
void ToFlint(const KOBWBPolynomial& p, fmpz_poly_t result) {
    fmpz_poly_zero(result);
    fmpz_t c;
    fmpz_init(c);
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        fmpz_set_str(c, term.coefficient.GetExact().ToString().c_str(), 10);
        fmpz_poly_set_coeff_fmpz(result, term.monomial.empty() ? 0 : term.monomial[0].exponent, c);
    }
    fmpz_clear(c);
}

void ToFlint(const KOBWBPolynomial& p, fmpq_poly_t result) {
    IntegerPolynomial integer;
    ToFlint(p, integer.value);
    fmpq_poly_set_fmpz_poly(result, integer.value);
}

void ToFlint(const KOBWBPolynomial& p, const std::vector<int>& atoms, SparsePolynomial& result) {
    fmpz_mpoly_zero(result.value, result.context.value);
    std::vector<ulong> exponents(atoms.size());
    fmpz_t c;
    fmpz_init(c);
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        std::fill(exponents.begin(), exponents.end(), 0);
        for (const KOBWBMonomialFactor& factor : term.monomial)
            for (size_t i = 0; i < atoms.size(); ++i)
                if (atoms[i] == factor.atom) exponents[i] = static_cast<ulong>(factor.exponent);
        fmpz_set_str(c, term.coefficient.GetExact().ToString().c_str(), 10);
        fmpz_mpoly_push_term_fmpz_ui(result.value, c, exponents.data(), result.context.value);
    }
    fmpz_clear(c);
    fmpz_mpoly_sort_terms(result.value, result.context.value);
    fmpz_mpoly_combine_like_terms(result.value, result.context.value);
}

KOBWBPolynomial Dense(std::mt19937_64& engine, int degree) {
    std::uniform_int_distribution<long long> coefficient(-(1LL << 31), 1LL << 31);
    std::vector<KOBWBPolynomialTerm> terms;
    for (int i = 0; i <= degree; ++i) {
        long long c = coefficient(engine);
        if (i == degree && c == 0) c = 1;
        KOBWBMonomial monomial;
        if (i > 0) monomial.push_back({x, i});
        terms.push_back({monomial, KOBWBCoefficient(c)});
    }
    return KOBWBPolynomial::FromTerms(terms);
}

KOBWBPolynomial SumOfAtoms(int count) {
    KOBWBPolynomial sum(KOBWBCoefficient(1));
    for (int atom = 1; atom <= count; ++atom) sum += KOBWBPolynomial::Atom(atom);
    return sum;
}

// 20 rational roots between -5 and 5 and 15 factors x^2 + k without real roots, with
// integer coefficients.
KOBWBPolynomial RootsDegree50() {
    KOBWBPolynomial p(KOBWBCoefficient(1));
    const KOBWBPolynomial atom = KOBWBPolynomial::Atom(x);
    for (int i = 0; i < 20; ++i)
        p = p * (KOBWBPolynomial(KOBWBCoefficient(4)) * atom - KOBWBPolynomial(KOBWBCoefficient(2 * i - 19)));
    for (int k = 1; k <= 15; ++k) p = p * (KOBWBPolynomial::Atom(x, 2) + KOBWBPolynomial(KOBWBCoefficient(k)));
    return p;
}

// Pairs of small polynomials of degrees 2 to 6 with small coefficients, half of them
// with a common linear factor.
std::vector<std::pair<KOBWBPolynomial, KOBWBPolynomial>> SmallPairs() {
    std::mt19937_64 engine(7);
    std::uniform_int_distribution<long long> coefficient(-20, 20);
    const auto random = [&](int degree) {
        std::vector<KOBWBPolynomialTerm> terms;
        for (int i = 0; i <= degree; ++i) {
            long long c = coefficient(engine);
            if (i == degree && c == 0) c = 3;
            KOBWBMonomial monomial;
            if (i > 0) monomial.push_back({x, i});
            terms.push_back({monomial, KOBWBCoefficient(c)});
        }
        return KOBWBPolynomial::FromTerms(terms);
    };
    std::vector<std::pair<KOBWBPolynomial, KOBWBPolynomial>> pairs;
    for (int degree = 2; degree <= 6; ++degree) {
        pairs.push_back({random(degree), random(degree - 1)});
        const KOBWBPolynomial common = random(1);
        pairs.push_back({common * random(degree - 1), common * random(degree - 2)});
    }
    return pairs;
}

// Square-free polynomials of degrees 2 to 6 with two real roots or more.
std::vector<KOBWBPolynomial> SmallRootPolynomials() {
    std::vector<KOBWBPolynomial> polynomials;
    const KOBWBPolynomial atom = KOBWBPolynomial::Atom(x);
    KOBWBPolynomial p(KOBWBCoefficient(1));
    for (int degree = 1; degree <= 6; ++degree) {
        p = p * (KOBWBPolynomial(KOBWBCoefficient(degree + 1)) * atom - KOBWBPolynomial(KOBWBCoefficient(3 * degree - 8)));
        if (degree >= 2) polynomials.push_back(p + KOBWBPolynomial(KOBWBCoefficient(degree % 2 ? 1 : -1)));
    }
    return polynomials;
}

// --- Expansion and sparse products --------------------------------------------------

void OursExpandPower(benchmark::State& state) {
    const KOBWBPolynomial sum = SumOfAtoms(3);
    KOBWBPolynomial power;
    for (auto _ : state) {
        sum.Power(20, 100000, power);
        benchmark::DoNotOptimize(power);
    }
    state.counters["terms"] = power.GetNbOfTerms();
}

void FlintExpandPower(benchmark::State& state) {
    Context context(3);
    SparsePolynomial sum(context), power(context);
    ToFlint(SumOfAtoms(3), {1, 2, 3}, sum);
    for (auto _ : state) {
        fmpz_mpoly_pow_ui(power.value, sum.value, 20, context.value);
        benchmark::DoNotOptimize(power.value);
    }
    state.counters["terms"] = static_cast<double>(fmpz_mpoly_length(power.value, context.value));
}

void OursSparseProduct(benchmark::State& state) {
    const KOBWBPolynomial a = bench::SparsePolynomial(1), b = bench::SparsePolynomial(2);
    KOBWBPolynomial product;
    for (auto _ : state) {
        product = KOBWBPolynomial::Multiply(a, b);
        benchmark::DoNotOptimize(product);
    }
    state.counters["terms"] = product.GetNbOfTerms();
    // The resident memory the product holds, built once more from fresh pages.
    product = KOBWBPolynomial();
    bench::ReleaseFreedMemory();
    const std::size_t before = bench::ResidentBytes();
    product = KOBWBPolynomial::Multiply(a, b);
    state.counters["MB"] = static_cast<double>(bench::ResidentBytes() - before) / 1e6;
}

// The same product written over the one before, as FLINT's own product below reuses
// its result.
void OursSparseProductInPlace(benchmark::State& state) {
    const KOBWBPolynomial a = bench::SparsePolynomial(1), b = bench::SparsePolynomial(2);
    KOBWBPolynomial product;
    for (auto _ : state) {
        KOBWBPolynomial::Multiply(a, b, product);
        benchmark::DoNotOptimize(product);
    }
    state.counters["terms"] = product.GetNbOfTerms();
}

void FlintSparseProduct(benchmark::State& state) {
    Context context(6);
    SparsePolynomial a(context), b(context), product(context);
    const std::vector<int> atoms{1, 2, 3, 4, 5, 6};
    ToFlint(bench::SparsePolynomial(1), atoms, a);
    ToFlint(bench::SparsePolynomial(2), atoms, b);
    for (auto _ : state) {
        fmpz_mpoly_mul(product.value, a.value, b.value, context.value);
        benchmark::DoNotOptimize(product.value);
    }
    state.counters["terms"] = static_cast<double>(fmpz_mpoly_length(product.value, context.value));
}

// The same product into a new polynomial each time, freed after it: the work of a
// call that hands back a new result, as the tools' own product does.
void FlintSparseProductFresh(benchmark::State& state) {
    Context context(6);
    SparsePolynomial a(context), b(context);
    const std::vector<int> atoms{1, 2, 3, 4, 5, 6};
    ToFlint(bench::SparsePolynomial(1), atoms, a);
    ToFlint(bench::SparsePolynomial(2), atoms, b);
    slong terms = 0;
    for (auto _ : state) {
        SparsePolynomial product(context);
        fmpz_mpoly_mul(product.value, a.value, b.value, context.value);
        terms = fmpz_mpoly_length(product.value, context.value);
        benchmark::DoNotOptimize(product.value);
    }
    state.counters["terms"] = static_cast<double>(terms);
    bench::ReleaseFreedMemory();
    const std::size_t before = bench::ResidentBytes();
    SparsePolynomial product(context);
    fmpz_mpoly_mul(product.value, a.value, b.value, context.value);
    state.counters["MB"] = static_cast<double>(bench::ResidentBytes() - before) / 1e6;
}

// --- Degree 100 and 50 ----------------------------------------------------------------

struct Degree100 {
    KOBWBPolynomial a, b, c, d;
    Degree100() {
        std::mt19937_64 engine(42);
        const KOBWBPolynomial common = Dense(engine, 50);
        a = common * Dense(engine, 50);
        b = common * Dense(engine, 50);
        c = Dense(engine, 100);
        d = Dense(engine, 100);
    }
};

void OursGcdDegree100(benchmark::State& state) {
    const Degree100 input;
    KOBWBPolynomial gcd;
    for (auto _ : state) {
        KOBWBUnivariatePolynomialTools::Gcd(input.a, input.b, x, gcd);
        benchmark::DoNotOptimize(gcd);
    }
    state.counters["gcd degree"] = static_cast<double>(gcd.Degree(x));
}

void FlintGcdDegree100(benchmark::State& state) {
    const Degree100 input;
    RationalPolynomial a, b, gcd;
    ToFlint(input.a, a.value);
    ToFlint(input.b, b.value);
    for (auto _ : state) {
        fmpq_poly_gcd(gcd.value, a.value, b.value);
        benchmark::DoNotOptimize(gcd.value);
    }
    state.counters["gcd degree"] = static_cast<double>(fmpq_poly_degree(gcd.value));
}

void OursResultantDegree100(benchmark::State& state) {
    const Degree100 input;
    KOBWBRational resultant;
    for (auto _ : state) {
        KOBWBUnivariatePolynomialTools::Resultant(input.c, input.d, x, resultant);
        benchmark::DoNotOptimize(resultant);
    }
}

void FlintResultantDegree100(benchmark::State& state) {
    const Degree100 input;
    RationalPolynomial c, d;
    ToFlint(input.c, c.value);
    ToFlint(input.d, d.value);
    fmpq_t resultant;
    fmpq_init(resultant);
    for (auto _ : state) {
        fmpq_poly_resultant(resultant, c.value, d.value);
        benchmark::DoNotOptimize(resultant);
    }
    fmpq_clear(resultant);
}

void OursRealRootsDegree50(benchmark::State& state) {
    const KOBWBPolynomial p = RootsDegree50();
    std::vector<KOBWBRationalInterval> roots;
    for (auto _ : state) {
        KOBWBUnivariatePolynomialTools::IsolateRealRoots(p, x, roots);
        benchmark::DoNotOptimize(roots);
    }
    state.counters["roots"] = static_cast<double>(roots.size());
}

// Certified enclosures of every complex root, the real ones first.
void FlintRealRootsDegree50(benchmark::State& state) {
    IntegerPolynomial p;
    ToFlint(RootsDegree50(), p.value);
    const slong degree = fmpz_poly_degree(p.value);
    acb_ptr roots = _acb_vec_init(degree);
    for (auto _ : state) {
        arb_fmpz_poly_complex_roots(roots, p.value, 0, 2);
        benchmark::DoNotOptimize(roots);
    }
    _acb_vec_clear(roots, degree);
}

// --- Degrees 2 to 6 -------------------------------------------------------------------

void OursSmallGcd(benchmark::State& state) {
    const auto pairs = SmallPairs();
    KOBWBPolynomial gcd;
    for (auto _ : state)
        for (const auto& pair : pairs) {
            KOBWBUnivariatePolynomialTools::Gcd(pair.first, pair.second, x, gcd);
            benchmark::DoNotOptimize(gcd);
        }
    state.counters["per call"] = benchmark::Counter(static_cast<double>(pairs.size()),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void FlintSmallGcd(benchmark::State& state) {
    const auto pairs = SmallPairs();
    std::vector<RationalPolynomial> flint(2 * pairs.size());
    for (size_t i = 0; i < pairs.size(); ++i) {
        ToFlint(pairs[i].first, flint[2 * i].value);
        ToFlint(pairs[i].second, flint[2 * i + 1].value);
    }
    RationalPolynomial gcd;
    for (auto _ : state)
        for (size_t i = 0; i < pairs.size(); ++i) {
            fmpq_poly_gcd(gcd.value, flint[2 * i].value, flint[2 * i + 1].value);
            benchmark::DoNotOptimize(gcd.value);
        }
    state.counters["per call"] = benchmark::Counter(static_cast<double>(pairs.size()),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void OursSmallResultant(benchmark::State& state) {
    const auto pairs = SmallPairs();
    KOBWBRational resultant;
    for (auto _ : state)
        for (const auto& pair : pairs) {
            KOBWBUnivariatePolynomialTools::Resultant(pair.first, pair.second, x, resultant);
            benchmark::DoNotOptimize(resultant);
        }
    state.counters["per call"] = benchmark::Counter(static_cast<double>(pairs.size()),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void FlintSmallResultant(benchmark::State& state) {
    const auto pairs = SmallPairs();
    std::vector<RationalPolynomial> flint(2 * pairs.size());
    for (size_t i = 0; i < pairs.size(); ++i) {
        ToFlint(pairs[i].first, flint[2 * i].value);
        ToFlint(pairs[i].second, flint[2 * i + 1].value);
    }
    fmpq_t resultant;
    fmpq_init(resultant);
    for (auto _ : state)
        for (size_t i = 0; i < pairs.size(); ++i) {
            fmpq_poly_resultant(resultant, flint[2 * i].value, flint[2 * i + 1].value);
            benchmark::DoNotOptimize(resultant);
        }
    fmpq_clear(resultant);
    state.counters["per call"] = benchmark::Counter(static_cast<double>(pairs.size()),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void OursSmallRealRoots(benchmark::State& state) {
    const auto polynomials = SmallRootPolynomials();
    std::vector<KOBWBRationalInterval> roots;
    for (auto _ : state)
        for (const KOBWBPolynomial& p : polynomials) {
            KOBWBUnivariatePolynomialTools::IsolateRealRoots(p, x, roots);
            benchmark::DoNotOptimize(roots);
        }
    state.counters["per call"] = benchmark::Counter(static_cast<double>(polynomials.size()),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void FlintSmallRealRoots(benchmark::State& state) {
    const auto polynomials = SmallRootPolynomials();
    std::vector<IntegerPolynomial> flint(polynomials.size());
    for (size_t i = 0; i < polynomials.size(); ++i) ToFlint(polynomials[i], flint[i].value);
    acb_ptr roots = _acb_vec_init(6);
    for (auto _ : state)
        for (const IntegerPolynomial& p : flint) {
            arb_fmpz_poly_complex_roots(roots, p.value, 0, 2);
            benchmark::DoNotOptimize(roots);
        }
    _acb_vec_clear(roots, 6);
    state.counters["per call"] = benchmark::Counter(static_cast<double>(polynomials.size()),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

} // namespace

BENCHMARK(OursExpandPower)->Name("Ours/ExpandPower")->Unit(benchmark::kMillisecond);
BENCHMARK(FlintExpandPower)->Name("Flint/ExpandPower")->Unit(benchmark::kMillisecond);
BENCHMARK(OursSparseProduct)->Name("Ours/SparseProduct")->Unit(benchmark::kMillisecond);
BENCHMARK(OursSparseProductInPlace)->Name("Ours/SparseProductInPlace")->Unit(benchmark::kMillisecond);
BENCHMARK(FlintSparseProduct)->Name("Flint/SparseProduct")->Unit(benchmark::kMillisecond);
BENCHMARK(FlintSparseProductFresh)->Name("Flint/SparseProductFresh")->Unit(benchmark::kMillisecond);
BENCHMARK(OursGcdDegree100)->Name("Ours/GcdDegree100")->Unit(benchmark::kMicrosecond);
BENCHMARK(FlintGcdDegree100)->Name("Flint/GcdDegree100")->Unit(benchmark::kMicrosecond);
BENCHMARK(OursResultantDegree100)->Name("Ours/ResultantDegree100")->Unit(benchmark::kMicrosecond);
BENCHMARK(FlintResultantDegree100)->Name("Flint/ResultantDegree100")->Unit(benchmark::kMicrosecond);
BENCHMARK(OursRealRootsDegree50)->Name("Ours/RealRootsDegree50")->Unit(benchmark::kMicrosecond);
BENCHMARK(FlintRealRootsDegree50)->Name("Flint/RealRootsDegree50")->Unit(benchmark::kMicrosecond);
BENCHMARK(OursSmallGcd)->Name("Ours/SmallGcd")->Unit(benchmark::kMicrosecond);
BENCHMARK(FlintSmallGcd)->Name("Flint/SmallGcd")->Unit(benchmark::kMicrosecond);
BENCHMARK(OursSmallResultant)->Name("Ours/SmallResultant")->Unit(benchmark::kMicrosecond);
BENCHMARK(FlintSmallResultant)->Name("Flint/SmallResultant")->Unit(benchmark::kMicrosecond);
BENCHMARK(OursSmallRealRoots)->Name("Ours/SmallRealRoots")->Unit(benchmark::kMicrosecond);
BENCHMARK(FlintSmallRealRoots)->Name("Flint/SmallRealRoots")->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
