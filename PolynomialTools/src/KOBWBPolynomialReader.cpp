#include "KOBWBPolynomialContextImpl.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBExpression.h"
#include "KOBWBLimits.h"
#include "KOBWBVariable.h"

#include <climits>
#include <cstdio>
#include <unordered_set>

// Reading expressions as polynomials: every node once, children before parents,
// without recursion, so that long chains and shared sub-graphs are read in the
// time of their nodes.

using Impl = KOBWBPolynomialContext::Impl;

namespace {

// A real is exact when it is a binary fraction with a denominator of at most 2^20.
KOBWBCoefficient RealNumber(double x) {
    KOBWBRational exact;
    if (KOBWBRational::FromDouble(x, exact) && (exact * KOBWBRational(1LL << 20)).IsInteger()) return exact;
    return KOBWBCoefficient::Real(x);
}

bool IsSingleReal(double x) { return !KOBWBIsAnyReal(x) && !KOBWBIsNilReal(x); }

// The number a constant holds with its power of Pi; false for values that are not
// one number (intervals, enumerations, booleans, any and nil).
bool ReadNumber(const KOBWBValue& value, KOBWBCoefficient& number, long long& piPower) {
    piPower = 0;
    if (value.IsAFraction()) {
        const KOBWBFraction f = value.GetAsFraction();
        if (f.denominator == 0) return false;
        number = KOBWBRational(f.numerator, f.denominator);
        piPower = f.powerOfPi;
        return true;
    }
    switch (value.GetType()) {
    case KOBWBIntegerValue: {
        const int n = value.GetAsInteger();
        if (KOBWBIsAnyInteger(n) || KOBWBIsNilInteger(n)) return false;
        number = KOBWBCoefficient(n);
        return true;
    }
    case KOBWBRealValue: {
        const double x = value.GetAsReal();
        if (!IsSingleReal(x)) return false;
        number = RealNumber(x);
        return true;
    }
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval i = value.GetAsIntegerInterval();
        if (i.lower != i.upper || KOBWBIsAnyInteger(i.lower) || KOBWBIsNilInteger(i.lower)) return false;
        number = KOBWBCoefficient(i.lower);
        return true;
    }
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval r = value.GetAsRealInterval();
        if (r.lower != r.upper || !IsSingleReal(r.lower)) return false;
        number = RealNumber(r.lower);
        return true;
    }
    default: return false;
    }
}

std::string OpaqueKey(int atom) {
    char text[32];
    std::snprintf(text, sizeof text, "z%010d", atom);
    return text;
}

// Atom keys beyond this length are not compared structurally: such an atom is
// only equal to itself.
constexpr size_t maxKeyLength = 2048;

bool ReadsChildren(KOBWBExpressionType type) { return type != KOBWBIntegrateType; }

} // namespace

const KOBWBPolynomial* Impl::Known(KOBWBExpression* node) const {
    const auto found = read.find(node);
    return found == read.end() ? nullptr : &found->second;
}

bool Impl::Read(KOBWBExpression* root, KOBWBPolynomial& result) {
    if (!root || &root->GetFactory() != &factory) return false;
    struct Frame {
        KOBWBExpression* node;
        int next;
    };
    std::vector<Frame> frames{{root, 0}};
    std::unordered_set<const KOBWBExpression*> active{root};
    while (!frames.empty()) {
        const size_t top = frames.size() - 1;
        KOBWBExpression* node = frames[top].node;
        if (ReadsChildren(node->GetType()) && frames[top].next < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(frames[top].next++);
            if (!child || read.count(child)) continue;
            // A foreign node, or a cycle made by replacing children, is not an expression.
            if (&child->GetFactory() != &factory || !active.insert(child).second) return false;
            frames.push_back({child, 0});
            continue;
        }
        frames.pop_back();
        active.erase(node);
        read.emplace(node, ReadNode(node));
    }
    result = read.at(root);
    return true;
}

KOBWBPolynomial Impl::ReadNode(KOBWBExpression* node) {
    const KOBWBExpressionType type = node->GetType();
    if (type == KOBWBVariableType) return KOBWBPolynomial::Atom(VariableAtom(static_cast<KOBWBVariable*>(node)));
    if (type == KOBWBConstantType) {
        KOBWBCoefficient number;
        long long piPower = 0;
        if (!ReadNumber(node->GetExprValue(), number, piPower))
            return KOBWBPolynomial::Atom(InternAtom(AtomKind::Value, node, {}, OpaqueKey(static_cast<int>(atoms.size()))));
        KOBWBPolynomial constant(number);
        return piPower == 0 ? constant : KOBWBPolynomial::Multiply(constant, KOBWBPolynomial::Atom(piAtom, piPower));
    }
    const int count = node->GetNbOfChildren();
    std::vector<KOBWBPolynomial> arguments;
    arguments.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count && ReadsChildren(type); ++i) {
        const KOBWBPolynomial* argument = Known(node->GetChild(i));
        if (!argument) return KOBWBPolynomial::Atom(InternAtom(AtomKind::Opaque, node, {}, OpaqueKey(static_cast<int>(atoms.size()))));
        arguments.push_back(*argument);
    }
    if (!ReadsChildren(type) || count == 0)
        return KOBWBPolynomial::Atom(InternAtom(AtomKind::Opaque, node, {}, OpaqueKey(static_cast<int>(atoms.size()))));
    switch (type) {
    case KOBWBSumType: {
        KOBWBPolynomial sum;
        for (const KOBWBPolynomial& argument : arguments) sum += argument;
        return sum;
    }
    case KOBWBProductType: return Product(node, arguments);
    case KOBWBQuotientType:
        if (count == 2) return Quotient(arguments[0], arguments[1], node);
        break;
    case KOBWBPowerType:
        if (count == 2) return Power(arguments[0], arguments[1], node);
        break;
    default: break;
    }
    return OperatorAtom(node, std::move(arguments));
}

KOBWBPolynomial Impl::OperatorAtom(KOBWBExpression* node, std::vector<KOBWBPolynomial> arguments) {
    char head[64];
    std::snprintf(head, sizeof head, "c%02d", static_cast<int>(node->GetType()));
    std::string key = head;
    for (int i = 0; i < node->GetNbOfParameters(); ++i) {
        std::snprintf(head, sizeof head, "p%.17g", node->GetParameter(i));
        key += head;
    }
    if (node->GetType() == KOBWBBlackBoxType) {
        std::snprintf(head, sizeof head, "b%p", static_cast<void*>(static_cast<KOBWBBlackBoxOperator*>(node)->GetBlackBox()));
        key += head;
    }
    key += '(';
    for (size_t i = 0; i < arguments.size() && key.size() <= maxKeyLength; ++i) {
        if (i > 0) key += ',';
        key += PolynomialKey(arguments[i]);
    }
    key += ')';
    if (key.size() > maxKeyLength) key = OpaqueKey(static_cast<int>(atoms.size()));
    return KOBWBPolynomial::Atom(InternAtom(AtomKind::Operator, node, std::move(arguments), std::move(key)));
}

namespace {

bool OnlyPi(const KOBWBPolynomial& p) {
    if (p.GetNbOfTerms() != 1) return false;
    for (const KOBWBMonomialFactor& factor : p.GetTerm(0).monomial)
        if (factor.atom != KOBWBPolynomialContext::piAtom) return false;
    return true;
}

// The inverse of a single term made of Pi powers and a non-zero coefficient.
KOBWBPolynomial InverseTerm(const KOBWBPolynomialTerm& term) {
    KOBWBPolynomial inverse(KOBWBCoefficient(1) / term.coefficient);
    for (const KOBWBMonomialFactor& factor : term.monomial)
        inverse = KOBWBPolynomial::Multiply(inverse, KOBWBPolynomial::Atom(factor.atom, -factor.exponent));
    return inverse;
}

bool WithinExponents(const KOBWBPolynomial& p) { return p.GetMaxExponent() <= INT_MAX; }

} // namespace

KOBWBPolynomial Impl::Quotient(KOBWBPolynomial numerator, const KOBWBPolynomial& denominator, KOBWBExpression* node) {
    if (denominator.IsZero()) return OperatorAtom(node, {std::move(numerator), denominator});
    if (OnlyPi(denominator)) return KOBWBPolynomial::Multiply(numerator, InverseTerm(denominator.GetTerm(0)));
    // A monic denominator: its first term in key order gets coefficient 1.
    const KOBWBPolynomialTerm* first = nullptr;
    std::string firstKey;
    for (const KOBWBPolynomialTerm& term : denominator.GetTerms()) {
        std::string key = MonomialKey(term.monomial);
        if (!first || key < firstKey) {
            first = &term;
            firstKey = std::move(key);
        }
    }
    const KOBWBCoefficient scale = KOBWBCoefficient(1) / first->coefficient;
    KOBWBPolynomial monic(denominator);
    monic *= scale;
    numerator *= scale;
    std::string key = "r(" + PolynomialKey(monic) + ")";
    if (key.size() > maxKeyLength) key = OpaqueKey(static_cast<int>(atoms.size()));
    const int reciprocal = InternAtom(AtomKind::Reciprocal, node, {std::move(monic)}, std::move(key));
    return KOBWBPolynomial::Multiply(numerator, KOBWBPolynomial::Atom(reciprocal));
}

KOBWBPolynomial Impl::Power(const KOBWBPolynomial& base, const KOBWBPolynomial& exponent, KOBWBExpression* node) {
    KOBWBCoefficient n;
    const bool integer = exponent.IsConstant(n) && n.IsExact() && n.GetExact().IsInteger() && n.GetExact().IsSmall() &&
                         n.GetExact().ToDouble() >= INT_MIN && n.GetExact().ToDouble() <= INT_MAX;
    if (!integer) return OperatorAtom(node, {base, exponent});
    const long long e = static_cast<long long>(n.GetExact().ToDouble());
    KOBWBPolynomial power;
    KOBWBCoefficient constantBase;
    const bool zeroBase = base.IsConstant(constantBase) && constantBase.IsZero();
    if (e >= 0) {
        if (base.Power(e, maxTerms, power) && WithinExponents(power)) return power;
        return OperatorAtom(node, {base, exponent});
    }
    if (zeroBase) return OperatorAtom(node, {base, exponent});
    if (OnlyPi(base) || base.IsConstant(constantBase)) {
        const KOBWBPolynomial inverse = InverseTerm(base.GetTerm(0));
        if (inverse.Power(-e, maxTerms, power) && WithinExponents(power)) return power;
        return OperatorAtom(node, {base, exponent});
    }
    if (!base.Power(-e, maxTerms, power) || !WithinExponents(power)) return OperatorAtom(node, {base, exponent});
    return Quotient(KOBWBPolynomial(KOBWBCoefficient(1)), power, node);
}

KOBWBPolynomial Impl::Product(KOBWBExpression* node, const std::vector<KOBWBPolynomial>& factors) {
    KOBWBPolynomial product(KOBWBCoefficient(1));
    const long long maxWork = 64LL * maxTerms;
    for (const KOBWBPolynomial& factor : factors) {
        if (static_cast<long long>(product.GetNbOfTerms()) * factor.GetNbOfTerms() > maxWork)
            return OperatorAtom(node, factors);
        product = KOBWBPolynomial::Multiply(product, factor);
        if (product.GetNbOfTerms() > maxTerms || !WithinExponents(product)) return OperatorAtom(node, factors);
    }
    return product;
}
