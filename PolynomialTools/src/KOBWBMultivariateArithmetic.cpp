#include "KOBWBMultivariateArithmetic.h"

#include "KOBWBMultivariatePolynomialTools.h"

#include <algorithm>
#include <utility>

namespace KOBWBMultivariateArithmetic {

int CompareLex(const KOBWBMonomial& a, const KOBWBMonomial& b) {
    size_t i = a.size(), j = b.size();
    while (i > 0 && j > 0) {
        const KOBWBMonomialFactor& x = a[i - 1];
        const KOBWBMonomialFactor& y = b[j - 1];
        if (x.atom != y.atom) return x.atom > y.atom ? 1 : -1;
        if (x.exponent != y.exponent) return x.exponent > y.exponent ? 1 : -1;
        --i;
        --j;
    }
    return i > 0 ? 1 : (j > 0 ? -1 : 0);
}

const KOBWBPolynomialTerm& LeadingTerm(const KOBWBPolynomial& p) {
    const KOBWBPolynomialTerm* lead = &p.GetTerm(0);
    for (const KOBWBPolynomialTerm& term : p.GetTerms())
        if (CompareLex(term.monomial, lead->monomial) > 0) lead = &term;
    return *lead;
}

bool DivideMonomial(const KOBWBMonomial& a, const KOBWBMonomial& b, KOBWBMonomial& quotient) {
    KOBWBMonomial result;
    size_t j = 0;
    for (const KOBWBMonomialFactor& factor : a) {
        long long exponent = factor.exponent;
        if (j < b.size() && b[j].atom < factor.atom) return false;
        if (j < b.size() && b[j].atom == factor.atom) exponent -= b[j++].exponent;
        if (exponent < 0) return false;
        if (exponent > 0) result.push_back({factor.atom, exponent});
    }
    if (j < b.size()) return false;
    quotient = std::move(result);
    return true;
}

KOBWBPolynomial Term(const KOBWBMonomial& monomial, const KOBWBCoefficient& coefficient) {
    std::vector<KOBWBPolynomialTerm> terms;
    terms.push_back({monomial, coefficient});
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

KOBWBPolynomial CoefficientOf(const KOBWBPolynomial& p, int atom, long long k) {
    std::vector<KOBWBPolynomialTerm> terms;
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        long long exponent = 0;
        KOBWBMonomial rest;
        for (const KOBWBMonomialFactor& factor : term.monomial)
            if (factor.atom == atom)
                exponent = factor.exponent;
            else
                rest.push_back(factor);
        if (exponent == k) terms.push_back({std::move(rest), term.coefficient});
    }
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

long long DegreeIn(const KOBWBPolynomial& p, int atom) { return p.IsZero() ? -1 : p.Degree(atom); }

KOBWBPolynomial Lead(const KOBWBPolynomial& p, int atom) { return CoefficientOf(p, atom, DegreeIn(p, atom)); }

KOBWBPolynomial PowerOf(const KOBWBPolynomial& p, long long n) {
    KOBWBPolynomial result;
    if (!p.Power(n, KOBWBMultivariatePolynomialTools::maxTerms, result)) return KOBWBPolynomial();
    return result;
}

bool TooLarge(const KOBWBPolynomial& p) { return p.GetNbOfTerms() > KOBWBMultivariatePolynomialTools::maxTerms; }

bool PseudoRemainder(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& remainder) {
    const long long degreeB = DegreeIn(b, atom);
    const KOBWBPolynomial leadB = Lead(b, atom);
    KOBWBPolynomial r = a;
    long long e = DegreeIn(a, atom) - degreeB + 1;
    while (!r.IsZero() && DegreeIn(r, atom) >= degreeB) {
        const long long shift = DegreeIn(r, atom) - degreeB;
        r = leadB * r - Lead(r, atom) * KOBWBPolynomial::Atom(atom, shift) * b;
        --e;
        if (TooLarge(r)) return false;
    }
    if (e > 0) r = r * PowerOf(leadB, e);
    if (TooLarge(r)) return false;
    remainder = std::move(r);
    return true;
}

std::vector<int> AtomsOf(const KOBWBPolynomial& p) {
    std::vector<int> atoms;
    for (const KOBWBPolynomialTerm& term : p.GetTerms())
        for (const KOBWBMonomialFactor& factor : term.monomial) atoms.push_back(factor.atom);
    std::sort(atoms.begin(), atoms.end());
    atoms.erase(std::unique(atoms.begin(), atoms.end()), atoms.end());
    return atoms;
}

KOBWBPolynomial Normalised(const KOBWBPolynomial& p) {
    if (p.IsZero()) return p;
    KOBWBPolynomial result(p);
    result *= KOBWBCoefficient(1) / LeadingTerm(p).coefficient;
    return result;
}

bool Content(const KOBWBPolynomial& p, int atom, KOBWBPolynomial& content, KOBWBPolynomial& primitive) {
    KOBWBPolynomial c;
    for (long long k = DegreeIn(p, atom); k >= 0; --k) {
        const KOBWBPolynomial coefficient = CoefficientOf(p, atom, k);
        if (coefficient.IsZero()) continue;
        if (!Gcd(c, coefficient, c)) return false;
    }
    if (c.IsZero()) c = KOBWBPolynomial(KOBWBCoefficient(1));
    KOBWBPolynomial q;
    if (!KOBWBMultivariatePolynomialTools::DivideExactly(p, c, q)) return false;
    content = std::move(c);
    primitive = std::move(q);
    return true;
}

bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd) {
    if (a.IsZero() || b.IsZero()) {
        gcd = Normalised(a.IsZero() ? b : a);
        return true;
    }
    std::vector<int> atoms = AtomsOf(a), other = AtomsOf(b);
    atoms.insert(atoms.end(), other.begin(), other.end());
    if (atoms.empty()) {
        gcd = KOBWBPolynomial(KOBWBCoefficient(1));
        return true;
    }
    const int atom = *std::max_element(atoms.begin(), atoms.end());
    KOBWBPolynomial contentA, contentB, f, g, content;
    if (!Content(a, atom, contentA, f) || !Content(b, atom, contentB, g) || !Gcd(contentA, contentB, content))
        return false;
    if (DegreeIn(f, atom) < DegreeIn(g, atom)) std::swap(f, g);
    // Primitive remainder sequence: every remainder made primitive in atom.
    while (DegreeIn(g, atom) > 0) {
        KOBWBPolynomial r, ignored;
        if (!PseudoRemainder(f, g, atom, r)) return false;
        if (r.IsZero()) break;
        f = std::move(g);
        if (!Content(r, atom, ignored, g)) return false;
    }
    // g of degree 0 in atom means f and g are coprime in atom; otherwise g is the gcd.
    KOBWBPolynomial primitive = DegreeIn(g, atom) > 0 ? g : KOBWBPolynomial(KOBWBCoefficient(1));
    gcd = Normalised(content * primitive);
    return !TooLarge(gcd);
}

} // namespace KOBWBMultivariateArithmetic
