#include "KOBWBRational.h"

#include "KOBWBRationalBig.h"

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
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

void SetWide(mpz_t target, Wide v) {
    const bool negative = v < 0;
    unsigned __int128 magnitude = negative ? -static_cast<unsigned __int128>(v) : static_cast<unsigned __int128>(v);
    mpz_set_ui(target, static_cast<unsigned long>(magnitude >> 64));
    mpz_mul_2exp(target, target, 64);
    mpz_add_ui(target, target, static_cast<unsigned long>(magnitude & 0xFFFFFFFFFFFFFFFFull));
    if (negative) mpz_neg(target, target);
}

// A big value of a small rational, in the temporary the caller gives.
const mpq_t& AsBig(long long numerator, long long denominator, const KOBWBRational::BigPointer& big,
                   KOBWBRational::Big& temporary) {
    if (big) return big->value;
    mpz_set_si(mpq_numref(temporary.value), numerator);
    mpz_set_si(mpq_denref(temporary.value), denominator);
    return temporary.value;
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
    m_big = BigPointer(new Big);
    SetWide(mpq_numref(m_big->value), n);
    SetWide(mpq_denref(m_big->value), d);
}

KOBWBRational::KOBWBRational(const KOBWBRational& other)
    : m_numerator(other.m_numerator), m_denominator(other.m_denominator) {
    if (other.m_big) {
        m_big = BigPointer(new Big);
        mpq_set(m_big->value, other.m_big->value);
    }
}

KOBWBRational& KOBWBRational::operator=(const KOBWBRational& other) {
    if (this == &other) return *this;
    m_numerator = other.m_numerator;
    m_denominator = other.m_denominator;
    if (!other.m_big) {
        m_big.reset();
    } else {
        if (!m_big) m_big = BigPointer(new Big);
        mpq_set(m_big->value, other.m_big->value);
    }
    return *this;
}

void KOBWBRational::BigDeleter::operator()(Big* big) const { delete big; }

bool KOBWBRational::FromString(const char* text, KOBWBRational& result) {
    result = KOBWBRational();
    if (!text || !*text) return false;
    Big big;
    if (mpz_set_str(mpq_numref(big.value), text, 10) != 0) return false;
    result.m_big = BigPointer(new Big);
    mpq_set(result.m_big->value, big.value);
    result.Normalise();
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
    result.m_big = BigPointer(new Big);
    mpq_set_d(result.m_big->value, value);
    result.Normalise();
    return true;
}

void KOBWBRational::MakeBig() {
    if (m_big) return;
    m_big = BigPointer(new Big);
    mpz_set_si(mpq_numref(m_big->value), m_numerator);
    mpz_set_si(mpq_denref(m_big->value), m_denominator);
}

void KOBWBRational::Normalise() {
    if (!m_big) return;
    const mpz_srcptr numerator = mpq_numref(m_big->value);
    const mpz_srcptr denominator = mpq_denref(m_big->value);
    if (!mpz_fits_slong_p(numerator) || !mpz_fits_slong_p(denominator)) return;
    m_numerator = mpz_get_si(numerator);
    m_denominator = mpz_get_si(denominator);
    m_big.reset();
}

KOBWBRational KOBWBRational::Numerator() const {
    if (!m_big) return KOBWBRational(m_numerator);
    KOBWBRational result;
    result.MakeBig();
    mpz_set(mpq_numref(result.m_big->value), mpq_numref(m_big->value));
    result.Normalise();
    return result;
}

KOBWBRational KOBWBRational::Denominator() const {
    if (!m_big) return KOBWBRational(m_denominator);
    KOBWBRational result;
    result.MakeBig();
    mpz_set(mpq_numref(result.m_big->value), mpq_denref(m_big->value));
    result.Normalise();
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
    result.MakeBig();
    mpz_fdiv_q(mpq_numref(result.m_big->value), mpq_numref(m_big->value), mpq_denref(m_big->value));
    mpz_set_ui(mpq_denref(result.m_big->value), 1);
    result.Normalise();
    return result;
}

bool KOBWBRational::IsInteger() const {
    return m_big ? mpz_cmp_ui(mpq_denref(m_big->value), 1) == 0 : m_denominator == 1;
}

int KOBWBRational::Sign() const {
    if (m_big) return mpq_sgn(m_big->value);
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
    if (m_big) return mpq_get_d(m_big->value);
    if (m_denominator == 1) return static_cast<double>(m_numerator);
    // Both parts exact as doubles give a correctly rounded quotient.
    constexpr long long exact = 1LL << 53;
    if (std::llabs(m_numerator) <= exact && m_denominator <= exact)
        return static_cast<double>(m_numerator) / static_cast<double>(m_denominator);
    Big big;
    mpz_set_si(mpq_numref(big.value), m_numerator);
    mpz_set_si(mpq_denref(big.value), m_denominator);
    return mpq_get_d(big.value);
}

std::string KOBWBRational::ToString() const {
    if (!m_big) {
        std::string text = std::to_string(m_numerator);
        if (m_denominator != 1) text += "/" + std::to_string(m_denominator);
        return text;
    }
    char* raw = mpq_get_str(nullptr, 10, m_big->value);
    std::string text(raw);
    void (*release)(void*, size_t);
    mp_get_memory_functions(nullptr, nullptr, &release);
    release(raw, text.size() + 1);
    return text;
}

std::size_t KOBWBRational::Hash() const {
    if (!m_big) return std::hash<long long>()(m_numerator) * 31 + std::hash<long long>()(m_denominator);
    return std::hash<std::string>()(ToString());
}

KOBWBRational KOBWBRational::operator-() const {
    KOBWBRational result(*this);
    if (result.m_big)
        mpq_neg(result.m_big->value, result.m_big->value);
    else if (m_numerator == std::numeric_limits<long long>::min()) {
        result.MakeBig();
        mpq_neg(result.m_big->value, result.m_big->value);
    } else
        result.m_numerator = -m_numerator;
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
    if (op == Operation::Div && other.IsZero()) {
        *this = KOBWBRational();
        return *this;
    }
    Big temporary;
    const mpq_t& right = AsBig(other.m_numerator, other.m_denominator, other.m_big, temporary);
    MakeBig();
    switch (op) {
    case Operation::Add: mpq_add(m_big->value, m_big->value, right); break;
    case Operation::Sub: mpq_sub(m_big->value, m_big->value, right); break;
    case Operation::Mul: mpq_mul(m_big->value, m_big->value, right); break;
    case Operation::Div: mpq_div(m_big->value, m_big->value, right); break;
    }
    Normalise();
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
    Big leftTemporary, rightTemporary;
    const mpq_t& left = AsBig(a.m_numerator, a.m_denominator, a.m_big, leftTemporary);
    const mpq_t& right = AsBig(b.m_numerator, b.m_denominator, b.m_big, rightTemporary);
    const int order = mpq_cmp(left, right);
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}
