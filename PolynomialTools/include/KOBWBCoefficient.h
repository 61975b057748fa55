#ifndef KOBWBCoefficient_h
#define KOBWBCoefficient_h

#include "KOBWBRational.h"

#include <cstring>

// The coefficient of a polynomial term: an exact rational, or a real when an
// operand was a real constant that is not exact (see KOBWBPolynomialContext).
// Exact with exact stays exact; anything with a real is folded with real
// arithmetic and stays real.
class KOBWBX_API KOBWBCoefficient {
public:
    KOBWBCoefficient() = default;
    KOBWBCoefficient(long long value) : m_value(value) {}
    KOBWBCoefficient(KOBWBRational value) : m_value(std::move(value)) {}
    static KOBWBCoefficient Real(double value) {
        KOBWBCoefficient c;
        c.SetReal(value);
        return c;
    }

    bool IsReal() const { return m_value.m_denominator == 0 && !m_value.m_big; }
    bool IsExact() const { return !IsReal(); }
    // The exact value; 0 for a real coefficient.
    const KOBWBRational& GetExact() const { return IsReal() ? Zero() : m_value; }
    double ToDouble() const { return IsReal() ? RealValue() : m_value.ToDouble(); }
    bool IsZero() const { return IsReal() ? RealValue() == 0.0 : m_value.IsZero(); }
    bool IsOne() const { return IsReal() ? RealValue() == 1.0 : m_value.IsOne(); }
    int Sign() const {
        if (!IsReal()) return m_value.Sign();
        const double real = RealValue();
        return real > 0 ? 1 : (real < 0 ? -1 : 0);
    }
    std::size_t Hash() const;
    std::string ToString() const;

    KOBWBCoefficient operator-() const;
    KOBWBCoefficient& operator+=(const KOBWBCoefficient& other);
    KOBWBCoefficient& operator*=(const KOBWBCoefficient& other);
    // Division by an exact zero gives an exact 0; callers check the divisor.
    KOBWBCoefficient& operator/=(const KOBWBCoefficient& other);
    KOBWBCoefficient Power(long long exponent) const;

    friend KOBWBCoefficient operator+(KOBWBCoefficient a, const KOBWBCoefficient& b) { return a += b; }
    friend KOBWBCoefficient operator*(KOBWBCoefficient a, const KOBWBCoefficient& b) { return a *= b; }
    friend KOBWBCoefficient operator/(KOBWBCoefficient a, const KOBWBCoefficient& b) { return a /= b; }
    // Exact and real coefficients are never equal: an identity is decided exactly.
    friend bool operator==(const KOBWBCoefficient& a, const KOBWBCoefficient& b) {
        if (a.IsReal() != b.IsReal()) return false;
        return a.IsReal() ? a.RealValue() == b.RealValue() : a.m_value == b.m_value;
    }
    friend bool operator!=(const KOBWBCoefficient& a, const KOBWBCoefficient& b) { return !(a == b); }
    // A total order: exact before real, then by value.
    static int Compare(const KOBWBCoefficient& a, const KOBWBCoefficient& b);

private:
    static const KOBWBRational& Zero();
    double RealValue() const {
        double real;
        std::memcpy(&real, &m_value.m_numerator, sizeof real);
        return real;
    }
    // Makes the coefficient the real value, releasing any big exact value.
    void SetReal(double value) {
        m_value.m_big.reset();
        std::memcpy(&m_value.m_numerator, &value, sizeof value);
        m_value.m_denominator = 0;
    }
    void MakeReal() {
        if (!IsReal()) SetReal(m_value.ToDouble());
    }

    // An exact value, or a real one in the rational's words (see KOBWBRational): a
    // coefficient takes no more room than a rational.
    KOBWBRational m_value;
};

#endif
