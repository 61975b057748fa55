#include "KOBWBMultivariatePolynomialTools.h"

#include "KOBWBMultivariateArithmetic.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBUnivariateArithmetic.h"
#include "KOBWBUnivariatePolynomialTools.h"

#include <utility>
#include <vector>

// Factorisation: contents, square-free factors, and the factors in one atom split
// by their rational roots and quadratic factors.

using namespace KOBWBMultivariateArithmetic;

namespace {

// The derivative in atom.
KOBWBPolynomial Derivative(const KOBWBPolynomial& p, int atom) {
    std::vector<KOBWBPolynomialTerm> terms;
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        KOBWBMonomial monomial;
        long long exponent = 0;
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            if (factor.atom != atom) {
                monomial.push_back(factor);
                continue;
            }
            exponent = factor.exponent;
            if (exponent > 1) monomial.push_back({atom, exponent - 1});
        }
        if (exponent > 0) terms.push_back({std::move(monomial), term.coefficient * KOBWBCoefficient(exponent)});
    }
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

bool IsConstantIn(const KOBWBPolynomial& p, int atom) { return DegreeIn(p, atom) <= 0; }

// Splits a square-free factor in atom alone into rational linear and quadratic
// factors; any other factor is kept whole.
void Split(const KOBWBPolynomial& f, int atom, int multiplicity, std::vector<KOBWBPolynomialFactor>& factors) {
    KOBWBUnivariateArithmetic::Row row;
    const std::vector<int> atoms = AtomsOf(f);
    if (atoms.size() != 1 || !KOBWBUnivariateArithmetic::FromPolynomial(f, atom, row)) {
        factors.push_back({Normalised(f), multiplicity});
        return;
    }
    std::vector<KOBWBRational> roots;
    KOBWBUnivariatePolynomialTools::RationalRoots(f, atom, roots);
    for (const KOBWBRational& root : roots) {
        const KOBWBUnivariateArithmetic::Row linear{-root, KOBWBRational(1)};
        row = KOBWBUnivariateArithmetic::ExactQuotient(row, linear);
        factors.push_back({KOBWBUnivariateArithmetic::ToPolynomial(linear, atom), multiplicity});
    }
    for (const KOBWBUnivariateArithmetic::Row& quadratic : KOBWBUnivariateArithmetic::SplitQuadraticFactors(row))
        factors.push_back({KOBWBUnivariateArithmetic::ToPolynomial(quadratic, atom), multiplicity});
    if (KOBWBUnivariateArithmetic::Degree(row) > 0)
        factors.push_back({Normalised(KOBWBUnivariateArithmetic::ToPolynomial(row, atom)), multiplicity});
}

// The factors of p that are not constants, appended with their multiplicities.
bool FactorInto(const KOBWBPolynomial& p, int multiplicity, std::vector<KOBWBPolynomialFactor>& factors) {
    const std::vector<int> atoms = AtomsOf(p);
    if (atoms.empty()) return true;
    const int atom = atoms.back();
    KOBWBPolynomial content, primitive;
    if (!Content(p, atom, content, primitive) || !FactorInto(content, multiplicity, factors)) return false;
    // Yun's square-free decomposition in atom: b = gcd(p, p'), c = p / b,
    // d = p' / b - c'; then a = gcd(c, d) is the factor of the next multiplicity.
    const KOBWBPolynomial derivative = Derivative(primitive, atom);
    KOBWBPolynomial b, c, d, quotient;
    if (!Gcd(primitive, derivative, b) || !KOBWBMultivariatePolynomialTools::DivideExactly(primitive, b, c) ||
        !KOBWBMultivariatePolynomialTools::DivideExactly(derivative, b, quotient))
        return false;
    d = quotient - Derivative(c, atom);
    for (int i = 1; !IsConstantIn(c, atom); ++i) {
        KOBWBPolynomial a;
        if (!Gcd(c, d, a) || !KOBWBMultivariatePolynomialTools::DivideExactly(c, a, c) || !KOBWBMultivariatePolynomialTools::DivideExactly(d, a, quotient)) return false;
        d = quotient - Derivative(c, atom);
        if (!IsConstantIn(a, atom)) Split(a, atom, multiplicity * i, factors);
    }
    return true;
}

} // namespace

bool KOBWBMultivariatePolynomialTools::Factor(const KOBWBPolynomial& p, KOBWBRational& constant,
                                              std::vector<KOBWBPolynomialFactor>& factors) {
    if (!IsExact(p)) return false;
    std::vector<KOBWBPolynomialFactor> found;
    if (!p.IsZero() && !FactorInto(p, 1, found)) return false;
    // The constant is what the factors leave of p.
    KOBWBPolynomial product(KOBWBCoefficient(1)), rest;
    for (const KOBWBPolynomialFactor& factor : found) product = product * PowerOf(factor.factor, factor.multiplicity);
    KOBWBCoefficient value;
    if (p.IsZero()) {
        value = KOBWBCoefficient(0);
    } else if (!DivideExactly(p, product, rest) || !rest.IsConstant(value)) {
        return false;
    }
    constant = value.GetExact();
    factors = std::move(found);
    return true;
}

bool KOBWBMultivariatePolynomialTools::Factor(KOBWBPolynomialContext& context, KOBWBExpression* expression,
                                              KOBWBExpression*& constant,
                                              std::vector<std::pair<KOBWBExpression*, int>>& factors) {
    KOBWBPolynomial p;
    KOBWBRational value;
    std::vector<KOBWBPolynomialFactor> found;
    if (!context.ToPolynomial(expression, p) || !Factor(p, value, found)) return false;
    std::vector<std::pair<KOBWBExpression*, int>> written;
    for (const KOBWBPolynomialFactor& factor : found) {
        KOBWBExpression* node = context.ToExpression(factor.factor);
        if (!node) return false;
        written.push_back({node, factor.multiplicity});
    }
    KOBWBExpression* number = context.ToExpression(KOBWBPolynomial(KOBWBCoefficient(value)));
    if (!number) return false;
    constant = number;
    factors = std::move(written);
    return true;
}
