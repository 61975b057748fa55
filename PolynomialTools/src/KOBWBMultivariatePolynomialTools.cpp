#include "KOBWBMultivariatePolynomialTools.h"

#include "KOBWBFlintMultivariate.h"
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
    KOBWBPolynomial result;
    if (!KOBWBFlintMultivariate::DivideExactly(a, b, result) || TooLarge(result)) return false;
    quotient = std::move(result);
    return true;
}

bool KOBWBMultivariatePolynomialTools::Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                                 KOBWBPolynomial& resultant) {
    if (!IsExact(a) || !IsExact(b) || atom < 0) return false;
    if (a.IsZero() || b.IsZero()) {
        resultant = KOBWBPolynomial();
        return true;
    }
    const long long degreeA = DegreeIn(a, atom), degreeB = DegreeIn(b, atom);
    KOBWBPolynomial result;
    if (degreeA == 0 || degreeB == 0) {
        // c^deg of the other.
        if (!(degreeA == 0 ? a : b).Power(degreeA == 0 ? degreeB : degreeA, maxTerms, result)) return false;
    } else if (!KOBWBFlintMultivariate::Resultant(a, b, atom, result)) {
        return false;
    }
    if (TooLarge(result)) return false;
    resultant = std::move(result);
    return true;
}

bool KOBWBMultivariatePolynomialTools::Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd) {
    if (!IsExact(a) || !IsExact(b)) return false;
    KOBWBPolynomial result;
    if (!KOBWBFlintMultivariate::Gcd(a, b, result) || TooLarge(result)) return false;
    gcd = Normalised(result);
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
