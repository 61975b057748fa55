#ifndef KOBWBUnivariateArithmetic_h
#define KOBWBUnivariateArithmetic_h

#include "KOBWBPolynomial.h"
#include "KOBWBRational.h"

#include <vector>

// The working form of the univariate tools: a polynomial in one main atom with exact
// rational coefficients, read out of a KOBWBPolynomial as its coefficient row (lowest
// degree first, no trailing zero; the zero polynomial is the empty row). Division,
// remainder sequences and root isolation touch every coefficient by degree, which a
// row indexes directly; results go back to KOBWBPolynomial at the public interface.
namespace KOBWBUnivariateArithmetic {

typedef std::vector<KOBWBRational> Row;

// The row of polynomial in atom; false when another atom occurs, an exponent of atom
// is negative or a coefficient is real.
bool FromPolynomial(const KOBWBPolynomial& polynomial, int atom, Row& row);
KOBWBPolynomial ToPolynomial(const Row& row, int atom);

// -1 for the zero polynomial.
inline int Degree(const Row& row) { return static_cast<int>(row.size()) - 1; }
// The leading coefficient; 0 for the zero polynomial.
const KOBWBRational& Lead(const Row& row);
void Trim(Row& row);
Row Constant(const KOBWBRational& value);
bool IsOne(const Row& row);

Row Add(const Row& a, const Row& b);
Row Subtract(const Row& a, const Row& b);
Row Multiply(const Row& a, const Row& b);
Row Scale(const Row& a, const KOBWBRational& factor);
Row Power(const Row& a, int exponent);
Row Derivative(const Row& a);
KOBWBRational Evaluate(const Row& a, const KOBWBRational& x);

// a = b q + r with deg r < deg b; false (outputs untouched) when b is zero.
bool Divide(const Row& a, const Row& b, Row& quotient, Row& remainder);
// The exact quotient a / b when b divides a (the remainder is dropped).
Row ExactQuotient(const Row& a, const Row& b);
Row Remainder(const Row& a, const Row& b);
// lead(b)^e a = b q + r with e = max(deg a - deg b + 1, 0) and deg r < deg b, without
// dividing coefficients; false when b is zero.
bool PseudoDivide(const Row& a, const Row& b, Row& quotient, Row& remainder);

// The row divided by its leading coefficient (zero stays zero).
Row Monic(const Row& a);
// The subresultant remainder sequence of a and b, the one of higher degree first,
// ending with its last non-zero member; empty when both are zero.
std::vector<Row> SubresultantSequence(const Row& a, const Row& b);
// The monic gcd; zero when both are zero.
Row Gcd(const Row& a, const Row& b);
// s a + t b = c with deg s < deg b (s = 0 when b is constant); false when gcd(a, b)
// does not divide c or a and b are both zero.
bool SolveBezout(const Row& a, const Row& b, const Row& c, Row& s, Row& t);
// The resultant, 0 when a or b is zero.
KOBWBRational Resultant(const Row& a, const Row& b);
// p = content f1 f2^2 ... fk^k with f1, ..., fk monic, square-free and pairwise
// coprime, fk not constant; factors[i] holds f(i+1). Empty for a constant p.
std::vector<Row> SquareFree(const Row& p, KOBWBRational& content);
// The product of the square-free factors, monic.
Row SquareFreePart(const Row& p);
// Divides out of p (square-free, of degree 3 or more, without rational roots) the
// monic quadratic factors with rational coefficients that its complex roots,
// computed in double, reveal; returns them, p left with the rest. What is not found
// stays in p.
std::vector<Row> SplitQuadraticFactors(Row& p);

}

#endif
