#ifndef KOBWBIntegration_h
#define KOBWBIntegration_h

#include "KOBWBxExport.h"

class KOBWBExpression;
class KOBWBVariable;

// Symbolic antiderivatives, computed on the expression read as a polynomial over
// atoms (see KOBWBPolynomialContext): the integral of a sum is the sum of the
// integrals of its terms, and in each term the factors free of the variable are
// constant factors. What a term may hold besides them:
//  - nothing, or a power x^n of the variable (n >= 0): x^(n+1) / (n+1);
//  - one atom f(u) whose argument u = a x + b is linear in x (a free of x):
//    exp, sin, cos, tan, sinh, cosh, tanh, ln and sqrt of u, u^c for a constant
//    c other than an integer, and the reciprocal 1/u, whose integral is ln(u) / a;
//  - a polynomial in x over a polynomial denominator d in x with rational
//    coefficients: the rational part found by Hermite reduction plus, for the
//    square-free remainder, logarithms of the linear factors and logarithms and
//    arctangents of the quadratic ones, however many (every factor of the form
//    x^2 + p x + q with p and q rational is split off).
// Logarithms are written ln(u), not ln(|u|): the antiderivative holds where its
// arguments are positive. The constant of integration is 0.
class KOBWBX_API KOBWBIntegration {
public:
    // The antiderivative of expression in x, in canonical form, with integrable set
    // to 1; null with integrable 0 when a term is of none of the kinds above (a
    // product or power of non-polynomial atoms, a function of a non-linear argument,
    // a denominator with a factor of degree 3 or more that splits into no rational
    // linear or quadratic factors, such as x^3 + x + 1 or x^4 + 1, ...), or for null
    // or foreign arguments.
    static KOBWBExpression* Integrate(KOBWBExpression* expression, KOBWBVariable* x, unsigned char& integrable);
};

#endif
