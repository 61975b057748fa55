#ifndef KOBWBPolynomialAccess_h
#define KOBWBPolynomialAccess_h

#include "KOBWBPolynomial.h"

#include <utility>
#include <vector>

// Lets the library's exact backends hand over terms they produced in storage
// order, with distinct monomials and no zero coefficient, without the check.
struct KOBWBPolynomialAccess {
    static KOBWBPolynomial FromOrderedTerms(std::vector<KOBWBPolynomialTerm>&& terms) {
        KOBWBPolynomial result;
        result.m_terms = std::move(terms);
        return result;
    }
};

#endif
