#include "KOBWBFlintMultivariate.h"

#include "KOBWBFlintSparse.h"
#include "KOBWBFlintValues.h"
#include "KOBWBRationalAccess.h"
#include "KOBWBUnivariatePolynomialTools.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace KOBWBFlintMultivariate {

bool Multiply(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& product, size_t maxTerms,
              bool* tooLarge) {
    KOBWBFlint::SparseContext context({&a, &b});
    if (!context.Exact() || !context.ExponentsFit(2)) return false;
    KOBWBFlint::SparsePolynomial fa(context), fb(context);
    KOBWBRational scaleA, scaleB;
    context.ToFlint(a, fa.get(), scaleA);
    context.ToFlint(b, fb.get(), scaleB);
    fmpz_mpoly_struct* result = KOBWBFlint::ThreadResult(context);
    fmpz_mpoly_mul(result, fa.get(), fb.get(), context.get());
    if (static_cast<size_t>(fmpz_mpoly_length(result, context.get())) > maxTerms) {
        if (tooLarge) *tooLarge = true;
        return false;
    }
    context.FromFlint(result, scaleA * scaleB, context.Offsets(2), product);
    return true;
}

namespace {

// The multisets of exponent terms of p, C(t + e - 1, e): a bound on the number of
// terms of p^exponent. Summed as logarithms over the smaller of e and t - 1 factors
// (std::lgamma would write the process-wide signgam, a race between threads).
double TermsBound(const KOBWBPolynomial& p, unsigned long exponent) {
    const double t = p.GetNbOfTerms(), e = static_cast<double>(exponent);
    if (t < 1) return 0;
    const double n = t + e - 1, k = std::min(e, t - 1);
    double logarithm = 0;
    // Every factor is at least 1: past the range of doubles the bound is infinite.
    for (double i = 1; i <= k && logarithm < 700; ++i) logarithm += std::log((n - k + i) / i);
    return logarithm < 700 ? std::exp(logarithm) : HUGE_VAL;
}

// Another: the monomials within the range of degrees of p^exponent in each atom.
double DegreesBound(const KOBWBPolynomial& p, unsigned long exponent) {
    std::vector<int> atoms;
    for (const KOBWBPolynomialTerm& term : p.GetTerms())
        for (const KOBWBMonomialFactor& factor : term.monomial) atoms.push_back(factor.atom);
    std::sort(atoms.begin(), atoms.end());
    atoms.erase(std::unique(atoms.begin(), atoms.end()), atoms.end());
    double bound = 1;
    for (int atom : atoms) {
        long long lowest = 0;
        const long long highest = p.Degree(atom, &lowest);
        bound *= static_cast<double>(exponent) * static_cast<double>(highest - lowest) + 1;
    }
    return bound;
}

} // namespace

bool Power(const KOBWBPolynomial& p, unsigned long exponent, int maxTerms, KOBWBPolynomial& result) {
    // A small power costs less by hand than the conversion: the cheap bound decides
    // most calls of the engine, (x - y)^2 and the like.
    const double byTerms = TermsBound(p, exponent);
    if (byTerms < 256) return false;
    const double bound = std::min(byTerms, DegreesBound(p, exponent));
    if (bound > maxTerms || bound < 256) return false;
    KOBWBFlint::SparseContext context({&p});
    if (!context.Exact() || !context.ExponentsFit(static_cast<long long>(exponent))) return false;
    KOBWBFlint::SparsePolynomial base(context), power(context);
    KOBWBRational scale;
    context.ToFlint(p, base.get(), scale);
    if (!fmpz_mpoly_pow_ui(power.get(), base.get(), exponent, context.get())) return false;
    result = context.FromFlint(power.get(), scale.Power(static_cast<long long>(exponent)),
                               context.Offsets(static_cast<long long>(exponent)));
    return true;
}

namespace {

// Divides p by the gcd of its coefficients, returned (0 for the zero polynomial).
KOBWBRational TakeContent(fmpz_mpoly_struct* p, KOBWBFlint::SparseContext& context) {
    KOBWBFlint::Integer content;
    _fmpz_vec_content(content.get(), p->coeffs, p->length);
    if (!fmpz_is_zero(content.get()) && !fmpz_is_one(content.get()))
        fmpz_mpoly_scalar_divexact_fmpz(p, p, content.get(), context.get());
    return KOBWBRationalAccess::FromFlint(content.get());
}

} // namespace

bool DivideExactly(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& quotient) {
    KOBWBFlint::SparseContext context({&a, &b});
    if (!context.ExponentsFit(1)) return false;
    KOBWBFlint::SparsePolynomial fa(context), fb(context), result(context);
    KOBWBRational scaleA, scaleB;
    context.ToFlint(a, fa.get(), scaleA);
    context.ToFlint(b, fb.get(), scaleB);
    // Over the rationals b divides a when the primitive part of b divides that of a
    // over the integers.
    const KOBWBRational contentA = TakeContent(fa.get(), context), contentB = TakeContent(fb.get(), context);
    if (!fmpz_mpoly_divides(result.get(), fa.get(), fb.get(), context.get())) return false;
    quotient = context.FromFlint(result.get(), contentB * scaleA / (contentA * scaleB));
    return true;
}

bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd) {
    KOBWBFlint::SparseContext context({&a, &b});
    if (!context.ExponentsFit(1)) return false;
    KOBWBFlint::SparsePolynomial fa(context), fb(context), result(context);
    KOBWBRational scale;
    context.ToFlint(a, fa.get(), scale);
    context.ToFlint(b, fb.get(), scale);
    if (!fmpz_mpoly_gcd(result.get(), fa.get(), fb.get(), context.get())) return false;
    gcd = context.FromFlint(result.get(), KOBWBRational(1));
    return true;
}

bool Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& resultant) {
    KOBWBFlint::SparseContext context({&a, &b});
    const slong variable = context.Variable(atom);
    const long long degreeA = a.Degree(atom), degreeB = b.Degree(atom);
    // The resultant is a determinant of size deg a + deg b, its exponents up to that
    // many times the largest one given.
    if (variable < 0 || degreeA + degreeB > 2 * KOBWBUnivariatePolynomialTools::maxDegree ||
        !context.ExponentsFit(degreeA + degreeB))
        return false;
    KOBWBFlint::SparsePolynomial fa(context), fb(context), result(context);
    KOBWBRational scaleA, scaleB;
    context.ToFlint(a, fa.get(), scaleA);
    context.ToFlint(b, fb.get(), scaleB);
    if (!fmpz_mpoly_resultant(result.get(), fa.get(), fb.get(), variable, context.get())) return false;
    // Res(sa a, sb b) = sa^deg b sb^deg a Res(a, b), degrees in atom.
    resultant = context.FromFlint(result.get(), scaleA.Power(degreeB) * scaleB.Power(degreeA));
    return true;
}

} // namespace KOBWBFlintMultivariate
