#include "KOBWBPolynomial.h"

#include "KOBLVRHashTable.h"
#include "KOBWBExponents.h"
#include "KOBWBFlintMultivariate.h"

#include <algorithm>
#include <cstdlib>

// A term (four factors in place and a coefficient of two machine words) fills one
// cache line: walks over terms touch as few lines as they can.
static_assert(sizeof(void*) != 8 || sizeof(KOBWBPolynomialTerm) == 64, "a term takes 64 bytes");

void KOBWBMonomial::reserve(size_t capacity) {
    if (capacity <= Capacity()) return;
    KOBWBMonomialFactor* grown = new KOBWBMonomialFactor[capacity];
    std::copy(begin(), end(), grown);
    Release();
    m_heap = grown;
    m_capacity = static_cast<unsigned>(capacity);
}

KOBWBMonomial KOBWBMultiplyMonomials(const KOBWBMonomial& a, const KOBWBMonomial& b) {
    KOBWBMonomial product;
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (a[i].atom < b[j].atom) {
            product.push_back(a[i++]);
        } else if (b[j].atom < a[i].atom) {
            product.push_back(b[j++]);
        } else {
            const int exponent = kobwb::AddExponents(a[i].exponent, b[j].exponent);
            if (exponent != 0) product.push_back({a[i].atom, exponent});
            ++i;
            ++j;
        }
    }
    product.append(a.begin() + i, a.end());
    product.append(b.begin() + j, b.end());
    return product;
}

int KOBWBCompareMonomials(const KOBWBMonomial& a, const KOBWBMonomial& b) {
    const size_t common = std::min(a.size(), b.size());
    for (size_t k = 0; k < common; ++k) {
        if (a[k].atom != b[k].atom) return a[k].atom < b[k].atom ? -1 : 1;
        if (a[k].exponent != b[k].exponent) return a[k].exponent < b[k].exponent ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

KOBWBPolynomial::KOBWBPolynomial(const KOBWBCoefficient& constant) {
    if (!constant.IsZero()) m_terms.push_back({KOBWBMonomial(), constant});
}

KOBWBPolynomial KOBWBPolynomial::Atom(int atom, long long exponent) {
    KOBWBPolynomial result;
    KOBWBMonomial monomial;
    if (exponent != 0) monomial.push_back({atom, kobwb::HeldExponent(exponent)});
    result.m_terms.push_back({std::move(monomial), KOBWBCoefficient(1)});
    return result;
}

bool KOBWBPolynomial::IsConstant(KOBWBCoefficient& constant) const {
    if (m_terms.empty()) {
        constant = KOBWBCoefficient();
        return true;
    }
    if (m_terms.size() != 1 || !m_terms[0].monomial.empty()) return false;
    constant = m_terms[0].coefficient;
    return true;
}

long long KOBWBPolynomial::Degree(int atom, long long* lowest) const {
    long long high = 0, low = 0;
    bool first = true;
    for (const KOBWBPolynomialTerm& term : m_terms) {
        long long exponent = 0;
        for (const KOBWBMonomialFactor& factor : term.monomial)
            if (factor.atom == atom) exponent = factor.exponent;
        high = first ? exponent : std::max(high, exponent);
        low = first ? exponent : std::min(low, exponent);
        first = false;
    }
    if (lowest) *lowest = low;
    return high;
}

long long KOBWBPolynomial::GetMaxExponent() const {
    long long largest = 0;
    for (const KOBWBPolynomialTerm& term : m_terms)
        for (const KOBWBMonomialFactor& factor : term.monomial)
            largest = std::max(largest, kobwb::ExponentMagnitude(factor.exponent));
    return largest;
}

long long KOBWBPolynomial::GetTotalDegree() const {
    long long largest = 0;
    for (const KOBWBPolynomialTerm& term : m_terms) {
        long long degree = 0;
        for (const KOBWBMonomialFactor& factor : term.monomial) degree += factor.exponent;
        largest = std::max(largest, degree);
    }
    return largest;
}

std::size_t KOBWBPolynomial::Hash() const {
    std::size_t hash = m_terms.size();
    for (const KOBWBPolynomialTerm& term : m_terms) {
        for (const KOBWBMonomialFactor& factor : term.monomial)
            hash = hash * 1000003u ^ (static_cast<std::size_t>(factor.atom) * 31u + static_cast<std::size_t>(factor.exponent));
        hash = hash * 1000003u ^ term.coefficient.Hash();
    }
    return hash;
}

bool operator==(const KOBWBPolynomial& a, const KOBWBPolynomial& b) {
    if (a.m_terms.size() != b.m_terms.size()) return false;
    for (size_t i = 0; i < a.m_terms.size(); ++i)
        if (a.m_terms[i].monomial != b.m_terms[i].monomial || a.m_terms[i].coefficient != b.m_terms[i].coefficient)
            return false;
    return true;
}

KOBWBPolynomial KOBWBPolynomial::operator-() const {
    KOBWBPolynomial result(*this);
    for (KOBWBPolynomialTerm& term : result.m_terms) term.coefficient = -term.coefficient;
    return result;
}

namespace {

// Merges two sorted term lists, adding (or subtracting) the coefficients of like
// terms. The terms of a are moved out of it when Terms is a vector, copied when it
// is a const one.
template <typename Terms>
std::vector<KOBWBPolynomialTerm> Merge(Terms& a, const std::vector<KOBWBPolynomialTerm>& b, bool subtract) {
    std::vector<KOBWBPolynomialTerm> merged;
    merged.reserve(a.size() + b.size());
    size_t i = 0, j = 0;
    while (i < a.size() || j < b.size()) {
        const int order = i == a.size() ? 1 : (j == b.size() ? -1 : KOBWBCompareMonomials(a[i].monomial, b[j].monomial));
        if (order < 0) {
            merged.push_back(std::move(a[i++]));
            continue;
        }
        KOBWBCoefficient right = subtract ? -b[j].coefficient : b[j].coefficient;
        if (order > 0) {
            merged.push_back({b[j++].monomial, std::move(right)});
            continue;
        }
        KOBWBPolynomialTerm term = std::move(a[i]);
        term.coefficient += right;
        if (!term.coefficient.IsZero()) merged.push_back(std::move(term));
        ++i;
        ++j;
    }
    return merged;
}

// this op= other, where other may be this polynomial itself.
void MergeInto(std::vector<KOBWBPolynomialTerm>& terms, const std::vector<KOBWBPolynomialTerm>& other, bool subtract) {
    if (&terms == &other)
        terms = Merge(other, other, subtract);
    else
        terms = Merge(terms, other, subtract);
}

} // namespace

KOBWBPolynomial& KOBWBPolynomial::operator+=(const KOBWBPolynomial& other) {
    if (m_terms.empty()) return *this = other;
    if (!other.m_terms.empty()) MergeInto(m_terms, other.m_terms, false);
    return *this;
}

KOBWBPolynomial& KOBWBPolynomial::operator-=(const KOBWBPolynomial& other) {
    if (!other.m_terms.empty()) MergeInto(m_terms, other.m_terms, true);
    return *this;
}

KOBWBPolynomial& KOBWBPolynomial::operator*=(const KOBWBCoefficient& factor) {
    if (factor.IsZero()) {
        m_terms.clear();
        return *this;
    }
    size_t kept = 0;
    for (size_t i = 0; i < m_terms.size(); ++i) {
        m_terms[i].coefficient *= factor;
        // A real product can underflow to zero.
        if (m_terms[i].coefficient.IsZero()) continue;
        if (kept != i) m_terms[kept] = std::move(m_terms[i]);
        ++kept;
    }
    m_terms.erase(m_terms.begin() + static_cast<long>(kept), m_terms.end());
    return *this;
}

namespace {

std::size_t HashOf(const KOBWBMonomial& monomial) {
    std::size_t hash = 0x9E3779B97F4A7C15ull;
    for (const KOBWBMonomialFactor& factor : monomial)
        hash = (hash ^ (static_cast<std::size_t>(factor.atom) << 32 ^ static_cast<std::size_t>(factor.exponent))) *
               0xFF51AFD7ED558CCDull;
    return hash ^ hash >> 29;
}

// Collects terms with like terms added up: a hash table from monomials to their
// place among the distinct terms, which are then sorted once.
class TermCollector {
public:
    explicit TermCollector(size_t expected) {
        m_places.Reserve(expected);
        m_terms.reserve(expected);
    }

    void Add(KOBWBMonomial monomial, KOBWBCoefficient coefficient) {
        const int next = static_cast<int>(m_terms.size());
        const std::pair<int*, bool> found = m_places.Insert(
            HashOf(monomial), [&](int place) { return m_terms[static_cast<size_t>(place)].monomial == monomial; }, next);
        if (found.second)
            m_terms.push_back({std::move(monomial), std::move(coefficient)});
        else
            m_terms[static_cast<size_t>(*found.first)].coefficient += coefficient;
    }

    // Adds as a running sum does: a coefficient that has reached zero is gone, so the
    // next like term takes its place rather than being added to it (which, between a
    // real zero and an exact coefficient, would make the exact one real).
    void AddToSum(const KOBWBMonomial& monomial, const KOBWBCoefficient& coefficient) {
        const int next = static_cast<int>(m_terms.size());
        const std::pair<int*, bool> found = m_places.Insert(
            HashOf(monomial), [&](int place) { return m_terms[static_cast<size_t>(place)].monomial == monomial; }, next);
        if (found.second) {
            m_terms.push_back({monomial, coefficient});
            return;
        }
        KOBWBCoefficient& sum = m_terms[static_cast<size_t>(*found.first)].coefficient;
        if (sum.IsZero())
            sum = coefficient;
        else
            sum += coefficient;
    }

    // The distinct terms in storage order, zeros dropped.
    std::vector<KOBWBPolynomialTerm> Sorted() {
        std::vector<int> order;
        order.reserve(m_terms.size());
        for (size_t i = 0; i < m_terms.size(); ++i)
            if (!m_terms[i].coefficient.IsZero()) order.push_back(static_cast<int>(i));
        std::sort(order.begin(), order.end(), [this](int a, int b) {
            return KOBWBCompareMonomials(m_terms[static_cast<size_t>(a)].monomial, m_terms[static_cast<size_t>(b)].monomial) < 0;
        });
        std::vector<KOBWBPolynomialTerm> sorted;
        sorted.reserve(order.size());
        for (int i : order) sorted.push_back(std::move(m_terms[static_cast<size_t>(i)]));
        return sorted;
    }

private:
    KOBLVRHashTable<int> m_places;
    std::vector<KOBWBPolynomialTerm> m_terms;
};

// The same for a few terms: sorted in place, like terms then adjacent and added up
// into the first of them.
std::vector<KOBWBPolynomialTerm> SortedFew(std::vector<KOBWBPolynomialTerm> terms) {
    std::sort(terms.begin(), terms.end(), [](const KOBWBPolynomialTerm& a, const KOBWBPolynomialTerm& b) {
        return KOBWBCompareMonomials(a.monomial, b.monomial) < 0;
    });
    size_t kept = 0;
    for (size_t i = 0; i < terms.size();) {
        size_t j = i + 1;
        while (j < terms.size() && terms[j].monomial == terms[i].monomial) terms[i].coefficient += terms[j++].coefficient;
        if (!terms[i].coefficient.IsZero()) {
            if (kept != i) terms[kept] = std::move(terms[i]);
            ++kept;
        }
        i = j;
    }
    terms.erase(terms.begin() + static_cast<long>(kept), terms.end());
    return terms;
}

// Below this many terms, sorting is cheaper than a table.
constexpr size_t fewTerms = 32;

} // namespace

namespace {

// Whether terms are already in storage order: strictly increasing, none zero.
bool InStorageOrder(const std::vector<KOBWBPolynomialTerm>& terms) {
    for (size_t i = 0; i < terms.size(); ++i)
        if (terms[i].coefficient.IsZero() || (i > 0 && KOBWBCompareMonomials(terms[i - 1].monomial, terms[i].monomial) >= 0))
            return false;
    return true;
}

} // namespace

KOBWBPolynomial KOBWBPolynomial::FromTerms(std::vector<KOBWBPolynomialTerm> terms) {
    KOBWBPolynomial result;
    if (InStorageOrder(terms)) {
        result.m_terms = std::move(terms);
        return result;
    }
    if (terms.size() <= fewTerms) {
        result.m_terms = SortedFew(std::move(terms));
        return result;
    }
    TermCollector collector(terms.size());
    for (KOBWBPolynomialTerm& term : terms) collector.Add(std::move(term.monomial), std::move(term.coefficient));
    result.m_terms = collector.Sorted();
    return result;
}

KOBWBPolynomial KOBWBPolynomial::Sum(const std::vector<const KOBWBPolynomial*>& summands) {
    // A few summands are merged one after the other; past that, merging would walk
    // the growing sum once per summand.
    constexpr size_t fewSummands = 4;
    KOBWBPolynomial sum;
    if (summands.size() <= fewSummands) {
        // As sum += summand for each, but the first two are merged from where they
        // are: held is the sum while it is one of the summands.
        const KOBWBPolynomial* held = nullptr;
        bool merged = false;
        for (const KOBWBPolynomial* summand : summands) {
            if (!summand) continue;
            if (merged) {
                sum += *summand;
            } else if (!held || held->m_terms.empty()) {
                held = summand;
            } else if (!summand->m_terms.empty()) {
                const std::vector<KOBWBPolynomialTerm>& first = held->m_terms;
                sum.m_terms = Merge(first, summand->m_terms, false);
                merged = true;
            }
        }
        if (!merged && held) sum = *held;
        return sum;
    }
    size_t terms = 0;
    for (const KOBWBPolynomial* summand : summands)
        if (summand) terms += summand->m_terms.size();
    TermCollector collector(terms);
    for (const KOBWBPolynomial* summand : summands)
        if (summand)
            for (const KOBWBPolynomialTerm& term : summand->m_terms) collector.AddToSum(term.monomial, term.coefficient);
    sum.m_terms = collector.Sorted();
    return sum;
}

KOBWBPolynomial KOBWBPolynomial::Multiply(const KOBWBPolynomial& a, const KOBWBPolynomial& b) {
    if (a.m_terms.empty() || b.m_terms.empty()) return KOBWBPolynomial();
    // A constant factor keeps the order of the other factor.
    if (b.m_terms.size() == 1 && b.m_terms[0].monomial.empty()) return KOBWBPolynomial(a) *= b.m_terms[0].coefficient;
    if (a.m_terms.size() == 1 && a.m_terms[0].monomial.empty()) return KOBWBPolynomial(b) *= a.m_terms[0].coefficient;
    KOBWBPolynomial result;
    if (a.m_terms.size() * b.m_terms.size() <= fewTerms) {
        std::vector<KOBWBPolynomialTerm> products;
        products.reserve(a.m_terms.size() * b.m_terms.size());
        for (const KOBWBPolynomialTerm& left : a.m_terms)
            for (const KOBWBPolynomialTerm& right : b.m_terms)
                products.push_back({KOBWBMultiplyMonomials(left.monomial, right.monomial), left.coefficient * right.coefficient});
        result.m_terms = SortedFew(std::move(products));
        return result;
    }
    if (KOBWBFlintMultivariate::WorthConverting(a.m_terms.size(), b.m_terms.size()) &&
        KOBWBFlintMultivariate::Multiply(a, b, result))
        return result;
    TermCollector collector(std::max(a.m_terms.size(), b.m_terms.size()));
    for (const KOBWBPolynomialTerm& left : a.m_terms)
        for (const KOBWBPolynomialTerm& right : b.m_terms)
            collector.Add(KOBWBMultiplyMonomials(left.monomial, right.monomial), left.coefficient * right.coefficient);
    result.m_terms = collector.Sorted();
    return result;
}

namespace {

// Whether Multiply hands the product to FLINT.
bool HandedToFlint(const std::vector<KOBWBPolynomialTerm>& a, const std::vector<KOBWBPolynomialTerm>& b) {
    const auto constant = [](const std::vector<KOBWBPolynomialTerm>& p) { return p.size() == 1 && p[0].monomial.empty(); };
    return a.size() * b.size() > fewTerms && !constant(a) && !constant(b) &&
           KOBWBFlintMultivariate::WorthConverting(a.size(), b.size());
}

} // namespace

void KOBWBPolynomial::Multiply(const KOBWBPolynomial& a, const KOBWBPolynomial& b, KOBWBPolynomial& product) {
    // The products that the one above hands to FLINT, written here in place.
    if (!HandedToFlint(a.m_terms, b.m_terms) || &product == &a || &product == &b ||
        !KOBWBFlintMultivariate::Multiply(a, b, product))
        product = Multiply(a, b);
}

bool KOBWBPolynomial::MultiplyWithin(const KOBWBPolynomial& a, const KOBWBPolynomial& b, size_t maxTerms,
                                     KOBWBPolynomial& product) {
    KOBWBPolynomial result;
    bool tooLarge = false;
    if (HandedToFlint(a.m_terms, b.m_terms) && KOBWBFlintMultivariate::Multiply(a, b, result, maxTerms, &tooLarge)) {
        product = std::move(result);
        return true;
    }
    if (tooLarge) return false;
    result = Multiply(a, b);
    if (result.m_terms.size() > maxTerms) return false;
    product = std::move(result);
    return true;
}

bool KOBWBPolynomial::Power(long long exponent, int maxTerms, KOBWBPolynomial& result) const {
    if (exponent < 0) return false;
    if (m_terms.size() == 1) {
        // A single term: powers of its coefficient and exponents.
        KOBWBPolynomialTerm term{m_terms[0].monomial, m_terms[0].coefficient.Power(exponent)};
        for (KOBWBMonomialFactor& factor : term.monomial) {
            long long power;
            if (__builtin_mul_overflow(static_cast<long long>(factor.exponent), exponent, &power) ||
                std::llabs(power) >= kobwb::maxExponent)
                return false;
            factor.exponent = static_cast<int>(power);
        }
        if (exponent == 0) term.monomial.clear();
        KOBWBPolynomial single;
        if (!term.coefficient.IsZero()) single.m_terms.push_back(std::move(term));
        result = std::move(single);
        return true;
    }
    if (exponent == 0) {
        result = KOBWBPolynomial(KOBWBCoefficient(1));
        return true;
    }
    // A power of two or more terms has at least exponent + 1 terms.
    if (exponent >= maxTerms) return false;
    if (exponent >= 2 && KOBWBFlintMultivariate::Power(*this, static_cast<unsigned long>(exponent), maxTerms, result))
        return true;
    // Squaring keeps every intermediate power below the result; each product is
    // also bounded in the work it may take.
    const long long maxWork = 64LL * maxTerms;
    const auto within = [&](const KOBWBPolynomial& a, const KOBWBPolynomial& b) {
        return static_cast<long long>(a.m_terms.size()) * static_cast<long long>(b.m_terms.size()) <= maxWork;
    };
    // power is this polynomial until the first squaring, then squared: the last
    // square is moved into the result rather than copied.
    const KOBWBPolynomial* power = this;
    KOBWBPolynomial squared, accumulated;
    bool started = false;
    for (long long e = exponent; e > 0; e >>= 1) {
        if (e & 1) {
            if (started && !within(accumulated, *power)) return false;
            if (started)
                accumulated = Multiply(accumulated, *power);
            else if (power == &squared && e == 1)
                accumulated = std::move(squared);
            else
                accumulated = *power;
            started = true;
            if (accumulated.GetNbOfTerms() > maxTerms) return false;
        }
        if (e > 1) {
            if (!within(*power, *power)) return false;
            squared = Multiply(*power, *power);
            power = &squared;
            if (squared.GetNbOfTerms() > maxTerms) return false;
        }
    }
    result = std::move(accumulated);
    return true;
}
