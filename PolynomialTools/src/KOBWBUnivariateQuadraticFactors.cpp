#include "KOBWBUnivariateArithmetic.h"

#include <cmath>
#include <complex>

// The rational quadratic factors of a polynomial, found from its complex roots: a
// factor a' x^2 + b' x + c' over the integers of p with integer coefficients and
// leading coefficient a divides p only if a' divides a, so a (r1 + r2) and a r1 r2
// are integers for the two roots r1, r2 of the factor. Rounding them gives the
// candidate, and exact division decides.

namespace KOBWBUnivariateArithmetic {

namespace {

typedef std::complex<double> Complex;

// The complex roots of p by the Durand-Kerner iteration, in double; empty when a
// coefficient is past the doubles or the iteration does not settle.
std::vector<Complex> ComplexRoots(const Row& p) {
    const size_t n = p.size() - 1;
    std::vector<double> monic(p.size());
    double bound = 0.0;
    for (size_t i = 0; i < p.size(); ++i) {
        monic[i] = (p[i] / p.back()).ToDouble();
        if (!std::isfinite(monic[i])) return {};
        if (i < n) bound = std::max(bound, std::fabs(monic[i]));
    }
    std::vector<Complex> roots(n);
    const double radius = 1.0 + bound;
    for (size_t k = 0; k < n; ++k) roots[k] = std::polar(radius, 0.4 + 6.283185307179586 * static_cast<double>(k) / static_cast<double>(n));
    for (int iteration = 0; iteration < 2000; ++iteration) {
        double change = 0.0;
        for (size_t k = 0; k < n; ++k) {
            Complex value(1.0), denominator(1.0);
            for (size_t i = n; i-- > 0;) value = value * roots[k] + monic[i];
            for (size_t j = 0; j < n; ++j)
                if (j != k) denominator *= roots[k] - roots[j];
            if (denominator == Complex(0.0)) denominator = Complex(1e-300);
            const Complex step = value / denominator;
            roots[k] -= step;
            change = std::max(change, std::abs(step) / std::max(1.0, std::abs(roots[k])));
        }
        if (change < 1e-15) return roots;
    }
    // Settled well enough for rounding to integers is all that is asked; the exact
    // division decides.
    return roots;
}

// The integer nearest x when x is that close to one; false otherwise.
bool NearInteger(double x, KOBWBRational& integer) {
    const double nearest = std::nearbyint(x);
    if (!std::isfinite(nearest) || std::fabs(x - nearest) > 1e-6 * std::max(1.0, std::fabs(x))) return false;
    return KOBWBRational::FromDouble(nearest, integer);
}

} // namespace

std::vector<Row> SplitQuadraticFactors(Row& p) {
    std::vector<Row> factors;
    if (Degree(p) < 3) return factors;
    // The leading coefficient of p with integer coefficients.
    KOBWBRational multiple(1);
    for (const KOBWBRational& c : p) multiple *= (c.Denominator() / multiple).Numerator();
    KOBWBRational lead = Lead(p) * multiple;
    if (lead.Sign() < 0) lead = -lead;
    const double a = lead.ToDouble();
    std::vector<Complex> roots = ComplexRoots(p);
    for (size_t i = 0; i < roots.size() && Degree(p) >= 3; ++i) {
        for (size_t j = i + 1; j < roots.size(); ++j) {
            const Complex sum = roots[i] + roots[j], product = roots[i] * roots[j];
            KOBWBRational s, t;
            if (!NearInteger(a * sum.real(), s) || !NearInteger(a * product.real(), t)) continue;
            const Row candidate{t / lead, -s / lead, KOBWBRational(1)};
            Row quotient, remainder;
            if (!Divide(p, candidate, quotient, remainder) || !remainder.empty()) continue;
            p = std::move(quotient);
            factors.push_back(candidate);
            roots.erase(roots.begin() + static_cast<long>(j));
            roots.erase(roots.begin() + static_cast<long>(i));
            i = static_cast<size_t>(-1);
            break;
        }
    }
    return factors;
}

} // namespace KOBWBUnivariateArithmetic
