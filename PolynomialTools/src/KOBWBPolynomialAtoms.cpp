#include "KOBWBPolynomialContextImpl.h"

#include "KOBWBStableKeys.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cstdio>

// The atoms of a rewriting context: found again by a structural hash and
// comparison, and given canonical keys only when they are first ordered.

using Impl = KOBWBPolynomialContext::Impl;

namespace {

// Keys beyond this length are not spelled out: such an atom is keyed by its digest.
constexpr size_t maxKeyLength = 2048;

std::string NumberedKey(char prefix, int number) {
    char text[32];
    std::snprintf(text, sizeof text, "%c%010d", prefix, number);
    return text;
}

std::size_t Combine(std::size_t hash, std::size_t value) { return hash * 1000003u ^ value; }

} // namespace

Impl::Impl(KOBWBFactory& factory, KOBWBExpression* zero, KOBWBExpression* one)
    : factory(factory), zero(zero), one(one) {
    AddAtom(AtomKind::Pi, nullptr, {}, {});
    atoms[static_cast<size_t>(piAtom)].keyed = true;
    keys.emplace_back();
}

int Impl::AddAtom(AtomKind kind, KOBWBExpression* node, std::vector<KOBWBPolynomial> arguments, AtomIdentity identity) {
    Atom atom;
    atom.kind = kind;
    atom.node = node;
    atom.arguments = std::move(arguments);
    atoms.push_back(std::move(atom));
    const int number = static_cast<int>(atoms.size()) - 1;
    if (!identity.parameters.empty() || identity.blackBox) identities.emplace_back(number, std::move(identity));
    return number;
}

const Impl::AtomIdentity* Impl::Identity(int atom) const {
    const auto found = std::lower_bound(identities.begin(), identities.end(), atom,
                                        [](const std::pair<int, AtomIdentity>& entry, int number) { return entry.first < number; });
    return found != identities.end() && found->first == atom ? &found->second : nullptr;
}

int Impl::InternAtom(AtomKind kind, KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments) {
    AtomIdentity identity;
    std::vector<double>& parameters = identity.parameters;
    for (int i = 0; kind == AtomKind::Operator && i < node->GetNbOfParameters(); ++i)
        parameters.push_back(node->GetParameter(i));
    const void* blackBox = kind == AtomKind::Operator && node->GetType() == KOBWBBlackBoxType
                               ? static_cast<KOBWBBlackBoxOperator*>(node)->GetBlackBox()
                               : nullptr;
    identity.blackBox = blackBox;
    const KOBWBExpressionType type = kind == AtomKind::Operator ? node->GetType() : KOBWBQuotientType;
    std::size_t hash = Combine(static_cast<std::size_t>(kind), static_cast<std::size_t>(type));
    for (double parameter : parameters) hash = Combine(hash, std::hash<double>()(parameter));
    hash = Combine(hash, std::hash<const void*>()(blackBox));
    for (const KOBWBPolynomial* argument : arguments) hash = Combine(hash, argument->Hash());

    const auto equal = [&](int number) {
        const Atom& atom = atoms[static_cast<size_t>(number)];
        const AtomIdentity* known = Identity(number);
        const bool sameIdentity = known ? known->parameters == parameters && known->blackBox == blackBox
                                        : parameters.empty() && !blackBox;
        if (atom.kind != kind || !sameIdentity ||
            atom.arguments.size() != arguments.size() || (kind == AtomKind::Operator && atom.node->GetType() != type))
            return false;
        for (size_t i = 0; i < arguments.size(); ++i)
            if (atom.arguments[i] != *arguments[i]) return false;
        return true;
    };
    const int number = static_cast<int>(atoms.size());
    const std::pair<int*, bool> found = atomTable.Insert(hash, equal, number);
    if (!found.second) return *found.first;
    std::vector<KOBWBPolynomial> copies;
    copies.reserve(arguments.size());
    for (const KOBWBPolynomial* argument : arguments) copies.push_back(*argument);
    return AddAtom(kind, node, std::move(copies), std::move(identity));
}

int Impl::UniqueAtom(AtomKind kind, KOBWBExpression* node) { return AddAtom(kind, node, {}, {}); }

int Impl::VariableAtom(KOBWBVariable* variable) {
    // A variable outside the factory's list is only equal to itself.
    if (variable->GetIdx() < 0 || variable->GetIdx() >= factory.GetNbOfVariables() ||
        factory.GetVariable(variable->GetIdx()) != variable)
        return UniqueAtom(AtomKind::Opaque, variable);
    const std::size_t index = static_cast<std::size_t>(variable->GetIdx());
    const auto same = [variable](const VariableEntry& entry) {
        return entry.index == variable->GetIdx();
    };
    if (const VariableEntry* known = variableTable.Find(index, same)) return known->atom;
    const int atom = UniqueAtom(AtomKind::Variable, variable);
    variablePolynomials.push_back(KOBWBPolynomial::Atom(atom));
    variableTable.Insert(index, same, {variable->GetIdx(), atom, &variablePolynomials.back()});
    return atom;
}

bool Impl::KeyLess(int a, int b) {
    // Variables come first, by index, and need no key.
    const Atom& first = atoms[static_cast<size_t>(a)];
    const Atom& second = atoms[static_cast<size_t>(b)];
    const bool firstIsVariable = first.kind == AtomKind::Variable, secondIsVariable = second.kind == AtomKind::Variable;
    if (firstIsVariable && secondIsVariable)
        return static_cast<KOBWBVariable*>(first.node)->GetIdx() < static_cast<KOBWBVariable*>(second.node)->GetIdx();
    if (firstIsVariable != secondIsVariable) return firstIsVariable;
    // Keying an atom may grow the table of keys, so both are keyed before either key
    // is looked at.
    Key(a);
    Key(b);
    return keys[static_cast<size_t>(a)].key < keys[static_cast<size_t>(b)].key;
}

const std::string& Impl::Key(int atom) {
    // The atoms below this one that have no key yet: an atom's arguments only name
    // earlier atoms, so keying them in number order finds the keys of the arguments
    // made.
    std::vector<int> unkeyed, pending{atom};
    while (!pending.empty()) {
        const int next = pending.back();
        pending.pop_back();
        Atom& record = atoms[static_cast<size_t>(next)];
        if (record.keyed) continue;
        record.keyed = true;
        unkeyed.push_back(next);
        for (const KOBWBPolynomial& argument : record.arguments)
            for (const KOBWBPolynomialTerm& term : argument.GetTerms())
                for (const KOBWBMonomialFactor& factor : term.monomial) pending.push_back(factor.atom);
    }
    std::sort(unkeyed.begin(), unkeyed.end());
    if (!unkeyed.empty() && keys.size() < atoms.size()) keys.resize(atoms.size());
    for (int number : unkeyed) keys[static_cast<size_t>(number)].key = MakeKey(number);
    return keys[static_cast<size_t>(atom)].key;
}

// The keys of rule 5 of the canonical form: they sort variables ("a", though
// variables are ordered by index without their keys), then the other values ("b",
// by their exact text), then operators and reciprocals ("c" with the type code, "r"),
// then atoms too long to be spelled out ("y" and the digest), then the nodes the
// algebra does not read ("z" with their head and a digest of their graph). Nothing
// in a key depends on addresses or on the order in which atoms were read.
std::string Impl::MakeKey(int number) {
    const Atom& record = atoms[static_cast<size_t>(number)];
    std::uint64_t& recordDigest = keys[static_cast<size_t>(number)].digest;
    std::string key;
    switch (record.kind) {
    case AtomKind::Pi: recordDigest = KOBWBStableKeys::Digest("Pi"); return key;
    case AtomKind::Variable: key = NumberedKey('a', static_cast<KOBWBVariable*>(record.node)->GetIdx()); break;
    case AtomKind::Value: key = "b" + KOBWBStableKeys::ValueText(record.node->GetExprValue()); break;
    case AtomKind::Opaque:
        key = "z" + KOBWBStableKeys::NodeHead(record.node) + KOBWBStableKeys::Hex(KOBWBStableKeys::NodeDigest(record.node));
        break;
    case AtomKind::Operator:
    case AtomKind::Reciprocal: {
        key = record.kind == AtomKind::Reciprocal ? std::string("r") : KOBWBStableKeys::NodeHead(record.node);
        std::uint64_t digest = KOBWBStableKeys::Digest(key);
        for (const KOBWBPolynomial& argument : record.arguments) digest = KOBWBStableKeys::Mix(digest, PolynomialDigest(argument));
        recordDigest = digest;
        key += '(';
        for (size_t i = 0; i < record.arguments.size() && key.size() <= maxKeyLength; ++i) {
            if (i > 0) key += ',';
            key += PolynomialKey(record.arguments[i]);
        }
        key += ')';
        return key.size() > maxKeyLength ? "y" + KOBWBStableKeys::Hex(digest) : key;
    }
    }
    recordDigest = KOBWBStableKeys::Digest(key);
    return key;
}

std::uint64_t Impl::PolynomialDigest(const KOBWBPolynomial& polynomial) const {
    std::uint64_t digest = 0;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        std::uint64_t monomial = 0;
        for (const KOBWBMonomialFactor& factor : term.monomial)
            monomial += KOBWBStableKeys::Mix(keys[static_cast<size_t>(factor.atom)].digest,
                                             static_cast<std::uint64_t>(factor.exponent));
        digest += KOBWBStableKeys::Mix(monomial, KOBWBStableKeys::Digest((term.coefficient.IsReal() ? "r" : "") +
                                                                         term.coefficient.ToString()));
    }
    return digest;
}

std::string Impl::MonomialKey(const KOBWBMonomial& monomial) {
    std::vector<int> factors;
    for (const KOBWBMonomialFactor& factor : monomial) factors.push_back(factor.atom);
    if (factors.size() > 1) std::sort(factors.begin(), factors.end(), [this](int a, int b) { return KeyLess(a, b); });
    std::string key;
    for (int atom : factors) {
        key += atom == piAtom ? std::string("Pi") : Key(atom);
        key += '^';
        for (const KOBWBMonomialFactor& factor : monomial)
            if (factor.atom == atom) key += std::to_string(factor.exponent);
        key += '*';
    }
    return key;
}

std::string Impl::PolynomialKey(const KOBWBPolynomial& polynomial) {
    std::vector<std::string> terms;
    terms.reserve(static_cast<size_t>(polynomial.GetNbOfTerms()));
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms())
        terms.push_back(MonomialKey(term.monomial) + (term.coefficient.IsReal() ? "#r" : "#") + term.coefficient.ToString());
    std::sort(terms.begin(), terms.end());
    std::string key = "[";
    for (const std::string& term : terms) {
        key += term;
        key += ';';
    }
    key += ']';
    return key;
}

bool Impl::DependsOn(int atom, const KOBWBVariable* variable) const {
    if (atom < 0 || atom >= static_cast<int>(atoms.size())) return false;
    // One pass in number order settles every atom up to this one.
    std::vector<char> depends(static_cast<size_t>(atom) + 1, 0);
    for (int i = 0; i <= atom; ++i) {
        const Atom& record = atoms[static_cast<size_t>(i)];
        bool found = record.kind == AtomKind::Variable && record.node == variable;
        for (const KOBWBPolynomial& argument : record.arguments)
            for (const KOBWBPolynomialTerm& term : argument.GetTerms())
                for (const KOBWBMonomialFactor& factor : term.monomial)
                    found = found || depends[static_cast<size_t>(factor.atom)];
        depends[static_cast<size_t>(i)] = found;
    }
    return depends[static_cast<size_t>(atom)];
}
