#ifndef SparsePolynomialWorkload_h
#define SparsePolynomialWorkload_h

#include "KOBWBPolynomial.h"

#include <random>
#include <vector>

namespace bench {

// A sparse polynomial of 1,000 terms over the atoms 1 to 6, exponents up to 30 and
// coefficients of up to 40 bits, the same for the same seed.
inline KOBWBPolynomial SparsePolynomial(unsigned seed) {
    std::mt19937_64 random(seed);
    std::vector<KOBWBPolynomialTerm> terms;
    while (terms.size() < 1000) {
        KOBWBMonomial monomial;
        for (int atom = 1; atom <= 6; ++atom) {
            const long long exponent = static_cast<long long>(random() % 31);
            if (exponent > 0 && random() % 2) monomial.push_back({atom, exponent});
        }
        terms.push_back({monomial, KOBWBCoefficient(static_cast<long long>(random() % (1ULL << 40)) + 1)});
    }
    return KOBWBPolynomial::FromTerms(terms);
}

} // namespace bench

#endif
