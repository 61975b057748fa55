#ifndef KOBWBOutwardInterval_h
#define KOBWBOutwardInterval_h

#include <algorithm>
#include <cmath>
#include <limits>

namespace kobwb {

// A closed real interval whose operations round outward: each bound of a result is
// moved one unit in the last place away from the other, which covers the rounding of
// one double operation. Used where a proof rests on the arithmetic (interval Newton);
// empty is lower > upper.
struct OutwardInterval {
    double lower = 0.0;
    double upper = 0.0;

    static double Down(double x) { return std::nextafter(x, -std::numeric_limits<double>::infinity()); }
    static double Up(double x) { return std::nextafter(x, std::numeric_limits<double>::infinity()); }
    static OutwardInterval Entire() {
        return {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    }
    // A NaN bound (0 times an infinite bound) stands for every real.
    static OutwardInterval Widened(double lower, double upper) {
        if (std::isnan(lower) || std::isnan(upper)) return Entire();
        return {Down(lower), Up(upper)};
    }
    static OutwardInterval Point(double x) { return {x, x}; }

    bool IsEmpty() const { return !(lower <= upper); }
    bool Contains(double x) const { return lower <= x && x <= upper; }
    double Width() const { return upper - lower; }
    double Mid() const { return lower / 2 + upper / 2; }
    double Magnitude() const { return std::max(std::fabs(lower), std::fabs(upper)); }
    // Whether this lies in the interior of other.
    bool StrictlyInside(const OutwardInterval& other) const { return other.lower < lower && upper < other.upper; }

    friend OutwardInterval operator+(const OutwardInterval& a, const OutwardInterval& b) {
        return Widened(a.lower + b.lower, a.upper + b.upper);
    }
    friend OutwardInterval operator-(const OutwardInterval& a, const OutwardInterval& b) {
        return Widened(a.lower - b.upper, a.upper - b.lower);
    }
    friend OutwardInterval operator*(const OutwardInterval& a, const OutwardInterval& b) {
        const double p[] = {a.lower * b.lower, a.lower * b.upper, a.upper * b.lower, a.upper * b.upper};
        return Hull(p);
    }
    // The quotient by an interval that does not hold 0; every real otherwise.
    friend OutwardInterval operator/(const OutwardInterval& a, const OutwardInterval& b) {
        if (b.Contains(0.0)) return Entire();
        const double p[] = {a.lower / b.lower, a.lower / b.upper, a.upper / b.lower, a.upper / b.upper};
        return Hull(p);
    }
    // The interval of four products or quotients of bounds.
    static OutwardInterval Hull(const double (&p)[4]) {
        for (double x : p)
            if (std::isnan(x)) return Entire();
        return Widened(*std::min_element(p, p + 4), *std::max_element(p, p + 4));
    }
    friend OutwardInterval Intersect(const OutwardInterval& a, const OutwardInterval& b) {
        return {std::max(a.lower, b.lower), std::min(a.upper, b.upper)};
    }
};

} // namespace kobwb

#endif
