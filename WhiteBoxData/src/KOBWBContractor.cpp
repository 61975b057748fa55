#include "KOBWBContractor.h"

#include "KOBWBEquation.h"
#include "KOBWBEquationTape.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <deque>
#include <vector>

namespace kobwb {

// The equations of a factory laid out for revision, which of them each variable
// occurs in, and the queue of the propagation.
class ContractorTapes {
public:
    explicit ContractorTapes(KOBWBFactory& factory) {
        m_equationsOfVariable.resize(factory.GetNbOfVariables());
        std::vector<TapePlace> places;
        for (KOBWBEquation* equation = factory.GetFirstEquation(); equation;
             equation = factory.GetNextEquation(equation)) {
            const int index = static_cast<int>(places.size());
            places.push_back(AppendTape(m_store, *equation));
            const int id = equation->GetId();
            if (id >= 0) {
                if (id >= static_cast<int>(m_indexOfId.size())) m_indexOfId.resize(id + 1, -1);
                m_indexOfId[id] = index;
            }
            m_equations.push_back(equation);
        }
        // The store is complete: its tapes can be read in place.
        for (const TapePlace& place : places)
            m_tapes.push_back(TapeAt(m_store, place));
        for (int index = 0; index < Count(); ++index) {
            const EquationTape& tape = m_tapes[index];
            for (const int position : tape.variables) {
                const int variable = static_cast<KOBWBVariable*>(tape.nodes[position])->GetIdx();
                if (variable >= 0 && variable < static_cast<int>(m_equationsOfVariable.size()))
                    m_equationsOfVariable[variable].push_back(index);
            }
        }
        m_queued.assign(m_tapes.size(), 0);
    }

    int Count() const { return static_cast<int>(m_tapes.size()); }
    // The position of an equation, -1 for one not read.
    int IndexOf(const KOBWBEquation* equation) const {
        const int id = equation->GetId();
        if (id < 0 || id >= static_cast<int>(m_indexOfId.size())) return -1;
        const int index = m_indexOfId[id];
        return index >= 0 && m_equations[index] == equation ? index : -1;
    }

    void Queue(int equation) {
        if (m_queued[equation]) return;
        m_queued[equation] = 1;
        m_queue.push_back(equation);
    }
    void QueueAll() {
        for (int i = 0; i < Count(); ++i)
            Queue(i);
    }
    void QueueEquationsOf(const KOBWBVariable* variable, int except) {
        const int index = variable->GetIdx();
        if (index < 0 || index >= static_cast<int>(m_equationsOfVariable.size())) return;
        for (const int equation : m_equationsOfVariable[index])
            if (equation != except) Queue(equation);
    }
    bool HasQueued() const { return !m_queue.empty(); }
    int Next() {
        const int equation = m_queue.front();
        m_queue.pop_front();
        m_queued[equation] = 0;
        return equation;
    }
    void ClearQueue() {
        m_queue.clear();
        std::fill(m_queued.begin(), m_queued.end(), 0);
    }

    bool Revise(int equation, const KOBWBEnvironment& environment) {
        m_narrowed.clear();
        return m_reviser.Revise(m_tapes[equation], environment, m_narrowed);
    }
    // An equation not read with the others, laid out on its own.
    bool ReviseAlone(const KOBWBEquation& equation, const KOBWBEnvironment& environment) {
        TapeStore store;
        const TapePlace place = AppendTape(store, equation);
        m_narrowed.clear();
        return m_reviser.Revise(TapeAt(store, place), environment, m_narrowed);
    }
    const std::vector<NarrowedVariable>& Narrowed() const { return m_narrowed; }

private:
    TapeStore m_store;
    std::vector<EquationTape> m_tapes;
    // The tapes' equations, and the position of each equation by its id.
    std::vector<const KOBWBEquation*> m_equations;
    std::vector<int> m_indexOfId;
    std::vector<std::vector<int>> m_equationsOfVariable;
    std::deque<int> m_queue;
    std::vector<char> m_queued;
    TapeReviser m_reviser;
    std::vector<NarrowedVariable> m_narrowed;
};

} // namespace kobwb

KOBWBContractor::KOBWBContractor(KOBWBFactory& factory) : m_factory(factory) {}

KOBWBContractor::~KOBWBContractor() = default;

void KOBWBContractor::Reset() {
    m_tapes.reset();
}

kobwb::ContractorTapes& KOBWBContractor::Tapes() {
    // What was read of a system that changed since is read again.
    if (m_tapes && m_version != m_factory.GetSystemVersion()) m_tapes.reset();
    if (!m_tapes) {
        m_tapes = std::make_unique<kobwb::ContractorTapes>(m_factory);
        m_version = m_factory.GetSystemVersion();
    }
    return *m_tapes;
}

KOBWBContractionStatus KOBWBContractor::Revise(KOBWBEquation* equation) {
    if (!equation) return KOBWBContractionFixedPoint;
    kobwb::ContractorTapes& tapes = Tapes();
    const KOBWBEnvironment& environment = m_factory.GetEnvironment();
    const int index = tapes.IndexOf(equation);
    const bool consistent = index >= 0 ? tapes.Revise(index, environment) : tapes.ReviseAlone(*equation, environment);
    return consistent ? KOBWBContractionFixedPoint : KOBWBContractionNoSolution;
}

KOBWBContractionStatus KOBWBContractor::Run() {
    Tapes().QueueAll();
    return PropagateQueued();
}

KOBWBContractionStatus KOBWBContractor::Propagate(int count, KOBWBVariable* const* variables) {
    Tapes();
    for (int i = 0; i < count && variables; ++i)
        if (variables[i]) m_tapes->QueueEquationsOf(variables[i], -1);
    return PropagateQueued();
}

KOBWBContractionStatus KOBWBContractor::PropagateQueued() {
    const long budget = m_budget > 0 ? m_budget : 100L * std::max(1, m_tapes->Count());
    const KOBWBEnvironment& environment = m_factory.GetEnvironment();
    m_revisions = 0;
    while (m_tapes->HasQueued()) {
        if (m_revisions >= budget) {
            m_tapes->ClearQueue();
            return KOBWBContractionBudgetSpent;
        }
        const int equation = m_tapes->Next();
        ++m_revisions;
        if (!m_tapes->Revise(equation, environment)) {
            m_tapes->ClearQueue();
            return KOBWBContractionNoSolution;
        }
        for (const kobwb::NarrowedVariable& narrowed : m_tapes->Narrowed())
            if (narrowed.ratio > m_ratio) m_tapes->QueueEquationsOf(narrowed.variable, equation);
    }
    return KOBWBContractionFixedPoint;
}
