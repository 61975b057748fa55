#ifndef KOBWBPolynomialAccess_h
#define KOBWBPolynomialAccess_h

#include "KOBWBPolynomial.h"

#include <utility>
#include <vector>

// Lets the library's exact backends fill a polynomial's terms in storage order,
// with distinct monomials and no zero coefficient, without the check.
struct KOBWBPolynomialAccess {
    // The terms of p, to be filled in storage order.
    static std::vector<KOBWBPolynomialTerm>& Terms(KOBWBPolynomial& p) { return p.m_terms; }
};

#endif
