#include "KOBWBConstant.h"
#include "KOBWBDerivativeRules.h"
#include "KOBWBFactory.h"
#include "KOBWBOperatorFamilies.h"

#include <cmath>
#include <vector>

// Symbolic first derivatives of every operator family. Each rule builds new nodes
// in the node's factory and shares the unchanged subgraphs of the argument graph.
// Zero terms are dropped from sums and products, unit factors are left out, and
// integer powers keep integer exponents.

using kobwb::DerivativeRules;
using kobwb::Term;

namespace {

Term Made(KOBWBExpression* node) { return {Term::Kind::Node, node}; }

KOBWBExpression* NodeOf(KOBWBFactory& factory, const Term& term) { return DerivativeRules::Node(factory, term); }

KOBWBExpression* Integer(KOBWBFactory& factory, int value) { return DerivativeRules::Integer(factory, value); }

KOBWBExpression* Real(KOBWBFactory& factory, double value) { return DerivativeRules::Real(factory, value); }

KOBWBExpression* Square(KOBWBFactory& factory, KOBWBExpression* x) {
    return factory.CreatePower(x, Integer(factory, 2));
}

// No term: the integer 0; one term: itself; several: their sum.
Term SumOfTerms(KOBWBFactory& factory, const std::vector<Term>& terms) {
    if (terms.empty()) return {Term::Kind::IntegerZero, nullptr};
    if (terms.size() == 1) return terms[0];
    std::vector<KOBWBExpression*> nodes;
    nodes.reserve(terms.size());
    for (const Term& term : terms) nodes.push_back(NodeOf(factory, term));
    return Made(factory.CreateOperator(KOBWBSumType, static_cast<int>(nodes.size()), nodes.data()));
}

// a * term + b, without the factor when a is 1 and without the constant when b is 0.
KOBWBExpression* Linear(KOBWBFactory& factory, double a, KOBWBExpression* term, double b) {
    KOBWBExpression* scaled = a == 1.0 ? term : factory.CreateProduct(Real(factory, a), term);
    return b == 0.0 ? scaled : factory.CreateSum(Real(factory, b), scaled);
}

KOBWBExpression* LinearOfSquare(KOBWBFactory& factory, double a, KOBWBExpression* x, double b) {
    return Linear(factory, a, Square(factory, x), b);
}

// factor * term, without the factor when it is 1.
KOBWBExpression* Scaled(KOBWBFactory& f, const Term& factor, KOBWBExpression* term) {
    return factor.IsOne() ? term : f.CreateProduct(NodeOf(f, factor), term);
}

// (da * b - a * db) / denominator, the form of the quotient and of atan2, without the
// terms whose derivative is 0 and the unit factors.
KOBWBExpression* CrossQuotient(KOBWBFactory& f, KOBWBExpression* a, const Term& da, KOBWBExpression* b,
                               const Term& db, KOBWBExpression* denominator) {
    if (db.IsZero()) return f.CreateQuotient(Scaled(f, da, b), denominator);
    if (da.IsZero()) {
        KOBWBExpression* negated = db.IsOne() ? f.CreateOpposite(a) : f.CreateProduct(f.CreateOpposite(NodeOf(f, db)), a);
        return f.CreateQuotient(negated, denominator);
    }
    return f.CreateQuotient(f.CreateSub(Scaled(f, da, b), Scaled(f, db, a)), denominator);
}

// The derivative of a product of many factors of which several depend on v, in a
// number of nodes linear in the factors: term i is prefix(i) * d(factor i) * suffix(i),
// where prefix(i) is the product of the factors before i and suffix(i) of those after,
// each made once as a chain of binary products. Spelling every term out with its own
// copy of the other factors would make a number of nodes quadratic in the factors, and
// each further derivative would multiply it again.
Term ProductByPrefixes(KOBWBFactory& f, KOBWBAlgebraicOperator& node, const std::vector<Term>& derivatives) {
    const int count = node.GetNbOfChildren();
    std::vector<KOBWBExpression*> prefix(static_cast<std::size_t>(count), nullptr);
    std::vector<KOBWBExpression*> suffix(static_cast<std::size_t>(count), nullptr);
    for (int i = 1; i < count; ++i)
        prefix[i] = i == 1 ? node.GetChild(0) : f.CreateProduct(prefix[i - 1], node.GetChild(i - 1));
    for (int i = count - 2; i >= 0; --i)
        suffix[i] = i == count - 2 ? node.GetChild(count - 1) : f.CreateProduct(node.GetChild(i + 1), suffix[i + 1]);
    std::vector<Term> terms;
    for (int i = 0; i < count; ++i) {
        const Term& d = derivatives[static_cast<std::size_t>(i)];
        if (d.IsNull() || d.IsZero()) continue;
        KOBWBExpression* factors[3];
        int n = 0;
        if (prefix[i]) factors[n++] = prefix[i];
        if (!d.IsOne()) factors[n++] = NodeOf(f, d);
        if (suffix[i]) factors[n++] = suffix[i];
        terms.push_back(Made(n == 1 ? factors[0] : f.CreateProduct(n, factors)));
    }
    return SumOfTerms(f, terms);
}

} // namespace

namespace kobwb {

Term AlgebraicDerivative(KOBWBAlgebraicOperator& node, KOBWBVariable* v) {
    KOBWBFactory& factory = node.GetFactory();
    const int count = node.GetNbOfChildren();
    std::vector<Term> terms;
    if (node.GetType() == KOBWBSumType) {
        // A term without derivative leaves the sum without one.
        for (int i = 0; i < count; ++i) {
            const Term d = DerivativeRules::Of(node.GetChild(i), v);
            if (d.IsNull()) return {};
            if (!d.IsZero()) terms.push_back(d);
        }
        return SumOfTerms(factory, terms);
    }
    if (node.GetType() != KOBWBProductType) return {};
    std::vector<Term> derivatives(static_cast<std::size_t>(count));
    int dependent = 0;
    for (int i = 0; i < count; ++i) {
        derivatives[static_cast<std::size_t>(i)] = DerivativeRules::Of(node.GetChild(i), v);
        const Term& d = derivatives[static_cast<std::size_t>(i)];
        if (d.IsNull()) return {};
        if (!d.IsZero()) ++dependent;
    }
    // Two dependent factors spell their terms out with fewer nodes than the chains.
    if (dependent > 2 && count > 3) return ProductByPrefixes(factory, node, derivatives);
    std::vector<KOBWBExpression*> factors;
    for (int i = 0; i < count; ++i) {
        const Term& d = derivatives[static_cast<std::size_t>(i)];
        if (d.IsNull() || d.IsZero()) continue;
        const bool one = d.IsOne();
        factors.clear();
        for (int j = 0; j < count; ++j) {
            if (j != i)
                factors.push_back(node.GetChild(j));
            else if (!one)
                factors.push_back(NodeOf(factory, d));
        }
        terms.push_back(factors.size() == 1
                            ? Made(factors[0])
                            : Made(factory.CreateProduct(static_cast<int>(factors.size()), factors.data())));
    }
    return SumOfTerms(factory, terms);
}

Term BinaryDerivative(KOBWBBinaryOperator& node, KOBWBVariable* v) {
    KOBWBExpression* a = node.GetChild(0);
    KOBWBExpression* b = node.GetChild(1);
    if (!a || !b) return {};
    KOBWBFactory& f = node.GetFactory();
    switch (node.GetType()) {
    case KOBWBQuotientType: {
        const Term da = DerivativeRules::Of(a, v);
        const Term db = DerivativeRules::Of(b, v);
        // A denominator free of v divides the numerator's derivative as it stands.
        if (db.IsZero()) return Made(f.CreateQuotient(NodeOf(f, da), b));
        return Made(CrossQuotient(f, a, da, b, db, Square(f, b)));
    }
    case KOBWBPowerType: {
        const Term da = DerivativeRules::Of(a, v);
        const bool integerExponent =
            b->GetType() == KOBWBConstantType && b->GetExprValue().IsAKindOf(KOBWBIntegerValue);
        if (integerExponent) {
            const int k = b->GetExprValue().GetAsInteger();
            if (da.IsZero() || k == 0) return {Term::Kind::IntegerZero, nullptr};
            if (k == 1) return da.IsOne() ? Made(b) : da;
            KOBWBExpression* lowered = k == 2 ? a : f.CreatePower(a, k - 1);
            return Made(f.CreateProduct(b, Scaled(f, da, lowered)));
        }
        const Term db = DerivativeRules::Of(b, v);
        KOBWBExpression* baseTerm = f.CreateQuotient(f.CreateProduct(b, NodeOf(f, da)), a);
        if (db.IsZero()) return Made(f.CreateProduct(&node, baseTerm));
        return Made(f.CreateProduct(&node, f.CreateSum(f.CreateProduct(NodeOf(f, db), f.CreateLn(a)), baseTerm)));
    }
    case KOBWBRootType:
        return Made(f.CreateProduct(&node, f.CreateQuotient(NodeOf(f, DerivativeRules::Of(a, v)), f.CreateProduct(a, b))));
    case KOBWBAtan2Type:
        return Made(CrossQuotient(f, a, DerivativeRules::Of(a, v), b, DerivativeRules::Of(b, v),
                                  f.CreateSum(Square(f, a), Square(f, b))));
    default: return {};
    }
}

Term UnaryDerivative(KOBWBUnaryOperator& node, KOBWBVariable* v) {
    KOBWBExpression* x = node.GetChild(0);
    KOBWBFactory& f = node.GetFactory();
    switch (node.GetType()) {
    case KOBWBSqrtType:
        return Made(f.CreateQuotient(NodeOf(f, DerivativeRules::Of(x, v)), f.CreateProduct(Integer(f, 2), &node)));
    case KOBWBLogType:
        return Made(f.CreateQuotient(NodeOf(f, DerivativeRules::Of(x, v)),
                                     f.CreateProduct(x, Real(f, std::log(10.0)))));
    case KOBWBLnType: return Made(f.CreateQuotient(NodeOf(f, DerivativeRules::Of(x, v)), x));
    case KOBWBExpType: return Made(Scaled(f, DerivativeRules::Of(x, v), &node));
    case KOBWBCeilType:
    case KOBWBFloorType:
    case KOBWBRoundType:
    case KOBWBTruncType: return {Term::Kind::IntegerZero, nullptr};
    default: return {};
    }
}

Term TrigonometricDerivative(KOBWBTrigonometricOperator& node, KOBWBVariable* v) {
    KOBWBExpression* x = node.GetChild(0);
    KOBWBFactory& f = node.GetFactory();
    const auto d = [&f, x, v] { return NodeOf(f, DerivativeRules::Of(x, v)); };
    switch (node.GetType()) {
    case KOBWBSinType: return Made(Scaled(f, DerivativeRules::Of(x, v), f.CreateCos(x)));
    case KOBWBCosType: {
        const Term dx = DerivativeRules::Of(x, v);
        KOBWBExpression* factors[] = {Real(f, -1.0), f.CreateSin(x), dx.IsOne() ? nullptr : NodeOf(f, dx)};
        return Made(f.CreateProduct(dx.IsOne() ? 2 : 3, factors));
    }
    case KOBWBTanType: return Made(f.CreateQuotient(d(), Square(f, f.CreateCos(x))));
    case KOBWBAsinType: return Made(f.CreateQuotient(d(), f.CreateSqrt(LinearOfSquare(f, -1.0, x, 1.0))));
    case KOBWBAcosType:
        return Made(f.CreateQuotient(Linear(f, -1.0, d(), 0.0), f.CreateSqrt(LinearOfSquare(f, -1.0, x, 1.0))));
    case KOBWBAtanType: return Made(f.CreateQuotient(d(), LinearOfSquare(f, 1.0, x, 1.0)));
    case KOBWBSinhType: return Made(Scaled(f, DerivativeRules::Of(x, v), f.CreateCosh(x)));
    case KOBWBCoshType: return Made(Scaled(f, DerivativeRules::Of(x, v), f.CreateSinh(x)));
    case KOBWBTanhType: return Made(Scaled(f, DerivativeRules::Of(x, v), LinearOfSquare(f, -1.0, &node, 1.0)));
    case KOBWBAsinhType: return Made(f.CreateQuotient(d(), f.CreateSqrt(LinearOfSquare(f, 1.0, x, 1.0))));
    case KOBWBAcoshType: return Made(f.CreateQuotient(d(), f.CreateSqrt(LinearOfSquare(f, 1.0, x, -1.0))));
    case KOBWBAtanhType: return Made(f.CreateQuotient(d(), LinearOfSquare(f, -1.0, x, 1.0)));
    default: return {};
    }
}

} // namespace kobwb

KOBWBExpression* KOBWBAlgebraicOperator::Differentiate(KOBWBVariable* v) {
    return v ? DerivativeRules::Node(GetFactory(), kobwb::AlgebraicDerivative(*this, v)) : this;
}

KOBWBExpression* KOBWBBinaryOperator::Differentiate(KOBWBVariable* v) {
    if (!GetChild(0) || !GetChild(1)) return nullptr;
    return v ? DerivativeRules::Node(GetFactory(), kobwb::BinaryDerivative(*this, v)) : this;
}

KOBWBExpression* KOBWBUnaryOperator::Differentiate(KOBWBVariable* v) {
    return v ? DerivativeRules::Node(GetFactory(), kobwb::UnaryDerivative(*this, v)) : this;
}

KOBWBExpression* KOBWBTrigonometricOperator::Differentiate(KOBWBVariable* v) {
    return v ? DerivativeRules::Node(GetFactory(), kobwb::TrigonometricDerivative(*this, v)) : this;
}

KOBWBExpression* KOBWBIfThenElseOperator::Differentiate(KOBWBVariable* v) {
    KOBWBExpression* condition = GetChild(0);
    if (!condition) return nullptr;
    KOBWBValue test;
    condition->Eval(test);
    if (!test.IsAKindOf(KOBWBBooleanValue)) return nullptr;
    KOBWBExpression* branch = nullptr;
    switch (test.GetAsBoolean()) {
    case KOBWBFalse: branch = GetChild(2); break;
    case KOBWBTrue: branch = GetChild(1); break;
    default: return nullptr;
    }
    return branch ? branch->Differentiate(v) : nullptr;
}
