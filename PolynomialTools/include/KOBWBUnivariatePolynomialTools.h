#ifndef KOBWBUnivariatePolynomialTools_h
#define KOBWBUnivariatePolynomialTools_h

#include "KOBWBInterval.h"
#include "KOBWBPolynomial.h"
#include "KOBWBRational.h"

#include <vector>

// One term of a partial fraction decomposition: numerator / factor^power, with
// deg numerator < deg factor, factor monic and square-free, power >= 1.
struct KOBWBPartialFraction {
    KOBWBPolynomial numerator;
    KOBWBPolynomial factor;
    int power = 1;
};

// A closed interval with exact rational ends, lower <= upper.
struct KOBWBRationalInterval {
    KOBWBRational lower;
    KOBWBRational upper;
};

// A rational function numerator / denominator; the denominator is not zero.
struct KOBWBRationalFunction {
    KOBWBPolynomial numerator;
    KOBWBPolynomial denominator;
};

// Exact algebra of polynomials in one main variable, the atom `atom` of a
// KOBWBPolynomialContext (see GetVariableAtom), with exact rational coefficients.
//
// Every function takes its polynomials as KOBWBPolynomial and answers false, its
// outputs untouched, when an argument is not univariate in atom: another atom
// occurs (Pi included), atom has a negative exponent or one above maxDegree (the
// tools work on dense coefficient rows: a huge exponent is refused, not allocated),
// or a coefficient is real.
// Results are KOBWBPolynomial in the same atom. Degrees below count the zero
// polynomial as degree -1.
class KOBWBX_API KOBWBUnivariatePolynomialTools {
public:
    static constexpr long long maxDegree = 10000;

    // Whether polynomial is univariate in atom in the sense above.
    static bool IsUnivariate(const KOBWBPolynomial& polynomial, int atom);

    // a = b quotient + remainder with deg remainder < deg b. False when b is zero.
    static bool Divide(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& quotient,
                       KOBWBPolynomial& remainder);
    // lead(b)^e a = b quotient + remainder with e = max(deg a - deg b + 1, 0) and
    // deg remainder < deg b, computed without dividing coefficients (integer
    // inputs give integer outputs). False when b is zero.
    static bool PseudoDivide(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                             KOBWBPolynomial& quotient, KOBWBPolynomial& remainder);
    // The greatest common divisor, monic (leading coefficient 1), computed by the
    // subresultant remainder sequence; the zero polynomial when both are zero.
    static bool Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBPolynomial& gcd);
    // The subresultant remainder sequence R0, R1, R2, ..., Rk: R0 and R1 are a and b
    // (the one of higher degree first), Rk the last non-zero member. Each Ri, i >= 2,
    // is the subresultant of a and b of degree deg R(i-1) - 1 up to its sign, so its
    // coefficients are integers when those of a and b are; Rk is a gcd of a and b.
    // Empty when both are zero.
    static bool Subresultants(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                              std::vector<KOBWBPolynomial>& sequence);
    // The resultant (the determinant of the Sylvester matrix): 0 when a or b is zero,
    // c^deg b when a is a non-zero constant c (and c^deg a when b is).
    static bool Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom, KOBWBRational& resultant);
    // The Bezout matrix of a and b, n x n with n = max(deg a, deg b):
    // (a(x) b(y) - a(y) b(x)) / (x - y) = sum of matrix[i][j] x^i y^j. Empty when
    // both are constant.
    static bool BezoutMatrix(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                             std::vector<std::vector<KOBWBRational>>& matrix);
    // The resultant computed as the determinant of the Bezout matrix, divided by
    // (-1)^(n(n-1)/2) lead^(n-m) of the polynomial of higher degree n (m the other
    // degree); equal to Resultant.
    static bool BezoutResultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                KOBWBRational& resultant);

    // p = content f1 f2^2 ... fk^k with each fi monic, square-free and the fi
    // pairwise coprime; factors[i] holds f(i+1), fk is not constant (a middle one may
    // be 1). content is the leading coefficient of p; factors is empty for a
    // constant p (content 0 for the zero polynomial).
    static bool SquareFreeDecomposition(const KOBWBPolynomial& p, int atom, KOBWBRational& content,
                                        std::vector<KOBWBPolynomial>& factors);

    // The real roots of p, without their multiplicities, in increasing order, each
    // in an interval with exact rational ends: either lower == upper, the root
    // itself, or lower < root < upper with neither end a root, the square-free part
    // of p changing sign between them. The intervals of distinct roots are disjoint
    // however close the roots are. Roots are isolated by certified complex root
    // enclosures whose real ends are checked exactly, or by Sturm sequences in exact
    // rational arithmetic for small degrees. False also for the zero polynomial (every number is a
    // root); a non-zero constant has no root.
    static bool IsolateRealRoots(const KOBWBPolynomial& p, int atom, std::vector<KOBWBRationalInterval>& roots);
    // The same intervals with their ends rounded outwards to doubles. Doubles may be
    // too coarse to keep two roots apart: roots closer than the spacing of doubles
    // get intervals that each hold both (the exact form keeps them apart); a root
    // beyond the largest double gets [largest double, infinity] (or its mirror).
    static bool IsolateRealRoots(const KOBWBPolynomial& p, int atom, std::vector<KOBWBRealInterval>& roots);
    // Narrows an exact isolating interval of a root of p by exact bisection until it
    // is at most width wide (or meets the root exactly). False, the interval
    // untouched, when width is not positive, the interval is not isolating (its ends
    // give the square-free part of p the same sign, or lower == upper is not a
    // root), or p is not univariate.
    static bool RefineRoot(const KOBWBPolynomial& p, int atom, KOBWBRationalInterval& root, const KOBWBRational& width);
    // Narrows an isolating interval of a root of p by exact bisection until it is
    // at most width wide or as narrow as doubles can split it (a width of 0 or less
    // asks for the latter). False, the interval untouched, when it is not an
    // isolating interval returned by IsolateRealRoots for p (its ends give the
    // square-free part the same sign, or an end is infinite) or p is not univariate.
    static bool RefineRoot(const KOBWBPolynomial& p, int atom, KOBWBRealInterval& root, double width);

    // The rational roots of p, exact and in increasing order: all of them, whatever
    // their magnitude or denominator. Each exact isolating interval is narrowed
    // below 1 / (2 q^2), q the leading coefficient of the square-free part of p with
    // integer coefficients (which every root's denominator divides), where the
    // simplest fraction is the only candidate. False for the zero polynomial.
    static bool RationalRoots(const KOBWBPolynomial& p, int atom, std::vector<KOBWBRational>& roots);

    // numerator / denominator = polynomialPart + sum of the fractions, over the
    // factors found: the square-free factors of the denominator, each split into its
    // rational linear factors x - r (see RationalRoots), the quadratic factors with
    // rational coefficients of the rest that its complex roots reveal (computed in
    // double, each checked by exact division), and what remains. For each
    // factor f of multiplicity k, the fractions a1/f, ..., ak/f^k that are not zero.
    // False when the denominator is zero.
    static bool PartialFractions(const KOBWBPolynomial& numerator, const KOBWBPolynomial& denominator, int atom,
                                 KOBWBPolynomial& polynomialPart, std::vector<KOBWBPartialFraction>& fractions);
    // Hermite reduction: numerator / denominator = d/dx(rationalPart) + reduced,
    // where the denominator of reduced is square-free (reduced may still have a
    // polynomial part) and both results are in lowest terms with monic
    // denominators. The integral of numerator / denominator is rationalPart plus
    // that of reduced, which is a sum of logarithms and a polynomial. False when
    // the denominator is zero.
    static bool HermiteReduce(const KOBWBPolynomial& numerator, const KOBWBPolynomial& denominator, int atom,
                              KOBWBRationalFunction& rationalPart, KOBWBRationalFunction& reduced);
};

#endif
