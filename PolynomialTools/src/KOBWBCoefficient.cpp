#include "KOBWBCoefficient.h"

#include <cmath>
#include <cstdio>
#include <functional>

const KOBWBRational& KOBWBCoefficient::Zero() {
    static const KOBWBRational zero;
    return zero;
}

std::size_t KOBWBCoefficient::Hash() const {
    return IsReal() ? std::hash<double>()(RealValue()) ^ 0x9e3779b97f4a7c15ull : m_value.Hash();
}

std::string KOBWBCoefficient::ToString() const {
    if (!IsReal()) return m_value.ToString();
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", RealValue());
    return text;
}

KOBWBCoefficient KOBWBCoefficient::operator-() const {
    if (IsReal()) return Real(-RealValue());
    return KOBWBCoefficient(-m_value);
}

KOBWBCoefficient& KOBWBCoefficient::operator+=(const KOBWBCoefficient& other) {
    if (!IsReal() && !other.IsReal()) {
        m_value += other.m_value;
        return *this;
    }
    MakeReal();
    SetReal(RealValue() + other.ToDouble());
    return *this;
}

KOBWBCoefficient& KOBWBCoefficient::operator*=(const KOBWBCoefficient& other) {
    if (!IsReal() && !other.IsReal()) {
        m_value *= other.m_value;
        return *this;
    }
    MakeReal();
    SetReal(RealValue() * other.ToDouble());
    return *this;
}

KOBWBCoefficient& KOBWBCoefficient::operator/=(const KOBWBCoefficient& other) {
    if (!IsReal() && !other.IsReal()) {
        m_value /= other.m_value;
        return *this;
    }
    MakeReal();
    SetReal(RealValue() / other.ToDouble());
    return *this;
}

KOBWBCoefficient KOBWBCoefficient::Power(long long exponent) const {
    if (!IsReal()) return KOBWBCoefficient(m_value.Power(exponent));
    return Real(std::pow(RealValue(), static_cast<double>(exponent)));
}

int KOBWBCoefficient::Compare(const KOBWBCoefficient& a, const KOBWBCoefficient& b) {
    if (a.IsReal() != b.IsReal()) return a.IsReal() ? 1 : -1;
    if (!a.IsReal()) return KOBWBRational::Compare(a.m_value, b.m_value);
    const double x = a.RealValue(), y = b.RealValue();
    return x < y ? -1 : (x > y ? 1 : 0);
}
