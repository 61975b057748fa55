#include "KOBWBPolynomialContextImpl.h"

#include "KOBWBConstant.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <unordered_map>

// Substitution of polynomials for atoms, inside the arguments of other atoms too:
// an atom whose arguments change is read again from its new arguments.

using Impl = KOBWBPolynomialContext::Impl;

std::vector<int> Impl::Reachable(const KOBWBPolynomial& polynomial) {
    std::vector<int> reached, pending;
    // Atoms are marked with a stamp of this walk rather than kept in a set.
    const unsigned stamp = ++reachStamp;
    const auto note = [&](const KOBWBPolynomial& p) {
        for (const KOBWBPolynomialTerm& term : p.GetTerms())
            for (const KOBWBMonomialFactor& factor : term.monomial) {
                Atom& atom = atoms[static_cast<size_t>(factor.atom)];
                if (atom.reached == stamp) continue;
                atom.reached = stamp;
                pending.push_back(factor.atom);
            }
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
// find(atom) gives the replacement of an atom, null for none.
template <class Find>
KOBWBPolynomial Replace(Impl& impl, const KOBWBPolynomial& polynomial, Find find) {
    std::vector<KOBWBPolynomialTerm> terms;
    terms.reserve(static_cast<size_t>(polynomial.GetNbOfTerms()));
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        KOBWBPolynomial product(term.coefficient);
        KOBWBMonomial kept;
        bool replaced = false;
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            const KOBWBPolynomial* replacement = find(factor.atom);
            if (!replacement) {
                kept.push_back(factor);
                continue;
            }
            replaced = true;
            KOBWBPolynomial power;
            if (!replacement->Power(factor.exponent, impl.maxTerms, power)) {
                KOBWBExpression* node = impl.factory.CreatePower(impl.Write(*replacement),
                                                                 static_cast<int>(factor.exponent));
                impl.Read(node, power);
            }
            product = KOBWBPolynomial::Multiply(product, power);
        }
        // A term without replaced atoms is kept as it is; the others are collected once.
        if (!replaced) {
            terms.push_back(term);
            continue;
        }
        for (const KOBWBPolynomialTerm& piece : product.GetTerms())
            terms.push_back({KOBWBMultiplyMonomials(piece.monomial, kept), piece.coefficient});
    }
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

} // namespace

KOBWBPolynomial Impl::Substitute(const KOBWBPolynomial& polynomial,
                                 const std::vector<std::pair<int, const KOBWBPolynomial*>>& substitutions) {
    // Without atoms that have arguments (a polynomial in variables), the atoms are
    // replaced where they stand.
    bool nested = false;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms())
        for (const KOBWBMonomialFactor& factor : term.monomial)
            nested = nested || !atoms[static_cast<size_t>(factor.atom)].arguments.empty();
    if (!nested)
        return Replace(*this, polynomial, [&substitutions](int atom) -> const KOBWBPolynomial* {
            for (const auto& substitution : substitutions)
                if (substitution.first == atom) return substitution.second;
            return nullptr;
        });
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
        const auto find = [&replacements](int atom) -> const KOBWBPolynomial* {
            const auto found = replacements.find(atom);
            return found == replacements.end() ? nullptr : &found->second;
        };
        for (KOBWBPolynomial& argument : arguments) argument = Replace(*this, argument, find);
        std::vector<const KOBWBPolynomial*> pointers;
        for (const KOBWBPolynomial& argument : arguments) pointers.push_back(&argument);
        KOBWBPolynomial reread = reciprocal ? Quotient(KOBWBPolynomial(KOBWBCoefficient(1)), arguments[0], node)
                                            : ReadOperator(node, pointers);
        replacements.emplace(atom, std::move(reread));
    }
    return Replace(*this, polynomial, [&replacements](int atom) -> const KOBWBPolynomial* {
        const auto found = replacements.find(atom);
        return found == replacements.end() ? nullptr : &found->second;
    });
}
