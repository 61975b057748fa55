#ifndef KOBWBPolynomial_h
#define KOBWBPolynomial_h

#include "KOBWBCoefficient.h"

#include <memory>
#include <vector>

// One factor of a monomial: an atom, by its number in a KOBWBPolynomialContext,
// raised to a non-zero integer power. Exponents lie between -maxExponent and
// maxExponent (INT_MAX): products of monomials add exponents up to those bounds
// and stop there, so that an exponent at a bound has left the range and its
// monomial is no longer exact; such a polynomial is never written as an
// expression, and Power refuses to make one.
struct KOBWBMonomialFactor {
    static constexpr int maxExponent = 2147483647;
    int atom;
    int exponent;
    friend bool operator==(const KOBWBMonomialFactor& a, const KOBWBMonomialFactor& b) {
        return a.atom == b.atom && a.exponent == b.exponent;
    }
};

// A product of atoms, its factors sorted by atom number; empty for the constant 1.
// Most monomials have a few factors: those are kept in place, without the heap.
class KOBWBX_API KOBWBMonomial {
public:
    typedef KOBWBMonomialFactor* iterator;
    typedef const KOBWBMonomialFactor* const_iterator;

    KOBWBMonomial() {}
    KOBWBMonomial(const KOBWBMonomial& other) { Assign(other.begin(), other.end()); }
    KOBWBMonomial(KOBWBMonomial&& other) noexcept { Take(other); }
    KOBWBMonomial& operator=(const KOBWBMonomial& other) {
        if (this != &other) Assign(other.begin(), other.end());
        return *this;
    }
    KOBWBMonomial& operator=(KOBWBMonomial&& other) noexcept {
        if (this != &other) {
            Release();
            Take(other);
        }
        return *this;
    }
    ~KOBWBMonomial() { Release(); }

    size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    iterator begin() { return Data(); }
    iterator end() { return Data() + m_size; }
    const_iterator begin() const { return Data(); }
    const_iterator end() const { return Data() + m_size; }
    KOBWBMonomialFactor& operator[](size_t i) { return Data()[i]; }
    const KOBWBMonomialFactor& operator[](size_t i) const { return Data()[i]; }
    void clear() { m_size = 0; }
    void reserve(size_t capacity);
    void push_back(const KOBWBMonomialFactor& factor) {
        if (m_size == Capacity()) reserve(m_size * 2);
        Data()[m_size++] = factor;
    }
    void append(const_iterator first, const_iterator last) {
        reserve(m_size + static_cast<size_t>(last - first));
        for (; first != last; ++first) Data()[m_size++] = *first;
    }
    friend bool operator==(const KOBWBMonomial& a, const KOBWBMonomial& b) {
        if (a.m_size != b.m_size) return false;
        for (size_t i = 0; i < a.m_size; ++i)
            if (!(a[i] == b[i])) return false;
        return true;
    }
    friend bool operator!=(const KOBWBMonomial& a, const KOBWBMonomial& b) { return !(a == b); }

private:
    static constexpr unsigned inlineCapacity = 4;

    bool OnHeap() const { return m_capacity != 0; }
    KOBWBMonomialFactor* Data() { return OnHeap() ? m_heap : m_inline; }
    const KOBWBMonomialFactor* Data() const { return OnHeap() ? m_heap : m_inline; }
    size_t Capacity() const { return OnHeap() ? m_capacity : inlineCapacity; }
    void Assign(const_iterator first, const_iterator last) {
        m_size = 0;
        append(first, last);
    }
    // Takes other's factors, leaving it empty; this holds no heap block.
    void Take(KOBWBMonomial& other) {
        m_size = other.m_size;
        m_capacity = other.m_capacity;
        if (other.OnHeap())
            m_heap = other.m_heap;
        else
            for (size_t i = 0; i < m_size; ++i) m_inline[i] = other.m_inline[i];
        other.m_size = 0;
        other.m_capacity = 0;
    }
    void Release() {
        if (OnHeap()) delete[] m_heap;
        m_capacity = 0;
    }

    // The factors are in place while m_capacity is 0, in m_heap otherwise.
    unsigned m_size = 0;
    unsigned m_capacity = 0;
    union {
        KOBWBMonomialFactor m_inline[inlineCapacity];
        KOBWBMonomialFactor* m_heap;
    };
};

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
    // atom^exponent, the exponent held within +-KOBWBMonomialFactor::maxExponent.
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
    // summands[0] + summands[1] + ..., exactly as adding them one after the other
    // would give it (each coefficient summed in that order, a sum that reaches zero
    // dropped and started afresh by the next like term), in time that grows with
    // their terms, not with their terms times their number. Null summands are skipped.
    static KOBWBPolynomial Sum(const std::vector<const KOBWBPolynomial*>& summands);
    // a * b into product (which may be a or b). A large product is written over
    // product's own terms, factor blocks and coefficients: forming products of the
    // same size again and again then takes no new memory.
    static void Multiply(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& product);
    // a * b into product (which may be a or b) when it has at most maxTerms terms;
    // otherwise false, product untouched, and a large product's terms never formed.
    static bool MultiplyWithin(const KOBWBPolynomial& a, const KOBWBPolynomial& b, size_t maxTerms,
                               KOBWBPolynomial& product);
    // this^exponent for exponent >= 0, in result; false, result untouched, when a
    // polynomial of more than maxTerms terms would be formed on the way.
    bool Power(long long exponent, int maxTerms, KOBWBPolynomial& result) const;

    // Builds from terms in any order: like terms collected, zeros dropped.
    static KOBWBPolynomial FromTerms(std::vector<KOBWBPolynomialTerm> terms);

private:
    // The library's exact backends build results already in storage order.
    friend struct KOBWBPolynomialAccess;

    std::vector<KOBWBPolynomialTerm> m_terms;
};

KOBWBX_API bool operator==(const KOBWBPolynomial& a, const KOBWBPolynomial& b);

// The product of two monomials.
KOBWBX_API KOBWBMonomial KOBWBMultiplyMonomials(const KOBWBMonomial& a, const KOBWBMonomial& b);
// The storage order of monomials.
KOBWBX_API int KOBWBCompareMonomials(const KOBWBMonomial& a, const KOBWBMonomial& b);

#endif
