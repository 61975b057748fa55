#include "KOBWBIntegration.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBRationalIntegration.h"
#include "KOBWBUnivariatePolynomialTools.h"
#include "KOBWBVariable.h"

#include <utility>
#include <vector>

namespace {

// A term split into what is free of x (coefficient and atoms) and what is not.
struct SplitTerm {
    KOBWBPolynomial free;
    long long xPower = 0;
    std::vector<KOBWBMonomialFactor> dependent;
};

class Integrator {
public:
    Integrator(KOBWBFactory& factory, KOBWBVariable* x)
        : m_context(factory), m_factory(factory), m_x(x), m_atom(m_context.GetVariableAtom(x)) {}

    bool Integrate(KOBWBExpression* expression, KOBWBPolynomial& integral) {
        KOBWBPolynomial integrand;
        if (m_atom < 0 || !m_context.ToPolynomial(expression, integrand)) return false;
        KOBWBPolynomial result;
        for (const KOBWBPolynomialTerm& term : integrand.GetTerms()) {
            SplitTerm split = Split(term);
            KOBWBPolynomial part;
            if (!IntegrateTerm(split, part)) return false;
            result += split.free * part;
        }
        integral = std::move(result);
        return true;
    }

    KOBWBExpression* Write(const KOBWBPolynomial& p) { return m_context.ToExpression(p); }

private:
    SplitTerm Split(const KOBWBPolynomialTerm& term) const {
        SplitTerm split;
        std::vector<KOBWBPolynomialTerm> free(1);
        free[0].coefficient = term.coefficient;
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            if (factor.atom == m_atom) {
                split.xPower = factor.exponent;
            } else if (m_context.AtomDependsOn(factor.atom, m_x)) {
                split.dependent.push_back(factor);
            } else {
                free[0].monomial.push_back(factor);
            }
        }
        split.free = KOBWBPolynomial::FromTerms(std::move(free));
        return split;
    }

    // The integral of the part of a term that depends on x (the free part may lose
    // its coefficient to it).
    bool IntegrateTerm(SplitTerm& split, KOBWBPolynomial& integral) {
        if (split.dependent.empty()) {
            integral = Power(split.xPower + 1);
            return true;
        }
        const bool single = split.dependent.size() == 1 && split.xPower == 0 && split.dependent[0].exponent == 1;
        return (single && Table(split.dependent[0].atom, integral)) || RationalTerm(split, integral);
    }

    // x^n over reciprocals of polynomials in x, integrated as a rational function;
    // the coefficient of the free part moves into the numerator.
    bool RationalTerm(SplitTerm& split, KOBWBPolynomial& integral) {
        const KOBWBCoefficient coefficient = split.free.GetTerm(0).coefficient;
        if (coefficient.IsReal()) return false;
        KOBWBPolynomial denominator(KOBWBCoefficient(1));
        for (const KOBWBMonomialFactor& factor : split.dependent) {
            KOBWBPolynomial base, power;
            if (!Denominator(factor.atom, base) || factor.exponent < 1 ||
                !base.Power(factor.exponent, m_context.GetMaxTerms(), power))
                return false;
            denominator = denominator * power;
        }
        split.free *= KOBWBCoefficient(1) / coefficient;
        const KOBWBPolynomial numerator = KOBWBPolynomial::Atom(m_atom, split.xPower) * KOBWBPolynomial(coefficient);
        return KOBWBIntegrateRationalFunction(m_context, m_x, numerator, denominator, integral);
    }

    KOBWBPolynomial Power(long long n) const {
        return KOBWBPolynomial::Atom(m_atom, n) * KOBWBPolynomial(KOBWBCoefficient(KOBWBRational(1, n)));
    }

    KOBWBPolynomial Read(KOBWBExpression* e) {
        KOBWBPolynomial p;
        m_context.ToPolynomial(e, p);
        return p;
    }

    // The expression of an atom.
    KOBWBExpression* AtomExpression(int atom) { return Write(KOBWBPolynomial::Atom(atom)); }

    // d when the atom is the reciprocal 1/d of a polynomial in x alone with exact
    // coefficients.
    bool Denominator(int atom, KOBWBPolynomial& denominator) {
        KOBWBExpression* e = AtomExpression(atom);
        KOBWBCoefficient one;
        if (!e || e->GetType() != KOBWBQuotientType || !Read(e->GetChild(0)).IsConstant(one) || !one.IsOne())
            return false;
        denominator = Read(e->GetChild(1));
        return KOBWBUnivariatePolynomialTools::IsUnivariate(denominator, m_atom);
    }

    // The integral of a function f(u) of a linear argument u = a x + b, by the table
    // of f, divided by a.
    bool Table(int atom, KOBWBPolynomial& integral) {
        KOBWBExpression* e = AtomExpression(atom);
        if (!e) return false;
        const KOBWBExpressionType type = e->GetType();
        KOBWBExpression* u = type == KOBWBQuotientType ? e->GetChild(1) : e->GetChild(0);
        if (type == KOBWBQuotientType && !IsOne(e->GetChild(0))) return false;
        KOBLVRListPKOBWBExpression coefficients;
        if (!u || !m_context.ExtractCoefficients(u, m_x, coefficients) || coefficients.Size() != 2) return false;
        KOBWBExpression* primitive = nullptr;
        KOBWBFactory& f = m_factory;
        switch (type) {
        case KOBWBExpType: primitive = f.CreateExp(u); break;
        case KOBWBSinType: primitive = f.CreateOpposite(f.CreateCos(u)); break;
        case KOBWBCosType: primitive = f.CreateSin(u); break;
        case KOBWBTanType: primitive = f.CreateOpposite(f.CreateLn(f.CreateCos(u))); break;
        case KOBWBSinhType: primitive = f.CreateCosh(u); break;
        case KOBWBCoshType: primitive = f.CreateSinh(u); break;
        case KOBWBTanhType: primitive = f.CreateLn(f.CreateCosh(u)); break;
        case KOBWBLnType: primitive = f.CreateSub(f.CreateProduct(u, f.CreateLn(u)), u); break;
        case KOBWBSqrtType:
            primitive = f.CreateProduct(f.CreateQuotient(I(2), I(3)), f.CreateProduct(u, f.CreateSqrt(u)));
            break;
        case KOBWBPowerType: primitive = PowerPrimitive(u, e->GetChild(1)); break;
        case KOBWBQuotientType: primitive = f.CreateLn(u); break;
        default: return false;
        }
        if (!primitive) return false;
        integral = Read(f.CreateQuotient(primitive, coefficients[1]));
        return true;
    }

    KOBWBExpression* I(int n) { return m_factory.CreateIntegerConstant(n); }

    // u^(c+1) / (c+1) for a constant exponent c other than -1 (the reciprocal of a
    // linear u is read as a quotient, and u^-1 never reaches here as a power).
    KOBWBExpression* PowerPrimitive(KOBWBExpression* u, KOBWBExpression* exponent) {
        KOBWBCoefficient c;
        if (!exponent || !Read(exponent).IsConstant(c) || (c + KOBWBCoefficient(1)).IsZero()) return nullptr;
        KOBWBExpression* raised = Write(Read(exponent) + KOBWBPolynomial(KOBWBCoefficient(1)));
        return m_factory.CreateQuotient(m_factory.CreatePower(u, raised), raised);
    }

    bool IsOne(KOBWBExpression* e) {
        KOBWBCoefficient value;
        return Read(e).IsConstant(value) && value.IsOne();
    }

    KOBWBPolynomialContext m_context;
    KOBWBFactory& m_factory;
    KOBWBVariable* m_x;
    const int m_atom;
};

} // namespace

KOBWBExpression* KOBWBIntegration::Integrate(KOBWBExpression* expression, KOBWBVariable* x,
                                             unsigned char& integrable) {
    integrable = 0;
    if (!expression || !x || &x->GetFactory() != &expression->GetFactory()) return nullptr;
    Integrator integrator(expression->GetFactory(), x);
    KOBWBPolynomial integral;
    if (!integrator.Integrate(expression, integral)) return nullptr;
    KOBWBExpression* result = integrator.Write(integral);
    integrable = result ? 1 : 0;
    return result;
}
