#include "KOBWBMultivariatePolynomialTools.h"

#include "KOBWBFlintSparse.h"
#include "KOBWBMultivariateArithmetic.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBRationalAccess.h"
#include "KOBWBUnivariatePolynomialTools.h"

#include <flint/fmpz_mpoly_factor.h>

#include <algorithm>
#include <utility>
#include <vector>

// Factorisation into irreducible factors over the rationals, on FLINT's sparse
// integer polynomials; factors are then normalised and put in a fixed order.

using namespace KOBWBMultivariateArithmetic;

namespace {

// The factors of an integer polynomial, cleared with the object.
class IntegerFactors {
public:
    explicit IntegerFactors(KOBWBFlint::SparseContext& context) : m_context(context) {
        fmpz_mpoly_factor_init(m_value, context.get());
    }
    ~IntegerFactors() { fmpz_mpoly_factor_clear(m_value, m_context.get()); }
    IntegerFactors(const IntegerFactors&) = delete;
    IntegerFactors& operator=(const IntegerFactors&) = delete;
    fmpz_mpoly_factor_struct* get() { return m_value; }

private:
    KOBWBFlint::SparseContext& m_context;
    fmpz_mpoly_factor_struct m_value[1];
};

// A total order of polynomials: lower total degree first, then fewer terms, then by
// their terms in storage order.
bool Before(const KOBWBPolynomial& a, const KOBWBPolynomial& b) {
    if (a.GetTotalDegree() != b.GetTotalDegree()) return a.GetTotalDegree() < b.GetTotalDegree();
    if (a.GetNbOfTerms() != b.GetNbOfTerms()) return a.GetNbOfTerms() < b.GetNbOfTerms();
    for (int i = 0; i < a.GetNbOfTerms(); ++i) {
        const int monomials = KOBWBCompareMonomials(a.GetTerm(i).monomial, b.GetTerm(i).monomial);
        if (monomials != 0) return monomials < 0;
        const int coefficients = KOBWBCoefficient::Compare(a.GetTerm(i).coefficient, b.GetTerm(i).coefficient);
        if (coefficients != 0) return coefficients < 0;
    }
    return false;
}

} // namespace

bool KOBWBMultivariatePolynomialTools::Factor(const KOBWBPolynomial& p, KOBWBRational& constant,
                                              std::vector<KOBWBPolynomialFactor>& factors) {
    if (!IsExact(p)) return false;
    KOBWBCoefficient value;
    if (p.IsConstant(value)) {
        constant = value.GetExact();
        factors.clear();
        return true;
    }
    KOBWBFlint::SparseContext context({&p});
    // Factoring time grows fast with the degrees: those of the univariate tools are
    // the limit here too.
    if (!context.ExponentsFit(1) || p.GetMaxExponent() > KOBWBUnivariatePolynomialTools::maxDegree) return false;
    KOBWBFlint::SparsePolynomial integer(context);
    KOBWBRational scale;
    context.ToFlint(p, integer.get(), scale);
    IntegerFactors split(context);
    if (!fmpz_mpoly_factor(split.get(), integer.get(), context.get())) return false;
    // p = constant / scale x product of the factors^multiplicities; each factor is
    // divided by its leading coefficient, which moves into the constant.
    KOBWBRational remaining = KOBWBRationalAccess::FromFlint(split.get()->constant) / scale;
    std::vector<KOBWBPolynomialFactor> found;
    for (slong i = 0; i < split.get()->num; ++i) {
        if (!fmpz_fits_si(split.get()->exp + i)) return false;
        const int multiplicity = static_cast<int>(fmpz_get_si(split.get()->exp + i));
        const KOBWBPolynomial factor = context.FromFlint(split.get()->poly + i, KOBWBRational(1));
        remaining *= LeadingTerm(factor).coefficient.GetExact().Power(multiplicity);
        found.push_back({Normalised(factor), multiplicity});
    }
    std::sort(found.begin(), found.end(), [](const KOBWBPolynomialFactor& a, const KOBWBPolynomialFactor& b) {
        return Before(a.factor, b.factor);
    });
    constant = std::move(remaining);
    factors = std::move(found);
    return true;
}

bool KOBWBMultivariatePolynomialTools::Factor(KOBWBPolynomialContext& context, KOBWBExpression* expression,
                                              KOBWBExpression*& constant,
                                              std::vector<std::pair<KOBWBExpression*, int>>& factors) {
    KOBWBPolynomial p;
    KOBWBRational value;
    std::vector<KOBWBPolynomialFactor> found;
    if (!context.ToPolynomial(expression, p) || !Factor(p, value, found)) return false;
    std::vector<std::pair<KOBWBExpression*, int>> written;
    for (const KOBWBPolynomialFactor& factor : found) {
        KOBWBExpression* node = context.ToExpression(factor.factor);
        if (!node) return false;
        written.push_back({node, factor.multiplicity});
    }
    KOBWBExpression* number = context.ToExpression(KOBWBPolynomial(KOBWBCoefficient(value)));
    if (!number) return false;
    constant = number;
    factors = std::move(written);
    return true;
}
