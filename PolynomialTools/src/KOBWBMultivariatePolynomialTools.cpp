#include "KOBWBMultivariatePolynomialTools.h"

#include "KOBWBMultivariateArithmetic.h"
#include "KOBWBPolynomialContext.h"

#include <utility>
#include <vector>

using namespace KOBWBMultivariateArithmetic;

bool KOBWBMultivariatePolynomialTools::IsExact(const KOBWBPolynomial& polynomial) {
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        if (!term.coefficient.IsExact()) return false;
        for (const KOBWBMonomialFactor& factor : term.monomial)
            if (factor.exponent < 0 || factor.atom < 0) return false;
    }
    return true;
}

bool KOBWBMultivariatePolynomialTools::DivideExactly(const KOBWBPolynomial& a, const KOBWBPolynomial& b,
                                                     KOBWBPolynomial& quotient) {
    if (b.IsZero() || !IsExact(a) || !IsExact(b)) return false;
    const KOBWBPolynomialTerm& leadB = LeadingTerm(b);
    std::vector<KOBWBPolynomialTerm> terms;
    KOBWBPolynomial remainder = a;
    while (!remainder.IsZero()) {
        const KOBWBPolynomialTerm& lead = LeadingTerm(remainder);
        KOBWBMonomial monomial;
        if (!DivideMonomial(lead.monomial, leadB.monomial, monomial)) return false;
        const KOBWBCoefficient coefficient = lead.coefficient / leadB.coefficient;
        remainder -= Term(monomial, coefficient) * b;
        terms.push_back({std::move(monomial), coefficient});
        if (terms.size() > static_cast<size_t>(maxTerms) || TooLarge(remainder)) return false;
    }
    quotient = KOBWBPolynomial::FromTerms(std::move(terms));
    return true;
}

bool KOBWBMultivariatePolynomialTools::Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                                 KOBWBPolynomial& resultant) {
    if (!IsExact(a) || !IsExact(b) || atom < 0) return false;
    if (a.IsZero() || b.IsZero()) {
        resultant = KOBWBPolynomial();
        return true;
    }
    KOBWBPolynomial f = a, g = b;
    long long degreeF = DegreeIn(f, atom), degreeG = DegreeIn(g, atom);
    if (degreeF == 0 || degreeG == 0) {
        // c^deg of the other.
        resultant = degreeF == 0 ? PowerOf(f, degreeG) : PowerOf(g, degreeF);
        return !TooLarge(resultant);
    }
    // The subresultant algorithm, every division exact.
    KOBWBCoefficient sign(1);
    if (degreeF < degreeG) {
        std::swap(f, g);
        std::swap(degreeF, degreeG);
        if (degreeF % 2 == 1 && degreeG % 2 == 1) sign = -sign;
    }
    KOBWBPolynomial gFactor(KOBWBCoefficient(1)), h(KOBWBCoefficient(1));
    while (true) {
        const long long delta = degreeF - degreeG;
        if (degreeF % 2 == 1 && degreeG % 2 == 1) sign = -sign;
        KOBWBPolynomial r;
        if (!PseudoRemainder(f, g, atom, r)) return false;
        if (r.IsZero()) {
            resultant = KOBWBPolynomial();
            return true;
        }
        f = std::move(g);
        if (!DivideExactly(r, gFactor * PowerOf(h, delta), g)) return false;
        gFactor = Lead(f, atom);
        if (delta == 1) {
            h = gFactor;
        } else if (delta > 1) {
            KOBWBPolynomial next;
            if (!DivideExactly(PowerOf(gFactor, delta), PowerOf(h, delta - 1), next)) return false;
            h = std::move(next);
        }
        degreeF = DegreeIn(f, atom);
        degreeG = DegreeIn(g, atom);
        if (degreeG == 0) break;
    }
    KOBWBPolynomial last;
    if (!DivideExactly(PowerOf(g, degreeF), PowerOf(h, degreeF - 1), last)) return false;
    last *= sign;
    resultant = std::move(last);
    return !TooLarge(resultant);
}

bool KOBWBMultivariatePolynomialTools::Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd) {
    if (!IsExact(a) || !IsExact(b)) return false;
    KOBWBPolynomial result;
    if (!KOBWBMultivariateArithmetic::Gcd(a, b, result)) return false;
    gcd = std::move(result);
    return true;
}

KOBWBExpression* KOBWBMultivariatePolynomialTools::Resultant(KOBWBPolynomialContext& context, KOBWBExpression* a,
                                                             KOBWBExpression* b, KOBWBVariable* variable) {
    const int atom = context.GetVariableAtom(variable);
    KOBWBPolynomial pa, pb, result;
    if (atom < 0 || !context.ToPolynomial(a, pa) || !context.ToPolynomial(b, pb) || !Resultant(pa, pb, atom, result))
        return nullptr;
    return context.ToExpression(result);
}

KOBWBExpression* KOBWBMultivariatePolynomialTools::Gcd(KOBWBPolynomialContext& context, KOBWBExpression* a,
                                                       KOBWBExpression* b) {
    KOBWBPolynomial pa, pb, result;
    if (!context.ToPolynomial(a, pa) || !context.ToPolynomial(b, pb) || !Gcd(pa, pb, result)) return nullptr;
    return context.ToExpression(result);
}
