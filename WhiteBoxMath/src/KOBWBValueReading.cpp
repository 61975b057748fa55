#include "KOBWBValueReading.h"

namespace kobwb {

double FractionToReal(const KOBWBFraction& fraction) {
    constexpr double pi = 3.141592653589793;
    const long long power = fraction.powerOfPi;
    unsigned long long exponent = power < 0 ? -power : power;
    double base = pi;
    double piPower = 1.0;
    while (exponent > 0) {
        if (exponent & 1) piPower *= base;
        base *= base;
        exponent >>= 1;
    }
    const double numerator = fraction.numerator;
    if (power < 0) return numerator * (1.0 / piPower) / fraction.denominator;
    return numerator * piPower / fraction.denominator;
}

} // namespace kobwb
