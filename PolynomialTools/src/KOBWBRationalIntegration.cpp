#include "KOBWBRationalIntegration.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBUnivariatePolynomialTools.h"

#include <vector>

namespace {

typedef KOBWBUnivariatePolynomialTools Tools;

// The coefficients of a univariate polynomial, lowest degree first.
std::vector<KOBWBRational> Coefficients(const KOBWBPolynomial& p, int atom) {
    std::vector<KOBWBRational> coefficients(static_cast<size_t>(p.Degree(atom)) + 1);
    for (const KOBWBPolynomialTerm& term : p.GetTerms())
        coefficients[term.monomial.empty() ? 0 : static_cast<size_t>(term.monomial[0].exponent)] =
            term.coefficient.GetExact();
    return coefficients;
}

KOBWBPolynomial Number(const KOBWBRational& value) { return KOBWBPolynomial(KOBWBCoefficient(value)); }

class Writer {
public:
    explicit Writer(KOBWBPolynomialContext& context) : m_context(context), m_factory(context.GetFactory()) {}

    KOBWBExpression* Write(const KOBWBPolynomial& p) { return m_context.ToExpression(p); }
    KOBWBPolynomial Read(KOBWBExpression* e) {
        KOBWBPolynomial p;
        m_context.ToPolynomial(e, p);
        return p;
    }

    // The integral of a / f with f monic and square-free of degree 1 or 2 and
    // deg a < deg f; false for a higher degree.
    bool LogarithmicPart(const KOBWBPolynomial& a, const KOBWBPolynomial& f, int atom, KOBWBPolynomial& integral) {
        const std::vector<KOBWBRational> fc = Coefficients(f, atom);
        std::vector<KOBWBRational> ac = Coefficients(a, atom);
        ac.resize(2);
        KOBWBExpression* logarithm = m_factory.CreateLn(Write(f));
        if (fc.size() == 2) {
            integral = Number(ac[0]) * Read(logarithm);
            return true;
        }
        if (fc.size() != 3) return false;
        // (p x + q) / (x^2 + b x + c) = (p / 2) f' / f + (q - p b / 2) / f.
        const KOBWBRational& p = ac[1];
        const KOBWBRational& b = fc[1];
        const KOBWBRational rest = ac[0] - p * b / KOBWBRational(2);
        integral = Number(p / KOBWBRational(2)) * Read(logarithm);
        if (rest.IsZero()) return true;
        // 1 / f with f = (x + b/2)^2 + delta / 4, delta = 4c - b^2.
        const KOBWBRational delta = KOBWBRational(4) * fc[0] - b * b;
        KOBWBExpression* shifted = Write(Number(KOBWBRational(2)) * KOBWBPolynomial::Atom(atom) + Number(b));
        if (delta.Sign() > 0) {
            // 2 / sqrt(delta) atan((2x + b) / sqrt(delta)).
            KOBWBExpression* root = m_factory.CreateSqrt(Write(Number(delta)));
            KOBWBExpression* angle = m_factory.CreateAtan(m_factory.CreateQuotient(shifted, root));
            integral += Number(rest * KOBWBRational(2)) * Read(m_factory.CreateQuotient(angle, root));
        } else {
            // 1 / sqrt(e) ln((2x + b - sqrt(e)) / (2x + b + sqrt(e))), e = b^2 - 4c.
            KOBWBExpression* root = m_factory.CreateSqrt(Write(Number(-delta)));
            KOBWBExpression* ratio =
                m_factory.CreateQuotient(m_factory.CreateSub(shifted, root), m_factory.CreateSum(shifted, root));
            integral += Number(rest) * Read(m_factory.CreateQuotient(m_factory.CreateLn(ratio), root));
        }
        return true;
    }

private:
    KOBWBPolynomialContext& m_context;
    KOBWBFactory& m_factory;
};

} // namespace

bool KOBWBIntegrateRationalFunction(KOBWBPolynomialContext& context, KOBWBVariable* x,
                                    const KOBWBPolynomial& numerator, const KOBWBPolynomial& denominator,
                                    KOBWBPolynomial& integral) {
    const int atom = context.GetVariableAtom(x);
    KOBWBRationalFunction rational, reduced;
    if (!Tools::HermiteReduce(numerator, denominator, atom, rational, reduced)) return false;
    KOBWBPolynomial polynomialPart;
    std::vector<KOBWBPartialFraction> fractions;
    if (!Tools::PartialFractions(reduced.numerator, reduced.denominator, atom, polynomialPart, fractions))
        return false;
    Writer writer(context);
    KOBWBPolynomial result;
    for (const KOBWBPartialFraction& fraction : fractions) {
        KOBWBPolynomial part;
        if (!writer.LogarithmicPart(fraction.numerator, fraction.factor, atom, part)) return false;
        result += part;
    }
    for (const KOBWBPolynomialTerm& term : polynomialPart.GetTerms()) {
        const long long n = term.monomial.empty() ? 0 : term.monomial[0].exponent;
        result += KOBWBPolynomial::Atom(atom, n + 1) *
                  KOBWBPolynomial(term.coefficient * KOBWBCoefficient(KOBWBRational(1, n + 1)));
    }
    if (!rational.numerator.IsZero()) {
        KOBWBFactory& factory = context.GetFactory();
        result += writer.Read(
            factory.CreateQuotient(writer.Write(rational.numerator), writer.Write(rational.denominator)));
    }
    integral = std::move(result);
    return true;
}
