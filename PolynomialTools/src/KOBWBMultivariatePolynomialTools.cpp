#include "KOBWBMultivariatePolynomialTools.h"

#include "KOBWBPolynomialContext.h"
#include "KOBWBUnivariateArithmetic.h"
#include "KOBWBUnivariatePolynomialTools.h"

#include <algorithm>
#include <utility>
#include <vector>

// Polynomials in several atoms read recursively: as polynomials in one main atom
// whose coefficients are polynomials in the others.

namespace {

typedef KOBWBMultivariatePolynomialTools Tools;

// The lexicographic order of monomials, atoms of larger number first: a monomial
// order (compatible with products), in which exact division proceeds.
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

// a / b for monomials when b divides a.
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

// The coefficient of atom^k in p, a polynomial in the other atoms.
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
    if (!p.Power(n, Tools::maxTerms, result)) return KOBWBPolynomial();
    return result;
}

bool TooLarge(const KOBWBPolynomial& p) { return p.GetNbOfTerms() > Tools::maxTerms; }

// lead(b)^(deg a - deg b + 1) a modulo b, in atom; false past the limit.
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

// The atoms of p, by number.
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

bool GcdOf(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd);

// The content of p in atom (the gcd of its coefficients) and its primitive part.
bool Content(const KOBWBPolynomial& p, int atom, KOBWBPolynomial& content, KOBWBPolynomial& primitive) {
    KOBWBPolynomial c;
    for (long long k = DegreeIn(p, atom); k >= 0; --k) {
        const KOBWBPolynomial coefficient = CoefficientOf(p, atom, k);
        if (coefficient.IsZero()) continue;
        if (!GcdOf(c, coefficient, c)) return false;
    }
    if (c.IsZero()) c = KOBWBPolynomial(KOBWBCoefficient(1));
    KOBWBPolynomial q;
    if (!Tools::DivideExactly(p, c, q)) return false;
    content = std::move(c);
    primitive = std::move(q);
    return true;
}

bool GcdOf(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& gcd) {
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
    if (!Content(a, atom, contentA, f) || !Content(b, atom, contentB, g) || !GcdOf(contentA, contentB, content))
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
    if (!GcdOf(primitive, derivative, b) || !Tools::DivideExactly(primitive, b, c) ||
        !Tools::DivideExactly(derivative, b, quotient))
        return false;
    d = quotient - Derivative(c, atom);
    for (int i = 1; !IsConstantIn(c, atom); ++i) {
        KOBWBPolynomial a;
        if (!GcdOf(c, d, a) || !Tools::DivideExactly(c, a, c) || !Tools::DivideExactly(d, a, quotient)) return false;
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
    if (!GcdOf(a, b, result)) return false;
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
