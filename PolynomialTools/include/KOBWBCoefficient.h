#ifndef KOBWBCoefficient_h
#define KOBWBCoefficient_h

#include "KOBWBRational.h"

// The coefficient of a polynomial term: an exact rational, or a real when an
// operand was a real constant that is not exact (see KOBWBPolynomialContext).
// Exact with exact stays exact; anything with a real is folded with real
// arithmetic and stays real.
class KOBWBX_API KOBWBCoefficient {
public:
    KOBWBCoefficient() = default;
    KOBWBCoefficient(long long value) : m_exact(value) {}
    KOBWBCoefficient(KOBWBRational value) : m_exact(std::move(value)) {}
    static KOBWBCoefficient Real(double value) {
        KOBWBCoefficient c;
        c.m_isReal = true;
        c.m_real = value;
        return c;
    }

    bool IsReal() const { return m_isReal; }
    bool IsExact() const { return !m_isReal; }
    const KOBWBRational& GetExact() const { return m_exact; }
    double ToDouble() const { return m_isReal ? m_real : m_exact.ToDouble(); }
    bool IsZero() const { return m_isReal ? m_real == 0.0 : m_exact.IsZero(); }
    bool IsOne() const { return m_isReal ? m_real == 1.0 : m_exact.IsOne(); }
    int Sign() const { return m_isReal ? (m_real > 0 ? 1 : (m_real < 0 ? -1 : 0)) : m_exact.Sign(); }
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
        return a.m_isReal == b.m_isReal && (a.m_isReal ? a.m_real == b.m_real : a.m_exact == b.m_exact);
    }
    friend bool operator!=(const KOBWBCoefficient& a, const KOBWBCoefficient& b) { return !(a == b); }
    // A total order: exact before real, then by value.
    static int Compare(const KOBWBCoefficient& a, const KOBWBCoefficient& b);

private:
    void MakeReal() {
        if (!m_isReal) {
            m_real = m_exact.ToDouble();
            m_exact = KOBWBRational();
            m_isReal = true;
        }
    }

    KOBWBRational m_exact;
    double m_real = 0.0;
    bool m_isReal = false;
};

#endif
