#include "KOBWBFlintSparse.h"

#include "KOBLVRLargeBlocks.h"
#include "KOBWBExponents.h"
#include "KOBWBFlintValues.h"
#include "KOBWBPolynomialAccess.h"
#include "KOBWBRationalAccess.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace KOBWBFlint {

namespace {

// The exponents of a FLINT polynomial, term by term and unpacked into words of type
// Word, and the offsets that give the true exponents.
template <typename Word>
struct Exponents {
    std::vector<Word> values;
    size_t variables;
    const std::vector<long long>& offsets;

    long long At(int term, size_t variable) const {
        return static_cast<long long>(values[static_cast<size_t>(term) * variables + variable]) + offsets[variable];
    }
    bool ZeroFrom(int term, size_t variable) const {
        for (size_t v = variable; v < variables; ++v)
            if (At(term, v) != 0) return false;
        return true;
    }
};

// Reorders terms[0, count), in increasing lexicographic order of their exponents of
// variable and the ones after (those before are equal), into storage order, in place.
// Storage order compares factor lists, which skip an exponent 0: where two monomials
// first differ in a variable, the one without it comes first only when it has no
// factor left; otherwise the one with it does. So the term whose remaining exponents
// are all 0 leads, the runs of non-zero exponents follow in increasing order, and the
// other terms without the variable come last.
template <typename Word>
void StorageOrder(const Exponents<Word>& exponents, int* terms, size_t count, size_t variable) {
    if (count <= 1 || variable == exponents.variables) return;
    for (size_t begin = 0; begin < count;) {
        const long long exponent = exponents.At(terms[begin], variable);
        size_t end = begin + 1;
        while (end < count && exponents.At(terms[end], variable) == exponent) ++end;
        StorageOrder(exponents, terms + begin, end - begin, variable + 1);
        begin = end;
    }
    size_t zeroBegin = 0;
    while (zeroBegin < count && exponents.At(terms[zeroBegin], variable) < 0) ++zeroBegin;
    size_t zeroEnd = zeroBegin;
    while (zeroEnd < count && exponents.At(terms[zeroEnd], variable) == 0) ++zeroEnd;
    if (zeroEnd == zeroBegin) return;
    // [negative][zero][positive] becomes [leading zero][negative][positive][other zeros].
    const bool leading = exponents.ZeroFrom(terms[zeroBegin], variable + 1);
    if (leading) std::rotate(terms, terms + zeroBegin, terms + zeroBegin + 1);
    const size_t othersBegin = zeroBegin + (leading ? 1 : 0);
    std::rotate(terms + othersBegin, terms + zeroEnd, terms + count);
}

// The terms of p / scale in storage order, written over terms: the terms, factor
// blocks and coefficients already there are reused.
template <typename Word>
void TermsInStorageOrder(const fmpz_mpoly_struct* p, const fmpz_mpoly_ctx_struct* context, const std::vector<int>& atoms,
                         const KOBWBRational& scale, const std::vector<long long>& offsets,
                         std::vector<KOBWBPolynomialTerm>& terms) {
    const slong length = fmpz_mpoly_length(p, context);
    const size_t variables = atoms.size();
    Exponents<Word> exponents{std::vector<Word>(), variables, offsets};
    exponents.values.reserve(static_cast<size_t>(length) * variables);
    kobwb::AdviseHugePages(exponents.values.data(), exponents.values.capacity() * sizeof(Word));
    exponents.values.resize(static_cast<size_t>(length) * variables);
    std::vector<ulong> one(std::max<size_t>(1, variables));
    for (slong i = 0; i < length; ++i) {
        fmpz_mpoly_get_term_exp_ui(one.data(), p, i, context);
        std::copy(one.begin(), one.begin() + static_cast<long>(variables),
                  exponents.values.begin() + static_cast<long>(static_cast<size_t>(i) * variables));
    }
    // FLINT keeps terms in decreasing lexicographic order.
    std::vector<int> order(static_cast<size_t>(length));
    for (slong i = 0; i < length; ++i) order[static_cast<size_t>(i)] = static_cast<int>(length - 1 - i);
    StorageOrder(exponents, order.data(), order.size(), 0);

    const bool unscaled = scale.IsOne();
    if (terms.capacity() < order.size()) {
        std::vector<KOBWBPolynomialTerm> larger;
        larger.reserve(order.size());
        kobwb::AdviseHugePages(larger.data(), larger.capacity() * sizeof(KOBWBPolynomialTerm));
        terms.swap(larger);
    }
    terms.resize(order.size());
    for (size_t k = 0; k < order.size(); ++k) {
        const int i = order[k];
        KOBWBPolynomialTerm& term = terms[k];
        // A monomial of more factors than it keeps in place gets a block of its size.
        size_t factors = 0;
        for (size_t v = 0; v < variables; ++v) factors += exponents.At(i, v) != 0 ? 1 : 0;
        term.monomial.clear();
        term.monomial.reserve(factors);
        for (size_t v = 0; v < variables; ++v) {
            const long long exponent = exponents.At(i, v);
            if (exponent != 0) term.monomial.push_back({atoms[v], static_cast<int>(exponent)});
        }
        KOBWBRational c = KOBWBRationalAccess::FromFlint(p->coeffs + i);
        if (!unscaled) c /= scale;
        term.coefficient = KOBWBCoefficient(std::move(c));
    }
}

} // namespace

SparseContext::SparseContext(const std::vector<const KOBWBPolynomial*>& polynomials) {
    ReleaseCachesAtThreadExit();
    for (const KOBWBPolynomial* p : polynomials)
        for (const KOBWBPolynomialTerm& term : p->GetTerms()) {
            m_exact = m_exact && term.coefficient.IsExact();
            for (const KOBWBMonomialFactor& factor : term.monomial) m_atoms.push_back(factor.atom);
        }
    std::sort(m_atoms.begin(), m_atoms.end());
    m_atoms.erase(std::unique(m_atoms.begin(), m_atoms.end()), m_atoms.end());
    m_offsets.assign(m_atoms.size(), 0);
    for (const KOBWBPolynomial* p : polynomials)
        for (const KOBWBPolynomialTerm& term : p->GetTerms())
            for (const KOBWBMonomialFactor& factor : term.monomial) {
                const size_t v = static_cast<size_t>(
                    std::lower_bound(m_atoms.begin(), m_atoms.end(), factor.atom) - m_atoms.begin());
                m_offsets[v] = std::min<long long>(m_offsets[v], factor.exponent);
                m_largestExponent = std::max(m_largestExponent, kobwb::ExponentMagnitude(factor.exponent));
            }
    // FLINT wants at least one variable.
    fmpz_mpoly_ctx_init(m_context, std::max<slong>(1, static_cast<slong>(m_atoms.size())), ORD_LEX);
}

SparseContext::~SparseContext() { fmpz_mpoly_ctx_clear(m_context); }

slong SparseContext::Variable(int atom) const {
    const auto found = std::lower_bound(m_atoms.begin(), m_atoms.end(), atom);
    return found == m_atoms.end() || *found != atom ? -1 : static_cast<slong>(found - m_atoms.begin());
}

std::vector<long long> SparseContext::Offsets(long long factor) const {
    std::vector<long long> offsets(m_offsets);
    for (long long& offset : offsets) offset *= factor;
    return offsets;
}

void SparseContext::ToFlint(const KOBWBPolynomial& p, fmpz_mpoly_struct* result, KOBWBRational& scale) {
    Integer denominator, coefficient, factor;
    fmpz_one(denominator.get());
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        const KOBWBRational& c = term.coefficient.GetExact();
        if (c.IsInteger()) continue;
        KOBWBRationalAccess::Denominator(c, factor.get());
        fmpz_lcm(denominator.get(), denominator.get(), factor.get());
    }
    const bool integer = fmpz_is_one(denominator.get());
    fmpz_mpoly_zero(result, m_context);
    fmpz_mpoly_fit_length(result, static_cast<slong>(p.GetNbOfTerms()), m_context);
    std::vector<ulong> exponents(std::max<size_t>(1, m_atoms.size()));
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        for (size_t v = 0; v < m_atoms.size(); ++v) exponents[v] = static_cast<ulong>(-m_offsets[v]);
        size_t v = 0;
        for (const KOBWBMonomialFactor& f : term.monomial) {
            while (m_atoms[v] != f.atom) ++v;
            exponents[v] = static_cast<ulong>(f.exponent - m_offsets[v]);
        }
        const KOBWBRational& c = term.coefficient.GetExact();
        KOBWBRationalAccess::Numerator(c, coefficient.get());
        if (!integer) {
            KOBWBRationalAccess::Denominator(c, factor.get());
            fmpz_divexact(factor.get(), denominator.get(), factor.get());
            fmpz_mul(coefficient.get(), coefficient.get(), factor.get());
        }
        fmpz_mpoly_push_term_fmpz_ui(result, coefficient.get(), exponents.data(), m_context);
    }
    // Distinct monomials stay distinct: sorting puts them in FLINT's order.
    fmpz_mpoly_sort_terms(result, m_context);
    scale = KOBWBRationalAccess::FromFlint(denominator.get());
}

void SparseContext::FromFlint(const fmpz_mpoly_struct* p, const KOBWBRational& scale,
                              const std::vector<long long>& offsets, KOBWBPolynomial& result) {
    // Exponents unpack into the narrowest words that hold FLINT's fields: a product of
    // a million terms is walked several times over them.
    std::vector<KOBWBPolynomialTerm>& terms = KOBWBPolynomialAccess::Terms(result);
    if (p->bits <= 8)
        TermsInStorageOrder<unsigned char>(p, m_context, m_atoms, scale, offsets, terms);
    else if (p->bits <= 16)
        TermsInStorageOrder<unsigned short>(p, m_context, m_atoms, scale, offsets, terms);
    else if (p->bits <= 32)
        TermsInStorageOrder<unsigned>(p, m_context, m_atoms, scale, offsets, terms);
    else
        TermsInStorageOrder<ulong>(p, m_context, m_atoms, scale, offsets, terms);
}

namespace {

// A polynomial with its own context: contexts of the same number of variables, all
// lexicographic, are interchangeable.
struct KeptResult {
    slong variables = -1;
    fmpz_mpoly_ctx_struct context[1];
    fmpz_mpoly_struct value[1];

    KeptResult() = default;
    KeptResult(const KeptResult&) = delete;
    KeptResult& operator=(const KeptResult&) = delete;
    ~KeptResult() { Release(); }
    void Release() {
        if (variables < 0) return;
        fmpz_mpoly_clear(value, context);
        fmpz_mpoly_ctx_clear(context);
        variables = -1;
    }
};

} // namespace

fmpz_mpoly_struct* ThreadResult(SparseContext& context) {
    // Made after FLINT's own thread caches (SparseContext's constructor asks for their
    // release), so released before them.
    thread_local KeptResult kept;
    const slong variables = context.get()->minfo->nvars;
    if (kept.variables != variables) {
        kept.Release();
        fmpz_mpoly_ctx_init(kept.context, variables, ORD_LEX);
        fmpz_mpoly_init(kept.value, kept.context);
        kept.variables = variables;
    }
    return kept.value;
}

} // namespace KOBWBFlint
