#include "KOBWBRational.h"

#include "KOBWBRationalBig.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <new>
#include <utility>

namespace {

using Wide = __int128;

Wide Gcd(Wide a, Wide b) {
    if (a < 0) a = -a;
    if (b < 0) b = -b;
    while (b != 0) {
        const Wide r = a % b;
        a = b;
        b = r;
    }
    return a;
}

bool FitsLong(Wide v) {
    return v >= std::numeric_limits<long long>::min() && v <= std::numeric_limits<long long>::max();
}

void SetWide(mpz_ptr target, Wide v) {
    const bool negative = v < 0;
    unsigned __int128 magnitude = negative ? -static_cast<unsigned __int128>(v) : static_cast<unsigned __int128>(v);
    mpz_set_ui(target, static_cast<unsigned long>(magnitude >> 64));
    mpz_mul_2exp(target, target, 64);
    mpz_add_ui(target, target, static_cast<unsigned long>(magnitude & 0xFFFFFFFFFFFFFFFFull));
    if (negative) mpz_neg(target, target);
}

} // namespace

KOBWBRational::KOBWBRational(long long numerator, long long denominator) {
    if (denominator == 0) return;
    Wide n = numerator, d = denominator;
    if (d < 0) {
        n = -n;
        d = -d;
    }
    const Wide g = Gcd(n, d);
    if (g > 1) {
        n /= g;
        d /= g;
    }
    if (FitsLong(n)) {
        m_numerator = static_cast<long long>(n);
        m_denominator = static_cast<long long>(d);
        return;
    }
    const mpq_ptr big = Big::Scratch();
    SetWide(mpq_numref(big), n);
    SetWide(mpq_denref(big), d);
    Big::Assign(*this, big);
}

KOBWBRational::KOBWBRational(const KOBWBRational& other)
    : m_numerator(other.m_numerator), m_denominator(other.m_denominator) {
    if (other.m_big) m_big.reset(Big::Copy(other.m_big.get()));
}

KOBWBRational& KOBWBRational::operator=(const KOBWBRational& other) {
    if (this == &other) return *this;
    m_numerator = other.m_numerator;
    m_denominator = other.m_denominator;
    m_big.reset(Big::Copy(other.m_big.get()));
    return *this;
}

void KOBWBRational::BigDeleter::operator()(Big* big) const { Big::Destroy(big); }

KOBWBRational::Big* KOBWBRational::Big::Create(mpz_srcptr numerator, mpz_srcptr denominator) {
    const size_t limbs = mpz_size(numerator) + mpz_size(denominator);
    void* memory = ::operator new(sizeof(Big) + limbs * sizeof(mp_limb_t));
    Big* big = new (memory) Big;
    big->capacity = static_cast<int>(limbs);
    big->Fill(numerator, denominator);
    return big;
}

void KOBWBRational::Big::Fill(mpz_srcptr numerator, mpz_srcptr denominator) {
    const size_t numeratorLimbs = mpz_size(numerator), denominatorLimbs = mpz_size(denominator);
    numeratorSize = mpz_sgn(numerator) * static_cast<int>(numeratorLimbs);
    denominatorSize = static_cast<int>(denominatorLimbs);
    std::copy(mpz_limbs_read(numerator), mpz_limbs_read(numerator) + numeratorLimbs, Limbs());
    std::copy(mpz_limbs_read(denominator), mpz_limbs_read(denominator) + denominatorLimbs, Limbs() + numeratorLimbs);
}

KOBWBRational::Big* KOBWBRational::Big::Copy(const Big* block) {
    if (!block || block == WideMark()) return const_cast<Big*>(block);
    const Big& other = *block;
    const size_t limbs = static_cast<size_t>(std::abs(other.numeratorSize) + other.denominatorSize);
    void* memory = ::operator new(sizeof(Big) + limbs * sizeof(mp_limb_t));
    Big* big = new (memory) Big(other);
    big->capacity = static_cast<int>(limbs);
    std::copy(other.Limbs(), other.Limbs() + limbs, big->Limbs());
    return big;
}

void KOBWBRational::Big::Destroy(Big* big) {
    if (big == WideMark()) return;
    big->~Big();
    ::operator delete(big);
}

KOBWBRational::Big* KOBWBRational::Big::WideMark() {
    static Big mark;
    return &mark;
}

__int128 KOBWBRational::Big::WideValue(const KOBWBRational& value) {
    const unsigned __int128 high = static_cast<unsigned long long>(value.m_denominator);
    return static_cast<__int128>(high << 64 | static_cast<unsigned long long>(value.m_numerator));
}

bool KOBWBRational::Big::AssignInteger(KOBWBRational& value, __int128 integer) {
    const __int128 lowest = -static_cast<__int128>(static_cast<unsigned __int128>(1) << 126) * 2;
    if (integer == lowest) return false;
    if (FitsLong(integer)) {
        value.m_numerator = static_cast<long long>(integer);
        value.m_denominator = 1;
        value.m_big.reset();
        return true;
    }
    const unsigned __int128 bits = static_cast<unsigned __int128>(integer);
    value.m_numerator = static_cast<long long>(static_cast<unsigned long long>(bits));
    value.m_denominator = static_cast<long long>(static_cast<unsigned long long>(bits >> 64));
    if (!IsWide(value)) value.m_big.reset(WideMark());
    return true;
}

bool KOBWBRational::Big::AssignInteger(KOBWBRational& value, mpz_srcptr integer) {
    // A magnitude below 2^127: at most two limbs, the top bit of the second clear.
    const size_t size = mpz_size(integer);
    const mp_limb_t* limbs = mpz_limbs_read(integer);
    if (size > 2 || (size == 2 && limbs[1] >> 63)) return false;
    unsigned __int128 magnitude = size > 0 ? limbs[0] : 0;
    if (size > 1) magnitude |= static_cast<unsigned __int128>(limbs[1]) << 64;
    const __int128 signedValue = static_cast<__int128>(magnitude);
    return AssignInteger(value, mpz_sgn(integer) < 0 ? -signedValue : signedValue);
}

void KOBWBRational::Big::Assign(KOBWBRational& value, mpz_srcptr numerator, mpz_srcptr denominator) {
    if (mpz_fits_slong_p(numerator) && mpz_fits_slong_p(denominator)) {
        value.m_numerator = mpz_get_si(numerator);
        value.m_denominator = mpz_get_si(denominator);
        value.m_big.reset();
        return;
    }
    if (mpz_cmp_ui(denominator, 1) == 0 && AssignInteger(value, numerator)) return;
    value.m_numerator = 0;
    value.m_denominator = 1;
    const size_t limbs = mpz_size(numerator) + mpz_size(denominator);
    if (value.m_big && !IsWide(value) && static_cast<size_t>(value.m_big->capacity) >= limbs) {
        // The block in place holds the new value: no allocation.
        value.m_big->Fill(numerator, denominator);
        return;
    }
    value.m_big.reset(Create(numerator, denominator));
}

mpq_ptr KOBWBRational::Big::Scratch() {
    struct Holder {
        Holder() { mpq_init(value); }
        ~Holder() { mpq_clear(value); }
        mpq_t value;
    };
    thread_local Holder holder;
    return holder.value;
}

KOBWBRational::Big::View::View(const KOBWBRational& value) {
    m_words[2] = 1;
    if (IsWide(value)) {
        const __int128 integer = WideValue(value);
        const unsigned __int128 magnitude =
            integer < 0 ? 0 - static_cast<unsigned __int128>(integer) : static_cast<unsigned __int128>(integer);
        m_words[0] = static_cast<mp_limb_t>(magnitude);
        m_words[1] = static_cast<mp_limb_t>(magnitude >> 64);
        mpz_roinit_n(mpq_numref(m_value), m_words, integer < 0 ? -2 : 2);
        mpz_roinit_n(mpq_denref(m_value), &m_words[2], 1);
        return;
    }
    if (value.m_big) {
        const Big& big = *value.m_big;
        mpz_roinit_n(mpq_numref(m_value), big.Limbs(), big.numeratorSize);
        mpz_roinit_n(mpq_denref(m_value), big.Limbs() + std::abs(big.numeratorSize), big.denominatorSize);
        return;
    }
    // The magnitude as an unsigned word, which holds that of the smallest long long too.
    const unsigned long long magnitude = value.m_numerator < 0 ? 0ULL - static_cast<unsigned long long>(value.m_numerator)
                                                                : static_cast<unsigned long long>(value.m_numerator);
    m_words[0] = magnitude;
    m_words[1] = static_cast<mp_limb_t>(value.m_denominator);
    mpz_roinit_n(mpq_numref(m_value), &m_words[0], value.m_numerator < 0 ? -1 : (value.m_numerator > 0 ? 1 : 0));
    mpz_roinit_n(mpq_denref(m_value), &m_words[1], 1);
}

bool KOBWBRational::FromString(const char* text, KOBWBRational& result) {
    result = KOBWBRational();
    if (!text || !*text) return false;
    const mpq_ptr big = Big::Scratch();
    if (mpz_set_str(mpq_numref(big), text, 10) != 0) return false;
    mpz_set_ui(mpq_denref(big), 1);
    Big::Assign(result, big);
    return true;
}

bool KOBWBRational::FromDouble(double value, KOBWBRational& result) {
    result = KOBWBRational();
    if (!std::isfinite(value)) return false;
    // value = mantissa x 2^exponent with a mantissa of 53 bits: in machine words
    // while the power of two stays within them.
    int exponent = 0;
    long long mantissa = static_cast<long long>(std::ldexp(std::frexp(value, &exponent), 53));
    exponent -= 53;
    while (mantissa != 0 && mantissa % 2 == 0 && exponent < 0) {
        mantissa /= 2;
        ++exponent;
    }
    if (mantissa == 0) return true;
    if (exponent <= 0 && exponent > -63) {
        result = KOBWBRational(mantissa, 1LL << -exponent);
        return true;
    }
    if (exponent > 0 && exponent < 10 && std::llabs(mantissa) < (1LL << 53)) {
        result = KOBWBRational(mantissa * (1LL << exponent));
        return true;
    }
    const mpq_ptr big = Big::Scratch();
    mpq_set_d(big, value);
    Big::Assign(result, big);
    return true;
}

KOBWBRational KOBWBRational::Numerator() const {
    if (!m_big) return KOBWBRational(m_numerator);
    const Big::View view(*this);
    const mpq_ptr big = Big::Scratch();
    mpz_set(mpq_numref(big), view.Numerator());
    mpz_set_ui(mpq_denref(big), 1);
    KOBWBRational result;
    Big::Assign(result, big);
    return result;
}

KOBWBRational KOBWBRational::Denominator() const {
    if (!m_big) return KOBWBRational(m_denominator);
    const Big::View view(*this);
    const mpq_ptr big = Big::Scratch();
    mpz_set(mpq_numref(big), view.Denominator());
    mpz_set_ui(mpq_denref(big), 1);
    KOBWBRational result;
    Big::Assign(result, big);
    return result;
}

KOBWBRational KOBWBRational::Floor() const {
    KOBWBRational result;
    if (!m_big) {
        // The denominator is positive: round the quotient toward minus infinity.
        const long long quotient = m_numerator / m_denominator;
        result.m_numerator = m_numerator % m_denominator < 0 ? quotient - 1 : quotient;
        return result;
    }
    const Big::View view(*this);
    const mpq_ptr big = Big::Scratch();
    mpz_fdiv_q(mpq_numref(big), view.Numerator(), view.Denominator());
    mpz_set_ui(mpq_denref(big), 1);
    Big::Assign(result, big);
    return result;
}

bool KOBWBRational::IsInteger() const {
    if (!m_big) return m_denominator == 1;
    if (Big::IsWide(*this)) return true;
    return m_big->denominatorSize == 1 && m_big->Limbs()[std::abs(m_big->numeratorSize)] == 1;
}

int KOBWBRational::Sign() const {
    if (Big::IsWide(*this)) return m_denominator < 0 ? -1 : 1;
    if (m_big) return m_big->numeratorSize > 0 ? 1 : -1;
    return m_numerator > 0 ? 1 : (m_numerator < 0 ? -1 : 0);
}

bool KOBWBRational::FitsInt(int& numerator, int& denominator) const {
    if (m_big || m_numerator < std::numeric_limits<int>::min() || m_numerator > std::numeric_limits<int>::max() ||
        m_denominator > std::numeric_limits<int>::max())
        return false;
    numerator = static_cast<int>(m_numerator);
    denominator = static_cast<int>(m_denominator);
    return true;
}

double KOBWBRational::ToDouble() const {
    if (m_big) return mpq_get_d(Big::View(*this).get());
    if (m_denominator == 1) return static_cast<double>(m_numerator);
    // Both parts exact as doubles give a correctly rounded quotient.
    constexpr long long exact = 1LL << 53;
    if (m_numerator >= -exact && m_numerator <= exact && m_denominator <= exact)
        return static_cast<double>(m_numerator) / static_cast<double>(m_denominator);
    return mpq_get_d(Big::View(*this).get());
}

std::string KOBWBRational::ToString() const {
    if (!m_big) {
        std::string text = std::to_string(m_numerator);
        if (m_denominator != 1) text += "/" + std::to_string(m_denominator);
        return text;
    }
    char* raw = mpq_get_str(nullptr, 10, Big::View(*this).get());
    std::string text(raw);
    void (*release)(void*, size_t);
    mp_get_memory_functions(nullptr, nullptr, &release);
    release(raw, text.size() + 1);
    return text;
}

std::size_t KOBWBRational::Hash() const {
    // Every value has one form, so the words of a wide integer hash as they are.
    if (!m_big || Big::IsWide(*this))
        return std::hash<long long>()(m_numerator) * 31 + std::hash<long long>()(m_denominator);
    return std::hash<std::string>()(ToString());
}

KOBWBRational KOBWBRational::operator-() const {
    KOBWBRational result(*this);
    if (m_big && !Big::IsWide(*this)) {
        result.m_big->numeratorSize = -result.m_big->numeratorSize;
    } else if (m_big || m_numerator == std::numeric_limits<long long>::min()) {
        const mpq_ptr big = Big::Scratch();
        mpq_neg(big, Big::View(*this).get());
        Big::Assign(result, big);
    } else {
        result.m_numerator = -m_numerator;
    }
    return result;
}

// n1/d1 op n2/d2 in 128 bits, which holds every product of two machine words.
bool KOBWBRational::SmallResult(Operation op, const KOBWBRational& a, const KOBWBRational& b, KOBWBRational& result) {
    Wide n1 = a.m_numerator, d1 = a.m_denominator, n2 = b.m_numerator, d2 = b.m_denominator;
    Wide n = 0, d = 1;
    if (op == Operation::Div) {
        if (n2 == 0) {
            result.m_numerator = 0;
            result.m_denominator = 1;
            return true;
        }
        std::swap(n2, d2);
        if (d2 < 0) {
            n2 = -n2;
            d2 = -d2;
        }
    }
    if (op == Operation::Mul || op == Operation::Div) {
        const Wide g1 = Gcd(n1, d2), g2 = Gcd(n2, d1);
        if (g1 > 1) n1 /= g1, d2 /= g1;
        if (g2 > 1) n2 /= g2, d1 /= g2;
        n = n1 * n2;
        d = d1 * d2;
    } else {
        const Wide g = Gcd(d1, d2);
        // Each product stays under 2^126, so the sum cannot overflow 128 bits.
        const Wide left = n1 * (d2 / g), right = n2 * (d1 / g);
        n = op == Operation::Add ? left + right : left - right;
        d = d1 / g * d2;
        const Wide reduce = Gcd(n, d);
        if (reduce > 1) n /= reduce, d /= reduce;
    }
    if (n == 0) d = 1;
    if (!FitsLong(n) || !FitsLong(d)) return false;
    result.m_numerator = static_cast<long long>(n);
    result.m_denominator = static_cast<long long>(d);
    return true;
}

KOBWBRational& KOBWBRational::Combine(Operation op, const KOBWBRational& other) {
    // Integers in machine words: no reduction to make.
    if (!m_big && !other.m_big && m_denominator == 1 && other.m_denominator == 1 && op != Operation::Div) {
        long long result = 0;
        const bool overflow = op == Operation::Add   ? __builtin_add_overflow(m_numerator, other.m_numerator, &result)
                              : op == Operation::Sub ? __builtin_sub_overflow(m_numerator, other.m_numerator, &result)
                                                     : __builtin_mul_overflow(m_numerator, other.m_numerator, &result);
        if (!overflow) {
            m_numerator = result;
            return *this;
        }
    }
    if (!m_big && !other.m_big && SmallResult(op, *this, other, *this)) return *this;
    // Integers of up to two words: 128-bit arithmetic while it does not overflow.
    const auto integer = [](const KOBWBRational& value) {
        return (!value.m_big && value.m_denominator == 1) || Big::IsWide(value);
    };
    if (op != Operation::Div && integer(*this) && integer(other)) {
        const Wide left = m_big ? Big::WideValue(*this) : m_numerator;
        const Wide right = other.m_big ? Big::WideValue(other) : other.m_numerator;
        Wide result = 0;
        const bool overflow = op == Operation::Add   ? __builtin_add_overflow(left, right, &result)
                              : op == Operation::Sub ? __builtin_sub_overflow(left, right, &result)
                                                     : __builtin_mul_overflow(left, right, &result);
        if (!overflow && Big::AssignInteger(*this, result)) return *this;
    }
    if (op == Operation::Div && other.IsZero()) {
        *this = KOBWBRational();
        return *this;
    }
    const mpq_ptr big = Big::Scratch();
    {
        const Big::View left(*this), right(other);
        switch (op) {
        case Operation::Add: mpq_add(big, left.get(), right.get()); break;
        case Operation::Sub: mpq_sub(big, left.get(), right.get()); break;
        case Operation::Mul: mpq_mul(big, left.get(), right.get()); break;
        case Operation::Div: mpq_div(big, left.get(), right.get()); break;
        }
    }
    Big::Assign(*this, big);
    return *this;
}

KOBWBRational& KOBWBRational::operator+=(const KOBWBRational& other) { return Combine(Operation::Add, other); }
KOBWBRational& KOBWBRational::operator-=(const KOBWBRational& other) { return Combine(Operation::Sub, other); }
KOBWBRational& KOBWBRational::operator*=(const KOBWBRational& other) { return Combine(Operation::Mul, other); }
KOBWBRational& KOBWBRational::operator/=(const KOBWBRational& other) { return Combine(Operation::Div, other); }

KOBWBRational KOBWBRational::Power(long long exponent) const {
    if (exponent < 0) {
        if (IsZero()) return KOBWBRational();
        return KOBWBRational(1) / Power(-exponent);
    }
    KOBWBRational result(1), base(*this);
    while (exponent > 0) {
        if (exponent & 1) result *= base;
        exponent >>= 1;
        if (exponent > 0) base *= base;
    }
    return result;
}

int KOBWBRational::Compare(const KOBWBRational& a, const KOBWBRational& b) {
    if (!a.m_big && !b.m_big) {
        const Wide left = static_cast<Wide>(a.m_numerator) * b.m_denominator;
        const Wide right = static_cast<Wide>(b.m_numerator) * a.m_denominator;
        return left < right ? -1 : (left > right ? 1 : 0);
    }
    const int order = mpq_cmp(Big::View(a).get(), Big::View(b).get());
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}
