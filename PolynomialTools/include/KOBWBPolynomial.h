#ifndef KOBWBPolynomial_h
#define KOBWBPolynomial_h

#include "KOBWBCoefficient.h"

#include <vector>

// One factor of a monomial: an atom, by its number in a KOBWBPolynomialContext,
// raised to a non-zero integer power.
struct KOBWBMonomialFactor {
    int atom;
    long long exponent;
    friend bool operator==(const KOBWBMonomialFactor& a, const KOBWBMonomialFactor& b) {
        return a.atom == b.atom && a.exponent == b.exponent;
    }
};

// A product of atoms, its factors sorted by atom number; empty for the constant 1.
typedef std::vector<KOBWBMonomialFactor> KOBWBMonomial;

struct KOBWBPolynomialTerm {
    KOBWBMonomial monomial;
    KOBWBCoefficient coefficient;
};

// A sparse multivariate polynomial over atoms with exact (or real) coefficients.
// Its terms are kept sorted by monomial (atom numbers, then exponents) with like
// terms collected and no zero coefficient, so that equal polynomials have equal
// term lists. This order is the storage order only; the canonical order of an
// expression is the context's.
class KOBWBX_API KOBWBPolynomial {
public:
    KOBWBPolynomial() = default;
    KOBWBPolynomial(const KOBWBCoefficient& constant);
    // atom^exponent.
    static KOBWBPolynomial Atom(int atom, long long exponent = 1);

    bool IsZero() const { return m_terms.empty(); }
    // A polynomial without atoms; its value in constant (0 for the zero polynomial).
    bool IsConstant(KOBWBCoefficient& constant) const;
    int GetNbOfTerms() const { return static_cast<int>(m_terms.size()); }
    const KOBWBPolynomialTerm& GetTerm(int i) const { return m_terms[static_cast<size_t>(i)]; }
    const std::vector<KOBWBPolynomialTerm>& GetTerms() const { return m_terms; }
    // The highest exponent of atom over all terms (0 when it does not occur); the
    // lowest one through lowest.
    long long Degree(int atom, long long* lowest = nullptr) const;
    // The largest absolute exponent of any factor.
    long long GetMaxExponent() const;
    // The sum of the exponents of the largest term.
    long long GetTotalDegree() const;
    std::size_t Hash() const;

    KOBWBPolynomial operator-() const;
    KOBWBPolynomial& operator+=(const KOBWBPolynomial& other);
    KOBWBPolynomial& operator-=(const KOBWBPolynomial& other);
    KOBWBPolynomial& operator*=(const KOBWBCoefficient& factor);
    friend KOBWBPolynomial operator+(KOBWBPolynomial a, const KOBWBPolynomial& b) { return a += b; }
    friend KOBWBPolynomial operator-(KOBWBPolynomial a, const KOBWBPolynomial& b) { return a -= b; }
    friend KOBWBPolynomial operator*(const KOBWBPolynomial& a, const KOBWBPolynomial& b) {
        return Multiply(a, b);
    }
    friend bool operator==(const KOBWBPolynomial& a, const KOBWBPolynomial& b);
    friend bool operator!=(const KOBWBPolynomial& a, const KOBWBPolynomial& b) { return !(a == b); }

    static KOBWBPolynomial Multiply(const KOBWBPolynomial& a, const KOBWBPolynomial& b);
    // this^exponent for exponent >= 0, in result; false, result untouched, when a
    // polynomial of more than maxTerms terms would be formed on the way.
    bool Power(long long exponent, int maxTerms, KOBWBPolynomial& result) const;

    // Builds from terms in any order: like terms collected, zeros dropped.
    static KOBWBPolynomial FromTerms(std::vector<KOBWBPolynomialTerm> terms);

private:
    std::vector<KOBWBPolynomialTerm> m_terms;
};

KOBWBX_API bool operator==(const KOBWBPolynomial& a, const KOBWBPolynomial& b);

// The product of two monomials.
KOBWBX_API KOBWBMonomial KOBWBMultiplyMonomials(const KOBWBMonomial& a, const KOBWBMonomial& b);
// The storage order of monomials.
KOBWBX_API int KOBWBCompareMonomials(const KOBWBMonomial& a, const KOBWBMonomial& b);

#endif
