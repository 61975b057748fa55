#include "KOBWBUnivariatePolynomialTools.h"

#include "KOBWBFlintUnivariate.h"
#include "KOBWBUnivariateArithmetic.h"

#include <algorithm>
#include <utility>

using namespace KOBWBUnivariateArithmetic;

namespace {

// The determinant of a square matrix by Gaussian elimination over the rationals.
KOBWBRational Determinant(std::vector<std::vector<KOBWBRational>> m) {
    const size_t n = m.size();
    KOBWBRational determinant(1);
    for (size_t column = 0; column < n; ++column) {
        size_t pivot = column;
        while (pivot < n && m[pivot][column].IsZero()) ++pivot;
        if (pivot == n) return KOBWBRational();
        if (pivot != column) {
            std::swap(m[pivot], m[column]);
            determinant = -determinant;
        }
        determinant *= m[column][column];
        for (size_t row = column + 1; row < n; ++row) {
            if (m[row][column].IsZero()) continue;
            const KOBWBRational factor = m[row][column] / m[column][column];
            for (size_t k = column; k < n; ++k) m[row][k] -= factor * m[column][k];
        }
    }
    return determinant;
}

}

bool KOBWBUnivariatePolynomialTools::IsUnivariate(const KOBWBPolynomial& polynomial, int atom) {
    Row row;
    return FromPolynomial(polynomial, atom, row);
}

bool KOBWBUnivariatePolynomialTools::Divide(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                            KOBWBPolynomial& quotient, KOBWBPolynomial& remainder) {
    Row ra, rb, q, r;
    if (!FromPolynomial(a, atom, ra) || !FromPolynomial(b, atom, rb) || !KOBWBUnivariateArithmetic::Divide(ra, rb, q, r))
        return false;
    quotient = ToPolynomial(q, atom);
    remainder = ToPolynomial(r, atom);
    return true;
}

bool KOBWBUnivariatePolynomialTools::PseudoDivide(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                                  KOBWBPolynomial& quotient, KOBWBPolynomial& remainder) {
    Row ra, rb, q, r;
    if (!FromPolynomial(a, atom, ra) || !FromPolynomial(b, atom, rb) ||
        !KOBWBUnivariateArithmetic::PseudoDivide(ra, rb, q, r))
        return false;
    quotient = ToPolynomial(q, atom);
    remainder = ToPolynomial(r, atom);
    return true;
}

bool KOBWBUnivariatePolynomialTools::Gcd(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                         KOBWBPolynomial& gcd) {
    return KOBWBFlintUnivariate::Gcd(a, b, atom, gcd);
}

bool KOBWBUnivariatePolynomialTools::Subresultants(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                                   std::vector<KOBWBPolynomial>& sequence) {
    Row ra, rb;
    if (!FromPolynomial(a, atom, ra) || !FromPolynomial(b, atom, rb)) return false;
    std::vector<KOBWBPolynomial> result;
    for (const Row& member : SubresultantSequence(ra, rb)) result.push_back(ToPolynomial(member, atom));
    sequence = std::move(result);
    return true;
}

bool KOBWBUnivariatePolynomialTools::Resultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                               KOBWBRational& resultant) {
    return KOBWBFlintUnivariate::Resultant(a, b, atom, resultant);
}

bool KOBWBUnivariatePolynomialTools::BezoutMatrix(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                                  std::vector<std::vector<KOBWBRational>>& matrix) {
    Row ra, rb;
    if (!FromPolynomial(a, atom, ra) || !FromPolynomial(b, atom, rb)) return false;
    const size_t n = static_cast<size_t>(std::max({Degree(ra), Degree(rb), 0}));
    ra.resize(n + 1);
    rb.resize(n + 1);
    // c[k][l], the coefficient of x^k y^l in a(x) b(y) - a(y) b(x), divided by x - y
    // one power of x at a time: the row of x^(k-1) is c[k] plus y times the row of x^k.
    std::vector<std::vector<KOBWBRational>> result(n, std::vector<KOBWBRational>(n));
    for (size_t k = n; k >= 1; --k) {
        for (size_t l = 0; l < n; ++l) {
            KOBWBRational entry = ra[k] * rb[l] - ra[l] * rb[k];
            if (k < n && l > 0) entry += result[k][l - 1];
            result[k - 1][l] = std::move(entry);
        }
    }
    matrix = std::move(result);
    return true;
}

bool KOBWBUnivariatePolynomialTools::BezoutResultant(const KOBWBPolynomial& a, const KOBWBPolynomial& b, int atom,
                                                     KOBWBRational& resultant) {
    Row ra, rb;
    if (!FromPolynomial(a, atom, ra) || !FromPolynomial(b, atom, rb)) return false;
    if (ra.empty() || rb.empty() || Degree(ra) == 0 || Degree(rb) == 0) {
        resultant = KOBWBUnivariateArithmetic::Resultant(ra, rb);
        return true;
    }
    std::vector<std::vector<KOBWBRational>> matrix;
    BezoutMatrix(a, b, atom, matrix);
    const bool swapped = Degree(ra) < Degree(rb);
    const Row& high = swapped ? rb : ra;
    const long long n = Degree(high), m = swapped ? Degree(ra) : Degree(rb);
    // Bez(a, b) = -Bez(b, a) and Res(a, b) = (-1)^(nm) Res(b, a).
    KOBWBRational value = Determinant(std::move(matrix)) / Lead(high).Power(n - m);
    if ((n * (n - 1) / 2) % 2 == 1) value = -value;
    if (swapped && n % 2 == 1) value = -value;
    if (swapped && (n * m) % 2 == 1) value = -value;
    resultant = std::move(value);
    return true;
}

bool KOBWBUnivariatePolynomialTools::SquareFreeDecomposition(const KOBWBPolynomial& p, int atom,
                                                             KOBWBRational& content,
                                                             std::vector<KOBWBPolynomial>& factors) {
    Row row;
    if (!FromPolynomial(p, atom, row)) return false;
    std::vector<KOBWBPolynomial> result;
    for (const Row& factor : SquareFree(row, content)) result.push_back(ToPolynomial(factor, atom));
    factors = std::move(result);
    return true;
}
