#include "KOBWBCoefficient.h"

#include <cmath>
#include <cstdio>
#include <functional>

std::size_t KOBWBCoefficient::Hash() const {
    return m_isReal ? std::hash<double>()(m_real) ^ 0x9e3779b97f4a7c15ull : m_exact.Hash();
}

std::string KOBWBCoefficient::ToString() const {
    if (!m_isReal) return m_exact.ToString();
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", m_real);
    return text;
}

KOBWBCoefficient KOBWBCoefficient::operator-() const {
    KOBWBCoefficient result(*this);
    if (m_isReal)
        result.m_real = -m_real;
    else
        result.m_exact = -m_exact;
    return result;
}

KOBWBCoefficient& KOBWBCoefficient::operator+=(const KOBWBCoefficient& other) {
    if (!m_isReal && !other.m_isReal) {
        m_exact += other.m_exact;
        return *this;
    }
    MakeReal();
    m_real += other.ToDouble();
    return *this;
}

KOBWBCoefficient& KOBWBCoefficient::operator*=(const KOBWBCoefficient& other) {
    if (!m_isReal && !other.m_isReal) {
        m_exact *= other.m_exact;
        return *this;
    }
    MakeReal();
    m_real *= other.ToDouble();
    return *this;
}

KOBWBCoefficient& KOBWBCoefficient::operator/=(const KOBWBCoefficient& other) {
    if (!m_isReal && !other.m_isReal) {
        m_exact /= other.m_exact;
        return *this;
    }
    MakeReal();
    m_real /= other.ToDouble();
    return *this;
}

KOBWBCoefficient KOBWBCoefficient::Power(long long exponent) const {
    if (!m_isReal) return KOBWBCoefficient(m_exact.Power(exponent));
    return Real(std::pow(m_real, static_cast<double>(exponent)));
}

int KOBWBCoefficient::Compare(const KOBWBCoefficient& a, const KOBWBCoefficient& b) {
    if (a.m_isReal != b.m_isReal) return a.m_isReal ? 1 : -1;
    if (!a.m_isReal) return KOBWBRational::Compare(a.m_exact, b.m_exact);
    return a.m_real < b.m_real ? -1 : (a.m_real > b.m_real ? 1 : 0);
}
