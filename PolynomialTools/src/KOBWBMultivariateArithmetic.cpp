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

long long DegreeIn(const KOBWBPolynomial& p, int atom) { return p.IsZero() ? -1 : p.Degree(atom); }

bool TooLarge(const KOBWBPolynomial& p) { return p.GetNbOfTerms() > KOBWBMultivariatePolynomialTools::maxTerms; }

KOBWBPolynomial Normalised(const KOBWBPolynomial& p) {
    if (p.IsZero()) return p;
    KOBWBPolynomial result(p);
    result *= KOBWBCoefficient(1) / LeadingTerm(p).coefficient;
    return result;
}

} // namespace KOBWBMultivariateArithmetic
