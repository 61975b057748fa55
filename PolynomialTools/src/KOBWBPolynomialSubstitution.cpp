#include "KOBWBPolynomialContextImpl.h"

#include "KOBWBConstant.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

// Substitution of polynomials for atoms, inside the arguments of other atoms too:
// an atom whose arguments change is read again from its new arguments.

using Impl = KOBWBPolynomialContext::Impl;

std::vector<int> Impl::Reachable(const KOBWBPolynomial& polynomial) {
    std::vector<int> reached, pending;
    std::unordered_set<int> seen;
    const auto note = [&](const KOBWBPolynomial& p) {
        for (const KOBWBPolynomialTerm& term : p.GetTerms())
            for (const KOBWBMonomialFactor& factor : term.monomial)
                if (seen.insert(factor.atom).second) pending.push_back(factor.atom);
    };
    note(polynomial);
    while (!pending.empty()) {
        const int atom = pending.back();
        pending.pop_back();
        reached.push_back(atom);
        for (const KOBWBPolynomial& argument : atoms[static_cast<size_t>(atom)].arguments) note(argument);
    }
    std::sort(reached.begin(), reached.end());
    return reached;
}

namespace {

// The polynomial with the atoms that have a replacement replaced; a power past the
// budget is written as a power node and read back as one atom.
KOBWBPolynomial Replace(Impl& impl, const KOBWBPolynomial& polynomial,
                        const std::unordered_map<int, KOBWBPolynomial>& replacements) {
    KOBWBPolynomial result;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        KOBWBPolynomial product(term.coefficient);
        KOBWBMonomial kept;
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            const auto replacement = replacements.find(factor.atom);
            if (replacement == replacements.end()) {
                kept.push_back(factor);
                continue;
            }
            KOBWBPolynomial power;
            if (!replacement->second.Power(factor.exponent, impl.maxTerms, power)) {
                KOBWBExpression* node = impl.factory.CreatePower(impl.Write(replacement->second),
                                                                 static_cast<int>(factor.exponent));
                impl.Read(node, power);
            }
            product = KOBWBPolynomial::Multiply(product, power);
        }
        KOBWBPolynomial rest = KOBWBPolynomial::FromTerms({{kept, KOBWBCoefficient(1)}});
        result += KOBWBPolynomial::Multiply(product, rest);
    }
    return result;
}

} // namespace

KOBWBPolynomial Impl::Substitute(const KOBWBPolynomial& polynomial,
                                 const std::vector<std::pair<int, const KOBWBPolynomial*>>& substitutions) {
    std::unordered_map<int, KOBWBPolynomial> replacements;
    for (const auto& substitution : substitutions) replacements.emplace(substitution.first, *substitution.second);
    // Arguments name only earlier atoms: in number order, an atom's arguments have
    // their replacements before the atom is read again.
    for (int atom : Reachable(polynomial)) {
        const Atom& record = atoms[static_cast<size_t>(atom)];
        if (record.arguments.empty() || replacements.count(atom)) continue;
        bool changed = false;
        for (const KOBWBPolynomial& argument : record.arguments)
            for (const KOBWBPolynomialTerm& term : argument.GetTerms())
                for (const KOBWBMonomialFactor& factor : term.monomial) changed = changed || replacements.count(factor.atom);
        if (!changed) continue;
        // Replacing and reading may add atoms, which may move the record: keep what it says.
        KOBWBExpression* node = record.node;
        const bool reciprocal = record.kind == AtomKind::Reciprocal;
        std::vector<KOBWBPolynomial> arguments = record.arguments;
        for (KOBWBPolynomial& argument : arguments) argument = Replace(*this, argument, replacements);
        std::vector<const KOBWBPolynomial*> pointers;
        for (const KOBWBPolynomial& argument : arguments) pointers.push_back(&argument);
        KOBWBPolynomial reread = reciprocal ? Quotient(KOBWBPolynomial(KOBWBCoefficient(1)), arguments[0], node)
                                            : ReadOperator(node, pointers);
        replacements.emplace(atom, std::move(reread));
    }
    return Replace(*this, polynomial, replacements);
}
