#include "KOBWBLinearForms.h"

#include "KOBLVRStream.h"
#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBTransformationPasses.h"
#include "KOBWBVariable.h"

namespace kobwb {

struct LinearForms::Equation {
    KOBWBEquation* equation;
    KOBWBPolynomial polynomial;
    bool readable;
    bool changed;
    // Whether it may hold variables eliminated since its polynomial was last made.
    bool stale;
};

LinearForms::LinearForms(KOBWBFactory& factory, KOBWBPolynomialContext& context, KOBLVRStream* trace)
    : m_factory(factory), m_context(context), m_trace(trace) {
    // Every list at its full size from the start: growing large arrays along the way
    // would copy them and free their old storage.
    const size_t variables = static_cast<size_t>(m_factory.GetNbOfVariables());
    const size_t equations = static_cast<size_t>(m_factory.GetNbOfEquations());
    m_equationsOf.Reset(variables, equations);
    m_formsOf.Reset(variables, variables);
    m_forms.resize(variables);
    m_equations.reserve(equations);
}

LinearForms::~LinearForms() = default;

void LinearForms::Occurrences::Reset(size_t variables, size_t items) {
    m_cells.clear();
    // A few entries per list.
    m_cells.reserve(4 * (variables + items));
    m_itemsOf.assign(variables, {});
    m_variablesOf.assign(items, {});
    m_counts.assign(variables, 0);
}

void LinearForms::Occurrences::Append(Chain& chain, std::uint32_t value) {
    const auto cell = static_cast<std::int32_t>(m_cells.size());
    m_cells.push_back({value, -1});
    if (chain.last >= 0)
        m_cells[static_cast<size_t>(chain.last)].next = cell;
    else
        chain.first = cell;
    chain.last = cell;
}

void LinearForms::Occurrences::Add(int variable, size_t item) {
    if (item >= m_variablesOf.size()) m_variablesOf.resize(item + 1);
    for (int cell = m_variablesOf[item].first; cell >= 0; cell = m_cells[static_cast<size_t>(cell)].next)
        if (m_cells[static_cast<size_t>(cell)].value == static_cast<std::uint32_t>(variable)) return;
    Append(m_variablesOf[item], static_cast<std::uint32_t>(variable));
    Append(m_itemsOf[static_cast<size_t>(variable)], static_cast<std::uint32_t>(item));
    ++m_counts[static_cast<size_t>(variable)];
}

void LinearForms::Occurrences::Add(const std::vector<KOBWBVariable*>& variables, size_t item) {
    for (const KOBWBVariable* variable : variables) Add(variable->GetIdx(), item);
}

void LinearForms::Occurrences::Clear(int variable) {
    m_itemsOf[static_cast<size_t>(variable)] = {};
    m_counts[static_cast<size_t>(variable)] = 0;
}

const KOBWBPolynomial* LinearForms::Form(int variableIndex) const {
    if (variableIndex < 0 || variableIndex >= static_cast<int>(m_forms.size())) return nullptr;
    return m_forms[static_cast<size_t>(variableIndex)].get();
}

void LinearForms::WriteTrace(const char* label, const KOBWBPolynomial& polynomial) {
    if (m_trace) *m_trace << label << TraceExpression(m_context.ToExpression(polynomial)).c_str() << lvrendl;
}

size_t LinearForms::Position(size_t added) const { return m_equations.size() - 1 - added; }

void LinearForms::Add(KOBWBEquation& equation, KOBWBPolynomial* simplified) {
    Equation entry{&equation, {}, false, false, false};
    if (simplified) {
        entry.polynomial = std::move(*simplified);
        entry.readable = true;
        entry.changed = true;
    } else {
        entry.readable = m_context.ToPolynomial(equation.GetRoot(), entry.polynomial);
    }
    m_context.GetVariables(entry.polynomial, m_variables);
    m_equationsOf.Add(m_variables, m_equations.size());
    m_equations.push_back(std::move(entry));
}

void LinearForms::Run(const std::function<void(KOBWBExpression*)>& mark) {
    // The equations, added last to first, are taken first to last.
    const size_t count = m_equations.size();
    for (size_t i = count; i-- > 0;) Eliminate(i);
    // Traced, every substitution comes before the line that ends them; otherwise each
    // equation is brought up to date just before its root is written.
    if (m_trace) {
        for (size_t i = count; i-- > 0;)
            if (m_equations[i].equation) Substitute(m_equations[i]);
        *m_trace << "after substitute" << lvrendl;
    }
    for (size_t i = count; i-- > 0;) {
        Equation& entry = m_equations[i];
        if (!entry.equation || !entry.changed) continue;
        Substitute(entry);
        if (entry.polynomial.IsZero() && entry.equation->GetType() == KOBWBEqEqual) {
            m_removed.push_back(entry.equation);
            entry.equation = nullptr;
            continue;
        }
        entry.equation->SetRoot(m_context.ToExpression(entry.polynomial));
        mark(entry.equation->GetRoot());
        // Released while still in the cache, rather than in one cold walk at the end.
        entry.polynomial = KOBWBPolynomial();
    }
    // Removed together, in one pass over the factory's equations.
    m_factory.RemoveEquations(static_cast<int>(m_removed.size()), m_removed.data());
    m_removed.clear();
    if (!m_trace) return;
    *m_trace << "Expressions for variables:" << lvrendl;
    for (size_t i = 0; i < m_forms.size(); ++i) {
        if (!m_forms[i]) continue;
        KOBWBVariable* variable = m_factory.GetVariable(static_cast<int>(i));
        *m_trace << "  " << variable->GetName() << " := "
                 << TraceExpression(m_context.ToExpression(*m_forms[i])).c_str() << lvrendl;
    }
}

namespace {

// The coefficient of each variable of a linear form, or false when the polynomial
// is not one.
bool ReadLinearForm(KOBWBPolynomialContext& context, const KOBWBPolynomial& polynomial,
                    std::vector<std::pair<KOBWBVariable*, std::vector<const KOBWBPolynomialTerm*>>>& byVariable) {
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        if (term.coefficient.IsReal()) return false;
        KOBWBVariable* variable = nullptr;
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            if (factor.atom == KOBWBPolynomialContext::piAtom) continue;
            KOBWBVariable* atomVariable = context.GetAtomVariable(factor.atom);
            if (!atomVariable || factor.exponent != 1 || variable) return false;
            variable = atomVariable;
        }
        if (!variable) continue;
        auto entry = byVariable.begin();
        while (entry != byVariable.end() && entry->first != variable) ++entry;
        if (entry == byVariable.end()) {
            byVariable.push_back({variable, {}});
            entry = byVariable.end() - 1;
        }
        entry->second.push_back(&term);
    }
    return !byVariable.empty();
}

long long PiPowerOf(const KOBWBMonomial& monomial) {
    for (const KOBWBMonomialFactor& factor : monomial)
        if (factor.atom == KOBWBPolynomialContext::piAtom) return factor.exponent;
    return 0;
}

KOBWBRational Magnitude(const KOBWBRational& value) { return value.Sign() < 0 ? -value : value; }

} // namespace

void LinearForms::Substitute(Equation& entry) {
    if (!entry.stale) return;
    entry.stale = false;
    std::vector<std::pair<KOBWBVariable*, const KOBWBPolynomial*>> substitutions;
    m_context.GetVariables(entry.polynomial, m_variables);
    for (KOBWBVariable* variable : m_variables)
        if (const KOBWBPolynomial* form = Form(variable->GetIdx())) substitutions.emplace_back(variable, form);
    if (substitutions.empty()) return;
    KOBWBPolynomial substituted = m_context.SubstituteVariables(entry.polynomial, substitutions);
    if (m_trace) {
        *m_trace << "  (" << TraceExpression(m_context.ToExpression(entry.polynomial)).c_str()
                 << ") simplified to      " << TraceExpression(m_context.ToExpression(substituted)).c_str() << lvrendl;
    }
    entry.polynomial = std::move(substituted);
}

bool LinearForms::Eliminate(size_t position) {
    Equation& entry = m_equations[position];
    if (!entry.equation || !entry.readable || entry.equation->GetType() != KOBWBEqEqual) return false;
    Substitute(entry);
    std::vector<std::pair<KOBWBVariable*, std::vector<const KOBWBPolynomialTerm*>>> byVariable;
    if (!ReadLinearForm(m_context, entry.polynomial, byVariable)) return false;

    // The pivot: fewest equations, then largest coefficient, then lowest index.
    KOBWBVariable* pivot = nullptr;
    const KOBWBPolynomialTerm* pivotTerm = nullptr;
    size_t pivotWeight = 0;
    for (const auto& candidate : byVariable) {
        KOBWBVariable* variable = candidate.first;
        if (variable->IsFixed() || candidate.second.size() != 1) continue;
        const KOBWBPolynomialTerm* term = candidate.second[0];
        const size_t weight = m_equationsOf.Count(variable->GetIdx());
        bool better = !pivot || weight < pivotWeight;
        if (pivot && weight == pivotWeight) {
            const int order = KOBWBRational::Compare(Magnitude(term->coefficient.GetExact()),
                                                     Magnitude(pivotTerm->coefficient.GetExact()));
            better = order > 0 || (order == 0 && variable->GetIdx() < pivot->GetIdx());
        }
        if (better) {
            pivot = variable;
            pivotTerm = term;
            pivotWeight = weight;
        }
    }
    if (!pivot) return false;
    if (m_trace) {
        *m_trace << "  LinearForm[" << static_cast<int>(Position(position)) << "] = "
                 << TraceExpression(m_context.ToExpression(entry.polynomial)).c_str() << lvrendl;
        *m_trace << "Factor = " << pivotTerm->coefficient.ToString().c_str() << lvrendl;
        *m_trace << "Weight of " << pivot->GetName() << " with weight (" << static_cast<int>(pivotWeight) << ")"
                 << lvrendl;
    }

    // x = -(rest) / (c Pi^k).
    std::vector<KOBWBPolynomialTerm> rest;
    for (const KOBWBPolynomialTerm& term : entry.polynomial.GetTerms())
        if (&term != pivotTerm) rest.push_back(term);
    KOBWBPolynomial form = KOBWBPolynomial::FromTerms(std::move(rest));
    form *= KOBWBCoefficient(KOBWBRational(-1) / pivotTerm->coefficient.GetExact());
    const long long piPower = PiPowerOf(pivotTerm->monomial);
    if (piPower != 0) form = KOBWBPolynomial::Multiply(form, KOBWBPolynomial::Atom(KOBWBPolynomialContext::piAtom, -piPower));
    const std::vector<KOBWBVariable*> formVariables = m_context.GetVariables(form);

    if (m_trace)
        *m_trace << "substitute variables at LinearForm[" << static_cast<int>(Position(position)) << "]" << lvrendl;
    const int x = pivot->GetIdx();
    m_equationsOf.ForEachItem(x, [&](size_t other) {
        if (other == position || !m_equations[other].equation) return;
        Equation& target = m_equations[other];
        target.stale = true;
        target.changed = true;
        m_equationsOf.Add(formVariables, other);
    });
    m_formsOf.ForEachItem(x, [&](size_t earlier) {
        KOBWBPolynomial& earlierForm = *m_forms[earlier];
        earlierForm = m_context.SubstituteVariable(earlierForm, pivot, form);
        m_formsOf.Add(formVariables, earlier);
    });
    m_formsOf.Add(formVariables, static_cast<size_t>(x));
    m_equationsOf.Clear(x);
    m_formsOf.Clear(x);
    m_forms[static_cast<size_t>(x)] = std::make_unique<KOBWBPolynomial>(std::move(form));

    // The linear form is now the pivot's expression: its equation goes.
    m_context.GetVariables(entry.polynomial, m_variables);
    for (KOBWBVariable* variable : m_variables)
        if (variable != pivot) m_equationsOf.Uncount(variable->GetIdx());
    m_removed.push_back(entry.equation);
    entry.equation = nullptr;
    entry.polynomial = KOBWBPolynomial();
    return true;
}

} // namespace kobwb
