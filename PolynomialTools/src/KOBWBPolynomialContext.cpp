#include "KOBWBPolynomialContext.h"

#include "KOBWBFactory.h"
#include "KOBWBPolynomialContextImpl.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <cstdio>
#include <unordered_set>

KOBWBPolynomialContext::KOBWBPolynomialContext(KOBWBFactory& factory, KOBWBExpression* zero, KOBWBExpression* one)
    : m_impl(std::make_unique<Impl>(factory, zero, one)) {}

KOBWBPolynomialContext::KOBWBPolynomialContext(KOBWBFactory& factory)
    : KOBWBPolynomialContext(factory, factory.CreateIntegerConstant(0), factory.CreateIntegerConstant(1)) {}

KOBWBPolynomialContext::~KOBWBPolynomialContext() = default;

bool KOBWBPolynomialContext::IsValid() const {
    return m_impl->zero && m_impl->one && &m_impl->zero->GetFactory() == &m_impl->factory &&
           &m_impl->one->GetFactory() == &m_impl->factory;
}

KOBWBFactory& KOBWBPolynomialContext::GetFactory() const { return m_impl->factory; }

int KOBWBPolynomialContext::GetMaxTerms() const { return m_impl->maxTerms; }

void KOBWBPolynomialContext::SetMaxTerms(int maxTerms) { m_impl->maxTerms = std::max(1, maxTerms); }

namespace {

bool IsVariableOf(const KOBWBFactory& factory, const KOBWBVariable* variable) {
    return variable && variable->GetType() == KOBWBVariableType && &variable->GetFactory() == &factory &&
           factory.GetVariable(variable->GetIdx()) == variable;
}

} // namespace

int KOBWBPolynomialContext::GetVariableAtom(KOBWBVariable* variable) {
    return IsVariableOf(m_impl->factory, variable) ? m_impl->VariableAtom(variable) : -1;
}

int KOBWBPolynomialContext::GetNbOfAtoms() const { return static_cast<int>(m_impl->atoms.size()); }

namespace {

// Whether every atom of the polynomial is one of the context's atoms 0 to atoms - 1.
bool NamesOnly(const KOBWBPolynomial& polynomial, int atoms) {
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms())
        for (const KOBWBMonomialFactor& factor : term.monomial)
            if (factor.atom < 0 || factor.atom >= atoms) return false;
    return true;
}

} // namespace

bool KOBWBPolynomialContext::AtomDependsOn(int atom, KOBWBVariable* variable) const {
    return m_impl->DependsOn(atom, variable);
}

KOBWBPolynomial KOBWBPolynomialContext::SubstituteVariable(const KOBWBPolynomial& polynomial, KOBWBVariable* x,
                                                           const KOBWBPolynomial& by) {
    const int atom = GetVariableAtom(x);
    m_impl->pastBudget = false;
    if (atom < 0 || !NamesOnly(polynomial, GetNbOfAtoms()) || !NamesOnly(by, GetNbOfAtoms())) return polynomial;
    return m_impl->Substitute(polynomial, {{atom, &by}});
}

KOBWBPolynomial KOBWBPolynomialContext::SubstituteVariables(
    const KOBWBPolynomial& polynomial, const std::vector<std::pair<KOBWBVariable*, const KOBWBPolynomial*>>& substitutions) {
    std::vector<std::pair<int, const KOBWBPolynomial*>> atoms;
    atoms.reserve(substitutions.size());
    for (const auto& substitution : substitutions) {
        const int atom = GetVariableAtom(substitution.first);
        if (atom >= 0 && substitution.second && NamesOnly(*substitution.second, GetNbOfAtoms()))
            atoms.emplace_back(atom, substitution.second);
    }
    m_impl->pastBudget = false;
    if (atoms.empty() || !NamesOnly(polynomial, GetNbOfAtoms())) return polynomial;
    return m_impl->Substitute(polynomial, atoms);
}

std::vector<KOBWBVariable*> KOBWBPolynomialContext::GetVariables(const KOBWBPolynomial& polynomial) {
    std::vector<KOBWBVariable*> variables;
    GetVariables(polynomial, variables);
    return variables;
}

void KOBWBPolynomialContext::GetVariables(const KOBWBPolynomial& polynomial, std::vector<KOBWBVariable*>& variables) {
    variables.clear();
    const std::vector<int>& reachable = m_impl->Reachable(polynomial);
    if (m_impl->reachedForeign) return;
    variables.reserve(reachable.size());
    for (int atom : reachable)
        if (KOBWBVariable* variable = GetAtomVariable(atom)) variables.push_back(variable);
    std::sort(variables.begin(), variables.end(),
              [](const KOBWBVariable* a, const KOBWBVariable* b) { return a->GetIdx() < b->GetIdx(); });
}

KOBWBVariable* KOBWBPolynomialContext::GetAtomVariable(int atom) const {
    if (atom < 0 || atom >= GetNbOfAtoms()) return nullptr;
    const Impl::Atom& record = m_impl->atoms[static_cast<size_t>(atom)];
    return record.kind == Impl::AtomKind::Variable ? static_cast<KOBWBVariable*>(record.node) : nullptr;
}

bool KOBWBPolynomialContext::ExceededBudget() const { return m_impl->pastBudget; }

bool KOBWBPolynomialContext::ToPolynomial(KOBWBExpression* expression, KOBWBPolynomial& result) {
    m_impl->pastBudget = false;
    if (!IsValid()) return false;
    // Nodes may have changed since an earlier call: each call reads afresh.
    m_impl->ForgetReadings();
    return m_impl->Read(expression, result);
}

KOBWBExpression* KOBWBPolynomialContext::ToExpression(const KOBWBPolynomial& polynomial) {
    if (!IsValid() || !NamesOnly(polynomial, GetNbOfAtoms())) return nullptr;
    return m_impl->Write(polynomial);
}

bool KOBWBPolynomialContext::ReadsBackExactly(const KOBWBPolynomial& polynomial) {
    if (!IsValid() || !NamesOnly(polynomial, GetNbOfAtoms())) return false;
    return m_impl->ReadsBack(polynomial);
}

bool KOBWBPolynomialContext::HasOpaqueAtoms(const KOBWBPolynomial& polynomial) {
    if (!IsValid()) return false;
    const std::vector<int>& reachable = m_impl->Reachable(polynomial);
    if (m_impl->reachedForeign) return true;
    for (int atom : reachable)
        if (m_impl->atoms[static_cast<size_t>(atom)].kind == Impl::AtomKind::Opaque) return true;
    return false;
}

KOBWBExpression* KOBWBPolynomialContext::Simplify(KOBWBExpression* expression) {
    KOBWBPolynomial polynomial;
    if (!ToPolynomial(expression, polynomial)) return nullptr;
    return m_impl->Write(polynomial);
}

bool KOBWBPolynomialContext::AreIdentical(KOBWBExpression* expression, KOBWBExpression* other) {
    KOBWBPolynomial a, b;
    if (!ToPolynomial(expression, a) || !m_impl->Read(other, b)) return false;
    return a == b;
}

bool KOBWBPolynomialContext::ExtractCoefficients(KOBWBExpression* expression, KOBWBVariable* x,
                                                 KOBLVRListPKOBWBExpression& coefficients) {
    const int atom = GetVariableAtom(x);
    KOBWBPolynomial polynomial;
    if (atom < 0 || !ToPolynomial(expression, polynomial)) return false;
    std::vector<std::vector<KOBWBPolynomialTerm>> byDegree;
    std::unordered_set<int> independent;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        long long degree = 0;
        KOBWBPolynomialTerm rest{{}, term.coefficient};
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            if (factor.atom == atom) {
                degree = factor.exponent;
                continue;
            }
            if (!independent.count(factor.atom)) {
                if (m_impl->DependsOn(factor.atom, x)) return false;
                independent.insert(factor.atom);
            }
            rest.monomial.push_back(factor);
        }
        if (degree < 0 || degree > m_impl->maxTerms) return false;
        if (byDegree.size() <= static_cast<size_t>(degree)) byDegree.resize(static_cast<size_t>(degree) + 1);
        byDegree[static_cast<size_t>(degree)].push_back(std::move(rest));
    }
    if (byDegree.empty()) byDegree.resize(1);
    std::vector<KOBWBExpression*> written;
    for (std::vector<KOBWBPolynomialTerm>& terms : byDegree) {
        KOBWBExpression* coefficient = m_impl->Write(KOBWBPolynomial::FromTerms(std::move(terms)));
        if (!coefficient) return false;
        written.push_back(coefficient);
    }
    for (KOBWBExpression* coefficient : written) coefficients.Append(coefficient);
    return true;
}

KOBWBExpression* KOBWBPolynomialContext::Substitute(KOBWBExpression* root, KOBWBVariable* x, KOBWBExpression* value) {
    KOBWBPolynomial variable;
    if (!root || !value || GetVariableAtom(x) < 0 || !ToPolynomial(x, variable)) return nullptr;
    if (&root->GetFactory() != &m_impl->factory || &value->GetFactory() != &m_impl->factory) return nullptr;
    std::vector<KOBWBExpression*> pending{root};
    std::unordered_set<KOBWBExpression*> visited{root};
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (!child) continue;
            KOBWBPolynomial polynomial;
            // A child that cannot be read leaves the node's remaining children as they are.
            if (!m_impl->Read(child, polynomial)) break;
            if (polynomial == variable)
                node->ReplaceChild(i, value);
            else if (visited.insert(child).second)
                pending.push_back(child);
        }
    }
    // The walk changed children of nodes it had read.
    m_impl->ForgetReadings();
    for (Impl::Atom& atom : m_impl->atoms) atom.written = atom.writtenDenominator = atom.writtenPower = nullptr;
    return Simplify(root);
}
