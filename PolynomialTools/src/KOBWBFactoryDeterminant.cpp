#include "KOBWBFactory.h"

#include "KOBWBExpression.h"
#include "KOBWBPolynomialContext.h"

#include <utility>
#include <vector>

// The factory's determinant of a matrix of expressions. It lives with the algebra it
// is computed in: the entries are read as polynomials over atoms and eliminated
// without fractions (Bareiss), every division being exact.

namespace {

// The coefficient of atom^exponent in p, as a polynomial without atom.
KOBWBPolynomial CoefficientOf(const KOBWBPolynomial& p, int atom, long long exponent) {
    std::vector<KOBWBPolynomialTerm> terms;
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        long long power = 0;
        KOBWBMonomial rest;
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            if (factor.atom == atom) {
                power = factor.exponent;
            } else {
                rest.push_back(factor);
            }
        }
        if (power == exponent) terms.push_back({std::move(rest), term.coefficient});
    }
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

// quotient = p / d when d divides p exactly, dividing recursively one atom at a time:
// the leading coefficients in the atom give each term of the quotient. False when d
// is zero or the division does not come out (which exact coefficients only do for a
// non-divisor; real ones also through rounding).
bool ExactDivide(const KOBWBPolynomial& p, const KOBWBPolynomial& d, KOBWBPolynomial& quotient) {
    KOBWBCoefficient constant;
    if (d.IsConstant(constant)) {
        if (constant.IsZero()) return false;
        quotient = p;
        quotient *= KOBWBCoefficient(1) / constant;
        return true;
    }
    const int atom = d.GetTerms().back().monomial[0].atom;
    long long lowest = 0;
    const long long degree = d.Degree(atom, &lowest);
    if (lowest < 0) return false;
    const KOBWBPolynomial lead = CoefficientOf(d, atom, degree);
    KOBWBPolynomial result, rest = p;
    while (!rest.IsZero()) {
        const long long restDegree = rest.Degree(atom, &lowest);
        if (lowest < 0 || restDegree < degree) return false;
        KOBWBPolynomial factor;
        if (!ExactDivide(CoefficientOf(rest, atom, restDegree), lead, factor)) return false;
        const KOBWBPolynomial term = factor * KOBWBPolynomial::Atom(atom, restDegree - degree);
        result += term;
        rest -= term * d;
        if (!rest.IsZero() && rest.Degree(atom) >= restDegree) return false;
    }
    quotient = std::move(result);
    return true;
}

} // namespace

KOBWBExpression* KOBWBFactory::CreateDeterminant(int n, KOBWBExpression** entries) {
    if (n < 1 || !entries) return nullptr;
    const size_t size = static_cast<size_t>(n);
    for (size_t i = 0; i < size * size; ++i)
        if (!entries[i] || &entries[i]->GetFactory() != this) return nullptr;
    KOBWBPolynomialContext context(*this);
    std::vector<std::vector<KOBWBPolynomial>> a(size, std::vector<KOBWBPolynomial>(size));
    for (size_t i = 0; i < size; ++i)
        for (size_t j = 0; j < size; ++j) context.ToPolynomial(entries[i * size + j], a[i][j]);
    bool negate = false;
    KOBWBPolynomial previous(KOBWBCoefficient(1));
    for (size_t k = 0; k + 1 < size; ++k) {
        if (a[k][k].IsZero()) {
            size_t pivot = k + 1;
            while (pivot < size && a[pivot][k].IsZero()) ++pivot;
            if (pivot == size) return context.ToExpression(KOBWBPolynomial());
            std::swap(a[pivot], a[k]);
            negate = !negate;
        }
        // Each new entry is a 2 x 2 minor divided by the previous pivot, which divides
        // it exactly (Sylvester's identity).
        for (size_t i = k + 1; i < size; ++i) {
            for (size_t j = k + 1; j < size; ++j) {
                const KOBWBPolynomial minor = a[k][k] * a[i][j] - a[i][k] * a[k][j];
                if (!ExactDivide(minor, previous, a[i][j])) {
                    // Rounded real coefficients: keep the division as a quotient.
                    KOBWBExpression* quotient =
                        CreateQuotient(context.ToExpression(minor), context.ToExpression(previous));
                    context.ToPolynomial(quotient, a[i][j]);
                }
            }
        }
        previous = a[k][k];
    }
    const KOBWBPolynomial& last = a[size - 1][size - 1];
    return context.ToExpression(negate ? -last : last);
}
