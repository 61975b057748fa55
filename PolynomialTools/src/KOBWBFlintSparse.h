#ifndef KOBWBFlintSparse_h
#define KOBWBFlintSparse_h

#include "KOBWBPolynomial.h"
#include "KOBWBRational.h"

#include <flint/fmpz_mpoly.h>

#include <vector>

// Polynomials over atoms as FLINT sparse integer polynomials: the atoms of a set of
// polynomials, by increasing number, are FLINT's variables 0, 1, ... in
// lexicographic order. An exponent is stored less the variable's offset (0 or the
// lowest negative exponent seen), and a polynomial with rational coefficients as the
// integer polynomial it makes times its scale.
namespace KOBWBFlint {

class SparseContext {
public:
    // The atoms of the polynomials given, offsets from their lowest exponents.
    explicit SparseContext(const std::vector<const KOBWBPolynomial*>& polynomials);
    ~SparseContext();
    SparseContext(const SparseContext&) = delete;
    SparseContext& operator=(const SparseContext&) = delete;

    fmpz_mpoly_ctx_struct* get() { return m_context; }
    size_t Variables() const { return m_atoms.size(); }
    // The variable of atom, -1 when no polynomial given holds it.
    slong Variable(int atom) const;
    // Whether every polynomial given has exact coefficients.
    bool Exact() const { return m_exact; }
    // Whether exponents up to factor times the largest one given stay within the
    // range of monomials (see KOBWBMonomialFactor), and so well inside machine words
    // (FLINT stops the program on an exponent it cannot hand back).
    bool ExponentsFit(long long factor) const {
        return factor >= 0 && (factor == 0 || m_largestExponent < KOBWBMonomialFactor::maxExponent / factor);
    }
    // The offset of every variable multiplied by factor (the offsets of a product of
    // factor polynomials).
    std::vector<long long> Offsets(long long factor) const;
    const std::vector<long long>& Offsets() const { return m_offsets; }

    // scale p = result with integer coefficients; scale is the least common
    // denominator. p is one of the polynomials given.
    void ToFlint(const KOBWBPolynomial& p, fmpz_mpoly_struct* result, KOBWBRational& scale);
    // result / scale with the exponents offset by offsets, in storage order.
    KOBWBPolynomial FromFlint(const fmpz_mpoly_struct* p, const KOBWBRational& scale,
                              const std::vector<long long>& offsets) {
        KOBWBPolynomial result;
        FromFlint(p, scale, offsets, result);
        return result;
    }
    // The same into result, whose terms, factor blocks and coefficients are reused.
    void FromFlint(const fmpz_mpoly_struct* p, const KOBWBRational& scale, const std::vector<long long>& offsets,
                   KOBWBPolynomial& result);
    // The same for a polynomial of the rational numbers.
    KOBWBPolynomial FromFlint(const fmpz_mpoly_struct* p, const KOBWBRational& scale) {
        return FromFlint(p, scale, m_offsets);
    }

private:
    std::vector<int> m_atoms;
    std::vector<long long> m_offsets;
    bool m_exact = true;
    long long m_largestExponent = 0;
    fmpz_mpoly_ctx_struct m_context[1];
};

// A sparse polynomial of a context, cleared with it.
class SparsePolynomial {
public:
    explicit SparsePolynomial(SparseContext& context) : m_context(context) { fmpz_mpoly_init(m_value, context.get()); }
    ~SparsePolynomial() { fmpz_mpoly_clear(m_value, m_context.get()); }
    SparsePolynomial(const SparsePolynomial&) = delete;
    SparsePolynomial& operator=(const SparsePolynomial&) = delete;
    fmpz_mpoly_struct* get() { return m_value; }

private:
    SparseContext& m_context;
    fmpz_mpoly_struct m_value[1];
};

// The thread's FLINT polynomial for results over as many variables as context has.
// It outlives the call, so that a product formed again and again reuses FLINT's
// storage as well as the library's; it is released when the thread ends or when a
// result over another number of variables takes its place.
fmpz_mpoly_struct* ThreadResult(SparseContext& context);

} // namespace KOBWBFlint

#endif
