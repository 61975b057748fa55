#include "KOBWBFlintUnivariate.h"

#include "KOBWBFlintValues.h"
#include "KOBWBRationalAccess.h"

#include <acb.h>
#include <arb_fmpz_poly.h>

#include <utility>

using KOBWBUnivariateArithmetic::Row;

namespace {

// Takes c's denominator into the common denominator den.
void IncludeDenominator(const KOBWBRational& c, fmpz_t den, fmpz_t scratch) {
    if (c.IsInteger()) return;
    KOBWBRationalAccess::Denominator(c, scratch);
    fmpz_lcm(den, den, scratch);
}

// Sets coefficient to c times the common denominator den.
void SetScaled(const KOBWBRational& c, const fmpz_t den, fmpz* coefficient, fmpz_t scratch, fmpz_t factor) {
    KOBWBRationalAccess::Numerator(c, coefficient);
    if (fmpz_is_one(den)) return;
    KOBWBRationalAccess::Denominator(c, scratch);
    fmpz_divexact(factor, den, scratch);
    fmpz_mul(coefficient, coefficient, factor);
}

// The row as a canonical FLINT polynomial: integer coefficients over the least
// common denominator, which then shares no factor with all of them.
void ToFlint(const Row& row, fmpq_poly_struct* result) {
    const slong length = static_cast<slong>(row.size());
    fmpq_poly_fit_length(result, length);
    KOBWBFlint::Integer denominator, factor;
    fmpz_one(result->den);
    for (const KOBWBRational& c : row) IncludeDenominator(c, result->den, denominator.get());
    for (slong i = 0; i < length; ++i)
        SetScaled(row[static_cast<size_t>(i)], result->den, result->coeffs + i, denominator.get(), factor.get());
    _fmpq_poly_set_length(result, length);
}

// The same read straight from a polynomial in atom, by the rules of
// KOBWBUnivariateArithmetic::FromPolynomial; false when it is not univariate.
bool ToFlint(const KOBWBPolynomial& polynomial, int atom, fmpq_poly_struct* result) {
    const std::vector<KOBWBPolynomialTerm>& terms = polynomial.GetTerms();
    KOBWBFlint::Integer denominator, factor;
    fmpz_one(result->den);
    // Terms are stored by increasing exponent, the constant first.
    long long degree = 0;
    for (const KOBWBPolynomialTerm& term : terms) {
        if (term.coefficient.IsReal() || term.monomial.size() > 1) return false;
        if (term.monomial.size() == 1) {
            const KOBWBMonomialFactor& power = term.monomial[0];
            if (power.atom != atom || power.exponent < 0 || power.exponent > KOBWBUnivariatePolynomialTools::maxDegree)
                return false;
            degree = power.exponent;
        }
        IncludeDenominator(term.coefficient.GetExact(), result->den, denominator.get());
    }
    const slong length = terms.empty() ? 0 : static_cast<slong>(degree) + 1;
    fmpq_poly_fit_length(result, length);
    _fmpz_vec_zero(result->coeffs, length);
    for (const KOBWBPolynomialTerm& term : terms)
        SetScaled(term.coefficient.GetExact(), result->den,
                  result->coeffs + (term.monomial.empty() ? 0 : term.monomial[0].exponent), denominator.get(),
                  factor.get());
    _fmpq_poly_set_length(result, length);
    return true;
}

// The integer polynomial that a rational one holds over its denominator, read in place.
fmpz_poly_struct IntegerView(const fmpq_poly_struct* p) { return fmpz_poly_struct{p->coeffs, p->alloc, p->length}; }

// The polynomial p / denominator in atom.
KOBWBPolynomial ToPolynomial(const fmpz_poly_struct* p, const fmpz_t denominator, int atom) {
    const slong length = fmpz_poly_length(p);
    std::vector<KOBWBPolynomialTerm> terms;
    terms.reserve(static_cast<size_t>(length));
    const bool integer = fmpz_is_one(denominator);
    for (slong i = 0; i < length; ++i) {
        if (fmpz_is_zero(p->coeffs + i)) continue;
        KOBWBPolynomialTerm term;
        if (i > 0) term.monomial.push_back({atom, static_cast<int>(i)});
        term.coefficient = integer ? KOBWBRationalAccess::FromFlint(p->coeffs + i)
                                   : KOBWBRationalAccess::FromFlint(p->coeffs + i, denominator);
        terms.push_back(std::move(term));
    }
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

KOBWBPolynomial ToPolynomial(const fmpq_poly_struct* p, int atom) {
    const fmpz_poly_struct numerator = IntegerView(p);
    return ToPolynomial(&numerator, p->den, atom);
}

Row FromFlint(const fmpq_poly_struct* p) {
    const slong length = fmpq_poly_length(p);
    Row row;
    row.reserve(static_cast<size_t>(length));
    const bool integer = fmpz_is_one(p->den);
    for (slong i = 0; i < length; ++i)
        row.push_back(integer ? KOBWBRationalAccess::FromFlint(p->coeffs + i)
                              : KOBWBRationalAccess::FromFlint(p->coeffs + i, p->den));
    return row;
}

// The exact value of a finite dyadic number, mantissa 2^exponent.
KOBWBRational FromDyadic(const arf_t value) {
    KOBWBFlint::Integer mantissa, exponent, power;
    arf_get_fmpz_2exp(mantissa.get(), exponent.get(), value);
    const slong shift = fmpz_get_si(exponent.get());
    if (shift >= 0) {
        fmpz_mul_2exp(mantissa.get(), mantissa.get(), static_cast<flint_bitcnt_t>(shift));
        return KOBWBRationalAccess::FromFlint(mantissa.get());
    }
    fmpz_one(power.get());
    fmpz_mul_2exp(power.get(), power.get(), static_cast<flint_bitcnt_t>(-shift));
    return KOBWBRationalAccess::FromFlint(mantissa.get(), power.get());
}

int SignAt(const fmpz_poly_struct* p, const KOBWBRational& x) {
    KOBWBFlint::Rational point, value;
    KOBWBRationalAccess::ToFlint(x, point.get());
    fmpz_poly_evaluate_fmpq(value.get(), p, point.get());
    return fmpq_sgn(value.get());
}

// Certified enclosures of every complex root of a square-free integer polynomial of
// positive degree, freed with the object.
class ComplexRoots {
public:
    explicit ComplexRoots(const fmpz_poly_struct* p) : m_count(fmpz_poly_degree(p)), m_roots(_acb_vec_init(m_count)) {
        // Two correct bits are asked for: the enclosures are refined until they
        // are disjoint anyway, which is all that isolation needs.
        arb_fmpz_poly_complex_roots(m_roots, p, 0, 2);
    }
    ~ComplexRoots() { _acb_vec_clear(m_roots, m_count); }
    ComplexRoots(const ComplexRoots&) = delete;
    ComplexRoots& operator=(const ComplexRoots&) = delete;

    slong Count() const { return m_count; }
    // Real roots come first, with an imaginary part exactly zero.
    bool IsReal(slong i) const { return arb_is_zero(acb_imagref(m_roots + i)); }
    // The exact ends of the real enclosure of root i.
    KOBWBRationalInterval Interval(slong i) const {
        const arb_struct* real = acb_realref(m_roots + i);
        arf_t radius, end;
        arf_init(radius);
        arf_init(end);
        arf_set_mag(radius, arb_radref(real));
        arf_sub(end, arb_midref(real), radius, ARF_PREC_EXACT, ARF_RND_DOWN);
        KOBWBRationalInterval interval;
        interval.lower = FromDyadic(end);
        arf_add(end, arb_midref(real), radius, ARF_PREC_EXACT, ARF_RND_UP);
        interval.upper = FromDyadic(end);
        arf_clear(radius);
        arf_clear(end);
        return interval;
    }

private:
    slong m_count;
    acb_ptr m_roots;
};

} // namespace

namespace KOBWBFlintUnivariate {

bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& gcd) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    KOBWBFlint::RationalPolynomial fa, fb, result;
    if (!ToFlint(a, atom, fa.get()) || !ToFlint(b, atom, fb.get())) return false;
    if (fmpz_is_one(fa.get()->den) && fmpz_is_one(fb.get()->den) && !fmpq_poly_is_zero(fa.get()) &&
        !fmpq_poly_is_zero(fb.get())) {
        // Integer polynomials (the common case): their gcd over the integers, each
        // coefficient then divided by the leading one, without the content
        // computations of the rational gcd.
        KOBWBFlint::IntegerPolynomial common;
        const fmpz_poly_struct ia = IntegerView(fa.get()), ib = IntegerView(fb.get());
        fmpz_poly_gcd(common.get(), &ia, &ib);
        gcd = ToPolynomial(common.get(), fmpz_poly_lead(common.get()), atom);
    } else {
        fmpq_poly_gcd(result.get(), fa.get(), fb.get());
        gcd = ToPolynomial(result.get(), atom);
    }
    return true;
}

bool Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBRational& resultant) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    KOBWBFlint::RationalPolynomial fa, fb;
    if (!ToFlint(a, atom, fa.get()) || !ToFlint(b, atom, fb.get())) return false;
    KOBWBFlint::Rational result;
    fmpq_poly_resultant(result.get(), fa.get(), fb.get());
    resultant = KOBWBRationalAccess::FromFlint(result.get());
    return true;
}

Row Gcd(const Row& a, const Row& b) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    KOBWBFlint::RationalPolynomial fa, fb, gcd;
    ToFlint(a, fa.get());
    ToFlint(b, fb.get());
    fmpq_poly_gcd(gcd.get(), fa.get(), fb.get());
    return FromFlint(gcd.get());
}

KOBWBRational Resultant(const Row& a, const Row& b) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    KOBWBFlint::RationalPolynomial fa, fb;
    KOBWBFlint::Rational resultant;
    ToFlint(a, fa.get());
    ToFlint(b, fb.get());
    fmpq_poly_resultant(resultant.get(), fa.get(), fb.get());
    return KOBWBRationalAccess::FromFlint(resultant.get());
}

Row Multiply(const Row& a, const Row& b) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    KOBWBFlint::RationalPolynomial fa, fb, product;
    ToFlint(a, fa.get());
    ToFlint(b, fb.get());
    fmpq_poly_mul(product.get(), fa.get(), fb.get());
    return FromFlint(product.get());
}

void Divide(const Row& a, const Row& b, Row& quotient, Row& remainder) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    KOBWBFlint::RationalPolynomial fa, fb, q, r;
    ToFlint(a, fa.get());
    ToFlint(b, fb.get());
    fmpq_poly_divrem(q.get(), r.get(), fa.get(), fb.get());
    quotient = FromFlint(q.get());
    remainder = FromFlint(r.get());
}

bool IsolateRealRoots(const Row& row, std::vector<KOBWBRationalInterval>& roots) {
    KOBWBFlint::ReleaseCachesAtThreadExit();
    // The square-free part with integer coefficients: p / gcd(p, p').
    KOBWBFlint::RationalPolynomial rational;
    KOBWBFlint::IntegerPolynomial p, derivative, common, square;
    ToFlint(row, rational.get());
    fmpq_poly_get_numerator(p.get(), rational.get());
    fmpz_poly_derivative(derivative.get(), p.get());
    fmpz_poly_gcd(common.get(), p.get(), derivative.get());
    fmpz_poly_div(square.get(), p.get(), common.get());
    fmpz_poly_primitive_part(square.get(), square.get());
    std::vector<KOBWBRationalInterval> found;
    if (fmpz_poly_degree(square.get()) <= 0) {
        roots = std::move(found);
        return true;
    }
    const ComplexRoots enclosures(square.get());
    for (slong i = 0; i < enclosures.Count() && enclosures.IsReal(i); ++i) {
        KOBWBRationalInterval interval = enclosures.Interval(i);
        const int lowerSign = SignAt(square.get(), interval.lower);
        const int upperSign = interval.lower == interval.upper ? lowerSign : SignAt(square.get(), interval.upper);
        if (lowerSign == 0)
            interval.upper = interval.lower;
        else if (upperSign == 0)
            interval.lower = interval.upper;
        else if (lowerSign == upperSign)
            return false;
        if (!found.empty() && !(found.back().upper < interval.lower)) return false;
        found.push_back(std::move(interval));
    }
    roots = std::move(found);
    return true;
}

} // namespace KOBWBFlintUnivariate
