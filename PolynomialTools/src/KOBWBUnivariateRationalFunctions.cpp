#include "KOBWBUnivariatePolynomialTools.h"

#include "KOBWBUnivariateArithmetic.h"

#include <utility>

using namespace KOBWBUnivariateArithmetic;

namespace {

struct Fraction {
    Row numerator, denominator;
};

// n / d in lowest terms with a monic denominator.
Fraction Reduce(const Row& n, const Row& d) {
    const Row common = Gcd(n, d);
    Row numerator = ExactQuotient(n, common), denominator = ExactQuotient(d, common);
    const KOBWBRational lead = Lead(denominator);
    return {Scale(numerator, KOBWBRational(1) / lead), Monic(denominator)};
}

KOBWBRationalFunction ToFunction(const Fraction& f, int atom) {
    return {ToPolynomial(f.numerator, atom), ToPolynomial(f.denominator, atom)};
}

}

bool KOBWBUnivariatePolynomialTools::PartialFractions(const KOBWBPolynomial& numerator,
                                                      const KOBWBPolynomial& denominator, int atom,
                                                      KOBWBPolynomial& polynomialPart,
                                                      std::vector<KOBWBPartialFraction>& fractions) {
    Row n, d;
    if (!FromPolynomial(numerator, atom, n) || !FromPolynomial(denominator, atom, d) || d.empty()) return false;
    Row quotient, remainder;
    KOBWBUnivariateArithmetic::Divide(n, d, quotient, remainder);
    KOBWBRational content;
    const std::vector<Row> squareFree = SquareFree(d, content);
    remainder = Scale(remainder, KOBWBRational(1) / content);
    // The factors found, with their multiplicities: pairwise coprime, their powers
    // multiply to the monic denominator.
    std::vector<std::pair<Row, int>> factors;
    for (size_t i = 0; i < squareFree.size(); ++i) {
        if (Degree(squareFree[i]) <= 0) continue;
        const int multiplicity = static_cast<int>(i) + 1;
        Row rest = squareFree[i];
        std::vector<KOBWBRational> roots;
        RationalRoots(ToPolynomial(rest, atom), atom, roots);
        for (const KOBWBRational& root : roots) {
            Row linear{-root, KOBWBRational(1)};
            rest = ExactQuotient(rest, linear);
            factors.push_back({std::move(linear), multiplicity});
        }
        for (Row& quadratic : SplitQuadraticFactors(rest)) factors.push_back({std::move(quadratic), multiplicity});
        if (Degree(rest) > 0) factors.push_back({std::move(rest), multiplicity});
    }
    // Splitting off one power D = f^k from the rest E: s E + t D = remainder gives
    // remainder / (D E) = s / D + t / E, with deg s < deg D because the fraction is
    // proper.
    Row rest = Constant(1);
    std::vector<Row> powers;
    for (const std::pair<Row, int>& factor : factors) {
        powers.push_back(Power(factor.first, factor.second));
        rest = Multiply(rest, powers.back());
    }
    std::vector<KOBWBPartialFraction> result;
    for (size_t i = 0; i < factors.size() && !remainder.empty(); ++i) {
        const Row& f = factors[i].first;
        rest = ExactQuotient(rest, powers[i]);
        Row s, t;
        SolveBezout(rest, powers[i], remainder, s, t);
        remainder = std::move(t);
        // s / f^k written in powers of f: s = s0 + s1 f + ..., so s / f^k is the sum
        // of sj / f^(k - j).
        const int multiplicity = factors[i].second;
        for (int j = 0; j < multiplicity && !s.empty(); ++j) {
            Row q, r;
            KOBWBUnivariateArithmetic::Divide(s, f, q, r);
            if (!r.empty()) result.push_back({ToPolynomial(r, atom), ToPolynomial(f, atom), multiplicity - j});
            s = std::move(q);
        }
    }
    polynomialPart = ToPolynomial(quotient, atom);
    fractions = std::move(result);
    return true;
}

bool KOBWBUnivariatePolynomialTools::HermiteReduce(const KOBWBPolynomial& numerator,
                                                   const KOBWBPolynomial& denominator, int atom,
                                                   KOBWBRationalFunction& rationalPart,
                                                   KOBWBRationalFunction& reduced) {
    Row a, d;
    if (!FromPolynomial(numerator, atom, a) || !FromPolynomial(denominator, atom, d) || d.empty()) return false;
    Row polynomial;
    KOBWBUnivariateArithmetic::Divide(a, d, polynomial, a);
    KOBWBRational content;
    const std::vector<Row> factors = SquareFree(d, content);
    Fraction g{Row(), Constant(1)};
    // For each factor V of multiplicity i > 1, with D = U V^i: solve
    // B U V' + C V = -A / j so that A / (U V^(j+1)) = (B / V^j)' + (-j C - U B') / (U V^j),
    // lowering the power of V by one each time.
    for (size_t index = 1; index < factors.size(); ++index) {
        const Row& v = factors[index];
        if (Degree(v) <= 0) continue;
        const int multiplicity = static_cast<int>(index) + 1;
        const Row u = ExactQuotient(d, Power(v, multiplicity));
        const Row uv = Multiply(u, Derivative(v));
        for (int j = multiplicity - 1; j >= 1; --j) {
            Row b, c;
            SolveBezout(uv, v, Scale(a, -(KOBWBRational(1) / KOBWBRational(j))), b, c);
            const Row vj = Power(v, j);
            g = Reduce(Add(Multiply(g.numerator, vj), Multiply(b, g.denominator)), Multiply(g.denominator, vj));
            a = Subtract(Scale(c, KOBWBRational(-j)), Multiply(u, Derivative(b)));
        }
        d = Multiply(u, v);
    }
    rationalPart = ToFunction(g, atom);
    reduced = ToFunction(Reduce(Add(a, Multiply(polynomial, d)), d), atom);
    return true;
}
