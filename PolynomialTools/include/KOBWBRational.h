#ifndef KOBWBRational_h
#define KOBWBRational_h

#include "KOBWBxExport.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

// An exact rational number that never overflows: numerator and denominator live
// in machine words while they fit, an integer of up to 127 bits in two words, and
// anything else in arbitrary precision. Always reduced, the denominator positive, zero as 0/1.
class KOBWBX_API KOBWBRational {
public:
    KOBWBRational() = default;
    KOBWBRational(long long value) : m_numerator(value) {}
    // numerator / denominator, reduced; a zero denominator gives 0.
    KOBWBRational(long long numerator, long long denominator);
    KOBWBRational(const KOBWBRational& other);
    // A moved-from rational is 0.
    KOBWBRational(KOBWBRational&& other) noexcept
        : m_numerator(other.m_numerator), m_denominator(other.m_denominator), m_big(std::move(other.m_big)) {
        other.m_numerator = 0;
        other.m_denominator = 1;
    }
    KOBWBRational& operator=(const KOBWBRational& other);
    KOBWBRational& operator=(KOBWBRational&& other) noexcept {
        if (this != &other) {
            m_numerator = other.m_numerator;
            m_denominator = other.m_denominator;
            m_big = std::move(other.m_big);
            other.m_numerator = 0;
            other.m_denominator = 1;
        }
        return *this;
    }
    ~KOBWBRational() = default;

    // The decimal text of an integer, optionally signed; false (and 0) on other text.
    static bool FromString(const char* text, KOBWBRational& result);
    // The exact value of a finite double, or false for infinities and NaN.
    static bool FromDouble(double value, KOBWBRational& result);

    bool IsZero() const { return !m_big && m_numerator == 0; }
    bool IsOne() const { return !m_big && m_numerator == 1 && m_denominator == 1; }
    bool IsInteger() const;
    int Sign() const;
    // Whether numerator and denominator each fit in a long long.
    bool IsSmall() const { return !m_big; }
    // Numerator and denominator when both fit in 32-bit ints.
    bool FitsInt(int& numerator, int& denominator) const;
    // The nearest double.
    double ToDouble() const;
    std::string ToString() const;
    std::size_t Hash() const;

    KOBWBRational operator-() const;
    KOBWBRational& operator+=(const KOBWBRational& other);
    KOBWBRational& operator-=(const KOBWBRational& other);
    KOBWBRational& operator*=(const KOBWBRational& other);
    // Division by zero leaves the value 0.
    KOBWBRational& operator/=(const KOBWBRational& other);
    // The numerator and the (positive) denominator of the reduced value, as integers.
    KOBWBRational Numerator() const;
    KOBWBRational Denominator() const;
    // The largest integer not above the value.
    KOBWBRational Floor() const;
    // An integer power; a negative exponent of 0 gives 0.
    KOBWBRational Power(long long exponent) const;

    friend KOBWBRational operator+(KOBWBRational a, const KOBWBRational& b) { return a += b; }
    friend KOBWBRational operator-(KOBWBRational a, const KOBWBRational& b) { return a -= b; }
    friend KOBWBRational operator*(KOBWBRational a, const KOBWBRational& b) { return a *= b; }
    friend KOBWBRational operator/(KOBWBRational a, const KOBWBRational& b) { return a /= b; }
    friend bool operator==(const KOBWBRational& a, const KOBWBRational& b) { return Compare(a, b) == 0; }
    friend bool operator!=(const KOBWBRational& a, const KOBWBRational& b) { return Compare(a, b) != 0; }
    friend bool operator<(const KOBWBRational& a, const KOBWBRational& b) { return Compare(a, b) < 0; }
    static int Compare(const KOBWBRational& a, const KOBWBRational& b);

    struct Big;
    struct BigDeleter {
        void operator()(Big* big) const;
    };
    typedef std::unique_ptr<Big, BigDeleter> BigPointer;

private:
    // The library's exact backends read and write the machine words or the
    // arbitrary-precision value directly.
    friend struct KOBWBRationalAccess;
    // A coefficient keeps its real value in the two words of a rational whose
    // denominator word is 0 without a big value, a form no rational takes.
    friend class KOBWBCoefficient;

    enum class Operation { Add, Sub, Mul, Div };
    // The result in machine words when it fits; false leaves result as it was.
    static bool SmallResult(Operation op, const KOBWBRational& a, const KOBWBRational& b, KOBWBRational& result);
    KOBWBRational& Combine(Operation op, const KOBWBRational& other);

    long long m_numerator = 0;
    long long m_denominator = 1;
    BigPointer m_big;
};

#endif
